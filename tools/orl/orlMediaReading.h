// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#ifndef ORL_MEDIA_READING_H
#define ORL_MEDIA_READING_H

#include "orlBounds.h"
#include "orlInputError.h"
#include "orlMediaMetadataReader.h"
#include "orlRational.h"
#include "orlSharedPtr.h"
#include "orlStatus.h"
#include "orlStreams.h"
#include "orlTime.h"

#include <string>
#include <vector>

/// \file
/// How the program's commands look into media.

namespace ORL_0_81::tool {

/// What a reader is told besides the path.
struct MediaRequest {
    double canvasWidth = 1920.0;
    double canvasHeight = 1080.0;
    Rational rate = Rational(24, 1); ///< of media that have no frame rate of their own

    /// The canvas about the point (0, 0).
    Bounds canvas() const { return Bounds(0.0, 0.0, canvasWidth, canvasHeight); }

    Time time() const { return Time(0, rate); }
};

/// The reader for this process: the one that is registered, else a new one of those that the program was
/// built with.
///
/// \param file What it is wanted for.
/// \throws InputError that tells how to get one.
SharedPtr<MediaMetadataReader> openReader(std::string const& file);

/// Tells a status in words for people, its name first: "kFileNotFound: no such file".
std::string reasonOf(Status status);

/// What came of one medium.
struct MediaReading {
    Status status;
    std::string metadata; ///< a timeline document, after success
};

/// Reads media side by side, some at a time, and shows the progress.
///
/// \returns what came of each, in the order of the paths.
/// \throws InputError if there is no reader; else whatever a reader throws, once no read is under way.
std::vector<MediaReading> readMedia(std::vector<std::string> const& paths, MediaRequest const& request,
                                    Streams const& streams);

} // namespace ORL_0_81::tool

#endif // ORL_MEDIA_READING_H
