// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "tools/orl/orlToolSupport.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <rapidjson/document.h>

namespace ORL_0_81::tool {

using testing::ElementsAre;
using testing::HasSubstr;

namespace {

constexpr char newerClip[] = R"({"OTIO_SCHEMA":"Clip.2","media_references":{"a":{"target_url":"a.mov"},)"
                             R"("b":{"target_url":"b.mov"}},"active_media_reference_key":"b"})";

constexpr char convertedClip[] = R"({"OTIO_SCHEMA":"Clip.1","media_reference":{"target_url":"b.mov"}})";

constexpr char newerClipReport[] =
    "orl: \"-\": not in the dialect:\n"
    "  1 x Clip.2 \"media_references\"/\"a\" is not carried, for it is not the active reference, first at "
    "/media_references/a\n"
    "  1 x Clip.2 \"active_media_reference_key\" \"b\" is not carried, for the reference has no name, first "
    "at /active_media_reference_key\n";

} // namespace

TEST(Convert, WritesTheDialectAndTellsWhatIsLost) {
    Outcome const run = orl({"convert", "-"}, newerClip);
    EXPECT_EQ(run.code, 0);
    EXPECT_EQ(run.out, convertedClip);
    EXPECT_EQ(run.error, newerClipReport);
}

TEST(Convert, ReadsStandardInputWhenNoFileIsNamed) {
    EXPECT_EQ(orl({"convert"}, newerClip).out, convertedClip);
    EXPECT_EQ(orl({"convert", "--quiet", "-o", "-"}, newerClip).out, convertedClip);
}

TEST(Convert, IsSilentAboutLossesWhenQuiet) {
    Outcome const run = orl({"convert", "--quiet", "-"}, newerClip);
    EXPECT_EQ(run.code, 0);
    EXPECT_EQ(run.out, convertedClip);
    EXPECT_EQ(run.error, "");
}

TEST(Convert, HoldsALossForAnErrorWhenStrictAndWritesNothing) {
    ScratchFolder const folder;
    std::string const error = "orl ERROR: \"-\" : the dialect would lose something in 2 places\n";
    Outcome const run = orl({"convert", "--strict", "-", "-o", folder / "out.otio"}, newerClip);
    EXPECT_EQ(run.code, 1);
    EXPECT_EQ(run.out, "");
    EXPECT_EQ(run.error, newerClipReport + error);
    EXPECT_TRUE(folder.names().empty());
    EXPECT_EQ(orl({"convert", "--strict", "--quiet", "-"}, newerClip).error, error);
    EXPECT_EQ(orl({"convert", "--strict", "-"}, convertedClip).code, 0);
}

TEST(Convert, MayWriteTheFileThatItReads) {
    ScratchFolder const folder;
    writeFile(folder / "cut.otio", newerClip);
    Outcome const run = orl({"convert", "--quiet", folder / "cut.otio", "--output", folder / "cut.otio"});
    EXPECT_EQ(run.code, 0);
    EXPECT_EQ(run.out, "");
    EXPECT_EQ(readFile(folder / "cut.otio"), convertedClip);
    EXPECT_THAT(folder.names(), ElementsAre("cut.otio"));
}

TEST(Convert, LeavesTheOutputAloneWhenTheInputIsAtFault) {
    ScratchFolder const folder;
    writeFile(folder / "old.otio", "old");
    EXPECT_EQ(orl({"convert", "-", "-o", folder / "old.otio"}, "{").code, 1);
    EXPECT_EQ(orl({"convert", folder / "absent.otio", "-o", folder / "old.otio"}).code, 1);
    EXPECT_EQ(readFile(folder / "old.otio"), "old");
}

TEST(Convert, LeavesOutAByteOrderMarkWhichTheLibraryDoesNotRead) {
    EXPECT_EQ(orl({"convert"}, std::string("\xef\xbb\xbf") + newerClip).out, convertedClip);
}

TEST(Convert, PassesADocumentInTheDialectByteForByte) {
    for (std::string const& text :
         {readFile(ORL_TEST_DATA "/orl/everything.otio"), readFile(ORL_TEST_DATA "/timeline/review.otio"),
          std::string("{\"OTIO_SCHEMA\":\"Timeline.1\",\"name\":\"cut\"}\r\n \n"), std::string(" 17.250 "),
          std::string("{}\n\0\0", 5), std::string("[{\"OTIO_SCHEMA\":\"Clip.2\"}]")}) {
        Outcome const run = orl({"convert"}, text);
        EXPECT_EQ(run.code, 0);
        EXPECT_EQ(run.out, text);
        EXPECT_EQ(run.error, "");
    }
}

TEST(Convert, ChangesNothingButTheClipsOfADocumentOfANewerWriter) {
    // What the document would be if it had been written as it comes out: told line by line.
    std::string expected = readFile(ORL_TEST_DATA "/orl/newerClips.otio");
    auto const replace = [&expected](std::string const& from, std::string const& to) {
        std::size_t const position = expected.rfind(from);
        ASSERT_NE(position, std::string::npos) << from;
        expected.replace(position, from.size(), to);
    };
    std::string const outer = "\n                        ";
    std::string const inner = "\n                                        ";
    replace("\"Clip.2\"", "\"Clip.1\"");
    replace("    }" + outer + "}," + outer + "\"name\": \"hb_020\"",
            "    }," + outer + "\"name\": \"hb_020\"");
    replace("\"active_media_reference_key\": \"high\"," + outer + "\"media_references\": {" + outer +
                "    \"proxy\": {" + outer + "        \"OTIO_SCHEMA\": \"ExternalReference.1\"," + outer +
                "        \"target_url\": \"media/proxy.mov\"" + outer + "    }," + outer + "    \"high\": {",
            "\"media_reference\": {");
    replace("\"Clip.2\"", "\"Clip.1\"");
    replace("    }" + inner + "}," + inner + "\"active_media_reference_key\": \"DEFAULT_MEDIA\"", "    }");
    replace("\"media_references\": {" + inner + "    \"DEFAULT_MEDIA\": {", "\"media_reference\": {");
    replace("\"missing_frame_policy\": \"error\"" + outer + "    }" + outer + "}," + outer +
                "\"active_media_reference_key\": \"DEFAULT_MEDIA\"",
            "\"missing_frame_policy\": \"error\"," + outer +
                "        \"target_url\": \"media/hb_010.%04d.ppm\"" + outer + "    }");
    replace("\"media_references\": {" + outer + "    \"DEFAULT_MEDIA\": {", "\"media_reference\": {");
    replace("\"Clip.2\"", "\"Clip.1\"");

    Outcome const run = orl({"convert", ORL_TEST_DATA "/orl/newerClips.otio"});
    EXPECT_EQ(run.code, 0);
    EXPECT_EQ(run.out, expected);
    EXPECT_THAT(run.error, HasSubstr("  1 x Clip.2 \"media_references\"/\"proxy\" is not carried"));

    Outcome const again = orl({"convert", "-"}, run.out);
    EXPECT_EQ(again.out, run.out);
    EXPECT_EQ(again.error, "");
}

} // namespace ORL_0_81::tool
