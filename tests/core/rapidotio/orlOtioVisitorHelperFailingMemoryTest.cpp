// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "support/Files.h"
#include "support/Tree.h"
#include "support/orlFailingMemory.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

// The road of a document when memory fails on it, with every class of node.

namespace {

using namespace ORL_0_81;
using namespace ORL_0_81::rapidotio;
using orlTest::dataFile;
using orlTest::failEachAllocation;
using orlTest::FailingMemory;
using orlTest::SilentVisitor;

// Keeps the clips, which outlive their tree with it.
class Keeper : public NodeVisitor {
public:
    void visitClipNode(ClipNode& node) override { m_nodes.emplace_back(&node); }

    std::vector<SharedPtr<Node>> m_nodes;
};

void failVisit(std::string const& json, orlTest::MemoryPlan const& plan = orlTest::MemoryPlan()) {
    std::string const expected = orlTest::normalized(json);
    failEachAllocation(
        [&](FailingMemory& memory) {
            std::string output = "untouched";
            Keeper keeper;
            bool const done = memory.run([&] { EXPECT_TRUE(VisitorHelper::visit(json, keeper, &output)); });
            EXPECT_EQ(output, done ? expected : "untouched");
            for (SharedPtr<Node> const& node : keeper.m_nodes) {
                ASSERT_EQ(node->refcount(), 1) << "something of the tree is left";
            }
        },
        plan);
}

TEST(VisitorHelperFailingMemory, ADocumentOfEveryClassIsWalkedAndWrittenOrTheOutputStays) {
    failVisit(dataFile("orl/everything.otio"));
}

TEST(VisitorHelperFailingMemory, ADocumentOfEachDialectIsWalkedAndWrittenOrTheOutputStays) {
    for (char const* const name : {"oldMetadata", "ownMetadata", "review", "trackingService"}) {
        SCOPED_TRACE(name);
        failVisit(dataFile("timeline/" + std::string(name) + ".otio"));
    }
}

TEST(VisitorHelperFailingMemory, ADocumentOfTheDeepestNestingIsWalkedOrTheOutputStays) {
    // Of its text so little is left that the result is to be cut to its size, which the standard library only tries.
    failVisit(dataFile("timeline/good/timelineLevel1000.json"), {true, false, false});
}

// Long enough that texts and values outgrow every buffer.
TEST(VisitorHelperFailingMemory, ALargeDocumentIsWalkedAndWrittenOrTheOutputStays) {
    std::string clips;
    for (int i = 0; i < 300; ++i) {
        clips += R"({"OTIO_SCHEMA":"Clip.1","name":"clip )" + std::to_string(i) + R"("},)";
    }
    failVisit(R"({"OTIO_SCHEMA":"Timeline.1","tracks":{"OTIO_SCHEMA":"Stack.1","children":[)"
              R"({"OTIO_SCHEMA":"Track.1","children":[)" +
              clips + R"({"OTIO_SCHEMA":"Gap.1"}]}]}})");
}

TEST(VisitorHelperFailingMemory, ATextThatIsRefusedIsRefusedOrNotRead) {
    std::string json = dataFile("orl/everything.otio");
    json.erase(json.rfind('}'));
    failEachAllocation([&json](FailingMemory& memory) {
        SilentVisitor visitor;
        std::string output = "untouched";
        bool isTaken = false;
        memory.run([&] { isTaken = VisitorHelper::visit(json, visitor, &output); });
        EXPECT_FALSE(isTaken);
        EXPECT_EQ(output, "untouched");
    });
}

TEST(NodeFailingMemory, ATreeIsMadeAValueOfOrStaysAsItIs) {
    orlTest::Tree tree(dataFile("orl/everything.otio"));
    std::string const expected = tree.text();
    failEachAllocation([&](FailingMemory& memory) {
        std::string text;
        bool const done = memory.run([&] { text = tree.text(); });
        EXPECT_EQ(text, done ? expected : "");
    });
    EXPECT_EQ(tree.text(), expected);
}

} // namespace
