// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#ifndef ORL_OTIO_WRITING_H
#define ORL_OTIO_WRITING_H

#include "rapidotio/orlOtioPoint.h"
#include "rapidotio/orlOtioTimeRange.h"

#include <rapidjson/document.h>
#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

#include <cmath>
#include <cstddef>
#include <cstring>
#include <initializer_list>
#include <string>

namespace ORL_0_81::rapidotio {

class ClipNode;
class GapNode;
class Node;
class StackNode;
class TimelineNode;
class TrackNode;

/// The counterpart of Parsing: how a node becomes JSON.
///
/// Each class tells the members of its object once, in describe(), to an ObjectBuilder. What they become is
/// decided by the handler of RapidJSON's events behind it: a Collector makes a value of them, as Node::toJson
/// wants it, and a TextHandler writes them as they come, so that a whole document needs no second DOM.
namespace Writing {

using Allocator = rapidjson::Document::AllocatorType;

/// Makes one value. Its scratch memory is a buffer of the caller's, then the heap.
///
/// Added member by member, an object of RapidJSON's takes room for 16 members at its first one, which makes a
/// document of small objects several times as large as it has to be. Collected in one go, as the parser does
/// it, an object takes just what it needs.
using Collector = rapidjson::GenericDocument<rapidjson::UTF8<>, Allocator, rapidjson::MemoryPoolAllocator<>>;

/// The buffer of a TextHandler, which has to exist before the writer on it.
struct TextBuffer {
    rapidjson::StringBuffer buffer{nullptr, 256};
};

/// Writes compact text. What has been written moves on to a string from time to time, so that the buffer
/// stays small and warm however long the text becomes.
class TextHandler : private TextBuffer, public rapidjson::Writer<rapidjson::StringBuffer> {
public:
    /// \param sizeHint The likely size of the text in bytes.
    explicit TextHandler(std::size_t sizeHint);

    /// A key, or a string, that is known to need no escape. Half of a document is such text, and RapidJSON
    /// looks at each character of a string before it writes it.
    void PlainString(char const* text, std::size_t length);

    /// Memory for a passing value. Cleared by whoever used it.
    Allocator& scratch() { return m_scratch; }

    /// Moves the buffer on if it is worth it. Called between two values.
    void flushBuffer();

    /// \returns the whole text and leaves none.
    std::string takeText();

private:
    alignas(std::max_align_t) char m_scratchMemory[8192];
    Allocator m_scratch;
    std::string m_text;
};

inline void putPlain(Collector& handler, char const* text, std::size_t length) {
    handler.String(text, static_cast<rapidjson::SizeType>(length), false);
}

inline void putPlain(TextHandler& handler, char const* text, std::size_t length) {
    handler.PlainString(text, length);
}

/// Receives the members of one object, in the order in which they are to stand.
///
/// Names and constant texts are literals that need no escape, and are referred to, never copied. A number
/// that is not finite, which JSON cannot tell, is written as 0.0.
template <class Handler>
class ObjectBuilder {
public:
    explicit ObjectBuilder(Handler& handler) : m_handler(handler) {}

    Handler& handler() const { return m_handler; }
    rapidjson::SizeType members() const { return m_members; }

    /// A member whose value the caller gives to the handler next.
    template <std::size_t N>
    void addKey(char const (&name)[N]) {
        ++m_members;
        putPlain(m_handler, name, N - 1);
    }

    /// As above, with a name that needs no escape and outlives the document.
    void addPlainKey(char const* name) {
        ++m_members;
        putPlain(m_handler, name, std::strlen(name));
    }

    /// As above, with any name. It is copied.
    void addKey(char const* name, std::size_t length) {
        ++m_members;
        m_handler.Key(name, static_cast<rapidjson::SizeType>(length), true);
    }

    template <std::size_t N, std::size_t M>
    void addConstant(char const (&name)[N], char const (&text)[M]) {
        addKey(name);
        putPlain(m_handler, text, M - 1);
    }

    /// A text that lives in a node: copied, up to its first zero byte.
    template <std::size_t N>
    void addText(char const (&name)[N], std::string const& text) {
        addKey(name);
        copy(text);
    }

    /// As above, with a name that lives in a node, too.
    void addText(std::string const& name, std::string const& text) {
        addKey(name.c_str(), std::strlen(name.c_str()));
        copy(text);
    }

    template <std::size_t N>
    void addBool(char const (&name)[N], bool value) {
        addKey(name);
        m_handler.Bool(value);
    }

    template <std::size_t N>
    void addInt(char const (&name)[N], int value) {
        addKey(name);
        m_handler.Int(value);
    }

    template <std::size_t N>
    void addUInt(char const (&name)[N], unsigned value) {
        addKey(name);
        m_handler.Uint(value);
    }

    template <std::size_t N>
    void addDouble(char const (&name)[N], double value) {
        addKey(name);
        number(value);
    }

    template <std::size_t N>
    void addInts(char const (&name)[N], std::initializer_list<int> values) {
        addKey(name);
        m_handler.StartArray();
        for (int const value : values) {
            m_handler.Int(value);
        }
        m_handler.EndArray(static_cast<rapidjson::SizeType>(values.size()));
    }

    /// An array of doubles, of the given range of numbers.
    template <std::size_t N, class Numbers>
    void addDoubles(char const (&name)[N], Numbers const& values) {
        addKey(name);
        m_handler.StartArray();
        for (double const value : values) {
            number(value);
        }
        m_handler.EndArray(static_cast<rapidjson::SizeType>(values.size()));
    }

    template <std::size_t N>
    void addDoubles(char const (&name)[N], std::initializer_list<double> values) {
        addDoubles<N, std::initializer_list<double>>(name, values);
    }

    /// An object whose members `describeMembers(ObjectBuilder&)` adds.
    template <std::size_t N, class DescribeMembers>
    void addObject(char const (&name)[N], DescribeMembers describeMembers) {
        addKey(name);
        object(describeMembers);
    }

    /// An array of objects, one for each element, whose members `describeElement(ObjectBuilder&, element)`
    /// adds.
    template <std::size_t N, class Range, class DescribeElement>
    void addObjects(char const (&name)[N], Range const& range, DescribeElement describeElement) {
        addKey(name);
        m_handler.StartArray();
        for (auto const& element : range) {
            object([&](ObjectBuilder& members) { describeElement(members, element); });
        }
        m_handler.EndArray(static_cast<rapidjson::SizeType>(range.size()));
    }

    template <std::size_t N>
    void addTime(char const (&name)[N], Time const& time) {
        addObject(name, [&](ObjectBuilder& members) { members.addMembersOf(time); });
    }

    template <std::size_t N>
    void addTimeRange(char const (&name)[N], TimeRange const& range) {
        addObject(name, [&](ObjectBuilder& members) { members.addMembersOf(range); });
    }

    void addMembersOf(Time const& time) {
        addConstant("OTIO_SCHEMA", "RationalTime.1");
        if (time.hasValue() && std::isfinite(time.value)) {
            addDouble("value", time.value);
        }
        if (time.hasRate() && std::isfinite(time.rate)) {
            addDouble("rate", time.rate);
        }
    }

    void addMembersOf(TimeRange const& range) {
        addTime("start_time", range.start_time);
        addTime("duration", range.duration);
        addConstant("OTIO_SCHEMA", "TimeRange.1");
    }

    void addMembersOf(Point const& point) {
        addConstant("OTIO_SCHEMA", "Point.1");
        addDouble("x", point.x);
        addDouble("y", point.y);
        addDouble("width", point.width);
    }

private:
    void copy(std::string const& text) {
        m_handler.String(text.c_str(), static_cast<rapidjson::SizeType>(std::strlen(text.c_str())), true);
    }

    void number(double value) { m_handler.Double(std::isfinite(value) ? value : 0.0); }

    template <class DescribeMembers>
    void object(DescribeMembers describeMembers) {
        m_handler.StartObject();
        ObjectBuilder inner(m_handler);
        describeMembers(inner);
        m_handler.EndObject(inner.m_members);
    }

    Handler& m_handler;
    rapidjson::SizeType m_members = 0;
};

/// The members of a node's own object, in their order, but for the "tracks" of a timeline, which stand before
/// its first member. Each is defined beside its class, for both handlers.
///
/// Effects are few, so they make values only.
template <class Handler>
void describe(ObjectBuilder<Handler>& members, TimelineNode const& node);
template <class Handler>
void describe(ObjectBuilder<Handler>& members, StackNode const& node);
template <class Handler>
void describe(ObjectBuilder<Handler>& members, TrackNode const& node);
template <class Handler>
void describe(ObjectBuilder<Handler>& members, GapNode const& node);
template <class Handler>
void describe(ObjectBuilder<Handler>& members, ClipNode const& node);

/// The member that holds the children: for a value an empty place, which fillSlot fills when the object is
/// made, since a Collector takes no values; for text the children themselves.
void addChildren(ObjectBuilder<Collector>& members, Node const& node);
void addChildren(ObjectBuilder<TextHandler>& members, Node const& node);

/// The object whose members `describeMembers(ObjectBuilder<Collector>&)` adds.
///
/// Never inlined: its scratch buffer must not lie in the frame of a writer that goes down to its children.
template <class DescribeMembers>
[[gnu::noinline]] rapidjson::Value buildObject(Allocator& allocator, DescribeMembers describeMembers) {
    constexpr std::size_t kStackBytes = 2048;
    constexpr std::size_t kPoolOverhead = 64;
    alignas(std::max_align_t) char scratch[kStackBytes + kPoolOverhead];
    rapidjson::MemoryPoolAllocator<> scratchPool(scratch, sizeof scratch);
    Collector collector(&allocator, kStackBytes, &scratchPool);
    auto collect = [&describeMembers](Collector& target) {
        target.StartObject();
        ObjectBuilder<Collector> members(target);
        describeMembers(members);
        return target.EndObject(members.members());
    };
    collector.Populate(collect);
    return rapidjson::Value(static_cast<rapidjson::Value&&>(collector));
}

/// False for a child that a timeline leaves out of its text: a timeline, whose members would mix with its
/// own.
///
/// The parent leaves the child out rather than the child itself, since a node that outlived its tree may
/// still be written, and its pointer to a parent is stale then.
bool fitsTimeline(Node const& child);

/// Moves a value into the empty place of that name.
void fillSlot(rapidjson::Value& object, char const* name, rapidjson::Value& value);

/// The children's values as one array.
rapidjson::Value childrenToValue(Node const& node, Allocator& allocator);

/// A node's own object with its children.
template <class NodeType>
rapidjson::Value buildNode(NodeType const& node, Allocator& allocator) {
    rapidjson::Value children = childrenToValue(node, allocator);
    rapidjson::Value object = buildObject(allocator, [&node](auto& members) { describe(members, node); });
    fillSlot(object, node.getChildrenArrayName(), children);
    return object;
}

/// Adds the described members behind those that the object has.
template <class DescribeMembers>
void addMembers(rapidjson::Value& object, Allocator& allocator, DescribeMembers describeMembers) {
    rapidjson::Value built = buildObject(allocator, describeMembers);
    if (object.ObjectEmpty()) {
        object = built;
        return;
    }
    for (auto& member : built.GetObject()) {
        object.AddMember(member.name, member.value, allocator);
    }
}

/// \param sizeHint The likely size of the text in bytes.
/// \returns the compact text of what `root.toJson` adds to an empty object.
std::string toText(Node const& root, std::size_t sizeHint);

} // namespace Writing

} // namespace ORL_0_81::rapidotio

#endif // ORL_OTIO_WRITING_H
