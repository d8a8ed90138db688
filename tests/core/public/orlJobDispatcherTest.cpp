// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include <orlJobDispatcher.h>

#include "support/TimeLimit.h"
#include "support/VirtualSlot.h"

#include <orlPlatform.h>
#include <orlString.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstdlib>
#include <ctime>
#include <functional>
#include <memory>
#include <mutex>
#include <set>
#include <stdexcept>
#include <string>
#include <thread>
#include <type_traits>
#include <utility>
#include <vector>

namespace {

using namespace ORL_0_81;
using namespace std::chrono_literals;

using Base = JobDispatcher::JobBase;
using Job = SharedPtr<Base>;

constexpr int NONE = Base::kNoPrerequisite;

// Long enough that a worker which can do what it must not do will have done it.
constexpr auto A_WHILE = 30ms;

class Work : public Base {
public:
    explicit Work(std::function<void()> work, int prerequisiteId = NONE)
        : Base(prerequisiteId), m_work(std::move(work)) {}

    void run() override { m_work(); }

private:
    std::function<void()> m_work;
};

Job makeJob(std::function<void()> work, int prerequisiteId = NONE) {
    return Job(new Work(std::move(work), prerequisiteId));
}

// A job that is made next gets this id.
int nextId() {
    return makeJob([] {})->getId() + 1;
}

// What jobs did, in order.
class Log {
public:
    void add(std::string const& entry) {
        std::lock_guard<std::mutex> const lock(m_mutex);
        m_entries.push_back(entry);
    }

    Job job(std::string const& entry, int prerequisiteId = NONE) {
        return makeJob([this, entry] { add(entry); }, prerequisiteId);
    }

    std::vector<std::string> entries() const {
        std::lock_guard<std::mutex> const lock(m_mutex);
        return m_entries;
    }

private:
    mutable std::mutex m_mutex;
    std::vector<std::string> m_entries;
};

using Entries = std::vector<std::string>;

// A job that a worker holds until it is told to let go.
class HeldJob {
public:
    explicit HeldJob(int prerequisiteId = NONE)
        : m_job(makeJob(
              [this] {
                  m_started.open();
                  m_release.pass();
                  m_ended = true;
              },
              prerequisiteId)) {}

    Job const& job() const { return m_job; }
    int id() const { return m_job->getId(); }
    void waitUntilStarted() { m_started.pass(); }
    bool starts() { return m_started.passWithin(A_WHILE); }
    void release() { m_release.open(); }
    bool ended() const { return m_ended; }

private:
    Gate m_started;
    Gate m_release;
    std::atomic<bool> m_ended{false};
    Job m_job;
};

// Whether a call returns; it goes on on a thread of its own.
class Call {
public:
    explicit Call(std::function<void()> call)
        : m_thread([this, call = std::move(call)] {
              call();
              m_returned.open();
          }) {}
    Call(Call const&) = delete;
    Call& operator=(Call const&) = delete;
    ~Call() { m_thread.join(); }

    bool blocks() { return !m_returned.passWithin(A_WHILE); }
    void waitUntilItReturns() { m_returned.pass(); }

private:
    Gate m_returned;
    std::thread m_thread;
};

std::string threadName() {
    String name;
    EXPECT_EQ(Platform::getThreadName(name), 0);
    return name.asChar();
}

// The names of that many workers. Their jobs hold each other up, so that each gets one.
std::set<std::string> workerNames(JobDispatcher& dispatcher, int count) {
    Log names;
    std::atomic<int> arrived{0};
    std::vector<int> ids;
    for (int i = 0; i < count; ++i) {
        ids.push_back(dispatcher.addJob(makeJob([&] {
            names.add(threadName());
            ++arrived;
            while (arrived < count) {
                std::this_thread::sleep_for(1ms);
            }
        })));
    }
    for (int const id : ids) {
        dispatcher.waitJob(id);
    }
    Entries const entries = names.entries();
    EXPECT_EQ(entries.size(), static_cast<std::size_t>(count));
    return std::set<std::string>(entries.begin(), entries.end());
}

// The processor time of the whole process.
double processorSeconds() {
    timespec time = {};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) * 1e-9;
}

// JobBase

TEST(JobBaseTest, DrawsItsIdsInOrder) {
    Job const first = makeJob([] {});
    Job const second = makeJob([] {}, 7);
    Job const third = makeJob([] {});
    EXPECT_GE(first->getId(), 0);
    EXPECT_EQ(second->getId(), first->getId() + 1);
    EXPECT_EQ(third->getId(), first->getId() + 2);
}

TEST(JobBaseDeathTest, TheFirstIdOfAProcessIsZero) {
    testing::FLAGS_gtest_death_test_style = "threadsafe"; // a process of its own
    EXPECT_EXIT(std::_Exit(makeJob([] {})->getId() == 0 ? 3 : 4), testing::ExitedWithCode(3), "");
}

TEST(JobBaseTest, IdsThatManyThreadsDrawAreAllDifferent) {
    TimeLimit const limit("drawing ids");
    constexpr int EACH = 2000;
    std::vector<std::vector<int>> drawn(4);
    std::vector<std::thread> threads;
    for (std::vector<int>& ids : drawn) {
        threads.emplace_back([&ids] {
            for (int i = 0; i < EACH; ++i) {
                ids.push_back(makeJob([] {})->getId());
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    std::set<int> all;
    for (std::vector<int> const& ids : drawn) {
        EXPECT_TRUE(std::is_sorted(ids.begin(), ids.end()));
        all.insert(ids.begin(), ids.end());
    }
    EXPECT_EQ(all.size(), 4U * EACH);
    EXPECT_EQ(*all.rbegin() - *all.begin(), 4 * EACH - 1) << "and none is left out";
}

TEST(JobBaseTest, HasNoPrerequisiteUnlessItIsTold) {
    static_assert(Base::kNoPrerequisite == -1);
    EXPECT_EQ(makeJob([] {})->getPrerequisiteId(), -1);
    EXPECT_EQ(makeJob([] {}, 5)->getPrerequisiteId(), 5);
    EXPECT_EQ(makeJob([] {}, -7)->getPrerequisiteId(), -7);
}

TEST(JobBaseTest, HasTheLayoutThatProgramsRelyOn) {
    EXPECT_TRUE(std::is_abstract_v<Base>);
    EXPECT_TRUE((std::is_base_of_v<RefCountedMT, Base>));
    EXPECT_FALSE(std::is_copy_constructible_v<Work>) << "an id is its job's own";
    EXPECT_EQ(virtualSlot(&Base::run), 5U);
    EXPECT_EQ(sizeof(Base), sizeof(RefCountedMT) + 2 * sizeof(int));
    Job const job = makeJob([] {}, 1234);
    char const* const fields = reinterpret_cast<char const*>(job.get()) + sizeof(RefCountedMT);
    EXPECT_EQ(*reinterpret_cast<int const*>(fields), job->getId());
    EXPECT_EQ(*reinterpret_cast<int const*>(fields + sizeof(int)), 1234);
}

// Order

TEST(JobDispatcherTest, HasTheLayoutThatProgramsRelyOn) {
    EXPECT_TRUE(std::has_virtual_destructor_v<JobDispatcher>);
    EXPECT_EQ(sizeof(JobDispatcher), 2 * sizeof(void*));
}

TEST(JobDispatcherTest, RunsEachJobOnceAndGivesItsId) {
    TimeLimit const limit("some jobs");
    std::atomic<int> runs{0};
    JobDispatcher dispatcher(2);
    for (int i = 0; i < 100; ++i) {
        Job const job = makeJob([&] { ++runs; });
        EXPECT_EQ(dispatcher.addJob(job), job->getId());
    }
    dispatcher.stop();
    EXPECT_EQ(runs, 100);
}

TEST(JobDispatcherTest, OneWorkerRunsTheJobsInTheOrderOfAdding) {
    TimeLimit const limit("some jobs in order");
    Log log;
    Entries expected;
    JobDispatcher dispatcher(1);
    for (int i = 0; i < 50; ++i) {
        expected.push_back(std::to_string(i));
        dispatcher.addJob(log.job(expected.back()));
    }
    dispatcher.stop();
    EXPECT_EQ(log.entries(), expected);
}

TEST(JobDispatcherTest, TheOrderOfAddingCountsAndNotThatOfIds) {
    TimeLimit const limit("some jobs in order");
    Log log;
    JobDispatcher dispatcher(0);
    std::vector<Job> jobs;
    for (char const* const name : {"a", "b", "c", "d"}) {
        jobs.push_back(log.job(name));
    }
    for (std::size_t const index : {2U, 0U, 3U, 1U}) {
        dispatcher.addJob(jobs[index]);
    }
    dispatcher.resize(1);
    dispatcher.stop();
    EXPECT_EQ(log.entries(), (Entries{"c", "a", "d", "b"}));
}

TEST(JobDispatcherTest, AHundredThousandQueuedJobsRunInOrder) {
    TimeLimit const limit("100000 jobs");
    constexpr int JOBS = 100000;
    std::vector<int> ran;
    ran.reserve(JOBS);
    JobDispatcher dispatcher(0);
    for (int i = 0; i < JOBS; ++i) {
        dispatcher.addJob(makeJob([&ran, i] { ran.push_back(i); }));
    }
    dispatcher.resize(1);
    dispatcher.stop();
    ASSERT_EQ(ran.size(), static_cast<std::size_t>(JOBS));
    EXPECT_TRUE(std::is_sorted(ran.begin(), ran.end()));
}

TEST(JobDispatcherTest, AHundredThousandJobsOfAChainRunInTheOrderOfTheChain) {
    TimeLimit const limit("a chain of 100000 jobs");
    // The last link stands at the head of the queue.
    constexpr int JOBS = 100000;
    std::vector<int> ran;
    ran.reserve(JOBS);
    std::vector<Job> jobs;
    for (int i = 0; i < JOBS; ++i) {
        jobs.push_back(makeJob([&ran, i] { ran.push_back(i); }, jobs.empty() ? NONE : jobs.back()->getId()));
    }
    JobDispatcher dispatcher(0);
    for (; !jobs.empty(); jobs.pop_back()) {
        dispatcher.addJob(jobs.back());
    }
    dispatcher.resize(1);
    dispatcher.stop();
    ASSERT_EQ(ran.size(), static_cast<std::size_t>(JOBS));
    EXPECT_TRUE(std::is_sorted(ran.begin(), ran.end()));
}

TEST(JobDispatcherTest, AHundredThousandJobsMayWaitForOne) {
    TimeLimit const limit("100000 jobs behind one");
    constexpr int JOBS = 100000;
    std::atomic<int> ran{0};
    HeldJob first;
    JobDispatcher dispatcher(1);
    dispatcher.addJob(first.job());
    for (int i = 0; i < JOBS; ++i) {
        dispatcher.addJob(makeJob([&] { ++ran; }, first.id()));
    }
    EXPECT_EQ(ran, 0);
    first.release();
    dispatcher.stop();
    EXPECT_EQ(ran, JOBS);
}

TEST(JobDispatcherTest, AJobThatWasAddedTwiceRunsTwice) {
    TimeLimit const limit("a job that runs twice");
    std::atomic<int> runs{0};
    JobDispatcher dispatcher(1);
    Job const job = makeJob([&] { ++runs; });
    dispatcher.addJob(job);
    dispatcher.addJob(job);
    dispatcher.waitJob(job->getId());
    EXPECT_EQ(runs, 2);
}

TEST(JobDispatcherTest, WorkersRunJobsAtTheSameTime) {
    TimeLimit const limit("three jobs at a time");
    JobDispatcher dispatcher(3);
    EXPECT_EQ(workerNames(dispatcher, 3).size(), 3U);
}

// Ownership

TEST(JobDispatcherTest, KeepsAJobAliveThatTheCallerDrops) {
    TimeLimit const limit("a dropped job");
    Gate ended;
    struct Telltale {
        explicit Telltale(Gate& gate) : m_gate(gate) {}
        Telltale(Telltale const&) = delete;
        Telltale& operator=(Telltale const&) = delete;
        ~Telltale() { m_gate.open(); }
        Gate& m_gate;
    };
    HeldJob before;
    JobDispatcher dispatcher(1);
    dispatcher.addJob(before.job());
    bool alive = true;
    {
        auto telltale = std::make_shared<Telltale>(ended);
        dispatcher.addJob(makeJob([&, telltale = std::move(telltale)] { alive = !ended.passWithin(0ms); }));
    }
    EXPECT_FALSE(ended.passWithin(0ms));
    before.release();
    ended.pass();
    EXPECT_TRUE(alive) << "while it ran";
}

TEST(JobDispatcherTest, HoldsOneShareOfAQueuedJobAndNoneOfAWithdrawnOne) {
    JobDispatcher dispatcher(0);
    Job const job = makeJob([] {});
    dispatcher.addJob(job);
    EXPECT_EQ(job->refcount(), 2);
    dispatcher.removeJob(job->getId());
    EXPECT_EQ(job->refcount(), 1);
}

TEST(JobDispatcherTest, AJobMayClearThePointerThroughWhichItIsBeingAdded) {
    TimeLimit const limit("a job that clears its pointer");
    for (int round = 0; round < 300; ++round) {
        JobDispatcher dispatcher(1);
        Job job;
        job = makeJob([&job] { job.reset(); });
        int const id = job->getId();
        // The pointer is written by the worker as soon as the job is queued.
        EXPECT_EQ(dispatcher.addJob(job), id);
        dispatcher.waitJob(id);
        EXPECT_FALSE(job);
    }
}

// Calls back from its destructor, wherever that happens to run.
class Farewell : public Base {
public:
    Farewell(JobDispatcher& dispatcher, std::atomic<int>& ended) : m_dispatcher(dispatcher), m_ended(ended) {}
    Farewell(Farewell const&) = delete;
    Farewell& operator=(Farewell const&) = delete;
    ~Farewell() override {
        m_dispatcher.prioritizeJob(getId());
        m_dispatcher.removeJob(getId());
        m_dispatcher.waitJob(getId());
        ++m_ended;
    }

    void run() override {}

private:
    JobDispatcher& m_dispatcher;
    std::atomic<int>& m_ended;
};

TEST(JobDispatcherTest, AJobsDestructorMayCallTheDispatcher) {
    TimeLimit const limit("a destructor that calls back");
    std::atomic<int> ended{0};
    {
        JobDispatcher dispatcher(1);
        HeldJob before;
        dispatcher.addJob(before.job());
        dispatcher.addJob(Job(new Farewell(dispatcher, ended)));
        int const withdrawn = dispatcher.addJob(Job(new Farewell(dispatcher, ended)));
        dispatcher.removeJob(withdrawn);
        EXPECT_EQ(ended, 1);
        before.release();
        dispatcher.stop();
        EXPECT_EQ(ended, 2);
    }
}

// Prerequisites

TEST(JobDispatcherTest, AJobDoesNotStartBeforeItsPrerequisiteHasEndedThoughAWorkerIsFree) {
    TimeLimit const limit("a prerequisite");
    HeldJob a;
    HeldJob b(a.id());
    b.release();
    JobDispatcher dispatcher(2);
    dispatcher.addJob(a.job());
    dispatcher.addJob(b.job());
    a.waitUntilStarted();
    EXPECT_FALSE(b.starts());
    a.release();
    b.waitUntilStarted();
    EXPECT_TRUE(a.ended());
}

TEST(JobDispatcherTest, AJobThatMayNotRunYetIsOvertaken) {
    TimeLimit const limit("overtaking");
    Log log;
    JobDispatcher dispatcher(0);
    Job const first = log.job("first");
    dispatcher.addJob(log.job("waits", first->getId()));
    dispatcher.addJob(log.job("overtakes"));
    dispatcher.addJob(first);
    dispatcher.addJob(log.job("last"));
    dispatcher.resize(1);
    dispatcher.stop();
    EXPECT_EQ(log.entries(), (Entries{"overtakes", "first", "waits", "last"}));
}

TEST(JobDispatcherTest, APrerequisiteOfWhichThereIsNoJobBlocksNobody) {
    TimeLimit const limit("unknown prerequisites");
    Log log;
    JobDispatcher dispatcher(1);
    Job const elsewhere = makeJob([] {});
    for (int const id : {elsewhere->getId(), 2147483647, -2147483647 - 1, -2}) {
        dispatcher.waitJob(dispatcher.addJob(log.job("ran", id)));
    }
    EXPECT_EQ(log.entries().size(), 4U);
}

TEST(JobDispatcherTest, APrerequisiteThatHasFinishedBlocksNobody) {
    TimeLimit const limit("a finished prerequisite");
    Log log;
    JobDispatcher dispatcher(1);
    int const first = dispatcher.addJob(log.job("first"));
    dispatcher.waitJob(first);
    dispatcher.waitJob(dispatcher.addJob(log.job("second", first)));
    EXPECT_EQ(log.entries(), (Entries{"first", "second"}));
}

TEST(JobDispatcherTest, APrerequisiteThatWasWithdrawnBlocksNobody) {
    TimeLimit const limit("a withdrawn prerequisite");
    Log log;
    HeldJob held;
    JobDispatcher dispatcher(1);
    dispatcher.addJob(held.job());
    int const first = dispatcher.addJob(log.job("first"));
    int const second = dispatcher.addJob(log.job("second", first));
    dispatcher.removeJob(first);
    held.release();
    dispatcher.waitJob(second);
    EXPECT_EQ(log.entries(), (Entries{"second"}));
}

TEST(JobDispatcherTest, APrerequisiteThatIsAddedLaterStillBlocks) {
    TimeLimit const limit("a late prerequisite");
    Log log;
    JobDispatcher dispatcher(0);
    Job const late = log.job("late");
    dispatcher.addJob(log.job("waits", late->getId()));
    dispatcher.addJob(late);
    dispatcher.resize(2);
    dispatcher.stop();
    EXPECT_EQ(log.entries(), (Entries{"late", "waits"}));
}

TEST(JobDispatcherTest, AJobThatNamesItselfNeverRunsAndStopWaitsUntilItIsWithdrawn) {
    TimeLimit const limit("a job that waits for itself");
    int const id = nextId();
    bool ran = false;
    Job const job = makeJob([&] { ran = true; }, id);
    ASSERT_EQ(job->getId(), id);
    JobDispatcher dispatcher(2);
    dispatcher.addJob(job);
    {
        Call stop([&] { dispatcher.stop(); });
        EXPECT_TRUE(stop.blocks());
        dispatcher.removeJob(id);
        stop.waitUntilItReturns();
    }
    EXPECT_FALSE(ran);
    EXPECT_EQ(job->refcount(), 1);
}

TEST(JobDispatcherTest, JobsOfARingNeverRunUntilOneIsWithdrawn) {
    TimeLimit const limit("a ring of jobs");
    Log log;
    JobDispatcher dispatcher(2);
    int const id = nextId();
    Job const first = log.job("first", id + 1);
    Job const second = log.job("second", id);
    ASSERT_EQ(second->getId(), id + 1);
    dispatcher.addJob(second); // added alone it could run
    dispatcher.waitJob(second->getId());
    EXPECT_EQ(log.entries(), (Entries{"second"}));

    dispatcher.resize(0);
    dispatcher.addJob(first);
    dispatcher.addJob(second);
    dispatcher.resize(2);
    std::this_thread::sleep_for(A_WHILE);
    EXPECT_EQ(log.entries(), (Entries{"second"}));
    dispatcher.removeJob(second->getId());
    dispatcher.waitJob(first->getId());
    EXPECT_EQ(log.entries(), (Entries{"second", "first"}));
}

TEST(JobDispatcherTest, OtherJobsRunWhileOneCanNeverRun) {
    TimeLimit const limit("jobs beside one that waits for itself");
    Log log;
    JobDispatcher dispatcher(1);
    int const id = nextId();
    dispatcher.addJob(makeJob([] {}, id));
    for (int i = 0; i < 10; ++i) {
        dispatcher.waitJob(dispatcher.addJob(log.job("ran")));
    }
    EXPECT_EQ(log.entries().size(), 10U);
    dispatcher.removeJob(id);
}

TEST(JobDispatcherTest, WorkersSpinWhileNoQueuedJobMayRunAndSleepWhenItIsWithdrawn) {
    TimeLimit const limit("spinning and sleeping");
    JobDispatcher dispatcher(2);
    int const id = nextId();
    dispatcher.addJob(makeJob([] {}, id));
    double const start = processorSeconds();
    while (processorSeconds() - start < 0.05) {
        std::this_thread::sleep_for(5ms); // this thread takes hardly any
    }
    dispatcher.removeJob(id);
    // On a busy machine the first windows may still see what was going on.
    double taken = 1.0;
    while (taken > 0.01) {
        double const before = processorSeconds();
        std::this_thread::sleep_for(50ms);
        taken = processorSeconds() - before;
    }
    SUCCEED();
}

// prioritizeJob

TEST(JobDispatcherTest, APrioritizedJobGoesFirstAndOfSeveralTheLastOne) {
    TimeLimit const limit("prioritized jobs");
    Log log;
    JobDispatcher dispatcher(0);
    std::vector<int> ids;
    for (char const* const name : {"a", "b", "c", "d", "e"}) {
        ids.push_back(dispatcher.addJob(log.job(name)));
    }
    dispatcher.prioritizeJob(ids[1]);
    dispatcher.prioritizeJob(ids[3]);
    dispatcher.prioritizeJob(ids[4]);
    dispatcher.prioritizeJob(ids[1]);
    dispatcher.resize(1);
    dispatcher.stop();
    EXPECT_EQ(log.entries(), (Entries{"b", "e", "d", "a", "c"}));
}

TEST(JobDispatcherTest, APrioritizedJobThatMustWaitIsOvertaken) {
    TimeLimit const limit("a prioritized job that waits");
    Log log;
    JobDispatcher dispatcher(0);
    dispatcher.addJob(log.job("a"));
    int const b = dispatcher.addJob(log.job("b"));
    int const c = dispatcher.addJob(log.job("c", b));
    dispatcher.addJob(log.job("d"));
    dispatcher.prioritizeJob(c);
    dispatcher.resize(1);
    dispatcher.stop();
    EXPECT_EQ(log.entries(), (Entries{"a", "b", "c", "d"}));
}

TEST(JobDispatcherTest, PrioritizingARunningFinishedOrUnknownJobDoesNothing) {
    TimeLimit const limit("prioritizing in vain");
    Log log;
    JobDispatcher dispatcher(1);
    int const finished = dispatcher.addJob(log.job("finished"));
    dispatcher.waitJob(finished);
    HeldJob running;
    dispatcher.addJob(running.job());
    running.waitUntilStarted();
    dispatcher.addJob(log.job("a"));
    dispatcher.addJob(log.job("b"));
    for (int const id : {finished, running.id(), -1, 2147483647}) {
        dispatcher.prioritizeJob(id);
    }
    running.release();
    dispatcher.stop();
    EXPECT_EQ(log.entries(), (Entries{"finished", "a", "b"}));
}

// removeJob

TEST(JobDispatcherTest, AWithdrawnJobDoesNotRunAndTheOthersKeepTheirOrder) {
    TimeLimit const limit("a withdrawn job");
    Log log;
    JobDispatcher dispatcher(0);
    dispatcher.addJob(log.job("a"));
    int const b = dispatcher.addJob(log.job("b"));
    dispatcher.addJob(log.job("c"));
    dispatcher.addJob(log.job("d"));
    dispatcher.removeJob(b);
    dispatcher.removeJob(b);
    dispatcher.resize(1);
    dispatcher.stop();
    EXPECT_EQ(log.entries(), (Entries{"a", "c", "d"}));
}

TEST(JobDispatcherTest, OfAJobThatWasAddedTwiceTheFirstIsWithdrawn) {
    TimeLimit const limit("one of two");
    Log log;
    JobDispatcher dispatcher(0);
    Job const twice = log.job("twice");
    dispatcher.addJob(twice);
    dispatcher.addJob(log.job("other"));
    dispatcher.addJob(twice);
    dispatcher.removeJob(twice->getId());
    dispatcher.resize(1);
    dispatcher.stop();
    EXPECT_EQ(log.entries(), (Entries{"other", "twice"}));
}

TEST(JobDispatcherTest, WithdrawingARunningJobLetsItRunToTheEnd) {
    TimeLimit const limit("withdrawing a running job");
    HeldJob running;
    JobDispatcher dispatcher(1);
    dispatcher.addJob(running.job());
    running.waitUntilStarted();
    dispatcher.removeJob(running.id());
    Call wait([&] { dispatcher.waitJob(running.id()); });
    EXPECT_TRUE(wait.blocks()) << "it still runs";
    running.release();
    wait.waitUntilItReturns();
    EXPECT_TRUE(running.ended());
}

TEST(JobDispatcherTest, WithdrawingAnUnknownJobDoesNothing) {
    TimeLimit const limit("withdrawing an unknown job");
    Log log;
    JobDispatcher dispatcher(0);
    dispatcher.removeJob(0);
    dispatcher.removeJob(-1);
    dispatcher.addJob(log.job("a"));
    dispatcher.removeJob(2147483647);
    dispatcher.removeJob(-1);
    dispatcher.resize(1);
    dispatcher.stop();
    EXPECT_EQ(log.entries(), (Entries{"a"}));
}

// waitJob

TEST(JobDispatcherTest, WaitJobReturnsAtOnceForAnUnknownAndForAFinishedJob) {
    TimeLimit const limit("waiting for nothing");
    JobDispatcher dispatcher(1);
    dispatcher.waitJob(-1);
    dispatcher.waitJob(2147483647);
    int const id = dispatcher.addJob(makeJob([] {}));
    dispatcher.waitJob(id);
    dispatcher.waitJob(id);
    SUCCEED();
}

TEST(JobDispatcherTest, WaitJobBlocksWhileTheJobIsQueuedAndWhileItRuns) {
    TimeLimit const limit("waiting for a job");
    HeldJob before;
    HeldJob job;
    JobDispatcher dispatcher(1);
    dispatcher.addJob(before.job());
    dispatcher.addJob(job.job());
    Call wait([&] {
        dispatcher.waitJob(job.id());
        EXPECT_TRUE(job.ended());
    });
    EXPECT_TRUE(wait.blocks());
    before.release();
    job.waitUntilStarted();
    EXPECT_TRUE(wait.blocks());
    job.release();
    wait.waitUntilItReturns();
}

TEST(JobDispatcherTest, WaitJobReturnsWhenTheJobIsWithdrawn) {
    TimeLimit const limit("waiting for a withdrawn job");
    JobDispatcher dispatcher(0);
    int const id = dispatcher.addJob(makeJob([] {}));
    Call wait([&] { dispatcher.waitJob(id); });
    EXPECT_TRUE(wait.blocks());
    dispatcher.removeJob(id);
    wait.waitUntilItReturns();
}

TEST(JobDispatcherTest, WaitJobDoesNotWaitForOtherJobs) {
    TimeLimit const limit("waiting beside a running job");
    HeldJob other;
    JobDispatcher dispatcher(2);
    dispatcher.addJob(other.job());
    dispatcher.waitJob(dispatcher.addJob(makeJob([] {})));
    EXPECT_FALSE(other.ended());
    other.release();
}

TEST(JobDispatcherTest, ManyThreadsMayWaitForOneJob) {
    TimeLimit const limit("many waiting threads");
    HeldJob job;
    JobDispatcher dispatcher(1);
    dispatcher.addJob(job.job());
    std::vector<std::thread> threads;
    std::atomic<int> returned{0};
    for (int i = 0; i < 8; ++i) {
        threads.emplace_back([&] {
            dispatcher.waitJob(job.id());
            ++returned;
        });
    }
    EXPECT_EQ(returned, 0);
    job.release();
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(returned, 8);
}

// wait

TEST(JobDispatcherTest, WaitReturnsAtOnceWhenJobsAreQueuedButNoneRuns) {
    TimeLimit const limit("waiting beside a queue");
    JobDispatcher dispatcher(0);
    JobDispatcher const& constant = dispatcher;
    constant.wait();
    dispatcher.addJob(makeJob([] {}));
    constant.wait();
    SUCCEED();
}

TEST(JobDispatcherTest, WaitBlocksUntilEveryRunningJobHasEnded) {
    TimeLimit const limit("waiting for all that runs");
    HeldJob a;
    HeldJob b;
    JobDispatcher dispatcher(2);
    dispatcher.addJob(a.job());
    dispatcher.addJob(b.job());
    a.waitUntilStarted();
    b.waitUntilStarted();
    Call wait([&] { dispatcher.wait(); });
    EXPECT_TRUE(wait.blocks());
    a.release();
    EXPECT_TRUE(wait.blocks());
    b.release();
    wait.waitUntilItReturns();
    EXPECT_TRUE(a.ended() && b.ended());
}

TEST(JobDispatcherTest, WaitIsContentWithAPauseBetweenTwoJobsThoughTheQueueGoesOn) {
    TimeLimit const limit("a pause between jobs");
    HeldJob first;
    HeldJob second;
    JobDispatcher dispatcher(1);
    dispatcher.addJob(first.job());
    dispatcher.addJob(second.job());
    first.waitUntilStarted();
    Call wait([&] { dispatcher.wait(); });
    EXPECT_TRUE(wait.blocks());
    first.release();
    wait.waitUntilItReturns();
    EXPECT_FALSE(second.ended());
    second.release();
}

// start, stop, resize

TEST(JobDispatcherTest, StopRunsAllThatIsQueued) {
    TimeLimit const limit("draining");
    Log log;
    HeldJob first;
    JobDispatcher dispatcher(2);
    dispatcher.addJob(first.job());
    int last = first.id();
    for (int i = 0; i < 20; ++i) {
        last = dispatcher.addJob(log.job(std::to_string(i), last));
    }
    Call stop([&] { dispatcher.stop(); });
    EXPECT_TRUE(stop.blocks());
    first.release();
    stop.waitUntilItReturns();
    EXPECT_EQ(log.entries().size(), 20U);
}

TEST(JobDispatcherTest, StopRunsJobsThatOtherJobsAddMeanwhile) {
    TimeLimit const limit("draining what comes");
    std::atomic<int> ran{0};
    JobDispatcher dispatcher(1);
    std::function<void()> addNext = [&] {
        if (++ran < 50) {
            dispatcher.addJob(makeJob(addNext));
        }
    };
    dispatcher.addJob(makeJob(addNext));
    dispatcher.stop();
    EXPECT_EQ(ran, 50);
}

TEST(JobDispatcherTest, StopOnAStoppedOneAndStartOnARunningOneDoNothing) {
    TimeLimit const limit("stopping twice");
    JobDispatcher dispatcher(2);
    dispatcher.start();
    HeldJob a;
    HeldJob b;
    HeldJob c;
    dispatcher.addJob(a.job());
    dispatcher.addJob(b.job());
    dispatcher.addJob(c.job());
    a.waitUntilStarted();
    b.waitUntilStarted();
    EXPECT_FALSE(c.starts()) << "there is no third worker";
    a.release();
    b.release();
    c.release();
    dispatcher.stop();
    dispatcher.stop();
    dispatcher.start();
    dispatcher.start();
    EXPECT_EQ(workerNames(dispatcher, 2).size(), 2U);
}

TEST(JobDispatcherTest, AJobThatIsAddedToAStoppedOneWaitsForTheNextStart) {
    TimeLimit const limit("a stopped dispatcher");
    Log log;
    JobDispatcher dispatcher(1);
    dispatcher.stop();
    dispatcher.addJob(log.job("a"));
    int const b = dispatcher.addJob(log.job("b"));
    int const c = dispatcher.addJob(log.job("c"));
    int const d = dispatcher.addJob(log.job("d"));
    dispatcher.removeJob(b);
    dispatcher.prioritizeJob(c);
    std::this_thread::sleep_for(A_WHILE);
    EXPECT_TRUE(log.entries().empty());
    dispatcher.start();
    dispatcher.waitJob(d);
    EXPECT_EQ(log.entries(), (Entries{"c", "a", "d"}));
}

TEST(JobDispatcherTest, WithoutWorkersJobsWaitUntilResizeBringsSome) {
    TimeLimit const limit("no workers");
    Log log;
    JobDispatcher dispatcher(0);
    dispatcher.start();
    dispatcher.stop();
    dispatcher.addJob(log.job("a"));
    dispatcher.start();
    std::this_thread::sleep_for(A_WHILE);
    EXPECT_TRUE(log.entries().empty());
    dispatcher.resize(1);
    dispatcher.stop();
    EXPECT_EQ(log.entries(), (Entries{"a"}));
}

TEST(JobDispatcherTest, ResizeDrainsTheQueueFirst) {
    TimeLimit const limit("draining before a new size");
    Log log;
    HeldJob first;
    JobDispatcher dispatcher(1);
    dispatcher.addJob(first.job());
    dispatcher.addJob(log.job("second"));
    Call resize([&] { dispatcher.resize(0); });
    EXPECT_TRUE(resize.blocks());
    first.release();
    resize.waitUntilItReturns();
    EXPECT_EQ(log.entries(), (Entries{"second"}));
}

TEST(JobDispatcherTest, ResizeGivesExactlyThatManyWorkers) {
    TimeLimit const limit("resizing");
    JobDispatcher dispatcher(1);
    for (unsigned int const count : {3U, 1U, 4U, 0U, 2U}) {
        dispatcher.resize(count);
        std::vector<std::unique_ptr<HeldJob>> held;
        for (unsigned int i = 0; i <= count; ++i) {
            held.push_back(std::make_unique<HeldJob>());
            dispatcher.addJob(held.back()->job());
        }
        for (unsigned int i = 0; i < count; ++i) {
            held[i]->waitUntilStarted();
        }
        EXPECT_FALSE(held.back()->starts()) << "one job more than there are workers";
        for (auto const& job : held) {
            job->release();
        }
        if (count == 0) {
            dispatcher.removeJob(held.back()->id());
        }
        dispatcher.stop();
    }
}

TEST(JobDispatcherTest, ResizeStartsAStoppedOne) {
    TimeLimit const limit("resizing a stopped dispatcher");
    JobDispatcher dispatcher(1);
    dispatcher.stop();
    dispatcher.resize(2);
    EXPECT_EQ(workerNames(dispatcher, 2).size(), 2U);
}

TEST(JobDispatcherTest, StartAfterAStopBringsAsManyWorkersAsTheLastResize) {
    TimeLimit const limit("starting anew");
    JobDispatcher dispatcher(1);
    dispatcher.resize(3);
    dispatcher.stop();
    dispatcher.start();
    EXPECT_EQ(workerNames(dispatcher, 3).size(), 3U);
}

// The end

TEST(JobDispatcherTest, TheDestructorDrainsTheQueue) {
    TimeLimit const limit("draining at the end");
    Log log;
    HeldJob first;
    {
        JobDispatcher dispatcher(1);
        dispatcher.addJob(first.job());
        for (int i = 0; i < 10; ++i) {
            dispatcher.addJob(log.job("ran"));
        }
        first.release();
    }
    EXPECT_EQ(log.entries().size(), 10U);
}

TEST(JobDispatcherTest, ADispatcherWithoutWorkersReleasesItsQueueWithoutRunningIt) {
    TimeLimit const limit("the end without workers");
    Log log;
    Job const job = log.job("ran");
    {
        JobDispatcher stopped(1);
        stopped.stop();
        stopped.addJob(job);
        JobDispatcher idle(0);
        idle.addJob(job);
        JobDispatcher emptied(2);
        emptied.resize(0);
        emptied.addJob(job);
        EXPECT_EQ(job->refcount(), 4);
    }
    EXPECT_EQ(job->refcount(), 1);
    EXPECT_TRUE(log.entries().empty());
}

// Names

TEST(JobDispatcherTest, WorkersAreNamedByThePoolANumberSignAndTheirNumber) {
    TimeLimit const limit("names");
    JobDispatcher decoder(2, "decoder");
    EXPECT_EQ(workerNames(decoder, 2), (std::set<std::string>{"decoder#1", "decoder#2"}));
    JobDispatcher unnamed(3);
    EXPECT_EQ(workerNames(unnamed, 3), (std::set<std::string>{"ORL-Pool#1", "ORL-Pool#2", "ORL-Pool#3"}));
    JobDispatcher null(1, nullptr);
    EXPECT_EQ(workerNames(null, 1), (std::set<std::string>{"ORL-Pool#1"}));
    JobDispatcher empty(1, "");
    EXPECT_EQ(workerNames(empty, 1), (std::set<std::string>{"#1"}));
}

TEST(JobDispatcherTest, TheNameIsCopied) {
    TimeLimit const limit("a copied name");
    char name[] = "first";
    JobDispatcher dispatcher(0, name);
    name[0] = 'X';
    dispatcher.resize(1);
    EXPECT_EQ(workerNames(dispatcher, 1), (std::set<std::string>{"first#1"}));
}

TEST(JobDispatcherTest, AWorkerWhoseNameIsTooLongHasNone) {
    TimeLimit const limit("a long name");
    // A new thread bears the name of the one that starts it until it gets its own.
    std::thread([] {
        Platform::setThreadName(String("starter"));
        JobDispatcher fits(1, "thirteenbytes");
        EXPECT_EQ(workerNames(fits, 1), (std::set<std::string>{"thirteenbytes#1"}));
        JobDispatcher tooLong(1, "fourteen bytes");
        EXPECT_EQ(workerNames(tooLong, 1), (std::set<std::string>{"starter"}));
        JobDispatcher partly(10, "thirteenbytes");
        std::set<std::string> const names = workerNames(partly, 10);
        EXPECT_EQ(names.size(), 10U);
        EXPECT_EQ(names.count("thirteenbytes#9"), 1U);
        EXPECT_EQ(names.count("starter"), 1U) << "the tenth";
    }).join();
}

// From within a job

TEST(JobDispatcherTest, AJobMayAddMoveWithdrawAndWaitForOthers) {
    TimeLimit const limit("calls from a job");
    Log log;
    JobDispatcher dispatcher(2);
    Job const job = makeJob([&] {
        HeldJob held; // keeps the other worker busy
        dispatcher.addJob(held.job());
        held.waitUntilStarted();
        int const a = dispatcher.addJob(log.job("a"));
        int const b = dispatcher.addJob(log.job("b"));
        int const c = dispatcher.addJob(log.job("c"));
        dispatcher.prioritizeJob(c);
        dispatcher.removeJob(a);
        held.release();
        dispatcher.waitJob(held.id());
        dispatcher.waitJob(b);
        log.add("end");
    });
    dispatcher.waitJob(dispatcher.addJob(job));
    EXPECT_EQ(log.entries(), (Entries{"c", "b", "end"}));
}

TEST(JobDispatcherTest, AJobMayAddItselfAgain) {
    TimeLimit const limit("a job that adds itself");
    std::atomic<int> runs{0};
    JobDispatcher dispatcher(2);
    Base* self = nullptr;
    Job const job = makeJob([&] {
        if (++runs < 20) {
            dispatcher.addJob(Job(self));
        }
    });
    self = job.get();
    dispatcher.addJob(job);
    dispatcher.waitJob(job->getId());
    EXPECT_EQ(runs, 20);
}

TEST(JobDispatcherDeathTest, AnExceptionThatLeavesAJobEndsTheProcess) {
    testing::FLAGS_gtest_death_test_style = "threadsafe";
    EXPECT_DEATH(
        {
            JobDispatcher dispatcher(1);
            dispatcher.waitJob(dispatcher.addJob(makeJob([] { throw std::runtime_error("job failed"); })));
        },
        "job failed");
}

} // namespace
