// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#ifndef ORL_JSON_PATH_H
#define ORL_JSON_PATH_H

#include <cstddef>
#include <string>
#include <string_view>

namespace ORL_0_81::tool {

/// Where a value stands in a document: one step, linked to the step above it.
///
/// Steps live in the frames of the walk that goes down the document, so a place costs nothing until it is
/// asked for its text. A step refers to the one above and to the member's name, and owns neither.
class JsonPath {
public:
    /// The top of a document. \param schema What stands there, for label().
    explicit JsonPath(std::string_view schema) : m_schema(schema) {}

    /// A member of the object at `parent`.
    JsonPath(JsonPath const& parent, std::string_view name) : m_parent(&parent), m_name(name) {}

    /// An element of the array at `parent`.
    JsonPath(JsonPath const& parent, std::size_t index)
        : m_parent(&parent), m_index(index), m_isElement(true) {}

    JsonPath(JsonPath const&) = default;
    JsonPath& operator=(JsonPath const&) = delete;
    ~JsonPath() = default;

    /// The same place, as that of an object of the timeline: labels below it begin here.
    JsonPath asObject(std::string_view schema) const {
        JsonPath path(*this);
        path.m_schema = schema;
        return path;
    }

    /// The JSON pointer (RFC 6901) from the top of the document, printable; empty for the top itself.
    std::string toPointer() const;

    /// The schema of the nearest object of the timeline and the members down from there, as in
    /// `Clip.1 "metadata"/"note"`. Positions in lists are not told, so that equal losses have equal labels.
    std::string label() const;

private:
    JsonPath const* m_parent = nullptr;
    std::string_view m_name;
    std::string_view m_schema;
    std::size_t m_index = 0;
    bool m_isElement = false;
};

} // namespace ORL_0_81::tool

#endif // ORL_JSON_PATH_H
