// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "rapidotio/orlOtioNode.h"

#include "support/Diagnostics.h"
#include "support/Json.h"

#include <gtest/gtest.h>

#include <string>

// The lookups of clips and effects, in their order.

namespace {

using namespace ORL_0_81;
using namespace ORL_0_81::rapidotio;
using namespace orlTest;

/// What is said of a node behind the two lines of the factory.
std::string saidBy(std::string const& schema, std::string const& members) {
    rapidjson::Document const document =
        parsed(R"({"OTIO_SCHEMA":")" + schema + R"(.1","name":"n%s",)" + members + "}");
    std::string const said = diagnosticsOf([&] { NodeFactory::buildNode(document, nullptr); });
    std::string const head = "Found OTIO_SCHEMA\nFound " + schema + " " + schema + ".1\n";
    EXPECT_EQ(said.substr(0, head.size()), head);
    return said.substr(head.size());
}

std::string saidByClip(std::string const& members) { return saidBy("Clip", members); }

/// What is said of the format block `orl`, behind the lookup of the block itself.
std::string saidByFormat(std::string const& members) {
    std::string const said = saidByClip(R"("media_reference":{"metadata":{"orl":{)" + members + "}}}");
    std::string const head = notFound({"source_range"}) + "Found media_reference\n" +
                             notFound({"available_range", "target_url"}) + "Found metadata\nFound orl\n";
    std::string const tail = notFound({"tr", "metadata"});
    EXPECT_EQ(said.substr(0, head.size()), head);
    EXPECT_EQ(said.substr(said.size() - tail.size()), tail);
    return said.substr(head.size(), said.size() - head.size() - tail.size());
}

std::string const kFormatBehindResolution = notFound(
    {"data_type", "num_video_channels", "pixel_aspect", "frame_rate", "has_audio", "audio_sample_rate",
     "num_audio_channels", "video_codec", "audio_codec", "file_size_in_bytes", "extra_data"});

TEST(OtioClipDiagnostics, RangesComeBeforeTheMediaReference) {
    EXPECT_EQ(
        saidByClip(R"("source_range":{"start_time":{"OTIO_SCHEMA":"RationalTime.1","value":1.0,"rate":24}})"),
        lines({"Found source_range", "Found start_time", "Expected 'rate' to be Double, found Number",
               "Found rate", "Found value", "Cannot find 'duration'"}) +
            notFound({"media_reference", "metadata"}));
}

TEST(OtioClipDiagnostics, AMediaReferenceIsReadInOrder) {
    EXPECT_EQ(saidByClip(R"("media_reference":{})"),
              notFound({"source_range"}) + "Found media_reference\n" +
                  notFound({"available_range", "target_url", "metadata", "metadata"}));
    EXPECT_EQ(saidByClip(R"("media_reference":{"target_url":"u","metadata":{}})"),
              notFound({"source_range"}) + "Found media_reference\n" + notFound({"available_range"}) +
                  "Found target_url\nFound metadata\n" + notFound({"orl", "tr", "metadata"}));
}

TEST(OtioClipDiagnostics, AFormatBlockIsReadInOrder) {
    EXPECT_EQ(saidByFormat(""), notFound({"bounds", "pixel_resolution"}) + kFormatBehindResolution);
}

TEST(OtioClipDiagnostics, AFormatBlockTellsWhatDoesNotFit) {
    EXPECT_EQ(saidByFormat(
                  R"("frame_rate":24,"has_audio":1,"num_video_channels":4.0,"file_size_in_bytes":2147483648,
        "extra_data":{"a":1},"pixel_resolution":["a","b"],"bounds":7,"data_type":"half","video_codec":null)"),
              lines({"Expected 'bounds' to be Object, found Number", "Found pixel_resolution",
                     "Found data_type", "Expected 'num_video_channels' to be Int, found Number",
                     "Cannot find 'pixel_aspect'", "Expected 'frame_rate' to be Double, found Number",
                     "Expected 'has_audio' to be bool, found Number", "Cannot find 'audio_sample_rate'",
                     "Cannot find 'num_audio_channels'", "Expected 'video_codec' to be String, found Null",
                     "Cannot find 'audio_codec'", "Expected 'file_size_in_bytes' to be Int, found Number",
                     "Found extra_data"}));
}

TEST(OtioClipDiagnostics, AResolutionOfAnotherCountIsTold) {
    EXPECT_EQ(saidByFormat(R"("pixel_resolution":[1,2,3])"),
              lines({"Cannot find 'bounds'", "Found pixel_resolution",
                     "Clip node 'n%s' has a pixel_resolution with 3 values, expected 2"}) +
                  kFormatBehindResolution);
    EXPECT_EQ(saidByFormat(R"("pixel_resolution":[])"),
              lines({"Cannot find 'bounds'", "Found pixel_resolution",
                     "Clip node 'n%s' has a pixel_resolution with 0 values, expected 2"}) +
                  kFormatBehindResolution);
}

TEST(OtioClipDiagnostics, BoundsOfAnotherCountAreTold) {
    std::string const tail = notFound({"pixel_resolution"}) + kFormatBehindResolution;
    EXPECT_EQ(saidByFormat(R"("bounds":{"size":[1.0],"center":[1.0,2.0,3.0]})"),
              lines({"Found bounds", "Found center",
                     "Clip node 'n%s' has a bounds-center with 3 values, expected 2", "Found size",
                     "Clip node 'n%s' has a bounds-size with 1 values, expected 2"}) +
                  tail);
    EXPECT_EQ(saidByFormat(R"("bounds":{"center":[1,"x"]})"),
              lines({"Found bounds", "Found center", "Cannot find 'size'"}) + tail);
    EXPECT_EQ(saidByFormat(R"("bounds":{"center":{}})"),
              lines({"Found bounds", "Expected 'center' to be Array, found Object", "Cannot find 'size'"}) +
                  tail);
}

TEST(OtioClipDiagnostics, TheServicesBlockIsReadInOrder) {
    std::string const head = notFound({"source_range"}) + "Found media_reference\n" +
                             notFound({"available_range", "target_url"}) + "Found metadata\n" +
                             notFound({"orl"}) + "Found tr\n";
    EXPECT_EQ(saidByClip(R"("media_reference":{"metadata":{"tr":{}}})"),
              head + notFound({"entity", "entity_metadata", "bounds", "metadata"}));
    EXPECT_EQ(saidByClip(R"("media_reference":{"metadata":{"tr":{"entity":{},"entity_metadata":{}}}})"),
              head + "Expected 'entity' to be String, found Object\nFound entity_metadata\n" +
                  notFound({"tr_uploaded_movie_mp4", "tr_path_to_frames", "tr_path_to_movie", "bounds",
                            "metadata"}));
    EXPECT_EQ(saidByClip(R"("media_reference":{"metadata":{"tr":{"entity":"/V","entity_metadata":{
        "tr_uploaded_movie_mp4":{}}}}})"),
              head + "Found entity\nFound entity_metadata\nFound tr_uploaded_movie_mp4\n" +
                  notFound({"url", "tr_path_to_frames", "tr_path_to_movie", "bounds", "metadata"}));
}

TEST(OtioClipDiagnostics, AnIdentityIsReadInOrder) {
    std::string const head = notFound({"source_range", "media_reference"}) + "Found metadata\n";
    EXPECT_EQ(saidByClip(R"("metadata":{})"), head + notFound({"tr", "orl", "id", "paths", "entity"}));
    EXPECT_EQ(saidByClip(R"("metadata":{"orl":{"paths":{},"entity":{}}})"),
              head + notFound({"tr"}) + "Found orl\n" + notFound({"id"}) + "Found paths\n" +
                  notFound({"mp4", "file", "movie"}) + "Found entity\n" + notFound({"id", "type"}));
    EXPECT_EQ(saidByClip(R"("metadata":{"id":"a","entity":"/V/1"})"),
              head + notFound({"tr", "orl"}) + "Found id\n" + notFound({"paths"}) +
                  "Expected 'entity' to be Object, found String\n");
}

TEST(OtioClipDiagnostics, TheServicesUidEndsTheReading) {
    std::string const head = notFound({"source_range", "media_reference"}) + "Found metadata\nFound tr\n";
    EXPECT_EQ(saidByClip(R"("metadata":{"id":"a","orl":{},"tr":{}})"), head + notFound({"clip_uid"}));
    EXPECT_EQ(saidByClip(R"("metadata":{"tr":{"clip_uid":"a"}})"), head + "Found clip_uid\n");
}

// Effects

std::string const kEffect = notFound({"visible", "layer_range", "effect_name"});
std::string const kLayer = kEffect + notFound({"hold", "ghost", "ghost_before", "ghost_after"});

TEST(OtioEffectDiagnostics, ASaturationWithoutAFractionIsANumberButNoDouble) {
    EXPECT_EQ(saidBy("CDL", R"("saturation":2)"), kEffect + notFound({"slope", "offset", "power"}) +
                                                      "Expected 'saturation' to be Double, found Number\n");
}

TEST(OtioEffectDiagnostics, ListsOfNumbersThatDoNotFitArePassedOverWithoutALine) {
    EXPECT_EQ(saidBy("CDL", R"("slope":[1,2],"offset":["x",1,2],"power":[1,2,3,null])"),
              kEffect + lines({"Found slope", "Found offset", "Found power"}) + notFound({"saturation"}));
    rapidjson::Document const mask = parsed(R"({"OTIO_SCHEMA":"AngularMask.1","pivot":[1]})");
    EXPECT_EQ(diagnosticsOf([&] { AngularMaskNode(mask, nullptr); }),
              kEffect + "Found pivot\n" + notFound({"angle_in_radians"}));
    EXPECT_EQ(saidBy("Text", R"("position":[1],"rgba":[null])"),
              kLayer + notFound({"text", "justification", "fontName", "fontSize", "width", "orientation"}) +
                  "Found position\nFound rgba\n");
}

TEST(OtioEffectDiagnostics, PointsAreLookedIntoOneByOneAndOtherSchemasInSilence) {
    EXPECT_EQ(
        saidBy("Paint", R"("points":[{"OTIO_SCHEMA":"Point.1","x":1,"y":2.0},{"OTIO_SCHEMA":"Point.2"},7,{},
        {"OTIO_SCHEMA":"Point.1","width":"3"}],"rgba":[1e39])"),
        kLayer +
            lines({"Found points", "Expected 'x' to be Double, found Number", "Found y",
                   "Cannot find 'width'", "Cannot find 'x'", "Cannot find 'y'",
                   "Expected 'width' to be Double, found String", "Found rgba"}) +
            notFound({"type", "brush"}));
}

TEST(OtioEffectDiagnostics, MembersThatDoNotFitAreTold) {
    EXPECT_EQ(saidBy("Comp", R"("opacity":1e39,"visible":0)"),
              lines({"Expected 'visible' to be bool, found Number", "Cannot find 'layer_range'",
                     "Cannot find 'effect_name'", "Cannot find 'blend_mode'",
                     "Expected 'opacity' to be Float, found Number"}));
    EXPECT_EQ(saidBy("Paint", R"("ghost_before":-1,"hold":null)"),
              kEffect +
                  lines({"Expected 'hold' to be bool, found Null", "Cannot find 'ghost'",
                         "Expected 'ghost_before' to be Uint, found Number", "Cannot find 'ghost_after'"}) +
                  notFound({"points", "rgba", "type", "brush"}));
}

TEST(OtioEffectDiagnostics, AnotherSchemaEndsTheReadingInSilence) {
    rapidjson::Document const document = parsed(R"({"OTIO_SCHEMA":"Other.1"})");
    EXPECT_EQ(diagnosticsOf([&] { AngularMaskNode(document, nullptr); }), kEffect);
    EXPECT_EQ(diagnosticsOf([&] { CDLNode(document, nullptr); }), kEffect);
    EXPECT_EQ(diagnosticsOf([&] { PaintNode(document, nullptr); }), kLayer);
    EXPECT_EQ(diagnosticsOf([&] { TextNode(document, nullptr); }), kLayer);
    EXPECT_EQ(diagnosticsOf([&] { CompNode(document, nullptr); }),
              kEffect + notFound({"blend_mode", "opacity"}));
}

TEST(OtioEffectDiagnostics, ARangeOfAnEffectIsReadBetweenVisibleAndItsName) {
    EXPECT_EQ(
        saidBy("Annotation", R"("effect_name":"e","layer_range":{"start_time":{"OTIO_SCHEMA":"RationalTime.1",
        "rate":24.0}},"visible":true)"),
        lines({"Found visible", "Found layer_range", "Found start_time", "Found rate", "Cannot find 'value'",
               "Cannot find 'value'", "Cannot find 'duration'", "Found effect_name"}));
}

} // namespace
