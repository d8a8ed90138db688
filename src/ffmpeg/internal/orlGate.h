// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#ifndef ORL_GATE_H
#define ORL_GATE_H

#include <condition_variable>
#include <mutex>

namespace ORL_0_81::media {

/// Lets a number of threads in at a time; the others wait.
class Gate {
public:
    explicit Gate(int places) : m_places(places) {}

    Gate(Gate const&) = delete;
    Gate& operator=(Gate const&) = delete;

    /// One place, for as long as the object lives.
    class Pass {
    public:
        explicit Pass(Gate& gate) : m_gate(gate) {
            std::unique_lock<std::mutex> lock(m_gate.m_mutex);
            m_gate.m_placeFreed.wait(lock, [this] { return m_gate.m_places > 0; });
            --m_gate.m_places;
        }

        Pass(Pass const&) = delete;
        Pass& operator=(Pass const&) = delete;

        ~Pass() {
            {
                std::lock_guard<std::mutex> const lock(m_gate.m_mutex);
                ++m_gate.m_places;
            }
            m_gate.m_placeFreed.notify_one();
        }

    private:
        Gate& m_gate;
    };

private:
    std::mutex m_mutex;
    std::condition_variable m_placeFreed;
    int m_places; // that are free
};

} // namespace ORL_0_81::media

#endif // ORL_GATE_H
