// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#ifndef ORL_STATUS_WORDS_H
#define ORL_STATUS_WORDS_H

#include "orlStatus.h"

#include <string>

namespace ORL_0_81::tool {

/// Tells a status in words for people, its name first: "kFileNotFound: no such file". One that the program
/// has no words for is told by its name.
std::string reasonOf(Status status);

} // namespace ORL_0_81::tool

#endif // ORL_STATUS_WORDS_H
