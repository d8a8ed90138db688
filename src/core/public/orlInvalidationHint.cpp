// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "orlInvalidationHint.h"

namespace ORL_0_81 {

InvalidationHint::InvalidationHint(int startFrame, int endFrame)
    : m_startFrame(startFrame), m_endFrame(endFrame) {}

InvalidationHint::~InvalidationHint() = default;

int InvalidationHint::getStartFrame() const { return m_startFrame; }

int InvalidationHint::getEndFrame() const { return m_endFrame; }

} // namespace ORL_0_81
