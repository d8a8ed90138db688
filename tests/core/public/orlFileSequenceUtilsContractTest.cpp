// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "support/orlLibrarySequences.h"
#include "support/orlRandomNames.h"
#include "support/orlSlowSequences.h"

#include <gtest/gtest.h>

#include <string>
#include <thread>
#include <vector>

// What the operations on names and lists promise. Each row is asked of the library and of the plain rules
// that the random comparison trusts.

namespace {

using namespace ORL_0_81;
using namespace orlTest;
using namespace std::string_literals;

using Names = std::vector<std::string>;

struct ListRow {
    Names names;
    Names expected;
    std::string filter = "";
};

template <class Sequences>
class FileSequenceUtilsContract : public testing::Test {
protected:
    static void finds(std::vector<ListRow> const& rows) {
        for (ListRow const& row : rows) {
            Names found = {"what was here before"};
            EXPECT_STREQ(Sequences::getSequencesInFileList(row.names, found, row.filter).getStr(), "kSuccess")
                << asLiterals(row.names);
            EXPECT_EQ(asLiterals(found), asLiterals(row.expected))
                << asLiterals(row.names) << ", filter " << asLiteral(row.filter);
        }
    }

    static void fails(Names const& names, std::string const& filter, Status::Type code) {
        Names found = {"what was here before"};
        EXPECT_STREQ(Sequences::getSequencesInFileList(names, found, filter).getStr(), Status(code).getStr())
            << asLiteral(filter);
        EXPECT_EQ(asLiterals(found), "{}") << asLiteral(filter);
    }

    static void keepsSingle(Names const& names) { finds({{names, names}}); }

    static void holdsSymbol(Names const& names, bool expected) {
        for (std::string const& name : names) {
            bool result = !expected;
            EXPECT_TRUE(Sequences::isSequenceName(name, result).success()) << asLiteral(name);
            EXPECT_EQ(result, expected) << asLiteral(name);
        }
    }

    struct NameRow {
        std::string name;
        std::string expected;
    };

    static void strips(std::vector<NameRow> const& rows) {
        for (NameRow const& row : rows) {
            std::string result = "what was here before";
            EXPECT_TRUE(Sequences::removeFrameSymbols(row.name, result).success()) << asLiteral(row.name);
            EXPECT_EQ(asLiteral(result), asLiteral(row.expected)) << asLiteral(row.name);
        }
    }
};

struct ImplementationNames {
    template <class Sequences>
    static std::string GetName(int) {
        return std::is_same<Sequences, LibrarySequences>::value ? "Library" : "PlainRules";
    }
};

using Implementations = testing::Types<LibrarySequences, SlowSequences>;
TYPED_TEST_SUITE(FileSequenceUtilsContract, Implementations, ImplementationNames);

// Frame symbols in a name.

TYPED_TEST(FileSequenceUtilsContract, APercentSignWithDigitsAndALetterDIsAFrameSymbol) {
    this->holdsSymbol({"a.%d.exr", "a.%4d.exr", "a.%04d.exr", "%d", "%%d", "d%d", "%1%2d",
                       "%123456789012345678d", "a%d%f", "[%d]", "a\n%d", "a\0%d"s, "\xff%d", "%04d\\"},
                      true);
}

TYPED_TEST(FileSequenceUtilsContract, AnythingElseIsNone) {
    this->holdsSymbol({"",
                       "a.1001.exr",
                       "a.%f.exr",
                       "100%.exr",
                       "%",
                       "%4",
                       "d",
                       "d%",
                       "%D",
                       "% d",
                       "%-4d",
                       "%+4d",
                       "%.4d",
                       "%4.d",
                       "%0x4d",
                       "%0\\4d",
                       "%\\d",
                       "%\xd9\xa3"
                       "d",
                       "%0\0"
                       "4d"s,
                       "%0\n4d",
                       "####"},
                      false);
}

TYPED_TEST(FileSequenceUtilsContract, AnEmptyNameStaysEmptyWithoutItsFrameSymbols) {
    this->strips({{"", ""}});
}

TYPED_TEST(FileSequenceUtilsContract, AFrameSymbolLeavesWithOneDotBesideIt) {
    this->strips({{"shot.%04d.exr", "shot.exr"},
                  {"shot.%04d", "shot"},
                  {"%04d.exr", "exr"},
                  {"%04d", ""},
                  {".%04d", ""},
                  {".%04d.", ""},
                  {"shot_%d.exr", "shot_.exr"},
                  {"shot%12dexr", "shotexr"},
                  {"a\0.%d.b"s, "a\0.b"s},
                  {"a\n.%d.\nb", "a\n.\nb"}});
}

TYPED_TEST(FileSequenceUtilsContract, AllFrameSymbolsOfANameGoAndTheDotsAreTidiedInOnePass) {
    this->strips({{"a.%04d.%04d.exr", "a..exr"},
                  {"a.%d%4d.exr", "a.exr"},
                  {"a%d.%d.%db", "a.b"},
                  {"a.%d.%d.%d.b", "a..b"},
                  {"a...b", "a..b"},
                  {"a....b", "a..b"},
                  {"a.....b", "a...b"}});
}

TYPED_TEST(FileSequenceUtilsContract, ASymbolThatOnlyComesToBeWhenAnotherGoesStays) {
    this->strips({{"%%dd", "%d"}, {"%0%d4d", "%04d"}, {"%0\\4d", "%04d"}});
}

TYPED_TEST(FileSequenceUtilsContract, ANameWithoutASymbolLosesOneDotAtEachEndAndItsBackslashes) {
    this->strips({{"shot.1001.exr", "shot.1001.exr"},
                  {"100%.exr", "100%.exr"},
                  {"a(1)[2]{3}^$|?*+", "a(1)[2]{3}^$|?*+"},
                  {".hidden", "hidden"},
                  {".hidden.", "hidden"},
                  {"..a..", "a"},
                  {"...a...", ".a."},
                  {".", ""},
                  {"..", ""},
                  {"...", ""},
                  {"....", ""},
                  {".....", "."},
                  {"a\\b", "ab"},
                  {"\\", ""},
                  {"a\\.b", "a.b"},
                  {"a.\\.b", "a.b"},
                  {"\\.a", "a"}});
}

// What becomes of a list.

TYPED_TEST(FileSequenceUtilsContract, AnEmptyListHasNoNamesWhateverTheFilter) {
    for (char const* const filter : {"", ".*", "("}) {
        this->fails({}, filter, Status::kNoFilenamesFound);
    }
}

TYPED_TEST(FileSequenceUtilsContract, AMalformedFilterFailsAndEmptiesTheResult) {
    for (char const* const filter : {"(", ")", "[", "*", "+a", "\\", "a{", "a{2,1}", "(?<a)", "[[:none:]]"}) {
        this->fails({"a.1.exr", "a.2.exr"}, filter, Status::kRegexException);
    }
}

TYPED_TEST(FileSequenceUtilsContract, AFamilyNeedsTwoMembers) {
    this->keepsSingle({"a.1.exr"});
    this->keepsSingle({"a.1.exr", "b.1.exr", "a.1.tif"});
    this->finds({{{"a.1.exr", "a.2.exr"}, {"a.%01d.exr"}}});
}

TYPED_TEST(FileSequenceUtilsContract, TwoEqualNamesWithANumberAreAFamilyOfTwo) {
    this->finds({{{"a.1.exr", "a.1.exr"}, {"a.%01d.exr"}}, {{"0007", "0007", "0007"}, {"%04d"}}});
}

TYPED_TEST(FileSequenceUtilsContract, ANameWithoutDigitsStaysAsOftenAsItIsThere) {
    this->keepsSingle({"readme.txt"});
    this->keepsSingle({"readme.txt", "readme.txt", "-", ".", "..", "a-b", "%d"});
}

TYPED_TEST(FileSequenceUtilsContract, EmptyNamesAreDropped) {
    this->finds({{{""}, {}}, {{"", "", ""}, {}}, {{"", "a1", "", "a2", ""}, {"a%01d"}}, {{"", "b"}, {"b"}}});
}

TYPED_TEST(FileSequenceUtilsContract, GapsDontSplitAFamily) {
    this->finds({{{"a.1.exr", "a.2.exr", "a.3.exr", "a.7.exr", "a.8.exr"}, {"a.%01d.exr"}},
                 {{"a.1.exr", "a.999999999.exr"}, {"a.%01d.exr"}}});
}

TYPED_TEST(FileSequenceUtilsContract, TheNarrowestFrameIsThePadding) {
    this->finds({{{"a.9.exr", "a.10.exr", "a.11.exr"}, {"a.%01d.exr"}},
                 {{"a.099.exr", "a.100.exr", "a.1000.exr"}, {"a.%03d.exr"}},
                 {{"a.1000.exr", "a.100.exr"}, {"a.%03d.exr"}},
                 {{"a.1", "a.01", "a.001"}, {"a.%01d"}},
                 {{"123456789", "987654321"}, {"%09d"}}});
}

TYPED_TEST(FileSequenceUtilsContract, AMinusSignCountsForTheWidth) {
    this->finds({{{"a.-001.exr", "a.0000.exr", "a.0001.exr"}, {"a.%04d.exr"}},
                 {{"-5", "-6"}, {"%02d"}},
                 {{"5", "-5"}, {"%01d"}},
                 {{"-123456789", "-123456788"}, {"%010d"}}});
}

TYPED_TEST(FileSequenceUtilsContract, AHyphenAfterALetterIsASign) {
    this->finds({{{"shot-001.exr", "shot-002.exr"}, {"shot%04d.exr"}}, {{"shot-1", "shot2"}, {"shot%01d"}}});
}

TYPED_TEST(FileSequenceUtilsContract, AHyphenAfterADigitIsASeparator) {
    this->finds(
        {{{"12-34.exr", "12-35.exr"}, {"12-%02d.exr"}}, {{"12-34.exr", "13-34.exr"}, {"%02d-34.exr"}}});
    this->keepsSingle({"12-34.exr"});
}

TYPED_TEST(FileSequenceUtilsContract, OfTwoHyphensTheSecondIsASign) {
    this->finds(
        {{{"a--1", "a--2"}, {"a-%02d"}}, {{"1--2", "1--3"}, {"1-%02d"}}, {{"--1", "--2"}, {"-%02d"}}});
}

TYPED_TEST(FileSequenceUtilsContract, APatternClaimsNamesWhoseOwnFieldsLieElsewhere) {
    this->finds({{{"a--1", "a-1"}, {"a-%01d"}},      // "-1" behind "a-", and "1" behind it
                 {{"a-1", "a--1"}, {"a-1", "a--1"}}, // "--1" is no frame
                 {{"5-3", "5--3"}, {"5-%01d"}},
                 {{"a1234567890", "a123456789-5"}, {"a123456789%01d"}},
                 {{"a1234567890", "a123456789-5", "a12345678912"}, {"a123456789%01d"}},
                 {{"1234567890", "10"}, {"%01d0"}},
                 {{"1234567890", "-10"}, {"%02d0"}},
                 {{"10", "1234567890"}, {"10", "1234567890"}}});
}

TYPED_TEST(FileSequenceUtilsContract, MoreThanNineDigitsAreSeveralFieldsSideBySide) {
    this->finds({{{"a.1234567890.exr", "a.1234567891.exr"}, {"a.123456789%01d.exr"}},
                 {{"a.1234567890.exr", "a.2234567890.exr"}, {"a.%09d0.exr"}},
                 {{"12345678901234567890", "12345678901234567891"}, {"123456789012345678%02d"}},
                 {{"12345678901234567890", "12345678911234567890"}, {"123456789%09d90"}},
                 {{"-1234567890", "-1234567891"}, {"-123456789%01d"}}});
    this->keepsSingle({"a999999999", "a1000000000"});
}

TYPED_TEST(FileSequenceUtilsContract, TheFieldWithTheMostNamesWins) {
    this->finds({{{"shot_v2.1001.exr", "shot_v2.1002.exr", "shot_v2.1003.exr", "shot_v3.1001.exr"},
                  {"shot_v2.%04d.exr", "shot_v3.1001.exr"}},
                 {{"1_1", "2_1", "3_1"}, {"%01d_1"}},
                 {{"1_1", "1_2", "2_1", "3_1"}, {"%01d_1", "1_2"}}});
}

TYPED_TEST(FileSequenceUtilsContract, WithNothingToTellFieldsApartTheRightmostStays) {
    this->finds({{{"1_1", "1_1"}, {"1_%01d"}},
                 {{"1_1", "1_2", "2_1", "2_2"}, {"1_%01d", "2_%01d"}},
                 {{"a.1.1", "a.1.1"}, {"a.1.%01d"}},
                 {{"a.1.1", "a.2.1", "a.1.2"}, {"a.1.%01d", "a.2.1"}}});
}

TYPED_TEST(FileSequenceUtilsContract, AFieldBehindADotWinsWhereTheOthersHaveNoMoreNames) {
    this->finds({{{"a.1_1.exr", "a.1_2.exr", "a.2_1.exr", "a.2_2.exr"}, {"a.%01d_1.exr", "a.%01d_2.exr"}},
                 {{"a.-1_1", "a.-1_1"}, {"a.%02d_1"}},
                 {{"a.1_1", "a.1_2", "a.9_1"}, {"a.%01d_1", "a.1_2"}}});
}

TYPED_TEST(FileSequenceUtilsContract, ADotNeverOutweighsMoreNames) {
    this->finds({{{"a.1_1", "a.1_2", "a.1_3", "a.2_1"}, {"a.1_%01d", "a.2_1"}},
                 {{"a.1_1", "a.1_5", "a.1_9", "a.2_1"}, {"a.1_%01d", "a.2_1"}}});
}

TYPED_TEST(FileSequenceUtilsContract, ADotAtTheVeryBeginningCounts) {
    this->finds({{{".1_1", ".1_1"}, {".%01d_1"}}, {{"1_1", "1_1"}, {"1_%01d"}}});
}

TYPED_TEST(FileSequenceUtilsContract, MoreNamesWithAShorterRunLose) {
    this->finds({{{"a1_5", "a1_4", "a6_5", "a3_5"}, {"a1_%01d", "a%01d_5"}}});
}

TYPED_TEST(FileSequenceUtilsContract, MoreNamesWithAnEqualRunWin) {
    // To the left 1, 2, 4, 5, 6 and to the right 5, 6, 7: both have a run of 2.
    this->finds({{{"1_5", "1_6", "1_7", "2_5", "4_5", "5_5", "6_5"}, {"%01d_5", "1_%01d"}}});
    // To the right 5, 6, 7, 8: a run of 3.
    this->finds({{{"1_5", "1_6", "1_7", "1_8", "2_5", "4_5", "5_5", "6_5"}, {"1_%01d", "%01d_5"}}});
}

TYPED_TEST(FileSequenceUtilsContract, EqualFramesBreakARun) {
    // To the left 0, 1, 1, 2 with a run of 1; to the right 5, 6, 7 with a run of 2.
    this->finds({{{"0_5", "0_6", "0_7", "1_5", "01_5", "2_5"}, {"0_%01d", "%01d_5"}}});
    // Zero is its own negative.
    this->finds({{{"0_5", "0_6", "0_7", "-0_5", "1_5", "-1_5"}, {"0_%01d", "%01d_5"}}});
}

TYPED_TEST(FileSequenceUtilsContract, TheRunOfAFieldThatWonByItsDotIsTheOneToBeat) {
    // From the right: 1, 2, 3 (run 2); then 1, 5, 9 behind a dot (run 0); then 1, 2, 5, 8 (run 1).
    this->finds({{{"c1.1_1", "c1.1_2", "c1.1_3", "c1.5_1", "c1.9_1", "c2.1_1", "c5.1_1", "c8.1_1"},
                  {"c%01d.1_1", "c1.1_%01d", "c1.%01d_1"}}});
}

TYPED_TEST(FileSequenceUtilsContract, AWinnerByItsCountForgetsTheDotOfTheOneBefore) {
    // From the right: behind a dot, 1 name; 2 names; behind a dot, 2 names.
    this->finds({{{"a.1b2.3", "a.1b4.3", "a.5b2.3"}, {"a.%01db2.3", "a.1b4.3"}}});
}

TYPED_TEST(FileSequenceUtilsContract, FramesOfNegativeNumbersCountForTheRun) {
    // To the right -1, 0, 1 with a run of 2; to the left four names with a run of 1.
    this->finds({{{"1_-1", "1_0", "1_1", "2_-1", "5_-1", "8_-1"}, {"1_%01d", "%01d_-1"}}});
}

TYPED_TEST(FileSequenceUtilsContract, ResultsStandInTheOrderOfTheFirstNameOfEach) {
    this->finds({{{"z.1", "b", "a.1", "z.2", "a", "a.2", "b"}, {"z.%01d", "b", "a.%01d", "a", "b"}}});
}

TYPED_TEST(FileSequenceUtilsContract, TheResultDependsOnTheOrderOfTheNames) {
    this->finds({{{"1_1", "2_1", "1_2"}, {"1_%01d", "2_1"}},
                 {{"2_1", "1_1", "1_2"}, {"%01d_1", "1_2"}},
                 {{"1_2", "2_1", "1_1"}, {"1_%01d", "2_1"}}});
}

TYPED_TEST(FileSequenceUtilsContract, NamesDifferInCaseAndInEveryOtherByte) {
    this->keepsSingle({"A.1", "a.2", "a.3x", "a.4y"});
    this->keepsSingle({"caf\xc3\xa9.1", "cafe\xcc\x81.2"});
}

TYPED_TEST(FileSequenceUtilsContract, CharactersThatMeanSomethingInPatternsAreOrdinaryInNames) {
    for (char const c : "()[]{}?*+^|$.-!\"#&',/:;<=>@`~ "s) {
        std::string const part(1, c);
        if (c != '-') {
            this->finds({{{"a" + part + "b" + part + "1", "a" + part + "b" + part + "2"},
                          {"a" + part + "b" + part + "%01d"}},
                         {{"1" + part, "2" + part}, {"%01d" + part}}});
        }
        if (c != '.') {
            this->keepsSingle({"a" + part + "_1", "ax_2", "aa_3", "a_4"});
        }
    }
    this->keepsSingle({"a.1", "ab2"});
    this->keepsSingle({"a+1", "aa2"});
    this->keepsSingle({"a|b1", "a2"});
}

TYPED_TEST(FileSequenceUtilsContract, TextsOfTheNotationInANameAreOrdinary) {
    this->finds({{{"(-?[0-9]{1,9})1", "(-?[0-9]{1,9})2"}, {"(-?[0-9]{1,9})%01d"}},
                 {{"a%04d.1", "a%04d.2"}, {"a%04d.%01d"}},
                 {{"a%04d", "a%05d"}, {"a%%02dd"}},
                 {{"$&1", "$&2"}, {"$&%01d"}},
                 {{"$1", "$2"}, {"$%01d"}},
                 {{"a$1$`$'$$1", "a$1$`$'$$2"}, {"a$1$`$'$$%01d"}}});
}

TYPED_TEST(FileSequenceUtilsContract, OnlyTheAsciiDigitsAreDigits) {
    this->keepsSingle(
        {"a.\xd9\xa1", "a.\xd9\xa2", "a.\xef\xbc\x91", "a.\xef\xbc\x92", "a\xc2\xb2", "a\xc2\xb3"});
}

TYPED_TEST(FileSequenceUtilsContract, EveryOtherByteIsOrdinary) {
    this->finds({{{"a\n.1", "a\n.2"}, {"a\n.%01d"}},
                 {{"a\0.1"s, "a\0.2"s}, {"a\0.%01d"s}},
                 {{"\0"
                   "1"s,
                   "\0"
                   "2"s},
                  {"\0%01d"s}},
                 {{"\xff\xfe.1", "\xff\xfe.2"}, {"\xff\xfe.%01d"}},
                 {{"\r1\r", "\r2\r"}, {"\r%01d\r"}},
                 {{"\n-1", "\n-2"}, {"\n%02d"}},
                 {{"1\n-1", "1\n-2"}, {"1\n%02d"}},
                 {{"\xe6\x97\xa5-1", "\xe6\x97\xa5-2"}, {"\xe6\x97\xa5%02d"}}});
    this->keepsSingle({"a1", "a2\n"});
    this->keepsSingle({"a1", "\na2"});
    this->keepsSingle({"a.1\0b"s, "a.2\0c"s, "a.3"});
}

// The filter.

TYPED_TEST(FileSequenceUtilsContract, TheFilterIsSearchedForAnywhereInAName) {
    Names const names = {"a.1.exr", "a.2.exr", "b.mov", "c.exr.txt"};
    this->finds({{names, {"a.%01d.exr", "b.mov", "c.exr.txt"}, ""},
                 {names, {"a.%01d.exr", "b.mov", "c.exr.txt"}, ".*"},
                 {names, {"a.%01d.exr"}, "exr$"},
                 {names, {"a.%01d.exr", "c.exr.txt"}, "exr"},
                 {names, {"a.%01d.exr", "b.mov"}, "^[ab]"},
                 {names, {"b.mov"}, "(mov|tif)$"},
                 {names, {}, "EXR"},
                 {names, {}, "^exr"},
                 {names, {"c.exr.txt"}, "(t)x\\1"}});
}

TYPED_TEST(FileSequenceUtilsContract, TheFiltersAnchorsAreTheEndsOfTheName) {
    this->finds({{{"a\nb", "b"}, {"b"}, "^b"},
                 {{"a.exr\n", "a.exr\nb", "a.exr"}, {"a.exr"}, "exr$"},
                 {{"a\r", "a"}, {"a"}, "a$"},
                 {{"\n", "\n\n", "x"}, {"\n", "\n\n", "x"}, ".*"}});
}

TYPED_TEST(FileSequenceUtilsContract, ACallThatFiltersEverythingAwaySucceeds) {
    this->finds({{{"a.1", "a.2", "b"}, {}, "x"}, {{"a"}, {}, "^$"}});
}

TYPED_TEST(FileSequenceUtilsContract, TheFilterIsAskedOnlyOfTheFirstNameOfAFamily) {
    this->finds(
        {{{"a.1", "a.2"}, {"a.%01d"}, "1"}, {{"a.2", "a.1"}, {"a.1"}, "1"}, {{"a.2", "a.3"}, {}, "1"}});
}

// Dates.

TYPED_TEST(FileSequenceUtilsContract, NamesWithADateAndATimeAreNeverGrouped) {
    this->keepsSingle({"2019-03-21 at 10.22.33", "2019-03-21 at 10.22.34", "2019-03-21 at 10.22.33"});
    this->keepsSingle({"Screen 2019-03-21 at 10.22.33.1.png", "Screen 2019-03-21 at 10.22.33.2.png"});
    this->keepsSingle({"2019-03-21T10:22:33", "2019-03-21T10:22:34"});
    this->keepsSingle({"2019a03b21c10d22e33", "2019a03b21c10d22e34"});
    this->keepsSingle({"12019-03-21.10.22.331", "12019-03-21.10.22.332"});
    this->keepsSingle({"2019-03-21.........10.22.33", "2019-03-21.........10.22.34"});
    this->keepsSingle({"2019\n03\n21\n10\n22\n33", "2019\n03\n21\n10\n22\n34"});
}

TYPED_TEST(FileSequenceUtilsContract, NamesThatJustMissADateAndATimeAreGrouped) {
    this->finds({{{"2019-03-21..........10.22.33", "2019-03-21..........10.22.34"},
                  {"2019-03-21..........10.22.%02d"}}, // ten characters between
                 {{"2019-03-2110.22.33", "2019-03-2110.22.34"}, {"2019-03-2110.22.%02d"}},
                 {{"2019-03-21 at 10.22", "2019-03-21 at 10.23"}, {"2019-03-21 at 10.%02d"}},
                 {{"019-03-21 at 10.22.33", "019-03-21 at 10.22.34"}, {"019-03-21 at 10.22.%02d"}},
                 {{"2019-3-21 at 10.22.33", "2019-3-21 at 10.22.34"}, {"2019-3-21 at 10.22.%02d"}},
                 {{"2019--03-21 at 10.22.33", "2019--03-21 at 10.22.34"}, {"2019--03-21 at 10.22.%02d"}},
                 {{"2019\xe5\xb9\xb4"
                   "03-21 at 10.22.33",
                   "2019\xe5\xb9\xb4"
                   "03-21 at 10.22.34"},
                  {"2019\xe5\xb9\xb4"
                   "03-21 at 10.22.%02d"}}}); // three bytes between
}

TYPED_TEST(FileSequenceUtilsContract, ADateIsClaimedByThePatternOfAnEarlierName) {
    this->finds({{{"2019-03-21 at 10.22.3", "2019-03-21 at 10.22.33"}, {"2019-03-21 at 10.22.%01d"}},
                 {{"2019-03-21 at 10.22.33", "2019-03-21 at 10.22.3"},
                  {"2019-03-21 at 10.22.33", "2019-03-21 at 10.22.3"}}});
}

TYPED_TEST(FileSequenceUtilsContract, TheFilterComesBeforeTheDate) {
    this->finds({{{"2019-03-21 at 10.22.33", "x"}, {"x"}, "x"}});
}

// Backslashes.

TYPED_TEST(FileSequenceUtilsContract, ABackslashIsLostFromASingleName) {
    this->finds({{{"a\\b.txt"}, {"ab.txt"}},
                 {{"\\"}, {""}},
                 {{"\\\\\\", "a\\"}, {"", "a"}},
                 {{"2019-03-21\\10.22.33"}, {"2019-03-2110.22.33"}}});
}

TYPED_TEST(FileSequenceUtilsContract, ANameThatItsOwnPatternMissesBecauseOfABackslashIsSingle) {
    this->finds({{{"a\\d1", "a\\d2"}, {"ad1", "ad2"}},
                 {{"a\\\\1", "a\\\\2"}, {"a1", "a2"}},
                 {{"a1\\", "a2\\"}, {"a1", "a2"}},
                 {{"1\\,", "2\\,"}, {"1,", "2,"}},
                 {{"1\\*", "2\\+", "3\\?", "4\\|", "5\\$", "6\\^"}, {"1*", "2+", "3?", "4|", "5$", "6^"}}});
}

TYPED_TEST(FileSequenceUtilsContract, ABackslashBeforeADotLetsAnyCharacterStandThere) {
    this->finds({{{"\\.1", "\\.2"}, {".%01d"}},
                 {{"\\.1", "\\x2", "\\\\3", "xx4"}, {".%01d", "xx4"}},
                 {{"\\.1", "\\-2", "\\12"}, {".%01d"}},
                 {{"\\.1", "\\\n2"}, {".1", "\n2"}},
                 {{"a\\.b.07", "a\\:b.8"}, {"a.b.%01d"}},
                 {{"\\.1"}, {".1"}}});
}

TYPED_TEST(FileSequenceUtilsContract, ANameWhosePatternIsMalformedIsLeftOutAlone) {
    this->finds({{{"a\\1"}, {}},
                 {{"\\-1"}, {}},
                 {{"\\(1", "a.1", "a.2"}, {"a.%01d"}},
                 {{"a.1", "\\(1", "\\)2", "a.2", "\\[3", "\\{4"}, {"a.%01d"}},
                 {{"b", "\\(1", "\\(1", "c"}, {"b", "c"}}});
}

TYPED_TEST(FileSequenceUtilsContract, ANameWithABackslashIsClaimedLikeAnyOther) {
    this->finds({{{"\\.1", "\\(2"}, {".%01d"}}, {{"\\(2", "\\.1"}, {".1"}}});
}

TYPED_TEST(FileSequenceUtilsContract, TheFieldsOfANameWithABackslashCompeteLikeAnyOther) {
    // More names with a shorter run, as many behind a dot, more with as long a run.
    this->finds({{{"\\.1_1", "\\.1_2", "\\.5_1", "\\.9_1"}, {".1_%01d", ".%01d_1"}},
                 {{"\\.1_1", "\\.1_2", "\\.2_1"}, {".%01d_1", ".1_2"}},
                 {{"\\.a1_1", "\\.a1_2", "\\.a2_1"}, {".a1_%01d", ".a2_1"}},
                 {{"\\.a1_1", "\\.a1_2", "\\.a2_1", "\\.a5_1"}, {".a%01d_1", ".a1_2"}}});
}

// The library alone.

TEST(FileSequenceUtilsContractOfTheLibrary, FrameSymbolsCanBeRemovedInPlace) {
    String name("shot.%04d.exr");
    EXPECT_TRUE(FileSequenceUtils::removeFrameSymbols(name, name).success());
    EXPECT_STREQ(name.c_str(), "shot.exr");
}

TEST(FileSequenceUtilsContractOfTheLibrary, TheListIsLeftAsItWas) {
    List<String> names;
    for (char const* const name : {"a.1", "a\\b", "", "a.2"}) {
        names.append(name);
    }
    Vector<String> found;
    EXPECT_TRUE(FileSequenceUtils::getSequencesInFileList(names, found, "").success());
    std::string rest;
    for (String const& name : names) {
        rest += toStandard(name) + ";";
    }
    EXPECT_EQ(rest, "a.1;a\\b;;a.2;");
}

TEST(FileSequenceUtilsContractOfTheLibrary, ManyThreadsFindTheSameInOneList) {
    List<String> names;
    for (int i = 0; i < 300; ++i) {
        std::string const number = std::to_string(i);
        names.append(("shot" + number + ".0001.exr").c_str());
        names.append(("shot7." + number + ".exr").c_str());
        names.append(("a\\." + number).c_str());
    }
    Vector<String> expected;
    ASSERT_TRUE(FileSequenceUtils::getSequencesInFileList(names, expected, "[0-9]").success());
    std::vector<Vector<String>> found(4);
    std::vector<std::thread> threads;
    for (Vector<String>& own : found) {
        threads.emplace_back([&names, &own] {
            for (int i = 0; i < 5; ++i) {
                FileSequenceUtils::getSequencesInFileList(names, own, "[0-9]");
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    for (Vector<String> const& own : found) {
        EXPECT_EQ(toStandard(own), toStandard(expected));
    }
}

} // namespace
