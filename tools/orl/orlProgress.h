// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#ifndef ORL_PROGRESS_H
#define ORL_PROGRESS_H

#include "orlStreams.h"

#include <chrono>
#include <cstddef>
#include <mutex>
#include <string>

namespace ORL_0_81::tool {

/// Shows on the error stream how far a long piece of work has come, if that is a terminal, and nothing
/// otherwise. Work that is soon done shows nothing either.
///
/// advance() may be called from any thread.
class Progress {
public:
    using Clock = std::chrono::steady_clock;

    /// \param label What is counted, such as "media read".
    /// \param total How many there are; 0 if nobody knows, which shows a count and no bar.
    Progress(Streams const& streams, std::string label, std::size_t total);
    Progress(Progress const&) = delete;
    Progress& operator=(Progress const&) = delete;

    /// Clears the line, so that what is told next stands on a clean one.
    ~Progress();

    /// One more is done.
    void advance();

    /// The line that tells of `done` out of `total`.
    static std::string line(std::string const& label, std::size_t done, std::size_t total);

private:
    Streams const& m_streams;
    std::string m_label;
    std::size_t m_total;
    std::mutex m_mutex;
    std::size_t m_done = 0;
    Clock::time_point m_nextDraw;
    bool m_isDrawn = false;
};

} // namespace ORL_0_81::tool

#endif // ORL_PROGRESS_H
