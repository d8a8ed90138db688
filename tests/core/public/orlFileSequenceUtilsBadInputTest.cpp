// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "support/TimeLimit.h"
#include "support/orlLibrarySequences.h"

#include <gtest/gtest.h>

#include <pthread.h>

#include <algorithm>
#include <chrono>
#include <functional>
#include <string>
#include <vector>

// Names and filters that an engine of regular expressions would recurse on until the stack ends, or search
// for ever. All of it on the test's own thread and on one with a small stack.

// The thread sanitizer follows calls 65,536 deep, and fails beyond that.
#if defined(__SANITIZE_THREAD__)
#define SKIP_DEEP_CALLS() GTEST_SKIP() << "calls deeper than the thread sanitizer follows"
#else
#define SKIP_DEEP_CALLS() static_cast<void>(0)
#endif

// An engine that cannot follow all alternatives at a time takes its whole budget for each long name: minutes, in all.
#ifdef __GLIBCXX__
#define SKIP_SLOW_ENGINE() static_cast<void>(0)
#else
#define SKIP_SLOW_ENGINE() GTEST_SKIP() << "this standard library's engine gives up late"
#endif

namespace {

using namespace ORL_0_81;
using namespace orlTest;

using Names = std::vector<std::string>;

constexpr std::size_t MEGABYTE = 1 << 20;

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__) || !defined(NDEBUG)
constexpr std::size_t SMALL_STACK = 512 << 10; // their frames are larger
constexpr std::size_t DEEP = 3000;             // and slower
#else
constexpr std::size_t SMALL_STACK = 128 << 10;
constexpr std::size_t DEEP = 20000;
#endif
constexpr std::chrono::seconds PATIENCE(240);

void runHere(std::function<void()> const& action) { action(); }

void runOnASmallStack(std::function<void()> const& action) {
    pthread_attr_t attributes;
    ASSERT_EQ(pthread_attr_init(&attributes), 0);
    ASSERT_EQ(pthread_attr_setstacksize(&attributes, SMALL_STACK), 0);
    pthread_t thread;
    std::function<void()> own = action;
    auto const start = [](void* argument) -> void* {
        (*static_cast<std::function<void()>*>(argument))();
        return nullptr;
    };
    ASSERT_EQ(pthread_create(&thread, &attributes, start, &own), 0);
    ASSERT_EQ(pthread_join(thread, nullptr), 0);
    pthread_attr_destroy(&attributes);
}

struct Outcome {
    Status status;
    Names found;
};

struct Place {
    char const* name;
    void (*run)(std::function<void()> const&);
};

void PrintTo(Place const& place, std::ostream* stream) { *stream << place.name; }

class FileSequenceUtilsBadInput : public testing::TestWithParam<Place> {
protected:
    static Outcome find(Names const& names, std::string const& filter = "") {
        Outcome outcome;
        GetParam().run(
            [&] { outcome.status = LibrarySequences::getSequencesInFileList(names, outcome.found, filter); });
        return outcome;
    }

    // Compared without being printed.
    static void expectFound(Names const& names, Names const& expected, char const* what) {
        Outcome const outcome = find(names);
        EXPECT_STREQ(outcome.status.getStr(), "kSuccess") << what;
        EXPECT_EQ(outcome.found.size(), expected.size()) << what;
        EXPECT_TRUE(outcome.found == expected) << what;
    }

    static bool has(Names const& names, std::string const& name) {
        return std::find(names.begin(), names.end(), name) != names.end();
    }

    TimeLimit m_limit{"a hostile list", PATIENCE};
};

std::string repeated(std::string const& text, std::size_t times) {
    std::string result;
    result.reserve(text.size() * times);
    for (; times > 0; --times) {
        result += text;
    }
    return result;
}

TEST_P(FileSequenceUtilsBadInput, NamesOfAMegabyteAreGroupedLikeShortOnes) {
    for (std::string const part : {"a", ".", "(", "a.", "%", "\n", "\xff"}) {
        std::string const text = repeated(part, MEGABYTE / part.size());
        std::string const name = text + ".1.";
        expectFound({text + ".1." + text, text + ".2." + text, text}, {text + ".%01d." + text, text},
                    part.c_str());
    }
    std::string const nuls(MEGABYTE, '\0');
    expectFound({nuls + "1", nuls + "2"}, {nuls + "%01d"}, "NUL");
}

TEST_P(FileSequenceUtilsBadInput, AMegabyteOfDigitsIsAHundredThousandFields) {
    std::string const digits(MEGABYTE, '1'); // the last field has the four digits that nines leave over
    static_assert(MEGABYTE % 9 == 4, "the last field");
    std::string other = digits;
    other.back() = '2';
    expectFound({digits}, {digits}, "alone");
    expectFound({digits, other}, {digits.substr(0, MEGABYTE - 4) + "%04d"}, "two");
    other = digits;
    other.front() = '2';
    expectFound({digits, other}, {"%09d" + digits.substr(9)}, "two that differ at the front");
}

TEST_P(FileSequenceUtilsBadInput, AMegabyteOfShortFieldsIsNoHang) {
    for (std::string const part : {"1-", "1.", "a1", "-1", "1--"}) {
        std::string const text = repeated(part, MEGABYTE / part.size());
        expectFound({text + "x"}, {text + "x"}, part.c_str());
        expectFound({text + "x1", text + "x2"}, {text + "x%01d"}, part.c_str());
    }
}

TEST_P(FileSequenceUtilsBadInput, FrameSymbolsOfAMegabyteAreSeenAndRemoved) {
    std::string const digits(MEGABYTE, '0');
    std::string const dots(MEGABYTE, '.');
    struct Row {
        std::string name;
        bool isSequence;
        std::string stripped;
    };
    std::vector<Row> const rows = {{"%" + digits + "d", true, ""},
                                   {"%" + digits, false, "%" + digits},
                                   {repeated("%0", MEGABYTE / 2), false, repeated("%0", MEGABYTE / 2)},
                                   {repeated("%d", MEGABYTE / 2), true, ""},
                                   {std::string(MEGABYTE, '%'), false, std::string(MEGABYTE, '%')},
                                   {dots, false, std::string(MEGABYTE / 2 - 2, '.')},
                                   {std::string(MEGABYTE, '\\'), false, ""},
                                   {std::string(MEGABYTE, '('), false, std::string(MEGABYTE, '(')}};
    for (Row const& row : rows) {
        bool isSequence = !row.isSequence;
        std::string stripped;
        Status seen;
        Status removed;
        GetParam().run([&] {
            seen = LibrarySequences::isSequenceName(row.name, isSequence);
            removed = LibrarySequences::removeFrameSymbols(row.name, stripped);
        });
        std::string const start = row.name.substr(0, 4);
        EXPECT_STREQ(seen.getStr(), "kSuccess") << start;
        EXPECT_STREQ(removed.getStr(), "kSuccess") << start;
        EXPECT_EQ(isSequence, row.isSequence) << start;
        EXPECT_TRUE(stripped == row.stripped) << start << ": " << stripped.size() << " bytes";
    }
}

TEST_P(FileSequenceUtilsBadInput, LongNamesWithBackslashesCostTheOthersNothing) {
    for (std::string const part : {"\\.", "\\", "\\(", "\\.a", "\\[", "\\d", "\\*", "\\\\", "a\\|"}) {
        for (std::size_t const size : {DEEP, MEGABYTE}) {
            std::string const text = repeated(part, size / part.size());
            Outcome const outcome = find({"b.1", text + "1", text + "2", "c.1", "b.2", "1" + text, "c.2"});
            EXPECT_STREQ(outcome.status.getStr(), "kSuccess") << part;
            EXPECT_TRUE(has(outcome.found, "b.%01d")) << part << " " << size;
            EXPECT_TRUE(has(outcome.found, "c.%01d")) << part << " " << size;
            EXPECT_LE(outcome.found.size(), 5u) << part << " " << size;
        }
    }
}

TEST_P(FileSequenceUtilsBadInput, LongNamesAreMatchedWithThePatternOfAShortBackslash) {
    std::string const text(MEGABYTE, 'x');
    Outcome const outcome = find({"a\\.1", text + "1", "a\\:2", text + "2"});
    EXPECT_STREQ(outcome.status.getStr(), "kSuccess");
    ASSERT_EQ(outcome.found.size(), 2u);
    EXPECT_EQ(outcome.found[0], "a.%01d");
    EXPECT_TRUE(outcome.found[1] == text + "%01d");
}

TEST_P(FileSequenceUtilsBadInput, TheFilterThatPassesEverythingPassesLongNames) {
    for (std::size_t const size : {std::size_t{100000}, MEGABYTE}) {
        std::string const text(size, 'a');
        for (char const* const filter : {".*", ""}) {
            Outcome const outcome = find({text + ".1", "b.1", text + ".2", "b.2"}, filter);
            EXPECT_STREQ(outcome.status.getStr(), "kSuccess") << filter;
            ASSERT_EQ(outcome.found.size(), 2u) << filter;
            EXPECT_TRUE(outcome.found[0] == text + ".%01d") << filter;
            EXPECT_EQ(outcome.found[1], "b.%01d") << filter;
        }
    }
}

TEST_P(FileSequenceUtilsBadInput, AFilterThatRunsFarOnLongNamesJudgesShortOnes) {
    SKIP_DEEP_CALLS();
    SKIP_SLOW_ENGINE();
    std::string const text(100000, 'a');
    for (char const* const filter :
         {"a.*b", "(a|b)*b", "(.|\n)*b$", "[a-z]+b", "(a*)*b", "(a+)+b$", "(?:a?){30}b", "^([ab]|a)*b",
          "(a|aa)*b", "(.*)(.*)(.*)b\\1", ".*.*.*b", "^(?=.*b)"}) {
        // No long name holds a b, so the engine's surrender and its answer are one.
        Outcome const outcome = find({"ab", text, text + "!", "aab"}, filter);
        EXPECT_STREQ(outcome.status.getStr(), "kSuccess") << filter;
        EXPECT_TRUE(outcome.found == (Names{"ab", "aab"})) << filter << ": " << outcome.found.size();
    }
}

TEST_P(FileSequenceUtilsBadInput, ALongNameOnWhichTheFilterSurrendersOrMatchesIsNoMoreThanItself) {
    SKIP_SLOW_ENGINE();
    std::string const text = std::string(100000, 'a') + "b";
    for (char const* const filter : {"a.*b", "(a|b)*b$", "[a-z]+b", "^.*$", "(a)*?b", ".+"}) {
        Outcome const outcome = find({text, "ab"}, filter);
        EXPECT_STREQ(outcome.status.getStr(), "kSuccess") << filter;
        EXPECT_TRUE(outcome.found == (Names{text, "ab"}) || outcome.found == Names{"ab"}) << filter;
    }
}

TEST_P(FileSequenceUtilsBadInput, AFilterThatExplodesGivesUp) {
    std::string const text(60, 'a');
    for (char const* const filter :
         {"^(a+)+$", "^(a|a)*$", "^(a|aa)+$", "(a*)*c", "(x+x+)+y|^(a+)+$", "^(a?){50}a{50}b"}) {
        // The filter is in none of the names with an exclamation mark.
        Outcome const outcome = find({text + "!", "aa", text + "a!"}, filter);
        EXPECT_STREQ(outcome.status.getStr(), "kSuccess") << filter;
        EXPECT_TRUE(outcome.found.empty() || outcome.found == Names{"aa"}) << filter;
    }
}

TEST_P(FileSequenceUtilsBadInput, AFilterOfAnySizeCompilesOrFails) {
    SKIP_DEEP_CALLS();
    std::string const many(100000, '(');
    std::string const closed(100000, ')');
    std::string const thousand(1000, '(');
    struct Row {
        char const* what;
        std::string filter;
        bool isWellFormed;
    };
    std::vector<Row> const rows = {
        {"opened", many, false},
        {"closed", closed, false},
        {"brackets", std::string(MEGABYTE, '['), false},
        {"stars", "a" + std::string(100000, '*'), true},
        {"nested", many + "a" + closed, true},
        {"nested groups", repeated("(?:", 50000) + "a" + repeated(")", 50000), true},
        {"nested assertions", repeated("(?=", 50000) + "a" + repeated(")", 50000), true},
        {"alternatives", repeated("b|", 100000) + "a", true},
        {"nested alternatives", repeated("(b|", 50000) + "a" + repeated(")", 50000), true},
        {"a long text", std::string(MEGABYTE, 'a'), true},
        {"repetitions", "((a{1000}){1000}){1000}", true},
        {"a repetition", "a{100000000}", true},
        {"a repetition beyond numbers", "a{99999999999999999999}", true},
        {"a reference beyond numbers", "(a)\\99999999999999999999", true},
        {"NUL", std::string("a\0b", 3), true},
        {"no UTF-8", "\xff\xfe", true}};
    for (Row const& row : rows) {
        Outcome const outcome = find({"a", "b", "ab.1", "ab.2"}, row.filter);
        if (row.isWellFormed) { // the engine may find it too large
            EXPECT_TRUE(outcome.status.success() || outcome.status == Status::kRegexException) << row.what;
        } else {
            EXPECT_STREQ(outcome.status.getStr(), "kRegexException") << row.what;
        }
        EXPECT_TRUE(outcome.status.success() || outcome.found.empty()) << row.what;
    }
}

// Texts of two letters, each the other's opposite, that have one polynomial hash modulo a power of two,
// whatever the factor.
std::string alternating(std::size_t size, bool opposite) {
    std::string text;
    for (std::size_t i = 0; i < size; ++i) {
        bool odd = opposite;
        for (std::size_t bits = i; bits != 0; bits &= bits - 1) {
            odd = !odd;
        }
        text += odd ? 'b' : 'a';
    }
    return text;
}

TEST_P(FileSequenceUtilsBadInput, NamesThatFoolAHashAreToldApart) {
    for (std::size_t const size : {1024u, 2048u, 4096u, 65536u}) {
        std::string const text = alternating(size, false);
        std::string const opposite = alternating(size, true);
        for (Names const& names : {Names{text + "1", opposite + "2"}, Names{"1" + text, "2" + opposite},
                                   Names{text + "1" + opposite, opposite + "2" + text},
                                   Names{text + "1" + text, text + "2" + opposite, opposite + "3" + text}}) {
            expectFound(names, names, "opposites");
        }
    }
}

TEST_P(FileSequenceUtilsBadInput, ManyNamesThatFoolAHashAreNoHang) {
    std::string const text = alternating(2048, false);
    std::string const opposite = alternating(2048, true);
    Names names;
    for (unsigned int i = 0; i < 1024; ++i) {
        std::string name;
        for (unsigned int bit = 0; bit < 10; ++bit) {
            name += (i >> bit & 1) != 0 ? text : opposite;
        }
        names.push_back(name + ".1");
    }
    expectFound(names, names, "many opposites");
}

TEST_P(FileSequenceUtilsBadInput, ManyEmptyNamesAreDropped) {
    Names names(100000);
    names.emplace_back("a");
    expectFound(names, {"a"}, "empty names");
}

INSTANTIATE_TEST_SUITE_P(, FileSequenceUtilsBadInput,
                         testing::Values(Place{"Here", runHere}, Place{"OnASmallStack", runOnASmallStack}),
                         [](testing::TestParamInfo<Place> const& tested) {
                             return std::string(tested.param.name);
                         });

} // namespace
