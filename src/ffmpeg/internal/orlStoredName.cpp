// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "orlStoredName.h"

#include "internal/orlDirectory.h"

#include <utf8proc.h>

#include <sys/stat.h>

#include <algorithm>
#include <climits>
#include <cstdlib>
#include <memory>
#include <new>

namespace ORL_0_81::media {

namespace {

struct Free {
    void operator()(utf8proc_uint8_t* text) const { std::free(text); }
};

bool isAscii(std::string const& text) {
    return std::all_of(text.begin(), text.end(), [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

// The first entry of a directory that looks like the name; empty if none does.
std::string findEntry(std::string const& before, std::string const& name) {
    Directory const directory = openDirectory(before);
    if (!directory) {
        return std::string();
    }
    std::string const wanted = comparableName(name);
    std::string found;
    while (dirent const* const entry = readdir(directory.get())) { // NOLINT(concurrency-mt-unsafe)
        std::string const entryName = static_cast<char const*>(entry->d_name);
        if ((found.empty() || entryName < found) && comparableName(entryName) == wanted) {
            found = entryName;
        }
    }
    return found;
}

} // namespace

bool exists(std::string const& path) {
    struct stat status = {};
    return stat(path.c_str(), &status) == 0;
}

std::string comparableName(std::string const& name) {
    if (isAscii(name)) {
        return name;
    }
    auto const* const bytes = reinterpret_cast<utf8proc_uint8_t const*>(name.data());
    auto const options = static_cast<utf8proc_option_t>(UTF8PROC_DECOMPOSE | UTF8PROC_STABLE);
    utf8proc_uint8_t* result = nullptr;
    utf8proc_ssize_t const length =
        utf8proc_map(bytes, static_cast<utf8proc_ssize_t>(name.size()), &result, options);
    std::unique_ptr<utf8proc_uint8_t, Free> const owner(result);
    if (length == UTF8PROC_ERROR_NOMEM) {
        throw std::bad_alloc();
    }
    return length < 0 ? name
                      : std::string(reinterpret_cast<char const*>(result), static_cast<std::size_t>(length));
}

std::string findStoredPath(std::string const& path) {
    if (path.size() >= PATH_MAX || isAscii(path)) {
        return std::string();
    }
    std::string stored;
    std::size_t begin = 0;
    while (begin < path.size()) {
        std::size_t const end = std::min(path.find('/', begin), path.size());
        std::string part = path.substr(begin, end - begin);
        if (!isAscii(part) && !exists(stored + part)) {
            part = findEntry(stored, part);
            if (part.empty()) {
                return std::string();
            }
        }
        stored += part;
        if (end < path.size()) {
            stored += '/';
        }
        begin = end + 1;
    }
    return exists(stored) ? stored : std::string();
}

} // namespace ORL_0_81::media
