// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#ifndef ORL_STREAMS_H
#define ORL_STREAMS_H

#include "orlTerminalStyle.h"

#include <iosfwd>

namespace ORL_0_81::tool {

/// What a command reads from and writes to, besides files.
struct Streams {
    std::istream& in;
    std::ostream& out;
    std::ostream& error;
    bool isErrorTerminal = false; ///< whether someone watches the error stream
    TerminalStyle outStyle{};
    TerminalStyle errorStyle{};
};

} // namespace ORL_0_81::tool

#endif // ORL_STREAMS_H
