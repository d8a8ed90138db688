// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include <orlFileSequenceUtils.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <string>
#include <system_error>
#include <thread>
#include <vector>

namespace {

using namespace ORL_0_81;
using namespace std::string_literals;
using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::IsEmpty;
using testing::UnorderedElementsAre;

namespace fs = std::filesystem;
using Names = std::vector<std::string>;

std::string text(String const& string) { return {string.data(), string.size()}; }

String string(std::string const& text) { return {text.data(), text.size()}; }

Names toNames(Vector<String> const& sequences) {
    Names result;
    for (unsigned long i = 0; i < sequences.size(); ++i) {
        result.push_back(text(sequences[i]));
    }
    return result;
}

List<String> toList(Names const& names) {
    List<String> list;
    for (std::string const& name : names) {
        list.append(string(name));
    }
    return list;
}

// What is found in a list, which must succeed.
Names found(Names const& names, std::string const& filter = "") {
    Vector<String> sequences;
    sequences.push_back("from before");
    EXPECT_EQ(FileSequenceUtils::getSequencesInFileList(toList(names), sequences, string(filter)),
              Status::kSuccess);
    return toNames(sequences);
}

Status statusOf(Names const& names, std::string const& filter) {
    Vector<String> sequences;
    sequences.push_back("from before");
    Status const status = FileSequenceUtils::getSequencesInFileList(toList(names), sequences, string(filter));
    EXPECT_TRUE(sequences.empty());
    return status;
}

Names numbered(std::string const& before, int first, int last, std::string const& after) {
    Names result;
    for (int number = first; number <= last; ++number) {
        result.push_back(before + std::to_string(number) + after);
    }
    return result;
}

Names operator+(Names left, Names const& right) {
    left.insert(left.end(), right.begin(), right.end());
    return left;
}

// A directory for one test.
class Directory {
public:
    Directory() : m_path(fs::temp_directory_path() / makeName()) { fs::create_directory(m_path); }
    Directory(Directory const&) = delete;
    Directory& operator=(Directory const&) = delete;
    ~Directory() {
        std::error_code ignored;
        fs::permissions(m_path, fs::perms::owner_all, ignored);
        fs::remove_all(m_path, ignored);
    }

    fs::path operator/(std::string const& name) const { return m_path / name; }
    String path(std::string const& name = "") const {
        return string(name.empty() ? m_path.string() : (m_path / name).string());
    }

    void make(Names const& names) const {
        for (std::string const& name : names) {
            EXPECT_TRUE(std::ofstream(m_path / name).good()) << name;
        }
    }

private:
    static std::string makeName() {
        static int count = 0;
        return "orlFileSequenceUtilsTest" + std::to_string(getpid()) + "_" + std::to_string(++count);
    }

    fs::path const m_path;
};

Names foundIn(Directory const& directory, std::string const& filter = "") {
    Vector<String> sequences;
    EXPECT_EQ(FileSequenceUtils::getSequencesInDirectory(directory.path(), sequences, string(filter)),
              Status::kSuccess);
    return toNames(sequences);
}

Status statusIn(String const& path) {
    Vector<String> sequences;
    sequences.push_back("from before");
    Status const status = FileSequenceUtils::getSequencesInDirectory(path, sequences, "");
    EXPECT_TRUE(sequences.empty());
    return status;
}

std::string sequenceNameOf(String const& path) {
    String name("from before");
    EXPECT_EQ(FileSequenceUtils::getSequenceName(path, name), Status::kSuccess);
    return text(name);
}

Status failureOf(String const& path) {
    String name("from before");
    Status const status = FileSequenceUtils::getSequenceName(path, name);
    EXPECT_TRUE(name.empty());
    return status;
}

// Names with and without a frame symbol

struct Recognition {
    std::string name;
    bool isSequence;
};

TEST(FileSequenceUtilsNames, AreSequenceNamesIfTheyHoldAFrameSymbol) {
    for (Recognition const& example : std::vector<Recognition>{{"a.%d.exr", true},
                                                               {"a.%4d.exr", true},
                                                               {"a.%04d.exr", true},
                                                               {"%d", true},
                                                               {"%%d", true},
                                                               {"100%%12d", true},
                                                               {"a.%00000000000000000000d", true},
                                                               {"%0\0%d"s, true},
                                                               {"a.1001.exr", false},
                                                               {"a.%f.exr", false},
                                                               {"", false},
                                                               {"100%.exr", false},
                                                               {"%", false},
                                                               {"%04", false},
                                                               {"%-4d", false},
                                                               {"%4D", false},
                                                               {"%0\\4d", false},
                                                               {"%0.4d", false}}) {
        bool result = !example.isSequence;
        EXPECT_EQ(FileSequenceUtils::isSequenceName(string(example.name), result), Status::kSuccess);
        EXPECT_EQ(result, example.isSequence) << example.name;
    }
}

struct Removal {
    std::string name;
    std::string rest;
};

TEST(FileSequenceUtilsNames, LoseTheirFrameSymbolsAndTheDotsThatTheseLeave) {
    for (Removal const& example :
         std::vector<Removal>{{"shot.%04d.exr", "shot.exr"},
                              {"shot.%04d", "shot"},
                              {"%04d.exr", "exr"},
                              {"", ""},
                              {"%04d", ""},
                              {".%04d", ""},
                              {".%04d.", ""},
                              {"..", ""},
                              // One pass makes two dots of three.
                              {"a.%04d.%04d.exr", "a..exr"},
                              {"a...b", "a..b"},
                              {"a....b", "a..b"},
                              // Without a symbol only a dot at each end and the backslashes go.
                              {"plain.exr", "plain.exr"},
                              {"..plain..", "plain"},
                              {"...plain...", ".plain."},
                              {".hidden", "hidden"},
                              {"a\\b\\\\c", "abc"},
                              {"a\\..b", "a.b"},
                              {".\\.a", "a"},
                              // All symbols go, but those that only come about by a removal stay.
                              {"%d%2d%03d", ""},
                              {"%%dd", "%d"},
                              {"%\\d", "%d"},
                              {"x(%04d)[%d]", "x()[]"},
                              {"a\n%d\0b"s, "a\n\0b"s}}) {
        String result("from before");
        EXPECT_EQ(FileSequenceUtils::removeFrameSymbols(string(example.name), result), Status::kSuccess);
        EXPECT_EQ(text(result), example.rest) << example.name;
    }
}

TEST(FileSequenceUtilsNames, CanBeTheirOwnResult) {
    String name("shot.%04d.exr");
    FileSequenceUtils::removeFrameSymbols(name, name);
    EXPECT_EQ(text(name), "shot.exr");
}

// Lists: what a family is

struct Example {
    char const* why;
    Names names;
    Names sequences;
};

void expectAll(std::vector<Example> const& examples) {
    for (Example const& example : examples) {
        EXPECT_THAT(found(example.names), ElementsAreArray(example.sequences)) << example.why;
    }
}

TEST(FileSequenceUtilsFamilies, NeedTwoMembers) {
    expectAll({{"one numbered name", {"a.1.exr"}, {"a.1.exr"}},
               {"two", {"a.1.exr", "a.2.exr"}, {"a.%01d.exr"}},
               {"the same twice", {"a.1.exr", "a.1.exr"}, {"a.%01d.exr"}},
               {"no digits", {"readme.txt"}, {"readme.txt"}},
               {"no digits, twice", {"readme.txt", "readme.txt"}, {"readme.txt", "readme.txt"}}});
}

TEST(FileSequenceUtilsFamilies, MayHaveGaps) {
    expectAll({{"1 2 3 7 8", {"a.1.exr", "a.2.exr", "a.3.exr", "a.7.exr", "a.8.exr"}, {"a.%01d.exr"}},
               {"far apart", {"a.1.exr", "a.999999999.exr"}, {"a.%01d.exr"}}});
}

TEST(FileSequenceUtilsFamilies, ArePaddedToTheirNarrowestFrame) {
    expectAll({{"growing", {"a.9.exr", "a.10.exr", "a.11.exr"}, {"a.%01d.exr"}},
               {"outgrown", {"a.099.exr", "a.100.exr", "a.1000.exr"}, {"a.%03d.exr"}},
               {"the widest first", {"a.1000.exr", "a.099.exr"}, {"a.%03d.exr"}},
               {"nine", {"000000001", "000000002"}, {"%09d"}},
               {"ten with the sign", {"-000000001", "-000000002"}, {"%010d"}}});
}

TEST(FileSequenceUtilsFamilies, CountTheMinusSignForTheWidth) {
    expectAll({{"around zero", {"a.-001.exr", "a.0000.exr", "a.0001.exr"}, {"a.%04d.exr"}},
               {"narrower than the others", {"a.-1.exr", "a.001.exr"}, {"a.%02d.exr"}}});
}

TEST(FileSequenceUtilsFamilies, TakeAHyphenBehindALetterForASign) {
    expectAll({{"-1 -2", {"shot-001.exr", "shot-002.exr"}, {"shot%04d.exr"}},
               {"with and without", {"shot-001.exr", "shot002.exr"}, {"shot%03d.exr"}},
               {"at the beginning", {"-1", "-2", "3"}, {"%01d"}}});
}

TEST(FileSequenceUtilsFamilies, TakeAHyphenBehindADigitForASeparator) {
    expectAll({{"the right field", {"12-34.exr", "12-35.exr"}, {"12-%02d.exr"}},
               {"the left field", {"12-34.exr", "13-34.exr"}, {"%02d-34.exr"}},
               {"then a sign", {"12--34.exr", "12--35.exr"}, {"12-%03d.exr"}},
               {"a literal hyphen and a sign find each other", {"12-34", "12--35"}, {"12-%02d"}}});
}

TEST(FileSequenceUtilsFamilies, FindTheirOwnInPlacesThatAreNoFieldsThere) {
    expectAll(
        {{"behind a hyphen and a sign", {"a--1", "a-2"}, {"a-%01d"}},
         {"only from the front's side", {"a-2", "a--1"}, {"a-2", "a--1"}},
         {"at the beginning", {"--1", "-2"}, {"-%01d"}},
         {"in part of a run", {"a1234567891", "a21"}, {"a%01d1"}},
         {"in part of a run, with a sign", {"a1234567891", "a-21"}, {"a%02d1"}},
         {"a sign behind a run", {"a1234567891", "a123456789-2"}, {"a123456789%01d"}},
         {"in the middle of a longer run", {"a1234567891111111112", "a12345678932"}, {"a123456789%01d2"}},
         {"a sign in the middle of a longer run",
          {"a1234567891111111112", "a123456789-32"},
          {"a123456789%02d2"}},
         {"without a sign in part of a run", {"a--1234567891", "a-21"}, {"a-%01d1"}}});
}

TEST(FileSequenceUtilsFamilies, DivideALongRunOfDigitsIntoFieldsOfNine) {
    expectAll({{"ten", {"a.1234567890.exr", "a.1234567891.exr"}, {"a.123456789%01d.exr"}},
               {"the first nine", {"a.1234567890.exr", "a.1234567880.exr"}, {"a.%09d0.exr"}},
               {"fourteen", {"20190321103355", "20190321103400"}, {"201903211%05d"}},
               {"a signed one", {"a-1234567890", "a-1234567891"}, {"a-123456789%01d"}},
               {"nineteen", {"1234567890123456781", "1234567890123456782"}, {"123456789012345678%01d"}}});
}

TEST(FileSequenceUtilsFamilies, AreClaimedByTheNameThatComesFirst) {
    // The example of a version that changes beside the frame.
    EXPECT_THAT(found({"shot_v2.1001.exr", "shot_v2.1002.exr", "shot_v2.1003.exr", "shot_v3.1001.exr"}),
                ElementsAre("shot_v2.%04d.exr", "shot_v3.1001.exr"));
    // Another order, another result: the version has as many names, but the frame is to its right.
    EXPECT_THAT(found({"v1.1", "v2.1", "v1.2"}), ElementsAre("v1.%01d", "v2.1"));
    EXPECT_THAT(found({"v2.1", "v1.1", "v1.2"}), ElementsAre("v%01d.1", "v1.2"));
}

TEST(FileSequenceUtilsFamilies, StandInTheOrderOfTheirFirstNames) {
    EXPECT_THAT(found({"b2", "x", "a1", "b1", "a2", "c9"}), ElementsAre("b%01d", "x", "a%01d", "c9"));
}

// Lists: which field is the frame

TEST(FileSequenceUtilsField, IsTheRightmostIfNothingTellsThemApart) {
    EXPECT_THAT(found({"a1_1", "a1_2", "a2_1"}), ElementsAre("a1_%01d", "a2_1"));
    EXPECT_THAT(found({"1.1", "1.2", "2.1"}), ElementsAre("1.%01d", "2.1"));
}

TEST(FileSequenceUtilsField, IsTheOneBehindADotIfBothFindAsMany) {
    EXPECT_THAT(found({"a.1_1.exr", "a.1_2.exr", "a.2_1.exr", "a.2_2.exr"}),
                ElementsAre("a.%01d_1.exr", "a.%01d_2.exr"));
    // Even where its run is shorter.
    EXPECT_THAT(found({"a.1_1.exr", "a.1_2.exr", "a.3_1.exr"}), ElementsAre("a.%01d_1.exr", "a.1_2.exr"));
    // A dot at the beginning counts, and a sign stands where its field begins.
    EXPECT_THAT(found({".1_1", ".1_2", ".2_1"}), ElementsAre(".%01d_1", ".1_2"));
    EXPECT_THAT(found({"a.-1_1", "a.-1_2", "a.-2_1"}), ElementsAre("a.%02d_1", "a.-1_2"));
    // A dot at the beginning of the name, but the field stands before it.
    EXPECT_THAT(found({"1.x_1", "1.x_2", "2.x_1"}), ElementsAre("1.x_%01d", "2.x_1"));
}

TEST(FileSequenceUtilsField, StaysTheOneBehindADotAgainstAnotherBehindADot) {
    EXPECT_THAT(found({"a.1.1", "a.1.2", "a.2.1"}), ElementsAre("a.1.%01d", "a.2.1"));
}

TEST(FileSequenceUtilsField, FindsMoreNamesWithoutAShorterRun) {
    // Three against two.
    EXPECT_THAT(found({"a1_1", "a1_2", "a2_1", "a3_1"}), ElementsAre("a%01d_1", "a1_2"));
    // Three, but they leave gaps and the two are consecutive.
    EXPECT_THAT(found({"a1_1", "a1_2", "a3_1", "a5_1"}), ElementsAre("a1_%01d", "a%01d_1"));
    // As long a run is enough.
    EXPECT_THAT(found({"a1_1", "a1_2", "a2_1", "a5_1"}), ElementsAre("a%01d_1", "a1_2"));
    // No dot overturns a higher count.
    EXPECT_THAT(found({"a.1_1", "a.1_2", "a.1_3", "a.2_1"}), ElementsAre("a.1_%01d", "a.2_1"));
}

TEST(FileSequenceUtilsField, HasItsRunBrokenByEqualFrames) {
    // On the left 1 1 2 3, whose longest run is 2 although its members are 4: enough against 1 2 3.
    EXPECT_THAT(found({"a1_1", "a1_2", "a1_3", "a01_1", "a2_1", "a3_1"}), ElementsAre("a%01d_1", "a1_%01d"));
    // 1 2 2 3 has only a run of 1.
    EXPECT_THAT(found({"a1_1", "a1_2", "a1_3", "a2_1", "a02_1", "a3_1"}), ElementsAre("a1_%01d", "a%01d_1"));
}

TEST(FileSequenceUtilsField, CountsOnlyNamesThatNobodyHasClaimed) {
    // x1_1 to x4_1 would be four, but the first turn takes x1_1.
    EXPECT_THAT(found({"x1_0", "x1_1", "x1_2", "x1_3", "x1_4", "x1_5", "x2_1", "x3_1", "x4_1"}),
                ElementsAre("x1_%01d", "x%01d_1"));
    EXPECT_THAT(found({"y1_0", "y1_1", "y2_1", "y2_2", "y2_3"}), ElementsAre("y1_%01d", "y2_%01d"));
}

TEST(FileSequenceUtilsField, LosesAtEveryTurnWhileItsNamesBecomeFewer) {
    Names names;
    Names expected;
    for (int shot = 10; shot <= 2000; shot += 10) {
        for (std::string const version : {"_v1", "_v2"}) {
            names.push_back("sh" + std::to_string(10000 + shot) + version);
        }
        expected.push_back("sh" + std::to_string(10000 + shot) + "_v%01d");
    }
    EXPECT_THAT(found(names), ElementsAreArray(expected));
}

TEST(FileSequenceUtilsField, WinsAsSoonAsItsRunIsLongEnoughForWhatIsLeft) {
    // Shots by tens with two versions each, but those of the last ones are missing: nothing but the shot is
    // left then.
    Names names;
    Names expected;
    for (int shot = 100; shot < 800; shot += 10) {
        names.push_back("sh" + std::to_string(shot) + "_v1");
        if (shot < 400) {
            names.push_back("sh" + std::to_string(shot) + "_v2");
            expected.push_back("sh" + std::to_string(shot) + "_v%01d");
        }
    }
    expected.push_back("sh%03d_v1");
    EXPECT_THAT(found(names), ElementsAreArray(expected));
}

// Lists: dates, filters, special characters

TEST(FileSequenceUtilsDates, KeepNamesSingle) {
    for (std::string const name :
         {"2019-03-21 at 10.22.3", "Screen 2019-03-21 at 10.22.3", "12019-03-21 at 10.22.3",
          "2019x03y21z10u22v3", "2019-03-21---------10.22.3", "2019\n03\n21\n10\n22\n3"}) {
        EXPECT_THAT(found({name + "3", name + "4"}), ElementsAre(name + "3", name + "4"));
    }
}

TEST(FileSequenceUtilsDates, AreLookedForToTheLetter) {
    struct NearMiss {
        Names names;
        std::string sequence;
    };
    for (NearMiss const& example : std::vector<NearMiss>{
             {{"019-03-21 at 10.22.33", "019-03-21 at 10.22.34"}, "019-03-21 at 10.22.%02d"},
             {{"2019-3-21 at 10.22.33", "2019-3-21 at 10.22.34"}, "2019-3-21 at 10.22.%02d"},
             {{"2019--03-21 at 10.22.33", "2019--03-21 at 10.22.34"}, "2019--03-21 at 10.22.%02d"},
             {{"2019-03-21----------10.22.33", "2019-03-21----------10.22.34"},
              "2019-03-21----------10.22.%02d"},
             {{"2019-03-21 at 10.22.3", "2019-03-21 at 10.22.4"}, "2019-03-21 at 10.22.%01d"}}) {
        EXPECT_THAT(found(example.names), ElementsAre(example.sequence));
    }
}

TEST(FileSequenceUtilsDates, DoNotKeepANameFromAnEarlierFamily) {
    // The first has one minute digit too few to be a date.
    EXPECT_THAT(found({"2019-03-21 at 10.2.33", "2019-03-21 at 10.22.33"}),
                ElementsAre("2019-03-21 at 10.%01d.33"));
    EXPECT_THAT(found({"2019-03-21 at 10.22.33", "2019-03-21 at 10.2.33"}),
                ElementsAre("2019-03-21 at 10.22.33", "2019-03-21 at 10.2.33"));
}

TEST(FileSequenceUtilsFilter, LetsPassWhatItIsFoundIn) {
    Names const names = {"a.1.exr", "a.2.exr", "a.1.jpg", "b.txt", ""};
    for (std::string const filter : {"", ".*", "^", "$", ".*.*", "^.*", "[^z]*", "(?:)"}) {
        EXPECT_THAT(found(names, filter), ElementsAre("a.%01d.exr", "a.1.jpg", "b.txt")) << filter;
    }
    for (std::string const filter : {"exr$", "\\.exr", ".*\\.exr$", "exr.*", "e[xy]r", ".*\\.(exr|tif)$",
                                     "r$", "^a.*exr", "^a\\.[[:digit:]]{1}\\.exr$"}) {
        EXPECT_THAT(found(names, filter), ElementsAre("a.%01d.exr")) << filter;
    }
    EXPECT_THAT(found(names, "^b.txt$"), ElementsAre("b.txt"));
    EXPECT_THAT(found(names, "EXR"), IsEmpty());
    EXPECT_THAT(found(names, "^exr"), IsEmpty());
}

TEST(FileSequenceUtilsFilter, KnowsOnlyTheEndsOfTheNameAndNoLines) {
    EXPECT_THAT(found({"a\nb"}, "^b"), IsEmpty());
    EXPECT_THAT(found({"a\nb"}, "a$"), IsEmpty());
    EXPECT_THAT(found({"a\nb"}, "^a\nb$"), ElementsAre("a\nb"));
    EXPECT_THAT(found({"a\nb"}, "(^b|a$)"), IsEmpty());
}

TEST(FileSequenceUtilsFilter, DoesNotKeepANameFromAnEarlierFamily) {
    EXPECT_THAT(found({"a.1", "a.2", "a.3"}, "1"), ElementsAre("a.%01d"));
    EXPECT_THAT(found({"a.2", "a.1", "a.3"}, "1"), ElementsAre("a.%01d"));
    EXPECT_THAT(found({"a.2", "a.3", "a.1"}, "1"), ElementsAre("a.1"));
}

TEST(FileSequenceUtilsFilter, IsRefusedIfItIsMalformed) {
    for (std::string const filter : {"(", "[", "a{2", "*a", "\\", "a)b", "(?<n>a)"}) {
        EXPECT_EQ(statusOf({"a"}, filter), Status::kRegexException) << filter;
    }
    EXPECT_EQ(statusOf({"a"}, std::string(300000, '(')), Status::kRegexException);
}

TEST(FileSequenceUtilsFilter, IsNotLookedAtForAnEmptyList) {
    EXPECT_EQ(statusOf({}, ""), Status::kNoFilenamesFound);
    EXPECT_EQ(statusOf({}, "("), Status::kNoFilenamesFound);
}

TEST(FileSequenceUtilsFilter, FindsWhatTakesExponentialTimeToRuleOut) {
    std::string const name = std::string(60, 'a') + "b";
    EXPECT_THAT(found({name, "aaa"}, "^(a+)+$"), testing::Each("aaa"));
}

TEST(FileSequenceUtilsCharacters, ThatMeanSomethingInPatternsAreOrdinary) {
    for (char const c : std::string(".()[]?*+^|${}-%/\n\0\x7F\x80\xFF"s)) {
        std::string const before = std::string("x") + c + "y";
        Names const names = {before + "1" + c, before + "2" + c, "x.y1."};
        Names const singles = c == '.' ? Names{} : Names{"x.y1."};
        EXPECT_THAT(found(names), ElementsAreArray(Names{before + "%01d" + c} + singles)) << int(c);
    }
    EXPECT_THAT(found({"(-?[0-9]{1,9})1", "(-?[0-9]{1,9})2"}), ElementsAre("(-?[0-9]{1,9})%01d"));
    EXPECT_THAT(found({"\xD9\xA1"
                       "1",
                       "\xD9\xA2"
                       "1"}),
                ElementsAre("\xD9\xA1"
                            "1",
                            "\xD9\xA2"
                            "1"));
}

TEST(FileSequenceUtilsCharacters, OfEmptyNamesAreNone) {
    EXPECT_THAT(found({"", "", "a", ""}), ElementsAre("a"));
    EXPECT_THAT(found({""}), IsEmpty());
}

// Where the engines of two standard libraries don't agree on an escape, only one of them is held to it.
TEST(FileSequenceUtilsBackslash, IsDeletedFromSingleNames) {
    // A name that doesn't match its own pattern: the backslash escapes the letter.
#ifdef __GLIBCXX__
    EXPECT_THAT(found({"a\\_1", "a\\_2"}), ElementsAre("a_1", "a_2"));
#endif
    EXPECT_THAT(found({"a\\b"}), ElementsAre("ab"));
    EXPECT_THAT(found({"\\"}), ElementsAre(""));
    // At the end it escapes the pattern's own end.
    EXPECT_THAT(found({"a1\\", "a2\\"}), ElementsAre("a1", "a2"));
    EXPECT_THAT(found({"a\\2019-03-21 at 10.22.33"}), ElementsAre("a2019-03-21 at 10.22.33"));
}

TEST(FileSequenceUtilsBackslash, BeforeADotIsABackslashBeforeAnyCharacter) {
    EXPECT_THAT(found({"a\\.1", "a\\.2"}), ElementsAre("a.%01d"));
    EXPECT_THAT(found({"a\\.1", "a\\x2", "ax3"}), ElementsAre("a.%01d", "ax3"));
#ifdef __GLIBCXX__
    EXPECT_THAT(found({"a\\_2", "a\\.1"}), ElementsAre("a_2", "a.1"));
#endif
    EXPECT_THAT(found({"a\\.1"}), ElementsAre("a.1"));
}

TEST(FileSequenceUtilsBackslash, BeforeADigitCostsTheName) {
    // Its parenthesis is escaped, and another one left over.
    EXPECT_THAT(found({"a\\1", "b"}), ElementsAre("b"));
    EXPECT_THAT(found({"b", "a\\1"}), ElementsAre("b"));
    // An earlier family can claim it all the same.
    EXPECT_THAT(found({"a\\.1", "a\\22"}), ElementsAre("a.%01d"));
}

TEST(FileSequenceUtilsBackslash, MakesMalformedPatternsThatCostTheName) {
    for (std::string const name : {"a\\x1", "a\\(1", "a\\[1", "a\\)1"}) {
        EXPECT_THAT(found({name, "b1", "b2"}), ElementsAre("b%01d")) << name;
    }
}

TEST(FileSequenceUtilsBackslash, ThatChangesTheNumberOfCapturesKeepsTheNameSingle) {
    EXPECT_THAT(found({"\\(x\\)1", "\\(x\\)2"}), ElementsAre("(x)1", "(x)2"));
}

// Lists: size

TEST(FileSequenceUtilsSize, OfNamesIsOfNoConsequence) {
    std::string const megabyte(1000000, 'x');
    EXPECT_THAT(found({megabyte + "1", megabyte + "2", megabyte}), ElementsAre(megabyte + "%01d", megabyte));
    std::string const digits(1000000, '7');
    Names const both = found({digits + "a1", digits + "a2", digits + "a1"});
    EXPECT_THAT(both, ElementsAre(digits + "a%01d"));
    Names const same = found({digits, digits});
    EXPECT_THAT(same, ElementsAre(digits.substr(1) + "%01d"));
}

TEST(FileSequenceUtilsSize, OfNamesIsOfNoConsequenceForAFilter) {
    std::string const megabyte(1000000, 'x');
    EXPECT_THAT(found({megabyte + "1", megabyte + "2"}, "1$"), ElementsAre(megabyte + "%01d"));
    EXPECT_THAT(found({megabyte}, "x"), ElementsAre(megabyte));
    EXPECT_THAT(found({megabyte}, "(x)y"), IsEmpty());
    EXPECT_THAT(found({std::string(30000, 'x') + "y"}, "x.*y"), testing::SizeIs(1));
}

TEST(FileSequenceUtilsSize, OfANameWithABackslashCostsNoMoreThanTheName) {
    std::string const megabyte(1000000, 'x');
    Names const names = found({megabyte + "\\.1", "a1", megabyte + "\\.2", "a2"});
    EXPECT_THAT(names, testing::Contains("a%01d"));
}

TEST(FileSequenceUtilsSize, OfTheStackIsOfNoConsequence) {
    std::thread([] {
        std::string const name = std::string(40000, 'x') + "y";
        EXPECT_THAT(found({name}, "x.*y$"), ElementsAre(name));
        EXPECT_THAT(found({"abc"}, std::string(300, '(') + "abc" + std::string(300, ')')),
                    ElementsAre("abc"));
        EXPECT_THAT(found({"a\\." + std::string(2000, 'x') + "1", "a\\." + std::string(2000, 'x') + "2"}),
                    ElementsAre("a." + std::string(2000, 'x') + "%01d"));
    }).join();
}

TEST(FileSequenceUtilsLists, AreLeftAsTheyAre) {
    List<String> const list = toList({"a\\1", "b1", "b2", "c"});
    Vector<String> sequences;
    FileSequenceUtils::getSequencesInFileList(list, sequences, "");
    Names after;
    List<String>::Iterator const end = list.end();
    for (List<String>::Iterator name = list.begin(); name != end; ++name) {
        after.push_back(text(*name));
    }
    EXPECT_THAT(after, ElementsAre("a\\1", "b1", "b2", "c"));
}

TEST(FileSequenceUtilsLists, GiveTheSameOnManyThreadsAtATime) {
    List<String> const list = toList(numbered("a.", 1, 500, ".exr") + numbered("b\\.", 1, 20, ""));
    std::vector<std::thread> threads;
    std::vector<Names> results(4);
    for (Names& result : results) {
        threads.emplace_back([&list, &result] {
            Vector<String> sequences;
            FileSequenceUtils::getSequencesInFileList(list, sequences, ".*[.].*");
            result = toNames(sequences);
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_THAT(results, testing::Each(ElementsAre("a.%01d.exr", "b.%01d")));
}

// Directories

TEST(FileSequencesInDirectory, GivesItsFamiliesAndSingleNames) {
    Directory const directory;
    directory.make(numbered("shot.", 1001, 1010, ".exr") + Names{"readme.txt", ".hidden"});
    EXPECT_THAT(foundIn(directory), UnorderedElementsAre("shot.%04d.exr", "readme.txt", ".hidden"));
    EXPECT_THAT(foundIn(directory, "txt$"), ElementsAre("readme.txt"));
    EXPECT_THAT(foundIn(directory, "nothing"), IsEmpty());
}

TEST(FileSequencesInDirectory, ListsRegularFilesAndLinksToThemOnly) {
    Directory const directory;
    directory.make({"file"});
    fs::create_directory(directory / "folder");
    fs::create_symlink("file", directory / "link");
    fs::create_symlink("link", directory / "link to link");
    fs::create_symlink("folder", directory / "link to folder");
    fs::create_symlink("nowhere", directory / "dangling");
    fs::create_symlink("loop", directory / "loop");
    ASSERT_EQ(mkfifo((directory / "fifo").c_str(), 0600), 0);
    int const socketDescriptor = socket(AF_UNIX, SOCK_STREAM, 0);
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    std::string const socketPath = (directory / "socket").string();
    if (socketPath.size() < sizeof address.sun_path) {
        socketPath.copy(address.sun_path, socketPath.size());
        EXPECT_EQ(bind(socketDescriptor, reinterpret_cast<sockaddr*>(&address), sizeof address), 0);
    }
    EXPECT_THAT(foundIn(directory), UnorderedElementsAre("file", "link", "link to link"));
    close(socketDescriptor);
}

TEST(FileSequencesInDirectory, CanBeALinkToOne) {
    Directory const directory;
    fs::create_directory(directory / "folder");
    directory.make({"folder/a1", "folder/a2"});
    fs::create_symlink("folder", directory / "link");
    Vector<String> sequences;
    EXPECT_TRUE(FileSequenceUtils::getSequencesInDirectory(directory.path("link"), sequences, ""));
    EXPECT_THAT(toNames(sequences), ElementsAre("a%01d"));
}

TEST(FileSequencesInDirectory, IsNotFoundIfItIsNone) {
    Directory const directory;
    directory.make({"file"});
    EXPECT_EQ(statusIn(directory.path("file")), Status::kDirectoryNotFound);
    EXPECT_EQ(statusIn(directory.path("nowhere")), Status::kDirectoryNotFound);
    EXPECT_EQ(statusIn(""), Status::kDirectoryNotFound);
    EXPECT_EQ(statusIn(string(text(directory.path()) + '\0')), Status::kDirectoryNotFound);
    EXPECT_EQ(statusIn(string(std::string(100000, 'x'))), Status::kDirectoryNotFound);
}

TEST(FileSequencesInDirectory, HasNoNamesIfItHasNoFiles) {
    Directory const directory;
    fs::create_directory(directory / "folder");
    EXPECT_EQ(statusIn(directory.path()), Status::kNoFilenamesFound);
}

TEST(FileSequencesInDirectory, RefusesAMalformedFilterOnlyIfThereAreNames) {
    Directory const directory;
    Vector<String> sequences;
    EXPECT_EQ(FileSequenceUtils::getSequencesInDirectory(directory.path(), sequences, "("),
              Status::kNoFilenamesFound);
    directory.make({"a"});
    EXPECT_EQ(FileSequenceUtils::getSequencesInDirectory(directory.path(), sequences, "("),
              Status::kRegexException);
}

TEST(FileSequencesInDirectory, NormalizesItsNames) {
    Directory const directory;
    directory.make({"\xC3\xA9.1", "e\xCC\x81.2"});
    EXPECT_THAT(foundIn(directory), ElementsAre("e\xCC\x81.%01d"));
}

TEST(FileSequencesInDirectory, LeavesNamesThatAreNoUtf8AsTheyAre) {
    Directory const directory;
    directory.make({"\xFF.1", "\xFF.2", "\xC3"});
    EXPECT_THAT(foundIn(directory), UnorderedElementsAre("\xFF.%01d", "\xC3"));
}

// One single file in its directory

TEST(FileSequenceUtilsFile, BelongsToTheSequenceOfItsFamily) {
    Directory const directory;
    directory.make({"shot.1001.exr", "shot.1002.exr", "shot.5.exr", "other.7.exr", "plain"});
    EXPECT_EQ(sequenceNameOf(directory.path("shot.1001.exr")), "shot.%01d.exr");
    EXPECT_EQ(sequenceNameOf(directory.path("shot.5.exr")), "shot.%01d.exr");
    EXPECT_EQ(sequenceNameOf(directory.path("other.7.exr")), "other.7.exr");
    EXPECT_EQ(sequenceNameOf(directory.path("plain")), "plain");
}

TEST(FileSequenceUtilsFile, IsToldWithoutItsDirectory) {
    Directory const directory;
    fs::create_directory(directory / "dir");
    directory.make({"dir/shot.1001.exr", "dir/shot.1002.exr"});
    EXPECT_EQ(sequenceNameOf(directory.path("dir/shot.1001.exr")), "shot.%04d.exr");
}

TEST(FileSequenceUtilsFile, IsItselfIfItHoldsADate) {
    Directory const directory;
    directory.make({"2019-03-21 at 10.22.33", "2019-03-21 at 10.22.34"});
    EXPECT_EQ(sequenceNameOf(directory.path("2019-03-21 at 10.22.33")), "2019-03-21 at 10.22.33");
}

TEST(FileSequenceUtilsFile, WithoutADirectoryHasNone) {
    // A bare name is looked up where the process stands, but its directory is the empty path.
    fs::path const before = fs::current_path();
    Directory const directory;
    directory.make({"a.1"});
    fs::current_path(fs::path(text(directory.path())));
    EXPECT_EQ(failureOf("a.1"), Status::kDirectoryNotFound);
    EXPECT_EQ(sequenceNameOf("./a.1"), "a.1");
    fs::current_path(before);
}

TEST(FileSequenceUtilsFile, IsNotFoundIfItIsNone) {
    Directory const directory;
    EXPECT_EQ(failureOf(directory.path()), Status::kFileNotFound);
    EXPECT_EQ(failureOf(directory.path("nowhere")), Status::kFileNotFound);
    EXPECT_EQ(failureOf(""), Status::kFileNotFound);
    directory.make({"file"});
    EXPECT_EQ(failureOf(directory.path("file/")), Status::kFileNotFound);
    EXPECT_EQ(failureOf(string(text(directory.path("file")) + '\0')), Status::kFileNotFound);
    EXPECT_EQ(failureOf(string("/" + std::string(1000000, 'x'))), Status::kFileNotFound);
}

TEST(FileSequenceUtilsFile, IsLookedForInFormD) {
    Directory const directory;
    directory.make({"e\xCC\x81.1", "e\xCC\x81.2"});
    EXPECT_EQ(sequenceNameOf(directory.path("\xC3\xA9.1")), "e\xCC\x81.%01d");
    // On this file system the other spelling is another file, which the normalised path doesn't lead to.
    directory.make({"\xC3\xA4.1"});
    EXPECT_EQ(failureOf(directory.path("\xC3\xA4.1")), Status::kFileNotFound);
}

TEST(FileSequenceUtilsFile, WithABackslashFitsNoName) {
    Directory const directory;
    directory.make({"a\\b"});
    EXPECT_EQ(failureOf(directory.path("a\\b")), Status::kNoSuitableSequenceNameFound);
}

TEST(FileSequenceUtilsFile, FitsOnlyTheFirstSymbolOfANameWithTwo) {
    Directory const directory;
    directory.make({"%d.1", "%d.2"});
    // The sequence is "%d.%01d", of which the first symbol becomes a number and the second stays a text.
    EXPECT_EQ(failureOf(directory.path("%d.1")), Status::kNoSuitableSequenceNameFound);
    directory.make({"5.%01d"});
    EXPECT_THAT((Names{"%d.%01d", "5.%01d"}), testing::Contains(sequenceNameOf(directory.path("5.%01d"))));
}

TEST(FileSequenceUtilsFile, ThatReadsLikeASequenceNameIsItself) {
    Directory const directory;
    directory.make({"a.%04d.exr"});
    EXPECT_EQ(sequenceNameOf(directory.path("a.%04d.exr")), "a.%04d.exr");
}

} // namespace
