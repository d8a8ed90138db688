// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#ifndef ORL_TEST_SUPPORT_FILES_H
#define ORL_TEST_SUPPORT_FILES_H

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>
#include <vector>

namespace orlTest {

/// A path below tests/data.
inline std::string dataPath(std::string const& name) { return std::string(ORL_TEST_DATA) + "/" + name; }

/// The bytes of a file below tests/data.
inline std::string dataFile(std::string const& name) {
    std::ifstream file(dataPath(name), std::ios::binary);
    if (!file) {
        throw std::runtime_error("no test data " + name);
    }
    return std::string(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
}

/// The sorted names of the files with an ending in a folder below tests/data.
inline std::vector<std::string> dataNames(std::string const& folder, std::string const& ending) {
    std::vector<std::string> names;
    for (auto const& entry : std::filesystem::directory_iterator(dataPath(folder))) {
        std::string const name = entry.path().filename().string();
        if (name.size() > ending.size() && name.substr(name.size() - ending.size()) == ending) {
            names.push_back(name);
        }
    }
    std::sort(names.begin(), names.end());
    return names;
}

} // namespace orlTest

#endif // ORL_TEST_SUPPORT_FILES_H
