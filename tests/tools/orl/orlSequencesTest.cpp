// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "orlSequencesCommand.h"
#include "tools/orl/orlToolSupport.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>

#include <unistd.h>

namespace ORL_0_81::tool {

using namespace std::string_literals;
using testing::HasSubstr;
using testing::StartsWith;
using testing::UnorderedElementsAre;

namespace {

std::vector<std::string> linesOf(std::string const& text) {
    std::vector<std::string> lines;
    std::istringstream in(text);
    for (std::string line; std::getline(in, line);) {
        lines.push_back(line);
    }
    return lines;
}

// A folder with a sequence, a single file and a hidden one.
void fill(std::filesystem::path const& folder) {
    for (char const* name : {"shot.1001.exr", "shot.1002.exr", "shot.1004.exr", "notes.txt", ".hidden"}) {
        writeFile(folder / name, "");
    }
}

} // namespace

TEST(Sequences, TellsFramesCountAndWhatIsMissing) {
    Outcome const run = orl({"sequences", "-"}, "shot.1042.exr\nshot.1001.exr\nreadme.txt\nshot.1003.exr\n"
                                                "shot.1002.exr\nshot.1044.exr\nb.1\nb.2\n");
    EXPECT_EQ(run.code, 0);
    EXPECT_EQ(run.error, "");
    EXPECT_EQ(run.out, "shot.%04d.exr  1001-1044 (5, missing 1004-1041, 1043)\n"
                       "readme.txt\n"
                       "b.%01d  1-2 (2)\n");
}

TEST(Sequences, WritesNothingButNamesWhenPlain) {
    EXPECT_EQ(orl({"sequences", "--plain", "-"}, "a.1\nx\na.2\n").out, "a.%01d\nx\n");
}

TEST(Sequences, WritesOneObjectALineForPrograms) {
    EXPECT_EQ(orl({"sequences", "--json", "-"}, "a.-001\na.0003\nx \"y\"\n").out,
              R"({"name":"a.%04d","first":-1,"last":3,"count":2,"missing":[[0,2]]})"
              "\n"
              R"({"name":"x \"y\""})"
              "\n");
}

TEST(Sequences, CountsNamesAndNotFrames) {
    EXPECT_EQ(orl({"sequences", "-"}, "a.1\na.01\na.3\n").out, "a.%01d  1-3 (3, missing 2)\n");
}

TEST(Sequences, ShowsASequenceOfOneFrameWithoutARange) {
    EXPECT_EQ(orl({"sequences", "-"}, "a.7\na.7\n").out, "a.%01d  7 (2)\n");
}

TEST(Sequences, TakesNamesThatEndWithAZeroByte) {
    Outcome const run = orl({"sequences", "-0", "--plain", "-"}, "a\n.1\0a\n.2\0\xff\0last"s);
    EXPECT_EQ(run.out, "a\n.%01d\0\xff\0last\0"s);
    EXPECT_EQ(orl({"sequences", "-0", "-"}, "a.1\0a.2"s).out, "a.%01d  1-2 (2)\n");
}

TEST(Sequences, LetsAnyByteOfANameThrough) {
    std::string name;
    for (int byte = 1; byte < 256; ++byte) {
        if (byte != '\n' && byte != '\\' && !(byte >= '0' && byte <= '9')) {
            name += static_cast<char>(byte);
        }
    }
    EXPECT_EQ(orl({"sequences", "--plain", "-"}, name + "1\n" + name + "2\n").out, name + "%01d\n");
    EXPECT_EQ(orl({"sequences", "-"}, name).out, name + "\n");
}

TEST(Sequences, PassesOverEmptyNamesAndTakesNoNamesAtAll) {
    EXPECT_EQ(orl({"sequences", "-"}, "\n\na\n\n").out, "a\n");
    Outcome const run = orl({"sequences", "-"}, "");
    EXPECT_EQ(run.code, 0);
    EXPECT_EQ(run.out, "");
    EXPECT_EQ(run.error, "");
}

TEST(Sequences, LeavesOutWhatTheFilterDoesNotFind) {
    EXPECT_EQ(orl({"sequences", "--filter", "exr$", "-"}, "a.1.exr\na.1.txt\na.2.exr\n").out,
              "a.%01d.exr  1-2 (2)\n");
}

TEST(Sequences, RefusesAFilterThatIsNoRegularExpression) {
    for (char const* input : {"a\n", ""}) {
        Outcome const run = orl({"sequences", "--filter", "[", "-"}, input);
        EXPECT_EQ(run.code, 1);
        EXPECT_EQ(run.out, "");
        EXPECT_THAT(run.error, StartsWith("orl ERROR: \"[\" : kRegexException: it is no regular expression"));
    }
}

TEST(Sequences, ListsTheFilesOfADirectoryHiddenOnesIncluded) {
    ScratchFolder const folder;
    fill(folder.path());
    std::filesystem::create_directory(folder / "below");
    writeFile(folder / "below/shot.1003.exr", "");
    Outcome const run = orl({"sequences", folder.path()});
    EXPECT_EQ(run.code, 0);
    EXPECT_THAT(linesOf(run.out),
                UnorderedElementsAre("shot.%04d.exr  1001-1004 (3, missing 1003)", "notes.txt", ".hidden"));
}

TEST(Sequences, GoesThroughAllDirectoriesBelowWhenAskedTo) {
    ScratchFolder const folder;
    fill(folder.path());
    for (char const* name : {"b", "a", "a/deep", "empty"}) {
        std::filesystem::create_directory(folder / name);
    }
    writeFile(folder / "b/x.1", "");
    writeFile(folder / "b/x.2", "");
    writeFile(folder / "a/deep/y", "");
    std::filesystem::create_directory_symlink(folder.path(), folder / "loop");
    Outcome const run = orl({"sequences", "--recursive", folder.path()});
    EXPECT_EQ(run.code, 0);
    EXPECT_EQ(run.error, "");
    std::vector<std::string> const lines = linesOf(run.out);
    ASSERT_EQ(lines.size(), 5U);
    EXPECT_EQ(lines[3], "a/deep/y");
    EXPECT_EQ(lines[4], "b/x.%01d  1-2 (2)");
    EXPECT_THAT(orl({"sequences", "-r", "--json", folder.path()}).out,
                HasSubstr(R"({"directory":"b","name":"x.%01d","first":1)"));
}

TEST(Sequences, TellsADirectoryThatIsNoneAndOneThatIsAFile) {
    ScratchFolder const folder;
    writeFile(folder / "file", "");
    for (std::string const& path : {(folder / "file").string(), (folder / "gone").string(), ""s}) {
        Outcome const run = orl({"sequences", path});
        EXPECT_EQ(run.code, 1);
        EXPECT_EQ(run.error, "orl ERROR: \"" + path + "\" : kDirectoryNotFound: no such directory\n");
    }
}

TEST(Sequences, GoesOnBehindADirectoryThatMayNotBeRead) {
    if (::geteuid() == 0) {
        GTEST_SKIP() << "root reads everything";
    }
    ScratchFolder const folder;
    std::filesystem::create_directory(folder / "a");
    std::filesystem::create_directory(folder / "b");
    writeFile(folder / "b/x", "");
    std::filesystem::permissions(folder / "a", std::filesystem::perms::none);
    Outcome const run = orl({"sequences", "-r", folder.path()});
    std::filesystem::permissions(folder / "a", std::filesystem::perms::owner_all);
    EXPECT_EQ(run.code, 1);
    EXPECT_EQ(run.out, "b/x\n");
    EXPECT_THAT(run.error, HasSubstr("Permission denied"));
}

TEST(Sequences, StopsWhenTheOutputCannotBeWritten) {
    ScratchFolder const folder;
    std::filesystem::create_directory(folder / "a");
    writeFile(folder / "a/x", "");
    writeFile(folder / "y", "");
    std::istringstream in;
    std::ostringstream out;
    std::ostringstream error;
    out.setstate(std::ios::badbit);
    EXPECT_EQ(runOrl({"sequences", "-r", folder.path()}, {in, out, error}), 1);
    EXPECT_EQ(linesOf(error.str()).size(), 1U) << error.str();
}

TEST(Sequences, TellsNoMoreThanTheFirstMissingRanges) {
    FoundSequence found{"a.%04d", {}};
    for (int i = 0; i < 23; ++i) {
        found.frames.push_back(2 * i);
    }
    EXPECT_EQ(
        toSequenceText("", found),
        "a.%04d  0-44 (23, missing 1, 3, 5, 7, 9, 11, 13, 15, 17, 19, 21, 23, 25, 27, 29, 31, 33, 35, 37, 39 "
        "and 2 more)");
}

TEST(Sequences, RefusesTwoFormsAtOnce) { EXPECT_EQ(orl({"sequences", "--json", "--plain", "-"}).code, 2); }

} // namespace ORL_0_81::tool
