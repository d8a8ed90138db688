// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "support/orlFailingMemory.h"

#include <orlMediaMetadataReader.h>
#include <orlPrefs.h>
#include <orlService.h>
#include <orlURLHandler.h>
#include <orlVideoBuffer.h>

#include <gtest/gtest.h>

#include <new>
#include <string>

// What the registry knows of a service that could not be made, and the small classes around services.

namespace {

using namespace ORL_0_81;
using orlTest::failEachAllocation;
using orlTest::FailingMemory;

class Handler : public URLHandler {
public:
    Handler() : m_own("a member that takes an allocation in the derived constructor") {}

    Status resolveUrl(String const& url, ResolvedUrl& resolved) override {
        ResolvedUrl result;
        result.setResolvedPath("/local" + url);
        result.setOriginalFilename(url);
        result.setExpirationTime(7);
        resolved = result;
        return Status::kSuccess;
    }

private:
    String m_own;
};

TEST(ServiceFailingMemory, AServiceThatCannotBeMadeIsNotFound) {
    failEachAllocation([](FailingMemory& memory) {
        SharedPtr<URLHandler> handler;
        bool const done = memory.run([&] { handler.reset(new Handler); });
        EXPECT_EQ(URLHandler::getURLHandler() != nullptr, done);
        EXPECT_EQ(URLHandler::getURLHandler(), handler);
        EXPECT_FALSE(MediaMetadata::getMediaMetadataReader());
        handler.reset();
        EXPECT_FALSE(Service::getService(Service::kUrlHandlerService));
    });
}

TEST(ServiceFailingMemory, AServiceWhoseOwnMemoryFailsHasTakenThePlaceOfAnEarlierOne) {
    failEachAllocation([](FailingMemory& memory) {
        SharedPtr<URLHandler> const earlier(new Handler);
        SharedPtr<URLHandler> later;
        bool const done = memory.run([&] { later.reset(new Handler); });
        SharedPtr<URLHandler> const found = URLHandler::getURLHandler();
        EXPECT_TRUE(done ? found == later : (!found || found == earlier));
    });
}

TEST(URLHandlerFailingMemory, AnAnswerIsWholeOrAsItWas) {
    failEachAllocation([](FailingMemory& memory) {
        SharedPtr<URLHandler> const handler(new Handler);
        URLHandler::ResolvedUrl resolved;
        resolved.setResolvedPath("before");
        String const url = "/a/url/that/takes/an/allocation/of/its/own";
        bool const done = memory.run([&] {
            EXPECT_TRUE(handler->resolveUrl(url, resolved));
            URLHandler::ResolvedUrl const copy(resolved);
        });
        bool const isNew = resolved.getExpirationTime() == 7;
        EXPECT_TRUE(isNew || !done);
        EXPECT_EQ(std::string(resolved.getResolvedPath().c_str()),
                  isNew ? std::string("/local") + url.c_str() : "before");
    });
}

class Integers : public Prefs {
public:
    Status getPrefNames(Vector<String>& names) const override {
        for (String const* const name : {&READER_CACHE_THREADS, &RECORDER_FRAME_RATE}) {
            names.push_back(*name);
        }
        return Status::kSuccess;
    }
};

TEST(PrefsFailingMemory, NamesAreAppendedOrNotAndTheConstantsStay) {
    alignas(Integers) static unsigned char room[sizeof(Integers)];
    static Integers const* const prefs = new (room) Integers; // never destroyed
    failEachAllocation([](FailingMemory& memory) {
        Vector<String> names;
        bool const done = memory.run([&] { prefs->getPrefNames(names); });
        EXPECT_TRUE(names.size() == 2 || !done);
        EXPECT_STREQ(Prefs::READER_CACHE_THREADS.c_str(), "READER_CACHE_THREADS");
    });
}

class Image : public VideoBuffer {
public:
    explicit Image(unsigned long size) : m_bytes(size, 0.0) {}

    VideoBufferResolution getResolution() const override { return m_resolution; }
    void* getData() override { return &m_bytes[0]; }
    void const* getData() const override { return &m_bytes[0]; }
    unsigned long getSize() const override { return m_bytes.size() * sizeof(double); }
    SharedPtr<VideoBuffer> clone() const override { return SharedPtr<VideoBuffer>(new Image(*this)); }

private:
    VideoBufferResolution m_resolution;
    Vector<double> m_bytes;
};

TEST(VideoBufferFailingMemory, AnImageIsMadeWholeOrNotAtAll) {
    failEachAllocation([](FailingMemory& memory) {
        SharedPtr<VideoBuffer> image;
        SharedPtr<VideoBuffer> copy;
        bool const done = memory.run([&] {
            image.reset(new Image(10));
            copy = image->clone();
            static_cast<void>(copy->getResolution().isValid());
        });
        EXPECT_TRUE(!done || (image && copy));
        if (image) {
            EXPECT_EQ(image->refcount(), 1);
        }
    });
}

} // namespace
