// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project

// What a notification costs, beside the least that one would write instead: a vector of functions that is
// copied under a mutex, and called. That one has no observers that end by themselves.
#include "support/orlRatioReporter.h"

#include <orlProgressHint.h>
#include <orlSubjectObserver.h>

#include <cstddef>
#include <functional>
#include <mutex>
#include <utility>
#include <vector>

namespace {

using namespace ORL_0_81;

class Listener : public Observer {
public:
    void onNotify(Subject*, NotificationHint const& hint) override {
        m_progress += static_cast<ProgressHint const&>(hint).getProgress();
    }

    double m_progress = 0.0;
};

class FunctionList {
public:
    void add(std::function<void(double)> function) {
        std::lock_guard<std::mutex> const lock(m_mutex);
        m_functions.push_back(std::move(function));
    }

    void call(double progress) {
        std::vector<std::function<void(double)>> snapshot;
        {
            std::lock_guard<std::mutex> const lock(m_mutex);
            snapshot = m_functions;
        }
        for (auto const& function : snapshot) {
            function(progress);
        }
    }

private:
    std::mutex m_mutex;
    std::vector<std::function<void(double)>> m_functions;
};

void Notify(benchmark::State& state) {
    auto const count = static_cast<std::size_t>(state.range(0));
    Subject subject;
    std::vector<Listener> listeners(count);
    for (Listener& listener : listeners) {
        subject.addObserver(&listener);
    }
    for (auto _ : state) {
        subject.notify(ProgressHint(0.5));
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

void CallFunctions(benchmark::State& state) {
    auto const count = static_cast<std::size_t>(state.range(0));
    FunctionList list;
    std::vector<double> sums(count);
    for (double& sum : sums) {
        list.add([&sum](double progress) { sum += progress; });
    }
    for (auto _ : state) {
        list.call(0.5);
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

// One observer more and less beside those that are attached.
void AttachAndDetach(benchmark::State& state) {
    Subject subject;
    std::vector<Listener> listeners(static_cast<std::size_t>(state.range(0)));
    for (Listener& listener : listeners) {
        subject.addObserver(&listener);
    }
    Listener one;
    for (auto _ : state) {
        subject.addObserver(&one);
        subject.removeObserver(&one);
    }
}

BENCHMARK(Notify)->Arg(1)->Arg(1000);
BENCHMARK(CallFunctions)->Arg(1)->Arg(1000);
BENCHMARK(AttachAndDetach)->Arg(1)->Arg(1000);

} // namespace

int main(int argc, char** argv) {
    RatioReporter reporter;
    reporter.compare("Notify", "CallFunctions");
    return runBenchmarks(argc, argv, reporter);
}
