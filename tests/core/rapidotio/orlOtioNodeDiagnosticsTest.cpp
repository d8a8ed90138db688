// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "rapidotio/orlOtioNode.h"

#include "support/Diagnostics.h"
#include "support/Json.h"
#include "support/Tree.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using namespace ORL_0_81;
using namespace ORL_0_81::rapidotio;
using namespace orlTest;

std::string saidByFactory(std::string const& text) {
    rapidjson::Document const document = parsed(text);
    return diagnosticsOf([&] { NodeFactory::buildNode(document, nullptr); });
}

std::string saidOfSchema(std::string const& schema) {
    return saidByFactory(R"({"OTIO_SCHEMA":")" + schema + "\"}");
}

std::string saidByVisit(std::string const& text) {
    return diagnosticsOf([&] { accepted(text); });
}

std::string const kFoundSchema = "Found OTIO_SCHEMA\n";

// The factory

TEST(OtioNodeFactoryDiagnostics, AnObjectWithoutASchemaGivesTwoLines) {
    std::string const expected = "Cannot find 'OTIO_SCHEMA'\nCould not determine schema version \n";
    for (char const* const text : {"{}", R"({"ORL_SCHEMA":"Clip.1"})", "[]", "null", "7", "\"Clip.1\""}) {
        EXPECT_EQ(saidByFactory(text), expected) << text;
    }
}

TEST(OtioNodeFactoryDiagnostics, ASchemaThatIsNoStringIsUndetermined) {
    EXPECT_EQ(saidByFactory(R"({"OTIO_SCHEMA":1})"),
              "Expected 'OTIO_SCHEMA' to be String, found Number\nCould not determine schema version \n");
}

TEST(OtioNodeFactoryDiagnostics, ASchemaWithoutAPointIsUndetermined) {
    EXPECT_EQ(saidOfSchema("Clip"), kFoundSchema + "Could not determine schema version Clip\n");
    EXPECT_EQ(saidOfSchema("1"), kFoundSchema + "Could not determine schema version 1\n");
    EXPECT_EQ(saidOfSchema(""), kFoundSchema + "Could not determine schema version \n");
    EXPECT_EQ(saidOfSchema("%s%n"), kFoundSchema + "Could not determine schema version %s%n\n");
}

TEST(OtioNodeFactoryDiagnostics, AnUnsupportedVersionIsShownWithItsPointAndWithoutANewline) {
    EXPECT_EQ(saidOfSchema("Clip.2"), kFoundSchema + "Unsupported schema version .2");
    EXPECT_EQ(saidOfSchema("Clip.10"), kFoundSchema + "Unsupported schema version .10");
    EXPECT_EQ(saidOfSchema("Clip."), kFoundSchema + "Unsupported schema version .");
    EXPECT_EQ(saidOfSchema("."), kFoundSchema + "Unsupported schema version .");
    EXPECT_EQ(saidOfSchema("Clip.1.1"), kFoundSchema + "Unsupported schema version .1.1");
    EXPECT_EQ(saidOfSchema("Clip..1"), kFoundSchema + "Unsupported schema version ..1");
    EXPECT_EQ(saidOfSchema("a.b.1"), kFoundSchema + "Unsupported schema version .b.1");
    EXPECT_EQ(saidOfSchema("Clip.1 "), kFoundSchema + "Unsupported schema version .1 ");
}

TEST(OtioNodeFactoryDiagnostics, WhateverComesNextFollowsAnUnsupportedVersionDirectly) {
    Tree tree("{}");
    rapidjson::Document const document =
        parsed(R"({"children":[{"OTIO_SCHEMA":"Clip.2"},{"OTIO_SCHEMA":"Clip.3"},{}]})");
    Node node(document, nullptr);
    EXPECT_EQ(
        diagnosticsOf([&] { node.generateChildren(); }),
        "Found children\nFound OTIO_SCHEMA\nUnsupported schema version .2Found OTIO_SCHEMA\n"
        "Unsupported schema version .3Cannot find 'OTIO_SCHEMA'\nCould not determine schema version \n");
}

TEST(OtioNodeFactoryDiagnostics, ANameThatIsNotKnownIsUnhandled) {
    EXPECT_EQ(saidOfSchema(".1"), kFoundSchema + "Unhandled schema .1\n");
    EXPECT_EQ(saidOfSchema("clip.1"), kFoundSchema + "Unhandled schema clip.1\n");
    EXPECT_EQ(saidOfSchema("AngularMark.1"), kFoundSchema + "Unhandled schema AngularMark.1\n");
    EXPECT_EQ(saidOfSchema("LinearTimeWarp.1"), kFoundSchema + "Unhandled schema LinearTimeWarp.1\n");
    EXPECT_EQ(saidOfSchema("%d.1"), kFoundSchema + "Unhandled schema %d.1\n");
}

std::string const kEffect = notFound({"visible", "layer_range", "effect_name"});
std::string const kLayer = kEffect + notFound({"hold", "ghost", "ghost_before", "ghost_after"});

TEST(OtioNodeFactoryDiagnostics, EachClassTellsItsLineAndThenItsLookupsInOrder) {
    EXPECT_EQ(saidOfSchema("Timeline.1"),
              kFoundSchema + "Found Timeline Timeline.1\n" + notFound({"global_start_time", "metadata"}));
    EXPECT_EQ(saidOfSchema("Stack.1"), kFoundSchema + "Found Stack Stack.1\n");
    EXPECT_EQ(saidOfSchema("Track.1"), kFoundSchema + "Found Track Track.1\n" + notFound({"kind"}));
    EXPECT_EQ(saidOfSchema("Clip.1"), kFoundSchema + "Found Clip Clip.1\n" +
                                          notFound({"source_range", "media_reference", "metadata"}));
    EXPECT_EQ(saidOfSchema("Comp.1"),
              kFoundSchema + "Found Comp Comp.1\n" + kEffect + notFound({"blend_mode", "opacity"}));
    EXPECT_EQ(saidOfSchema("CDL.1"), kFoundSchema + "Found CDL CDL.1\n" + kEffect +
                                         notFound({"slope", "offset", "power", "saturation"}));
    EXPECT_EQ(saidOfSchema("Paint.1"), kFoundSchema + "Found Paint Paint.1\n" + kLayer +
                                           notFound({"points", "rgba", "type", "brush"}));
    EXPECT_EQ(saidOfSchema("Text.1"), kFoundSchema + "Found Text Text.1\n" + kLayer +
                                          notFound({"text", "justification", "fontName", "fontSize", "width",
                                                    "orientation", "position", "rgba"}));
    EXPECT_EQ(saidOfSchema("Annotation.1"), kFoundSchema + "Found Annotation Annotation.1\n" + kEffect);
    EXPECT_EQ(saidOfSchema("Gap.1"), kFoundSchema + "Found Gap Gap.1\n" + notFound({"source_range"}));
}

TEST(OtioNodeFactoryDiagnostics, AnAngularMaskIsCalledAMark) {
    EXPECT_EQ(saidOfSchema("AngularMask.1"), kFoundSchema + "Found AngularMark AngularMask.1\n" + kEffect +
                                                 notFound({"pivot", "angle_in_radians"}));
}

// Nodes

TEST(OtioNodeDiagnostics, ANameIsReadInSilence) {
    for (char const* const name : {"\"n\"", "7", "null"}) {
        EXPECT_EQ(saidByFactory(std::string(R"({"OTIO_SCHEMA":"Stack.1","name":)") + name + "}"),
                  kFoundSchema + "Found Stack Stack.1\n");
    }
}

TEST(OtioNodeDiagnostics, ANodeWithoutChildrenSaysSoBehindTheLookup) {
    Node empty;
    EXPECT_EQ(diagnosticsOf([&] { empty.generateChildren(); }),
              "Cannot find 'children'\nNode '' has no children\n");
    Built<TrackNode> track(R"({"OTIO_SCHEMA":"Track.1","name":"V%s","children":{}})");
    EXPECT_EQ(diagnosticsOf([&] { track->generateChildren(); }),
              "Expected 'children' to be Array, found Object\nNode 'V%s' has no children\n");
    Built<ClipNode> clip(R"({"OTIO_SCHEMA":"Clip.1","name":"c"})");
    EXPECT_EQ(diagnosticsOf([&] { clip->generateChildren(); }),
              "Cannot find 'effects'\nNode 'c' has no children\n");
    Built<GapNode> gap(R"({"OTIO_SCHEMA":"Gap.1","effects":null})");
    EXPECT_EQ(diagnosticsOf([&] { gap->generateChildren(); }),
              "Expected 'effects' to be Array, found Null\nNode '' has no children\n");
    Built<CDLNode> cdl(R"({"OTIO_SCHEMA":"CDL.1","name":"x"})");
    EXPECT_EQ(diagnosticsOf([&] { cdl->generateChildren(); }),
              "Cannot find 'layers'\nNode 'x' has no children\n");
}

TEST(OtioNodeDiagnostics, AnEmptyArrayOfChildrenIsFound) {
    Built<ClipNode> clip(R"({"OTIO_SCHEMA":"Clip.1","effects":[]})");
    EXPECT_EQ(diagnosticsOf([&] { clip->generateChildren(); }), "Found effects\n");
}

TEST(OtioNodeDiagnostics, ATimelineWithoutTracksSaysSo) {
    Built<TimelineNode> without(R"({"OTIO_SCHEMA":"Timeline.1","name":"t"})");
    EXPECT_EQ(diagnosticsOf([&] { without->generateChildren(); }),
              "Cannot find 'tracks'\nNo tracks found in timeline\n");
    Built<TimelineNode> array(R"({"OTIO_SCHEMA":"Timeline.1","tracks":[]})");
    EXPECT_EQ(diagnosticsOf([&] { array->generateChildren(); }),
              "Expected 'tracks' to be Object, found Array\nNo tracks found in timeline\n");
    Built<TimelineNode> with(R"({"OTIO_SCHEMA":"Timeline.1","tracks":{"OTIO_SCHEMA":"Stack.1"}})");
    EXPECT_EQ(diagnosticsOf([&] { with->generateChildren(); }),
              lines({"Found tracks", "Found OTIO_SCHEMA", "Found Stack Stack.1"}));
}

TEST(OtioNodeDiagnostics, AKindIsLookedUpOnceWhateverItIs) {
    EXPECT_EQ(saidByFactory(R"({"OTIO_SCHEMA":"Track.1","kind":"Other"})"),
              kFoundSchema + lines({"Found Track Track.1", "Found kind"}));
    EXPECT_EQ(saidByFactory(R"({"OTIO_SCHEMA":"Track.1","kind":1})"),
              kFoundSchema + lines({"Found Track Track.1", "Expected 'kind' to be String, found Number"}));
}

TEST(OtioNodeDiagnostics, TheVersionOfATimelineIsThreeLookupsDeep) {
    std::string const head = kFoundSchema + "Found Timeline Timeline.1\n" + notFound({"global_start_time"});
    EXPECT_EQ(saidByFactory(R"({"OTIO_SCHEMA":"Timeline.1","metadata":{}})"),
              head + "Found metadata\nCannot find 'orl'\n");
    EXPECT_EQ(saidByFactory(R"({"OTIO_SCHEMA":"Timeline.1","metadata":{"orl":{}}})"),
              head + "Found metadata\nFound orl\nCannot find 'version'\n");
    EXPECT_EQ(saidByFactory(R"({"OTIO_SCHEMA":"Timeline.1","metadata":{"orl":{"version":"7"}}})"),
              head + "Found metadata\nFound orl\nFound version\n");
}

TEST(OtioNodeDiagnostics, WritingSaysNothing) {
    Tree tree(
        R"({"OTIO_SCHEMA":"Timeline.1","tracks":{"OTIO_SCHEMA":"Stack.1","children":[{"OTIO_SCHEMA":"Clip.1"}]}})");
    EXPECT_EQ(diagnosticsOf([&] { tree.text(); }), "");
}

// The whole road

TEST(OtioVisitorHelperDiagnostics, ATimelineThatIsNotWrappedIsLookedForTwice) {
    EXPECT_EQ(saidByVisit("{}"),
              notFound({"timeline", "timeline", "OTIO_SCHEMA"}) + "Could not determine schema version \n");
    EXPECT_EQ(saidByVisit("[]"), saidByVisit("{}"));
}

TEST(OtioVisitorHelperDiagnostics, AWrappedTimelineIsFoundOnceAndThenNotAgain) {
    EXPECT_EQ(saidByVisit(R"({"timeline":{"OTIO_SCHEMA":"Timeline.1"}})"),
              "Found timeline\nCannot find 'timeline'\nFound OTIO_SCHEMA\nFound Timeline Timeline.1\n" +
                  notFound({"global_start_time", "metadata", "tracks"}) + "No tracks found in timeline\n");
}

TEST(OtioVisitorHelperDiagnostics, AWrapperThatIsNoObjectIsTheWrongTypeTwice) {
    EXPECT_EQ(saidByVisit(R"({"timeline":7})"),
              lines({"Expected 'timeline' to be Object, found Number",
                     "Expected 'timeline' to be Object, found Number", "Cannot find 'OTIO_SCHEMA'",
                     "Could not determine schema version "}));
}

TEST(OtioVisitorHelperDiagnostics, ATextThatIsRefusedSaysNothing) {
    EXPECT_EQ(saidByVisit("{"), "");
    EXPECT_EQ(saidByVisit(repeated("[", 5000)), "");
}

TEST(OtioVisitorHelperDiagnostics, LinesComeInTheOrderOfTheWalk) {
    EXPECT_EQ(saidByVisit(R"({"OTIO_SCHEMA":"Timeline.1","tracks":{"OTIO_SCHEMA":"Stack.1","children":[
        {"OTIO_SCHEMA":"Track.1","name":"a","kind":"video","children":[{"OTIO_SCHEMA":"Gap.1","name":"g"}]},
        {"OTIO_SCHEMA":"Track.1","name":"b"}]}})"),
              lines({"Cannot find 'timeline'",
                     "Cannot find 'timeline'",
                     "Found OTIO_SCHEMA",
                     "Found Timeline Timeline.1",
                     "Cannot find 'global_start_time'",
                     "Cannot find 'metadata'",
                     "Found tracks",
                     "Found OTIO_SCHEMA",
                     "Found Stack Stack.1",
                     "Found children",
                     "Found OTIO_SCHEMA",
                     "Found Track Track.1",
                     "Found kind",
                     "Found OTIO_SCHEMA",
                     "Found Track Track.1",
                     "Cannot find 'kind'",
                     "Found children",
                     "Found OTIO_SCHEMA",
                     "Found Gap Gap.1",
                     "Cannot find 'source_range'",
                     "Cannot find 'effects'",
                     "Node 'g' has no children",
                     "Cannot find 'children'",
                     "Node 'b' has no children"}));
}

} // namespace
