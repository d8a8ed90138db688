// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#ifndef ORL_SEMAPHORE_H
#define ORL_SEMAPHORE_H

#include <condition_variable>
#include <mutex>

namespace ORL_0_81 {

/// A counting semaphore: lets a limited number of threads past acquire() at a time.
///
/// It knows no owners: any thread may release, and a release without an acquire makes one slot more.
///
/// **Failure.** A mutex that fails throws `std::system_error`.
///
/// **Thread safety.** Every operation may be called from any thread.
class Semaphore {
public:
    /// \param freeSlots how many threads get past acquire() before one must wait. With fewer than 0 nobody
    ///     ever has to wait: only a count of exactly 0 holds a thread back.
    explicit Semaphore(int freeSlots);
    Semaphore(Semaphore const&) = delete;
    Semaphore& operator=(Semaphore const&) = delete;
    ~Semaphore() = default;

    /// Takes a slot; waits while none is free. In which order waiting threads go on is not settled.
    void acquire();

    /// Gives a slot back and lets one waiting thread go on.
    void release();

private:
    std::mutex m_mutex;
    std::condition_variable m_slotFreed;
    int m_freeSlots;
};

} // namespace ORL_0_81

#endif // ORL_SEMAPHORE_H
