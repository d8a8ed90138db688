// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "support/orlFakeReader.h"
#include "support/orlThreads.h"

#include <orlMediaMetadataReader.h>

#include <gtest/gtest.h>

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

// All operations on media at a time, each on several threads.

namespace {

using namespace ORL_0_81;
using namespace orlTest;

constexpr std::size_t THREADS_EACH = 3;
constexpr int ROUNDS = 5;

Bounds const REFERENCE(0.5, -0.25, 4.0, 2.0);
Time const TIME(48, Rational(24, 1));

class MediaMetadataThreads : public WithReader {
protected:
    void SetUp() override {
        ClipText clip;
        clip.availableRange = rangeText(timeText("1000.0", "24.0"), timeText("100.0", "24.0"));
        clip.pixelResolution = "[100,10]";
        m_reader->onAnyOther(Answer::document(documentOf(clip)));
    }
};

std::string describeOne() {
    String text;
    EXPECT_TRUE(MediaMetadata::getMediaMetadata("a", REFERENCE, TIME, text));
    return text.c_str();
}

Vector<String> paths() {
    Vector<String> result;
    for (char const* const path : {"a", "b", "c"}) {
        result.push_back(path);
    }
    return result;
}

std::string describeMany() {
    Vector<String> documents;
    EXPECT_TRUE(MediaMetadata::getMultipleMediaMetadata(paths(), REFERENCE, TIME, documents));
    std::string result;
    for (unsigned long i = 0; i < documents.size(); ++i) {
        result += documents[i].c_str();
    }
    return result;
}

std::string completed() {
    ClipText clip;
    clip.targetUrl = quoted("a");
    std::string const document = timelineOfClips(std::vector<ClipText>(4, clip));
    String text;
    EXPECT_TRUE(MediaMetadata::sanitizeOTIOMetadata(document.c_str(), text, REFERENCE, TIME));
    return text.c_str();
}

std::string layoutOfDocuments() {
    Vector<String> documents(2, String(documentOf(ClipText()).c_str()));
    String text;
    EXPECT_TRUE(MediaMetadata::getLayoutFromOTIOs(documents, MediaMetadata::kGrid, "wall", REFERENCE, text));
    return text.c_str();
}

std::string layoutOfPaths() {
    Vector<String> some = paths();
    String text;
    EXPECT_TRUE(
        MediaMetadata::getLayoutFromFilepaths(some, MediaMetadata::kGrid, "wall", REFERENCE, TIME, text));
    return text.c_str();
}

TEST_F(MediaMetadataThreads, AllOperationsMayBeCalledFromManyThreadsAtOnce) {
    LocaleKeeper const keeper;
    std::vector<std::function<std::string()>> const operations = {describeOne, describeMany, completed,
                                                                  layoutOfDocuments, layoutOfPaths};
    std::vector<std::string> expected;
    for (auto const& operation : operations) {
        expected.push_back(operation());
        EXPECT_FALSE(expected.back().empty());
    }
    onThreads(operations.size() * THREADS_EACH, [&](std::size_t t) {
        std::size_t const number = t % operations.size();
        for (int round = 0; round < ROUNDS; ++round) {
            EXPECT_EQ(operations[number](), expected[number]);
        }
    });
    EXPECT_EQ(LocaleKeeper::current(), "C");
}

} // namespace
