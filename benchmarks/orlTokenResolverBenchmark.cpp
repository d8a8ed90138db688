// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project

// What it costs to fill in a template, beside the least that one would write instead: a search for the two
// delimiters, and a table of plain strings. That one asks no objects for their values, and does not look for
// a token within another's text.
//
// A table of 10,000 tokens. From 256 KiB on a text has them all, so that the time per byte is to be the same;
// in a short one the few that it has are at hand in the cache.
#include "support/orlRatioReporter.h"

#include <orlTokenResolver.h>

#include <cstddef>
#include <string>
#include <unordered_map>

namespace {

using namespace ORL_0_81;

constexpr int TOKENS = 10000;

std::string nameOf(int index) { return "{TOKEN_" + std::to_string(index) + "}"; }
std::string valueOf(int index) { return "value of token " + std::to_string(index); }

class Word : public Token {
public:
    explicit Word(int index) : Token(nameOf(index).c_str(), "a word"), m_value(valueOf(index).c_str()) {}

    Status getValue(String& value) override {
        value = m_value;
        return Status::kSuccess;
    }

private:
    String m_value;
};

class Words : public TokenProducer {
public:
    Status getTokens(List<SharedPtr<Token>>& tokens) override {
        for (int i = 0; i < TOKENS; ++i) {
            tokens.append(SharedPtr<Token>(new Word(i)));
        }
        return Status::kSuccess;
    }
};

class TemplateTable {
public:
    TemplateTable() {
        for (int i = 0; i < TOKENS; ++i) {
            m_values[nameOf(i)] = valueOf(i);
        }
    }

    std::string resolve(std::string const& input) const {
        std::string output;
        std::size_t copied = 0;
        for (;;) {
            std::size_t const open = input.find('{', copied);
            std::size_t const close = open == std::string::npos ? open : input.find('}', open);
            if (close == std::string::npos) {
                return output.append(input, copied);
            }
            output.append(input, copied, open - copied);
            std::string const name = input.substr(open, close + 1 - open);
            auto const found = m_values.find(name);
            output += found == m_values.end() ? name : found->second;
            copied = close + 1;
        }
    }

private:
    std::unordered_map<std::string, std::string> m_values;
};

// Tokens all over, all of them known.
std::string templateText(std::size_t length) {
    std::string text;
    for (int i = 0; text.size() < length; ++i) {
        text += "/a piece of a path/" + nameOf(i * 7919 % TOKENS);
    }
    text.resize(length, 'x');
    return text;
}

SharedPtr<TokenResolver> filledResolver() {
    SharedPtr<TokenResolver> resolver = TokenResolver::create('{', '}');
    resolver->add(SharedPtr<TokenProducer>(new Words));
    String nothing;
    resolver->resolve(String(), nothing);
    return resolver;
}

void resolve(benchmark::State& state, std::string const& text) {
    SharedPtr<TokenResolver> const resolver = filledResolver();
    String const input(text.data(), text.size());
    for (auto _ : state) {
        String output;
        resolver->resolve(input, output);
        benchmark::DoNotOptimize(output.data());
    }
    state.SetBytesProcessed(state.iterations() * static_cast<long>(text.size()));
}

void resolvePlainly(benchmark::State& state, std::string const& text) {
    TemplateTable const table;
    for (auto _ : state) {
        std::string const output = table.resolve(text);
        benchmark::DoNotOptimize(output.data());
    }
    state.SetBytesProcessed(state.iterations() * static_cast<long>(text.size()));
}

std::size_t lengthOf(benchmark::State const& state) { return static_cast<std::size_t>(state.range(0)); }

void Resolve(benchmark::State& state) { resolve(state, templateText(lengthOf(state))); }
void PlainResolve(benchmark::State& state) { resolvePlainly(state, templateText(lengthOf(state))); }

// No tokens at all.
void ResolveProse(benchmark::State& state) { resolve(state, std::string(lengthOf(state), 'x')); }
void PlainResolveProse(benchmark::State& state) { resolvePlainly(state, std::string(lengthOf(state), 'x')); }

// Hostile: as many texts as bytes, each of them up to the one close character at the end.
void ResolveOpenCharacters(benchmark::State& state) {
    resolve(state, std::string(lengthOf(state) - 1, '{') + "}");
}

void ResolveMakingTheTable(benchmark::State& state) {
    SharedPtr<TokenResolver> const resolver = filledResolver();
    String nothing;
    for (auto _ : state) {
        resolver->add(nullptr);
        resolver->resolve(String(), nothing);
    }
    state.SetItemsProcessed(state.iterations() * TOKENS);
}

void lengths(benchmark::internal::Benchmark* benchmark) {
    benchmark->Arg(1 << 10)->Arg(1 << 18)->Arg(1 << 20)->Arg(1 << 22)->Unit(benchmark::kMicrosecond);
}

BENCHMARK(Resolve)->Apply(lengths);
BENCHMARK(PlainResolve)->Apply(lengths);
BENCHMARK(ResolveProse)->Apply(lengths);
BENCHMARK(PlainResolveProse)->Apply(lengths);
BENCHMARK(ResolveOpenCharacters)->Apply(lengths);
BENCHMARK(ResolveMakingTheTable)->Unit(benchmark::kMicrosecond);

} // namespace

int main(int argc, char** argv) {
    RatioReporter reporter;
    reporter.compare("Resolve", "PlainResolve");
    reporter.compare("ResolveProse", "PlainResolveProse");
    return runBenchmarks(argc, argv, reporter);
}
