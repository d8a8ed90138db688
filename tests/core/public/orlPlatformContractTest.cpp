// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include <orlPlatform.h>

#include <gtest/gtest.h>

#include <cerrno>
#include <climits>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <thread>

#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

namespace {

using ORL_0_81::Platform;
using ORL_0_81::String;
namespace fs = std::filesystem;

// A directory "tree" beside what must not be touched, removed in the end.
class RemovedFiles : public testing::Test {
protected:
    void SetUp() override {
        std::string name = (fs::temp_directory_path() / "orlRemovedFiles.XXXXXX").string();
        ASSERT_NE(mkdtemp(name.data()), nullptr);
        m_root = name;
        fs::create_directories(path("tree"));
        fs::create_directories(path("beside"));
    }

    void TearDown() override {
        std::error_code ignored;
        fs::remove_all(m_root, ignored);
    }

    std::string path(std::string const& name) const { return (m_root / name).string(); }

    void makeFile(std::string const& name) const { std::ofstream(path(name)) << "content"; }

    int remove(std::string const& name, bool removeSelf, bool recursive) const {
        return Platform::rmfiles(path(name).c_str(), removeSelf, recursive);
    }

    fs::path m_root;
};

TEST_F(RemovedFiles, OnlyTheTwoNamesOfDirectoriesAreSkipped) {
    for (char const* const name : {"...", "..a", ".a", "a.", " ", "a\nb", "\xFF", "*", "-rf"}) {
        makeFile(std::string("tree/") + name);
    }
    EXPECT_EQ(remove("tree", true, false), 0);
    EXPECT_FALSE(fs::exists(path("tree")));
}

TEST_F(RemovedFiles, AllGoHoweverManyThereAre) {
    for (int i = 0; i < 3000; ++i) {
        makeFile("tree/file" + std::to_string(i));
    }
    EXPECT_EQ(remove("tree/", false, false), 0);
    EXPECT_TRUE(fs::is_empty(path("tree")));
}

TEST_F(RemovedFiles, PipesAndSocketsAreFiles) {
    ASSERT_EQ(::mkfifo(path("tree/pipe").c_str(), 0600), 0);
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    std::string const name = path("tree/socket");
    ASSERT_LT(name.size(), sizeof address.sun_path);
    name.copy(address.sun_path, name.size());
    int const handle = ::socket(AF_UNIX, SOCK_STREAM, 0);
    ASSERT_GE(handle, 0);
    ASSERT_EQ(::bind(handle, reinterpret_cast<sockaddr*>(&address), sizeof address), 0);
    EXPECT_EQ(remove("tree", true, false), 0);
    EXPECT_FALSE(fs::exists(path("tree")));
    ::close(handle);
}

TEST_F(RemovedFiles, ALinkToAFileGoesAndTheFileStays) {
    makeFile("beside/file");
    fs::create_symlink(path("beside/file"), path("tree/link"));
    EXPECT_EQ(remove("tree", true, true), 0);
    EXPECT_FALSE(fs::exists(path("tree")));
    EXPECT_TRUE(fs::exists(path("beside/file")));
}

TEST_F(RemovedFiles, ThroughALinkTheFilesOfTheTargetGoAndThenTheLinkItself) {
    makeFile("beside/file");
    fs::create_directory_symlink(path("beside"), path("link"));
    EXPECT_EQ(remove("link", true, false), 0);
    EXPECT_FALSE(fs::is_symlink(path("link")));
    EXPECT_TRUE(fs::is_empty(path("beside")));
}

TEST_F(RemovedFiles, ARecursionThatRemovesItselfUnlinksADirectoryAndKeepsItEmptied) {
    makeFile("beside/file");
    fs::create_directory_symlink(path("beside"), path("tree/link"));
    EXPECT_EQ(remove("tree", true, true), 0);
    EXPECT_FALSE(fs::exists(path("tree")));
    EXPECT_TRUE(fs::is_empty(path("beside")));
}

TEST_F(RemovedFiles, WithoutRecursionALinkToADirectoryStaysAndSoDoesItsHolder) {
    makeFile("beside/file");
    fs::create_directory_symlink(path("beside"), path("tree/link"));
    EXPECT_EQ(remove("tree", false, false), 0);
    EXPECT_EQ(remove("tree", true, false), -1);
    EXPECT_TRUE(fs::is_symlink(path("tree/link")));
    EXPECT_TRUE(fs::exists(path("beside/file")));
}

TEST_F(RemovedFiles, ALinkToItsOwnDirectoryEndsWhereTheSystemFollowsNoFurther) {
    fs::create_directory_symlink(".", path("tree/link"));
    EXPECT_EQ(remove("tree", true, true), 0);
    EXPECT_FALSE(fs::exists(path("tree")));
}

TEST_F(RemovedFiles, ALinkThatOnlyLeadsToItselfIsAFile) {
    fs::create_symlink("loop", path("tree/loop"));
    EXPECT_EQ(remove("tree", true, false), 0);
    EXPECT_FALSE(fs::exists(path("tree")));
}

TEST_F(RemovedFiles, AnEmptyPathIsNoDirectory) {
    EXPECT_EQ(Platform::rmfiles("", true, true), -1);
    EXPECT_FALSE(Platform::isdir(""));
}

TEST_F(RemovedFiles, AFailureToOpenOverwritesTheOldFilePointer) {
    FILE file{};
    struct {
        std::string path;
        char const* mode;
        int error;
    } const cases[] = {
        {path("tree"), "w", EISDIR},
        {path("tree/file"), "", EINVAL},
        {path("missing/file"), "w", ENOENT},
        {path("tree/" + std::string(NAME_MAX + 1, 'n')), "w", ENAMETOOLONG},
        {"", "r", ENOENT},
    };
    for (auto const& c : cases) {
        FILE* opened = &file;
        EXPECT_EQ(Platform::fopen(opened, c.path.c_str(), c.mode), c.error) << c.path;
        EXPECT_EQ(opened, nullptr) << c.path;
    }
}

TEST(PlatformContract, AThreadMayHaveAnEmptyName) {
    std::thread([] {
        EXPECT_EQ(Platform::setThreadName(String()), 0);
        String name("before");
        EXPECT_EQ(Platform::getThreadName(name), 0);
        EXPECT_STREQ(name.asChar(), "");
    }).join();
}

TEST(PlatformContract, ComparisonOfALengthStopsAtTheEndOfBoth) {
    EXPECT_EQ(Platform::strncasecmp("Video", "vIDEO", ULONG_MAX), 0);
    EXPECT_LT(Platform::strncasecmp("video", "VIDEOS", ULONG_MAX), 0);
    EXPECT_GT(Platform::strncasecmp("videos", "VIDEO", 6), 0);
    EXPECT_EQ(Platform::strcasecmp("", ""), 0);
    EXPECT_LT(Platform::strcasecmp("", "a"), 0);
    EXPECT_GT(Platform::strcasecmp("Z", "["), 0) << "as lower case, which stands behind the bracket";
}

} // namespace
