// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#ifndef ORL_NAME_FILTER_H
#define ORL_NAME_FILTER_H

#include "internal/orlGuardedRegex.h"

#include <memory>
#include <string>
#include <string_view>

namespace ORL_0_81 {

/// Lets those names pass in which a regular expression is found.
///
/// An expression that is nothing but a text, or a text at the beginning or the end of the name, needs no
/// engine: "", ".*", "exr$", ".*\.exr", "^shot".
///
/// For one thread at a time.
class NameFilter {
public:
    /// \param expression in ECMAScript's grammar. Throws `std::regex_error` if it is malformed.
    explicit NameFilter(std::string_view expression);

    /// Throws `std::regex_error` when the engine gives up on the name.
    bool passes(std::string_view name);

    /// See GuardedRegex::needsRoom().
    bool needsRoom() const { return m_regex && m_regex->needsRoom(); }

    /// Whether there is no engine in it.
    bool isPlain() const { return !m_regex; }

private:
    bool readPlainText(std::string_view expression);

    std::unique_ptr<GuardedRegex> m_regex;

    // Of an expression that needs none.
    std::string m_text;
    bool m_isAtBegin = false;
    bool m_isAtEnd = false;
};

} // namespace ORL_0_81

#endif // ORL_NAME_FILTER_H
