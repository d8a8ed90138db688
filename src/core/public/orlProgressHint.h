// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#ifndef ORL_PROGRESS_HINT_H
#define ORL_PROGRESS_HINT_H

#include "orlExport.h"
#include "orlSubjectObserver.h"

namespace ORL_0_81 {

/// Tells how far a piece of work has come.
///
/// Any number is kept as it is given; who sends it and who receives it agree on the scale.
class ORL_CORE_EXPORT ProgressHint : public NotificationHint {
public:
    /// Keeps the number.
    explicit ProgressHint(double progress);
    ~ProgressHint() override;

    /// The number that was given.
    double getProgress() const;

private:
    double m_progress;
};

} // namespace ORL_0_81

#endif // ORL_PROGRESS_HINT_H
