// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#ifndef ORL_TOOL_READER_H
#define ORL_TOOL_READER_H

#include "orlMediaMetadataReader.h"

#include <atomic>
#include <string>

/// \file
/// A reader for the tests of the program, which needs no media.

namespace ORL_0_81::tool {

/// Registered for as long as it lives. By the end of the path it answers ".mov" with a clip of 48 frames at
/// 24 a second from frame 1001, ".broken" with kErrorOpeningMediaFile, ".gone" with kFileNotFound, ".text"
/// with a text that is no document, and ".empty" with a document without a clip.
class ToolReader : public MediaMetadataReader {
public:
    Status readMediaMetadata(String const& path, Bounds const& bounds, Time const& time,
                             String& metadata) override {
        ++reads;
        canvasWidth = bounds.getSizeX();
        rate = time.getRate().getValue();
        std::string const name = path.c_str();
        std::string const ending = name.substr(name.find_last_of('.') + 1);
        if (ending == "broken") {
            return Status::kErrorOpeningMediaFile;
        }
        if (ending == "gone") {
            return Status::kFileNotFound;
        }
        if (ending == "text") {
            metadata = "no document";
        } else if (ending == "empty") {
            metadata = "{}";
        } else {
            metadata = documentOf(name).c_str();
        }
        return Status::kSuccess;
    }

    static std::string documentOf(std::string const& name) {
        std::string const times =
            R"({"OTIO_SCHEMA":"TimeRange.1","start_time":{"OTIO_SCHEMA":"RationalTime.1","value":1001.0,)"
            R"("rate":24.0},"duration":{"OTIO_SCHEMA":"RationalTime.1","value":48.0,"rate":24.0}})";
        return R"({"OTIO_SCHEMA":"Timeline.1","tracks":{"OTIO_SCHEMA":"Stack.1","children":[{"OTIO_SCHEMA":)"
               R"("Track.1","kind":"Video","children":[{"OTIO_SCHEMA":"Clip.1","name":")" +
               name + R"(","media_reference":{"OTIO_SCHEMA":"ExternalReference.1","target_url":")" + name +
               R"(","available_range":)" + times +
               R"(,"metadata":{"orl":{"bounds":{"center":[0.0,0.0],"size":[1920.0,960.0]},"pixel_resolution":[2048,1024],)"
               R"("extra_data":{"Timecode/Start":"00:00:41:17"}}}}}]}]}})";
    }

    std::atomic<int> reads{0};
    std::atomic<double> canvasWidth{0.0};
    std::atomic<double> rate{0.0};
};

} // namespace ORL_0_81::tool

#endif // ORL_TOOL_READER_H
