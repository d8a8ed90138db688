// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#ifndef ORL_COMPLETE_COMMAND_H
#define ORL_COMPLETE_COMMAND_H

#include "orlMediaReading.h"
#include "orlStreams.h"

#include <string>

namespace ORL_0_81::tool {

/// `orl complete`: fills what a timeline document leaves open from the media that it names.
struct CompleteCommand {
    std::string file;
    std::string output = "-";
    MediaRequest request;
    bool isQuiet = false;
    bool isStrict = false;

    /// Writes the complete document and a newline to `output`, and to the error stream, unless quiet, which
    /// media could not be read.
    ///
    /// \throws InputError, also for any medium that could not be read when strict; nothing is written then.
    void run(Streams const& streams) const;
};

} // namespace ORL_0_81::tool

#endif // ORL_COMPLETE_COMMAND_H
