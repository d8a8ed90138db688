// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#ifndef ORL_TERMINAL_STYLE_H
#define ORL_TERMINAL_STYLE_H

#include <string>

namespace ORL_0_81::tool {

/// True when someone watches what is written to a descriptor, on a terminal that knows more than to go on:
/// TERM is not "dumb".
bool isTerminal(int descriptor);

/// How the words of a stream are set off from each other: by colours, or not at all.
class TerminalStyle {
public:
    /// Leaves every text as it is.
    TerminalStyle() = default;

    explicit TerminalStyle(bool isColoured) : m_isColoured(isColoured) {}

    /// With colours for a terminal, unless the environment variable NO_COLOR is set and not empty.
    static TerminalStyle of(int descriptor);

    bool isColoured() const { return m_isColoured; }

    std::string error(std::string const& text) const { return set("1;31", text); }
    std::string warning(std::string const& text) const { return set("33", text); }
    std::string title(std::string const& text) const { return set("1", text); }

private:
    std::string set(char const* attributes, std::string const& text) const;

    bool m_isColoured = false;
};

} // namespace ORL_0_81::tool

#endif // ORL_TERMINAL_STYLE_H
