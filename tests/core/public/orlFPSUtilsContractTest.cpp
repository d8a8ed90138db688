// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "support/Seed.h"

#include <orlFPSUtils.h>

#include <gtest/gtest.h>

#include <cfloat>
#include <cmath>
#include <random>
#include <string>

namespace {

using namespace ORL_0_81;

// The rate that a value becomes.
std::string rateOf(double value) {
    Rational rate;
    EXPECT_TRUE(FPSUtils::getFPSFromValue(value, rate)) << value;
    return std::to_string(rate.getNumerator()) + "/" + std::to_string(rate.getDenominator());
}

TEST(FPSUtilsContract, AValueBecomesTheRateOfTheFormula) {
    std::mt19937 random(printedSeed());
    std::uniform_real_distribution<double> anyValue(22.5, 60.5);
    std::uniform_int_distribution<int> family(22, 62);
    std::uniform_real_distribution<double> offset(-0.0012, 0.0012);
    for (int i = 0; i < 20000; ++i) {
        double const v = i % 2 ? anyValue(random) : (family(random) + offset(random)) * 1000.0 / 1001.0;
        double const t = 1001.0 * v / 1000.0;
        int const r = static_cast<int>(t + 0.5);
        bool const snaps = v > 23.0 && v < 60.0 && std::fabs(t - r) < 0.001;
        std::string const expected = snaps ? std::to_string(static_cast<int>(r * 1000.0 + 0.5)) + "/1001"
                                           : std::to_string(static_cast<int>(v * 1000.0 + 0.5)) + "/1000";
        ASSERT_EQ(rateOf(v), expected) << std::hexfloat << v;
    }
}

TEST(FPSUtilsContract, ConvertsThroughSecondsAsDoubles) {
    std::mt19937 random(printedSeed());
    Rational const rates[] = {Rational(24, 1),       Rational(24000, 1001), Rational(30000, 1001),
                              Rational(60000, 1001), Rational(25, 1),       Rational(48000, 1),
                              Rational(1, 3),        Rational(-24, 1),      Rational(0, 1),
                              Rational(90000, 1),    Rational(1, 1000)};
    std::uniform_int_distribution<long long> anyTicks(-5000000, 5000000);
    for (int i = 0; i < 2000; ++i) {
        long long const ticks = anyTicks(random);
        for (Rational const& from : rates) {
            for (Rational const& to : rates) {
                double const seconds =
                    from.getValue() > DBL_EPSILON ? static_cast<double>(ticks) / from.getValue() : 0.0;
                double const x = seconds * to.getValue();
                Time const time(ticks, from);
                bool const equal = from == to;
                EXPECT_EQ(FPSUtils::convertToRate(time, to, FPSUtils::kRoundUp).getNbTicks(),
                          equal ? ticks : static_cast<long long>(std::ceil(x)));
                EXPECT_EQ(FPSUtils::convertToRate(time, to, FPSUtils::kRoundNearest).getNbTicks(),
                          equal ? ticks : static_cast<long long>(std::round(x)));
                EXPECT_EQ(FPSUtils::convertToRate(time, to, FPSUtils::kRoundDown).getNbTicks(),
                          equal ? ticks : static_cast<long long>(std::trunc(x)));
            }
        }
    }
}

TEST(FPSUtilsContract, RatesThatCompareEqualKeepTheTimeWhateverMakesThemEqual) {
    struct {
        Time time;
        Rational rate;
    } const cases[] = {
        {Time(5, Rational(7, 0)), Rational(3, 0)},
        {Time(5, Rational(65536, 1)), Rational(0, 65536)}, // equal by what is left of their products
    };
    for (auto const& c : cases) {
        for (FPSUtils::RoundDir const dir :
             {FPSUtils::kRoundUp, FPSUtils::kRoundNearest, FPSUtils::kRoundDown}) {
            EXPECT_STREQ(FPSUtils::convertToRate(c.time, c.rate, dir).toJson().asChar(),
                         c.time.toJson().asChar());
        }
    }
}

TEST(FPSUtilsContract, ATimeIsReplacedByItselfAtItsOwnRate) {
    Time time(5, Rational(24, 1));
    time = FPSUtils::convertToRate(time, time.getRate(), FPSUtils::kRoundUp);
    EXPECT_EQ(time.getNbTicks(), 5);
    EXPECT_EQ(time.getRate().getNumerator(), 24);
}

} // namespace
