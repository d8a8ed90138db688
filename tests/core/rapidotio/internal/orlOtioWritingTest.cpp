// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "rapidotio/internal/orlOtioWriting.h"

#include "internal/orlJson.h"
#include "rapidotio/orlOtioNode.h"
#include "rapidotio/orlOtioNodeIterator.h"
#include "rapidotio/orlOtioNodeVisitor.h"

#include <gtest/gtest.h>

#include <limits>

namespace {

using namespace ORL_0_81;
using namespace ORL_0_81::rapidotio;

class Idle : public NodeVisitor {};

std::string textOfValues(Node const& root) {
    rapidjson::Document document(rapidjson::kObjectType);
    root.toJson(document, document.GetAllocator());
    return jsonToText(document);
}

// Every class, at every place where it fits and at some where it does not.
constexpr char const* const DOCUMENTS[] = {
    "{}",
    R"({"OTIO_SCHEMA":"Timeline.1"})",
    R"({"OTIO_SCHEMA":"Stack.1","name":"alone","children":[{"OTIO_SCHEMA":"Track.1"}]})",
    R"({"OTIO_SCHEMA":"Track.1"})",
    R"({"OTIO_SCHEMA":"Timeline.1","tracks":{"OTIO_SCHEMA":"Timeline.1","name":"below"}})",
    R"({"OTIO_SCHEMA":"Timeline.1","tracks":{"OTIO_SCHEMA":"Track.1"}})",
    R"({"OTIO_SCHEMA":"Timeline.1","name":"a \"quoted\" name\n","tracks":{"OTIO_SCHEMA":"Stack.1","children":[
        {"OTIO_SCHEMA":"Track.1","name":"tab\t","kind":"video","children":[
            {"OTIO_SCHEMA":"Clip.1","name":"back\\slash","effects":[
                {"OTIO_SCHEMA":"CDL.1","layers":[{"OTIO_SCHEMA":"Comp.1","opacity":0.8},
                                                 {"OTIO_SCHEMA":"Stack.1"}]},
                {"OTIO_SCHEMA":"Gap.1","effects":[{"OTIO_SCHEMA":"AngularMask.1","pivot":[1,2]}]},
                {"OTIO_SCHEMA":"Timeline.1"},
                {"OTIO_SCHEMA":"Annotation.1","layers":[
                    {"OTIO_SCHEMA":"Paint.1","points":[{"OTIO_SCHEMA":"Point.1","x":0.1}],"rgba":[1,0.1]},
                    {"OTIO_SCHEMA":"Text.1","text":"\u00e9","rgba":[]}]}],
             "media_reference":{"metadata":{"orl":{"extra_data":{"a \"key\"":"a \"value\"","b":"c"}}}}},
            {"OTIO_SCHEMA":"Stack.1","children":[{"OTIO_SCHEMA":"Clip.1"}]},
            {"OTIO_SCHEMA":"Gap.1","source_range":{"start_time":
                {"OTIO_SCHEMA":"RationalTime.1","value":1,"rate":24}}}]},
        {"OTIO_SCHEMA":"Clip.1"},
        {"OTIO_SCHEMA":"Comp.1","blend_mode":"over"}]}})",
};

TEST(OtioWriting, WritesTheSameTextWithAndWithoutValuesBetween) {
    for (char const* const text : DOCUMENTS) {
        rapidjson::Document document;
        ASSERT_FALSE(parseJson(text, document).IsError()) << text;
        RootNode root(document);
        Idle visitor;
        NodeIterator(root, visitor).iterate();
        EXPECT_EQ(Writing::toText(root, 0), textOfValues(root)) << text;
    }
}

TEST(OtioWriting, AsksANodeOfAnUnknownClassForItsValues) {
    class Marker : public GapNode {
    public:
        using GapNode::GapNode;
        void toJson(Json& array, Allocator& allocator) const override {
            array.PushBack("first", allocator);
            array.PushBack("second", allocator);
        }
    };
    class Note : public StackNode {
    public:
        void toJson(Json& object, Allocator& allocator) const override {
            object.AddMember("note", "\"quoted\"", allocator);
        }
    };
    rapidjson::Document empty(rapidjson::kObjectType);
    RootNode root;
    SharedPtr<Node> const timeline(new TimelineNode("by hand"));
    SharedPtr<Node> const stack(new StackNode);
    timeline->m_children = {stack, SharedPtr<Node>(new Note), SharedPtr<Node>()};
    stack->m_children = {SharedPtr<Node>(new Marker(empty, nullptr)), SharedPtr<Node>()};
    root.m_children = {timeline};

    std::string const expected =
        R"({"tracks":{"OTIO_SCHEMA":"Stack.1","children":["first","second"]},"note":"\"quoted\"",)"
        R"("name":"by hand","OTIO_SCHEMA":"Timeline.1",)"
        R"("metadata":{"orl":{"ORL_SCHEMA":"TimelineMetadata.1","version":"0.81"}},)"
        R"("global_start_time":{"OTIO_SCHEMA":"RationalTime.1"}})";
    EXPECT_EQ(Writing::toText(root, 0), expected);
    EXPECT_EQ(textOfValues(root), expected);
}

TEST(OtioWriting, AnObjectTakesNoMoreRoomThanItsMembersNeed) {
    rapidjson::Document document;
    auto& allocator = document.GetAllocator();
    rapidjson::Value const object = Writing::buildObject(allocator, [](auto& members) {
        members.addConstant("OTIO_SCHEMA", "Gap.1");
        members.addInt("one", 1);
    });
    EXPECT_EQ(object.MemberCount(), 2U);
    EXPECT_EQ(allocator.Size(), 2 * sizeof(rapidjson::Value::Member));
}

TEST(OtioWriting, ANumberThatJsonCannotTellIsWrittenAsZero) {
    rapidjson::Document document;
    rapidjson::Value const object = Writing::buildObject(document.GetAllocator(), [](auto& members) {
        members.addDouble("infinite", std::numeric_limits<double>::infinity());
        members.addDoubles("list", {1.5, std::numeric_limits<double>::quiet_NaN()});
    });
    EXPECT_EQ(jsonToText(object), R"({"infinite":0.0,"list":[1.5,0.0]})");
}

TEST(OtioWriting, AnObjectLargerThanTheScratchMemoryIsWhole) {
    rapidjson::Document document;
    std::vector<double> const numbers(10000, 0.5);
    rapidjson::Value const object = Writing::buildObject(
        document.GetAllocator(), [&](auto& members) { members.addDoubles("numbers", numbers); });
    ASSERT_EQ(object["numbers"].Size(), numbers.size());
    EXPECT_EQ(object["numbers"][9999].GetDouble(), 0.5);
}

TEST(OtioWriting, ATextLongerThanTheBufferIsWhole) {
    RootNode root;
    SharedPtr<Node> const timeline(new TimelineNode("long"));
    SharedPtr<Node> const stack(new StackNode);
    rapidjson::Document empty(rapidjson::kObjectType);
    for (int i = 0; i < 5000; ++i) {
        stack->m_children.push_back(SharedPtr<Node>(new TrackNode(empty, nullptr)));
    }
    timeline->m_children = {stack};
    root.m_children = {timeline};
    EXPECT_EQ(Writing::toText(root, 0), textOfValues(root));
}

} // namespace
