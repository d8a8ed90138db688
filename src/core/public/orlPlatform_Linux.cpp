// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "orlPlatform.h"

#include <libgen.h>
#include <unistd.h>

#include <cstdlib>
#include <memory>
#include <string>

namespace ORL_0_81 {

String Platform::getExecutablePath() {
    std::string const link = "/proc/" + std::to_string(getpid()) + "/exe";
    char path[4096];
    ssize_t const length = ::readlink(link.c_str(), path, sizeof path - 1);
    if (length < 1) {
        return String(".");
    }
    path[length] = '\0';

    // The file of a running executable may be gone.
    std::unique_ptr<char, void (*)(void*)> const resolved(::realpath(path, nullptr), &std::free);
    return String(resolved ? ::dirname(resolved.get()) : ".");
}

} // namespace ORL_0_81
