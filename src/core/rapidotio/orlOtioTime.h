// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#ifndef ORL_OTIO_TIME_H
#define ORL_OTIO_TIME_H

#include <rapidjson/document.h>

#include <cfloat>

namespace ORL_0_81::rapidotio {

/// A time of a timeline document: `value` units at `rate` units a second, so value / rate seconds.
///
/// A default time is undefined in both halves. Each half may be undefined alone: a value next to the largest
/// finite double, a rate next to 0. A value of 0 is defined.
struct Time {
    static constexpr double kUndefinedValue = DBL_MAX;

    double value = kUndefinedValue;
    double rate = 0.0;

    /// False for the undefined value.
    bool hasValue() const;

    /// False for a rate of 0.
    bool hasRate() const;

    /// True when both halves are defined.
    bool isDefined() const { return hasValue() && hasRate(); }

    /// Reads an object of the schema "RationalTime.1"; an object of any other, or of none, changes nothing.
    ///
    /// The rate may be a fraction, a 32-bit integer or a string; the value a fraction or a 32-bit integer,
    /// but no string. A half that has none of these stays as it was; so does one that is not finite.
    void setTime(rapidjson::Value const& object);

    /// Adds "OTIO_SCHEMA", then "value" and "rate" where they are defined and finite, to an object.
    void toJson(rapidjson::Value& object, rapidjson::Document::AllocatorType& allocator) const;
};

} // namespace ORL_0_81::rapidotio

#endif // ORL_OTIO_TIME_H
