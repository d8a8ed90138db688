// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "internal/orlSemaphore.h"

#include "support/TimeLimit.h"

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <memory>
#include <thread>
#include <vector>

namespace {

using namespace ORL_0_81;
using namespace std::chrono_literals;

TEST(SemaphoreTest, LetsAsManyPassAsItHasSlots) {
    TimeLimit const limit("free slots");
    Semaphore semaphore(3);
    semaphore.acquire();
    semaphore.acquire();
    semaphore.acquire();
    SUCCEED();
}

TEST(SemaphoreTest, HoldsTheNextBackUntilASlotIsGivenBack) {
    TimeLimit const limit("a slot");
    Semaphore semaphore(1);
    semaphore.acquire();
    Gate passed;
    std::thread second([&] {
        semaphore.acquire();
        passed.open();
    });
    EXPECT_FALSE(passed.passWithin(30ms));
    semaphore.release();
    passed.pass();
    second.join();
}

TEST(SemaphoreTest, OneReleaseLetsOneGoOn) {
    TimeLimit const limit("a slot for one of two");
    Semaphore semaphore(0);
    std::atomic<int> passed{0};
    std::vector<std::thread> threads;
    for (int i = 0; i < 2; ++i) {
        threads.emplace_back([&] {
            semaphore.acquire();
            ++passed;
        });
    }
    semaphore.release();
    while (passed == 0) {
        std::this_thread::yield();
    }
    std::this_thread::sleep_for(20ms);
    EXPECT_EQ(passed, 1);
    semaphore.release();
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(passed, 2);
}

TEST(SemaphoreTest, ReleasesBeforeTheFirstAcquireAreKept) {
    TimeLimit const limit("slots made by releases");
    Semaphore semaphore(0);
    semaphore.release();
    semaphore.release();
    semaphore.acquire();
    semaphore.acquire();
    SUCCEED();
}

TEST(SemaphoreTest, OnlyACountOfExactlyZeroHoldsAThreadBack) {
    TimeLimit const limit("a negative count");
    Semaphore semaphore(-1);
    semaphore.acquire();
    semaphore.acquire();
    SUCCEED();
}

TEST(SemaphoreTest, ASlotMayBeGivenBackByAnotherThread) {
    TimeLimit const limit("another thread's release");
    Semaphore semaphore(1);
    semaphore.acquire();
    std::thread([&] { semaphore.release(); }).join();
    semaphore.acquire();
    SUCCEED();
}

TEST(SemaphoreTest, NeverMoreThreadsWorkThanThereAreSlots) {
    TimeLimit const limit("many threads");
    constexpr int SLOTS = 3;
    Semaphore semaphore(SLOTS);
    std::atomic<int> working{0};
    std::atomic<int> most{0};
    std::atomic<int> done{0};
    std::vector<std::thread> threads;
    for (int t = 0; t < 12; ++t) {
        threads.emplace_back([&] {
            for (int round = 0; round < 200; ++round) {
                semaphore.acquire();
                int const now = ++working;
                int before = most;
                while (before < now && !most.compare_exchange_weak(before, now)) {
                }
                std::this_thread::yield();
                --working;
                ++done;
                semaphore.release();
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_LE(most, SLOTS);
    EXPECT_EQ(done, 12 * 200);
}

TEST(SemaphoreTest, MayEndAsSoonAsTheLastWaiterHasPassed) {
    TimeLimit const limit("the end of a semaphore");
    for (int round = 0; round < 500; ++round) {
        auto semaphore = std::make_unique<Semaphore>(0);
        std::thread releasing([&, raw = semaphore.get()] { raw->release(); });
        semaphore->acquire();
        semaphore.reset();
        releasing.join();
    }
}

} // namespace
