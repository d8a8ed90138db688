// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project

// What comparisons of the media values cost beside those of plain numbers, and what their text forms cost
// beside a bare RapidJSON writing and parsing the same texts.
#include "support/orlRatioReporter.h"

#include <orlBounds.h>
#include <orlRational.h>
#include <orlTime.h>
#include <orlVideoBufferResolution.h>

#include <rapidjson/document.h>
#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

#include <cstdint>
#include <string>
#include <vector>

namespace {

using namespace ORL_0_81;

template <class Value>
Value sample();

template <>
Rational sample() {
    return Rational(24000, 1001);
}

template <>
Time sample() {
    return Time(86400, Rational(24000, 1001));
}

template <>
Bounds sample() {
    return Bounds(0.5, -0.25, 1.7777777777777777, 1.0);
}

template <>
VideoBufferResolution sample() {
    return VideoBufferResolution(1920, 1080, sample<Bounds>(), "progressive", 10, 3, false, true, "Rec709");
}

// Writing and parsing

template <class Value>
void toJson(benchmark::State& state) {
    Value const value = sample<Value>();
    for (auto _ : state) {
        benchmark::DoNotOptimize(value.toJson());
    }
}

template <class Value>
void writeBare(benchmark::State& state) {
    rapidjson::Document document;
    document.Parse(sample<Value>().toJson().asChar());
    for (auto _ : state) {
        rapidjson::StringBuffer buffer;
        rapidjson::Writer<rapidjson::StringBuffer> writer(buffer);
        document.Accept(writer);
        benchmark::DoNotOptimize(buffer.GetString());
    }
}

template <class Value>
void fromJson(benchmark::State& state) {
    String const text = sample<Value>().toJson();
    Value value;
    for (auto _ : state) {
        if (!value.fromJson(text)) {
            state.SkipWithError("the text is refused");
        }
        benchmark::DoNotOptimize(value);
    }
}

template <class Value>
void parseBare(benchmark::State& state) {
    String const text = sample<Value>().toJson();
    for (auto _ : state) {
        rapidjson::Document document;
        document.Parse(text.asChar());
        benchmark::DoNotOptimize(document);
    }
}

void RationalToJson(benchmark::State& state) { toJson<Rational>(state); }
void RationalWriteBare(benchmark::State& state) { writeBare<Rational>(state); }
void RationalFromJson(benchmark::State& state) { fromJson<Rational>(state); }
void RationalParseBare(benchmark::State& state) { parseBare<Rational>(state); }
void TimeToJson(benchmark::State& state) { toJson<Time>(state); }
void TimeWriteBare(benchmark::State& state) { writeBare<Time>(state); }
void TimeFromJson(benchmark::State& state) { fromJson<Time>(state); }
void TimeParseBare(benchmark::State& state) { parseBare<Time>(state); }
void BoundsToJson(benchmark::State& state) { toJson<Bounds>(state); }
void BoundsWriteBare(benchmark::State& state) { writeBare<Bounds>(state); }
void BoundsFromJson(benchmark::State& state) { fromJson<Bounds>(state); }
void BoundsParseBare(benchmark::State& state) { parseBare<Bounds>(state); }
void ResolutionToJson(benchmark::State& state) { toJson<VideoBufferResolution>(state); }
void ResolutionWriteBare(benchmark::State& state) { writeBare<VideoBufferResolution>(state); }
void ResolutionFromJson(benchmark::State& state) { fromJson<VideoBufferResolution>(state); }
void ResolutionParseBare(benchmark::State& state) { parseBare<VideoBufferResolution>(state); }

BENCHMARK(RationalToJson);
BENCHMARK(RationalWriteBare);
BENCHMARK(RationalFromJson);
BENCHMARK(RationalParseBare);
BENCHMARK(TimeToJson);
BENCHMARK(TimeWriteBare);
BENCHMARK(TimeFromJson);
BENCHMARK(TimeParseBare);
BENCHMARK(BoundsToJson);
BENCHMARK(BoundsWriteBare);
BENCHMARK(BoundsFromJson);
BENCHMARK(BoundsParseBare);
BENCHMARK(ResolutionToJson);
BENCHMARK(ResolutionWriteBare);
BENCHMARK(ResolutionFromJson);
BENCHMARK(ResolutionParseBare);

// Comparing each of many values with the next

constexpr std::size_t kCount = 1024;

struct PlainRate {
    std::int32_t numerator;
    std::uint32_t denominator;

    // The same arithmetic on fields in place.
    bool operator==(PlainRate const& other) const {
        return static_cast<std::uint32_t>(numerator) * other.denominator ==
               static_cast<std::uint32_t>(other.numerator) * denominator;
    }
};

struct PlainTime {
    std::int64_t ticks;
    PlainRate rate;

    bool operator==(PlainTime const& other) const { return ticks == other.ticks && rate == other.rate; }
};

template <class Value>
void compareNeighbours(benchmark::State& state, std::vector<Value> const& values) {
    for (auto _ : state) {
        std::size_t equalCount = 0;
        for (std::size_t i = 1; i < values.size(); ++i) {
            equalCount += values[i - 1] == values[i] ? 1U : 0U;
        }
        benchmark::DoNotOptimize(equalCount);
    }
    state.SetItemsProcessed(static_cast<std::int64_t>(state.iterations()) *
                            static_cast<std::int64_t>(values.size() - 1));
}

int numerator(std::size_t i) { return static_cast<int>(24 + i % 3); }

void CompareRationals(benchmark::State& state) {
    std::vector<Rational> values;
    for (std::size_t i = 0; i < kCount; ++i) {
        values.emplace_back(numerator(i), 1U);
    }
    compareNeighbours(state, values);
}

void ComparePlainRates(benchmark::State& state) {
    std::vector<PlainRate> values;
    for (std::size_t i = 0; i < kCount; ++i) {
        values.push_back({numerator(i), 1U});
    }
    compareNeighbours(state, values);
}

void CompareTimes(benchmark::State& state) {
    std::vector<Time> values;
    for (std::size_t i = 0; i < kCount; ++i) {
        values.emplace_back(48, Rational(numerator(i), 1U));
    }
    compareNeighbours(state, values);
}

void ComparePlainTimes(benchmark::State& state) {
    std::vector<PlainTime> values;
    for (std::size_t i = 0; i < kCount; ++i) {
        values.push_back({48, {numerator(i), 1U}});
    }
    compareNeighbours(state, values);
}

BENCHMARK(CompareRationals);
BENCHMARK(ComparePlainRates);
BENCHMARK(CompareTimes);
BENCHMARK(ComparePlainTimes);

} // namespace

int main(int argc, char** argv) {
    RatioReporter reporter;
    for (std::string const value : {"Rational", "Time", "Bounds", "Resolution"}) {
        reporter.compare(value + "ToJson", value + "WriteBare");
        reporter.compare(value + "FromJson", value + "ParseBare");
    }
    reporter.compare("CompareRationals", "ComparePlainRates");
    reporter.compare("CompareTimes", "ComparePlainTimes");
    return runBenchmarks(argc, argv, reporter);
}
