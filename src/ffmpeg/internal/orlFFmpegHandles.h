// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#ifndef ORL_FFMPEG_HANDLES_H
#define ORL_FFMPEG_HANDLES_H

extern "C" {
#include <libavcodec/packet.h>
#include <libavformat/avformat.h>
}

#include <memory>

/// \file
/// Owners of FFmpeg's objects.

namespace ORL_0_81::media {

struct FormatDeleter {
    /// Open or not: an input that was never opened has only its options to free.
    void operator()(AVFormatContext* format) const { avformat_close_input(&format); }
};

struct PacketDeleter {
    void operator()(AVPacket* packet) const { av_packet_free(&packet); }
};

using FormatHandle = std::unique_ptr<AVFormatContext, FormatDeleter>;
using PacketHandle = std::unique_ptr<AVPacket, PacketDeleter>;

} // namespace ORL_0_81::media

#endif // ORL_FFMPEG_HANDLES_H
