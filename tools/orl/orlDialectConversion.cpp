// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "orlDialectConversion.h"

#include "internal/orlJson.h"
#include "orlImageSequence.h"
#include "orlJsonForms.h"
#include "orlJsonPath.h"
#include "orlJsonScanner.h"
#include "orlLossReport.h"
#include "orlLossTables.h"
#include "orlPrintable.h"

#include <algorithm>
#include <array>
#include <optional>
#include <utility>
#include <vector>

namespace ORL_0_81::tool {

namespace {

// What writers call the only reference of a clip.
constexpr char const kDefaultKey[] = "DEFAULT_MEDIA";

enum MemberKind { kSchema, kTimeline, kTracks, kChildren, kReferences, kActiveKey, kReference, kOther };

// In the order of the kinds.
constexpr std::array<char const*, kOther> kNames = {
    "OTIO_SCHEMA",    "timeline", "tracks", "children", "media_references", "active_media_reference_key",
    "media_reference"};

struct ObjectMember {
    MemberKind kind;
    bool isFirst; // of its name: the reader sees no other
    TextSpan name;
    TextSpan value;
};

using Members = std::vector<ObjectMember>;

MemberKind kindOf(std::string const& name) {
    return static_cast<MemberKind>(std::find(kNames.begin(), kNames.end(), name) - kNames.begin());
}

ObjectMember const* firstOf(Members const& members, MemberKind kind) {
    auto const found = std::find_if(members.begin(), members.end(),
                                    [kind](ObjectMember const& member) { return member.kind == kind; });
    return found == members.end() ? nullptr : &*found;
}

// Goes once down the places where clips can stand, and notes what is to be written otherwise. Its recursion
// is as deep as the document, which the limit of nesting at parsing bounds.
class Conversion {
public:
    Conversion(std::string const& text, LossReport& losses)
        : m_text(text), m_scanner(m_text), m_losses(losses) {}

    std::string run() {
        std::size_t const begin = m_scanner.begin();
        if (m_scanner.isObject(begin)) {
            object(begin, JsonPath("document"), kMostWrappers);
        }
        return edited();
    }

private:
    // The reader steps into a wrapped timeline, and into a wrapper within one.
    static constexpr unsigned kMostWrappers = 2;

    struct Edit {
        TextSpan span;
        std::string text;
    };

    std::size_t object(std::size_t begin, JsonPath const& place, unsigned wrappers);
    std::size_t member(MemberKind kind, std::size_t value, JsonPath const& place, unsigned wrappers);
    void byVersion(Members const& members, JsonPath const& place);
    void newerClip(Members const& members, JsonPath const& clip);
    std::string activeKey(ObjectMember const* member, JsonPath const& place);
    std::optional<TextSpan> activeReference(ObjectMember const* member, std::string const& key,
                                            JsonPath const& place);
    void carry(TextSpan const& target, TextSpan const& reference);
    void remove(Members const& members, std::vector<bool> const& isRemoved);
    std::string edited();

    std::string rawText(TextSpan const& span) const { return std::string(m_scanner.raw(span)); }
    void replace(TextSpan const& span, std::string text) { m_edits.push_back({span, std::move(text)}); }
    void lose(LossKind kind, JsonPath const& place, std::string const& fate) {
        m_losses.add(kind, place.label() + ' ' + fate, place);
    }
    void loseValue(TextSpan const& value, LossKind kind, JsonPath const& place, std::string const& fate) {
        rapidjson::Document document;
        parseJson(rawText(value).c_str(), document);
        if (!saysNothing(document)) {
            lose(kind, place, fate);
        }
    }
    void refuse(TextSpan const& value, Form form, JsonPath const& place) {
        rapidjson::Document document;
        parseJson(rawText(value).c_str(), document);
        if (!saysNothing(document)) {
            lose(LossKind::kRefused, place,
                 "is " + describe(document, form) + " where " + expectation(form) + " is expected");
        }
    }

    std::string_view m_text;
    JsonScanner m_scanner;
    LossReport& m_losses;
    std::vector<Edit> m_edits;
};

// The way down

std::size_t Conversion::object(std::size_t begin, JsonPath const& place, unsigned wrappers) {
    Members members;
    std::array<bool, kOther + 1> seen{};
    std::size_t const end = m_scanner.forEachMember(begin, [&](TextSpan const& name, std::size_t value) {
        MemberKind const kind = kindOf(m_scanner.decoded(name));
        bool const isFirst = !std::exchange(seen.at(kind), true);
        std::size_t const valueEnd =
            isFirst && kind != kOther ? member(kind, value, place, wrappers) : m_scanner.endOf(value);
        members.push_back({kind, isFirst, name, {value, valueEnd}});
        return valueEnd;
    });
    byVersion(members, place);
    return end;
}

std::size_t Conversion::member(MemberKind kind, std::size_t value, JsonPath const& place, unsigned wrappers) {
    JsonPath const memberPlace(place, kNames.at(kind));
    bool const isWrapped = kind == kTimeline && wrappers > 0;
    if ((isWrapped || kind == kTracks) && m_scanner.isObject(value)) {
        return object(value, memberPlace, isWrapped ? wrappers - 1 : 0);
    }
    if (kind == kChildren && m_scanner.isArray(value)) {
        std::size_t index = 0;
        return m_scanner.forEachElement(value, [&](std::size_t child) {
            JsonPath const childPlace(memberPlace, index++);
            return m_scanner.isObject(child) ? object(child, childPlace, 0) : m_scanner.endOf(child);
        });
    }
    return m_scanner.endOf(value);
}

// One object

void Conversion::byVersion(Members const& members, JsonPath const& place) {
    ObjectMember const* const schema = firstOf(members, kSchema);
    if (!schema || !m_scanner.isString(schema->value.begin)) {
        return;
    }
    std::string name = m_scanner.decoded(schema->value);
    name.erase(std::min(name.find('\0'), name.size())); // where the reader stops, too
    if (name == "Clip.1") {
        if (ObjectMember const* const reference = firstOf(members, kReference)) {
            carry(reference->value, reference->value);
        }
    } else if (name == "Clip.2") {
        replace(schema->value, "\"Clip.1\"");
        newerClip(members, place.asObject(name));
    } else if (std::size_t const point = name.find('.'); point != std::string::npos) {
        std::string const readable = name.substr(0, point) + ".1";
        if (name != readable && findNodeSchema(readable)) {
            m_losses.add(LossKind::kSchemaNotHandled, "schema " + inQuotes(name) + " is not handled", place);
        }
    }
}

void Conversion::newerClip(Members const& members, JsonPath const& clip) {
    ObjectMember const* const keyMember = firstOf(members, kActiveKey);
    ObjectMember const* const references = firstOf(members, kReferences);
    std::string const key = activeKey(keyMember, clip);
    std::optional<TextSpan> const active = activeReference(references, key, clip);
    JsonPath const keyPlace(clip, kNames.at(kActiveKey));
    if (keyMember && !active) {
        lose(LossKind::kNotWritten, keyPlace, inQuotes(key) + " names no reference");
    } else if (key != kDefaultKey) {
        lose(LossKind::kNotWritten, keyPlace,
             inQuotes(key) + " is not carried, for the reference has no name");
    }

    std::vector<bool> isRemoved(members.size());
    for (std::size_t i = 0; i < members.size(); ++i) {
        ObjectMember const& member = members[i];
        if (member.kind < kReferences || member.kind == kOther || (member.kind == kReference && !active)) {
            continue;
        }
        isRemoved[i] = !active || &member != references;
        JsonPath const place(clip, kNames.at(member.kind));
        if (member.kind == kReference) {
            loseValue(member.value, LossKind::kReplaced, place, "is replaced by the active reference");
        } else if (!member.isFirst) {
            loseValue(member.value, LossKind::kRepeated, place, "is repeated, and the first one counts");
        }
    }
    if (active) {
        replace(references->name, "\"media_reference\"");
        carry(references->value, *active);
    }
    remove(members, isRemoved);
}

std::string Conversion::activeKey(ObjectMember const* member, JsonPath const& place) {
    if (!member) {
        return kDefaultKey;
    }
    if (!m_scanner.isString(member->value.begin)) {
        refuse(member->value, Form::kText, JsonPath(place, kNames.at(kActiveKey)));
        return kDefaultKey;
    }
    return m_scanner.decoded(member->value);
}

std::optional<TextSpan> Conversion::activeReference(ObjectMember const* member, std::string const& key,
                                                    JsonPath const& place) {
    std::optional<TextSpan> active;
    if (!member) {
        return active;
    }
    JsonPath const memberPlace(place, kNames.at(kReferences));
    if (!m_scanner.isObject(member->value.begin)) {
        refuse(member->value, Form::kObject, memberPlace);
        return active;
    }
    m_scanner.forEachMember(member->value.begin, [&](TextSpan const& name, std::size_t value) {
        TextSpan const reference{value, m_scanner.endOf(value)};
        std::string const text = m_scanner.decoded(name);
        JsonPath const referencePlace(memberPlace, text);
        if (text != key) {
            loseValue(reference, LossKind::kNotWritten, referencePlace,
                      "is not carried, for it is not the active reference");
        } else if (active) {
            loseValue(reference, LossKind::kRepeated, referencePlace,
                      "is repeated, and the first one counts");
        } else {
            active = reference;
        }
        return reference.end;
    });
    return active;
}

// Writing

void Conversion::carry(TextSpan const& target, TextSpan const& reference) {
    std::string text = withSequenceUrl(rawText(reference));
    if (text != m_scanner.raw(target)) {
        replace(target, std::move(text));
    }
}

// With each member goes the comma before it, or the one behind it when no member before it stays.
void Conversion::remove(Members const& members, std::vector<bool> const& isRemoved) {
    bool isAnyKept = false;
    for (std::size_t i = 0; i < members.size(); ++i) {
        if (!isRemoved[i]) {
            isAnyKept = true;
        } else if (isAnyKept) {
            replace({members[i - 1].value.end, members[i].value.end}, "");
        } else {
            bool const isLast = i + 1 == members.size();
            replace({members[i].name.begin, isLast ? members[i].value.end : members[i + 1].name.begin}, "");
        }
    }
}

std::string Conversion::edited() {
    std::sort(m_edits.begin(), m_edits.end(),
              [](Edit const& one, Edit const& other) { return one.span.begin < other.span.begin; });
    std::string result;
    std::size_t position = 0;
    for (Edit const& edit : m_edits) {
        result += m_text.substr(position, edit.span.begin - position);
        result += edit.text;
        position = edit.span.end;
    }
    result += m_text.substr(position);
    return result;
}

} // namespace

std::string toDialect(std::string const& text, LossReport& losses) { return Conversion(text, losses).run(); }

} // namespace ORL_0_81::tool
