// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "support/orlTimelineGenerator.h"

#include <cstdio>

namespace {

std::string time(char const* key, double value) {
    char text[128];
    std::snprintf(text, sizeof text, R"("%s":{"OTIO_SCHEMA":"RationalTime.1","value":%.1f,"rate":24.0})", key,
                  value);
    return text;
}

std::string range(char const* key, double start, double duration) {
    return std::string("\"") + key + "\":{" + time("start_time", start) + "," + time("duration", duration) +
           R"(,"OTIO_SCHEMA":"TimeRange.1"})";
}

std::string clip(int index) {
    char name[64];
    std::snprintf(name, sizeof name, "seq%03d_sh%04d_comp_v%03d", index / 500, index % 500 * 10, index % 17);
    double const start = 1001.0 + index % 7;
    std::string text = std::string(R"({"name":")") + name + R"(","OTIO_SCHEMA":"Clip.1","effects":[)";
    if (index % 10 == 0) {
        text +=
            R"({"OTIO_SCHEMA":"CDL.1","slope":[1.05,0.98,1.01],"offset":[0.01,-0.02,0.0],)"
            R"("power":[1.0,1.1,0.95],"saturation":0.9,"visible":true,"name":"grade","effect_name":"cdl"})";
    }
    text += "]," + range("source_range", start, 48.0 + index % 90);
    text += R"(,"media_reference":{"OTIO_SCHEMA":"ExternalReference.1",)";
    text += range("available_range", 1001.0, 160.0);
    text += R"(,"metadata":{"orl":{"bounds":{"center":[0.0,0.0],"size":[2.3888,1.0]},)"
            R"("pixel_resolution":[4096,1716],"data_type":"half","num_video_channels":3,"pixel_aspect":1.0,)"
            R"("frame_rate":24.0,"has_audio":false,"audio_sample_rate":0.0,"num_audio_channels":-1,)"
            R"("video_codec":"exr","audio_codec":"Unknown","file_size_in_bytes":33554432,)"
            R"("extra_data":{"Timecode/Start":"01:00:00:00"}}},"target_url":"file:///show/shots/)";
    text += std::string(name) + "/" + name + R"(.%04d.exr"},"metadata":{"orl":{"entity":{"id":)";
    text += std::to_string(100000 + index) + R"(,"type":"Version"},"paths":{"mp4":"https://review.example/)";
    text += std::string(name) + R"(.mp4","file":"/show/shots/)" + name + "/" + name +
            R"(.%04d.exr","movie":""},)";
    text += R"("id":"clip-)" + std::to_string(index) + R"("}}})";
    if (index % 20 == 19) {
        text += R"(,{"name":"","OTIO_SCHEMA":"Gap.1","effects":[],)" + range("source_range", 0.0, 12.0) + "}";
    }
    return text;
}

} // namespace

std::string generateTimeline(int clipCount) {
    constexpr int kTracks = 8;
    std::string text = R"({"OTIO_SCHEMA":"Timeline.1","name":"generated","metadata":{},)";
    text += time("global_start_time", 86400.0) + R"(,"tracks":{"OTIO_SCHEMA":"Stack.1","children":[)";
    int index = 0;
    for (int track = 0; track < kTracks; ++track) {
        text += track ? "," : "";
        text += R"({"OTIO_SCHEMA":"Track.1","name":"V)" + std::to_string(track + 1) +
                R"(","kind":"Video","children":[)";
        int const end = static_cast<int>(static_cast<long>(clipCount) * (track + 1) / kTracks);
        for (bool first = true; index < end; ++index, first = false) {
            text += first ? "" : ",";
            text += clip(index);
        }
        text += "]}";
    }
    return text + "]}}";
}
