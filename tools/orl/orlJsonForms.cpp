// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "orlJsonForms.h"

#include "rapidotio/internal/orlOtioParsing.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <cstring>

namespace ORL_0_81::tool {

using rapidjson::Value;

namespace {

bool isFiniteFraction(Value const& value) { return value.IsDouble() && std::isfinite(value.GetDouble()); }

bool isInteger(Value const& value) { return value.IsInt64() || value.IsUint64(); }

// A text without any number in it reads as 0, which is the undefined rate: the reader takes nothing of it.
bool isRateText(Value const& value) {
    if (!value.IsString()) {
        return false;
    }
    char* end = nullptr;
    double const rate = std::strtod(value.GetString(), &end);
    return end != value.GetString() && std::isfinite(rate);
}

bool isTimeNumber(Value const& value) { return isFiniteFraction(value) || value.IsInt(); }

} // namespace

// Goes as deep as the document does, which the limit of nesting at parsing bounds.
bool saysNothing(Value const& value) {
    if (value.IsObject()) {
        return std::all_of(value.MemberBegin(), value.MemberEnd(),
                           [](auto const& member) { return saysNothing(member.value); });
    }
    if (value.IsArray()) {
        return std::all_of(value.Begin(), value.End(), saysNothing);
    }
    return value.IsNull() || (value.IsString() && value.GetStringLength() == 0);
}

bool isEmptyRange(Value const& value) {
    if (!value.IsObject()) {
        return saysNothing(value);
    }
    return std::all_of(value.MemberBegin(), value.MemberEnd(), [](auto const& member) {
        return wholeText(member.name) == "OTIO_SCHEMA" || isEmptyRange(member.value);
    });
}

std::string_view schemaOf(Value const& json) {
    char const* const schema = rapidotio::Parsing::peekString(json, "OTIO_SCHEMA");
    return schema ? std::string_view(schema) : std::string_view();
}

std::string_view wholeText(Value const& value) { return {value.GetString(), value.GetStringLength()}; }

bool isCut(Value const& value) { return std::strlen(value.GetString()) != value.GetStringLength(); }

bool isTaken(Value const& value, Form form) {
    switch (form) {
    case Form::kText:
        return value.IsString();
    case Form::kInteger:
        return value.IsInt();
    case Form::kUnsigned:
        return value.IsUint();
    case Form::kFraction:
        return isFiniteFraction(value);
    case Form::kFloat:
        return value.IsFloat();
    case Form::kFlag:
        return value.IsBool();
    case Form::kTimeValue:
        return isTimeNumber(value);
    case Form::kTimeRate:
        return isTimeNumber(value) || isRateText(value);
    default:
        return false;
    }
}

std::string describe(Value const& value, Form form) {
    if (isInteger(value)) {
        bool const wantsInteger = form == Form::kInteger || form == Form::kUnsigned ||
                                  form == Form::kIntegers || form == Form::kTimeValue ||
                                  form == Form::kTimeRate || form == Form::kComponents;
        return wantsInteger ? "an integer out of range" : "an integer";
    }
    if (value.IsDouble()) {
        bool const wantsFraction = form == Form::kFraction || form == Form::kFloat ||
                                   form == Form::kTimeValue || form == Form::kTimeRate ||
                                   form == Form::kComponents;
        return wantsFraction ? "a fraction out of range" : "a fraction";
    }
    if (value.IsArray()) {
        return "a list of " + std::to_string(value.Size());
    }
    if (value.IsObject()) {
        return "an object";
    }
    if (value.IsString()) {
        return "a text";
    }
    return value.IsNull() ? "null" : "a flag";
}

char const* expectation(Form form) {
    switch (form) {
    case Form::kText:
        return "a text";
    case Form::kInteger:
    case Form::kIntegers:
        return "an integer of 32 bits";
    case Form::kUnsigned:
        return "an unsigned integer of 32 bits";
    case Form::kFraction:
    case Form::kFloat:
        return "a fraction";
    case Form::kFlag:
        return "a flag";
    case Form::kTimeValue:
    case Form::kTimeRate:
    case Form::kComponents:
        return "a number";
    case Form::kTrackKind:
        return "\"Video\" or \"Audio\"";
    case Form::kEntity:
        return "/TYPE/NUMBER";
    case Form::kNumbers:
    case Form::kColour:
    case Form::kPoints:
    case Form::kChildren:
        return "a list";
    default:
        return "an object";
    }
}

} // namespace ORL_0_81::tool
