// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project

// What any POSIX system offers. The one call that is different on each stands in a unit named by the system.
#include "orlPlatform.h"

#include <dirent.h>
#include <pthread.h>
#include <pwd.h>
#include <strings.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <string>

namespace ORL_0_81 {

namespace {

// The system's limit for the name of a thread, without the NUL.
constexpr unsigned long kMaxThreadNameLength = 15;

struct CloseDirectory {
    void operator()(DIR* directory) const { ::closedir(directory); }
};

// Closed where an exception leaves it.
using Directory = std::unique_ptr<DIR, CloseDirectory>;

} // namespace

char const* Platform::getenv(char const* name) { return ::getenv(name); }

int Platform::setEnvVar(char const* name, char const* value) { return ::setenv(name, value, 1); }

String Platform::getuid() { return String(std::to_string(::getuid()).c_str()); }

String Platform::getUserName() {
    passwd const* const entry = ::getpwuid(::getuid());
    return entry ? String(entry->pw_name) : String();
}

int Platform::getpid() { return ::getpid(); }

int Platform::setThreadName(String const& name) {
    if (name.size() > kMaxThreadNameLength) {
        return ERANGE;
    }
#if defined(__APPLE__)
    return ::pthread_setname_np(name.c_str());
#else
    return ::pthread_setname_np(::pthread_self(), name.c_str());
#endif
}

int Platform::getThreadName(String& name) {
    char text[kMaxThreadNameLength + 1];
    int const result = ::pthread_getname_np(::pthread_self(), text, sizeof text);
    if (result == 0) {
        name = text;
    }
    return result;
}

int Platform::strcasecmp(char const* left, char const* right) { return ::strcasecmp(left, right); }

int Platform::strncasecmp(char const* left, char const* right, unsigned long length) {
    return ::strncasecmp(left, right, length);
}

int Platform::mkdir(char const* path, int mode) { return ::mkdir(path, static_cast<mode_t>(mode)); }

bool Platform::isdir(char const* path) {
    struct stat status {};
    return ::stat(path, &status) == 0 && S_ISDIR(status.st_mode);
}

int Platform::rmfiles(char const* path, bool removeSelf, bool recursive) {
    Directory directory(::opendir(path));
    if (!directory) {
        return -1;
    }
    while (dirent const* const entry = ::readdir(directory.get())) {
        if (std::strcmp(entry->d_name, ".") == 0 || std::strcmp(entry->d_name, "..") == 0) {
            continue;
        }
        std::string const full = std::string(path) + "/" + entry->d_name;
        if (isdir(full.c_str())) {
            if (recursive) {
                rmfiles(full.c_str(), removeSelf, recursive);
            }
            continue;
        }
        if (int const result = ::remove(full.c_str())) {
            static_cast<void>(directory.release()); // still open, as the header tells
            return result;
        }
    }
    int const result = ::closedir(directory.release());
    return result != 0 || !removeSelf ? result : ::remove(path);
}

char const* Platform::strerror() { return ::strerror(errno); }

int Platform::mlock(void const* address, unsigned long length) { return ::mlock(address, length); }

int Platform::munlock(void const* address, unsigned long length) { return ::munlock(address, length); }

int Platform::memset_s(void* address, char value, unsigned long count) {
    // Not every system has the call of this name. Through a pointer that may change at any moment the
    // compiler can neither know what is called nor leave the call out.
    static void* (*const volatile fill)(void*, int, std::size_t) = &std::memset;
    if (!address) {
        return EINVAL;
    }
    fill(address, static_cast<unsigned char>(value), count);
    return 0;
}

int Platform::fopen(FILE*& file, char const* path, char const* mode) {
    file = ::fopen(path, mode);
    return file ? 0 : errno;
}

} // namespace ORL_0_81
