// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "orlTextTable.h"
#include "tools/orl/orlToolSupport.h"

#include "internal/orlJson.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace ORL_0_81::tool {

using testing::HasSubstr;
using testing::Not;

namespace {

// A clip with a frame rate of its own, one of the tracking service in a stack in a track, one below a stack.
constexpr char cut[] = R"({
  "OTIO_SCHEMA": "Timeline.1",
  "name": "cut",
  "global_start_time": {"OTIO_SCHEMA": "RationalTime.1", "value": 90000, "rate": 25},
  "tracks": {"OTIO_SCHEMA": "Stack.1", "children": [
    {"OTIO_SCHEMA": "Track.1", "name": "Bilder \u00fc", "kind": "Video", "children": [
      {"OTIO_SCHEMA": "Gap.1", "effects": [{"OTIO_SCHEMA": "CDL.1"}]},
      {"OTIO_SCHEMA": "Clip.1", "name": "sh010",
       "source_range": {
         "start_time": {"OTIO_SCHEMA": "RationalTime.1", "value": 10.0, "rate": 20.0},
         "duration": {"OTIO_SCHEMA": "RationalTime.1", "value": 15.0, "rate": 20.0}},
       "media_reference": {
         "target_url": "file:///sh010.mov",
         "metadata": {"orl": {"frame_rate": 30.0, "pixel_resolution": [1920, 1080]}}},
       "effects": [{"OTIO_SCHEMA": "Annotation.1", "layers": [{"OTIO_SCHEMA": "Paint.1"}]}]},
      {"OTIO_SCHEMA": "Stack.1", "children": [
        {"OTIO_SCHEMA": "Clip.2"},
        {"OTIO_SCHEMA": "Track.1", "kind": "Audio", "children": [
          {"OTIO_SCHEMA": "Clip.1", "name": "two\nlines",
           "source_range": {"duration": {"OTIO_SCHEMA": "RationalTime.1", "value": 24000, "rate": 48000}},
           "media_reference": {"metadata": {"tr": {
             "entity_metadata": {"tr_path_to_movie": "/a/b.mov"}}}}}]}]}]},
    {"OTIO_SCHEMA": "Clip.1"}]}})";

constexpr char cutTable[] =
    "-\n"
    "  name   cut\n"
    "  start  3600.000 s, frame 90000 at 25 a second\n"
    "  holds  2 tracks, 3 clips, 1 gap, 3 effects\n"
    "\n"
    "  TRACK  NAME           KIND   CLIPS  GAPS  EFFECTS\n"
    "      1  Bilder \xc3\xbc       video      1     1        3\n"
    "      2    -            audio      1     0        0\n"
    "      -  (in no track)  -          1     0        0\n"
    "\n"
    "  TRACK  CLIP        START s  LENGTH s  START f  LENGTH f   RATE       SIZE  MEDIA\n"
    "      1  sh010         0.500     0.750       15      22.5     30  1920x1080  "
    "file:///sh010.mov\n"
    "      2  two\\nlines        -     0.500        -     24000  48000          -  "
    "/a/b.mov\n"
    "      -  -                 -         -        -         -      -          -  -\n"
    "\n"
    "  not read: 1 x schema \"Clip.2\" is not handled, first at "
    "/tracks/children/0/children/2/children/0\n";

constexpr char cutJson[] =
    R"({"file":"-","name":"cut","start":{"seconds":3600.0,"frames":90000.0,"rate":25.0},)"
    R"("counts":{"tracks":2,"clips":3,"gaps":1,"effects":3},"tracks":[)"
    "{\"name\":\"Bilder \xc3\xbc\","
    R"("kind":"video","depth":0,"counts":{"clips":1,"gaps":1,"effects":3},"clips":[)"
    R"({"name":"sh010","source_start":{"seconds":0.5,"frames":15.0},)"
    R"("source_length":{"seconds":0.75,"frames":22.5},"rate":30.0,)"
    R"("resolution":{"width":1920,"height":1080},"url":"file:///sh010.mov","frames_path":null,)"
    R"("movie_path":null,"uploaded_movie":null}]},)"
    R"({"name":"","kind":"audio","depth":1,"counts":{"clips":1,"gaps":0,"effects":0},"clips":[)"
    R"({"name":"two\nlines","source_start":null,"source_length":{"seconds":0.5,"frames":24000.0},)"
    R"("rate":48000.0,"resolution":null,"url":null,"frames_path":null,"movie_path":"/a/b.mov",)"
    R"("uploaded_movie":null}]}],)"
    R"("outside_tracks":{"counts":{"clips":1,"gaps":0,"effects":0},"clips":[)"
    R"({"name":"","source_start":null,"source_length":null,"rate":null,"resolution":null,"url":null,)"
    R"("frames_path":null,"movie_path":null,"uploaded_movie":null}]},)"
    R"("not_read":[{"count":1,"reason":"schema \"Clip.2\" is not handled",)"
    R"("first":"/tracks/children/0/children/2/children/0"}]})"
    "\n";

} // namespace

TEST(Info, ShowsTracksAndClipsAsAlignedTables) {
    Outcome const run = orl({"info", "-"}, cut);
    EXPECT_EQ(run.code, 0);
    EXPECT_EQ(run.out, cutTable);
    EXPECT_EQ(run.error, "");
}

TEST(Info, TellsTheSameAsOneJsonObject) {
    Outcome const run = orl({"info", "--json", "-"}, cut);
    EXPECT_EQ(run.code, 0);
    EXPECT_EQ(run.out, cutJson);
    EXPECT_EQ(run.error, "");
}

TEST(Info, ShowsNothingOfAnEmptyTimelineButThatItIsEmpty) {
    std::string const text = R"({"timeline":{"OTIO_SCHEMA":"Timeline.1"}})";
    EXPECT_EQ(orl({"info", "-"}, text).out,
              "-\n  name   -\n  start  -\n  holds  0 tracks, 0 clips, 0 gaps, 0 effects\n");
    EXPECT_EQ(orl({"info", "-", "--json"}, text).out,
              R"({"file":"-","name":"","start":null,"counts":{"tracks":0,"clips":0,"gaps":0,"effects":0},)"
              R"("tracks":[],"outside_tracks":{"counts":{"clips":0,"gaps":0,"effects":0},"clips":[]},)"
              R"("not_read":[]})"
              "\n");
}

TEST(Info, RefusesADocumentWithoutATimeline) {
    for (char const* text : {"{}", "[]", "7", R"({"OTIO_SCHEMA":"Timeline.2"})",
                             R"({"OTIO_SCHEMA":"Stack.1"})", R"({"OTIO_SCHEMA":"Clip.1"})"}) {
        Outcome const run = orl({"info", "-"}, text);
        EXPECT_EQ(run.code, 1);
        EXPECT_EQ(run.out, "");
        EXPECT_EQ(run.error, "orl ERROR: \"-\" : holds no timeline\n");
    }
}

TEST(Info, TriesEveryFileAndFailsIfAnyFailed) {
    ScratchFolder const folder;
    std::string const good = R"({"OTIO_SCHEMA":"Timeline.1","name":"good"})";
    writeFile(folder / "a.otio", good);
    writeFile(folder / "b.otio", "{");
    writeFile(folder / "c.otio", good);

    Outcome const run = orl({"info", folder / "a.otio", folder / "b.otio", folder / "c.otio"});
    EXPECT_EQ(run.code, 1);
    EXPECT_EQ(run.error, "orl ERROR: \"" + (folder / "b.otio").string() +
                             "\" : line 1, column 2: Missing a name for object member.\n");
    std::string const rest = "\n  name   good\n  start  -\n  holds  0 tracks, 0 clips, 0 gaps, 0 effects\n";
    EXPECT_EQ(run.out, (folder / "a.otio").string() + rest + '\n' + (folder / "c.otio").string() + rest);

    Outcome const json = orl({"info", "--json", folder / "a.otio", folder / "c.otio"});
    EXPECT_EQ(json.code, 0);
    EXPECT_EQ(std::count(json.out.begin(), json.out.end(), '\n'), 2);
}

TEST(Info, HoldsATimeBeyondADoubleForUndefined) {
    Outcome const run = orl({"info", "--json", "-"}, R"({"OTIO_SCHEMA":"Timeline.1","global_start_time":
        {"OTIO_SCHEMA":"RationalTime.1","value":1e300,"rate":1e-10}})");
    EXPECT_THAT(run.out, HasSubstr(R"("start":null)"));
}

TEST(Info, ShowsTheExampleWithAllItsTracksAndClips) {
    Outcome const run = orl({"info", ORL_TEST_EXAMPLES "/review.otio"});
    EXPECT_EQ(run.code, 0);
    EXPECT_THAT(run.out, HasSubstr("  start  3600.000 s, frame 86400 at 24 a second\n"
                                   "  holds  3 tracks, 4 clips, 2 gaps, 5 effects\n"));
    EXPECT_THAT(run.out, Not(HasSubstr("not read")));
}

TEST(TextTable, AlignsByCodePointsAndShowsEmptyCellsAsADash) {
    TextTable table({{"A", TextTable::Alignment::kRight}, {"B", TextTable::Alignment::kLeft}});
    table.addRow({"\xe2\x82\xac\xe2\x82\xac", "long"});
    table.addRow({"1", ""});
    EXPECT_EQ(table.text("> "), "> "
                                " A  B\n"
                                "> \xe2\x82\xac\xe2\x82\xac  long\n"
                                ">  1  -\n");
}

} // namespace ORL_0_81::tool
