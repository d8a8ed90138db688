// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#ifndef ORL_JOB_DISPATCHER_H
#define ORL_JOB_DISPATCHER_H

#include "orlExport.h"
#include "orlRefCounted.h"
#include "orlSharedPtr.h"

namespace ORL_0_81 {

/// A pool of worker threads that serve one queue of jobs.
///
///     class Thumbnail : public JobDispatcher::JobBase {
///     public:
///         void run() override;
///     };
///
///     JobDispatcher dispatcher(4, "thumbnails");
///     int const id = dispatcher.addJob(SharedPtr<JobDispatcher::JobBase>(new Thumbnail));
///     dispatcher.waitJob(id);
///
/// **Order.** Workers take jobs from the head of the queue, and new jobs go to the tail. A job that names a
/// prerequisite is passed over for as long as a job with that id is queued or running here; whoever stands
/// behind it and may run goes first. Nothing else decides: there are no priorities but prioritizeJob().
///
/// A prerequisite that has finished or was withdrawn blocks nobody, nor does one that is yet to be added. A
/// job that names itself, or a ring of jobs that name each other, never runs; removeJob() gets rid of it.
///
/// **Busy waiting.** While the queue holds jobs of which none may run, workers that have nothing to do look
/// again and again instead of sleeping. Chains of short jobs profit; behind a long prerequisite they cost
/// processor time.
///
/// **States.** Running: there are workers. Idle: there are none, since the thread count is 0. Stopped: stop()
/// ended them. In all three jobs may be added, withdrawn and moved; they wait until there are workers.
///
/// **Failure.** Nothing here returns a Status, and an id that is not known is ignored. A thread that can't be
/// started throws `std::system_error`, a lack of memory `std::bad_alloc`. An exception that leaves a job's
/// run() ends the process.
///
/// **Thread safety.** addJob(), removeJob(), prioritizeJob(), waitJob() and wait() may be called from any
/// thread, and from within a job. start(), stop(), resize() and the destructor are for one thread at a time,
/// and never for a job. No lock is held while a job runs, or while one is destroyed.
///
/// A worker releases a job that has run before it takes the next, and after those who wait for it were told.
/// So a job's destructor may call whatever a job may; to wait for a queued job it takes another worker.
///
/// **Cost.** Adding a job, taking it from the head and finding one by its id do not depend on how many wait,
/// but for a job with a prerequisite, or an id out of the order of adding: there by the logarithm.
class ORL_CORE_EXPORT JobDispatcher {
public:
    /// A piece of work with an id, which may have to wait for another. Derived classes implement run().
    ///
    /// Held through SharedPtr, by the dispatcher from addJob() until it has run or was withdrawn; the caller
    /// need not keep it. The count is thread-safe. Not to be copied, for its id is its own.
    class ORL_CORE_EXPORT JobBase : public RefCountedMT {
    public:
        /// As a prerequisite: none. It is never a job's id.
        static constexpr int kNoPrerequisite = -1;

        /// Draws the next id of the process, from 0 on; in any thread. The numbers begin anew with 0 after
        /// 2147483647.
        ///
        /// \param prerequisiteId the id of the job that must be done before this one may start. One of which
        ///     the dispatcher has no job is no prerequisite.
        explicit JobBase(int prerequisiteId = kNoPrerequisite);

        JobBase(JobBase const&) = delete;
        JobBase& operator=(JobBase const&) = delete;
        ~JobBase() override;

        /// The job's own number, which no other job of the process has until 2^32 have been made.
        int getId() const;
        /// As given to the constructor.
        int getPrerequisiteId() const;

        /// The work. Called once for each time that the job was added, by a worker, and perhaps by two at a
        /// time if it was added twice. Must not throw, must not wait for its own id or, with wait(), for
        /// itself, and must not stop the dispatcher.
        virtual void run() = 0;

    private:
        int m_id;
        int m_prerequisiteId;
    };

    /// Starts the workers.
    ///
    /// \param threadCount how many; with 0 jobs wait until resize() brings some.
    /// \param name is copied. The workers' threads are called `name#1`, `name#2` and so on; one whose name is
    ///     longer than 15 bytes has none. Null stands for "ORL-Pool".
    explicit JobDispatcher(unsigned int threadCount, char const* name = nullptr);

    JobDispatcher(JobDispatcher const&) = delete;
    JobDispatcher& operator=(JobDispatcher const&) = delete;

    /// Does what stop() does, so the queue is drained first. Without workers queued jobs are released without
    /// having run.
    virtual ~JobDispatcher();

    /// Appends the job, which must not be null, to the queue and takes a share of it.
    ///
    /// \returns the job's id.
    int addJob(SharedPtr<JobBase> const& job);

    /// Withdraws the first job of the queue with that id, and releases it. A job that runs goes on.
    void removeJob(int id);

    /// Moves the first job of the queue with that id to the head. Of several that are moved one after another
    /// the last stands first. A job that runs or is done is left alone.
    void prioritizeJob(int id);

    /// Blocks until no job with that id is queued or running, so at once for an id that is not known. While
    /// there are no workers it blocks on a queued job until somebody withdraws it or brings workers.
    void waitJob(int id);

    /// Blocks until there is an instant at which no job runs. Queued jobs are not waited for: right after
    /// addJob() it may return at once. To wait for them, use waitJob() or stop().
    void wait() const;

    /// Starts as many workers as the constructor or resize() was told, unless there are some.
    ///
    /// When one of them can't be started, those before it stay and serve the queue.
    void start();

    /// Lets the workers run every job that is queued, and those that are added meanwhile, then ends them.
    /// Does nothing if there are none. Never returns while a job that can never run is queued.
    void stop();

    /// Does what stop() does, which drains the queue, then starts that many workers, if it was stopped
    /// before, too. A failure leaves what start() leaves.
    void resize(unsigned int threadCount);

private:
    class Imp;

    static unsigned int nextId; // drawn from atomically

    Imp* m_imp; // owned, never null
};

} // namespace ORL_0_81

#endif // ORL_JOB_DISPATCHER_H
