// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#ifndef ORL_LAYOUT_COMMAND_H
#define ORL_LAYOUT_COMMAND_H

#include "orlInputError.h"
#include "orlMediaReading.h"
#include "orlStreams.h"

#include <functional>
#include <string>
#include <vector>

namespace ORL_0_81::tool {

/// `orl layout`: puts media and the clips of timeline documents side by side on one canvas.
struct LayoutCommand {
    std::vector<std::string> paths; ///< documents by their names (see isDocumentName), all others media
    MediaRequest request;
    std::string name = "Layout";
    std::string output = "-";
    std::string picture; ///< the file for the drawing; none if empty

    /// Reads all of them and writes the layout and a newline to `output`, in the order of the paths.
    ///
    /// A medium that cannot be opened is told and left out. Any other fault is told, too, and then nothing is
    /// written.
    ///
    /// \param tell Receives what is at fault with one of the paths.
    /// \returns false if anything was.
    /// \throws InputError when there is no reader for media, or the output cannot be written.
    bool run(Streams const& streams, std::function<void(InputError const&)> const& tell) const;
};

/// True for the standard input and for names that end with .otio or .json, in any case.
bool isDocumentName(std::string const& path);

} // namespace ORL_0_81::tool

#endif // ORL_LAYOUT_COMMAND_H
