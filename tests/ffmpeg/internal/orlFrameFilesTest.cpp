// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "internal/orlFrameFiles.h"

#include "support/Damage.h"

#include <filesystem>
#include <string>
#include <vector>

namespace {

using namespace ORL_0_81::media;

class FrameFilesTest : public testing::Test {
protected:
    void make(std::vector<std::string> const& names) const {
        for (std::string const& name : names) {
            (void)m_folder.write(name, "x");
        }
    }

    // "first-last name", or what there is instead
    std::string find(std::string const& name) const {
        FrameFiles files;
        switch (findFrameFiles(m_folder.path(name), files)) {
        case FrameSearch::kFound:
            return std::to_string(files.first) + " to " + std::to_string(files.last) + " from " +
                   std::filesystem::path(files.firstPath).filename().string();
        case FrameSearch::kNoSequenceName:
            return "no sequence name";
        case FrameSearch::kNoFrames:
            return "no frames";
        case FrameSearch::kNoAccess:
            return "no access";
        }
        return "";
    }

    Damage::Folder const m_folder;
};

TEST_F(FrameFilesTest, FindsTheFirstAndTheLastWithHolesBetween) {
    make({"a.1004.exr", "a.1001.exr", "a.1010.exr", "b.0001.exr", "a.1000.exr.bak", "xa.0001.exr", "a..exr"});
    EXPECT_EQ(find("a.%04d.exr"), "1001 to 1010 from a.1001.exr");
    EXPECT_EQ(find("a.%d.exr"), "1001 to 1010 from a.1001.exr");
    EXPECT_EQ(find("a.%4d.exr"), "1001 to 1010 from a.1001.exr");
}

TEST_F(FrameFilesTest, TheWidthIsTheLeastAndCountsTheSign) {
    make({"a.9.exr", "a.-001.exr", "a.0000.exr", "a.12345.exr", "a.-01.exr", "a.-12345.exr"});
    EXPECT_EQ(find("a.%04d.exr"), "-12345 to 12345 from a.-12345.exr");
    EXPECT_EQ(find("a.%05d.exr"), "-12345 to 12345 from a.-12345.exr");
    EXPECT_EQ(find("a.%06d.exr"), "-12345 to -12345 from a.-12345.exr");
    EXPECT_EQ(find("a.%07d.exr"), "no frames");
    EXPECT_EQ(find("a.%99999999999999999999d.exr"), "no frames");
}

TEST_F(FrameFilesTest, ANumberHasOneToNineDigits) {
    make({"a.123456789.exr", "a.1234567890.exr", "a.-.exr", "a.--1.exr", "a.1-.exr", "a.+1.exr", "a. 1.exr"});
    EXPECT_EQ(find("a.%d.exr"), "123456789 to 123456789 from a.123456789.exr");
}

TEST_F(FrameFilesTest, OfTwoFilesWithOneNumberTheShorterNameIsTheFrame) {
    make({"a.01.exr", "a.001.exr", "a.1.exr", "a.2.exr"});
    EXPECT_EQ(find("a.%d.exr"), "1 to 2 from a.1.exr");
    EXPECT_EQ(find("a.%02d.exr"), "1 to 1 from a.01.exr");
}

TEST_F(FrameFilesTest, NamesThatLookAlikeAreTheSame) {
    // An accented letter as one character and as two.
    make({"\xc3\xa9.1.exr", "e\xcc\x81.2.exr", "\xc3\xa9.3.exr", "e\xcc\x81.3.exr", "e.4.exr"});
    EXPECT_EQ(find("e\xcc\x81.%d.exr"), "1 to 3 from \xc3\xa9.1.exr");
    EXPECT_EQ(find("\xc3\xa9.%d.exr"), "1 to 3 from \xc3\xa9.1.exr");
    std::filesystem::create_directory(m_folder.path("\xc3\xa9"));
    make({"\xc3\xa9/a.7.exr"});
    EXPECT_EQ(find("e\xcc\x81/a.%d.exr"), "7 to 7 from a.7.exr");
    EXPECT_EQ(find("o\xcc\x81/a.%d.exr"), "no frames");
}

TEST_F(FrameFilesTest, TheFirstSymbolOfTheFileNameCounts) {
    make({"a.1.%d.exr", "a.2.%d.exr", "a.1.1.exr", "100%_1.exr"});
    EXPECT_EQ(find("a.%d.%d.exr"), "1 to 2 from a.1.%d.exr");
    EXPECT_EQ(find("100%_%d.exr"), "1 to 1 from 100%_1.exr");
    EXPECT_EQ(find("%d/a.exr"), "no sequence name");
    EXPECT_EQ(find("a.%f.exr"), "no sequence name");
    EXPECT_EQ(find("a.%"), "no sequence name");
    EXPECT_EQ(find("a.%4"), "no sequence name");
    EXPECT_EQ(find("a.exr"), "no sequence name");
}

TEST_F(FrameFilesTest, TheSymbolMayStandAlone) {
    make({"7", "8"});
    EXPECT_EQ(find("%d"), "7 to 8 from 7");
}

TEST_F(FrameFilesTest, DirectoriesAreNoFrames) {
    std::filesystem::create_directory(m_folder.path("a.0001.exr"));
    EXPECT_EQ(find("a.%04d.exr"), "no frames");
    make({"a.0002.exr"});
    EXPECT_EQ(find("a.%04d.exr"), "2 to 2 from a.0002.exr");
}

TEST_F(FrameFilesTest, ANameWithoutADirectoryIsLookedForInTheCurrentOne) {
    make({"a.0003.exr"});
    std::filesystem::path const before = std::filesystem::current_path();
    std::filesystem::current_path(m_folder.path(""));
    FrameFiles files;
    EXPECT_EQ(findFrameFiles("a.%04d.exr", files), FrameSearch::kFound);
    EXPECT_EQ(files.firstPath, "a.0003.exr");
    std::filesystem::current_path(before);
}

TEST_F(FrameFilesTest, AMissingDirectoryHasNoFrames) {
    EXPECT_EQ(find("none/a.%04d.exr"), "no frames");
    make({"file"});
    EXPECT_EQ(find("file/a.%04d.exr"), "no frames");
}

} // namespace
