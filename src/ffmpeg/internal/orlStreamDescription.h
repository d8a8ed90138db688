// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#ifndef ORL_STREAM_DESCRIPTION_H
#define ORL_STREAM_DESCRIPTION_H

#include "internal/orlMediaDescription.h"
#include "internal/orlOpenMedium.h"

#include <orlStatus.h>

namespace ORL_0_81::media {

/// The streams that a medium is described by; null for what there is none of.
struct MediaStreams {
    AVStream* picture = nullptr;
    AVStream* sound = nullptr;
};

/// The first stream of each kind that is marked as default, else the first at all. Cover pictures and
/// thumbnails do not count.
MediaStreams chooseStreams(AVFormatContext const& format);

/// Takes over everything about the stored picture, but not its timing.
///
/// \returns kSuccess; kUnsupportedCodec if there is no decoder; or what broken data are if the parameters of
///     the picture are missing.
Status describePicture(OpenMedium const& medium, AVStream& stream, MediaDescription& description);

/// Takes over everything about the sound, but not its length. The results are those of describePicture().
Status describeSound(OpenMedium const& medium, AVStream const& stream, MediaDescription& description);

/// Takes over the timecode, if there is one that makes sense at the rate, and the tags of the container.
///
/// \param picture May be null.
void describeTags(AVFormatContext const& format, AVStream const* picture, AVRational rate,
                  MediaDescription& description);

} // namespace ORL_0_81::media

#endif // ORL_STREAM_DESCRIPTION_H
