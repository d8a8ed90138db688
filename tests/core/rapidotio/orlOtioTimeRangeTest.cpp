// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "rapidotio/orlOtioTimeRange.h"

#include "support/Json.h"
#include "support/TimelineText.h"

#include <gtest/gtest.h>

#include <cstddef>

namespace {

using ORL_0_81::rapidotio::Time;
using ORL_0_81::rapidotio::TimeRange;
using namespace orlTest;

TEST(OtioTimeRange, HasAStartAndThenADuration) {
    EXPECT_EQ(offsetof(TimeRange, start_time), 0U);
    EXPECT_EQ(offsetof(TimeRange, duration), sizeof(Time));
    EXPECT_EQ(sizeof(TimeRange), 2 * sizeof(Time));
}

TEST(OtioTimeRange, ANewRangeHoldsTwoUndefinedTimes) {
    TimeRange const range;
    EXPECT_FALSE(range.start_time.hasValue());
    EXPECT_FALSE(range.start_time.hasRate());
    EXPECT_FALSE(range.duration.hasValue());
    EXPECT_FALSE(range.duration.hasRate());
}

TEST(OtioTimeRange, WritesItsSchemaLast) {
    TimeRange range;
    range.start_time.value = 12.0;
    range.start_time.rate = 24.0;
    range.duration.value = 48.0;
    range.duration.rate = 30.0;
    EXPECT_EQ(writtenToObject(range),
              R"({"start_time":{"OTIO_SCHEMA":"RationalTime.1","value":12.0,"rate":24.0},)"
              R"("duration":{"OTIO_SCHEMA":"RationalTime.1","value":48.0,"rate":30.0},)"
              R"("OTIO_SCHEMA":"TimeRange.1"})");
}

TEST(OtioTimeRange, UndefinedTimesAreWrittenAsObjectsOfTheirSchemaAlone) {
    EXPECT_EQ(writtenToObject(TimeRange()), R"({"start_time":{"OTIO_SCHEMA":"RationalTime.1"},)"
                                            R"("duration":{"OTIO_SCHEMA":"RationalTime.1"},)"
                                            R"("OTIO_SCHEMA":"TimeRange.1"})");
}

TEST(OtioTimeRange, WritesBehindTheMembersThatAnObjectHas) {
    rapidjson::Document target = parsed(R"({"a":1})");
    TimeRange().toJson(target, target.GetAllocator());
    EXPECT_EQ(textOf(target), R"({"a":1,)" + kUndefinedRange.substr(1));
}

} // namespace
