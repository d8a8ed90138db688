// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "orlMediaMetadataReader.h"

#include <clocale>
#include <exception>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

namespace ORL_0_81 {

namespace {

// Guards the calls of setlocale, which may not meet; never held while a reader works.
std::mutex localeMutex;

// The "C" locale for a read, whose reader turns numbers into text and back.
//
// What is saved is what the call that sets "C" returns, so the name of the new locale, and that is what is
// put back: nobody asks for the locale before. A process stays in "C" after its first read.
class LocaleGuard {
public:
    LocaleGuard() {
        std::lock_guard<std::mutex> const lock(localeMutex);
        if (char const* const name = std::setlocale(m_category, "C")) {
            m_savedName = name;
            m_saved = true;
        }
    }

    LocaleGuard(LocaleGuard const&) = delete;
    LocaleGuard& operator=(LocaleGuard const&) = delete;

    ~LocaleGuard() {
        if (m_saved) {
            std::lock_guard<std::mutex> const lock(localeMutex);
            std::setlocale(m_category, m_savedName.c_str());
        }
    }

private:
    bool m_saved = false;
    int m_category = LC_ALL;
    std::string m_savedName;
};

// One of many reads. Written by its own thread, and by others only when that has ended.
struct PendingRead {
    std::thread thread;
    String metadata;
    Status status;
    std::exception_ptr exception;
};

void joinAll(std::vector<PendingRead>& reads) {
    for (PendingRead& read : reads) {
        if (read.thread.joinable()) {
            read.thread.join();
        }
    }
}

} // namespace

MediaMetadataReader::MediaMetadataReader() : Service(kMediaMetadataReaderService) {}

MediaMetadataReader::~MediaMetadataReader() = default;

SharedPtr<MediaMetadataReader> MediaMetadata::getMediaMetadataReader() {
    return staticPointerCast<MediaMetadataReader>(Service::getService(Service::kMediaMetadataReaderService));
}

Status MediaMetadata::getMediaMetadata(String const& path, Bounds const& bounds, Time const& time,
                                       String& metadata) {
    if (time.isUndefined()) {
        return Status::kUndefinedTime;
    }
    SharedPtr<MediaMetadataReader> const reader = getMediaMetadataReader();
    if (!reader) {
        return Status::kMediaReaderUnavailable;
    }
    LocaleGuard const locale;
    return reader->readMediaMetadata(path, bounds, time, metadata);
}

Status MediaMetadata::getMultipleMediaMetadata(Vector<String> const& paths, Bounds const& bounds,
                                               Time const& time, Vector<String>& metadata) {
    // The reads are never moved once a thread knows its own.
    std::vector<PendingRead> reads(paths.size());
    try {
        for (unsigned long i = 0; i < reads.size(); ++i) {
            PendingRead& read = reads[i];
            read.thread = std::thread([&read, &bounds, &time, path = paths[i]] {
                try {
                    read.status = getMediaMetadata(path, bounds, time, read.metadata);
                } catch (...) {
                    read.exception = std::current_exception();
                }
            });
        }
    } catch (...) {
        joinAll(reads);
        throw;
    }

    joinAll(reads);
    for (PendingRead const& read : reads) {
        if (read.exception) {
            std::rethrow_exception(read.exception);
        }
    }

    Status result;
    for (PendingRead const& read : reads) {
        if (read.status) {
            metadata.push_back(read.metadata);
        } else if (result && read.status != Status::kErrorOpeningMediaFile) {
            result = read.status;
        }
    }
    return result;
}

} // namespace ORL_0_81
