// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#ifndef ORL_RATIO_REPORTER_H
#define ORL_RATIO_REPORTER_H

#include <benchmark/benchmark.h>

#include <map>
#include <string>
#include <utility>
#include <vector>

/// Prints the usual table, then how many times as long each benchmark took as its reference in the same run.
///
/// The ratio is that of the medians over all repetitions, which are interleaved, so that a machine whose
/// speed drifts slows both alike. Single times of a noisy machine are not worth quoting; these ratios are.
class RatioReporter : public benchmark::ConsoleReporter {
public:
    /// Compares the benchmark families `name` and `reference`, for each argument that both have.
    void compare(std::string const& name, std::string const& reference);

    /// Tells how the time of a family grows between two arguments: 1 is as fast as the argument, 2 as its
    /// square.
    void growth(std::string const& name, int from, int to);

    void ReportRuns(std::vector<Run> const& runs) override;
    void Finalize() override;

private:
    struct Growth {
        std::string name;
        int from;
        int to;
    };

    void printRatios() const;
    void printGrowths() const;

    std::vector<Growth> m_growths;
    std::vector<std::pair<std::string, std::string>> m_pairs;
    std::map<std::string, std::vector<double>> m_times; // by family and argument
};

/// Runs all benchmarks, repeated and interleaved if the command line does not say otherwise.
int runBenchmarks(int argc, char** argv, RatioReporter& reporter);

#endif // ORL_RATIO_REPORTER_H
