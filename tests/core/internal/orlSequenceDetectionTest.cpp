// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "internal/orlSequenceDetection.h"
#include "internal/orlNameFilter.h"
#include "internal/orlRoomyStack.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <regex>
#include <string>
#include <utility>
#include <vector>

namespace {

using namespace ORL_0_81;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::UnorderedElementsAre;

class Collected : public SequenceDetector::Results {
public:
    void addName(std::size_t, std::string_view name) override { results.emplace_back(name); }
    void addText(std::string const& text) override { results.push_back(text); }

    std::vector<std::string> results;
};

TEST(SequenceDetection, FindsTheSequencesOfWhatTheFilterLetsPass) {
    Collected collected;
    detectSequences({"a.01.exr", "b.txt", "a.02.exr", "c.exr"}, "exr$", collected);
    EXPECT_THAT(collected.results, ElementsAre("a.%02d.exr", "c.exr"));
}

TEST(SequenceDetection, ThrowsForAFilterThatIsNoneAndHasNoResults) {
    Collected collected;
    EXPECT_THROW(detectSequences({"a.01.exr"}, "(", collected), std::regex_error);
    EXPECT_THAT(collected.results, IsEmpty());
}

TEST(SequenceDetection, HasRoomForAFilterThatNeedsIt) {
    class : public Collected {
    public:
        void addName(std::size_t index, std::string_view name) override {
            hadRoom = RoomyStack::isHere();
            Collected::addName(index, name);
        }
        bool hadRoom = false;
    } collected;
    detectSequences({"a.exr"}, "exr$", collected);
    EXPECT_FALSE(collected.hadRoom);

    constexpr std::size_t kGroups = 2000;
    std::string const deep = std::string(kGroups, '(') + "exr" + std::string(kGroups, ')');
    ASSERT_TRUE(NameFilter(deep).needsRoom());
    detectSequences({"a.exr", "b.txt"}, deep, collected);
    EXPECT_TRUE(collected.hadRoom);
    EXPECT_THAT(collected.results, ElementsAre("a.exr", "a.exr"));
}

TEST(DirectoryNames, TellsTheFilesOfADirectoryInOneForm) {
    std::string pattern = testing::TempDir() + "/orlXXXXXX";
    std::filesystem::path const folder = ::mkdtemp(pattern.data());
    for (char const* name : {"plain.exr", "\xc3\xa4.exr", "\xff.exr"}) {
        std::ofstream(folder / name) << "";
    }
    std::filesystem::create_directory(folder / "below");
    DirectoryNames names(folder.string());
    DirectoryNames const moved = std::move(names);
    EXPECT_THAT(moved.views(), UnorderedElementsAre("plain.exr", "a\xcc\x88.exr", "\xff.exr"));
    EXPECT_THAT(DirectoryNames().views(), IsEmpty());
    std::filesystem::remove_all(folder);
    EXPECT_THROW(DirectoryNames(folder.string()), std::filesystem::filesystem_error);
}

} // namespace
