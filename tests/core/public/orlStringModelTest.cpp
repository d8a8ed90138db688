// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "support/Seed.h"
#include "support/orlStringPlay.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <random>

// Long random sequences of operations, each beside the model.

namespace {

using namespace orlTest;

void play(unsigned int seed, int steps) {
    std::mt19937 random(seed);
    StringPlay game([&](std::size_t count) { return static_cast<std::size_t>(random()) % count; });
    for (int step = 0; step < steps; ++step) {
        ASSERT_NO_THROW(game.step()) << "seed " << seed << ", step " << step;
    }
    EXPECT_GT(game.failureCount(), 0U) << "the sequence never came upon a failing operation";
}

TEST(StringModel, RandomOperationsAgreeWithTheStandardString) {
    for (unsigned int seed = 1; seed <= 20; ++seed) {
        play(seed, 3000);
    }
}

TEST(StringModel, AFreshSeedAgreesToo) { play(printedSeed(), 20000); }

} // namespace
