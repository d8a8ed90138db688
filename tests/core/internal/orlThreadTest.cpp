// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "internal/orlThread.h"

#include "support/TimeLimit.h"

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <future>
#include <memory>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

namespace {

using namespace ORL_0_81;
using namespace std::chrono_literals;

std::string threadName() {
    String name;
    EXPECT_EQ(Platform::getThreadName(name), 0);
    return name.asChar();
}

TEST(AsyncRun, GivesTheResultOfTheCallable) {
    TimeLimit const limit("a result");
    EXPECT_EQ(Async::run([] { return 42; }).get(), 42);
    EXPECT_EQ(Async::run([] { return std::string(1000, 'x'); }).get(), std::string(1000, 'x'));
}

TEST(AsyncRun, GivesReferencesAndNothingToo) {
    TimeLimit const limit("a reference");
    int number = 1;
    std::future<int&> future = Async::run([&]() -> int& { return number; });
    EXPECT_EQ(&future.get(), &number);
    std::future<void> nothing = Async::run([&] { number = 2; });
    nothing.get();
    EXPECT_EQ(number, 2);
}

TEST(AsyncRun, StartsAtOnceWithoutAnyoneWaitingForTheResult) {
    TimeLimit const limit("a start");
    Gate started;
    std::future<void> const future = Async::run([&] { started.open(); });
    started.pass();
}

TEST(AsyncRun, GivesEveryTaskAThreadOfItsOwn) {
    TimeLimit const limit("tasks that wait for each other");
    // Each waits for all the others, so that no two can share a thread.
    constexpr int TASKS = 40;
    std::atomic<int> arrived{0};
    std::vector<std::future<void>> futures;
    for (int i = 0; i < TASKS; ++i) {
        futures.push_back(Async::run([&] {
            ++arrived;
            while (arrived < TASKS) {
                std::this_thread::sleep_for(1ms);
            }
        }));
    }
    for (std::future<void>& future : futures) {
        future.get();
    }
    EXPECT_EQ(arrived, TASKS);
}

TEST(AsyncRun, RunsOnAnotherThreadThanTheCallers) {
    TimeLimit const limit("another thread");
    EXPECT_NE(Async::run([] { return std::this_thread::get_id(); }).get(), std::this_thread::get_id());
}

TEST(AsyncRun, TheThreadBearsTheNameOfTheOneThatStartedIt) {
    TimeLimit const limit("names");
    std::thread([] {
        Platform::setThreadName(String("fifteen bytes.."));
        EXPECT_EQ(Async::run(threadName).get(), "fifteen bytes..");
        Platform::setThreadName(String("renamed"));
        EXPECT_EQ(Async::run(threadName).get(), "renamed");
        EXPECT_EQ(Async::run([] { return Async::run(threadName).get(); }).get(), "renamed");
    }).join();
}

TEST(AsyncRun, ARenamedTaskLeavesItsStarterAlone) {
    TimeLimit const limit("names");
    std::string const before = threadName();
    Async::run([] { Platform::setThreadName(String("other")); }).get();
    EXPECT_EQ(threadName(), before);
}

TEST(AsyncRun, WhatTheCallableThrowsIsThrownByTheFuture) {
    TimeLimit const limit("an exception");
    std::future<int> future = Async::run([]() -> int { throw std::runtime_error("no clip"); });
    try {
        future.get();
        FAIL() << "nothing thrown";
    } catch (std::runtime_error const& error) {
        EXPECT_STREQ(error.what(), "no clip");
    }
}

TEST(AsyncRun, AnExceptionThatNobodyAsksForIsForgotten) {
    TimeLimit const limit("an exception");
    {
        std::future<void> const future = Async::run([] { throw std::runtime_error("unheard"); });
    }
    SUCCEED();
}

TEST(AsyncRun, DroppingTheFutureBlocksUntilTheTaskHasEnded) {
    TimeLimit const limit("a dropped future");
    Gate release;
    std::atomic<bool> ended{false};
    std::atomic<bool> dropped{false};
    std::thread dropper([&] {
        {
            std::future<void> const future = Async::run([&] {
                release.pass();
                ended = true;
            });
        }
        EXPECT_TRUE(ended);
        dropped = true;
    });
    std::this_thread::sleep_for(30ms);
    EXPECT_FALSE(dropped);
    release.open();
    dropper.join();
    EXPECT_TRUE(dropped);
}

TEST(AsyncRun, AssigningOverAFutureBlocksUntilItsTaskHasEnded) {
    TimeLimit const limit("an assigned future");
    std::atomic<bool> ended{false};
    std::future<void> future = Async::run([&] {
        std::this_thread::sleep_for(20ms);
        ended = true;
    });
    future = std::future<void>();
    EXPECT_TRUE(ended);
}

TEST(AsyncRun, TakesACallableThatCanOnlyBeMoved) {
    TimeLimit const limit("a callable");
    auto number = std::make_unique<int>(7);
    EXPECT_EQ(Async::run([number = std::move(number)] { return *number; }).get(), 7);
}

TEST(AsyncRun, KeepsACopyOfTheCallable) {
    TimeLimit const limit("a callable");
    Gate release;
    std::future<std::string> future;
    {
        std::string const text = "kept";
        auto const callable = [&release, text] {
            release.pass();
            return text;
        };
        future = Async::run(callable);
    }
    release.open();
    EXPECT_EQ(future.get(), "kept");
}

} // namespace
