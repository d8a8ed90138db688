// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#ifndef ORL_CACHE_STATS_H
#define ORL_CACHE_STATS_H

#include "orlExport.h"
#include "orlRefCounted.h"
#include "orlSharedPtr.h"
#include "orlVector.h"

namespace ORL_0_81 {

/// Which frames a cache holds.
///
/// A plain record without a lock: who shares it between threads guards it. Only its count is thread-safe.
class ORL_CORE_EXPORT CacheStats : public RefCountedMT {
public:
    /// A range of frames. Whether the end belongs to it is a matter between those who write and read it.
    struct ORL_CORE_EXPORT FrameRange {
        long long start = 0; ///< The first frame.
        long long end = 0;   ///< The last frame, or the one behind it.
    };

    /// Without any range.
    CacheStats();

    ~CacheStats() override;

    /// A new object without any range, never null.
    static SharedPtr<CacheStats> create();

    /// The ranges, in the order in which they were put in.
    Vector<FrameRange> frameRanges;
};

} // namespace ORL_0_81

#endif // ORL_CACHE_STATS_H
