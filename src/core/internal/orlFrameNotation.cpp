// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "internal/orlFrameNotation.h"

#include <algorithm>

namespace ORL_0_81 {
namespace FrameNotation {

namespace {

constexpr std::string_view SPECIAL_CHARACTERS = ".()[]?*+^|${}";

std::size_t endOfDigits(std::string_view text, std::size_t position) {
    while (position < text.size() && isDigit(text[position])) {
        ++position;
    }
    return position;
}

std::size_t endOfOthers(std::string_view text, std::size_t position) {
    while (position < text.size() && !isDigit(text[position])) {
        ++position;
    }
    return position;
}

// Reads what holdsDateAndTime() looks for, beginning with the month.
class DateReader {
public:
    DateReader(std::string_view text, std::size_t position) : m_text(text), m_position(position) {}

    bool digits(std::size_t count) {
        std::size_t const end = m_position + count;
        if (end > m_text.size() || !std::all_of(m_text.begin() + static_cast<std::ptrdiff_t>(m_position),
                                                m_text.begin() + static_cast<std::ptrdiff_t>(end), isDigit)) {
            return false;
        }
        m_position = end;
        return true;
    }

    // What stands between two groups of digits reaches from the one to the other, so its length is given.
    bool others(std::size_t max) {
        std::size_t count = 0;
        while (count <= max && m_position + count < m_text.size() && !isDigit(m_text[m_position + count])) {
            ++count;
        }
        m_position += count;
        return count > 0 && count <= max;
    }

private:
    std::string_view m_text;
    std::size_t m_position;
};

} // namespace

void findDigitFields(std::string_view text, std::vector<Span>& fields) {
    fields.clear();
    std::size_t position = 0;
    for (;;) {
        position = endOfOthers(text, position);
        if (position == text.size()) {
            return;
        }
        std::size_t const end = endOfDigits(text, position);
        std::size_t const sign = position > 0 && isSign(text, position - 1) ? 1 : 0;
        for (std::size_t digits = position; digits < end; digits += MAX_DIGITS) {
            std::size_t const begin = digits == position ? digits - sign : digits;
            fields.push_back({begin, std::min(digits + MAX_DIGITS, end) - begin});
        }
        position = end;
    }
}

bool isFrame(std::string_view text) {
    if (!text.empty() && text.front() == '-') {
        text.remove_prefix(1);
    }
    return !text.empty() && text.size() <= MAX_DIGITS && std::all_of(text.begin(), text.end(), isDigit);
}

std::size_t frameLengthAt(std::string_view text, std::size_t position) {
    std::size_t const digits = position + (position < text.size() && text[position] == '-' ? 1 : 0);
    std::size_t end = digits;
    while (end < text.size() && end - digits < MAX_DIGITS && isDigit(text[end])) {
        ++end;
    }
    return end == digits ? 0 : end - position;
}

int frameOf(std::string_view frame) {
    if (!isFrame(frame)) {
        return 0;
    }
    bool const isNegative = frame.front() == '-';
    int number = 0;
    for (char const digit : frame.substr(isNegative ? 1 : 0)) {
        number = number * 10 + (digit - '0');
    }
    return isNegative ? -number : number;
}

Span findFrameSymbol(std::string_view text, std::size_t from) {
    for (std::size_t begin = text.find('%', from); begin != std::string_view::npos;) {
        std::size_t const end = endOfDigits(text, begin + 1);
        if (end < text.size() && text[end] == 'd') {
            return {begin, end + 1 - begin};
        }
        begin = text.find('%', end);
    }
    return {text.size(), 0};
}

std::string frameSymbol(std::size_t width) { return "%0" + std::to_string(width) + "d"; }

bool holdsDateAndTime(std::string_view text) {
    std::size_t position = 0;
    for (;;) {
        std::size_t const begin = endOfOthers(text, position);
        position = endOfDigits(text, begin);
        if (position == text.size()) {
            return false;
        }
        DateReader rest(text, position);
        if (position - begin >= 4 && rest.others(1) && rest.digits(2) && rest.others(1) && rest.digits(2) &&
            rest.others(9) && rest.digits(2) && rest.others(1) && rest.digits(2) && rest.others(1) &&
            rest.digits(2)) {
            return true;
        }
    }
}

std::string escape(std::string_view text) {
    std::string result;
    result.reserve(text.size() + 8);
    for (char const c : text) {
        if (c != '\0' && SPECIAL_CHARACTERS.find(c) != std::string_view::npos) {
            result += '\\';
        }
        result += c;
    }
    return result;
}

std::string withoutBackslashes(std::string_view text) {
    std::string result(text);
    result.erase(std::remove(result.begin(), result.end(), '\\'), result.end());
    return result;
}

bool matchesSequenceName(std::string_view name, std::string_view sequenceName) {
    Span const symbol = findFrameSymbol(sequenceName);
    if (symbol.length == 0) {
        return false;
    }
    std::string_view const before = sequenceName.substr(0, symbol.position);
    std::string_view const after = sequenceName.substr(symbol.end());
    return name.size() > before.size() + after.size() && name.substr(0, before.size()) == before &&
           name.substr(name.size() - after.size()) == after &&
           isFrame(name.substr(before.size(), name.size() - before.size() - after.size()));
}

} // namespace FrameNotation
} // namespace ORL_0_81
