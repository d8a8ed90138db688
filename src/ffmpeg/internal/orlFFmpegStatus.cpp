// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "orlFFmpegStatus.h"

extern "C" {
#include <libavutil/error.h>
}

#include <cerrno>

namespace ORL_0_81::media {

namespace {

struct ErrorMeaning {
    int error;
    Status::Type status;
};

constexpr ErrorMeaning MEANINGS[] = {
    {AVERROR(ENOENT), Status::kFileNotFound},
    {AVERROR(ENOTDIR), Status::kFileNotFound},
    {AVERROR(ENAMETOOLONG), Status::kFileNotFound},
    {AVERROR_HTTP_NOT_FOUND, Status::kFileNotFound},
    {AVERROR(EACCES), Status::kIOAccess},
    {AVERROR(EPERM), Status::kIOAccess},
    {AVERROR(EIO), Status::kIOAccess},
    {AVERROR(EMFILE), Status::kIOAccess},
    {AVERROR(ENFILE), Status::kIOAccess},
    {AVERROR(ESTALE), Status::kIOAccess},
    {AVERROR(ETIMEDOUT), Status::kIOAccess},
    {AVERROR(ECONNREFUSED), Status::kIOAccess},
    {AVERROR(ECONNRESET), Status::kIOAccess},
    {AVERROR(EHOSTUNREACH), Status::kIOAccess},
    {AVERROR(ENETUNREACH), Status::kIOAccess},
    {AVERROR_EXIT, Status::kIOAccess},
    {AVERROR_HTTP_UNAUTHORIZED, Status::kIOAccess},
    {AVERROR_HTTP_FORBIDDEN, Status::kIOAccess},
    {AVERROR_HTTP_SERVER_ERROR, Status::kIOAccess},
    {AVERROR_PROTOCOL_NOT_FOUND, Status::kIOAccess},
    {AVERROR_DEMUXER_NOT_FOUND, Status::kUnsupportedFormat},
    {AVERROR_DECODER_NOT_FOUND, Status::kUnsupportedCodec},
};

} // namespace

Status statusOfError(int error) {
    for (ErrorMeaning const& meaning : MEANINGS) {
        if (meaning.error == error) {
            return meaning.status;
        }
    }
    return Status::kErrorOpeningMediaFile;
}

} // namespace ORL_0_81::media
