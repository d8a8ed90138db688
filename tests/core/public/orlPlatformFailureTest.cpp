// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project

// What the system's failures come to that can't be had from it at will. The program's own calls stand in for the
// system's.
#include "support/SystemCalls.h"

#include <orlPlatform.h>

#include <gtest/gtest.h>

#include <dirent.h>
#include <pthread.h>
#include <pwd.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <string>

namespace {

// The number of the call that fails, as the system's name for its failure. 0: none does.
int linkFailure = 0;
int threadNameFailure = 0;
int closeFailure = 0;
int removeFailure = 0;
bool isUserKnown = true;

} // namespace

// NOLINTBEGIN(readability-identifier-naming)
extern "C" {

ORL_STANDS_IN ssize_t readlink(char const* path, char* target, std::size_t size) noexcept {
    static auto const system = orlTest::nextOf(&readlink, "readlink");
    if (linkFailure != 0) {
        errno = linkFailure;
        return -1;
    }
    return system(path, target, size);
}

ORL_STANDS_IN int pthread_getname_np(pthread_t thread, char* name, std::size_t size) noexcept {
    static auto const system = orlTest::nextOf(&pthread_getname_np, "pthread_getname_np");
    return threadNameFailure != 0 ? threadNameFailure : system(thread, name, size);
}

ORL_STANDS_IN passwd* getpwuid(uid_t user) {
    static auto const system = orlTest::nextOf(&getpwuid, "getpwuid");
    return isUserKnown ? system(user) : nullptr;
}

ORL_STANDS_IN int closedir(DIR* directory) {
    static auto const system = orlTest::nextOf(&closedir, "closedir");
    int const result = system(directory);
    if (closeFailure != 0) {
        errno = closeFailure;
        return -1;
    }
    return result;
}

ORL_STANDS_IN int remove(char const* path) noexcept {
    static auto const system = orlTest::nextOf(static_cast<int (*)(char const*)>(&remove), "remove");
    if (removeFailure != 0) {
        errno = removeFailure;
        return -1;
    }
    return system(path);
}

} // extern "C"
// NOLINTEND(readability-identifier-naming)

namespace {

using namespace ORL_0_81;

namespace fs = std::filesystem;

class PlatformFailure : public testing::Test {
protected:
    void SetUp() override { fs::create_directories(m_path); }

    void TearDown() override {
        linkFailure = threadNameFailure = closeFailure = removeFailure = 0;
        isUserKnown = true;
        fs::remove_all(m_path);
    }

    fs::path const m_path = fs::temp_directory_path() / ("orlPlatformFailureTest" + std::to_string(getpid()));
};

TEST_F(PlatformFailure, AnExecutablePathThatCannotBeReadIsADot) {
    linkFailure = EACCES;
    EXPECT_STREQ(Platform::getExecutablePath().asChar(), ".");
}

TEST_F(PlatformFailure, AThreadNameThatCannotBeReadLeavesTheTextAlone) {
    threadNameFailure = ERANGE;
    String name("before");
    EXPECT_EQ(Platform::getThreadName(name), ERANGE);
    EXPECT_STREQ(name.asChar(), "before");
}

TEST_F(PlatformFailure, AUserWithoutAPasswordEntryHasAnEmptyName) {
    isUserKnown = false;
    EXPECT_TRUE(Platform::getUserName().empty());
}

TEST_F(PlatformFailure, ADirectoryThatDoesNotCloseStays) {
    std::ofstream(m_path / "file").put('x');
    closeFailure = EIO;
    EXPECT_EQ(Platform::rmfiles(m_path.c_str(), true, false), -1);
    EXPECT_EQ(errno, EIO);
    EXPECT_TRUE(fs::is_directory(m_path));
    EXPECT_FALSE(fs::exists(m_path / "file"));
}

TEST_F(PlatformFailure, AFileThatStaysEndsTheRemovalAtOnce) {
    std::ofstream(m_path / "one").put('x');
    std::ofstream(m_path / "two").put('x');
    removeFailure = EBUSY;
    EXPECT_EQ(Platform::rmfiles(m_path.c_str(), true, false), -1);
    EXPECT_EQ(errno, EBUSY);
    EXPECT_TRUE(fs::exists(m_path / "one"));
    EXPECT_TRUE(fs::exists(m_path / "two"));
}

} // namespace
