// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#ifndef ORL_AUDIO_PROVIDER_INTERFACE_H
#define ORL_AUDIO_PROVIDER_INTERFACE_H

#include "orlAudioFormatInterface.h"
#include "orlExport.h"
#include "orlRefCounted.h"
#include "orlSharedPtr.h"
#include "orlStatus.h"
#include "orlSubjectObserver.h"

namespace ORL_0_81 {

/// A source of sound that others may listen in to. Other libraries implement it.
///
/// Held through SharedPtr; the count is thread-safe, and so is the set of observers, as Subject tells. The
/// rest is as the implementation tells.
class ORL_CORE_EXPORT AudioProviderInterface : public RefCountedMT, public Subject {
public:
    /// Tells that a buffer was filled, and with what. Borrows the buffer, so it is good for the call only.
    class ORL_CORE_EXPORT FillAudioBufferHint : public NotificationHint {
    public:
        /// Keeps the three values; the buffer stays the caller's.
        FillAudioBufferHint(char* data, unsigned long size, unsigned long startSample);
        ~FillAudioBufferHint() override;

        /// @{
        /// What fillAudioBuffer() was called with.
        char* getData() const;
        unsigned long getSize() const;
        unsigned long getStartSample() const;
        /// @}

    private:
        char* m_data; // borrowed
        unsigned long m_size;
        unsigned long m_startSample;
    };

    AudioProviderInterface();
    ~AudioProviderInterface() override;

    /// The format of what fillAudioBuffer() gives.
    virtual SharedPtr<AudioFormatInterface> getAudioFormat() const = 0;

    /// What fillAudioBuffer() calls to have the buffer filled; notifies nobody.
    virtual Status doFillAudioBuffer(char* data, unsigned long size, unsigned long startSample) = 0;

    /// Has doFillAudioBuffer() fill the caller's buffer of `size` bytes with what begins at `startSample`. If
    /// that succeeds, all observers are notified with a FillAudioBufferHint of the same values, on this
    /// thread and before this operation returns.
    ///
    /// \returns what doFillAudioBuffer() did. What the buffer holds after a failure is the implementation's
    /// affair.
    ///     An exception of an observer passes through.
    Status fillAudioBuffer(char* data, unsigned long size, unsigned long startSample);
};

} // namespace ORL_0_81

#endif // ORL_AUDIO_PROVIDER_INTERFACE_H
