// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "orlProgressHint.h"

namespace ORL_0_81 {

ProgressHint::ProgressHint(double progress) : m_progress(progress) {}

ProgressHint::~ProgressHint() = default;

double ProgressHint::getProgress() const { return m_progress; }

} // namespace ORL_0_81
