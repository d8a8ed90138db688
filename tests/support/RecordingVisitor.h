// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#ifndef ORL_TEST_SUPPORT_RECORDING_VISITOR_H
#define ORL_TEST_SUPPORT_RECORDING_VISITOR_H

#include "rapidotio/orlOtioNode.h"
#include "rapidotio/orlOtioNodeVisitor.h"

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

namespace orlTest {

/// Records each operation with the name of its node, a '+' before a visit and a '-' before a post-visit.
class RecordingVisitor : public ORL_0_81::rapidotio::NodeVisitor {
public:
    std::vector<std::string> events;

    /// Is called at each visit, after the event was recorded.
    std::function<void(ORL_0_81::rapidotio::Node&)> onVisit;
    std::function<void(ORL_0_81::rapidotio::Node&)> onPostVisit;

    /// All events in one line.
    std::string line() const {
        std::string result;
        for (std::string const& event : events) {
            result += (result.empty() ? "" : " ") + event;
        }
        return result;
    }

    void visitTimelineNode(ORL_0_81::rapidotio::TimelineNode& node) override { visit("timeline", node); }
    void postVisitTimelineNode(ORL_0_81::rapidotio::TimelineNode& node) override { post("timeline", node); }
    void visitStackNode(ORL_0_81::rapidotio::StackNode& node) override { visit("stack", node); }
    void postVisitStackNode(ORL_0_81::rapidotio::StackNode& node) override { post("stack", node); }
    void visitTrackNode(ORL_0_81::rapidotio::TrackNode& node) override { visit("track", node); }
    void postVisitTrackNode(ORL_0_81::rapidotio::TrackNode& node) override { post("track", node); }
    void visitClipNode(ORL_0_81::rapidotio::ClipNode& node) override { visit("clip", node); }
    void postVisitClipNode(ORL_0_81::rapidotio::ClipNode& node) override { post("clip", node); }
    void visitEffectNode(ORL_0_81::rapidotio::EffectNode& node) override { visit("effect", node); }
    void postVisitEffectNode(ORL_0_81::rapidotio::EffectNode& node) override { post("effect", node); }
    void visitGapNode(ORL_0_81::rapidotio::GapNode& node) override { visit("gap", node); }
    void postVisitGapNode(ORL_0_81::rapidotio::GapNode& node) override { post("gap", node); }

private:
    void visit(char const* word, ORL_0_81::rapidotio::Node& node) {
        events.push_back("+" + std::string(word) + ":" + node.m_name);
        if (onVisit) {
            onVisit(node);
        }
    }

    void post(char const* word, ORL_0_81::rapidotio::Node& node) {
        events.push_back("-" + std::string(word) + ":" + node.m_name);
        if (onPostVisit) {
            onPostVisit(node);
        }
    }
};

} // namespace orlTest

#endif // ORL_TEST_SUPPORT_RECORDING_VISITOR_H
