// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "orlCacheStats.h"

namespace ORL_0_81 {

CacheStats::CacheStats() = default;

CacheStats::~CacheStats() = default;

SharedPtr<CacheStats> CacheStats::create() { return SharedPtr<CacheStats>(new CacheStats); }

} // namespace ORL_0_81
