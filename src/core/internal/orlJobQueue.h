// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#ifndef ORL_JOB_QUEUE_H
#define ORL_JOB_QUEUE_H

#include "orlJobDispatcher.h"

#include <cstddef>
#include <deque>
#include <map>
#include <utility>
#include <vector>

namespace ORL_0_81 {

/// The jobs of a dispatcher: those that wait, in their order, and the ids of those that run. It knows which
/// job is to run next.
///
/// A job may run when no job here, waiting or running, has the id of its prerequisite. That is not looked up
/// when a job is taken, which would mean to pass over all that are blocked, again and again. What a job costs
/// depends on what it is:
/// - One without a prerequisite that is added in the order of ids, as most are, stands in the *line*: it is
///   found by its id through bisection, and taken at the head.
/// - Any other is an *entry* in orders of its own: by id, by prerequisite, and by position if it may run.
///   Whatever makes the first job of an id come, or the last one go, moves those that name it as their
///   prerequisite out of the third or in.
///
/// A position, a number that grows from the head to the tail, tells which of the two has the next job.
///
/// The same job may be added several times; each time counts.
///
/// **Failure.** add() and prioritize() throw `std::bad_alloc` and then have changed nothing. Nothing else
/// allocates. No job is destroyed here: whoever takes a job out gets the share that the queue had, and can
/// release it when it has let go of the lock under which it calls.
///
/// **Thread safety.** None.
class JobQueue {
public:
    using Job = SharedPtr<JobDispatcher::JobBase>;

    JobQueue() = default;
    JobQueue(JobQueue const&) = delete;
    JobQueue& operator=(JobQueue const&) = delete;
    ~JobQueue() = default;

    /// Makes room for that many jobs that run at once; there may never be more.
    void reserveRunning(std::size_t count) { m_running.reserve(count); }

    /// Appends the job, which must not be null.
    void add(Job const& job);

    /// Turns the first job that may run into one that runs. \returns null if no job may run.
    Job take() noexcept;

    /// A job with the id has run.
    void finish(int id) noexcept;

    /// Withdraws the first waiting job with the id. \returns null if there is none.
    Job remove(int id) noexcept;

    /// Moves the first waiting job with the id to the head, if there is one.
    void prioritize(int id);

    /// Whether a job with the id waits or runs.
    bool holds(int id) const noexcept;

    std::size_t waitingCount() const noexcept { return m_line.size() - m_gaps + m_entries.size(); }
    std::size_t runningCount() const noexcept { return m_running.size(); }

private:
    struct Entry;

    struct InLine {
        Job job; // null in a gap, which a withdrawn job leaves
        int id;
        long long position;
    };

    // By an id, or the id of a prerequisite, and for one id in the order of the queue.
    using Key = std::pair<int, long long>;
    using Line = std::deque<InLine>;
    using Entries = std::map<Key, Entry>;
    using Ready = std::map<long long, Entry*>;
    using Dependents = std::map<Key, Entry*>;

    struct Entry {
        Job job;
        long long position = 0;
        long long arrival = 0; // the position at first, which prioritize() leaves alone

        // The memory for the entry's places in the two other orders, while it isn't in them. So it takes its
        // place without an allocation.
        Ready::node_type readyNode;
        Dependents::node_type dependentNode; // of no use without a prerequisite
    };

    static Entries::node_type makeEntry(Job const& job);

    void insertEntry(Entries::node_type node, long long position) noexcept;
    Job leave(InLine& place) noexcept;
    Job leave(Entries::iterator place) noexcept;
    template <class SomeLine>
    static auto inLine(SomeLine& line, int id) noexcept;
    Entries::iterator firstEntry(int id) noexcept;

    void admit(Entry& entry) noexcept;
    void block(Entry& entry) noexcept;
    void blockDependents(int id) noexcept;
    void admitDependents(int id) noexcept;

    Line m_line;             // begins and ends with a job, not a gap
    std::size_t m_gaps = 0;  // in the line; at most half of it
    Entries m_entries;       // by id and position
    Ready m_ready;           // by position: the entries that may run
    Dependents m_dependents; // by prerequisite and arrival: the entries that have one
    std::vector<int> m_running;
    long long m_tail = 0; // the last position that was given at the tail, and at the head
    long long m_head = 0;
};

} // namespace ORL_0_81

#endif // ORL_JOB_QUEUE_H
