// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#ifndef ORL_FFMPEG_STATUS_H
#define ORL_FFMPEG_STATUS_H

#include <orlStatus.h>

namespace ORL_0_81::media {

/// What one of FFmpeg's negative codes means to those who asked for a medium. kErrorOpeningMediaFile for all
/// that says no more than that it went wrong.
Status statusOfError(int error);

} // namespace ORL_0_81::media

#endif // ORL_FFMPEG_STATUS_H
