// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "rapidotio/orlOtioNodeVisitor.h"

namespace ORL_0_81::rapidotio {

NodeVisitor::~NodeVisitor() = default;

void NodeVisitor::visitTimelineNode(TimelineNode&) {}
void NodeVisitor::postVisitTimelineNode(TimelineNode&) {}
void NodeVisitor::visitStackNode(StackNode&) {}
void NodeVisitor::postVisitStackNode(StackNode&) {}
void NodeVisitor::visitTrackNode(TrackNode&) {}
void NodeVisitor::postVisitTrackNode(TrackNode&) {}
void NodeVisitor::visitClipNode(ClipNode&) {}
void NodeVisitor::postVisitClipNode(ClipNode&) {}
void NodeVisitor::visitEffectNode(EffectNode&) {}
void NodeVisitor::postVisitEffectNode(EffectNode&) {}
void NodeVisitor::visitGapNode(GapNode&) {}
void NodeVisitor::postVisitGapNode(GapNode&) {}

} // namespace ORL_0_81::rapidotio
