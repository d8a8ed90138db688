// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "support/TimeLimit.h"

#include <orlJobDispatcher.h>
#include <orlPlatform.h>

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <climits>
#include <ctime>
#include <filesystem>
#include <functional>
#include <iterator>
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

using JobPtr = SharedPtr<JobDispatcher::JobBase>;
using Milliseconds = std::chrono::milliseconds;

int const NONE = JobDispatcher::JobBase::kNoPrerequisite;

static_assert(std::has_virtual_destructor<JobDispatcher>::value, "others may derive from it");
static_assert(std::is_base_of<RefCountedMT, JobDispatcher::JobBase>::value, "counted on all threads");
static_assert(std::is_abstract<JobDispatcher::JobBase>::value, "the work is the application's");
static_assert(sizeof(JobDispatcher) == 2 * sizeof(void*), "one pointer to what is hidden");
static_assert(sizeof(JobDispatcher::JobBase) == sizeof(RefCountedMT) + 2 * sizeof(int), "two ids");

// A job that does what it is given.
class Job : public JobDispatcher::JobBase {
public:
    explicit Job(std::function<void()> work, int prerequisiteId = NONE)
        : JobBase(prerequisiteId), m_work(std::move(work)) {}

    void run() override { m_work(); }

private:
    std::function<void()> m_work;
};

JobPtr job(std::function<void()> work, int prerequisiteId = NONE) {
    return JobPtr(new Job(std::move(work), prerequisiteId));
}

JobPtr idleJob(int prerequisiteId = NONE) {
    return job([] {}, prerequisiteId);
}

// The id of the job that is made next, as long as no other thread makes one.
int nextId() { return idleJob()->getId() + 1; }

// What ran, from any thread.
class Journal {
public:
    void note(char what) {
        std::lock_guard<std::mutex> const lock(m_mutex);
        m_text += what;
    }

    std::string text() const {
        std::lock_guard<std::mutex> const lock(m_mutex);
        return m_text;
    }

private:
    mutable std::mutex m_mutex;
    std::string m_text;
};

bool soon(std::function<bool()> const& holds) {
    auto const end = std::chrono::steady_clock::now() + std::chrono::seconds(20);
    while (!holds()) {
        if (std::chrono::steady_clock::now() > end) {
            return false;
        }
        std::this_thread::sleep_for(Milliseconds(1));
    }
    return true;
}

// For what must not happen: long enough that it would have, mostly.
void letPass() { std::this_thread::sleep_for(Milliseconds(30)); }

long threadsOfProcess() { return std::distance(std::filesystem::directory_iterator("/proc/self/task"), {}); }

// A job that a worker is busy with until it is let go.
class Blocker {
public:
    explicit Blocker(JobDispatcher& dispatcher) {
        m_id = dispatcher.addJob(job([gates = m_gates] {
            gates->entered.open();
            gates->exit.pass();
        }));
        m_gates->entered.pass();
    }
    Blocker(Blocker const&) = delete;
    Blocker& operator=(Blocker const&) = delete;
    ~Blocker() { letGo(); }

    void letGo() { m_gates->exit.open(); }

    int id() const { return m_id; }

private:
    struct Gates {
        Gate entered;
        Gate exit;
    };

    std::shared_ptr<Gates> m_gates = std::make_shared<Gates>(); // the job's, too, which goes through it last
    int m_id = NONE;
};

// Does something on a thread of its own and tells whether it is through.
class Caller {
public:
    explicit Caller(std::function<void()> call)
        : m_thread([this, call] {
              call();
              m_returned.open();
          }) {}
    Caller(Caller const&) = delete;
    Caller& operator=(Caller const&) = delete;
    ~Caller() { m_thread.join(); }

    bool returns() { return m_returned.passWithin(std::chrono::seconds(20)); }
    bool stillWaits() { return !m_returned.passWithin(Milliseconds(30)); }

private:
    Gate m_returned;
    std::thread m_thread;
};

// The order of one worker. Jobs are 'a', 'b' ...; they are queued behind a job that runs.

struct Queued {
    char name;
    char after; // its prerequisite, '-' for none, '?' for an id of no job, '!' for the job that runs
};

struct Order {
    char const* name;
    std::vector<Queued> jobs; // made in the order of their names, added in this one
    std::string changes;      // "+x" prioritises, "-x" withdraws; "+!" and "-!" mean the job that runs
    std::string order;
};

Order const ORDERS[] = {
    {"the order of adding", {{'a', '-'}, {'b', '-'}, {'c', '-'}}, "", "abc"},
    {"the order of adding, not of making", {{'c', '-'}, {'a', '-'}, {'b', '-'}}, "", "cab"},
    {"moved to the head", {{'a', '-'}, {'b', '-'}, {'c', '-'}}, "+c", "cab"},
    {"the last moved is first", {{'a', '-'}, {'b', '-'}, {'c', '-'}}, "+a+b+c", "cba"},
    {"the head moved to the head", {{'a', '-'}, {'b', '-'}, {'c', '-'}}, "+a", "abc"},
    {"moved twice", {{'a', '-'}, {'b', '-'}, {'c', '-'}}, "+b+c+b", "bca"},
    {"moved and withdrawn", {{'a', '-'}, {'b', '-'}, {'c', '-'}}, "+c-c", "ab"},
    {"withdrawn and moved", {{'a', '-'}, {'b', '-'}, {'c', '-'}}, "-c+c", "ab"},
    {"withdrawn from the head", {{'a', '-'}, {'b', '-'}, {'c', '-'}}, "-a", "bc"},
    {"withdrawn from the middle", {{'a', '-'}, {'b', '-'}, {'c', '-'}}, "-b", "ac"},
    {"withdrawn from the tail", {{'a', '-'}, {'b', '-'}, {'c', '-'}}, "-c", "ab"},
    {"all withdrawn", {{'a', '-'}, {'b', '-'}, {'c', '-'}}, "-b-c-a", ""},
    {"unknown ids", {{'a', '-'}, {'b', '-'}}, "+?-?", "ab"},
    {"the running job moved and withdrawn", {{'a', '-'}, {'b', '-'}}, "+!-!", "ab"},
    {"a waiting job is overtaken", {{'b', 'c'}, {'a', '-'}, {'c', '-'}}, "", "acb"},
    {"moved, but waiting, is overtaken", {{'a', '-'}, {'b', 'a'}, {'c', '-'}}, "+b", "abc"},
    {"a waiting job keeps its place", {{'a', '-'}, {'b', 'c'}, {'c', '-'}, {'d', '-'}}, "", "acbd"},
    {"the prerequisite is moved", {{'a', '-'}, {'b', 'c'}, {'c', '-'}}, "+c", "cab"},
    {"a prerequisite behind its job", {{'a', 'b'}, {'b', '-'}}, "", "ba"},
    {"a chain backwards", {{'a', 'b'}, {'b', 'c'}, {'c', 'd'}, {'d', '-'}}, "", "dcba"},
    {"a chain moved backwards", {{'a', '-'}, {'b', 'a'}, {'c', 'b'}}, "+a+b+c", "abc"},
    {"two wait for one", {{'b', 'a'}, {'c', 'a'}, {'a', '-'}}, "", "abc"},
    {"an unknown prerequisite", {{'a', '?'}, {'b', '-'}}, "", "ab"},
    {"the running job as the prerequisite", {{'a', '!'}, {'b', '-'}}, "", "ab"},
    {"a withdrawn prerequisite", {{'b', 'a'}, {'a', '-'}, {'c', '-'}}, "-a", "bc"},
    {"one that waits for itself, withdrawn", {{'a', 'a'}, {'b', '-'}}, "-a", "b"},
    {"a ring of two, one withdrawn", {{'a', 'b'}, {'b', 'a'}, {'c', '-'}}, "-a", "bc"},
    {"waiting for one that waits for itself, withdrawn", {{'b', 'a'}, {'a', 'a'}}, "-a", "b"},
    {"one job added twice", {{'a', '-'}, {'b', '-'}, {'a', '-'}}, "", "aba"},
    {"the first of two withdrawn", {{'a', '-'}, {'b', '-'}, {'a', '-'}}, "-a", "ba"},
    {"both of two withdrawn", {{'a', '-'}, {'b', '-'}, {'a', '-'}}, "-a-a", "b"},
    {"the first of two moved", {{'b', '-'}, {'a', '-'}, {'c', '-'}, {'a', '-'}}, "+a", "abca"},
    {"the first of two moved twice is the same",
     {{'b', '-'}, {'a', '-'}, {'c', '-'}, {'a', '-'}},
     "+a+a",
     "abca"},
    {"the second of two, the first withdrawn, moved", {{'a', '-'}, {'b', '-'}, {'a', '-'}}, "-a+a", "ab"},
    {"both of two come before who waits for them",
     {{'b', 'a'}, {'a', '-'}, {'c', '-'}, {'a', '-'}},
     "",
     "acab"},
    {"one of two withdrawn still blocks", {{'b', 'a'}, {'a', '-'}, {'c', '-'}, {'a', '-'}}, "-a", "cab"},
    {"added again while it is moved", {{'c', '-'}, {'a', '-'}, {'b', 'a'}, {'a', '-'}}, "+b+a", "acab"},
};

// The jobs of a row by their names, all of them made before one is added.
class Cast {
public:
    Cast(Order const& order, Journal& journal, int running) : m_running(running) {
        std::set<std::pair<char, char>> names;
        for (Queued const& queued : order.jobs) {
            names.insert({queued.name, queued.after});
        }
        int const first = nextId();
        for (auto const& name : names) {
            char const what = name.first;
            m_names += what;
            m_jobs.push_back(job([&journal, what] { journal.note(what); }, idOf(name.second, first, names)));
            EXPECT_EQ(first + static_cast<int>(m_jobs.size()) - 1, m_jobs.back()->getId());
        }
    }

    JobPtr const& operator[](char name) const { return m_jobs.at(m_names.find(name)); }

    int id(char name) const {
        return name == '!' ? m_running : name == '?' ? INT_MAX : (*this)[name]->getId();
    }

private:
    int idOf(char name, int first, std::set<std::pair<char, char>> const& names) const {
        if (name == '-') {
            return NONE;
        }
        if (name == '?' || name == '!') {
            return name == '?' ? INT_MAX : m_running;
        }
        return first + static_cast<int>(std::distance(names.begin(), names.lower_bound({name, '\0'})));
    }

    int m_running;
    std::string m_names;
    std::vector<JobPtr> m_jobs;
};

void change(JobDispatcher& dispatcher, Cast const& cast, std::string const& changes) {
    for (std::size_t i = 0; i < changes.size(); i += 2) {
        int const id = cast.id(changes[i + 1]);
        changes[i] == '+' ? dispatcher.prioritizeJob(id) : dispatcher.removeJob(id);
    }
}

TEST(JobDispatcherOrderContract, OneWorkerTakesTheFirstJobThatMayRun) {
    TimeLimit const limit("orders of one worker");
    for (Order const& order : ORDERS) {
        SCOPED_TRACE(order.name);
        Journal journal;
        JobDispatcher dispatcher(1);
        {
            Blocker const blocker(dispatcher);
            Cast const cast(order, journal, blocker.id());
            for (Queued const& queued : order.jobs) {
                EXPECT_EQ(cast.id(queued.name), dispatcher.addJob(cast[queued.name]));
            }
            change(dispatcher, cast, order.changes);
            EXPECT_EQ("", journal.text());
        }
        dispatcher.stop();
        EXPECT_EQ(order.order, journal.text());
    }
}

// Nobody runs the jobs meanwhile: the queue of a dispatcher without workers obeys the same rules.
TEST(JobDispatcherOrderContract, AQueueWithoutWorkersIsServedInTheSameOrderLater) {
    TimeLimit const limit("orders of a queue that is served later");
    for (bool const stopped : {false, true}) {
        for (Order const& order : ORDERS) {
            SCOPED_TRACE(order.name);
            Journal journal;
            JobDispatcher dispatcher(stopped ? 1 : 0);
            dispatcher.stop();
            Cast const cast(order, journal, INT_MIN);
            for (Queued const& queued : order.jobs) {
                EXPECT_EQ(cast.id(queued.name), dispatcher.addJob(cast[queued.name]));
            }
            change(dispatcher, cast, order.changes);
            stopped ? dispatcher.start() : dispatcher.resize(1);
            dispatcher.stop();
            EXPECT_EQ(order.order, journal.text());
        }
    }
}

// Ids and prerequisites

TEST(JobDispatcherJobContract, IdsAreDrawnOneByOneAndJobsKeepWhatTheyWereMadeWith) {
    int const first = nextId();
    for (int const prerequisite : {NONE, 0, 7, INT_MAX, INT_MIN}) {
        JobPtr const made = idleJob(prerequisite);
        EXPECT_EQ(prerequisite, made->getPrerequisiteId());
        EXPECT_EQ(1, made->refcount());
    }
    EXPECT_EQ(first + 6, nextId());
    EXPECT_EQ(-1, NONE);
}

TEST(JobDispatcherJobContract, IdsOfManyThreadsAreAllDifferent) {
    int const first = nextId();
    std::mutex mutex;
    std::set<int> ids;
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i) {
        threads.emplace_back([&] {
            for (int k = 0; k < 500; ++k) {
                JobPtr const made = idleJob();
                std::lock_guard<std::mutex> const lock(mutex);
                ids.insert(made->getId());
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(2000u, ids.size());
    EXPECT_EQ(first, *ids.begin());
    EXPECT_EQ(first + 1999, *ids.rbegin());
}

TEST(JobDispatcherJobContract, NoIdOfNoJobBlocksAJob) {
    TimeLimit const limit("prerequisites that nobody has");
    JobDispatcher dispatcher(1);
    JobPtr const withdrawn = idleJob();
    JobPtr const done = idleJob();
    dispatcher.waitJob(dispatcher.addJob(done));
    {
        Blocker const blocker(dispatcher);
        dispatcher.addJob(withdrawn);
        dispatcher.removeJob(withdrawn->getId());
    }
    JobDispatcher other(0);
    JobPtr const elsewhere = idleJob();
    other.addJob(elsewhere);
    for (int const id : {NONE, INT_MIN, INT_MAX, withdrawn->getId(), done->getId(), elsewhere->getId()}) {
        dispatcher.waitJob(dispatcher.addJob(idleJob(id)));
    }
}

TEST(JobDispatcherJobContract, AJobStartsOnlyWhenItsPrerequisiteIsThroughThoughAWorkerIsFree) {
    TimeLimit const limit("a prerequisite and a free worker");
    Journal journal;
    JobDispatcher dispatcher(2);
    Blocker first(dispatcher);
    int const waiting = dispatcher.addJob(job([&] { journal.note('b'); }, first.id()));
    int const free = dispatcher.addJob(job([&] { journal.note('c'); }));
    dispatcher.waitJob(free);
    dispatcher.prioritizeJob(waiting);
    letPass();
    EXPECT_EQ("c", journal.text());
    first.letGo();
    dispatcher.waitJob(waiting);
    EXPECT_EQ("cb", journal.text());
}

TEST(JobDispatcherJobContract, APrerequisiteThatIsAddedTooLateBlocksNobody) {
    TimeLimit const limit("a prerequisite that comes late");
    Journal journal;
    JobDispatcher dispatcher(1);
    JobPtr const late = job([&] { journal.note('l'); });
    dispatcher.waitJob(dispatcher.addJob(job([&] { journal.note('e'); }, late->getId())));
    dispatcher.waitJob(dispatcher.addJob(late));
    EXPECT_EQ("el", journal.text());
}

TEST(JobDispatcherJobContract, AJobThatIsAddedTwiceMayRunOnTwoWorkersAtATimeAndIsAwaitedTwice) {
    TimeLimit const limit("a job that was added twice");
    std::atomic<int> inside{0};
    Gate exit;
    Gate second;
    JobPtr const twice = job([&] {
        if (++inside == 2) {
            second.open();
        }
        exit.pass();
    });
    JobDispatcher dispatcher(2);
    dispatcher.addJob(twice);
    dispatcher.addJob(twice);
    second.pass();
    Caller waiter([&] { dispatcher.waitJob(twice->getId()); });
    EXPECT_TRUE(waiter.stillWaits());
    exit.open();
    EXPECT_TRUE(waiter.returns());
}

// Who holds a job

TEST(JobDispatcherHoldingContract, AJobIsHeldWhileItIsQueuedAndWhileItRuns) {
    TimeLimit const limit("jobs that nobody else holds");
    auto const alive = std::make_shared<int>(0);
    Gate entered;
    Gate exit;
    JobDispatcher dispatcher(1);
    {
        Blocker const blocker(dispatcher);
        dispatcher.addJob(job([alive, &entered, &exit] {
            entered.open();
            exit.pass();
        }));
        EXPECT_EQ(2, alive.use_count());
    }
    entered.pass();
    EXPECT_EQ(2, alive.use_count());
    exit.open();
    EXPECT_TRUE(soon([&] { return alive.use_count() == 1; })) << "a worker at rest holds no job";
}

TEST(JobDispatcherHoldingContract, AWithdrawnJobIsReleasedAtOnce) {
    JobDispatcher dispatcher(0);
    JobPtr const first = idleJob();
    EXPECT_EQ(first->getId(), dispatcher.addJob(first));
    EXPECT_EQ(2, first->refcount());
    dispatcher.prioritizeJob(first->getId());
    EXPECT_EQ(2, first->refcount());
    dispatcher.addJob(first);
    EXPECT_EQ(3, first->refcount());
    dispatcher.removeJob(first->getId());
    EXPECT_EQ(2, first->refcount());
    dispatcher.removeJob(first->getId());
    EXPECT_EQ(1, first->refcount());
}

TEST(JobDispatcherHoldingContract, TheEndOfADispatcherWithoutWorkersReleasesTheQueueUnrun) {
    for (bool const stopped : {false, true}) {
        Journal journal;
        JobPtr const queued = job([&] { journal.note('x'); });
        {
            JobDispatcher dispatcher(stopped ? 2 : 0);
            dispatcher.stop();
            dispatcher.addJob(queued);
            EXPECT_EQ(2, queued->refcount());
        }
        EXPECT_EQ(1, queued->refcount());
        EXPECT_EQ("", journal.text());
    }
}

// A job whose end uses the dispatcher: nothing is locked then.
TEST(JobDispatcherHoldingContract, AJobMayUseTheDispatcherWhileItIsDestroyed) {
    TimeLimit const limit("jobs that end with a call");
    JobDispatcher dispatcher(1);
    std::atomic<int> ended{0};
    auto const lastWords = [&] {
        return std::shared_ptr<void>(nullptr, [&](void*) {
            dispatcher.removeJob(INT_MAX);
            dispatcher.waitJob(INT_MAX);
            dispatcher.addJob(idleJob());
            ++ended;
        });
    };
    dispatcher.addJob(job([words = lastWords()] {}));
    EXPECT_TRUE(soon([&] { return ended == 1; }));
    Blocker const blocker(dispatcher);
    int const id = dispatcher.addJob(job([words = lastWords()] {}));
    EXPECT_EQ(1, ended);
    dispatcher.removeJob(id);
    EXPECT_EQ(2, ended);
}

// Whoever else wants the next job has it: a worker takes none before it has let go of the last.

TEST(JobDispatcherHoldingContract, AJobMayWithdrawTheNextOneWhileItIsDestroyed) {
    TimeLimit const limit("a job that ends with a withdrawal");
    Journal journal;
    JobDispatcher dispatcher(1);
    {
        Blocker const blocker(dispatcher);
        JobPtr const next = job([&] { journal.note('n'); });
        int const id = next->getId();
        std::shared_ptr<void> const words(nullptr, [&, id](void*) {
            journal.note('w');
            dispatcher.removeJob(id);
        });
        dispatcher.addJob(job([words] {}));
        dispatcher.addJob(next);
    }
    dispatcher.stop();
    EXPECT_EQ("w", journal.text());
}

TEST(JobDispatcherHoldingContract, AJobMayMoveAnotherBeforeTheNextOneWhileItIsDestroyed) {
    TimeLimit const limit("a job that ends with a move");
    Journal journal;
    JobDispatcher dispatcher(1);
    {
        Blocker const blocker(dispatcher);
        JobPtr const last = job([&] { journal.note('l'); });
        int const id = last->getId();
        std::shared_ptr<void> const words(nullptr, [&, id](void*) { dispatcher.prioritizeJob(id); });
        dispatcher.addJob(job([words] {}));
        dispatcher.addJob(job([&] { journal.note('n'); }));
        dispatcher.addJob(last);
    }
    dispatcher.stop();
    EXPECT_EQ("ln", journal.text());
}

TEST(JobDispatcherHoldingContract, AJobMayWaitForTheNextOneWhileItIsDestroyedIfThereIsAnotherWorker) {
    TimeLimit const limit("a job that ends with a wait");
    Journal journal;
    JobDispatcher dispatcher(2);
    {
        Blocker const first(dispatcher);
        Blocker const second(dispatcher);
        JobPtr const next = job([&] { journal.note('n'); });
        int const id = next->getId();
        std::shared_ptr<void> const words(nullptr, [&, id](void*) {
            dispatcher.waitJob(id);
            journal.note('w');
        });
        dispatcher.addJob(job([words] {}));
        dispatcher.addJob(next);
    }
    dispatcher.stop();
    EXPECT_EQ("nw", journal.text());
}

TEST(JobDispatcherHoldingContract, AJobThatIsDestroyedAfterItRanIsNeitherRunningNorHere) {
    TimeLimit const limit("a job that ends with a wait for itself");
    Journal journal;
    JobDispatcher dispatcher(1);
    {
        Blocker const blocker(dispatcher);
        int const id = nextId();
        std::shared_ptr<void> const words(nullptr, [&, id](void*) {
            dispatcher.wait();
            dispatcher.waitJob(id);
            journal.note('w');
        });
        JobPtr const first = job([words] {});
        ASSERT_EQ(id, first->getId());
        dispatcher.addJob(first);
        dispatcher.addJob(job([&] { journal.note('n'); }, id));
    }
    dispatcher.stop();
    EXPECT_EQ("wn", journal.text());
}

// The threads

struct Step {
    char const* name;
    std::function<void(JobDispatcher&)> call;
    long workers;
};

Step const STEPS[] = {
    {"made with three", [](JobDispatcher&) {}, 3},
    {"started, though it runs", [](JobDispatcher& d) { d.start(); }, 3},
    {"stopped", [](JobDispatcher& d) { d.stop(); }, 0},
    {"stopped again", [](JobDispatcher& d) { d.stop(); }, 0},
    {"started again", [](JobDispatcher& d) { d.start(); }, 3},
    {"made smaller", [](JobDispatcher& d) { d.resize(1); }, 1},
    {"made larger", [](JobDispatcher& d) { d.resize(4); }, 4},
    {"made as large as it was", [](JobDispatcher& d) { d.resize(4); }, 4},
    {"stopped", [](JobDispatcher& d) { d.stop(); }, 0},
    {"the new number is kept", [](JobDispatcher& d) { d.start(); }, 4},
    {"made empty", [](JobDispatcher& d) { d.resize(0); }, 0},
    {"started with nobody", [](JobDispatcher& d) { d.start(); }, 0},
    {"stopped with nobody", [](JobDispatcher& d) { d.stop(); }, 0},
    {"nobody to wait for", [](JobDispatcher& d) { d.wait(); }, 0},
    {"made larger from nobody", [](JobDispatcher& d) { d.resize(2); }, 2},
    {"stopped", [](JobDispatcher& d) { d.stop(); }, 0},
    {"a stopped one is started by a resize", [](JobDispatcher& d) { d.resize(1); }, 1},
};

TEST(JobDispatcherStateContract, StartStopAndResizeLeadFromStateToState) {
    TimeLimit const limit("states");
    long const others = threadsOfProcess();
    {
        JobDispatcher dispatcher(3);
        for (Step const& step : STEPS) {
            SCOPED_TRACE(step.name);
            step.call(dispatcher);
            EXPECT_TRUE(soon([&] { return threadsOfProcess() == others + step.workers; }))
                << threadsOfProcess() - others;
            JobPtr const probe = idleJob();
            dispatcher.addJob(probe);
            if (step.workers != 0) {
                dispatcher.waitJob(probe->getId());
            } else {
                EXPECT_EQ(2, probe->refcount()) << "it stays queued";
                dispatcher.removeJob(probe->getId());
            }
        }
    }
    EXPECT_TRUE(soon([&] { return threadsOfProcess() == others; }));
}

TEST(JobDispatcherStateContract, StopResizeAndTheDestructorRunWhatIsQueuedAndWhatThatAdds) {
    TimeLimit const limit("queues to be drained");
    std::pair<char const*, std::function<void(std::unique_ptr<JobDispatcher>&)>> const ends[] = {
        {"stop", [](std::unique_ptr<JobDispatcher>& d) { d->stop(); }},
        {"resize", [](std::unique_ptr<JobDispatcher>& d) { d->resize(3); }},
        {"resize to none", [](std::unique_ptr<JobDispatcher>& d) { d->resize(0); }},
        {"destructor", [](std::unique_ptr<JobDispatcher>& d) { d.reset(); }},
    };
    for (auto const& end : ends) {
        for (unsigned int const workers : {1u, 2u, 5u}) {
            SCOPED_TRACE(end.first);
            auto dispatcher = std::make_unique<JobDispatcher>(workers);
            JobDispatcher& raw = *dispatcher;
            std::atomic<int> runs{0};
            Gate entered;
            std::function<void(int)> const addChain = [&](int rest) {
                raw.addJob(job([&, rest] {
                    ++runs;
                    entered.open();
                    std::this_thread::sleep_for(Milliseconds(1));
                    if (rest != 0) {
                        addChain(rest - 1);
                    }
                }));
            };
            addChain(10);
            int last = NONE;
            for (int i = 0; i < 20; ++i) {
                last = raw.addJob(job([&] { ++runs; }, last));
            }
            entered.pass();
            end.second(dispatcher);
            EXPECT_EQ(31, runs);
        }
    }
}

TEST(JobDispatcherStateContract, StopWaitsForAJobThatCanNeverRunUntilItIsWithdrawn) {
    TimeLimit const limit("a stop behind a job that waits for itself");
    Journal journal;
    JobDispatcher dispatcher(2);
    JobPtr const stuck = job([&] { journal.note('s'); }, nextId());
    ASSERT_EQ(stuck->getPrerequisiteId(), stuck->getId());
    dispatcher.addJob(stuck);
    dispatcher.waitJob(dispatcher.addJob(job([&] { journal.note('a'); })));
    dispatcher.wait(); // it doesn't run, so nothing is to be waited for
    Caller stopper([&] { dispatcher.stop(); });
    EXPECT_TRUE(stopper.stillWaits());
    dispatcher.addJob(job([&] { journal.note('b'); }));
    EXPECT_TRUE(soon([&] { return journal.text() == "ab"; })) << "the workers are still there";
    Caller waiter([&] { dispatcher.waitJob(stuck->getId()); });
    EXPECT_TRUE(waiter.stillWaits());
    dispatcher.removeJob(stuck->getId());
    EXPECT_TRUE(stopper.returns());
    EXPECT_TRUE(waiter.returns());
    EXPECT_EQ("ab", journal.text());
}

TEST(JobDispatcherStateContract, AJobMayWithdrawTheOneThatIsStuckWhileTheOnlyWorkerIsAsked) {
    TimeLimit const limit("a stuck job that another withdraws");
    JobDispatcher dispatcher(1);
    JobPtr const stuck = idleJob(nextId());
    dispatcher.addJob(stuck);
    dispatcher.addJob(job([&] { dispatcher.removeJob(stuck->getId()); }));
    dispatcher.stop();
    EXPECT_EQ(1, stuck->refcount());
}

TEST(JobDispatcherStateContract, WithdrawingTheOnlyJobBringsTheWorkersToRest) {
    TimeLimit const limit("workers at rest");
    JobDispatcher dispatcher(2);
    JobPtr const stuck = idleJob(nextId());
    dispatcher.addJob(stuck);
    letPass();
    dispatcher.removeJob(stuck->getId());
    letPass();
    std::clock_t const before = std::clock();
    std::this_thread::sleep_for(Milliseconds(300));
    double const used = static_cast<double>(std::clock() - before) / CLOCKS_PER_SEC;
    EXPECT_LT(used, 0.1) << "a worker that spins uses all of the time";
    dispatcher.waitJob(dispatcher.addJob(idleJob()));
}

TEST(JobDispatcherStateContract, EveryWorkerTakesPart) {
    TimeLimit const limit("jobs that need each other");
    JobDispatcher dispatcher(6);
    std::atomic<int> inside{0};
    Gate all;
    for (int i = 0; i < 6; ++i) {
        dispatcher.addJob(job([&] {
            if (++inside == 6) {
                all.open();
            }
            all.pass();
        }));
    }
    dispatcher.stop();
    EXPECT_EQ(6, inside);
}

// Names

using Names = std::multiset<std::string>;

// Asks each worker for its name, all at the same time, so that none answers twice.
Names namesOf(JobDispatcher& dispatcher, unsigned int workers) {
    std::mutex mutex;
    Names names;
    Gate all;
    for (unsigned int i = 0; i < workers; ++i) {
        dispatcher.addJob(job([&] {
            String name;
            EXPECT_EQ(0, Platform::getThreadName(name));
            {
                std::lock_guard<std::mutex> const lock(mutex);
                names.insert(name.c_str());
                if (names.size() == workers) {
                    all.open();
                }
            }
            all.pass();
        }));
    }
    all.pass();
    dispatcher.wait();
    std::lock_guard<std::mutex> const lock(mutex);
    return names;
}

struct Naming {
    char const* name;
    unsigned int workers;
    Names names; // "*" is the name of the thread that made them, which they have until they get their own
};

Naming const NAMINGS[] = {
    {nullptr, 2, {"ORL-Pool#1", "ORL-Pool#2"}},
    {"decoder", 2, {"decoder#1", "decoder#2"}},
    {"", 2, {"#1", "#2"}},
    {"#", 1, {"##1"}},
    {"thirteenbytes", 1, {"thirteenbytes#1"}},
    {"fourteen bytes", 2, {"*", "*"}},
    {"thirteenbytes",
     10,
     {"thirteenbytes#1", "thirteenbytes#2", "thirteenbytes#3", "thirteenbytes#4", "thirteenbytes#5",
      "thirteenbytes#6", "thirteenbytes#7", "thirteenbytes#8", "thirteenbytes#9", "*"}},
    {"twelve bytes",
     11,
     {"twelve bytes#1", "twelve bytes#2", "twelve bytes#3", "twelve bytes#4", "twelve bytes#5",
      "twelve bytes#6", "twelve bytes#7", "twelve bytes#8", "twelve bytes#9", "twelve bytes#10",
      "twelve bytes#11"}},
    {"a name that is much longer than a thread's name may be", 1, {"*"}},
};

TEST(JobDispatcherNameContract, WorkersAreNamedByTheDispatcherAndTheirNumber) {
    TimeLimit const limit("names");
    Gate done;
    std::thread maker([&] {
        EXPECT_EQ(0, Platform::setThreadName("*"));
        for (Naming const& naming : NAMINGS) {
            JobDispatcher dispatcher(naming.workers, naming.name);
            EXPECT_EQ(naming.names, namesOf(dispatcher, naming.workers));
            dispatcher.stop();
            dispatcher.start();
            EXPECT_EQ(naming.names, namesOf(dispatcher, naming.workers)) << "after another start";
        }
        done.open();
    });
    done.pass();
    maker.join();
}

TEST(JobDispatcherNameContract, TheNameIsCopiedAndNumbersBeginAnewWithEachResize) {
    TimeLimit const limit("names after a resize");
    char name[] = "pool";
    JobDispatcher dispatcher(2, name);
    EXPECT_EQ((Names{"pool#1", "pool#2"}), namesOf(dispatcher, 2));
    name[0] = 'f';
    dispatcher.resize(3);
    EXPECT_EQ((Names{"pool#1", "pool#2", "pool#3"}), namesOf(dispatcher, 3));
    dispatcher.resize(1);
    EXPECT_EQ((Names{"pool#1"}), namesOf(dispatcher, 1));
}

TEST(JobDispatcherNameContract, TheNameMayBeLeftOut) {
    TimeLimit const limit("the default name");
    JobDispatcher dispatcher(1);
    EXPECT_EQ((Names{"ORL-Pool#1"}), namesOf(dispatcher, 1));
}

// Waiting

TEST(JobDispatcherWaitContract, UnknownAndFinishedIdsAreNotWaitedFor) {
    TimeLimit const limit("ids that nobody has");
    JobDispatcher dispatcher(1);
    int const done = dispatcher.addJob(idleJob());
    dispatcher.waitJob(done);
    Blocker const blocker(dispatcher);
    int const withdrawn = dispatcher.addJob(idleJob());
    dispatcher.removeJob(withdrawn);
    int const made = idleJob()->getId();
    for (int const id : {done, withdrawn, made, NONE, INT_MIN, INT_MAX}) {
        dispatcher.waitJob(id);
    }
}

TEST(JobDispatcherWaitContract, WaitingForAJobLooksAtThatJobOnly) {
    TimeLimit const limit("one of two jobs");
    JobDispatcher dispatcher(2);
    Blocker first(dispatcher);
    Blocker second(dispatcher);
    Caller one([&] { dispatcher.waitJob(first.id()); });
    Caller two([&] { dispatcher.waitJob(second.id()); });
    Caller all([&] { static_cast<JobDispatcher const&>(dispatcher).wait(); });
    EXPECT_TRUE(one.stillWaits());
    first.letGo();
    EXPECT_TRUE(one.returns());
    EXPECT_TRUE(two.stillWaits());
    EXPECT_TRUE(all.stillWaits());
    second.letGo();
    EXPECT_TRUE(two.returns());
    EXPECT_TRUE(all.returns());
}

// What happens to a queued job somebody waits for.
std::pair<char const*, std::function<void(JobDispatcher&, int)>> const WAITED_FOR[] = {
    {"withdrawn", [](JobDispatcher& d, int id) { d.removeJob(id); }},
    {"moved and withdrawn", [](JobDispatcher& d, int id) { d.prioritizeJob(id), d.removeJob(id); }},
    {"run after a start", [](JobDispatcher& d, int) { d.start(); }},
    {"run after a resize", [](JobDispatcher& d, int) { d.resize(2); }},
    {"run and drained", [](JobDispatcher& d, int) { d.start(), d.stop(); }},
};

TEST(JobDispatcherWaitContract, ManyWhoWaitForAQueuedJobAllLearnOfItsEnd) {
    TimeLimit const limit("waiting for a queued job");
    for (auto const& waited : WAITED_FOR) {
        SCOPED_TRACE(waited.first);
        JobDispatcher dispatcher(1);
        dispatcher.stop();
        int const id = dispatcher.addJob(idleJob());
        dispatcher.wait(); // nobody has taken it yet
        Caller first([&] { dispatcher.waitJob(id); });
        Caller second([&] { dispatcher.waitJob(id); });
        EXPECT_TRUE(first.stillWaits());
        dispatcher.prioritizeJob(id);
        EXPECT_TRUE(second.stillWaits());
        waited.second(dispatcher, id);
        EXPECT_TRUE(first.returns());
        EXPECT_TRUE(second.returns());
    }
}

TEST(JobDispatcherWaitContract, AJobWithTwoEntriesIsWaitedForUntilBothAreGone) {
    TimeLimit const limit("two entries of one job");
    JobDispatcher dispatcher(0);
    JobPtr const twice = idleJob();
    dispatcher.addJob(twice);
    int const id = dispatcher.addJob(twice);
    Caller waiter([&] { dispatcher.waitJob(id); });
    dispatcher.removeJob(id);
    EXPECT_TRUE(waiter.stillWaits());
    dispatcher.removeJob(id);
    EXPECT_TRUE(waiter.returns());
}

TEST(JobDispatcherWaitContract, WaitDoesNotWaitForWhatIsQueuedBehindAJobThatCannotRun) {
    TimeLimit const limit("a wait with a stuck queue");
    JobDispatcher dispatcher(1);
    Blocker blocker(dispatcher);
    JobPtr const stuck = idleJob(nextId());
    dispatcher.addJob(stuck);
    Caller waiter([&] { dispatcher.wait(); });
    EXPECT_TRUE(waiter.stillWaits());
    blocker.letGo();
    EXPECT_TRUE(waiter.returns());
    dispatcher.removeJob(stuck->getId());
}

TEST(JobDispatcherWaitContract, WhatAJobDidIsSeenByWhoWaitedForIt) {
    TimeLimit const limit("what a job left behind");
    JobDispatcher dispatcher(3);
    for (int i = 0; i < 200; ++i) {
        int plain = 0;
        int const first = dispatcher.addJob(job([&] { plain = 1; }));
        int const second = dispatcher.addJob(job([&] { plain = 2 * plain + 1; }, first));
        dispatcher.waitJob(second);
        ASSERT_EQ(3, plain);
    }
}

// Calls from within a job

TEST(JobDispatcherInnerContract, AJobMayAddWithdrawMoveAndWaitForOthers) {
    TimeLimit const limit("calls from within a job");
    Journal journal;
    JobDispatcher dispatcher(2);
    // Not with stop(): the other worker may end while the queue is empty.
    dispatcher.waitJob(dispatcher.addJob(job([&] {
        Blocker other(dispatcher); // on the other worker
        int const a = dispatcher.addJob(job([&] { journal.note('a'); }));
        int const b = dispatcher.addJob(job([&] { journal.note('b'); }));
        int const c = dispatcher.addJob(job([&] { journal.note('c'); }));
        dispatcher.prioritizeJob(c);
        dispatcher.removeJob(b);
        dispatcher.waitJob(b);
        other.letGo();
        dispatcher.waitJob(a);
        dispatcher.waitJob(c);
        journal.note('!');
    })));
    EXPECT_EQ("ca!", journal.text());
}

TEST(JobDispatcherInnerContract, AJobMayWithdrawAndMoveItselfWithoutEffect) {
    TimeLimit const limit("a job that calls with its own id");
    Journal journal;
    JobDispatcher dispatcher(1);
    int const own = nextId();
    JobPtr const self = job([&] {
        dispatcher.removeJob(own);
        dispatcher.prioritizeJob(own);
        journal.note('x');
    });
    ASSERT_EQ(own, dispatcher.addJob(self));
    dispatcher.stop();
    EXPECT_EQ("x", journal.text());
}

TEST(JobDispatcherInnerContract, AJobMayAddItselfAgain) {
    TimeLimit const limit("a job that adds itself");
    Journal journal;
    JobDispatcher dispatcher(2);
    Gate known;
    JobPtr self;
    self = job([&] {
        known.pass();
        journal.note('x');
        if (journal.text().size() < 3) {
            dispatcher.addJob(self);
        }
    });
    dispatcher.addJob(self);
    known.open();
    dispatcher.stop();
    EXPECT_EQ("xxx", journal.text());
}

TEST(JobDispatcherInnerContract, ChainsAcrossTwoDispatchersMayWaitForEachOther) {
    TimeLimit const limit("two dispatchers");
    JobDispatcher one(1);
    JobDispatcher two(1);
    Journal journal;
    one.waitJob(one.addJob(job([&] {
        two.waitJob(two.addJob(job([&] { journal.note('2'); })));
        two.wait();
        journal.note('1');
    })));
    EXPECT_EQ("21", journal.text());
}

// No call is missed: short jobs, so that each change meets a worker on its way to rest

TEST(JobDispatcherWakeContract, NoneOfManyAddsWithdrawalsAndMovesIsMissed) {
    TimeLimit const limit("many short jobs");
    for (unsigned int const workers : {1u, 2u, 4u}) {
        JobDispatcher dispatcher(workers);
        std::atomic<int> runs{0};
        for (int i = 0; i < 3000; ++i) {
            int const first = dispatcher.addJob(job([&] { ++runs; }));
            int const second = dispatcher.addJob(job([&] { ++runs; }, first));
            if (i % 3 == 0) {
                dispatcher.prioritizeJob(second);
            } else if (i % 3 == 1) {
                dispatcher.addJob(job([&] { ++runs; }));
                dispatcher.prioritizeJob(first);
            }
            dispatcher.waitJob(second);
            dispatcher.wait();
            int const third = dispatcher.addJob(idleJob());
            dispatcher.removeJob(third);
            dispatcher.waitJob(third);
        }
        dispatcher.stop();
        EXPECT_EQ(7000, runs);
    }
}

TEST(JobDispatcherWakeContract, AStopReachesWorkersInEveryMoment) {
    TimeLimit const limit("many stops and starts");
    JobDispatcher dispatcher(3);
    std::atomic<int> runs{0};
    for (int i = 0; i < 300; ++i) {
        for (int k = 0; k < i % 4; ++k) {
            dispatcher.addJob(job([&] { ++runs; }));
        }
        i % 2 ? dispatcher.resize(1 + static_cast<unsigned int>(i) % 4) : dispatcher.stop();
        dispatcher.start();
    }
    dispatcher.stop();
    EXPECT_EQ(450, runs);
}

// An exception

TEST(JobDispatcherDeathTest, AnExceptionThatLeavesAJobEndsTheProcess) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_DEATH(
        {
            JobDispatcher dispatcher(1);
            dispatcher.addJob(job([] { throw std::runtime_error("what the job threw"); }));
            dispatcher.stop();
        },
        "");
}

} // namespace
