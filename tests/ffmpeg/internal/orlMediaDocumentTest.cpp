// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "internal/orlMediaDocument.h"

#include "rapidotio/orlOtioNode.h"
#include "rapidotio/orlOtioNodeVisitor.h"
#include "rapidotio/orlOtioVisitorHelper.h"
#include "support/Reading.h"

#include <gtest/gtest.h>

#include <vector>

namespace {

using namespace ORL_0_81;
using namespace ORL_0_81::media;

// What the library reads of a document, field by field.
class ClipReader : public rapidotio::NodeVisitor {
public:
    void visitClipNode(rapidotio::ClipNode& clip) override {
        m_clips.emplace_back(new rapidotio::ClipNode(clip));
    }
    void visitTimelineNode(rapidotio::TimelineNode& timeline) override {
        m_start = timeline.m_globalStartTime;
    }
    void visitTrackNode(rapidotio::TrackNode& track) override { m_kind = track.m_kind; }

    std::vector<SharedPtr<rapidotio::ClipNode>> m_clips;
    rapidotio::Time m_start;
    rapidotio::TrackKind m_kind = rapidotio::kTrackUnknown;
};

MediaDescription movie() {
    MediaDescription description;
    description.name = "shot.mov";
    description.hasPicture = true;
    description.rate = 24000.0 / 1001.0;
    description.start = 86400;
    description.frameCount = 48;
    description.width = 1920;
    description.height = 1080;
    description.dataType = "uint16";
    description.channels = 3;
    description.pixelAspect = 0.5;
    description.frameRate = 24000.0 / 1001.0;
    description.videoCodec = "prores";
    description.hasAudio = true;
    description.audioSampleRate = 48000.0;
    description.audioChannels = 6;
    description.audioCodec = "pcm_s24le";
    description.fileSize = 123456;
    description.extraData = {{"Timecode/Start", "01:00:00:00"}, {"title", "a \"quoted\" line\n"}};
    return description;
}

TEST(MediaDocumentTest, TheLibraryReadsEveryFieldBack) {
    std::string const text = writeDocument("/media/shot.mov", movie(), Bounds(1.0, 2.0, 16.0, 9.0));
    ClipReader reader;
    ASSERT_TRUE(rapidotio::VisitorHelper::visit(text, reader, nullptr));
    ASSERT_EQ(reader.m_clips.size(), 1U);
    rapidotio::ClipNode const& clip = *reader.m_clips[0];
    double const rate = 24000.0 / 1001.0;
    for (rapidotio::TimeRange const& range : {clip.m_availableRange, clip.m_sourceRange}) {
        EXPECT_EQ(range.start_time.value, 86400.0);
        EXPECT_EQ(range.start_time.rate, rate);
        EXPECT_EQ(range.duration.value, 48.0);
        EXPECT_EQ(range.duration.rate, rate);
    }
    EXPECT_EQ(reader.m_start.value, 86400.0);
    EXPECT_EQ(reader.m_start.rate, rate);
    EXPECT_EQ(reader.m_kind, rapidotio::kTrackVideo);
    EXPECT_EQ(clip.m_name, "shot.mov");
    EXPECT_EQ(clip.m_targetUrl, "/media/shot.mov");
    EXPECT_EQ(clip.m_boundsCenterX, 1.0);
    EXPECT_EQ(clip.m_boundsCenterY, 2.0);
    EXPECT_EQ(clip.m_boundsSizeX, 16.0);
    EXPECT_EQ(clip.m_boundsSizeY, 9.0);
    EXPECT_EQ(clip.m_pixelWidth, 1920);
    EXPECT_EQ(clip.m_pixelHeight, 1080);
    EXPECT_EQ(clip.m_dataType, "uint16");
    EXPECT_EQ(clip.m_numVideoChannels, 3);
    EXPECT_EQ(clip.m_pixelAspect, 0.5);
    EXPECT_EQ(clip.m_frameRate, rate);
    EXPECT_TRUE(clip.m_hasAudio);
    EXPECT_EQ(clip.m_audioSampleRate, 48000.0);
    EXPECT_EQ(clip.m_numAudioChannels, 6);
    EXPECT_EQ(clip.m_videoCodec, "prores");
    EXPECT_EQ(clip.m_audioCodec, "pcm_s24le");
    EXPECT_EQ(clip.m_fileSizeInBytes, 123456);
    EXPECT_EQ(clip.m_extraData, movie().extraData);
}

TEST(MediaDocumentTest, IsInTheNormalFormOfTheLibrary) {
    MediaDescription description = movie();
    description.rate = 25.0; // numbers that have but one text
    description.frameRate = 25.0;
    for (bool const hasPicture : {true, false}) {
        description.hasPicture = hasPicture;
        std::string const text = writeDocument("/media/shot.mov", description, Bounds(1.0, 2.0, 16.0, 9.0));
        ClipReader visitor;
        std::string normal;
        ASSERT_TRUE(rapidotio::VisitorHelper::visit(text, visitor, &normal));
        EXPECT_EQ(text, normal);
    }
}

TEST(MediaDocumentTest, AnUnknownLengthIsAnUndefinedOne) {
    MediaDescription description = movie();
    description.frameCount = -1;
    ClipReader reader;
    ASSERT_TRUE(rapidotio::VisitorHelper::visit(writeDocument("x", description, Bounds()), reader, nullptr));
    rapidotio::TimeRange const range = reader.m_clips.at(0)->m_availableRange;
    EXPECT_FALSE(range.duration.hasValue());
    EXPECT_EQ(range.start_time.value, 86400.0);
}

TEST(MediaDocumentTest, ASizeBeyond32BitsIsStatedAndNotRead) {
    MediaDescription description = movie();
    description.fileSize = 5000000000;
    std::string const text = writeDocument("x", description, Bounds());
    EXPECT_NE(text.find("\"file_size_in_bytes\":5000000000"), std::string::npos);
    ClipReader reader;
    ASSERT_TRUE(rapidotio::VisitorHelper::visit(text, reader, nullptr));
    EXPECT_EQ(reader.m_clips.at(0)->m_fileSizeInBytes, -1);
}

TEST(MediaDocumentTest, BadBytesStayInThePathAndNowhereElse) {
    MediaDescription description = movie();
    description.name = "a\xff.mov";
    description.extraData = {{"k\xff", "v\xff"}};
    std::string const path = "/dir/a\xff.mov";
    ClipReader reader;
    ASSERT_TRUE(rapidotio::VisitorHelper::visit(writeDocument(path, description, Bounds()), reader, nullptr));
    rapidotio::ClipNode const& clip = *reader.m_clips.at(0);
    EXPECT_EQ(clip.m_targetUrl, path);
    EXPECT_EQ(clip.m_name, "a\xef\xbf\xbd.mov");
    EXPECT_EQ(clip.m_extraData.at(0).first, "k\xef\xbf\xbd");
    EXPECT_EQ(clip.m_extraData.at(0).second, "v\xef\xbf\xbd");
}

TEST(MediaDocumentTest, TheLibraryFindsTheClipOfEachRealMedium) {
    for (std::string const file : {"rate2997drop.mov", "sound.wav", "sequences/shot.%04d.png", "list.m3u8"}) {
        std::string text;
        ASSERT_TRUE(Reading::Reader().read(Reading::medium(file), text));
        ClipReader reader;
        ASSERT_TRUE(rapidotio::VisitorHelper::visit(text, reader, nullptr));
        ASSERT_EQ(reader.m_clips.size(), 1U);
        rapidotio::ClipNode const& clip = *reader.m_clips[0];
        EXPECT_TRUE(clip.m_availableRange.start_time.hasValue());
        EXPECT_TRUE(clip.m_availableRange.duration.hasValue());
        EXPECT_GT(clip.m_boundsSizeX, 0.0);
        EXPECT_GT(clip.m_fileSizeInBytes, 0);
    }
}

} // namespace
