// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#ifndef ORL_OTIO_TIME_RANGE_H
#define ORL_OTIO_TIME_RANGE_H

#include "rapidotio/orlOtioTime.h"

namespace ORL_0_81::rapidotio {

/// A start and a length; either half of either time may be undefined.
struct TimeRange {
    Time start_time;
    Time duration;

    /// Adds "start_time", "duration" and then "OTIO_SCHEMA" to an object. The schema stands last here and
    /// first in a time.
    void toJson(rapidjson::Value& object, rapidjson::Document::AllocatorType& allocator) const;
};

} // namespace ORL_0_81::rapidotio

#endif // ORL_OTIO_TIME_RANGE_H
