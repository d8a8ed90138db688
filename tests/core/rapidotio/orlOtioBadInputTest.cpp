// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "rapidotio/orlOtioVisitorHelper.h"

#include "support/Files.h"
#include "support/Json.h"
#include "support/TimelineText.h"
#include "support/Tree.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <string>
#include <vector>

// What hostile and broken texts do: they are refused, or they give a document that is its own normal form.

namespace {

using namespace orlTest;
using rapidjson::Value;

char const* const kDocuments[] = {"timeline/review.otio", "timeline/trackingService.otio",
                                  "timeline/oldMetadata.otio", "timeline/ownMetadata.otio"};

TEST(OtioBadInput, ADocumentThatIsCutAnywhereIsRefused) {
    std::string const text = textOf(parsed(dataFile("timeline/review.otio")));
    ASSERT_TRUE(accepted(text));
    for (std::size_t length = 0; length < text.size(); ++length) {
        ASSERT_FALSE(accepted(text.substr(0, length))) << length;
    }
}

TEST(OtioBadInput, ADocumentThatLosesItsBeginningIsRefused) {
    std::string const text = textOf(parsed(dataFile("timeline/oldMetadata.otio")));
    for (std::size_t start = 1; start < text.size(); ++start) {
        ASSERT_FALSE(accepted(text.substr(start))) << start;
    }
}

/// All values of a document, the root first.
void collect(Value& value, std::vector<Value*>& values) {
    values.push_back(&value);
    if (value.IsObject()) {
        for (auto& member : value.GetObject()) {
            collect(member.value, values);
        }
    } else if (value.IsArray()) {
        for (Value& element : value.GetArray()) {
            collect(element, values);
        }
    }
}

/// Puts each replacement in turn at each place of a document and hands the text to `check`.
template <class Check>
void forEachReplacement(std::string const& name, std::vector<std::string> const& replacements, bool strings,
                        Check check) {
    rapidjson::Document document = parsed(dataFile(name));
    std::vector<Value*> values;
    collect(document, values);
    for (std::size_t place = 0; place < values.size(); ++place) {
        Value& value = *values[place];
        if (strings && !value.IsString()) {
            continue;
        }
        for (std::string const& replacement : replacements) {
            rapidjson::Document other = parsed(replacement);
            Value& replacing = other;
            value.Swap(replacing);
            std::string const text = textOf(document);
            value.Swap(replacing);
            SCOPED_TRACE(name + ", place " + std::to_string(place) + ", " + replacement);
            check(text);
        }
    }
}

TEST(OtioBadInput, AValueOfAnyOtherTypeAtAnyPlaceIsReadAround) {
    for (char const* const name : kDocuments) {
        forEachReplacement(name,
                           {"null", "true", "false", "1", "-1", "1.5", "\"x\"", "[]", "{}", "[1,2]", "[{}]"},
                           false, [](std::string const& text) {
                               std::string const once = normalized(text);
                               EXPECT_EQ(normalized(once), once);
                               EXPECT_EQ(Tree(text).text(), once);
                           });
    }
}

TEST(OtioBadInput, NumbersAtTheEdgesOfTheirTypesAreReadAround) {
    forEachReplacement("timeline/review.otio",
                       {"0", "-0.0", "2147483647", "2147483648", "-2147483648", "4294967296", "1e308",
                        "-1e39", "5e-324", "\"1e999\"", "\"nan\""},
                       false, [](std::string const& text) {
                           std::string const once = normalized(text);
                           EXPECT_EQ(normalized(once), once);
                       });
}

TEST(OtioBadInput, AnInfiniteNumberAtAnyPlaceCutsNoText) {
    for (char const* const name : {"timeline/review.otio", "timeline/ownMetadata.otio"}) {
        // Such a number is no JSON that a writer would make, so it is set into the text.
        forEachReplacement(name, {"987654321"}, false, [](std::string const& marked) {
            std::string text = marked;
            std::string const mark = "987654321";
            text.replace(text.find(mark), mark.size(), "10.0e308");
            std::string const once = normalized(text);
            EXPECT_EQ(normalized(once), once);
        });
    }
}

TEST(OtioBadInput, AnySchemaAtAnyPlaceIsReadAround) {
    std::vector<std::string> schemas;
    for (char const* const schema : {"Timeline.1", "Stack.1", "Track.1", "Clip.1", "Gap.1", "Comp.1",
                                     "AngularMask.1", "CDL.1", "Paint.1", "Text.1", "Annotation.1",
                                     "RationalTime.1", "TimeRange.1", "Point.1", "Clip.2", "Clip", ""}) {
        schemas.push_back("\"" + std::string(schema) + "\"");
    }
    forEachReplacement("timeline/review.otio", schemas, true, [](std::string const& text) {
        // A stack for a document writes tracks without a timeline, which the next reading does not know.
        std::string const twice = normalized(normalized(text));
        EXPECT_EQ(normalized(twice), twice);
    });
}

TEST(OtioBadInput, AMemberThatIsMissingAnywhereIsReadAround) {
    rapidjson::Document document = parsed(dataFile("timeline/review.otio"));
    std::vector<Value*> values;
    collect(document, values);
    std::size_t removed = 0;
    for (Value* const value : values) {
        for (rapidjson::SizeType i = 0; value->IsObject() && i < value->MemberCount(); ++i) {
            Value& name = (value->MemberBegin() + i)->name;
            Value unknown("unknown");
            name.Swap(unknown);
            std::string const once = normalized(textOf(document));
            name.Swap(unknown);
            EXPECT_EQ(normalized(once), once);
            ++removed;
        }
    }
    EXPECT_GT(removed, 100U);
}

TEST(OtioBadInput, HostileNestingIsRefused) {
    std::size_t const levels = 100000;
    EXPECT_FALSE(accepted(repeated("[", levels)));
    EXPECT_FALSE(accepted(repeated("[", levels) + repeated("]", levels)));
    EXPECT_FALSE(accepted(repeated("{\"timeline\":", levels) + "{}" + repeated("}", levels)));
    EXPECT_FALSE(
        accepted(repeated(R"({"OTIO_SCHEMA":"Annotation.1","layers":[)", levels) + repeated("]}", levels)));
}

TEST(OtioBadInput, TheDeepestTreeThatIsReadIsWrittenWhole) {
    std::size_t const depth = 500; // two levels each
    std::string const text =
        repeated(R"({"OTIO_SCHEMA":"Annotation.1","layers":[)", depth) + repeated("]}", depth);
    Tree tree(text);
    std::string const layer = R"({"OTIO_SCHEMA":"Annotation.1","visible":true,"name":"","effect_name":"")";
    EXPECT_EQ(writtenToArray(tree.root()), "[" + repeated(layer + R"(,"layers":[)", depth - 1) + layer + "}" +
                                               repeated("]}", depth - 1) + "]");
    EXPECT_TRUE(accepted(text));
    EXPECT_FALSE(accepted(R"({"timeline":)" + text + "}"));
}

TEST(OtioBadInput, AStringOfTenMillionBytesPassesThrough) {
    std::string const name(10 * 1000 * 1000, 'n');
    EXPECT_EQ(normalized(R"({"OTIO_SCHEMA":"Timeline.1","name":")" + name + "\"}"),
              bareTimelineText("\"" + name + "\""));
    EXPECT_FALSE(accepted(R"({"OTIO_SCHEMA":"Timeline.1","name":")" + name));
}

TEST(OtioBadInput, AHundredThousandChildrenAreRead) {
    std::string const text = R"({"OTIO_SCHEMA":"Timeline.1","tracks":{"OTIO_SCHEMA":"Stack.1","children":[)" +
                             repeated(R"({"OTIO_SCHEMA":"Track.1"},{},)", 50000) + "7]}}";
    EXPECT_EQ(normalized(text),
              timelineText("[" + repeated(trackText("[]") + ",", 49999) + trackText("[]") + "]"));
}

TEST(OtioBadInput, ANumberOfFourHundredDigitsIsTakenInAFractionOnly) {
    std::string const digits = repeated("1234567890", 40);
    auto const start = [](std::string const& value) {
        return R"({"OTIO_SCHEMA":"Timeline.1","global_start_time":{"OTIO_SCHEMA":"RationalTime.1","rate":1,"value":)" +
               value + "}}";
    };
    EXPECT_FALSE(accepted(start(digits)));
    EXPECT_FALSE(accepted(start(digits + ".5")));
    EXPECT_TRUE(accepted(start("0." + digits)));
    EXPECT_EQ(normalized(start("1." + repeated("0", 400))), bareTimelineText("\"\"", timeText("1.0", "1.0")));
    EXPECT_EQ(normalized(start("0." + repeated("0", 400) + "99e710")),
              bareTimelineText("\"\"", R"({"OTIO_SCHEMA":"RationalTime.1","rate":1.0})"));
}

TEST(OtioBadInput, EveryByteInAStringIsTakenOrRefusedButNeverChanged) {
    for (int byte = 1; byte < 256; ++byte) {
        std::string const name(1, static_cast<char>(byte));
        std::string const text = R"({"OTIO_SCHEMA":"Timeline.1","name":"a)" + name + "b\"}";
        if (byte < 0x20 || byte == '"' || byte == '\\') {
            EXPECT_EQ(accepted(text), byte == '\\') << byte; // "\b" is a backspace
        } else {
            EXPECT_EQ(normalized(text), bareTimelineText("\"a" + name + "b\"")) << byte;
        }
    }
}

TEST(OtioBadInput, ALoneHighSurrogateIsRefusedAndALoneLowOnePassesThrough) {
    EXPECT_FALSE(accepted(R"({"OTIO_SCHEMA":"Timeline.1","name":"\ud800"})"));
    EXPECT_FALSE(accepted(R"({"OTIO_SCHEMA":"Timeline.1","\ud800":1})"));
    EXPECT_EQ(normalized(R"({"OTIO_SCHEMA":"Timeline.1","name":"\udc00"})"),
              bareTimelineText("\"\xED\xB0\x80\""));
}

} // namespace
