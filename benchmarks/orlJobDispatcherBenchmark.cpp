// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project

// What the dispatcher costs, beside the least that one would write instead: a deque of functions under a
// mutex, with a condition variable. That one has no ids, prerequisites, withdrawing or waiting.
//
// All figures are of the wall clock, for the work is done on other threads than the one that is measured.
#include "support/orlRatioReporter.h"

#include <orlJobDispatcher.h>

#include <chrono>
#include <condition_variable>
#include <cstddef>
#include <deque>
#include <functional>
#include <memory>
#include <mutex>
#include <thread>
#include <type_traits>
#include <utility>
#include <vector>

namespace {

using ORL_0_81::JobDispatcher;
using ORL_0_81::SharedPtr;

class FunctionPool {
public:
    explicit FunctionPool(unsigned int threadCount) { start(threadCount); }
    FunctionPool(FunctionPool const&) = delete;
    FunctionPool& operator=(FunctionPool const&) = delete;
    ~FunctionPool() { stop(); }

    void add(std::function<void()> function) {
        {
            std::lock_guard<std::mutex> const lock(m_mutex);
            m_functions.push_back(std::move(function));
        }
        m_changed.notify_one();
    }

    void start(unsigned int threadCount) {
        m_stop = false;
        for (unsigned int i = 0; i < threadCount; ++i) {
            m_threads.emplace_back([this] { work(); });
        }
    }

    void stop() {
        {
            std::lock_guard<std::mutex> const lock(m_mutex);
            m_stop = true;
        }
        m_changed.notify_all();
        for (std::thread& thread : m_threads) {
            thread.join();
        }
        m_threads.clear();
    }

private:
    void work() {
        std::unique_lock<std::mutex> lock(m_mutex);
        for (;;) {
            m_changed.wait(lock, [this] { return m_stop || !m_functions.empty(); });
            if (m_functions.empty()) {
                return;
            }
            std::function<void()> const function = std::move(m_functions.front());
            m_functions.pop_front();
            lock.unlock();
            function();
            lock.lock();
        }
    }

    std::mutex m_mutex;
    std::condition_variable m_changed;
    std::deque<std::function<void()>> m_functions;
    std::vector<std::thread> m_threads;
    bool m_stop = false;
};

class FunctionJob : public JobDispatcher::JobBase {
public:
    explicit FunctionJob(std::function<void()> function, int prerequisiteId = kNoPrerequisite)
        : JobBase(prerequisiteId), m_function(std::move(function)) {}

    void run() override { m_function(); }

private:
    std::function<void()> m_function;
};

class EmptyJob : public JobDispatcher::JobBase {
public:
    using JobBase::JobBase;

    void run() override {}
};

class EmptyWork {
public:
    EmptyWork() = default;
    EmptyWork(EmptyWork const&) = delete;
    EmptyWork& operator=(EmptyWork const&) = delete;
    virtual ~EmptyWork() = default;
    virtual void run() {}
};

// One object more, made as it is added and freed by the worker.
void addObject(JobDispatcher& dispatcher) {
    dispatcher.addJob(SharedPtr<JobDispatcher::JobBase>(new EmptyJob));
}

void addObject(FunctionPool& pool) {
    pool.add([work = std::make_shared<EmptyWork>()] { work->run(); });
}

// From the first job added to the last one done, while the workers run.
constexpr std::size_t JOBS = 20000;

template <class Pool, class Add>
void throughput(benchmark::State& state, Add const& add) {
    auto const threadCount = static_cast<unsigned int>(state.range(0));
    Pool pool(threadCount);
    for (auto _ : state) {
        for (std::size_t i = 0; i < JOBS; ++i) {
            add(pool, i);
        }
        pool.stop();
        state.PauseTiming();
        if constexpr (std::is_same_v<Pool, JobDispatcher>) {
            pool.start();
        } else {
            pool.start(threadCount);
        }
        state.ResumeTiming();
    }
    state.SetItemsProcessed(state.iterations() * static_cast<long>(JOBS));
}

// Jobs that exist already, beside functions without anything in them.
void DispatcherBare(benchmark::State& state) {
    std::vector<SharedPtr<JobDispatcher::JobBase>> jobs;
    for (std::size_t i = 0; i < JOBS; ++i) {
        jobs.emplace_back(new EmptyJob);
    }
    throughput<JobDispatcher>(state, [&](JobDispatcher& pool, std::size_t i) { pool.addJob(jobs[i]); });
}

void FunctionsBare(benchmark::State& state) {
    throughput<FunctionPool>(state, [](FunctionPool& pool, std::size_t) { pool.add([] {}); });
}

// An object for each job.
void DispatcherObjects(benchmark::State& state) {
    throughput<JobDispatcher>(state, [](JobDispatcher& pool, std::size_t) { addObject(pool); });
}

void FunctionsObjects(benchmark::State& state) {
    throughput<FunctionPool>(state, [](FunctionPool& pool, std::size_t) { addObject(pool); });
}

// The jobs are there before the one worker is.
void DispatcherDrain(benchmark::State& state) {
    JobDispatcher dispatcher(0);
    for (auto _ : state) {
        state.PauseTiming();
        for (long i = 0; i < state.range(0); ++i) {
            addObject(dispatcher);
        }
        state.ResumeTiming();
        dispatcher.resize(1);
        dispatcher.resize(0);
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

void FunctionsDrain(benchmark::State& state) {
    FunctionPool pool(0);
    for (auto _ : state) {
        state.PauseTiming();
        for (long i = 0; i < state.range(0); ++i) {
            addObject(pool);
        }
        state.ResumeTiming();
        pool.start(1);
        pool.stop();
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

// Each job but the first waits for the one before it, and they stand in the queue the wrong way round.
void DispatcherDrainOfAChain(benchmark::State& state) {
    JobDispatcher dispatcher(0);
    for (auto _ : state) {
        state.PauseTiming();
        int last = JobDispatcher::JobBase::kNoPrerequisite;
        std::vector<SharedPtr<JobDispatcher::JobBase>> jobs;
        for (long i = 0; i < state.range(0); ++i) {
            jobs.emplace_back(new EmptyJob(last));
            last = jobs.back()->getId();
        }
        for (; !jobs.empty(); jobs.pop_back()) {
            dispatcher.addJob(jobs.back());
        }
        state.ResumeTiming();
        dispatcher.resize(1);
        dispatcher.resize(0);
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

// From addJob() to run(), with one worker that sleeps in between.
template <class Add>
void latency(benchmark::State& state, Add const& add) {
    std::mutex mutex;
    std::condition_variable changed;
    bool done = false;
    for (auto _ : state) {
        auto const start = std::chrono::steady_clock::now();
        std::chrono::steady_clock::time_point ran;
        add([&] {
            auto const now = std::chrono::steady_clock::now();
            std::lock_guard<std::mutex> const lock(mutex);
            ran = now;
            done = true;
            changed.notify_one();
        });
        {
            std::unique_lock<std::mutex> lock(mutex);
            changed.wait(lock, [&] { return done; });
            done = false;
        }
        state.SetIterationTime(std::chrono::duration<double>(ran - start).count());
        std::this_thread::sleep_for(std::chrono::microseconds(50)); // until the worker sleeps
    }
}

void DispatcherLatency(benchmark::State& state) {
    JobDispatcher dispatcher(static_cast<unsigned int>(state.range(0)));
    latency(state, [&](std::function<void()> function) {
        dispatcher.addJob(SharedPtr<JobDispatcher::JobBase>(new FunctionJob(std::move(function))));
    });
}

void FunctionsLatency(benchmark::State& state) {
    FunctionPool pool(static_cast<unsigned int>(state.range(0)));
    latency(state, [&](std::function<void()> function) { pool.add(std::move(function)); });
}

void workers(benchmark::internal::Benchmark* benchmark) {
    benchmark->Arg(1)->Arg(2)->Arg(8)->UseRealTime()->Unit(benchmark::kMicrosecond);
}

void lengths(benchmark::internal::Benchmark* benchmark) {
    benchmark->Arg(1000)->Arg(10000)->Arg(100000)->UseRealTime()->Unit(benchmark::kMicrosecond);
}

BENCHMARK(DispatcherBare)->Apply(workers);
BENCHMARK(FunctionsBare)->Apply(workers);
BENCHMARK(DispatcherObjects)->Apply(workers);
BENCHMARK(FunctionsObjects)->Apply(workers);
BENCHMARK(DispatcherDrain)->Apply(lengths);
BENCHMARK(FunctionsDrain)->Apply(lengths);
BENCHMARK(DispatcherDrainOfAChain)->Apply(lengths);
BENCHMARK(DispatcherLatency)->Arg(1)->Arg(8)->UseManualTime()->Unit(benchmark::kMicrosecond);
BENCHMARK(FunctionsLatency)->Arg(1)->Arg(8)->UseManualTime()->Unit(benchmark::kMicrosecond);

} // namespace

int main(int argc, char** argv) {
    RatioReporter reporter(RatioReporter::Clock::kWall);
    reporter.compare("DispatcherBare", "FunctionsBare");
    reporter.compare("DispatcherObjects", "FunctionsObjects");
    reporter.compare("DispatcherDrain", "FunctionsDrain");
    reporter.compare("DispatcherDrainOfAChain", "FunctionsDrain");
    reporter.compare("DispatcherLatency", "FunctionsLatency");
    return runBenchmarks(argc, argv, reporter);
}
