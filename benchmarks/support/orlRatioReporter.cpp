// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "support/orlRatioReporter.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

namespace {

double median(std::vector<double> values) {
    std::sort(values.begin(), values.end());
    std::size_t const middle = values.size() / 2;
    return values.size() % 2 ? values[middle] : (values[middle - 1] + values[middle]) / 2;
}

} // namespace

void RatioReporter::compare(std::string const& name, std::string const& reference) {
    m_pairs.emplace_back(name, reference);
}

void RatioReporter::growth(std::string const& name, int from, int to) {
    m_growths.push_back({name, from, to});
}

void RatioReporter::ReportRuns(std::vector<Run> const& runs) {
    for (Run const& run : runs) {
        if (run.run_type == Run::RT_Iteration && !run.error_occurred) {
            std::string const key =
                run.run_name.function_name + (run.run_name.args.empty() ? "" : "/" + run.run_name.args);
            m_times[key].push_back(run.GetAdjustedCPUTime());
        }
    }
    // Of the single repetitions nobody wants to read, only of what they come to.
    std::vector<Run> aggregates;
    for (Run const& run : runs) {
        if (run.run_type == Run::RT_Aggregate || run.repetitions <= 1 || run.error_occurred) {
            aggregates.push_back(run);
        }
    }
    ConsoleReporter::ReportRuns(aggregates);
}

void RatioReporter::Finalize() {
    ConsoleReporter::Finalize();
    printRatios();
    printGrowths();
}

void RatioReporter::printRatios() const {
    std::printf("\n%-44s %10s   %s\n", "ratio of median CPU times", "ratio", "repetitions");
    for (auto const& [name, reference] : m_pairs) {
        for (auto const& [key, times] : m_times) {
            if (key != name && key.compare(0, name.size() + 1, name + "/") != 0) {
                continue;
            }
            auto const found = m_times.find(reference + key.substr(name.size()));
            if (found != m_times.end()) {
                std::printf("%-44s %10.2f   %zu\n", (key + " / " + reference).c_str(),
                            median(times) / median(found->second), times.size());
            }
        }
    }
}

void RatioReporter::printGrowths() const {
    if (m_growths.empty()) {
        return;
    }
    std::printf("\n%-44s %10s\n", "growth of median CPU times", "exponent");
    for (Growth const& growth : m_growths) {
        auto const from = m_times.find(growth.name + "/" + std::to_string(growth.from));
        auto const to = m_times.find(growth.name + "/" + std::to_string(growth.to));
        if (from != m_times.end() && to != m_times.end()) {
            double const ratio = median(to->second) / median(from->second);
            std::printf("%-44s %10.2f\n", growth.name.c_str(),
                        std::log(ratio) / std::log(static_cast<double>(growth.to) / growth.from));
        }
    }
}

int runBenchmarks(int argc, char** argv, RatioReporter& reporter) {
    std::vector<char*> arguments(argv, argv + argc);
    char interleaving[] = "--benchmark_enable_random_interleaving=true";
    char repetitions[] = "--benchmark_repetitions=7";
    char seconds[] = "--benchmark_min_time=0.1";
    // Before the caller's own, which then win.
    arguments.insert(arguments.begin() + 1, {interleaving, repetitions, seconds});
    int count = static_cast<int>(arguments.size());
    arguments.push_back(nullptr);
    benchmark::Initialize(&count, arguments.data());
    if (benchmark::ReportUnrecognizedArguments(count, arguments.data())) {
        return 2;
    }
    benchmark::RunSpecifiedBenchmarks(&reporter);
    benchmark::Shutdown();
    return 0;
}
