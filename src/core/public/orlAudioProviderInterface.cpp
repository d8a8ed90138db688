// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "orlAudioProviderInterface.h"

namespace ORL_0_81 {

AudioProviderInterface::FillAudioBufferHint::FillAudioBufferHint(char* data, unsigned long size,
                                                                 unsigned long startSample)
    : m_data(data), m_size(size), m_startSample(startSample) {}

AudioProviderInterface::FillAudioBufferHint::~FillAudioBufferHint() = default;

char* AudioProviderInterface::FillAudioBufferHint::getData() const { return m_data; }

unsigned long AudioProviderInterface::FillAudioBufferHint::getSize() const { return m_size; }

unsigned long AudioProviderInterface::FillAudioBufferHint::getStartSample() const { return m_startSample; }

AudioProviderInterface::AudioProviderInterface() = default;

AudioProviderInterface::~AudioProviderInterface() = default;

Status AudioProviderInterface::fillAudioBuffer(char* data, unsigned long size, unsigned long startSample) {
    Status const status = doFillAudioBuffer(data, size, startSample);
    if (status.success()) {
        notify(FillAudioBufferHint(data, size, startSample));
    }
    return status;
}

} // namespace ORL_0_81
