// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#ifndef ORL_CORE_VERSION_INFO_H
#define ORL_CORE_VERSION_INFO_H

#include <string>

/// \file
/// The line by which a support engineer sees which build of the library a process has picked up. It goes to
/// the standard error stream when the library is loaded, if the environment variable
/// MARLINE_DUMP_VERSION_INFO holds a number other than 0.

namespace ORL_0_81 {

/// What the build knows of itself, all as text.
struct VersionInfo {
    char const* name;
    char const* familyPrefix;
    char const* major; ///< decimal, as are minor, patch and buildNumber; leading zeros are lost
    char const* minor;
    char const* patch;
    char const* buildDate; ///< printed as it stands
    char const* buildNumber;
    char const* commit; ///< of which the first 7 characters are printed
    char const* branch;
};

/// The values of this build.
extern VersionInfo const kVersionInfo;

/// \returns the line without its newline: the library's name right-aligned in 16 columns, so that the colons
///     of several libraries stand one below the other, then ": " and the rest.
std::string getVersionLine(VersionInfo const& info);

} // namespace ORL_0_81

#endif // ORL_CORE_VERSION_INFO_H
