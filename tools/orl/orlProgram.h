// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#ifndef ORL_PROGRAM_H
#define ORL_PROGRAM_H

#include "orlStreams.h"

#include <string>
#include <vector>

namespace ORL_0_81::tool {

inline constexpr int kExitGood = 0;
inline constexpr int kExitInputAtFault = 1; ///< a file that cannot be read, understood or written
inline constexpr int kExitWrongUsage = 2;

/// The program `orl` but for its process: takes the arguments behind the program's name and returns the exit
/// code.
int runOrl(std::vector<std::string> const& arguments, Streams const& streams);

} // namespace ORL_0_81::tool

#endif // ORL_PROGRAM_H
