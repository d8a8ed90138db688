// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include <orlMediaMetadataReader.h>
#include <orlPlatform.h>

#include "support/Seed.h"
#include "support/TimeLimit.h"
#include "support/TimelineRead.h"
#include "support/orlFakeReader.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <cmath>
#include <cstddef>
#include <future>
#include <optional>
#include <random>
#include <stdexcept>
#include <string>
#include <system_error>
#include <thread>
#include <utility>
#include <vector>

// In libc++ a task whose thread cannot be started is waited for all the same, for ever.
#ifdef __GLIBCXX__
#define SKIP_WITHOUT_SAFE_START() static_cast<void>(0)
#else
#define SKIP_WITHOUT_SAFE_START() GTEST_SKIP() << "this standard library waits for a thread that never was"
#endif

namespace {

using namespace ORL_0_81;
using namespace orlTest;
using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::UnorderedElementsAreArray;

Bounds const REFERENCE(0.5, -0.25, 4.0, 2.0);
std::array<double, 4> const REFERENCE_BOUNDS{0.5, -0.25, 4.0, 2.0};
std::array<double, 4> const NO_BOUNDS{0.0, 0.0, 0.0, 0.0};

Time const TIME(48, Rational(24, 1));
Time const UNDEFINED(Time::getUndefinedNbTicks(), Rational(24, 1));

/// A start of a timeline that stands, for tests that look at the clips alone.
std::string const OWN_START = timeText("5.0", "24.0");

TimeRead at(double value, double rate) { return {value, rate}; }

std::string valueOnly(std::string const& value) {
    return R"({"OTIO_SCHEMA":"RationalTime.1","value":)" + value + "}";
}

std::string rateOnly(std::string const& rate) {
    return R"({"OTIO_SCHEMA":"RationalTime.1","rate":)" + rate + "}";
}

char const* const TIMECODE = R"({"Timecode/Start":"01:00:00:00"})";

/// A medium that can be told from others by all that it says: medium 3 starts at 3000 and lasts 30 ticks at
/// 24, is 300 x 30 pixels large and has the bounds 3.25, 3.75, 3, 3.5.
ClipText medium(int number, std::string const& extraData = "{}") {
    std::string const n = std::to_string(number);
    ClipText clip;
    clip.name = quoted("medium " + n);
    clip.availableRange = rangeText(timeText(n + "000.0", "24.0"), timeText(n + "0.0", "24.0"));
    clip.center = "[" + n + ".25," + n + ".75]";
    clip.size = "[" + n + ".0," + n + ".5]";
    clip.pixelResolution = "[" + n + "00," + n + "0]";
    clip.extraData = extraData;
    return clip;
}

std::array<double, 4> boundsOf(int number) {
    return {number + 0.25, number + 0.75, number + 0.0, number + 0.5};
}

/// A medium whose available range is at one's choice.
ClipText mediumOf(std::string const& start, std::string const& duration) {
    ClipText clip = medium(1);
    clip.availableRange = rangeText(start, duration);
    return clip;
}

ClipText clipOf(std::string const& targetUrl) {
    ClipText clip;
    clip.name = quoted("clip");
    clip.targetUrl = quoted(targetUrl);
    return clip;
}

ClipText clipOfMovie(std::string const& uploadedMovie) {
    ClipText clip = clipOf("");
    clip.mp4 = quoted(uploadedMovie);
    return clip;
}

Status sanitize(std::string const& document, String& sanitized, Time const& time = TIME) {
    return MediaMetadata::sanitizeOTIOMetadata(String(document.data(), document.size()), sanitized, REFERENCE,
                                               time);
}

/// The text of a document that has to be taken.
std::string sanitized(std::string const& document, Time const& time = TIME) {
    String result("untouched");
    EXPECT_EQ(sanitize(document, result, time).get(), Status::kSuccess);
    return result.asChar();
}

ClipRead sanitizedClip(ClipText const& clip, Time const& time = TIME) {
    TimelineRead const timeline = readTimeline(sanitized(timelineOfClips({clip}, OWN_START), time));
    EXPECT_EQ(timeline.clips.size(), 1U);
    return timeline.clips.at(0);
}

class MediaMetadataSanitize : public WithReader {};

// The document.

TEST(MediaMetadataSanitizeWithoutReader, AnEmptyDocumentIsAReadErrorAndLeavesTheOutput) {
    String result("untouched");
    EXPECT_EQ(sanitize("", result).get(), 517);
    EXPECT_EQ(result, "untouched");
}

TEST(MediaMetadataSanitizeWithoutReader, TextThatDoesNotParseIsAReadErrorAndLeavesTheOutput) {
    std::string const deep = R"({"a":)" + repeated("[", 1000) + repeated("]", 1000) + "}";
    for (std::string const& text : {std::string("x"), std::string("{"), std::string(" "), std::string("{} x"),
                                    std::string("{}{}"), std::string("{'a':1}"), std::string(1, '\0'),
                                    std::string("\0{}", 3), repeated("[", 100000), deep}) {
        String result("untouched");
        EXPECT_EQ(sanitize(text, result).get(), 517) << text.substr(0, 20);
        EXPECT_EQ(result, "untouched");
    }
}

TEST(MediaMetadataSanitizeWithoutReader, ADocumentWithoutATimelineBecomesAnEmptyObject) {
    std::string const deepest = R"({"a":)" + repeated("[", 999) + repeated("]", 999) + "}";
    for (std::string const& text :
         {std::string("{}"), std::string("[]"), std::string("null"), std::string("3"), std::string("\"x\""),
          std::string(R"({"OTIO_SCHEMA":"Movie.1"})"), std::string(R"({"OTIO_SCHEMA":"Timeline.2"})"),
          std::string(R"({"timeline":{}})"), std::string(R"({"timeline":[]})"), deepest}) {
        EXPECT_EQ(sanitized(text), "{}") << text.substr(0, 40);
    }
}

TEST(MediaMetadataSanitizeWithoutReader, ADocumentEndsAtItsFirstNul) {
    EXPECT_EQ(sanitized(std::string("{}\0rubbish", 10)), "{}");
}

TEST(MediaMetadataSanitizeWithoutReader, TheTimelineMayStandUnderAKeyOfItsOwn) {
    std::string const timeline = timelineOfClips({clipOf("a")}, OWN_START);
    EXPECT_EQ(sanitized(wrapped(timeline)), sanitized(timeline));
    EXPECT_EQ(sanitized(R"({"other":1,"timeline":)" + timeline + R"(,"OTIO_SCHEMA":"Timeline.1"})"),
              sanitized(timeline));
    EXPECT_EQ(sanitized(R"({"timeline":7,)" + timeline.substr(1)), sanitized(timeline))
        << "what is no object under the key is not looked at";
}

TEST(MediaMetadataSanitizeWithoutReader, TheOutputMayBeTheInput) {
    String text(timelineOf({}, OWN_START).c_str());
    EXPECT_EQ(MediaMetadata::sanitizeOTIOMetadata(text, text, REFERENCE, TIME).get(), Status::kSuccess);
    EXPECT_EQ(text.asChar(), timelineOf({}, OWN_START));
}

TEST(MediaMetadataSanitizeWithoutReader, TheDocumentComesBackWithDefaultsFilledIn) {
    ClipText described = medium(7);
    described.targetUrl = quoted("a");
    ClipText expected = clipOf("b");
    expected.center = "[0.5,-0.25]";
    expected.size = "[4.0,2.0]";
    EXPECT_EQ(sanitized(timelineOfClips({described, clipOf("b")})),
              timelineOfClips({described, expected}, timeText("48.0", "24.0")));
}

TEST(MediaMetadataSanitizeWithoutReader, EffectsGapsAndTracksStay) {
    ClipText clip = clipOf("a");
    clip.effects = R"([{"OTIO_SCHEMA":"Comp.1","blend_mode":"over","opacity":0.5,)" + kPlainEffect + "}]";
    clip.center = "[0.5,-0.25]";
    clip.size = "[4.0,2.0]";
    std::string const document =
        timelineOf({namedTrack("V", {gapText("[]"), clip.text(), gapText("[]")}, R"(,"kind":"Video")"),
                    namedTrack("A", {}, R"(,"kind":"Audio")"), namedTrack("", {clip.text()})},
                   OWN_START, "cut");
    EXPECT_EQ(sanitized(document), document);
}

TEST_F(MediaMetadataSanitize, ADocumentThatCannotBeReadAsksNobody) {
    String result("untouched");
    std::string const document = timelineOfClips({clipOf("a")});
    EXPECT_EQ(sanitize(document + "x", result).get(), 517);
    EXPECT_EQ(result, "untouched");
    EXPECT_TRUE(m_reader->questions().empty());
}

// Which media are read.

struct Urls {
    char const* name;
    char const* target;
    char const* frames;
    char const* movie;
    char const* uploaded;
    std::vector<std::string> asked; ///< when none can be read
};

std::vector<Urls> const URLS = {
    {"all four, in this order", "t", "f", "m", "u", {"t", "f", "m", "u"}},
    {"the order is not that of the texts", "4", "3", "2", "1", {"4", "3", "2", "1"}},
    {"none", "", "", "", "", {}},
    {"the target alone", "t", "", "", "", {"t"}},
    {"the frames alone", "", "f", "", "", {"f"}},
    {"the movie alone", "", "", "m", "", {"m"}},
    {"the uploaded movie alone", "", "", "", "u", {"u"}},
    {"empty ones are passed over", "t", "", "m", "", {"t", "m"}},
    {"frames that are the target", "t", "t", "m", "u", {"t", "m", "u"}},
    {"a movie that is the target", "t", "f", "t", "u", {"t", "f", "u"}},
    {"an uploaded movie that is the target", "t", "f", "m", "t", {"t", "f", "m"}},
    {"all are the target", "t", "t", "t", "t", {"t"}},
    {"the others are not compared with each other", "t", "x", "x", "x", {"t", "x", "x", "x"}},
    {"nor without a target", "", "x", "", "x", {"x", "x"}},
    {"texts that differ in case", "t", "T", "", "", {"t", "T"}},
};

ClipText clipOf(Urls const& urls) {
    ClipText clip = clipOf(urls.target);
    clip.file = quoted(urls.frames);
    clip.movie = quoted(urls.movie);
    clip.mp4 = quoted(urls.uploaded);
    return clip;
}

TEST_F(MediaMetadataSanitize, AClipsMediaAreTriedInTheOrderOfTheList) {
    std::size_t before = 0;
    for (Urls const& urls : URLS) {
        sanitizedClip(clipOf(urls));
        std::vector<std::string> const paths = m_reader->paths();
        std::vector<std::string> const asked(paths.begin() + static_cast<std::ptrdiff_t>(before),
                                             paths.end());
        EXPECT_EQ(asked, urls.asked) << urls.name;
        before = paths.size();
    }
}

TEST_F(MediaMetadataSanitize, AllThreeGenerationsOfClipsNameTheirMedia) {
    sanitized(timelineOf(
        {namedTrack("", {R"({"OTIO_SCHEMA":"Clip.1","media_reference":{"target_url":"t","metadata":{"tr":{
            "entity_metadata":{"tr_uploaded_movie_mp4":{"url":"u"},"tr_path_to_frames":"f",
            "tr_path_to_movie":"m"}}}}})"})},
        OWN_START));
    sanitized(timelineOf(
        {namedTrack("", {R"({"OTIO_SCHEMA":"Clip.1","media_reference":{"target_url":"T"},"metadata":{
            "paths":{"mp4":"U","file":"F","movie":"M"}}})"})},
        OWN_START));
    EXPECT_THAT(m_reader->paths(), ElementsAre("t", "f", "m", "u", "T", "F", "M", "U"));
}

TEST_F(MediaMetadataSanitize, EachReadGetsTheReferenceBoundsAndTheTimeInTheCLocale) {
    sanitizedClip(clipOf(URLS[0]), Time(-3, Rational(60000, 1001)));
    std::vector<Question> const questions = m_reader->questions();
    ASSERT_EQ(questions.size(), 4U);
    for (Question const& question : questions) {
        EXPECT_EQ(question.bounds, REFERENCE_BOUNDS);
        EXPECT_EQ(question.ticks, 5) << "the document's start";
        EXPECT_EQ(question.numerator, 24000);
        EXPECT_EQ(question.denominator, 1000U);
        EXPECT_EQ(question.metadata, "");
        EXPECT_EQ(question.locale, "C");
    }
}

// What is taken from which medium.

/// Which media can be read, and whose pieces the clip has in the end. Media are told by their numbers; 0 is
/// none of them.
struct Outcome {
    char const* name;
    Urls urls; ///< with what is asked in this case
    std::vector<std::pair<char const*, ClipText>> readable;
    int bounds; ///< 0: the reference bounds
    int duration;
    int start;
    int format; ///< 0: the clip's own
};

ClipText coded(int number) { return medium(number, TIMECODE); }

std::vector<Outcome> const OUTCOMES = {
    {"none", {"", "t", "f", "m", "u", {"t", "f", "m", "u"}}, {}, 0, 0, 0, 0},
    {"the target", {"", "t", "f", "m", "u", {"t"}}, {{"t", medium(1)}, {"f", medium(2)}}, 1, 1, 1, 1},
    {"the target, with a timecode", {"", "t", "f", "m", "u", {"t"}}, {{"t", coded(1)}}, 1, 1, 1, 1},
    {"the target without any other", {"", "t", "", "", "", {"t"}}, {{"t", medium(1)}}, 1, 1, 1, 1},
    {"only the frames", {"", "t", "f", "m", "u", {"t", "f"}}, {{"f", medium(2)}}, 2, 2, 2, 0},
    {"only the movie's path", {"", "t", "f", "m", "u", {"t", "f", "m"}}, {{"m", medium(3)}}, 3, 3, 3, 0},
    {"only the uploaded movie, without a timecode",
     {"", "t", "f", "m", "u", {"t", "f", "m", "u"}},
     {{"u", medium(4)}},
     4,
     4,
     0,
     0},
    {"only the uploaded movie, with a timecode",
     {"", "t", "f", "m", "u", {"t", "f", "m", "u"}},
     {{"u", coded(4)}},
     4,
     4,
     4,
     0},
    {"the uploaded movie is not read after another",
     {"", "t", "f", "", "u", {"t", "f"}},
     {{"f", medium(2)}, {"u", coded(4)}},
     2,
     2,
     2,
     0},
    {"the target is the uploaded movie, with a timecode",
     {"", "t", "f", "m", "t", {"t"}},
     {{"t", coded(1)}, {"f", medium(2)}},
     1,
     1,
     1,
     1},
    {"the target is the uploaded movie, without a timecode, then the frames",
     {"", "t", "f", "m", "t", {"t", "f"}},
     {{"t", medium(1)}, {"f", medium(2)}, {"m", medium(3)}},
     1,
     2,
     2,
     1},
    {"the same where the frames have a timecode, which does not count",
     {"", "t", "f", "m", "t", {"t", "f"}},
     {{"t", medium(1)}, {"f", coded(2)}},
     1,
     2,
     2,
     1},
    {"the same where the frames sort before the target",
     {"", "t", "a", "m", "t", {"t", "a"}},
     {{"t", medium(1)}, {"a", medium(2)}},
     1,
     2,
     2,
     1},
    {"the target is the uploaded movie, without a timecode, then the movie's path",
     {"", "t", "f", "m", "t", {"t", "f", "m"}},
     {{"t", medium(1)}, {"m", medium(3)}},
     1,
     3,
     3,
     1},
    {"the target is the uploaded movie, without a timecode, and nothing else can be read",
     {"", "t", "f", "m", "t", {"t", "f", "m"}},
     {{"t", medium(1)}},
     1,
     1,
     0,
     1},
    {"the frames are the uploaded movie, without a timecode, then the movie's path",
     {"", "t", "u", "m", "u", {"t", "u", "m"}},
     {{"u", medium(4)}, {"m", medium(3)}},
     4,
     3,
     3,
     0},
    {"the frames are the uploaded movie, without a timecode, and it is read again",
     {"", "t", "u", "m", "u", {"t", "u", "m", "u"}},
     {{"u", medium(4)}},
     4,
     4,
     0,
     0},
    {"the frames are the uploaded movie, with a timecode",
     {"", "t", "u", "m", "u", {"t", "u"}},
     {{"u", coded(4)}, {"m", medium(3)}},
     4,
     4,
     4,
     0},
    {"no target", {"", "", "f", "", "u", {"f"}}, {{"f", medium(2)}}, 2, 2, 2, 0},
};

TEST_F(MediaMetadataSanitize, EachOutcomeOfTheReadsGivesTheClipItsPieces) {
    std::size_t before = 0;
    for (Outcome const& outcome : OUTCOMES) {
        SCOPED_TRACE(outcome.name);
        for (char const* const path : {"t", "f", "m", "u", "a"}) {
            m_reader->on(path, Answer::failure(Status::kErrorOpeningMediaFile));
        }
        for (auto const& [path, text] : outcome.readable) {
            m_reader->on(path, Answer::document(documentOf(text)));
        }
        ClipText clip = clipOf(outcome.urls);
        clip.pixelResolution = "[7,8]";
        ClipRead const read = sanitizedClip(clip);
        EXPECT_EQ(read.bounds, outcome.bounds == 0 ? REFERENCE_BOUNDS : boundsOf(outcome.bounds));
        TimeRead const start = outcome.start == 0 ? kNoTime : at(outcome.start * 1000.0, 24.0);
        TimeRead const duration = outcome.duration == 0 ? kNoTime : at(outcome.duration * 10.0, 24.0);
        EXPECT_EQ(read.availableStart, start);
        EXPECT_EQ(read.sourceStart, start);
        EXPECT_EQ(read.availableDuration, duration);
        EXPECT_EQ(read.sourceDuration, duration);
        EXPECT_EQ(read.pixelWidth, outcome.format == 0 ? 7 : outcome.format * 100);
        std::vector<std::string> const paths = m_reader->paths();
        EXPECT_EQ(std::vector<std::string>(paths.begin() + static_cast<std::ptrdiff_t>(before), paths.end()),
                  outcome.urls.asked);
        before = paths.size();
    }
}

TEST_F(MediaMetadataSanitize, ASecondReadOfTheUploadedMovieReplacesTheFirst) {
    m_reader->on("u", {Answer::document(documentOf(medium(1))), Answer::document(documentOf(coded(2)))});
    ClipText clip = clipOfMovie("u");
    clip.file = quoted("u");
    ClipRead const read = sanitizedClip(clip);
    EXPECT_THAT(m_reader->paths(), ElementsAre("u", "u"));
    EXPECT_EQ(read.bounds, boundsOf(2));
    EXPECT_EQ(read.sourceStart, at(2000.0, 24.0));
}

struct TimecodeCase {
    char const* name;
    std::string text;
    bool start;
};

std::vector<TimecodeCase> timecodeCases() {
    ClipText const plain = medium(1);
    return {
        {"the key alone counts", documentOf(medium(1, R"({"Timecode/Start":""})")), true},
        {"behind other keys", documentOf(medium(1, R"({"a":"b","Timecode/Start":"x"})")), true},
        {"twice", documentOf(medium(1, R"({"Timecode/Start":"x","Timecode/Start":"y"})")), true},
        {"in another case", documentOf(medium(1, R"({"timecode/start":"x"})")), false},
        {"with a blank", documentOf(medium(1, R"({"Timecode/Start ":"x"})")), false},
        {"longer", documentOf(medium(1, R"({"Timecode/StartFrame":"x"})")), false},
        {"shorter", documentOf(medium(1, R"({"Timecode":"x"})")), false},
        {"as a value", documentOf(medium(1, R"({"x":"Timecode/Start"})")), false},
        {"up to a NUL", documentOf(medium(1, R"({"Timecode/Start\u0000x":"x"})")), true},
        {"of no text", documentOf(medium(1, R"({"Timecode/Start":1})")), false},
        {"only in the second clip", timelineOfClips({plain, coded(2)}), false},
        {"in the first of two clips", timelineOfClips({coded(1), plain}), true},
        {"in a second track", timelineOf({namedTrack("", {}), namedTrack("", {coded(1).text()})}), true},
        {"under the key of a wrapper", wrapped(documentOf(coded(1))), true},
    };
}

TEST_F(MediaMetadataSanitize, TheUploadedMoviesStartCountsOnlyWithATimecode) {
    for (TimecodeCase const& timecode : timecodeCases()) {
        m_reader->on("u", Answer::document(timecode.text));
        ClipRead const read = sanitizedClip(clipOfMovie("u"));
        EXPECT_EQ(read.sourceStart, timecode.start ? at(1000.0, 24.0) : kNoTime) << timecode.name;
        EXPECT_EQ(read.availableStart, timecode.start ? at(1000.0, 24.0) : kNoTime) << timecode.name;
        EXPECT_EQ(read.sourceDuration, at(10.0, 24.0)) << timecode.name;
    }
}

TEST_F(MediaMetadataSanitize, ATimecodeOfAnyOtherMediumIsNotAskedFor) {
    m_reader->on("f", Answer::document(documentOf(medium(2, "{}"))));
    ClipText clip = clipOf("");
    clip.file = quoted("f");
    EXPECT_EQ(sanitizedClip(clip).sourceStart, at(2000.0, 24.0));
}

// Bounds.

struct Size {
    char const* text;
    bool counts;
};

TEST_F(MediaMetadataSanitize, AClipHasBoundsWhenBothSizesArePositive) {
    m_reader->on("a", Answer::document(documentOf(medium(3))));
    for (Size const& size : std::vector<Size>{{"[1.0,1.0]", true},
                                              {"[3e-16,3e-16]", true},
                                              {"[1.0,0.0]", false},
                                              {"[0.0,1.0]", false},
                                              {"[0.0,0.0]", false},
                                              {"[-1.0,1.0]", false},
                                              {"[1.0,-1.0]", false},
                                              {"[-1.0,-1.0]", false},
                                              {"[2e-16,1.0]", false},
                                              {"[1.0,2e-16]", false}}) {
        for (char const* const url : {"a", "unreadable"}) {
            ClipText clip = clipOf(url);
            clip.center = "[9.0,8.0]";
            clip.size = size.text;
            ClipRead const read = sanitizedClip(clip);
            if (size.counts) {
                EXPECT_EQ(read.bounds, readClip(parsedExactly(clip.text())).bounds) << size.text << url;
            } else {
                EXPECT_EQ(read.bounds, std::string(url) == "a" ? boundsOf(3) : REFERENCE_BOUNDS)
                    << size.text << url;
            }
        }
    }
}

TEST_F(MediaMetadataSanitize, BoundsOfAMediumAreTakenAsTheyAre) {
    ClipText source = medium(1);
    source.center = "[-1.5,2.0]";
    source.size = "[-3.0,0.0]";
    m_reader->on("a", Answer::document(documentOf(source)));
    EXPECT_THAT(sanitizedClip(clipOf("a")).bounds, ElementsAre(-1.5, 2.0, -3.0, 0.0));
}

// The description of the medium.

ClipText fullyDescribed() {
    ClipText clip = medium(1, R"({"b":"1","a":"2","b":"3"})");
    clip.dataType = quoted("half");
    clip.numVideoChannels = "4";
    clip.pixelAspect = "2.0";
    clip.frameRate = "23.5";
    clip.hasAudio = "true";
    clip.audioSampleRate = "48000.0";
    clip.numAudioChannels = "6";
    clip.videoCodec = quoted("video");
    clip.audioCodec = quoted("audio");
    clip.fileSize = "2147483647";
    return clip;
}

/// A clip with a range and bounds of its own, so that nothing but the description can change.
ClipText settled(ClipText clip, std::string const& targetUrl) {
    clip.name = quoted("settled");
    clip.targetUrl = quoted(targetUrl);
    clip.sourceRange = rangeText(timeText("1.0", "24.0"), timeText("2.0", "24.0"));
    clip.availableRange = rangeText(timeText("0.0", "24.0"), timeText("9.0", "24.0"));
    clip.center = "[9.0,8.0]";
    clip.size = "[7.0,6.0]";
    clip.entityId = "12";
    clip.entityType = quoted("Version");
    clip.id = quoted("uid");
    return clip;
}

TEST_F(MediaMetadataSanitize, TheTargetDescribesTheMedium) {
    m_reader->on("a", Answer::document(documentOf(fullyDescribed())));
    ClipText own = settled(medium(7, R"({"own":"x"})"), "a");
    own.frameRate = "12.5";
    ClipText const expected = settled(fullyDescribed(), "a");
    EXPECT_EQ(sanitized(timelineOfClips({own}, OWN_START)), timelineOfClips({expected}, OWN_START));
}

TEST_F(MediaMetadataSanitize, TheTargetsUnknownsReplaceWhatTheClipKnows) {
    m_reader->on("a", Answer::document(documentOf(ClipText())));
    ClipText const own = settled(fullyDescribed(), "a");
    ClipText const expected = settled(ClipText(), "a");
    EXPECT_EQ(sanitized(timelineOfClips({own}, OWN_START)), timelineOfClips({expected}, OWN_START));
}

TEST_F(MediaMetadataSanitize, OtherMediaDescribeNothing) {
    m_reader->on("f", Answer::document(documentOf(fullyDescribed())));
    ClipText own = settled(medium(7, R"({"own":"x"})"), "unreadable");
    own.file = quoted("f");
    EXPECT_EQ(sanitized(timelineOfClips({own}, OWN_START)), timelineOfClips({own}, OWN_START));
    EXPECT_THAT(m_reader->paths(), ElementsAre("unreadable", "f"));
}

TEST_F(MediaMetadataSanitize, TheFirstClipFoundCountsAndNoOther) {
    m_reader->on("a", Answer::document(
                          timelineOf({namedTrack("", {}), namedTrack("", {gapText("[]"), medium(1).text()}),
                                      namedTrack("", {medium(2).text()})})));
    ClipRead const read = sanitizedClip(clipOf("a"));
    EXPECT_EQ(read.bounds, boundsOf(1));
    EXPECT_EQ(read.pixelWidth, 100);
    EXPECT_EQ(read.sourceDuration, at(10.0, 24.0));
    EXPECT_EQ(read.name, "clip") << "the name is the clip's own";
}

TEST_F(MediaMetadataSanitize, TheEffectsOfAMediumAreNotTaken) {
    ClipText source = medium(1);
    source.effects = R"([{"OTIO_SCHEMA":"Comp.1","blend_mode":"over","opacity":0.5,)" + kPlainEffect + "}]";
    source.id = quoted("other");
    source.entityId = "5";
    source.mp4 = quoted("other");
    m_reader->on("a", Answer::document(documentOf(source)));
    ClipText const clip = settled(ClipText(), "a");
    ClipText expected = clip;
    expected.pixelResolution = "[100,10]";
    EXPECT_EQ(sanitized(timelineOfClips({clip}, OWN_START)), timelineOfClips({expected}, OWN_START));
}

TEST_F(MediaMetadataSanitize, ABareClipIsADocumentOfAMediumToo) {
    m_reader->on("a", Answer::document(medium(3).text()));
    EXPECT_EQ(sanitizedClip(clipOf("a")).bounds, boundsOf(3));
}

// Documents of media that do not serve.

std::vector<std::string> const USELESS = {
    "",
    "no JSON",
    "{",
    std::string(1, '\0'),
    "null",
    "3",
    "[]",
    "{}",
    R"({"timeline":{}})",
    timelineOf({}),
    timelineOf({namedTrack("", {gapText("[]")})}),
    documentOf(medium(1)) + "x",
    R"({"a":)" + repeated("[", 1000) + repeated("]", 1000) + "," + documentOf(medium(1)).substr(1),
    repeated("[", 50000),
};

TEST_F(MediaMetadataSanitize, AMediumWhoseDocumentIsUselessLeavesTheClipAsItIs) {
    ClipText const clip = clipOf("a");
    std::string const document = timelineOfClips({clip}, OWN_START);
    for (std::string const& useless : USELESS) {
        m_reader->on("a", Answer::document(useless));
        EXPECT_EQ(sanitized(document), document)
            << useless.substr(0, 40) << ": not even the reference bounds are filled in";
    }
}

TEST_F(MediaMetadataSanitize, TheDocumentOfAMediumEndsAtItsFirstNul) {
    m_reader->on("a", Answer::document(documentOf(medium(3)) + std::string("\0{", 2)));
    EXPECT_EQ(sanitizedClip(clipOf("a")).bounds, boundsOf(3));
}

TEST_F(MediaMetadataSanitize, AUselessDocumentOfTheUploadedMovieHasNoTimecode) {
    for (std::string const& useless : USELESS) {
        m_reader->on("a", Answer::document(useless));
        m_reader->on("b", Answer::document(documentOf(medium(2))));
        ClipText clip = clipOf("a");
        clip.mp4 = clip.targetUrl;
        clip.file = quoted("b");
        sanitizedClip(clip);
        EXPECT_EQ(m_reader->paths().back(), "b") << useless.substr(0, 40);
    }
}

/// The target is the uploaded movie without a timecode, so that both it and the frames are read. The two are
/// then looked at in the order of their texts.
struct Merge {
    char const* name;
    char const* target;
    char const* frames;
    std::string targetText;
    std::string framesText;
    int bounds; ///< of the target (1), or none (0)
    int times;  ///< of the frames (2), or none (0)
    int format; ///< of the target (1), or the clip's own (0)
};

TEST_F(MediaMetadataSanitize, MediaAreMergedInTheOrderOfTheirTextsUpToTheFirstUselessOne) {
    std::string const one = documentOf(medium(1));
    std::string const two = documentOf(medium(2));
    for (Merge const& merge : std::vector<Merge>{
             {"both good, target first", "a", "b", one, two, 1, 2, 1},
             {"both good, frames first", "b", "a", one, two, 1, 2, 1},
             {"target first, frames no JSON", "a", "b", one, "x", 1, 0, 1},
             {"target first, frames without a clip", "a", "b", one, "{}", 1, 0, 1},
             {"frames first and no JSON", "b", "a", one, "x", 0, 0, 0},
             {"frames first and without a clip", "b", "a", one, "{}", 0, 0, 0},
             {"frames first, target no JSON", "b", "a", "x", two, 0, 2, 0},
             {"frames first, target without a clip", "b", "a", "{}", two, 0, 2, 0},
             {"target first and no JSON", "a", "b", "x", two, 0, 0, 0},
             {"target first and without a clip", "a", "b", "{}", two, 0, 0, 0},
             {"capitals come first", "a", "B", "x", two, 0, 2, 0},
             {"a text comes before its continuations", "a", "aa", one, "x", 1, 0, 1},
             {"bytes count from 0 to 255", "z", "\xC3\xA9", one, "x", 1, 0, 1},
         }) {
        SCOPED_TRACE(merge.name);
        m_reader->on(merge.target, Answer::document(merge.targetText));
        m_reader->on(merge.frames, Answer::document(merge.framesText));
        ClipText clip = clipOf(merge.target);
        clip.mp4 = clip.targetUrl;
        clip.file = quoted(merge.frames);
        clip.pixelResolution = "[7,8]";
        ClipRead const read = sanitizedClip(clip);
        EXPECT_EQ(read.bounds, merge.bounds == 0 ? NO_BOUNDS : boundsOf(merge.bounds));
        EXPECT_EQ(read.sourceStart, merge.times == 0 ? kNoTime : at(2000.0, 24.0));
        EXPECT_EQ(read.availableDuration, merge.times == 0 ? kNoTime : at(20.0, 24.0));
        EXPECT_EQ(read.pixelWidth, merge.format == 0 ? 7 : 100);
    }
}

// The range rule.

struct Range {
    char const* name;
    bool trusted;
    std::string ownAvailableStart, ownAvailableDuration, ownSourceStart, ownSourceDuration;
    std::string start, duration; ///< the medium's available range
    TimeRead availableStart, availableDuration, sourceStart, sourceDuration;
};

std::string t(std::string const& value, std::string const& rate) { return timeText(value, rate); }

std::string const U = kUndefinedTime;

std::vector<Range> const RANGES = {
    {"an empty clip and a trusted start", true, U, U, U, U, t("1000.0", "24.0"), t("100.0", "24.0"),
     at(1000, 24), at(100, 24), at(1000, 24), at(100, 24)},
    {"an empty clip without a trusted start", false, U, U, U, U, t("1000.0", "24.0"), t("100.0", "24.0"),
     kNoTime, at(100, 24), kNoTime, at(100, 24)},
    {"the clip's source start gives the rate", true, U, U, t("10.0", "25.0"), U, t("0.0", "50.0"),
     t("100.0", "50.0"), at(0, 25), at(50, 25), at(10, 25), at(50, 25)},
    {"the same without a trusted start", false, U, U, t("10.0", "25.0"), U, t("0.0", "50.0"),
     t("100.0", "50.0"), kNoTime, at(50, 25), at(10, 25), at(50, 25)},
    {"a source range at 24 and a medium at 48", true, U, U, t("12.0", "24.0"), t("48.0", "24.0"),
     t("96.0", "48.0"), t("480.0", "48.0"), at(48, 24), at(240, 24), at(12, 24), at(48, 24)},
    {"all four are the clip's own", true, t("1.0", "24.0"), t("2.0", "24.0"), t("3.0", "24.0"),
     t("4.0", "24.0"), t("1000.0", "24.0"), t("100.0", "24.0"), at(1, 24), at(2, 24), at(3, 24), at(4, 24)},
    {"own times at many rates", true, t("48.0", "48.0"), t("60.0", "12.0"), t("3.0", "24.0"),
     t("50.0", "100.0"), t("1000.0", "30.0"), t("100.0", "30.0"), at(24, 24), at(120, 24), at(3, 24),
     at(12, 24)},
    {"own times but the source start, at the medium's rate", true, t("48.0", "48.0"), t("60.0", "12.0"), U,
     t("50.0", "100.0"), t("30.0", "60.0"), t("100.0", "60.0"), at(60, 60), at(300, 60), at(30, 60),
     at(30, 60)},
    {"nothing is rounded", true, U, U, t("1.0", "25.0"), U, t("1.0", "24.0"), t("7.0", "24.0"),
     at(1.0 / 24.0 * 25.0, 25), at(7.0 / 24.0 * 25.0, 25), at(1.0 / 25.0 * 25.0, 25),
     at(7.0 / 24.0 * 25.0, 25)},
    {"a value of 0 is defined", true, t("0.0", "24.0"), t("0.0", "24.0"), t("0.0", "24.0"), t("0.0", "24.0"),
     t("1000.0", "24.0"), t("100.0", "24.0"), at(0, 24), at(0, 24), at(0, 24), at(0, 24)},
    {"a medium's value of 0 is defined", true, U, U, U, U, t("0.0", "24.0"), t("0.0", "24.0"), at(0, 24),
     at(0, 24), at(0, 24), at(0, 24)},
    {"negative values", true, U, U, t("-10.0", "25.0"), U, t("-100.0", "50.0"), t("-4.0", "50.0"),
     at(-50, 25), at(-2, 25), at(-10, 25), at(-2, 25)},
    {"a source start without a value still gives the rate", true, U, U, rateOnly("25.0"), U,
     t("1000.0", "50.0"), t("100.0", "50.0"), at(500, 25), at(50, 25), at(500, 25), at(50, 25)},
    {"and stays as it is without a trusted start", false, U, U, rateOnly("25.0"), U, t("1000.0", "50.0"),
     t("100.0", "50.0"), kNoTime, at(50, 25), TimeRead{std::nullopt, 25.0}, at(50, 25)},
    {"a source start without a rate leaves the rate to the medium", true, U, U, valueOnly("7.0"), U,
     t("1000.0", "50.0"), t("100.0", "50.0"), at(1000, 50), at(100, 50), at(1000, 50), at(100, 50)},
    {"and stays as it is without a trusted start", false, U, U, valueOnly("7.0"), U, t("1000.0", "50.0"),
     t("100.0", "50.0"), kNoTime, at(100, 50), TimeRead{7.0, std::nullopt}, at(100, 50)},
    {"an available start without a rate stays as it is without a trusted start", false, valueOnly("7.0"), U,
     U, U, t("1000.0", "50.0"), t("100.0", "50.0"), TimeRead{7.0, std::nullopt}, at(100, 50), kNoTime,
     at(100, 50)},
    {"durations by halves give way to the medium's", false, U, valueOnly("7.0"), U, rateOnly("12.0"),
     t("1000.0", "50.0"), t("100.0", "50.0"), kNoTime, at(100, 50), kNoTime, at(100, 50)},
    {"even where the medium has none", false, U, valueOnly("7.0"), U, rateOnly("12.0"), t("1000.0", "50.0"),
     U, kNoTime, kNoTime, kNoTime, kNoTime},
    {"starts by halves give way to a trusted one even where there is none", true, valueOnly("7.0"), U,
     valueOnly("8.0"), U, U, t("100.0", "50.0"), kNoTime, TimeRead{0.0, std::nullopt}, kNoTime,
     TimeRead{0.0, std::nullopt}},
    {"a start by halves is the medium's too", true, U, U, U, U, valueOnly("9.0"), U,
     TimeRead{9.0, std::nullopt}, kNoTime, TimeRead{9.0, std::nullopt}, kNoTime},
    {"a medium whose start has only a rate gives the rate", true, U, t("10.0", "5.0"), U, U, rateOnly("50.0"),
     t("24.0", "24.0"), TimeRead{std::nullopt, 50.0}, at(100, 50), TimeRead{std::nullopt, 50.0}, at(50, 50)},
    {"a medium without a duration", true, U, U, U, U, t("1000.0", "24.0"), U, at(1000, 24), kNoTime,
     at(1000, 24), kNoTime},
    {"a medium without anything", true, t("1.0", "24.0"), t("2.0", "24.0"), t("3.0", "12.0"),
     t("4.0", "24.0"), U, U, at(0.5, 12), at(1, 12), at(3, 12), at(2, 12)},
    {"a negative rate of the source start is passed over", true, U, U, t("10.0", "-25.0"), U,
     t("1000.0", "50.0"), t("100.0", "50.0"), at(1000, 50), at(100, 50), at(-20, 50), at(100, 50)},
    {"a rate within the tolerance is none", true, U, U, t("10.0", "1e-17"), U, t("1000.0", "50.0"),
     t("100.0", "50.0"), at(1000, 50), at(100, 50), at(1000, 50), at(100, 50)},
    {"a negative rate of the medium is taken", true, U, U, U, U, t("1000.0", "-24.0"), t("100.0", "24.0"),
     at(1000, -24), at(-100, -24), at(1000, -24), at(-100, -24)},
    {"without any rate all values become 0", false, U, t("10.0", "5.0"), U, U, U, t("24.0", "24.0"), kNoTime,
     TimeRead{0.0, std::nullopt}, kNoTime, TimeRead{0.0, std::nullopt}},
};

TEST_F(MediaMetadataSanitize, ARangeIsFilledAndBroughtToOneRate) {
    for (Range const& range : RANGES) {
        SCOPED_TRACE(range.name);
        ClipText source = mediumOf(range.start, range.duration);
        source.sourceRange = rangeText(timeText("77.0", "7.0"), timeText("78.0", "7.0")); // never looked at
        m_reader->on("a", Answer::document(documentOf(source)));
        ClipText clip = range.trusted ? clipOf("a") : clipOfMovie("a");
        clip.availableRange = rangeText(range.ownAvailableStart, range.ownAvailableDuration);
        clip.sourceRange = rangeText(range.ownSourceStart, range.ownSourceDuration);
        ClipRead const read = sanitizedClip(clip);
        EXPECT_EQ(read.availableStart, range.availableStart);
        EXPECT_EQ(read.availableDuration, range.availableDuration);
        EXPECT_EQ(read.sourceStart, range.sourceStart);
        EXPECT_EQ(read.sourceDuration, range.sourceDuration);
    }
}

TEST_F(MediaMetadataSanitize, AClipWhoseMediaCannotBeReadKeepsItsRanges) {
    ClipText clip = clipOf("a");
    clip.availableRange = rangeText(timeText("1.0", "24.0"), valueOnly("7.0"));
    clip.sourceRange = rangeText(rateOnly("25.0"), timeText("3.0", "48.0"));
    ClipText expected = clip;
    expected.center = "[0.5,-0.25]";
    expected.size = "[4.0,2.0]";
    EXPECT_EQ(sanitized(timelineOfClips({clip}, OWN_START)), timelineOfClips({expected}, OWN_START));
}

// The time of the reads.

struct ReadTime {
    char const* name;
    std::string start; ///< the timeline's
    Time time;         ///< the caller's
    long long ticks;
    int numerator;
    unsigned int denominator;
};

TEST_F(MediaMetadataSanitize, TheTimelinesStartReplacesTheTimeOfTheReads) {
    Rational const r24(24, 1);
    for (ReadTime const& c : std::vector<ReadTime>{
             {"no start", U, TIME, 48, 24, 1},
             {"a start", t("100.0", "25.0"), TIME, 100, 25000, 1000},
             {"integers", t("100", "25"), TIME, 100, 25000, 1000},
             {"a start is truncated", t("100.9", "25.0"), TIME, 100, 25000, 1000},
             {"toward zero", t("-100.9", "25.0"), TIME, -100, 25000, 1000},
             {"a start of 0", t("0.0", "25.0"), TIME, 0, 25000, 1000},
             {"23.976", t("1.0", "23.976"), TIME, 1, 24000, 1001},
             {"29.97", t("1.0", "29.97"), TIME, 1, 30000, 1001},
             {"59.94", t("1.0", "59.94"), TIME, 1, 60000, 1001},
             {"a start at a negative rate", t("100.0", "-24.0"), TIME, 48, 24, 1},
             {"a start for an undefined time", t("10.0", "24.0"), UNDEFINED, 10, 24000, 1000},
             {"a value is rounded", valueOnly("100.9"), TIME, 101, 24, 1},
             {"a half upward", valueOnly("100.5"), TIME, 101, 24, 1},
             {"below a half", valueOnly("100.4"), TIME, 100, 24, 1},
             {"a negative value is truncated after a half was added", valueOnly("-100.9"), TIME, -100, 24, 1},
             {"toward zero", valueOnly("-0.7"), TIME, 0, 24, 1},
             {"a value at the caller's rate", valueOnly("7.0"), Time(48, Rational(30000, 1001)), 7, 30000,
              1001},
             {"a value for an undefined time", valueOnly("7.0"), UNDEFINED, 7, 24, 1},
             {"a rate", rateOnly("25.0"), TIME, 50, 25000, 1000},
             {"a rate, to the nearest below", rateOnly("25.0"), Time(10, r24), 10, 25000, 1000},
             {"a rate, to the nearest above", rateOnly("25.0"), Time(13, r24), 14, 25000, 1000},
             {"a rate, halves away from zero", rateOnly("25.0"), Time(1, Rational(2, 1)), 13, 25000, 1000},
             {"a rate, negative halves too", rateOnly("25.0"), Time(-1, Rational(2, 1)), -13, 25000, 1000},
             {"an equal rate changes nothing", rateOnly("24.0"), TIME, 48, 24, 1},
             {"a rate that is exactly known", rateOnly("29.97"), TIME, 60, 30000, 1001},
             {"a negative rate", rateOnly("-24.0"), TIME, 48, 24, 1},
             {"a rate for a time without one", rateOnly("25.0"), Time(48, Rational(0, 0)), 48, 0, 0},
         }) {
        SCOPED_TRACE(c.name);
        std::size_t const before = m_reader->questions().size();
        sanitized(timelineOfClips({clipOf("a")}, c.start), c.time);
        std::vector<Question> const questions = m_reader->questions();
        ASSERT_EQ(questions.size(), before + 1);
        EXPECT_EQ(questions.back().ticks, c.ticks);
        EXPECT_EQ(questions.back().numerator, c.numerator);
        EXPECT_EQ(questions.back().denominator, c.denominator);
    }
}

TEST_F(MediaMetadataSanitize, WithoutATimeEachClipCountsAsUnreadable) {
    m_reader->on("a", Answer::document(documentOf(medium(1))));
    ClipText expected = clipOf("a");
    expected.center = "[0.5,-0.25]";
    expected.size = "[4.0,2.0]";
    // Without a start of its own the timeline begins at the caller's ticks, undefined as they are.
    EXPECT_EQ(readTimeline(sanitized(timelineOfClips({clipOf("a")}), UNDEFINED)).clips.at(0).text,
              expected.text());
    EXPECT_EQ(readTimeline(sanitized(timelineOfClips({clipOf("a")}), UNDEFINED)).start,
              at(9223372036854775808.0, 24.0));
    EXPECT_TRUE(m_reader->questions().empty());
}

// The timeline's start.

/// The media of the table below: "t" 1000 at 24 for 100 ticks, "t48" at 48, "none" without any time, "wrong"
/// without JSON, "empty" without a clip; "unreadable" is none of them. As uploaded movies: "u25" 100 ticks at
/// 25, "u-" at -25 and "u0" of no length.
ClipText target(char const* url) { return clipOf(std::string(url)); }
ClipText uploaded(char const* url) { return clipOfMovie(url); }

ClipText withSource(ClipText clip, std::string const& start, std::string const& duration) {
    clip.sourceRange = rangeText(start, duration);
    return clip;
}

struct Start {
    char const* name;
    Time time;
    std::string start; ///< the timeline's own
    std::vector<ClipText> clips;
    TimeRead expected;
};

double const NTSC_30 = 30000.0 / 1001.0;
double const NTSC_24 = 24000.0 / 1001.0;
TimeRead const FROM_TIME = at(48, 24);

std::vector<Start> starts() {
    Time const none; // 0 ticks at 0/0
    Time const rateless(48, Rational(24, 0));
    Time const one(1, Rational(24, 1));
    Time const ntsc(48, Rational(24000, 1001));
    ClipText halfUseless = target("wrong"); // whose range is filled before the target turns out to be no JSON
    halfUseless.mp4 = halfUseless.targetUrl;
    halfUseless.file = quoted("t");
    ClipText const own = withSource(target("unreadable"), t("10.0", "25.0"), t("5.0", "25.0"));
    return {
        {"no clips", TIME, U, {}, FROM_TIME},
        {"no clips and an exact rate", ntsc, U, {}, at(48, NTSC_24)},
        {"no clips and a start", TIME, t("100.9", "25.0"), {}, at(100.9, 25)},
        {"no clips and a start of 0", TIME, t("0.0", "25.0"), {}, at(0, 25)},
        {"no clips and a start at a negative rate", TIME, t("7.0", "-24.0"), {}, at(7, -24)},
        {"no clips and a value", TIME, valueOnly("7.6"), {}, at(8, 24)},
        {"no clips and a rate", TIME, rateOnly("25.0"), {}, at(50.0 / 25.0 * 25.0, 25)},
        {"no clips and a rate that is exactly known",
         TIME,
         rateOnly("29.97"),
         {},
         at(60.0 / NTSC_30 * 29.97, 29.97)},
        {"no clips and a negative rate", TIME, rateOnly("-24.0"), {}, at(-48, -24)},
        {"no clips and no time", none, U, {}, TimeRead{0.0, std::nullopt}},
        {"no clips and a time without a rate", rateless, U, {}, TimeRead{48.0, std::nullopt}},
        {"no clips, no time and a rate: a value that is no number is left out",
         none,
         rateOnly("25.0"),
         {},
         TimeRead{std::nullopt, 25.0}},
        {"no clips, a time without a rate and a rate", rateless, rateOnly("25.0"), {}, at(0, 25)},
        {"no clips and an undefined time", UNDEFINED, U, {}, at(9223372036854775808.0, 24)},

        {"one trusted clip", TIME, U, {target("t")}, at(1000, 24)},
        {"one trusted clip with a start of its own",
         TIME,
         U,
         {withSource(target("t"), t("10.0", "12.0"), U)},
         at(10, 12)},
        {"one trusted clip and a start", TIME, t("100.9", "25.0"), {target("t")}, at(100.9, 25)},
        {"one trusted clip and a value", TIME, valueOnly("7.6"), {target("t")}, at(1000, 24)},
        {"one trusted clip and a rate", TIME, rateOnly("48.0"), {target("t")}, at(2000, 48)},
        {"one trusted clip and a rate that divides badly",
         TIME,
         rateOnly("29.97"),
         {target("t")},
         at(1000.0 / 24.0 * 29.97, 29.97)},
        {"one trusted clip and a rate within the tolerance",
         TIME,
         rateOnly("1e-17"),
         {target("t")},
         at(1000, 24)},
        {"one trusted clip whose medium has no time", TIME, U, {target("none")}, FROM_TIME},
        {"one trusted clip whose medium has only a value", TIME, U, {target("value")}, FROM_TIME},
        {"one trusted clip whose medium has only a rate",
         TIME,
         U,
         {target("rate")},
         at(48.0 / 24.0 * 50.0, 50)},

        {"one untrusted clip", TIME, U, {uploaded("u25")}, at(50, 25)},
        {"one untrusted clip, nothing is rounded", one, U, {uploaded("u25")}, at(1.0 / 24.0 * 25.0, 25)},
        {"one untrusted clip with a start of its own",
         TIME,
         U,
         {withSource(uploaded("u25"), t("10.0", "12.0"), U)},
         at(48.0 / 24.0 * 12.0, 12)},
        {"one untrusted clip and a start", TIME, t("100.9", "25.0"), {uploaded("u25")}, at(100.9, 25)},
        {"one untrusted clip and a value",
         TIME,
         valueOnly("7.6"),
         {uploaded("u25")},
         at(8.0 / 24.0 * 25.0, 25)},
        {"one untrusted clip and a rate",
         TIME,
         rateOnly("50.0"),
         {uploaded("u25")},
         at(100.0 / 50.0 * 25.0 / 25.0 * 50.0, 50)},
        {"one untrusted clip of no length", TIME, U, {uploaded("u0")}, FROM_TIME},
        {"one untrusted clip at a negative rate", TIME, U, {uploaded("u-")}, at(-50, -25)},
        {"one untrusted clip and no time: a value that is no number is left out",
         none,
         U,
         {uploaded("u25")},
         TimeRead{std::nullopt, 25.0}},
        {"one untrusted clip and a time without a rate: an endless value is left out",
         rateless,
         U,
         {uploaded("u25")},
         TimeRead{std::nullopt, 25.0}},

        {"one unreadable clip", TIME, U, {target("unreadable")}, FROM_TIME},
        {"one unreadable clip without media", TIME, U, {target("")}, FROM_TIME},
        {"one unreadable clip with ranges of its own", TIME, U, {own}, FROM_TIME},
        {"one unreadable clip and a rate", TIME, rateOnly("12.0"), {own}, at(24, 12)},
        {"one unreadable clip and a start", TIME, t("3.0", "12.0"), {own}, at(3, 12)},
        {"one clip whose medium is no JSON", TIME, U, {target("wrong")}, FROM_TIME},
        {"one clip whose medium has no clip", TIME, U, {target("empty")}, FROM_TIME},
        {"one clip with a good and a useless medium", TIME, U, {halfUseless}, FROM_TIME},
        {"one clip with a range whose medium is no JSON",
         TIME,
         U,
         {withSource(target("wrong"), t("10.0", "25.0"), t("5.0", "25.0"))},
         FROM_TIME},

        {"two trusted clips", TIME, U, {target("t"), target("t")}, FROM_TIME},
        {"two trusted clips at an exact rate", ntsc, U, {target("t"), target("t")}, at(48, NTSC_24)},
        {"two untrusted clips", TIME, U, {uploaded("u25"), uploaded("u25")}, FROM_TIME},
        {"a trusted and a useless clip", TIME, U, {target("t"), target("wrong")}, FROM_TIME},
        {"two useless clips", TIME, U, {target("empty"), target("wrong")}, FROM_TIME},
        {"two unreadable clips", TIME, U, {own, own}, FROM_TIME},
        {"two clips and a start", TIME, t("100.9", "25.0"), {target("t"), target("t")}, at(100.9, 25)},
        {"two clips and a value", TIME, valueOnly("-7.6"), {target("t"), target("t")}, at(-7, 24)},
        {"two clips and a rate", TIME, rateOnly("25.0"), {target("t"), target("t")}, at(50, 25)},
        {"two clips and a rate that is exactly known",
         TIME,
         rateOnly("29.97"),
         {target("t"), target("t")},
         at(60.0 / NTSC_30 * 29.97, 29.97)},
        {"two clips and no time", none, U, {target("t"), target("t")}, TimeRead{0.0, std::nullopt}},
        {"many clips", TIME, U, std::vector<ClipText>(25, target("t")), FROM_TIME},
    };
}

TEST_F(MediaMetadataSanitize, TheTimelinesStartIsSettled) {
    m_reader->on("t", Answer::document(documentOf(mediumOf(t("1000.0", "24.0"), t("100.0", "24.0")))));
    m_reader->on("none", Answer::document(documentOf(mediumOf(U, U))));
    m_reader->on("value", Answer::document(documentOf(mediumOf(valueOnly("9.0"), U))));
    m_reader->on("rate", Answer::document(documentOf(mediumOf(rateOnly("50.0"), U))));
    m_reader->on("u25", Answer::document(documentOf(mediumOf(t("1000.0", "25.0"), t("100.0", "25.0")))));
    m_reader->on("u-", Answer::document(documentOf(mediumOf(t("1000.0", "-25.0"), t("100.0", "25.0")))));
    m_reader->on("u0", Answer::document(documentOf(mediumOf(t("1000.0", "25.0"), U))));
    m_reader->on("wrong", Answer::document("x"));
    m_reader->on("empty", Answer::document("{}"));
    for (Start const& start : starts()) {
        EXPECT_EQ(readTimeline(sanitized(timelineOfClips(start.clips, start.start), start.time)).start,
                  start.expected)
            << start.name;
    }
}

TEST_F(MediaMetadataSanitize, AClipThatIsStillAtWorkCountsForTheStartAsWell) {
    // The first clip's result suggests a start only if it were the only clip; the second one's suggests none.
    m_reader->on("a", Answer::document(documentOf(medium(1))));
    m_reader->on("b", Answer::document("x"));
    std::string const document = timelineOfClips({clipOf("a"), clipOf("b")});
    for (int i = 0; i < 200; ++i) {
        ASSERT_EQ(readTimeline(sanitized(document)).start, FROM_TIME);
    }
}

TEST_F(MediaMetadataSanitize, TheTwoTimesOfATimelineWithAStartTruncateForTheReadsAndKeepTheStart) {
    TimelineRead const timeline = readTimeline(sanitized(timelineOfClips({clipOf("a")}, t("100.9", "25.0"))));
    EXPECT_EQ(timeline.start, at(100.9, 25.0));
    EXPECT_EQ(m_reader->questions().at(0).ticks, 100);
}

TEST_F(MediaMetadataSanitize, ClipsWithoutATimelineAreCompletedAsWell) {
    m_reader->on("a",
                 Answer::document(documentOf(medium(3))).after([] { std::this_thread::sleep_for(5ms); }));
    std::string const document = stackOf({namedTrack("", std::vector<std::string>(12, clipOf("a").text()))});
    rapidjson::Document const result = parsedExactly(sanitized(document));
    ASSERT_EQ(result.MemberCount(), 1U) << "a stack writes itself as the tracks of a timeline";
    std::vector<ClipRead> clips;
    collectClips(member(result, "tracks"), clips);
    ASSERT_EQ(clips.size(), 12U);
    for (ClipRead const& clip : clips) {
        EXPECT_EQ(clip.bounds, boundsOf(3));
        EXPECT_EQ(clip.sourceStart, at(3000.0, 24.0));
    }
    EXPECT_EQ(m_reader->questions().at(0).ticks, 48);
}

TEST_F(MediaMetadataSanitize, ATimelineBelowATimelineTakesTheTimeAndTheClipsSoFar) {
    m_reader->on("a", Answer::document(documentOf(medium(3))));
    std::string const inner = timelineOfClips({clipOf("a")}, t("50.9", "25.0"));
    std::string const outer = timelineOf({inner, namedTrack("outer", {})});
    TimelineRead const timeline = readTimeline(sanitized(outer));
    EXPECT_THAT(timeline.trackNames, ElementsAre("outer")) << "the inner one is left out";
    EXPECT_EQ(timeline.start, at(50.0, 25.0)) << "its clip was counted to it, its start was the last seen";
    EXPECT_EQ(m_reader->questions().at(0).ticks, 50);
    EXPECT_EQ(m_reader->questions().at(0).numerator, 25000);
}

TEST_F(MediaMetadataSanitize, AClipAfterATimelineBelowATimelineIsOneOfMany) {
    m_reader->on("a", Answer::document(documentOf(medium(3))));
    std::string const inner = timelineOfClips({clipOf("a")});
    EXPECT_EQ(readTimeline(sanitized(timelineOf({inner, namedTrack("", {clipOf("a").text()})}))).start,
              FROM_TIME);
    EXPECT_EQ(
        readTimeline(sanitized(timelineOf({timelineOf({}), namedTrack("", {clipOf("a").text()})}))).start,
        at(3000.0, 24.0));
    EXPECT_EQ(
        readTimeline(sanitized(timelineOf({namedTrack("", {clipOf("a").text()}), timelineOf({})}))).start,
        FROM_TIME)
        << "the inner timeline has taken the result";
}

TEST_F(MediaMetadataSanitize, ATimelineBelowATimelineMayHaveAnyStartWhileClipsAreRead) {
    m_reader->onAnyOther(
        Answer::document(documentOf(medium(3))).after([] { std::this_thread::sleep_for(1ms); }));
    std::vector<std::string> children;
    for (int i = 0; i < 20; ++i) {
        children.push_back(namedTrack("", {clipOf("a").text(), clipOf("b").text()}));
        children.push_back(timelineOfClips({clipOf("c")}, t(std::to_string(i) + ".0", "25.0")));
    }
    TimelineRead const timeline = readTimeline(sanitized(timelineOf(children)));
    ASSERT_EQ(timeline.clips.size(), 40U);
    for (ClipRead const& clip : timeline.clips) {
        EXPECT_EQ(clip.bounds, boundsOf(3));
    }
    EXPECT_EQ(timeline.start, at(19.0, 25.0));
}

// Threads.

TEST_F(MediaMetadataSanitize, TheEleventhClipStartsOnlyAfterOneOfTenHasEnded) {
    Turnstile turnstile;
    m_reader->onAnyOther(Answer::document(documentOf(medium(3))).after([&] { turnstile.pass(); }));
    std::vector<ClipText> clips;
    for (int i = 0; i < 13; ++i) {
        clips.push_back(clipOf(std::to_string(i)));
    }
    std::future<std::string> result =
        std::async(std::launch::async, [&] { return sanitized(timelineOfClips(clips)); });
    m_reader->waitForQuestions(10);
    std::this_thread::sleep_for(30ms);
    EXPECT_EQ(m_reader->questions().size(), 10U);
    for (std::size_t next = 11; next <= 13; ++next) {
        turnstile.let(1);
        m_reader->waitForQuestions(next);
        std::this_thread::sleep_for(10ms);
        EXPECT_EQ(m_reader->questions().size(), next);
        EXPECT_EQ(m_reader->ended(), static_cast<int>(next) - 10);
    }
    turnstile.let(10);
    TimelineRead const timeline = readTimeline(result.get());
    EXPECT_EQ(m_reader->maximumInside(), 10);
    ASSERT_EQ(timeline.clips.size(), 13U);
    for (ClipRead const& clip : timeline.clips) {
        EXPECT_EQ(clip.bounds, boundsOf(3));
    }
}

TEST_F(MediaMetadataSanitize, AClipHoldsItsPlaceForAllItsReads) {
    // Two reads each: while ten clips are at work no other gets in between two reads of one of them.
    m_reader->onAnyOther(Answer::failure(Status::kFileNotFound));
    std::vector<ClipText> clips;
    Turnstile turnstile;
    for (int i = 0; i < 12; ++i) {
        std::string const n = std::to_string(i);
        ClipText clip = clipOf("t" + n);
        clip.file = quoted("f" + n);
        clips.push_back(clip);
        m_reader->on("f" + n, Answer::document(documentOf(medium(1))).after([&] { turnstile.pass(); }));
    }
    std::future<std::string> result =
        std::async(std::launch::async, [&] { return sanitized(timelineOfClips(clips)); });
    m_reader->waitForQuestions(20);
    std::this_thread::sleep_for(30ms);
    EXPECT_EQ(m_reader->questions().size(), 20U) << "ten targets and ten frames";
    turnstile.let(12);
    result.get();
    EXPECT_EQ(m_reader->questions().size(), 24U);
}

TEST_F(MediaMetadataSanitize, EveryClipHasAThreadOfItsOwnFromTheStart) {
    Gate gate;
    m_reader->onAnyOther(Answer::document(documentOf(medium(3))).after([&] { gate.pass(); }));
    std::size_t const before = quietThreadCount();
    if (before == 0) {
        GTEST_SKIP() << "this system does not tell its threads";
    }
    std::future<std::string> result = std::async(std::launch::async, [] {
        return sanitized(timelineOfClips(std::vector<ClipText>(35, clipOf("a"))));
    });
    EXPECT_TRUE(threadCountBecomes(before + 1 + 35)) << "the caller's, and one for each clip";
    gate.open();
    result.get();
    EXPECT_TRUE(threadCountBecomes(before));
    EXPECT_EQ(m_reader->questions().size(), 35U);
}

TEST_F(MediaMetadataSanitize, WorkersBearTheNameOfTheCaller) {
    for (char const* const name : {"layout worker", "fifteen bytes..", "x"}) {
        std::thread([&] {
            Platform::setThreadName(name);
            sanitized(timelineOfClips({clipOf("a"), clipOf("b")}));
        }).join();
        std::vector<Question> const questions = m_reader->questions();
        ASSERT_GE(questions.size(), 2U);
        EXPECT_EQ(questions[questions.size() - 1].threadName, name);
        EXPECT_EQ(questions[questions.size() - 2].threadName, name);
        EXPECT_NE(questions.back().thread, std::this_thread::get_id());
    }
}

TEST_F(MediaMetadataSanitize, ResultsAreInTheOrderOfTheClipsWhicheverReadEndsFirst) {
    std::vector<Gate> gates(8);
    std::vector<ClipText> clips;
    for (std::size_t i = 0; i < 8; ++i) {
        std::string const n = std::to_string(i + 1);
        m_reader->on(n, Answer::document(documentOf(medium(static_cast<int>(i) + 1))).after([&gates, i] {
            if (i + 1 < gates.size()) {
                gates[i + 1].pass();
            }
            gates[i].open();
        }));
        clips.push_back(clipOf(n));
    }
    TimelineRead const timeline = readTimeline(sanitized(timelineOfClips(clips)));
    for (std::size_t i = 0; i < 8; ++i) {
        EXPECT_EQ(timeline.clips.at(i).bounds, boundsOf(static_cast<int>(i) + 1));
    }
}

TEST_F(MediaMetadataSanitize, AnExceptionOfTheReaderLeavesWithTheOutputUntouched) {
    m_reader->on("a", Answer::exceptionOf(std::out_of_range("from the reader")));
    String result("untouched");
    try {
        sanitize(timelineOfClips({clipOf("b"), clipOf("a"), clipOf("b")}), result);
        FAIL() << "nothing thrown";
    } catch (std::out_of_range const& e) {
        EXPECT_STREQ(e.what(), "from the reader");
        EXPECT_EQ(m_reader->ended(), 3);
    }
    EXPECT_EQ(result, "untouched");
}

TEST_F(MediaMetadataSanitize, AnExceptionLeavesFromATimelineWithAStartToo) {
    m_reader->on("a", Answer::exceptionOf(42));
    String result("untouched");
    EXPECT_THROW(sanitize(timelineOfClips({clipOf("a")}, OWN_START), result), int);
    EXPECT_EQ(result, "untouched");
}

TEST_F(MediaMetadataSanitize, TheFirstExceptionInTheOrderOfTheClipsLeaves) {
    Gate thrown;
    m_reader->on("a", Answer::exceptionOf(std::runtime_error("the earlier clip's")).after([&] {
        thrown.pass();
        std::this_thread::sleep_for(10ms);
    }));
    m_reader->on("b",
                 Answer::exceptionOf(std::logic_error("the earlier in time")).after([&] { thrown.open(); }));
    String result("untouched");
    try {
        sanitize(timelineOfClips({clipOf("c"), clipOf("a"), clipOf("b")}), result);
        FAIL() << "nothing thrown";
    } catch (std::runtime_error const& e) {
        EXPECT_STREQ(e.what(), "the earlier clip's");
    }
}

TEST_F(MediaMetadataSanitize, TasksThatThrowFreeTheirPlaces) {
    m_reader->onAnyOther(Answer::exceptionOf(std::runtime_error("from the reader")));
    String result("untouched");
    std::size_t const threads = quietThreadCount();
    EXPECT_THROW(sanitize(timelineOfClips(std::vector<ClipText>(35, clipOf("a"))), result),
                 std::runtime_error);
    EXPECT_EQ(m_reader->ended(), 35) << "all have had their turn";
    EXPECT_TRUE(threadCountBecomes(threads));
}

TEST_F(MediaMetadataSanitize, WithoutATimelineExceptionsAreDropped) {
    m_reader->on("a", Answer::exceptionOf(std::runtime_error("from the reader")));
    m_reader->on("b", Answer::document(documentOf(medium(2))));
    std::string const document = stackOf({namedTrack("", {clipOf("a").text(), clipOf("b").text()})});
    rapidjson::Document const result = parsedExactly(sanitized(document));
    std::vector<ClipRead> clips;
    collectClips(member(result, "tracks"), clips);
    ASSERT_EQ(clips.size(), 2U);
    EXPECT_EQ(clips[1].bounds, boundsOf(2));
}

TEST_F(MediaMetadataSanitize, ThrowsWhenNoThreadCanBeStarted) {
    SKIP_WITHOUT_SAFE_START();
    if (!ThreadDoor::works()) {
        GTEST_SKIP() << "no way to keep this system from starting threads";
    }
    ThreadDoor door;
    door.shut();
    String result("untouched");
    EXPECT_THROW(sanitize(timelineOfClips({clipOf("a"), clipOf("b")}), result), std::system_error);
    door.open();
    EXPECT_EQ(result, "untouched");
    EXPECT_TRUE(m_reader->questions().empty());
}

TEST_F(MediaMetadataSanitize, WaitsForTheStartedThreadsWhenAnotherCannotBeStarted) {
    SKIP_WITHOUT_SAFE_START();
    if (!ThreadDoor::works()) {
        GTEST_SKIP() << "no way to keep this system from starting threads";
    }
    std::size_t const threads = quietThreadCount();
    std::string const document = timelineOfClips(std::vector<ClipText>(1500, clipOf("a")));
    bool thrown = false;
    // The first read shuts the door, which is too late only if all others have been started before it.
    for (int attempt = 0; attempt < 10 && !thrown; ++attempt) {
        ThreadDoor door;
        m_reader->onAnyOther(Answer::failure(Status::kFileNotFound).after([&] { door.shut(); }));
        int const endedBefore = m_reader->ended();
        std::size_t const askedBefore = m_reader->questions().size();
        String result("untouched");
        try {
            sanitize(document, result);
        } catch (std::system_error const&) {
            thrown = true;
            std::size_t const asked = m_reader->questions().size() - askedBefore;
            EXPECT_EQ(m_reader->ended() - endedBefore, static_cast<int>(asked));
            EXPECT_LT(asked, 1500U);
            EXPECT_EQ(result, "untouched");
        }
    }
    EXPECT_TRUE(thrown);
    EXPECT_TRUE(threadCountBecomes(threads));
}

TEST_F(MediaMetadataSanitize, ADocumentOfTenThousandClipsOfOneMediumLosesNothing) {
#if defined(__SANITIZE_THREAD__) || defined(__SANITIZE_ADDRESS__) // which cannot hold that many threads
    constexpr std::size_t COUNT = 1000;
#else
    constexpr std::size_t COUNT = 10000;
#endif
    m_reader->on("a", Answer::document(documentOf(medium(3))));
    std::size_t const threads = quietThreadCount();
    std::size_t const files = fileCount();
    TimelineRead const timeline =
        readTimeline(sanitized(timelineOfClips(std::vector<ClipText>(COUNT, clipOf("a")))));
    ASSERT_EQ(timeline.clips.size(), COUNT);
    ClipText expected = medium(3);
    expected.name = quoted("clip");
    expected.targetUrl = quoted("a");
    expected.sourceRange = expected.availableRange;
    for (ClipRead const& clip : timeline.clips) {
        ASSERT_EQ(clip.text, expected.text());
    }
    EXPECT_EQ(m_reader->questions().size(), COUNT);
    EXPECT_LE(m_reader->maximumInside(), 10);
    EXPECT_TRUE(threadCountBecomes(threads));
    EXPECT_EQ(fileCount(), files);
}

TEST_F(MediaMetadataSanitize, MayBeCalledFromManyThreadsAtOnce) {
    m_reader->on("a", Answer::document(documentOf(medium(3))));
    std::string const document = timelineOfClips(std::vector<ClipText>(15, clipOf("a")));
    std::string const expected = sanitized(document);
    std::vector<std::thread> threads;
    std::array<std::string, 6> results;
    for (std::string& result : results) {
        threads.emplace_back([&] { result = sanitized(document); });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    for (std::string const& result : results) {
        EXPECT_EQ(result, expected);
    }
}

TEST_F(MediaMetadataSanitize, HugeStartsDoNoHarm) {
    m_reader->on("a", Answer::document(documentOf(medium(3))));
    for (std::string const& start :
         {t("1e300", "24.0"), t("-1e300", "24.0"), t("1.0", "1e300"), valueOnly("1e300"), valueOnly("-1e300"),
          rateOnly("1e300"), rateOnly("1e-300"), t("9223372036854775807.0", "60.0")}) {
        TimelineRead const timeline = readTimeline(sanitized(timelineOfClips({clipOf("a")}, start)));
        EXPECT_EQ(timeline.clips.size(), 1U) << start;
    }
}

// The dumps.

class MediaMetadataSanitizeDump : public testing::Test {
protected:
    void TearDown() override { unsetenv("ORL_DEBUG_MEDIAMETADATA"); }

    static std::string printedBy(std::string const& document) {
        String result;
        testing::internal::CaptureStdout();
        sanitize(document, result);
        return testing::internal::GetCapturedStdout();
    }
};

TEST_F(MediaMetadataSanitizeDump, IsSilentUnlessAskedFor) {
    unsetenv("ORL_DEBUG_MEDIAMETADATA");
    EXPECT_EQ(printedBy("{}"), "");
}

TEST_F(MediaMetadataSanitizeDump, ShowsTheDocumentsBeforeAndAfterWithFourBlanks) {
    std::string const expected = R"(otioSourceDoc = {
    "a": [
        1,
        {},
        []
    ],
    "b": {
        "c": "x"
    }
}
sanitizedDoc = {}
)";
    for (char const* const value : {"1", "0", "", "no"}) {
        setenv("ORL_DEBUG_MEDIAMETADATA", value, 1);
        EXPECT_EQ(printedBy(R"({"a":[1,{},[]],"b":{"c":"x"}})"), expected) << "'" << value << "'";
    }
    unsetenv("ORL_DEBUG_MEDIAMETADATA");
    EXPECT_EQ(printedBy("{}"), "") << "the variable is consulted each time";
}

TEST_F(MediaMetadataSanitizeDump, ShowsTheWrapperOfTheSourceAndTheTimelineThatComesOut) {
    setenv("ORL_DEBUG_MEDIAMETADATA", "", 1);
    EXPECT_EQ(printedBy(R"({"timeline":{"OTIO_SCHEMA":"Timeline.1","name":"%s","x":null}})"),
              R"(otioSourceDoc = {
    "timeline": {
        "OTIO_SCHEMA": "Timeline.1",
        "name": "%s",
        "x": null
    }
}
sanitizedDoc = {
    "name": "%s",
    "OTIO_SCHEMA": "Timeline.1",
    "metadata": {
        "orl": {
            "ORL_SCHEMA": "TimelineMetadata.1",
            "version": "0.81"
        }
    },
    "global_start_time": {
        "OTIO_SCHEMA": "RationalTime.1",
        "value": 48.0,
        "rate": 24.0
    }
}
)");
}

TEST_F(MediaMetadataSanitizeDump, ShowsNothingOfADocumentThatDoesNotParse) {
    setenv("ORL_DEBUG_MEDIAMETADATA", "1", 1);
    EXPECT_EQ(printedBy(""), "");
    EXPECT_EQ(printedBy("x"), "");
}

TEST_F(MediaMetadataSanitizeDump, ChangesNoResult) {
    std::string const document = timelineOfClips({clipOf("a")});
    std::string const expected = sanitized(document);
    setenv("ORL_DEBUG_MEDIAMETADATA", "1", 1);
    testing::internal::CaptureStdout();
    std::string const result = sanitized(document);
    testing::internal::GetCapturedStdout();
    EXPECT_EQ(result, expected);
}

// Random documents and media.

class Scenario {
public:
    explicit Scenario(unsigned int seed) : m_random(seed) {}

    int below(int limit) { return std::uniform_int_distribution<int>(0, limit - 1)(m_random); }
    bool chance(int percent) { return below(100) < percent; }

    std::string time() {
        switch (below(6)) {
        case 0:
        case 1:
            return U;
        case 2:
            return valueOnly(number());
        case 3:
            return rateOnly(rate());
        default:
            return t(number(), rate());
        }
    }

    std::string range() {
        std::string const start = time();
        return rangeText(start, time());
    }

    ClipText clip(std::size_t number) {
        ClipText result;
        result.name = quoted("c" + std::to_string(number));
        result.targetUrl = url();
        result.file = url();
        result.movie = url();
        result.mp4 = url();
        result.sourceRange = range();
        result.availableRange = range();
        if (chance(40)) {
            result.center = "[50.0,60.0]";
            result.size = "[70.0,80.0]";
        }
        return result;
    }

    void teach(FakeReader& reader) {
        for (int i = 1; i <= 6; ++i) {
            ClipText source = medium(i, chance(30) ? TIMECODE : "{}");
            source.availableRange = range();
            Answer answer = Answer::document(documentOf(source));
            if (chance(15)) {
                answer = Answer::document(chance(50) ? "x" : "{}");
            } else if (chance(30)) {
                answer = Answer::failure(Status::kErrorOpeningMediaFile);
            }
            int const delay = below(300);
            reader.on("u" + std::to_string(i), answer.after([delay] {
                std::this_thread::sleep_for(std::chrono::microseconds(delay));
            }));
        }
    }

private:
    std::string number() { return std::to_string(below(4000) - 1000) + ".5"; }

    std::string rate() {
        static char const* const RATES[] = {"24.0", "25.0", "29.97", "23.976", "48.0", "60.0", "-24.0"};
        return RATES[below(7)];
    }

    std::string url() { return chance(35) ? quoted("") : quoted("u" + std::to_string(1 + below(6))); }

    std::mt19937 m_random;
};

/// The clip in the input, the clip in the output, what must hold between them.
void expectKept(ClipText const& given, ClipRead const& read) {
    ClipRead const before = readClip(parsedExactly(given.text()));
    EXPECT_EQ(read.name, before.name);
    if (before.bounds[2] > 0.0) {
        EXPECT_EQ(read.bounds, before.bounds);
    }
    rapidjson::Document const output = parsedExactly(read.text);
    rapidjson::Document const input = parsedExactly(given.text());
    EXPECT_EQ(textOf(output["metadata"]), textOf(input["metadata"]));
    EXPECT_EQ(textOf(output["media_reference"]["target_url"]),
              textOf(input["media_reference"]["target_url"]));
    // What was defined still is as many seconds; only its rate may be another.
    std::pair<TimeRead, TimeRead> const pairs[] = {{before.sourceStart, read.sourceStart},
                                                   {before.sourceDuration, read.sourceDuration},
                                                   {before.availableStart, read.availableStart},
                                                   {before.availableDuration, read.availableDuration}};
    for (auto const& [old, now] : pairs) {
        if (old.value && old.rate && now.rate) {
            ASSERT_TRUE(now.value.has_value());
            EXPECT_NEAR(*now.value / *now.rate, *old.value / *old.rate, 1e-9);
        }
    }
}

TEST_F(MediaMetadataSanitize, RandomDocumentsKeepTheirClipsTheirStartAndWhatTheirClipsSay) {
    Scenario scenario(printedSeed());
    for (int round = 0; round < 60; ++round) {
        std::vector<ClipText> clips;
        std::vector<std::string> tracks;
        std::vector<std::string> trackNames;
        for (int i = scenario.below(4); i > 0; --i) {
            std::vector<std::string> children;
            for (int j = scenario.below(9); j > 0; --j) {
                if (scenario.chance(20)) {
                    children.push_back(scenario.chance(50) ? gapText("[]")
                                                           : R"({"OTIO_SCHEMA":"Transition.1"})");
                } else {
                    clips.push_back(scenario.clip(clips.size()));
                    children.push_back(clips.back().text());
                }
            }
            trackNames.push_back("track " + std::to_string(i));
            tracks.push_back(namedTrack(trackNames.back(), children));
        }
        std::string const start = scenario.time();
        std::string const document = timelineOf(tracks, start);
        scenario.teach(*m_reader);
        std::string const result = sanitized(document);
        TimelineRead const timeline = readTimeline(result);
        EXPECT_EQ(timeline.trackNames, trackNames);
        ASSERT_EQ(timeline.clips.size(), clips.size());
        for (std::size_t i = 0; i < clips.size(); ++i) {
            SCOPED_TRACE(clips[i].text());
            expectKept(clips[i], timeline.clips[i]);
        }
        TimeRead const own = readTime(parsedExactly(start));
        if (own.value && own.rate) {
            EXPECT_EQ(timeline.start, own);
        }
        EXPECT_LE(m_reader->maximumInside(), 10);
        EXPECT_EQ(m_reader->inside(), 0);
        EXPECT_EQ(sanitized(document), result) << "the order in which reads end makes no difference";
    }
}

} // namespace
