// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "orlTerminalStyle.h"

#include <cstdlib>
#include <cstring>

#include <unistd.h>

namespace ORL_0_81::tool {

bool isTerminal(int descriptor) {
    char const* const terminal = std::getenv("TERM");
    return ::isatty(descriptor) == 1 && !(terminal && std::strcmp(terminal, "dumb") == 0);
}

TerminalStyle TerminalStyle::of(int descriptor) {
    char const* const refusal = std::getenv("NO_COLOR");
    return TerminalStyle(isTerminal(descriptor) && !(refusal && *refusal));
}

std::string TerminalStyle::set(char const* attributes, std::string const& text) const {
    return m_isColoured ? "\033[" + std::string(attributes) + 'm' + text + "\033[0m" : text;
}

} // namespace ORL_0_81::tool
