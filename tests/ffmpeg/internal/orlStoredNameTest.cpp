// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "internal/orlStoredName.h"

#include "support/Damage.h"

#include <filesystem>
#include <string>

namespace {

using namespace ORL_0_81::media;

char const* const COMPOSED = "\xc3\xa9";     // e with an acute accent, one character
char const* const TAKEN_APART = "e\xcc\x81"; // and its two

std::string twice(std::string const& text) { return text + text; }

TEST(ComparableName, IsTheSameForTextsThatLookAlike) {
    EXPECT_EQ(comparableName(twice(COMPOSED)), comparableName(twice(TAKEN_APART)));
    // An s with a dot above and one below: one character, one and a mark, and the marks in either order.
    std::string const marks = comparableName("s\xcc\xa3\xcc\x87");
    EXPECT_EQ(comparableName("\xe1\xb9\xa9"), marks);
    EXPECT_EQ(comparableName("\xe1\xb9\xa1\xcc\xa3"), marks);
    EXPECT_EQ(comparableName("s\xcc\x87\xcc\xa3"), marks);
    // A Hangul syllable and its letters.
    EXPECT_EQ(comparableName("\xed\x95\x9c"), comparableName("\xe1\x84\x92\xe1\x85\xa1\xe1\x86\xab"));
}

TEST(ComparableName, IsTheNameItselfWhereNothingCanBeTakenApart) {
    for (std::string const name : {"", "plain.0001.exr", "\xc3\x9f", "\xff\xfe", "a\xc3"}) {
        EXPECT_EQ(comparableName(name), name);
    }
    EXPECT_NE(comparableName("E"), comparableName("e"));
    EXPECT_NE(comparableName(COMPOSED), comparableName("e"));
    std::string const withZero("\xc3\x9f\0b", 4);
    EXPECT_EQ(comparableName(withZero), withZero);
}

class StoredPathTest : public testing::Test {
protected:
    std::string find(std::string const& path) const { return findStoredPath(m_folder.path(path)); }
    std::string path(std::string const& name) const { return m_folder.path(name); }
    void make(std::string const& name) const {
        std::filesystem::create_directories(std::filesystem::path(path(name)).parent_path());
        (void)m_folder.write(name, "x");
    }

private:
    Damage::Folder const m_folder;
};

TEST_F(StoredPathTest, IsThatOfWhatLooksLikeTheNameThatIsNotThere) {
    std::string const stored = std::string("d") + COMPOSED + "/b/" + TAKEN_APART + ".mov";
    make(stored);
    EXPECT_EQ(find(std::string("d") + TAKEN_APART + "/b/" + COMPOSED + ".mov"), path(stored));
    EXPECT_EQ(find(std::string("d") + COMPOSED + "/b/" + COMPOSED + ".mov"), path(stored));
    EXPECT_EQ(find(std::string("d") + TAKEN_APART + "/b/" + TAKEN_APART + ".mov"), path(stored));
    EXPECT_EQ(find(std::string("d") + TAKEN_APART + "/b"), path(std::string("d") + COMPOSED + "/b"));
    EXPECT_EQ(find(std::string("d") + TAKEN_APART + "//b/"), path(std::string("d") + COMPOSED + "//b/"));
}

TEST_F(StoredPathTest, IsEmptyWhereNothingLooksAlike) {
    make(std::string(COMPOSED) + ".mov");
    EXPECT_EQ(find(std::string(TAKEN_APART) + ".mp4"), "");
    EXPECT_EQ(find(std::string(TAKEN_APART) + "/a.mov"), "");
    EXPECT_EQ(find(std::string(TAKEN_APART) + ".mov/a.mov"), "");
    EXPECT_EQ(find("e.mov"), "");
    EXPECT_EQ(findStoredPath(""), "");
    EXPECT_EQ(findStoredPath(std::string(1000000, '\xcc')), "");
}

TEST_F(StoredPathTest, IsTheFirstOfSeveralThatLookAlike) {
    make("a\xcc\xa3\xcc\x87");
    make("\xe1\xba\xa1\xcc\x87");
    EXPECT_EQ(find("\xc8\xa7\xcc\xa3"), path("a\xcc\xa3\xcc\x87"));
}

} // namespace
