// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project

// What sharing and copying on write cost, beside the standard string.
#include "support/orlRatioReporter.h"

#include <orlString.h>

#include <string>

namespace {

using ORL_0_81::String;

// Short enough for the standard string to hold in itself, a path, and a document.
void lengths(benchmark::internal::Benchmark* benchmark) { benchmark->Arg(8)->Arg(80)->Arg(8192); }

template <class Text>
void copy(benchmark::State& state) {
    Text const source(static_cast<unsigned long>(state.range(0)), 'x');
    for (auto _ : state) {
        Text const copied(source);
        benchmark::DoNotOptimize(copied);
    }
}

template <class Text>
void copyAndChange(benchmark::State& state) {
    Text const source(static_cast<unsigned long>(state.range(0)), 'x');
    for (auto _ : state) {
        Text copied(source);
        copied.push_back('y');
        benchmark::DoNotOptimize(copied);
    }
}

// Builds a text of the given length piece by piece.
template <class Text>
void append(benchmark::State& state) {
    auto const length = static_cast<unsigned long>(state.range(0));
    for (auto _ : state) {
        Text text;
        while (text.size() < length) {
            text.append("12345678", 8);
        }
        benchmark::DoNotOptimize(text);
    }
}

template <class Text>
void compare(benchmark::State& state) {
    Text const left(static_cast<unsigned long>(state.range(0)), 'x');
    Text right(left);
    right.push_back('y');
    for (auto _ : state) {
        benchmark::DoNotOptimize(left < right);
    }
}

void StringCopy(benchmark::State& state) { copy<String>(state); }
void StandardCopy(benchmark::State& state) { copy<std::string>(state); }
void StringCopyAndChange(benchmark::State& state) { copyAndChange<String>(state); }
void StandardCopyAndChange(benchmark::State& state) { copyAndChange<std::string>(state); }
void StringAppend(benchmark::State& state) { append<String>(state); }
void StandardAppend(benchmark::State& state) { append<std::string>(state); }
void StringCompare(benchmark::State& state) { compare<String>(state); }
void StandardCompare(benchmark::State& state) { compare<std::string>(state); }

BENCHMARK(StringCopy)->Apply(lengths);
BENCHMARK(StandardCopy)->Apply(lengths);
BENCHMARK(StringCopyAndChange)->Apply(lengths);
BENCHMARK(StandardCopyAndChange)->Apply(lengths);
BENCHMARK(StringAppend)->Apply(lengths);
BENCHMARK(StandardAppend)->Apply(lengths);
BENCHMARK(StringCompare)->Apply(lengths);
BENCHMARK(StandardCompare)->Apply(lengths);

} // namespace

int main(int argc, char** argv) {
    RatioReporter reporter;
    reporter.compare("StringCopy", "StandardCopy");
    reporter.compare("StringCopyAndChange", "StandardCopyAndChange");
    reporter.compare("StringAppend", "StandardAppend");
    reporter.compare("StringCompare", "StandardCompare");
    return runBenchmarks(argc, argv, reporter);
}
