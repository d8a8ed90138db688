// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#ifndef ORL_CONVERT_COMMAND_H
#define ORL_CONVERT_COMMAND_H

#include "orlStreams.h"

#include <string>

namespace ORL_0_81::tool {

/// `orl convert`: turns a document of newer writers into the dialect that the library reads.
struct ConvertCommand {
    std::string file = "-";
    std::string output = "-";
    bool isQuiet = false;
    bool isStrict = false;

    /// Writes what toDialect() makes of the document to `output`, and the losses to the error stream unless
    /// quiet. A byte order mark, which the library's parser does not know, is left out; all else that needs
    /// no conversion is written byte for byte as it was read.
    ///
    /// \throws InputError, also for any loss when strict; nothing is written then.
    void run(Streams const& streams) const;
};

} // namespace ORL_0_81::tool

#endif // ORL_CONVERT_COMMAND_H
