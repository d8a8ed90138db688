// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "internal/orlDirectoryListing.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>

#include <cerrno>
#include <filesystem>
#include <memory>
#include <system_error>

namespace ORL_0_81 {

namespace {

struct CloseDirectory {
    void operator()(DIR* directory) const { closedir(directory); }
};

using Directory = std::unique_ptr<DIR, CloseDirectory>;

[[noreturn]] void fail(std::string const& path, int error) {
    throw std::filesystem::filesystem_error("cannot list the directory", path,
                                            std::error_code(error, std::generic_category()));
}

bool isRegularFile(int directory, char const* name) {
    struct stat status;
    return fstatat(directory, name, &status, 0) == 0 && S_ISREG(status.st_mode);
}

bool isRegularFile(int directory, dirent const& entry) {
#ifdef DT_UNKNOWN
    if (entry.d_type != DT_UNKNOWN && entry.d_type != DT_LNK) {
        return entry.d_type == DT_REG;
    }
#endif
    return isRegularFile(directory, entry.d_name);
}

} // namespace

void listRegularFiles(std::string const& path, NameReceiver& receiver) {
    Directory const directory(opendir(path.c_str()));
    if (!directory) {
        if (errno == EACCES) {
            return;
        }
        fail(path, errno);
    }
    // Looking up the directory itself from within takes the permission to search it, and no other.
    int const descriptor = dirfd(directory.get());
    struct stat status;
    if (fstatat(descriptor, ".", &status, 0) != 0 && errno == EACCES) {
        return;
    }
    for (;;) {
        errno = 0;
        // Only concurrent reads of one and the same stream would need the other form of this call.
        dirent const* const entry = readdir(directory.get());
        if (!entry) {
            if (errno != 0 && errno != EACCES) {
                fail(path, errno);
            }
            return;
        }
        if (isRegularFile(descriptor, *entry)) {
            receiver.addName(entry->d_name);
        }
    }
}

} // namespace ORL_0_81
