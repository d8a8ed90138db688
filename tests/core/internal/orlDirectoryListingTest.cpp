// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "internal/orlDirectoryListing.h"
#include "support/orlCollectedNames.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

using namespace ORL_0_81;
using testing::IsEmpty;
using testing::UnorderedElementsAre;

namespace fs = std::filesystem;

class DirectoryListing : public testing::Test {
protected:
    void SetUp() override {
        fs::create_directories(m_path / "folder");
        std::ofstream(m_path / "file").put('x');
        fs::create_symlink("file", m_path / "link");
        fs::create_symlink("nowhere", m_path / "dangling");
    }

    void TearDown() override {
        fs::permissions(m_path, fs::perms::owner_all);
        fs::remove_all(m_path);
    }

    std::vector<std::string> list() const {
        orlTest::CollectedNames collected;
        listRegularFiles(m_path.string(), collected);
        return collected.names;
    }

    // With the rights of somebody who is not above all rights, in a process of its own.
    static void withoutPrivileges(void (*check)(std::string const&), std::string const& path) {
        EXPECT_EXIT(
            {
                if (geteuid() == 0 && seteuid(65534) != 0) {
                    _exit(2);
                }
                check(path);
                _exit(testing::Test::HasFailure() ? 1 : 0);
            },
            testing::ExitedWithCode(0), "");
    }

    fs::path const m_path =
        fs::temp_directory_path() / ("orlDirectoryListingTest" + std::to_string(getpid()));
};

TEST_F(DirectoryListing, GivesRegularFilesAndLinksToThem) {
    EXPECT_THAT(list(), UnorderedElementsAre("file", "link"));
}

TEST_F(DirectoryListing, ThrowsForADirectoryThatIsGone) {
    orlTest::CollectedNames collected;
    try {
        listRegularFiles((m_path / "gone").string(), collected);
        FAIL() << "nothing thrown";
    } catch (fs::filesystem_error const& error) {
        EXPECT_EQ(error.code(), std::errc::no_such_file_or_directory);
        EXPECT_EQ(error.path1(), m_path / "gone");
    }
    EXPECT_THROW(listRegularFiles((m_path / "file").string(), collected), fs::filesystem_error);
}

TEST_F(DirectoryListing, PassesOnWhatTheReceiverThrows) {
    class Throwing : public NameReceiver {
    public:
        void addName(char const*) override { throw std::runtime_error("on purpose"); }
    };
    Throwing throwing;
    EXPECT_THROW(listRegularFiles(m_path.string(), throwing), std::runtime_error);
}

TEST_F(DirectoryListing, IsEmptyWithoutThePermissionToRead) {
    fs::permissions(m_path, fs::perms::owner_exec | fs::perms::group_exec | fs::perms::others_exec);
    withoutPrivileges(
        [](std::string const& path) {
            orlTest::CollectedNames collected;
            listRegularFiles(path, collected);
            EXPECT_THAT(collected.names, IsEmpty());
        },
        m_path.string());
}

TEST_F(DirectoryListing, IsEmptyWithoutThePermissionToSearch) {
    fs::permissions(m_path, fs::perms::owner_read | fs::perms::group_read | fs::perms::others_read);
    withoutPrivileges(
        [](std::string const& path) {
            orlTest::CollectedNames collected;
            listRegularFiles(path, collected);
            EXPECT_THAT(collected.names, IsEmpty());
        },
        m_path.string());
}

TEST_F(DirectoryListing, NeedsNoMoreThanThePermissionsToReadAndToSearch) {
    fs::permissions(m_path, fs::perms::owner_read | fs::perms::group_read | fs::perms::others_read |
                                fs::perms::owner_exec | fs::perms::group_exec | fs::perms::others_exec);
    withoutPrivileges(
        [](std::string const& path) {
            orlTest::CollectedNames collected;
            listRegularFiles(path, collected);
            EXPECT_THAT(collected.names, UnorderedElementsAre("file", "link"));
        },
        m_path.string());
}

} // namespace
