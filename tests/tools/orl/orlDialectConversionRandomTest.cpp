// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "orlDialectConversion.h"
#include "tools/orl/orlToolSupport.h"

#include "internal/orlJson.h"

#include <gtest/gtest.h>

#include <rapidjson/document.h>
#include <rapidjson/prettywriter.h>

#include <algorithm>
#include <random>

// The conversion edits a text. Here documents of all sorts are converted by a plain rewriting of their values
// as well, and the two must agree.

namespace ORL_0_81::tool {

namespace {

using rapidjson::Document;
using rapidjson::Value;

class Generator {
public:
    explicit Generator(unsigned seed) : m_random(seed) {}

    Document document() {
        Document document;
        m_allocator = &document.GetAllocator();
        Value value = object(6);
        static_cast<Value&>(document).Swap(value);
        return document;
    }

    // The same document, in one of several ways to write it.
    std::string written(Value const& value) {
        rapidjson::StringBuffer buffer;
        if (below(2) == 0) {
            rapidjson::Writer<rapidjson::StringBuffer> writer(buffer);
            value.Accept(writer);
        } else {
            // All that is not ASCII, and with it much of the names here, as escapes.
            rapidjson::PrettyWriter<rapidjson::StringBuffer, rapidjson::UTF8<>, rapidjson::ASCII<>> writer(
                buffer);
            writer.SetIndent(below(2) == 0 ? ' ' : '\t', static_cast<unsigned>(below(5)));
            value.Accept(writer);
        }
        return std::string(buffer.GetString(), buffer.GetSize());
    }

private:
    std::size_t below(std::size_t limit) { return m_random() % limit; }

    Value text(std::initializer_list<char const*> texts) {
        return Value(rapidjson::StringRef(*(texts.begin() + below(texts.size()))));
    }

    Value object(int depth) {
        Value object(rapidjson::kObjectType);
        for (std::size_t count = below(7); count > 0; --count) {
            Value name = text({"OTIO_SCHEMA", "OTIO_SCHEMA", "timeline", "tracks", "children", "children",
                               "media_references", "media_references", "active_media_reference_key",
                               "media_reference", "name", "gr\xc3\xbc\xc3\x9f\x65", "\"}", ""});
            Value member = this->member(name.GetString(), depth);
            object.AddMember(name, member, *m_allocator);
        }
        return object;
    }

    Value member(std::string const& name, int depth) {
        if (below(6) == 0) {
            return anything(depth);
        }
        if (name == "OTIO_SCHEMA") {
            return text({"Clip.2", "Clip.2", "Clip.2", "Clip.1", "Stack.1", "Clip.3"});
        }
        if (name == "active_media_reference_key") {
            return text({"DEFAULT_MEDIA", "a", "\xc3\xa4"});
        }
        if (name == "media_references") {
            Value references(rapidjson::kObjectType);
            for (std::size_t count = below(4); count > 0; --count) {
                Value key = text({"DEFAULT_MEDIA", "a", "\xc3\xa4"});
                Value reference = anything(depth);
                references.AddMember(key, reference, *m_allocator);
            }
            return references;
        }
        if (name == "children") {
            return list(depth);
        }
        return anything(depth);
    }

    Value list(int depth) {
        Value list(rapidjson::kArrayType);
        for (std::size_t count = depth > 0 ? below(4) : 0; count > 0; --count) {
            Value element = below(5) == 0 ? anything(depth - 1) : object(depth - 1);
            list.PushBack(element, *m_allocator);
        }
        return list;
    }

    Value anything(int depth) {
        switch (below(6)) {
        case 0:
            return Value();
        case 1:
            return Value(0.1);
        case 2:
            return text({"", "[{", "a\"b\\", "\xe2\x82\xac"});
        case 3:
            return list(depth);
        default:
            return depth > 0 ? object(depth - 1) : Value(true);
        }
    }

    std::mt19937 m_random;
    Document::AllocatorType* m_allocator = nullptr;
};

bool holds(Value const* value, char const* text) { return value && value->IsString() && *value == text; }

// The rules once more, on values.
void rewriteClip(Value& clip, Document::AllocatorType& allocator) {
    Value const* const key = findMember(clip, "active_media_reference_key");
    std::string const name = key && key->IsString() ? key->GetString() : "DEFAULT_MEDIA";
    Value const* const references = findMember(clip, "media_references");
    Value const* const found = references ? findMember(*references, name.c_str()) : nullptr;
    bool const isFound = found != nullptr;
    Value active;
    if (found) {
        active.CopyFrom(*found, allocator);
    }

    Value result(rapidjson::kObjectType);
    bool hasSchema = false;
    for (auto& each : clip.GetObject()) {
        if (each.name == "active_media_reference_key" || (each.name == "media_reference" && isFound)) {
            continue;
        }
        if (each.name == "media_references") {
            if (isFound && !active.IsFalse()) {
                result.AddMember("media_reference", active, allocator);
                active = Value(false); // no reference of a generated document is; the others are repeated
            }
            continue;
        }
        if (each.name == "OTIO_SCHEMA" && !hasSchema) {
            hasSchema = true;
            each.value = "Clip.1";
        }
        result.AddMember(each.name, each.value, allocator);
    }
    clip = result;
}

void rewrite(Value& value, Document::AllocatorType& allocator, int wrappers) {
    if (!value.IsObject()) {
        return;
    }
    auto const go = [&](char const* name, auto step) {
        auto const member = value.FindMember(name);
        if (member != value.MemberEnd()) {
            step(member->value);
        }
    };
    if (wrappers > 0) {
        go("timeline", [&](Value& inner) { rewrite(inner, allocator, wrappers - 1); });
    }
    go("tracks", [&](Value& tracks) { rewrite(tracks, allocator, 0); });
    go("children", [&](Value& children) {
        if (children.IsArray()) {
            for (Value& child : children.GetArray()) {
                rewrite(child, allocator, 0);
            }
        }
    });
    if (holds(findMember(value, "OTIO_SCHEMA"), "Clip.2")) {
        rewriteClip(value, allocator);
    }
}

} // namespace

TEST(DialectConversion, AgreesWithARewritingOfTheValuesOnAnyDocument) {
    std::size_t changed = 0;
    for (unsigned seed = 0; seed < 5000 && !testing::Test::HasFailure(); ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        Generator generator(seed);
        Document document = generator.document();
        std::string const text = generator.written(document);
        LossReport losses;
        std::string const converted = toDialect(text, losses);

        Document result;
        ASSERT_FALSE(parseJson(converted.c_str(), result).IsError()) << text << '\n' << converted;
        std::string const before = jsonToText(document);
        rewrite(document, document.GetAllocator(), 2);
        ASSERT_EQ(jsonToText(result), jsonToText(document)) << text;
        if (before == jsonToText(document)) {
            ASSERT_EQ(converted, text);
        } else {
            ++changed;
        }
        LossReport none;
        ASSERT_EQ(toDialect(converted, none), converted);
    }
    EXPECT_GT(changed, 500U) << "too few of them hold anything to convert";
}

} // namespace ORL_0_81::tool
