// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "internal/orlSemaphore.h"

namespace ORL_0_81 {

Semaphore::Semaphore(int freeSlots) : m_freeSlots(freeSlots) {}

void Semaphore::acquire() {
    std::unique_lock<std::mutex> lock(m_mutex);
    while (m_freeSlots == 0) {
        m_slotFreed.wait(lock);
    }
    --m_freeSlots;
}

void Semaphore::release() {
    // Notified under the lock: a thread that goes on may destroy the semaphore as soon as the lock is free.
    std::lock_guard<std::mutex> const lock(m_mutex);
    ++m_freeSlots;
    m_slotFreed.notify_one();
}

} // namespace ORL_0_81
