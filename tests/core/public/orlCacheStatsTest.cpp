// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include <orlCacheStats.h>

#include <gtest/gtest.h>

#include <type_traits>

namespace {

using namespace ORL_0_81;

TEST(CacheStatsTest, IsCreatedEmptyAndHeldOnce) {
    SharedPtr<CacheStats> const stats = CacheStats::create();
    ASSERT_TRUE(stats);
    EXPECT_EQ(stats->refcount(), 1);
    EXPECT_TRUE(stats->frameRanges.empty());
    EXPECT_NE(CacheStats::create(), stats) << "a new one each time";
}

TEST(CacheStatsTest, KeepsItsRanges) {
    SharedPtr<CacheStats> const stats = CacheStats::create();
    stats->frameRanges.push_back({1, 100});
    stats->frameRanges.push_back({-9223372036854775807LL - 1, 9223372036854775807LL});
    EXPECT_EQ(stats->frameRanges.size(), 2U);
    EXPECT_EQ(stats->frameRanges[0].start, 1);
    EXPECT_EQ(stats->frameRanges[0].end, 100);
    EXPECT_EQ(stats->frameRanges[1].start, -9223372036854775807LL - 1);
    EXPECT_EQ(stats->frameRanges[1].end, 9223372036854775807LL);
}

TEST(CacheStatsTest, ACopyHasRangesOfItsOwnAndNoOwner) {
    SharedPtr<CacheStats> const stats = CacheStats::create();
    stats->frameRanges.push_back({1, 100});
    CacheStats copy(*stats);
    copy.frameRanges[0].end = 5;
    EXPECT_EQ(copy.refcount(), 0);
    EXPECT_EQ(stats->frameRanges[0].end, 100);
}

TEST(CacheStatsTest, HasTheLayoutThatProgramsRelyOn) {
    EXPECT_TRUE((std::is_base_of_v<RefCountedMT, CacheStats>));
    EXPECT_EQ(sizeof(CacheStats), sizeof(RefCountedMT) + sizeof(void*));
    EXPECT_EQ(sizeof(CacheStats::FrameRange), 16U);
    EXPECT_TRUE(std::is_trivially_copyable_v<CacheStats::FrameRange>);
    EXPECT_TRUE(std::is_standard_layout_v<CacheStats::FrameRange>);
}

} // namespace
