// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "support/Damage.h"
#include "support/Reading.h"

#include <limits>
#include <vector>

namespace {

using namespace Reading;

struct RangeCase {
    char const* file;
    double start;
    double frames;
    double rate;
    char const* timecode;
};

void PrintTo(RangeCase const& row, std::ostream* out) { *out << row.file; }

// 01:01:00;02 has lost two numbers in its 61st minute, and in each before but every tenth; 00:10:00;00 has
// lost four in each of nine minutes.
std::vector<RangeCase> const RANGES = {
    {"rate24.mov", 0, 24, 24.0, nullptr},
    {"rate25.mp4", 0, 25, 25.0, nullptr},
    {"rate30.avi", 0, 30, 30.0, nullptr},
    {"rate60.mkv", 0, 60, 60.0, nullptr},
    {"rate23976.mkv", 0, 12, 24000.0 / 1001.0, nullptr},
    {"rate23976.mov", 86400, 48, 24000.0 / 1001.0, "01:00:00:00"},
    {"rate2997drop.mov", 61 * 60 * 30 + 2 - 2 * (61 - 6), 45, 30000.0 / 1001.0, "01:01:00;02"},
    {"rate5994drop.mov", 10 * 60 * 60 - 4 * 9, 30, 60000.0 / 1001.0, "00:10:00;00"},
    {"broadcast.mxf", 10 * 3600 * 25, 25, 25.0, "10:00:00:00"},
    {"oneFrame.mov", 0, 1, 24.0, nullptr},
    {"long.mkv", 0, 480, 24.0, nullptr},
    {"sound.mov", 0, 25, 25.0, nullptr},
    {"fragmented.mp4", 0, 25, 25.0, nullptr},
    {"bare.h264", 0, 25, 25.0, nullptr},
    {"stream.ts", 0, 25, 25.0, nullptr},
    {"animated.gif", 0, 10, 10.0, nullptr},
    {"list.m3u8", 0, 25, 25.0, nullptr},
};

class MovieRangeTest : public testing::TestWithParam<RangeCase> {};

TEST_P(MovieRangeTest, IsInFramesAtTheExactRateFromTheTimecodeOn) {
    RangeCase const& row = GetParam();
    Document const document = read(medium(row.file));
    for (std::string const range : {"/source_range/", "/media_reference/available_range/"}) {
        EXPECT_EQ(document.number(range + "start_time/value"), row.start);
        EXPECT_EQ(document.number(range + "start_time/rate"), row.rate);
        EXPECT_EQ(document.number(range + "duration/value"), row.frames);
        EXPECT_EQ(document.number(range + "duration/rate"), row.rate);
    }
    EXPECT_EQ(document.format("frame_rate").GetDouble(), row.rate);
    EXPECT_EQ(document.extra("Timecode/Start"), row.timecode ? row.timecode : "(missing)");
    rapidjson::Value const& start = document.root()["global_start_time"];
    EXPECT_EQ(start["value"].GetDouble(), row.start);
    EXPECT_EQ(start["rate"].GetDouble(), row.rate);
}

INSTANTIATE_TEST_SUITE_P(Media, MovieRangeTest, testing::ValuesIn(RANGES));

struct PictureCase {
    char const* file;
    int width, height;
    char const* dataType;
    int channels;
    double pixelAspect;
    char const* codec;
    double boundsWidth, boundsHeight; // within 1920 by 1080
};

void PrintTo(PictureCase const& row, std::ostream* out) { *out << row.file; }

std::vector<PictureCase> const PICTURES = {
    {"rate24.mov", 64, 36, "uint8", 3, 1.0, "mpeg4", 1920, 1080},
    {"anamorphic.mov", 72, 48, "uint8", 3, 16.0 / 11.0, "mpeg4", 1920, 880},
    {"rotated.mov", 64, 36, "uint8", 3, 1.0, "mpeg4", 607.5, 1080},
    {"upsideDown.mov", 64, 36, "uint8", 3, 1.0, "mpeg4", 1920, 1080},
    {"sound.mov", 64, 36, "uint8", 3, 1.0, "h264", 1920, 1080},
    {"ten.mov", 64, 36, "uint16", 3, 1.0, "prores", 1920, 1080},
    {"gray.mkv", 64, 36, "uint8", 1, 1.0, "ffv1", 1920, 1080},
    {"alpha.mov", 64, 36, "uint8", 4, 1.0, "png", 1920, 1080},
    {"still.png", 64, 36, "uint8", 3, 1.0, "png", 1920, 1080},
    {"still.tga", 64, 36, "uint8", 4, 1.0, "targa", 1920, 1080},
    {"odd %03d name.png", 64, 36, "uint8", 3, 1.0, "png", 1920, 1080},
    {"sequences/film.%02d.dpx", 64, 36, "uint16", 3, 1.0, "dpx", 1920, 1080},
    {"sequences/half.%03d.exr", 64, 36, "half", 3, 1.0, "exr", 1920, 1080},
    {"sequences/float.%02d.exr", 64, 36, "float", 4, 1.0, "exr", 1920, 1080},
};

class PictureTest : public testing::TestWithParam<PictureCase> {};

TEST_P(PictureTest, IsDescribed) {
    PictureCase const& row = GetParam();
    Document const document = read(medium(row.file));
    EXPECT_EQ(document.format("pixel_resolution/0").GetInt(), row.width);
    EXPECT_EQ(document.format("pixel_resolution/1").GetInt(), row.height);
    EXPECT_STREQ(document.format("data_type").GetString(), row.dataType);
    EXPECT_EQ(document.format("num_video_channels").GetInt(), row.channels);
    EXPECT_EQ(document.format("pixel_aspect").GetDouble(), row.pixelAspect);
    EXPECT_STREQ(document.format("video_codec").GetString(), row.codec);
    EXPECT_EQ(document.format("bounds/center/0").GetDouble(), 10.0);
    EXPECT_EQ(document.format("bounds/center/1").GetDouble(), 20.0);
    EXPECT_EQ(document.format("bounds/size/0").GetDouble(), row.boundsWidth);
    EXPECT_EQ(document.format("bounds/size/1").GetDouble(), row.boundsHeight);
}

INSTANTIATE_TEST_SUITE_P(Media, PictureTest, testing::ValuesIn(PICTURES));

TEST(FFmpegMediaMetadataReaderTest, ConstructingItRegistersItUntilItsEnd) {
    EXPECT_FALSE(MediaMetadata::getMediaMetadataReader());
    {
        SharedPtr<FFmpegMediaMetadataReader> const reader(new FFmpegMediaMetadataReader);
        EXPECT_EQ(MediaMetadata::getMediaMetadataReader().get(), reader.get());
        String document;
        EXPECT_TRUE(
            MediaMetadata::getMediaMetadata(medium("rate24.mov").c_str(), canvas(), asked(), document));
        EXPECT_TRUE(Document(document.c_str()).clip());
    }
    EXPECT_FALSE(MediaMetadata::getMediaMetadataReader());
}

TEST(FFmpegMediaMetadataReaderTest, TellsOfTheSoundOfAMovie) {
    Document const document = read(medium("sound.mov"));
    EXPECT_TRUE(document.format("has_audio").GetBool());
    EXPECT_EQ(document.format("audio_sample_rate").GetDouble(), 48000.0);
    EXPECT_EQ(document.format("num_audio_channels").GetInt(), 2);
    EXPECT_STREQ(document.format("audio_codec").GetString(), "aac");
}

TEST(FFmpegMediaMetadataReaderTest, LeavesTheSoundOfASilentMovieAtItsDefaults) {
    Document const document = read(medium("rate24.mov"));
    EXPECT_FALSE(document.format("has_audio").GetBool());
    EXPECT_EQ(document.format("audio_sample_rate").GetDouble(), 0.0);
    EXPECT_EQ(document.format("num_audio_channels").GetInt(), -1);
    EXPECT_STREQ(document.format("audio_codec").GetString(), "Unknown");
}

TEST(FFmpegMediaMetadataReaderTest, SoundAloneHasTheRateOfTheTimeAskedForAndTheReferenceBounds) {
    for (std::string const file : {"sound.wav", "cover.flac"}) {
        Document const document = read(medium(file), canvas(), Time(7, Rational(50, 2)));
        EXPECT_EQ(document.start(), 0.0);
        EXPECT_EQ(document.duration(), 38.0) << "37.5 frames"; // halves go up
        EXPECT_EQ(document.rate(), 25.0);
        EXPECT_EQ(document.format("frame_rate").GetDouble(), 0.0);
        EXPECT_EQ(document.format("pixel_resolution/0").GetInt(), -1);
        EXPECT_EQ(document.format("num_video_channels").GetInt(), -1);
        EXPECT_EQ(document.format("pixel_aspect").GetDouble(), 0.0);
        EXPECT_STREQ(document.format("video_codec").GetString(), "Unknown");
        EXPECT_STREQ(document.format("data_type").GetString(), "");
        EXPECT_TRUE(document.format("has_audio").GetBool());
        EXPECT_EQ(document.format("bounds/size/0").GetDouble(), 1920.0);
        EXPECT_EQ(document.format("bounds/size/1").GetDouble(), 1080.0);
        EXPECT_STREQ(document.root()["tracks"]["children"][0]["kind"].GetString(), "Audio");
    }
}

TEST(FFmpegMediaMetadataReaderTest, AMovieStandsInAVideoTrackUnderItsFileName) {
    Document const document = read(medium("sound.mov"));
    EXPECT_STREQ(document.root()["tracks"]["children"][0]["kind"].GetString(), "Video");
    EXPECT_STREQ(document.root()["name"].GetString(), "sound.mov");
    EXPECT_STREQ(document.at("/name").GetString(), "sound.mov");
}

TEST(FFmpegMediaMetadataReaderTest, KeepsThePathAsItWasGiven) {
    for (std::string const& path :
         {medium("rate24.mov"), medium("./rate24.mov"), "file:" + medium("rate24.mov"),
          "file://" + medium("rate24.mov"), "FILE://localhost" + medium("rate24.mov"),
          "file://" + medium("r%61te24%2Emov"), medium("sequences/shot.%04d.png")}) {
        Document const document = read(path);
        EXPECT_EQ(document.at("/media_reference/target_url").GetString(), path);
    }
}

TEST(FFmpegMediaMetadataReaderTest, NamesAClipByTheFileBehindAUrl) {
    EXPECT_STREQ(read("file://" + medium("r%61te24%2Emov")).at("/name").GetString(), "rate24.mov");
    EXPECT_STREQ(read("file://" + medium("sequences/shot.%04d.png")).at("/name").GetString(),
                 "shot.%04d.png");
    EXPECT_STREQ(read("file://" + medium("sequences/shot.%2504d.png")).at("/name").GetString(),
                 "shot.%04d.png");
}

TEST(FFmpegMediaMetadataReaderTest, TellsTheSizeOfTheFile) {
    EXPECT_GT(read(medium("rate24.mov")).format("file_size_in_bytes").GetInt(), 1000);
}

TEST(FFmpegMediaMetadataReaderTest, TellsTheTagsOfTheContainer) {
    EXPECT_EQ(read(medium("sound.mov")).extra("title"), "Überblick \"1\"");
    EXPECT_EQ(read(medium("broadcast.mxf")).extra("company_name"), "FFmpeg");
}

TEST(FFmpegMediaMetadataReaderTest, ASequenceLastsFromItsFirstFrameToItsLastWithWhatIsMissingBetween) {
    Document const document =
        read(medium("sequences/shot.%04d.png"), canvas(), Time(0, Rational(30000, 1001)));
    EXPECT_EQ(document.start(), 1001.0);
    EXPECT_EQ(document.duration(), 5.0);
    EXPECT_EQ(document.rate(), 30000.0 / 1001.0);
    EXPECT_EQ(document.format("frame_rate").GetDouble(), 30000.0 / 1001.0);
    EXPECT_EQ(document.extra("Timecode/Start"), "(missing)");
}

TEST(FFmpegMediaMetadataReaderTest, ASequenceMayOutgrowItsPadding) {
    Document const document = read(medium("sequences/float.%02d.exr"));
    EXPECT_EQ(document.start(), 99.0);
    EXPECT_EQ(document.duration(), 3.0);
}

TEST(FFmpegMediaMetadataReaderTest, FindsAMediumWhoseNameLooksLikeThatAskedFor) {
    // On the disk the accented letter is one character, and is asked for as two.
    Damage::Folder const folder;
    for (std::string const number : {"1001", "1002"}) {
        (void)folder.write("\xc3\xa9." + number + ".png", Damage::load(medium("sequences/shot.1002.png")));
    }
    std::string const name = "e\xcc\x81.%04d.png";
    Document const sequence = read(folder.path(name));
    EXPECT_EQ(sequence.start(), 1001.0);
    EXPECT_EQ(sequence.duration(), 2.0);
    EXPECT_EQ(sequence.at("/name").GetString(), name);
    EXPECT_EQ(sequence.at("/media_reference/target_url").GetString(), folder.path(name));
    Document const image = read("file://" + folder.path("e%CC%81.1002.png"));
    EXPECT_EQ(image.duration(), 1.0);
    EXPECT_STREQ(image.at("/name").GetString(), "e\xcc\x81.1002.png");
    EXPECT_EQ(Reader().statusOf(folder.path("e.1002.png")), Status::kFileNotFound);
}

TEST(FFmpegMediaMetadataReaderTest, OneImageLastsOneFrame) {
    for (std::string const file :
         {"still.png", "still.tga", "odd %03d name.png", "sequences/shot.1002.png"}) {
        Document const document = read(medium(file), canvas(), Time(0, Rational(25, 1)));
        EXPECT_EQ(document.start(), 0.0);
        EXPECT_EQ(document.duration(), 1.0);
        EXPECT_EQ(document.rate(), 25.0);
    }
}

TEST(FFmpegMediaMetadataReaderTest, AnUnusableRateGivesWayTo24) {
    for (Rational const& rate : {Rational(), Rational(0, 1), Rational(-24, 1), Rational(25, 0)}) {
        EXPECT_EQ(read(medium("still.png"), canvas(), Time(0, rate)).rate(), 24.0);
    }
}

TEST(FFmpegMediaMetadataReaderTest, ReferenceBoundsThatAreNotValidGiveAHeightOfOne) {
    double const infinity = std::numeric_limits<double>::infinity();
    for (Bounds const& bounds :
         {Bounds(), Bounds(0, 0, -1, 1), Bounds(0, 0, infinity, 1), Bounds(infinity, 0, 1, -infinity)}) {
        Document const document = read(medium("rate24.mov"), bounds);
        EXPECT_EQ(document.format("bounds/center/0").GetDouble(), 0.0);
        EXPECT_EQ(document.format("bounds/size/0").GetDouble(), 64.0 / 36.0);
        EXPECT_EQ(document.format("bounds/size/1").GetDouble(), 1.0);
    }
}

TEST(FFmpegMediaMetadataReaderTest, OptionsComeBackAsTheyWereSet) {
    Reader const reader;
    EXPECT_TRUE(reader->getAllowedProtocols().empty());
    EXPECT_EQ(reader->getTimeLimit(), 10.0);
    EXPECT_FALSE(reader->isLogging());
    reader->setAllowedProtocols("http,tcp");
    reader->setTimeLimit(0.5);
    reader->setLogging(true);
    EXPECT_STREQ(reader->getAllowedProtocols().c_str(), "http,tcp");
    EXPECT_EQ(reader->getTimeLimit(), 0.5);
    EXPECT_TRUE(reader->isLogging());
}

TEST(FFmpegMediaMetadataReaderTest, FFmpegsLogIsSilentUnlessAskedFor) {
    Damage::Folder const folder;
    std::string const cut = folder.write("cut.mov", Damage::load(medium("tableLast.mov")).substr(0, 9999));
    for (bool const logging : {false, true}) {
        Reader const reader;
        reader->setLogging(logging);
        testing::internal::CaptureStderr();
        EXPECT_EQ(reader.statusOf(cut), Status::kErrorOpeningMediaFile);
        EXPECT_EQ(testing::internal::GetCapturedStderr().empty(), !logging);
    }
}

TEST(FFmpegMediaMetadataReaderTest, ReadsManyAtOnceForTheCore) {
    Reader const reader;
    Vector<String> paths;
    for (std::string const file : {"rate24.mov", "sound.wav", "none.mov", "sequences/shot.%04d.png"}) {
        paths.push_back(medium(file).c_str());
    }
    Vector<String> documents;
    EXPECT_EQ(MediaMetadata::getMultipleMediaMetadata(paths, canvas(), asked(), documents),
              Status::kFileNotFound);
    EXPECT_EQ(documents.size(), 3U);
}

} // namespace
