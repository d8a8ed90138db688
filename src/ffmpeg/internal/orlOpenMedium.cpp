// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "orlOpenMedium.h"

#include "internal/orlFFmpegStatus.h"

#include <cstring>
#include <new>

namespace ORL_0_81::media {

namespace {

// Scores up to this one are guesses, from the name alone or from a few bytes that look alike.
constexpr int HARDLY_RECOGNISED = AVPROBE_SCORE_RETRY;

// The header of an OpenEXR file fits in, unless somebody put a thumbnail in it.
constexpr int EXR_HEADER_BYTES = 64 * 1024;

// Formats that are not media: text as a terminal shows it, and lists whose entries FFmpeg opens past us.
constexpr char const* REFUSED_FORMATS[] = {"tty", "concat", "sdp"};

bool isRefused(AVInputFormat const& format) {
    for (char const* const name : REFUSED_FORMATS) {
        if (std::strcmp(format.name, name) == 0) {
            return true;
        }
    }
    return false;
}

} // namespace

OpenMedium::OpenMedium(ProtocolList const& allowed, ReadLimits& limits)
    : m_limits(limits), m_inputs(allowed, limits), m_format(avformat_alloc_context()) {
    if (!m_format || !m_inputs.attachTo(*m_format)) {
        throw std::bad_alloc();
    }
}

OpenMedium::~OpenMedium() = default;

Status OpenMedium::open(MediaLocation const& location, std::string const& text) {
    AVIOContext* context = nullptr;
    std::string url;
    int error = m_inputs.open(location, text, *m_format, context, url);
    if (error < 0) {
        return statusOf(error);
    }
    std::int64_t const size = avio_size(context);
    m_fileSize = size >= 0 ? size : -1;
    if (m_fileSize == 0) {
        return Status::kErrorOpeningMediaFile;
    }
    Status const status = recognise(*context, url);
    if (!status) {
        return status;
    }
    readExrBytes(*context);

    AVFormatContext* format = m_format.release(); // freed by the call if that fails
    format->pb = context;
    error = avformat_open_input(&format, url.c_str(), m_inputFormat, nullptr);
    m_format.reset(format);
    if (error < 0) {
        Status const reason = statusOf(error);
        return reason == Status::kErrorOpeningMediaFile ? statusOfNonsense() : reason;
    }
    return Status::kSuccess;
}

Status OpenMedium::recognise(AVIOContext& context, std::string const& url) {
    int const score = av_probe_input_buffer2(&context, &m_inputFormat, url.c_str(), nullptr, 0, 0);
    if (m_limits.expired()) {
        return statusOf(AVERROR_EXIT);
    }
    if (context.error < 0 && context.error != AVERROR_EOF) {
        return statusOf(context.error);
    }
    if (score < 0 || !m_inputFormat || isRefused(*m_inputFormat)) {
        return Status::kUnsupportedFormat;
    }
    m_score = score;
    return Status::kSuccess;
}

void OpenMedium::readExrBytes(AVIOContext& context) {
    if (std::strcmp(m_inputFormat->name, "exr_pipe") != 0 || (context.seekable & AVIO_SEEKABLE_NORMAL) == 0) {
        return;
    }
    m_exrBytes.resize(EXR_HEADER_BYTES);
    int const count =
        avio_read(&context, reinterpret_cast<unsigned char*>(m_exrBytes.data()), EXR_HEADER_BYTES);
    m_exrBytes.resize(count > 0 ? static_cast<std::size_t>(count) : 0);
    avio_seek(&context, 0, SEEK_SET);
}

Status OpenMedium::findStreamParameters() {
    int const error = avformat_find_stream_info(m_format.get(), nullptr);
    if (error < 0 || m_limits.expired()) {
        return statusOf(error < 0 ? error : AVERROR_EXIT);
    }
    return Status::kSuccess;
}

bool OpenMedium::isStillImage() const {
    // FFmpeg calls a format so that takes images one after the other, without anything around them.
    constexpr char const PIPE[] = "_pipe";
    std::size_t const length = std::strlen(m_inputFormat->name);
    return length >= sizeof PIPE && std::strcmp(m_inputFormat->name + length - (sizeof PIPE - 1), PIPE) == 0;
}

Status OpenMedium::statusOfNonsense() const {
    return m_score <= HARDLY_RECOGNISED ? Status::kUnsupportedFormat : Status::kErrorOpeningMediaFile;
}

Status OpenMedium::statusOf(int error) const {
    if (m_limits.expired()) {
        return m_limits.waitedTooLong() ? Status::kIOAccess : Status::kErrorOpeningMediaFile;
    }
    return statusOfError(error);
}

} // namespace ORL_0_81::media
