// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "internal/orlSequenceDetector.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <regex>
#include <string>
#include <vector>

namespace {

using namespace ORL_0_81;
using FrameNotation::Span;
using testing::ElementsAre;
using testing::IsEmpty;

using Names = std::vector<std::string>;

class Collected : public SequenceDetector::Results {
public:
    void addName(std::size_t, std::string_view name) override { results.emplace_back(name); }
    void addText(std::string const& text) override { results.push_back(text); }

    Names results;
};

// Counts compilations and matches, and fails at one of them.
struct Failure {
    int compilations = 0;
    int matches = 0;
    int failingCompilation = 0;
    int failingMatch = 0;
    int missingMatch = 0;          // finds nothing
    std::size_t furtherGroups = 0; // that the pattern claims to have
};

class FailingPattern : public SequenceDetector::Pattern {
public:
    FailingPattern(std::string const& pattern, Failure& failure) : m_regex(pattern), m_failure(failure) {}

    std::size_t captureCount() const override { return m_regex.mark_count() + m_failure.furtherGroups; }

    bool match(std::string_view text, std::vector<Span>& captures) override {
        if (++m_failure.matches == m_failure.failingMatch) {
            throw std::regex_error(std::regex_constants::error_complexity);
        }
        std::cmatch results;
        if (m_failure.matches == m_failure.missingMatch ||
            !std::regex_match(text.data(), text.data() + text.size(), results, m_regex)) {
            return false;
        }
        captures.clear();
        for (std::size_t i = 1; i < results.size(); ++i) {
            captures.push_back(
                {static_cast<std::size_t>(results.position(i)), static_cast<std::size_t>(results.length(i))});
        }
        return true;
    }

private:
    std::regex m_regex;
    Failure& m_failure;
};

Names detect(Names const& names, Failure& failure) {
    std::vector<std::string_view> const views(names.begin(), names.end());
    NameFilter filter("");
    Collected collected;
    SequenceDetector(views, filter, collected, [&failure](std::string const& pattern) {
        if (++failure.compilations == failure.failingCompilation) {
            throw std::regex_error(std::regex_constants::error_space);
        }
        return std::make_unique<FailingPattern>(pattern, failure);
    }).run();
    return collected.results;
}

// A family of two with a backslash among others. Its turn compiles its all-fields pattern, its one candidate
// and, for claiming, that candidate again, and matches them: 1 name, 5 names, the name again, 5 names.
Names const NAMES = {"a\\.1", "x", "a\\.2", "y1", "y2"};

TEST(SequenceDetector, NeedsNoEngineForNamesWithoutABackslash) {
    Failure failure;
    EXPECT_THAT(detect({"a.1", "a.2", "b(1)", "c"}, failure), ElementsAre("a.%01d", "b(1)", "c"));
    EXPECT_EQ(failure.compilations, 0);
    EXPECT_EQ(failure.matches, 0);
}

TEST(SequenceDetector, TriesThePatternsOfANameWithABackslashOnAllThatAreLeft) {
    Failure failure;
    EXPECT_THAT(detect(NAMES, failure), ElementsAre("a.%01d", "x", "y%01d"));
    EXPECT_EQ(failure.compilations, 3);
    EXPECT_EQ(failure.matches, 12);
}

TEST(SequenceDetector, LosesTheNameWhosePatternFails) {
    // Alone, the other member of the family stays as it is.
    for (int const compilation : {1, 2, 3}) {
        Failure failure;
        failure.failingCompilation = compilation;
        EXPECT_THAT(detect(NAMES, failure), ElementsAre("x", "a.2", "y%01d")) << compilation;
    }
    for (int match = 1; match <= 8; ++match) {
        Failure failure;
        failure.failingMatch = match;
        EXPECT_THAT(detect(NAMES, failure), ElementsAre("x", "a.2", "y%01d")) << match;
    }
}

TEST(SequenceDetector, LosesTheNextNameWhenClaimingFailsAfterTheFirst) {
    // Before the second member of the family is claimed: the family is lost, the second is not.
    for (int const match : {9, 10}) {
        Failure failure;
        failure.failingMatch = match;
        EXPECT_THAT(detect(NAMES, failure), ElementsAre("a.2", "y%01d")) << match;
    }
    // After it.
    for (int const match : {11, 12}) {
        Failure failure;
        failure.failingMatch = match;
        EXPECT_THAT(detect(NAMES, failure), ElementsAre("y%01d")) << match;
    }
}

TEST(SequenceDetector, LosesNothingMoreWhenClaimingFailsAtTheEnd) {
    Failure failure;
    failure.failingMatch = 1 + 2 + 1 + 2;
    EXPECT_THAT(detect({"a\\.1", "a\\.2"}, failure), IsEmpty());
}

TEST(SequenceDetector, LeavesANameSingleThatItsOwnPatternsMiss) {
    // The pattern of all its fields, then the one that it has chosen.
    for (int const match : {1, 7}) {
        Failure failure;
        failure.missingMatch = match;
        EXPECT_THAT(detect(NAMES, failure), ElementsAre("a.1", "x", "a.2", "y%01d")) << match;
    }
}

TEST(SequenceDetector, LeavesANameSingleWhosePatternHasOtherGroupsThanItsFields) {
    Failure failure;
    failure.furtherGroups = 1;
    EXPECT_THAT(detect(NAMES, failure), ElementsAre("a.1", "x", "a.2", "y%01d"));
}

// Notes members beside the results, each by its number and the place of its frame.
class Members : public SequenceDetector::Results {
public:
    void addName(std::size_t index, std::string_view name) override {
        results.push_back(std::to_string(index) + " " + std::string(name));
    }
    void addText(std::string const& text) override { results.push_back(text); }
    bool wantsMembers() const override { return true; }
    void addMember(std::size_t index, Span const& frame) override {
        results.push_back(std::to_string(index) + " at " + std::to_string(frame.position) + "+" +
                          std::to_string(frame.length));
    }

    Names results;
};

Names membersOf(std::vector<std::string_view> const& names) {
    NameFilter filter("");
    Members members;
    SequenceDetector(names, filter, members).run();
    return members.results;
}

TEST(SequenceDetector, TellsTheMembersBeforeWhatTheyBelongTo) {
    EXPECT_THAT(membersOf({"a.9.exr", "b", "a.10.exr", "a.-1.exr"}),
                ElementsAre("0 at 2+1", "2 at 2+2", "3 at 2+2", "a.%01d.exr", "1 b"));
    EXPECT_THAT(membersOf({"a1_1", "a1_2", "a2_1"}),
                ElementsAre("0 at 3+1", "1 at 3+1", "a1_%01d", "2 a2_1"));
    EXPECT_THAT(membersOf({"a\\.7", "b", "a\\.08", "a\\x"}),
                ElementsAre("0 at 3+1", "2 at 3+2", "a.%01d", "1 b", "ax"));
}

} // namespace
