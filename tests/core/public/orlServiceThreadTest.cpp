// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "support/orlThreads.h"

#include <orlMediaMetadataReader.h>
#include <orlService.h>
#include <orlURLHandler.h>

#include <gtest/gtest.h>

#include <cstddef>

// Services that many threads look up at a time, between their beginning and their end.

namespace {

using namespace ORL_0_81;
using orlTest::onThreads;

constexpr std::size_t THREADS = 4;
constexpr int ROUNDS = 500;

class Handler : public URLHandler {
public:
    Status resolveUrl(String const& url, ResolvedUrl& resolved) override {
        resolved.setResolvedPath(url);
        return Status::kSuccess;
    }
};

class Reader : public MediaMetadataReader {
public:
    Status readMediaMetadata(String const&, Bounds const&, Time const&, String&) override {
        return Status::kSuccess;
    }
};

TEST(ServiceThreads, ManyLookUpAndShareOneServiceAtATime) {
    SharedPtr<Handler> const handler(new Handler);
    SharedPtr<Reader> const reader(new Reader);
    onThreads(THREADS, [&](std::size_t) {
        for (int round = 0; round < ROUNDS; ++round) {
            EXPECT_EQ(Service::getService(Service::kUrlHandlerService), handler);
            EXPECT_EQ(URLHandler::getURLHandler(), handler);
            EXPECT_EQ(MediaMetadata::getMediaMetadataReader(), reader);
            EXPECT_FALSE(Service::getService(Service::kMediaWriterService));
        }
    });
    EXPECT_EQ(handler->refcount(), 1);
    EXPECT_EQ(reader->refcount(), 1);
}

} // namespace
