// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "internal/orlFrameRuns.h"
#include "support/Seed.h"
#include "support/orlLongestRun.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <numeric>
#include <random>
#include <set>
#include <string>
#include <vector>

namespace {

using namespace ORL_0_81;

struct Example {
    std::vector<std::int32_t> frames;
    int run;
};

std::vector<Example> const EXAMPLES = {
    {{}, 0},          {{5}, 0},          {{1, 2, 3}, 2}, {{3, 1, 2}, 2},  {{1, 2, 4, 5, 6}, 2},
    {{1, 1, 2}, 1},   {{1, 2, 2, 3}, 1}, {{1, 1, 1}, 0}, {{-1, 0, 1}, 2}, {{-999999999, 999999999}, 0},
    {{10, 20, 30}, 0}};

std::vector<FrameRuns::Member> membersOf(std::vector<std::int32_t> const& frames) {
    std::vector<FrameRuns::Member> members;
    for (std::int32_t const frame : frames) {
        members.push_back({frame, static_cast<std::uint32_t>(members.size())});
    }
    return members;
}

TEST(FrameRuns, AreCountedInStepsAndBrokenByEqualFrames) {
    for (Example const& example : EXAMPLES) {
        EXPECT_EQ(FrameRuns(membersOf(example.frames)).longest(), example.run)
            << testing::PrintToString(example.frames);
        std::vector<std::int32_t> frames = example.frames;
        bool areDistinct = false;
        EXPECT_EQ(FrameRuns::longest(frames, areDistinct), example.run)
            << testing::PrintToString(example.frames);
    }
}

TEST(FrameRuns, GetLongerWhenAnEqualFrameGoes) {
    FrameRuns runs(membersOf({1, 2, 2, 3}));
    runs.remove({2, 1});
    EXPECT_EQ(runs.longest(), 2);
    runs.remove({2, 2});
    EXPECT_EQ(runs.longest(), 0);
}

TEST(FrameRuns, AreThoseOfTheFramesThatAreLeftInAnyOrderOfRemovals) {
    std::mt19937 random(printedSeed());
    for (int round = 0; round < 300; ++round) {
        std::vector<std::int32_t> frames(random() % 700 + 1);
        auto const spread = static_cast<std::int32_t>(frames.size() * (random() % 3 + 1));
        for (std::int32_t& frame : frames) {
            frame = static_cast<std::int32_t>(random() % static_cast<unsigned int>(spread)) - spread / 2;
        }
        std::vector<FrameRuns::Member> members = membersOf(frames);
        FrameRuns runs(members);
        std::shuffle(members.begin(), members.end(), random);
        while (!members.empty()) {
            std::vector<std::int32_t> left;
            for (FrameRuns::Member const& member : members) {
                left.push_back(member.frame);
            }
            ASSERT_EQ(runs.longest(), orlTest::longestRun(left));
            runs.remove(members.back());
            members.pop_back();
        }
        ASSERT_EQ(runs.longest(), 0);
    }
}

TEST(FrameRuns, OfAListAreTheSameHoweverCloseItsFramesLie) {
    std::mt19937 random(printedSeed());
    for (int round = 0; round < 3000; ++round) {
        std::vector<std::int32_t> frames(random() % 70);
        auto const spread = static_cast<std::int32_t>((frames.size() + 1) * (std::size_t{1} << random() % 8));
        bool const mayBeEqual = random() % 2 == 0;
        std::set<std::int32_t> distinct;
        for (std::int32_t& frame : frames) {
            do {
                frame = static_cast<std::int32_t>(random() % static_cast<unsigned int>(spread)) - spread / 2;
            } while (!distinct.insert(frame).second && !mayBeEqual);
        }
        std::string const shown = testing::PrintToString(frames);
        int const run = orlTest::longestRun(frames);
        bool areDistinct = distinct.size() != frames.size();
        ASSERT_EQ(FrameRuns::longest(frames, areDistinct), run) << shown;
        ASSERT_EQ(areDistinct, distinct.size() == frames.size()) << shown;
    }
}

TEST(FrameRuns, OfAListReachTheLimitsOfAFrame) {
    std::vector<std::int32_t> frames(40);
    std::iota(frames.begin(), frames.end(), 999999960);
    frames.push_back(-999999999);
    bool areDistinct = false;
    EXPECT_EQ(FrameRuns::longest(frames, areDistinct), 39);
    EXPECT_TRUE(areDistinct);
}

} // namespace
