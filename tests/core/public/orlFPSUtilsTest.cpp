// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "support/Seed.h"

#include <orlFPSUtils.h>

#include <gtest/gtest.h>

#include <cfloat>
#include <cmath>
#include <limits>
#include <random>
#include <string>
#include <type_traits>

namespace {

using namespace ORL_0_81;

constexpr int INT_HIGH = std::numeric_limits<int>::max();
constexpr long long HIGHEST = std::numeric_limits<long long>::max();
constexpr long long LOWEST = std::numeric_limits<long long>::min();

void expectRate(Rational const& rate, int numerator, unsigned int denominator) {
    EXPECT_EQ(rate.getNumerator(), numerator);
    EXPECT_EQ(rate.getDenominator(), denominator);
}

void expectTime(Time const& time, long long ticks, int numerator, unsigned int denominator) {
    EXPECT_EQ(time.getNbTicks(), ticks);
    expectRate(time.getRate(), numerator, denominator);
}

TEST(FPSUtils, RoundingHasThreeNumberedWays) {
    EXPECT_EQ(FPSUtils::kRoundUp, 0);
    EXPECT_EQ(FPSUtils::kRoundNearest, 1);
    EXPECT_EQ(FPSUtils::kRoundDown, 2);
    EXPECT_TRUE((std::is_same_v<std::underlying_type_t<FPSUtils::RoundDir>, int>));
}

// Names

struct NamedRate {
    char const* name;
    int numerator;
    unsigned int denominator;
};

constexpr NamedRate NAMED_RATES[] = {
    {"23.976 fps", 24000, 1001},    {"24 fps", 24, 1}, {"25 fps", 25, 1},
    {"29.97 fps NDF", 30000, 1001}, {"30 fps", 30, 1}, {"50 fps", 50, 1},
    {"59.94 fps NDF", 60000, 1001}, {"60 fps", 60, 1},
};

void expectName(int numerator, unsigned int denominator, char const* name) {
    SCOPED_TRACE(std::to_string(numerator) + "/" + std::to_string(denominator));
    String out("before");
    EXPECT_STREQ(FPSUtils::getFPSString(Rational(numerator, denominator), out).getStr(), "kSuccess");
    EXPECT_STREQ(out.asChar(), name);
}

void expectNoName(int numerator, unsigned int denominator) {
    SCOPED_TRACE(std::to_string(numerator) + "/" + std::to_string(denominator));
    String out("before");
    EXPECT_STREQ(FPSUtils::getFPSString(Rational(numerator, denominator), out).getStr(),
                 "kUnsupportedRational");
    EXPECT_STREQ(out.asChar(), "before");
}

TEST(FPSUtilsName, EightRatesHaveOne) {
    for (NamedRate const& rate : NAMED_RATES) {
        expectName(rate.numerator, rate.denominator, rate.name);
    }
}

TEST(FPSUtilsName, WholeRatesAreNamedByTheirValue) {
    expectName(48, 2, "24 fps");
    expectName(24000, 1000, "24 fps");
    expectName(25000, 1000, "25 fps");
    expectName(90, 3, "30 fps");
    expectName(50000000, 1000000, "50 fps");
    expectName(1800, 30, "60 fps");
}

TEST(FPSUtilsName, Over1001OnlyTheExactNumeratorCounts) {
    for (int const numerator : {24024, 25025, 30030, 50050, 60060, 12000, 120000, 23999, 24001, 29999, 30001,
                                59999, 60001, -24000, -30000, -60000, 0}) {
        expectNoName(numerator, 1001);
    }
}

TEST(FPSUtilsName, TheSameValueOverAMultipleOf1001HasNone) {
    expectNoName(48000, 2002);
    expectNoName(60000, 2002);
}

TEST(FPSUtilsName, OtherRatesHaveNone) {
    expectNoName(0, 0);
    expectNoName(24, 0);
    expectNoName(0, 1);
    expectNoName(-24, 1);
    expectNoName(48, 1);
    expectNoName(120000, 1000);
    expectNoName(23976, 1000);
    expectNoName(24001, 1000);
    expectNoName(2147483647, 89478485); // 24.0000000782...
}

// Rates from values

void expectFromValue(double value, int numerator, unsigned int denominator) {
    SCOPED_TRACE(value);
    Rational out(7, 3);
    EXPECT_STREQ(FPSUtils::getFPSFromValue(value, out).getStr(), "kSuccess");
    expectRate(out, numerator, denominator);
}

void expectNoRate(double value) {
    SCOPED_TRACE(value);
    Rational out(7, 3);
    EXPECT_STREQ(FPSUtils::getFPSFromValue(value, out).getStr(), "kUnsupportedFPSValue");
    expectRate(out, 7, 3U);
}

TEST(FPSUtilsValue, AtMostTheToleranceIsNoRate) {
    expectNoRate(0.0);
    expectNoRate(-0.0);
    expectNoRate(-24.0);
    expectNoRate(DBL_EPSILON);
    expectNoRate(DBL_MIN);
    expectNoRate(-DBL_MAX);
    expectNoRate(-std::numeric_limits<double>::infinity());
    expectFromValue(std::nextafter(DBL_EPSILON, 1.0), 0, 1000U);
}

TEST(FPSUtilsValue, NearTheFamilyOf1001SnapsToIt) {
    expectFromValue(23.976, 24000, 1001U);
    expectFromValue(29.97, 30000, 1001U);
    expectFromValue(59.94, 60000, 1001U);
    expectFromValue(24000.0 / 1001.0, 24000, 1001U);
    expectFromValue(30000.0 / 1001.0, 30000, 1001U);
    expectFromValue(60000.0 / 1001.0, 60000, 1001U);
    expectFromValue(25000.0 / 1001.0, 25000, 1001U);
    expectFromValue(47.952, 48000, 1001U);
    // 1001 * 23.9769 / 1000 is 24.0008769, and of 23.975 it is 23.998975: just within and just beyond 0.001.
    expectFromValue(23.9769, 24000, 1001U);
    expectFromValue(23.975, 23975, 1000U);
    // 24.00107... is beyond on the other side.
    expectFromValue(23.9771, 23977, 1000U);
}

TEST(FPSUtilsValue, WholeRatesBecomeThousandthsUnreduced) {
    expectFromValue(24.0, 24000, 1000U);
    expectFromValue(25.0, 25000, 1000U);
    expectFromValue(30.0, 30000, 1000U);
    expectFromValue(48.0, 48000, 1000U);
    expectFromValue(50.0, 50000, 1000U);
    expectFromValue(120.0, 120000, 1000U);
    expectFromValue(1.0, 1000, 1000U);
}

TEST(FPSUtilsValue, TheLimitsOfTheSnappingAreExclusive) {
    expectFromValue(60.0, 60000, 1000U);
    expectFromValue(23.0, 23000, 1000U);
    // Of the family of 1001, but outside of them.
    expectFromValue(23000.0 / 1001.0, 22977, 1000U);
    expectFromValue(61000.0 / 1001.0, 60939, 1000U);
}

TEST(FPSUtilsValue, ThousandthsAreRounded) {
    expectFromValue(12.3454, 12345, 1000U);
    expectFromValue(12.3456, 12346, 1000U);
    expectFromValue(0.0005, 1, 1000U);
    expectFromValue(0.0004, 0, 1000U);
}

TEST(FPSUtilsValue, ANumeratorStopsAtTheLimitOf32Bits) {
    expectFromValue(2147483.0, 2147483000, 1000U);
    expectFromValue(2147483.647, INT_HIGH, 1000U);
    expectFromValue(2147483.648, INT_HIGH, 1000U);
    expectFromValue(1e10, INT_HIGH, 1000U);
    expectFromValue(DBL_MAX, INT_HIGH, 1000U);
    expectFromValue(std::numeric_limits<double>::infinity(), INT_HIGH, 1000U);
}

TEST(FPSUtilsValue, WhatIsNotANumberGivesANumeratorOfZero) {
    expectFromValue(std::numeric_limits<double>::quiet_NaN(), 0, 1000U);
}

TEST(FPSUtilsValue, IsWithinAThousandthOfTheRateThatItGives) {
    std::mt19937 random(printedSeed());
    std::uniform_real_distribution<double> anyValue(0.001, 240.0);
    for (int i = 0; i < 20000; ++i) {
        double const value = anyValue(random);
        Rational rate;
        ASSERT_TRUE(FPSUtils::getFPSFromValue(value, rate));
        EXPECT_NEAR(rate.getValue(), value, 0.001) << value;
        EXPECT_TRUE(rate.getDenominator() == 1000 || rate.getDenominator() == 1001);
    }
}

TEST(FPSUtilsValue, ARateThatItGivesNeedNotHaveAName) {
    Rational rate;
    ASSERT_TRUE(FPSUtils::getFPSFromValue(120.0, rate));
    String out("before");
    EXPECT_EQ(FPSUtils::getFPSString(rate, out).get(), Status::kUnsupportedRational);
    EXPECT_STREQ(out.asChar(), "before");
}

// Rates from texts

TEST(FPSUtilsText, EachNameYieldsItsRateAndTheRateItsName) {
    for (NamedRate const& named : NAMED_RATES) {
        SCOPED_TRACE(named.name);
        Rational rate;
        EXPECT_STREQ(FPSUtils::getFPSFromString(named.name, rate).getStr(), "kSuccess");
        EXPECT_TRUE(rate == Rational(named.numerator, named.denominator));
        String name;
        EXPECT_TRUE(FPSUtils::getFPSString(rate, name));
        EXPECT_STREQ(name.asChar(), named.name);
    }
}

TEST(FPSUtilsText, ReadsTheLeadingNumberAndIgnoresTheRest) {
    struct {
        String text;
        int numerator;
        unsigned int denominator;
    } const table[] = {
        {"29.97 fps NDF", 30000, 1001}, {"29.97", 30000, 1001},     {" \t25x", 25000, 1000},
        {"+24", 24000, 1000},           {"2.4e1 fps", 24000, 1000}, {"24,5", 24000, 1000},
        {"25..7", 25000, 1000},         {"0x18", 24000, 1000},      {String("25\0007", 4), 25000, 1000},
        {"1e400", INT_HIGH, 1000},      {"inf", INT_HIGH, 1000},
    };
    for (auto const& row : table) {
        SCOPED_TRACE(row.text.asChar());
        Rational rate(7, 3);
        EXPECT_TRUE(FPSUtils::getFPSFromString(row.text, rate));
        expectRate(rate, row.numerator, row.denominator);
    }
}

TEST(FPSUtilsText, WithoutALeadingNumberThereIsNoRate) {
    for (String const& text : {String(), String(""), String("fps"), String("x24"), String("-24"), String("0"),
                               String(" "), String("."), String("1e-400"), String("\00024", 3)}) {
        SCOPED_TRACE(text.asChar());
        Rational rate(7, 3);
        EXPECT_STREQ(FPSUtils::getFPSFromString(text, rate).getStr(), "kUnsupportedFPSValue");
        expectRate(rate, 7, 3U);
    }
}

// Conversion

TEST(FPSUtilsConversion, RoundsAsAsked) {
    struct {
        Time time;
        Rational rate;
        long long up;
        long long nearest;
        long long down;
    } const table[] = {
        {Time(10, Rational(24, 1)), Rational(25, 1), 11, 10, 10},     // 10.41666...
        {Time(-10, Rational(24, 1)), Rational(25, 1), -10, -10, -10}, // -10.41666...
        {Time(106, Rational(10, 1)), Rational(1, 1), 11, 11, 10},     // 10.6
        {Time(-106, Rational(10, 1)), Rational(1, 1), -10, -11, -10}, // -10.6
        {Time(5, Rational(2, 1)), Rational(1, 1), 3, 3, 2},           // 2.5
        {Time(-5, Rational(2, 1)), Rational(1, 1), -2, -3, -2},       // -2.5
        {Time(3, Rational(2, 1)), Rational(1, 1), 2, 2, 1},           // 1.5
        {Time(1, Rational(4, 1)), Rational(1, 1), 1, 0, 0},           // 0.25
        {Time(-1, Rational(4, 1)), Rational(1, 1), 0, 0, 0},          // -0.25
        {Time(48, Rational(24, 1)), Rational(50, 1), 100, 100, 100},  // exact
        {Time(-48, Rational(24, 1)), Rational(50, 1), -100, -100, -100},
        {Time(0, Rational(24, 1)), Rational(50, 1), 0, 0, 0},
    };
    for (auto const& row : table) {
        SCOPED_TRACE(std::string(row.time.toJson().asChar()) + row.rate.toJson().asChar());
        int const numerator = row.rate.getNumerator();
        unsigned int const denominator = row.rate.getDenominator();
        expectTime(FPSUtils::convertToRate(row.time, row.rate, FPSUtils::kRoundUp), row.up, numerator,
                   denominator);
        expectTime(FPSUtils::convertToRate(row.time, row.rate, FPSUtils::kRoundNearest), row.nearest,
                   numerator, denominator);
        expectTime(FPSUtils::convertToRate(row.time, row.rate, FPSUtils::kRoundDown), row.down, numerator,
                   denominator);
    }
}

TEST(FPSUtilsConversion, AnyOtherRoundingActsLikeDown) {
    for (int const dir : {2, 3, -1, 100, std::numeric_limits<int>::min(), INT_HIGH}) {
        auto const other = static_cast<FPSUtils::RoundDir>(dir);
        expectTime(FPSUtils::convertToRate(Time(106, Rational(10, 1)), Rational(1, 1), other), 10, 1, 1U);
        expectTime(FPSUtils::convertToRate(Time(-106, Rational(10, 1)), Rational(1, 1), other), -10, 1, 1U);
    }
}

TEST(FPSUtilsConversion, KeepsTicksAndRateAsWrittenAtAnEqualRate) {
    expectTime(FPSUtils::convertToRate(Time(5, Rational(48, 2)), Rational(24, 1), FPSUtils::kRoundUp), 5, 48,
               2U);
    expectTime(FPSUtils::convertToRate(Time(5, Rational(-48, 2)), Rational(-24, 1), FPSUtils::kRoundUp), 5,
               -48, 2U);
}

TEST(FPSUtilsConversion, NoRateOnEitherSideCountsAsEqual) {
    expectTime(FPSUtils::convertToRate(Time(5, Rational(24, 1)), Rational(), FPSUtils::kRoundUp), 5, 24, 1U);
    expectTime(FPSUtils::convertToRate(Time(5, Rational()), Rational(24, 1), FPSUtils::kRoundUp), 5, 0, 0U);
}

TEST(FPSUtilsConversion, ToAnotherRateOfValueZeroGivesZeroTicksAtIt) {
    expectTime(FPSUtils::convertToRate(Time(5, Rational(24, 1)), Rational(0, 1), FPSUtils::kRoundUp), 0, 0,
               1U);
    expectTime(FPSUtils::convertToRate(Time(5, Rational(24, 1)), Rational(24, 0), FPSUtils::kRoundUp), 0, 24,
               0U);
    expectTime(FPSUtils::convertToRate(Time(5, Rational(0, 1)), Rational(0, 3), FPSUtils::kRoundUp), 5, 0,
               1U);
}

TEST(FPSUtilsConversion, FromARateThatIsNotAboveZeroGivesZeroTicks) {
    expectTime(FPSUtils::convertToRate(Time(5, Rational(0, 1)), Rational(24, 1), FPSUtils::kRoundUp), 0, 24,
               1U);
    expectTime(FPSUtils::convertToRate(Time(5, Rational(-24, 1)), Rational(24, 1), FPSUtils::kRoundUp), 0, 24,
               1U);
}

TEST(FPSUtilsConversion, ToANegativeRateGivesNegativeTicks) {
    expectTime(FPSUtils::convertToRate(Time(48, Rational(24, 1)), Rational(-25, 1), FPSUtils::kRoundUp), -50,
               -25, 1U);
}

TEST(FPSUtilsConversion, AnUndefinedTimeStaysSoAtAnEqualRateOnly) {
    Time const undefined(Time::getUndefinedNbTicks(), Rational(24, 1));
    EXPECT_TRUE(FPSUtils::convertToRate(undefined, Rational(48, 2), FPSUtils::kRoundUp).isUndefined());
    // 2^63 / 24 * 12 is exactly 2^62.
    expectTime(FPSUtils::convertToRate(undefined, Rational(12, 1), FPSUtils::kRoundUp), 4611686018427387904LL,
               12, 1U);
}

TEST(FPSUtilsConversion, TicksBeyond64BitsStopAtTheLimits) {
    for (FPSUtils::RoundDir const dir : {FPSUtils::kRoundUp, FPSUtils::kRoundNearest, FPSUtils::kRoundDown}) {
        expectTime(FPSUtils::convertToRate(Time(HIGHEST, Rational(24, 1)), Rational(48, 1), dir), HIGHEST, 48,
                   1U);
        expectTime(FPSUtils::convertToRate(Time(LOWEST, Rational(24, 1)), Rational(48, 1), dir), LOWEST, 48,
                   1U);
        expectTime(
            FPSUtils::convertToRate(Time(HIGHEST, Rational(1, 4294967295U)), Rational(INT_HIGH, 1), dir),
            HIGHEST, INT_HIGH, 1U);
        // The largest double below 2^63 still fits.
        expectTime(
            FPSUtils::convertToRate(Time(9223372036854774784LL / 2, Rational(1, 1)), Rational(2, 1), dir),
            9223372036854774784LL, 2, 1U);
        // -2^63 itself, and nothing beyond.
        expectTime(FPSUtils::convertToRate(Time(LOWEST / 2, Rational(1, 1)), Rational(2, 1), dir), LOWEST, 2,
                   1U);
    }
}

TEST(FPSUtilsConversion, LeavesItsArgumentsAlone) {
    Time const time(10, Rational(24, 1));
    Rational const rate(25, 1);
    FPSUtils::convertToRate(time, rate, FPSUtils::kRoundUp);
    expectTime(time, 10, 24, 1U);
    expectRate(rate, 25, 1U);
}

TEST(FPSUtilsConversion, TheRoundingsLieAroundTheExactValue) {
    std::mt19937 random(printedSeed());
    std::uniform_int_distribution<long long> anyTicks(-1000000000000LL, 1000000000000LL);
    std::uniform_int_distribution<int> anyNumerator(1, 120000);
    std::uniform_int_distribution<unsigned int> anyDenominator(1, 1001);
    for (int i = 0; i < 5000; ++i) {
        Rational const from(anyNumerator(random), anyDenominator(random));
        Rational const to(anyNumerator(random), anyDenominator(random));
        Time const time(anyTicks(random), from);
        if (from == to) {
            continue;
        }
        double const exact = time.getValue() * to.getValue();
        SCOPED_TRACE(std::string(time.toJson().asChar()) + to.toJson().asChar());
        auto const convert = [&](FPSUtils::RoundDir dir) {
            return static_cast<double>(FPSUtils::convertToRate(time, to, dir).getNbTicks());
        };
        if (std::fabs(exact) < 9007199254740992.0) { // beyond 2^53 every double is whole
            double const up = convert(FPSUtils::kRoundUp);
            EXPECT_GE(up, exact);
            EXPECT_LT(up - exact, 1.0);
            double const down = convert(FPSUtils::kRoundDown);
            EXPECT_LE(std::fabs(down), std::fabs(exact));
            EXPECT_LT(std::fabs(exact - down), 1.0);
            EXPECT_LE(std::fabs(convert(FPSUtils::kRoundNearest) - exact), 0.5);
        }
    }
}

} // namespace
