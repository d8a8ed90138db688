// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "internal/orlJobQueue.h"

#include "support/Seed.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>
#include <vector>

namespace {

using namespace ORL_0_81;

using Job = JobQueue::Job;

constexpr int NONE = JobDispatcher::JobBase::kNoPrerequisite;

class Idle : public JobDispatcher::JobBase {
public:
    using JobBase::JobBase;

    void run() override {}
};

// The same in its plainest form: two vectors that are searched from the front each time.
class PlainQueue {
public:
    void add(Job const& job) { m_waiting.push_back(job); }

    Job take() {
        for (auto place = m_waiting.begin(); place != m_waiting.end(); ++place) {
            if (!holds((*place)->getPrerequisiteId())) {
                Job job = *place;
                m_waiting.erase(place);
                m_running.push_back(job);
                return job;
            }
        }
        return nullptr;
    }

    void finish(int id) { m_running.erase(find(m_running, id)); }

    Job remove(int id) {
        auto const place = find(m_waiting, id);
        if (place == m_waiting.end()) {
            return nullptr;
        }
        Job job = *place;
        m_waiting.erase(place);
        return job;
    }

    void prioritize(int id) {
        if (Job const job = remove(id)) {
            m_waiting.insert(m_waiting.begin(), job);
        }
    }

    bool holds(int id) const {
        auto const isIt = [id](Job const& job) { return job->getId() == id; };
        return std::any_of(m_waiting.begin(), m_waiting.end(), isIt) ||
               std::any_of(m_running.begin(), m_running.end(), isIt);
    }

    std::vector<Job> m_waiting;
    std::vector<Job> m_running;

private:
    static std::vector<Job>::iterator find(std::vector<Job>& jobs, int id) {
        return std::find_if(jobs.begin(), jobs.end(), [id](Job const& job) { return job->getId() == id; });
    }
};

// Performs each operation on both, and compares what they give.
class Pair {
public:
    Pair() { m_queue.reserveRunning(ROOM); }

    void add(Job const& job) {
        m_queue.add(job);
        m_plain.add(job);
        check();
    }

    Job take() {
        Job const expected = m_plain.take();
        Job const job = m_queue.take();
        EXPECT_EQ(job, expected) << "the first that may run";
        check();
        return job;
    }

    void finish(int id) {
        m_queue.finish(id);
        m_plain.finish(id);
        check();
    }

    void remove(int id) {
        Job const expected = m_plain.remove(id);
        EXPECT_EQ(m_queue.remove(id), expected);
        check();
    }

    void prioritize(int id) {
        m_queue.prioritize(id);
        m_plain.prioritize(id);
        check();
    }

    // Runs one job after the other; gives those that never may.
    std::vector<Job> drain() {
        while (!m_plain.m_running.empty()) {
            finish(m_plain.m_running.back()->getId());
        }
        while (Job const job = take()) {
            finish(job->getId());
            if (testing::Test::HasFailure()) {
                break;
            }
        }
        return m_plain.m_waiting;
    }

    static constexpr std::size_t ROOM = 8;

    JobQueue m_queue;
    PlainQueue m_plain;

private:
    void check() const {
        ASSERT_EQ(m_queue.waitingCount(), m_plain.m_waiting.size());
        ASSERT_EQ(m_queue.runningCount(), m_plain.m_running.size());
    }
};

// What random jobs name as their prerequisite, and in which order of ids they come.
struct Mixture {
    char const* name;
    int dependentsPercent;
    int outOfOrderPercent;
    int againPercent;
};

class JobQueueModel : public testing::TestWithParam<Mixture> {};

TEST_P(JobQueueModel, GivesTheJobsThatAPlainQueueGives) {
    Mixture const& mixture = GetParam();
    std::mt19937 random(printedSeed());
    auto const below = [&random](std::size_t limit) {
        return std::uniform_int_distribution<std::size_t>(0, limit - 1)(random);
    };
    auto const happens = [&below](int percent) { return static_cast<int>(below(100)) < percent; };
    for (int round = 0; round < 200 && !HasFailure(); ++round) {
        Pair pair;
        std::vector<Job> known; // all jobs that were made
        std::vector<Job> later; // those that are added out of their turn
        auto const anyId = [&] {
            // One of the last, one that doesn't exist yet, or any.
            int const last = known.empty() ? 0 : known.back()->getId();
            switch (below(3)) {
            case 0:
                return last - static_cast<int>(below(6));
            case 1:
                return last + static_cast<int>(below(4));
            default:
                return known.empty() ? 7 : known[below(known.size())]->getId();
            }
        };
        for (int step = 0; step < 150 && !HasFailure(); ++step) {
            switch (below(8)) {
            case 0:
            case 1:
            case 2: {
                Job job;
                if (!known.empty() && happens(mixture.againPercent)) {
                    job = known[below(known.size())];
                } else {
                    job.reset(new Idle(happens(mixture.dependentsPercent) ? anyId() : NONE));
                    known.push_back(job);
                }
                if (happens(mixture.outOfOrderPercent)) {
                    later.push_back(job);
                } else {
                    pair.add(job);
                }
                break;
            }
            case 3:
                if (!later.empty()) {
                    std::size_t const index = below(later.size());
                    pair.add(later[index]);
                    later.erase(later.begin() + static_cast<std::ptrdiff_t>(index));
                }
                break;
            case 4:
                if (pair.m_plain.m_running.size() < Pair::ROOM) {
                    pair.take();
                }
                break;
            case 5:
                if (!pair.m_plain.m_running.empty()) {
                    pair.finish(pair.m_plain.m_running[below(pair.m_plain.m_running.size())]->getId());
                }
                break;
            case 6:
                pair.remove(anyId());
                break;
            default:
                pair.prioritize(anyId());
            }
            int const id = anyId();
            ASSERT_EQ(pair.m_queue.holds(id), pair.m_plain.holds(id));
        }
        // Whoever is left waits for somebody who is left, too.
        for (Job const& stuck : pair.drain()) {
            EXPECT_TRUE(pair.m_queue.holds(stuck->getPrerequisiteId()));
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Mixtures, JobQueueModel,
                         testing::Values(Mixture{"Plain", 0, 0, 0}, Mixture{"OutOfOrder", 0, 40, 0},
                                         Mixture{"Dependent", 90, 0, 0}, Mixture{"Again", 20, 10, 50},
                                         Mixture{"Mixed", 50, 20, 10}),
                         [](auto const& mixture) { return mixture.param.name; });

TEST(JobQueueTest, IsEmptyAtFirst) {
    JobQueue queue;
    EXPECT_EQ(queue.take(), nullptr);
    EXPECT_EQ(queue.remove(0), nullptr);
    queue.prioritize(0);
    EXPECT_FALSE(queue.holds(0));
    EXPECT_EQ(queue.waitingCount(), 0U);
    EXPECT_EQ(queue.runningCount(), 0U);
}

TEST(JobQueueTest, APrerequisiteThatIsAddedLaterBlocksAsWell) {
    JobQueue queue;
    queue.reserveRunning(2);
    Job const first(new Idle);
    Job const second(new Idle(first->getId()));
    queue.add(second);
    queue.add(first);
    EXPECT_EQ(queue.take(), first);
    EXPECT_EQ(queue.take(), nullptr);
    queue.finish(first->getId());
    EXPECT_EQ(queue.take(), second);
}

TEST(JobQueueTest, APrerequisiteThatWasAddedTwiceBlocksUntilBothHaveGone) {
    JobQueue queue;
    queue.reserveRunning(2);
    Job const first(new Idle);
    Job const second(new Idle(first->getId()));
    queue.add(first);
    queue.add(second);
    queue.add(first);
    EXPECT_EQ(queue.take(), first);
    queue.finish(first->getId());
    EXPECT_EQ(queue.remove(first->getId()), first);
    EXPECT_EQ(queue.take(), second);
}

TEST(JobQueueTest, HoldsOneShareOfEachWaitingJob) {
    JobQueue queue;
    queue.reserveRunning(1);
    Job const plain(new Idle);
    Job const dependent(new Idle(plain->getId() - 1));
    for (Job const& job : {plain, dependent}) {
        int const before = job->refcount();
        queue.add(job);
        EXPECT_EQ(job->refcount(), before + 1);
        queue.prioritize(job->getId());
        EXPECT_EQ(job->refcount(), before + 1);
        {
            Job const taken = queue.take();
            EXPECT_EQ(taken, job);
            EXPECT_EQ(job->refcount(), before + 1) << "handed over";
        }
        queue.finish(job->getId());
        EXPECT_EQ(job->refcount(), before);
    }
}

TEST(JobQueueTest, JobsWithdrawnFromTheMiddleOfALongLineLeaveTheOthersInOrder) {
    JobQueue queue;
    queue.reserveRunning(1);
    std::vector<Job> jobs;
    for (int i = 0; i < 1000; ++i) {
        jobs.emplace_back(new Idle);
        queue.add(jobs.back());
    }
    for (std::size_t i = 0; i < jobs.size(); ++i) {
        if (i % 10 != 5) {
            EXPECT_EQ(queue.remove(jobs[i]->getId()), jobs[i]);
        }
    }
    for (std::size_t i = 0; i < jobs.size(); ++i) {
        EXPECT_EQ(queue.holds(jobs[i]->getId()), i % 10 == 5);
    }
    EXPECT_EQ(queue.waitingCount(), 100U);
    for (std::size_t i = 5; i < jobs.size(); i += 10) {
        EXPECT_EQ(queue.take(), jobs[i]);
        queue.finish(jobs[i]->getId());
    }
    EXPECT_EQ(queue.take(), nullptr);
}

} // namespace
