// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "rapidotio/orlOtioNode.h"

#include "support/Json.h"
#include "support/TimelineText.h"
#include "support/Tree.h"

#include <gtest/gtest.h>

#include <clocale>
#include <string>

// The structural nodes: timeline, stack, track and gap, and what the writers do with shapes that don't fit.

namespace {

using namespace ORL_0_81;
using namespace ORL_0_81::rapidotio;
using namespace orlTest;

// TimelineNode

TEST(OtioTimelineNode, OfASchemaAloneHasUndefinedFields) {
    Built<TimelineNode> timeline(R"({"OTIO_SCHEMA":"Timeline.1"})");
    EXPECT_FALSE(timeline->m_globalStartTime.hasValue());
    EXPECT_FALSE(timeline->m_globalStartTime.hasRate());
    EXPECT_EQ(timeline->m_version, "");
    EXPECT_EQ(timeline->m_name, "");
    EXPECT_STREQ(timeline->getChildrenArrayName(), "children");
}

TEST(OtioTimelineNode, ReadsItsStartAndItsVersion) {
    Built<TimelineNode> timeline(R"({"OTIO_SCHEMA":"Timeline.1","name":"cut",
        "global_start_time":{"OTIO_SCHEMA":"RationalTime.1","value":86400,"rate":24},
        "metadata":{"orl":{"version":"0.7"}}})");
    EXPECT_EQ(timeline->m_name, "cut");
    EXPECT_EQ(timeline->m_globalStartTime.value, 86400.0);
    EXPECT_EQ(timeline->m_globalStartTime.rate, 24.0);
    EXPECT_EQ(timeline->m_version, "0.7");
}

TEST(OtioTimelineNode, AVersionIsReadOnlyAtItsPlace) {
    for (char const* const metadata :
         {R"({"version":"0.7"})", R"({"orl":{"version":0.7}})", R"({"orl":["0.7"]})",
          R"({"tr":{"version":"0.7"}})", "[]", "null", R"({"orl":null})"}) {
        Built<TimelineNode> timeline(
            std::string(R"({"OTIO_SCHEMA":"Timeline.1","version":"0.7","metadata":)") + metadata + "}");
        EXPECT_EQ(timeline->m_version, "") << metadata;
    }
}

TEST(OtioTimelineNode, MadeByHandHasANameAndTheDialectsVersion) {
    TimelineNode const timeline("cut");
    EXPECT_TRUE(timeline.m_json.IsNull());
    EXPECT_EQ(timeline.m_parent, nullptr);
    EXPECT_EQ(timeline.m_name, "cut");
    EXPECT_EQ(timeline.m_version, "0.81");
    EXPECT_FALSE(timeline.m_globalStartTime.hasValue());
    EXPECT_FALSE(timeline.m_globalStartTime.hasRate());
    EXPECT_EQ(writtenToObject(timeline), bareTimelineText(R"("cut")"));
}

TEST(OtioTimelineNode, TheVersionWrittenIsTheDialectsOwnAlways) {
    Tree tree(R"({"OTIO_SCHEMA":"Timeline.1","metadata":{"orl":{"version":"7"},"tr":{"a":1}}})");
    EXPECT_EQ(tree.at<TimelineNode>({0}).m_version, "7");
    EXPECT_EQ(tree.text(), bareTimelineText());
    tree.at<TimelineNode>({0}).m_version = "8";
    EXPECT_EQ(tree.text(), bareTimelineText());
}

TEST(OtioTimelineNode, WithoutTracksBeginsWithItsName) {
    EXPECT_EQ(normalized(R"({"OTIO_SCHEMA":"Timeline.1","name":"cut"})"),
              R"({"name":"cut","OTIO_SCHEMA":"Timeline.1",)"
              R"("metadata":{"orl":{"ORL_SCHEMA":"TimelineMetadata.1","version":"0.81"}},)"
              R"("global_start_time":{"OTIO_SCHEMA":"RationalTime.1"}})");
}

TEST(OtioTimelineNode, WritesItsTracksBeforeAnythingElse) {
    EXPECT_EQ(normalized(R"({"OTIO_SCHEMA":"Timeline.1","name":"cut","tracks":{"OTIO_SCHEMA":"Stack.1"},
        "global_start_time":{"OTIO_SCHEMA":"RationalTime.1","value":1,"rate":2}})"),
              R"({"tracks":{"OTIO_SCHEMA":"Stack.1","children":[]},"name":"cut","OTIO_SCHEMA":"Timeline.1",)"
              R"("metadata":{"orl":{"ORL_SCHEMA":"TimelineMetadata.1","version":"0.81"}},)"
              R"("global_start_time":{"OTIO_SCHEMA":"RationalTime.1","value":1.0,"rate":2.0}})");
}

TEST(OtioTimelineNode, TracksThatAreNoObjectAreNone) {
    for (char const* const tracks : {"null", "[]", "1", "\"Stack.1\"", R"([{"OTIO_SCHEMA":"Stack.1"}])", "{}",
                                     R"({"OTIO_SCHEMA":"Stack.2"})"}) {
        EXPECT_EQ(normalized(std::string(R"({"OTIO_SCHEMA":"Timeline.1","tracks":)") + tracks + "}"),
                  bareTimelineText())
            << tracks;
    }
}

TEST(OtioTimelineNode, LooksForTracksAndNotForChildren) {
    EXPECT_EQ(normalized(R"({"OTIO_SCHEMA":"Timeline.1","children":[{"OTIO_SCHEMA":"Stack.1"}]})"),
              bareTimelineText());
}

TEST(OtioTimelineNode, IsTheParentOfItsStack) {
    Tree tree(R"({"OTIO_SCHEMA":"Timeline.1","tracks":{"OTIO_SCHEMA":"Stack.1","name":"s"}})");
    EXPECT_EQ(tree.at<StackNode>({0, 0}).m_parent, &tree.at({0}));
    EXPECT_EQ(tree.at({0}).m_children.size(), 1U);
}

// StackNode

TEST(OtioStackNode, HasANameThatIsNotWritten) {
    Tree tree(
        R"({"OTIO_SCHEMA":"Timeline.1","tracks":{"OTIO_SCHEMA":"Stack.1","name":"s","metadata":{"a":1}}})");
    EXPECT_EQ(tree.at<StackNode>({0, 0}).m_name, "s");
    EXPECT_EQ(tree.text(), timelineText("[]"));
    EXPECT_STREQ(tree.at({0, 0}).getChildrenArrayName(), "children");
}

TEST(OtioStackNode, MadeByHandHasNoJsonAndNoName) {
    StackNode const stack;
    EXPECT_TRUE(stack.m_json.IsNull());
    EXPECT_EQ(stack.m_parent, nullptr);
    EXPECT_EQ(stack.m_name, "");
    EXPECT_EQ(writtenToObject(stack), R"({"tracks":{"OTIO_SCHEMA":"Stack.1","children":[]}})");
}

TEST(OtioStackNode, AddsItselfBehindWhatTheObjectHas) {
    rapidjson::Document target = parsed(R"({"a":1})");
    StackNode().toJson(target, target.GetAllocator());
    EXPECT_EQ(textOf(target), R"({"a":1,"tracks":{"OTIO_SCHEMA":"Stack.1","children":[]}})");
}

// TrackNode

struct KindRow {
    char const* json;
    TrackKind kind;
    char const* written;
};

TEST(OtioTrackNode, AKindIsReadInAnyCaseAndWrittenCapitalised) {
    KindRow const rows[] = {
        {R"("Video")", kTrackVideo, R"(,"kind":"Video")"},
        {R"("video")", kTrackVideo, R"(,"kind":"Video")"},
        {R"("VIDEO")", kTrackVideo, R"(,"kind":"Video")"},
        {R"("vIdEo")", kTrackVideo, R"(,"kind":"Video")"},
        {R"("Audio")", kTrackAudio, R"(,"kind":"Audio")"},
        {R"("AUDIO")", kTrackAudio, R"(,"kind":"Audio")"},
        {R"("video\u0000s")", kTrackVideo, R"(,"kind":"Video")"},
        {R"("")", kTrackUnknown, ""},
        {R"("Videos")", kTrackUnknown, ""},
        {R"("Vide")", kTrackUnknown, ""},
        {R"(" Video")", kTrackUnknown, ""},
        {R"("Subtitle")", kTrackUnknown, ""},
        {"null", kTrackUnknown, ""},
        {"1", kTrackUnknown, ""},
        {"true", kTrackUnknown, ""},
        {"[]", kTrackUnknown, ""},
        {R"(["Video"])", kTrackUnknown, ""},
    };
    for (KindRow const& row : rows) {
        Built<TrackNode> track(std::string(R"({"OTIO_SCHEMA":"Track.1","kind":)") + row.json + "}");
        EXPECT_EQ(track->m_kind, row.kind) << row.json;
        EXPECT_EQ(track->getTrackKind(), row.kind) << row.json;
        EXPECT_EQ(writtenToArray(*track), "[" + trackText("[]", row.written) + "]") << row.json;
    }
}

TEST(OtioTrackNode, AKindMeansTheSameInALocaleWithOtherRulesOfCase) {
    std::string const before = std::setlocale(LC_CTYPE, nullptr);
    if (!std::setlocale(LC_CTYPE, "tr_TR.UTF-8")) {
        GTEST_SKIP() << "no Turkish locale on this system";
    }
    TrackKind const video = Built<TrackNode>(R"({"OTIO_SCHEMA":"Track.1","kind":"VIDEO"})")->m_kind;
    TrackKind const audio = Built<TrackNode>(R"({"OTIO_SCHEMA":"Track.1","kind":"AUDIO"})")->m_kind;
    std::setlocale(LC_CTYPE, before.c_str());
    EXPECT_EQ(video, kTrackVideo);
    EXPECT_EQ(audio, kTrackAudio);
}

TEST(OtioTrackNode, WithoutAKindIsUnknownAndWritesNone) {
    Built<TrackNode> track(R"({"OTIO_SCHEMA":"Track.1","name":"V1"})");
    EXPECT_EQ(track->m_kind, kTrackUnknown);
    EXPECT_STREQ(track->getChildrenArrayName(), "children");
    EXPECT_EQ(writtenToArray(*track), R"([{"name":"V1","OTIO_SCHEMA":"Track.1","children":[]}])");
}

TEST(OtioTrackNode, AKindThatIsSetByHandIsWritten) {
    Built<TrackNode> track(R"({"OTIO_SCHEMA":"Track.1"})");
    track->m_kind = kTrackAudio;
    EXPECT_EQ(writtenToArray(*track), "[" + trackText("[]", R"(,"kind":"Audio")") + "]");
}

// GapNode

TEST(OtioGapNode, OfASchemaAloneHasAnUndefinedRange) {
    Built<GapNode> gap(R"({"OTIO_SCHEMA":"Gap.1"})");
    EXPECT_FALSE(gap->m_sourceRange.start_time.hasValue());
    EXPECT_FALSE(gap->m_sourceRange.duration.hasRate());
    EXPECT_STREQ(gap->getChildrenArrayName(), "effects");
    EXPECT_EQ(writtenToArray(*gap),
              R"([{"name":"","OTIO_SCHEMA":"Gap.1","effects":[],)"
              R"("source_range":{"start_time":{"OTIO_SCHEMA":"RationalTime.1"},)"
              R"("duration":{"OTIO_SCHEMA":"RationalTime.1"},"OTIO_SCHEMA":"TimeRange.1"},)"
              R"("metadata":{}}])");
}

TEST(OtioGapNode, ReadsItsRange) {
    Built<GapNode> gap(R"({"OTIO_SCHEMA":"Gap.1","metadata":{"a":1},"source_range":{
        "duration":{"OTIO_SCHEMA":"RationalTime.1","value":48,"rate":"24"},
        "start_time":{"OTIO_SCHEMA":"RationalTime.2","value":1,"rate":24}}})");
    EXPECT_EQ(gap->m_sourceRange.duration.value, 48.0);
    EXPECT_EQ(gap->m_sourceRange.duration.rate, 24.0);
    EXPECT_FALSE(gap->m_sourceRange.start_time.hasRate());
    EXPECT_EQ(writtenToArray(*gap),
              "[" + gapText("[]", rangeText(kUndefinedTime, timeText("48.0", "24.0"))) + "]");
}

TEST(OtioGapNode, HasEffectsForChildren) {
    Tree tree(R"({"OTIO_SCHEMA":"Timeline.1","tracks":{"OTIO_SCHEMA":"Stack.1","children":[
        {"OTIO_SCHEMA":"Track.1","children":[{"OTIO_SCHEMA":"Gap.1","children":[{"OTIO_SCHEMA":"Clip.1"}],
         "effects":[{"OTIO_SCHEMA":"Annotation.1"}]}]}]}})");
    EXPECT_EQ(tree.text(),
              timelineText(
                  "[" +
                  trackText("[" + gapText(R"([{"OTIO_SCHEMA":"Annotation.1",)" + kPlainEffect + "}]") + "]") +
                  "]"));
}

// The whole document

TEST(OtioTree, WritesTheExampleOfTheDialect) {
    EXPECT_EQ(normalized(R"({"OTIO_SCHEMA":"Timeline.1","name":"cut","tracks":{"children":[
        {"kind":"video","children":[{"OTIO_SCHEMA":"Gap.1"}],"name":"V1","OTIO_SCHEMA":"Track.1"}],
         "OTIO_SCHEMA":"Stack.1"}})"),
              compact(R"({"tracks":{"OTIO_SCHEMA":"Stack.1","children":[
   {"name":"V1","OTIO_SCHEMA":"Track.1","children":[
      {"name":"","OTIO_SCHEMA":"Gap.1","effects":[],
       "source_range":{"start_time":{"OTIO_SCHEMA":"RationalTime.1"},
                       "duration":{"OTIO_SCHEMA":"RationalTime.1"},
                       "OTIO_SCHEMA":"TimeRange.1"},
       "metadata":{}}],
    "kind":"Video"}]},
 "name":"cut","OTIO_SCHEMA":"Timeline.1",
 "metadata":{"orl":{"ORL_SCHEMA":"TimelineMetadata.1","version":"0.81"}},
 "global_start_time":{"OTIO_SCHEMA":"RationalTime.1"}})"));
}

TEST(OtioTree, ElementsThatAreNoKnownNodesAreDroppedAndTheirSiblingsStayInOrder) {
    Tree tree(R"({"OTIO_SCHEMA":"Timeline.1","tracks":{"OTIO_SCHEMA":"Stack.1","children":[1,
        {"OTIO_SCHEMA":"Track.1","name":"a"},null,{"OTIO_SCHEMA":"Track.9"},{"OTIO_SCHEMA":"Sound.1"},"x",[],
        {"OTIO_SCHEMA":"Track.1","name":"b"},{}]}})");
    ASSERT_EQ(tree.at({0, 0}).m_children.size(), 2U);
    EXPECT_EQ(tree.at({0, 0, 0}).m_name, "a");
    EXPECT_EQ(tree.at({0, 0, 1}).m_name, "b");
}

TEST(OtioTree, IsWrittenAfterItsDocumentIsGone) {
    RootNode root; // what is moved into it was read from a document that is gone
    std::string expected;
    {
        Tree source(R"({"OTIO_SCHEMA":"Timeline.1","name":"cut","tracks":{"OTIO_SCHEMA":"Stack.1","children":[
            {"OTIO_SCHEMA":"Track.1","name":"V1","kind":"Video","children":[{"OTIO_SCHEMA":"Clip.1","name":"c",
            "media_reference":{"target_url":"a long url that fits into no small string",
            "metadata":{"orl":{"extra_data":{"some name of some length":"some value of some length"}}}},
            "effects":[{"OTIO_SCHEMA":"Text.1","text":"some text that is long, too"}]}]}]}})");
        expected = source.text();
        root.m_children = source.root().m_children;
        root.m_children[0]->m_parent = &root;
    }
    EXPECT_EQ(writtenToObject(root), expected);
}

TEST(OtioTree, ATimelineThatOutlivesItsRootIsWrittenAsItStands) {
    SharedPtr<Node> timeline;
    std::string expected;
    {
        Tree source(R"({"OTIO_SCHEMA":"Timeline.1","name":"cut","tracks":{"OTIO_SCHEMA":"Stack.1","children":[
            {"OTIO_SCHEMA":"Track.1","name":"V1","children":[{"OTIO_SCHEMA":"Clip.1","effects":[
            {"OTIO_SCHEMA":"Annotation.1"}]}]}]}})");
        expected = source.text();
        timeline = source.root().m_children[0];
    }
    EXPECT_EQ(writtenToObject(*timeline), expected); // its parent pointer is stale by now
}

TEST(OtioTree, IsAssembledByHandFromTracksOfOtherTrees) {
    Tree first(R"({"OTIO_SCHEMA":"Timeline.1","tracks":{"OTIO_SCHEMA":"Stack.1","children":[
        {"OTIO_SCHEMA":"Track.1","children":[{"OTIO_SCHEMA":"Gap.1"}]}]}})");
    Tree second(R"({"OTIO_SCHEMA":"Timeline.1","tracks":{"OTIO_SCHEMA":"Stack.1","children":[
        {"OTIO_SCHEMA":"Track.1","kind":"audio"}]}})");

    RootNode root;
    SharedPtr<TimelineNode> const timeline(new TimelineNode("both"));
    SharedPtr<StackNode> const stack(new StackNode);
    timeline->m_parent = &root;
    root.m_children.emplace_back(timeline);
    stack->m_parent = timeline.get();
    timeline->m_children.emplace_back(stack);
    for (Tree* const tree : {&first, &second}) {
        SharedPtr<Node> const track = tree->at({0, 0}).m_children[0];
        track->m_parent = stack.get();
        stack->m_children.push_back(track);
    }

    EXPECT_EQ(writtenToObject(root),
              R"({"tracks":{"OTIO_SCHEMA":"Stack.1","children":[)" + trackText("[" + gapText("[]") + "]") +
                  "," + trackText("[]", R"(,"kind":"Audio")") + "]}," + timelineTail(R"("both")"));
}

TEST(OtioTree, TextsThatAreSetByHandEndAtTheirFirstZeroByte) {
    Tree tree(R"({"OTIO_SCHEMA":"Timeline.1","tracks":{"OTIO_SCHEMA":"Stack.1","children":[
        {"OTIO_SCHEMA":"Track.1","children":[{"OTIO_SCHEMA":"Gap.1"}]}]}})");
    tree.at({0}).m_name = std::string("t\0x", 3);
    tree.at({0, 0, 0}).m_name = std::string("\0x", 2);
    tree.at({0, 0, 0, 0}).m_name = std::string("g\0", 2);
    std::string gap = gapText("[]");
    gap.replace(0, 10, R"({"name":"g")");
    EXPECT_EQ(tree.text(),
              R"({"tracks":{"OTIO_SCHEMA":"Stack.1","children":[{"name":"","OTIO_SCHEMA":"Track.1",)"
              R"("children":[)" +
                  gap + "]}]}," + timelineTail(R"("t")"));
}

TEST(OtioTree, ANumberThatIsNotFiniteDoesNotCutTheText) {
    Tree tree(
        R"({"OTIO_SCHEMA":"Timeline.1","global_start_time":{"OTIO_SCHEMA":"RationalTime.1","value":1,"rate":2}})");
    tree.at<TimelineNode>({0}).m_globalStartTime.value /= 0.0;
    EXPECT_EQ(tree.text(), bareTimelineText(R"("")", R"({"OTIO_SCHEMA":"RationalTime.1","rate":2.0})"));
}

// Shapes that do not fit

std::string underTimeline(std::string const& tracks) {
    return R"({"OTIO_SCHEMA":"Timeline.1","tracks":)" + tracks + "}";
}

std::string underStack(std::string const& children) {
    return underTimeline(R"({"OTIO_SCHEMA":"Stack.1","children":[)" + children + "]}");
}

TEST(OtioMisfits, WhatWantsAnArrayIsLeftOutOfATimeline) {
    for (char const* const schema :
         {"Track", "Clip", "Gap", "Comp", "AngularMask", "CDL", "Paint", "Text", "Annotation"}) {
        std::string const node = std::string(R"({"OTIO_SCHEMA":")") + schema +
                                 R"(.1","children":[{"OTIO_SCHEMA":"Stack.1"}],
            "effects":[{"OTIO_SCHEMA":"Stack.1"}],"layers":[{"OTIO_SCHEMA":"Stack.1"}]})";
        Tree tree(underTimeline(node));
        EXPECT_EQ(tree.at({0, 0}).m_children.size(), 1U) << "it stays in the tree";
        EXPECT_EQ(tree.text(), bareTimelineText()) << schema;
        EXPECT_EQ(normalized(node), "{}") << schema;
    }
}

TEST(OtioMisfits, ATimelineBelowATimelineIsLeftOutWithAllBelowIt) {
    Tree tree(underTimeline(underStack(R"({"OTIO_SCHEMA":"Track.1"})")));
    EXPECT_NE(dynamic_cast<TrackNode*>(&tree.at({0, 0, 0, 0})), nullptr);
    EXPECT_EQ(tree.text(), bareTimelineText());
    EXPECT_EQ(normalized(underTimeline(underTimeline(underStack("")))), bareTimelineText());
}

TEST(OtioMisfits, ATimelineThatWasPutBelowATimelineByHandIsLeftOutAndItsSiblingsStay) {
    SharedPtr<Node> const outer(new TimelineNode("outer"));
    SharedPtr<Node> const inner(new TimelineNode("inner"));
    inner->m_children.emplace_back(new StackNode);
    outer->m_children.push_back(inner);
    outer->m_children.emplace_back(new StackNode);
    std::string const expected =
        R"({"tracks":{"OTIO_SCHEMA":"Stack.1","children":[]},)" + timelineTail(R"("outer")");
    EXPECT_EQ(writtenToObject(*outer), expected) << "without a parent";
    inner->m_parent = outer.get();
    EXPECT_EQ(writtenToObject(*outer), expected);
}

TEST(OtioMisfits, StacksAndTimelinesAmongTracksAreLeftOutAndTheirSiblingsStay) {
    std::string const track = R"({"OTIO_SCHEMA":"Track.1"})";
    std::string const stack = R"({"OTIO_SCHEMA":"Stack.1","children":[)" + track + "]}";
    std::string const timeline = underStack(track);
    EXPECT_EQ(normalized(underStack(stack + "," + track + "," + timeline + "," + track + "," + stack)),
              timelineText("[" + trackText("[]") + "," + trackText("[]") + "]"));
}

TEST(OtioMisfits, StacksAndTimelinesAreLeftOutOfTracksClipsGapsAndEffects) {
    std::string const bad = R"({"OTIO_SCHEMA":"Stack.1","children":[{"OTIO_SCHEMA":"Gap.1"}]},
        {"OTIO_SCHEMA":"Timeline.1","tracks":{"OTIO_SCHEMA":"Stack.1"}})";
    EXPECT_EQ(normalized(underStack(R"({"OTIO_SCHEMA":"Track.1","children":[)" + bad + R"(,
        {"OTIO_SCHEMA":"Gap.1","effects":[)" +
                                    bad + R"(,{"OTIO_SCHEMA":"Annotation.1","layers":[)" + bad + "]}]}]}")),
              timelineText(
                  "[" +
                  trackText("[" + gapText(R"([{"OTIO_SCHEMA":"Annotation.1",)" + kPlainEffect + "}]") + "]") +
                  "]"));
}

TEST(OtioMisfits, WhatFitsAnArrayIsWrittenAtAnyLevel) {
    EXPECT_EQ(normalized(underStack(R"({"OTIO_SCHEMA":"Gap.1","effects":[{"OTIO_SCHEMA":"Track.1"}]})")),
              timelineText("[" + gapText("[" + trackText("[]") + "]") + "]"));
}

TEST(OtioMisfits, AStackForADocumentWritesItsTracks) {
    EXPECT_EQ(normalized(R"({"OTIO_SCHEMA":"Stack.1","children":[{"OTIO_SCHEMA":"Track.1"}]})"),
              R"({"tracks":{"OTIO_SCHEMA":"Stack.1","children":[)" + trackText("[]") + "]}}");
}

} // namespace
