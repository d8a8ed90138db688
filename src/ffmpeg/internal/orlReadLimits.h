// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#ifndef ORL_READ_LIMITS_H
#define ORL_READ_LIMITS_H

namespace ORL_0_81::media {

/// How long one medium may take.
///
/// Work is measured in the processor's time of this thread, on which all of it happens, so that a busy
/// machine fails no medium. Waiting counts only where somebody may keep us waiting: see expectWaiting().
///
/// Belongs to the thread that makes it.
class ReadLimits {
public:
    /// \param seconds The limit of either kind.
    explicit ReadLimits(double seconds);

    /// From now on the time of the clock counts as well.
    void expectWaiting() { m_mayWait = true; }

    /// The rest of the clock's time in milliseconds, at least 0, and no more than an int holds.
    int waitMilliseconds() const;

    /// Once true it stays so.
    bool expired();

    /// True if it was the waiting that took too long.
    bool waitedTooLong() const { return m_waitedTooLong; }

private:
    double m_limit;
    double m_clockStart;
    double m_workStart;
    bool m_mayWait = false;
    bool m_waitedTooLong = false;
    bool m_workedTooLong = false;
};

} // namespace ORL_0_81::media

#endif // ORL_READ_LIMITS_H
