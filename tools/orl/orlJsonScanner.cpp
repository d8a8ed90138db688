// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "orlJsonScanner.h"

#include "internal/orlJson.h"

#include <algorithm>

namespace ORL_0_81::tool {

std::size_t JsonScanner::skipSpace(std::size_t position) const {
    return std::min(m_text.find_first_not_of(" \t\r\n", position), m_text.size());
}

std::size_t JsonScanner::behindComma(std::size_t position) const {
    std::size_t const next = skipSpace(position);
    return m_text[next] == ',' ? skipSpace(next + 1) : next;
}

std::size_t JsonScanner::endOfString(std::size_t string) const {
    std::size_t position = m_text.find_first_of("\"\\", string + 1);
    while (m_text[position] == '\\') {
        position = m_text.find_first_of("\"\\", position + 2);
    }
    return position + 1;
}

std::size_t JsonScanner::endOf(std::size_t value) const {
    if (!isObject(value) && !isArray(value)) {
        return isString(value) ? endOfString(value)
                               : std::min(m_text.find_first_of(std::string_view(",]} \t\r\n\0", 8), value),
                                          m_text.size());
    }
    std::size_t depth = 0;
    std::size_t position = value;
    do {
        switch (m_text[position]) {
        case '"':
            position = m_text.find_first_of("\"{}[]", endOfString(position));
            continue;
        case '{':
        case '[':
            ++depth;
            break;
        default:
            if (--depth == 0) {
                return position + 1;
            }
        }
        position = m_text.find_first_of("\"{}[]", position + 1);
    } while (true);
}

std::string JsonScanner::decoded(TextSpan const& string) const {
    std::string_view const text = raw(string);
    if (text.find('\\') == std::string_view::npos) {
        return std::string(text.substr(1, text.size() - 2));
    }
    rapidjson::Document document;
    parseJson(std::string(text).c_str(), document);
    return document.IsString() ? std::string(document.GetString(), document.GetStringLength())
                               : std::string();
}

} // namespace ORL_0_81::tool
