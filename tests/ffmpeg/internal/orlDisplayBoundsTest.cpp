// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "internal/orlDisplayBounds.h"

#include <gtest/gtest.h>

#include <limits>

namespace {

using namespace ORL_0_81;
using namespace ORL_0_81::media;

void expectBounds(Bounds const& actual, double centerX, double centerY, double width, double height) {
    EXPECT_EQ(actual.getCenterX(), centerX);
    EXPECT_EQ(actual.getCenterY(), centerY);
    EXPECT_EQ(actual.getSizeX(), width);
    EXPECT_EQ(actual.getSizeY(), height);
}

TEST(DisplayBoundsTest, TouchesTwoEdgesOfTheReferenceAtItsCentre) {
    Bounds const reference(3.0, -4.0, 20.0, 10.0);
    expectBounds(fitBounds(1.0, 1.0, reference), 3.0, -4.0, 10.0, 10.0);
    expectBounds(fitBounds(4.0, 1.0, reference), 3.0, -4.0, 20.0, 5.0);
    expectBounds(fitBounds(2.0, 1.0, reference), 3.0, -4.0, 20.0, 10.0);
    expectBounds(fitBounds(1152.0, 528.0, Bounds(0, 0, 1920, 1080)), 0, 0, 1920, 880);
}

TEST(DisplayBoundsTest, WithoutAPictureIsTheReference) {
    expectBounds(fitBounds(0.0, 0.0, Bounds(3, -4, 20, 10)), 3, -4, 20, 10);
    expectBounds(fitBounds(0.0, 0.0, Bounds()), 0, 0, 0, 0);
}

TEST(DisplayBoundsTest, HasAHeightOfOneWhereTheReferenceIsNoRectangle) {
    double const infinity = std::numeric_limits<double>::infinity();
    double const nan = std::numeric_limits<double>::quiet_NaN();
    expectBounds(fitBounds(2.0, 1.0, Bounds()), 0, 0, 2, 1);
    expectBounds(fitBounds(2.0, 1.0, Bounds(5, 6, 0, 10)), 5, 6, 2, 1);
    expectBounds(fitBounds(2.0, 1.0, Bounds(5, 6, 10, -10)), 5, 6, 2, 1);
    expectBounds(fitBounds(2.0, 1.0, Bounds(nan, infinity, infinity, 10)), 0, 0, 2, 1);
    expectBounds(fitBounds(2.0, 1.0, Bounds(0, 0, nan, nan)), 0, 0, 2, 1);
}

} // namespace
