// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "orlLayoutCommand.h"
#include "orlLayoutPicture.h"
#include "tools/orl/orlToolReader.h"
#include "tools/orl/orlToolSupport.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <rapidjson/document.h>

namespace ORL_0_81::tool {

using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

namespace {

rapidjson::Document parsed(std::string const& text) {
    rapidjson::Document document;
    EXPECT_FALSE(document.Parse(text.c_str()).HasParseError()) << text;
    return document;
}

// The names of the clips, track by track.
std::vector<std::string> clipNames(std::string const& text) {
    std::vector<std::string> names;
    rapidjson::Document const document = parsed(text);
    for (auto const& track : document["tracks"]["children"].GetArray()) {
        for (auto const& clip : track["children"].GetArray()) {
            names.emplace_back(clip["name"].GetString());
        }
    }
    return names;
}

} // namespace

TEST(Layout, PutsMediaAndDocumentsSideBySideInTheOrderOfTheArguments) {
    SharedPtr<ToolReader> const reader(new ToolReader);
    ScratchFolder const folder;
    std::string const file = folder / "cut.otio";
    writeFile(file, ToolReader::documentOf("from the file"));
    Outcome const run =
        orl({"layout", "b.mov", file, "a.mov", "-"}, ToolReader::documentOf("from the input"));
    EXPECT_EQ(run.code, 0);
    EXPECT_EQ(run.error, "");
    EXPECT_EQ(clipNames(run.out),
              (std::vector<std::string>{"b.mov", "from the file", "a.mov", "from the input"}));
    EXPECT_EQ(run.out.back(), '\n');
}

TEST(Layout, PlacesTheClipsOnTheCanvasThatIsAskedFor) {
    SharedPtr<ToolReader> const reader(new ToolReader);
    Outcome const run = orl({"layout", "a.mov", "--canvas", "100x50", "--name", "Wall"});
    ASSERT_EQ(run.code, 0) << run.error;
    rapidjson::Document const document = parsed(run.out);
    EXPECT_STREQ(document["name"].GetString(), "Wall");
    auto const& size = document["tracks"]["children"][0]["children"][0]["media_reference"]["metadata"]["orl"]
                               ["bounds"]["size"];
    // One cell of aspect 2 for a clip of aspect 2.
    EXPECT_EQ(size[0].GetDouble(), 100.0);
    EXPECT_EQ(size[1].GetDouble(), 50.0);
    EXPECT_EQ(reader->canvasWidth, 100.0);
    EXPECT_EQ(reader->rate, 24.0);
}

TEST(Layout, LeavesOutWhatCannotBeOpenedAndTellsIt) {
    SharedPtr<ToolReader> const reader(new ToolReader);
    Outcome const run = orl({"layout", "a.mov", "b.broken", "c.mov"});
    EXPECT_EQ(run.code, 1);
    EXPECT_EQ(
        run.error,
        "orl ERROR: \"b.broken\" : kErrorOpeningMediaFile: it cannot be opened as a medium; left out\n");
    EXPECT_EQ(clipNames(run.out), (std::vector<std::string>{"a.mov", "c.mov"}));
}

TEST(Layout, WritesNothingWhenAnythingElseIsAtFaultButTellsAllOfIt) {
    SharedPtr<ToolReader> const reader(new ToolReader);
    ScratchFolder const folder;
    std::string const output = folder / "layout.otio";
    Outcome const run = orl({"layout", "a.mov", "b.gone", "missing.otio", "-", "-o", output}, "{}");
    EXPECT_EQ(run.code, 1);
    EXPECT_EQ(run.out, "");
    EXPECT_EQ(run.error, "orl ERROR: \"b.gone\" : kFileNotFound: no such file\n"
                         "orl ERROR: \"missing.otio\" : No such file or directory\n"
                         "orl ERROR: \"-\" : holds no timeline\n");
    EXPECT_TRUE(folder.names().empty());
}

TEST(Layout, WritesNothingWhenNothingIsLeft) {
    SharedPtr<ToolReader> const reader(new ToolReader);
    Outcome const run = orl({"layout", "a.broken"});
    EXPECT_EQ(run.code, 1);
    EXPECT_EQ(run.out, "");
}

TEST(Layout, ReportsAReadersTextThatIsNoDocument) {
    SharedPtr<ToolReader> const reader(new ToolReader);
    Outcome const run = orl({"layout", "a.text"});
    EXPECT_EQ(run.code, 1);
    EXPECT_EQ(run.out, "");
    EXPECT_THAT(run.error, HasSubstr("kOTIOJsonReadError"));
}

TEST(Layout, ReadsDocumentsWithoutAReader) {
    Outcome const run = orl({"layout", "-"}, "\xef\xbb\xbf" + ToolReader::documentOf("one"));
    EXPECT_EQ(run.code, 0) << run.error;
    EXPECT_EQ(clipNames(run.out), std::vector<std::string>{"one"});
}

TEST(Layout, TakesNamesOfDocumentsInAnyCase) {
    EXPECT_TRUE(isDocumentName("-"));
    EXPECT_TRUE(isDocumentName("a/b.otio"));
    EXPECT_TRUE(isDocumentName("B.JSON"));
    EXPECT_TRUE(isDocumentName(".Otio"));
    EXPECT_FALSE(isDocumentName("otio"));
    EXPECT_FALSE(isDocumentName("a.otio.mov"));
    EXPECT_FALSE(isDocumentName(""));
    EXPECT_FALSE(isDocumentName("--"));
}

TEST(Layout, RefusesACanvasThatIsNone) {
    for (char const* canvas : {"", "x", "100", "100x", "x50", "100X50", "0x50", "100x0", "-1x5", "100x50x",
                               "1e999x5", "nanx5", "infx5", "100 x50 "}) {
        Outcome const run = orl({"layout", "a.mov", "--canvas", canvas});
        EXPECT_EQ(run.code, 2) << canvas;
        EXPECT_THAT(run.error, StartsWith("orl ERROR: ")) << canvas;
        EXPECT_EQ(run.out, "");
    }
}

TEST(Layout, RefusesARateThatIsNone) {
    for (char const* rate : {"", "fast", "0", "-24"}) {
        EXPECT_EQ(orl({"layout", "a.mov", "--rate", rate}).code, 2) << rate;
    }
}

TEST(Layout, DrawsTheCanvasWithItsCellsAndTheNamesOfTheClips) {
    SharedPtr<ToolReader> const reader(new ToolReader);
    ScratchFolder const folder;
    std::string const picture = folder / "wall.svg";
    Outcome const run = orl({"layout", "a.mov", "b.mov", "c.mov", "--canvas", "1600x1600", "--svg", picture});
    ASSERT_EQ(run.code, 0) << run.error;
    EXPECT_EQ(clipNames(run.out).size(), 3U);
    std::string const text = readFile(picture);
    EXPECT_THAT(text, StartsWith("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<svg "));
    EXPECT_THAT(text, HasSubstr("viewBox=\"0 0 1600.00 1600.00\""));
    // Two cells of 800 above one of 1600; clips of aspect 2 in their middles.
    EXPECT_THAT(text, HasSubstr("x=\"0.00\" y=\"0.00\" width=\"800.00\" height=\"800.00\""));
    EXPECT_THAT(text, HasSubstr("x=\"800.00\" y=\"0.00\" width=\"800.00\" height=\"800.00\""));
    EXPECT_THAT(text, HasSubstr("x=\"0.00\" y=\"800.00\" width=\"1600.00\" height=\"800.00\""));
    EXPECT_THAT(text, HasSubstr("x=\"0.00\" y=\"200.00\" width=\"800.00\" height=\"400.00\""));
    for (char const* name : {">a.mov<", ">b.mov<", ">c.mov<", "2048 x 1024", "48 f at 24"}) {
        EXPECT_THAT(text, HasSubstr(name));
    }
}

TEST(Layout, DrawsNoClipsAndNamesThatAreMarksOrNoText) {
    EXPECT_THAT(drawLayout("{}", Bounds(0.0, 0.0, 16.0, 9.0)), HasSubstr("</svg>"));
    std::string const text =
        drawLayout(ToolReader::documentOf("<&\\u0007\xff>"), Bounds(0.0, 0.0, 16.0, 9.0));
    EXPECT_THAT(text, HasSubstr("&lt;&amp;\xef\xbf\xbd\xef\xbf\xbd&gt;"));
    EXPECT_THAT(text, Not(HasSubstr("\xff")));
}

} // namespace ORL_0_81::tool
