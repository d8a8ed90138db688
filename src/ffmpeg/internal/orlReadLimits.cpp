// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "orlReadLimits.h"

#include <time.h> // NOLINT(modernize-deprecated-headers): clock_gettime is POSIX's

#include <cmath>

namespace ORL_0_81::media {

namespace {

double secondsOf(clockid_t clock) {
    timespec now = {};
    clock_gettime(clock, &now);
    return static_cast<double>(now.tv_sec) + 1e-9 * static_cast<double>(now.tv_nsec);
}

} // namespace

ReadLimits::ReadLimits(double seconds)
    : m_limit(seconds > 0.0 ? seconds : 0.0),
      m_clockStart(secondsOf(CLOCK_MONOTONIC)),
      m_workStart(secondsOf(CLOCK_THREAD_CPUTIME_ID)) {}

int ReadLimits::waitMilliseconds() const {
    constexpr double LONGEST = 1e9; // eleven days
    double const rest = 1000.0 * (m_limit - (secondsOf(CLOCK_MONOTONIC) - m_clockStart));
    if (rest <= 0.0) {
        return 0;
    }
    return static_cast<int>(std::ceil(rest < LONGEST ? rest : LONGEST));
}

bool ReadLimits::expired() {
    if (!m_waitedTooLong && !m_workedTooLong) {
        m_waitedTooLong = m_mayWait && secondsOf(CLOCK_MONOTONIC) - m_clockStart >= m_limit;
        m_workedTooLong = secondsOf(CLOCK_THREAD_CPUTIME_ID) - m_workStart >= m_limit;
    }
    return m_waitedTooLong || m_workedTooLong;
}

} // namespace ORL_0_81::media
