// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "rapidotio/orlOtioNodeVisitor.h"

#include "support/Json.h"
#include "support/RecordingVisitor.h"
#include "support/Tree.h"

#include <gtest/gtest.h>

#include <string>
#include <type_traits>

namespace {

using namespace ORL_0_81;
using namespace ORL_0_81::rapidotio;
using namespace orlTest;

TEST(OtioNodeVisitor, HasNoFields) {
    EXPECT_EQ(sizeof(NodeVisitor), sizeof(void*));
    EXPECT_TRUE(std::has_virtual_destructor_v<NodeVisitor>);
}

/// What a node of a schema tells its visitor.
std::string eventsOf(std::string const& schema) {
    rapidjson::Document const document = parsed(R"({"OTIO_SCHEMA":")" + schema + R"(","name":"n"})");
    SharedPtr<Node> const node = NodeFactory::buildNode(document, nullptr);
    RecordingVisitor visitor;
    node->accept(visitor);
    node->postAccept(visitor);
    return visitor.line();
}

TEST(OtioNodeVisitor, EachClassHasItsOwnPairOfOperations) {
    EXPECT_EQ(eventsOf("Timeline.1"), "+timeline:n -timeline:n");
    EXPECT_EQ(eventsOf("Stack.1"), "+stack:n -stack:n");
    EXPECT_EQ(eventsOf("Track.1"), "+track:n -track:n");
    EXPECT_EQ(eventsOf("Clip.1"), "+clip:n -clip:n");
    EXPECT_EQ(eventsOf("Gap.1"), "+gap:n -gap:n");
}

TEST(OtioNodeVisitor, AllEffectsShareOnePair) {
    for (char const* const schema :
         {"Comp.1", "AngularMask.1", "CDL.1", "Paint.1", "Text.1", "Annotation.1"}) {
        EXPECT_EQ(eventsOf(schema), "+effect:n -effect:n") << schema;
    }
}

template <class N>
std::string eventsOfA(N&& node) {
    RecordingVisitor visitor;
    node.accept(visitor);
    node.postAccept(visitor);
    return visitor.line();
}

TEST(OtioNodeVisitor, SeesNoRootAndNoBareBase) {
    rapidjson::Document const document = parsed(R"({"name":"n"})");
    EXPECT_EQ(eventsOfA(RootNode()), "");
    EXPECT_EQ(eventsOfA(RootNode(document)), "");
    EXPECT_EQ(eventsOfA(Node()), "");
    EXPECT_EQ(eventsOfA(EffectNode(document, nullptr)), "");
    EXPECT_EQ(eventsOfA(LayerNode(document, nullptr)), "");
}

TEST(OtioNodeVisitor, DoesNothingByDefault) {
    std::string const text = R"({"OTIO_SCHEMA":"Timeline.1","tracks":{"OTIO_SCHEMA":"Stack.1","children":[
        {"OTIO_SCHEMA":"Track.1","children":[{"OTIO_SCHEMA":"Clip.1","effects":[{"OTIO_SCHEMA":"CDL.1"}]},
        {"OTIO_SCHEMA":"Gap.1"}]}]}})";
    RecordingVisitor other;
    std::string output;
    ASSERT_TRUE(VisitorHelper::visit(text, other, &output));
    EXPECT_EQ(other.events.size(), 12U);
    NodeVisitor visitor;
    std::string const before = output;
    ASSERT_TRUE(VisitorHelper::visit(text, visitor, &output));
    EXPECT_EQ(output, before);
    EXPECT_EQ(normalized(text), output);
}

} // namespace
