// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "support/Damage.h"
#include "support/Reading.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <chrono>
#include <cmath>
#include <csignal>
#include <thread>
#include <vector>

namespace {

using namespace Reading;

class BadInputTest : public testing::Test {
protected:
    Damage::Folder const m_folder;
    Reader const m_reader{};
};

TEST_F(BadInputTest, WhatIsNotThereIsNotFound) {
    for (std::string const& path :
         {std::string(), std::string("\0", 1), medium("none.mov"), medium("none/none.mov"),
          medium("rate24.mov/x"), medium("rate24.mov") + std::string("\0.mov", 5),
          medium("sequences/none.%04d.png"), medium("none/shot.%04d.png"), medium("sequences/shot.%05d.png"),
          "file://" + medium("none.mov"), std::string("name:with:colons.mov"),
          medium(std::string(300, 'x'))}) {
        EXPECT_EQ(m_reader.statusOf(path), Status::kFileNotFound) << path;
    }
}

TEST_F(BadInputTest, WhatCanBeNoMediumIsNotOpened) {
    for (std::string const& path :
         {medium(""), medium("sequences"), std::string("/dev/null"), std::string("/dev/zero")}) {
        EXPECT_EQ(m_reader.statusOf(path), Status::kErrorOpeningMediaFile) << path;
    }
}

TEST_F(BadInputTest, AnEmptyFileIsNotOpened) {
    for (std::string const name : {"empty.mov", "empty.png", "empty"}) {
        EXPECT_EQ(m_reader.statusOf(m_folder.write(name, "")), Status::kErrorOpeningMediaFile);
    }
}

TEST_F(BadInputTest, TextIsOfNoFormatWhateverItsName) {
    std::string const text = "The quick brown fox jumps over the lazy dog.\n";
    for (std::string const name :
         {"text.mov", "text.txt", "text.mp4", "text.exr", "text.tga", "text.avi", "text"}) {
        EXPECT_EQ(m_reader.statusOf(m_folder.write(name, text)), Status::kUnsupportedFormat) << name;
    }
}

TEST_F(BadInputTest, AFormatWithoutPictureAndSoundIsUnsupported) {
    EXPECT_EQ(m_reader.statusOf(m_folder.write("titles.srt", "1\n00:00:01,000 --> 00:00:02,000\nHello\n\n"
                                                             "2\n00:00:03,000 --> 00:00:04,000\nthere\n")),
              Status::kUnsupportedFormat);
}

TEST_F(BadInputTest, AListOfFilesIsUnsupported) {
    std::string const list = "ffconcat version 1.0\nfile rate24.mov\n";
    EXPECT_EQ(m_reader.statusOf(m_folder.write("list.ffconcat", list)), Status::kUnsupportedFormat);
}

TEST_F(BadInputTest, ASequenceOfMoviesIsUnsupported) {
    EXPECT_EQ(m_reader.statusOf(medium("sequences/reel.%02d.mov")), Status::kUnsupportedFormat);
}

TEST_F(BadInputTest, AnUnknownCodecIsUnsupported) {
    std::string movie = Damage::load(medium("ten.mov"));
    Damage::overwriteWord(movie, movie.find("stsd") + 4 + 12, 0x7a7a7a7a); // the name of the first format
    EXPECT_EQ(m_reader.statusOf(m_folder.write("codec.mov", movie)), Status::kUnsupportedCodec);
}

TEST_F(BadInputTest, FramesThatKeepNoRateAreToldFromThoseThatDo) {
    EXPECT_EQ(m_reader.statusOf(medium("variable.mp4")), Status::kVariableFps);
    EXPECT_EQ(m_reader.statusOf(medium("variable.mkv")), Status::kVariableFps);
}

TEST_F(BadInputTest, AMovieCutOffBeforeItsTableIsNotOpened) {
    std::string const movie = Damage::load(medium("tableLast.mov"));
    EXPECT_EQ(m_reader.statusOf(m_folder.write("cut.mov", movie.substr(0, movie.size() / 2))),
              Status::kErrorOpeningMediaFile);
}

TEST_F(BadInputTest, AMovieCutOffBehindItsTableHasTheFramesThatAreLeft) {
    std::string const movie = Damage::load(medium("tableFirst.mov"));
    std::size_t const data = movie.find("mdat") + 4;
    // Frames of about one size each.
    for (int const percent : {20, 50, 90}) {
        std::size_t const kept = data + (movie.size() - data) * static_cast<unsigned>(percent) / 100;
        std::string text;
        ASSERT_TRUE(m_reader.read(m_folder.write("cut.mov", movie.substr(0, kept)), text));
        Document const document(text);
        EXPECT_NEAR(document.duration(), 50.0 * percent / 100.0, 3.0);
        EXPECT_EQ(document.rate(), 25.0);
    }
}

TEST_F(BadInputTest, AMovieCutOffBeforeItsFirstFrameIsNotOpened) {
    std::string const movie = Damage::load(medium("tableFirst.mov"));
    EXPECT_EQ(m_reader.statusOf(m_folder.write("cut.mov", movie.substr(0, movie.find("mdat") + 10))),
              Status::kErrorOpeningMediaFile);
}

TEST_F(BadInputTest, AHeaderThatLiesAboutTheLengthIsNotBelieved) {
    std::string movie = Damage::load(medium("rate24.mov"));
    // In the headers of the movie and of the track the duration stands behind two times and other words.
    Damage::overwriteWord(movie, movie.find("mvhd") + 4 + 16, 0x7fffffff);
    Damage::overwriteWord(movie, movie.find("tkhd") + 4 + 20, 0x7fffffff);
    Damage::overwriteWord(movie, movie.find("mdhd") + 4 + 16, 0x7fffffff);
    Damage::overwriteWord(movie, movie.find("elst") + 4 + 8, 0x7fffffff);
    std::string text;
    ASSERT_TRUE(m_reader.read(m_folder.write("lying.mov", movie), text));
    EXPECT_EQ(Document(text).duration(), 24.0);
    EXPECT_EQ(Document(text).rate(), 24.0);
}

TEST_F(BadInputTest, ATableOfMoreFramesThanThereCanBeIsNotBelieved) {
    // All frames of one size and in one chunk, and 2147483647 of them.
    std::string movie = Damage::load(medium("tableFirst.mov"));
    std::size_t const sizes = movie.find("stsz") + 4;
    Damage::overwriteWord(movie, sizes + 4, 1);
    Damage::overwriteWord(movie, sizes + 8, 0x7fffffff);
    m_reader->setTimeLimit(2.0);
    auto const start = std::chrono::steady_clock::now();
    std::string text;
    if (m_reader.read(m_folder.write("many.mov", movie), text)) {
        EXPECT_LT(Document(text).duration(), static_cast<double>(movie.size()));
    }
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(30));
}

TEST_F(BadInputTest, AFileOfAnyLengthGivesAStatusAndNothingElse) {
    std::vector<std::string> const files = {
        "sound.mov", "fragmented.mp4",         "rate30.avi",           "rate60.mkv",
        "stream.ts", "broadcast.mxf",          "cover.flac",           "animated.gif",
        "still.png", "sequences/half.007.exr", "sequences/film.01.dpx"};
    for (std::string const& file : files) {
        std::string const whole = Damage::load(medium(file));
        for (unsigned i = 1; i < 24; ++i) {
            std::string const path = m_folder.write("cut", whole.substr(0, whole.size() * i / 24));
            std::string text;
            Status const status = m_reader.read(path, text);
            EXPECT_STRNE(status.getStr(), "");
            EXPECT_EQ(status.success(), Document(text).clip() != nullptr) << file << " " << i;
        }
    }
}

TEST_F(BadInputTest, AFileWithAnyByteSpoiltGivesAStatusAndNothingElse) {
    for (std::string const file :
         {"sound.mov", "rate60.mkv", "rate30.avi", "broadcast.mxf", "sequences/half.007.exr"}) {
        std::string const whole = Damage::load(medium(file));
        for (std::size_t i = 0; i < 150; ++i) {
            std::string spoilt = whole;
            // Spread over the file, and thicker where its headers are.
            std::size_t const position = i % 2 == 0 ? i * whole.size() / 150 : i * 4 % whole.size();
            spoilt[position] = static_cast<char>(spoilt[position] ^ (i % 3 == 0 ? 0x80 : 0xff));
            std::string text;
            Status const status = m_reader.read(m_folder.write("spoilt", spoilt), text);
            EXPECT_EQ(status.success(), Document(text).clip() != nullptr) << file << " " << position;
        }
    }
}

TEST_F(BadInputTest, AFileWithoutPermissionIsNoAccess) {
    if (geteuid() == 0) {
        GTEST_SKIP() << "root may read everything";
    }
    std::string const path = m_folder.write("secret.mov", Damage::load(medium("rate24.mov")));
    ASSERT_EQ(chmod(path.c_str(), 0), 0);
    EXPECT_EQ(m_reader.statusOf(path), Status::kIOAccess);
}

TEST_F(BadInputTest, APipeThatNobodyWritesToEndsWithTheTimeLimit) {
    std::string const path = m_folder.path("pipe.mov");
    ASSERT_EQ(mkfifo(path.c_str(), 0600), 0);
    m_reader->setTimeLimit(0.3);
    auto const start = std::chrono::steady_clock::now();
    EXPECT_EQ(m_reader.statusOf(path), Status::kIOAccess);
    auto const taken = std::chrono::steady_clock::now() - start;
    EXPECT_GE(taken, std::chrono::milliseconds(290));
    EXPECT_LT(taken, std::chrono::seconds(5));
}

TEST_F(BadInputTest, APipeWhoseWriterStopsHalfwayEndsWithTheTimeLimit) {
    std::string const path = m_folder.path("pipe.mkv");
    ASSERT_EQ(mkfifo(path.c_str(), 0600), 0);
    int const writer = open(path.c_str(), O_RDWR | O_NONBLOCK | O_CLOEXEC);
    ASSERT_GE(writer, 0);
    std::string const movie = Damage::load(medium("piped.mkv"));
    ASSERT_GT(write(writer, movie.data(), 3000), 0);
    m_reader->setTimeLimit(0.3);
    EXPECT_EQ(m_reader.statusOf(path), Status::kIOAccess);
    close(writer);
}

TEST_F(BadInputTest, APipeThatIsWrittenToIsAMedium) {
    std::string const path = m_folder.path("pipe.mkv");
    ASSERT_EQ(mkfifo(path.c_str(), 0600), 0);
    std::string const movie = Damage::load(medium("piped.mkv"));
    signal(SIGPIPE, SIG_IGN); // the reader may go before it has read all
    std::thread writer([&] {
        int const end = open(path.c_str(), O_WRONLY | O_CLOEXEC);
        std::size_t written = 0;
        while (written < movie.size()) {
            ssize_t const count = write(end, movie.data() + written, movie.size() - written);
            if (count < 0) {
                break;
            }
            written += static_cast<std::size_t>(count);
        }
        close(end);
    });
    std::string text;
    EXPECT_EQ(m_reader.read(path, text), Status::kSuccess);
    writer.join();
    Document const document(text);
    EXPECT_EQ(document.rate(), 25.0);
    EXPECT_STREQ(document.format("audio_codec").GetString(), "pcm_s16le");
    EXPECT_EQ(document.format("file_size_in_bytes").GetInt(), -1);
}

TEST_F(BadInputTest, NoTimeAtAllIsTooLittleForAnything) {
    for (double const seconds : {0.0, -1.0, std::nan("")}) {
        m_reader->setTimeLimit(seconds);
        EXPECT_EQ(m_reader.statusOf(medium("rate24.mov")), Status::kErrorOpeningMediaFile);
    }
}

} // namespace
