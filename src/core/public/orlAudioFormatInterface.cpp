// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "orlAudioFormatInterface.h"

namespace ORL_0_81 {

AudioFormatInterface::AudioFormatInterface() = default;

AudioFormatInterface::~AudioFormatInterface() = default;

unsigned long AudioFormatInterface::getSizeInBytes(unsigned long sampleCount) const {
    // A conversion from int to a wider unsigned type extends the sign.
    auto const channelCount = static_cast<unsigned long>(getChannelCount());
    unsigned long const allSamples = channelCount * sampleCount;
    auto const bitsPerSample = static_cast<unsigned long>(getBitsPerSample());
    return (allSamples * bitsPerSample) >> 3;
}

} // namespace ORL_0_81
