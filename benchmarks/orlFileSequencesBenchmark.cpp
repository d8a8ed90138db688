// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project

// What the detection of sequences costs, beside the least that any grouping of names must do; and what it
// costs in a directory, beside a bare listing.
#include "support/orlNameGenerator.h"
#include "support/orlRatioReporter.h"

#include <orlFileSequenceUtils.h>

#include <dirent.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <map>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

#include <unistd.h>

namespace {

namespace fs = std::filesystem;

using ORL_0_81::FileSequenceUtils;
using ORL_0_81::List;
using ORL_0_81::Status;
using ORL_0_81::String;
using ORL_0_81::Vector;

constexpr int DIRECTORY_SIZE = 100000;

// Lists are kept: in order of the sizes, so that the largest does not depend on what was freed before.
List<String> const& names(NameShape shape, std::size_t count) {
    static std::map<std::pair<NameShape, std::size_t>, List<String>> cache;
    auto const [found, isNew] = cache.try_emplace({shape, count});
    if (isNew) {
        for (std::string const& name : generateNames(shape, count)) {
            found->second.append(String(name.data(), name.size()));
        }
    }
    return found->second;
}

// One pass that replaces runs of digits, and groups the names by what they then are.
void Floor(benchmark::State& state, NameShape shape) {
    List<String> const& list = names(shape, static_cast<std::size_t>(state.range(0)));
    for (auto _ : state) {
        std::unordered_map<std::string, std::vector<unsigned int>> groups;
        std::string key;
        unsigned int index = 0;
        List<String>::Iterator const end = list.end();
        for (List<String>::Iterator name = list.begin(); name != end; ++name, ++index) {
            key.clear();
            char const* const text = (*name).data();
            unsigned long const size = (*name).size();
            bool isInRun = false;
            for (unsigned long i = 0; i < size; ++i) {
                bool const isDigit = text[i] >= '0' && text[i] <= '9';
                if (!isDigit || !isInRun) {
                    key += isDigit ? '#' : text[i];
                }
                isInRun = isDigit;
            }
            groups[key].push_back(index);
        }
        benchmark::DoNotOptimize(groups);
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

void Detect(benchmark::State& state, NameShape shape) {
    List<String> const& list = names(shape, static_cast<std::size_t>(state.range(0)));
    String const filter;
    unsigned long results = 0;
    for (auto _ : state) {
        Vector<String> sequences;
        if (!FileSequenceUtils::getSequencesInFileList(list, sequences, filter)) {
            state.SkipWithError("no sequences");
        }
        results = sequences.size();
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
    state.counters["results"] = static_cast<double>(results);
}

class Directory {
public:
    Directory() : m_path(fs::temp_directory_path() / ("orlFileSequences" + std::to_string(getpid()))) {
        fs::create_directory(m_path);
        for (std::string const& name : generateNames(NameShape::kVersionsOfShots, DIRECTORY_SIZE)) {
            std::ofstream(m_path / name); // NOLINT(bugprone-unused-raii): made, and closed at once
        }
    }
    Directory(Directory const&) = delete;
    Directory& operator=(Directory const&) = delete;
    ~Directory() {
        std::error_code ignored;
        fs::remove_all(m_path, ignored);
    }

    std::string path() const { return m_path.string(); }

private:
    fs::path const m_path;
};

// Made when the first benchmark asks for it: that takes longer than most of them.
Directory const& directory() {
    static Directory const instance;
    return instance;
}

void BareListing(benchmark::State& state) {
    std::string const path = directory().path();
    for (auto _ : state) {
        DIR* const open = opendir(path.c_str());
        while (dirent const* const entry = readdir(open)) {
            benchmark::DoNotOptimize(entry->d_name[0]);
        }
        closedir(open);
    }
}

void DetectInDirectory(benchmark::State& state) {
    String const path(directory().path().c_str());
    for (auto _ : state) {
        Vector<String> sequences;
        if (!FileSequenceUtils::getSequencesInDirectory(path, sequences, "")) {
            state.SkipWithError("no sequences");
        }
    }
}

// The names as the directory gives them, in a list.
void DetectListed(benchmark::State& state) {
    List<String> list;
    for (auto const& entry : fs::directory_iterator(directory().path())) {
        list.append(entry.path().filename().c_str());
    }
    for (auto _ : state) {
        Vector<String> sequences;
        FileSequenceUtils::getSequencesInFileList(list, sequences, "");
    }
}

} // namespace

int main(int argc, char** argv) {
    RatioReporter reporter;
    for (NameShape const shape : NAME_SHAPES) {
        std::string const detect = std::string("Detect") + nameOf(shape);
        std::string const floor = std::string("Floor") + nameOf(shape);
        for (int const count : {1000, 10000, 100000, 1000000}) {
            benchmark::RegisterBenchmark(floor.c_str(), Floor, shape)
                ->Arg(count)
                ->Unit(benchmark::kMillisecond);
            benchmark::RegisterBenchmark(detect.c_str(), Detect, shape)
                ->Arg(count)
                ->Unit(benchmark::kMillisecond);
        }
        reporter.compare(detect, floor);
        reporter.growth(floor, 10000, 1000000);
        reporter.growth(detect, 10000, 1000000);
    }
    benchmark::RegisterBenchmark("BareListing", BareListing)->Unit(benchmark::kMillisecond);
    benchmark::RegisterBenchmark("DetectListed", DetectListed)->Unit(benchmark::kMillisecond);
    benchmark::RegisterBenchmark("DetectInDirectory", DetectInDirectory)->Unit(benchmark::kMillisecond);
    reporter.compare("DetectInDirectory", "BareListing");
    reporter.compare("DetectListed", "BareListing");
    return runBenchmarks(argc, argv, reporter);
}
