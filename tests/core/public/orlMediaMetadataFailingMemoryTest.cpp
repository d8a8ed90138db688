// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "support/TimeLimit.h"
#include "support/orlFailingMemory.h"
#include "support/orlFakeReader.h"

#include <orlMediaMetadataReader.h>
#include <orlPlatform.h>

#include <gtest/gtest.h>

#include <fcntl.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <string>
#include <system_error>
#include <vector>

// The roads of media when memory fails on any of them: on the caller's thread, on those that are started, or in the
// reader. What comes out is an exception, on the caller's thread; the outputs are as they were, and no thread is left.

namespace {

using namespace ORL_0_81;
using orlTest::failEachAllocation;
using orlTest::FailingMemory;

orlTest::MemoryPlan const OWN_MEMORY;
orlTest::MemoryPlan const THREADS_TOO{false, true, false};

Bounds const REFERENCE(0.5, -0.25, 4.0, 2.0);
Time const TIME(48, Rational(24, 1));

std::string bytes(String const& text) { return std::string(text.data(), text.size()); }

String toString(std::string const& text) { return String(text.data(), text.size()); }

std::string quoted(std::string const& text) { return orlTest::quoted(text); }

orlTest::ClipText medium(std::string const& path) {
    orlTest::ClipText clip;
    clip.name = quoted("what is told of " + path);
    clip.availableRange =
        orlTest::rangeText(orlTest::timeText("1000.0", "24.0"), orlTest::timeText("100.0", "24.0"));
    clip.center = "[1.25,1.75]";
    clip.size = "[1.0,1.5]";
    clip.pixelResolution = "[100,10]";
    clip.extraData = R"({"Timecode/Start":"01:00:00:00","Artist":"somebody"})";
    return clip;
}

// Knows every path but the missing ones.
class Reader : public MediaMetadataReader {
public:
    Status readMediaMetadata(String const& path, Bounds const&, Time const&, String& metadata) override {
        if (path == "missing") {
            return Status::kErrorOpeningMediaFile;
        }
        if (path == "broken") {
            return Status::kFileNotFound;
        }
        metadata = toString(orlTest::documentOf(medium(bytes(path))));
        return Status::kSuccess;
    }
};

class MediaMetadataFailingMemory : public testing::Test {
protected:
    SharedPtr<Reader> m_reader{new Reader};
    orlTest::LocaleKeeper m_locale;

private:
    TimeLimit m_limit{"media without memory"};
};

String timeline(int clips) {
    std::vector<orlTest::ClipText> texts;
    for (int i = 0; i < clips; ++i) {
        orlTest::ClipText clip;
        clip.name = quoted("clip " + std::to_string(i));
        clip.targetUrl = quoted("a/path/to/a/medium/" + std::to_string(i));
        clip.mp4 = quoted("an/uploaded/movie/" + std::to_string(i));
        texts.push_back(clip);
    }
    return toString(orlTest::timelineOfClips(texts));
}

TEST_F(MediaMetadataFailingMemory, OneMediumIsDescribedOrTheTextStays) {
    failEachAllocation([](FailingMemory& memory) {
        String const path = "a/path/to/a/medium";
        String text("untouched");
        bool const done =
            memory.run([&] { EXPECT_TRUE(MediaMetadata::getMediaMetadata(path, REFERENCE, TIME, text)); });
        EXPECT_EQ(bytes(text), done ? orlTest::documentOf(medium(path.c_str())) : "untouched");
    });
}

TEST_F(MediaMetadataFailingMemory, ManyMediaAreDescribedOrNothingIsAppended) {
    for (orlTest::MemoryPlan const& plan : {OWN_MEMORY, THREADS_TOO}) {
        failEachAllocation(
            [](FailingMemory& memory) {
                Vector<String> paths;
                for (char const* const path : {"a/path/to/a/medium", "b", "missing", "broken", "c"}) {
                    paths.push_back(path);
                }
                Vector<String> documents;
                documents.push_back("what stood there before");
                bool const done = memory.run<std::system_error>([&] {
                    EXPECT_EQ(MediaMetadata::getMultipleMediaMetadata(paths, REFERENCE, TIME, documents),
                              Status::kFileNotFound);
                });
                ASSERT_EQ(documents.size(), done ? 4U : 1U);
                EXPECT_STREQ(documents[0].c_str(), "what stood there before");
                for (unsigned long i = 1; i < documents.size(); ++i) {
                    char const* const path = paths[i < 3 ? i - 1 : 4].c_str();
                    EXPECT_EQ(bytes(documents[i]), orlTest::documentOf(medium(path)));
                }
            },
            plan);
    }
}

TEST_F(MediaMetadataFailingMemory, ADocumentIsCompletedOrTheTextStays) {
    String const document = timeline(3);
    String expected;
    ASSERT_TRUE(MediaMetadata::sanitizeOTIOMetadata(document, expected, REFERENCE, TIME));
    for (orlTest::MemoryPlan const& plan : {OWN_MEMORY, THREADS_TOO}) {
        failEachAllocation(
            [&](FailingMemory& memory) {
                String completed("untouched");
                bool const done = memory.run<std::system_error>([&] {
                    EXPECT_TRUE(MediaMetadata::sanitizeOTIOMetadata(document, completed, REFERENCE, TIME));
                });
                EXPECT_EQ(bytes(completed), done ? bytes(expected) : "untouched");
            },
            plan);
    }
}

TEST_F(MediaMetadataFailingMemory, ADocumentThatIsItsOwnResultStaysWhenItIsNotCompleted) {
    String const document = timeline(1);
    String expected;
    ASSERT_TRUE(MediaMetadata::sanitizeOTIOMetadata(document, expected, REFERENCE, TIME));
    failEachAllocation([&](FailingMemory& memory) {
        String text(document);
        bool const done = memory.run(
            [&] { EXPECT_TRUE(MediaMetadata::sanitizeOTIOMetadata(text, text, REFERENCE, TIME)); });
        EXPECT_EQ(bytes(text), bytes(done ? expected : document));
    });
}

TEST_F(MediaMetadataFailingMemory, ALayoutIsMadeOrTheTextStays) {
    Vector<String> documents;
    documents.push_back(timeline(2));
    documents.push_back(timeline(1));
    String const name = "a layout with a name of some length";
    String expected;
    ASSERT_TRUE(
        MediaMetadata::getLayoutFromOTIOs(documents, MediaMetadata::kGrid, name, REFERENCE, expected));
    failEachAllocation([&](FailingMemory& memory) {
        String layout("untouched");
        bool const done = memory.run([&] {
            EXPECT_TRUE(
                MediaMetadata::getLayoutFromOTIOs(documents, MediaMetadata::kGrid, name, REFERENCE, layout));
        });
        EXPECT_EQ(bytes(layout), done ? bytes(expected) : "untouched");
    });
}

TEST_F(MediaMetadataFailingMemory, ALayoutOfPathsIsMadeOrTheTextStays) {
    Vector<String> paths;
    paths.push_back("a/path/to/a/medium");
    paths.push_back("missing");
    paths.push_back("b");
    String expected;
    ASSERT_TRUE(MediaMetadata::getLayoutFromFilepaths(paths, MediaMetadata::kGrid, "name", REFERENCE, TIME,
                                                      expected));
    failEachAllocation([&](FailingMemory& memory) {
        String const name = "name";
        String layout("untouched");
        bool const done = memory.run<std::system_error>([&] {
            EXPECT_TRUE(MediaMetadata::getLayoutFromFilepaths(paths, MediaMetadata::kGrid, name, REFERENCE,
                                                              TIME, layout));
        });
        EXPECT_EQ(bytes(layout), done ? bytes(expected) : "untouched");
        EXPECT_EQ(paths.size(), 3U);
    });
}

// Standard output goes nowhere, and documents on their way are printed there.
class Printing {
public:
    Printing() : m_output(dup(STDOUT_FILENO)) {
        std::fflush(stdout);
        int const nowhere = open("/dev/null", O_WRONLY | O_CLOEXEC);
        dup2(nowhere, STDOUT_FILENO);
        close(nowhere);
        Platform::setEnvVar("ORL_DEBUG_MEDIAMETADATA", "");
    }
    Printing(Printing const&) = delete;
    Printing& operator=(Printing const&) = delete;
    ~Printing() {
        unsetenv("ORL_DEBUG_MEDIAMETADATA");
        std::fflush(stdout);
        dup2(m_output, STDOUT_FILENO);
        close(m_output);
    }

private:
    int m_output;
};

TEST_F(MediaMetadataFailingMemory, DocumentsThatArePrintedChangeNothing) {
    String const document = timeline(1);
    Vector<String> documents;
    documents.push_back(document);
    String expected;
    ASSERT_TRUE(MediaMetadata::sanitizeOTIOMetadata(document, expected, REFERENCE, TIME));
    Printing const printing;
    failEachAllocation([&](FailingMemory& memory) {
        String const name = "name";
        String completed("untouched");
        String layout("untouched");
        bool const done = memory.run([&] {
            EXPECT_TRUE(MediaMetadata::sanitizeOTIOMetadata(document, completed, REFERENCE, TIME));
            EXPECT_TRUE(
                MediaMetadata::getLayoutFromOTIOs(documents, MediaMetadata::kGrid, name, REFERENCE, layout));
        });
        EXPECT_TRUE(bytes(completed) == bytes(expected) || (!done && bytes(completed) == "untouched"));
        EXPECT_EQ(bytes(layout) != "untouched", done);
    });
}

} // namespace
