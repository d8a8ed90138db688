// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#ifndef ORL_FRAME_NOTATION_H
#define ORL_FRAME_NOTATION_H

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

/// \file
/// How frames are written in file names, and how names become patterns. Only the ASCII digits are digits; all
/// other bytes are ordinary characters. Nothing here uses a regular expression, and all of it takes linear
/// time.

namespace ORL_0_81 {
namespace FrameNotation {

/// A piece of a text, in bytes.
struct Span {
    std::size_t position;
    std::size_t length;

    std::size_t end() const { return position + length; }
    bool operator==(Span const& other) const { return position == other.position && length == other.length; }
};

/// A digit field holds no more digits than this; what follows is the next field.
constexpr std::size_t MAX_DIGITS = 9;

/// The pattern text that stands for a frame.
constexpr std::string_view FRAME_GROUP = "(-?[0-9]{1,9})";

inline bool isDigit(char c) { return static_cast<unsigned char>(c - '0') < 10; }

/// Whether a minus sign at this place belongs to the digits behind it: it does not if a digit stands before.
inline bool isSign(std::string_view text, std::size_t position) {
    return text[position] == '-' && (position == 0 || !isDigit(text[position - 1]));
}

/// Empties `fields` and stores the digit fields of the text in it, from left to right.
void findDigitFields(std::string_view text, std::vector<Span>& fields);

/// Whether the whole text is a frame: one to nine digits, perhaps with a minus sign before.
bool isFrame(std::string_view text);

/// How long the longest frame is that begins at `position`; 0 if there is none.
std::size_t frameLengthAt(std::string_view text, std::size_t position);

/// The number of a frame; 0 for a text that is none.
int frameOf(std::string_view frame);

/// The first frame symbol ("%d", "%4d", "%04d") at or behind `from`; with a length of 0 if there is none.
Span findFrameSymbol(std::string_view text, std::size_t from = 0);

/// The symbol that the library writes for frames of this width.
std::string frameSymbol(std::size_t width);

/// Whether the text holds a date and a time of day: digits in groups of 4, 2, 2, 2, 2, 2, with one character
/// that is no digit between, but up to nine between date and time.
bool holdsDateAndTime(std::string_view text);

/// The text with a backslash before each character that would mean something in a pattern, the backslash
/// itself and the hyphen excepted.
std::string escape(std::string_view text);

/// The text without its backslashes.
std::string withoutBackslashes(std::string_view text);

/// Whether `name` is what the sequence name stands for, with a frame in place of its first symbol.
bool matchesSequenceName(std::string_view name, std::string_view sequenceName);

} // namespace FrameNotation
} // namespace ORL_0_81

#endif // ORL_FRAME_NOTATION_H
