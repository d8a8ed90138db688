// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "orlLocalInput.h"

extern "C" {
#include <libavformat/avio.h>
#include <libavutil/error.h>
#include <libavutil/mem.h>
}

#include <fcntl.h>
#include <poll.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdint>
#include <cstdio>

namespace ORL_0_81::media {

namespace {

constexpr int BUFFER_BYTES = 32 * 1024;

bool isReadable(struct stat const& status) { return S_ISREG(status.st_mode) || S_ISFIFO(status.st_mode); }

int errorOfUnreadable(struct stat const& status) {
    return AVERROR(S_ISDIR(status.st_mode) ? EISDIR : EINVAL);
}

} // namespace

FileDescriptor::~FileDescriptor() {
    if (m_number >= 0) {
        close(m_number);
    }
}

LocalInput::LocalInput(FileDescriptor descriptor, bool isRegular, ReadLimits& limits)
    : m_descriptor(std::move(descriptor)), m_isRegular(isRegular), m_limits(limits) {
    auto* const buffer = static_cast<unsigned char*>(av_malloc(BUFFER_BYTES));
    if (!buffer) {
        return;
    }
    using Seek = std::int64_t (*)(void*, std::int64_t, int);
    Seek const seekOfFile = [](void* opaque, std::int64_t offset, int whence) -> std::int64_t {
        return seek(opaque, offset, whence);
    };
    m_context = avio_alloc_context(buffer, BUFFER_BYTES, 0, this, &readPacket, nullptr,
                                   isRegular ? seekOfFile : nullptr);
    if (!m_context) {
        av_free(buffer);
    }
}

LocalInput::~LocalInput() {
    if (m_context) {
        av_freep(&m_context->buffer); // FFmpeg may have put another in the place of ours
        avio_context_free(&m_context);
    }
}

std::unique_ptr<LocalInput> LocalInput::open(std::string const& path, ReadLimits& limits, int& error) {
    struct stat status = {};
    if (stat(path.c_str(), &status) != 0) {
        error = AVERROR(errno);
        return nullptr;
    }
    if (!isReadable(status)) {
        error = errorOfUnreadable(status);
        return nullptr;
    }
    // Without O_NONBLOCK to open a pipe is to wait for its writer. Regular files don't mind.
    FileDescriptor descriptor(::open(path.c_str(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC));
    if (descriptor.get() < 0) {
        error = AVERROR(errno);
        return nullptr;
    }
    // The name may lead to something else by now.
    if (fstat(descriptor.get(), &status) != 0 || !isReadable(status)) {
        error = errorOfUnreadable(status);
        return nullptr;
    }
    bool const isRegular = S_ISREG(status.st_mode);
    if (!isRegular) {
        limits.expectWaiting();
    }
    std::unique_ptr<LocalInput> input(new LocalInput(std::move(descriptor), isRegular, limits));
    if (!input->m_context) {
        error = AVERROR(ENOMEM);
        return nullptr;
    }
    return input;
}

// Also waits for the first writer of a pipe to come; when the last one has gone, reading finds the end.
bool LocalInput::waitForData() {
    while (!m_limits.expired()) {
        pollfd question = {m_descriptor.get(), POLLIN, 0};
        if (poll(&question, 1, m_limits.waitMilliseconds()) > 0) {
            return true;
        }
    }
    return false;
}

int LocalInput::readPacket(void* opaque, unsigned char* buffer, int size) {
    auto* const self = static_cast<LocalInput*>(opaque);
    while (!self->m_limits.expired()) {
        if (!self->m_isRegular && !self->waitForData()) {
            break;
        }
        ssize_t const count = read(self->m_descriptor.get(), buffer, static_cast<std::size_t>(size));
        if (count > 0) {
            return static_cast<int>(count);
        }
        if (count == 0) {
            return AVERROR_EOF;
        }
        if (errno != EINTR && errno != EAGAIN) {
            return AVERROR(errno);
        }
    }
    return AVERROR_EXIT;
}

long long LocalInput::seek(void* opaque, long long offset, int whence) {
    auto const* const self = static_cast<LocalInput*>(opaque);
    if ((whence & AVSEEK_SIZE) != 0) {
        struct stat status = {};
        return fstat(self->m_descriptor.get(), &status) == 0 ? status.st_size : AVERROR(errno);
    }
    off_t const position = lseek(self->m_descriptor.get(), offset, whence & ~AVSEEK_FORCE);
    return position < 0 ? AVERROR(errno) : position;
}

} // namespace ORL_0_81::media
