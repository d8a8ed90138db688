// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "internal/orlGuardedRegex.h"

#include "internal/orlRoomyStack.h"

#include <gtest/gtest.h>

#include <regex>
#include <string>
#include <thread>
#include <vector>

// The thread sanitizer follows calls 65,536 deep, and fails beyond that.
#if defined(__SANITIZE_THREAD__)
#define SKIP_DEEP_CALLS() GTEST_SKIP() << "calls deeper than the thread sanitizer follows"
#else
#define SKIP_DEEP_CALLS() static_cast<void>(0)
#endif

namespace {

using namespace ORL_0_81;
using namespace std::string_literals;
using FrameNotation::Span;

std::string repeated(std::string const& text, std::size_t count) {
    std::string result;
    for (; count > 0; --count) {
        result += text;
    }
    return result;
}

// On a thread with no more stack than is common.
template <class Task>
void onSmallStack(Task const& task) {
    pthread_attr_t attributes;
    pthread_attr_init(&attributes);
    pthread_attr_setstacksize(&attributes, 512 * 1024);
    pthread_t thread;
    ASSERT_EQ(pthread_create(
                  &thread, &attributes,
                  [](void* argument) -> void* {
                      (*static_cast<Task const*>(argument))();
                      return nullptr;
                  },
                  const_cast<Task*>(&task)),
              0);
    pthread_join(thread, nullptr);
    pthread_attr_destroy(&attributes);
}

struct Search {
    std::string pattern;
    std::string text;
    bool isFound;
};

TEST(GuardedRegex, FindsWhatTheStandardLibraryFinds) {
    for (Search const& example : std::vector<Search>{{"", "", true},
                                                     {"b", "abc", true},
                                                     {"^b", "abc", false},
                                                     {"^b", "a\nbc", false},
                                                     {"a$", "a\nb", false},
                                                     {"a.b", "a\nb", false},
                                                     {"a[^x]b", "a\nb", true},
                                                     {"a\0b"s, "xa\0by"s, true},
                                                     {"(a|b)\\1", "ab", false},
                                                     {"(a|b)\\1", "abb", true},
                                                     {"\\d{3}", "a12b345", true},
                                                     {"[[:digit:]]{3}", "a12b34", false},
                                                     {"\\w", "\xC3\xA9", false},
                                                     {"a(?=b)", "ab", true},
                                                     {"a(?!b)", "ab", false},
                                                     {"\\bab\\b", "x ab.", true}}) {
        EXPECT_EQ(GuardedRegex(example.pattern).search(example.text), example.isFound)
            << example.pattern << " in " << example.text;
        EXPECT_EQ(std::regex_search(example.text, std::regex(example.pattern)), example.isFound);
    }
}

TEST(GuardedRegex, TellsTheCapturesOfAMatch) {
    GuardedRegex regex("a(b)?(c*)");
    EXPECT_EQ(regex.captureCount(), 2U);
    std::vector<Span> captures;
    ASSERT_TRUE(regex.match("acc", captures));
    EXPECT_EQ(captures, (std::vector<Span>{{3, 0}, {1, 2}}));
    ASSERT_TRUE(regex.match("ab", captures));
    EXPECT_EQ(captures, (std::vector<Span>{{1, 1}, {2, 0}}));
    EXPECT_FALSE(regex.match("abx", captures));
}

TEST(GuardedRegex, RefusesMalformedPatterns) {
    for (std::string const pattern : {"(", ")", "[", "a{2", "*", "\\", "(?<n>a)"}) {
        EXPECT_THROW(GuardedRegex{pattern}, std::regex_error) << pattern;
    }
}

TEST(GuardedRegex, RefusesPatternsOfAnySizeWithoutExhaustingTheStack) {
    SKIP_DEEP_CALLS();
    onSmallStack([] {
        for (std::string const piece : {"(", "(a", "a", "[", "\\\\", "(?:", "(?=", "a|", "(|"}) {
            for (std::size_t const count : {100U, 1000U, 30000U, 90000U, 1000000U}) {
                std::string const pattern = repeated(piece, count);
                try {
                    GuardedRegex regex(pattern);
                    regex.search("aaa");
                } catch (std::regex_error const&) {
                    continue;
                }
            }
        }
    });
}

TEST(GuardedRegex, CompilesWhatNeedsMuchStackOnARoomyOne) {
    onSmallStack([] {
        std::string const deep = repeated("(", 2000) + "a" + repeated(")", 2000);
        GuardedRegex regex(deep);
        EXPECT_TRUE(regex.needsRoom());
        EXPECT_TRUE(regex.search("xxa"));
        EXPECT_FALSE(regex.search("xxb"));
        GuardedRegex empties("(){20000}b");
        EXPECT_TRUE(empties.needsRoom());
#ifdef __GLIBCXX__
        EXPECT_TRUE(empties.search("abc"));
#else
        // Within its stack, but perhaps not within a limit that the engine has itself.
        try {
            EXPECT_TRUE(empties.search("abc"));
        } catch (std::regex_error const& failure) {
            EXPECT_EQ(failure.code(), std::regex_constants::error_complexity);
        }
#endif
        EXPECT_FALSE(GuardedRegex("\\.exr$").needsRoom());
        EXPECT_FALSE(GuardedRegex("^[a-z_]+\\.(\\d{4}|\\d{8})\\.(exr|tif|dpx)$").needsRoom());
    });
}

TEST(GuardedRegex, FindsInTextsOfAnyLengthWithoutExhaustingTheStack) {
    onSmallStack([] {
        std::string const text = std::string(1000000, 'x') + "y";
        EXPECT_TRUE(GuardedRegex("x.*y").search(text.substr(text.size() - 30000)));
        EXPECT_TRUE(GuardedRegex("y$").search(text));
        EXPECT_TRUE(GuardedRegex("[^z]y").search(text));
        EXPECT_FALSE(GuardedRegex("yx").search(text));
    });
}

TEST(GuardedRegex, MatchesTextsOfAnyLengthWithoutExhaustingTheStack) {
    SKIP_DEEP_CALLS();
    onSmallStack([] {
        std::string const text = std::string(30000, 'x') + "y";
        GuardedRegex regex("(x).*(y)");
        EXPECT_FALSE(regex.needsRoom());
        std::vector<Span> captures;
        ASSERT_TRUE(regex.match(text, captures));
        EXPECT_EQ(captures, (std::vector<Span>{{0, 1}, {30000, 1}}));
        EXPECT_FALSE(regex.match(text + "z", captures));
        // What was matched before is searched for in one way only.
        EXPECT_TRUE(GuardedRegex("(y)x*\\1").search(text.substr(text.size() - 1) + text));
    });
}

TEST(GuardedRegex, MatchesOnARoomyStackWhatNeedsOne) {
    onSmallStack([] {
        GuardedRegex regex(repeated("(", 2000) + "a" + repeated(")", 2000));
        std::vector<Span> captures;
        ASSERT_TRUE(regex.match("a", captures));
        EXPECT_EQ(captures, std::vector<Span>(2000, Span{0, 1}));
        EXPECT_FALSE(regex.match("b", captures));
    });
}

// What stays within the bounds, and what does not, depends on the engine; that it ends does not.
// The second time shows that giving up leaves the pattern as it was. Instrumented, once takes long enough.
#ifdef __SANITIZE_ADDRESS__
constexpr int TIMES = 1;
#else
constexpr int TIMES = 2;
#endif

TEST(GuardedRegex, GivesUpInTime) {
    SKIP_DEEP_CALLS();
#ifndef __GLIBCXX__
    GTEST_SKIP() << "this standard library's engine gives up after minutes, without optimisation";
#endif
    std::string const name = std::string(60, 'a') + "b";
    std::string const longName = std::string(50000, 'a') + "b";
    for (std::string const pattern :
         {"^(a+)+$", "^(a|aa)+$", "(a*)*c", "^(a+)+\\1$", "(.*)(.*)(.*)(.*)(.*)c"}) {
        for (std::string const& text : {name, longName}) {
            GuardedRegex regex(pattern);
            for (int time = 0; time < TIMES; ++time) {
                try {
                    EXPECT_FALSE(regex.search(text)) << pattern;
                } catch (std::regex_error const&) {
                    continue;
                }
            }
        }
    }
}

TEST(GuardedRegex, GivesUpAMatchInTimeAndGoesOn) {
    for (std::string const pattern : {"(a+)+", "(a|aa)+", "(a*)*c"}) {
        GuardedRegex regex(pattern);
        std::vector<Span> captures;
        try {
            EXPECT_FALSE(regex.match(std::string(60, 'a') + "b", captures)) << pattern;
        } catch (std::regex_error const& failure) {
            EXPECT_EQ(failure.code(), std::regex_constants::error_complexity) << pattern;
        }
        EXPECT_TRUE(regex.match(pattern.back() == 'c' ? "aac" : "aa", captures)) << pattern;
    }
}

#ifdef __GLIBCXX__
TEST(GuardedRegex, GivesUpWhatTakesTooLongInEitherWay) {
    // From each character on, hundreds are followed, or each is held to hundreds of places in the pattern.
    GuardedRegex regex("a{400}b");
    ASSERT_FALSE(regex.needsRoom());
    try {
        regex.search(std::string(60000, 'a'));
        FAIL() << "not given up";
    } catch (std::regex_error const& failure) {
        EXPECT_EQ(failure.code(), std::regex_constants::error_complexity);
    }
    EXPECT_TRUE(regex.search("x" + std::string(400, 'a') + "b"));
}

#if defined(NDEBUG) && defined(__OPTIMIZE__) // or it takes minutes
TEST(GuardedRegex, LosesItsPatienceWithAPatternThatIsAlwaysGivenUp) {
    GuardedRegex regex("^(a+)+\\1?b?$");
    std::string const quick = "aab";
    std::string const patient = std::string(12, 'a') + "c";
    EXPECT_FALSE(regex.search(patient));
    std::string const hopeless = std::string(60, 'a') + "c";
    for (int i = 0; i < 2000; ++i) {
        EXPECT_THROW(regex.search(hopeless), std::regex_error);
    }
    EXPECT_TRUE(regex.search(quick));
    EXPECT_THROW(regex.search(patient), std::regex_error);
    EXPECT_FALSE(GuardedRegex("^(a+)+\\1?b?$").search(patient)) << "only that one has lost it";
}
#endif

TEST(GuardedRegex, FindsAlsoAfterAnExponentialSearchWhatIsThere) {
    GuardedRegex regex("^(a+)+$");
    EXPECT_FALSE(regex.search(std::string(60, 'a') + "b"));
    EXPECT_TRUE(regex.search(std::string(60, 'a')));
    EXPECT_FALSE(regex.search("ab"));
    GuardedRegex reference("^(a+)+\\1?b?$");
    EXPECT_THROW(reference.search(std::string(60, 'a') + "c"), std::regex_error);
    EXPECT_TRUE(reference.search("aab"));
}
#endif

TEST(RoomyStack, PassesOnWhatItsTaskThrows) {
    EXPECT_THROW(RoomyStack::run([] { throw std::runtime_error("on purpose"); }), std::runtime_error);
}

TEST(RoomyStack, HasRoomForWhatTheCallersHaveNot) {
    EXPECT_FALSE(RoomyStack::isHere());
    std::size_t const room = RoomyStack::room();
    std::thread::id inner;
    std::thread::id outer;
    EXPECT_TRUE(RoomyStack::run([&] {
        EXPECT_TRUE(RoomyStack::isHere());
        EXPECT_GT(RoomyStack::room(), room * 100);
        outer = std::this_thread::get_id();
        RoomyStack::run([&] { inner = std::this_thread::get_id(); });
    }));
    EXPECT_EQ(inner, outer);
    EXPECT_NE(outer, std::this_thread::get_id());
    EXPECT_FALSE(RoomyStack::isHere());
}

TEST(RoomyStack, HasNoRoomLeftWhereItsReserveBegins) {
    EXPECT_TRUE(RoomyStack::run([] {
        // Taken, but never touched.
        auto* const taken = static_cast<char volatile*>(__builtin_alloca(RoomyStack::room() + 1));
        taken[0] = 1;
        EXPECT_EQ(RoomyStack::room(), 0U);
    }));
}

TEST(GuardedRegex, RefusesNumbersBeyondCounting) {
    for (char const* pattern : {"a{2147483648}", "a{4294967297}", "a{1,99999999999999999999}",
                                "a{99999999999999999999,}", "a{,2147483648}", "(a)\\4294967297",
                                "(a)\\99999999999999999999", "[\\99999999999]a{99999999999}"}) {
        EXPECT_THROW(GuardedRegex regex(pattern), std::regex_error) << pattern;
    }
}

TEST(GuardedRegex, TakesLargeNumbersThatCountNothing) {
    EXPECT_TRUE(GuardedRegex("12345678901234567890").search("x12345678901234567890"));
    EXPECT_TRUE(GuardedRegex("[{99999999999]+x").search("9{x"));
    EXPECT_TRUE(GuardedRegex("\\{99999999999").search("{99999999999"));
    EXPECT_TRUE(GuardedRegex("a{1,2}99999999999").search("aa99999999999"));
}

} // namespace
