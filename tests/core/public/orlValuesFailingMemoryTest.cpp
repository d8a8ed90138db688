// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "support/orlFailingMemory.h"

#include <orlBounds.h>
#include <orlFPSUtils.h>
#include <orlRational.h>
#include <orlTime.h>
#include <orlVideoBufferResolution.h>

#include <gtest/gtest.h>

#include <string>

// What the media values are when there is no memory for a copy, a text, or the reading of one.

namespace {

using namespace ORL_0_81;
using orlTest::failEachAllocation;
using orlTest::FailingMemory;

std::string bytes(String const& text) { return std::string(text.data(), text.size()); }

String const LONG_SCAN = "a scan format with a text that takes an allocation";
String const LONG_COLOR = "a colour space with a text that takes an allocation";

VideoBufferResolution someResolution() {
    return VideoBufferResolution(1920, 1080, Bounds(0.5, 1.5, 2.5, 3.5), LONG_SCAN, 10, 3, true, false,
                                 LONG_COLOR);
}

VideoBufferResolution otherResolution() {
    return VideoBufferResolution(64, 48, Bounds(4.5, 3.5, 2.5, 1.5), LONG_COLOR, 8, 4, false, true,
                                 LONG_SCAN);
}

// A member that nobody looks for, in front of the others: so large that the text is read on the heap.
std::string withLargeMember(std::string const& object) {
    std::string large = "{\"large\":[";
    for (int i = 0; i < 5000; ++i) {
        large += "{\"key\":\"a text that has to be \\u0041 copied\"},";
    }
    return large + "0]," + object.substr(1);
}

// A number with an exponent that is shortened before the parser sees it.
std::string withLongExponent(std::string const& object) {
    return "{\"small\":1e-00000000000000000001," + object.substr(1);
}

// `text` is that of `original`; the value that reads it is that of `other` before.
template <class Value>
void failReading(std::string const& text, Value const& original, Value const& other) {
    String const json(text.c_str());
    failEachAllocation([&](FailingMemory& memory) {
        Value value(other);
        bool const done = memory.run([&] { EXPECT_TRUE(value.fromJson(json)); });
        EXPECT_EQ(bytes(value.toJson()), bytes((done ? original : other).toJson()));
    });
}

template <class Value>
void failReadingOnTheHeap(Value const& original, Value const& other) {
    std::string const text = bytes(original.toJson());
    failReading(withLargeMember(text), original, other);
    failReading(withLongExponent(text), original, other);
}

template <class Value>
void failWriting(Value const& value) {
    std::string const expected = bytes(value.toJson());
    failEachAllocation([&](FailingMemory& memory) {
        String text;
        bool const done = memory.run([&] { text = value.toJson(); });
        EXPECT_EQ(bytes(text), done ? expected : "");
    });
}

template <class Value>
void failCopying(Value const& value, Value const& other) {
    failEachAllocation([&](FailingMemory& memory) {
        Value target(other);
        bool const done = memory.run([&] {
            Value const standard;
            Value copy(value);
            target = static_cast<Value&&>(copy);
        });
        EXPECT_TRUE(target == (done ? value : other));
    });
}

TEST(ValuesFailingMemory, ACopyIsMadeWholeOrNotAtAll) {
    failCopying(Rational(24000, 1001), Rational(25, 1));
    failCopying(Time(48, Rational(24, 1)), Time(49, Rational(25, 1)));
    failCopying(Bounds(1.0, 2.0, 3.0, 4.0), Bounds(2.0, 3.0, 4.0, 5.0));
    failCopying(someResolution(), otherResolution());
}

TEST(ValuesFailingMemory, ATextIsWrittenWholeOrNotAtAll) {
    failWriting(Rational(24000, 1001));
    failWriting(Time(48, Rational(24, 1)));
    failWriting(Bounds(1.0, 2.0, 3.0, 4.0));
    failWriting(someResolution());
}

TEST(ValuesFailingMemory, AValueThatCannotBeReadStaysAsItWas) {
    Time const time(48, Rational(24, 1));
    failReading(bytes(time.toJson()), time, Time(49, Rational(25, 1)));
    failReading(bytes(someResolution().toJson()), someResolution(), otherResolution());
    failReadingOnTheHeap(time, Time(49, Rational(25, 1)));
    failReadingOnTheHeap(someResolution(), otherResolution());
    failReadingOnTheHeap(Rational(24000, 1001), Rational(25, 1));
    failReadingOnTheHeap(Bounds(1.0, 2.0, 3.0, 4.0), Bounds(2.0, 3.0, 4.0, 5.0));
}

TEST(ValuesFailingMemory, ARefusedTextIsRefusedOrNotRead) {
    std::string const text = withLargeMember(bytes(someResolution().toJson()));
    String const cut(text.c_str(), text.size() - 1);
    failEachAllocation([&cut](FailingMemory& memory) {
        VideoBufferResolution value = otherResolution();
        Status status;
        bool const done = memory.run([&] { status = value.fromJson(cut); });
        EXPECT_EQ(status, done ? Status::kInvalidJsonType : Status::kSuccess);
        EXPECT_TRUE(value == otherResolution());
    });
}

TEST(ValuesFailingMemory, TheBoundsOfADescriptionAreCopiedOrNot) {
    failEachAllocation([](FailingMemory& memory) {
        VideoBufferResolution const resolution = someResolution();
        Bounds bounds;
        bool const done = memory.run([&] { bounds = resolution.getBounds(); });
        EXPECT_TRUE(bounds == (done ? Bounds(0.5, 1.5, 2.5, 3.5) : Bounds()));
    });
}

TEST(ValuesFailingMemory, AConversionLeavesItsOutputAlone) {
    failEachAllocation([](FailingMemory& memory) {
        Time const time(48, Rational(24, 1));
        Rational const rate(25, 1);
        Time converted(1, Rational(1, 1));
        Rational fromText(2, 1);
        String const shared = LONG_SCAN;
        String name = shared;
        String const text = "29.97 fps";
        bool const done = memory.run([&] {
            converted = FPSUtils::convertToRate(time, rate, FPSUtils::kRoundNearest);
            EXPECT_TRUE(FPSUtils::getFPSFromString(text, fromText));
            EXPECT_TRUE(FPSUtils::getFPSString(Rational(30000, 1001), name));
        });
        if (!done) {
            EXPECT_EQ(bytes(name), bytes(LONG_SCAN));
        }
        EXPECT_TRUE(converted == Time(50, rate) || (!done && converted == Time(1, Rational(1, 1))));
        EXPECT_EQ(bytes(shared), bytes(LONG_SCAN));
    });
}

} // namespace
