// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "orlJobDispatcher.h"

#include "internal/orlHidden.h"
#include "internal/orlJobQueue.h"
#include "orlPlatform.h"
#include "orlString.h"

#include <condition_variable>
#include <cstddef>
#include <memory>
#include <mutex>
#include <string>
#include <thread>
#include <utility>
#include <vector>

namespace ORL_0_81 {

// JobDispatcher::JobBase

unsigned int JobDispatcher::nextId = 0;

// Without the top bit an id is never negative, and so never kNoPrerequisite.
JobDispatcher::JobBase::JobBase(int prerequisiteId)
    : m_id(static_cast<int>(__atomic_fetch_add(&nextId, 1U, __ATOMIC_RELAXED) & 0x7fffffffU)),
      m_prerequisiteId(prerequisiteId) {}

JobDispatcher::JobBase::~JobBase() = default;

int JobDispatcher::JobBase::getId() const { return m_id; }

int JobDispatcher::JobBase::getPrerequisiteId() const { return m_prerequisiteId; }

// JobDispatcher::Imp

// Whatever a thread may sleep on, the jobs and the stop flag, is changed under the lock and made known after
// that; so nobody can fall asleep on what has just ceased to be true.
//
// There are two signals because there are two things to wait for. A worker sleeps only while the queue is
// empty. Each new job wakes one, and whoever is awake stays so while the queue holds any job; so there are
// always as many awake as there are jobs in the queue, or all. Those who wait for jobs to end are told of
// each end, and of nothing else.
class ORL_HIDDEN JobDispatcher::Imp {
public:
    Imp(unsigned long threadCount, char const* name) : m_threadCount(threadCount), m_name(name) {}
    Imp(Imp const&) = delete;
    Imp& operator=(Imp const&) = delete;
    ~Imp() { stop(); }

    int addJob(SharedPtr<JobBase> const& job);
    void removeJob(int id);
    void prioritizeJob(int id);
    void waitJob(int id);
    void wait();
    void start();
    void stop();
    void resize(unsigned long threadCount);

private:
    String nameOfWorker(std::size_t index) const;
    void work(String const& name);

    std::mutex m_lock;
    JobQueue m_jobs;
    std::condition_variable m_wanted; // a job was added, or the workers are to end
    std::condition_variable m_ended;  // a job is no longer here, or no longer runs
    unsigned long m_pauses = 0;       // how often the last running job has ended; a pause may be over at once
    bool m_stop = false;
    std::vector<std::thread> m_threads;
    unsigned long m_threadCount;
    std::string m_name;
};

int JobDispatcher::Imp::addJob(SharedPtr<JobBase> const& job) {
    int const id = job->getId(); // the job itself may change what the caller's pointer holds
    {
        std::lock_guard<std::mutex> const lock(m_lock);
        m_jobs.add(job);
    }
    m_wanted.notify_one();
    return id;
}

void JobDispatcher::Imp::removeJob(int id) {
    SharedPtr<JobBase> removed; // released without the lock, for the job's destructor may call back
    {
        std::lock_guard<std::mutex> const lock(m_lock);
        removed = m_jobs.remove(id);
    }
    m_ended.notify_all();
}

void JobDispatcher::Imp::prioritizeJob(int id) {
    std::lock_guard<std::mutex> const lock(m_lock);
    m_jobs.prioritize(id);
}

void JobDispatcher::Imp::waitJob(int id) {
    std::unique_lock<std::mutex> lock(m_lock);
    m_ended.wait(lock, [this, id] { return !m_jobs.holds(id); });
}

void JobDispatcher::Imp::wait() {
    std::unique_lock<std::mutex> lock(m_lock);
    unsigned long const pauses = m_pauses;
    m_ended.wait(lock, [this, pauses] { return m_jobs.runningCount() == 0 || m_pauses != pauses; });
}

void JobDispatcher::Imp::start() {
    if (!m_threads.empty()) {
        return;
    }
    {
        std::lock_guard<std::mutex> const lock(m_lock);
        m_jobs.reserveRunning(m_threadCount);
        m_stop = false;
    }
    m_threads.reserve(m_threadCount);
    for (std::size_t index = 0; index < m_threadCount; ++index) {
        // Made here, where a lack of memory goes to the caller; in the worker it would end the process.
        m_threads.emplace_back([this, name = nameOfWorker(index)] { work(name); });
    }
}

void JobDispatcher::Imp::stop() {
    if (m_threads.empty()) {
        return;
    }
    {
        std::lock_guard<std::mutex> const lock(m_lock);
        m_stop = true;
    }
    m_wanted.notify_all();
    for (std::thread& thread : m_threads) {
        thread.join();
    }
    m_threads.clear();
}

void JobDispatcher::Imp::resize(unsigned long threadCount) {
    stop();
    m_threadCount = threadCount;
    start();
}

String JobDispatcher::Imp::nameOfWorker(std::size_t index) const {
    std::string const name = m_name + "#" + std::to_string(index + 1);
    return String(name.data(), name.size());
}

void JobDispatcher::Imp::work(String const& name) {
    Platform::setThreadName(name); // too long a name is none

    std::unique_lock<std::mutex> lock(m_lock);
    for (;;) {
        SharedPtr<JobBase> job = m_jobs.take();
        if (!job) {
            if (m_jobs.waitingCount() != 0) {
                // Each of them waits for another: look again, but let others have the lock.
                lock.unlock();
                std::this_thread::yield();
                lock.lock();
            } else if (m_stop) {
                return;
            } else {
                m_wanted.wait(lock);
            }
            continue;
        }
        lock.unlock();
        job->run();
        lock.lock();
        m_jobs.finish(job->getId());
        m_pauses += m_jobs.runningCount() == 0;
        lock.unlock();
        m_ended.notify_all();
        // Before another is taken, at the price of the lock: the destructor may withdraw, move or wait for
        // whatever is next.
        job.reset();
        lock.lock();
    }
}

// JobDispatcher

JobDispatcher::JobDispatcher(unsigned int threadCount, char const* name) : m_imp(nullptr) {
    auto imp = std::make_unique<Imp>(threadCount, name ? name : "ORL-Pool");
    imp->start(); // when a thread can't be started, those before it are ended by the destructor
    m_imp = imp.release();
}

JobDispatcher::~JobDispatcher() { delete m_imp; }

int JobDispatcher::addJob(SharedPtr<JobBase> const& job) { return m_imp->addJob(job); }

void JobDispatcher::removeJob(int id) { m_imp->removeJob(id); }

void JobDispatcher::prioritizeJob(int id) { m_imp->prioritizeJob(id); }

void JobDispatcher::waitJob(int id) { m_imp->waitJob(id); }

void JobDispatcher::wait() const { m_imp->wait(); }

void JobDispatcher::start() { m_imp->start(); }

void JobDispatcher::stop() { m_imp->stop(); }

void JobDispatcher::resize(unsigned int threadCount) { m_imp->resize(threadCount); }

} // namespace ORL_0_81
