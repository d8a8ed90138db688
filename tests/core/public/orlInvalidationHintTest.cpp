// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include <orlInvalidationHint.h>

#include <orlProgressHint.h>

#include <gtest/gtest.h>

#include <limits>

namespace {

using namespace ORL_0_81;

TEST(InvalidationHintTest, KeepsItsFrames) {
    InvalidationHint const hint(-3, 120);
    EXPECT_EQ(hint.getStartFrame(), -3);
    EXPECT_EQ(hint.getEndFrame(), 120);
}

TEST(InvalidationHintTest, TakesAnyFramesInAnyOrder) {
    constexpr int LEAST = std::numeric_limits<int>::min();
    constexpr int MOST = std::numeric_limits<int>::max();
    InvalidationHint const hint(MOST, LEAST);
    EXPECT_EQ(hint.getStartFrame(), MOST);
    EXPECT_EQ(hint.getEndFrame(), LEAST);
}

TEST(InvalidationHintTest, IsToldFromOtherHintsByItsType) {
    InvalidationHint const invalidation(1, 2);
    ProgressHint const progress(0.5);
    NotificationHint const plain;
    NotificationHint const* const hints[] = {&invalidation, &progress, &plain};
    for (NotificationHint const* const hint : hints) {
        EXPECT_EQ(dynamic_cast<InvalidationHint const*>(hint) != nullptr, hint == &invalidation);
        EXPECT_EQ(dynamic_cast<ProgressHint const*>(hint) != nullptr, hint == &progress);
    }
}

TEST(InvalidationHintTest, ReachesTheObserverWhole) {
    struct Receiver : Observer {
        void onNotify(Subject*, NotificationHint const& hint) override {
            auto const* const invalidation = dynamic_cast<InvalidationHint const*>(&hint);
            ASSERT_NE(invalidation, nullptr);
            m_sum += invalidation->getStartFrame() + 1000 * invalidation->getEndFrame();
        }
        int m_sum = 0;
    };
    Subject subject;
    Receiver receiver;
    subject.addObserver(&receiver);
    subject.notify(InvalidationHint(7, 9));
    EXPECT_EQ(receiver.m_sum, 9007);
}

TEST(InvalidationHintTest, CanBeCopied) {
    InvalidationHint const hint(1, 2);
    InvalidationHint copy(hint);
    EXPECT_EQ(copy.getEndFrame(), 2);
    copy = InvalidationHint(3, 4);
    EXPECT_EQ(copy.getStartFrame(), 3);
    EXPECT_EQ(hint.getStartFrame(), 1);
}

} // namespace
