// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "internal/orlUtf8.h"

#include <utf8proc.h>

#include <algorithm>
#include <vector>

namespace ORL_0_81 {

namespace {

using CodePoints = std::vector<utf8proc_int32_t>;

// A character becomes at most this many: the longest canonical decomposition has four.
constexpr utf8proc_ssize_t MAX_DECOMPOSED = 18;

// False if the text is no valid UTF-8.
bool decompose(std::string const& text, CodePoints& result) {
    auto const* rest = reinterpret_cast<utf8proc_uint8_t const*>(text.data());
    auto remaining = static_cast<utf8proc_ssize_t>(text.size());
    while (remaining > 0) {
        utf8proc_int32_t character = 0;
        utf8proc_ssize_t const length = utf8proc_iterate(rest, remaining, &character);
        if (length <= 0) {
            return false;
        }
        utf8proc_int32_t parts[MAX_DECOMPOSED];
        int lastBoundClass = UTF8PROC_BOUNDCLASS_START;
        auto const options = static_cast<utf8proc_option_t>(UTF8PROC_DECOMPOSE | UTF8PROC_STABLE);
        utf8proc_ssize_t const count =
            utf8proc_decompose_char(character, parts, MAX_DECOMPOSED, options, &lastBoundClass);
        if (count < 0 || count > MAX_DECOMPOSED) {
            return false;
        }
        result.insert(result.end(), parts, parts + count);
        rest += length;
        remaining -= length;
    }
    return true;
}

int combiningClass(utf8proc_int32_t character) { return utf8proc_get_property(character)->combining_class; }

// Each run of marks in the order of their classes. Sorted as a whole: utf8proc itself moves one mark at a
// time, which takes minutes for a long path of nothing but marks.
void order(CodePoints& text) {
    auto const isMark = [](utf8proc_int32_t character) { return combiningClass(character) != 0; };
    auto const comesFirst = [](utf8proc_int32_t left, utf8proc_int32_t right) {
        return combiningClass(left) < combiningClass(right);
    };
    auto end = text.begin();
    for (;;) {
        auto const begin = std::find_if(end, text.end(), isMark);
        if (begin == text.end()) {
            return;
        }
        end = std::find_if_not(begin, text.end(), isMark);
        std::stable_sort(begin, end, comesFirst);
    }
}

} // namespace

bool isAscii(std::string_view text) {
    return std::all_of(text.begin(), text.end(), [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

std::string normalizeToNfd(std::string const& text) {
    if (isAscii(text)) {
        return text;
    }
    CodePoints characters;
    characters.reserve(text.size());
    if (!decompose(text, characters)) {
        return text;
    }
    order(characters);

    std::string result;
    result.reserve(text.size() * 2);
    std::size_t utf16Units = 0;
    for (utf8proc_int32_t const character : characters) {
        utf8proc_uint8_t bytes[4];
        utf8proc_ssize_t const length = utf8proc_encode_char(character, bytes);
        result.append(reinterpret_cast<char const*>(bytes), static_cast<std::size_t>(length));
        utf16Units += character > 0xFFFF ? 2 : 1;
    }
    return result.size() == 3 * utf16Units ? text : result;
}

} // namespace ORL_0_81
