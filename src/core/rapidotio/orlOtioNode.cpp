// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project

// The structure of a tree: the base class, the factory, root, timeline, stack, track and gap. Clips, effects
// and annotation layers have sources of their own beside this one.
#include "rapidotio/orlOtioNode.h"

#include "rapidotio/internal/orlOtioDebug.h"
#include "rapidotio/internal/orlOtioParsing.h"
#include "rapidotio/internal/orlOtioWriting.h"
#include "rapidotio/orlOtioNodeVisitor.h"

#include <algorithm>
#include <cstring>

namespace ORL_0_81::rapidotio {

namespace {

// What a node without JSON refers to, so that the reference is never empty.
rapidjson::Value const nullValue;

constexpr char const DIALECT_VERSION[] = "0.81";

void adopt(Node& parent, rapidjson::Value const& json) {
    if (SharedPtr<Node> child = NodeFactory::buildNode(json, &parent)) {
        child->m_parent = &parent;
        parent.m_children.push_back(std::move(child));
    }
}

} // namespace

std::string const UNDEF_CODEC = "Unknown";

// Node

Node::Node() : m_json(nullValue), m_parent(nullptr) {}

Node::Node(Json const& json, Node const* parent) : m_json(json), m_parent(parent) {
    // No name is normal and nothing to speak of, so this is no typed lookup.
    if (char const* const name = Parsing::peekString(json, "name")) {
        m_name = name;
    }
}

Node::~Node() = default;

void Node::accept(NodeVisitor&) {}

void Node::postAccept(NodeVisitor&) {}

void Node::generateChildren() {
    Json const* const array = Parsing::findArray(m_json, getChildrenArrayName());
    if (!array) {
        printDebug("Node '%s' has no children\n", m_name.c_str());
        return;
    }
    for (Json const& element : array->GetArray()) {
        adopt(*this, element);
    }
}

TrackKind Node::getTrackKind() const {
    for (Node const* node = m_parent; node; node = node->m_parent) {
        TrackKind const kind = node->getTrackKind();
        // Any other node has already asked all above it; a track of unknown kind answers for itself alone.
        if (kind != kTrackUnknown || !dynamic_cast<TrackNode const*>(node)) {
            return kind;
        }
    }
    return kTrackUnknown;
}

void Node::toJson(Json& value, Allocator& allocator) const {
    for (SharedPtr<Node> const& child : m_children) {
        if (child) {
            child->toJson(value, allocator);
        }
    }
}

char const* Node::getChildrenArrayName() const { return "children"; }

// NodeFactory

namespace {

template <class NodeType>
SharedPtr<Node> make(rapidjson::Value const& json, Node const* parent) {
    return SharedPtr<Node>(new NodeType(json, parent));
}

struct Schema {
    char const* name;
    char const* word; // in the diagnostics
    SharedPtr<Node> (*make)(rapidjson::Value const& json, Node const* parent);
};

// The word for the angular mask is spelled as its readers know it.
constexpr Schema SCHEMAS[] = {
    {"Timeline", "Timeline", make<TimelineNode>},
    {"Stack", "Stack", make<StackNode>},
    {"Track", "Track", make<TrackNode>},
    {"Clip", "Clip", make<ClipNode>},
    {"Comp", "Comp", make<CompNode>},
    {"AngularMask", "AngularMark", make<AngularMaskNode>},
    {"CDL", "CDL", make<CDLNode>},
    {"Paint", "Paint", make<PaintNode>},
    {"Text", "Text", make<TextNode>},
    {"Annotation", "Annotation", make<AnnotationNode>},
    {"Gap", "Gap", make<GapNode>},
};

} // namespace

SharedPtr<Node> NodeFactory::buildNode(rapidjson::Value const& json, Node const* parent) {
    std::string schema;
    Parsing::getString(json, "OTIO_SCHEMA", schema);

    std::size_t const point = schema.find('.');
    if (point == std::string::npos) {
        printDebug("Could not determine schema version %s\n", schema.c_str());
        return nullptr;
    }
    if (schema.compare(point, std::string::npos, ".1") != 0) {
        printDebug("Unsupported schema version %s", schema.c_str() + point);
        return nullptr;
    }
    for (Schema const& known : SCHEMAS) {
        if (schema.compare(0, point, known.name) == 0) {
            printDebug("Found %s %s\n", known.word, schema.c_str());
            return known.make(json, parent);
        }
    }
    printDebug("Unhandled schema %s\n", schema.c_str());
    return nullptr;
}

// RootNode

RootNode::RootNode() = default;

RootNode::RootNode(Json const& json) : Node(json, nullptr) {}

RootNode::~RootNode() = default;

void RootNode::generateChildren() {
    Json const* const timeline = Parsing::findObject(m_json, "timeline");
    adopt(*this, timeline ? *timeline : m_json);
}

// TimelineNode

TimelineNode::TimelineNode(Json const& json, Node const* parent) : Node(json, parent) {
    if (Json const* const start = Parsing::findObject(json, "global_start_time")) {
        m_globalStartTime.setTime(*start);
    }
    if (Json const* const metadata = Parsing::findObject(json, "metadata")) {
        if (Json const* const orl = Parsing::findObject(*metadata, "orl")) {
            Parsing::getString(*orl, "version", m_version);
        }
    }
}

TimelineNode::TimelineNode(std::string const& name) : m_version(DIALECT_VERSION) { m_name = name; }

TimelineNode::~TimelineNode() = default;

void TimelineNode::accept(NodeVisitor& visitor) { visitor.visitTimelineNode(*this); }

void TimelineNode::postAccept(NodeVisitor& visitor) { visitor.postVisitTimelineNode(*this); }

void TimelineNode::generateChildren() {
    Json const* const tracks = Parsing::findObject(m_json, "tracks");
    if (!tracks) {
        printDebug("%s\n", "No tracks found in timeline");
        return;
    }
    adopt(*this, *tracks);
}

void TimelineNode::toJson(Json& object, Allocator& allocator) const {
    if (!object.IsObject()) {
        return;
    }
    for (SharedPtr<Node> const& child : m_children) {
        if (child && Writing::fitsTimeline(*child)) {
            child->toJson(object, allocator);
        }
    }
    Writing::addMembers(object, allocator, [this](auto& members) { Writing::describe(members, *this); });
}

template <class Handler>
void Writing::describe(ObjectBuilder<Handler>& members, TimelineNode const& node) {
    members.addText("name", node.m_name);
    members.addConstant("OTIO_SCHEMA", "Timeline.1");
    members.addObject("metadata", [](auto& metadata) {
        metadata.addObject("orl", [](auto& orl) {
            orl.addConstant("ORL_SCHEMA", "TimelineMetadata.1");
            orl.addConstant("version", DIALECT_VERSION);
        });
    });
    members.addTime("global_start_time", node.m_globalStartTime);
}

template void Writing::describe(ObjectBuilder<Collector>&, TimelineNode const&);
template void Writing::describe(ObjectBuilder<TextHandler>&, TimelineNode const&);

// StackNode

StackNode::StackNode() = default;

StackNode::StackNode(Json const& json, Node const* parent) : Node(json, parent) {}

StackNode::~StackNode() = default;

void StackNode::accept(NodeVisitor& visitor) { visitor.visitStackNode(*this); }

void StackNode::postAccept(NodeVisitor& visitor) { visitor.postVisitStackNode(*this); }

void StackNode::toJson(Json& object, Allocator& allocator) const {
    if (object.IsObject()) {
        Json stack = Writing::buildNode(*this, allocator);
        object.AddMember("tracks", stack, allocator);
    }
}

template <class Handler>
void Writing::describe(ObjectBuilder<Handler>& members, StackNode const& node) {
    members.addConstant("OTIO_SCHEMA", "Stack.1");
    addChildren(members, node);
}

template void Writing::describe(ObjectBuilder<Collector>&, StackNode const&);
template void Writing::describe(ObjectBuilder<TextHandler>&, StackNode const&);

// TrackNode

namespace {

// Without regard to the case of ASCII letters, and without a look at the locale: to a Turkish one the I of
// "VIDEO" is another letter than the i of "video".
bool isSameWord(std::string const& text, char const* lowerCase) {
    auto const same = [](char left, char right) {
        return (left >= 'A' && left <= 'Z' ? left - 'A' + 'a' : left) == right;
    };
    return std::equal(text.begin(), text.end(), lowerCase, lowerCase + std::strlen(lowerCase), same);
}

} // namespace

TrackNode::TrackNode(Json const& json, Node const* parent) : Node(json, parent) {
    std::string kind;
    if (Parsing::getString(json, "kind", kind)) {
        if (isSameWord(kind, "video")) {
            m_kind = kTrackVideo;
        } else if (isSameWord(kind, "audio")) {
            m_kind = kTrackAudio;
        }
    }
}

TrackNode::~TrackNode() = default;

void TrackNode::accept(NodeVisitor& visitor) { visitor.visitTrackNode(*this); }

void TrackNode::postAccept(NodeVisitor& visitor) { visitor.postVisitTrackNode(*this); }

TrackKind TrackNode::getTrackKind() const { return m_kind; }

void TrackNode::toJson(Json& array, Allocator& allocator) const {
    if (array.IsArray()) {
        Json track = Writing::buildNode(*this, allocator);
        array.PushBack(track, allocator);
    }
}

template <class Handler>
void Writing::describe(ObjectBuilder<Handler>& members, TrackNode const& node) {
    members.addText("name", node.m_name);
    members.addConstant("OTIO_SCHEMA", "Track.1");
    addChildren(members, node);
    if (node.m_kind == kTrackVideo) {
        members.addConstant("kind", "Video");
    } else if (node.m_kind == kTrackAudio) {
        members.addConstant("kind", "Audio");
    }
}

template void Writing::describe(ObjectBuilder<Collector>&, TrackNode const&);
template void Writing::describe(ObjectBuilder<TextHandler>&, TrackNode const&);

// GapNode

GapNode::GapNode(Json const& json, Node const* parent) : Node(json, parent) {
    Parsing::getTimeRange(json, "source_range", m_sourceRange);
}

GapNode::~GapNode() = default;

void GapNode::accept(NodeVisitor& visitor) { visitor.visitGapNode(*this); }

void GapNode::postAccept(NodeVisitor& visitor) { visitor.postVisitGapNode(*this); }

void GapNode::toJson(Json& array, Allocator& allocator) const {
    if (array.IsArray()) {
        Json gap = Writing::buildNode(*this, allocator);
        array.PushBack(gap, allocator);
    }
}

template <class Handler>
void Writing::describe(ObjectBuilder<Handler>& members, GapNode const& node) {
    members.addText("name", node.m_name);
    members.addConstant("OTIO_SCHEMA", "Gap.1");
    addChildren(members, node);
    members.addTimeRange("source_range", node.m_sourceRange);
    members.addObject("metadata", [](auto&) {});
}

template void Writing::describe(ObjectBuilder<Collector>&, GapNode const&);
template void Writing::describe(ObjectBuilder<TextHandler>&, GapNode const&);

char const* GapNode::getChildrenArrayName() const { return "effects"; }

} // namespace ORL_0_81::rapidotio
