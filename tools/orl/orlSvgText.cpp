// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "orlSvgText.h"

#include <utf8proc.h>

#include <vector>

namespace ORL_0_81::tool {

namespace {

constexpr char const kReplacement[] = "\xef\xbf\xbd";
constexpr char const kEllipsis[] = "\xe2\x80\xa6";

// One code point of a text, or one byte that is none.
struct Letter {
    utf8proc_int32_t codePoint; // negative for a byte that is none
    std::string_view bytes;
};

std::vector<Letter> lettersOf(std::string_view text) {
    std::vector<Letter> letters;
    while (!text.empty()) {
        utf8proc_int32_t codePoint = -1;
        utf8proc_ssize_t const length =
            utf8proc_iterate(reinterpret_cast<utf8proc_uint8_t const*>(text.data()),
                             static_cast<utf8proc_ssize_t>(text.size()), &codePoint);
        std::size_t const taken = length > 0 ? static_cast<std::size_t>(length) : 1;
        letters.push_back({length > 0 ? codePoint : -1, text.substr(0, taken)});
        text.remove_prefix(taken);
    }
    return letters;
}

// XML has no way to write most control characters, nor the two code points that are no characters.
bool mayStandInXml(utf8proc_int32_t codePoint) {
    constexpr utf8proc_int32_t kFirstBlank = 0x20;
    return codePoint >= kFirstBlank ? codePoint != 0xFFFE && codePoint != 0xFFFF
                                    : codePoint == '\t' || codePoint == '\n' || codePoint == '\r';
}

} // namespace

std::string svgText(std::string_view text) {
    std::string result;
    for (Letter const& letter : lettersOf(text)) {
        switch (letter.codePoint) {
        case '&':
            result += "&amp;";
            break;
        case '<':
            result += "&lt;";
            break;
        case '>':
            result += "&gt;";
            break;
        case '"':
            result += "&quot;";
            break;
        default:
            result += mayStandInXml(letter.codePoint) ? letter.bytes : kReplacement;
        }
    }
    return result;
}

std::size_t countLetters(std::string_view text) { return lettersOf(text).size(); }

std::string shortened(std::string_view text, std::size_t maxLetters) {
    std::vector<Letter> const letters = lettersOf(text);
    if (letters.size() <= maxLetters) {
        return std::string(text);
    }
    std::size_t const kept = maxLetters - 1;
    std::size_t const atEnd = kept / 2;
    std::string result;
    for (std::size_t i = 0; i < kept - atEnd; ++i) {
        result += letters[i].bytes;
    }
    result += kEllipsis;
    for (std::size_t i = letters.size() - atEnd; i < letters.size(); ++i) {
        result += letters[i].bytes;
    }
    return result;
}

} // namespace ORL_0_81::tool
