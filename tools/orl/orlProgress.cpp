// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "orlProgress.h"

#include <algorithm>
#include <ostream>
#include <utility>

namespace ORL_0_81::tool {

namespace {

constexpr std::chrono::milliseconds kFirstDraw{300};
constexpr std::chrono::milliseconds kBetweenDraws{100};
constexpr std::size_t kBarWidth = 30;

// Back to the first column, and everything behind it cleared.
constexpr char const kClearLine[] = "\r\033[K";

} // namespace

Progress::Progress(Streams const& streams, std::string label, std::size_t total)
    : m_streams(streams), m_label(std::move(label)), m_total(total), m_nextDraw(Clock::now() + kFirstDraw) {}

Progress::~Progress() {
    if (m_isDrawn) {
        m_streams.error << kClearLine << std::flush;
    }
}

void Progress::advance() {
    std::lock_guard<std::mutex> const lock(m_mutex);
    ++m_done;
    if (!m_streams.isErrorTerminal || Clock::now() < m_nextDraw) {
        return;
    }
    m_streams.error << kClearLine << line(m_label, m_done, m_total) << std::flush;
    m_isDrawn = true;
    m_nextDraw = Clock::now() + kBetweenDraws;
}

std::string Progress::line(std::string const& label, std::size_t done, std::size_t total) {
    if (total == 0) {
        return std::to_string(done) + ' ' + label;
    }
    std::size_t const filled = std::min(kBarWidth, kBarWidth * done / total);
    return '[' + std::string(filled, '#') + std::string(kBarWidth - filled, '.') + "] " +
           std::to_string(done) + " of " + std::to_string(total) + ' ' + label;
}

} // namespace ORL_0_81::tool
