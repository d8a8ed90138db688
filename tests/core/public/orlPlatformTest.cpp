// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include <orlPlatform.h>

#include <gtest/gtest.h>

#include <cerrno>
#include <climits>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <string>
#include <thread>

#include <pthread.h>
#include <pwd.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

using ORL_0_81::Platform;
using ORL_0_81::String;
namespace fs = std::filesystem;

// A directory of the test's own, removed with all that is left in it.
class PlatformFiles : public testing::Test {
protected:
    void SetUp() override {
        std::string name = (fs::temp_directory_path() / "orlPlatformTest.XXXXXX").string();
        ASSERT_NE(mkdtemp(name.data()), nullptr);
        m_root = name;
    }

    void TearDown() override {
        std::error_code ignored;
        fs::permissions(m_root, fs::perms::owner_all, ignored);
        fs::remove_all(m_root, ignored);
    }

    std::string path(std::string const& name) const { return (m_root / name).string(); }

    void makeFile(std::string const& name) const { std::ofstream(path(name)) << "content"; }

    fs::path m_root;
};

// Runs the check in a process of its own, and gives what it returns.
template <class Check>
int inChild(Check check) {
    pid_t const child = fork();
    if (child == 0) {
        _exit(check());
    }
    int status = -1;
    waitpid(child, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

TEST(Platform, TheExecutablePathIsTheDirectoryOfTheRunningProgram) {
    fs::path const program = fs::read_symlink("/proc/self/exe");
    EXPECT_STREQ(Platform::getExecutablePath().asChar(), program.parent_path().c_str());
}

TEST(Platform, TheExecutablePathOfAProgramThatIsGoneIsADot) {
    fs::path const copy = fs::temp_directory_path() / ("orlGone." + std::to_string(getpid()));
    fs::copy_file(fs::read_symlink("/proc/self/exe"), copy);
    std::string const filter = "--gtest_filter=PlatformGone.DISABLED_RemovesItself";
    int const result = inChild([&] {
        execl(copy.c_str(), copy.c_str(), filter.c_str(), "--gtest_also_run_disabled_tests", nullptr);
        return 99;
    });
    fs::remove(copy);
    EXPECT_EQ(result, 0);
}

// Called by the test above in a copy of this program.
TEST(PlatformGone, DISABLED_RemovesItself) {
    fs::remove(fs::read_symlink("/proc/self/exe"));
    EXPECT_STREQ(Platform::getExecutablePath().asChar(), ".");
}

TEST(Platform, AnEnvironmentVariableIsSetOverAnExistingValue) {
    EXPECT_EQ(Platform::getenv("ORL_TEST_UNSET"), nullptr);
    EXPECT_EQ(Platform::setEnvVar("ORL_TEST_VARIABLE", "one"), 0);
    EXPECT_STREQ(Platform::getenv("ORL_TEST_VARIABLE"), "one");
    EXPECT_EQ(Platform::setEnvVar("ORL_TEST_VARIABLE", ""), 0);
    EXPECT_STREQ(Platform::getenv("ORL_TEST_VARIABLE"), "");
}

TEST(Platform, AnEnvironmentVariableWithoutANameIsTheSystemsFailure) {
    errno = 0;
    EXPECT_EQ(Platform::setEnvVar("", "x"), -1);
    EXPECT_EQ(errno, EINVAL);
}

TEST(Platform, TellsWhoRunsTheProcess) {
    EXPECT_EQ(Platform::getpid(), ::getpid());
    EXPECT_STREQ(Platform::getuid().asChar(), std::to_string(::getuid()).c_str());
    passwd const* const entry = ::getpwuid(::getuid());
    EXPECT_STREQ(Platform::getUserName().asChar(), entry ? entry->pw_name : "");
}

TEST(Platform, AUserWithoutAPasswordEntryHasAnEmptyName) {
    constexpr uid_t kNobodyKnows = 54321;
    if (::getuid() != 0 || ::getpwuid(kNobodyKnows)) {
        GTEST_SKIP() << "needs to become a user that nobody knows";
    }
    EXPECT_EQ(inChild([] {
                  if (::setuid(kNobodyKnows) != 0) {
                      return 2;
                  }
                  return Platform::getUserName().empty() && Platform::getuid() == "54321" ? 0 : 1;
              }),
              0);
}

TEST(Platform, AThreadTakesANameOfFifteenBytesAndRefusesSixteen) {
    std::thread([] {
        EXPECT_EQ(Platform::setThreadName(String("fifteen bytes..")), 0);
        EXPECT_EQ(Platform::setThreadName(String("sixteen bytes...")), 34);
        String name("before");
        EXPECT_EQ(Platform::getThreadName(name), 0);
        EXPECT_STREQ(name.asChar(), "fifteen bytes..");
        char text[16];
        ASSERT_EQ(pthread_getname_np(pthread_self(), text, sizeof text), 0);
        EXPECT_STREQ(text, "fifteen bytes..");
    }).join();
}

TEST(Platform, AThreadNameConcernsTheCallingThreadOnly) {
    String before;
    ASSERT_EQ(Platform::getThreadName(before), 0);
    std::thread([] { EXPECT_EQ(Platform::setThreadName(String("other")), 0); }).join();
    String after;
    ASSERT_EQ(Platform::getThreadName(after), 0);
    EXPECT_EQ(before, after);
}

TEST(Platform, ComparesWithoutRegardToCase) {
    EXPECT_EQ(Platform::strcasecmp("Video", "vIDEO"), 0);
    EXPECT_LT(Platform::strcasecmp("audio", "VIDEO"), 0);
    EXPECT_GT(Platform::strcasecmp("videos", "VIDEO"), 0);
    EXPECT_EQ(Platform::strncasecmp("videoX", "VIDEOy", 5), 0);
    EXPECT_NE(Platform::strncasecmp("videoX", "VIDEOy", 6), 0);
    EXPECT_EQ(Platform::strncasecmp("a", "b", 0), 0);
}

TEST_F(PlatformFiles, MakesADirectoryWithTheModeThatIsAsked) {
    mode_t const mask = umask(0);
    EXPECT_EQ(Platform::mkdir(path("new").c_str(), 0750), 0);
    umask(mask);
    struct stat status {};
    ASSERT_EQ(::stat(path("new").c_str(), &status), 0);
    EXPECT_TRUE(S_ISDIR(status.st_mode));
    EXPECT_EQ(status.st_mode & 07777, 0750U);

    errno = 0;
    EXPECT_EQ(Platform::mkdir(path("new").c_str(), 0750), -1);
    EXPECT_EQ(errno, EEXIST);
}

TEST_F(PlatformFiles, OnlyADirectoryIsADirectory) {
    makeFile("file");
    fs::create_directory_symlink(m_root, path("link"));
    fs::create_symlink("nowhere", path("dangling"));
    EXPECT_TRUE(Platform::isdir(m_root.c_str()));
    EXPECT_TRUE(Platform::isdir(path("link").c_str()));
    EXPECT_FALSE(Platform::isdir(path("file").c_str()));
    EXPECT_FALSE(Platform::isdir(path("dangling").c_str()));
    EXPECT_FALSE(Platform::isdir(path("missing").c_str()));
}

TEST_F(PlatformFiles, RemovingFilesOfWhatIsNoDirectoryFailsAndRemovesNothing) {
    makeFile("file");
    EXPECT_EQ(Platform::rmfiles(path("file").c_str(), true, true), -1);
    EXPECT_EQ(Platform::rmfiles(path("missing").c_str(), true, true), -1);
    EXPECT_TRUE(fs::exists(path("file")));
}

TEST_F(PlatformFiles, AnEmptyDirectoryIsRemovedOnlyIfAsked) {
    fs::create_directory(path("empty"));
    EXPECT_EQ(Platform::rmfiles(path("empty").c_str(), false, false), 0);
    EXPECT_TRUE(fs::exists(path("empty")));
    EXPECT_EQ(Platform::rmfiles(path("empty").c_str(), true, false), 0);
    EXPECT_FALSE(fs::exists(path("empty")));
}

TEST_F(PlatformFiles, WithoutRecursionSubdirectoriesAndWhatHoldsThemStay) {
    fs::create_directories(path("tree/sub"));
    makeFile("tree/file");
    makeFile("tree/.hidden");
    makeFile("tree/sub/file");
    EXPECT_EQ(Platform::rmfiles(path("tree").c_str(), false, false), 0);
    EXPECT_FALSE(fs::exists(path("tree/file")));
    EXPECT_FALSE(fs::exists(path("tree/.hidden")));
    EXPECT_TRUE(fs::exists(path("tree/sub/file")));

    errno = 0;
    EXPECT_EQ(Platform::rmfiles(path("tree").c_str(), true, false), -1);
    EXPECT_EQ(errno, ENOTEMPTY);
    EXPECT_TRUE(fs::exists(path("tree/sub/file")));
}

TEST_F(PlatformFiles, RecursionWithoutRemovingItselfKeepsEveryDirectory) {
    fs::create_directories(path("tree/sub/deeper"));
    makeFile("tree/file");
    makeFile("tree/sub/deeper/file");
    EXPECT_EQ(Platform::rmfiles(path("tree").c_str(), false, true), 0);
    EXPECT_TRUE(fs::is_directory(path("tree/sub/deeper")));
    EXPECT_FALSE(fs::exists(path("tree/file")));
    EXPECT_FALSE(fs::exists(path("tree/sub/deeper/file")));
}

TEST_F(PlatformFiles, RecursionWithRemovingItselfRemovesTheTree) {
    fs::create_directories(path("tree/sub/deeper"));
    makeFile("tree/sub/deeper/file");
    EXPECT_EQ(Platform::rmfiles(path("tree").c_str(), true, true), 0);
    EXPECT_FALSE(fs::exists(path("tree")));
}

TEST_F(PlatformFiles, RecursionFollowsALinkToADirectory) {
    fs::create_directory(path("tree"));
    fs::create_directory(path("target"));
    makeFile("target/file");
    fs::create_directory_symlink(path("target"), path("tree/link"));
    fs::create_symlink("nowhere", path("tree/dangling"));
    EXPECT_EQ(Platform::rmfiles(path("tree").c_str(), false, true), 0);
    EXPECT_FALSE(fs::exists(path("target/file")));
    EXPECT_TRUE(fs::is_directory(path("target")));
    EXPECT_TRUE(fs::is_symlink(path("tree/link")));
    EXPECT_FALSE(fs::is_symlink(path("tree/dangling")));
}

std::size_t openHandles() {
    std::size_t count = 0;
    for ([[maybe_unused]] auto const& entry : fs::directory_iterator("/proc/self/fd")) {
        ++count;
    }
    return count;
}

// A file that cannot be removed: its directory may be read and searched, but not written.
TEST_F(PlatformFiles, AFileThatStaysStopsAtOnceAndLeavesTheDirectoryOpen) {
    constexpr uid_t kOther = 54321;
    fs::create_directory(path("tree"));
    makeFile("tree/file");
    fs::permissions(path("tree"), fs::perms(0555));
    fs::permissions(m_root, fs::perms(0711));
    // In a process of its own, for the handle stays open until the process ends.
    EXPECT_EQ(inChild([&] {
                  if (::chdir(m_root.c_str()) != 0 || (::getuid() == 0 && ::setuid(kOther) != 0)) {
                      return 2;
                  }
                  std::size_t const before = openHandles();
                  errno = 0;
                  int const result = Platform::rmfiles("tree", true, false);
                  if (result != -1 || errno != EACCES) {
                      return 3;
                  }
                  return openHandles() == before + 1 ? 0 : 4;
              }),
              0);
    EXPECT_TRUE(fs::exists(path("tree/file")));
}

TEST_F(PlatformFiles, AFailureBelowASubdirectoryGoesUnnoticed) {
    constexpr uid_t kOther = 54321;
    fs::create_directories(path("tree/sub"));
    makeFile("tree/sub/file");
    makeFile("tree/file");
    fs::permissions(path("tree/sub"), fs::perms(0555));
    fs::permissions(path("tree"), fs::perms(0777));
    fs::permissions(m_root, fs::perms(0711));
    EXPECT_EQ(inChild([&] {
                  if (::chdir(m_root.c_str()) != 0 || (::getuid() == 0 && ::setuid(kOther) != 0)) {
                      return 2;
                  }
                  return Platform::rmfiles("tree", false, true) == 0 ? 0 : 3;
              }),
              0);
    EXPECT_TRUE(fs::exists(path("tree/sub/file")));
    EXPECT_FALSE(fs::exists(path("tree/file")));
}

TEST(Platform, TellsTheTextOfTheLastFailure) {
    errno = ENOENT;
    EXPECT_STREQ(Platform::strerror(), std::strerror(ENOENT));
    errno = EACCES;
    EXPECT_STREQ(Platform::strerror(), std::strerror(EACCES));
}

TEST_F(PlatformFiles, OpensAFileOrGivesTheErrorNumberAndNull) {
    makeFile("file");
    FILE* file = nullptr;
    ASSERT_EQ(Platform::fopen(file, path("file").c_str(), "r"), 0);
    ASSERT_NE(file, nullptr);
    char text[16] = {};
    EXPECT_EQ(std::fread(text, 1, sizeof text, file), std::strlen("content"));
    EXPECT_STREQ(text, "content");
    std::fclose(file);

    FILE* missing = stdin;
    EXPECT_EQ(Platform::fopen(missing, path("missing").c_str(), "r"), ENOENT);
    EXPECT_EQ(missing, nullptr);
}

TEST(Platform, FillsAllOfTheMemoryAndNothingElse) {
    char bytes[] = "0123456789";
    EXPECT_EQ(Platform::memset_s(bytes + 1, 'x', 8), 0);
    EXPECT_STREQ(bytes, "0xxxxxxxx9");
    EXPECT_EQ(Platform::memset_s(bytes, static_cast<char>(-1), 1), 0);
    EXPECT_EQ(static_cast<unsigned char>(bytes[0]), UCHAR_MAX);
    EXPECT_EQ(Platform::memset_s(bytes, 'y', 0), 0);
    EXPECT_EQ(Platform::memset_s(nullptr, 'y', 8), EINVAL);
}

long lockedKilobytes() {
    std::ifstream status("/proc/self/status");
    for (std::string line; std::getline(status, line);) {
        if (line.compare(0, 6, "VmLck:") == 0) {
            return std::strtol(line.c_str() + 6, nullptr, 10);
        }
    }
    return -1;
}

TEST(Platform, LocksAndUnlocksMemoryAsTheSystemSeesIt) {
    long const page = sysconf(_SC_PAGESIZE);
    void* memory = nullptr;
    ASSERT_EQ(posix_memalign(&memory, static_cast<std::size_t>(page), static_cast<std::size_t>(page)), 0);
    std::memset(memory, 0, static_cast<std::size_t>(page));
    long const before = lockedKilobytes();
    if (Platform::mlock(memory, static_cast<unsigned long>(page)) != 0) {
        std::free(memory);
        GTEST_SKIP() << "no memory may be locked here: " << Platform::strerror();
    }
#if !defined(__SANITIZE_ADDRESS__) && !defined(__SANITIZE_THREAD__) // which lock nothing
    EXPECT_EQ(lockedKilobytes(), before + page / 1024);
#endif
    EXPECT_EQ(Platform::munlock(memory, static_cast<unsigned long>(page)), 0);
    EXPECT_EQ(lockedKilobytes(), before);
    std::free(memory);
}

} // namespace
