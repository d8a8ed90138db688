// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "orlMediaInputs.h"

extern "C" {
#include <libavutil/error.h>
#include <libavutil/mem.h>
}

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <new>
#include <utility>

namespace ORL_0_81::media {

MediaInputs::MediaInputs(ProtocolList const& allowed, ReadLimits& limits)
    : m_allowed(allowed), m_limits(limits) {}

MediaInputs::~MediaInputs() {
    if (m_remoteMedium) {
        avio_close(m_remoteMedium);
    }
}

bool MediaInputs::attachTo(AVFormatContext& format) {
    // Without "file" in it: local files are opened here, and by no other way.
    format.protocol_whitelist = av_strdup(m_allowed.text().c_str());
    m_openAsFFmpeg = format.io_open;
    format.opaque = this;
    format.io_open = &openReferenced;
    format.io_close2 = &closeInput;
    format.interrupt_callback.callback = &isInterrupted;
    format.interrupt_callback.opaque = this;
    return format.protocol_whitelist != nullptr;
}

int MediaInputs::open(MediaLocation const& location, std::string const& text, AVFormatContext& format,
                      AVIOContext*& context, std::string& url) {
    if (!location.protocol.empty()) {
        if (!m_allowed.contains(location.protocol)) {
            return AVERROR(EPERM);
        }
        url = text;
        int const error = openRemote(format, url.c_str(), AVIO_FLAG_READ, nullptr, context);
        m_remoteMedium = error < 0 ? nullptr : context;
        return error;
    }
    int error = AVERROR(ENOENT);
    for (std::string const& path : location.localPaths) {
        error = openLocal(path, context);
        if (error != AVERROR(ENOENT)) {
            url = "file:" + path; // a name may have a colon in it
            break;
        }
    }
    return error;
}

int MediaInputs::openLocal(std::string const& path, AVIOContext*& context) {
    int error = 0;
    std::unique_ptr<LocalInput> input = LocalInput::open(path, m_limits, error);
    if (!input) {
        m_hasLackedMemory = m_hasLackedMemory || error == AVERROR(ENOMEM);
        return error;
    }
    m_localInputs.push_back(std::move(input));
    context = m_localInputs.back()->context();
    return 0;
}

int MediaInputs::openRemote(AVFormatContext& format, char const* url, int flags, AVDictionary** options,
                            AVIOContext*& context) {
    m_limits.expectWaiting();
    // FFmpeg compares with the format's own URL, which it only gets when the medium is open. It makes a copy
    // then, without a look at what stood there.
    char* const own = format.url;
    std::string text = url;
    format.url = own ? own : text.data();
    int const error = m_openAsFFmpeg(&format, &context, url, flags, options);
    format.url = own;
    return error;
}

int MediaInputs::openReferenced(AVFormatContext& format, char const* url, int flags, AVDictionary** options,
                                AVIOContext*& context) {
    if ((flags & AVIO_FLAG_WRITE) != 0) {
        return AVERROR(EPERM);
    }
    // A playlist that is still being written makes FFmpeg wait for its next entry.
    m_limits.expectWaiting();
    char const* const protocol = avio_find_protocol_name(url);
    if (!protocol) {
        return AVERROR_PROTOCOL_NOT_FOUND;
    }
    if (m_allowed.contains(protocol)) {
        return openRemote(format, url, flags, options, context);
    }
    MediaLocation const location = findLocation(url, ProtocolList());
    if (std::strcmp(protocol, "file") != 0 || m_remoteMedium || location.localPaths.empty()) {
        m_hasRefused = true;
        return AVERROR(EPERM);
    }
    return openLocal(location.localPaths.front(), context);
}

int MediaInputs::close(AVIOContext* context) {
    auto const found = std::find_if(
        m_localInputs.begin(), m_localInputs.end(),
        [context](std::unique_ptr<LocalInput> const& input) { return input->context() == context; });
    if (found == m_localInputs.end()) {
        return avio_close(context);
    }
    m_localInputs.erase(found);
    return 0;
}

int MediaInputs::openReferenced(AVFormatContext* format, AVIOContext** context, char const* url, int flags,
                                AVDictionary** options) {
    auto* const self = static_cast<MediaInputs*>(format->opaque);
    *context = nullptr;
    try {
        return self->openReferenced(*format, url, flags, options, *context);
    } catch (std::bad_alloc const&) {
        self->m_hasLackedMemory = true;
        return AVERROR(ENOMEM); // no exception passes through FFmpeg
    }
}

int MediaInputs::closeInput(AVFormatContext* format, AVIOContext* context) {
    return static_cast<MediaInputs*>(format->opaque)->close(context);
}

int MediaInputs::isInterrupted(void* opaque) {
    return static_cast<MediaInputs*>(opaque)->m_limits.expired() ? 1 : 0;
}

} // namespace ORL_0_81::media
