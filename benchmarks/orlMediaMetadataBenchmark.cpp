// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project

// What completing and laying out a document costs, beside what RapidJSON alone takes for the same texts and
// what the threads alone take.
#include "support/orlRatioReporter.h"
#include "support/orlTimelineGenerator.h"

#include "internal/orlThread.h"
#include "orlMediaMetadataReader.h"
#include "orlRational.h"

#include <rapidjson/document.h>
#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

#include <future>
#include <map>
#include <vector>

namespace {

using namespace ORL_0_81;

// Answers at once, with the same clip for every path.
class InstantReader : public MediaMetadataReader {
public:
    InstantReader() : m_metadata(generateTimeline(1).c_str()) {}

    Status readMediaMetadata(String const& /*path*/, Bounds const& /*bounds*/, Time const& /*time*/,
                             String& metadata) override {
        metadata = m_metadata;
        return Status::kSuccess;
    }

private:
    String m_metadata;
};

Bounds const& canvas() {
    static Bounds const bounds(0.0, 0.0, 1920.0, 1080.0);
    return bounds;
}

String sanitized(String const& input) {
    String output;
    MediaMetadata::sanitizeOTIOMetadata(input, output, canvas(), Time(0, Rational(24, 1)));
    return output;
}

String laidOut(String const& input) {
    Vector<String> documents;
    documents.push_back(input);
    String output;
    MediaMetadata::getLayoutFromOTIOs(documents, MediaMetadata::kGrid, "Layout", canvas(), output);
    return output;
}

String const& input(int clipCount) {
    static std::map<int, String> cache;
    String& text = cache[clipCount];
    if (text.empty()) {
        text = generateTimeline(clipCount).c_str();
    }
    return text;
}

using Operation = String (*)(String const&);

template <Operation operation>
void Run(benchmark::State& state) {
    String const& text = input(static_cast<int>(state.range(0)));
    for (auto _ : state) {
        benchmark::DoNotOptimize(operation(text));
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

// The least that reading the one text and writing the other can cost on RapidJSON's tree.
template <Operation operation>
void Floor(benchmark::State& state) {
    String const& text = input(static_cast<int>(state.range(0)));
    rapidjson::Document written;
    written.Parse(operation(text).c_str());
    for (auto _ : state) {
        rapidjson::Document parsed;
        parsed.Parse(text.c_str());
        benchmark::DoNotOptimize(parsed);
        rapidjson::StringBuffer buffer;
        rapidjson::Writer<rapidjson::StringBuffer> writer(buffer);
        written.Accept(writer);
        benchmark::DoNotOptimize(buffer.GetString());
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

// As many threads as there are clips, with nothing to do.
void Threads(benchmark::State& state) {
    for (auto _ : state) {
        std::vector<std::future<void>> tasks;
        for (std::int64_t i = 0; i < state.range(0); ++i) {
            tasks.push_back(Async::run([] {}));
        }
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

void sizes(benchmark::internal::Benchmark* benchmark) {
    benchmark->Arg(100)->Arg(10000)->Unit(benchmark::kMillisecond)->UseRealTime();
}

BENCHMARK(Run<laidOut>)->Name("Layout")->Apply(sizes);
BENCHMARK(Floor<laidOut>)->Name("LayoutFloor")->Apply(sizes);
BENCHMARK(Run<sanitized>)->Name("Sanitize")->Apply(sizes);
BENCHMARK(Floor<sanitized>)->Name("SanitizeFloor")->Apply(sizes);
BENCHMARK(Threads)->Apply(sizes);

} // namespace

int main(int argc, char** argv) {
    SharedPtr<MediaMetadataReader> const reader(new InstantReader);
    RatioReporter reporter;
    reporter.compare("Layout", "LayoutFloor");
    reporter.compare("Sanitize", "SanitizeFloor");
    reporter.compare("Sanitize", "Threads");
    return runBenchmarks(argc, argv, reporter);
}
