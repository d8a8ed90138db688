// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "rapidotio/orlOtioNodeVisitor.h"
#include "rapidotio/orlOtioVisitorHelper.h"
#include "tools/orl/orlToolSupport.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace ORL_0_81::tool {

using testing::ElementsAre;

namespace {

constexpr char gapDocument[] = R"({
  "OTIO_SCHEMA": "Timeline.1",
  "name": "cut",
  "tracks": {
    "OTIO_SCHEMA": "Stack.1",
    "children": [
      {"OTIO_SCHEMA": "Track.1", "name": "V1", "kind": "VIDEO",
       "children": [
         {"OTIO_SCHEMA": "Transition.1"},
         {"OTIO_SCHEMA": "Gap.1", "enabled": true,
          "source_range": {"duration": {"OTIO_SCHEMA": "RationalTime.1", "value": 48, "rate": "24"}}},
         {"OTIO_SCHEMA": "Transition.1"}]}]}})";

constexpr char gapNormalForm[] =
    R"({"tracks":{"OTIO_SCHEMA":"Stack.1","children":[{"name":"V1","OTIO_SCHEMA":"Track.1","children":[)"
    R"({"name":"","OTIO_SCHEMA":"Gap.1","effects":[],"source_range":{"start_time":{"OTIO_SCHEMA":)"
    R"("RationalTime.1"},"duration":{"OTIO_SCHEMA":"RationalTime.1","value":48.0,"rate":24.0},)"
    R"("OTIO_SCHEMA":"TimeRange.1"},"metadata":{}}],"kind":"Video"}]},"name":"cut","OTIO_SCHEMA":)"
    R"("Timeline.1","metadata":{"orl":{"ORL_SCHEMA":"TimelineMetadata.1","version":"0.81"}},)"
    R"("global_start_time":{"OTIO_SCHEMA":"RationalTime.1"}})"
    "\n";

constexpr char gapReport[] =
    "orl: \"-\": not in the normal form:\n"
    "  2 x schema \"Transition.1\" is not handled, first at /tracks/children/0/children/0\n"
    "  1 x Gap.1 \"enabled\" is not modelled, first at /tracks/children/0/children/1/enabled\n";

} // namespace

TEST(Normalize, WritesTheNormalFormInOneLineAndTellsWhatIsLost) {
    Outcome const run = orl({"normalize", "-"}, gapDocument);
    EXPECT_EQ(run.code, 0);
    EXPECT_EQ(run.out, gapNormalForm);
    EXPECT_EQ(run.error, gapReport);
}

TEST(Normalize, IsSilentAboutLossesWhenQuiet) {
    Outcome const run = orl({"normalize", "--quiet", "-"}, gapDocument);
    EXPECT_EQ(run.code, 0);
    EXPECT_EQ(run.out, gapNormalForm);
    EXPECT_EQ(run.error, "");
}

TEST(Normalize, HoldsALossForAnErrorWhenStrict) {
    std::string const error = "orl ERROR: \"-\" : the normal form would lose something in 3 places\n";
    Outcome const run = orl({"normalize", "--strict", "-"}, gapDocument);
    EXPECT_EQ(run.code, 1);
    EXPECT_EQ(run.out, "");
    EXPECT_EQ(run.error, gapReport + error);

    Outcome const quiet = orl({"normalize", "--strict", "--quiet", "-"}, gapDocument);
    EXPECT_EQ(quiet.code, 1);
    EXPECT_EQ(quiet.error, error);
}

TEST(Normalize, TouchesNoFileForALossWhenStrict) {
    ScratchFolder const folder;
    writeFile(folder / "old.otio", "old");
    for (char const* name : {"old.otio", "new.otio"}) {
        EXPECT_EQ(orl({"normalize", "--strict", "-", "-o", folder / name}, gapDocument).code, 1);
    }
    EXPECT_EQ(readFile(folder / "old.otio"), "old");
    EXPECT_THAT(folder.names(), ElementsAre("old.otio"));
}

TEST(Normalize, TakesItsOwnOutputForLosslessWhenStrict) {
    Outcome const run = orl({"normalize", "--strict", "-"}, gapNormalForm);
    EXPECT_EQ(run.code, 0);
    EXPECT_EQ(run.out, gapNormalForm);
    EXPECT_EQ(run.error, "");
}

TEST(Normalize, WritesToAFile) {
    ScratchFolder const folder;
    Outcome const run = orl({"normalize", "--quiet", "-", "--output", folder / "out.otio"}, gapDocument);
    EXPECT_EQ(run.code, 0);
    EXPECT_EQ(run.out, "");
    EXPECT_EQ(readFile(folder / "out.otio"), gapNormalForm);
    EXPECT_THAT(folder.names(), ElementsAre("out.otio"));
}

TEST(Normalize, MayWriteTheFileThatItReads) {
    ScratchFolder const folder;
    writeFile(folder / "cut.otio", gapDocument);
    Outcome const run = orl({"normalize", "--quiet", folder / "cut.otio", "-o", folder / "cut.otio"});
    EXPECT_EQ(run.code, 0);
    EXPECT_EQ(readFile(folder / "cut.otio"), gapNormalForm);
    EXPECT_THAT(folder.names(), ElementsAre("cut.otio"));
}

TEST(Normalize, LeavesTheOutputAloneWhenTheInputIsAtFault) {
    ScratchFolder const folder;
    writeFile(folder / "old.otio", "old");
    EXPECT_EQ(orl({"normalize", "-", "-o", folder / "old.otio"}, "{").code, 1);
    EXPECT_EQ(orl({"normalize", folder / "absent.otio", "-o", folder / "old.otio"}).code, 1);
    EXPECT_EQ(readFile(folder / "old.otio"), "old");
}

TEST(Normalize, TellsWhenTheOutputIsAFolder) {
    ScratchFolder const folder;
    Outcome const run = orl({"normalize", "--quiet", "-", "-o", folder.path()}, gapDocument);
    EXPECT_EQ(run.code, 1);
    EXPECT_EQ(run.error, "orl ERROR: \"" + folder.path().string() + "\" : Is a directory\n");
}

TEST(Normalize, WritesAnEmptyObjectForADocumentWithoutATimelineAndTellsIt) {
    struct Case {
        char const* text;
        char const* loss;
    };
    for (auto const& [text, loss] : {
             Case{R"({})", "an object has no schema, at the top"},
             Case{R"({"timeline":{"name":"x"}})", "an object has no schema, first at /timeline"},
             Case{R"({"OTIO_SCHEMA":"Timeline.2"})", "schema \"Timeline.2\" is not handled, at the top"},
             Case{R"({"OTIO_SCHEMA":"Clip.1","name":"c"})",
                  "schema \"Clip.1\" does not fit at the top, at the top"},
             Case{R"([1, 2])", "a list of 2 is no object, at the top"},
             Case{R"(null)", "null is no object, at the top"},
         }) {
        Outcome const run = orl({"normalize", "-"}, text);
        EXPECT_EQ(run.code, 0);
        EXPECT_EQ(run.out, "{}\n");
        EXPECT_EQ(run.error, std::string("orl: \"-\": not in the normal form:\n  1 x ") + loss + '\n');
    }
}

TEST(Normalize, WritesAStackWithoutATimelineAsTheLibraryDoesAndTellsIt) {
    Outcome const run = orl({"normalize", "-"}, R"({"OTIO_SCHEMA":"Stack.1"})");
    EXPECT_EQ(run.out, "{\"tracks\":{\"OTIO_SCHEMA\":\"Stack.1\",\"children\":[]}}\n");
    EXPECT_EQ(
        run.error,
        "orl: \"-\": not in the normal form:\n  1 x schema \"Stack.1\" makes no timeline, at the top\n");
}

TEST(Normalize, TellsWhatIsLostAtTheBottomOfADeepDocument) {
    // As deep as a document may be: every layer takes two levels, and the innermost holds a loss.
    std::string const layer = R"({"OTIO_SCHEMA":"Annotation.1","layers":[)";
    std::string text = R"({"OTIO_SCHEMA":"Timeline.1","tracks":{"OTIO_SCHEMA":"Stack.1","children":[)"
                       R"({"OTIO_SCHEMA":"Gap.1","effects":[)";
    std::string place = "/tracks/children/0/effects/0";
    constexpr int kLayers = 497;
    for (int i = 0; i < kLayers; ++i) {
        text += layer;
        place += i == 0 ? "" : "/layers/0";
    }
    text += R"({"OTIO_SCHEMA":"Glow.1"})";
    for (int i = 0; i < kLayers; ++i) {
        text += "]}";
    }
    text += "]}]}}";

    Outcome const run = orl({"normalize", "-"}, text);
    EXPECT_EQ(run.code, 0);
    EXPECT_EQ(run.error,
              "orl: \"-\": not in the normal form:\n  1 x schema \"Glow.1\" is not handled, first at " +
                  place + "/layers/0\n");
    EXPECT_EQ(orl({"info", "-"}, text).code, 0);
}

TEST(Normalize, GivesWhatTheLibraryGives) {
    class : public rapidotio::NodeVisitor {
    } visitor;
    for (
        std::string const& text :
        {std::string(gapDocument), readFile(ORL_TEST_DATA "/orl/everything.otio"), std::string("{}"),
         std::string("[]"),
         R"({"note":1,"timeline":{"timeline":{"timeline":{"OTIO_SCHEMA":"Timeline.1"},"OTIO_SCHEMA":"Timeline.1","name":"in"}}})" +
             std::string()}) {
        std::string expected;
        ASSERT_TRUE(rapidotio::VisitorHelper::visit(text, visitor, &expected));
        EXPECT_EQ(orl({"normalize", "-"}, text).out, expected + '\n');
    }
}

} // namespace ORL_0_81::tool
