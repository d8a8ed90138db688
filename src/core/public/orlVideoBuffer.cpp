// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "orlVideoBuffer.h"

namespace ORL_0_81 {

VideoBuffer::VideoBuffer() = default;

VideoBuffer::~VideoBuffer() = default;

} // namespace ORL_0_81
