// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "orlMediaReading.h"

#include "orlProgress.h"

#ifdef ORL_TOOL_HAS_FFMPEG_READER
#include "orlFFmpegMediaMetadataReader.h"
#endif

#include <algorithm>
#include <atomic>
#include <cstddef>
#include <future>

namespace ORL_0_81::tool {

namespace {

// Reading waits for storage more than it computes, so there may be more of them than cores; not so many that
// a disk goes back and forth between them, or that the process runs out of file handles.
constexpr std::size_t kMaxReadsAtATime = 16;

// What the names of the usual outcomes mean.
struct Words {
    Status::Type code;
    char const* text;
};
constexpr Words kWords[] = {
    {Status::kErrorOpeningMediaFile, "it cannot be opened as a medium"},
    {Status::kFileNotFound, "no such file"},
    {Status::kIOAccess, "it cannot be read, or does not answer"},
    {Status::kMediaReaderUnavailable, "no reader for media"},
    {Status::kUnsupportedCodec, "nothing here decodes it"},
    {Status::kUnsupportedFormat, "it is of a kind that cannot be read"},
    {Status::kVariableFps, "its frame rate varies"},
};

MediaReading readMedium(std::string const& path, MediaRequest const& request) {
    String metadata;
    Status const status =
        MediaMetadata::getMediaMetadata(String(path.c_str()), request.canvas(), request.time(), metadata);
    return {status, metadata.c_str()};
}

} // namespace

SharedPtr<MediaMetadataReader> openReader(std::string const& file) {
    if (SharedPtr<MediaMetadataReader> reader = MediaMetadata::getMediaMetadataReader()) {
        return reader;
    }
#ifdef ORL_TOOL_HAS_FFMPEG_READER
    static_cast<void>(file);
    return SharedPtr<MediaMetadataReader>(new FFmpegMediaMetadataReader);
#else
    throw InputError(file, std::string(Status(Status::kMediaReaderUnavailable).getStr()) +
                               ": this program was built without FFmpeg and cannot look into media. Install "
                               "FFmpeg's development files (on Debian libavformat-dev, libavcodec-dev and "
                               "libavutil-dev) and build it anew");
#endif
}

std::string reasonOf(Status status) {
    std::string const name = status.getStr();
    for (Words const& words : kWords) {
        if (status == words.code) {
            return name + ": " + words.text;
        }
    }
    return name;
}

std::vector<MediaReading> readMedia(std::vector<std::string> const& paths, MediaRequest const& request,
                                    Streams const& streams) {
    std::vector<MediaReading> readings(paths.size());
    if (paths.empty()) {
        return readings;
    }
    SharedPtr<MediaMetadataReader> const reader = openReader(paths.front());
    Progress progress(streams, "media read", paths.size());
    std::atomic<std::size_t> next{0};
    auto readOn = [&] {
        for (std::size_t i = next++; i < paths.size(); i = next++) {
            readings[i] = readMedium(paths[i], request);
            progress.advance();
        }
    };
    std::vector<std::future<void>> workers;
    for (std::size_t i = 0; i < std::min(paths.size(), kMaxReadsAtATime); ++i) {
        workers.push_back(std::async(std::launch::async, readOn));
    }
    for (std::future<void>& worker : workers) {
        worker.get();
    }
    return readings;
}

} // namespace ORL_0_81::tool
