// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "orlCoreVersionInfo.h"

#include "orlCoreVersionValues.h" // made by the build

#include <cstdlib>
#include <iomanip>
#include <iostream>
#include <sstream>

namespace ORL_0_81 {

VersionInfo const kVersionInfo = {
    ORL_VERSION_LIBRARY_NAME, ORL_VERSION_FAMILY_PREFIX, ORL_VERSION_MAJOR,
    ORL_VERSION_MINOR,        ORL_VERSION_PATCH,         ORL_VERSION_BUILD_DATE,
    ORL_VERSION_BUILD_NUMBER, ORL_VERSION_COMMIT,        ORL_VERSION_BRANCH,
};

std::string getVersionLine(VersionInfo const& info) {
    constexpr int kNameWidth = 16;
    constexpr int kCommitWidth = 7;

    std::ostringstream version;
    version << std::atoi(info.major) << "." << std::atoi(info.minor) << "." << std::atoi(info.patch);

    std::ostringstream line;
    line << std::right << std::setw(kNameWidth) << info.name << ": " << info.familyPrefix << " version "
         << version.str() << " (" << info.buildDate << ", build " << std::atoi(info.buildNumber)
         << ", commit " << std::setw(kCommitWidth) << std::string(info.commit).substr(0, kCommitWidth)
         << ", branch " << info.branch << ")";
    return line.str();
}

namespace {

struct Banner {
    Banner() {
        char const* const wanted = std::getenv("MARLINE_DUMP_VERSION_INFO");
        if (wanted && std::atoi(wanted) != 0) {
            std::cerr << getVersionLine(kVersionInfo) << std::endl;
        }
    }
};

// Prints while the library is loaded, before any code of the application.
Banner const banner;

} // namespace

} // namespace ORL_0_81
