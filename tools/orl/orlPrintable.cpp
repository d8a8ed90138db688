// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "orlPrintable.h"

#include <array>
#include <cstdio>

namespace ORL_0_81::tool {

namespace {

void appendEscaped(std::string& result, char character) {
    switch (character) {
    case '\n':
        result += "\\n";
        return;
    case '\r':
        result += "\\r";
        return;
    case '\t':
        result += "\\t";
        return;
    default:
        break;
    }
    std::array<char, 8> code{};
    std::snprintf(code.data(), code.size(), "\\u%04x", static_cast<unsigned>(character));
    result += code.data();
}

bool isControl(char character) {
    constexpr char kDelete = 0x7f;
    return (character >= 0 && character < ' ') || character == kDelete;
}

} // namespace

std::string printable(std::string_view text) {
    std::string result;
    result.reserve(text.size());
    for (char const character : text) {
        if (isControl(character)) {
            appendEscaped(result, character);
        } else {
            result += character;
        }
    }
    return result;
}

std::string inQuotes(std::string_view text) {
    std::string escaped;
    escaped.reserve(text.size());
    for (char const character : text) {
        if (character == '"' || character == '\\') {
            escaped += '\\';
        }
        escaped += character;
    }
    return '"' + printable(escaped) + '"';
}

} // namespace ORL_0_81::tool
