// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include <orlProgressHint.h>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace {

using namespace ORL_0_81;

TEST(ProgressHintTest, KeepsItsProgressUnchecked) {
    for (double const progress : {0.0, 0.1, 1.0, -2.5, 1e300, std::numeric_limits<double>::infinity()}) {
        EXPECT_EQ(ProgressHint(progress).getProgress(), progress);
    }
    EXPECT_TRUE(std::isnan(ProgressHint(std::nan("")).getProgress()));
}

TEST(ProgressHintTest, IsAHint) {
    ProgressHint const hint(0.25);
    NotificationHint const& base = hint;
    auto const* const progress = dynamic_cast<ProgressHint const*>(&base);
    ASSERT_NE(progress, nullptr);
    EXPECT_EQ(progress->getProgress(), 0.25);
}

} // namespace
