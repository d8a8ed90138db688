// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#ifndef ORL_FFMPEG_LOG_H
#define ORL_FFMPEG_LOG_H

namespace ORL_0_81::media {

/// Keeps FFmpeg's log quiet on this thread while it exists. One at a time on a thread.
class LogSilence {
public:
    /// \param enabled False for an object that does nothing.
    explicit LogSilence(bool enabled);
    LogSilence(LogSilence const&) = delete;
    LogSilence& operator=(LogSilence const&) = delete;
    ~LogSilence();

    /// Makes FFmpeg ask this class; once in a process, however often it is called. What is not silenced goes
    /// to FFmpeg's default.
    static void install();
};

} // namespace ORL_0_81::media

#endif // ORL_FFMPEG_LOG_H
