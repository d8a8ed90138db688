// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#ifndef ORL_FRAME_TIMING_H
#define ORL_FRAME_TIMING_H

#include "internal/orlOpenMedium.h"

#include <orlStatus.h>

#include <cstdint>

namespace ORL_0_81::media {

/// At what rate the frames of a movie come, and how many there are.
struct FrameTiming {
    AVRational rate = {0, 1};
    std::int64_t count = -1; ///< -1 where nobody knows it.
};

/// Finds out about the frames of one picture stream.
///
/// Formats that list all their frames are taken at their list, but for frames that are cut off at the end of
/// the file. Of the others the first frames are looked at, without decoding them; their length is what the
/// format says unless the file ended meanwhile.
///
/// \returns kSuccess; kVariableFps for frames that come at no one rate; kErrorOpeningMediaFile if the file
///     holds no whole frame; or what a failed read is.
Status findFrameTiming(OpenMedium& medium, AVStream& stream, FrameTiming& timing);

/// How long a stream is by what its format says, in frames of the rate; -1 where it says nothing.
std::int64_t statedFrameCount(OpenMedium const& medium, AVStream const& stream, AVRational rate);

} // namespace ORL_0_81::media

#endif // ORL_FRAME_TIMING_H
