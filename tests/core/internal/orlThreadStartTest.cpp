// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project

// What happens when the system starts no more threads. The program's own pthread_create stands in for the
// system's.
#include "internal/orlGuardedRegex.h"
#include "internal/orlRoomyStack.h"
#include "internal/orlThread.h"
#include "support/TimeLimit.h"

#include <orlFileSequenceUtils.h>
#include <orlJobDispatcher.h>

#include <gtest/gtest.h>

#include <dlfcn.h>
#include <pthread.h>

#include <atomic>
#include <cerrno>
#include <cstddef>
#include <regex>
#include <string>
#include <system_error>
#include <vector>

namespace {

std::atomic<int> threadsUntilFailure{-1}; // negative: never
std::atomic<std::size_t> largestStack{0}; // 0: any

} // namespace

// NOLINTNEXTLINE(readability-identifier-naming)
extern "C" __attribute__((visibility("default"))) int pthread_create(pthread_t* thread,
                                                                     pthread_attr_t const* attributes,
                                                                     void* (*start)(void*),
                                                                     void* argument) noexcept {
    using Create = int (*)(pthread_t*, pthread_attr_t const*, void* (*)(void*), void*);
    static auto const create = reinterpret_cast<Create>(dlsym(RTLD_NEXT, "pthread_create"));
    std::size_t stackSize = 0;
    if (threadsUntilFailure == 0 ||
        (largestStack != 0 && attributes && pthread_attr_getstacksize(attributes, &stackSize) == 0 &&
         stackSize > largestStack)) {
        return EAGAIN;
    }
    if (threadsUntilFailure > 0) {
        --threadsUntilFailure;
    }
    return create(thread, attributes, start, argument);
}

namespace {

using namespace ORL_0_81;

using Job = SharedPtr<JobDispatcher::JobBase>;

// Lets that many threads start and no more, until it goes out of scope.
class ThreadLimit {
public:
    explicit ThreadLimit(int count) { threadsUntilFailure = count; }
    ThreadLimit(ThreadLimit const&) = delete;
    ThreadLimit& operator=(ThreadLimit const&) = delete;
    ~ThreadLimit() { threadsUntilFailure = -1; }
};

// Whether the operation throws the threading layer's error.
template <class Operation>
bool lacksThreads(int count, Operation const& operation) {
    ThreadLimit const limit(count);
    try {
        operation();
    } catch (std::system_error const& error) {
        return error.code() == std::errc::resource_unavailable_try_again;
    }
    return false;
}

class Count : public JobDispatcher::JobBase {
public:
    explicit Count(std::atomic<int>& runs) : m_runs(runs) {}

    void run() override { ++m_runs; }

private:
    std::atomic<int>& m_runs;
};

TEST(ThreadStart, AnAsyncRunWithoutAThreadThrowsAndRunsNothing) {
    TimeLimit const limit("a task without a thread");
    bool ran = false;
    EXPECT_TRUE(lacksThreads(0, [&] { Async::run([&ran] { ran = true; }); }));
    EXPECT_FALSE(ran);
    EXPECT_EQ(Async::run([] { return 1; }).get(), 1);
}

TEST(ThreadStart, ADispatcherThatLacksWorkersIsNotConstructed) {
    TimeLimit const limit("a constructor without threads");
    for (int started = 0; started < 3; ++started) {
        EXPECT_TRUE(lacksThreads(started, [] { JobDispatcher const dispatcher(3); })) << started;
    }
    EXPECT_FALSE(lacksThreads(3, [] { JobDispatcher const dispatcher(3); }));
}

TEST(ThreadStart, AStartThatFailsHalfWayLeavesTheWorkersThatItHasStarted) {
    TimeLimit const limit("a start without threads");
    std::atomic<int> runs{0};
    JobDispatcher dispatcher(3);
    dispatcher.stop();
    EXPECT_TRUE(lacksThreads(0, [&] { dispatcher.start(); }));
    dispatcher.addJob(Job(new Count(runs)));
    EXPECT_EQ(runs, 0);
    EXPECT_TRUE(lacksThreads(2, [&] { dispatcher.start(); }));
    dispatcher.addJob(Job(new Count(runs)));
    EXPECT_FALSE(lacksThreads(0, [&] { dispatcher.start(); })) << "there are some, so it does nothing";
    dispatcher.stop();
    EXPECT_EQ(runs, 2);
}

TEST(ThreadStart, AResizeThatFailsLeavesWhatStartLeavesAndTheNewCount) {
    TimeLimit const limit("a resize without threads");
    std::atomic<int> runs{0};
    JobDispatcher dispatcher(1);
    dispatcher.addJob(Job(new Count(runs)));
    EXPECT_TRUE(lacksThreads(0, [&] { dispatcher.resize(2); }));
    EXPECT_EQ(runs, 1) << "drained before";
    int const id = dispatcher.addJob(Job(new Count(runs)));
    EXPECT_FALSE(lacksThreads(2, [&] { dispatcher.start(); }));
    dispatcher.waitJob(id);
    EXPECT_EQ(runs, 2);
    dispatcher.stop();
    EXPECT_TRUE(lacksThreads(1, [&] { dispatcher.start(); })) << "it wants two";
}

// Lets no thread start whose stack is larger, until it goes out of scope.
class StackLimit {
public:
    explicit StackLimit(std::size_t size) { largestStack = size; }
    StackLimit(StackLimit const&) = delete;
    StackLimit& operator=(StackLimit const&) = delete;
    ~StackLimit() { largestStack = 0; }
};

constexpr std::size_t MEBIBYTE = std::size_t{1} << 20;

std::string const NEEDS_ROOM = std::string(2000, '(') + "a" + std::string(2000, ')');

// What the regular expression gives up with.
template <class Operation>
std::string failureOf(Operation const& operation) {
    try {
        operation();
    } catch (std::regex_error const& failure) {
        return failure.code() == std::regex_constants::error_stack ? "no stack" : "another failure";
    }
    return "none";
}

std::vector<std::string> sequencesOf(std::vector<std::string> const& names, char const* filter) {
    List<String> list;
    for (std::string const& name : names) {
        list.append(String(name.c_str()));
    }
    Vector<String> sequences;
    EXPECT_EQ(FileSequenceUtils::getSequencesInFileList(list, sequences, filter), Status::kSuccess);
    std::vector<std::string> result;
    for (unsigned long i = 0; i < sequences.size(); ++i) {
        result.emplace_back(sequences[i].asChar());
    }
    return result;
}

TEST(ThreadStart, ARoomyStackThatCannotBeHadRunsNothing) {
    ThreadLimit const limit(0);
    bool ran = false;
    EXPECT_FALSE(RoomyStack::run([&ran] { ran = true; }));
    EXPECT_FALSE(ran);
}

TEST(ThreadStart, ARoomyStackIsASmallerOneWhereMemoryIsScarce) {
    auto const roomWithin = [](std::size_t size) {
        StackLimit const limit(size);
        std::size_t room = 0;
        EXPECT_TRUE(RoomyStack::run([&room] { room = RoomyStack::room(); }));
        return room;
    };
    std::size_t const most = roomWithin(1024 * MEBIBYTE);
    std::size_t const less = roomWithin(100 * MEBIBYTE);
    std::size_t const least = roomWithin(20 * MEBIBYTE);
    EXPECT_LT(less, most);
    EXPECT_LT(less, 100 * MEBIBYTE);
    EXPECT_LT(least, less);
    EXPECT_LT(least, 20 * MEBIBYTE);
    EXPECT_GT(least, RoomyStack::CALLERS_ROOM * 100);
    StackLimit const limit(MEBIBYTE);
    EXPECT_FALSE(RoomyStack::run([] {}));
}

TEST(ThreadStart, AnExpressionThatNeedsRoomIsRefusedWithout) {
    {
        ThreadLimit const limit(0);
        EXPECT_EQ(failureOf([] { GuardedRegex const regex(NEEDS_ROOM); }), "no stack");
    }
    GuardedRegex regex(NEEDS_ROOM);
    ASSERT_TRUE(regex.search("a"));
    std::vector<GuardedRegex::Span> captures;
    ThreadLimit const limit(0);
    EXPECT_EQ(failureOf([&] { regex.search("a"); }), "no stack");
    EXPECT_EQ(failureOf([&] { regex.match("a", captures); }), "no stack");
}

TEST(ThreadStart, AFilterThatNeedsRoomIsRefusedWithout) {
    List<String> names;
    names.append("a");
    Vector<String> sequences;
    ThreadLimit const limit(0);
    EXPECT_EQ(FileSequenceUtils::getSequencesInFileList(names, sequences, NEEDS_ROOM.c_str()),
              Status::kRegexException);
    EXPECT_TRUE(sequences.empty());
}

TEST(ThreadStart, NamesAreLeftOutThatAFilterFindsNoRoomFor) {
    EXPECT_EQ(sequencesOf({"a1", "a2", "b"}, NEEDS_ROOM.c_str()), std::vector<std::string>{"a%01d"});
    ThreadLimit const limit(1); // for the filter itself
    EXPECT_EQ(sequencesOf({"a1", "a2", "b"}, NEEDS_ROOM.c_str()), std::vector<std::string>{});
}

TEST(ThreadStart, ANameIsLeftOutThatItsPatternFindsNoRoomFor) {
    std::string const longName = std::string(600, 'x') + "\\.1";
    std::string const withoutBackslash = std::string(600, 'x') + ".1";
    EXPECT_EQ(sequencesOf({longName, "b1", "b2"}, ""), (std::vector<std::string>{withoutBackslash, "b%01d"}));
    ThreadLimit const limit(0);
    EXPECT_EQ(sequencesOf({longName, "b1", "b2"}, ""), std::vector<std::string>{"b%01d"});
}

} // namespace
