// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project

// What a walk through a timeline document costs, beside what RapidJSON alone takes for the same texts.
#include "support/orlRatioReporter.h"
#include "support/orlTimelineGenerator.h"

#include "rapidotio/orlOtioNodeVisitor.h"
#include "rapidotio/orlOtioVisitorHelper.h"

#include <rapidjson/document.h>
#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

#include <map>

namespace {

using ORL_0_81::rapidotio::NodeVisitor;
using ORL_0_81::rapidotio::VisitorHelper;

class Idle : public NodeVisitor {};

struct Texts {
    std::string input;
    std::string output;
};

Texts const& texts(int clipCount) {
    static std::map<int, Texts> cache;
    auto const [found, isNew] = cache.try_emplace(clipCount);
    if (isNew) {
        Idle visitor;
        found->second.input = generateTimeline(clipCount);
        VisitorHelper::visit(found->second.input, visitor, &found->second.output);
    }
    return found->second;
}

void setThroughput(benchmark::State& state, Texts const& document) {
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations()) *
                            static_cast<std::int64_t>(document.input.size()));
}

void Parse(benchmark::State& state) {
    Texts const& document = texts(static_cast<int>(state.range(0)));
    for (auto _ : state) {
        rapidjson::Document parsed;
        parsed.Parse(document.input.c_str());
        benchmark::DoNotOptimize(parsed);
    }
    setThroughput(state, document);
}

// The least that reading one text and writing the other can cost on RapidJSON's tree.
void Floor(benchmark::State& state) {
    Texts const& document = texts(static_cast<int>(state.range(0)));
    rapidjson::Document written;
    written.Parse(document.output.c_str());
    for (auto _ : state) {
        rapidjson::Document parsed;
        parsed.Parse(document.input.c_str());
        benchmark::DoNotOptimize(parsed);
        rapidjson::StringBuffer buffer;
        rapidjson::Writer<rapidjson::StringBuffer> writer(buffer);
        written.Accept(writer);
        benchmark::DoNotOptimize(buffer.GetString());
    }
    setThroughput(state, document);
}

void Visit(benchmark::State& state) {
    Texts const& document = texts(static_cast<int>(state.range(0)));
    for (auto _ : state) {
        Idle visitor;
        benchmark::DoNotOptimize(VisitorHelper::visit(document.input, visitor, nullptr));
    }
    setThroughput(state, document);
}

void VisitWithOutput(benchmark::State& state) {
    Texts const& document = texts(static_cast<int>(state.range(0)));
    for (auto _ : state) {
        Idle visitor;
        std::string output;
        VisitorHelper::visit(document.input, visitor, &output);
        if (output != document.output) {
            state.SkipWithError("the text differs from one walk to the next");
        }
        benchmark::DoNotOptimize(output);
    }
    setThroughput(state, document);
}

void sizes(benchmark::internal::Benchmark* benchmark) {
    benchmark->Arg(100)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);
}

BENCHMARK(Parse)->Apply(sizes);
BENCHMARK(Floor)->Apply(sizes);
BENCHMARK(Visit)->Apply(sizes);
BENCHMARK(VisitWithOutput)->Apply(sizes);

} // namespace

int main(int argc, char** argv) {
    RatioReporter reporter;
    reporter.compare("VisitWithOutput", "Floor");
    reporter.compare("VisitWithOutput", "Parse");
    reporter.compare("Visit", "Parse");
    return runBenchmarks(argc, argv, reporter);
}
