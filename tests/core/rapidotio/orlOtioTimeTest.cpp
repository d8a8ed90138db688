// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "rapidotio/orlOtioTime.h"

#include "support/Json.h"
#include "support/TimelineText.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <limits>
#include <string>

namespace {

using ORL_0_81::rapidotio::Time;
using namespace orlTest;

double const kInfinity = std::numeric_limits<double>::infinity();
double const kNan = std::numeric_limits<double>::quiet_NaN();
double const kTolerance = 2.220446049250313e-16;

Time timeOf(double value, double rate) {
    Time time;
    time.value = value;
    time.rate = rate;
    return time;
}

/// A time of 7 at 30 after it has read a text.
Time readOver7At30(std::string const& text) {
    Time time = timeOf(7.0, 30.0);
    time.setTime(parsed(text));
    return time;
}

/// As above; the members stand behind the schema.
Time readMembers(std::string const& members) {
    return readOver7At30(R"({"OTIO_SCHEMA":"RationalTime.1",)" + members + "}");
}

TEST(OtioTime, HasAValueAndThenARateAndNothingElse) {
    EXPECT_EQ(offsetof(Time, value), 0U);
    EXPECT_EQ(offsetof(Time, rate), sizeof(double));
    EXPECT_EQ(sizeof(Time), 2 * sizeof(double));
}

TEST(OtioTime, ANewTimeIsTheLargestFiniteDoubleAtARateOf0) {
    Time const time;
    std::uint64_t bits = 0;
    std::memcpy(&bits, &time.value, sizeof bits);
    EXPECT_EQ(bits, 0x7FEFFFFFFFFFFFFFU);
    EXPECT_EQ(time.rate, 0.0);
    EXPECT_FALSE(time.hasValue());
    EXPECT_FALSE(time.hasRate());
    EXPECT_FALSE(time.isDefined());
}

TEST(OtioTime, OnlyTheSentinelIsAnUndefinedValue) {
    EXPECT_FALSE(timeOf(DBL_MAX, 24.0).hasValue());
    for (double const value : {0.0, -0.0, 1.0, -1.0, -DBL_MAX, std::nextafter(DBL_MAX, 0.0), 1e308}) {
        EXPECT_TRUE(timeOf(value, 24.0).hasValue()) << value;
    }
}

TEST(OtioTime, ARateBelowTheToleranceIsUndefined) {
    for (double const rate : {0.0, -0.0, 1e-300, 2.2e-16, -2.2e-16, std::nextafter(kTolerance, 0.0)}) {
        EXPECT_FALSE(timeOf(0.0, rate).hasRate()) << rate;
    }
    for (double const rate : {kTolerance, -kTolerance, 1e-15, 24.0, -24.0}) {
        EXPECT_TRUE(timeOf(0.0, rate).hasRate()) << rate;
    }
}

TEST(OtioTime, IsDefinedOnlyWithBothHalves) {
    EXPECT_TRUE(timeOf(0.0, 24.0).isDefined());
    EXPECT_FALSE(timeOf(0.0, 0.0).isDefined());
    EXPECT_FALSE(timeOf(DBL_MAX, 24.0).isDefined());
}

struct HalfRow {
    char const* json;
    double expected; ///< 30 for a refused rate, 7 for a refused value
};

TEST(OtioTime, ARateIsAFractionOrA32BitIntegerOrAString) {
    HalfRow const rows[] = {
        {"24.0", 24.0},
        {"24", 24.0},
        {"2.4e1", 24.0},
        {"24e0", 24.0},
        {"-25", -25.0},
        {"0", 0.0},
        {"0.0", 0.0},
        {"23.976", 23.976},
        {R"("24")", 24.0},
        {R"("23.976")", 23.976},
        {R"("29.97 fps")", 29.97},
        {R"("")", 0.0},
        {R"("fast")", 0.0},
        {R"(" 24")", 24.0},
        {R"("24\u00005")", 24.0},
        {R"("-1e3")", -1000.0},
        {"2147483647", 2147483647.0},
        {"-2147483648", -2147483648.0},
        {"2147483648", 30.0},
        {"-2147483649", 30.0},
        {"18446744073709551615", 30.0},
        {"null", 30.0},
        {"true", 30.0},
        {"false", 30.0},
        {"[]", 30.0},
        {"{}", 30.0},
        {"[24]", 30.0},
        {R"({"rate":24.0})", 30.0},
    };
    for (HalfRow const& row : rows) {
        Time const time = readMembers(std::string(R"("rate":)") + row.json);
        EXPECT_EQ(time.rate, row.expected) << row.json;
        EXPECT_EQ(time.value, 7.0) << row.json;
    }
}

TEST(OtioTime, AValueIsAFractionOrA32BitIntegerButNoString) {
    HalfRow const rows[] = {
        {"48.0", 48.0},
        {"48", 48.0},
        {"4.8e1", 48.0},
        {"0", 0.0},
        {"-12", -12.0},
        {"0.5", 0.5},
        {R"("48")", 7.0},
        {R"("")", 7.0},
        {"null", 7.0},
        {"true", 7.0},
        {"[]", 7.0},
        {"{}", 7.0},
        {"2147483647", 2147483647.0},
        {"-2147483648", -2147483648.0},
        {"2147483648", 7.0},
        {"-2147483649", 7.0},
        {"9007199254740993", 7.0},
        {"18446744073709551616", 18446744073709551616.0},
    };
    for (HalfRow const& row : rows) {
        Time const time = readMembers(std::string(R"("value":)") + row.json);
        EXPECT_EQ(time.value, row.expected) << row.json;
        EXPECT_EQ(time.rate, 30.0) << row.json;
    }
}

TEST(OtioTime, TheHalvesAreReadEachForItself) {
    Time const time = readMembers(R"("value":null,"rate":24)");
    EXPECT_EQ(time.value, 7.0);
    EXPECT_EQ(time.rate, 24.0);
}

TEST(OtioTime, WhatIsMissingStaysAsItWas) {
    Time const time = readOver7At30(R"({"OTIO_SCHEMA":"RationalTime.1"})");
    EXPECT_EQ(time.value, 7.0);
    EXPECT_EQ(time.rate, 30.0);
}

TEST(OtioTime, NumbersThatAreNotFiniteAreRefused) {
    char const* const rates[] = {"10.0e308", "-10.0e308", R"("inf")",   R"("-inf")",  R"("infinity")",
                                 R"("nan")", R"("NaN")",  R"("1e999")", R"("-1e999")"};
    for (char const* const rate : rates) {
        EXPECT_EQ(readMembers(std::string(R"("rate":)") + rate).rate, 30.0) << rate;
    }
    for (char const* const value : {"10.0e308", "-10.0e308", R"("inf")"}) {
        EXPECT_EQ(readMembers(std::string(R"("value":)") + value).value, 7.0) << value;
    }
}

TEST(OtioTime, AnyOtherSchemaChangesNothing) {
    char const* const schemas[] = {
        R"("RationalTime.2")",
        R"("RationalTime.10")",
        R"("RationalTime")",
        R"("rationaltime.1")",
        R"("")",
        R"(" RationalTime.1")",
        R"("TimeRange.1")",
        "null",
        "1",
        "true",
        "[]",
        R"({"RationalTime.1":1})",
    };
    for (char const* const schema : schemas) {
        Time const time =
            readOver7At30(std::string(R"({"OTIO_SCHEMA":)") + schema + R"(,"value":1,"rate":2})");
        EXPECT_EQ(time.value, 7.0) << schema;
        EXPECT_EQ(time.rate, 30.0) << schema;
    }
}

TEST(OtioTime, AnObjectWithoutASchemaChangesNothing) {
    Time const time = readOver7At30(R"({"value":1,"rate":2})");
    EXPECT_EQ(time.value, 7.0);
    EXPECT_EQ(time.rate, 30.0);
}

TEST(OtioTime, WhatIsNoObjectChangesNothing) {
    for (char const* const text :
         {"null", "1", "true", "\"RationalTime.1\"", "[]", R"(["RationalTime.1"])"}) {
        EXPECT_EQ(readOver7At30(text).value, 7.0) << text;
    }
}

TEST(OtioTime, TheSchemaNeedNotStandFirst) {
    Time const time = readOver7At30(R"({"rate":24,"value":48,"OTIO_SCHEMA":"RationalTime.1"})");
    EXPECT_EQ(time.value, 48.0);
    EXPECT_EQ(time.rate, 24.0);
}

TEST(OtioTime, OfDuplicateKeysOnlyTheFirstIsSeen) {
    Time const time = readMembers(R"("rate":null,"rate":24,"value":1,"value":2.0,"OTIO_SCHEMA":"Other.1")");
    EXPECT_EQ(time.rate, 30.0);
    EXPECT_EQ(time.value, 1.0);
}

TEST(OtioTime, ADefinedTimeWritesSchemaValueRate) {
    EXPECT_EQ(writtenToObject(timeOf(48.0, 24.0)), timeText("48.0", "24.0"));
    EXPECT_EQ(writtenToObject(timeOf(-0.5, 29.97)), timeText("-0.5", "29.97"));
}

TEST(OtioTime, AValueOf0IsWrittenAndARateOf0IsNot) {
    EXPECT_EQ(writtenToObject(timeOf(0.0, 24.0)), timeText("0.0", "24.0"));
    EXPECT_EQ(writtenToObject(timeOf(0.0, 0.0)), R"({"OTIO_SCHEMA":"RationalTime.1","value":0.0})");
    EXPECT_EQ(writtenToObject(timeOf(5.0, 1e-16)), R"({"OTIO_SCHEMA":"RationalTime.1","value":5.0})");
}

TEST(OtioTime, AnUndefinedValueIsNotWritten) {
    EXPECT_EQ(writtenToObject(timeOf(DBL_MAX, 24.0)), R"({"OTIO_SCHEMA":"RationalTime.1","rate":24.0})");
}

TEST(OtioTime, AnUndefinedTimeWritesOnlyItsSchemaAndIsReadBackUndefined) {
    EXPECT_EQ(writtenToObject(Time()), kUndefinedTime);
    Time time;
    time.setTime(parsed(kUndefinedTime));
    EXPECT_FALSE(time.hasValue());
    EXPECT_FALSE(time.hasRate());
}

TEST(OtioTime, AHalfThatIsNotFiniteIsLeftOutLikeAnUndefinedOne) {
    for (double const bad : {kInfinity, -kInfinity, kNan}) {
        EXPECT_EQ(writtenToObject(timeOf(bad, 24.0)), R"({"OTIO_SCHEMA":"RationalTime.1","rate":24.0})");
        EXPECT_EQ(writtenToObject(timeOf(5.0, bad)), R"({"OTIO_SCHEMA":"RationalTime.1","value":5.0})");
        EXPECT_EQ(writtenToObject(timeOf(bad, bad)), kUndefinedTime);
    }
}

TEST(OtioTime, WritesBehindTheMembersThatAnObjectHas) {
    rapidjson::Document target = parsed(R"({"a":1})");
    timeOf(1.0, 2.0).toJson(target, target.GetAllocator());
    EXPECT_EQ(textOf(target), R"({"a":1,"OTIO_SCHEMA":"RationalTime.1","value":1.0,"rate":2.0})");
}

TEST(OtioTime, WhatIsWrittenIsReadBack) {
    Time time;
    time.setTime(parsed(writtenToObject(timeOf(1001.5, 23.976))));
    EXPECT_EQ(time.value, 1001.5);
    EXPECT_EQ(time.rate, 23.976);
}

} // namespace
