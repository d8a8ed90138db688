// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "internal/orlFrameRate.h"

#include <gtest/gtest.h>

#include <cmath>

namespace {

using namespace ORL_0_81::media;

// The times of frames in milliseconds, each moved by up to that much.
std::vector<std::int64_t> times(int count, double rate, double jitter = 0.0) {
    std::vector<std::int64_t> result;
    for (int i = 0; i < count; ++i) {
        result.push_back(std::llround(5000.0 + 1000.0 * i / rate + (i % 2 == 0 ? jitter : -jitter)));
    }
    return result;
}

constexpr AVRational MILLISECOND = {1, 1000};

void expectRate(AVRational actual, int numerator, int denominator) {
    EXPECT_EQ(actual.num, numerator);
    EXPECT_EQ(actual.den, denominator);
}

TEST(FrameRateTest, AbbreviationsBecomeWhatTheyStandFor) {
    expectRate(withoutAbbreviation({2997, 125}), 24000, 1001);
    expectRate(withoutAbbreviation({2997, 100}), 30000, 1001);
    expectRate(withoutAbbreviation({60000, 1001}), 60000, 1001);
    expectRate(withoutAbbreviation({24, 1}), 24, 1);
    expectRate(withoutAbbreviation({23980, 1000}), 23980, 1000);
    expectRate(withoutAbbreviation({30, 1}), 30, 1);
}

TEST(FrameRateTest, UsableIsWhatFramesCanCome) {
    EXPECT_TRUE(isUsableRate({24, 1}));
    EXPECT_TRUE(isUsableRate({1, 10}));
    for (AVRational const rate : {AVRational{0, 1}, {0, 0}, {24, 0}, {-24, 1}, {24, -1}, {90000000, 1}}) {
        EXPECT_FALSE(isUsableRate(rate));
    }
}

TEST(FrameRateTest, TimesInMillisecondsKeepARateAllTheSame) {
    EXPECT_TRUE(isConstant(times(5000, 24000.0 / 1001.0), MILLISECOND, {24000, 1001}));
    EXPECT_TRUE(isConstant(times(500, 25.0, 8.0), MILLISECOND, {25, 1}));
    EXPECT_FALSE(isConstant(times(500, 25.0, 12.0), MILLISECOND, {25, 1}));
    EXPECT_FALSE(isConstant(times(500, 25.0), MILLISECOND, {24, 1}));
}

TEST(FrameRateTest, AHoleBreaksARate) {
    std::vector<std::int64_t> holed = times(50, 25.0);
    holed.erase(holed.begin() + 20);
    EXPECT_FALSE(isConstant(holed, MILLISECOND, {25, 1}));
}

TEST(FrameRateTest, TheBaseComesFirstAndTheAverageSecond) {
    AVRational rate = {};
    // The last frame is shown for long, so that the average is off.
    EXPECT_TRUE(findConstantRate(times(50, 25.0), MILLISECOND, {25, 1}, {24, 1}, rate));
    expectRate(rate, 25, 1);
    // Fields were taken for frames.
    EXPECT_TRUE(findConstantRate(times(50, 25.0), MILLISECOND, {50, 1}, {25, 1}, rate));
    expectRate(rate, 25, 1);
    EXPECT_FALSE(findConstantRate(times(50, 25.0), MILLISECOND, {50, 1}, {24, 1}, rate));
    EXPECT_FALSE(findConstantRate(times(50, 25.0), MILLISECOND, {0, 0}, {0, 1}, rate));
    expectRate(rate, 25, 1);
}

TEST(FrameRateTest, OfOneFrameTheAverageIsBelieved) {
    AVRational rate = {};
    EXPECT_TRUE(findConstantRate(times(1, 25.0), MILLISECOND, {90000, 1}, {25, 1}, rate));
    expectRate(rate, 25, 1);
    EXPECT_TRUE(findConstantRate({}, MILLISECOND, {25, 1}, {0, 0}, rate));
    expectRate(rate, 25, 1);
}

} // namespace
