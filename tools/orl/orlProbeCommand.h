// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#ifndef ORL_PROBE_COMMAND_H
#define ORL_PROBE_COMMAND_H

#include "orlInputError.h"
#include "orlMediaReading.h"
#include "orlStreams.h"

#include <functional>
#include <string>
#include <vector>

namespace ORL_0_81::rapidotio {
class ClipNode;
}

namespace ORL_0_81::tool {

/// `orl probe`: shows what media are made of.
struct ProbeCommand {
    std::vector<std::string> paths;
    MediaRequest request;
    bool isJson = false;

    /// Looks into all of them; `tell` receives what is at fault with one.
    ///
    /// \returns false if anything was.
    /// \throws InputError when there is no reader, or the output cannot be written.
    bool run(Streams const& streams, std::function<void(InputError const&)> const& tell) const;
};

/// What is told of one medium, for people.
std::string toProbeText(std::string const& path, rapidotio::ClipNode const& clip,
                        TerminalStyle const& style = TerminalStyle());

/// What is told of one medium, as one JSON object and a newline:
///
///     "path"          as it was named
///     "status"        the name of the status; after a failure nothing follows
///     "name"          of the clip
///     "start", "duration"
///                     {"value", "rate"} in units of 1/rate seconds, or null
///     "timecode"      of the first frame, text or null
///     "width", "height", "pixel_aspect", "data_type", "video_channels", "frame_rate", "video_codec"
///                     the picture; null where unknown
///     "has_audio", "audio_sample_rate", "audio_channels", "audio_codec"
///                     the sound; null where unknown
///     "file_size"     in bytes, or null
///     "bounds"        {"center": [x, y], "size": [x, y]}
///     "extra_data"    {name: text}
std::string toProbeLine(std::string const& path, rapidotio::ClipNode const& clip);

/// The line for a medium that could not be read.
std::string toProbeLine(std::string const& path, Status status);

} // namespace ORL_0_81::tool

#endif // ORL_PROBE_COMMAND_H
