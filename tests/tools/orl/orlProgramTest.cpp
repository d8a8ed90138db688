// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "orlCoreVersionInfo.h"
#include "tools/orl/orlHelpText.h"
#include "tools/orl/orlToolSupport.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace ORL_0_81::tool {

using testing::ContainsRegex;
using testing::HasSubstr;
using testing::StartsWith;
using testing::UnorderedElementsAre;

TEST(Program, PrintsTheLineOfTheLibrarysBannerForItsVersion) {
    Outcome const run = orl({"--version"});
    EXPECT_EQ(run.code, 0);
    EXPECT_EQ(run.out, getVersionLine(kVersionInfo) + '\n');
    EXPECT_THAT(run.out, StartsWith("         orlCore: orl version 0.81.1 ("));
    EXPECT_EQ(run.error, "");
}

TEST(Program, PrintsHelpWithExamplesOnStandardOutput) {
    for (char const* help : {"--help", "-h"}) {
        Outcome const run = orl({help});
        EXPECT_EQ(run.code, 0);
        EXPECT_THAT(run.out, HasSubstr("\nExamples:\n  orl "));
        EXPECT_EQ(run.error, "");
    }
}

TEST(Program, PrintsHelpWithAnExampleForEachCommandOnStandardOutput) {
    std::vector<std::string> const commands = commandsOfHelp();
    EXPECT_THAT(commands, UnorderedElementsAre("normalize", "convert", "info", "probe", "complete", "layout",
                                               "sequences"));
    for (std::string const& command : commands) {
        for (char const* help : {"--help", "-h"}) {
            Outcome const run = orl({command, help});
            EXPECT_EQ(run.code, 0);
            EXPECT_THAT(run.out, ContainsRegex("\nExamples?:\n  orl " + command + ' '));
            EXPECT_EQ(run.error, "");
        }
    }
}

TEST(Program, AnswersWrongUsageOnStandardErrorWithTwo) {
    std::vector<std::vector<std::string>> const wrong = {
        {},
        {"frobnicate"},
        {"normalize"},
        {"info"},
        {"normalize", "--loud", "cut.otio"},
        {"normalize", "one.otio", "two.otio"},
        {"normalize", "cut.otio", "-o"},
        {"info", "--strict", "cut.otio"},
        {"info", "one.otio", "normalize", "two.otio", "--strict"},
    };
    for (auto const& arguments : wrong) {
        Outcome const run = orl(arguments);
        EXPECT_EQ(run.code, 2) << testing::PrintToString(arguments);
        EXPECT_EQ(run.out, "");
        EXPECT_THAT(run.error, StartsWith("orl ERROR: "));
    }
}

TEST(Program, NamesTheCommandOrTheOptionThatItDoesNotKnow) {
    std::string const help = "\nTry orl --help.\n";
    EXPECT_EQ(orl({"frobnicate", "cut.otio"}).error, "orl ERROR: \"frobnicate\" : No such command" + help);
    EXPECT_EQ(orl({"[a\n]"}).error, "orl ERROR: \"[a\\n]\" : No such command" + help);
    EXPECT_EQ(orl({""}).error, "orl ERROR: \"\" : No such command" + help);
    EXPECT_EQ(orl({"--loud"}).error, "orl ERROR: \"--loud\" : No such option" + help);
    EXPECT_EQ(orl({}).error, "orl ERROR: A subcommand is required" + help);
}

TEST(Program, TakesAFileThatIsNamedLikeACommandOrAnOptionOrAList) {
    EXPECT_EQ(orl({"info", "[a,b]", "c"}).error, "orl ERROR: \"[a,b]\" : No such file or directory\n"
                                                 "orl ERROR: \"c\" : No such file or directory\n");
    EXPECT_EQ(orl({"normalize", "[a,b]"}).error, "orl ERROR: \"[a,b]\" : No such file or directory\n");
    EXPECT_EQ(orl({"info", "normalize"}).error, "orl ERROR: \"normalize\" : No such file or directory\n");
    EXPECT_EQ(orl({"normalize", "--", "--quiet"}).error,
              "orl ERROR: \"--quiet\" : No such file or directory\n");
}

TEST(Program, ShowsControlCharactersOfAFileNameHarmless) {
    Outcome const run = orl({"info", "a\n\x1b[2J\"b"});
    EXPECT_EQ(run.error, "orl ERROR: \"a\\n\\u001b[2J\\\"b\" : No such file or directory\n");
}

struct BrokenText {
    char const* meaning;
    std::string text;
    char const* reason;
};

[[maybe_unused]] void PrintTo(BrokenText const& broken, std::ostream* out) { *out << broken.meaning; }

class BrokenTextRow : public testing::TestWithParam<BrokenText> {};

TEST_P(BrokenTextRow, IsRefusedByEachCommandWithItsPlaceAndReason) {
    for (char const* command : {"convert", "normalize", "info"}) {
        Outcome const run = orl({command, "-"}, GetParam().text);
        EXPECT_EQ(run.code, 1);
        EXPECT_EQ(run.out, "");
        EXPECT_EQ(run.error, std::string("orl ERROR: \"-\" : ") + GetParam().reason + '\n');
    }
}

std::string nested(std::size_t levels) { return std::string(levels, '[') + std::string(levels, ']'); }

INSTANTIATE_TEST_SUITE_P(
    , BrokenTextRow,
    testing::Values(BrokenText{"Empty", "", "line 1, column 1: The document is empty."},
                    BrokenText{"MissingComma", "{\n  \"a\": 1,\n  \"b\": 2 \"c\": 3\n}",
                               "line 3, column 10: Missing a comma or '}' after an object member."},
                    BrokenText{"SecondRoot", "{}\n{}",
                               "line 2, column 1: The document root must not be followed by other values."},
                    BrokenText{"CarriageReturns", "{\r\n\"a\" 1}",
                               "line 2, column 5: Missing a colon after a name of object member."},
                    BrokenText{"ColumnsInBytes", "{\"\xc3\xa9\" 1}",
                               "line 1, column 7: Missing a colon after a name of object member."},
                    BrokenText{"TooDeep", "{\n \"a\": " + nested(1000) + "}",
                               "line 2, column 1006: nested deeper than 1000 levels"},
                    BrokenText{"ZeroByte", std::string("{}\n\0 {}", 7),
                               "line 2, column 1: a zero byte; the text behind it would be lost"},
                    BrokenText{"ZeroByteInAString", std::string("{\"a\": \"b\0c\"}", 12),
                               "line 1, column 9: a zero byte; the text behind it would be lost"},
                    BrokenText{"Utf16", std::string("\xff\xfe{\0}\0", 6),
                               "the text is in UTF-16; a timeline document is in UTF-8"},
                    BrokenText{"ByteOrderMarkIsNoColumn", "\xef\xbb\xbf{1}",
                               "line 1, column 2: Missing a name for object member."}),
    [](auto const& tested) { return tested.param.meaning; });

TEST(Program, TakesTheDeepestNestingThatTheLibraryTakes) {
    Outcome const run = orl({"normalize", "--quiet", "-"}, "{\"a\":" + nested(999) + "}");
    EXPECT_EQ(run.error, "");
    EXPECT_EQ(run.out, "{}\n");
}

TEST(Program, PassesOverAByteOrderMarkAndZeroBytesAtTheEnd) {
    std::string const timeline = R"({"OTIO_SCHEMA":"Timeline.1","name":"cut"})";
    Outcome const plain = orl({"normalize", "-"}, timeline);
    Outcome const marked = orl({"normalize", "-"}, "\xef\xbb\xbf" + timeline);
    Outcome const padded = orl({"normalize", "-"}, timeline + std::string("\n\0\0 \n\0", 6));

    EXPECT_EQ(marked.out, plain.out);
    EXPECT_EQ(marked.error, "");
    EXPECT_EQ(padded.out, plain.out);
    EXPECT_EQ(padded.error, "");
}

} // namespace ORL_0_81::tool
