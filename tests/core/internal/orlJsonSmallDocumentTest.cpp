// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "internal/orlJson.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>
#include <vector>

namespace {

using namespace ORL_0_81;

// Texts of both kinds: those that are parsed in the document's own copy, and longer ones.
std::vector<std::string> texts() {
    std::vector<std::string> result = {
        "",
        " ",
        "null",
        "{}",
        "[1,-2,3.5,true,false,null,\"\"]",
        R"({"a":{"b":[{"c":"\u0000\n\"\\\u00e9 and more than a value holds in itself"}]},"a":2})",
        "{\"a\":\"no end",
        "[1,2",
        "[1]x",
        "\"\\q\"",
        "[1.00000000001e-2147483639,\"e-2147483639\"]",
        std::string(1000, '[') + std::string(1000, ']'),
        std::string(1001, '[') + std::string(1001, ']'),
        std::string(1001, '['),
        std::string(100000, '['),
    };
    for (unsigned const length : {1000U, 1019U, 1020U, 1021U, 1022U, 1023U, 1024U, 5000U, 100000U}) {
        result.push_back("[\"" + std::string(length - 4, 'x') + "\"]");
        result.push_back("[\"" + std::string(length - 4, 'x') + "\"");
    }
    std::string many = "[0";
    for (int i = 1; i < 500; ++i) {
        result.push_back(many + "]"); // as many values as do not fit into the memory within
        many += ",{\"n\":\"" + std::to_string(i) + "\"}";
    }
    return result;
}

TEST(JsonSmallDocument, ReadsWhatAnOrdinaryDocumentReads) {
    for (std::string const& text : texts()) {
        SCOPED_TRACE(text.substr(0, 100));
        SmallDocument small;
        rapidjson::ParseResult const smallResult = parseJson(text.c_str(), small);
        rapidjson::Document ordinary;
        rapidjson::ParseResult const result = parseJson(text.c_str(), ordinary);
        EXPECT_EQ(smallResult.Code(), result.Code());
        EXPECT_EQ(smallResult.Offset(), result.Offset());
        EXPECT_EQ(jsonToText(small), jsonToText(ordinary));
    }
}

TEST(JsonSmallDocument, NeedsTheTextNoLongerThanTheParserDoes) {
    for (std::size_t const length : {20U, 2000U}) {
        std::string text = "[\"" + std::string(length, 'x') + "\"]";
        std::string const original = text;
        SmallDocument document;
        ASSERT_FALSE(parseJson(text.c_str(), document).IsError());
        EXPECT_EQ(text, original);
        text.assign(text.size(), '#');
        EXPECT_EQ(jsonToText(document), original);
    }
}

TEST(JsonLookups, FindTheFirstMemberOfThatName) {
    SmallDocument document;
    parseJson(R"({"a":1,"b":{"a":2},"a":3,"c\u0000":4})", document);
    ASSERT_TRUE(findMember(document, "a"));
    EXPECT_EQ(findMember(document, "a")->GetInt(), 1);
    EXPECT_EQ(findMember(document, "c"), nullptr);
    EXPECT_EQ(findMember(document, ""), nullptr);
    EXPECT_EQ(findMember(document, "A"), nullptr);
}

TEST(JsonLookups, FindNothingInWhatIsNoObject) {
    for (char const* text : {"null", "true", "1", "1.5", "\"a\"", "[]", R"([{"a":1}])"}) {
        SmallDocument document;
        parseJson(text, document);
        EXPECT_EQ(findMember(document, "a"), nullptr) << text;
        std::int32_t result = 7;
        EXPECT_FALSE(readInt(document, "a", result)) << text;
        EXPECT_EQ(result, 7) << text;
    }
}

TEST(JsonLookups, ReadIntegersOf32Bits) {
    struct {
        char const* value;
        bool isRead;
        std::int32_t result;
    } const table[] = {
        {"0", true, 0},
        {"-0", true, 0},
        {"2147483647", true, std::numeric_limits<std::int32_t>::max()},
        {"-2147483648", true, std::numeric_limits<std::int32_t>::min()},
        {"2147483648", false, 7},
        {"-2147483649", false, 7},
        {"1.0", false, 7},
        {"\"1\"", false, 7},
        {"null", false, 7},
    };
    for (auto const& row : table) {
        SmallDocument document;
        parseJson((std::string("{\"a\":") + row.value + "}").c_str(), document);
        std::int32_t result = 7;
        EXPECT_EQ(readInt(document, "a", result), row.isRead) << row.value;
        EXPECT_EQ(result, row.result) << row.value;
    }
}

TEST(JsonNumbers, AreFiniteUnlessTheParserLetOneThrough) {
    struct {
        char const* text;
        bool isFinite;
    } const table[] = {
        {"1.5e308", true},
        {"1.9e308", false},
        {"[0,[1.9e308]]", false},
        {"{\"a\":[1.5,2]}", true},
        {"{\"a\":-1.9e308}", false},
        {"\"1.9e308\"", true},
        {"null", true},
    };
    for (auto const& row : table) {
        SmallDocument document;
        ASSERT_FALSE(parseJson(row.text, document).IsError()) << row.text;
        EXPECT_EQ(isFinite(document), row.isFinite) << row.text;
    }
}

TEST(JsonNumbers, GoThroughTextAsAWriterAndAReaderTakeThem) {
    std::vector<double> numbers = {0.0,
                                   -0.0,
                                   1.0,
                                   -1.5,
                                   1e21,
                                   1e-7,
                                   5e-324,
                                   -5e-324,
                                   std::numeric_limits<double>::max(),
                                   -std::numeric_limits<double>::max(),
                                   std::numeric_limits<double>::min(),
                                   1.7777777777777777,
                                   0.1};
    for (int i = 1; i < 1000; ++i) {
        numbers.push_back(1.0 / i);
        numbers.push_back(std::sqrt(i) * 1e-200);
    }
    bool isEverOff = false;
    for (double const number : numbers) {
        rapidjson::Value value(number);
        SmallDocument document;
        ASSERT_FALSE(parseJson(jsonToText(value).c_str(), document).IsError());
        EXPECT_EQ(throughText(number), document.GetDouble()) << number;
        EXPECT_EQ(std::signbit(throughText(number)), std::signbit(number)) << number;
        isEverOff = isEverOff || document.GetDouble() != number;
    }
    EXPECT_TRUE(isEverOff);
}

} // namespace
