// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "rapidotio/internal/orlOtioWriting.h"

#include "rapidotio/orlOtioNode.h"

#include <typeinfo>

namespace ORL_0_81::rapidotio::Writing {

namespace {

constexpr std::size_t kFlushBytes = 32768;

template <class NodeType>
NodeType const* exactly(Node const& node) {
    return typeid(node) == typeid(NodeType) ? static_cast<NodeType const*>(&node) : nullptr;
}

template <class NodeType>
void writeObject(TextHandler& handler, NodeType const& node) {
    handler.StartObject();
    ObjectBuilder<TextHandler> members(handler);
    describe(members, node);
    handler.EndObject(members.members());
}

// What `node.toJson` appends to an array. The nodes that make up most of a document are written as they are;
// any other makes its value first.
void writeElements(TextHandler& handler, Node const& node) {
    if (auto const* const clip = exactly<ClipNode>(node)) {
        writeObject(handler, *clip);
    } else if (auto const* const gap = exactly<GapNode>(node)) {
        writeObject(handler, *gap);
    } else if (auto const* const track = exactly<TrackNode>(node)) {
        writeObject(handler, *track);
    } else {
        rapidjson::Value array(rapidjson::kArrayType);
        node.toJson(array, handler.scratch());
        for (rapidjson::Value const& element : array.GetArray()) {
            element.Accept(handler);
        }
        handler.scratch().Clear();
    }
    handler.flushBuffer();
}

// What `node.toJson` adds to an object.
void writeMembers(ObjectBuilder<TextHandler>& object, Node const& node) { // NOLINT(misc-no-recursion)
    auto const writeChildren = [&](auto fits) {
        for (SharedPtr<Node> const& child : node.m_children) {
            if (child && fits(*child)) {
                writeMembers(object, *child);
            }
        }
    };
    if (auto const* const timeline = exactly<TimelineNode>(node)) {
        writeChildren(fitsTimeline);
        describe(object, *timeline);
    } else if (auto const* const stack = exactly<StackNode>(node)) {
        object.addKey("tracks");
        writeObject(object.handler(), *stack);
    } else if (exactly<RootNode>(node)) {
        writeChildren([](Node const&) { return true; });
    } else {
        rapidjson::Value value(rapidjson::kObjectType);
        node.toJson(value, object.handler().scratch());
        for (auto const& member : value.GetObject()) {
            object.addKey(member.name.GetString(), member.name.GetStringLength());
            member.value.Accept(object.handler());
        }
        object.handler().scratch().Clear();
    }
}

} // namespace

TextHandler::TextHandler(std::size_t sizeHint)
    : rapidjson::Writer<rapidjson::StringBuffer>(buffer), m_scratch(m_scratchMemory, sizeof m_scratchMemory) {
    m_text.reserve(sizeHint);
}

void TextHandler::PlainString(char const* text, std::size_t length) {
    Prefix(rapidjson::kStringType);
    char* const place = buffer.Push(length + 2);
    place[0] = '"';
    std::memcpy(place + 1, text, length);
    place[length + 1] = '"';
}

void TextHandler::flushBuffer() {
    if (buffer.GetSize() >= kFlushBytes) {
        m_text.append(buffer.GetString(), buffer.GetSize());
        buffer.Clear();
    }
}

std::string TextHandler::takeText() {
    m_text.append(buffer.GetString(), buffer.GetSize());
    buffer.Clear();
    if (m_text.size() < m_text.capacity() / 2) {
        m_text.shrink_to_fit();
    }
    return std::move(m_text);
}

void addChildren(ObjectBuilder<Collector>& members, Node const& node) {
    members.addPlainKey(node.getChildrenArrayName());
    members.handler().Null();
}

void addChildren(ObjectBuilder<TextHandler>& members, Node const& node) {
    members.addPlainKey(node.getChildrenArrayName());
    members.handler().StartArray();
    for (SharedPtr<Node> const& child : node.m_children) {
        if (child) {
            writeElements(members.handler(), *child);
        }
    }
    members.handler().EndArray();
}

bool fitsTimeline(Node const& child) { return dynamic_cast<TimelineNode const*>(&child) == nullptr; }

void fillSlot(rapidjson::Value& object, char const* name, rapidjson::Value& value) {
    object.FindMember(name)->value = value;
}

rapidjson::Value childrenToValue(Node const& node, Allocator& allocator) {
    rapidjson::Value array(rapidjson::kArrayType);
    array.Reserve(static_cast<rapidjson::SizeType>(node.m_children.size()), allocator);
    for (SharedPtr<Node> const& child : node.m_children) {
        if (child) {
            child->toJson(array, allocator);
        }
    }
    return array;
}

std::string toText(Node const& root, std::size_t sizeHint) {
    TextHandler handler(sizeHint);
    handler.StartObject();
    ObjectBuilder<TextHandler> members(handler);
    writeMembers(members, root);
    handler.EndObject(members.members());
    return handler.takeText();
}

} // namespace ORL_0_81::rapidotio::Writing
