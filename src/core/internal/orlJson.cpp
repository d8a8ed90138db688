// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "internal/orlJson.h"

#include <rapidjson/reader.h>

#include <cstddef>
#include <cstring>

namespace ORL_0_81 {

namespace {

// Stands between the parser and the document that it fills, and stops the parser at the first bracket too
// deep.
template <class Document>
class DepthLimit {
public:
    explicit DepthLimit(Document& document) : m_document(document) {}

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
    Document& m_document;
    unsigned m_depth = 0;
};

// RapidJSON adds up the digits of a negative exponent in an int until it is nearly full, and then subtracts
// the number of decimals, which can overflow: it goes on to read far outside of a table. So no exponent may
// have more digits than this. Any with more, but for leading zeros, makes a number 0 all the same.
constexpr std::size_t kMaxExponentDigits = 8;

bool isDigit(char c) { return c >= '0' && c <= '9'; }

// The number of digits of the negative exponent whose sign stands at `minus`; 0 if it is no such sign.
std::size_t countExponentDigits(char const* text, char const* minus) {
    if (minus == text || (minus[-1] != 'e' && minus[-1] != 'E')) {
        return 0;
    }
    std::size_t count = 0;
    while (isDigit(minus[1 + count])) {
        ++count;
    }
    return count;
}

// True when there may be such an exponent; within a string it is none. Texts with one are hostile or broken,
// so all others should pay for the search of a character only.
bool mayHaveLongExponent(char const* text) {
    for (char const* minus = std::strchr(text, '-'); minus; minus = std::strchr(minus + 1, '-')) {
        if (countExponentDigits(text, minus) > kMaxExponentDigits) {
            return true;
        }
    }
    return false;
}

// The same text, byte for byte in the same places, but for digits of exponents.
std::string shortenExponents(char const* text) {
    std::string result(text);
    bool isInString = false;
    for (std::size_t i = 0; i < result.size(); ++i) {
        char const c = result[i];
        if (c == '"') {
            isInString = !isInString;
        } else if (isInString) {
            i += c == '\\';
        } else if (c == '-') {
            std::size_t const count = countExponentDigits(result.c_str(), result.c_str() + i);
            if (count > kMaxExponentDigits) {
                std::size_t const zeros = count - kMaxExponentDigits;
                bool const isHuge = result.find_first_not_of('0', i + 1) < i + 1 + zeros;
                result.replace(i + 1, zeros, zeros, '0');
                if (isHuge) {
                    result.replace(i + 1 + zeros, kMaxExponentDigits, kMaxExponentDigits, '9');
                }
            }
            i += count;
        }
    }
    return result;
}

template <class Document>
rapidjson::ParseResult parseSafe(char const* text, Document& document) {
    rapidjson::ParseResult result;
    auto parse = [text, &result](Document& target) {
        rapidjson::StringStream stream(text);
        DepthLimit<Document> limit(target);
        rapidjson::Reader reader;
        result = reader.Parse<rapidjson::kParseDefaultFlags>(stream, limit);
        return !result.IsError();
    };
    document.SetNull();
    document.Populate(parse);
    return result;
}

template <class Document>
rapidjson::ParseResult parse(char const* text, Document& document) {
    if (mayHaveLongExponent(text)) {
        return parseSafe(shortenExponents(text).c_str(), document);
    }
    return parseSafe(text, document);
}

} // namespace

rapidjson::ParseResult parseJson(char const* text, rapidjson::Document& document) {
    return parse(text, document);
}

rapidjson::ParseResult parseJson(char const* text, SmallDocument& document) {
    // The base is what the parser fills.
    return parse<SmallDocument::Base>(text, document);
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
