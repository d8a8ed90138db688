// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "support/Damage.h"
#include "support/Reading.h"

#include <sys/resource.h>
#include <sys/stat.h>

#include <algorithm>
#include <atomic>
#include <filesystem>
#include <iterator>
#include <thread>
#include <vector>

namespace {

using namespace Reading;

std::vector<std::string> const PATHS = {
    medium("sound.mov"),      medium("rate2997drop.mov"),
    medium("rate60.mkv"),     medium("list.m3u8"),
    medium("broadcast.mxf"),  medium("stream.ts"),
    medium("sound.wav"),      medium("sequences/shot.%04d.png"),
    medium("variable.mp4"),   medium("none.mov"),
    medium("sequences"),      medium("sequences/half.%03d.exr"),
    medium("fragmented.mp4"), medium("still.png"),
    "http://127.0.0.1/x",     ORL_TEST_MAKE_MEDIA,
};

long entriesOf(char const* directory) {
    return std::distance(std::filesystem::directory_iterator(directory),
                         std::filesystem::directory_iterator());
}

TEST(ConcurrencyTest, ManyThreadsReadTheSameAsOne) {
    Reader const reader;
    std::vector<std::string> expected(PATHS.size());
    std::vector<Status> statuses(PATHS.size());
    for (std::size_t i = 0; i < PATHS.size(); ++i) {
        statuses[i] = reader.read(PATHS[i], expected[i]);
    }
    std::atomic<int> differences{0};
    std::vector<std::thread> threads;
    for (std::size_t t = 0; t < 16; ++t) {
        threads.emplace_back([&, t] {
            for (std::size_t i = 0; i < PATHS.size(); ++i) {
                std::size_t const chosen = (i + t) % PATHS.size();
                std::string document;
                Status const status = reader.read(PATHS[chosen], document);
                differences += status != statuses[chosen] || document != expected[chosen] ? 1 : 0;
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(differences, 0);
}

TEST(ConcurrencyTest, AThreadThatIsSilentLeavesTheLogOfAnotherAlone) {
    Damage::Folder const folder;
    std::string const cut = folder.write("cut.mov", Damage::load(medium("tableLast.mov")).substr(0, 9999));
    Reader const quiet;
    Reader const loud;
    loud->setLogging(true);
    auto const logOf = [&](std::size_t silentCount, int rounds) {
        testing::internal::CaptureStderr();
        std::atomic<bool> done{false};
        std::vector<std::thread> silent;
        for (std::size_t t = 0; t < silentCount; ++t) {
            silent.emplace_back([&] {
                while (!done) {
                    EXPECT_EQ(quiet.statusOf(cut), Status::kErrorOpeningMediaFile);
                }
            });
        }
        for (int round = 0; round < rounds; ++round) {
            EXPECT_EQ(loud.statusOf(cut), Status::kErrorOpeningMediaFile);
        }
        done = true;
        for (std::thread& thread : silent) {
            thread.join();
        }
        std::string const text = testing::internal::GetCapturedStderr();
        return std::count(text.begin(), text.end(), '\n');
    };
    constexpr int ROUNDS = 20;
    auto const alone = logOf(0, 1);
    EXPECT_GT(alone, 0);
    EXPECT_EQ(logOf(3, ROUNDS), ROUNDS * alone);
}

TEST(ConcurrencyTest, ReadsMoreMediaAtOnceThanThereAreFileHandles) {
    rlimit before = {};
    ASSERT_EQ(getrlimit(RLIMIT_NOFILE, &before), 0);
    rlimit few = before;
    few.rlim_cur = 128;
    ASSERT_EQ(setrlimit(RLIMIT_NOFILE, &few), 0);
    Reader const reader;
    Vector<String> paths;
    for (int i = 0; i < 400; ++i) {
        paths.push_back(medium(i % 2 == 0 ? "rate24.mov" : "list.m3u8").c_str());
    }
    Vector<String> documents;
    EXPECT_EQ(MediaMetadata::getMultipleMediaMetadata(paths, canvas(), asked(), documents), Status::kSuccess);
    EXPECT_EQ(documents.size(), 400U);
    setrlimit(RLIMIT_NOFILE, &before);
}

TEST(ConcurrencyTest, LeavesNoFileHandleAndNoThreadBehind) {
    Damage::Folder const folder;
    std::string const pipe = folder.path("pipe");
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    std::string const cut = folder.write("cut.mov", Damage::load(medium("tableLast.mov")).substr(0, 9999));
    Reader const reader;
    reader->setTimeLimit(0.2);
    std::string document;
    long handles = 0;
    long threads = 0;
    for (int round = 0; round < 3; ++round) {
        for (std::string const& path : PATHS) {
            (void)reader.read(path, document);
        }
        (void)reader.read(pipe, document);
        (void)reader.read(cut, document);
        if (round == 0) { // whatever is opened once in a process
            handles = entriesOf("/proc/self/fd");
            threads = entriesOf("/proc/self/task");
        }
    }
    EXPECT_EQ(entriesOf("/proc/self/fd"), handles);
    EXPECT_EQ(entriesOf("/proc/self/task"), threads);
}

} // namespace
