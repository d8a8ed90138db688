// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "support/TimeLimit.h"
#include "support/orlLibrarySequences.h"
#include "support/orlRandomNames.h"

#include <gtest/gtest.h>

#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <string>
#include <thread>
#include <vector>

// The operations that ask the file system.

namespace {

using namespace ORL_0_81;
using namespace orlTest;
namespace fs = std::filesystem;

using Names = std::vector<std::string>;

// Whoever may do everything is refused nothing, so a test of permissions goes on as somebody else.
class Unprivileged {
public:
    Unprivileged() : m_user(geteuid()) { m_done = m_user != 0 || seteuid(65534) == 0; }
    Unprivileged(Unprivileged const&) = delete;
    Unprivileged& operator=(Unprivileged const&) = delete;
    ~Unprivileged() {
        if (geteuid() != m_user && seteuid(m_user) != 0) {
            std::abort();
        }
    }

    explicit operator bool() const { return m_done; }

private:
    uid_t m_user;
    bool m_done;
};

class FileSequenceUtilsContractDirectory : public testing::Test {
protected:
    void SetUp() override {
        std::string pattern = testing::TempDir() + "/orlXXXXXX";
        ASSERT_NE(::mkdtemp(pattern.data()), nullptr);
        m_root = pattern;
        ASSERT_EQ(::chmod(m_root.c_str(), 0755), 0);
        m_path = m_root + "/in";
        fs::create_directory(m_path);
        m_before = fs::current_path();
    }

    void TearDown() override {
        fs::current_path(m_before);
        ::chmod(m_path.c_str(), 0755);
        fs::remove_all(m_root);
    }

    std::string at(std::string const& name) const { return m_path + "/" + name; }

    void makeFiles(Names const& names) const {
        for (std::string const& name : names) {
            std::ofstream file(at(name));
            ASSERT_TRUE(file) << asLiteral(name);
        }
    }

    void link(std::string const& target, std::string const& name) const {
        ASSERT_EQ(::symlink(target.c_str(), at(name).c_str()), 0) << name;
    }

    // The results, sorted: a directory has no order that a test could know.
    void expectFound(Names expected, std::string const& path, std::string const& filter = "") const {
        Names found;
        EXPECT_STREQ(LibrarySequences::getSequencesInDirectory(path, found, filter).getStr(), "kSuccess");
        std::sort(found.begin(), found.end());
        std::sort(expected.begin(), expected.end());
        EXPECT_EQ(asLiterals(found), asLiterals(expected));
    }
    void expectFound(Names const& expected) const { expectFound(expected, m_path); }

    static void expectFailure(Status::Type code, std::string const& path, std::string const& filter = "") {
        Names found;
        EXPECT_STREQ(LibrarySequences::getSequencesInDirectory(path, found, filter).getStr(),
                     Status(code).getStr())
            << path.substr(0, 200);
        EXPECT_EQ(asLiterals(found), "{}");
    }

    static void expectName(std::string const& expected, std::string const& path) {
        std::string found;
        EXPECT_STREQ(LibrarySequences::getSequenceName(path, found).getStr(), "kSuccess") << path;
        EXPECT_EQ(asLiteral(found), asLiteral(expected)) << path;
    }

    static void expectNoName(Status::Type code, std::string const& path) {
        std::string found;
        EXPECT_STREQ(LibrarySequences::getSequenceName(path, found).getStr(), Status(code).getStr())
            << path.substr(0, 200);
        EXPECT_EQ(asLiteral(found), "\"\"");
    }

    std::string m_root;
    std::string m_path;
    fs::path m_before;
};

// getSequencesInDirectory

TEST_F(FileSequenceUtilsContractDirectory, GivesTheSequencesOfItsFilesHiddenOnesIncluded) {
    makeFiles({"shot.1001.exr", "shot.1002.exr", "notes.txt", ".hidden.1", ".hidden.2", ".profile", "-1"});
    expectFound({"shot.%04d.exr", "notes.txt", ".hidden.%01d", ".profile", "-1"});
    expectFound({"shot.%04d.exr", "notes.txt", ".hidden.%01d", ".profile", "-1"}, m_path + "/");
    expectFound({"shot.%04d.exr"}, m_path, "exr$");
    expectFound({}, m_path, "tif$");
}

TEST_F(FileSequenceUtilsContractDirectory, GivesItsResultsInTheOrderOfItsListing) {
    for (int i = 0; i < 60; ++i) {
        makeFiles({"name" + std::string(static_cast<std::size_t>(1 + i * 7 % 60), 'x')});
    }
    Names listed;
    for (auto const& entry : fs::directory_iterator(m_path)) {
        listed.push_back(entry.path().filename().string());
    }
    Names found;
    EXPECT_TRUE(LibrarySequences::getSequencesInDirectory(m_path, found, "").success());
    EXPECT_EQ(found, listed);
}

TEST_F(FileSequenceUtilsContractDirectory, MayBeALinkToOneOrARelativePath) {
    makeFiles({"a.1", "a.2"});
    ASSERT_EQ(::symlink("in", (m_root + "/link").c_str()), 0);
    expectFound({"a.%01d"}, m_root + "/link");
    expectFound({"a.%01d"}, m_root + "/link/../in/.");
    fs::current_path(m_path);
    expectFound({"a.%01d"}, ".");
    fs::current_path(m_root);
    expectFound({"a.%01d"}, "in");
}

TEST_F(FileSequenceUtilsContractDirectory, WithoutAFileHasNoNames) {
    expectFailure(Status::kNoFilenamesFound, m_path);
    fs::create_directory(at("a.1"));
    fs::create_directory(at("a.2"));
    expectFailure(Status::kNoFilenamesFound, m_path);
}

TEST_F(FileSequenceUtilsContractDirectory, IsNotFoundWhereThePathLeadsToNone) {
    makeFiles({"file"});
    link("nowhere", "dangling");
    link("there", "here");
    link("here", "there");
    expectFailure(Status::kDirectoryNotFound, "");
    expectFailure(Status::kDirectoryNotFound, at("missing"));
    expectFailure(Status::kDirectoryNotFound, at("file"));
    expectFailure(Status::kDirectoryNotFound, at("file/"));
    expectFailure(Status::kDirectoryNotFound, at("file/below"));
    expectFailure(Status::kDirectoryNotFound, at("dangling"));
    expectFailure(Status::kDirectoryNotFound, at("here"));
    expectFailure(Status::kDirectoryNotFound, at(std::string(300, 'x')));
    expectFailure(Status::kDirectoryNotFound, std::string(1 << 20, 'x'));
    expectFailure(Status::kDirectoryNotFound, std::string(1 << 20, '/') + "missing-here");
}

TEST_F(FileSequenceUtilsContractDirectory, IsLookedForBeforeTheFilterIs) {
    expectFailure(Status::kDirectoryNotFound, at("missing"), "(");
    expectFailure(Status::kNoFilenamesFound, m_path, "(");
    makeFiles({"a.1"});
    expectFailure(Status::kRegexException, m_path, "(");
}

TEST_F(FileSequenceUtilsContractDirectory, PassesOverWhatIsNoRegularFile) {
    makeFiles({"a.1", "a.2"});
    fs::create_directory(at("a.3"));
    ASSERT_EQ(::mkfifo(at("a.4").c_str(), 0644), 0);
    link("/dev/null", "a.5");
    link("a.3", "a.6");
    link("a.4", "a.7");
    link("nowhere", "a.8");
    link("a.9", "a.9");
    link("b.2", "b.1");
    link("b.1", "b.2");
    link("a.1/below", "b.3");

    sockaddr_un address = {};
    address.sun_family = AF_UNIX;
    ASSERT_LT(at("a.0").size(), sizeof address.sun_path);
    std::strcpy(address.sun_path, at("a.0").c_str());
    int const socket = ::socket(AF_UNIX, SOCK_STREAM, 0);
    ASSERT_EQ(::bind(socket, reinterpret_cast<sockaddr*>(&address), sizeof address), 0);
    link("a.0", "b.4");

    expectFound({"a.%01d"});
    ::unlink(at("a.2").c_str());
    expectFound({"a.1"});
    ::close(socket);
}

TEST_F(FileSequenceUtilsContractDirectory, CountsALinkToARegularFileByTheNameOfTheLink) {
    std::ofstream(m_root + "/elsewhere") << "x";
    link("../elsewhere", "a.1");
    link("a.1", "a.2");
    expectFound({"a.%01d"});
    expectName("a.%01d", at("a.1"));
}

TEST_F(FileSequenceUtilsContractDirectory, ThatMayNotBeReadHasNoNames) {
    makeFiles({"a.1", "a.2"});
    ASSERT_EQ(::chmod(m_path.c_str(), 0311), 0);
    Unprivileged const somebody;
    if (!somebody) {
        GTEST_SKIP() << "no other user to be";
    }
    expectFailure(Status::kNoFilenamesFound, m_path);
    expectNoName(Status::kNoFilenamesFound, at("a.1"));
}

TEST_F(FileSequenceUtilsContractDirectory, ThatMayNotBeSearchedHasNoNames) {
    makeFiles({"a.1", "a.2"});
    ASSERT_EQ(::chmod(m_path.c_str(), 0744), 0);
    if (geteuid() != 0) {
        ASSERT_EQ(::chmod(m_path.c_str(), 0444), 0);
    }
    Unprivileged const somebody;
    if (!somebody) {
        GTEST_SKIP() << "no other user to be";
    }
    expectFailure(Status::kNoFilenamesFound, m_path);
    expectNoName(Status::kFileNotFound, at("a.1"));
}

TEST_F(FileSequenceUtilsContractDirectory, BehindOneThatMayNotBeSearchedIsNotFound) {
    fs::create_directory(at("inner"));
    makeFiles({"inner/a.1"});
    ASSERT_EQ(::chmod(m_path.c_str(), 0400), 0);
    Unprivileged const somebody;
    if (!somebody) {
        GTEST_SKIP() << "no other user to be";
    }
    expectFailure(Status::kDirectoryNotFound, at("inner"));
    expectNoName(Status::kFileNotFound, at("inner/a.1"));
}

TEST_F(FileSequenceUtilsContractDirectory, GivesItsNamesInNormalFormD) {
    makeFiles({"caf\xc3\xa9.1", "cafe\xcc\x81.2", "\xc3\x85", "\xea\xb0\x80.txt"});
    expectFound({"cafe\xcc\x81.%01d", "A\xcc\x8a", "\xe1\x84\x80\xe1\x85\xa1.txt"});
}

TEST_F(FileSequenceUtilsContractDirectory, LeavesANameThatFillsTheEstimateOfItsNormalForm) {
    // Two characters of three bytes each, and no room for an end.
    makeFiles({"\xea\xb0\x80"});
    expectFound({"\xea\xb0\x80"});
}

TEST_F(FileSequenceUtilsContractDirectory, LeavesNamesThatAreNoUtf8) {
    makeFiles({"\xff.1", "\xff.2", "\xc3\xa9\xff", "\x80", "caf\xc3"});
    expectFound({"\xff.%01d", "\xc3\xa9\xff", "\x80", "caf\xc3"});
}

TEST_F(FileSequenceUtilsContractDirectory, HoldsNamesWithEveryByteThatAFileNameMayHave) {
    std::string every;
    for (int byte = 1; byte < 256; ++byte) {
        if (byte != '/' && byte != '\\' && !(byte >= '0' && byte <= '9') && byte < 0x80) {
            every += static_cast<char>(byte);
        }
    }
    makeFiles({every + "1", every + "2", "a\nb", std::string(255, 'x')});
    expectFound({every + "%01d", "a\nb", std::string(255, 'x')});
}

TEST_F(FileSequenceUtilsContractDirectory, IsReadWhileFilesComeAndGo) {
    TimeLimit const limit("a directory that changes");
    makeFiles({"steady.1", "steady.2"});
    std::atomic<bool> done{false};
    std::thread changer([&] {
        for (int i = 0; !done; i = (i + 1) % 50) {
            std::string const name = at("coming" + std::string(static_cast<std::size_t>(i), 'x'));
            std::ofstream(name).put('x');
            ::unlink(name.c_str());
            if (::symlink("steady.1", name.c_str()) == 0) {
                ::unlink(name.c_str());
            }
        }
    });
    for (int i = 0; i < 300; ++i) {
        Names found;
        EXPECT_STREQ(LibrarySequences::getSequencesInDirectory(m_path, found, "").getStr(), "kSuccess");
        EXPECT_EQ(std::count(found.begin(), found.end(), "steady.%01d"), 1) << asLiterals(found);
    }
    done = true;
    changer.join();
}

TEST_F(FileSequenceUtilsContractDirectory, MayVanishWhileItIsRead) {
    TimeLimit const limit("a directory that vanishes");
    std::atomic<bool> done{false};
    std::string const path = at("vanishing");
    std::thread changer([&] {
        while (!done) {
            ::mkdir(path.c_str(), 0755);
            for (char const* const name : {"/a.1", "/a.2", "/a.3"}) {
                std::ofstream(path + name).put('x');
            }
            for (char const* const name : {"/a.1", "/a.2", "/a.3"}) {
                ::unlink((path + name).c_str());
            }
            ::rmdir(path.c_str());
        }
    });
    for (int i = 0; i < 1000; ++i) {
        Names found;
        try {
            Status const status = LibrarySequences::getSequencesInDirectory(path, found, "");
            bool const isPossible = status.success() || status == Status::kDirectoryNotFound ||
                                    status == Status::kNoFilenamesFound;
            EXPECT_TRUE(isPossible) << status.getStr();
            EXPECT_EQ(found.empty(), status.failure());
        } catch (fs::filesystem_error const&) { // what a listing that fails may leave as
        }
    }
    done = true;
    changer.join();
}

// getSequenceName

TEST_F(FileSequenceUtilsContractDirectory, TellsTheSequenceOfAFileWithoutTheDirectory) {
    makeFiles(
        {"shot.1001.exr", "shot.1002.exr", "shot.00003.exr", "shot.-1.exr", "other.7.exr", "readme.txt"});
    expectName("shot.%02d.exr", at("shot.1001.exr"));
    expectName("shot.%02d.exr", at("shot.00003.exr"));
    expectName("shot.%02d.exr", at("shot.-1.exr"));
    expectName("shot.%02d.exr", m_root + "//in/../in/./shot.1002.exr");
}

TEST_F(FileSequenceUtilsContractDirectory, TellsTheOwnNameOfAFileThatIsAloneInItsFamily) {
    makeFiles({"shot.1001.exr", "shot.1002.exr", "other.7.exr", "readme.txt", "2019-03-21 at 10.22.33",
               "2019-03-21 at 10.22.34"});
    expectName("shot.%04d.exr", at("shot.1001.exr"));
    expectName("other.7.exr", at("other.7.exr"));
    expectName("readme.txt", at("readme.txt"));
    expectName("2019-03-21 at 10.22.33", at("2019-03-21 at 10.22.33"));
    expectName("2019-03-21 at 10.22.34", at("2019-03-21 at 10.22.34"));
}

TEST_F(FileSequenceUtilsContractDirectory, FindsNoParentForABareName) {
    makeFiles({"shot.1001.exr", "shot.1002.exr"});
    fs::current_path(m_path);
    expectNoName(Status::kDirectoryNotFound, "shot.1001.exr");
    expectName("shot.%04d.exr", "./shot.1001.exr");
    expectNoName(Status::kFileNotFound, "missing.exr");
}

TEST_F(FileSequenceUtilsContractDirectory, TellsNoNameOfWhatIsNoRegularFile) {
    makeFiles({"a.1", "a.2"});
    fs::create_directory(at("folder"));
    ASSERT_EQ(::mkfifo(at("fifo").c_str(), 0644), 0);
    link("nowhere", "dangling");
    link("loop", "loop");
    link("folder", "to folder");
    expectNoName(Status::kFileNotFound, "");
    expectNoName(Status::kFileNotFound, ".");
    expectNoName(Status::kFileNotFound, "/");
    expectNoName(Status::kFileNotFound, m_path);
    expectNoName(Status::kFileNotFound, m_path + "/");
    expectNoName(Status::kFileNotFound, at("missing"));
    expectNoName(Status::kFileNotFound, at("a.3"));
    expectNoName(Status::kFileNotFound, at("a.%01d"));
    expectNoName(Status::kFileNotFound, at("folder"));
    expectNoName(Status::kFileNotFound, at("fifo"));
    expectNoName(Status::kFileNotFound, at("dangling"));
    expectNoName(Status::kFileNotFound, at("loop"));
    expectNoName(Status::kFileNotFound, at("to folder"));
    expectNoName(Status::kFileNotFound, at("a.1/"));
    expectNoName(Status::kFileNotFound, at("a.1/a.2"));
    expectNoName(Status::kFileNotFound, at(std::string(300, 'x')));
    expectNoName(Status::kFileNotFound, std::string(1 << 20, 'x'));
}

TEST_F(FileSequenceUtilsContractDirectory, WorksOnTheNormalFormOfTheWholePath) {
    makeFiles({"cafe\xcc\x81.1", "cafe\xcc\x81.2"});
    expectName("cafe\xcc\x81.%01d", at("caf\xc3\xa9.1"));
    expectName("cafe\xcc\x81.%01d", at("cafe\xcc\x81.2"));
}

#ifdef __linux__ // whose file names are bytes, so that the normal form of a name is another name
TEST_F(FileSequenceUtilsContractDirectory, FindsNoFileThatIsStoredInAnotherNormalForm) {
    makeFiles({"caf\xc3\xa9.1"});
    expectNoName(Status::kFileNotFound, at("caf\xc3\xa9.1"));
    fs::create_directory(at("\xc3\xa9"));
    makeFiles({"\xc3\xa9/a.1"});
    expectNoName(Status::kFileNotFound, at("\xc3\xa9/a.1"));
}
#endif

TEST_F(FileSequenceUtilsContractDirectory, TakesOnlyTheFirstOfTwoFrameSymbolsForAFrame) {
    makeFiles({"a%d.1", "a%d.2"});
    expectFound({"a%d.%01d"});
    expectNoName(Status::kNoSuitableSequenceNameFound, at("a%d.1"));
    makeFiles({"a7.%01d"}); // holds no number that varies, but what the symbol is in the other's name
    expectFound({"a%d.%01d", "a7.%01d"});
}

TEST_F(FileSequenceUtilsContractDirectory, TakesASingleNameWithAFrameSymbolForASequenceToo) {
    makeFiles({"a%d", "a7"});
    Names listed;
    for (auto const& entry : fs::directory_iterator(m_path)) {
        listed.push_back(entry.path().filename().string());
    }
    ASSERT_EQ(listed.size(), 2u);
    expectName("a%d", at("a%d"));
    expectName(listed[0], at("a7"));
}

TEST_F(FileSequenceUtilsContractDirectory, TellsNoNameOfAFileThatLosesABackslash) {
    makeFiles({"a\\b"});
    expectFound({"ab"});
    expectNoName(Status::kNoSuitableSequenceNameFound, at("a\\b"));
    makeFiles({"a\\.1", "a\\.2"});
    expectNoName(Status::kNoSuitableSequenceNameFound, at("a\\.1"));
}

TEST_F(FileSequenceUtilsContractDirectory, TakesAPathForNoMoreThanItsBytesSay) {
    makeFiles({"a.1", "a.2"});
    // Whether a path with a NUL leads to a file is the file system's to say; no name of the directory has
    // one.
    std::string found;
    EXPECT_TRUE(LibrarySequences::getSequenceName(at("a.1") + std::string("\0x", 2), found).failure());
    EXPECT_EQ(found, "");
}

} // namespace
