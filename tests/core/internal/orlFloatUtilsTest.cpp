// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "internal/orlFloatUtils.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <cstring>
#include <limits>

namespace {

using namespace ORL_0_81;

double const kTolerance = 2.220446049250313e-16;
double const kInfinity = std::numeric_limits<double>::infinity();
double const kNan = std::numeric_limits<double>::quiet_NaN();

TEST(FloatUtils, TheToleranceHasTheBits3CB0000000000000) {
    std::uint64_t bits = 0;
    double const tolerance = DBL_EPSILON;
    std::memcpy(&bits, &tolerance, sizeof bits);
    EXPECT_EQ(bits, 0x3CB0000000000000U);
}

TEST(FloatUtils, WhatIsBelowTheToleranceOnEitherSideIsNearZero) {
    for (double const value : {0.0, -0.0, 1e-300, 2.2e-16, -2.2e-16}) {
        EXPECT_TRUE(isNearZero(value)) << value;
    }
}

TEST(FloatUtils, TheToleranceItselfIsNotNearZero) {
    for (double const value : {kTolerance, -kTolerance, 3e-16, 1.0, kInfinity, -kInfinity, kNan}) {
        EXPECT_FALSE(isNearZero(value)) << value;
    }
}

TEST(FloatUtils, NearIsAbsoluteAndNotScaledWithTheValues) {
    EXPECT_TRUE(isNear(1.0, 1.0));
    EXPECT_TRUE(isNear(1e-17, 2e-16));
    EXPECT_FALSE(isNear(1.0, 1.0 + kTolerance));
    EXPECT_TRUE(isNear(1.0, 1.0 - kTolerance / 2));
    EXPECT_FALSE(isNear(1e15, 1e15 + 0.125));
    EXPECT_TRUE(isNear(DBL_MAX, DBL_MAX));
    EXPECT_FALSE(isNear(DBL_MAX, -DBL_MAX));
}

TEST(FloatUtils, NothingThatIsNotFiniteIsNearAnything) {
    EXPECT_FALSE(isNear(kInfinity, kInfinity));
    EXPECT_FALSE(isNear(kNan, kNan));
    EXPECT_FALSE(isNear(kNan, 0.0));
}

template <class Integer>
void truncates() {
    using Limits = std::numeric_limits<Integer>;
    double const beyond = std::ldexp(1.0, Limits::digits);
    struct Row {
        double value;
        Integer expected;
    };
    for (Row const& row : {Row{0.0, 0},
                           {-0.0, 0},
                           {0.99, 0},
                           {-0.99, 0},
                           {2.5, 2},
                           {-2.5, -2},
                           {beyond / 2, Limits::max() / 2 + 1},
                           {beyond, Limits::max()},
                           {-beyond, Limits::min()},
                           {beyond * 2, Limits::max()},
                           {-beyond * 2, Limits::min()},
                           {kInfinity, Limits::max()},
                           {-kInfinity, Limits::min()},
                           {kNan, 0}}) {
        EXPECT_EQ(truncateTo<Integer>(row.value), row.expected) << row.value;
    }
}

TEST(FloatUtils, TruncatesTowardZeroAndStopsAtTheLimits) {
    truncates<std::int32_t>();
    truncates<std::int64_t>();
}

} // namespace
