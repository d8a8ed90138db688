// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "support/Allocations.h"

#include <orlSubjectObserver.h>

#include <gtest/gtest.h>

// What subjects and observers allocate, and what is left when that fails.

namespace {

using namespace ORL_0_81;

class Counter : public Observer {
public:
    void onNotify(Subject*, NotificationHint const&) override { ++m_calls; }

    int m_calls = 0;
};

TEST(SubjectMemoryFailure, AnAdditionThatFailsOnTheSubjectsSideLeavesNoLink) {
    Subject subject;
    Counter observer;
    EXPECT_TRUE(runsOutOfMemory(0, [&] { subject.addObserver(&observer); }));
    subject.notify(NotificationHint());
    EXPECT_EQ(observer.m_calls, 0);
}

TEST(SubjectMemoryFailure, AnAdditionThatFailsOnTheObserversSideLeavesTheSubjectsLinkAndNoLock) {
    Subject subject;
    Counter observer;
    EXPECT_TRUE(runsOutOfMemory(1, [&] { subject.addObserver(&observer); }));
    subject.notify(NotificationHint()); // would wait for ever for a mutex that was not released
    EXPECT_EQ(observer.m_calls, 1);
    subject.removeObserver(&observer);
    subject.notify(NotificationHint());
    EXPECT_EQ(observer.m_calls, 1);
}

TEST(SubjectMemoryFailure, ANotificationThatFailsCallsNobodyAndLeavesNoLock) {
    Subject subject;
    Counter observer;
    subject.addObserver(&observer);
    EXPECT_TRUE(runsOutOfMemory(0, [&] { subject.notify(NotificationHint()); }));
    EXPECT_EQ(observer.m_calls, 0);
    subject.notify(NotificationHint());
    EXPECT_EQ(observer.m_calls, 1);
}

TEST(SubjectMemoryFailure, AConstructorPassesTheFailureOn) {
    Subject subject;
    Counter observer;
    subject.addObserver(&observer);
    long const before = liveAllocations();
    EXPECT_TRUE(runsOutOfMemory(0, [] { Subject const another; }));
    EXPECT_TRUE(runsOutOfMemory(0, [] { Counter const another; }));
    for (long const allocations : {0L, 1L}) { // the state, its set
        EXPECT_TRUE(runsOutOfMemory(allocations, [&] { Subject const copy(subject); }));
        EXPECT_TRUE(runsOutOfMemory(allocations, [&] { Counter const copy(observer); }));
    }
    EXPECT_EQ(liveAllocations(), before);
}

TEST(SubjectAllocation, ALinkIsOneAllocationOnEachSideAndNoneWhenItExists) {
    Subject subject;
    Counter observer;
    EXPECT_EQ(allocationsOf([&] { subject.addObserver(&observer); }), 2);
    EXPECT_EQ(allocationsOf([&] { subject.addObserver(&observer); }), 0);
    long const before = liveAllocations();
    subject.removeObserver(&observer);
    EXPECT_EQ(liveAllocations(), before - 2);
}

TEST(SubjectAllocation, NothingIsLeftBehind) {
    long const before = liveAllocations();
    {
        Counter observers[2];
        Subject subject;
        Subject other;
        subject.addObserver(&observers[0]);
        subject.addObserver(&observers[1]);
        other.addObserver(&observers[0]);
        Subject const copy(subject);
        Counter const observerCopy(observers[0]);
        subject.notify(NotificationHint());
        subject = Subject();
    }
    EXPECT_EQ(liveAllocations(), before);
}

} // namespace
