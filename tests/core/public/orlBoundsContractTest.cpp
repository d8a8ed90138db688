// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "support/Seed.h"

#include <orlBounds.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cfloat>
#include <random>
#include <string>

namespace {

using namespace ORL_0_81;

std::string textOf(Bounds const& bounds) { return bounds.toJson().asChar(); }

TEST(BoundsContract, GrowsByItsEdgesWhateverTheFiniteValues) {
    std::mt19937 random(printedSeed());
    std::uniform_real_distribution<double> value(-10.0, 10.0);
    for (int i = 0; i < 5000; ++i) {
        double a[4];
        double b[4];
        for (int k = 0; k < 4; ++k) {
            a[k] = value(random);
            b[k] = value(random);
        }
        Bounds bounds(a[0], a[1], a[2], a[3]);
        Bounds const other(b[0], b[1], b[2], b[3]);
        bounds.grow(other);
        double expected[4];
        for (int axis = 0; axis < 2; ++axis) {
            double const lower = std::min(a[axis] - a[axis + 2] * 0.5, b[axis] - b[axis + 2] * 0.5);
            double const upper = std::max(a[axis] + a[axis + 2] * 0.5, b[axis] + b[axis + 2] * 0.5);
            expected[axis] = (upper + lower) * 0.5;
            expected[axis + 2] = upper - lower;
        }
        EXPECT_EQ(bounds.getCenterX(), expected[0]);
        EXPECT_EQ(bounds.getCenterY(), expected[1]);
        EXPECT_EQ(bounds.getSizeX(), expected[2]);
        EXPECT_EQ(bounds.getSizeY(), expected[3]);
        EXPECT_EQ(other.getCenterX(), b[0]);
    }
}

TEST(BoundsContract, NumbersAreWrittenInTheirShortestFormWithAFraction) {
    struct {
        double value;
        char const* text;
    } const cases[] = {
        {0.0, "0.0"},
        {-0.0, "-0.0"},
        {1920.0, "1920.0"},
        {0.1, "0.1"},
        {1.0 / 3.0, "0.3333333333333333"},
        {1e20, "100000000000000000000.0"},
        {1e21, "1e21"},
        {1e-6, "0.000001"},
        {1e-7, "1e-7"},
        {1.5e300, "1.5e300"},
        {DBL_MAX, "1.7976931348623157e308"},
        {5e-324, "5e-324"},
        {DBL_EPSILON, "2.220446049250313e-16"},
        {123456789.125, "123456789.125"},
    };
    for (auto const& c : cases) {
        EXPECT_EQ(textOf(Bounds(c.value, 1.0, 2.0, c.value)),
                  std::string("{\"center\":[") + c.text + ",1.0],\"size\":[2.0," + c.text + "]}");
    }
}

} // namespace
