// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "orlDialectConversion.h"
#include "orlImageSequence.h"
#include "orlJsonScanner.h"
#include "tools/orl/orlToolSupport.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>

namespace ORL_0_81::tool {

using testing::ElementsAre;

namespace {

struct Row {
    char const* name;
    std::string before;
    std::string after;
    std::vector<std::string> losses;
};

[[maybe_unused]] void PrintTo(Row const& row, std::ostream* out) { *out << row.name; }

struct Converted {
    std::string text;
    std::vector<std::string> losses;
};

Converted convert(std::string const& text) {
    LossReport report;
    Converted converted{toDialect(text, report), {}};
    for (LossGroup const& group : report.groups()) {
        converted.losses.push_back(LossReport::line(group));
    }
    return converted;
}

std::string newer(std::string const& members) { return R"({"OTIO_SCHEMA":"Clip.2")" + members + '}'; }

std::string older(std::string const& members) { return R"({"OTIO_SCHEMA":"Clip.1")" + members + '}'; }

// The smallest newer clip, and what becomes of it.
std::string const newClip =
    newer(R"(,"media_references":{"DEFAULT_MEDIA":{"u":1}},"active_media_reference_key":"DEFAULT_MEDIA")");
std::string const oldClip = older(R"(,"media_reference":{"u":1})");

std::string notActive(std::string const& key) {
    return "1 x Clip.2 \"media_references\"/\"" + key +
           "\" is not carried, for it is not the active reference, first at /media_references/" + key;
}

std::string keyLoss(std::string const& fate) {
    return "1 x Clip.2 \"active_media_reference_key\" " + fate + ", first at /active_media_reference_key";
}

class DialectRow : public testing::TestWithParam<Row> {};

auto const rowName = [](testing::TestParamInfo<Row> const& info) { return info.param.name; };

} // namespace

TEST_P(DialectRow, IsConverted) {
    Converted const converted = convert(GetParam().before);
    EXPECT_EQ(converted.text, GetParam().after);
    EXPECT_EQ(converted.losses, GetParam().losses);
    EXPECT_EQ(convert(converted.text).text, converted.text);
}

INSTANTIATE_TEST_SUITE_P(
    Clip, DialectRow,
    testing::Values(
        Row{"WithOneReference", newClip, oldClip, {}},
        Row{"KeepsAllThatNeedsNoConversionAsItIsWritten",
            newer(" ,\n\t\"x\" : [ 12345678901234567890, 0.10000000000000001 , 1E+2,-0 ,1.50 ],"
                  "\"media_references\" : { \"DEFAULT_MEDIA\" : {\"n\" : 9007199254740993 "
                  ",\"s\":\"\\u00e4\\/\"} },"
                  "\"active_media_reference_key\":\"DEFAULT_MEDIA\",\"name\":\"\\u006e\" "),
            older(" ,\n\t\"x\" : [ 12345678901234567890, 0.10000000000000001 , 1E+2,-0 ,1.50 ],"
                  "\"media_reference\" : {\"n\" : 9007199254740993 ,\"s\":\"\\u00e4\\/\"}"
                  ",\"name\":\"\\u006e\" "),
            {}},
        Row{"WithTheKeyBeforeTheSchemaAndTheReferences",
            R"({"active_media_reference_key":"DEFAULT_MEDIA", "media_references":{"DEFAULT_MEDIA":1}, "OTIO_SCHEMA":"Clip.2"})",
            R"({"media_reference":1, "OTIO_SCHEMA":"Clip.1"})",
            {}},
        Row{"WithEscapesInNamesAndTexts",
            R"({"OTIO\u005fSCHEMA":"Clip\u002e2","media\u005freferences":{"h\u0069":{}},"active_media_reference_ke\u0079":"\u0068i"})",
            R"({"OTIO\u005fSCHEMA":"Clip.1","media_reference":{}})",
            {keyLoss("\"hi\" is not carried, for the reference has no name")}},
        Row{"WithASchemaThatEndsAtAZeroByte",
            R"({"OTIO_SCHEMA":"Clip.2\u0000!","media_references":{"DEFAULT_MEDIA":{}}})",
            older(R"(,"media_reference":{})"),
            {}},
        Row{"WithBracketsAndQuotesInStrings",
            newer(R"(,"media_references":{"DEFAULT_MEDIA":{"a":"}]\"{[","b":[{"c":"\\"}]}},"z":"\\\"}")"),
            older(R"(,"media_reference":{"a":"}]\"{[","b":[{"c":"\\"}]},"z":"\\\"}")"),
            {}},
        Row{"WithoutAKeyTakesTheReferenceOfTheDefaultName",
            newer(R"(,"media_references":{"a":{"u":1},"DEFAULT_MEDIA":{"u":2}})"),
            older(R"(,"media_reference":{"u":2})"),
            {notActive("a")}},
        Row{"WithOtherReferencesTellsEachOfThem",
            newer(
                R"(,"media_references":{"a":{"u":1},"b":{"u":2},"c":{"u":3}},"active_media_reference_key":"b")"),
            older(R"(,"media_reference":{"u":2})"),
            {notActive("a"), notActive("c"), keyLoss("\"b\" is not carried, for the reference has no name")}},
        Row{"WithAKeyThatNamesNothingHasNoReference",
            newer(R"(,"media_references":{"DEFAULT_MEDIA":{"u":1}},"active_media_reference_key":"b","n":1)"),
            older(R"(,"n":1)"),
            {notActive("DEFAULT_MEDIA"), keyLoss("\"b\" names no reference")}},
        Row{"WithoutReferencesHasNone",
            newer(R"(,"active_media_reference_key":"DEFAULT_MEDIA")"),
            older(""),
            {keyLoss("\"DEFAULT_MEDIA\" names no reference")}},
        Row{"WithNothingAtAll", newer(""), older(""), {}},
        Row{"WithReferencesThatSayNothing",
            newer(R"(,"media_references":null,"name":"a")"),
            older(R"(,"name":"a")"),
            {}},
        Row{"WithAnActiveReferenceOfNull",
            newer(
                R"(,"media_references":{"DEFAULT_MEDIA":null,"b":{}},"active_media_reference_key":"DEFAULT_MEDIA")"),
            older(R"(,"media_reference":null)"),
            {}},
        Row{"WithAKeyThatIsNoText",
            newer(R"(,"media_references":{"DEFAULT_MEDIA":{}},"active_media_reference_key":5)"),
            older(R"(,"media_reference":{})"),
            {keyLoss("is an integer where a text is expected")}},
        Row{"WithAKeyOfNullTakesTheDefault",
            newer(R"(,"active_media_reference_key":null,"media_references":{"DEFAULT_MEDIA":{}})"),
            older(R"(,"media_reference":{})"),
            {}},
        Row{"WithAListOfReferences",
            newer(R"(,"media_references":[{"u":1}])"),
            older(""),
            {"1 x Clip.2 \"media_references\" is a list of 1 where an object is expected, first at "
             "/media_references"}},
        Row{"WithAReferenceOfTheOldNameBesideTheActiveOne",
            R"({"media_reference":{"u":"old"},"OTIO_SCHEMA":"Clip.2","media_references":{"DEFAULT_MEDIA":{"u":"new"}}})",
            R"({"OTIO_SCHEMA":"Clip.1","media_reference":{"u":"new"}})",
            {"1 x Clip.2 \"media_reference\" is replaced by the active reference, first at "
             "/media_reference"}},
        Row{"WithAReferenceOfTheOldNameAlone",
            newer(R"(,"media_reference":{"u":"old"})"),
            older(R"(,"media_reference":{"u":"old"})"),
            {}},
        Row{"WithRepeatedMembersOfWhichTheFirstCounts",
            newer(
                R"(,"media_references":{"b":{"u":1},"b":{"u":2}},"media_references":{"b":{"u":3}},)"
                R"("active_media_reference_key":"b","active_media_reference_key":"c","OTIO_SCHEMA":"Clip.9")"),
            older(R"(,"media_reference":{"u":1},"OTIO_SCHEMA":"Clip.9")"),
            {"1 x Clip.2 \"media_references\"/\"b\" is repeated, and the first one counts, first at "
             "/media_references/b",
             keyLoss("\"b\" is not carried, for the reference has no name"),
             "1 x Clip.2 \"media_references\" is repeated, and the first one counts, first at "
             "/media_references",
             keyLoss("is repeated, and the first one counts")}}),
    rowName);

INSTANTIATE_TEST_SUITE_P(
    Place, DialectRow,
    testing::Values(
        Row{"InATrackOfAStackOfATimeline",
            R"({"OTIO_SCHEMA":"Timeline.1","tracks":{"OTIO_SCHEMA":"Stack.1","children":[{"OTIO_SCHEMA":"Track.1","children":[)" +
                newClip + "," + newClip + "]}]}}",
            R"({"OTIO_SCHEMA":"Timeline.1","tracks":{"OTIO_SCHEMA":"Stack.1","children":[{"OTIO_SCHEMA":"Track.1","children":[)" +
                oldClip + "," + oldClip + "]}]}}",
            {}},
        Row{"InAWrappedTimeline",
            R"({"timeline":{"timeline":{"tracks":{"children":[)" + newClip + R"(]}}},"children":[],"note":)" +
                newClip + "}",
            R"({"timeline":{"timeline":{"tracks":{"children":[)" + oldClip + R"(]}}},"children":[],"note":)" +
                newClip + "}",
            {}},
        Row{"InACollectionOfTimelinesAndClips",
            R"({"OTIO_SCHEMA":"SerializableCollection.1","children":[)" + newClip +
                R"(,{"OTIO_SCHEMA":"Timeline.1","tracks":{"children":[)" + newClip + "]}}]}",
            R"({"OTIO_SCHEMA":"SerializableCollection.1","children":[)" + oldClip +
                R"(,{"OTIO_SCHEMA":"Timeline.1","tracks":{"children":[)" + oldClip + "]}}]}",
            {}},
        Row{"InABareStack",
            R"({"OTIO_SCHEMA":"Stack.1","children":[null,7,)" + newClip + "]}",
            R"({"OTIO_SCHEMA":"Stack.1","children":[null,7,)" + oldClip + "]}",
            {}},
        Row{"NotInMetadata",
            R"({"OTIO_SCHEMA":"Timeline.1","metadata":{"children":[)" + newClip + "]}}",
            R"({"OTIO_SCHEMA":"Timeline.1","metadata":{"children":[)" + newClip + "]}}",
            {}},
        Row{"NotInARepeatedListThatNobodyReads",
            R"({"OTIO_SCHEMA":"Track.1","children":[],"children":[)" + newClip + "]}",
            R"({"OTIO_SCHEMA":"Track.1","children":[],"children":[)" + newClip + "]}",
            {}},
        Row{"NotInAThirdWrapper",
            R"({"timeline":{"timeline":{"timeline":)" + newClip + "}}}",
            R"({"timeline":{"timeline":{"timeline":)" + newClip + "}}}",
            {}},
        Row{"TellsVersionsOfWhichNothingIsKnown",
            R"({"OTIO_SCHEMA":"Timeline.2","tracks":{"OTIO_SCHEMA":"Stack.10","children":[{"OTIO_SCHEMA":"Clip.3"},)"
            R"({"OTIO_SCHEMA":"Clip.3"},{"OTIO_SCHEMA":"Transition.4"},{"OTIO_SCHEMA":"Clip"},{"OTIO_SCHEMA":2},{}]}})",
            R"({"OTIO_SCHEMA":"Timeline.2","tracks":{"OTIO_SCHEMA":"Stack.10","children":[{"OTIO_SCHEMA":"Clip.3"},)"
            R"({"OTIO_SCHEMA":"Clip.3"},{"OTIO_SCHEMA":"Transition.4"},{"OTIO_SCHEMA":"Clip"},{"OTIO_SCHEMA":2},{}]}})",
            {"2 x schema \"Clip.3\" is not handled, first at /tracks/children/0",
             "1 x schema \"Stack.10\" is not handled, first at /tracks",
             "1 x schema \"Timeline.2\" is not handled, at the top"}}),
    rowName);

INSTANTIATE_TEST_SUITE_P(
    Sequence, DialectRow,
    testing::Values(
        Row{"OfANewerClipGetsAUrl",
            newer(
                R"(,"media_references":{"DEFAULT_MEDIA":{"OTIO_SCHEMA":"ImageSequenceReference.1","name_prefix":"a."}})"),
            older(
                R"(,"media_reference":{"OTIO_SCHEMA":"ImageSequenceReference.1","name_prefix":"a.","target_url":"a.%01d"})"),
            {}},
        Row{"OfAnOlderClipGetsAUrl",
            older(R"(,"media_reference":{"OTIO_SCHEMA":"ImageSequenceReference.1","name_prefix":"a."})"),
            older(
                R"(,"media_reference":{"OTIO_SCHEMA":"ImageSequenceReference.1","name_prefix":"a.","target_url":"a.%01d"})"),
            {}}),
    rowName);

TEST(DialectConversion, ReachesTheDeepestClip) {
    std::string before;
    std::string ends;
    constexpr int kStacks = 499; // each takes two levels
    for (int i = 0; i < kStacks; ++i) {
        before += R"({"OTIO_SCHEMA":"Stack.1","children":[)";
        ends += "]}";
    }
    std::string const after = before + older(R"(,"media_reference":{})") + ends;
    before += newer(R"(,"media_references":{"DEFAULT_MEDIA":{}})") + ends;
    EXPECT_EQ(convert(before).text, after);
}

TEST(ImageSequence, GetsTheUrlOfItsParts) {
    auto const reference = [](std::string const& members) {
        return R"({"OTIO_SCHEMA":"ImageSequenceReference.1",)" + members + "}";
    };
    struct Case {
        std::string members;
        std::string url;
    };
    for (
        auto const& [members, url] : {
            Case{
                R"("target_url_base":"file:///p","name_prefix":"a.","name_suffix":".exr","frame_zero_padding":4)",
                "file:///p/a.%04d.exr"},
            Case{
                R"("target_url_base":"file:///p/","name_prefix":"a.","name_suffix":".exr","frame_zero_padding":9)",
                "file:///p/a.%09d.exr"},
            Case{
                R"("target_url_base":"file:///p/","name_prefix":"","name_suffix":".exr","frame_zero_padding":0)",
                "file:///p/%01d.exr"},
            Case{
                R"("target_url_base":"file:///my%20plates","name_prefix":"a.","name_suffix":".exr","frame_zero_padding":4)",
                "file:///my%20plates/a.%2504d.exr"},
            Case{
                R"("target_url_base":"file:///100%/","name_prefix":"a.","name_suffix":".exr","frame_zero_padding":4)",
                "file:///100%/a.%04d.exr"},
            Case{
                R"("target_url_base":"/my%20plates","name_prefix":"a.","name_suffix":".exr","frame_zero_padding":4)",
                "/my%20plates/a.%04d.exr"},
            Case{R"("name_suffix":"_\"x\".exr","frame_zero_padding":1)", R"(%01d_\"x\".exr)"},
            Case{R"("name_prefix":"a.","frame_zero_padding":10)", "a.%09d"},
            Case{R"("name_prefix":"a.","frame_zero_padding":-4)", "a.%01d"},
        }) {
        EXPECT_EQ(withSequenceUrl(reference(members)), reference(members + R"(,"target_url":")" + url + '"'));
    }
}

TEST(ImageSequence, HasItsUrlWrittenLikeItsOtherMembers) {
    EXPECT_EQ(
        withSequenceUrl("{\n  \"OTIO_SCHEMA\": \"ImageSequenceReference.1\",\n  \"name_prefix\": \"a\"\n}"),
        "{\n  \"OTIO_SCHEMA\": \"ImageSequenceReference.1\",\n  \"name_prefix\": \"a\",\n"
        "  \"target_url\": \"a%01d\"\n}");
}

TEST(ImageSequence, TakesThePlaceOfAUrlThatSaysNothing) {
    for (char const* nothing : {"null", "\"\"", "{}"}) {
        EXPECT_EQ(withSequenceUrl(R"({"target_url": )" + std::string(nothing) +
                                  R"(, "OTIO_SCHEMA":"ImageSequenceReference.1","name_prefix":"a"})"),
                  R"({"target_url": "a%01d", "OTIO_SCHEMA":"ImageSequenceReference.1","name_prefix":"a"})");
    }
}

TEST(ImageSequence, LeavesOtherReferencesAsTheyAre) {
    for (char const* text :
         {"null", "7", "[]", "{}", R"({"OTIO_SCHEMA":"ExternalReference.1","name_prefix":"a"})",
          R"({"OTIO_SCHEMA":"ImageSequenceReference.1"})",
          R"({"OTIO_SCHEMA":"ImageSequenceReference.1","name_prefix":"a","target_url":"b"})",
          R"({"OTIO_SCHEMA":"ImageSequenceReference.2","name_prefix":"a"})"}) {
        EXPECT_EQ(withSequenceUrl(text), text);
    }
}

TEST(JsonScanner, FindsTheEndOfEachKindOfValue) {
    for (char const* value : {"0", "-12.5e+3", "true", "null", R"("")", R"("a\"b\\")", "[]", "{}",
                              R"([1,{"a":["]"]},"\\"])", R"({"}":"{"})"}) {
        for (char const* rest : {"", " ", ",1", "]", "}", "\n"}) {
            std::string const text = std::string(value) + rest;
            EXPECT_EQ(JsonScanner(text).endOf(0), std::string(value).size()) << text;
        }
    }
}

TEST(JsonScanner, TellsMembersAndElementsInTheirOrder) {
    std::string const text = R"( { "a" : 1 , "\u0062":[ 2,"x" ,{}] ,"c":{}} )";
    JsonScanner const scanner(text);
    std::vector<std::string> parts;
    std::size_t const end =
        scanner.forEachMember(scanner.begin(), [&](TextSpan const& name, std::size_t value) {
            parts.push_back(scanner.decoded(name));
            auto const tell = [&](std::size_t part) {
                parts.emplace_back(scanner.raw({part, scanner.endOf(part)}));
                return scanner.endOf(part);
            };
            return scanner.isArray(value) ? scanner.forEachElement(value, tell) : tell(value);
        });
    EXPECT_THAT(parts, ElementsAre("a", "1", "b", "2", "\"x\"", "{}", "c", "{}"));
    EXPECT_EQ(end, text.size() - 1);
}

} // namespace ORL_0_81::tool
