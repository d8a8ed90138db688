// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "orlCoreVersionInfo.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <string>

namespace {

using namespace ORL_0_81;
using testing::MatchesRegex;

VersionInfo sample() {
    VersionInfo info{};
    info.name = "orlCore";
    info.familyPrefix = "orl";
    info.major = "0";
    info.minor = "81";
    info.patch = "1";
    info.buildDate = "a";
    info.buildNumber = "12";
    info.commit = "0123456789abcdef0123456789abcdef01234567";
    info.branch = "d";
    return info;
}

TEST(VersionInfo, TheLineHasItsShape) {
    EXPECT_EQ(getVersionLine(sample()),
              "         orlCore: orl version 0.81.1 (a, build 12, commit 0123456, branch d)");
}

TEST(VersionInfo, TheNameIsPaddedToSixteenColumns) {
    VersionInfo info = sample();
    info.name = "sixteen-columns.";
    EXPECT_EQ(getVersionLine(info).find(": orl"), 16U);
    info.name = "x";
    EXPECT_EQ(getVersionLine(info).find(": orl"), 16U);
    info.name = "seventeen-columns";
    EXPECT_EQ(getVersionLine(info).find("seventeen-columns: orl"), 0U) << "nothing is cut";
}

TEST(VersionInfo, NumbersLoseTheirLeadingZeros) {
    VersionInfo info = sample();
    info.minor = "081";
    info.patch = "01";
    info.buildNumber = "007";
    EXPECT_EQ(getVersionLine(info),
              "         orlCore: orl version 0.81.1 (a, build 7, commit 0123456, branch d)");
}

TEST(VersionInfo, AShortCommitIsRightAlignedInSeven) {
    VersionInfo info = sample();
    info.commit = "abc";
    EXPECT_EQ(getVersionLine(info),
              "         orlCore: orl version 0.81.1 (a, build 12, commit     abc, branch d)");
}

TEST(VersionInfo, ACommitOfNothingIsSevenBlanks) {
    VersionInfo info = sample();
    info.commit = "";
    EXPECT_EQ(getVersionLine(info),
              "         orlCore: orl version 0.81.1 (a, build 12, commit        , branch d)");
}

TEST(VersionInfo, ATextWithoutALeadingNumberIsZero) {
    VersionInfo info = sample();
    info.patch = "beta";
    info.buildNumber = "";
    EXPECT_EQ(getVersionLine(info),
              "         orlCore: orl version 0.81.0 (a, build 0, commit 0123456, branch d)");
}

TEST(VersionInfo, TheBuildsValuesFitTheNamespace) {
    EXPECT_STREQ(kVersionInfo.major, "0");
    EXPECT_STREQ(kVersionInfo.minor, "81");
    EXPECT_THAT(kVersionInfo.buildDate,
                MatchesRegex("[A-Z][a-z]{2} [0-9]{2}/[0-9]{2}/[0-9]{4}, [0-9]{12}|unknown"));
    EXPECT_THAT(kVersionInfo.commit, MatchesRegex("[0-9a-f]{40}|unknown"));
}

// What a program that links the shared library prints on standard error, with the variable set as told.
std::string bannerWith(std::string const& environment) {
    std::string const command =
        "env -u MARLINE_DUMP_VERSION_INFO " + environment + " '" ORL_BANNER_PROGRAM "' 2>&1";
    std::string output;
    if (FILE* const pipe = popen(command.c_str(), "r")) {
        char text[512];
        while (std::fgets(text, sizeof text, pipe)) {
            output += text;
        }
        pclose(pipe);
    }
    return output;
}

TEST(VersionInfo, LoadingTheLibraryPrintsOneLineWhenAskedTo) {
    std::string const line = getVersionLine(kVersionInfo) + "\n";
    EXPECT_EQ(bannerWith("MARLINE_DUMP_VERSION_INFO=1"), line);
    EXPECT_EQ(bannerWith("MARLINE_DUMP_VERSION_INFO=2"), line);
    EXPECT_EQ(bannerWith("MARLINE_DUMP_VERSION_INFO=-1"), line);
    EXPECT_EQ(bannerWith("MARLINE_DUMP_VERSION_INFO=1x"), line);
    EXPECT_EQ(bannerWith("MARLINE_DUMP_VERSION_INFO='  +007'"), line);
}

TEST(VersionInfo, LoadingTheLibraryIsSilentOtherwise) {
    EXPECT_EQ(bannerWith(""), "");
    EXPECT_EQ(bannerWith("MARLINE_DUMP_VERSION_INFO=0"), "");
    EXPECT_EQ(bannerWith("MARLINE_DUMP_VERSION_INFO=abc"), "");
    EXPECT_EQ(bannerWith("MARLINE_DUMP_VERSION_INFO="), "");
    EXPECT_EQ(bannerWith("MARLINE_DUMP_VERSION_INFO=00"), "");
    EXPECT_EQ(bannerWith("MARLINE_DUMP_VERSION_INFO=0x1"), "");
    EXPECT_EQ(bannerWith("MARLINE_DUMP_VERSION_INFO=yes1"), "");
}

} // namespace
