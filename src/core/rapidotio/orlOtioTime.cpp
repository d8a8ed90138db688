// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "rapidotio/orlOtioTime.h"

#include "internal/orlFloatUtils.h"
#include "rapidotio/internal/orlOtioParsing.h"
#include "rapidotio/internal/orlOtioWriting.h"

#include <cmath>
#include <cstdlib>
#include <string>

namespace ORL_0_81::rapidotio {

bool Time::hasValue() const { return !isNear(value, kUndefinedValue); }

bool Time::hasRate() const { return !isNearZero(rate); }

void Time::setTime(rapidjson::Value const& object) {
    if (!Parsing::hasSchema(object, "RationalTime.1")) {
        return;
    }

    int integer = 0;
    std::string text;
    if (!Parsing::getDouble(object, "rate", rate)) {
        if (Parsing::getInt(object, "rate", integer)) {
            rate = integer;
        } else if (Parsing::getString(object, "rate", text)) {
            double const number = std::atof(text.c_str());
            if (std::isfinite(number)) {
                rate = number;
            }
        }
    }

    if (!Parsing::getDouble(object, "value", value) && Parsing::getInt(object, "value", integer)) {
        value = integer;
    }
}

void Time::toJson(rapidjson::Value& object, rapidjson::Document::AllocatorType& allocator) const {
    Writing::addMembers(object, allocator, [this](auto& members) { members.addMembersOf(*this); });
}

} // namespace ORL_0_81::rapidotio
