// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "support/MovedFrom.h"
#include "support/Seed.h"
#include "support/ValueTexts.h"

#include <orlTime.h>

#include <gtest/gtest.h>

#include <limits>
#include <random>
#include <type_traits>
#include <utility>

namespace {

using namespace ORL_0_81;
using namespace ValueTexts;

constexpr long long UNDEFINED = 9223372036854775807LL;
constexpr long long LOWEST = std::numeric_limits<long long>::min();

Members const GOOD = {{"number_of_ticks", "48"}, {"numerator", "24000"}, {"denominator", "1001"}};

void expectFields(Time const& time, long long ticks, int numerator, unsigned int denominator) {
    EXPECT_EQ(time.getNbTicks(), ticks);
    EXPECT_EQ(time.getRate().getNumerator(), numerator);
    EXPECT_EQ(time.getRate().getDenominator(), denominator);
}

TEST(Time, IsOnePointerWithoutVirtualOperations) {
    EXPECT_EQ(sizeof(Time), sizeof(void*));
    EXPECT_FALSE(std::is_polymorphic_v<Time>);
}

TEST(Time, NeverFailsToMove) {
    EXPECT_TRUE(std::is_nothrow_move_constructible_v<Time>);
    EXPECT_TRUE(std::is_nothrow_move_assignable_v<Time>);
    EXPECT_TRUE(std::is_nothrow_copy_assignable_v<Time>);
    EXPECT_TRUE(std::is_nothrow_destructible_v<Time>);
}

TEST(Time, IsZeroTicksAtNoRateByDefaultAndNotUndefined) {
    Time const time;
    expectFields(time, 0, 0, 0U);
    EXPECT_FALSE(time.isUndefined());
    EXPECT_EQ(time.getValue(), 0.0);
}

TEST(Time, KeepsACopyOfItsRate) {
    Rational rate(24, 1);
    Time const time(-5, rate);
    rate.setNumerator(25);
    expectFields(time, -5, 24, 1U);
}

TEST(Time, IsUndefinedByItsTicksAloneWhateverTheRate) {
    EXPECT_EQ(Time::getUndefinedNbTicks(), UNDEFINED);
    for (Rational const& rate : {Rational(), Rational(24, 1), Rational(-1, 0)}) {
        EXPECT_TRUE(Time(UNDEFINED, rate).isUndefined());
        EXPECT_FALSE(Time(UNDEFINED - 1, rate).isUndefined());
        EXPECT_FALSE(Time(LOWEST, rate).isUndefined());
        EXPECT_FALSE(Time(-1, rate).isUndefined());
    }
}

TEST(Time, SettersDoNotTouchEachOthersField) {
    Time time(48, Rational(24, 1));
    time.setRate(Rational(30000, 1001));
    expectFields(time, 48, 30000, 1001U);
    time.setNbTicks(UNDEFINED);
    expectFields(time, UNDEFINED, 30000, 1001U);
    time.setRate(time.getRate());
    expectFields(time, UNDEFINED, 30000, 1001U);
}

TEST(Time, ACopyIsIndependent) {
    Time const original(48, Rational(24, 1));
    Time copy(original);
    copy.setNbTicks(1);
    copy.setRate(Rational(25, 1));
    expectFields(original, 48, 24, 1U);

    Time assigned;
    EXPECT_EQ(&(assigned = original), &assigned);
    expectFields(assigned, 48, 24, 1U);
    assigned.setRate(Rational(25, 1));
    expectFields(original, 48, 24, 1U);
}

TEST(Time, AssignsItselfWithoutChange) {
    Time time(48, Rational(24, 1));
    Time& same = time;
    EXPECT_EQ(&(time = same), &time);
    expectFields(time, 48, 24, 1U);
    EXPECT_EQ(&(time = std::move(same)), &time);
    expectFields(time, 48, 24, 1U);
}

TEST(Time, MovesTakeTheValueAlong) {
    Time source(48, Rational(24, 1));
    Time target(std::move(source));
    expectFields(target, 48, 24, 1U);
    EXPECT_TRUE(isMovedFrom(source)); // NOLINT(bugprone-use-after-move)
    Time assigned(1, Rational(1, 1));
    EXPECT_EQ(&(assigned = std::move(target)), &assigned);
    expectFields(assigned, 48, 24, 1U);
    EXPECT_TRUE(isMovedFrom(target)); // NOLINT(bugprone-use-after-move)
}

TEST(Time, AMovedFromObjectTakesAMovedValue) {
    Time source(48, Rational(24, 1));
    Time const target(std::move(source));
    source = Time(1, Rational(25, 1)); // NOLINT(bugprone-use-after-move): what a moved-from object may do
    expectFields(source, 1, 25, 1U);
}

TEST(Time, AMovedFromObjectIsUnequalToEverythingItselfIncluded) {
    Time source(48, Rational(24, 1));
    Time const target(std::move(source));
    // NOLINTBEGIN(bugprone-use-after-move)
    EXPECT_FALSE(source == target);
    EXPECT_FALSE(target == source);
    EXPECT_FALSE(source == source);
    EXPECT_TRUE(source != target);
    EXPECT_TRUE(target != source);
    EXPECT_TRUE(source != source);
    Time other;
    Time const taken(std::move(other));
    EXPECT_FALSE(source == other);
    EXPECT_TRUE(source != other);
    // NOLINTEND(bugprone-use-after-move)
}

TEST(TimeComparison, NeedsTheSameTicksAtAnEqualRate) {
    struct {
        Time left;
        Time right;
        bool isEqual;
    } const table[] = {
        {Time(24, Rational(24, 1)), Time(24, Rational(24, 1)), true},
        {Time(24, Rational(24, 1)), Time(24, Rational(48, 2)), true},
        {Time(24, Rational(24, 1)), Time(48, Rational(48, 1)), false}, // both are one second
        {Time(24, Rational(24, 1)), Time(24, Rational(25, 1)), false},
        {Time(24, Rational(24, 1)), Time(25, Rational(24, 1)), false},
        {Time(1, Rational(0, 0)), Time(1, Rational(24, 1)), true},
        {Time(1, Rational(0, 0)), Time(2, Rational(24, 1)), false},
        {Time(4294967297, Rational(24, 1)), Time(1, Rational(24, 1)), false},
        {Time(UNDEFINED, Rational(24, 1)), Time(UNDEFINED, Rational(24, 1)), true},
        {Time(UNDEFINED, Rational(24, 1)), Time(UNDEFINED, Rational(25, 1)), false},
        {Time(), Time(), true},
    };
    for (auto const& row : table) {
        SCOPED_TRACE(std::string(row.left.toJson().asChar()) + row.right.toJson().asChar());
        EXPECT_EQ(row.left == row.right, row.isEqual);
        EXPECT_EQ(row.right == row.left, row.isEqual);
        EXPECT_NE(row.left != row.right, row.isEqual);
        EXPECT_NE(row.right != row.left, row.isEqual);
        EXPECT_TRUE(row.left == row.left);
        EXPECT_FALSE(row.left != row.left);
    }
}

TEST(TimeValue, IsTheTicksOverTheRateInSeconds) {
    EXPECT_EQ(Time(48, Rational(24, 1)).getValue(), 2.0);
    EXPECT_EQ(Time(-48, Rational(24, 1)).getValue(), -2.0);
    EXPECT_EQ(Time(1001, Rational(24000, 1001)).getValue(), 1001.0 / (24000.0 / 1001.0));
    EXPECT_EQ(Time(LOWEST, Rational(1, 1)).getValue(), -9223372036854775808.0);
    EXPECT_EQ(Time(1, Rational(1, 4294967295U)).getValue(), 1.0 / (1.0 / 4294967295.0));
}

TEST(TimeValue, IsZeroAtARateThatIsNotAboveZero) {
    for (Rational const& rate :
         {Rational(), Rational(24, 0), Rational(0, 1), Rational(-24, 1), Rational(-24, 0)}) {
        EXPECT_EQ(Time(48, rate).getValue(), 0.0) << rate.toJson().asChar();
    }
}

TEST(TimeValue, CountsUndefinedTicksLikeAnyOther) {
    EXPECT_EQ(Time(UNDEFINED, Rational(2, 1)).getValue(), 4611686018427387904.0);
}

TEST(TimeJson, WritesTheTicksThenTheRateFlat) {
    EXPECT_STREQ(Time(48, Rational(24000, 1001)).toJson().asChar(), toText(GOOD).c_str());
    EXPECT_STREQ(Time().toJson().asChar(), R"({"number_of_ticks":0,"numerator":0,"denominator":0})");
    EXPECT_STREQ(Time(LOWEST, Rational(-1, 4294967295U)).toJson().asChar(),
                 R"({"number_of_ticks":-9223372036854775808,"numerator":-1,"denominator":4294967295})");
}

TEST(TimeJson, RefusesTheTextOfAnUndefinedTime) {
    Time time(Time::getUndefinedNbTicks(), Rational(24, 1));
    EXPECT_STREQ(time.toJson().asChar(),
                 R"({"number_of_ticks":9223372036854775807,"numerator":24,"denominator":1})");
    EXPECT_EQ(time.fromJson(time.toJson()).get(), Status::kInvalidTimeStr);
    EXPECT_TRUE(time.isUndefined());
}

TEST(TimeJson, ReadsTicksOf32BitsOnly) {
    expectRead(Time(), R"({"number_of_ticks":-2147483648,"numerator":1,"denominator":1})",
               R"({"number_of_ticks":-2147483648,"numerator":1,"denominator":1})");
    expectRead(Time(), R"({"number_of_ticks":2147483647,"numerator":1,"denominator":1})",
               R"({"number_of_ticks":2147483647,"numerator":1,"denominator":1})");
    for (char const* ticks : {"2147483648", "-2147483649", "4294967297", "9223372036854775807"}) {
        expectRefused(Time(7, Rational(5, 3)), toText(with(GOOD, 0, ticks)), Status::kInvalidTimeStr);
    }
}

TEST(TimeJson, ReadsTheSameObjectHoweverItIsWritten) {
    for (NamedText const& text : equivalentTexts(GOOD)) {
        SCOPED_TRACE(text.name);
        expectRead(Time(7, Rational(5, 3)), text.text, toText(GOOD));
    }
}

TEST(TimeJson, RefusesWhatIsNoSuchObjectAndKeepsItsValue) {
    expectAllRefused(Time(7, Rational(5, 3)), brokenTexts(GOOD), Status::kInvalidTimeStr);
    expectRefused(Time(7, Rational(5, 3)), R"({"number_of_ticks":1,"rate":{"numerator":24,"denominator":1}})",
                  Status::kInvalidTimeStr);
}

TEST(TimeJson, RefusesWhatIsNoSigned32BitInteger) {
    for (std::size_t member = 0; member < GOOD.size(); ++member) {
        expectMisfitsRefused(Time(7, Rational(5, 3)), GOOD, member, kInt32, Status::kInvalidTimeStr);
    }
}

TEST(TimeJson, TakesANegativeDenominatorByItsBits) {
    expectRead(Time(), R"({"number_of_ticks":1,"numerator":1,"denominator":-1})",
               R"({"number_of_ticks":1,"numerator":1,"denominator":4294967295})");
}

TEST(TimeJson, TheFirstOfEqualNamesCounts) {
    expectRead(Time(),
               R"({"number_of_ticks":1,"number_of_ticks":2,"numerator":3,"denominator":4,"numerator":5})",
               R"({"number_of_ticks":1,"numerator":3,"denominator":4})");
    expectRefused(Time(7, Rational(5, 3)),
                  R"({"number_of_ticks":1.0,"number_of_ticks":2,"numerator":3,"denominator":4})",
                  Status::kInvalidTimeStr);
}

TEST(TimeJson, ComesBackFromItsOwnTextWithin32Bits) {
    std::mt19937 random(printedSeed());
    std::uniform_int_distribution<int> anyInt(std::numeric_limits<int>::min(),
                                              std::numeric_limits<int>::max());
    std::uniform_int_distribution<unsigned int> anyReadable(0, 2147483647U);
    for (int i = 0; i < 2000; ++i) {
        Time const original(anyInt(random), Rational(anyInt(random), anyReadable(random)));
        Time copy;
        ASSERT_TRUE(copy.fromJson(original.toJson())) << original.toJson().asChar();
        EXPECT_STREQ(copy.toJson().asChar(), original.toJson().asChar());
        EXPECT_TRUE(copy == original);
    }
}

} // namespace
