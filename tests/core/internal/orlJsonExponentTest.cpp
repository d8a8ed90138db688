// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "internal/orlJson.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>

namespace {

using namespace ORL_0_81;

// Negative exponents of more digits than the parser can count.

TEST(JsonExponent, AHugeNegativeOneMakesZero) {
    for (char const* text :
         {"1.00000000001e-2147483639", "1.00000000001E-2147483648", "1.0e-99999999999999999999",
          "1e-100000000", "123456789012345678901234567890.5e-000000002147483639", "1.5e-99999999",
          "0.000000000000000000001e-2147483639"}) {
        rapidjson::Document document;
        ASSERT_FALSE(parseJson(text, document).IsError()) << text;
        ASSERT_TRUE(document.IsDouble()) << text;
        EXPECT_EQ(document.GetDouble(), 0.0) << text;
        EXPECT_FALSE(std::signbit(document.GetDouble())) << text;

        ASSERT_FALSE(parseJson((std::string("-") + text).c_str(), document).IsError()) << text;
        EXPECT_EQ(document.GetDouble(), 0.0) << text;
        EXPECT_TRUE(std::signbit(document.GetDouble())) << text;
    }
}

TEST(JsonExponent, LeadingZerosDoNotCount) {
    rapidjson::Document document;
    ASSERT_FALSE(parseJson("[2.5e-000000000001,25e-00000001,2.5e-0000000000000]", document).IsError());
    EXPECT_EQ(document[0].GetDouble(), 0.25);
    EXPECT_EQ(document[1].GetDouble(), 2.5);
    EXPECT_EQ(document[2].GetDouble(), 2.5);
}

TEST(JsonExponent, WhatLooksLikeOneInAStringStays) {
    std::string const text =
        R"({"e-12345678901":"1.0e-12345678901","a\"e-12345678901":["\\",1.0e-12345678901],)"
        R"("b\\":"E-98765432109"})";
    rapidjson::Document document;
    ASSERT_FALSE(parseJson(text.c_str(), document).IsError());
    EXPECT_EQ(jsonToText(document),
              R"({"e-12345678901":"1.0e-12345678901","a\"e-12345678901":["\\",0.0],"b\\":"E-98765432109"})");
}

TEST(JsonExponent, TextsThatAreBrokenFailWhereTheBareParserFails) {
    for (char const* text : {"[1.0e-12345678901,x]", "[1.0e-12345678901", "e-12345678901", "-12345678901e-",
                             "[\"e-12345678901]", "[\"\\", "[1.0e-12345678901 \"\\"}) {
        rapidjson::Document document;
        rapidjson::ParseResult const result = parseJson(text, document);
        rapidjson::Document bare;
        bare.Parse(text); // few decimals, so that it survives these exponents
        EXPECT_EQ(result.Code(), bare.GetParseError()) << text;
        EXPECT_EQ(result.Offset(), bare.GetErrorOffset()) << text;
        EXPECT_TRUE(result.IsError()) << text;
        EXPECT_TRUE(document.IsNull()) << text;
    }
}

} // namespace
