// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "orlFrameTiming.h"

#include "internal/orlFrameRate.h"

extern "C" {
#include <libavutil/avstring.h>
#include <libavutil/mathematics.h>
}

#include <algorithm>
#include <cmath>
#include <new>
#include <vector>

namespace ORL_0_81::media {

namespace {

// How much of a movie without a list of its frames is looked at.
constexpr std::int64_t SAMPLE_FRAMES = 128;
constexpr std::int64_t SAMPLE_BYTES = 4 * 1024 * 1024;

// Frames that are shown later than some that come behind them. The format's limit is 16.
constexpr std::size_t REORDERED_FRAMES = 16;

struct FrameTimes {
    std::vector<std::int64_t> times; // ascending, in the units of the stream
    std::int64_t count = 0;          // of frames; bare streams of pictures have no times
    bool complete = false;           // they are all there is
};

// QuickTime and its heirs, and AVI. Fragmented movies have lists, too, but of their first fragment.
bool listsAllFrames(AVFormatContext const& format, AVStream const& stream) {
    bool const lists =
        av_match_name("mov", format.iformat->name) || av_match_name("avi", format.iformat->name);
    return lists && stream.nb_frames > 0 && avformat_index_get_entries_count(&stream) > 0;
}

FrameTimes readList(OpenMedium const& medium, AVStream& stream) {
    FrameTimes frames;
    int const count = avformat_index_get_entries_count(&stream);
    frames.times.reserve(static_cast<std::size_t>(count));
    frames.complete = true;
    for (int i = 0; i < count; ++i) {
        AVIndexEntry const* const entry = avformat_index_get_entry(&stream, i);
        if (medium.fileSize() >= 0 && entry->pos + entry->size > medium.fileSize()) {
            break;
        }
        if ((entry->flags & AVINDEX_DISCARD_FRAME) == 0) {
            frames.times.push_back(entry->timestamp);
        }
    }
    frames.count = static_cast<std::int64_t>(frames.times.size());
    std::sort(frames.times.begin(), frames.times.end());
    return frames;
}

Status readSample(OpenMedium& medium, AVStream const& stream, FrameTimes& frames) {
    PacketHandle const packet(av_packet_alloc());
    if (!packet) {
        throw std::bad_alloc();
    }
    std::int64_t bytes = 0;
    while (frames.count < SAMPLE_FRAMES && bytes < SAMPLE_BYTES) {
        int const error = av_read_frame(&medium.format(), packet.get());
        if (medium.limits().expired()) {
            return medium.statusOf(error);
        }
        if (error < 0) {
            frames.complete = true;
            break;
        }
        bytes += packet->size;
        if (packet->stream_index == stream.index) {
            ++frames.count;
            std::int64_t const time = packet->pts != AV_NOPTS_VALUE ? packet->pts : packet->dts;
            if (time != AV_NOPTS_VALUE) {
                frames.times.push_back(time);
            }
        }
        av_packet_unref(packet.get());
    }
    std::sort(frames.times.begin(), frames.times.end());
    return Status::kSuccess;
}

// Matroska tells how long a stream is in a tag, as hours, minutes and seconds: 00:00:01.042000000.
double secondsOfTag(AVStream const& stream) {
    AVDictionaryEntry const* const tag = av_dict_get(stream.metadata, "DURATION", nullptr, 0);
    if (!tag) {
        return 0.0;
    }
    double seconds = 0.0;
    double part = 0.0;
    double scale = 0.0; // of the next digit, once the point has come
    for (char const* c = tag->value; *c; ++c) {
        if (*c == ':') {
            seconds = (seconds + part) * 60.0;
            part = 0.0;
        } else if (*c == '.' && scale == 0.0) {
            scale = 0.1;
        } else if (*c >= '0' && *c <= '9') {
            part = scale > 0.0 ? part + scale * (*c - '0') : part * 10.0 + (*c - '0');
            scale *= 0.1;
        } else {
            return 0.0;
        }
    }
    return seconds + part;
}

} // namespace

std::int64_t statedFrameCount(OpenMedium const& medium, AVStream const& stream, AVRational rate) {
    AVFormatContext const& format = medium.format();
    if (stream.codecpar->codec_type == AVMEDIA_TYPE_VIDEO &&
        format.duration_estimation_method == AVFMT_DURATION_FROM_BITRATE) {
        return -1; // a guess from the size of the file, that pictures never keep to
    }
    std::int64_t count = -1;
    double const tagSeconds = secondsOfTag(stream);
    if (stream.duration != AV_NOPTS_VALUE && stream.duration > 0) {
        count = av_rescale_q(stream.duration, stream.time_base, av_inv_q(rate));
    } else if (tagSeconds > 0.0 && tagSeconds < 1e9) {
        count = std::llround(tagSeconds * av_q2d(rate));
    } else if (format.duration != AV_NOPTS_VALUE && format.duration > 0) {
        count = av_rescale_q(format.duration, AV_TIME_BASE_Q, av_inv_q(rate));
    } else {
        return -1;
    }
    return count < 0 ? -1 : std::max<std::int64_t>(count, 1);
}

Status findFrameTiming(OpenMedium& medium, AVStream& stream, FrameTiming& timing) {
    FrameTimes frames;
    bool const listed = listsAllFrames(medium.format(), stream);
    if (listed) {
        frames = readList(medium, stream);
    } else {
        Status const status = readSample(medium, stream, frames);
        if (!status) {
            return status;
        }
    }
    if (frames.complete && frames.count == 0) {
        return medium.statusOfNonsense();
    }
    if (!frames.complete) {
        frames.times.resize(frames.times.size() - std::min(frames.times.size(), REORDERED_FRAMES));
    }
    if (!findConstantRate(frames.times, stream.time_base, stream.r_frame_rate, stream.avg_frame_rate,
                          timing.rate)) {
        return Status::kVariableFps;
    }
    timing.count = frames.complete ? frames.count : statedFrameCount(medium, stream, timing.rate);
    return Status::kSuccess;
}

} // namespace ORL_0_81::media
