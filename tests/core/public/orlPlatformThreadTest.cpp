// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "support/orlThreads.h"

#include <orlPlatform.h>

#include <gtest/gtest.h>

#include <cerrno>
#include <cstddef>
#include <cstdio>
#include <string>
#include <vector>

// What the system lets many threads do at a time.

namespace {

using namespace ORL_0_81;
using orlTest::onThreads;

constexpr std::size_t THREADS = 4;
constexpr int ROUNDS = 100;

TEST(PlatformThreads, EachThreadHasANameAndAnErrorOfItsOwn) {
    onThreads(THREADS, [](std::size_t t) {
        String const own(("thread " + std::to_string(t)).c_str());
        for (int round = 0; round < ROUNDS; ++round) {
            EXPECT_EQ(Platform::setThreadName(own), 0);
            String name;
            EXPECT_EQ(Platform::getThreadName(name), 0);
            EXPECT_EQ(name, own);
            errno = t % 2 == 0 ? ENOENT : EACCES;
            std::string const text = Platform::strerror();
            EXPECT_EQ(text, t % 2 == 0 ? "No such file or directory" : "Permission denied");
        }
    });
}

TEST(PlatformThreads, ManyReadTheEnvironmentAndAskTheSystemAtATime) {
    ASSERT_EQ(Platform::setEnvVar("ORL_PLATFORM_THREAD_TEST", "value"), 0);
    String const path = Platform::getExecutablePath();
    String const id = Platform::getuid();
    onThreads(THREADS, [&](std::size_t t) {
        std::vector<unsigned char> memory(16);
        for (int round = 0; round < ROUNDS; ++round) {
            EXPECT_STREQ(Platform::getenv("ORL_PLATFORM_THREAD_TEST"), "value");
            EXPECT_EQ(Platform::getExecutablePath(), path);
            EXPECT_EQ(Platform::getuid(), id);
            EXPECT_TRUE(Platform::isdir(path.c_str()));
            EXPECT_EQ(Platform::memset_s(memory.data(), static_cast<char>(t), memory.size()), 0);
            EXPECT_EQ(memory.back(), t);
            EXPECT_EQ(Platform::strcasecmp("Video", "vIDEO"), 0);
            std::FILE* file = nullptr;
            EXPECT_EQ(Platform::fopen(file, "/dev/null", "r"), 0);
            EXPECT_EQ(std::fclose(file), 0);
        }
    });
}

} // namespace
