// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "rapidotio/orlOtioNode.h"

#include "support/Json.h"
#include "support/TimelineText.h"
#include "support/Tree.h"

#include <gtest/gtest.h>

#include <string>
#include <type_traits>
#include <typeinfo>

namespace {

using namespace ORL_0_81;
using namespace ORL_0_81::rapidotio;
using namespace orlTest;

// Node

TEST(OtioNode, CountsItsOwnersWithoutAtomics) {
    EXPECT_TRUE((std::is_base_of_v<RefCountedST, Node>));
    EXPECT_TRUE(std::has_virtual_destructor_v<Node>);
}

TEST(OtioNode, ANodeMadeByHandHasNothing) {
    Node const node;
    EXPECT_TRUE(node.m_json.IsNull());
    EXPECT_TRUE(node.m_children.empty());
    EXPECT_EQ(node.m_parent, nullptr);
    EXPECT_EQ(node.m_name, "");
    EXPECT_EQ(node.getTrackKind(), kTrackUnknown);
    EXPECT_STREQ(node.getChildrenArrayName(), "children");
}

TEST(OtioNode, NodesMadeByHandShareOneJsonNull) {
    Node const node;
    EXPECT_EQ(&node.m_json, &RootNode().m_json);
    EXPECT_EQ(&node.m_json, &StackNode().m_json);
    EXPECT_EQ(&node.m_json, &TimelineNode("cut").m_json);
}

TEST(OtioNode, ANodeWithoutJsonHasNoChildrenToGenerate) {
    Node node;
    node.generateChildren();
    RootNode root;
    root.generateChildren();
    StackNode stack;
    stack.generateChildren();
    TimelineNode timeline("cut");
    timeline.generateChildren();
    EXPECT_TRUE(node.m_children.empty());
    EXPECT_TRUE(root.m_children.empty());
    EXPECT_TRUE(stack.m_children.empty());
    EXPECT_TRUE(timeline.m_children.empty());
}

TEST(OtioNode, KeepsItsJsonAndItsParentAndReadsItsName) {
    rapidjson::Document const document = parsed(R"({"name":"shot","children":[{"OTIO_SCHEMA":"Clip.1"}]})");
    Node const parent;
    Node const node(document, &parent);
    EXPECT_EQ(&node.m_json, &document);
    EXPECT_EQ(node.m_parent, &parent);
    EXPECT_EQ(node.m_name, "shot");
    EXPECT_TRUE(node.m_children.empty());
}

TEST(OtioNode, ANameThatIsNoStringIsEmpty) {
    for (char const* const name : {"null", "true", "1", "1.5", "[]", "{}", R"(["x"])"}) {
        EXPECT_EQ(Node(parsed(std::string(R"({"name":)") + name + "}"), nullptr).m_name, "") << name;
    }
    EXPECT_EQ(Node(parsed("{}"), nullptr).m_name, "");
    EXPECT_EQ(Node(parsed("[]"), nullptr).m_name, "");
    EXPECT_EQ(Node(parsed("\"name\""), nullptr).m_name, "");
}

TEST(OtioNode, ANameEndsAtItsFirstZeroByte) {
    EXPECT_EQ(Node(parsed(R"({"name":"ab\u0000cd"})"), nullptr).m_name, "ab");
}

TEST(OtioNode, OfTwoNamesTheFirstCounts) {
    EXPECT_EQ(Node(parsed(R"({"name":"a","name":"b"})"), nullptr).m_name, "a");
    EXPECT_EQ(Node(parsed(R"({"name":1,"name":"b"})"), nullptr).m_name, "");
}

TEST(OtioNode, MakesItsChildrenInOrderAndLeavesNoHole) {
    rapidjson::Document const document = parsed(R"({"children":[
        {"OTIO_SCHEMA":"Clip.1","name":"a"}, {"OTIO_SCHEMA":"Clip.2","name":"b"}, 7, null, [], "x",
        {"OTIO_SCHEMA":"Nothing.1"}, {"name":"c"}, {"OTIO_SCHEMA":"Gap.1","name":"d"}, {}]})");
    Node node(document, nullptr);
    node.generateChildren();
    ASSERT_EQ(node.m_children.size(), 2U);
    EXPECT_EQ(node.m_children[0]->m_name, "a");
    EXPECT_EQ(node.m_children[1]->m_name, "d");
    for (SharedPtr<Node> const& child : node.m_children) {
        EXPECT_EQ(child->m_parent, &node);
        EXPECT_EQ(child->refcount(), 1);
        EXPECT_TRUE(child->m_children.empty());
    }
    EXPECT_EQ(&node.m_children[1]->m_json, &document["children"][8]);
}

TEST(OtioNode, ChildrenThatAreNoArrayAreNone) {
    for (char const* const children : {"null", "{}", "1", "\"x\"", R"({"OTIO_SCHEMA":"Clip.1"})", "[]"}) {
        rapidjson::Document const document = parsed(std::string(R"({"children":)") + children + "}");
        Node node(document, nullptr);
        node.generateChildren();
        EXPECT_TRUE(node.m_children.empty()) << children;
    }
}

TEST(OtioNode, WritesItsChildrenInTurnAndNothingOfItsOwn) {
    rapidjson::Document const document =
        parsed(R"({"name":"n","children":[{"OTIO_SCHEMA":"Gap.1"},{"OTIO_SCHEMA":"Track.1"}]})");
    Node node(document, nullptr);
    node.generateChildren();
    EXPECT_EQ(writtenToArray(node), "[" + gapText("[]") + "," + trackText("[]") + "]");
    EXPECT_EQ(writtenToArray(Node()), "[]");
    EXPECT_EQ(writtenToObject(Node()), "{}");
}

TEST(OtioNode, AnEmptyPointerAmongTheChildrenIsNotWritten) {
    rapidjson::Document const document = parsed(R"({"children":[{"OTIO_SCHEMA":"Track.1"}]})");
    Node node(document, nullptr);
    node.generateChildren();
    node.m_children.insert(node.m_children.begin(), SharedPtr<Node>());
    node.m_children.emplace_back();
    EXPECT_EQ(writtenToArray(node), "[" + trackText("[]") + "]");
}

// NodeFactory

template <class N>
void expectMade(char const* schema) {
    rapidjson::Document const document =
        parsed(std::string(R"({"OTIO_SCHEMA":")") + schema + R"(","name":"n"})");
    Node const parent;
    SharedPtr<Node> const node = NodeFactory::buildNode(document, &parent);
    ASSERT_TRUE(node) << schema;
    Node const& made = *node;
    EXPECT_EQ(typeid(made), typeid(N)) << schema;
    EXPECT_EQ(&made.m_json, &document);
    EXPECT_EQ(made.m_parent, &parent);
    EXPECT_EQ(made.m_name, "n");
    EXPECT_EQ(made.refcount(), 1);
}

TEST(OtioNodeFactory, MakesAClassForEachKnownSchema) {
    expectMade<TimelineNode>("Timeline.1");
    expectMade<StackNode>("Stack.1");
    expectMade<TrackNode>("Track.1");
    expectMade<ClipNode>("Clip.1");
    expectMade<CompNode>("Comp.1");
    expectMade<AngularMaskNode>("AngularMask.1");
    expectMade<CDLNode>("CDL.1");
    expectMade<PaintNode>("Paint.1");
    expectMade<TextNode>("Text.1");
    expectMade<AnnotationNode>("Annotation.1");
    expectMade<GapNode>("Gap.1");
}

TEST(OtioNodeFactory, ASchemaEndsAtItsFirstZeroByte) { expectMade<ClipNode>(R"(Clip.1\u0000.2)"); }

TEST(OtioNodeFactory, MakesNothingOfAnyOtherText) {
    char const* const schemas[] = {
        "",
        "Clip",
        ".",
        "Clip.",
        "Clip.2",
        "Clip.10",
        "Clip.01",
        "Clip.1.0",
        "Clip..1",
        "Clip.1.1",
        ".1",
        "clip.1",
        "CLIP.1",
        "Clip.1 ",
        " Clip.1",
        "Clip .1",
        "Layer.1",
        "Effect.1",
        "Root.1",
        "Node.1",
        "Point.1",
        "cdl.1",
        "Cdl.1",
        "AngularMark.1",
        "Clips.1",
        "Cli.1",
        "Clip.-1",
        "Clip.1.0",
        "TimeRange.1",
        "Clip\\u00001",
        "Clip.\\u00001",
    };
    for (char const* const schema : schemas) {
        rapidjson::Document const document = parsed(std::string(R"({"OTIO_SCHEMA":")") + schema + "\"}");
        EXPECT_FALSE(NodeFactory::buildNode(document, nullptr)) << schema;
    }
}

TEST(OtioNodeFactory, MakesNothingWithoutASchemaThatIsAString) {
    for (char const* const text :
         {"{}", R"({"OTIO_SCHEMA":null})", R"({"OTIO_SCHEMA":1})", R"({"OTIO_SCHEMA":["Clip.1"]})",
          R"({"ORL_SCHEMA":"Clip.1"})", R"({"otio_schema":"Clip.1"})",
          R"({"OTIO_SCHEMA":1,"OTIO_SCHEMA":"Clip.1"})"}) {
        EXPECT_FALSE(NodeFactory::buildNode(parsed(text), nullptr)) << text;
    }
}

TEST(OtioNodeFactory, MakesNothingOfWhatIsNoObject) {
    for (char const* const text :
         {"null", "true", "false", "1", "1.5", "\"Clip.1\"", "[]", R"(["Clip.1"])"}) {
        EXPECT_FALSE(NodeFactory::buildNode(parsed(text), nullptr)) << text;
    }
}

TEST(OtioNodeFactory, TheParentMayBeNull) {
    EXPECT_EQ(Built<ClipNode>(R"({"OTIO_SCHEMA":"Clip.1"})")->m_parent, nullptr);
}

// RootNode

TEST(OtioRootNode, OfJsonHasNoParentAndReadsAName) {
    rapidjson::Document const document = parsed(R"({"name":"r"})");
    RootNode const root(document);
    EXPECT_EQ(root.m_parent, nullptr);
    EXPECT_EQ(root.m_name, "r");
    EXPECT_EQ(&root.m_json, &document);
}

TEST(OtioRootNode, ADocumentAndItsWrappedFormGiveTheSameTree) {
    std::string const timeline = R"({"OTIO_SCHEMA":"Timeline.1","name":"cut"})";
    for (std::string const& text :
         {timeline, R"({"timeline":)" + timeline + R"(,"OTIO_SCHEMA":"Timeline.1"})"}) {
        rapidjson::Document const document = parsed(text);
        RootNode root(document);
        root.generateChildren();
        ASSERT_EQ(root.m_children.size(), 1U);
        EXPECT_EQ(root.m_children[0]->m_name, "cut");
        EXPECT_EQ(root.m_children[0]->m_parent, &root);
    }
}

TEST(OtioRootNode, AWrapperThatIsNoObjectIsPassedOver) {
    for (char const* const wrapped : {"null", "1", "\"x\"", "[]", R"([{"OTIO_SCHEMA":"Timeline.1"}])"}) {
        std::string const text =
            std::string(R"({"timeline":)") + wrapped + R"(,"OTIO_SCHEMA":"Timeline.1","name":"o"})";
        rapidjson::Document const document = parsed(text);
        RootNode root(document);
        root.generateChildren();
        ASSERT_EQ(root.m_children.size(), 1U) << wrapped;
        EXPECT_EQ(root.m_children[0]->m_name, "o");
    }
}

TEST(OtioRootNode, AWrapperWithoutATimelineHidesTheTimelineAround) {
    rapidjson::Document const document = parsed(R"({"timeline":{},"OTIO_SCHEMA":"Timeline.1"})");
    RootNode root(document);
    root.generateChildren();
    EXPECT_TRUE(root.m_children.empty());
}

TEST(OtioRootNode, TakesAnySchemaAndNoChildrenArray) {
    rapidjson::Document const document =
        parsed(R"({"OTIO_SCHEMA":"Stack.1","children":[{"OTIO_SCHEMA":"Track.1"}]})");
    RootNode root(document);
    root.generateChildren();
    ASSERT_EQ(root.m_children.size(), 1U);
    EXPECT_NE(dynamic_cast<StackNode*>(root.m_children[0].get()), nullptr);
}

TEST(OtioRootNode, WhatIsNoObjectHasNoTimeline) {
    for (char const* const text : {"null", "1", "\"timeline\"", "[]", R"([{"OTIO_SCHEMA":"Timeline.1"}])"}) {
        rapidjson::Document const document = parsed(text);
        RootNode root(document);
        root.generateChildren();
        EXPECT_TRUE(root.m_children.empty()) << text;
        EXPECT_EQ(writtenToObject(root), "{}");
    }
}

// getTrackKind

TEST(OtioTrackKind, HasTheNumbersOfItsNames) {
    EXPECT_EQ(kTrackUnknown, 0);
    EXPECT_EQ(kTrackVideo, 1);
    EXPECT_EQ(kTrackAudio, 2);
}

/// A clip with an effect in an effect, in tracks in one another; `kinds` from the outermost one in.
std::string nestedTracks(std::initializer_list<char const*> kinds) {
    std::string text = R"({"OTIO_SCHEMA":"Clip.1","effects":[{"OTIO_SCHEMA":"Annotation.1",
        "layers":[{"OTIO_SCHEMA":"Paint.1"}]}]})";
    for (auto kind = kinds.end(); kind != kinds.begin();) {
        --kind;
        text =
            R"({"OTIO_SCHEMA":"Track.1","kind":")" + std::string(*kind) + R"(","children":[)" + text + "]}";
    }
    return R"({"OTIO_SCHEMA":"Timeline.1","tracks":{"OTIO_SCHEMA":"Stack.1","children":[)" + text + "]}}";
}

TEST(OtioTrackKind, ClipsAndEffectsFindTheTrackAboveThem) {
    Tree tree(nestedTracks({"audio"}));
    EXPECT_EQ(tree.at({0, 0, 0, 0}).getTrackKind(), kTrackAudio);
    EXPECT_EQ(tree.at({0, 0, 0, 0, 0}).getTrackKind(), kTrackAudio);
    EXPECT_EQ(tree.at({0, 0, 0, 0, 0, 0}).getTrackKind(), kTrackAudio);
}

TEST(OtioTrackKind, WhatIsAboveATrackHasNone) {
    Tree tree(nestedTracks({"video"}));
    EXPECT_EQ(tree.root().getTrackKind(), kTrackUnknown);
    EXPECT_EQ(tree.at({0}).getTrackKind(), kTrackUnknown);
    EXPECT_EQ(tree.at({0, 0}).getTrackKind(), kTrackUnknown);
}

TEST(OtioTrackKind, ATrackOfUnknownKindIsPassedOver) {
    Tree tree(nestedTracks({"audio", "video", "other"}));
    EXPECT_EQ(tree.at({0, 0, 0, 0, 0}).getTrackKind(), kTrackUnknown) << "a track tells its own kind only";
    EXPECT_EQ(tree.at({0, 0, 0, 0, 0, 0}).getTrackKind(), kTrackVideo);
    EXPECT_EQ(tree.at({0, 0, 0, 0, 0, 0, 0, 0}).getTrackKind(), kTrackVideo);
}

TEST(OtioTrackKind, IsUnknownUnderUnknownTracksOnly) {
    Tree tree(nestedTracks({"other"}));
    EXPECT_EQ(tree.at({0, 0, 0, 0}).getTrackKind(), kTrackUnknown);
    EXPECT_EQ(tree.at({0, 0, 0, 0, 0, 0}).getTrackKind(), kTrackUnknown);
}

TEST(OtioTrackKind, FollowsTheParentsAndNotTheChildrenLists) {
    Tree tree(nestedTracks({"video"}));
    Node& clip = tree.at({0, 0, 0, 0});
    clip.m_parent = nullptr;
    EXPECT_EQ(clip.getTrackKind(), kTrackUnknown);
    EXPECT_EQ(clip.m_children[0]->getTrackKind(), kTrackUnknown);
}

TEST(OtioTrackKind, IsFoundThroughADeepChainInReasonableTime) {
    std::size_t const depth = 450;
    Tree tree(R"({"OTIO_SCHEMA":"Annotation.1","layers":[)" +
              repeated(R"({"OTIO_SCHEMA":"Annotation.1","layers":[)", depth) + repeated("]}", depth) + "]}");
    Node const* node = &tree.root();
    while (!node->m_children.empty()) {
        node = node->m_children[0].get();
    }
    EXPECT_EQ(node->getTrackKind(), kTrackUnknown);
}

} // namespace
