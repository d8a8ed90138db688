// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "orlJsonPath.h"
#include "orlLossFinder.h"
#include "tools/orl/orlToolSupport.h"

#include "internal/orlJson.h"

#include <gtest/gtest.h>

#include <rapidjson/document.h>

#include <algorithm>
#include <cstdlib>
#include <functional>
#include <random>
#include <set>

// Whether the report tells the truth is asked of the normal form itself, without the tables behind the
// report:
//
// - A member that is told as lost may as well not be there: without it, the normal form is the same.
// - A member that is not told matters: without it, the normal form differs, or it holds all texts and numbers
//   of the member anyway (a schema, a default).
// - When nothing is told, every text and number of the document is in the normal form.

namespace ORL_0_81::tool {

using rapidjson::Document;
using rapidjson::Value;

namespace {

// The way to a member or element by position, for names may be repeated.
using Way = std::vector<rapidjson::SizeType>;

Value& at(Value& top, Way const& way) {
    Value* value = &top;
    for (rapidjson::SizeType const step : way) {
        value = value->IsObject() ? &(value->MemberBegin() + step)->value : &(*value)[step];
    }
    return *value;
}

Value const& at(Value const& top, Way const& way) { return at(const_cast<Value&>(top), way); }

struct Place {
    Way way;
    std::string pointer;
    bool isMember;
    bool isAmbiguous; // a name on the way is used twice, so that the pointer may mean either
};

void collect(Value const& value, Place const& place, std::vector<Place>& places) {
    auto const step = [&](rapidjson::SizeType index, std::string const& name, bool isMember, bool isTwice) {
        Place next{place.way, place.pointer + '/' + name, isMember, place.isAmbiguous || isTwice};
        next.way.push_back(index);
        places.push_back(next);
        return next;
    };
    if (value.IsObject()) {
        std::multiset<std::string> names;
        for (auto const& member : value.GetObject()) {
            names.insert(member.name.GetString());
        }
        rapidjson::SizeType index = 0;
        for (auto const& member : value.GetObject()) {
            std::string const name = member.name.GetString();
            collect(member.value, step(index++, name, true, names.count(name) > 1), places);
        }
    } else if (value.IsArray()) {
        for (rapidjson::SizeType i = 0; i < value.Size(); ++i) {
            collect(value[i], step(i, std::to_string(i), false, false), places);
        }
    }
}

std::vector<Place> placesOf(Value const& document) {
    std::vector<Place> places;
    collect(document, Place{{}, "", false, false}, places);
    return places;
}

// The texts and numbers of a value.
struct Leaves {
    std::set<std::string> texts;
    std::vector<double> numbers;

    void add(Value const& value) {
        if (value.IsObject()) {
            for (auto const& member : value.GetObject()) {
                add(member.value);
            }
        } else if (value.IsArray()) {
            for (Value const& element : value.GetArray()) {
                add(element);
            }
        } else if (value.IsString()) {
            texts.insert(value.GetString());
        } else if (value.IsNumber()) {
            numbers.push_back(value.GetDouble());
        }
    }

    bool hasNumber(double number) const {
        return std::any_of(numbers.begin(), numbers.end(), [number](double each) {
            return each == number || each == static_cast<double>(static_cast<float>(number));
        });
    }

    // A text may be there as a number (a rate), as two parts (an entity), or in other letters (a kind).
    bool hasText(std::string const& text) const {
        if (text.empty() || texts.count(text) > 0) {
            return true;
        }
        char* end = nullptr;
        double const number = std::strtod(text.c_str(), &end);
        if (*end == '\0' && hasNumber(number)) {
            return true;
        }
        if (std::size_t const slash = text.find('/', 1); text[0] == '/' && slash != std::string::npos) {
            return hasText(text.substr(1, slash - 1)) && hasText(text.substr(slash + 1));
        }
        return text == "audio" ? texts.count("Audio") > 0 : text == "video" && texts.count("Video") > 0;
    }

    bool has(Leaves const& others) const {
        return std::all_of(others.texts.begin(), others.texts.end(),
                           [this](std::string const& text) { return hasText(text); }) &&
               std::all_of(others.numbers.begin(), others.numbers.end(), [this](double number) {
                   return number == 0.0 || hasNumber(number); // 0 is what an undefined rate is
               });
    }
};

Leaves leavesOf(Value const& value) {
    Leaves leaves;
    leaves.add(value);
    return leaves;
}

Leaves leavesOf(std::string const& text) {
    Document document;
    document.Parse(text.c_str());
    return leavesOf(document);
}

struct Told {
    std::set<std::string> whole; // pointers of what is lost in whole
    std::set<std::string> parts; // of what is kept in part
    bool isNothing() const { return whole.empty() && parts.empty(); }

    // Whether the place or one above it is told as lost in whole.
    bool covers(std::string const& pointer) const {
        for (std::size_t end = pointer.size(); end != std::string::npos;
             end = end == 0 ? std::string::npos : pointer.rfind('/', end - 1)) {
            if (whole.count(pointer.substr(0, end)) > 0) {
                return true;
            }
        }
        return false;
    }

    // Whether something at the place or below it is told.
    bool reaches(std::string const& pointer) const {
        auto const isBelow = [&pointer](std::string const& told) {
            return told == pointer || told.compare(0, pointer.size() + 1, pointer + '/') == 0;
        };
        return std::any_of(whole.begin(), whole.end(), isBelow) ||
               std::any_of(parts.begin(), parts.end(), isBelow);
    }
};

Told tellOf(TimelineDocument const& document) {
    Told told;
    findLosses(document.json(), document.root(), LossScope::kNormalForm,
               [&told](LossKind kind, std::string const&, JsonPath const& place) {
                   (kind == LossKind::kCut ? told.parts : told.whole).insert(place.toPointer());
               });
    return told;
}

std::string normalFormOf(Value const& json) {
    return TimelineDocument("text", jsonToText(json)).normalForm();
}

// One document with its normal form and what is told of it.
class Judged {
public:
    explicit Judged(Document const& json)
        : m_json(json),
          m_text(jsonToText(json)),
          m_document("text", m_text),
          m_normalForm(m_document.normalForm()),
          m_kept(leavesOf(m_normalForm)),
          m_told(tellOf(m_document)) {}

    void expectTruth() const {
        if (m_told.isNothing()) {
            EXPECT_TRUE(m_kept.has(leavesOf(m_json))) << m_text;
        }
        for (Place const& place : placesOf(m_json)) {
            expectTruthAt(place);
        }
    }

    void expectTruthAt(Place const& place) const {
        if (!place.isMember || place.isAmbiguous) {
            return;
        }
        Document without;
        without.CopyFrom(m_json, without.GetAllocator());
        Value& object = at(without, Way(place.way.begin(), place.way.end() - 1));
        object.EraseMember(object.MemberBegin() + place.way.back());
        expectTruthAt(place, normalFormOf(without));
    }

    void expectTruthAt(Place const& place, std::string const& normalFormWithout) const {
        bool const matters = normalFormWithout != m_normalForm;
        if (m_told.covers(place.pointer)) {
            EXPECT_FALSE(matters) << place.pointer << " is told as lost, but matters in\n" << m_text;
        } else if (!matters && !m_told.reaches(place.pointer)) {
            EXPECT_TRUE(m_kept.has(leavesOf(at(m_json, place.way))))
                << place.pointer << " is lost, but not told, in\n"
                << m_text;
        }
    }

private:
    Document const& m_json;
    std::string m_text;
    TimelineDocument m_document;
    std::string m_normalForm;
    Leaves m_kept;
    Told m_told;
};

// Damage

class Damage {
public:
    explicit Damage(unsigned seed) : m_random(seed) {}

    std::size_t below(std::size_t count) { return m_random() % count; }

    void apply(Document& document) {
        std::vector<Place> const places = placesOf(document);
        Place const& place = places[below(places.size())];
        Value& value = at(document, place.way);
        auto& allocator = document.GetAllocator();
        switch (below(8)) {
        case 0:
            remove(document, place);
            break;
        case 1:
            value = anything(allocator);
            break;
        case 2:
            addMember(value, allocator);
            break;
        case 3:
            addElement(value, allocator);
            break;
        case 4:
            repeatMember(value, allocator);
            break;
        case 5:
            if (value.IsNumber()) { // the other form of a number
                value.IsDouble() ? value.SetInt(static_cast<int>(m_random() % 1000) + 2000)
                                 : value.SetDouble(static_cast<double>(m_random() % 1000) + 0.5);
            }
            break;
        case 6:
            if (value.IsString() && place.pointer != "/OTIO_SCHEMA") {
                value.SetString(pick({"Clip.1", "Stack.1", "Track.1", "Gap.1", "CDL.1", "Text.1", "Clip.2",
                                      "x", "Timeline.1", "48", "/Shot/77", "RationalTime.1"}),
                                allocator);
            }
            break;
        default:
            moveIn(document, value);
            break;
        }
    }

private:
    Value::StringRefType pick(std::vector<char const*> const& texts) {
        return rapidjson::StringRef(texts[below(texts.size())]);
    }

    Value anything(Document::AllocatorType& allocator) {
        Value value;
        switch (below(9)) {
        case 0:
            return Value(static_cast<int>(m_random() % 5000));
        case 1:
            return Value(static_cast<double>(m_random() % 5000) + 0.25);
        case 2:
            return Value("a stray text");
        case 3:
            return Value(true);
        case 4:
            return Value(rapidjson::kObjectType);
        case 5:
            value.SetArray();
            for (std::size_t i = below(5); i > 0; --i) {
                value.PushBack(static_cast<double>(m_random() % 5000) + 0.125, allocator);
            }
            return value;
        case 6:
            value.SetObject();
            value.AddMember("OTIO_SCHEMA", pick({"RationalTime.1", "Point.1", "Marker.2", "Clip.1"}),
                            allocator);
            return value;
        case 7:
            return Value(std::int64_t{3000000000});
        default:
            return Value();
        }
    }

    void remove(Document& document, Place const& place) {
        Value& parent = at(document, Way(place.way.begin(), place.way.end() - 1));
        if (place.isMember) {
            parent.EraseMember(parent.MemberBegin() + place.way.back());
        } else {
            parent.Erase(parent.Begin() + place.way.back());
        }
    }

    void addMember(Value& value, Document::AllocatorType& allocator) {
        if (value.IsObject()) {
            Value name(
                pick({"markers", "name", "metadata", "orl", "tr", "id", "effects", "layers", "bounds",
                      "layer_range", "source_range", "children", "rate", "version", "entity", "paths"}));
            Value member = anything(allocator);
            value.AddMember(name, member, allocator);
        }
    }

    void addElement(Value& value, Document::AllocatorType& allocator) {
        if (value.IsArray()) {
            Value element = anything(allocator);
            value.PushBack(element, allocator);
        }
    }

    void repeatMember(Value& value, Document::AllocatorType& allocator) {
        if (value.IsObject() && !value.ObjectEmpty()) {
            auto const member = value.MemberBegin() + static_cast<std::ptrdiff_t>(below(value.MemberCount()));
            Value name(member->name, allocator);
            Value other = anything(allocator);
            value.AddMember(name, other, allocator);
        }
    }

    // A copy of one place of the document in another: known things where they may not belong.
    void moveIn(Document& document, Value& target) {
        std::vector<Place> const places = placesOf(document);
        Place const& source = places[below(places.size())];
        Value copy(at(document, source.way), document.GetAllocator());
        if (target.IsArray()) {
            target.PushBack(copy, document.GetAllocator());
        } else if (target.IsObject() && source.isMember) {
            std::string const name = source.pointer.substr(source.pointer.rfind('/') + 1);
            target.AddMember(Value(name.c_str(), document.GetAllocator()), copy, document.GetAllocator());
        }
    }

    std::mt19937 m_random;
};

Document everything() {
    Document document;
    document.Parse(readFile(ORL_TEST_DATA "/orl/everything.otio").c_str());
    EXPECT_FALSE(document.HasParseError());
    return document;
}

// A value of each form that JSON has, with texts and numbers that stand nowhere else.
constexpr char const* forms[] = {"4711",
                                 "4711.25",
                                 "2147484711",
                                 "-4711",
                                 "1e300",
                                 "\"foreign\"",
                                 "\"4711.75\"",
                                 "\"/Sort/4711\"",
                                 "[4711.5]",
                                 "[4711, 4712.5]",
                                 "[4711.5, 4712, 4713, 4714]",
                                 "[4711, \"4712\"]",
                                 R"({"some": "text"})",
                                 R"({"OTIO_SCHEMA": "Clip.1", "name": "foreign"})",
                                 R"([{"OTIO_SCHEMA": "Point.1", "y": 4711, "x": 4712.5}])",
                                 R"([{"OTIO_SCHEMA": "Marker.2", "name": "foreign"}])"};

Value parsed(char const* text, Document::AllocatorType& allocator) {
    Document document;
    document.Parse(text);
    return Value(document, allocator);
}

std::set<std::string> namesIn(Value const& document) {
    std::set<std::string> names{"markers", "enabled", "clip_uid", "timeline"};
    for (Place const& place : placesOf(document)) {
        if (place.isMember) {
            names.insert(place.pointer.substr(place.pointer.rfind('/') + 1));
        }
    }
    return names;
}

// Makes a copy with one member more in the object at `place`.
Place addTo(Document const& document, Place const& place, std::string const& name, char const* form,
            Document& changed) {
    changed.CopyFrom(document, changed.GetAllocator());
    auto& allocator = changed.GetAllocator();
    Value& target = at(changed, place.way);
    Place added{place.way, place.pointer + '/' + name, true, false};
    added.way.push_back(target.MemberCount());
    target.AddMember(Value(name.c_str(), allocator), parsed(form, allocator), allocator);
    return added;
}

} // namespace

TEST(LossProperty, TheReportIsTrueForEveryMemberInEveryForm) {
    Document const document = everything();
    for (Place const& place : placesOf(document)) {
        for (char const* form : forms) {
            if (place.pointer == "/OTIO_SCHEMA" || !place.isMember) {
                continue; // without a timeline at the top all is lost at once
            }
            Document changed;
            changed.CopyFrom(document, changed.GetAllocator());
            at(changed, place.way) = parsed(form, changed.GetAllocator());
            Judged(changed).expectTruthAt(place);
        }
    }
}

TEST(LossProperty, TheReportIsTrueForEveryMemberInEveryObject) {
    Document const document = everything();
    std::string const normalForm = normalFormOf(document);
    std::set<std::string> const names = namesIn(document);
    std::size_t next = 0;
    for (Place const& place : placesOf(document)) {
        Value const& object = at(document, place.way);
        if (!object.IsObject()) {
            continue;
        }
        for (std::string const& name : names) {
            if (object.HasMember(name.c_str())) {
                continue;
            }
            for (char const* form : {"\"foreign\"", "4711.25", R"({"some": "text"})", forms[next]}) {
                Document changed;
                Place const added = addTo(document, place, name, form, changed);
                Judged(changed).expectTruthAt(added, normalForm);
            }
            next = (next + 1) % std::size(forms);
        }
    }
}

TEST(LossProperty, EveryMemberOfACompleteDocumentMatters) {
    Document document = everything();
    Judged(document).expectTruth();
}

TEST(LossProperty, TheReportOfDamagedDocumentsIsTrue) {
    for (unsigned seed = 0; seed < 100 && !testing::Test::HasFailure(); ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        Document document = everything();
        Damage damage(seed);
        for (std::size_t changes = 1 + damage.below(6); changes > 0; --changes) {
            damage.apply(document);
        }
        Judged(document).expectTruth();
    }
}

TEST(LossProperty, TheNormalFormOfDamagedDocumentsIsStableAndHasNoLosses) {
    for (unsigned seed = 1000; seed < 1500 && !testing::Test::HasFailure(); ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        Document document = everything();
        Damage damage(seed);
        for (std::size_t changes = 1 + damage.below(20); changes > 0; --changes) {
            damage.apply(document);
        }
        std::string const normalForm = normalFormOf(document);
        TimelineDocument const again("text", normalForm);
        EXPECT_EQ(again.normalForm(), normalForm);
        if (normalForm != "{}") {
            EXPECT_TRUE(tellOf(again).isNothing()) << normalForm;
        }
    }
}

} // namespace ORL_0_81::tool
