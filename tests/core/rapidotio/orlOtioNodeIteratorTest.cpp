// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "rapidotio/orlOtioNodeIterator.h"

#include "support/Json.h"
#include "support/RecordingVisitor.h"
#include "support/TimelineText.h"
#include "support/Tree.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <vector>

namespace {

using namespace ORL_0_81;
using namespace ORL_0_81::rapidotio;
using namespace orlTest;

/// A timeline of two tracks, the first with a clip under two nested effects and a gap.
char const* const kDocument =
    R"({"OTIO_SCHEMA":"Timeline.1","name":"t","tracks":{"OTIO_SCHEMA":"Stack.1","name":"s",
    "children":[
        {"OTIO_SCHEMA":"Track.1","name":"v","children":[
            {"OTIO_SCHEMA":"Clip.1","name":"c","effects":[
                {"OTIO_SCHEMA":"Annotation.1","name":"a","layers":[{"OTIO_SCHEMA":"Paint.1","name":"p"}]}]},
            {"OTIO_SCHEMA":"Gap.1","name":"g"}]},
        {"OTIO_SCHEMA":"Track.1","name":"w"}]}})";

char const* const kEvents =
    "+timeline:t +stack:s +track:v +clip:c +effect:a +effect:p -effect:p -effect:a -clip:c "
    "+gap:g -gap:g -track:v +track:w -track:w -stack:s -timeline:t";

/// A root over a document.
struct Walk {
    explicit Walk(std::string const& text) : document(parsed(text)), root(document) {}

    void run() { NodeIterator(root, visitor).iterate(); }

    rapidjson::Document document;
    RootNode root;
    RecordingVisitor visitor;
};

TEST(OtioNodeIterator, VisitsBeforeAndPostVisitsAfterAllDescendants) {
    Walk walk(kDocument);
    walk.run();
    EXPECT_EQ(walk.visitor.line(), kEvents);
}

TEST(OtioNodeIterator, ANodeIsVisitedBeforeItsChildrenExist) {
    Walk walk(kDocument);
    std::vector<std::string> postVisited;
    walk.visitor.onVisit = [](Node& node) { EXPECT_TRUE(node.m_children.empty()) << node.m_name; };
    walk.visitor.onPostVisit = [&](Node& node) {
        postVisited.push_back(std::to_string(node.m_children.size()));
    };
    walk.run();
    EXPECT_EQ(postVisited, (std::vector<std::string>{"0", "1", "1", "0", "2", "0", "2", "1"}));
}

TEST(OtioNodeIterator, ASecondWalkSeesTheSameNodesOnceMore) {
    Walk walk(kDocument);
    walk.run();
    std::string const text = writtenToObject(walk.root);
    Node const* const clip = walk.root.m_children[0]->m_children[0]->m_children[0]->m_children[0].get();
    walk.run();
    EXPECT_EQ(walk.visitor.line(), std::string(kEvents) + " " + kEvents);
    EXPECT_EQ(walk.root.m_children[0]->m_children[0]->m_children[0]->m_children[0].get(), clip);
    EXPECT_EQ(walk.root.m_children.size(), 1U);
    EXPECT_EQ(writtenToObject(walk.root), text);
}

TEST(OtioNodeIterator, WalksFromAnyNode) {
    Walk walk(kDocument);
    walk.run();
    RecordingVisitor visitor;
    NodeIterator(*walk.root.m_children[0]->m_children[0]->m_children[0], visitor).iterate();
    EXPECT_EQ(visitor.line(),
              "+track:v +clip:c +effect:a +effect:p -effect:p -effect:a -clip:c +gap:g -gap:g -track:v");
}

TEST(OtioNodeIterator, ANodeWhoseChildrenWereTakenAwayIsExpandedAgain) {
    Walk walk(kDocument);
    walk.run();
    walk.root.m_children.clear();
    walk.run();
    EXPECT_EQ(walk.visitor.line(), std::string(kEvents) + " " + kEvents);
}

TEST(OtioNodeIterator, AVisitorMayFillTheChildrenItselfAndThenNoneAreMade) {
    Walk walk(kDocument);
    walk.visitor.onVisit = [](Node& node) {
        if (node.m_name == "s") {
            node.m_children = {NodeFactory::buildNode(node.m_json["children"][1], &node)};
        }
    };
    walk.run();
    EXPECT_EQ(walk.visitor.line(), "+timeline:t +stack:s +track:w -track:w -stack:s -timeline:t");
    EXPECT_EQ(
        writtenToObject(walk.root),
        R"({"tracks":{"OTIO_SCHEMA":"Stack.1","children":[{"name":"w","OTIO_SCHEMA":"Track.1","children":[]}]},)" +
            timelineTail(R"("t")"));
}

TEST(OtioNodeIterator, AnEmptyPointerAmongTheChildrenIsSkipped) {
    Walk walk(kDocument);
    walk.visitor.onVisit = [](Node& node) {
        if (node.m_name == "s") {
            node.generateChildren();
            node.m_children.insert(node.m_children.begin(), SharedPtr<Node>());
            node.m_children.insert(node.m_children.begin() + 2, SharedPtr<Node>());
            node.m_children.emplace_back();
        }
    };
    walk.run();
    EXPECT_EQ(walk.visitor.line(), kEvents);
}

TEST(OtioNodeIterator, AListOfEmptyPointersIsNoEmptyList) {
    Walk walk(kDocument);
    walk.visitor.onVisit = [](Node& node) {
        if (node.m_name == "t") {
            node.m_children.emplace_back();
        }
    };
    walk.run();
    EXPECT_EQ(walk.visitor.line(), "+timeline:t -timeline:t");
    EXPECT_EQ(writtenToObject(walk.root), bareTimelineText(R"("t")"));
}

TEST(OtioNodeIterator, WhatAVisitorChangesIsWritten) {
    Walk walk(kDocument);
    walk.visitor.onVisit = [](Node& node) { node.m_name += "!"; };
    walk.visitor.onPostVisit = [](Node& node) { node.m_name += "?"; };
    walk.run();
    std::string const text = writtenToObject(walk.root);
    for (char const* const name : {"t!?", "v!?", "w!?", "c!?", "g!?", "a!?", "p!?"}) {
        EXPECT_NE(text.find(std::string(R"("name":")") + name + "\""), std::string::npos) << name;
    }
}

TEST(OtioNodeIterator, SiblingsThatAreAppendedDuringTheWalkAreWrittenButNotVisited) {
    Walk walk(kDocument);
    walk.visitor.onVisit = [&](Node& node) {
        if (node.m_name == "v") {
            Node& stack = *walk.root.m_children[0]->m_children[0];
            for (int i = 0; i < 100; ++i) {
                SharedPtr<Node> const track = NodeFactory::buildNode(node.m_json, &stack);
                track->m_name = "new";
                stack.m_children.push_back(track);
            }
        }
    };
    walk.run();
    EXPECT_EQ(walk.visitor.line(), kEvents);
    EXPECT_EQ(walk.root.m_children[0]->m_children[0]->m_children.size(), 102U);
    std::string const text = writtenToObject(walk.root);
    EXPECT_NE(text.find(R"({"name":"new","OTIO_SCHEMA":"Track.1","children":[]})"), std::string::npos);

    walk.visitor.onVisit = nullptr;
    walk.visitor.events.clear();
    walk.run();
    EXPECT_NE(walk.visitor.line().find("+track:new +clip:c"), std::string::npos) << "the next walk sees them";
}

TEST(OtioNodeIterator, ChildrenThatAreAppendedInThePostVisitAreNotVisited) {
    Walk walk(kDocument);
    walk.visitor.onPostVisit = [](Node& node) {
        if (node.m_name == "w") {
            node.m_children.push_back(NodeFactory::buildNode(node.m_json, &node));
        }
    };
    walk.run();
    EXPECT_EQ(walk.visitor.line(), kEvents);
}

TEST(OtioNodeIterator, ANodeThatIsTakenOutOfTheTreeDuringItsVisitIsWalkedToItsEnd) {
    Walk walk(kDocument);
    walk.visitor.onVisit = [&](Node& node) {
        if (node.m_name == "v") {
            walk.root.m_children[0]->m_children[0]->m_children.clear();
        }
    };
    walk.run();
    EXPECT_EQ(walk.visitor.line(),
              "+timeline:t +stack:s +track:v +clip:c +effect:a +effect:p -effect:p -effect:a "
              "-clip:c +gap:g -gap:g -track:v -stack:s -timeline:t");
}

TEST(OtioNodeIterator, AnExceptionEndsTheWalk) {
    Walk walk(kDocument);
    walk.visitor.onVisit = [](Node& node) {
        if (node.m_name == "a") {
            throw std::runtime_error("enough");
        }
    };
    EXPECT_THROW(walk.run(), std::runtime_error);
    EXPECT_EQ(walk.visitor.line(), "+timeline:t +stack:s +track:v +clip:c +effect:a");
}

TEST(OtioNodeIterator, WalksATreeThatWasAssembledByHand) {
    RootNode root;
    SharedPtr<TimelineNode> const timeline(new TimelineNode("t"));
    SharedPtr<StackNode> const stack(new StackNode);
    stack->m_parent = timeline.get();
    timeline->m_children.emplace_back(stack);
    timeline->m_parent = &root;
    root.m_children.emplace_back(timeline);
    RecordingVisitor visitor;
    NodeIterator(root, visitor).iterate();
    EXPECT_EQ(visitor.line(), "+timeline:t +stack: -stack: -timeline:t");
    EXPECT_EQ(timeline->refcount(), 2);
}

TEST(OtioNodeIterator, HoldsReferencesAndOwnsNothing) {
    Walk walk(kDocument);
    NodeIterator iterator(walk.root, walk.visitor);
    iterator.iterate();
    EXPECT_EQ(walk.root.refcount(), 0);
    EXPECT_EQ(walk.root.m_children[0]->refcount(), 1);
}

} // namespace
