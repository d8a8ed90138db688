// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project

// What the facades of the containers cost, and what shared texts gain, beside the standard containers.
#include "support/orlRatioReporter.h"

#include <orlString.h>
#include <orlVector.h>

#include <string>
#include <vector>

namespace {

using ORL_0_81::String;
using ORL_0_81::Vector;

// File paths are what such vectors mostly hold.
char const* const PATH = "/shows/example/sequences/sq010/sh0100/plates/sh0100_main_v012.1001.exr";

void sizes(benchmark::internal::Benchmark* benchmark) { benchmark->Arg(10)->Arg(1000); }

template <class Texts, class Text>
void copy(benchmark::State& state) {
    // One by one, so that the texts are not shared before the copy.
    Texts source;
    for (long i = 0; i < state.range(0); ++i) {
        source.push_back(Text(PATH));
    }
    for (auto _ : state) {
        Texts const copied(source);
        benchmark::DoNotOptimize(copied);
    }
}

template <class Texts, class Text>
void append(benchmark::State& state) {
    Text const text(PATH);
    for (auto _ : state) {
        Texts texts;
        for (long i = 0; i < state.range(0); ++i) {
            texts.push_back(text);
        }
        benchmark::DoNotOptimize(texts);
    }
}

template <class Numbers>
void sumByIndex(benchmark::State& state) {
    Numbers const numbers(static_cast<unsigned long>(state.range(0)), 0.5);
    for (auto _ : state) {
        double sum = 0.0;
        unsigned long const size = numbers.size();
        for (unsigned long i = 0; i < size; ++i) {
            sum += numbers[i];
        }
        benchmark::DoNotOptimize(sum);
    }
}

template <class Numbers>
void sumByIterator(benchmark::State& state) {
    Numbers const numbers(static_cast<unsigned long>(state.range(0)), 0.5);
    for (auto _ : state) {
        double sum = 0.0;
        for (double const number : numbers) {
            sum += number;
        }
        benchmark::DoNotOptimize(sum);
    }
}

using StandardTexts = std::vector<std::string>;
using StandardNumbers = std::vector<double>;

void VectorCopy(benchmark::State& state) { copy<Vector<String>, String>(state); }
void StandardCopy(benchmark::State& state) { copy<StandardTexts, std::string>(state); }
void VectorAppend(benchmark::State& state) { append<Vector<String>, String>(state); }
void StandardAppend(benchmark::State& state) { append<StandardTexts, std::string>(state); }
void VectorSumByIndex(benchmark::State& state) { sumByIndex<Vector<double>>(state); }
void StandardSumByIndex(benchmark::State& state) { sumByIndex<StandardNumbers>(state); }
void VectorSumByIterator(benchmark::State& state) { sumByIterator<Vector<double>>(state); }
void StandardSumByIterator(benchmark::State& state) { sumByIterator<StandardNumbers>(state); }

BENCHMARK(VectorCopy)->Apply(sizes);
BENCHMARK(StandardCopy)->Apply(sizes);
BENCHMARK(VectorAppend)->Apply(sizes);
BENCHMARK(StandardAppend)->Apply(sizes);
BENCHMARK(VectorSumByIndex)->Apply(sizes);
BENCHMARK(StandardSumByIndex)->Apply(sizes);
BENCHMARK(VectorSumByIterator)->Apply(sizes);
BENCHMARK(StandardSumByIterator)->Apply(sizes);

} // namespace

int main(int argc, char** argv) {
    RatioReporter reporter;
    reporter.compare("VectorCopy", "StandardCopy");
    reporter.compare("VectorAppend", "StandardAppend");
    reporter.compare("VectorSumByIndex", "StandardSumByIndex");
    reporter.compare("VectorSumByIterator", "StandardSumByIterator");
    return runBenchmarks(argc, argv, reporter);
}
