// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "support/MovedFrom.h"
#include "support/Seed.h"
#include "support/ValueTexts.h"

#include <orlVideoBufferResolution.h>

#include <gtest/gtest.h>

#include <cfloat>
#include <cmath>
#include <limits>
#include <random>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

namespace {

using namespace ORL_0_81;
using namespace ValueTexts;
using Resolution = VideoBufferResolution;

constexpr int INT_LOW = std::numeric_limits<int>::min();
constexpr int INT_HIGH = std::numeric_limits<int>::max();
constexpr double NOT_A_NUMBER = std::numeric_limits<double>::quiet_NaN();
constexpr double INFINITE = std::numeric_limits<double>::infinity();

Resolution full() {
    return Resolution(1920, 1080, Bounds(0.5, -0.25, 16.0, 9.0), "progressive", 10, 3, true, false, "Rec709");
}

Members const GOOD = {
    {"width", "1920"},
    {"height", "1080"},
    {"bounds", R"({"center":[0.5,-0.25],"size":[16.0,9.0]})"},
    {"scan_format", R"("progressive")"},
    {"bits_per_channel", "10"},
    {"num_channels", "3"},
    {"is_float", "true"},
    {"is_big_endian", "false"},
    {"color_space", R"("Rec709")"},
};

constexpr std::size_t BOUNDS = 2;

std::string const DEFAULT_TEXT =
    R"({"width":0,"height":0,"bounds":{"center":[0.0,0.0],"size":[0.0,0.0]},"scan_format":"",)"
    R"("bits_per_channel":0,"num_channels":0,"is_float":false,"is_big_endian":false,"color_space":""})";

void expectText(Resolution const& resolution, std::string const& text) {
    EXPECT_STREQ(resolution.toJson().asChar(), text.c_str());
}

TEST(VideoBufferResolution, IsOnePointerWithoutVirtualOperations) {
    EXPECT_EQ(sizeof(Resolution), sizeof(void*));
    EXPECT_FALSE(std::is_polymorphic_v<Resolution>);
}

TEST(VideoBufferResolution, NeverFailsToMove) {
    EXPECT_TRUE(std::is_nothrow_move_constructible_v<Resolution>);
    EXPECT_TRUE(std::is_nothrow_move_assignable_v<Resolution>);
    EXPECT_TRUE(std::is_nothrow_copy_assignable_v<Resolution>);
    EXPECT_TRUE(std::is_nothrow_destructible_v<Resolution>);
}

TEST(VideoBufferResolution, IsEmptyAndNotValidByDefault) {
    Resolution const resolution;
    EXPECT_EQ(resolution.getWidth(), 0);
    EXPECT_EQ(resolution.getHeight(), 0);
    EXPECT_TRUE(resolution.getScanFormat().empty());
    EXPECT_EQ(resolution.getBitsPerChannel(), 0);
    EXPECT_EQ(resolution.getNumChannels(), 0);
    EXPECT_FALSE(resolution.isFloat());
    EXPECT_FALSE(resolution.isBigEndian());
    EXPECT_TRUE(resolution.getColorSpace().empty());
    EXPECT_TRUE(resolution.getBounds() == Bounds());
    EXPECT_FALSE(resolution.isValid());
    EXPECT_EQ(resolution.getPixelSize(), 0);
    EXPECT_EQ(resolution.getBufferStride(), 0);
    EXPECT_EQ(resolution.getBufferSize(), 0);
    EXPECT_EQ(resolution.getFrameRatio(), 1.0);
}

TEST(VideoBufferResolution, KeepsEachValueInItsPlace) {
    Resolution const resolution(1, 2, Bounds(3.0, 4.0, 5.0, 6.0), "scan", 7, 8, true, false, "space");
    EXPECT_EQ(resolution.getWidth(), 1);
    EXPECT_EQ(resolution.getHeight(), 2);
    EXPECT_EQ(resolution.getCenterX(), 3.0);
    EXPECT_EQ(resolution.getCenterY(), 4.0);
    EXPECT_EQ(resolution.getSizeX(), 5.0);
    EXPECT_EQ(resolution.getSizeY(), 6.0);
    EXPECT_STREQ(resolution.getScanFormat().asChar(), "scan");
    EXPECT_EQ(resolution.getBitsPerChannel(), 7);
    EXPECT_EQ(resolution.getNumChannels(), 8);
    EXPECT_TRUE(resolution.isFloat());
    EXPECT_FALSE(resolution.isBigEndian());
    EXPECT_STREQ(resolution.getColorSpace().asChar(), "space");

    Resolution const flipped(1, 2, Bounds(), "scan", 7, 8, false, true, "space");
    EXPECT_FALSE(flipped.isFloat());
    EXPECT_TRUE(flipped.isBigEndian());
}

TEST(VideoBufferResolution, SettersChangeOneValueEach) {
    struct {
        void (*set)(Resolution&);
        std::size_t member;
        char const* value;
    } const table[] = {
        {[](Resolution& r) { r.setWidth(-5); }, 0, "-5"},
        {[](Resolution& r) { r.setHeight(INT_HIGH); }, 1, "2147483647"},
        {[](Resolution& r) { r.setBounds(Bounds(1.0, 2.0, 3.0, 4.0)); }, BOUNDS,
         R"({"center":[1.0,2.0],"size":[3.0,4.0]})"},
        {[](Resolution& r) { r.setCenterX(7.0); }, BOUNDS, R"({"center":[7.0,-0.25],"size":[16.0,9.0]})"},
        {[](Resolution& r) { r.setCenterY(7.0); }, BOUNDS, R"({"center":[0.5,7.0],"size":[16.0,9.0]})"},
        {[](Resolution& r) { r.setSizeX(7.0); }, BOUNDS, R"({"center":[0.5,-0.25],"size":[7.0,9.0]})"},
        {[](Resolution& r) { r.setSizeY(7.0); }, BOUNDS, R"({"center":[0.5,-0.25],"size":[16.0,7.0]})"},
        {[](Resolution& r) { r.setScanFormat("x"); }, 3, R"("x")"},
        {[](Resolution& r) { r.setBitsPerChannel(INT_LOW); }, 4, "-2147483648"},
        {[](Resolution& r) { r.setNumChannels(4); }, 5, "4"},
        {[](Resolution& r) { r.setIsFloat(false); }, 6, "false"},
        {[](Resolution& r) { r.setIsBigEndian(true); }, 7, "true"},
        {[](Resolution& r) { r.setColorSpace("x"); }, 8, R"("x")"},
    };
    for (auto const& row : table) {
        Resolution resolution = full();
        row.set(resolution);
        expectText(resolution, toText(with(GOOD, row.member, row.value)));
    }
}

TEST(VideoBufferResolution, TheBoundsThatItGivesAreACopy) {
    Resolution const resolution = full();
    Bounds bounds = resolution.getBounds();
    bounds.setSizeX(1.0);
    EXPECT_EQ(resolution.getSizeX(), 16.0);
}

TEST(VideoBufferResolution, TheFrameRatioIsThatOfTheBounds) {
    EXPECT_EQ(full().getFrameRatio(), 16.0 / 9.0);
    EXPECT_EQ(Resolution(1920, 1080, Bounds(0.0, 0.0, 1.0, 0.0), "", 8, 3, false, false, "").getFrameRatio(),
              1.0);
    EXPECT_EQ(Resolution(100, 100, Bounds(0.0, 0.0, 2.0, 1.0), "", 8, 3, false, false, "").getFrameRatio(),
              2.0);
}

TEST(VideoBufferResolution, ACopyIsIndependent) {
    Resolution const original = full();
    Resolution copy(original);
    copy.setWidth(1);
    copy.setSizeX(1.0);
    copy.setColorSpace("x");
    expectText(original, toText(GOOD));

    Resolution assigned;
    EXPECT_EQ(&(assigned = original), &assigned);
    expectText(assigned, toText(GOOD));
    assigned.setSizeX(1.0);
    assigned.setScanFormat("x");
    expectText(original, toText(GOOD));
}

TEST(VideoBufferResolution, AssignsItselfWithoutChange) {
    Resolution resolution = full();
    Resolution& same = resolution;
    EXPECT_EQ(&(resolution = same), &resolution);
    expectText(resolution, toText(GOOD));
    EXPECT_EQ(&(resolution = std::move(same)), &resolution);
    expectText(resolution, toText(GOOD));
}

// NOLINTBEGIN(bugprone-use-after-move): what a moved-from object may do

TEST(VideoBufferResolution, MovesTakeTheValueAlong) {
    Resolution source = full();
    Resolution target(std::move(source));
    expectText(target, toText(GOOD));
    EXPECT_TRUE(isMovedFrom(source));
    Resolution assigned;
    EXPECT_EQ(&(assigned = std::move(target)), &assigned);
    expectText(assigned, toText(GOOD));
    EXPECT_TRUE(isMovedFrom(target));
    source = std::move(assigned);
    expectText(source, toText(GOOD));
}

TEST(VideoBufferResolution, CopyAssignmentFromOrToAMovedFromObjectDoesNothing) {
    Resolution source = full();
    Resolution const taken(std::move(source));
    Resolution target;
    EXPECT_EQ(&(target = source), &target);
    expectText(target, DEFAULT_TEXT);
    EXPECT_EQ(&(source = target), &source);
    EXPECT_TRUE(isMovedFrom(source));
}

TEST(VideoBufferResolution, MovedFromBoundsChangeNothing) {
    Bounds bounds(1.0, 2.0, 3.0, 4.0);
    Bounds const taken(std::move(bounds));
    Resolution resolution = full();
    resolution.setBounds(bounds);
    expectText(resolution, toText(GOOD));
}

TEST(VideoBufferResolution, AMovedFromObjectIsUnequalToEverythingItselfIncluded) {
    Resolution source = full();
    Resolution const target(std::move(source));
    EXPECT_FALSE(source == target);
    EXPECT_FALSE(target == source);
    EXPECT_FALSE(source == source);
    EXPECT_TRUE(source != target);
    EXPECT_TRUE(target != source);
    EXPECT_TRUE(source != source);
}

// NOLINTEND(bugprone-use-after-move)

TEST(VideoBufferResolutionValidity, NeedsPositiveNumbersAndValidBounds) {
    ASSERT_TRUE(full().isValid());
    for (int const number : {0, -1, INT_LOW}) {
        Resolution width = full();
        width.setWidth(number);
        EXPECT_FALSE(width.isValid());
        Resolution height = full();
        height.setHeight(number);
        EXPECT_FALSE(height.isValid());
        Resolution bits = full();
        bits.setBitsPerChannel(number);
        EXPECT_FALSE(bits.isValid());
        Resolution channels = full();
        channels.setNumChannels(number);
        EXPECT_FALSE(channels.isValid());
    }
    Resolution one(1, 1, Bounds(0.0, 0.0, DBL_EPSILON, DBL_EPSILON), "", 1, 1, false, false, "");
    EXPECT_TRUE(one.isValid());
    one.setBounds(Bounds());
    EXPECT_FALSE(one.isValid());
    one.setBounds(Bounds(0.0, 0.0, 1.0, NOT_A_NUMBER));
    EXPECT_FALSE(one.isValid());
}

TEST(VideoBufferResolutionSizes, CountWholeBytesForEachPixel) {
    struct {
        int width, height, bits, channels;
        long long pixel, stride, size;
    } const table[] = {
        {1920, 1080, 8, 3, 3, 5760, 6220800},
        {1920, 1080, 10, 3, 4, 7680, 8294400},
        {9, 3, 1, 1, 1, 9, 27}, // rows are not packed to bits
        {7, 1, 7, 1, 1, 7, 7},
        {7, 1, 9, 1, 2, 14, 14},
        {1, 1, 32, 4, 16, 16, 16},
        {0, 1080, 8, 3, 3, 0, 0},
        {1920, 0, 8, 3, 3, 5760, 0},
        {1920, 1080, 0, 3, 0, 0, 0},
        {100000, 100000, 16, 4, 8, 800000, 80000000000LL}, // beyond 32 bits
        {INT_HIGH, 1, INT_HIGH, 1, 268435456, 576460752034988032LL, 576460752034988032LL},
        // ((2^31 - 1)^2 + 7) / 8 is 2^59 - 2^29 + 1
        {1, 1, INT_HIGH, INT_HIGH, 576460751766552577LL, 576460751766552577LL, 576460751766552577LL},
    };
    for (auto const& row : table) {
        Resolution const resolution(row.width, row.height, Bounds(), "", row.bits, row.channels, false, false,
                                    "");
        SCOPED_TRACE(resolution.toJson().asChar());
        EXPECT_EQ(resolution.getPixelSize(), row.pixel);
        EXPECT_EQ(resolution.getBufferStride(), row.stride);
        EXPECT_EQ(resolution.getBufferSize(), row.size);
    }
}

TEST(VideoBufferResolutionSizes, ComputeWithNegativeFieldsToo) {
    struct {
        int width, height, bits, channels;
        long long pixel, stride, size;
    } const table[] = {
        {-10, 20, 8, 3, 3, -30, -600},
        {-10, -20, 8, 3, 3, -30, 600},
        {10, 20, -8, 3, -3, -30, -600}, // (-24 + 7) shifted right by 3 rounds down: -17 / 8 is -2.125
        {10, 20, -8, -3, 3, 30, 600},
        {1, 1, -1, 1, 0, 0, 0},
        {INT_LOW, 1, 8, 1, 1, -2147483648LL, -2147483648LL},
        {INT_LOW, INT_LOW, 8, 1, 1, -2147483648LL, 4611686018427387904LL},
    };
    for (auto const& row : table) {
        Resolution const resolution(row.width, row.height, Bounds(), "", row.bits, row.channels, false, false,
                                    "");
        SCOPED_TRACE(resolution.toJson().asChar());
        EXPECT_EQ(resolution.getPixelSize(), row.pixel);
        EXPECT_EQ(resolution.getBufferStride(), row.stride);
        EXPECT_EQ(resolution.getBufferSize(), row.size);
    }
}

TEST(VideoBufferResolutionSizes, WrapBeyond64Bits) {
    Resolution const resolution(INT_LOW, INT_LOW, Bounds(), "", 32, 1, false, false, "");
    EXPECT_EQ(resolution.getBufferSize(), 0); // 2^62 * 4
}

TEST(VideoBufferResolutionComparison, EachFieldCounts) {
    ASSERT_TRUE(full() == full());
    ASSERT_FALSE(full() != full());
    void (*const changes[])(Resolution&) = {
        [](Resolution& r) { r.setWidth(1); },          [](Resolution& r) { r.setHeight(1); },
        [](Resolution& r) { r.setCenterX(1.0); },      [](Resolution& r) { r.setCenterY(1.0); },
        [](Resolution& r) { r.setSizeX(1.0); },        [](Resolution& r) { r.setSizeY(1.0); },
        [](Resolution& r) { r.setScanFormat("x"); },   [](Resolution& r) { r.setBitsPerChannel(1); },
        [](Resolution& r) { r.setNumChannels(1); },    [](Resolution& r) { r.setIsFloat(false); },
        [](Resolution& r) { r.setIsBigEndian(true); }, [](Resolution& r) { r.setColorSpace("rec709"); },
    };
    for (auto const change : changes) {
        Resolution changed = full();
        change(changed);
        SCOPED_TRACE(changed.toJson().asChar());
        EXPECT_FALSE(changed == full());
        EXPECT_FALSE(full() == changed);
        EXPECT_TRUE(changed != full());
        EXPECT_TRUE(changed == Resolution(changed));
    }
}

TEST(VideoBufferResolutionComparison, BoundsAreComparedWithinTheTolerance) {
    Resolution left = full();
    left.setCenterX(0.0);
    Resolution right(left);
    right.setCenterX(1e-17);
    EXPECT_TRUE(left == right);
    right.setCenterX(DBL_EPSILON);
    EXPECT_FALSE(left == right);
}

TEST(VideoBufferResolutionComparison, TheRatioOfTheBoundsIsATestOfItsOwn) {
    Resolution left = full();
    left.setBounds(Bounds(0.0, 0.0, 2.0, 1e-16));
    Resolution right = full();
    right.setBounds(Bounds(0.0, 0.0, 2.0, 3e-16));
    ASSERT_TRUE(left.getBounds() == right.getBounds());
    EXPECT_FALSE(left == right); // 1.0 and 6.7e15
    EXPECT_TRUE(left != right);
}

TEST(VideoBufferResolutionComparison, BoundsThatAreNotFiniteEqualThemselvesOnly) {
    for (double const value : {NOT_A_NUMBER, INFINITE}) {
        Resolution resolution = full();
        resolution.setCenterX(value);
        EXPECT_TRUE(resolution == resolution);
        EXPECT_FALSE(resolution != resolution);
        EXPECT_FALSE(resolution == Resolution(resolution));
        EXPECT_TRUE(resolution != Resolution(resolution));
    }
}

TEST(VideoBufferResolutionJson, WritesItsMembersInOneOrderWithNestedBounds) {
    expectText(full(), toText(GOOD));
    expectText(Resolution(), DEFAULT_TEXT);
}

TEST(VideoBufferResolutionJson, EscapesItsTextsAndEndsThemAtANul) {
    Resolution resolution = full();
    resolution.setScanFormat("a\"\\\n\x01/\xC3\xA9");
    resolution.setColorSpace(String("ab\0cd", 5));
    expectText(resolution, toText(with(with(GOOD, 3, "\"a\\\"\\\\\\n\\u0001/\xC3\xA9\""), 8, R"("ab")")));
}

TEST(VideoBufferResolutionJson, BoundsThatAreNotFiniteBecomeNullAndAreRefused) {
    for (double const value : {NOT_A_NUMBER, INFINITE, -INFINITE}) {
        for (Bounds const& bounds : {Bounds(value, 0.0, 1.0, 1.0), Bounds(0.0, value, 1.0, 1.0),
                                     Bounds(0.0, 0.0, value, 1.0), Bounds(0.0, 0.0, 1.0, value)}) {
            Resolution resolution = full();
            resolution.setBounds(bounds);
            std::string const text = toText(with(GOOD, BOUNDS, "null"));
            expectText(resolution, text);
            expectRefused(Resolution(), text, Status::kInvalidJsonType);
        }
    }
}

TEST(VideoBufferResolutionJson, TheLargestBoundsComeBack) {
    Resolution resolution = full();
    resolution.setBounds(Bounds(DBL_MAX, -DBL_MAX, DBL_MIN, 5e-324));
    Resolution copy;
    EXPECT_TRUE(copy.fromJson(resolution.toJson()));
    EXPECT_EQ(copy.getCenterX(), DBL_MAX);
    EXPECT_EQ(copy.getCenterY(), -DBL_MAX);
}

TEST(VideoBufferResolutionJson, WritesTheBoundsThatAReaderOfTheirOwnTextGets) {
    std::mt19937 random(printedSeed());
    std::uniform_real_distribution<double> any(-1.0, 1.0);
    int movedCount = 0; // the parser is off by a unit in the last place at times
    for (int i = 0; i < 2000; ++i) {
        Bounds const bounds(any(random), any(random), any(random), any(random));
        Bounds read;
        ASSERT_TRUE(read.fromJson(bounds.toJson()));
        movedCount += read.toJson() != bounds.toJson();
        Resolution resolution = full();
        resolution.setBounds(bounds);
        expectText(resolution, toText(with(GOOD, BOUNDS, read.toJson().asChar())));
    }
    EXPECT_GT(movedCount, 0);
}

TEST(VideoBufferResolutionJson, ReadsTheSameObjectHoweverItIsWritten) {
    for (NamedText const& text : equivalentTexts(GOOD)) {
        SCOPED_TRACE(text.name);
        expectRead(Resolution(), text.text, toText(GOOD));
    }
}

TEST(VideoBufferResolutionJson, RefusesWhatIsNoSuchObjectAndKeepsItsValue) {
    expectAllRefused(Resolution(), brokenTexts(GOOD), Status::kInvalidJsonType);
    expectAllRefused(full(), brokenTexts(with(GOOD, 0, "1")), Status::kInvalidJsonType);
}

TEST(VideoBufferResolutionJson, RefusesMembersOfAnotherTypeAndKeepsItsValue) {
    struct {
        std::size_t member;
        unsigned fitting;
    } const table[] = {
        {0, kInt32}, {1, kInt32}, {BOUNDS, kObject}, {3, kString}, {4, kInt32},
        {5, kInt32}, {6, kBool},  {7, kBool},        {8, kString},
    };
    for (auto const& row : table) {
        expectMisfitsRefused(Resolution(), GOOD, row.member, row.fitting, Status::kInvalidJsonType);
    }
}

TEST(VideoBufferResolutionJson, OneMissingMemberChangesNothing) {
    Members members = GOOD;
    members.erase(members.begin() + 7);
    expectRefused(Resolution(), toText(members), Status::kInvalidJsonType);
}

TEST(VideoBufferResolutionJson, ReadsIntegersToTheirLimits) {
    Members const limits =
        with(with(with(with(GOOD, 0, "2147483647"), 1, "-2147483648"), 4, "-2147483648"), 5, "2147483647");
    expectRead(Resolution(), toText(limits), toText(limits));
}

TEST(VideoBufferResolutionJson, CutsTextsAtANul) {
    expectRead(Resolution(), toText(with(with(GOOD, 3, R"("ab\u0000cd")"), 8, R"("\u0000cd")")),
               toText(with(with(GOOD, 3, R"("ab")"), 8, R"("")")));
}

TEST(VideoBufferResolutionJson, BadBoundsAreReportedAsSuchWithAllElseTakenOver) {
    std::vector<std::string> const badBounds = {
        R"({"center":[0,0],"size":[1,1]})",
        R"({"center":[0.0,0.0],"size":[1.0]})",
        R"({"center":[0.0,0.0]})",
        R"({})",
        R"({"center":[0.0,1.9e308],"size":[1.0,1.0]})",
        R"({"center":[0.0,0.0,1.9e308],"size":[1.0,1.0]})", // its own text would end half-way
        R"({"x":1.9e308,"center":[0.0,0.0],"size":[1.0,1.0]})",
        R"({"center":null,"size":[1.0,1.0]})",
    };
    Members const old = with(GOOD, BOUNDS, R"({"center":[7.0,5.0],"size":[3.0,1.0]})");
    for (std::string const& bad : badBounds) {
        SCOPED_TRACE(bad);
        Resolution resolution;
        resolution.setBounds(Bounds(7.0, 5.0, 3.0, 1.0));
        EXPECT_STREQ(resolution.fromJson(toString(toText(with(GOOD, BOUNDS, bad)))).getStr(),
                     "kInvalidBoundsStr");
        expectText(resolution, toText(old));
    }
}

TEST(VideoBufferResolutionJson, AnotherBadMemberCountsBeforeBadBounds) {
    expectRefused(Resolution(), toText(with(with(GOOD, BOUNDS, "{}"), 8, "null")), Status::kInvalidJsonType);
}

TEST(VideoBufferResolutionJson, TheFirstOfEqualNamesCounts) {
    std::string const text = toText(GOOD);
    expectRead(Resolution(), R"({"width":5,)" + text.substr(1), toText(with(GOOD, 0, "5")));
    expectRefused(Resolution(), R"({"width":null,)" + text.substr(1), Status::kInvalidJsonType);
    expectRead(Resolution(),
               toText(with(GOOD, BOUNDS, R"({"center":[1.0,2.0],"size":[3.0,4.0],"size":null})")),
               toText(with(GOOD, BOUNDS, R"({"center":[1.0,2.0],"size":[3.0,4.0]})")));
}

TEST(VideoBufferResolutionJson, NestedBoundsMayBeAsDeepAsTheWholeTextMay) {
    // The root is level 1, the bounds are level 2, so 998 more fit.
    auto const bounds = [](unsigned levels) {
        return R"({"center":[1.0,2.0],"size":[3.0,4.0],"x":)" + std::string(levels, '[') +
               std::string(levels, ']') + "}";
    };
    expectRead(Resolution(), toText(with(GOOD, BOUNDS, bounds(998))),
               toText(with(GOOD, BOUNDS, R"({"center":[1.0,2.0],"size":[3.0,4.0]})")));
    expectRefused(Resolution(), toText(with(GOOD, BOUNDS, bounds(999))), Status::kInvalidJsonType);
}

TEST(VideoBufferResolutionJson, ComesBackEqualFromItsOwnText) {
    std::mt19937 random(printedSeed());
    std::uniform_int_distribution<int> anyInt(INT_LOW, INT_HIGH);
    std::uniform_int_distribution<int> anyByte(1, 255);
    auto const anyFraction = [&] { return (anyInt(random) % 100000) / 64.0; };
    auto const anyText = [&] {
        std::string text;
        for (int length = anyByte(random) % 20; length > 0; --length) {
            text += static_cast<char>(anyByte(random));
        }
        return toString(text);
    };
    for (int i = 0; i < 2000; ++i) {
        Resolution const original(anyInt(random), anyInt(random),
                                  Bounds(anyFraction(), anyFraction(), anyFraction(), anyFraction()),
                                  anyText(), anyInt(random), anyInt(random), anyByte(random) % 2 == 0,
                                  anyByte(random) % 2 == 0, anyText());
        Resolution copy;
        ASSERT_TRUE(copy.fromJson(original.toJson())) << original.toJson().asChar();
        EXPECT_TRUE(copy == original) << original.toJson().asChar();
    }
}

} // namespace
