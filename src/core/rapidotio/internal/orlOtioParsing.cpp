// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "rapidotio/internal/orlOtioParsing.h"

#include "rapidotio/internal/orlOtioDebug.h"
#include "rapidotio/orlOtioTimeRange.h"

#include <cmath>
#include <cstdint>
#include <cstring>

namespace ORL_0_81::rapidotio::Parsing {

using rapidjson::Value;

char const* const types[7] = {"Null", "False", "True", "Object", "Array", "String", "Number"};

namespace {

template <class Word>
bool differ(char const* left, char const* right) {
    Word leftWord;
    Word rightWord;
    std::memcpy(&leftWord, left, sizeof leftWord);
    std::memcpy(&rightWord, right, sizeof rightWord);
    return leftWord != rightWord;
}

// Names are short and looked up by the dozen for each node, so most are compared as two overlapping words
// rather than by a call of memcmp.
bool isSame(char const* left, char const* right, std::size_t length) {
    if (length > 2 * sizeof(std::uint64_t)) {
        return std::memcmp(left, right, length) == 0;
    }
    if (length >= sizeof(std::uint64_t)) {
        std::size_t const last = length - sizeof(std::uint64_t);
        return !differ<std::uint64_t>(left, right) && !differ<std::uint64_t>(left + last, right + last);
    }
    if (length >= sizeof(std::uint32_t)) {
        std::size_t const last = length - sizeof(std::uint32_t);
        return !differ<std::uint32_t>(left, right) && !differ<std::uint32_t>(left + last, right + last);
    }
    return std::memcmp(left, right, length) == 0;
}

Value::ConstMemberIterator find(Value const& object, Name name) {
    auto const end = object.MemberEnd();
    for (auto member = object.MemberBegin(); member != end; ++member) {
        if (member->name.GetStringLength() == name.length &&
            isSame(member->name.GetString(), name.text, name.length)) {
            return member;
        }
    }
    return end;
}

// The steps that all lookups share. `accepts` judges the value; `word` names the type in the message.
template <class Accepts, class Store>
bool get(Value const& object, Name name, char const* word, Accepts accepts, Store store) {
    if (!object.IsObject()) {
        printDebug("Cannot find '%s'\n", name.text);
        return false;
    }
    auto const member = find(object, name);
    if (member == object.MemberEnd()) {
        printDebug("Cannot find '%s'\n", name.text);
        return false;
    }
    if (!accepts(member->value)) {
        printDebug("Expected '%s' to be %s, found %s\n", name.text, word, types[member->value.GetType()]);
        return false;
    }
    printDebug("Found %s\n", name.text);
    store(member);
    return true;
}

using Member = Value::ConstMemberIterator;

} // namespace

bool getString(Value const& object, Name name, std::string& result) {
    return get(
        object, name, "String", [](Value const& value) { return value.IsString(); },
        [&](Member member) { result = member->value.GetString(); });
}

bool getInt(Value const& object, Name name, int& result) {
    return get(
        object, name, "Int", [](Value const& value) { return value.IsInt(); },
        [&](Member member) { result = member->value.GetInt(); });
}

bool getUInt(Value const& object, Name name, unsigned& result) {
    return get(
        object, name, "Uint", [](Value const& value) { return value.IsUint(); },
        [&](Member member) { result = member->value.GetUint(); });
}

bool getDouble(Value const& object, Name name, double& result) {
    return get(
        object, name, "Double",
        [](Value const& value) { return value.IsDouble() && std::isfinite(value.GetDouble()); },
        [&](Member member) { result = member->value.GetDouble(); });
}

bool getFloat(Value const& object, Name name, float& result) {
    return get(
        object, name, "Float", [](Value const& value) { return value.IsFloat(); },
        [&](Member member) { result = member->value.GetFloat(); });
}

bool getBool(Value const& object, Name name, bool& result) {
    return get(
        object, name, "bool", [](Value const& value) { return value.IsBool(); },
        [&](Member member) { result = member->value.GetBool(); });
}

bool getObject(Value const& object, Name name, Value::ConstMemberIterator& result) {
    return get(
        object, name, "Object", [](Value const& value) { return value.IsObject(); },
        [&](Member member) { result = member; });
}

bool getArray(Value const& object, Name name, Value::ConstMemberIterator& result) {
    return get(
        object, name, "Array", [](Value const& value) { return value.IsArray(); },
        [&](Member member) { result = member; });
}

Value const* findObject(Value const& object, Name name) {
    Value::ConstMemberIterator member;
    return getObject(object, name, member) ? &member->value : nullptr;
}

Value const* findArray(Value const& object, Name name) {
    Value::ConstMemberIterator member;
    return getArray(object, name, member) ? &member->value : nullptr;
}

void getTimeRange(Value const& object, Name name, TimeRange& result) {
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

char const* peekString(Value const& object, Name name) {
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
