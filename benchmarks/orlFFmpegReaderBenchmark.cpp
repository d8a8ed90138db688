// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project

// What it costs to learn about 200 small files from the reader, beside the program ffprobe run once for each:
// the time of the clock, since ffprobe's is another process's.
#include "support/orlRatioReporter.h"

#include <orlFFmpegMediaMetadataReader.h>

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

extern char** environ;

namespace {

using namespace ORL_0_81;

constexpr std::size_t FILE_COUNT = 200;

// Movies with and without sound, sound alone, images; copied until there are enough. The folder goes with the
// object.
class Media {
public:
    Media() : m_folder(std::filesystem::temp_directory_path() / ("orlReader" + std::to_string(getpid()))) {
        std::filesystem::create_directory(m_folder);
        char const* const kinds[][2] = {
            {"-f lavfi -i testsrc=s=320x180:r=24:d=1 -c:v libx264 -timecode 01:00:00:00", "a.mov"},
            {"-f lavfi -i testsrc=s=320x180:r=25:d=1 -f lavfi -i sine=d=1 -c:v libx264 -c:a aac", "b.mp4"},
            {"-f lavfi -i testsrc=s=320x180:r=24000/1001:d=1 -c:v prores_ks", "c.mov"},
            {"-f lavfi -i testsrc=s=320x180:r=30:d=1 -c:v mpeg4", "d.mkv"},
            {"-f lavfi -i testsrc=s=320x180:r=25:d=1 -c:v mjpeg", "e.avi"},
            {"-f lavfi -i sine=d=1", "f.wav"},
            {"-f lavfi -i testsrc=s=320x180:r=25:d=0.04", "g.png"},
            {"-f lavfi -i testsrc=s=320x180:r=25:d=0.04 -pix_fmt gbrpf32le", "h.exr"},
        };
        std::vector<std::string> originals;
        for (auto const& [options, name] : kinds) {
            originals.push_back((m_folder / name).string());
            std::string const command =
                std::string("ffmpeg -nostdin -v error ") + options + " " + originals.back();
            if (std::system(command.c_str()) != 0) {
                std::exit(1);
            }
        }
        for (std::size_t i = 0; i < FILE_COUNT; ++i) {
            std::filesystem::path const original = originals[i % originals.size()];
            std::filesystem::path const copy = m_folder / (std::to_string(i) + original.extension().string());
            std::filesystem::copy_file(original, copy);
            m_paths.push_back(copy.string());
        }
    }

    Media(Media const&) = delete;
    Media& operator=(Media const&) = delete;
    ~Media() { std::filesystem::remove_all(m_folder); }

    std::vector<std::string> const& paths() const { return m_paths; }

private:
    std::filesystem::path m_folder;
    std::vector<std::string> m_paths;
};

std::vector<std::string> const* paths = nullptr;

Bounds const CANVAS(0.0, 0.0, 1920.0, 1080.0);
Time const TIME(0, Rational(24, 1));

void ReaderOneByOne(benchmark::State& state) {
    SharedPtr<FFmpegMediaMetadataReader> const reader(new FFmpegMediaMetadataReader);
    for (auto _ : state) {
        for (std::string const& path : *paths) {
            String document;
            if (!MediaMetadata::getMediaMetadata(path.c_str(), CANVAS, TIME, document)) {
                state.SkipWithError("a file is refused");
            }
        }
    }
}

void ReaderAllAtOnce(benchmark::State& state) {
    SharedPtr<FFmpegMediaMetadataReader> const reader(new FFmpegMediaMetadataReader);
    Vector<String> all;
    for (std::string const& path : *paths) {
        all.push_back(path.c_str());
    }
    for (auto _ : state) {
        Vector<String> documents;
        if (!MediaMetadata::getMultipleMediaMetadata(all, CANVAS, TIME, documents) ||
            documents.size() != all.size()) {
            state.SkipWithError("a file is refused");
        }
    }
}

bool probe(std::string path) {
    char program[] = "ffprobe";
    char verbosity[] = "-v";
    char quiet[] = "quiet";
    char streams[] = "-show_streams";
    char format[] = "-show_format";
    char form[] = "-of";
    char json[] = "json";
    char* const arguments[] = {program, verbosity, quiet, streams, format, form, json, path.data(), nullptr};
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
    pid_t child = 0;
    bool const started = posix_spawnp(&child, program, &actions, nullptr, arguments, environ) == 0;
    posix_spawn_file_actions_destroy(&actions);
    int status = 1;
    return started && waitpid(child, &status, 0) == child && status == 0;
}

void FfprobeOneByOne(benchmark::State& state) {
    for (auto _ : state) {
        for (std::string const& path : *paths) {
            if (!probe(path)) {
                state.SkipWithError("ffprobe failed");
            }
        }
    }
}

// Few turns, for each takes the other program a quarter of a minute.
BENCHMARK(ReaderOneByOne)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(1)->Repetitions(3);
BENCHMARK(ReaderAllAtOnce)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(1)->Repetitions(3);
BENCHMARK(FfprobeOneByOne)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(1)->Repetitions(3);

} // namespace

int main(int argc, char** argv) {
    Media const media;
    paths = &media.paths();
    RatioReporter reporter(RatioReporter::Clock::kWall);
    reporter.compare("FfprobeOneByOne", "ReaderOneByOne");
    reporter.compare("FfprobeOneByOne", "ReaderAllAtOnce");
    return runBenchmarks(argc, argv, reporter);
}
