// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#ifndef ORL_GUARDED_REGEX_H
#define ORL_GUARDED_REGEX_H

#include "internal/orlFrameNotation.h"

#include <cstddef>
#include <memory>
#include <regex>
#include <string>
#include <string_view>
#include <vector>

namespace ORL_0_81 {

/// A regular expression of the standard library, in ECMAScript's grammar, that can neither exhaust the stack
/// nor run without end, whatever the pattern and the text: where it would, it gives up with an exception.
///
/// The standard library's engine calls itself for each character of a repeat, and tries alternatives one
/// after the other, which can take exponential time. Here it is watched: each step that it takes through the
/// text counts, and looks how deep it stands. If it goes too far, a search is tried again with the engine's
/// other way of searching, where there is one (libstdc++ has one that follows all alternatives at a time, for
/// patterns without back-references), and then, or for a match, on a roomy stack.
///
/// Patterns that may need more stack than a caller has just to be compiled are compiled, matched and freed on
/// a roomy stack; see needsRoom().
///
/// For one thread at a time.
class GuardedRegex {
public:
    using Span = FrameNotation::Span;

    /// Compiles the pattern. Throws `std::regex_error` if it is malformed, too large, or if there is no room.
    explicit GuardedRegex(std::string_view pattern);

    ~GuardedRegex();

    GuardedRegex(GuardedRegex const&) = delete;
    GuardedRegex& operator=(GuardedRegex const&) = delete;

    /// Whether a pattern may need more stack than a caller has. A guess on the safe side; takes linear time.
    static bool isWild(std::string_view pattern);

    /// Whether the pattern is such a one. Each call then takes a roomy stack, so that whoever makes many
    /// calls does well to make them all on one.
    bool needsRoom() const { return m_needsRoom; }

    /// How many captures the pattern has.
    std::size_t captureCount() const;

    /// Whether the pattern is found anywhere in the text. Throws `std::regex_error` on giving up.
    bool search(std::string_view text);

    /// Whether the pattern matches the whole text. Throws `std::regex_error` on giving up.
    ///
    /// \param captures receives the captures if it does; one that took no part stands behind the text, with a
    ///     length of 0.
    bool match(std::string_view text, std::vector<Span>& captures);

private:
    void compile();
    bool searchBothWays(std::string_view text);
    bool searchSideBySide(std::string_view text);
    std::size_t stepsFor(std::string_view text) const;
    void loseSteps(std::regex_error const& failure, std::size_t steps);

    std::string m_pattern;
    bool const m_needsRoom;
    bool m_canGoSideBySide;
    std::size_t m_lostSteps = 0; // of searches and matches that were given up
    std::unique_ptr<std::regex> m_regex;
    std::unique_ptr<std::regex> m_sideBySide; // made when it is first needed
};

} // namespace ORL_0_81

#endif // ORL_GUARDED_REGEX_H
