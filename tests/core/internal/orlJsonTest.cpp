// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "internal/orlJson.h"

#include "support/Json.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>

namespace {

using namespace ORL_0_81;
using namespace orlTest;

rapidjson::ParseResult parse(std::string const& text) {
    rapidjson::Document document;
    return parseJson(text.c_str(), document);
}

TEST(Json, ATextOfAnyRootIsParsed) {
    for (char const* const text :
         {"{}", "[]", "null", "true", "false", "1", "-1.5e3", "\"x\"", " \t\r\n{ } \n"}) {
        rapidjson::Document document;
        EXPECT_FALSE(parseJson(text, document).IsError()) << text;
        EXPECT_EQ(textOf(document), compact(text == std::string("-1.5e3") ? "-1500.0" : text));
    }
}

TEST(Json, AFailureTellsItsPlaceInBytes) {
    struct Row {
        char const* text;
        rapidjson::ParseErrorCode code;
        std::size_t offset;
    };
    Row const rows[] = {
        {"", rapidjson::kParseErrorDocumentEmpty, 0},
        {"   ", rapidjson::kParseErrorDocumentEmpty, 3},
        {"{} x", rapidjson::kParseErrorDocumentRootNotSingular, 3},
        {"[1,]", rapidjson::kParseErrorValueInvalid, 3},
        {"{\"a\" 1}", rapidjson::kParseErrorObjectMissColon, 5},
        {"[1e400]", rapidjson::kParseErrorNumberTooBig, 1},
    };
    for (Row const& row : rows) {
        rapidjson::ParseResult const result = parse(row.text);
        EXPECT_EQ(result.Code(), row.code) << row.text;
        EXPECT_EQ(result.Offset(), row.offset) << row.text;
    }
}

TEST(Json, TheDocumentIsNullAfterAFailure) {
    rapidjson::Document document;
    document.SetObject();
    EXPECT_TRUE(parseJson("[1, 2", document).IsError());
    EXPECT_TRUE(document.IsNull());
}

TEST(Json, TheDocumentIsNullAfterATextThatIsTooDeep) {
    rapidjson::Document document;
    document.SetObject();
    EXPECT_TRUE(parseJson(repeated("[", 1001).c_str(), document).IsError());
    EXPECT_TRUE(document.IsNull());
}

TEST(Json, AThousandLevelsAreTaken) {
    EXPECT_FALSE(parse(repeated("[", 1000) + repeated("]", 1000)).IsError());
    EXPECT_FALSE(parse(repeated("{\"a\":", 1000) + "1" + repeated("}", 1000)).IsError());
    EXPECT_FALSE(parse(repeated("{\"a\":[", 500) + repeated("]}", 500)).IsError());
}

TEST(Json, OneLevelMoreIsRefusedJustBehindItsBracket) {
    struct Row {
        std::string text;
        std::size_t offset;
    };
    Row const rows[] = {
        {repeated("[", 1001) + repeated("]", 1001), 1001},
        {repeated("{\"a\":", 1001) + "1" + repeated("}", 1001), 5001},
        {repeated("{\"a\":[", 500) + "[]" + repeated("]}", 500), 3001},
        {"[[],[]," + repeated("[", 1000), 7 + 1000},
    };
    for (Row const& row : rows) {
        rapidjson::ParseResult const result = parse(row.text);
        EXPECT_EQ(result.Code(), rapidjson::kParseErrorTermination);
        EXPECT_EQ(result.Offset(), row.offset);
    }
}

TEST(Json, ClosedLevelsAreFreeAgain) { EXPECT_FALSE(parse("[" + repeated("[],", 5000) + "{}]").IsError()); }

TEST(Json, BracketsInStringsAreNoLevels) {
    std::string const brackets = repeated("[{", 2000);
    EXPECT_FALSE(parse("[\"" + brackets + "\"]").IsError());
    EXPECT_FALSE(parse("{\"" + brackets + "\":1}").IsError());
    EXPECT_FALSE(parse("[\"\\\"" + brackets + "\"]").IsError());
    EXPECT_FALSE(parse("[\"\\\\\",\"" + brackets + "\"]").IsError());
}

TEST(Json, AnEscapedBackslashEndsNoStringTooLate) {
    EXPECT_EQ(parse("[\"\\\\\"," + repeated("[", 1000) + repeated("]", 1001)).Code(),
              rapidjson::kParseErrorTermination);
}

TEST(Json, HostileDepthIsRefusedWithoutExhaustingTheStack) {
    EXPECT_TRUE(parse(repeated("[", 100000)).IsError());
    EXPECT_TRUE(parse(repeated("[", 100000) + repeated("]", 100000)).IsError());
    EXPECT_TRUE(parse(repeated("{\"a\":", 100000)).IsError());
    EXPECT_TRUE(parse(repeated("{\"a\":", 100000) + "1" + repeated("}", 100000)).IsError());
}

TEST(Json, UnbalancedClosingBracketsAreAnOrdinaryParseError) {
    EXPECT_TRUE(parse("]").IsError());
    EXPECT_TRUE(parse(repeated("]", 5000)).IsError());
    EXPECT_TRUE(parse("[]" + repeated("]", 5000)).IsError());
    EXPECT_TRUE(parse(repeated("}", 5000) + repeated("[", 1001)).IsError());
}

TEST(Json, BytesThatAreNoUtf8PassThrough) {
    rapidjson::Document document;
    ASSERT_FALSE(parseJson("\"a\xFF\xC0\x80\xED\xA0\x80z\"", document).IsError());
    EXPECT_EQ(jsonToText(document), "\"a\xFF\xC0\x80\xED\xA0\x80z\"");
}

TEST(Json, TextIsCompactAndEscapesOnlyWhatItMust) {
    std::string const text = R"({"a":[1,-2,3.5,1e30,null,true,false],"":"\"\\/\b\f\n\r\t\u0001\u001F\u0000)"
                             "\x7F\xC3\xA4\"}";
    EXPECT_EQ(jsonToText(parsed(text)), text);
}

TEST(Json, AnIntegerKeepsItsFormAndAFractionItsPoint) {
    EXPECT_EQ(jsonToText(parsed("[24, 24.0, 2.4e1, -0.0, 4294967295, 18446744073709551615]")),
              "[24,24.0,24.0,-0.0,4294967295,18446744073709551615]");
}

TEST(Json, ANumberThatIsNotFiniteEndsTheText) {
    rapidjson::Document document;
    document.SetArray();
    document.PushBack(1, document.GetAllocator());
    document.PushBack(std::numeric_limits<double>::infinity(), document.GetAllocator());
    document.PushBack(2, document.GetAllocator());
    EXPECT_EQ(jsonToText(document).substr(0, 2), "[1");
    EXPECT_EQ(jsonToText(document).find('2'), std::string::npos);
}

} // namespace
