// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project

// What becomes of a directory that the system lists halfway or does not tell all about. The program's own calls stand
// in for the system's.
#include "internal/orlDirectoryListing.h"
#include "support/SystemCalls.h"
#include "support/orlCollectedNames.h"

#include <orlFileSequenceUtils.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <dirent.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

namespace {

struct Listing {
    int entriesUntilFailure = -1; // negative: never
    int readFailure = 0;
    bool tellsTypes = true;
    int ownStatusFailure = 0; // of the directory, looked up from within
};

Listing listing;

} // namespace

// NOLINTBEGIN(readability-identifier-naming)
extern "C" {

ORL_STANDS_IN dirent* readdir(DIR* directory) {
    static auto const system = orlTest::nextOf(&readdir, "readdir");
    if (listing.entriesUntilFailure == 0) {
        errno = listing.readFailure;
        return nullptr;
    }
    dirent* const entry = system(directory);
    if (listing.entriesUntilFailure > 0) {
        --listing.entriesUntilFailure;
    }
    if (entry && !listing.tellsTypes) {
        entry->d_type = DT_UNKNOWN;
    }
    return entry;
}

ORL_STANDS_IN int fstatat(int directory, char const* path, struct stat* status, int flags) noexcept {
    static auto const system = orlTest::nextOf(&fstatat, "fstatat");
    if (listing.ownStatusFailure != 0 && std::strcmp(path, ".") == 0) {
        errno = listing.ownStatusFailure;
        return -1;
    }
    return system(directory, path, status, flags);
}

} // extern "C"
// NOLINTEND(readability-identifier-naming)

namespace {

using namespace ORL_0_81;
using testing::IsEmpty;
using testing::SizeIs;
using testing::UnorderedElementsAre;

namespace fs = std::filesystem;

class DirectoryRead : public testing::Test {
protected:
    void SetUp() override {
        fs::create_directories(m_path / "folder");
        std::ofstream(m_path / "a.1").put('x');
        std::ofstream(m_path / "a.2").put('x');
        fs::create_symlink("a.1", m_path / "link");
        fs::create_symlink("folder", m_path / "folderLink");
        fs::create_symlink("nowhere", m_path / "dangling");
    }

    void TearDown() override {
        listing = Listing();
        fs::remove_all(m_path);
    }

    std::vector<std::string> list() const {
        orlTest::CollectedNames collected;
        listRegularFiles(m_path.string(), collected);
        return collected.names;
    }

    fs::path const m_path = fs::temp_directory_path() / ("orlDirectoryReadTest" + std::to_string(getpid()));
};

TEST_F(DirectoryRead, AsksForTheTypesThatTheListingDoesNotTell) {
    listing.tellsTypes = false;
    EXPECT_THAT(list(), UnorderedElementsAre("a.1", "a.2", "link"));
}

TEST_F(DirectoryRead, ThrowsForAListingThatBreaksOff) {
    listing.entriesUntilFailure = 2;
    listing.readFailure = EIO;
    orlTest::CollectedNames collected;
    try {
        listRegularFiles(m_path.string(), collected);
        FAIL() << "nothing thrown";
    } catch (fs::filesystem_error const& error) {
        EXPECT_EQ(error.code(), std::errc::io_error);
        EXPECT_EQ(error.path1(), m_path);
    }
    Vector<String> sequences;
    EXPECT_THROW(FileSequenceUtils::getSequencesInDirectory(m_path.c_str(), sequences, ""),
                 fs::filesystem_error);
}

TEST_F(DirectoryRead, EndsWhereThePermissionEnds) {
    listing.entriesUntilFailure = 0;
    listing.readFailure = EACCES;
    EXPECT_THAT(list(), IsEmpty());
    Vector<String> sequences;
    EXPECT_EQ(FileSequenceUtils::getSequencesInDirectory(m_path.c_str(), sequences, ""),
              Status::kNoFilenamesFound);
}

TEST_F(DirectoryRead, IsEmptyIfItMayNotBeSearchedAndGoesOnAfterAnyOtherFailure) {
    listing.ownStatusFailure = EACCES;
    EXPECT_THAT(list(), IsEmpty());
    listing.ownStatusFailure = EIO;
    EXPECT_THAT(list(), SizeIs(3));
}

} // namespace
