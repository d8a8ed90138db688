// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project

// What the program says of media, beside what ffprobe says: those of the demonstration, made by the same script.
#include <rapidjson/document.h>

#include <gtest/gtest.h>

#include <array>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <string>

#include <sys/wait.h>

namespace {

std::string const folder = ORL_TEST_MEDIA;

struct Output {
    std::string text;
    int code;
};

Output run(std::string const& command) {
    std::string text;
    FILE* const pipe = popen(command.c_str(), "r");
    std::array<char, 4096> part = {};
    while (std::size_t const count = fread(part.data(), 1, part.size(), pipe)) {
        text.append(part.data(), count);
    }
    int const status = pclose(pipe);
    return {text, WIFEXITED(status) ? WEXITSTATUS(status) : -1};
}

rapidjson::Document parsed(std::string const& text) {
    rapidjson::Document document;
    document.Parse<rapidjson::kParseFullPrecisionFlag>(text.c_str());
    EXPECT_TRUE(document.IsObject()) << text;
    return document;
}

rapidjson::Document orlProbe(std::string const& file) {
    return parsed(run("'" ORL_TEST_PROGRAM "' probe --json '" + folder + "/" + file + "' 2>/dev/null").text);
}

rapidjson::Document ffprobe(std::string const& file) {
    return parsed(
        run("ffprobe -v error -show_streams -show_format -of json '" + folder + "/" + file + "'").text);
}

rapidjson::Value const* findStream(rapidjson::Document const& probed, char const* type) {
    for (rapidjson::Value const& stream : probed["streams"].GetArray()) {
        if (std::strcmp(stream["codec_type"].GetString(), type) == 0) {
            return &stream;
        }
    }
    return nullptr;
}

// "24000/1001" and "16:15"
double quotientOf(std::string const& text) {
    return std::strtod(text.c_str(), nullptr) /
           std::strtod(text.c_str() + text.find_first_of("/:") + 1, nullptr);
}

class DemoMedia : public testing::TestWithParam<char const*> {
protected:
    static void SetUpTestSuite() { ASSERT_EQ(run("'" ORL_TEST_MAKE_MEDIA "' '" + folder + "'").code, 0); }
};

class ProbeComparison : public DemoMedia {};
class ProbeOfFaultyMedia : public DemoMedia {};

} // namespace

TEST_P(ProbeComparison, FindsTheProgramAndFfprobeOfOneMind) {
    rapidjson::Document const ours = orlProbe(GetParam());
    rapidjson::Document const theirs = ffprobe(GetParam());
    ASSERT_STREQ(ours["status"].GetString(), "kSuccess");

    rapidjson::Value const* const picture = findStream(theirs, "video");
    ASSERT_TRUE(picture);
    EXPECT_STREQ(ours["video_codec"].GetString(), (*picture)["codec_name"].GetString());
    EXPECT_EQ(ours["width"].GetInt(), (*picture)["width"].GetInt());
    EXPECT_EQ(ours["height"].GetInt(), (*picture)["height"].GetInt());
    auto const aspect = picture->FindMember("sample_aspect_ratio");
    EXPECT_EQ(ours["pixel_aspect"].GetDouble(),
              aspect == picture->MemberEnd() ? 1.0 : quotientOf(aspect->value.GetString()));
    double const rate = quotientOf((*picture)["avg_frame_rate"].GetString());
    EXPECT_EQ(ours["frame_rate"].GetDouble(), rate);
    EXPECT_EQ(ours["duration"]["rate"].GetDouble(), rate);
    auto const frames = picture->FindMember("nb_frames");
    // Where the container does not count them, all media of the demonstration last two seconds.
    EXPECT_EQ(ours["duration"]["value"].GetDouble(),
              frames == picture->MemberEnd() ? 2.0 * rate : std::atof(frames->value.GetString()));
    auto const tags = picture->FindMember("tags");
    if (tags != picture->MemberEnd() && tags->value.HasMember("timecode")) {
        EXPECT_STREQ(ours["timecode"].GetString(), tags->value["timecode"].GetString());
    } else {
        EXPECT_TRUE(ours["timecode"].IsNull());
    }

    rapidjson::Value const* const sound = findStream(theirs, "audio");
    ASSERT_EQ(ours["has_audio"].GetBool(), sound != nullptr);
    if (sound) {
        EXPECT_STREQ(ours["audio_codec"].GetString(), (*sound)["codec_name"].GetString());
        EXPECT_EQ(ours["audio_sample_rate"].GetDouble(), std::atof((*sound)["sample_rate"].GetString()));
        EXPECT_EQ(ours["audio_channels"].GetInt(), (*sound)["channels"].GetInt());
    }
    EXPECT_EQ(std::to_string(ours["file_size"].GetInt()), theirs["format"]["size"].GetString());
}

INSTANTIATE_TEST_SUITE_P(Demo, ProbeComparison,
                         testing::Values("plate_2398.mov", "broadcast_2997.mov", "scope_24.mp4", "pal_25.mov",
                                         "portrait_60.mkv"));

TEST_P(ProbeOfFaultyMedia, TellsWhatIsWrong) {
    std::string const command = "'" ORL_TEST_PROGRAM "' probe '" + folder + "/" + GetParam() + "' 2>&1";
    Output const output = run(command);
    EXPECT_EQ(output.code, 1);
    bool const isBroken = std::strcmp(GetParam(), "broken.mov") == 0;
    EXPECT_NE(output.text.find(isBroken ? "kErrorOpeningMediaFile" : "kVariableFps"), std::string::npos)
        << output.text;
}

INSTANTIATE_TEST_SUITE_P(Demo, ProbeOfFaultyMedia, testing::Values("broken.mov", "wild.mp4"));
