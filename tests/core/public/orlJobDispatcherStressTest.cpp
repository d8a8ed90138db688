// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include <orlJobDispatcher.h>

#include "support/Seed.h"
#include "support/TimeLimit.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstddef>
#include <functional>
#include <memory>
#include <mutex>
#include <random>
#include <thread>
#include <utility>
#include <vector>

// The dispatcher under many threads and random delays. A wake-up that is lost shows as a hang, which a time
// limit turns into a failure; data races are for the thread sanitizer.

namespace {

using namespace ORL_0_81;

using Base = JobDispatcher::JobBase;
using Job = SharedPtr<Base>;

constexpr int NONE = Base::kNoPrerequisite;

#if defined(__SANITIZE_THREAD__) || defined(__SANITIZE_ADDRESS__)
constexpr int EFFORT = 1;
#else
constexpr int EFFORT = 4;
#endif

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

class Random {
public:
    explicit Random(unsigned int seed) : m_engine(seed) {}

    int below(int limit) { return std::uniform_int_distribution<int>(0, limit - 1)(m_engine); }

    // Mostly none or next to none, so that threads meet; now and then so long that one falls asleep.
    void delay() {
        int const kind = below(16);
        if (kind < 8) {
            return;
        }
        if (kind == 8) {
            std::this_thread::yield();
            return;
        }
        auto const end =
            std::chrono::steady_clock::now() + std::chrono::microseconds(below(kind == 9 ? 200 : 10));
        while (std::chrono::steady_clock::now() < end) {
        }
    }

private:
    std::mt19937 m_engine;
};

// Lost wake-ups

// Each round is a handful of calls that race with workers which are just falling asleep.
TEST(JobDispatcherStress, NoJobStopOrWaitIsEverOverslept) {
    TimeLimit const limit("a wake-up was lost", std::chrono::seconds(120));
    unsigned int const seed = printedSeed();
    Random random(seed);
    std::unique_ptr<JobDispatcher> dispatcher;
    for (int round = 0; round < 2000 * EFFORT; ++round) {
        if (round % 50 == 0) {
            dispatcher = std::make_unique<JobDispatcher>(static_cast<unsigned int>(1 + random.below(3)));
        }
        std::atomic<int> ran{0};
        auto const work = [&ran] { ++ran; };
        random.delay();
        int const first = dispatcher->addJob(makeJob(work));
        random.delay();
        int const second = dispatcher->addJob(makeJob(work, random.below(2) == 0 ? first : NONE));
        random.delay();
        switch (random.below(4)) {
        case 0:
            dispatcher->waitJob(first);
            dispatcher->waitJob(second);
            break;
        case 1:
            dispatcher->waitJob(second);
            random.delay();
            dispatcher->waitJob(first);
            dispatcher->wait();
            break;
        case 2:
            dispatcher->stop();
            dispatcher->start();
            break;
        default:
            dispatcher->resize(static_cast<unsigned int>(1 + random.below(3)));
        }
        ASSERT_EQ(ran, 2) << "round " << round;
    }
}

TEST(JobDispatcherStress, AStopReachesWorkersThatAreJustFallingAsleep) {
    TimeLimit const limit("a stop was lost", std::chrono::seconds(120));
    Random random(printedSeed());
    JobDispatcher dispatcher(2);
    for (int round = 0; round < 1000 * EFFORT; ++round) {
        random.delay(); // the workers may have started, looked, or fallen asleep
        dispatcher.stop();
        random.delay();
        dispatcher.start();
    }
    SUCCEED();
}

TEST(JobDispatcherStress, ThreadsThatWaitAreWokenByTheEndOfAJobAndByItsWithdrawal) {
    TimeLimit const limit("a waiting thread was not woken", std::chrono::seconds(120));
    unsigned int const seed = printedSeed();
    JobDispatcher dispatcher(2);
    // Each waits for what the other adds, withdraws or runs.
    std::atomic<int> latest{-1};
    std::atomic<bool> done{false};
    std::vector<std::thread> waiting;
    for (unsigned int t = 0; t < 3; ++t) {
        waiting.emplace_back([&, t] {
            Random random(seed + t);
            while (!done) {
                if (t == 0) {
                    dispatcher.wait();
                } else {
                    dispatcher.waitJob(latest);
                }
                random.delay();
            }
        });
    }
    Random random(seed + 100);
    for (int round = 0; round < 4000 * EFFORT; ++round) {
        int const id = dispatcher.addJob(makeJob([] {}));
        latest = id;
        random.delay();
        if (random.below(2) == 0) {
            dispatcher.removeJob(id);
        }
        dispatcher.waitJob(id);
    }
    done = true;
    for (std::thread& thread : waiting) {
        thread.join();
    }
}

// Order, against a plain model

// What is queued while there are no workers has one order only; a plain list tells which.
TEST(JobDispatcherStress, OneWorkerRunsARandomQueueInTheOrderOfAPlainList) {
    TimeLimit const limit("a random queue");
    Random random(printedSeed());
    for (int round = 0; round < 40 * EFFORT; ++round) {
        JobDispatcher dispatcher(0);
        std::vector<int> ran;
        std::vector<Job> queue;
        std::vector<Job> known;
        std::vector<Job> later;
        auto const place = [&queue](int id) {
            return std::find_if(queue.begin(), queue.end(),
                                [id](Job const& job) { return job->getId() == id; });
        };
        for (int step = 0; step < 200; ++step) {
            switch (random.below(6)) {
            case 0:
            case 1:
            case 2: {
                // A prerequisite is an older job, so there is no ring.
                int prerequisite = NONE;
                if (!known.empty() && random.below(2) == 0) {
                    prerequisite =
                        known[static_cast<std::size_t>(random.below(static_cast<int>(known.size())))]
                            ->getId();
                }
                auto const self = std::make_shared<int>(0);
                Job const job = makeJob([&ran, self] { ran.push_back(*self); }, prerequisite);
                *self = job->getId();
                known.push_back(job);
                (random.below(4) == 0 ? later : queue).push_back(job);
                if (!queue.empty() && queue.back() == job) {
                    dispatcher.addJob(job);
                }
                break;
            }
            case 3:
                if (!later.empty()) {
                    queue.push_back(later.back());
                    later.pop_back();
                    dispatcher.addJob(queue.back());
                }
                break;
            default: {
                if (known.empty()) {
                    break;
                }
                int const id =
                    known[static_cast<std::size_t>(random.below(static_cast<int>(known.size())))]->getId();
                auto const found = place(id);
                if (random.below(3) == 0) {
                    dispatcher.removeJob(id);
                    if (found != queue.end()) {
                        queue.erase(found);
                    }
                } else {
                    dispatcher.prioritizeJob(id);
                    if (found != queue.end()) {
                        std::rotate(queue.begin(), found, found + 1);
                    }
                }
            }
            }
        }
        std::vector<int> expected;
        while (!queue.empty()) {
            auto const next = std::find_if(queue.begin(), queue.end(), [&](Job const& job) {
                return place(job->getPrerequisiteId()) == queue.end();
            });
            ASSERT_NE(next, queue.end());
            expected.push_back((*next)->getId());
            queue.erase(next);
        }
        dispatcher.resize(1);
        dispatcher.stop();
        ASSERT_EQ(ran, expected);
    }
}

// Many producers

// What became of a job.
struct Record {
    std::atomic<int> runs{0};
    std::atomic<bool> withdrawn{false}; // somebody tried
    std::atomic<bool> ended{false};
    std::atomic<Record*> prerequisite{nullptr};
    int id = 0;
};

// Producers add chains, trees and single jobs while others reorder, withdraw and wait, and one resizes.
// Whoever starts sees that its prerequisite, which was added before it, has ended or was withdrawn.
TEST(JobDispatcherStress, ManyProducersWhileThePoolIsResized) {
    TimeLimit const limit("many producers", std::chrono::seconds(120));
    constexpr int PRODUCERS = 4;
    constexpr int EACH = 800 * EFFORT;
    unsigned int const seed = printedSeed();
    JobDispatcher dispatcher(2);
    std::vector<std::vector<std::unique_ptr<Record>>> records(PRODUCERS);
    std::atomic<int> tooEarly{0};
    std::atomic<int> returnedTooEarly{0};
    std::atomic<int> producing{PRODUCERS};
    std::vector<std::thread> threads;
    for (std::size_t p = 0; p < PRODUCERS; ++p) {
        threads.emplace_back([&, p] {
            Random random(seed + static_cast<unsigned int>(p));
            auto& own = records[p];
            for (int i = 0; i < EACH; ++i) {
                auto record = std::make_unique<Record>();
                Record* const self = record.get();
                // The last one: a chain. One of the last few: a tree.
                if (!own.empty() && random.below(3) != 0) {
                    auto const back = static_cast<std::size_t>(random.below(2) == 0 ? 0 : random.below(5));
                    self->prerequisite = own[own.size() - 1 - std::min(back, own.size() - 1)].get();
                }
                Record const* const before = self->prerequisite;
                Job const job = makeJob(
                    [self, before, &tooEarly] {
                        if (before && !before->ended && !before->withdrawn) {
                            ++tooEarly;
                        }
                        ++self->runs;
                        self->ended = true;
                    },
                    before ? before->id : NONE);
                self->id = job->getId();
                own.push_back(std::move(record));
                dispatcher.addJob(job);
                Record& any = *own[own.size() - 1 -
                                   static_cast<std::size_t>(random.below(
                                       static_cast<int>(std::min<std::size_t>(own.size(), 30))))];
                switch (random.below(12)) {
                case 0:
                    any.withdrawn = true;
                    dispatcher.removeJob(any.id);
                    break;
                case 1:
                case 2:
                    dispatcher.prioritizeJob(any.id);
                    break;
                case 3:
                    dispatcher.waitJob(any.id);
                    if (!any.ended && !any.withdrawn) {
                        ++returnedTooEarly;
                    }
                    break;
                case 4:
                    dispatcher.wait();
                    break;
                default:
                    random.delay();
                }
            }
            --producing;
        });
    }
    Random random(seed + 1000);
    while (producing > 0) {
        switch (random.below(3)) {
        case 0:
            dispatcher.resize(static_cast<unsigned int>(1 + random.below(4)));
            break;
        case 1:
            dispatcher.stop();
            random.delay();
            dispatcher.start();
            break;
        default:
            std::this_thread::sleep_for(std::chrono::microseconds(random.below(500)));
        }
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    dispatcher.stop();
    EXPECT_EQ(tooEarly, 0);
    EXPECT_EQ(returnedTooEarly, 0);
    for (auto const& own : records) {
        for (auto const& record : own) {
            EXPECT_LE(record->runs, 1);
            EXPECT_TRUE(record->runs == 1 || record->withdrawn) << "lost";
        }
    }
}

// A job with one that waits for it on either side, and one that waits for both: for the one as its
// prerequisite, for the other within its body.
TEST(JobDispatcherStress, Diamonds) {
    TimeLimit const limit("diamonds", std::chrono::seconds(120));
    Random random(printedSeed());
    for (int round = 0; round < 20 * EFFORT; ++round) {
        constexpr std::size_t DIAMONDS = 20;
        // A job that waits for the other side keeps a worker, so there is one more than such jobs.
        JobDispatcher dispatcher(DIAMONDS + 1);
        struct Diamond {
            std::atomic<bool> top{false}, left{false}, right{false}, bottom{false};
            std::atomic<int> errors{0};
        };
        std::vector<Diamond> diamonds(DIAMONDS);
        std::vector<int> bottoms;
        for (Diamond& diamond : diamonds) {
            Job const top = makeJob([&diamond] { diamond.top = true; });
            Job const left = makeJob(
                [&diamond] {
                    diamond.errors += !diamond.top;
                    diamond.left = true;
                },
                top->getId());
            Job const right = makeJob(
                [&diamond] {
                    diamond.errors += !diamond.top;
                    diamond.right = true;
                },
                top->getId());
            Job const bottom = makeJob(
                [&diamond, &dispatcher, other = right->getId()] {
                    dispatcher.waitJob(other);
                    diamond.errors += !diamond.left + !diamond.right;
                    diamond.bottom = true;
                },
                left->getId());
            // In any order, as long as whoever is waited for is there first.
            std::vector<Job> order = {top, left, right, bottom};
            if (random.below(2) == 0) {
                std::swap(order[1], order[2]);
            }
            for (Job const& job : order) {
                dispatcher.addJob(job);
                random.delay();
            }
            if (random.below(2) == 0) {
                dispatcher.prioritizeJob(bottom->getId());
            }
            bottoms.push_back(bottom->getId());
        }
        for (int const id : bottoms) {
            dispatcher.waitJob(id);
        }
        for (Diamond const& diamond : diamonds) {
            EXPECT_EQ(diamond.errors, 0);
            EXPECT_TRUE(diamond.bottom);
        }
    }
}

TEST(JobDispatcherStress, NoMoreJobsRunAtATimeThanThereAreWorkersAndWaitSeesThemEnd) {
    TimeLimit const limit("counting running jobs", std::chrono::seconds(120));
    Random random(printedSeed());
    for (int round = 0; round < 100 * EFFORT; ++round) {
        int const workers = 1 + random.below(4);
        std::atomic<int> running{0};
        std::atomic<int> most{0};
        JobDispatcher dispatcher(static_cast<unsigned int>(workers));
        for (int i = 0; i < 30; ++i) {
            dispatcher.addJob(makeJob([&] {
                int const now = ++running;
                int before = most;
                while (before < now && !most.compare_exchange_weak(before, now)) {
                }
                std::this_thread::yield();
                --running;
            }));
        }
        dispatcher.stop();
        dispatcher.wait();
        EXPECT_EQ(running, 0);
        EXPECT_LE(most, workers);
    }
}

// From within jobs

// Each operation that a job may call, by the jobs of several workers at a time: on their own dispatcher and, since a
// job would wait for itself there, wait() on another.
TEST(JobDispatcherStress, JobsOfManyWorkersUseDispatchersAtATime) {
    TimeLimit const limit("jobs that use dispatchers", std::chrono::seconds(120));
    constexpr int JOBS = 200 * EFFORT;
    std::atomic<int> ran{0};
    {
        JobDispatcher other(2);
        JobDispatcher dispatcher(4);
        for (int i = 0; i < JOBS; ++i) {
            auto const self = std::make_shared<int>(NONE);
            Job const job = makeJob([&, self] {
                int const inner = other.addJob(makeJob([&ran] { ++ran; }));
                other.prioritizeJob(inner);
                other.wait();
                other.waitJob(inner);
                other.removeJob(inner); // done already
                int const next = dispatcher.addJob(makeJob([&ran] { ++ran; }));
                dispatcher.prioritizeJob(next);
                // Waits for the job that is here.
                dispatcher.removeJob(dispatcher.addJob(makeJob([] { ADD_FAILURE(); }, *self)));
                ++ran;
            });
            *self = job->getId();
            dispatcher.addJob(job);
        }
    }
    EXPECT_EQ(ran, 3 * JOBS);
}

} // namespace
