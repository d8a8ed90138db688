// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "core/public/orlStringTesting.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <thread>
#include <utility>
#include <vector>

// Copies of one string on several threads. The values are checked here; the thread sanitizer checks the rest.

namespace {

using namespace ORL_0_81;
using namespace StringTesting;

constexpr int THREADS = 4;
constexpr int ROUNDS = 2000;
char const* const TEXT = "a text that is too long to stand inside of a string object";

void joinAll(std::vector<std::thread>& threads) {
    for (std::thread& thread : threads) {
        thread.join();
    }
}

TEST(StringThreads, CopiesCanBeReadCopiedAndChangedWithoutALock) {
    String const original(TEXT);
    std::vector<int> failures(THREADS, 0);
    std::vector<std::thread> threads;
    for (int t = 0; t < THREADS; ++t) {
        threads.emplace_back([copy = String(original), t, &failures] {
            std::string const mine(1, static_cast<char>('0' + t));
            for (int round = 0; round < ROUNDS; ++round) {
                String changed(copy);
                changed.append(mine.c_str());
                String const kept(changed);
                changed[0] = mine[0];
                bool const good =
                    bytes(kept) == TEXT + mine && changed.front() == mine[0] && bytes(copy) == TEXT;
                failures[static_cast<std::size_t>(t)] += good ? 0 : 1;
            }
        });
    }
    joinAll(threads);
    EXPECT_EQ(failures, std::vector<int>(THREADS, 0));
    EXPECT_EQ(bytes(original), TEXT);
}

TEST(StringThreads, OneObjectCanBeCopiedFromManyThreads) {
    String const original(TEXT);
    std::vector<int> failures(THREADS, 0);
    std::vector<std::thread> threads;
    for (int t = 0; t < THREADS; ++t) {
        threads.emplace_back([&original, t, &failures] {
            for (int round = 0; round < ROUNDS; ++round) {
                String copy(original);
                String const second(copy);
                copy.clear();
                failures[static_cast<std::size_t>(t)] += bytes(second) == TEXT ? 0 : 1;
            }
        });
    }
    joinAll(threads);
    EXPECT_EQ(failures, std::vector<int>(THREADS, 0));
    String after(original);
    after[0] = 'A';
    EXPECT_EQ(bytes(original), TEXT);
}

// The thread that is left with the only reference writes in place what the other has just read.
TEST(StringThreads, TheLastOwnerWritesAfterTheOthersHaveRead) {
    std::string const text(TEXT);
    auto const lettersT = static_cast<std::size_t>(std::count(text.begin(), text.end(), 't'));
    for (int round = 0; round < 300; ++round) {
        String first(TEXT);
        String second(first);
        std::size_t read = 0;
        std::thread reader([copy = std::move(first), &read]() mutable {
            for (char const c : std::as_const(copy)) {
                read += c == 't' ? 1U : 0U;
            }
            copy.clear();
        });
        second[0] = 'A';
        second.append("!");
        reader.join();
        EXPECT_EQ(read, lettersT);
        EXPECT_EQ(bytes(second), "A" + std::string(TEXT + 1) + "!");
    }
}

TEST(StringThreads, TheEmptyTextIsMadeOnceForAllThreads) {
    std::vector<char const*> texts(THREADS, nullptr);
    std::vector<std::thread> threads;
    for (int t = 0; t < THREADS; ++t) {
        threads.emplace_back([t, &texts] { texts[static_cast<std::size_t>(t)] = String().c_str(); });
    }
    joinAll(threads);
    for (char const* text : texts) {
        EXPECT_EQ(text, texts[0]);
        EXPECT_STREQ(text, "");
    }
}

} // namespace
