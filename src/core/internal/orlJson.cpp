// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "internal/orlJson.h"

#include <rapidjson/reader.h>

namespace ORL_0_81 {

namespace {

// Stands between the parser and the document that it fills, and stops the parser at the first bracket too
// deep.
class DepthLimit {
public:
    explicit DepthLimit(rapidjson::Document& document) : m_document(document) {}

    bool Null() { return m_document.Null(); }
    bool Bool(bool value) { return m_document.Bool(value); }
    bool Int(int value) { return m_document.Int(value); }
    bool Uint(unsigned value) { return m_document.Uint(value); }
    bool Int64(std::int64_t value) { return m_document.Int64(value); }
    bool Uint64(std::uint64_t value) { return m_document.Uint64(value); }
    bool Double(double value) { return m_document.Double(value); }
    bool RawNumber(char const* text, rapidjson::SizeType length, bool copy) {
        return m_document.RawNumber(text, length, copy);
    }
    bool String(char const* text, rapidjson::SizeType length, bool copy) {
        return m_document.String(text, length, copy);
    }
    bool Key(char const* text, rapidjson::SizeType length, bool copy) {
        return m_document.Key(text, length, copy);
    }
    bool StartObject() { return ++m_depth <= kMaxJsonDepth && m_document.StartObject(); }
    bool EndObject(rapidjson::SizeType count) {
        --m_depth;
        return m_document.EndObject(count);
    }
    bool StartArray() { return ++m_depth <= kMaxJsonDepth && m_document.StartArray(); }
    bool EndArray(rapidjson::SizeType count) {
        --m_depth;
        return m_document.EndArray(count);
    }

private:
    rapidjson::Document& m_document;
    unsigned m_depth = 0;
};

} // namespace

rapidjson::ParseResult parseJson(char const* text, rapidjson::Document& document) {
    rapidjson::ParseResult result;
    auto parse = [text, &result](rapidjson::Document& target) {
        rapidjson::StringStream stream(text);
        DepthLimit limit(target);
        rapidjson::Reader reader;
        result = reader.Parse<rapidjson::kParseDefaultFlags>(stream, limit);
        return !result.IsError();
    };
    document.SetNull();
    document.Populate(parse);
    return result;
}

std::string jsonToText(rapidjson::Value const& value) {
    rapidjson::StringBuffer buffer;
    JsonWriter writer(buffer);
    value.Accept(writer);
    return std::string(buffer.GetString(), buffer.GetSize());
}

rapidjson::Value const* findMember(rapidjson::Value const& object, char const* name) {
    if (!object.IsObject()) {
        return nullptr;
    }
    auto const member = object.FindMember(name);
    return member != object.MemberEnd() ? &member->value : nullptr;
}

bool readInt(rapidjson::Value const& object, char const* name, std::int32_t& result) {
    rapidjson::Value const* const value = findMember(object, name);
    if (!value || !value->IsInt()) {
        return false;
    }
    result = value->GetInt();
    return true;
}

} // namespace ORL_0_81
