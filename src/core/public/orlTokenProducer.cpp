// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "orlTokenProducer.h"

namespace ORL_0_81 {

TokenProducer::ChangeHint::ChangeHint() = default;

TokenProducer::ChangeHint::~ChangeHint() = default;

TokenProducer::TokenProducer() = default;

TokenProducer::~TokenProducer() = default;

} // namespace ORL_0_81
