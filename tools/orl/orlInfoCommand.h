// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#ifndef ORL_INFO_COMMAND_H
#define ORL_INFO_COMMAND_H

#include "orlInputError.h"
#include "orlStreams.h"

#include <functional>
#include <string>
#include <vector>

namespace ORL_0_81::tool {

class LossReport;
class TimelineSummary;

/// `orl info`: shows what timeline documents hold.
struct InfoCommand {
    std::vector<std::string> files;
    bool isJson = false;

    /// Tries every file; `tell` receives what is at fault with one, and the next one is tried.
    ///
    /// \returns false if any file was at fault.
    /// \throws InputError when the output cannot be written.
    bool run(Streams const& streams, std::function<void(InputError const&)> const& tell) const;
};

/// What is told of one file, as a table for people.
std::string toTable(std::string const& file, TimelineSummary const& summary, LossReport const& losses,
                    TerminalStyle const& style);

/// What is told of one file, as one JSON object and a newline:
///
///     "file"            as it was named
///     "name"            of the timeline
///     "start"           {"seconds", "frames", "rate"}, or null
///     "counts"          {"tracks", "clips", "gaps", "effects"} of the whole document
///     "tracks"          for each: "name", "kind" ("video", "audio" or null), "depth" (in how many tracks it
///                       stands), "counts" {"clips", "gaps", "effects"}, "clips"
///     "outside_tracks"  {"counts", "clips"}: what stands in no track
///     "not_read"        objects that the reader passes over: "count", "reason", "first" (JSON pointer)
///
/// For each clip:
///
///     "name"            of the clip
///     "source_start", "source_length"
///                       {"seconds", "frames"}, or null
///     "rate"            frames per second, or null
///     "resolution"      {"width", "height"}, or null
///     "url", "frames_path", "movie_path", "uploaded_movie"
///                       text, or null
std::string toJsonLine(std::string const& file, TimelineSummary const& summary, LossReport const& losses);

} // namespace ORL_0_81::tool

#endif // ORL_INFO_COMMAND_H
