// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project

// What happens when the system starts no more threads. The program's own pthread_create stands in for the
// system's.
#include "internal/orlThread.h"
#include "support/TimeLimit.h"

#include <orlJobDispatcher.h>

#include <gtest/gtest.h>

#include <dlfcn.h>
#include <pthread.h>

#include <atomic>
#include <cerrno>
#include <system_error>

namespace {

std::atomic<int> threadsUntilFailure{-1}; // negative: never

} // namespace

// NOLINTNEXTLINE(readability-identifier-naming)
extern "C" __attribute__((visibility("default"))) int pthread_create(pthread_t* thread,
                                                                     pthread_attr_t const* attributes,
                                                                     void* (*start)(void*),
                                                                     void* argument) noexcept {
    using Create = int (*)(pthread_t*, pthread_attr_t const*, void* (*)(void*), void*);
    static auto const create = reinterpret_cast<Create>(dlsym(RTLD_NEXT, "pthread_create"));
    if (threadsUntilFailure == 0) {
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

} // namespace
