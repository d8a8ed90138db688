// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "orlProbeCommand.h"
#include "rapidotio/orlOtioNode.h"
#include "tools/orl/orlToolReader.h"
#include "tools/orl/orlToolSupport.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <rapidjson/document.h>

namespace ORL_0_81::tool {

using testing::HasSubstr;
using testing::StartsWith;

TEST(Probe, ShowsEachMediumInTheOrderOfTheArguments) {
    SharedPtr<ToolReader> const reader(new ToolReader);
    Outcome const run = orl({"probe", "b.mov", "a.mov"});
    EXPECT_EQ(run.code, 0);
    EXPECT_EQ(run.error, "");
    std::string const described =
        "\n  time     48 frames at 24 a second (2.000 s), from frame 1001, timecode "
        "00:00:41:17\n  picture  2048x1024\n  sound    -\n  size     -\n";
    EXPECT_EQ(run.out, "b.mov" + described + "a.mov" + described);
}

TEST(Probe, WritesOneObjectALineForPrograms) {
    SharedPtr<ToolReader> const reader(new ToolReader);
    Outcome const run = orl({"probe", "--json", "a.mov", "b.gone"});
    EXPECT_EQ(run.code, 1);
    std::istringstream lines(run.out);
    std::string first;
    std::string second;
    std::string rest;
    ASSERT_TRUE(std::getline(lines, first) && std::getline(lines, second));
    EXPECT_FALSE(std::getline(lines, rest));
    EXPECT_EQ(first,
              R"({"path":"a.mov","status":"kSuccess","name":"a.mov","start":{"value":1001.0,"rate":24.0},)"
              R"("duration":{"value":48.0,"rate":24.0},"timecode":"00:00:41:17","width":2048,)"
              R"("height":1024,"pixel_aspect":null,"data_type":null,"video_channels":null,)"
              R"("frame_rate":null,"video_codec":null,"has_audio":false,"audio_sample_rate":null,)"
              R"("audio_channels":null,"audio_codec":null,"file_size":null,)"
              R"("bounds":{"center":[0.0,0.0],"size":[1920.0,960.0]},)"
              R"("extra_data":{"Timecode/Start":"00:00:41:17"}})");
    EXPECT_EQ(second, R"({"path":"b.gone","status":"kFileNotFound"})");
    EXPECT_EQ(run.error, "orl ERROR: \"b.gone\" : kFileNotFound: no such file\n");
}

TEST(Probe, TellsWhenTheReadersDocumentHoldsNoClip) {
    SharedPtr<ToolReader> const reader(new ToolReader);
    for (char const* path : {"a.empty", "a.text"}) {
        Outcome const run = orl({"probe", path});
        EXPECT_EQ(run.code, 1);
        EXPECT_EQ(run.out, "");
        EXPECT_THAT(run.error, HasSubstr("kSourceNotFound"));
    }
}

TEST(Probe, ReadsAThousandMediaInTheirOrder) {
    SharedPtr<ToolReader> const reader(new ToolReader);
    std::vector<std::string> arguments = {"probe"};
    std::string expected;
    for (int i = 0; i < 1000; ++i) {
        arguments.push_back(std::to_string(i) + ".gone");
        expected += "orl ERROR: \"" + std::to_string(i) + ".gone\" : kFileNotFound: no such file\n";
    }
    EXPECT_EQ(orl(arguments).error, expected);
    EXPECT_EQ(reader->reads, 1000);
}

TEST(Probe, TellsASoundAndAPictureInFull) {
    rapidjson::Document const none;
    SharedPtr<rapidotio::ClipNode> const clip(new rapidotio::ClipNode(none, nullptr));
    EXPECT_EQ(toProbeText("x", *clip), "x\n  time     -\n  picture  -\n  sound    -\n  size     -\n");
    clip->m_pixelWidth = 720;
    clip->m_pixelHeight = 576;
    clip->m_pixelAspect = 16.0 / 15.0;
    clip->m_frameRate = 24000.0 / 1001.0;
    clip->m_numVideoChannels = 3;
    clip->m_dataType = "uint8";
    clip->m_videoCodec = "h264";
    clip->m_hasAudio = true;
    clip->m_audioSampleRate = 48000.0;
    clip->m_numAudioChannels = 6;
    clip->m_audioCodec = "pcm_s16le";
    clip->m_fileSizeInBytes = 2000000000;
    EXPECT_EQ(
        toProbeText("x", *clip),
        "x\n  time     -\n  picture  720x576, pixel aspect 1.06667, 23.976 frames a second, 3 channels, "
        "uint8, h264\n  sound    48000 Hz, 6 channels, pcm_s16le\n  size     2.0 GB\n");
    clip->m_fileSizeInBytes = 999;
    EXPECT_THAT(toProbeText("x", *clip), HasSubstr("size     999 B\n"));
}

} // namespace ORL_0_81::tool
