// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "rapidotio/internal/orlOtioWriting.h"

#include "rapidotio/orlOtioPoint.h"
#include "rapidotio/orlOtioTimeRange.h"

namespace ORL_0_81::rapidotio::Writing {

void ObjectBuilder::addTime(Time const& time) {
    addConstant("OTIO_SCHEMA", "RationalTime.1");
    if (time.hasValue() && std::isfinite(time.value)) {
        addDouble("value", time.value);
    }
    if (time.hasRate() && std::isfinite(time.rate)) {
        addDouble("rate", time.rate);
    }
}

void ObjectBuilder::addTimeRange(TimeRange const& range) {
    addTime("start_time", range.start_time);
    addTime("duration", range.duration);
    addConstant("OTIO_SCHEMA", "TimeRange.1");
}

void ObjectBuilder::addPoint(Point const& point) {
    addConstant("OTIO_SCHEMA", "Point.1");
    addDouble("x", point.x);
    addDouble("y", point.y);
    addDouble("width", point.width);
}

void fillSlot(rapidjson::Value& object, char const* name, rapidjson::Value& value) {
    object.FindMember(name)->value = value;
}

} // namespace ORL_0_81::rapidotio::Writing
