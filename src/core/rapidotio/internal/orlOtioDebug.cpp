// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "rapidotio/internal/orlOtioDebug.h"

#include <cstdarg>
#include <cstdio>
#include <cstdlib>

namespace ORL_0_81 {

void printDebug(char const* format, ...) {
    static bool const isDebug = std::getenv("ZK_DEBUG_OTIO") != nullptr;
    if (!isDebug) {
        return;
    }
    va_list arguments;
    va_start(arguments, format);
    std::vfprintf(stderr, format, arguments);
    va_end(arguments);
}

} // namespace ORL_0_81
