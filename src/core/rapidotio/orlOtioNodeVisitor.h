// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#ifndef ORL_OTIO_NODE_VISITOR_H
#define ORL_OTIO_NODE_VISITOR_H

namespace ORL_0_81::rapidotio {

class TimelineNode;
class StackNode;
class TrackNode;
class ClipNode;
class EffectNode;
class GapNode;

/// What is done at each node of a walk. Every operation does nothing by default.
///
/// A node is visited before its children are made of its JSON, and post-visited after all its descendants. A
/// visitor may change the fields of a node, and may fill its children itself, which then are not made.
/// Nothing but an exception ends a walk early.
class NodeVisitor {
public:
    NodeVisitor() = default;
    NodeVisitor(NodeVisitor const&) = default;
    NodeVisitor& operator=(NodeVisitor const&) = default;
    virtual ~NodeVisitor();

    virtual void visitTimelineNode(TimelineNode& node);
    virtual void postVisitTimelineNode(TimelineNode& node);
    virtual void visitStackNode(StackNode& node);
    virtual void postVisitStackNode(StackNode& node);
    virtual void visitTrackNode(TrackNode& node);
    virtual void postVisitTrackNode(TrackNode& node);
    virtual void visitClipNode(ClipNode& node);
    virtual void postVisitClipNode(ClipNode& node);

    /// All effects come here; the class of the node tells them apart.
    virtual void visitEffectNode(EffectNode& node);
    virtual void postVisitEffectNode(EffectNode& node);
    virtual void visitGapNode(GapNode& node);
    virtual void postVisitGapNode(GapNode& node);
};

} // namespace ORL_0_81::rapidotio

#endif // ORL_OTIO_NODE_VISITOR_H
