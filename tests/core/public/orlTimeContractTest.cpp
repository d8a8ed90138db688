// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include <orlRational.h>
#include <orlTime.h>

#include <gtest/gtest.h>

#include <type_traits>

namespace {

using namespace ORL_0_81;

TEST(TimeContract, TheRateThatItGivesIsItsOwnAndFollowsIt) {
    Time time(5, Rational(24, 1));
    Rational const& rate = time.getRate();
    EXPECT_TRUE((std::is_same<decltype(time.getRate()), Rational const&>::value));
    time.setRate(Rational(25, 2));
    EXPECT_EQ(&time.getRate(), &rate);
    EXPECT_EQ(rate.getNumerator(), 25);
}

TEST(TimeContract, ItsOwnRateCanBeSet) {
    Time time(5, Rational(24, 1));
    time.setRate(time.getRate());
    EXPECT_STREQ(time.toJson().asChar(), R"({"number_of_ticks":5,"numerator":24,"denominator":1})");
}

TEST(TimeContract, CopyAssignmentTakesTheRateAsItIsWrittenNotOnlyItsValue) {
    Time time(5, Rational(24, 1));
    Time const other(5, Rational(48, 2));
    ASSERT_TRUE(time == other);
    time = other;
    EXPECT_EQ(time.getRate().getNumerator(), 48);
    EXPECT_EQ(time.getRate().getDenominator(), 2U);
}

} // namespace
