// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#ifndef ORL_NORMALIZE_COMMAND_H
#define ORL_NORMALIZE_COMMAND_H

#include "orlStreams.h"

#include <string>

namespace ORL_0_81::tool {

/// `orl normalize`: brings a timeline document to its normal form and tells what that leaves out.
struct NormalizeCommand {
    std::string file;
    std::string output = "-";
    bool isQuiet = false;
    bool isStrict = false;

    /// Writes the normal form and a newline to `output`, and the losses to the error stream unless quiet. A
    /// document without a timeline gives `{}`.
    ///
    /// \throws InputError, also for any loss when strict; nothing is written then.
    void run(Streams const& streams) const;
};

} // namespace ORL_0_81::tool

#endif // ORL_NORMALIZE_COMMAND_H
