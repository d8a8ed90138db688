// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "orlFrameFiles.h"

#include "internal/orlDirectory.h"
#include "internal/orlStoredName.h"

#include <cerrno>
#include <string>

namespace ORL_0_81::media {

namespace {

constexpr std::size_t MAX_DIGITS = 9;

bool isDigit(char c) { return c >= '0' && c <= '9'; }

struct FramePattern {
    std::string prefix;
    std::string suffix;
    std::size_t width = 0;
};

bool findPattern(std::string const& name, FramePattern& pattern) {
    for (std::size_t start = name.find('%'); start != std::string::npos; start = name.find('%', start + 1)) {
        std::size_t end = start + 1;
        std::size_t width = 0;
        while (end < name.size() && isDigit(name[end])) {
            if (width <= MAX_DIGITS) { // no number is wider than that with its sign, and 10 matches none
                width = width * 10 + static_cast<std::size_t>(name[end] - '0');
            }
            ++end;
        }
        if (end < name.size() && name[end] == 'd') {
            pattern.prefix = name.substr(0, start);
            pattern.suffix = name.substr(end + 1);
            pattern.width = width;
            return true;
        }
    }
    return false;
}

bool readFrameNumber(FramePattern const& pattern, std::string const& name, long& number) {
    std::size_t const fixed = pattern.prefix.size() + pattern.suffix.size();
    if (name.size() <= fixed || name.compare(0, pattern.prefix.size(), pattern.prefix) != 0 ||
        name.compare(name.size() - pattern.suffix.size(), pattern.suffix.size(), pattern.suffix) != 0) {
        return false;
    }
    std::string const field = name.substr(pattern.prefix.size(), name.size() - fixed);
    bool const negative = field[0] == '-';
    std::size_t const digits = field.size() - (negative ? 1 : 0);
    if (field.size() < pattern.width || digits == 0 || digits > MAX_DIGITS) {
        return false;
    }
    number = 0;
    for (std::size_t i = negative ? 1 : 0; i < field.size(); ++i) {
        if (!isDigit(field[i])) {
            return false;
        }
        number = number * 10 + (field[i] - '0');
    }
    number = negative ? -number : number;
    return true;
}

bool canBeFile(dirent const& entry) { return entry.d_type != DT_DIR; }

bool isBetterName(std::string const& name, std::string const& other) {
    return name.size() != other.size() ? name.size() < other.size() : name < other;
}

} // namespace

FrameSearch findFrameFiles(std::string const& name, FrameFiles& files) {
    std::size_t const slash = name.rfind('/');
    std::string directoryPart = slash == std::string::npos ? std::string() : name.substr(0, slash + 1);
    FramePattern pattern;
    if (!findPattern(comparableName(name.substr(directoryPart.size())), pattern)) {
        return FrameSearch::kNoSequenceName;
    }

    Directory directory = openDirectory(directoryPart);
    if (!directory && errno == ENOENT) {
        if (std::string const stored = findStoredPath(directoryPart); !stored.empty()) {
            directoryPart = stored;
        }
        directory = openDirectory(directoryPart);
    }
    if (!directory) {
        return errno == ENOENT || errno == ENOTDIR ? FrameSearch::kNoFrames : FrameSearch::kNoAccess;
    }

    std::string firstName;
    while (dirent const* const entry = readdir(directory.get())) { // NOLINT(concurrency-mt-unsafe)
        long number = 0;
        std::string const entryName = static_cast<char const*>(entry->d_name);
        if (!canBeFile(*entry) || !readFrameNumber(pattern, comparableName(entryName), number)) {
            continue;
        }
        if (firstName.empty() || number < files.first ||
            (number == files.first && isBetterName(entryName, firstName))) {
            files.first = number;
            files.last = firstName.empty() ? number : files.last;
            firstName = entryName;
        }
        files.last = number > files.last ? number : files.last;
    }
    if (firstName.empty()) {
        return FrameSearch::kNoFrames;
    }
    files.firstPath = directoryPart + firstName;
    return FrameSearch::kFound;
}

} // namespace ORL_0_81::media
