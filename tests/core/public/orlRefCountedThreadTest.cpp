// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "support/orlThreads.h"

#include <orlAnnotation.h>
#include <orlAudioProviderInterface.h>
#include <orlCacheStats.h>
#include <orlCrypto.h>
#include <orlJobDispatcher.h>
#include <orlMediaMetadataReader.h>
#include <orlURLHandler.h>
#include <orlVideoBuffer.h>

#include <gtest/gtest.h>

#include <atomic>
#include <cstddef>
#include <string>
#include <vector>

// Every class whose count is said to be thread-safe: threads share an object, and whichever comes last ends it.

namespace {

using namespace ORL_0_81;
using orlTest::onThreads;

constexpr std::size_t THREADS = 4;
constexpr int ROUNDS = 200;

// What each pure operation is here for does not matter.

class Format : public AudioFormatInterface {
public:
    int getSampleRate() const override { return 48000; }
    int getChannelCount() const override { return 2; }
    int getChannelLayout() const override { return 0; }
    int getBitsPerSample() const override { return 16; }
    bool isFloat() const override { return false; }
    bool isBigEndian() const override { return false; }
    bool isSigned() const override { return true; }
    bool isInterleaved() const override { return true; }
    bool isValid() const override { return true; }
    bool isEqual(AudioFormatInterface const& other) const override { return this == &other; }
    SharedPtr<AudioFormatInterface> clone() const override { return nullptr; }
};

class Tone : public AudioProviderInterface {
public:
    SharedPtr<AudioFormatInterface> getAudioFormat() const override { return nullptr; }
    Status doFillAudioBuffer(char*, unsigned long, unsigned long) override { return Status::kSuccess; }
};

class PlainEncrypter : public Encrypter {
public:
    Status encrypt(Buffer const&, Buffer&) override { return Status::kSuccess; }
};

class PlainDecrypter : public Decrypter {
public:
    Status decrypt(Buffer const&, Buffer&) override { return Status::kSuccess; }
};

class Job : public JobDispatcher::JobBase {
public:
    void run() override {}
};

class Image : public VideoBuffer {
public:
    VideoBufferResolution getResolution() const override { return VideoBufferResolution(); }
    void* getData() override { return nullptr; }
    void const* getData() const override { return nullptr; }
    unsigned long getSize() const override { return 0; }
    SharedPtr<VideoBuffer> clone() const override { return nullptr; }
};

class Handler : public URLHandler {
public:
    Status resolveUrl(String const&, ResolvedUrl&) override { return Status::kSuccess; }
};

class Reader : public MediaMetadataReader {
public:
    Status readMediaMetadata(String const&, Bounds const&, Time const&, String&) override {
        return Status::kSuccess;
    }
};

std::atomic<int> ended{0};

template <class T>
class Watched : public T {
public:
    Watched() = default;
    Watched(Watched const&) = delete;
    Watched& operator=(Watched const&) = delete;
    ~Watched() override {
        ++ended;
        m_written = -1;
    }

    int m_written = 0; // by the thread that shares it out
};

template <class T>
class CountedThreads : public testing::Test {};

using CountedTypes =
    testing::Types<Annotation::Layer, Annotation::Paint, Annotation::Text, CacheStats, Format, Tone,
                   PlainEncrypter, PlainDecrypter, Job, Image, Handler, Reader>;

struct CountedNames {
    template <class T>
    static std::string GetName(int number) {
        char const* const names[] = {"Layer",       "Paint",         "Text",       "CacheStats",
                                     "AudioFormat", "AudioProvider", "Encrypter",  "Decrypter",
                                     "Job",         "VideoBuffer",   "URLHandler", "MediaMetadataReader"};
        return names[number];
    }
};

TYPED_TEST_SUITE(CountedThreads, CountedTypes, CountedNames);

TYPED_TEST(CountedThreads, TheLastOfManyThreadsEndsTheObjectOnce) {
    using Object = Watched<TypeParam>;
    for (int round = 0; round < ROUNDS; ++round) {
        ended = 0;
        std::vector<SharedPtr<Object>> shares(THREADS);
        {
            SharedPtr<Object> const first(new Object);
            first->m_written = round;
            for (SharedPtr<Object>& share : shares) {
                share = first;
            }
        }
        onThreads(THREADS, [&](std::size_t t) {
            SharedPtr<Object> const own(shares[t]);
            SharedPtr<RefCountedMT> const base(own);
            EXPECT_EQ(own->m_written, round);
            EXPECT_GE(base->refcount(), 2);
            shares[t].reset();
        });
        EXPECT_EQ(ended, 1);
    }
}

} // namespace
