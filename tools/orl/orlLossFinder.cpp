// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "orlLossFinder.h"

#include "orlJsonForms.h"
#include "orlJsonPath.h"
#include "orlLossTables.h"
#include "orlPrintable.h"
#include "rapidotio/internal/orlOtioParsing.h"
#include "rapidotio/orlOtioNode.h"

#include <algorithm>
#include <cfloat>
#include <climits>
#include <cstdlib>
#include <cstring>
#include <optional>
#include <vector>

#include <strings.h>

namespace ORL_0_81::tool {

using rapidjson::Value;
using rapidotio::ClipNode;
using rapidotio::EffectNode;
using rapidotio::Node;
namespace Parsing = rapidotio::Parsing;

namespace {

std::string_view nameOf(Value::Member const& member) { return wholeText(member.name); }

// The position of a member in a table and its base, with the entry.
struct Found {
    Member const* member;
    std::size_t position;
};

std::optional<Found> findMember(Table const& table, std::string_view name) {
    std::size_t offset = 0;
    for (Table const* part = &table; part; part = part->base) {
        for (std::size_t i = 0; i < part->count; ++i) {
            if (name == part->members[i].name) {
                return Found{&part->members[i], offset + i};
            }
        }
        offset += part->count;
    }
    return std::nullopt;
}

std::size_t sizeOf(Table const& table) {
    std::size_t size = 0;
    for (Table const* part = &table; part; part = part->base) {
        size += part->count;
    }
    return size;
}

// Goes down the document and, beside it, down the tree. All its recursion is as deep as the document, which
// the limit of nesting at parsing bounds.
class LossFinder {
public:
    LossFinder(LossScope scope, LossSink const& sink) : m_scope(scope), m_sink(sink) {}

    void document(Value const& document, Node const& root);

private:
    void top(Value const& value, JsonPath const& place, Node const& root);
    void lostObject(Value const& json, JsonPath const& place);
    void node(Node const& node, Node const* parent, JsonPath const& place);
    void members(Value const& object, Table const& table, JsonPath const& place, Node const& node);
    void member(Value const& value, Member const& member, JsonPath const& place, Node const& node);

    void constant(Value const& value, Member const& member, JsonPath const& place);
    void scalar(Value const& value, Member const& member, JsonPath const& place, Node const& node);
    void text(Value const& value, Member const& member, JsonPath const& place, Node const& node);
    void rate(Value const& value, JsonPath const& place);
    void trackKind(Value const& value, JsonPath const& place);
    void entity(Value const& value, JsonPath const& place, ClipNode const& clip);

    void object(Value const& value, Member const& member, JsonPath const& place, Node const& node);
    void time(Value const& value, Member const& member, JsonPath const& place, Node const& node);
    void layerRange(Value const& value, Member const& member, JsonPath const& place, Node const& node);
    void texts(Value const& value, JsonPath const& place);

    void components(Value const& value, Member const& member, JsonPath const& place, Node const& node);
    void component(Value const& value, Member const& member, unsigned index, JsonPath const& place,
                   Node const& node);
    void numbers(Value const& value, Member const& member, JsonPath const& place);
    void points(Value const& value, JsonPath const& place, Node const& node);
    void children(Value const& value, JsonPath const& place, Node const& node);
    void tracks(Value const& value, JsonPath const& place, Node const& node);

    bool isObject(Value const& value, Form form, JsonPath const& place);
    bool isArray(Value const& value, Form form, JsonPath const& place);
    void refused(Value const& value, Form form, JsonPath const& place);
    void lose(LossKind kind, JsonPath const& place, std::string const& what) { m_sink(kind, what, place); }
    void loseMember(LossKind kind, JsonPath const& place, std::string const& fate) {
        lose(kind, place, place.label() + ' ' + fate);
    }

    LossScope m_scope;
    LossSink const& m_sink;
};

// The walk

void LossFinder::document(Value const& document, Node const& root) {
    // A timeline may be wrapped, and a wrapper in a wrapper is stepped into, too; see VisitorHelper::visit.
    JsonPath const place("document");
    JsonPath const inner(place, "timeline");
    JsonPath const innermost(inner, "timeline");
    JsonPath const* const places[] = {&place, &inner, &innermost};

    Value const* value = &document;
    std::size_t depth = 0;
    for (; depth < 2 && value->IsObject(); ++depth) {
        auto const wrapped = value->FindMember("timeline");
        if (wrapped == value->MemberEnd() || !wrapped->value.IsObject()) {
            break;
        }
        members(*value, wrapperTable, places[depth]->asObject("document"), root);
        value = &wrapped->value;
    }
    top(*value, *places[depth], root);
}

void LossFinder::top(Value const& value, JsonPath const& place, Node const& root) {
    if (root.m_children.empty()) {
        lostObject(value, place);
    } else if (schemaOf(value) == "Stack.1") {
        // It is written, but as the tracks of no timeline.
        lose(LossKind::kDoesNotFit, place, "schema \"Stack.1\" makes no timeline");
    } else {
        node(*root.m_children.front(), nullptr, place);
    }
}

void LossFinder::lostObject(Value const& json, JsonPath const& place) {
    if (!json.IsObject()) {
        lose(LossKind::kSchemaNotHandled, place, describe(json, Form::kObject) + " is no object");
    } else if (std::string_view const schema = schemaOf(json); schema.empty()) {
        lose(LossKind::kSchemaNotHandled, place, "an object has no schema");
    } else {
        lose(LossKind::kSchemaNotHandled, place, "schema " + inQuotes(schema) + " is not handled");
    }
}

void LossFinder::node(Node const& node, Node const* parent, JsonPath const& place) {
    NodeSchema const* const schema = findNodeSchema(schemaOf(node.m_json));
    NodeSchema const* const above = parent ? findNodeSchema(schemaOf(parent->m_json)) : nullptr;
    if (!schema) {
        lostObject(node.m_json, place); // a schema that the tables do not know yet
        return;
    }
    bool const isInnerTimeline = above && std::strcmp(schema->name, "Timeline.1") == 0;
    bool const fits = !isInnerTimeline && schema->writesToArray == (above && above->givesArray);
    if (!fits && m_scope == LossScope::kNormalForm) {
        std::string const where = above ? "inside " + inQuotes(above->name) : "at the top";
        lose(LossKind::kDoesNotFit, place, "schema " + inQuotes(schema->name) + " does not fit " + where);
        return;
    }
    members(node.m_json, *schema->table, place.asObject(schema->name), node);
}

void LossFinder::members(Value const& object, Table const& table, JsonPath const& place, Node const& node) {
    std::vector<bool> seen(sizeOf(table));
    for (auto const& each : object.GetObject()) {
        JsonPath const memberPlace(place, nameOf(each));
        auto const found = findMember(table, nameOf(each));
        if (!found) {
            if (!saysNothing(each.value)) {
                loseMember(LossKind::kNotModelled, memberPlace, "is not modelled");
            }
        } else if (seen[found->position]) {
            if (!saysNothing(each.value)) {
                loseMember(LossKind::kRepeated, memberPlace, "is repeated, and the first one counts");
            }
        } else {
            seen[found->position] = true;
            member(each.value, *found->member, memberPlace, node);
        }
    }
}

void LossFinder::member(Value const& value, Member const& member, JsonPath const& place, Node const& node) {
    switch (member.form) {
    case Form::kConstant:
        return constant(value, member, place);
    case Form::kTrackKind:
        return trackKind(value, place);
    case Form::kObject:
        return object(value, member, place, node);
    case Form::kTime:
        return time(value, member, place, node);
    case Form::kLayerRange:
        return layerRange(value, member, place, node);
    case Form::kComponents:
    case Form::kIntegers:
        return components(value, member, place, node);
    case Form::kNumbers:
    case Form::kColour:
        return numbers(value, member, place);
    case Form::kPoints:
        return points(value, place, node);
    case Form::kTexts:
        return texts(value, place);
    case Form::kEntity:
        return entity(value, place, static_cast<ClipNode const&>(node));
    case Form::kClipMetadata:
        if (isObject(value, member.form, place)) {
            members(value, clipMetadataTable(value), place, node);
        }
        return;
    case Form::kChildren:
        return children(value, place, node);
    case Form::kTracks:
        return tracks(value, place, node);
    case Form::kUnused:
        if (member.text && !saysNothing(value)) {
            loseMember(LossKind::kNotWritten, place, member.text);
        }
        return;
    default:
        return scalar(value, member, place, node);
    }
}

// Scalars

void LossFinder::constant(Value const& value, Member const& member, JsonPath const& place) {
    if (saysNothing(value) || (value.IsString() && wholeText(value) == member.text)) {
        return;
    }
    if (value.IsString() && std::strcmp(value.GetString(), member.text) == 0) {
        loseMember(LossKind::kCut, place, "is cut at a zero byte");
        return;
    }
    std::string const what = value.IsString() ? inQuotes(wholeText(value)) : describe(value, member.form);
    loseMember(LossKind::kRewritten, place, what + " is rewritten as " + inQuotes(member.text));
}

void LossFinder::scalar(Value const& value, Member const& member, JsonPath const& place, Node const& node) {
    if (!isTaken(value, member.form)) {
        if (!(value.IsNumber() && value.GetDouble() == member.neutral)) {
            refused(value, member.form, place);
        }
    } else if (member.form == Form::kText) {
        text(value, member, place, node);
    } else if (value.IsString()) {
        rate(value, place);
    }
}

void LossFinder::text(Value const& value, Member const& member, JsonPath const& place, Node const& node) {
    if (member.clipText && static_cast<ClipNode const&>(node).*member.clipText != value.GetString()) {
        if (!saysNothing(value)) {
            loseMember(LossKind::kReplaced, place, "is replaced by another member");
        }
    } else if (isCut(value)) {
        loseMember(LossKind::kCut, place, "is cut at a zero byte");
    }
}

void LossFinder::rate(Value const& value, JsonPath const& place) {
    char* end = nullptr;
    std::strtod(value.GetString(), &end);
    if (end != value.GetString() + value.GetStringLength()) {
        loseMember(LossKind::kCut, place, "is cut behind its number");
    }
}

void LossFinder::trackKind(Value const& value, JsonPath const& place) {
    bool const isKind = value.IsString() && (strcasecmp(value.GetString(), "video") == 0 ||
                                             strcasecmp(value.GetString(), "audio") == 0);
    if (!isKind) {
        if (!saysNothing(value)) {
            std::string const what =
                value.IsString() ? inQuotes(wholeText(value)) : describe(value, Form::kTrackKind);
            loseMember(LossKind::kRefused, place, "is " + what + " where \"Video\" or \"Audio\" is expected");
        }
    } else if (isCut(value)) {
        loseMember(LossKind::kCut, place, "is cut at a zero byte");
    }
}

void LossFinder::entity(Value const& value, JsonPath const& place, ClipNode const& clip) {
    std::string const whole = value.IsString() ? value.GetString() : "";
    std::size_t const slash = whole.empty() ? std::string::npos : whole.find('/', 1);
    if (slash == std::string::npos) {
        refused(value, Form::kEntity, place);
        return;
    }
    std::string const type = whole.substr(1, slash - 1);
    std::string const number = whole.substr(slash + 1);
    bool const hasType = type == clip.m_entityType;
    bool const hasNumber =
        std::clamp<long long>(std::atoll(number.c_str()), INT_MIN, INT_MAX) == clip.m_entityId;
    if (!hasType && !hasNumber) {
        loseMember(LossKind::kReplaced, place, "is replaced by another member");
    } else if (!hasType || !hasNumber || isCut(value) || whole.front() != '/' ||
               (!number.empty() && number != std::to_string(clip.m_entityId))) {
        loseMember(LossKind::kCut, place, "is kept in part");
    }
}

// Objects

void LossFinder::object(Value const& value, Member const& member, JsonPath const& place, Node const& node) {
    if (isObject(value, member.form, place)) {
        members(value, *member.table, place, node);
    }
}

void LossFinder::time(Value const& value, Member const& member, JsonPath const& place, Node const& node) {
    if (!isObject(value, member.form, place)) {
        return;
    }
    if (Parsing::hasSchema(value, "RationalTime.1")) {
        members(value, timeTable, place, node);
    } else if (!saysNothing(value)) {
        loseMember(LossKind::kRefused, place, "is no \"RationalTime.1\"");
    }
}

void LossFinder::layerRange(Value const& value, Member const& member, JsonPath const& place,
                            Node const& node) {
    if (!isObject(value, member.form, place)) {
        return;
    }
    auto const& effect = static_cast<EffectNode const&>(node);
    bool const isLayer = dynamic_cast<EffectNode const*>(node.m_parent) != nullptr;
    bool const isDefined =
        effect.m_layerRange.start_time.isDefined() && effect.m_layerRange.duration.isDefined();
    if (isLayer && isDefined) {
        members(value, timeRangeTable, place, node);
    } else if (!isEmptyRange(value)) {
        loseMember(LossKind::kNotWritten, place,
                   isLayer ? "is not written, for it is not defined in whole"
                           : "is not written, for the effect is no layer of another");
    }
}

void LossFinder::texts(Value const& value, JsonPath const& place) {
    if (!isObject(value, Form::kTexts, place)) {
        return;
    }
    for (auto const& each : value.GetObject()) {
        JsonPath const memberPlace(place, nameOf(each));
        if (!each.value.IsString()) {
            refused(each.value, Form::kText, memberPlace);
        } else if (isCut(each.value) || isCut(each.name)) {
            loseMember(LossKind::kCut, memberPlace, "is cut at a zero byte");
        }
    }
}

// Lists

void LossFinder::components(Value const& value, Member const& member, JsonPath const& place,
                            Node const& node) {
    constexpr unsigned kCount = 2;
    if (!isArray(value, Form::kNumbers, place)) {
        return;
    }
    if (value.Size() != kCount) {
        if (!saysNothing(value)) {
            loseMember(LossKind::kRefused, place, "is " + describe(value, member.form) + ", not of 2");
        }
        return;
    }
    for (unsigned i = 0; i < kCount; ++i) {
        component(value[i], member, i, JsonPath(place, i), node);
    }
}

void LossFinder::component(Value const& value, Member const& member, unsigned index, JsonPath const& place,
                           Node const& node) {
    bool const isPair = member.form == Form::kComponents;
    if (!isTaken(value, isPair ? Form::kTimeValue : Form::kInteger)) {
        if (!(value.IsNumber() && value.GetDouble() == member.neutral)) {
            refused(value, member.form, place);
        }
    } else if (isPair && static_cast<ClipNode const&>(node).*member.clipNumbers[index] != value.GetDouble()) {
        loseMember(LossKind::kReplaced, place, "is replaced by another member");
    }
}

void LossFinder::numbers(Value const& value, Member const& member, JsonPath const& place) {
    if (!isArray(value, member.form, place)) {
        return;
    }
    bool const isColour = member.form == Form::kColour;
    std::vector<double> taken;
    if (!Parsing::toNumbers(value, isColour ? static_cast<double>(FLT_MAX) : DBL_MAX, taken)) {
        if (!saysNothing(value)) {
            loseMember(LossKind::kRefused, place, "is a list with other than numbers in range");
        }
        return;
    }
    if (isColour || taken.empty()) {
        return;
    }
    std::string const count = std::to_string(member.count);
    if (taken.size() < member.count) {
        loseMember(LossKind::kRefused, place, "is " + describe(value, member.form) + ", not of " + count);
        return;
    }
    for (std::size_t i = member.count; i < taken.size(); ++i) {
        loseMember(LossKind::kNotWritten, JsonPath(place, i), "keeps no more than " + count + " numbers");
    }
}

void LossFinder::points(Value const& value, JsonPath const& place, Node const& node) {
    if (!isArray(value, Form::kPoints, place)) {
        return;
    }
    for (rapidjson::SizeType i = 0; i < value.Size(); ++i) {
        JsonPath const elementPlace(place, i);
        if (Parsing::hasSchema(value[i], "Point.1")) {
            members(value[i], pointTable, elementPlace, node);
        } else if (!saysNothing(value[i])) {
            loseMember(LossKind::kRefused, elementPlace, "holds what is no \"Point.1\"");
        }
    }
}

void LossFinder::children(Value const& value, JsonPath const& place, Node const& node) {
    if (!isArray(value, Form::kChildren, place)) {
        return;
    }
    // Elements that became no node left no hole, so the next node is that of the element at its address.
    auto child = node.m_children.begin();
    for (rapidjson::SizeType i = 0; i < value.Size(); ++i) {
        JsonPath const elementPlace(place, i);
        if (child != node.m_children.end() && &(*child)->m_json == &value[i]) {
            this->node(**child, &node, elementPlace);
            ++child;
        } else if (!value[i].IsNull()) {
            lostObject(value[i], elementPlace);
        }
    }
}

void LossFinder::tracks(Value const& value, JsonPath const& place, Node const& node) {
    if (!isObject(value, Form::kTracks, place)) {
        return;
    }
    if (node.m_children.empty()) {
        lostObject(value, place);
    } else {
        this->node(*node.m_children.front(), &node, place);
    }
}

// Refusals

bool LossFinder::isObject(Value const& value, Form form, JsonPath const& place) {
    if (!value.IsObject()) {
        refused(value, form, place);
    }
    return value.IsObject();
}

bool LossFinder::isArray(Value const& value, Form form, JsonPath const& place) {
    if (!value.IsArray()) {
        refused(value, form, place);
    }
    return value.IsArray();
}

void LossFinder::refused(Value const& value, Form form, JsonPath const& place) {
    if (!saysNothing(value)) {
        loseMember(LossKind::kRefused, place,
                   "is " + describe(value, form) + " where " + expectation(form) + " is expected");
    }
}

} // namespace

void findLosses(Value const& document, Node const& root, LossScope scope, LossSink const& sink) {
    LossFinder(scope, sink).document(document, root);
}

} // namespace ORL_0_81::tool
