// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "support/MovedFrom.h"
#include "support/Seed.h"
#include "support/ValueTexts.h"

#include <orlBounds.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cfloat>
#include <cmath>
#include <limits>
#include <random>
#include <type_traits>
#include <utility>

namespace {

using namespace ORL_0_81;
using namespace ValueTexts;

constexpr double NOT_A_NUMBER = std::numeric_limits<double>::quiet_NaN();
constexpr double INFINITE = std::numeric_limits<double>::infinity();

Members const GOOD = {{"center", "[0.5,-0.25]"}, {"size", "[2.0,1.0]"}};

void expectFields(Bounds const& bounds, double centerX, double centerY, double sizeX, double sizeY) {
    EXPECT_EQ(bounds.getCenterX(), centerX);
    EXPECT_EQ(bounds.getCenterY(), centerY);
    EXPECT_EQ(bounds.getSizeX(), sizeX);
    EXPECT_EQ(bounds.getSizeY(), sizeY);
}

TEST(Bounds, IsOnePointerWithoutVirtualOperations) {
    EXPECT_EQ(sizeof(Bounds), sizeof(void*));
    EXPECT_FALSE(std::is_polymorphic_v<Bounds>);
}

TEST(Bounds, NeverFailsToMove) {
    EXPECT_TRUE(std::is_nothrow_move_constructible_v<Bounds>);
    EXPECT_TRUE(std::is_nothrow_move_assignable_v<Bounds>);
    EXPECT_TRUE(std::is_nothrow_copy_assignable_v<Bounds>);
    EXPECT_TRUE(std::is_nothrow_destructible_v<Bounds>);
}

TEST(Bounds, IsZeroAndNotValidByDefaultWithARatioOfOne) {
    Bounds const bounds;
    expectFields(bounds, 0.0, 0.0, 0.0, 0.0);
    EXPECT_FALSE(bounds.isValid());
    EXPECT_EQ(bounds.getFrameRatio(), 1.0);
}

TEST(Bounds, KeepsItsValuesAsTheyAre) {
    expectFields(Bounds(1.0, 2.0, 3.0, 4.0), 1.0, 2.0, 3.0, 4.0);
    expectFields(Bounds(-1e300, 5e-324, -3.0, INFINITE), -1e300, 5e-324, -3.0, INFINITE);
}

TEST(Bounds, SettersChangeOneValueEach) {
    Bounds bounds(1.0, 2.0, 3.0, 4.0);
    bounds.setCenterX(5.0);
    expectFields(bounds, 5.0, 2.0, 3.0, 4.0);
    bounds.setCenterY(6.0);
    expectFields(bounds, 5.0, 6.0, 3.0, 4.0);
    bounds.setSizeX(-7.0);
    expectFields(bounds, 5.0, 6.0, -7.0, 4.0);
    bounds.setSizeY(8.0);
    expectFields(bounds, 5.0, 6.0, -7.0, 8.0);
}

TEST(Bounds, ACopyIsIndependent) {
    Bounds const original(1.0, 2.0, 3.0, 4.0);
    Bounds copy(original);
    copy.setCenterX(9.0);
    expectFields(original, 1.0, 2.0, 3.0, 4.0);

    Bounds assigned;
    EXPECT_EQ(&(assigned = original), &assigned);
    expectFields(assigned, 1.0, 2.0, 3.0, 4.0);
    assigned.setSizeY(9.0);
    expectFields(original, 1.0, 2.0, 3.0, 4.0);
}

TEST(Bounds, AssignsItselfWithoutChange) {
    Bounds bounds(1.0, 2.0, 3.0, 4.0);
    Bounds& same = bounds;
    EXPECT_EQ(&(bounds = same), &bounds);
    expectFields(bounds, 1.0, 2.0, 3.0, 4.0);
    EXPECT_EQ(&(bounds = std::move(same)), &bounds);
    expectFields(bounds, 1.0, 2.0, 3.0, 4.0);
}

// NOLINTBEGIN(bugprone-use-after-move): what a moved-from object may do

TEST(Bounds, MovesTakeTheValueAlong) {
    Bounds source(1.0, 2.0, 3.0, 4.0);
    Bounds target(std::move(source));
    expectFields(target, 1.0, 2.0, 3.0, 4.0);
    EXPECT_TRUE(isMovedFrom(source));

    Bounds assigned;
    EXPECT_EQ(&(assigned = std::move(target)), &assigned);
    expectFields(assigned, 1.0, 2.0, 3.0, 4.0);
    EXPECT_TRUE(isMovedFrom(target));

    source = std::move(assigned);
    expectFields(source, 1.0, 2.0, 3.0, 4.0);
}

TEST(Bounds, CopyAssignmentFromOrToAMovedFromObjectDoesNothing) {
    Bounds source(1.0, 2.0, 3.0, 4.0);
    Bounds const taken(std::move(source));
    Bounds target(5.0, 6.0, 7.0, 8.0);
    EXPECT_EQ(&(target = source), &target);
    expectFields(target, 5.0, 6.0, 7.0, 8.0);
    EXPECT_EQ(&(source = target), &source);
    EXPECT_TRUE(isMovedFrom(source));
}

TEST(Bounds, AMovedFromObjectIsUnequalToEverythingItselfIncluded) {
    Bounds source(1.0, 2.0, 3.0, 4.0);
    Bounds const target(std::move(source));
    Bounds other;
    Bounds const taken(std::move(other));
    EXPECT_FALSE(source == target);
    EXPECT_FALSE(target == source);
    EXPECT_FALSE(source == source);
    EXPECT_FALSE(source == other);
    EXPECT_TRUE(source != target);
    EXPECT_TRUE(target != source);
    EXPECT_TRUE(source != source);
    EXPECT_TRUE(source != other);
}

// NOLINTEND(bugprone-use-after-move)

TEST(BoundsComparison, IsWithinAnAbsoluteTolerance) {
    Bounds const origin;
    double const justBelow = std::nextafter(DBL_EPSILON, 0.0);
    void (Bounds::*const setters[])(double) noexcept = {&Bounds::setCenterX, &Bounds::setCenterY,
                                                        &Bounds::setSizeX, &Bounds::setSizeY};
    for (auto const setter : setters) {
        for (double const sign : {1.0, -1.0}) {
            Bounds other;
            (other.*setter)(sign * 1e-17);
            EXPECT_TRUE(origin == other);
            EXPECT_FALSE(origin != other);
            (other.*setter)(sign * justBelow);
            EXPECT_TRUE(origin == other);
            (other.*setter)(sign * DBL_EPSILON);
            EXPECT_FALSE(origin == other);
            EXPECT_TRUE(origin != other);
            (other.*setter)(sign * 1e-15);
            EXPECT_FALSE(origin == other);
            EXPECT_TRUE(other != origin);
        }
    }
}

TEST(BoundsComparison, DoesNotScaleTheToleranceWithTheValues) {
    double const large = 1e10;
    EXPECT_TRUE(Bounds(large, 0.0, 1.0, 1.0) == Bounds(large, 0.0, 1.0, 1.0));
    EXPECT_FALSE(Bounds(large, 0.0, 1.0, 1.0) == Bounds(std::nextafter(large, 2e10), 0.0, 1.0, 1.0));
    EXPECT_TRUE(Bounds(1.0, 0.0, 1.0, 1.0) == Bounds(1.0 - DBL_EPSILON / 2, 0.0, 1.0, 1.0));
}

TEST(BoundsComparison, WhatIsNotFiniteEqualsItselfOnly) {
    for (double const value : {NOT_A_NUMBER, INFINITE, -INFINITE}) {
        Bounds const bounds(0.0, value, 1.0, 1.0);
        Bounds const copy(bounds);
        EXPECT_TRUE(bounds == bounds);
        EXPECT_FALSE(bounds != bounds);
        EXPECT_FALSE(bounds == copy);
        EXPECT_TRUE(bounds != copy);
    }
}

TEST(BoundsComparison, LawsHoldForRandomBounds) {
    std::mt19937 random(printedSeed());
    std::uniform_int_distribution<int> few(-2, 2);
    auto const any = [&] {
        double const values[] = {few(random) * 1e-16, few(random) * 1.5e-16, 1.0 + few(random) * 1e-16,
                                 few(random) * 0.5};
        return Bounds(values[0], values[1], values[2], values[3]);
    };
    for (int i = 0; i < 5000; ++i) {
        Bounds const left = any();
        Bounds const right = any();
        EXPECT_TRUE(left == Bounds(left));
        EXPECT_EQ(left == right, right == left);
        EXPECT_NE(left == right, left != right);
    }
}

TEST(BoundsRatio, IsTheWidthOverTheHeight) {
    EXPECT_EQ(Bounds(0.0, 0.0, 1920.0, 1080.0).getFrameRatio(), 1920.0 / 1080.0);
    EXPECT_EQ(Bounds(5.0, 5.0, -2.0, 4.0).getFrameRatio(), -0.5);
    EXPECT_EQ(Bounds(0.0, 0.0, 0.0, 4.0).getFrameRatio(), 0.0);
    EXPECT_EQ(Bounds(0.0, 0.0, 2.0, -4.0).getFrameRatio(), -0.5);
    EXPECT_EQ(Bounds(0.0, 0.0, 1.0, DBL_EPSILON).getFrameRatio(), 1.0 / DBL_EPSILON);
    EXPECT_EQ(Bounds(0.0, 0.0, 1.0, -DBL_EPSILON).getFrameRatio(), -1.0 / DBL_EPSILON);
    EXPECT_EQ(Bounds(0.0, 0.0, 3.0, INFINITE).getFrameRatio(), 0.0);
    EXPECT_TRUE(std::isnan(Bounds(0.0, 0.0, 3.0, NOT_A_NUMBER).getFrameRatio()));
}

TEST(BoundsRatio, IsOneForAHeightOfAboutZero) {
    double const justBelow = std::nextafter(DBL_EPSILON, 0.0);
    for (double const height : {0.0, -0.0, 1e-17, justBelow, -justBelow}) {
        EXPECT_EQ(Bounds(0.0, 0.0, 7.0, height).getFrameRatio(), 1.0) << height;
    }
}

TEST(BoundsValidity, NeedsBothSizesFromTheToleranceUp) {
    double const justBelow = std::nextafter(DBL_EPSILON, 0.0);
    EXPECT_TRUE(Bounds(0.0, 0.0, DBL_EPSILON, DBL_EPSILON).isValid());
    EXPECT_TRUE(Bounds(NOT_A_NUMBER, -INFINITE, 1.0, INFINITE).isValid());
    for (double const size : {0.0, -1.0, justBelow, -DBL_EPSILON, NOT_A_NUMBER, -INFINITE}) {
        EXPECT_FALSE(Bounds(0.0, 0.0, size, 1.0).isValid()) << size;
        EXPECT_FALSE(Bounds(0.0, 0.0, 1.0, size).isValid()) << size;
    }
}

TEST(BoundsGrow, HoldsBothRectangles) {
    struct {
        Bounds bounds;
        Bounds other;
        Bounds result;
    } const table[] = {
        {Bounds(0, 0, 2, 2), Bounds(2, 0, 2, 2), Bounds(1, 0, 4, 2)},
        {Bounds(2, 0, 2, 2), Bounds(0, 0, 2, 2), Bounds(1, 0, 4, 2)},
        {Bounds(0, 0, 2, 2), Bounds(0, -3, 2, 2), Bounds(0, -1.5, 2, 5)},
        {Bounds(0, 0, 4, 4), Bounds(0.5, 0.5, 1, 1), Bounds(0, 0, 4, 4)},
        {Bounds(0.5, 0.5, 1, 1), Bounds(0, 0, 4, 4), Bounds(0, 0, 4, 4)},
        {Bounds(0, 0, 2, 4), Bounds(0, 0, 4, 2), Bounds(0, 0, 4, 4)},
        {Bounds(1, 2, 3, 4), Bounds(1, 2, 3, 4), Bounds(1, 2, 3, 4)},
    };
    for (auto const& row : table) {
        SCOPED_TRACE(std::string(row.bounds.toJson().asChar()) + row.other.toJson().asChar());
        Bounds grown(row.bounds);
        grown.grow(row.other);
        EXPECT_STREQ(grown.toJson().asChar(), row.result.toJson().asChar());
    }
}

TEST(BoundsGrow, CountsRectanglesThatAreNotValid) {
    Bounds fromDefault;
    fromDefault.grow(Bounds(10.0, 20.0, 2.0, 2.0));
    expectFields(fromDefault, 5.5, 10.5, 11.0, 21.0); // takes in the point (0, 0)

    Bounds byDefault(10.0, 20.0, 2.0, 2.0);
    byDefault.grow(Bounds());
    expectFields(byDefault, 5.5, 10.5, 11.0, 21.0);

    // A negative size has its lower edge above the upper one: 1 and -1, and -1 and 1 of the other axis.
    Bounds negative(0.0, 0.0, -2.0, 2.0);
    negative.grow(Bounds(0.0, 0.0, 0.0, 0.0));
    expectFields(negative, 0.0, 0.0, 0.0, 2.0);
}

TEST(BoundsGrow, ByItselfChangesNothing) {
    for (Bounds bounds : {Bounds(1.0, 2.0, 3.0, 4.0), Bounds(0.0, 0.0, -2.0, 2.0)}) {
        Bounds const before(bounds);
        bounds.grow(bounds);
        EXPECT_STREQ(bounds.toJson().asChar(), before.toJson().asChar());
    }
}

TEST(BoundsGrow, LeavesTheOtherAlone) {
    Bounds bounds(0.0, 0.0, 2.0, 2.0);
    Bounds const other(2.0, 0.0, 2.0, 2.0);
    bounds.grow(other);
    expectFields(other, 2.0, 0.0, 2.0, 2.0);
}

TEST(BoundsGrow, LawsHoldForRandomRectangles) {
    std::mt19937 random(printedSeed());
    std::uniform_int_distribution<int> any(-1000, 1000); // quarters, so that all sums are exact
    std::uniform_int_distribution<int> anySize(0, 1000);
    auto const anyBounds = [&] {
        return Bounds(any(random) * 0.25, any(random) * 0.25, anySize(random) * 0.5, anySize(random) * 0.5);
    };
    for (int i = 0; i < 5000; ++i) {
        Bounds const left = anyBounds();
        Bounds const right = anyBounds();
        Bounds grown(left);
        grown.grow(right);
        Bounds swapped(right);
        swapped.grow(left);
        EXPECT_TRUE(grown == swapped);
        Bounds again(grown);
        again.grow(left);
        again.grow(right);
        EXPECT_TRUE(again == grown);
        EXPECT_EQ(
            grown.getCenterX() - grown.getSizeX() * 0.5,
            std::min(left.getCenterX() - left.getSizeX() * 0.5, right.getCenterX() - right.getSizeX() * 0.5));
        EXPECT_EQ(
            grown.getCenterY() + grown.getSizeY() * 0.5,
            std::max(left.getCenterY() + left.getSizeY() * 0.5, right.getCenterY() + right.getSizeY() * 0.5));
    }
}

TEST(BoundsJson, WritesTheCenterThenTheSizeAsDoubles) {
    EXPECT_STREQ(Bounds(0.5, 0.5, 2.0, 1.0).toJson().asChar(), R"({"center":[0.5,0.5],"size":[2.0,1.0]})");
    EXPECT_STREQ(Bounds().toJson().asChar(), R"({"center":[0.0,0.0],"size":[0.0,0.0]})");
    EXPECT_STREQ(Bounds(-0.0, 0.1, 1e21, 1e-7).toJson().asChar(),
                 R"({"center":[-0.0,0.1],"size":[1e21,1e-7]})");
    EXPECT_STREQ(Bounds(1920.0, -1080.0, 1.0 / 3.0, 123456789.0).toJson().asChar(),
                 R"({"center":[1920.0,-1080.0],"size":[0.3333333333333333,123456789.0]})");
}

TEST(BoundsJson, TheTextEndsWhereTheFirstValueThatIsNotFiniteWouldStand) {
    for (double const value : {NOT_A_NUMBER, INFINITE, -INFINITE}) {
        struct {
            Bounds bounds;
            char const* text;
        } const table[] = {
            {Bounds(value, 0.5, 2.0, 1.0), R"({"center":[)"},
            {Bounds(0.5, value, 2.0, 1.0), R"({"center":[0.5,)"},
            {Bounds(0.5, 0.5, value, 1.0), R"({"center":[0.5,0.5],"size":[)"},
            {Bounds(0.5, 0.5, 2.0, value), R"({"center":[0.5,0.5],"size":[2.0,)"},
            {Bounds(0.5, value, value, value), R"({"center":[0.5,)"},
        };
        for (auto const& row : table) {
            EXPECT_STREQ(row.bounds.toJson().asChar(), row.text);
            expectRefused(Bounds(7.0, 5.0, 3.0, 1.0), row.text, Status::kInvalidBoundsStr);
        }
    }
}

TEST(BoundsJson, ReadsTheSameObjectHoweverItIsWritten) {
    for (NamedText const& text : equivalentTexts(GOOD)) {
        SCOPED_TRACE(text.name);
        expectRead(Bounds(7.0, 5.0, 3.0, 1.0), text.text, toText(GOOD));
    }
}

TEST(BoundsJson, RefusesWhatIsNoSuchObjectAndKeepsItsValue) {
    expectAllRefused(Bounds(7.0, 5.0, 3.0, 1.0), brokenTexts(GOOD), Status::kInvalidBoundsStr);
}

TEST(BoundsJson, RefusesMembersThatAreNoPairs) {
    for (std::size_t member = 0; member < GOOD.size(); ++member) {
        expectMisfitsRefused(Bounds(7.0, 5.0, 3.0, 1.0), GOOD, member, 0, Status::kInvalidBoundsStr);
        for (char const* value : {"[]", "[1.0]", "[[1.0,2.0]]", R"({"0":1.0,"1":2.0})", "1.0"}) {
            expectRefused(Bounds(7.0, 5.0, 3.0, 1.0), toText(with(GOOD, member, value)),
                          Status::kInvalidBoundsStr);
        }
    }
}

TEST(BoundsJson, RefusesElementsThatAreNoFiniteFractions) {
    for (Sample const& sample : samples()) {
        for (std::size_t member = 0; member < GOOD.size(); ++member) {
            for (bool const isFirst : {true, false}) {
                std::string const pair = isFirst ? "[" + sample.text + ",1.0]" : "[1.0," + sample.text + "]";
                std::string const text = toText(with(GOOD, member, pair));
                if (sample.kind == kFraction) {
                    Bounds bounds;
                    EXPECT_TRUE(bounds.fromJson(toString(text))) << text.substr(0, 100);
                } else {
                    expectRefused(Bounds(7.0, 5.0, 3.0, 1.0), text, Status::kInvalidBoundsStr);
                }
            }
        }
    }
}

TEST(BoundsJson, RefusesIntegersAndTakesFractions) {
    expectRefused(Bounds(7.0, 5.0, 3.0, 1.0), R"({"center":[0,0],"size":[1,1]})", Status::kInvalidBoundsStr);
    expectRead(Bounds(), R"({"center":[0.0,1e0],"size":[1E2,-1.5e-3]})",
               R"({"center":[0.0,1.0],"size":[100.0,-0.0015]})");
}

TEST(BoundsJson, IgnoresElementsBeyondTheSecond) {
    expectRead(Bounds(), R"({"center":[0.0,0.0,9],"size":[1.0,1.0]})",
               R"({"center":[0.0,0.0],"size":[1.0,1.0]})");
    expectRead(Bounds(), R"({"center":[0.0,0.0,null,{}],"size":[1.0,1.0,1.9e308]})",
               R"({"center":[0.0,0.0],"size":[1.0,1.0]})");
}

TEST(BoundsJson, ReadsHugeNegativeExponentsAsZero) {
    for (char const* number :
         {"1.0e-2147483639", "1.00000000001e-2147483639", "1.00000000001E-2147483648", "1.0e-100000000",
          "1.5e-99999999", "12345.678901234567e-00002147483639", "1.0e-99999999999999999999999999"}) {
        expectRead(Bounds(), std::string(R"({"center":[)") + number + R"(,2.5],"size":[1.0,1.0]})",
                   R"({"center":[0.0,2.5],"size":[1.0,1.0]})");
    }
    expectRead(Bounds(), R"({"center":[2.5e-000000000001,2.5e-0],"size":[1.0,1.0]})",
               R"({"center":[0.25,2.5],"size":[1.0,1.0]})");
}

TEST(BoundsJson, TheFirstOfEqualNamesCounts) {
    expectRead(Bounds(), R"({"size":[1.0,2.0],"center":[3.0,4.0],"size":[5.0,6.0],"center":null})",
               R"({"center":[3.0,4.0],"size":[1.0,2.0]})");
    expectRefused(Bounds(7.0, 5.0, 3.0, 1.0), R"({"size":[1,2],"center":[3.0,4.0],"size":[5.0,6.0]})",
                  Status::kInvalidBoundsStr);
}

TEST(BoundsJson, ComesBackFromItsOwnTextWithinTheParsersPrecision) {
    std::mt19937 random(printedSeed());
    std::uniform_real_distribution<double> mantissa(-1.0, 1.0);
    std::uniform_int_distribution<int> exponent(-900, 900);
    auto const any = [&] { return std::ldexp(mantissa(random), exponent(random)); };
    auto const expectClose = [](double read, double written) {
        // Fractions of 17 digits may come back a few units off in the last place.
        EXPECT_LE(std::fabs(read - written), std::fabs(written) * 4 * DBL_EPSILON) << written;
    };
    for (int i = 0; i < 5000; ++i) {
        Bounds const original(any(), any(), any(), any());
        Bounds copy;
        ASSERT_TRUE(copy.fromJson(original.toJson())) << original.toJson().asChar();
        expectClose(copy.getCenterX(), original.getCenterX());
        expectClose(copy.getCenterY(), original.getCenterY());
        expectClose(copy.getSizeX(), original.getSizeX());
        expectClose(copy.getSizeY(), original.getSizeY());
    }
}

TEST(BoundsJson, ComesBackExactlyFromShortFractions) {
    std::mt19937 random(printedSeed());
    std::uniform_int_distribution<int> any(-1000000, 1000000);
    for (int i = 0; i < 5000; ++i) {
        Bounds const original(any(random) / 64.0, any(random) / 1000.0, any(random) * 0.5, any(random));
        Bounds copy;
        ASSERT_TRUE(copy.fromJson(original.toJson())) << original.toJson().asChar();
        expectFields(copy, original.getCenterX(), original.getCenterY(), original.getSizeX(),
                     original.getSizeY());
    }
}

} // namespace
