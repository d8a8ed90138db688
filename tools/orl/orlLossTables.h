// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#ifndef ORL_LOSS_TABLES_H
#define ORL_LOSS_TABLES_H

#include "rapidotio/orlOtioNode.h"

#include <limits>
#include <string>
#include <string_view>

/// \file
/// What the reader of the library takes of each object, and what the normal form keeps of that: the knowledge
/// by which losses are told. One line a member.

namespace ORL_0_81::tool {

/// In what form the reader takes a member.
enum class Form {
    kConstant,     ///< always written with one text, whatever was there
    kText,         ///< a string
    kInteger,      ///< a signed 32-bit integer
    kUnsigned,     ///< an unsigned 32-bit integer
    kFraction,     ///< a finite number with a fraction or an exponent
    kFloat,        ///< as before, in the range of single precision
    kFlag,         ///< true or false
    kTimeValue,    ///< a fraction or a signed 32-bit integer
    kTimeRate,     ///< as before, or a text with a number
    kTrackKind,    ///< a string that names a kind
    kObject,       ///< an object of the members of a table
    kTime,         ///< an object of the schema "RationalTime.1"
    kLayerRange,   ///< a range that is written only within the layers of another effect
    kComponents,   ///< two numbers, taken one by one
    kIntegers,     ///< two integers, taken one by one
    kNumbers,      ///< numbers, taken as a whole, the first few kept
    kColour,       ///< numbers in the range of single precision, taken as a whole
    kPoints,       ///< objects of the schema "Point.1"
    kTexts,        ///< an object of strings with any names
    kEntity,       ///< a type and a number between slashes
    kClipMetadata, ///< one of the three generations, see clipMetadataTable
    kChildren,     ///< objects that become nodes
    kTracks,       ///< one object that becomes a node
    kUnused        ///< known, and yet left aside here
};

struct Table;

struct Member {
    char const* name;
    Form form;
    unsigned count = 0; ///< of the numbers that are kept
    Table const* table = nullptr;
    char const* text = nullptr;                                ///< of a constant, or why a member is unused
    double neutral = std::numeric_limits<double>::quiet_NaN(); ///< what a refused number becomes
    std::string rapidotio::ClipNode::*clipText = nullptr;      ///< where a text goes that another may replace
    double rapidotio::ClipNode::*clipNumbers[2] = {nullptr, nullptr}; ///< likewise for components
};

/// The members of one object; those of `base` belong to it, too.
struct Table {
    template <std::size_t N>
    constexpr explicit Table(Member const (&list)[N], Table const* baseTable = nullptr)
        : members(list), count(N), base(baseTable) {}

    Member const* members;
    std::size_t count;
    Table const* base;
};

/// An object that becomes a node.
struct NodeSchema {
    char const* name;
    Table const* table;
    bool writesToArray; ///< the node expects an array to write itself to, not an object
    bool givesArray;    ///< the node gives its children an array
};

/// \returns the schema of a node by the text that made it one, or null.
NodeSchema const* findNodeSchema(std::string_view schema);

/// The object around a wrapped timeline.
extern Table const wrapperTable;

extern Table const timeTable;
extern Table const timeRangeTable;
extern Table const pointTable;

/// The table by which a clip's "metadata" is read: by the tracking service's block, else by our own, else as
/// the old form.
Table const& clipMetadataTable(rapidjson::Value const& metadata);

} // namespace ORL_0_81::tool

#endif // ORL_LOSS_TABLES_H
