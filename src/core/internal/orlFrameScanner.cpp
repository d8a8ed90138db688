// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "internal/orlFrameScanner.h"

#include <algorithm>
#include <cstring>

namespace ORL_0_81 {

using FrameNotation::isDigit;
using FrameNotation::isSign;
using FrameNotation::MAX_DIGITS;

namespace {

using Key = FrameScanner::Key;

__extension__ using Wide = unsigned __int128;

// Arbitrary odd numbers.
constexpr Key SEED = 0x9E3779B97F4A7C15;
constexpr Key LITERAL = 0xA0761D6478BD642F;
constexpr Key DIGITS = 0xE7037ED1A0B428DB;
constexpr Key LENGTH = 0x8EBC6AF09C88C6E3;
constexpr Key BEFORE = 0x589965CC75374CC3;
constexpr Key AFTER = 0x1D8E4E27C47D124F;
constexpr Key BASE = 0xEB44ACCAB455D165; // of the polynomial of a run's digits

Key mix(Key left, Key right) {
    Wide const product = static_cast<Wide>(left) * right;
    return static_cast<Key>(product) ^ static_cast<Key>(product >> 64);
}

template <class Word>
Key load(char const* text) {
    Word word;
    std::memcpy(&word, text, sizeof word);
    return word;
}

// Of a text without regard to what stands around it.
Key hashLiteral(char const* text, std::size_t length) {
    Key hash = mix(length ^ LENGTH, SEED);
    if (length > 8) {
        std::size_t position = 0;
        for (; position + 8 < length; position += 8) {
            hash = mix(hash ^ load<std::uint64_t>(text + position), LITERAL);
        }
        return mix(hash ^ load<std::uint64_t>(text + length - 8), LITERAL);
    }
    Key word = 0;
    if (length >= 4) {
        word = load<std::uint32_t>(text) << 32 | load<std::uint32_t>(text + length - 4);
    } else if (length > 0) {
        word = load<std::uint8_t>(text) << 16 | load<std::uint8_t>(text + length / 2) << 8 |
               load<std::uint8_t>(text + length - 1);
    }
    return mix(hash ^ word, LITERAL);
}

// Of digits, given as a polynomial: each counts by how far it is from the last.
Key hashDigits(Key polynomial, std::size_t count) { return mix(polynomial ^ DIGITS, count ^ LENGTH); }

Key valueOf(char digit) { return static_cast<unsigned char>(digit - '0') + Key{1}; }

Key hashChunk(std::string_view digits) {
    Key polynomial = 0;
    for (char const digit : digits) {
        polynomial = polynomial * BASE + valueOf(digit);
    }
    return hashDigits(polynomial, digits.size());
}

// The text before a place is hashed from the left, a literal or up to nine digits at a time; the text after
// it from the right, a literal or a whole run at a time. So both depend on nothing but that text.
Key append(Key before, Key piece) { return mix(before ^ piece, BEFORE); }
Key prepend(Key piece, Key after) { return mix(after ^ piece, AFTER); }
Key keyOf(Key before, Key after) { return mix(before ^ BEFORE, after ^ AFTER); }

Key appendRun(Key before, std::string_view name, std::size_t begin, std::size_t end) {
    for (; begin < end; begin += MAX_DIGITS) {
        before = append(before, hashChunk(name.substr(begin, std::min(MAX_DIGITS, end - begin))));
    }
    return before;
}

constexpr Key NOTHING_BEFORE = SEED;
constexpr Key NOTHING_AFTER = ~SEED;

} // namespace

// Cuts the name into runs and literals, and hashes all from the left.
bool FrameScanner::findRuns(std::string_view name) {
    m_runs.clear();
    m_skeleton = 0;
    char const* const text = name.data();
    std::size_t const size = name.size();
    Key before = NOTHING_BEFORE;
    std::size_t position = 0;
    for (;;) {
        std::size_t const literal = position;
        for (; position < size && !isDigit(text[position]); ++position) {
            if (text[position] == '\\') {
                return false;
            }
        }
        Key const literalHash = hashLiteral(text + literal, position - literal);
        if (position == size) {
            m_tail = NOTHING_AFTER;
            if (position > literal) {
                m_tail = prepend(literalHash, NOTHING_AFTER);
                m_skeleton += literalHash;
            }
            return true;
        }
        Run run;
        run.begin = position;
        run.literal = literalHash;
        run.hasSign = position > 0 && isSign(name, position - 1);
        run.beforeSign = before;
        if (position > literal) {
            std::size_t bare = position - literal;
            while (bare > 0 && text[literal + bare - 1] == '-') {
                --bare;
            }
            if (bare > 0) {
                m_skeleton += bare == position - literal ? literalHash : hashLiteral(text + literal, bare);
            }
            std::size_t const length = position - literal - (run.hasSign ? 1 : 0);
            if (length > 0) {
                run.beforeSign =
                    append(before, run.hasSign ? hashLiteral(text + literal, length) : literalHash);
            }
            before = append(before, literalHash);
        }
        run.before = before;
        Key polynomial = 0;
        std::uint32_t number = 0; // turns over in a long run, where nobody asks for it
        for (; position < size && isDigit(text[position]); ++position) {
            polynomial = polynomial * BASE + valueOf(text[position]);
            number = number * 10 + static_cast<std::uint32_t>(text[position] - '0');
        }
        run.number = static_cast<std::int32_t>(run.hasSign ? 0 - number : number);
        run.end = position;
        run.digits = hashDigits(polynomial, run.end - run.begin);
        before = run.end - run.begin <= MAX_DIGITS ? append(before, run.digits)
                                                   : appendRun(before, name, run.begin, run.end);
        m_runs.push_back(run);
    }
}

void FrameScanner::hashAfterRuns() {
    Key after = m_tail;
    for (auto run = m_runs.rbegin(); run != m_runs.rend(); ++run) {
        run->after = after;
        // Only the first run can have nothing before it, and nobody asks what comes before that.
        after = prepend(run->literal, prepend(run->digits, after));
    }
}

bool FrameScanner::findPlainPlaces(std::string_view name, std::vector<Place>& places) {
    places.clear();
    if (!findRuns(name)) {
        return false;
    }
    hashAfterRuns();
    for (Run const& run : m_runs) {
        if (run.end - run.begin > MAX_DIGITS) {
            findFieldsOfLongRun(name, run, places);
            continue;
        }
        std::size_t const begin = run.begin - (run.hasSign ? 1 : 0);
        bool const isPeculiar = run.hasSign && begin > 0 && name[begin - 1] == '-';
        places.push_back(
            {{begin, run.end - begin}, keyOf(run.beforeSign, run.after), run.number, isPeculiar});
    }
    return true;
}

void FrameScanner::findFieldsOfLongRun(std::string_view name, Run const& run, std::vector<Place>& places) {
    std::size_t const firstPlace = places.size();
    Key before = run.before;
    for (std::size_t digits = run.begin; digits < run.end; digits += MAX_DIGITS) {
        std::size_t const end = std::min(digits + MAX_DIGITS, run.end);
        bool const takesSign = digits == run.begin && run.hasSign;
        std::size_t const begin = digits - (takesSign ? 1 : 0);
        places.push_back({{begin, end - begin},
                          takesSign ? run.beforeSign : before,
                          FrameNotation::frameOf(name.substr(begin, end - begin)),
                          true});
        before = append(before, hashChunk(name.substr(digits, end - digits)));
    }
    Key polynomial = 0;
    Key power = 1;
    std::size_t position = run.end;
    for (std::size_t place = places.size(); place-- > firstPlace;) {
        FrameNotation::Span const& span = places[place].span;
        for (; position > span.end(); power *= BASE) {
            --position;
            polynomial += valueOf(name[position]) * power;
        }
        std::size_t const count = run.end - span.end();
        Key const after = count == 0 ? run.after : prepend(hashDigits(polynomial, count), run.after);
        places[place].key = keyOf(places[place].key, after);
    }
}

void FrameScanner::hashFromEach(std::string_view name, Run const& run) {
    std::size_t const count = run.end - run.begin;
    m_fromEach.resize(count + 1);
    m_fromEach[count] = run.after;
    Key polynomial = 0;
    Key power = 1;
    for (std::size_t i = count; i-- > 0; power *= BASE) {
        polynomial += valueOf(name[run.begin + i]) * power;
        m_fromEach[i] = prepend(hashDigits(polynomial, count - i), run.after);
    }
}

// The frames of one to `count` digits from `digits` on, with what stands from `begin` on as their sign.
void FrameScanner::findFrames(std::string_view name, std::size_t begin, Key before, std::size_t digits,
                              std::size_t count, Run const& run, std::vector<Place>& places) const {
    for (std::size_t end = digits + 1; end <= digits + count; ++end) {
        places.push_back({{begin, end - begin},
                          keyOf(before, m_fromEach[end - run.begin]),
                          FrameNotation::frameOf(name.substr(begin, end - begin)),
                          false});
    }
}

void FrameScanner::findHiddenPlaces(std::string_view name, std::vector<Place>& places) {
    places.clear();
    if (!findRuns(name)) {
        return;
    }
    hashAfterRuns();
    for (std::size_t index = 0; index < m_runs.size(); ++index) {
        Run const& run = m_runs[index];
        std::size_t const length = run.end - run.begin;
        hashFromEach(name, run);
        Key before = run.before;
        for (std::size_t digits = run.begin; digits < run.end; digits += MAX_DIGITS) {
            // Shorter than the digit field that begins here.
            std::size_t const fieldLength = std::min(MAX_DIGITS, run.end - digits);
            bool const takesSign = digits == run.begin && run.hasSign;
            findFrames(name, digits - (takesSign ? 1 : 0), takesSign ? run.beforeSign : before, digits,
                       fieldLength - 1, run, places);
            before = append(before, hashChunk(name.substr(digits, fieldLength)));
        }
        if (run.hasSign) {
            // Without the sign.
            findFrames(name, run.begin, run.before, run.begin, std::min(MAX_DIGITS, length), run, places);
        } else if (index > 0 && run.begin - m_runs[index - 1].end == 1 && name[run.begin - 1] == '-') {
            // With a hyphen that is no sign, behind digits that end where a field ends.
            Run const& previous = m_runs[index - 1];
            if ((previous.end - previous.begin) % MAX_DIGITS == 0) {
                Key const beforeHyphen = appendRun(previous.before, name, previous.begin, previous.end);
                findFrames(name, run.begin - 1, beforeHyphen, run.begin, std::min(MAX_DIGITS, length), run,
                           places);
            }
        }
    }
}

} // namespace ORL_0_81
