// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#ifndef ORL_FRAME_SCANNER_H
#define ORL_FRAME_SCANNER_H

#include "internal/orlFrameNotation.h"

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

namespace ORL_0_81 {

/// Finds the places of a name where a frame can stand, each with a key of the text around it: names that
/// differ in nothing but one place have the same key there. Different surroundings have different keys but
/// for a chance of about one in 2^64, which is the caller's to look into.
///
/// A place is *plain* if it is a digit field of the name itself. Where a name is a front, only its digit
/// fields count, but another name can fit the pattern of such a field in a place that is none of its own
/// fields:
/// - "a--1" has the field "-1" behind "a-". "a-2" has the field "-2" behind "a", and fits with "2".
/// - "a1234567891" has the field "123456789" before "1". "a21" fits with "2".
/// - The same name has the field "1" behind "a123456789". "a123456789-2" fits with "-2".
///
/// Those are *hidden* places. They can only fit *peculiar* fields: those with a hyphen just before their
/// sign, and those of a run of more than nine digits. Other patterns find all that they match in plain
/// places: with no digit beside the frame, a fitting frame takes in all of a run of digits, and with it the
/// sign if it has one.
///
/// Linear time in the length of the name, however many places it has. One scanner serves many names, one
/// after the other, so that its room is allocated once.
class FrameScanner {
public:
    using Key = std::uint64_t;

    struct Place {
        FrameNotation::Span span;
        Key key;
        std::int32_t frame;
        bool isPeculiar;
    };

    /// Finds the digit fields of the name, from left to right.
    ///
    /// \returns false, with `places` in an arbitrary state, if the name has a backslash: its pattern means
    ///     something else than its text.
    bool findPlainPlaces(std::string_view name, std::vector<Place>& places);

    /// A key of the name scanned last, for its text apart from digits and the hyphens before them. A name can
    /// only fit a field of another, in whatever place, if they have the same.
    Key skeleton() const { return m_skeleton; }

    /// Finds the hidden places of a name without a backslash, from left to right.
    void findHiddenPlaces(std::string_view name, std::vector<Place>& places);

private:
    // A run of digits and what stands before it, back to the run before.
    struct Run {
        std::size_t begin;
        std::size_t end;
        Key before;          // of the text before the run
        Key beforeSign;      // of the text before the run's sign; if there is none, the same
        Key after;           // of the text after the run
        Key literal;         // of what stands between the run before and this one
        Key digits;          // of the digits
        std::int32_t number; // their number, with its sign, if they are no more than a field holds
        bool hasSign;
    };

    bool findRuns(std::string_view name);
    void hashAfterRuns();
    static void findFieldsOfLongRun(std::string_view name, Run const& run, std::vector<Place>& places);
    void hashFromEach(std::string_view name, Run const& run);
    void findFrames(std::string_view name, std::size_t begin, Key before, std::size_t digits,
                    std::size_t count, Run const& run, std::vector<Place>& places) const;

    std::vector<Run> m_runs;
    Key m_skeleton = 0;
    Key m_tail = 0;              // of what stands behind the last run
    std::vector<Key> m_fromEach; // of the text from each digit of one run on, and behind it
};

} // namespace ORL_0_81

#endif // ORL_FRAME_SCANNER_H
