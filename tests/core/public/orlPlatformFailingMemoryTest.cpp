// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "support/Files.h"
#include "support/orlFailingMemory.h"
#include "support/orlTemporaryFolder.h"

#include <orlPlatform.h>

#include <gtest/gtest.h>

#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <string>

// What the calls of the system leave behind when there is no memory, within them or around them.

namespace {

using namespace ORL_0_81;
using orlTest::failEachAllocation;
using orlTest::FailingMemory;

namespace fs = std::filesystem;

orlTest::MemoryPlan const SYSTEM_TOO{false, true, true};

std::string bytes(String const& text) { return std::string(text.data(), text.size()); }

TEST(PlatformFailingMemory, ThePathOfTheExecutableIsWholeOrADot) {
    std::string const path = bytes(Platform::getExecutablePath());
    failEachAllocation(
        [&path](FailingMemory& memory) {
            String text;
            bool const done = memory.run([&] { text = Platform::getExecutablePath(); });
            EXPECT_TRUE(bytes(text) == path || (memory.hasFailed() && bytes(text) == (done ? "." : "")))
                << bytes(text);
        },
        SYSTEM_TOO);
}

TEST(PlatformFailingMemory, AUserIsNamedOrNot) {
    std::string const id = bytes(Platform::getuid());
    std::string const name = bytes(Platform::getUserName());
    // The system keeps what it knows of its users.
    failEachAllocation(
        [&](FailingMemory& memory) {
            String texts[2];
            bool const done = memory.run([&] {
                texts[0] = Platform::getuid();
                texts[1] = Platform::getUserName();
            });
            EXPECT_TRUE(bytes(texts[0]) == id || !done);
            EXPECT_TRUE(bytes(texts[1]) == name || (memory.hasFailed() && texts[1].empty()));
        },
        {false, true, false});
}

TEST(PlatformFailingMemory, TheNameOfAThreadIsReadOrTheTextStays) {
    String old;
    ASSERT_EQ(Platform::getThreadName(old), 0);
    failEachAllocation([&old](FailingMemory& memory) {
        String const shared = "shared";
        String name = shared;
        bool const done = memory.run([&] { EXPECT_EQ(Platform::getThreadName(name), 0); });
        EXPECT_TRUE(done ? name == old : name == shared);
    });
}

class Tree : public orlTest::TemporaryFolder {
public:
    Tree() : TemporaryFolder("orlPlatformFailing") {
        fs::create_directories(m_path / "a directory with a name of some length" / "within");
        for (char const* const name : {"a file with a name of some length", "b"}) {
            std::ofstream(m_path / name) << "x";
            std::ofstream(m_path / "a directory with a name of some length" / name) << "x";
        }
    }
};

TEST(PlatformFailingMemory, RemovingFilesClosesEveryDirectoryAndCanBeTriedAgain) {
    failEachAllocation(
        [](FailingMemory& memory) {
            Tree const tree;
            std::string const path = tree.path();
            int result = 0;
            bool const done = memory.run([&] { result = Platform::rmfiles(path.c_str(), true, true); });
            if (!memory.hasFailed()) {
                EXPECT_TRUE(done);
                EXPECT_EQ(result, 0);
            } else if (fs::exists(path)) {
                EXPECT_EQ(Platform::rmfiles(path.c_str(), true, true), 0);
            }
            EXPECT_FALSE(fs::exists(path));
        },
        SYSTEM_TOO);
}

TEST(PlatformFailingMemory, TheCallsOfTheSystemTellTheirFailure) {
    std::string const path = bytes(Platform::getExecutablePath()) + "/orlPlatformFailingMemoryTest.tmp";
    if (!orlTest::canFailMalloc()) {
        GTEST_SKIP() << "malloc is the sanitizer's here";
    }
    failEachAllocation(
        [&path](FailingMemory& memory) {
            FILE* file = nullptr;
            int result = 0;
            EXPECT_TRUE(memory.run([&] { result = Platform::fopen(file, path.c_str(), "w"); }));
            EXPECT_EQ(result, memory.hasFailed() ? ENOMEM : 0);
            EXPECT_EQ(file == nullptr, memory.hasFailed());
            if (file) {
                EXPECT_EQ(std::fclose(file), 0);
            }
        },
        SYSTEM_TOO);
    fs::remove(path);
}

} // namespace
