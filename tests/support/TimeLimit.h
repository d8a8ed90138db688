// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#ifndef TIME_LIMIT_H
#define TIME_LIMIT_H

#include <chrono>
#include <condition_variable>
#include <cstdio>
#include <cstdlib>
#include <mutex>
#include <thread>

/// \file
/// For tests of threads: one that hangs must fail, and say where. A thread that waits for ever can't be
/// ended, so the process ends instead.

/// Ends the process when it is not destroyed in time.
class TimeLimit {
public:
    explicit TimeLimit(char const* what, std::chrono::seconds limit = std::chrono::seconds(60))
        : m_thread([this, what, limit] {
              std::unique_lock<std::mutex> lock(m_mutex);
              if (!m_changed.wait_for(lock, limit, [this] { return m_ended; })) {
                  std::fprintf(stderr, "still not done after the time limit: %s\n", what);
                  std::_Exit(124);
              }
          }) {}
    TimeLimit(TimeLimit const&) = delete;
    TimeLimit& operator=(TimeLimit const&) = delete;
    ~TimeLimit() {
        {
            std::lock_guard<std::mutex> const lock(m_mutex);
            m_ended = true;
        }
        m_changed.notify_one();
        m_thread.join();
    }

private:
    std::mutex m_mutex;
    std::condition_variable m_changed;
    bool m_ended = false;
    std::thread m_thread;
};

/// A door that is shut at first; who comes early waits until somebody opens it.
class Gate {
public:
    void open() {
        std::lock_guard<std::mutex> const lock(m_mutex);
        m_open = true;
        m_opened.notify_all();
    }

    void pass() {
        std::unique_lock<std::mutex> lock(m_mutex);
        m_opened.wait(lock, [this] { return m_open; });
    }

    /// \returns whether it was opened in time.
    bool passWithin(std::chrono::milliseconds time) {
        std::unique_lock<std::mutex> lock(m_mutex);
        return m_opened.wait_for(lock, time, [this] { return m_open; });
    }

private:
    std::mutex m_mutex;
    std::condition_variable m_opened;
    bool m_open = false;
};

#endif // TIME_LIMIT_H
