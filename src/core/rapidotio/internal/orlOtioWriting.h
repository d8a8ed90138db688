// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#ifndef ORL_OTIO_WRITING_H
#define ORL_OTIO_WRITING_H

#include <rapidjson/document.h>

#include <cmath>
#include <cstddef>
#include <cstring>
#include <initializer_list>
#include <string>

namespace ORL_0_81::rapidotio {

struct Point;
struct Time;
struct TimeRange;

/// The counterpart of Parsing: builds the objects of a timeline document.
///
/// Added member by member, an object of RapidJSON's takes room for 16 members at its first one, which makes a
/// document of small objects several times as large as it has to be. Built in one go, as the parser builds
/// it, an object takes just what it needs. So the node classes describe an object to an ObjectBuilder.
namespace Writing {

using Allocator = rapidjson::Document::AllocatorType;

/// Collects the values of one object. Its scratch memory is a buffer of the caller's, then the heap.
using Collector = rapidjson::GenericDocument<rapidjson::UTF8<>, Allocator, rapidjson::MemoryPoolAllocator<>>;

/// Receives the members of one object, in the order in which they are to stand.
///
/// Names and constant texts are literals and are referred to, never copied. A number that is not finite,
/// which JSON cannot tell, is written as 0.0.
class ObjectBuilder {
public:
    explicit ObjectBuilder(Collector& collector) : m_collector(collector) {}

    template <std::size_t N, std::size_t M>
    void addConstant(char const (&name)[N], char const (&text)[M]) {
        key(name);
        m_collector.String(text, M - 1, false);
    }

    /// A text that lives in a node: copied, up to its first zero byte.
    template <std::size_t N>
    void addText(char const (&name)[N], std::string const& text) {
        key(name);
        copy(text);
    }

    /// As above, with a name that lives in a node, too.
    void addText(std::string const& name, std::string const& text) {
        ++m_members;
        copy(name);
        copy(text);
    }

    template <std::size_t N>
    void addBool(char const (&name)[N], bool value) {
        key(name);
        m_collector.Bool(value);
    }

    template <std::size_t N>
    void addInt(char const (&name)[N], int value) {
        key(name);
        m_collector.Int(value);
    }

    template <std::size_t N>
    void addUInt(char const (&name)[N], unsigned value) {
        key(name);
        m_collector.Uint(value);
    }

    template <std::size_t N>
    void addDouble(char const (&name)[N], double value) {
        key(name);
        number(value);
    }

    template <std::size_t N>
    void addInts(char const (&name)[N], std::initializer_list<int> values) {
        key(name);
        m_collector.StartArray();
        for (int const value : values) {
            m_collector.Int(value);
        }
        m_collector.EndArray(static_cast<rapidjson::SizeType>(values.size()));
    }

    /// An array of doubles, of the given range of numbers.
    template <std::size_t N, class Numbers>
    void addDoubles(char const (&name)[N], Numbers const& values) {
        key(name);
        m_collector.StartArray();
        for (double const value : values) {
            number(value);
        }
        m_collector.EndArray(static_cast<rapidjson::SizeType>(values.size()));
    }

    template <std::size_t N>
    void addDoubles(char const (&name)[N], std::initializer_list<double> values) {
        addDoubles<N, std::initializer_list<double>>(name, values);
    }

    /// An object whose members `describe(ObjectBuilder&)` adds.
    template <std::size_t N, class Describe>
    void addObject(char const (&name)[N], Describe describe) {
        key(name);
        element(describe);
    }

    /// An array of objects, one for each element of `range`, by `describe(ObjectBuilder&, element)`.
    template <std::size_t N, class Range, class Describe>
    void addObjects(char const (&name)[N], Range const& range, Describe describe) {
        key(name);
        m_collector.StartArray();
        for (auto const& each : range) {
            element([&](ObjectBuilder& object) { describe(object, each); });
        }
        m_collector.EndArray(static_cast<rapidjson::SizeType>(range.size()));
    }

    /// A place for a value that is moved in when the object is made, see fillSlot.
    template <std::size_t N>
    void addSlot(char const (&name)[N]) {
        key(name);
        m_collector.Null();
    }

    template <std::size_t N>
    void addTime(char const (&name)[N], Time const& time) {
        addObject(name, [&](ObjectBuilder& object) { object.addTime(time); });
    }

    template <std::size_t N>
    void addTimeRange(char const (&name)[N], TimeRange const& range) {
        addObject(name, [&](ObjectBuilder& object) { object.addTimeRange(range); });
    }

    /// The members of a time itself.
    void addTime(Time const& time);

    /// The members of a range itself.
    void addTimeRange(TimeRange const& range);

    /// The members of a point itself.
    void addPoint(Point const& point);

    rapidjson::SizeType members() const { return m_members; }

private:
    template <std::size_t N>
    void key(char const (&name)[N]) {
        ++m_members;
        m_collector.Key(name, N - 1, false);
    }

    void copy(std::string const& text) {
        m_collector.String(text.c_str(), static_cast<rapidjson::SizeType>(std::strlen(text.c_str())), true);
    }

    void number(double value) { m_collector.Double(std::isfinite(value) ? value : 0.0); }

    template <class Describe>
    void element(Describe describe) {
        m_collector.StartObject();
        ObjectBuilder object(m_collector);
        describe(object);
        m_collector.EndObject(object.members());
    }

    Collector& m_collector;
    rapidjson::SizeType m_members = 0;
};

/// The object whose members `describe(ObjectBuilder&)` adds.
///
/// Never inlined: its scratch buffer must not lie in the frame of a writer that goes down to its children.
template <class Describe>
[[gnu::noinline]] rapidjson::Value buildObject(Allocator& allocator, Describe describe) {
    constexpr std::size_t kStackBytes = 2048;
    constexpr std::size_t kPoolOverhead = 64;
    alignas(std::max_align_t) char scratch[kStackBytes + kPoolOverhead];
    rapidjson::MemoryPoolAllocator<> scratchPool(scratch, sizeof scratch);
    Collector collector(&allocator, kStackBytes, &scratchPool);
    auto collect = [&describe](Collector& target) {
        target.StartObject();
        ObjectBuilder object(target);
        describe(object);
        return target.EndObject(object.members());
    };
    collector.Populate(collect);
    return rapidjson::Value(static_cast<rapidjson::Value&&>(collector));
}

/// Adds the described members behind those that the object has.
template <class Describe>
void addMembers(rapidjson::Value& object, Allocator& allocator, Describe describe) {
    rapidjson::Value built = buildObject(allocator, describe);
    if (object.ObjectEmpty()) {
        object = built;
        return;
    }
    for (auto& member : built.GetObject()) {
        object.AddMember(member.name, member.value, allocator);
    }
}

/// Moves a value into the slot of that name.
void fillSlot(rapidjson::Value& object, char const* name, rapidjson::Value& value);

} // namespace Writing

} // namespace ORL_0_81::rapidotio

#endif // ORL_OTIO_WRITING_H
