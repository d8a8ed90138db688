// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "orlPlatform.h"

#include <libgen.h>
#include <libproc.h>

#include <cstdlib>

namespace ORL_0_81 {

String Platform::getExecutablePath() {
    char path[PROC_PIDPATHINFO_MAXSIZE];
    if (::proc_pidpath(getpid(), path, sizeof path) < 1) {
        return String(".");
    }
    char* const resolved = ::realpath(path, nullptr);
    String directory(resolved ? ::dirname(resolved) : ".");
    std::free(resolved);
    return directory;
}

} // namespace ORL_0_81
