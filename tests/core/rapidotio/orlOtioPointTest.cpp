// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "rapidotio/orlOtioPoint.h"

#include "support/Json.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <limits>

namespace {

using ORL_0_81::rapidotio::Point;
using namespace orlTest;

TEST(OtioPoint, HasXAndYAndWidthInThisOrder) {
    EXPECT_EQ(offsetof(Point, x), 0U);
    EXPECT_EQ(offsetof(Point, y), sizeof(double));
    EXPECT_EQ(offsetof(Point, width), 2 * sizeof(double));
    EXPECT_EQ(sizeof(Point), 3 * sizeof(double));
}

TEST(OtioPoint, ANewPointIsAllZeroAndWritesItsZeros) {
    EXPECT_EQ(writtenToObject(Point()), R"({"OTIO_SCHEMA":"Point.1","x":0.0,"y":0.0,"width":0.0})");
}

TEST(OtioPoint, WritesItsSchemaFirst) {
    Point point;
    point.x = 0.25;
    point.y = -12.5;
    point.width = 3.0;
    EXPECT_EQ(writtenToObject(point), R"({"OTIO_SCHEMA":"Point.1","x":0.25,"y":-12.5,"width":3.0})");
}

TEST(OtioPoint, ANumberThatIsNotFiniteIsWrittenAs0) {
    Point point;
    point.x = std::numeric_limits<double>::infinity();
    point.y = std::numeric_limits<double>::quiet_NaN();
    point.width = 2.0;
    EXPECT_EQ(writtenToObject(point), R"({"OTIO_SCHEMA":"Point.1","x":0.0,"y":0.0,"width":2.0})");
}

TEST(OtioPoint, WritesBehindTheMembersThatAreThere) {
    rapidjson::Document object;
    object.Parse(R"({"a":1})");
    Point().toJson(object, object.GetAllocator());
    EXPECT_EQ(textOf(object), R"({"a":1,"OTIO_SCHEMA":"Point.1","x":0.0,"y":0.0,"width":0.0})");
}

} // namespace
