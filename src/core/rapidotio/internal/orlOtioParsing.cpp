// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "rapidotio/internal/orlOtioParsing.h"

#include "rapidotio/internal/orlOtioDebug.h"
#include "rapidotio/orlOtioTimeRange.h"

#include <cmath>
#include <cstring>

namespace ORL_0_81::rapidotio::Parsing {

using rapidjson::Value;

char const* const types[7] = {"Null", "False", "True", "Object", "Array", "String", "Number"};

namespace {

Value::ConstMemberIterator find(Value const& object, char const* name) {
    std::size_t const length = std::strlen(name);
    auto const end = object.MemberEnd();
    for (auto member = object.MemberBegin(); member != end; ++member) {
        if (member->name.GetStringLength() == length &&
            std::memcmp(member->name.GetString(), name, length) == 0) {
            return member;
        }
    }
    return end;
}

// The steps that all lookups share. `accepts` judges the value; `word` names the type in the message.
template <class Accepts, class Store>
bool get(Value const& object, char const* name, char const* word, Accepts accepts, Store store) {
    if (!object.IsObject()) {
        printDebug("Cannot find '%s'\n", name);
        return false;
    }
    auto const member = find(object, name);
    if (member == object.MemberEnd()) {
        printDebug("Cannot find '%s'\n", name);
        return false;
    }
    if (!accepts(member->value)) {
        printDebug("Expected '%s' to be %s, found %s\n", name, word, types[member->value.GetType()]);
        return false;
    }
    printDebug("Found %s\n", name);
    store(member);
    return true;
}

using Member = Value::ConstMemberIterator;

} // namespace

bool getString(Value const& object, char const* name, std::string& result) {
    return get(
        object, name, "String", [](Value const& value) { return value.IsString(); },
        [&](Member member) { result = member->value.GetString(); });
}

bool getInt(Value const& object, char const* name, int& result) {
    return get(
        object, name, "Int", [](Value const& value) { return value.IsInt(); },
        [&](Member member) { result = member->value.GetInt(); });
}

bool getUInt(Value const& object, char const* name, unsigned& result) {
    return get(
        object, name, "Uint", [](Value const& value) { return value.IsUint(); },
        [&](Member member) { result = member->value.GetUint(); });
}

bool getDouble(Value const& object, char const* name, double& result) {
    return get(
        object, name, "Double",
        [](Value const& value) { return value.IsDouble() && std::isfinite(value.GetDouble()); },
        [&](Member member) { result = member->value.GetDouble(); });
}

bool getFloat(Value const& object, char const* name, float& result) {
    return get(
        object, name, "Float", [](Value const& value) { return value.IsFloat(); },
        [&](Member member) { result = member->value.GetFloat(); });
}

bool getBool(Value const& object, char const* name, bool& result) {
    return get(
        object, name, "bool", [](Value const& value) { return value.IsBool(); },
        [&](Member member) { result = member->value.GetBool(); });
}

bool getObject(Value const& object, char const* name, Value::ConstMemberIterator& result) {
    return get(
        object, name, "Object", [](Value const& value) { return value.IsObject(); },
        [&](Member member) { result = member; });
}

bool getArray(Value const& object, char const* name, Value::ConstMemberIterator& result) {
    return get(
        object, name, "Array", [](Value const& value) { return value.IsArray(); },
        [&](Member member) { result = member; });
}

Value const* findObject(Value const& object, char const* name) {
    Value::ConstMemberIterator member;
    return getObject(object, name, member) ? &member->value : nullptr;
}

Value const* findArray(Value const& object, char const* name) {
    Value::ConstMemberIterator member;
    return getArray(object, name, member) ? &member->value : nullptr;
}

void getTimeRange(Value const& object, char const* name, TimeRange& result) {
    Value const* const range = findObject(object, name);
    if (!range) {
        return;
    }
    if (Value const* const start = findObject(*range, "start_time")) {
        result.start_time.setTime(*start);
    }
    if (Value const* const duration = findObject(*range, "duration")) {
        result.duration.setTime(*duration);
    }
}

char const* peekString(Value const& object, char const* name) {
    if (!object.IsObject()) {
        return nullptr;
    }
    auto const member = find(object, name);
    return member != object.MemberEnd() && member->value.IsString() ? member->value.GetString() : nullptr;
}

bool hasSchema(Value const& object, char const* schema) {
    char const* const text = peekString(object, "OTIO_SCHEMA");
    return text && std::strcmp(text, schema) == 0;
}

bool toNumbers(Value const& array, double limit, std::vector<double>& result) {
    result.clear();
    result.reserve(array.Size());
    for (Value const& element : array.GetArray()) {
        if (!element.IsNumber() || !(std::fabs(element.GetDouble()) <= limit)) {
            return false;
        }
        result.push_back(element.GetDouble());
    }
    return true;
}

} // namespace ORL_0_81::rapidotio::Parsing
