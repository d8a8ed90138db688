// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "orlDocumentFile.h"
#include "orlInputError.h"
#include "tools/orl/orlToolSupport.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <csignal>

#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

namespace ORL_0_81::tool {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

std::string reasonOf(std::string const& file, std::string const& text) {
    try {
        writeDocument(file, text);
    } catch (InputError const& error) {
        EXPECT_EQ(error.file(), file);
        return error.what();
    }
    return "no error";
}

unsigned permissionsOf(fs::path const& path) { return static_cast<unsigned>(fs::status(path).permissions()); }

// Lets no file grow beyond some bytes while it lives, as a full disk does.
class SmallDisk {
public:
    explicit SmallDisk(rlim_t bytes) {
        ::getrlimit(RLIMIT_FSIZE, &m_before);
        rlimit limit = m_before;
        limit.rlim_cur = bytes;
        m_handler = std::signal(SIGXFSZ, SIG_IGN);
        ::setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~SmallDisk() {
        ::setrlimit(RLIMIT_FSIZE, &m_before);
        std::signal(SIGXFSZ, m_handler);
    }
    SmallDisk(SmallDisk const&) = delete;
    SmallDisk& operator=(SmallDisk const&) = delete;

private:
    rlimit m_before{};
    void (*m_handler)(int) = SIG_DFL;
};

} // namespace

TEST(DocumentFile, ReadsBackWhatWasWrittenZeroBytesToo) {
    ScratchFolder const folder;
    std::string const text("a\0b\r\n\xff", 6);
    std::istringstream none;

    writeDocument(folder / "new.otio", text);

    EXPECT_EQ(readDocument(folder / "new.otio", none), text);
    EXPECT_THAT(folder.names(), ElementsAre("new.otio"));
}

TEST(DocumentFile, ReadsStandardInputForADash) {
    std::string const text(200000, 'x');
    std::istringstream in(text);
    EXPECT_EQ(readDocument("-", in), text);
}

TEST(DocumentFile, TellsWhyAFileCannotBeRead) {
    ScratchFolder const folder;
    std::istringstream none;
    for (auto const& [path, reason] : {std::pair(folder / "absent", "No such file or directory"),
                                       std::pair(folder.path(), "Is a directory")}) {
        try {
            readDocument(path, none);
            ADD_FAILURE() << path;
        } catch (InputError const& error) {
            EXPECT_EQ(error.file(), path);
            EXPECT_STREQ(error.what(), reason);
        }
    }
}

TEST(DocumentFile, GivesANewFileThePermissionsThatTheMaskLeaves) {
    ScratchFolder const folder;
    mode_t const before = ::umask(027);
    writeDocument(folder / "new.otio", "{}");
    ::umask(before);
    EXPECT_EQ(permissionsOf(folder / "new.otio"), 0640U);
}

TEST(DocumentFile, KeepsThePermissionsOfAFileThatItReplaces) {
    ScratchFolder const folder;
    writeFile(folder / "old.otio", "old");
    fs::permissions(folder / "old.otio", static_cast<fs::perms>(0604));

    writeDocument(folder / "old.otio", "new");

    EXPECT_EQ(readFile(folder / "old.otio"), "new");
    EXPECT_EQ(permissionsOf(folder / "old.otio"), 0604U);
}

TEST(DocumentFile, WritesTheTargetOfASymbolicLinkAndKeepsTheLink) {
    ScratchFolder const folder;
    fs::create_directory(folder / "far");
    writeFile(folder / "far/target.otio", "old");
    fs::create_symlink("far/target.otio", folder / "near.otio");
    fs::create_symlink("near.otio", folder / "nearer.otio");

    writeDocument(folder / "nearer.otio", "new");

    EXPECT_TRUE(fs::is_symlink(folder / "near.otio"));
    EXPECT_TRUE(fs::is_symlink(folder / "nearer.otio"));
    EXPECT_EQ(readFile(folder / "far/target.otio"), "new");
}

TEST(DocumentFile, MakesTheTargetOfALinkThatLeadsNowhere) {
    ScratchFolder const folder;
    fs::create_symlink("target.otio", folder / "link.otio");

    writeDocument(folder / "link.otio", "new");

    EXPECT_TRUE(fs::is_symlink(folder / "link.otio"));
    EXPECT_EQ(readFile(folder / "target.otio"), "new");
}

TEST(DocumentFile, RefusesALinkThatLeadsToItself) {
    ScratchFolder const folder;
    fs::create_symlink("loop.otio", folder / "loop.otio");
    EXPECT_EQ(reasonOf(folder / "loop.otio", "new"), "Too many levels of symbolic links");
}

TEST(DocumentFile, RefusesAFolderAsAFile) {
    ScratchFolder const folder;
    EXPECT_EQ(reasonOf(folder.path(), "new"), "Is a directory");
    EXPECT_EQ(reasonOf(folder / "absent/new.otio", "new"), "No such file or directory");
    EXPECT_THAT(folder.names(), IsEmpty());
}

TEST(DocumentFile, TellsOfAFullDevice) {
    if (!fs::exists("/dev/full")) {
        GTEST_SKIP() << "no /dev/full here";
    }
    EXPECT_EQ(reasonOf("/dev/full", "new"), "No space left on device");
    EXPECT_TRUE(fs::is_character_file("/dev/full"));
}

TEST(DocumentFile, LeavesTheOldFileWholeAndNothingElseWhenTheNewOneDoesNotFit) {
    ScratchFolder const folder;
    writeFile(folder / "old.otio", "old");
    {
        SmallDisk const disk(1000);
        EXPECT_EQ(reasonOf(folder / "old.otio", std::string(5000, 'x')), "File too large");
        EXPECT_EQ(reasonOf(folder / "new.otio", std::string(5000, 'x')), "File too large");
    }
    EXPECT_EQ(readFile(folder / "old.otio"), "old");
    EXPECT_THAT(folder.names(), ElementsAre("old.otio"));
}

TEST(DocumentFile, TakesAnotherTemporaryNameWhenOneIsLeftOver) {
    ScratchFolder const folder;
    std::string const leftOver = ".orl-" + std::to_string(::getpid()) + "-0.tmp";
    writeFile(folder / leftOver, "left over");

    writeDocument(folder / "new.otio", "new");

    EXPECT_EQ(readFile(folder / "new.otio"), "new");
    EXPECT_EQ(readFile(folder / leftOver), "left over");
}

TEST(DocumentFile, RespectsProtectedFilesAndFolders) {
    if (::geteuid() == 0) {
        GTEST_SKIP() << "nothing is protected from this user";
    }
    ScratchFolder const folder;
    writeFile(folder / "old.otio", "old");
    fs::permissions(folder / "old.otio", fs::perms::owner_read);
    EXPECT_EQ(reasonOf(folder / "old.otio", "new"), "Permission denied");
    EXPECT_EQ(readFile(folder / "old.otio"), "old");

    fs::permissions(folder.path(), fs::perms::owner_read | fs::perms::owner_exec);
    EXPECT_EQ(reasonOf(folder / "new.otio", "new"), "Permission denied");
}

TEST(DocumentFile, TellsOfAStreamThatTakesNothing) {
    std::ostringstream out;
    out.setstate(std::ios::badbit);
    EXPECT_THROW(writeToStream(out, "text"), InputError);
}

} // namespace ORL_0_81::tool
