// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "orlPlatform.h"

#include <libgen.h>
#include <libproc.h>

#include <cstdlib>
#include <memory>

namespace ORL_0_81 {

String Platform::getExecutablePath() {
    char path[PROC_PIDPATHINFO_MAXSIZE];
    if (::proc_pidpath(getpid(), path, sizeof path) < 1) {
        return String(".");
    }
    std::unique_ptr<char, void (*)(void*)> const resolved(::realpath(path, nullptr), &std::free);
    return String(resolved ? ::dirname(resolved.get()) : ".");
}

} // namespace ORL_0_81
