// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#ifndef ORL_TEST_SUPPORT_ORL_THREADS_H
#define ORL_TEST_SUPPORT_ORL_THREADS_H

#include <atomic>
#include <cstddef>
#include <functional>
#include <thread>
#include <vector>

namespace orlTest {

/// Performs the work on that many threads, with the number of each, and waits for all. None begins before all are
/// there, so that they meet.
inline void onThreads(std::size_t count, std::function<void(std::size_t)> const& work) {
    std::atomic<std::size_t> missing{count};
    std::vector<std::thread> threads;
    for (std::size_t number = 0; number < count; ++number) {
        threads.emplace_back([&, number] {
            for (--missing; missing != 0;) {
                std::this_thread::yield();
            }
            work(number);
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
}

} // namespace orlTest

#endif // ORL_TEST_SUPPORT_ORL_THREADS_H
