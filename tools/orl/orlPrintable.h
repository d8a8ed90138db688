// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#ifndef ORL_PRINTABLE_H
#define ORL_PRINTABLE_H

#include <string>
#include <string_view>

/// \file
/// Texts of documents and names of files as they are shown to people. They come from outside and may hold
/// anything; what could move the cursor or break a line must not reach a terminal.

namespace ORL_0_81::tool {

/// The text with control characters as JSON escapes them. All other bytes pass.
std::string printable(std::string_view text);

/// The text between double quotes, with control characters, quotes and backslashes as JSON escapes them.
std::string inQuotes(std::string_view text);

} // namespace ORL_0_81::tool

#endif // ORL_PRINTABLE_H
