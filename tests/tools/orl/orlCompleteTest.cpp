// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "tools/orl/orlToolReader.h"
#include "tools/orl/orlToolSupport.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <rapidjson/document.h>

namespace ORL_0_81::tool {

using testing::HasSubstr;

namespace {

// A document whose clips name their media and nothing else.
std::string documentNaming(std::vector<std::string> const& urls) {
    std::string clips;
    for (std::string const& url : urls) {
        clips += std::string(clips.empty() ? "" : ",") + R"({"OTIO_SCHEMA":"Clip.1","name":")" + url +
                 R"(","media_reference":{"OTIO_SCHEMA":"ExternalReference.1","target_url":")" + url +
                 R"("}})";
    }
    return R"({"OTIO_SCHEMA":"Timeline.1","tracks":{"OTIO_SCHEMA":"Stack.1","children":[{"OTIO_SCHEMA":)"
           R"("Track.1","kind":"Video","children":[)" +
           clips + "]}]}}";
}

} // namespace

TEST(Complete, FillsWhatTheDocumentLeavesOpen) {
    SharedPtr<ToolReader> const reader(new ToolReader);
    ScratchFolder const folder;
    std::string const output = folder / "complete.otio";
    Outcome const run = orl({"complete", "-", "-o", output}, documentNaming({"a.mov"}));
    ASSERT_EQ(run.code, 0) << run.error;
    EXPECT_EQ(run.out, "");
    EXPECT_EQ(run.error, "");
    rapidjson::Document document;
    ASSERT_FALSE(document.Parse(readFile(output).c_str()).HasParseError());
    EXPECT_EQ(document["global_start_time"]["value"].GetDouble(), 1001.0);
    auto const& clip = document["tracks"]["children"][0]["children"][0];
    EXPECT_EQ(clip["source_range"]["duration"]["value"].GetDouble(), 48.0);
}

TEST(Complete, TellsWhichMediaCouldNotBeReadAndGoesOn) {
    SharedPtr<ToolReader> const reader(new ToolReader);
    Outcome const run =
        orl({"complete", "-"}, documentNaming({"a.mov", "b.gone", "c.broken", "b.gone", "d.mov"}));
    EXPECT_EQ(run.code, 0);
    EXPECT_EQ(run.error, "orl: \"-\": not read:\n"
                         "  \"b.gone\": kFileNotFound: no such file (2 times)\n"
                         "  \"c.broken\": kErrorOpeningMediaFile: it cannot be opened as a medium\n");
    EXPECT_THAT(run.out, HasSubstr("\"d.mov\""));
}

TEST(Complete, TellsThatClipsOfANewerSchemaAreNotRead) {
    SharedPtr<ToolReader> const reader(new ToolReader);
    std::string document = documentNaming({"a.mov", "b.mov", "c.mov"});
    for (std::size_t clip = document.find("Clip.1");
         clip != std::string::npos && clip < document.find("c.mov"); clip = document.find("Clip.1")) {
        document.replace(clip, 6, "Clip.2");
    }
    Outcome const run = orl({"complete", "-"}, document);
    EXPECT_EQ(run.code, 0);
    EXPECT_EQ(run.error,
              "orl: \"-\": 3 x schema \"Clip.2\" is not handled, first at /tracks/children/0/children/0; orl "
              "convert makes clips of them that are read\n");
    EXPECT_EQ(orl({"complete", "--quiet", "-"}, document).error, "");
    EXPECT_EQ(orl({"layout", "-"}, document).error, run.error);
}

TEST(Complete, LeavesTheReaderRegisteredThatWasSoBefore) {
    SharedPtr<ToolReader> const reader(new ToolReader);
    orl({"complete", "-"}, documentNaming({"a.mov"}));
    EXPECT_EQ(MediaMetadata::getMediaMetadataReader().get(), reader.get());
    EXPECT_EQ(orl({"complete", "--strict", "-"}, documentNaming({"a.gone"})).code, 1);
    EXPECT_EQ(MediaMetadata::getMediaMetadataReader().get(), reader.get());
    EXPECT_EQ(reader->refcount(), 1) << "nobody else holds it";
    orl({"complete", "-"}, documentNaming({"a.mov"}));
    EXPECT_EQ(reader->reads, 3) << "and it is asked again";
}

TEST(Complete, LeavesNoReaderRegisteredWhereThereWasNone) {
    orl({"complete", "--quiet", "-"}, documentNaming({"a.gone"}));
    EXPECT_FALSE(MediaMetadata::getMediaMetadataReader());
}

TEST(Complete, IsQuietWhenAskedTo) {
    SharedPtr<ToolReader> const reader(new ToolReader);
    Outcome const run = orl({"complete", "--quiet", "-"}, documentNaming({"b.gone"}));
    EXPECT_EQ(run.code, 0);
    EXPECT_EQ(run.error, "");
}

TEST(Complete, WritesNothingWhenStrictAndAMediumCouldNotBeRead) {
    SharedPtr<ToolReader> const reader(new ToolReader);
    ScratchFolder const folder;
    Outcome const run = orl({"complete", "--strict", "--quiet", "-", "-o", folder / "out.otio"},
                            documentNaming({"a.mov", "b.gone", "c.gone"}));
    EXPECT_EQ(run.code, 1);
    EXPECT_EQ(run.error, "orl ERROR: \"-\" : 2 media could not be read\n");
    EXPECT_TRUE(folder.names().empty());
}

TEST(Complete, NamesTheFaultOfADocument) {
    SharedPtr<ToolReader> const reader(new ToolReader);
    EXPECT_EQ(orl({"complete", "gone.otio"}).error, "orl ERROR: \"gone.otio\" : No such file or directory\n");
    EXPECT_EQ(orl({"complete", "-"}, "{}").error, "orl ERROR: \"-\" : holds no timeline\n");
    EXPECT_THAT(orl({"complete", "-"}, "{]").error, HasSubstr("line 1, column 2: "));
    EXPECT_EQ(reader->reads, 0);
}

TEST(Complete, PassesOverAByteOrderMark) {
    SharedPtr<ToolReader> const reader(new ToolReader);
    Outcome const run = orl({"complete", "-"}, "\xef\xbb\xbf" + documentNaming({"a.mov"}));
    EXPECT_EQ(run.code, 0) << run.error;
    EXPECT_THAT(run.out, HasSubstr("1001.0"));
}

TEST(Complete, HandsTheCanvasAndTheRateToTheReader) {
    SharedPtr<ToolReader> const reader(new ToolReader);
    EXPECT_EQ(orl({"complete", "-", "--canvas", "640x480", "--rate", "25"}, documentNaming({"a.mov"})).code,
              0);
    EXPECT_EQ(reader->canvasWidth, 640.0);
    EXPECT_EQ(reader->rate, 25.0);
}

} // namespace ORL_0_81::tool
