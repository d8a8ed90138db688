// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "internal/orlExactNumber.h"

#include <rapidjson/document.h>

#include <gtest/gtest.h>

#include <cstdlib>
#include <vector>

namespace {

using namespace ORL_0_81::media;

double quickly(std::string const& text) {
    rapidjson::Document document;
    document.Parse(text.c_str());
    return document.IsDouble() ? document.GetDouble() : -1.0;
}

TEST(ExactNumberTest, IsReadExactlyByTheQuickParserAndByAnyOther) {
    std::vector<double> values = {0.0,   1.0,         24.0,        86400.0, 2147483648.0,
                                  607.5, 16.0 / 11.0, 64.0 / 45.0, 1e-300,  1e300};
    for (int const count : {24000, 30000, 48000, 60000, 120000}) {
        values.push_back(count / 1001.0);
    }
    for (double const value : values) {
        std::string const text = toExactText(value);
        EXPECT_EQ(quickly(text), value) << text;
        EXPECT_EQ(std::strtod(text.c_str(), nullptr), value) << text;
    }
}

TEST(ExactNumberTest, IsAlwaysAFraction) {
    EXPECT_EQ(toExactText(24.0), "24.0");
    EXPECT_EQ(toExactText(0.0), "0.0");
    EXPECT_EQ(toExactText(-1.5), "-1.5");
}

TEST(ExactNumberTest, NoTextIsEverReadAsAnotherNumberByACorrectParser) {
    unsigned missed = 0;
    for (int numerator = 1; numerator < 400; ++numerator) {
        for (int denominator = 1; denominator < 60; ++denominator) {
            double const value = static_cast<double>(numerator) / denominator;
            std::string const text = toExactText(value);
            ASSERT_EQ(std::strtod(text.c_str(), nullptr), value) << text;
            missed += quickly(text) == value ? 0U : 1U;
        }
    }
    EXPECT_LT(missed, 399U * 59U / 8U); // not every double has a text that suits the quick parser
}

} // namespace
