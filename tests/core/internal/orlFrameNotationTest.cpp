// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "internal/orlFrameNotation.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using namespace ORL_0_81;
using namespace std::string_literals;
using testing::ElementsAreArray;

std::vector<std::string> fieldsOf(std::string const& name) {
    std::vector<FrameNotation::Span> spans;
    FrameNotation::findDigitFields(name, spans);
    std::vector<std::string> result;
    for (FrameNotation::Span const& span : spans) {
        result.push_back(name.substr(span.position, span.length));
    }
    return result;
}

TEST(FrameNotation, FindsDigitFieldsWithTheirSigns) {
    struct Example {
        std::string name;
        std::vector<std::string> fields;
    };
    for (Example const& example :
         std::vector<Example>{{"", {}},
                              {"abc-", {}},
                              {"1", {"1"}},
                              {"-1", {"-1"}},
                              {"--1", {"-1"}},
                              {"a-1", {"-1"}},
                              {"12-34", {"12", "34"}},
                              {"12--34", {"12", "-34"}},
                              {"v2.-10x", {"2", "-10"}},
                              {"123456789", {"123456789"}},
                              {"1234567890", {"123456789", "0"}},
                              {"-1234567890", {"-123456789", "0"}},
                              {"1234567890-1", {"123456789", "0", "1"}},
                              {"1234567891234567891", {"123456789", "123456789", "1"}},
                              {"\xD9\xA1"
                               "2",
                               {"2"}}}) {
        EXPECT_THAT(fieldsOf(example.name), ElementsAreArray(example.fields)) << example.name;
    }
}

TEST(FrameNotation, SpansAreEqualThatBeginAndEndTogether) {
    EXPECT_TRUE((FrameNotation::Span{4, 2}) == (FrameNotation::Span{4, 2}));
    EXPECT_FALSE((FrameNotation::Span{4, 2}) == (FrameNotation::Span{4, 3}));
    EXPECT_FALSE((FrameNotation::Span{4, 2}) == (FrameNotation::Span{3, 2}));
}

TEST(FrameNotation, ReadsFrames) {
    struct Example {
        std::string text;
        bool isFrame;
        int frame;
    };
    for (Example const& example : std::vector<Example>{{"0", true, 0},
                                                       {"-0", true, 0},
                                                       {"0012", true, 12},
                                                       {"-0012", true, -12},
                                                       {"999999999", true, 999999999},
                                                       {"-999999999", true, -999999999},
                                                       {"", false, 0},
                                                       {"-", false, 0},
                                                       {"--1", false, 0},
                                                       {"+1", false, 0},
                                                       {"1-", false, 0},
                                                       {"1a", false, 0},
                                                       {"1234567890", false, 0}}) {
        EXPECT_EQ(FrameNotation::isFrame(example.text), example.isFrame) << example.text;
        EXPECT_EQ(FrameNotation::frameOf(example.text), example.frame) << example.text;
    }
}

TEST(FrameNotation, MeasuresTheFrameThatBeginsAtAPlace) {
    EXPECT_EQ(FrameNotation::frameLengthAt("a12b", 1), 2U);
    EXPECT_EQ(FrameNotation::frameLengthAt("a12b", 2), 1U);
    EXPECT_EQ(FrameNotation::frameLengthAt("a-12", 1), 3U);
    EXPECT_EQ(FrameNotation::frameLengthAt("1234567891", 0), 9U);
    EXPECT_EQ(FrameNotation::frameLengthAt("-1234567891", 0), 10U);
    EXPECT_EQ(FrameNotation::frameLengthAt("a--1", 1), 0U);
    EXPECT_EQ(FrameNotation::frameLengthAt("a-", 1), 0U);
    EXPECT_EQ(FrameNotation::frameLengthAt("a1", 0), 0U);
    EXPECT_EQ(FrameNotation::frameLengthAt("a1", 2), 0U);
}

TEST(FrameNotation, FindsFrameSymbolsFromLeftToRight) {
    std::string const text = "%a%4%04d%d";
    EXPECT_EQ(FrameNotation::findFrameSymbol(text), (FrameNotation::Span{4, 4}));
    EXPECT_EQ(FrameNotation::findFrameSymbol(text, 4), (FrameNotation::Span{4, 4}));
    EXPECT_EQ(FrameNotation::findFrameSymbol(text, 5), (FrameNotation::Span{8, 2}));
    EXPECT_EQ(FrameNotation::findFrameSymbol(text, 9).length, 0U);
    EXPECT_EQ(FrameNotation::frameSymbol(1), "%01d");
    EXPECT_EQ(FrameNotation::frameSymbol(10), "%010d");
}

TEST(FrameNotation, EscapesTwelveCharactersAndNeitherHyphenNorBackslash) {
    EXPECT_EQ(FrameNotation::escape(".()[]?*+^|${}"), "\\.\\(\\)\\[\\]\\?\\*\\+\\^\\|\\$\\{\\}");
    EXPECT_EQ(FrameNotation::escape("a-\\/,:=!<>\n\0"s), "a-\\/,:=!<>\n\0"s);
    EXPECT_EQ(FrameNotation::withoutBackslashes("\\a\\\\b\\"), "ab");
}

TEST(FrameNotation, TellsWhatASequenceNameStandsFor) {
    struct Example {
        std::string name;
        std::string sequenceName;
        bool matches;
    };
    for (Example const& example : std::vector<Example>{{"a.1.exr", "a.%04d.exr", true},
                                                       {"a.-1.exr", "a.%d.exr", true},
                                                       {"a.123456789.exr", "a.%04d.exr", true},
                                                       {"a.1234567890.exr", "a.%04d.exr", false},
                                                       {"a..exr", "a.%04d.exr", false},
                                                       {"a.1.exr", "b.%04d.exr", false},
                                                       {"a.1.exr", "a.%04d.jpg", false},
                                                       {"a.1.exr", "a.1.exr", false},
                                                       {"1.%d", "%d.%d", true},
                                                       {"1.1", "%d.%d", false},
                                                       {"aa", "a%da", false},
                                                       {"1", "%01d", true}}) {
        EXPECT_EQ(FrameNotation::matchesSequenceName(example.name, example.sequenceName), example.matches)
            << example.name << " " << example.sequenceName;
    }
}

TEST(FrameNotation, FindsADateWithATimeOfDay) {
    struct Example {
        std::string text;
        bool isFound;
    };
    for (Example const& example : std::vector<Example>{{"2019-03-21 at 10.22.33", true},
                                                       {"shot 2019-03-21 at 10.22.33.png", true},
                                                       {"12019.03.21-10-22-33", true},
                                                       {"2019-03-21123456789", false},
                                                       {"2019-03-21_________10.22.33", true},
                                                       {"2019-03-21__________10.22.33", false},
                                                       {"1 2019-03-21 10.22.334", true},
                                                       {"", false},
                                                       {"2019", false},
                                                       {"201-03-21 10.22.33", false},
                                                       {"2019--03-21 10.22.33", false},
                                                       {"2019-3-21 10.22.33", false},
                                                       {"2019-03--21 10.22.33", false},
                                                       {"2019-03-2", false},
                                                       {"2019-03-21 1", false},
                                                       {"2019-03-21 1.22.33", false},
                                                       {"2019-03-21 10", false},
                                                       {"2019-03-21 10..22.33", false},
                                                       {"2019-03-21 10.2.33", false},
                                                       {"2019-03-21 10.22", false},
                                                       {"2019-03-21 10.22..33", false},
                                                       {"2019-03-21 10.22.3", false}}) {
        EXPECT_EQ(FrameNotation::holdsDateAndTime(example.text), example.isFound) << example.text;
    }
}

} // namespace
