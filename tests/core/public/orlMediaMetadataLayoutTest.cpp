// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include <orlMediaMetadataReader.h>

#include "support/Seed.h"
#include "support/TimelineRead.h"
#include "support/orlFakeReader.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <cstddef>
#include <cstdlib>
#include <limits>
#include <optional>
#include <random>
#include <stdexcept>
#include <string>
#include <system_error>
#include <thread>
#include <vector>

namespace {

using namespace ORL_0_81;
using namespace orlTest;
using testing::ElementsAre;
using testing::UnorderedElementsAre;

using Rectangle = std::array<double, 4>; // centre x and y, size x and y

Bounds const CANVAS(0.0, 0.0, 2.0, 2.0);
Time const TIME(48, Rational(24, 1));
Time const UNDEFINED(Time::getUndefinedNbTicks(), Rational(24, 1));

Vector<String> stringsOf(std::vector<std::string> const& texts) {
    Vector<String> result;
    for (std::string const& text : texts) {
        result.push_back(String(text.data(), text.size()));
    }
    return result;
}

Status layOut(std::vector<std::string> const& documents, String& layout, Bounds const& canvas = CANVAS) {
    return MediaMetadata::getLayoutFromOTIOs(stringsOf(documents), MediaMetadata::kGrid, "wall", canvas,
                                             layout);
}

/// The layout of documents that have to be taken.
std::string layoutOf(std::vector<std::string> const& documents, Bounds const& canvas = CANVAS) {
    String layout("untouched");
    EXPECT_EQ(layOut(documents, layout, canvas).get(), Status::kSuccess);
    return layout.asChar();
}

TimelineRead readLayout(std::vector<std::string> const& documents, Bounds const& canvas = CANVAS) {
    return readTimeline(layoutOf(documents, canvas));
}

ClipText namedClip(std::string const& name, std::string const& size = "[0.0,0.0]") {
    ClipText clip;
    clip.name = quoted(name);
    clip.size = size;
    return clip;
}

/// A clip that takes the aspect of its cell, since its own is 0: its bounds in the layout are its cell.
ClipText fillingClip() { return namedClip("filling", "[0.0,1.0]"); }

std::string documentOfFillingClips(std::size_t count) {
    return timelineOfClips(std::vector<ClipText>(count, fillingClip()));
}

/// A document of one clip of that name, in a track of that name.
std::string documentNamed(std::string const& name, std::string const& start = kUndefinedTime) {
    return timelineOf({namedTrack(name, {namedClip(name).text()})}, start);
}

std::vector<Rectangle> boundsOf(TimelineRead const& timeline) {
    std::vector<Rectangle> result;
    for (ClipRead const& clip : timeline.clips) {
        result.push_back(clip.bounds);
    }
    return result;
}

class MediaMetadataLayoutOfPaths : public WithReader {};

// What comes into the layout.

TEST(MediaMetadataLayout, OfNoDocumentsIsATimelineWithAnEmptyStackAndWithoutAStart) {
    EXPECT_EQ(layoutOf({}),
              R"({"tracks":{"OTIO_SCHEMA":"Stack.1","children":[]},"name":"wall","OTIO_SCHEMA":"Timeline.1",)"
              R"("metadata":{"orl":{"ORL_SCHEMA":"TimelineMetadata.1","version":"0.81"}},)"
              R"("global_start_time":{"OTIO_SCHEMA":"RationalTime.1"}})");
}

TEST(MediaMetadataLayout, BearsTheGivenName) {
    for (char const* const name : {"", "x", "a \"name\" \\ with\nall", "\xC3\xA4\xE2\x82\xAC"}) {
        String layout;
        EXPECT_EQ(MediaMetadata::getLayoutFromOTIOs(stringsOf({documentNamed("a")}), MediaMetadata::kGrid,
                                                    name, CANVAS, layout)
                      .get(),
                  Status::kSuccess);
        EXPECT_EQ(readTimeline(layout.asChar()).name, name);
    }
}

TEST(MediaMetadataLayout, OfDocumentsDoesNotLookAtTheType) {
    std::string const expected = layoutOf({documentNamed("a")});
    for (int const type : {1, -1, 7, 2052}) {
        String layout;
        EXPECT_EQ(MediaMetadata::getLayoutFromOTIOs(stringsOf({documentNamed("a")}),
                                                    static_cast<MediaMetadata::LayoutType>(type), "wall",
                                                    CANVAS, layout)
                      .get(),
                  Status::kSuccess);
        EXPECT_EQ(layout.asChar(), expected) << type;
    }
}

TEST(MediaMetadataLayout, HoldsTheTracksInTheOrderOfTheDocumentsAndWithinThem) {
    std::string const first =
        timelineOf({namedTrack("a", {namedClip("1").text(), namedClip("2").text()}, R"(,"kind":"Video")"),
                    namedTrack("b", {}, R"(,"kind":"Audio")")});
    std::string const second = timelineOf({namedTrack("c", {gapText("[]"), namedClip("3").text()})});
    TimelineRead const layout = readLayout({first, second, first});
    EXPECT_THAT(layout.trackNames, ElementsAre("a", "b", "c", "a", "b"));
    EXPECT_EQ(layout.clipNames(), "1 2 3 1 2") << "the same media may occur twice";
    EXPECT_EQ(layout.trackTexts.at(1), namedTrack("b", {}, R"(,"kind":"Audio")"));
}

TEST(MediaMetadataLayout, KeepsAllOfAClipButItsBounds) {
    ClipText clip = namedClip("a", "[4.0,2.0]");
    clip.center = "[100.0,200.0]";
    clip.effects = R"([{"OTIO_SCHEMA":"Comp.1","blend_mode":"over","opacity":0.5,)" + kPlainEffect + "}]";
    clip.sourceRange = rangeText(timeText("1.0", "24.0"), timeText("2.0", "23.976"));
    clip.availableRange = rangeText(timeText("0.0", "24.0"), kUndefinedTime);
    clip.pixelResolution = "[1920,1080]";
    clip.frameRate = "24.0";
    clip.extraData = R"({"b":"1","a":"2"})";
    clip.targetUrl = quoted("url");
    clip.mp4 = quoted("movie");
    clip.id = quoted("uid");
    std::string const tail = R"(,"kind":"Video")";
    ClipText expected = clip;
    expected.center = "[0.0,0.0]";
    expected.size = "[2.0,1.0]";
    EXPECT_EQ(layoutOf({timelineOf({namedTrack("V", {gapText("[]"), clip.text()}, tail)},
                                   timeText("10.0", "24.0"), "its own name")}),
              timelineOf({namedTrack("V", {gapText("[]"), expected.text()}, tail)}, timeText("10.0", "24.0"),
                         "wall"));
}

TEST(MediaMetadataLayout, TakesDocumentsWithAWrapper) {
    std::string const timeline = documentNamed("a", timeText("10.0", "24.0"));
    EXPECT_EQ(layoutOf({wrapped(timeline)}), layoutOf({timeline}));
    EXPECT_EQ(layoutOf({timeline, wrapped(timeline)}), layoutOf({timeline, timeline}));
}

TEST(MediaMetadataLayout, TakesTracksWithoutATimelineAndAStack) {
    std::string const track = namedTrack("a", {namedClip("1").text()});
    TimelineRead const layout =
        readLayout({track, stackOf({track, namedTrack("b", {})}), timelineOf({track})});
    EXPECT_THAT(layout.trackNames, ElementsAre("a", "a", "b", "a"));
    EXPECT_EQ(layout.clipNames(), "1 1 1");
}

TEST(MediaMetadataLayout, LeavesOutWhatStandsInNoTrack) {
    TimelineRead const layout =
        readLayout({namedClip("bare").text(),
                    timelineOf({namedClip("in the stack").text(), gapText("[]"), namedTrack("a", {})})});
    EXPECT_THAT(layout.trackNames, ElementsAre("a"));
    EXPECT_EQ(layout.clipNames(), "");
}

TEST(MediaMetadataLayout, TakesATrackInATrackTwice) {
    std::string const inner = namedTrack("inner", {fillingClip().text()});
    std::string const outer = namedTrack("outer", {fillingClip().text(), inner});
    TimelineRead const layout = readLayout({timelineOf({outer})});
    EXPECT_THAT(layout.trackNames, ElementsAre("outer", "inner"));
    EXPECT_THAT(boundsOf(layout), ElementsAre(Rectangle{-0.5, -0.5, 1.0, 1.0}, Rectangle{0.5, -0.5, 1.0, 1.0},
                                              Rectangle{0.0, 0.5, 2.0, 1.0}))
        << "its clip counts as two";
}

TEST(MediaMetadataLayout, TakesTheTracksOfATimelineBelowATimelineAndItsStart) {
    std::string const inner =
        timelineOf({namedTrack("inner", {namedClip("2").text()})}, timeText("99.0", "24.0"));
    std::string const outer =
        timelineOf({namedTrack("first", {namedClip("1").text()}), inner, namedTrack("last", {})},
                   timeText("10.0", "24.0"));
    TimelineRead const layout = readLayout({outer});
    EXPECT_THAT(layout.trackNames, ElementsAre("first", "inner", "last"));
    EXPECT_EQ(layout.clipNames(), "1 2");
    EXPECT_EQ(layout.start, (TimeRead{99.0, 24.0})) << "it was the last timeline on the way";
}

TEST(MediaMetadataLayout, ADocumentWithoutClipsAddsItsTracksAndTakesNoCell) {
    std::string const empty = timelineOf({namedTrack("empty", {}), namedTrack("gaps", {gapText("[]")})});
    TimelineRead const layout = readLayout({documentOfFillingClips(2), empty, documentOfFillingClips(1)});
    EXPECT_THAT(layout.trackNames, ElementsAre("", "empty", "gaps", ""));
    EXPECT_EQ(boundsOf(layout), boundsOf(readLayout({documentOfFillingClips(3)})));
    EXPECT_THAT(readLayout({empty}).trackNames, ElementsAre("empty", "gaps"));
}

TEST(MediaMetadataLayout, AnAudioClipTakesACellLikeAnyOther) {
    TimelineRead const layout =
        readLayout({timelineOf({namedTrack("V", {fillingClip().text()}, R"(,"kind":"Video")"),
                                namedTrack("A", {fillingClip().text()}, R"(,"kind":"Audio")")})});
    EXPECT_THAT(boundsOf(layout), ElementsAre(Rectangle{-0.5, 0.0, 1.0, 2.0}, Rectangle{0.5, 0.0, 1.0, 2.0}));
}

TEST(MediaMetadataLayout, ClipsAreNumberedThroughAllTracksAndDocuments) {
    TimelineRead const layout = readLayout({documentNamed("a"), documentNamed("b"), documentNamed("c")});
    EXPECT_EQ(layout.clipNames(), "a b c");
    EXPECT_THAT(boundsOf(layout), ElementsAre(Rectangle{-0.5, -0.5, 1.0, 1.0}, Rectangle{0.5, -0.5, 1.0, 1.0},
                                              Rectangle{0.0, 0.5, 1.0, 1.0}));
}

// Where it starts.

struct Start {
    char const* name;
    std::vector<std::string> documents;
    TimeRead expected;
};

TEST(MediaMetadataLayout, StartsWhereItsFirstDocumentDoes) {
    std::string const ten = documentNamed("a", timeText("10.0", "24.0"));
    std::string const twenty = documentNamed("a", timeText("20.0", "25.0"));
    std::string const open = documentNamed("a");
    TimeRead const zero{0.0, std::nullopt};
    for (Start const& start : std::vector<Start>{
             {"two starts", {ten, twenty}, {10.0, 24.0}},
             {"the other way round", {twenty, ten}, {20.0, 25.0}},
             {"an open start first", {open, twenty}, kNoTime},
             {"an open start behind", {ten, open}, {10.0, 24.0}},
             {"a value alone",
              {documentNamed("a", R"({"OTIO_SCHEMA":"RationalTime.1","value":7.5})"), ten},
              {7.5, std::nullopt}},
             {"a rate alone",
              {documentNamed("a", R"({"OTIO_SCHEMA":"RationalTime.1","rate":25.0})"), ten},
              {std::nullopt, 25.0}},
             {"a negative start", {documentNamed("a", timeText("-3.5", "-24.0"))}, {-3.5, -24.0}},
             {"a first document without a timeline", {"{}", ten}, zero},
             {"a first document that is no object", {"[1]", ten}, zero},
             {"a first document that is a stack", {stackOf({namedTrack("a", {})}), ten}, zero},
             {"a first document of another version", {R"({"OTIO_SCHEMA":"Timeline.2"})", ten}, zero},
             {"a timeline without tracks",
              {bareTimelineText(R"("x")", timeText("3.0", "24.0")), ten},
              {3.0, 24.0}},
         }) {
        EXPECT_EQ(readLayout(start.documents).start, start.expected) << start.name;
    }
}

// The grid.

struct Grid {
    std::size_t clips, columns, rows, last;
};

std::vector<Grid> const GRIDS = {
    {1, 1, 1, 1},     {2, 2, 1, 2},      {3, 2, 2, 1},       {4, 2, 2, 2},      {5, 3, 2, 2},
    {6, 3, 2, 3},     {7, 3, 3, 1},      {8, 3, 3, 2},       {9, 3, 3, 3},      {10, 4, 3, 2},
    {11, 4, 3, 3},    {12, 4, 3, 4},     {13, 4, 4, 1},      {16, 4, 4, 4},     {17, 5, 4, 2},
    {20, 5, 4, 5},    {21, 5, 5, 1},     {25, 5, 5, 5},      {26, 6, 5, 2},     {30, 6, 5, 6},
    {31, 6, 6, 1},    {99, 10, 10, 9},   {100, 10, 10, 10},  {101, 11, 10, 2},  {110, 11, 10, 11},
    {111, 11, 11, 1}, {1000, 32, 32, 8}, {1024, 32, 32, 32}, {1025, 33, 32, 2},
};

/// The cells of a grid whose shape is known.
std::vector<Rectangle> cellsOf(Grid const& grid, Bounds const& canvas) {
    std::vector<Rectangle> cells;
    double const rows = static_cast<double>(grid.rows);
    double const height = canvas.getSizeY() / rows;
    double const y0 = canvas.getCenterY() + (rows - 1) * -0.5 * height;
    for (std::size_t r = 0; r < grid.rows; ++r) {
        std::size_t const inRow = r + 1 == grid.rows ? grid.last : grid.columns;
        double const k = static_cast<double>(inRow);
        double const width = canvas.getSizeX() / k;
        double const x0 = canvas.getCenterX() + (k - 1) * -0.5 * width;
        for (std::size_t j = 0; j < inRow; ++j) {
            cells.push_back(
                {static_cast<double>(j) * width + x0, static_cast<double>(r) * height + y0, width, height});
        }
    }
    return cells;
}

TEST(MediaMetadataLayout, ClipsStandInAGridWhoseLastRowSharesTheWidth) {
    for (Grid const& grid : GRIDS) {
        for (Bounds const& canvas : {Bounds(0.0, 0.0, 2.0, 2.0), Bounds(10.5, -3.25, 1.7, 0.9)}) {
            std::vector<Rectangle> const expected = cellsOf(grid, canvas);
            ASSERT_EQ(expected.size(), grid.clips);
            EXPECT_EQ(boundsOf(readLayout({documentOfFillingClips(grid.clips)}, canvas)), expected)
                << grid.clips << " clips";
        }
    }
}

TEST(MediaMetadataLayout, FiveClipsOnACanvasOfSixByFour) {
    EXPECT_THAT(boundsOf(readLayout({documentOfFillingClips(5)}, Bounds(1.0, 2.0, 6.0, 4.0))),
                ElementsAre(Rectangle{-1.0, 1.0, 2.0, 2.0}, Rectangle{1.0, 1.0, 2.0, 2.0},
                            Rectangle{3.0, 1.0, 2.0, 2.0}, Rectangle{-0.5, 3.0, 3.0, 2.0},
                            Rectangle{2.5, 3.0, 3.0, 2.0}));
}

TEST(MediaMetadataLayout, ThreeWideClipsOnASquare) {
    ClipText const wide = namedClip("wide", "[16.0,9.0]");
    std::vector<Rectangle> const bounds = boundsOf(readLayout({timelineOfClips({wide, wide, wide})}));
    ASSERT_EQ(bounds.size(), 3U);
    EXPECT_THAT(bounds[0], ElementsAre(-0.5, -0.5, 1.0, 0.5625));
    EXPECT_THAT(bounds[1], ElementsAre(0.5, -0.5, 1.0, 0.5625));
    EXPECT_THAT(bounds[2], ElementsAre(0.0, 0.5, 16.0 / 9.0, 1.0));
}

struct Fit {
    char const* name;
    Bounds canvas;
    char const* size; ///< the clip's old one
    double width, height;
};

TEST(MediaMetadataLayout, AClipKeepsItsAspectInTheMiddleOfItsCell) {
    Bounds const square(5.0, -7.0, 2.0, 2.0);
    Bounds const wide(5.0, -7.0, 4.0, 1.0);
    Bounds const tall(5.0, -7.0, 1.0, 4.0);
    for (Fit const& fit : std::vector<Fit>{
             {"a wide one on a square", square, "[2.0,1.0]", 2.0, 1.0},
             {"a tall one on a square", square, "[1.0,2.0]", 1.0, 2.0},
             {"a square one on a square", square, "[3.0,3.0]", 2.0, 2.0},
             {"integers", square, "[4,2]", 2.0, 1.0},
             {"a wide one on a wide canvas", wide, "[2.0,1.0]", 2.0, 1.0},
             {"a very wide one on a wide canvas", wide, "[8.0,1.0]", 4.0, 0.5},
             {"one of the same aspect", wide, "[40.0,10.0]", 4.0, 1.0},
             {"a tall one on a wide canvas", wide, "[1.0,2.0]", 0.5, 1.0},
             {"a wide one on a tall canvas", tall, "[2.0,1.0]", 1.0, 0.5},
             {"a very tall one on a tall canvas", tall, "[1.0,8.0]", 0.5, 4.0},
             {"without bounds it is a square, on a square", square, "[0.0,0.0]", 2.0, 2.0},
             {"on a wide canvas", wide, "[0.0,0.0]", 1.0, 1.0},
             {"on a tall canvas", tall, "[0.0,0.0]", 1.0, 1.0},
             {"without a height it is a square", wide, "[7.0,0.0]", 1.0, 1.0},
             {"with a negative height it is a square", wide, "[7.0,-2.0]", 1.0, 1.0},
             {"with a height within the tolerance it is a square", wide, "[7.0,2e-16]", 1.0, 1.0},
             {"a height above the tolerance counts", wide, "[6e-16,3e-16]", 2.0, 1.0},
             {"without a width it fills a square", square, "[0.0,1.0]", 2.0, 2.0},
             {"it fills a wide cell", wide, "[0.0,1.0]", 4.0, 1.0},
             {"it fills a tall cell", tall, "[0.0,1.0]", 1.0, 4.0},
             {"with a negative width it fills", wide, "[-3.0,1.0]", 4.0, 1.0},
             {"with both negative it is a square", wide, "[-3.0,-1.0]", 1.0, 1.0},
             {"with an aspect within the tolerance it fills", wide, "[2e-16,1.0]", 4.0, 1.0},
             {"a canvas without a width", Bounds(5.0, -7.0, 0.0, 3.0), "[2.0,1.0]", 0.0, 3.0},
             {"a canvas of negative width", Bounds(5.0, -7.0, -2.0, 3.0), "[2.0,1.0]", -2.0, 3.0},
             {"a canvas of negative height", Bounds(5.0, -7.0, 2.0, -3.0), "[2.0,1.0]", 2.0, -3.0},
             {"a canvas of negative size", Bounds(5.0, -7.0, -4.0, -2.0), "[1.0,1.0]", -2.0, -2.0},
             {"a canvas of negative size and a wide clip", Bounds(5.0, -7.0, -2.0, -2.0), "[2.0,1.0]", -2.0,
              -1.0},
             {"a canvas without a height", Bounds(5.0, -7.0, 2.0, 0.0), "[2.0,1.0]", 0.0, 0.0},
             {"a canvas of no size", Bounds(5.0, -7.0, 0.0, 0.0), "[2.0,1.0]", 0.0, 0.0},
         }) {
        ClipText clip = namedClip("a", fit.size);
        clip.center = "[33.0,44.0]";
        EXPECT_THAT(boundsOf(readLayout({timelineOfClips({clip})}, fit.canvas)),
                    ElementsAre(Rectangle{5.0, -7.0, fit.width, fit.height}))
            << fit.name;
    }
}

TEST(MediaMetadataLayout, ClipsOfDifferentAspectsEachKeepTheirOwn) {
    TimelineRead const layout =
        readLayout({timelineOfClips({namedClip("a", "[2.0,1.0]"), namedClip("b", "[1.0,2.0]"), namedClip("c"),
                                     namedClip("d", "[0.0,3.0]")})},
                   Bounds(0.0, 0.0, 8.0, 4.0)); // cells of 4 x 2
    EXPECT_THAT(boundsOf(layout), ElementsAre(Rectangle{-2.0, -1.0, 4.0, 2.0}, Rectangle{2.0, -1.0, 1.0, 2.0},
                                              Rectangle{-2.0, 1.0, 2.0, 2.0}, Rectangle{2.0, 1.0, 4.0, 2.0}));
}

TEST(MediaMetadataLayout, OfAnEndlessCanvasIsStillAWholeDocument) {
    double const infinity = std::numeric_limits<double>::infinity();
    for (Bounds const& canvas : {Bounds(0.0, 0.0, infinity, 1.0), Bounds(0.0, 0.0, 1.0, -infinity),
                                 Bounds(infinity, std::nan(""), 1.0, 1.0)}) {
        EXPECT_EQ(readLayout({documentOfFillingClips(3)}, canvas).clips.size(), 3U);
    }
}

// Documents that do not parse.

std::vector<std::string> const NO_JSON = {
    "",
    "x",
    "{",
    " ",
    std::string(1, '\0'),
    documentNamed("a") + "x",
    R"({"a":)" + repeated("[", 1000) + repeated("]", 1000) + "}",
    repeated("[", 100000),
};

TEST(MediaMetadataLayout, ADocumentThatDoesNotParseIsAReadErrorAndLeavesTheLayout) {
    for (std::string const& text : NO_JSON) {
        for (std::vector<std::string> const& documents : std::vector<std::vector<std::string>>{
                 {text}, {documentNamed("a"), text}, {text, documentNamed("a")}, {"{}", text, "{}"}}) {
            String layout("untouched");
            EXPECT_EQ(layOut(documents, layout).get(), 517) << text.substr(0, 20);
            EXPECT_EQ(layout, "untouched");
        }
    }
}

TEST(MediaMetadataLayout, DocumentsWithoutATimelineAddNothing) {
    std::string const deepest = R"({"a":)" + repeated("[", 999) + repeated("]", 999) + "}";
    for (std::string const& text :
         {std::string("{}"), std::string("[]"), std::string("null"), std::string("3"), std::string("\"x\""),
          std::string(R"({"timeline":{}})"), std::string(R"({"timeline":3})"), deepest}) {
        TimelineRead const layout = readLayout({documentNamed("a"), text, documentNamed("b")});
        EXPECT_EQ(layout.clipNames(), "a b") << text.substr(0, 20);
    }
}

TEST(MediaMetadataLayout, ADocumentEndsAtItsFirstNul) {
    EXPECT_EQ(layoutOf({documentNamed("a") + std::string("\0{", 2)}), layoutOf({documentNamed("a")}));
}

TEST(MediaMetadataLayout, TracksMayBeNestedDeeply) {
    constexpr std::size_t DEPTH = 150;
    std::string track = fillingClip().text();
    for (std::size_t i = 0; i < DEPTH; ++i) {
        track = namedTrack("", {track});
    }
    TimelineRead const layout = readLayout({timelineOf({track})});
    EXPECT_EQ(layout.trackNames.size(), DEPTH);
    EXPECT_EQ(layout.clips.size(), DEPTH) << "one below each of them";
}

TEST(MediaMetadataLayout, MayBeMadeOnManyThreadsAtOnce) {
    std::vector<std::string> const documents{documentOfFillingClips(7), documentNamed("a")};
    std::string const expected = layoutOf(documents);
    std::vector<std::thread> threads;
    std::array<std::string, 4> results;
    for (std::string& result : results) {
        threads.emplace_back([&] { result = layoutOf(documents); });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    for (std::string const& result : results) {
        EXPECT_EQ(result, expected);
    }
}

// Layouts of paths.

Status layOutPaths(std::vector<std::string> const& paths, String& layout, Time const& time = TIME,
                   int type = MediaMetadata::kGrid) {
    Vector<String> strings = stringsOf(paths);
    Status const status = MediaMetadata::getLayoutFromFilepaths(
        strings, static_cast<MediaMetadata::LayoutType>(type), "wall", CANVAS, time, layout);
    EXPECT_EQ(strings.size(), paths.size()) << "the paths are not changed";
    for (unsigned long i = 0; i < strings.size(); ++i) {
        EXPECT_EQ(strings[i], paths[i].c_str());
    }
    return status;
}

TEST_F(MediaMetadataLayoutOfPaths, RefusesAnotherTypeBeforeAnythingIsRead) {
    for (int const type : {1, -1, 100, 2052}) {
        for (Time const& time : {TIME, UNDEFINED}) {
            String layout("untouched");
            EXPECT_EQ(layOutPaths({"a"}, layout, time, type).get(), 2052);
            EXPECT_EQ(layOutPaths({}, layout, time, type).get(), 2052);
            EXPECT_EQ(layout, "untouched");
        }
    }
    EXPECT_TRUE(m_reader->questions().empty());
}

TEST_F(MediaMetadataLayoutOfPaths, IsTheLayoutOfWhatTheReaderSays) {
    std::string const first = timelineOfClips({namedClip("a", "[16.0,9.0]")}, timeText("10.0", "24.0"));
    m_reader->on("a", Answer::document(first));
    m_reader->on("b", Answer::document(wrapped(documentNamed("b", timeText("20.0", "24.0")))));
    String layout;
    EXPECT_EQ(layOutPaths({"a", "b", "a"}, layout).get(), Status::kSuccess);
    EXPECT_EQ(layout.asChar(), layoutOf({first, documentNamed("b"), first}));
    EXPECT_EQ(readTimeline(layout.asChar()).start, (TimeRead{10.0, 24.0}));
    EXPECT_THAT(m_reader->paths(), UnorderedElementsAre("a", "a", "b"));
}

TEST_F(MediaMetadataLayoutOfPaths, PassesOnBoundsAndTime) {
    m_reader->on("a", Answer::document(documentNamed("a")));
    Vector<String> paths = stringsOf({"a"});
    String layout;
    EXPECT_EQ(MediaMetadata::getLayoutFromFilepaths(paths, MediaMetadata::kGrid, "wall",
                                                    Bounds(1.0, 2.0, 3.0, 4.0),
                                                    Time(7, Rational(30000, 1001)), layout)
                  .get(),
              Status::kSuccess);
    Question const question = m_reader->questions().at(0);
    EXPECT_THAT(question.bounds, ElementsAre(1.0, 2.0, 3.0, 4.0));
    EXPECT_EQ(question.ticks, 7);
    EXPECT_EQ(question.numerator, 30000);
    EXPECT_EQ(question.denominator, 1001U);
    EXPECT_THAT(boundsOf(readTimeline(layout.asChar())), ElementsAre(Rectangle{1.0, 2.0, 3.0, 3.0}));
}

TEST_F(MediaMetadataLayoutOfPaths, DoesNotCompleteTheDocuments) {
    ClipText clip = namedClip("a");
    clip.targetUrl = quoted("other");
    m_reader->on("a", Answer::document(timelineOfClips({clip})));
    ClipText expected = clip;
    expected.size = "[2.0,2.0]";
    String layout;
    EXPECT_EQ(layOutPaths({"a"}, layout).get(), Status::kSuccess);
    EXPECT_EQ(layout.asChar(), timelineOf({namedTrack("", {expected.text()})}, kUndefinedTime, "wall"));
    EXPECT_THAT(m_reader->paths(), ElementsAre("a"));
}

TEST_F(MediaMetadataLayoutOfPaths, LeavesOutMediaThatCannotBeOpened) {
    m_reader->onAnyOther(Answer::failure(Status::kErrorOpeningMediaFile));
    m_reader->on("a", Answer::document(documentNamed("a", timeText("10.0", "24.0"))));
    m_reader->on("b", Answer::document(documentNamed("b", timeText("20.0", "24.0"))));
    String layout;
    EXPECT_EQ(layOutPaths({"x", "b", "y", "a"}, layout).get(), Status::kSuccess);
    TimelineRead const timeline = readTimeline(layout.asChar());
    EXPECT_EQ(timeline.clipNames(), "b a");
    EXPECT_EQ(timeline.start, (TimeRead{20.0, 24.0})) << "the first that is left";
}

TEST_F(MediaMetadataLayoutOfPaths, IsAnEmptyObjectWhenNoMediumCanBeOpened) {
    m_reader->onAnyOther(Answer::failure(Status::kErrorOpeningMediaFile));
    String layout("before");
    EXPECT_EQ(layOutPaths({"x", "y"}, layout).get(), Status::kSuccess);
    EXPECT_EQ(layout, "{}");
}

TEST_F(MediaMetadataLayoutOfPaths, OfNoPathsIsAnEmptyObject) {
    for (Time const& time : {TIME, UNDEFINED}) {
        String layout("before");
        EXPECT_EQ(layOutPaths({}, layout, time).get(), Status::kSuccess);
        EXPECT_EQ(layout, "{}");
    }
}

TEST_F(MediaMetadataLayoutOfPaths, FailsAsTheReadsDoAndLeavesTheLayout) {
    m_reader->on("a", Answer::document(documentNamed("a")));
    m_reader->on("unopened", Answer::failure(Status::kErrorOpeningMediaFile));
    m_reader->on("io", Answer::failure(Status::kIOAccess));
    m_reader->on("wrong", Answer::document("x"));
    String layout("untouched");
    EXPECT_EQ(layOutPaths({"a", "unopened", "io", "missing"}, layout).get(), Status::kIOAccess);
    EXPECT_EQ(layOutPaths({"missing", "a", "io"}, layout).get(), Status::kFileNotFound);
    EXPECT_EQ(layOutPaths({"a"}, layout, UNDEFINED).get(), 554);
    EXPECT_EQ(layOutPaths({"a", "wrong"}, layout).get(), 517);
    EXPECT_EQ(layOutPaths({"wrong", "io"}, layout).get(), Status::kIOAccess)
        << "all are read before any is parsed";
    EXPECT_EQ(layout, "untouched");
}

TEST(MediaMetadataLayoutOfPathsWithoutReader, SaysSoAndLeavesTheLayout) {
    String layout("untouched");
    EXPECT_EQ(layOutPaths({"a"}, layout).get(), 1025);
    EXPECT_EQ(layout, "untouched");
    EXPECT_EQ(layOutPaths({}, layout).get(), Status::kSuccess);
    EXPECT_EQ(layout, "{}");
}

TEST_F(MediaMetadataLayoutOfPaths, AnExceptionOfTheReaderLeavesWithTheLayoutUntouched) {
    m_reader->on("a", Answer::document(documentNamed("a")));
    m_reader->on("b", Answer::exceptionOf(std::runtime_error("from the reader")));
    String layout("untouched");
    EXPECT_THROW(layOutPaths({"a", "b"}, layout), std::runtime_error);
    EXPECT_EQ(layout, "untouched");
}

TEST_F(MediaMetadataLayoutOfPaths, ThrowsWhenNoThreadCanBeStarted) {
    if (!ThreadDoor::works()) {
        GTEST_SKIP() << "no way to keep this system from starting threads";
    }
    ThreadDoor door;
    door.shut();
    String layout("untouched");
    EXPECT_THROW(layOutPaths({"a", "b"}, layout), std::system_error);
    EXPECT_EQ(layout, "untouched");
}

TEST_F(MediaMetadataLayoutOfPaths, ReadsAllPathsAtTheSameTimeAndLeavesNoThreadBehind) {
    constexpr std::size_t COUNT = 40;
    m_reader->onAnyOther(
        Answer::document(documentOfFillingClips(1)).after([&] { m_reader->waitForQuestions(COUNT); }));
    std::size_t const threads = quietThreadCount();
    std::size_t const files = fileCount();
    String layout;
    EXPECT_EQ(layOutPaths(std::vector<std::string>(COUNT, "a"), layout).get(), Status::kSuccess);
    EXPECT_EQ(m_reader->maximumInside(), static_cast<int>(COUNT));
    EXPECT_EQ(readTimeline(layout.asChar()).clips.size(), COUNT);
    EXPECT_TRUE(threadCountBecomes(threads));
    EXPECT_EQ(fileCount(), files);
}

// The dumps.

class MediaMetadataLayoutDump : public testing::Test {
protected:
    void TearDown() override { unsetenv("ORL_DEBUG_MEDIAMETADATA"); }

    static std::string printedBy(std::vector<std::string> const& documents) {
        String layout;
        testing::internal::CaptureStdout();
        layOut(documents, layout);
        return testing::internal::GetCapturedStdout();
    }
};

std::string const EMPTY_LAYOUT_DUMP = R"(finalLayoutDoc = {
    "tracks": {
        "OTIO_SCHEMA": "Stack.1",
        "children": []
    },
    "name": "wall",
    "OTIO_SCHEMA": "Timeline.1",
    "metadata": {
        "orl": {
            "ORL_SCHEMA": "TimelineMetadata.1",
            "version": "0.81"
        }
    },
    "global_start_time": {
        "OTIO_SCHEMA": "RationalTime.1",
        "value": 0.0
    }
}
)";

TEST_F(MediaMetadataLayoutDump, IsSilentUnlessAskedFor) {
    unsetenv("ORL_DEBUG_MEDIAMETADATA");
    EXPECT_EQ(printedBy({"{}"}), "");
}

TEST_F(MediaMetadataLayoutDump, ShowsEachDocumentAndThenTheLayoutWithFourBlanks) {
    for (char const* const value : {"1", ""}) {
        setenv("ORL_DEBUG_MEDIAMETADATA", value, 1);
        EXPECT_EQ(printedBy({R"({"timeline":{"a":1}})", "[]"}),
                  "otioSourceDoc = {\n    \"timeline\": {\n        \"a\": 1\n    }\n}\notioSourceDoc = []\n" +
                      EMPTY_LAYOUT_DUMP);
    }
    unsetenv("ORL_DEBUG_MEDIAMETADATA");
    EXPECT_EQ(printedBy({"{}"}), "") << "the variable is consulted each time";
}

TEST_F(MediaMetadataLayoutDump, StopsAtADocumentThatDoesNotParse) {
    setenv("ORL_DEBUG_MEDIAMETADATA", "1", 1);
    EXPECT_EQ(printedBy({"{}", "x", "{}"}), "otioSourceDoc = {}\n");
}

// Random layouts.

class Scenario {
public:
    explicit Scenario(unsigned int seed) : m_random(seed) {}

    int below(int limit) { return std::uniform_int_distribution<int>(0, limit - 1)(m_random); }
    double between(double low, double high) {
        return std::uniform_real_distribution<double>(low, high)(m_random);
    }

    Bounds canvas() {
        double const x = between(-100.0, 100.0);
        double const y = between(-100.0, 100.0);
        double const width = between(0.1, 50.0);
        return Bounds(x, y, width, between(0.1, 50.0));
    }

private:
    std::mt19937 m_random;
};

TEST(MediaMetadataLayout, CellsTileTheCanvas) {
    Scenario scenario(printedSeed());
    for (int round = 0; round < 50; ++round) {
        std::size_t const count = static_cast<std::size_t>(1 + scenario.below(120));
        Bounds const canvas = scenario.canvas();
        std::vector<Rectangle> const cells = boundsOf(readLayout({documentOfFillingClips(count)}, canvas));
        ASSERT_EQ(cells.size(), count);
        // Along the rows from the left edge to the right one, and from row to row, each where the last ended.
        double const left = canvas.getCenterX() - canvas.getSizeX() / 2;
        double const right = canvas.getCenterX() + canvas.getSizeX() / 2;
        double x = left;
        double y = canvas.getCenterY() - canvas.getSizeY() / 2;
        std::size_t inRow = 0;
        std::size_t firstRow = 0;
        std::size_t rows = 0;
        for (Rectangle const& cell : cells) {
            EXPECT_NEAR(cell[0] - cell[2] / 2, x, 1e-9);
            EXPECT_NEAR(cell[1] - cell[3] / 2, y, 1e-9);
            x += cell[2];
            ++inRow;
            if (std::abs(x - right) < 1e-9) {
                x = left;
                y += cell[3];
                firstRow = rows == 0 ? inRow : firstRow;
                EXPECT_LE(inRow, firstRow);
                inRow = 0;
                ++rows;
            }
        }
        EXPECT_EQ(inRow, 0U) << "the last row is full";
        EXPECT_NEAR(y, canvas.getCenterY() + canvas.getSizeY() / 2, 1e-9);
        EXPECT_TRUE(firstRow == rows || firstRow == rows + 1) << firstRow << " columns, " << rows << " rows";
    }
}

TEST(MediaMetadataLayout, OfALayoutIsTheSameLayout) {
    Scenario scenario(printedSeed());
    for (int round = 0; round < 50; ++round) {
        std::vector<std::string> documents;
        std::string names;
        std::vector<std::string> trackNames;
        int number = 0;
        std::string const start = timeText(std::to_string(scenario.below(1000)) + ".5", "24.0");
        for (int d = 1 + scenario.below(4); d > 0; --d) {
            std::vector<std::string> tracks;
            for (int i = scenario.below(3); i > 0; --i) {
                std::vector<std::string> children;
                for (int j = scenario.below(6); j > 0; --j) {
                    std::string const name = "c" + std::to_string(number++);
                    names += (names.empty() ? "" : " ") + name;
                    static char const* const SIZES[] = {"[16.0,9.0]", "[9.0,16.0]", "[0.0,0.0]",
                                                        "[2.5,1.0]",  "[0.0,1.0]",  "[-1.0,2.0]"};
                    children.push_back(namedClip(name, SIZES[scenario.below(6)]).text());
                }
                trackNames.push_back("t" + std::to_string(number) + "." + std::to_string(i));
                tracks.push_back(namedTrack(trackNames.back(), children));
            }
            documents.push_back(timelineOf(tracks, documents.empty() ? start : kUndefinedTime));
        }
        Bounds const canvas = scenario.canvas();
        std::string const once = layoutOf(documents, canvas);
        TimelineRead const first = readTimeline(once);
        TimelineRead const second = readLayout({once}, canvas);
        EXPECT_EQ(first.clipNames(), names);
        EXPECT_EQ(second.clipNames(), names);
        EXPECT_EQ(first.trackNames, trackNames);
        EXPECT_EQ(second.trackNames, trackNames);
        EXPECT_EQ(first.start, readTime(parsedExactly(start)));
        EXPECT_EQ(second.start, first.start);
        ASSERT_EQ(second.clips.size(), first.clips.size());
        for (std::size_t i = 0; i < first.clips.size(); ++i) {
            for (std::size_t k = 0; k < 4; ++k) {
                EXPECT_NEAR(second.clips[i].bounds[k], first.clips[i].bounds[k], 1e-9);
            }
        }
    }
}

} // namespace
