// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "support/Damage.h"
#include "support/Reading.h"
#include "support/orlFailingMemory.h"

#include <gtest/gtest.h>

#include <string>

// What the reader does when it gets no memory. FFmpeg's own goes on to work, but must be given back.

namespace {

using namespace Reading;
using orlTest::failEachAllocation;
using orlTest::FailingMemory;

orlTest::MemoryPlan const FFMPEG_GIVES_BACK{false, false, true};

class FFmpegFailingMemory : public testing::TestWithParam<char const*> {};

TEST_P(FFmpegFailingMemory, AMediumIsDescribedOrTheDocumentStays) {
    std::string const path = medium(GetParam());
    String const name(path.data(), path.size());
    SharedPtr<FFmpegMediaMetadataReader> const reader(new FFmpegMediaMetadataReader);
    String expected("untouched");
    Status const expectedStatus = reader->readMediaMetadata(name, canvas(), asked(), expected);
    failEachAllocation(
        [&](FailingMemory& memory) {
            Bounds const bounds = canvas();
            Time const time = asked();
            String document("untouched");
            bool const done = memory.run(
                [&] { EXPECT_EQ(reader->readMediaMetadata(name, bounds, time, document), expectedStatus); });
            EXPECT_STREQ(document.c_str(), done ? expected.c_str() : "untouched");
        },
        FFMPEG_GIVES_BACK);
}

// A movie with sound and a timecode, a playlist, sequences, one image, sound alone, and what cannot be read.
INSTANTIATE_TEST_SUITE_P(Media, FFmpegFailingMemory,
                         testing::Values("sound.mov", "rate2997drop.mov", "list.m3u8", "broadcast.mxf",
                                         "sequences/shot.%04d.png", "sequences/half.%03d.exr", "still.png",
                                         "sound.wav", "variable.mp4", "no such medium.mov",
                                         "no such m\xc3\xa9"
                                         "dium.mov",
                                         "sequences"));

TEST(FFmpegReaderFailingMemory, AReaderIsRegisteredOrNotThere) {
    failEachAllocation([](FailingMemory& memory) {
        SharedPtr<FFmpegMediaMetadataReader> reader;
        bool const done = memory.run([&] { reader.reset(new FFmpegMediaMetadataReader); });
        EXPECT_EQ(reader != nullptr, done);
        EXPECT_EQ(MediaMetadata::getMediaMetadataReader(), reader);
    });
}

TEST(FFmpegReaderFailingMemory, TheProtocolsAreSetOrStay) {
    failEachAllocation([](FailingMemory& memory) {
        SharedPtr<FFmpegMediaMetadataReader> const reader(new FFmpegMediaMetadataReader);
        String const first = "http";
        String const names = "http,https,tcp,tls,crypto,data,httpproxy";
        reader->setAllowedProtocols(first);
        bool const done = memory.run([&] { reader->setAllowedProtocols(names); });
        String allowed;
        memory.run([&] { allowed = reader->getAllowedProtocols(); });
        EXPECT_TRUE(allowed.empty() || allowed == (done ? names : first));
        EXPECT_TRUE(reader->getAllowedProtocols() == (done ? names : first));
    });
}

} // namespace
