// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "support/Reading.h"

#include <array>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <memory>
#include <vector>

namespace {

using namespace Reading;

// What the program ffprobe says of a file.
rapidjson::Document probe(std::string const& path) {
    std::string const command = "ffprobe -v error -show_streams -show_format -of json '" + path + "'";
    std::string output;
    std::unique_ptr<FILE, int (*)(FILE*)> const pipe(popen(command.c_str(), "r"), &pclose);
    std::array<char, 4096> part = {};
    while (std::size_t const count = fread(part.data(), 1, part.size(), pipe.get())) {
        output.append(part.data(), count);
    }
    rapidjson::Document document;
    document.Parse(output.c_str());
    EXPECT_TRUE(document.IsObject()) << command;
    return document;
}

rapidjson::Value const* findStream(rapidjson::Document const& probed, char const* type) {
    for (rapidjson::Value const& stream : probed["streams"].GetArray()) {
        if (std::strcmp(stream["codec_type"].GetString(), type) == 0 &&
            stream["disposition"]["attached_pic"].GetInt() == 0) {
            return &stream;
        }
    }
    return nullptr;
}

// "24000/1001" and "16:11"
double quotientOf(std::string const& text) {
    return std::strtod(text.c_str(), nullptr) /
           std::strtod(text.c_str() + text.find_first_of("/:") + 1, nullptr);
}

class FFprobeComparisonTest : public testing::TestWithParam<std::string> {};

TEST_P(FFprobeComparisonTest, SaysTheSame) {
    std::string const path = medium(GetParam());
    rapidjson::Document const probed = probe(path);
    Document const document = read(path);

    EXPECT_EQ(std::to_string(document.format("file_size_in_bytes").GetInt64()),
              probed["format"]["size"].GetString());
    auto const tags = probed["format"].FindMember("tags");
    if (tags != probed["format"].MemberEnd()) {
        for (auto const& tag : tags->value.GetObject()) {
            EXPECT_EQ(document.extra(tag.name.GetString()), tag.value.GetString());
        }
    }

    if (rapidjson::Value const* const picture = findStream(probed, "video")) {
        EXPECT_STREQ(document.format("video_codec").GetString(), (*picture)["codec_name"].GetString());
        EXPECT_EQ(document.format("pixel_resolution/0").GetInt(), (*picture)["width"].GetInt());
        EXPECT_EQ(document.format("pixel_resolution/1").GetInt(), (*picture)["height"].GetInt());
        auto const aspect = picture->FindMember("sample_aspect_ratio");
        EXPECT_EQ(document.format("pixel_aspect").GetDouble(),
                  aspect != picture->MemberEnd() ? quotientOf(aspect->value.GetString()) : 1.0);
        auto const frames = picture->FindMember("nb_frames");
        if (frames != picture->MemberEnd()) {
            EXPECT_EQ(document.duration(), std::atof(frames->value.GetString()));
        }
        if (document.duration() > 1.0) {
            EXPECT_EQ(document.rate(), quotientOf((*picture)["avg_frame_rate"].GetString()));
        }
        auto const pictureTags = picture->FindMember("tags");
        if (pictureTags != picture->MemberEnd() && pictureTags->value.HasMember("timecode")) {
            EXPECT_EQ(document.extra("Timecode/Start"), pictureTags->value["timecode"].GetString());
        }
    } else {
        EXPECT_STREQ(document.format("video_codec").GetString(), "Unknown");
    }

    rapidjson::Value const* const sound = findStream(probed, "audio");
    EXPECT_EQ(document.format("has_audio").GetBool(), sound != nullptr);
    if (sound) {
        EXPECT_STREQ(document.format("audio_codec").GetString(), (*sound)["codec_name"].GetString());
        EXPECT_EQ(document.format("audio_sample_rate").GetDouble(),
                  std::atof((*sound)["sample_rate"].GetString()));
        EXPECT_EQ(document.format("num_audio_channels").GetInt(), (*sound)["channels"].GetInt());
    }
}

INSTANTIATE_TEST_SUITE_P(Media, FFprobeComparisonTest,
                         testing::Values("rate24.mov", "rate25.mp4", "rate30.avi", "rate60.mkv",
                                         "rate23976.mov", "rate2997drop.mov", "rate5994drop.mov",
                                         "rate23976.mkv", "broadcast.mxf", "oneFrame.mov", "long.mkv",
                                         "anamorphic.mov", "rotated.mov", "upsideDown.mov", "sound.mov",
                                         "ten.mov", "gray.mkv", "alpha.mov", "fragmented.mp4", "stream.ts",
                                         "animated.gif", "sound.wav", "cover.flac", "still.png",
                                         "sequences/half.007.exr", "sequences/film.01.dpx"));

} // namespace
