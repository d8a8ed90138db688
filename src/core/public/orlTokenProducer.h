// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#ifndef ORL_TOKEN_PRODUCER_H
#define ORL_TOKEN_PRODUCER_H

#include "orlExport.h"
#include "orlList.h"
#include "orlRefCounted.h"
#include "orlSharedPtr.h"
#include "orlStatus.h"
#include "orlSubjectObserver.h"
#include "orlToken.h"

namespace ORL_0_81 {

/// A source of tokens, which tells its observers when it offers others than before.
///
/// A derived class decides when that is the case, and calls `notify(ChangeHint())`. Nothing here does.
///
/// Held through SharedPtr. The count is not atomic, so a producer stays on one thread at a time; only its set
/// of observers is guarded, as Subject tells.
class ORL_CORE_EXPORT TokenProducer : public Subject, public RefCountedST {
public:
    /// The tokens are others than before. That it is of this type is all that it says.
    class ORL_CORE_EXPORT ChangeHint : public NotificationHint {
    public:
        ChangeHint();
        ~ChangeHint() override;
    };

    /// Without observers.
    TokenProducer();

    ~TokenProducer() override;

    /// Appends the tokens that this producer offers now to `tokens`, which may hold others. A null entry is
    /// passed over by whoever asks.
    virtual Status getTokens(List<SharedPtr<Token>>& tokens) = 0;
};

} // namespace ORL_0_81

#endif // ORL_TOKEN_PRODUCER_H
