// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#ifndef ORL_TEST_SUPPORT_TIMELINE_TEXT_H
#define ORL_TEST_SUPPORT_TIMELINE_TEXT_H

#include "support/Json.h"

#include <string>

/// \file
/// The normal form of timeline documents, put together from pieces. Each piece is spelled out as the format
/// has it; only the parts that a test varies are parameters, and those are JSON text, too.

namespace orlTest {

inline std::string const kUndefinedTime = R"({"OTIO_SCHEMA":"RationalTime.1"})";

inline std::string timeText(std::string const& value, std::string const& rate) {
    return R"({"OTIO_SCHEMA":"RationalTime.1","value":)" + value + R"(,"rate":)" + rate + "}";
}

inline std::string rangeText(std::string const& start, std::string const& duration) {
    return R"({"start_time":)" + start + R"(,"duration":)" + duration + R"(,"OTIO_SCHEMA":"TimeRange.1"})";
}

inline std::string const kUndefinedRange = rangeText(kUndefinedTime, kUndefinedTime);

/// A clip; the defaults are those of an empty clip.
struct ClipText {
    std::string name = R"("")";
    std::string effects = "[]";
    std::string sourceRange = kUndefinedRange;
    std::string availableRange = kUndefinedRange;
    std::string center = "[0.0,0.0]";
    std::string size = "[0.0,0.0]";
    std::string pixelResolution = "[-1,-1]";
    std::string dataType = R"("")";
    std::string numVideoChannels = "-1";
    std::string pixelAspect = "0.0";
    std::string frameRate = "0.0";
    std::string hasAudio = "false";
    std::string audioSampleRate = "0.0";
    std::string numAudioChannels = "-1";
    std::string videoCodec = R"("Unknown")";
    std::string audioCodec = R"("Unknown")";
    std::string fileSize = "-1";
    std::string extraData = "{}";
    std::string targetUrl = R"("")";
    std::string entityId = "0";
    std::string entityType = R"("")";
    std::string mp4 = R"("")";
    std::string file = R"("")";
    std::string movie = R"("")";
    std::string id = R"("")";

    std::string text() const {
        std::string t = R"({"name":)" + name + R"(,"OTIO_SCHEMA":"Clip.1","effects":)" + effects;
        t += R"(,"source_range":)" + sourceRange;
        t += R"(,"media_reference":{"OTIO_SCHEMA":"ExternalReference.1","available_range":)" + availableRange;
        t += R"(,"metadata":{"orl":{"ORL_SCHEMA":"ClipNodeMediaReferenceMetadata.1")";
        t += R"(,"bounds":{"center":)" + center + R"(,"size":)" + size + "}";
        t += R"(,"pixel_resolution":)" + pixelResolution + R"(,"data_type":)" + dataType;
        t += R"(,"num_video_channels":)" + numVideoChannels + R"(,"pixel_aspect":)" + pixelAspect;
        t += R"(,"frame_rate":)" + frameRate + R"(,"has_audio":)" + hasAudio;
        t += R"(,"audio_sample_rate":)" + audioSampleRate + R"(,"num_audio_channels":)" + numAudioChannels;
        t += R"(,"video_codec":)" + videoCodec + R"(,"audio_codec":)" + audioCodec;
        t += R"(,"file_size_in_bytes":)" + fileSize + R"(,"extra_data":)" + extraData + "}}";
        t += R"(,"target_url":)" + targetUrl + "}";
        t += R"(,"metadata":{"orl":{"ORL_SCHEMA":"ClipMetadata.1","entity":{"id":)" + entityId;
        t += R"(,"type":)" + entityType + R"(},"paths":{"mp4":)" + mp4 + R"(,"file":)" + file;
        t += R"(,"movie":)" + movie + R"(},"id":)" + id + "}}}";
        return t;
    }
};

/// A gap of undefined range.
inline std::string gapText(std::string const& effects, std::string const& range = kUndefinedRange) {
    return R"({"name":"","OTIO_SCHEMA":"Gap.1","effects":)" + effects + R"(,"source_range":)" + range +
           R"(,"metadata":{}})";
}

/// A track without a name; `kind` is the whole member with its comma, or empty.
inline std::string trackText(std::string const& children, std::string const& kind = "") {
    return R"({"name":"","OTIO_SCHEMA":"Track.1","children":)" + children + kind + "}";
}

/// What a timeline writes behind its tracks.
inline std::string timelineTail(std::string const& name = R"("")",
                                std::string const& start = kUndefinedTime) {
    return R"("name":)" + name +
           R"(,"OTIO_SCHEMA":"Timeline.1","metadata":{"orl":{"ORL_SCHEMA":"TimelineMetadata.1","version":"0.81"}})"
           R"(,"global_start_time":)" +
           start + "}";
}

/// A timeline without a name over a stack of the given tracks.
inline std::string timelineText(std::string const& tracks) {
    return R"({"tracks":{"OTIO_SCHEMA":"Stack.1","children":)" + tracks + "}," + timelineTail();
}

/// A timeline without "tracks".
inline std::string bareTimelineText(std::string const& name = R"("")",
                                    std::string const& start = kUndefinedTime) {
    return "{" + timelineTail(name, start);
}

/// The members that every effect writes, without layers and range, and without the closing bracket.
inline std::string const kPlainEffect = R"("visible":true,"name":"","effect_name":"")";

/// The members that every layer adds to those of an effect.
inline std::string const kPlainLayer = R"("hold":false,"ghost":false,"ghost_before":3,"ghost_after":3)";

} // namespace orlTest

#endif // ORL_TEST_SUPPORT_TIMELINE_TEXT_H
