// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "support/MovedFrom.h"
#include "support/Seed.h"
#include "support/ValueTexts.h"

#include <orlRational.h>

#include <gtest/gtest.h>

#include <cfloat>
#include <cmath>
#include <cstdint>
#include <limits>
#include <random>
#include <type_traits>
#include <utility>
#include <vector>

namespace {

using namespace ORL_0_81;
using namespace ValueTexts;

constexpr int INT_LOW = std::numeric_limits<int>::min();
constexpr int INT_HIGH = std::numeric_limits<int>::max();
constexpr unsigned int UINT_HIGH = std::numeric_limits<unsigned int>::max();
constexpr double NOT_A_NUMBER = std::numeric_limits<double>::quiet_NaN();
constexpr double INFINITE = std::numeric_limits<double>::infinity();

Members const GOOD = {{"numerator", "24000"}, {"denominator", "1001"}};

void expectFields(Rational const& rate, int numerator, unsigned int denominator) {
    EXPECT_EQ(rate.getNumerator(), numerator);
    EXPECT_EQ(rate.getDenominator(), denominator);
}

// Values on both sides of every limit, and plain ones.
std::vector<Rational> rates() {
    std::vector<Rational> result;
    for (int const numerator : {0, 1, 2, 24, 48, 24000, 65536, INT_HIGH, -1, -24, INT_LOW}) {
        for (unsigned int const denominator : {0U, 1U, 2U, 1001U, 65536U, 2147483648U, UINT_HIGH}) {
            result.emplace_back(numerator, denominator);
        }
    }
    return result;
}

TEST(Rational, IsOnePointerWithoutVirtualOperations) {
    EXPECT_EQ(sizeof(Rational), sizeof(void*));
    EXPECT_FALSE(std::is_polymorphic_v<Rational>);
}

TEST(Rational, NeverFailsToMove) {
    EXPECT_TRUE(std::is_nothrow_move_constructible_v<Rational>);
    EXPECT_TRUE(std::is_nothrow_move_assignable_v<Rational>);
    EXPECT_TRUE(std::is_nothrow_copy_assignable_v<Rational>);
    EXPECT_TRUE(std::is_nothrow_destructible_v<Rational>);
}

TEST(Rational, IsNoRateByDefault) {
    expectFields(Rational(), 0, 0U);
    EXPECT_EQ(Rational().getValue(), 0.0);
}

TEST(Rational, KeepsItsTwoValuesUnreduced) {
    expectFields(Rational(48, 2), 48, 2U);
    expectFields(Rational(24, 0), 24, 0U);
    expectFields(Rational(INT_LOW, UINT_HIGH), INT_LOW, UINT_HIGH);
    expectFields(Rational(INT_HIGH, 2147483648U), INT_HIGH, 2147483648U);
}

TEST(Rational, SettersChangeOneValueEach) {
    Rational rate(24, 1);
    rate.setNumerator(-7);
    expectFields(rate, -7, 1U);
    rate.setDenominator(UINT_HIGH);
    expectFields(rate, -7, UINT_HIGH);
}

TEST(Rational, ACopyIsIndependent) {
    Rational const original(24, 1);
    Rational copy(original);
    copy.setNumerator(25);
    copy.setDenominator(2);
    expectFields(original, 24, 1U);
    expectFields(copy, 25, 2U);

    Rational assigned;
    EXPECT_EQ(&(assigned = original), &assigned);
    assigned.setNumerator(30);
    expectFields(original, 24, 1U);
    expectFields(assigned, 30, 1U);
}

TEST(Rational, AssignsItselfWithoutChange) {
    Rational rate(24, 1);
    Rational& same = rate;
    EXPECT_EQ(&(rate = same), &rate);
    expectFields(rate, 24, 1U);
    EXPECT_EQ(&(rate = std::move(same)), &rate);
    expectFields(rate, 24, 1U);
}

TEST(Rational, MovesTakeTheValueAlong) {
    Rational source(24, 1);
    Rational target(std::move(source));
    expectFields(target, 24, 1U);
    EXPECT_TRUE(isMovedFrom(source)); // NOLINT(bugprone-use-after-move)

    Rational assigned(30, 1);
    EXPECT_EQ(&(assigned = std::move(target)), &assigned);
    expectFields(assigned, 24, 1U);
    EXPECT_TRUE(isMovedFrom(target)); // NOLINT(bugprone-use-after-move)
}

TEST(Rational, AMovedFromObjectTakesAMovedValue) {
    Rational source(24, 1);
    Rational const target(std::move(source));
    source = Rational(25, 1); // NOLINT(bugprone-use-after-move): what a moved-from object may do
    expectFields(source, 25, 1U);
}

TEST(Rational, AMovedFromObjectMovesOnToAnother) {
    Rational source(24, 1);
    Rational const first(std::move(source));
    Rational second(25, 1);
    second = std::move(source); // NOLINT(bugprone-use-after-move)
    EXPECT_TRUE(isMovedFrom(second));
    second = Rational(30, 1);
    expectFields(second, 30, 1U);
}

TEST(Rational, CopyAssignmentFromOrToAMovedFromObjectDoesNothing) {
    Rational source(24, 1);
    Rational const taken(std::move(source));
    Rational target(30, 1);
    EXPECT_EQ(&(target = source), &target); // NOLINT(bugprone-use-after-move)
    expectFields(target, 30, 1U);

    EXPECT_EQ(&(source = target), &source);
    EXPECT_TRUE(isMovedFrom(source));
    Rational const& same = source;
    source = same;
    EXPECT_TRUE(isMovedFrom(source));
}

TEST(Rational, SwapsThroughMoves) {
    Rational left(24, 1);
    Rational right(25, 2);
    std::swap(left, right);
    expectFields(left, 25, 2U);
    expectFields(right, 24, 1U);
}

TEST(RationalValue, IsTheQuotientOfSignedAndUnsigned) {
    struct {
        int numerator;
        unsigned int denominator;
        double value;
    } const table[] = {
        {24, 1, 24.0},
        {48, 2, 24.0},
        {24000, 1001, 24000.0 / 1001.0},
        {-24, 1, -24.0},
        {1, UINT_HIGH, 1.0 / 4294967295.0},
        {INT_LOW, 1, -2147483648.0},
        {INT_LOW, 2147483648U, -1.0},
        {0, 5, 0.0},
    };
    for (auto const& row : table) {
        EXPECT_EQ(Rational(row.numerator, row.denominator).getValue(), row.value)
            << row.numerator << "/" << row.denominator;
    }
}

TEST(RationalValue, IsZeroOverADenominatorOfZero) {
    for (int const numerator : {0, 1, 24, -1, INT_LOW, INT_HIGH}) {
        double const value = Rational(numerator, 0).getValue();
        EXPECT_EQ(value, 0.0);
        EXPECT_FALSE(std::signbit(value));
    }
}

TEST(RationalComparison, EqualityIsByValue) {
    EXPECT_TRUE(Rational(48, 2) == Rational(24, 1));
    EXPECT_TRUE(Rational(24000, 1001) == Rational(48000, 2002));
    EXPECT_TRUE(Rational(30000, 1001) == Rational(60000, 2002));
    EXPECT_FALSE(Rational(30000, 1001) == Rational(30, 1));
    EXPECT_TRUE(Rational(30000, 1001) != Rational(30, 1));
    EXPECT_FALSE(Rational(48, 2) != Rational(24, 1));
}

TEST(RationalComparison, NoRateEqualsEveryRate) {
    for (Rational const& rate : rates()) {
        EXPECT_TRUE(Rational() == rate) << rate.toJson().asChar();
        EXPECT_TRUE(rate == Rational()) << rate.toJson().asChar();
        EXPECT_FALSE(rate != Rational());
        EXPECT_FALSE(Rational() < rate);
        EXPECT_FALSE(rate < Rational());
        EXPECT_TRUE(Rational() <= rate);
        EXPECT_TRUE(rate <= Rational());
    }
}

TEST(RationalComparison, ADenominatorOfZeroIsUnequalToARealRate) {
    EXPECT_FALSE(Rational(1, 0) == Rational(24, 1));
    EXPECT_TRUE(Rational(1, 0) != Rational(24, 1));
    EXPECT_TRUE(Rational(1, 0) == Rational(2, 0));
    EXPECT_TRUE(Rational(24, 1) < Rational(1, 0));
}

TEST(RationalComparison, OrdersPositiveRatesByValue) {
    EXPECT_TRUE(Rational(24000, 1001) < Rational(24, 1));
    EXPECT_FALSE(Rational(24, 1) < Rational(24000, 1001));
    EXPECT_FALSE(Rational(24, 1) < Rational(48, 2));
    EXPECT_TRUE(Rational(24, 1) <= Rational(48, 2));
    EXPECT_TRUE(Rational(24, 1) <= Rational(25, 1));
    EXPECT_FALSE(Rational(25, 1) <= Rational(24, 1));
}

TEST(RationalComparison, NegativeNumeratorsAreLargeAsUnsigned) {
    EXPECT_FALSE(Rational(-1, 1) < Rational(1, 1));
    EXPECT_FALSE(Rational(-1, 1) <= Rational(1, 1));
    EXPECT_TRUE(Rational(1, 1) < Rational(-1, 1));
    EXPECT_TRUE(Rational(-2, 1) < Rational(-1, 1));
}

TEST(RationalComparison, ProductsWrapAt32Bits) {
    // 65536 * 65536 is 0 in 32 bits, and so is 0 * 1.
    EXPECT_TRUE(Rational(65536, 1) == Rational(0, 65536));
    EXPECT_TRUE(Rational(65536, 1) <= Rational(0, 65536));
    EXPECT_FALSE(Rational(0, 65536) < Rational(65536, 1));
    // 2147483647 * 3 is 2147483645 in 32 bits, which is below 2147483646.
    EXPECT_TRUE(Rational(INT_HIGH, 1) < Rational(2147483646, 3));
    // -1 over 4294967295 and 1 over 1: 4294967295 on both sides.
    EXPECT_TRUE(Rational(-1, UINT_HIGH) == Rational(1, 1));
}

TEST(RationalComparison, AgreesWith64BitProductsCutTo32Bits) {
    for (Rational const& left : rates()) {
        for (Rational const& right : rates()) {
            auto const product = [](Rational const& numerator, Rational const& denominator) {
                std::int64_t const wide = std::int64_t{numerator.getNumerator()} *
                                          static_cast<std::int64_t>(denominator.getDenominator());
                return static_cast<std::uint64_t>(wide) % 4294967296U;
            };
            std::uint64_t const p = product(left, right);
            std::uint64_t const q = product(right, left);
            SCOPED_TRACE(std::string(left.toJson().asChar()) + right.toJson().asChar());
            EXPECT_EQ(left == right, p == q);
            EXPECT_EQ(left != right, p != q);
            EXPECT_EQ(left < right, p < q);
            EXPECT_EQ(left <= right, p <= q);
        }
    }
}

TEST(RationalComparison, LawsHoldForRandomRates) {
    std::mt19937 random(printedSeed());
    std::uniform_int_distribution<int> anyInt(INT_LOW, INT_HIGH);
    std::uniform_int_distribution<unsigned int> anyUInt(0, UINT_HIGH);
    for (int i = 0; i < 5000; ++i) {
        Rational const left(anyInt(random), anyUInt(random));
        Rational const right(anyInt(random), anyUInt(random));
        EXPECT_TRUE(left == left);
        EXPECT_EQ(left == right, right == left);
        EXPECT_NE(left == right, left != right);
        EXPECT_EQ(left <= right, left < right || left == right);
        EXPECT_NE(left <= right, right < left);
    }
}

TEST(RationalComparison, EqualsADoubleWithinLessThanTheTolerance) {
    EXPECT_TRUE(Rational(24, 1) == 24.0);
    EXPECT_TRUE(Rational(24, 0) == 0.0);
    EXPECT_TRUE(Rational(1, 1) == 1.0 - DBL_EPSILON / 2);
    EXPECT_FALSE(Rational(1, 1) == 1.0 + DBL_EPSILON);
    EXPECT_FALSE(Rational(1, 1) == 1.0 - DBL_EPSILON);
    EXPECT_FALSE(Rational(0, 1) == DBL_EPSILON);
    EXPECT_TRUE(Rational(0, 1) == std::nextafter(DBL_EPSILON, 0.0));
    EXPECT_TRUE(Rational(-24, 1) == -24.0);
    EXPECT_FALSE(Rational(24, 1) == INFINITE);
}

TEST(RationalComparison, IsBelowADoubleWithoutTolerance) {
    EXPECT_TRUE(Rational(24, 0) < 1.0);
    EXPECT_FALSE(Rational(24, 0) < 0.0);
    EXPECT_TRUE(Rational(24, 0) < DBL_MIN);
    EXPECT_TRUE(Rational(0, 1) < DBL_EPSILON / 2);
    EXPECT_FALSE(Rational(24, 1) < 24.0);
    EXPECT_TRUE(Rational(24, 1) < 24.5);
    EXPECT_TRUE(Rational(-1, 1) < 1.0);
    EXPECT_TRUE(Rational(24, 1) < INFINITE);
}

TEST(RationalComparison, IsBelowOrEqualToADoubleWithTolerance) {
    EXPECT_TRUE(Rational(24, 1) <= 24.0);
    EXPECT_TRUE(Rational(24, 1) <= 25.0);
    EXPECT_FALSE(Rational(24, 1) <= 23.9);
    EXPECT_TRUE(Rational(1, 1) <= 1.0 - DBL_EPSILON / 2);
    EXPECT_FALSE(Rational(1, 1) <= 1.0 - DBL_EPSILON);
    EXPECT_TRUE(Rational(0, 0) <= 0.0);
    EXPECT_TRUE(Rational(24, 1) <= INFINITE);
    EXPECT_FALSE(Rational(24, 1) <= -INFINITE);
}

TEST(RationalComparison, IsNeverTrueForWhatIsNotANumber) {
    EXPECT_FALSE(Rational(24, 1) == NOT_A_NUMBER);
    EXPECT_FALSE(Rational(24, 1) < NOT_A_NUMBER);
    EXPECT_FALSE(Rational(24, 1) <= NOT_A_NUMBER);
}

TEST(RationalJson, WritesTheNumeratorThenTheDenominatorWithoutBlanks) {
    EXPECT_STREQ(Rational(24000, 1001).toJson().asChar(), R"({"numerator":24000,"denominator":1001})");
    EXPECT_STREQ(Rational().toJson().asChar(), R"({"numerator":0,"denominator":0})");
    EXPECT_STREQ(Rational(INT_LOW, UINT_HIGH).toJson().asChar(),
                 R"({"numerator":-2147483648,"denominator":4294967295})");
}

TEST(RationalJson, ReadsTheSameObjectHoweverItIsWritten) {
    for (NamedText const& text : equivalentTexts(GOOD)) {
        SCOPED_TRACE(text.name);
        expectRead(Rational(1, 2), text.text, toText(GOOD));
    }
    expectRead(Rational(1, 2), R"({"denominator":1001,"numerator":24000,"x":[]})", toText(GOOD));
}

TEST(RationalJson, RefusesWhatIsNoSuchObjectAndKeepsItsValue) {
    expectAllRefused(Rational(1, 2), brokenTexts(GOOD), Status::kInvalidRationalStr);
    expectRefused(Rational(1, 2), R"({"numerator":24000,"denominator":1001} x)", Status::kInvalidRationalStr);
}

TEST(RationalJson, RefusesWhatIsNoSigned32BitInteger) {
    expectMisfitsRefused(Rational(1, 2), GOOD, 0, kInt32, Status::kInvalidRationalStr);
    expectMisfitsRefused(Rational(1, 2), GOOD, 1, kInt32, Status::kInvalidRationalStr);
    expectRefused(Rational(1, 2), R"({"numerator":24000.0,"denominator":1001})", Status::kInvalidRationalStr);
}

TEST(RationalJson, ReadsSigned32BitIntegersToTheirLimits) {
    expectRead(Rational(), R"({"numerator":2147483647,"denominator":2147483647})",
               R"({"numerator":2147483647,"denominator":2147483647})");
    expectRead(Rational(1, 1), R"({"numerator":-2147483648,"denominator":0})",
               R"({"numerator":-2147483648,"denominator":0})");
    expectRead(Rational(1, 1), R"({"numerator":-0,"denominator":-0})", R"({"numerator":0,"denominator":0})");
}

TEST(RationalJson, TakesANegativeDenominatorByItsBits) {
    expectRead(Rational(), R"({"numerator":1,"denominator":-1})",
               R"({"numerator":1,"denominator":4294967295})");
    expectRead(Rational(), R"({"numerator":1,"denominator":-2147483648})",
               R"({"numerator":1,"denominator":2147483648})");
}

TEST(RationalJson, RefusesItsOwnTextOfALargeDenominator) {
    for (unsigned int const denominator : {2147483648U, UINT_HIGH}) {
        std::string const text = Rational(1, denominator).toJson().asChar();
        expectRefused(Rational(5, 7), text, Status::kInvalidRationalStr);
    }
}

TEST(RationalJson, TheFirstOfEqualNamesCounts) {
    expectRead(Rational(), R"({"numerator":1,"numerator":2,"denominator":3,"denominator":4})",
               R"({"numerator":1,"denominator":3})");
    expectRefused(Rational(5, 7), R"({"numerator":null,"numerator":2,"denominator":3})",
                  Status::kInvalidRationalStr);
}

TEST(RationalJson, ComesBackFromItsOwnText) {
    std::mt19937 random(printedSeed());
    std::uniform_int_distribution<int> anyInt(INT_LOW, INT_HIGH);
    std::uniform_int_distribution<unsigned int> anyReadable(0, 2147483647U);
    for (int i = 0; i < 2000; ++i) {
        Rational const original(anyInt(random), anyReadable(random));
        Rational copy;
        ASSERT_TRUE(copy.fromJson(original.toJson())) << original.toJson().asChar();
        expectFields(copy, original.getNumerator(), original.getDenominator());
    }
}

} // namespace
