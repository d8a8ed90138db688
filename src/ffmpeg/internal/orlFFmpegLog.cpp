// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "orlFFmpegLog.h"

extern "C" {
#include <libavutil/log.h>
}

#include <cstdarg>
#include <mutex>

namespace ORL_0_81::media {

namespace {

// FFmpeg has one level and one callback for the whole process, which are not ours alone.
thread_local bool isSilent = false;

void logUnlessSilent(void* object, int level, char const* format, va_list arguments) {
    if (!isSilent) {
        av_log_default_callback(object, level, format, arguments);
    }
}

} // namespace

LogSilence::LogSilence(bool enabled) { isSilent = enabled; }

LogSilence::~LogSilence() { isSilent = false; }

void LogSilence::install() {
    static std::once_flag once;
    std::call_once(once, [] { av_log_set_callback(&logUnlessSilent); });
}

} // namespace ORL_0_81::media
