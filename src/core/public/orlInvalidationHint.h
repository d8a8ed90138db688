// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#ifndef ORL_INVALIDATION_HINT_H
#define ORL_INVALIDATION_HINT_H

#include "orlExport.h"
#include "orlSubjectObserver.h"

namespace ORL_0_81 {

/// Tells that what was known of a range of frames holds no longer.
///
/// Any two numbers are kept as they are given. Immutable but for assignment.
class ORL_CORE_EXPORT InvalidationHint : public NotificationHint {
public:
    /// Keeps both numbers.
    InvalidationHint(int startFrame, int endFrame);
    ~InvalidationHint() override;

    /// @{
    /// The numbers that were given.
    int getStartFrame() const;
    int getEndFrame() const;
    /// @}

private:
    int m_startFrame;
    int m_endFrame;
};

} // namespace ORL_0_81

#endif // ORL_INVALIDATION_HINT_H
