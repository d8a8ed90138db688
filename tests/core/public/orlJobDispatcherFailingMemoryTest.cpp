// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "support/TimeLimit.h"
#include "support/orlFailingMemory.h"

#include <orlJobDispatcher.h>

#include <gtest/gtest.h>

#include <atomic>
#include <cstddef>
#include <memory>
#include <string>
#include <system_error>

// What becomes of the jobs when the dispatcher or its workers get no memory: none is lost, none runs twice, and no
// worker ends the process.

namespace {

using namespace ORL_0_81;
using orlTest::failEachAllocation;
using orlTest::FailingMemory;

using Base = JobDispatcher::JobBase;
using Job = SharedPtr<Base>;

orlTest::MemoryPlan const OWN_MEMORY;
orlTest::MemoryPlan const THREADS_TOO{false, true, false};

class Count : public Base {
public:
    explicit Count(std::atomic<int>& runs, int prerequisiteId = kNoPrerequisite)
        : Base(prerequisiteId), m_runs(runs) {}

    void run() override { ++m_runs; }

private:
    std::atomic<int>& m_runs;
};

TEST(JobDispatcherFailingMemory, ADispatcherIsMadeWholeOrNotAtAll) {
    TimeLimit const limit("making a dispatcher");
    for (orlTest::MemoryPlan const& plan : {OWN_MEMORY, THREADS_TOO}) {
        failEachAllocation(
            [](FailingMemory& memory) {
                std::unique_ptr<JobDispatcher> dispatcher;
                bool const done = memory.run<std::system_error>([&] {
                    dispatcher = std::make_unique<JobDispatcher>(3, "a name of a pool that is not short");
                });
                EXPECT_EQ(dispatcher != nullptr, done);
                if (dispatcher) {
                    std::atomic<int> runs{0};
                    dispatcher->waitJob(dispatcher->addJob(Job(new Count(runs))));
                    EXPECT_EQ(runs, 1);
                }
            },
            plan);
    }
}

TEST(JobDispatcherFailingMemory, AJobIsAddedOrNotAndRunsOnceIfItIs) {
    TimeLimit const limit("adding jobs");
    failEachAllocation([](FailingMemory& memory) {
        std::atomic<int> runs{0};
        int added = 0;
        Job const last(new Count(runs)); // of an id that is lower than those of the others
        Job const free(new Count(runs));
        Job const blocked(new Count(runs, free->getId()));
        {
            JobDispatcher dispatcher(0);
            for (Job const* const job : {&free, &blocked, &last}) {
                bool const done = memory.run([&] { dispatcher.addJob(*job); });
                EXPECT_EQ((*job)->refcount(), done ? 2 : 1);
                added += done;
            }
            dispatcher.resize(2);
        }
        EXPECT_EQ(runs, added);
        EXPECT_EQ(free->refcount(), 1);
    });
}

class Write : public Base {
public:
    Write(std::string& text, char letter) : m_text(text), m_letter(letter) {}

    void run() override { m_text += m_letter; }

private:
    std::string& m_text;
    char m_letter;
};

TEST(JobDispatcherFailingMemory, AJobThatCannotBeMovedKeepsItsPlace) {
    TimeLimit const limit("moving jobs");
    failEachAllocation([](FailingMemory& memory) {
        std::string order;
        JobDispatcher dispatcher(0);
        int ids[4];
        for (int i = 0; i < 4; ++i) {
            ids[i] = dispatcher.addJob(Job(new Write(order, static_cast<char>('a' + i))));
        }
        std::string expected = "abcd";
        for (int const index : {2, 3}) {
            if (memory.run([&] { dispatcher.prioritizeJob(ids[index]); })) {
                expected = expected[static_cast<std::size_t>(index)] +
                           expected.substr(0, static_cast<std::size_t>(index)) +
                           expected.substr(static_cast<std::size_t>(index) + 1);
            }
        }
        EXPECT_TRUE(memory.run([&] {
            dispatcher.removeJob(ids[0]);
            dispatcher.waitJob(ids[0]);
            dispatcher.wait();
        })) << "which takes no memory";
        expected.erase(expected.find('a'), 1);
        dispatcher.resize(1);
        dispatcher.stop();
        EXPECT_EQ(order, expected);
    });
}

TEST(JobDispatcherFailingMemory, WorkersThatCannotBeStartedLeaveTheQueueToThoseThatCouldOrToTheNextTry) {
    TimeLimit const limit("starting workers");
    for (orlTest::MemoryPlan const& plan : {OWN_MEMORY, THREADS_TOO}) {
        failEachAllocation(
            [](FailingMemory& memory) {
                std::atomic<int> runs{0};
                JobDispatcher dispatcher(0);
                for (int i = 0; i < 5; ++i) {
                    dispatcher.addJob(Job(new Count(runs)));
                }
                memory.run<std::system_error>([&] { dispatcher.resize(3); });
                memory.run<std::system_error>([&] { dispatcher.start(); });
                dispatcher.start(); // unless there are some
                dispatcher.stop();
                EXPECT_EQ(runs, 5);
            },
            plan);
    }
}

TEST(JobDispatcherFailingMemory, WorkersThatRunTakeNoMemory) {
    TimeLimit const limit("running jobs");
    failEachAllocation([](FailingMemory& memory) {
        std::atomic<int> runs{0};
        JobDispatcher dispatcher(2);
        Gate gate;
        class Hold : public Base {
        public:
            explicit Hold(Gate& holding) : m_gate(holding) {}
            void run() override { m_gate.pass(); }

        private:
            Gate& m_gate;
        };
        int const id = dispatcher.addJob(Job(new Hold(gate)));
        int last = id;
        for (int i = 0; i < 20; ++i) {
            last = dispatcher.addJob(Job(new Count(runs, id)));
        }
        int late = last;
        bool const done = memory.run([&] {
            late = dispatcher.addJob(Job(new Count(runs, last)));
            gate.open();
            dispatcher.waitJob(late);
        });
        gate.open();
        dispatcher.stop();
        EXPECT_EQ(runs, done ? 21 : 20);
    });
}

} // namespace
