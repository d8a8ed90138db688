// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#ifndef ORL_AUDIO_FORMAT_INTERFACE_H
#define ORL_AUDIO_FORMAT_INTERFACE_H

#include "orlExport.h"
#include "orlRefCounted.h"
#include "orlSharedPtr.h"

namespace ORL_0_81 {

/// How a stream of sound is laid out. Other libraries implement it.
///
/// Held through SharedPtr; the count is thread-safe, the rest is as the implementation tells. Of all the pure
/// operations this library calls getChannelCount() and getBitsPerSample() only, and what the others mean in
/// detail is settled between their implementors and their callers.
class ORL_CORE_EXPORT AudioFormatInterface : public RefCountedMT {
public:
    AudioFormatInterface();
    ~AudioFormatInterface() override;

    /// In samples per second of each channel.
    virtual int getSampleRate() const = 0;

    /// Of each moment.
    virtual int getChannelCount() const = 0;

    /// Which channel is which loudspeaker.
    virtual int getChannelLayout() const = 0;

    /// Of one channel.
    virtual int getBitsPerSample() const = 0;

    /// @{
    /// How a sample is stored: as a floating-point number, with its highest byte first, with a sign.
    virtual bool isFloat() const = 0;
    virtual bool isBigEndian() const = 0;
    virtual bool isSigned() const = 0;
    /// @}

    /// Whether the samples of all channels alternate.
    virtual bool isInterleaved() const = 0;

    /// Whether it is the format of any audio. What makes it so is the implementation's affair.
    virtual bool isValid() const = 0;
    /// Whether both are the same format, whatever their classes.
    virtual bool isEqual(AudioFormatInterface const& other) const = 0;

    /// An independent copy.
    virtual SharedPtr<AudioFormatInterface> clone() const = 0;

    /// The memory of `sampleCount` samples of each channel: channels times samples times bits, divided by 8
    /// and rounded down, so that 12 bits make 1 byte.
    ///
    /// Nothing is checked: the numbers are multiplied as unsigned 64-bit values, into which negative ones are
    /// extended by their sign.
    unsigned long getSizeInBytes(unsigned long sampleCount) const;
};

} // namespace ORL_0_81

#endif // ORL_AUDIO_FORMAT_INTERFACE_H
