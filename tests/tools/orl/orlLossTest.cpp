// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "tools/orl/orlToolSupport.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

// Each row: what a document holds, and what is told of it. The normal form of what is not told is the
// business of orlLossPropertyTest.

namespace ORL_0_81::tool {

using testing::ElementsAre;

namespace {

// Names of rows are names of tests.
struct Row {
    char const* name;
    std::string text;
    std::vector<std::string> losses;
};

[[maybe_unused]] void PrintTo(Row const& row, std::ostream* out) { *out << row.name; }

std::string timeline(std::string const& members) { return R"({"OTIO_SCHEMA":"Timeline.1",)" + members + '}'; }

std::string stack(std::string const& members) {
    return timeline(R"("tracks":{"OTIO_SCHEMA":"Stack.1",)" + members + '}');
}

std::string track(std::string const& members) {
    return stack(R"("children":[{"OTIO_SCHEMA":"Track.1",)" + members + "}]");
}

// Places below begin with /tracks/children/0/children/0.
std::string clip(std::string const& members) {
    return track(R"("children":[{"OTIO_SCHEMA":"Clip.1",)" + members + "}]");
}

std::string clipFormat(std::string const& members) {
    return clip(R"("media_reference":{"metadata":{"orl":{)" + members + "}}}");
}

std::string effect(std::string const& members) {
    return clip(R"("effects":[{"OTIO_SCHEMA":)" + members + "}]");
}

std::string clipPlace(std::string const& rest) { return "/tracks/children/0/children/0/" + rest; }

class LossRow : public testing::TestWithParam<Row> {};

} // namespace

TEST_P(LossRow, IsTold) { EXPECT_EQ(lossesOf(GetParam().text), GetParam().losses); }

auto const rowName = [](testing::TestParamInfo<Row> const& info) { return info.param.name; };

INSTANTIATE_TEST_SUITE_P(
    Structure, LossRow,
    testing::Values(
        Row{"UnknownMembersOfATimeline",
            timeline(R"("metadata":{"foo":1,"orl":{"by":"me"}},"extra":[0])"),
            {"1 x Timeline.1 \"metadata\"/\"foo\" is not modelled, first at /metadata/foo",
             "1 x Timeline.1 \"metadata\"/\"orl\"/\"by\" is not modelled, first at /metadata/orl/by",
             "1 x Timeline.1 \"extra\" is not modelled, first at /extra"}},
        Row{"TheTextOfAnotherVersion",
            timeline(R"("metadata":{"orl":{"version":"0.80"}})"),
            {"1 x Timeline.1 \"metadata\"/\"orl\"/\"version\" \"0.80\" is rewritten as \"0.81\", first at "
             "/metadata/orl/version"}},
        Row{"TheNameOfAStack",
            stack(R"("name":"tracks")"),
            {"1 x Stack.1 \"name\" is not written, first at /tracks/name"}},
        Row{"MembersAreNotSoughtInAnotherSchema",
            track(R"("source_range":{"a":1},"effects":[1])"),
            {"1 x Track.1 \"source_range\" is not modelled, first at /tracks/children/0/source_range",
             "1 x Track.1 \"effects\" is not modelled, first at /tracks/children/0/effects"}},
        Row{"AnotherKindOfTrack",
            track(R"("kind":"Subtitle")"),
            {"1 x Track.1 \"kind\" is \"Subtitle\" where \"Video\" or \"Audio\" is expected, first at "
             "/tracks/children/0/kind"}},
        Row{"ElementsThatBecomeNoNode",
            track(R"("children":[null,{"OTIO_SCHEMA":"Clip.2","name":"x"},{},7,{"OTIO_SCHEMA":"Clip"},)"
                  R"({"OTIO_SCHEMA":"Clip.2"}])"),
            {"2 x schema \"Clip.2\" is not handled, first at /tracks/children/0/children/1",
             "1 x an object has no schema, first at /tracks/children/0/children/2",
             "1 x an integer is no object, first at /tracks/children/0/children/3",
             "1 x schema \"Clip\" is not handled, first at /tracks/children/0/children/4"}},
        Row{"TracksOfAnUnknownSchema",
            timeline(R"("tracks":{"OTIO_SCHEMA":"Stack.2"})"),
            {"1 x schema \"Stack.2\" is not handled, first at /tracks"}},
        Row{"TracksThatAreNoObject",
            timeline(R"("tracks":[{"OTIO_SCHEMA":"Stack.1"}])"),
            {"1 x Timeline.1 \"tracks\" is a list of 1 where an object is expected, first at /tracks"}},
        Row{"AWrapperWithMoreInIt",
            R"({"by":"me","timeline":{"OTIO_SCHEMA":"Timeline.1","x":1}})",
            {"1 x document \"by\" is not modelled, first at /by",
             "1 x Timeline.1 \"x\" is not modelled, first at /timeline/x"}},
        Row{"AWrapperThatIsNone",
            timeline(R"("timeline":5)"),
            {"1 x Timeline.1 \"timeline\" is not modelled, first at /timeline"}},
        Row{"PlacesWithSlashesAndTildes",
            timeline(R"("a/b~c":1)"),
            {"1 x Timeline.1 \"a/b~c\" is not modelled, first at /a~1b~0c"}}),
    rowName);

INSTANTIATE_TEST_SUITE_P(
    Fit, LossRow,
    testing::Values(
        Row{"AStackInATrackWithAllBelowIt",
            track(R"("children":[{"OTIO_SCHEMA":"Stack.1","x":1,"children":[{"OTIO_SCHEMA":"Clip.2"}]}])"),
            {"1 x schema \"Stack.1\" does not fit inside \"Track.1\", first at "
             "/tracks/children/0/children/0"}},
        Row{"AStackInAStack",
            stack(R"("children":[{"OTIO_SCHEMA":"Stack.1"}])"),
            {"1 x schema \"Stack.1\" does not fit inside \"Stack.1\", first at /tracks/children/0"}},
        Row{"ATrackForTracks",
            timeline(R"("tracks":{"OTIO_SCHEMA":"Track.1"})"),
            {"1 x schema \"Track.1\" does not fit inside \"Timeline.1\", first at /tracks"}},
        Row{"ATimelineForTracks",
            timeline(R"("tracks":{"OTIO_SCHEMA":"Timeline.1"})"),
            {"1 x schema \"Timeline.1\" does not fit inside \"Timeline.1\", first at /tracks"}},
        Row{"ATimelineInAStack",
            stack(R"("children":[{"OTIO_SCHEMA":"Timeline.1"}])"),
            {"1 x schema \"Timeline.1\" does not fit inside \"Stack.1\", first at /tracks/children/0"}},
        Row{"ClipsBelowStacksAndTracksBelowTracksFit",
            stack(R"("children":[{"OTIO_SCHEMA":"Clip.1"},{"OTIO_SCHEMA":"Track.1","children":[)"
                  R"({"OTIO_SCHEMA":"Track.1"},{"OTIO_SCHEMA":"CDL.1"}]}])"),
            {}}),
    rowName);

INSTANTIATE_TEST_SUITE_P(
    Times, LossRow,
    testing::Values(
        Row{"AValueAsText",
            timeline(R"("global_start_time":{"OTIO_SCHEMA":"RationalTime.1","value":"24","rate":"24"})"),
            {"1 x Timeline.1 \"global_start_time\"/\"value\" is a text where a number is expected, first at "
             "/global_start_time/value"}},
        Row{"AValueBeyond32Bits",
            timeline(R"("global_start_time":{"OTIO_SCHEMA":"RationalTime.1","value":2147483648})"),
            {"1 x Timeline.1 \"global_start_time\"/\"value\" is an integer out of range where a number is "
             "expected, first at /global_start_time/value"}},
        Row{"ARateThatIsMoreThanANumber",
            timeline(R"("global_start_time":{"OTIO_SCHEMA":"RationalTime.1","rate":"24 fps"})"),
            {"1 x Timeline.1 \"global_start_time\"/\"rate\" is cut behind its number, first at "
             "/global_start_time/rate"}},
        Row{"ARateThatIsNoNumber",
            timeline(R"("global_start_time":{"OTIO_SCHEMA":"RationalTime.1","rate":"film"})"),
            {"1 x Timeline.1 \"global_start_time\"/\"rate\" is a text where a number is expected, first at "
             "/global_start_time/rate"}},
        Row{"ATimeOfAnotherSchema",
            timeline(R"("global_start_time":{"OTIO_SCHEMA":"RationalTime.2","value":1.0})"),
            {"1 x Timeline.1 \"global_start_time\" is no \"RationalTime.1\", first at /global_start_time"}},
        Row{"MoreInARange",
            clip(R"("source_range":{"OTIO_SCHEMA":"TimeRange.2","end":1,"start_time":{"OTIO_SCHEMA":)"
                 R"("RationalTime.1","drop":true}})"),
            {"1 x Clip.1 \"source_range\"/\"OTIO_SCHEMA\" \"TimeRange.2\" is rewritten as \"TimeRange.1\", "
             "first at " +
                 clipPlace("source_range/OTIO_SCHEMA"),
             "1 x Clip.1 \"source_range\"/\"end\" is not modelled, first at " + clipPlace("source_range/end"),
             "1 x Clip.1 \"source_range\"/\"start_time\"/\"drop\" is not modelled, first at " +
                 clipPlace("source_range/start_time/drop")}},
        Row{"AnUndefinedRateIsNoLoss",
            timeline(R"("global_start_time":{"OTIO_SCHEMA":"RationalTime.1","rate":0})"),
            {}}),
    rowName);

INSTANTIATE_TEST_SUITE_P(
    Clips, LossRow,
    testing::Values(
        Row{"AnotherMediaReference",
            clip(R"("media_reference":{"OTIO_SCHEMA":"MissingReference.1","name":"m"})"),
            {"1 x Clip.1 \"media_reference\"/\"OTIO_SCHEMA\" \"MissingReference.1\" is rewritten as "
             "\"ExternalReference.1\", first at " +
                 clipPlace("media_reference/OTIO_SCHEMA"),
             "1 x Clip.1 \"media_reference\"/\"name\" is not modelled, first at " +
                 clipPlace("media_reference/name")}},
        Row{"AFrameRateWithoutAFraction",
            clipFormat(R"("frame_rate":24)"),
            {"1 x Clip.1 \"media_reference\"/\"metadata\"/\"orl\"/\"frame_rate\" is an integer where a "
             "fraction is expected, first at " +
             clipPlace("media_reference/metadata/orl/frame_rate")}},
        Row{"AFileSizeBeyond31Bits",
            clipFormat(R"("file_size_in_bytes":2147483648)"),
            {"1 x Clip.1 \"media_reference\"/\"metadata\"/\"orl\"/\"file_size_in_bytes\" is an integer out "
             "of range where an integer of 32 bits is expected, first at " +
             clipPlace("media_reference/metadata/orl/file_size_in_bytes")}},
        Row{"AResolutionOfThree",
            clipFormat(R"("pixel_resolution":[1,2,3])"),
            {"1 x Clip.1 \"media_reference\"/\"metadata\"/\"orl\"/\"pixel_resolution\" is a list of 3, not "
             "of "
             "2, first at " +
             clipPlace("media_reference/metadata/orl/pixel_resolution")}},
        Row{"OneFractionInAResolution",
            clipFormat(R"("pixel_resolution":[1.5,2])"),
            {"1 x Clip.1 \"media_reference\"/\"metadata\"/\"orl\"/\"pixel_resolution\" is a fraction where "
             "an "
             "integer of 32 bits is expected, first at " +
             clipPlace("media_reference/metadata/orl/pixel_resolution/0")}},
        Row{"ExtraDataThatIsNoText",
            clipFormat(R"("extra_data":{"a":"b","c":1,"c":"d"})"),
            {"1 x Clip.1 \"media_reference\"/\"metadata\"/\"orl\"/\"extra_data\"/\"c\" is an integer where a "
             "text is expected, first at " +
             clipPlace("media_reference/metadata/orl/extra_data/c")}},
        Row{"ABoundThatIsNoNumber",
            clip(R"("media_reference":{"metadata":{"orl":{"bounds":{"center":[1.5,2.5]}},)"
                 R"("tr":{"bounds":{"center":[1.5,"x"],"size":[3.5,4.5]}}}})"),
            {"1 x Clip.1 \"media_reference\"/\"metadata\"/\"tr\"/\"bounds\"/\"center\" is a text where a "
             "number is expected, first at " +
             clipPlace("media_reference/metadata/tr/bounds/center/1")}},
        Row{"BoundsThatTheServiceReplaces",
            clip(R"("media_reference":{"metadata":{"orl":{"bounds":{"center":[1.5,2.5]}},)"
                 R"("tr":{"bounds":{"center":[3.5,2.5]}}}})"),
            {"1 x Clip.1 \"media_reference\"/\"metadata\"/\"orl\"/\"bounds\"/\"center\" is replaced by "
             "another member, first at " +
             clipPlace("media_reference/metadata/orl/bounds/center/0")}},
        Row{"ThePathsOfTheServiceThatTheClipReplaces",
            clip(
                R"("media_reference":{"metadata":{"tr":{"entity":"/Version/1","entity_metadata":{)"
                R"("tr_path_to_movie":"a","tr_path_to_frames":"b","tr_uploaded_movie_mp4":{"url":"d"}}}}},)"
                R"("metadata":{"orl":{"paths":{"movie":"c","file":"b","mp4":"e"},"entity":{"id":2,"type":"Shot"}}})"),
            {"1 x Clip.1 \"media_reference\"/\"metadata\"/\"tr\"/\"entity\" is replaced by another member, "
             "first at " +
                 clipPlace("media_reference/metadata/tr/entity"),
             "1 x Clip.1 \"media_reference\"/\"metadata\"/\"tr\"/\"entity_metadata\"/\"tr_path_to_movie\" is "
             "replaced by another member, first at " +
                 clipPlace("media_reference/metadata/tr/entity_metadata/tr_path_to_movie"),
             "1 x Clip.1 \"media_reference\"/\"metadata\"/\"tr\"/\"entity_metadata\"/"
             "\"tr_uploaded_movie_mp4\"/\"url\" is replaced by another member, first at " +
                 clipPlace("media_reference/metadata/tr/entity_metadata/tr_uploaded_movie_mp4/url")}},
        Row{"MoreInTheBlockOfTheService",
            clip(R"("media_reference":{"metadata":{"tr":{"entity":"Version","host":"h"}}},)"
                 R"("metadata":{"tr":{"clip_uid":"u","user":"me"}})"),
            {"1 x Clip.1 \"media_reference\"/\"metadata\"/\"tr\"/\"entity\" is a text where /TYPE/NUMBER is "
             "expected, first at " +
                 clipPlace("media_reference/metadata/tr/entity"),
             "1 x Clip.1 \"media_reference\"/\"metadata\"/\"tr\"/\"host\" is not modelled, first at " +
                 clipPlace("media_reference/metadata/tr/host"),
             "1 x Clip.1 \"metadata\"/\"tr\"/\"user\" is not modelled, first at " +
                 clipPlace("metadata/tr/user")}},
        Row{"AnEntityThatIsMoreThanTypeAndNumber",
            clip(R"("media_reference":{"metadata":{"tr":{"entity":"/Version/12/x"}}})"),
            {"1 x Clip.1 \"media_reference\"/\"metadata\"/\"tr\"/\"entity\" is kept in part, first at " +
             clipPlace("media_reference/metadata/tr/entity")}},
        Row{"FormsOfMetadataBesideTheService",
            clip(R"("metadata":{"id":"a","orl":{"id":"b"},"tr":{},"cdl":1})"),
            {"1 x Clip.1 \"metadata\"/\"id\" is not read beside \"tr\", first at " + clipPlace("metadata/id"),
             "1 x Clip.1 \"metadata\"/\"orl\" is not read beside \"tr\", first at " +
                 clipPlace("metadata/orl"),
             "1 x Clip.1 \"metadata\"/\"cdl\" is not modelled, first at " + clipPlace("metadata/cdl")}},
        Row{"TheOldFormBesideOurs",
            clip(R"("metadata":{"id":"a","orl":{"id":"b","foo":1},"tr":3})"),
            {"1 x Clip.1 \"metadata\"/\"id\" is not read beside \"orl\", first at " +
                 clipPlace("metadata/id"),
             "1 x Clip.1 \"metadata\"/\"orl\"/\"foo\" is not modelled, first at " +
                 clipPlace("metadata/orl/foo"),
             "1 x Clip.1 \"metadata\"/\"tr\" is an integer where an object is expected, first at " +
                 clipPlace("metadata/tr")}}),
    rowName);

INSTANTIATE_TEST_SUITE_P(
    Effects, LossRow,
    testing::Values(
        Row{"ALayerRangeStraightOnAClip",
            effect(
                R"("CDL.1","layer_range":{"start_time":{"OTIO_SCHEMA":"RationalTime.1","value":1.0,"rate":)"
                R"(24.0},"duration":{"OTIO_SCHEMA":"RationalTime.1","value":1.0,"rate":24.0}})"),
            {"1 x CDL.1 \"layer_range\" is not written, for the effect is no layer of another, first at " +
             clipPlace("effects/0/layer_range")}},
        Row{"ALayerRangeThatIsHalfDefined",
            effect(R"("Annotation.1","layers":[{"OTIO_SCHEMA":"Text.1","layer_range":{"start_time":)"
                   R"({"OTIO_SCHEMA":"RationalTime.1","value":1.0,"rate":24.0}}}])"),
            {"1 x Text.1 \"layer_range\" is not written, for it is not defined in whole, first at " +
             clipPlace("effects/0/layers/0/layer_range")}},
        Row{"ALayerRangeThatSaysNothingIsNoLoss",
            effect(R"("CDL.1","layer_range":{"OTIO_SCHEMA":"TimeRange.1","start_time":{"OTIO_SCHEMA":)"
                   R"("RationalTime.1"},"duration":null})"),
            {}},
        Row{"ListsOfOtherLengths",
            effect(R"("CDL.1","slope":[1,2],"offset":[1,2,3,4,5],"power":[1,2,3,4])"),
            {"1 x CDL.1 \"slope\" is a list of 2, not of 3, first at " + clipPlace("effects/0/slope"),
             "2 x CDL.1 \"offset\" keeps no more than 3 numbers, first at " + clipPlace("effects/0/offset/3"),
             "1 x CDL.1 \"power\" keeps no more than 3 numbers, first at " + clipPlace("effects/0/power/3")}},
        Row{"ListsWithOtherThanNumbers",
            effect(R"("AngularMask.1","pivot":[1,2,"3"])"),
            {"1 x AngularMask.1 \"pivot\" is a list with other than numbers in range, first at " +
             clipPlace("effects/0/pivot")}},
        Row{"AColourBeyondSinglePrecision",
            effect(R"("Text.1","rgba":[1e39])"),
            {"1 x Text.1 \"rgba\" is a list with other than numbers in range, first at " +
             clipPlace("effects/0/rgba")}},
        Row{"AnOpacityBeyondSinglePrecision",
            effect(R"("Comp.1","opacity":1e39)"),
            {"1 x Comp.1 \"opacity\" is a fraction out of range where a fraction is expected, first at " +
             clipPlace("effects/0/opacity")}},
        Row{"SaturationWithoutAFraction",
            effect(R"("CDL.1","saturation":2)"),
            {"1 x CDL.1 \"saturation\" is an integer where a fraction is expected, first at " +
             clipPlace("effects/0/saturation")}},
        Row{"ANegativeCount",
            effect(R"("Paint.1","ghost_before":-1,"hold":1)"),
            {"1 x Paint.1 \"ghost_before\" is an integer out of range where an unsigned integer of 32 bits "
             "is "
             "expected, first at " +
                 clipPlace("effects/0/ghost_before"),
             "1 x Paint.1 \"hold\" is an integer where a flag is expected, first at " +
                 clipPlace("effects/0/hold")}},
        Row{"PointsOfOtherForms",
            effect(R"("Paint.1","points":[{"OTIO_SCHEMA":"Point.1","x":1,"y":2,"z":3.0},{"x":1.0},null,{}])"),
            {"1 x Paint.1 \"points\"/\"x\" is an integer where a fraction is expected, first at " +
                 clipPlace("effects/0/points/0/x"),
             "1 x Paint.1 \"points\"/\"y\" is an integer where a fraction is expected, first at " +
                 clipPlace("effects/0/points/0/y"),
             "1 x Paint.1 \"points\"/\"z\" is not modelled, first at " + clipPlace("effects/0/points/0/z"),
             "1 x Paint.1 \"points\" holds what is no \"Point.1\", first at " +
                 clipPlace("effects/0/points/1")}}),
    rowName);

INSTANTIATE_TEST_SUITE_P(
    General, LossRow,
    testing::Values(
        Row{"ANameThatIsRepeated",
            timeline(R"("name":"a","name":"b","x":1,"x":2,"name":null)"),
            {"1 x Timeline.1 \"name\" is repeated, and the first one counts, first at /name",
             "2 x Timeline.1 \"x\" is not modelled, first at /x"}},
        Row{"ATextThatIsCutAtAZeroByte",
            clipFormat(R"("video_codec":"a\u0000b","extra_data":{"n\u0000m":"c"})"),
            {"1 x Clip.1 \"media_reference\"/\"metadata\"/\"orl\"/\"video_codec\" is cut at a zero byte, "
             "first "
             "at " +
                 clipPlace("media_reference/metadata/orl/video_codec"),
             "1 x Clip.1 \"media_reference\"/\"metadata\"/\"orl\"/\"extra_data\"/\"n\\u0000m\" is cut at a "
             "zero byte, first at " +
                 clipPlace("media_reference/metadata/orl/extra_data/n\\u0000m")}},
        Row{"ASchemaThatIsCutAtAZeroByte",
            R"({"OTIO_SCHEMA":"Timeline.1\u0000x"})",
            {"1 x Timeline.1 \"OTIO_SCHEMA\" is cut at a zero byte, first at /OTIO_SCHEMA"}},
        Row{"AMemberNamedLikeOursUpToAZeroByte",
            timeline(R"("name\u0000":"a")"),
            {"1 x Timeline.1 \"name\\u0000\" is not modelled, first at /name\\u0000"}},
        Row{"NullsAndEmptyValuesSayNothing",
            timeline(R"("name":null,"a":null,"b":{},"c":[],"d":"","e":{"f":[null,{"g":""}]},)"
                     R"("tracks":null,"metadata":[],"global_start_time":{"value":null})"),
            {}},
        Row{"ARefusedNumberThatIsTheDefaultIsNoLoss",
            clipFormat(R"("frame_rate":0,"file_size_in_bytes":-1.0,"pixel_resolution":[-1.0,-1.0])"),
            {}},
        Row{"FlagsSaySomething",
            timeline(R"("enabled":false)"),
            {"1 x Timeline.1 \"enabled\" is not modelled, first at /enabled"}}),
    rowName);

TEST(Losses, AreNoneInWhatTheLibraryWrote) {
    std::string const text = readFile(ORL_TEST_DATA "/orl/everything.otio");
    Outcome const first = orl({"normalize", "-"}, text);
    Outcome const second = orl({"normalize", "-"}, first.out);
    EXPECT_EQ(first.error, "");
    EXPECT_EQ(second.error, "");
    EXPECT_EQ(second.out, first.out);
}

TEST(Losses, OfTheExampleAreWhatItIsMeantToShow) {
    EXPECT_THAT(
        lossesOf(readFile(ORL_TEST_EXAMPLES "/review.otio")),
        ElementsAre("1 x Timeline.1 \"metadata\"/\"notes\" is not modelled, first at /metadata/notes"));
}

} // namespace ORL_0_81::tool
