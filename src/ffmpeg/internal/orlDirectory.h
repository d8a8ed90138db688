// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#ifndef ORL_DIRECTORY_H
#define ORL_DIRECTORY_H

#include <dirent.h>

#include <memory>
#include <string>

namespace ORL_0_81::media {

struct CloseDirectory {
    void operator()(DIR* directory) const { closedir(directory); }
};

/// An open directory, null if it could not be opened.
using Directory = std::unique_ptr<DIR, CloseDirectory>;

/// Opens what stands before the names in a path: empty for the current directory, else with a slash at its
/// end. Tells failures by `errno`.
inline Directory openDirectory(std::string const& before) {
    return Directory(opendir(before.empty() ? "." : before.c_str()));
}

} // namespace ORL_0_81::media

#endif // ORL_DIRECTORY_H
