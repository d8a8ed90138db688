// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#ifndef ORL_TEST_SUPPORT_JSON_H
#define ORL_TEST_SUPPORT_JSON_H

#include <rapidjson/document.h>
#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

#include <cstddef>
#include <stdexcept>
#include <string>

/// \file
/// JSON for tests, without any of the library's own ways in and out.

namespace orlTest {

/// Parses a text that is good by the test's own account.
inline void parseInto(rapidjson::Document& document, std::string const& text) {
    document.Parse(text.c_str(), text.size());
    if (document.HasParseError()) {
        throw std::invalid_argument("a test's own JSON does not parse: " + text);
    }
}

inline rapidjson::Document parsed(std::string const& text) {
    rapidjson::Document document;
    parseInto(document, text);
    return document;
}

inline std::string textOf(rapidjson::Value const& value) {
    rapidjson::StringBuffer buffer;
    rapidjson::Writer<rapidjson::StringBuffer> writer(buffer);
    value.Accept(writer);
    return std::string(buffer.GetString(), buffer.GetSize());
}

/// A JSON text without the white space between its tokens, so that an expectation can be laid out in lines.
inline std::string compact(std::string const& text) {
    std::string result;
    bool inString = false;
    for (std::size_t i = 0; i < text.size(); ++i) {
        char const c = text[i];
        if (inString && c == '\\') {
            result += text.substr(i, 2);
            ++i;
            continue;
        }
        if (c == '"') {
            inString = !inString;
        }
        if (inString || (c != ' ' && c != '\n' && c != '\t' && c != '\r')) {
            result += c;
        }
    }
    return result;
}

/// What `node.toJson` leaves of a value that was an empty object.
template <class T>
std::string writtenToObject(T const& node) {
    rapidjson::Document target;
    target.SetObject();
    node.toJson(target, target.GetAllocator());
    return textOf(target);
}

/// What `node.toJson` leaves of a value that was an empty array.
template <class T>
std::string writtenToArray(T const& node) {
    rapidjson::Document target;
    target.SetArray();
    node.toJson(target, target.GetAllocator());
    return textOf(target);
}

/// `count` copies of a text.
inline std::string repeated(std::string const& text, std::size_t count) {
    std::string result;
    result.reserve(text.size() * count);
    for (std::size_t i = 0; i < count; ++i) {
        result += text;
    }
    return result;
}

} // namespace orlTest

#endif // ORL_TEST_SUPPORT_JSON_H
