// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "support/orlFailingMemory.h"

#include <orlAudioProviderInterface.h>
#include <orlInvalidationHint.h>
#include <orlProgressHint.h>
#include <orlSubjectObserver.h>

#include <gtest/gtest.h>

#include <memory>

// Which links there are, and that no lock is held, when a link or a notification gets no memory. A lock that was kept
// would show as a test that hangs.

namespace {

using namespace ORL_0_81;
using orlTest::failEachAllocation;
using orlTest::FailingMemory;

class Counter : public Observer {
public:
    void onNotify(Subject*, NotificationHint const&) override { ++m_calls; }

    int m_calls = 0;
};

int callsOf(Subject& subject, Counter& counter) {
    int const before = counter.m_calls;
    subject.notify(NotificationHint());
    return counter.m_calls - before;
}

TEST(SubjectFailingMemory, ANewLinkIsThereOrNotOrKnownToTheSubjectAlone) {
    failEachAllocation([](FailingMemory& memory) {
        Subject subject;
        Counter first;
        Counter second;
        subject.addObserver(&first);
        bool const done = memory.run([&] { subject.addObserver(&second); });
        EXPECT_EQ(callsOf(subject, first), 1);
        EXPECT_TRUE(callsOf(subject, second) == 1 || !done);
        subject.removeObserver(&second); // which a subject that alone knows it must be asked for
        EXPECT_EQ(callsOf(subject, second), 0);
        subject.addObserver(&second);
        EXPECT_EQ(callsOf(subject, second), 1);
    });
}

TEST(SubjectFailingMemory, ANotificationCallsAllOrNobody) {
    failEachAllocation([](FailingMemory& memory) {
        Subject subject;
        Counter counters[5];
        for (Counter& counter : counters) {
            subject.addObserver(&counter);
        }
        bool const done = memory.run([&] { subject.notify(ProgressHint(0.5)); });
        for (Counter const& counter : counters) {
            EXPECT_EQ(counter.m_calls, done ? 1 : 0);
        }
        EXPECT_EQ(callsOf(subject, counters[4]), 1);
    });
}

TEST(SubjectFailingMemory, ACopyIsMadeWholeOrNotAtAll) {
    failEachAllocation([](FailingMemory& memory) {
        Counter observers[3];
        Subject subject;
        std::unique_ptr<Subject> copy;
        std::unique_ptr<Counter> observerCopy;
        for (Counter& observer : observers) {
            subject.addObserver(&observer);
        }
        bool const done = memory.run([&] {
            copy = std::make_unique<Subject>(subject);
            observerCopy = std::make_unique<Counter>(observers[0]);
            Subject const another;
            Counter const yetAnother;
        });
        EXPECT_TRUE((copy && observerCopy) || !done);
        if (copy) {
            EXPECT_EQ(callsOf(*copy, observers[2]), 1);
        }
    });
}

TEST(SubjectFailingMemory, AnAssignmentReplacesAllObserversOrNone) {
    failEachAllocation([](FailingMemory& memory) {
        Counter ours[3];
        Counter theirs[4];
        Subject source;
        Subject target;
        for (Counter& observer : ours) {
            target.addObserver(&observer);
        }
        for (Counter& observer : theirs) {
            source.addObserver(&observer);
        }
        bool const done = memory.run([&] { target = source; });
        for (Counter& observer : ours) {
            EXPECT_EQ(callsOf(target, observer), done ? 0 : 1);
        }
        for (Counter& observer : theirs) {
            EXPECT_EQ(callsOf(target, observer), done ? 1 : 0);
        }
        // The links that an assignment leaves behind.
        for (Counter& observer : ours) {
            target.removeObserver(&observer);
        }
        for (Counter& observer : theirs) {
            target.removeObserver(&observer);
            source.removeObserver(&observer);
        }
    });
}

TEST(ObserverFailingMemory, AnAssignmentReplacesAllSubjectsOrNone) {
    failEachAllocation([](FailingMemory& memory) {
        Subject ours[3];
        Subject theirs[4];
        auto target = std::make_unique<Counter>();
        Counter source;
        for (Subject& subject : ours) {
            subject.addObserver(target.get());
        }
        for (Subject& subject : theirs) {
            subject.addObserver(&source);
        }
        bool const done = memory.run([&] { *target = source; });
        if (done) {
            for (Subject& subject : ours) {
                subject.removeObserver(target.get()); // the target has forgotten it
            }
        }
        target.reset(); // reaches into the subjects that it knows: those it had, or those of the source
        for (Subject& subject : ours) {
            subject.notify(NotificationHint()); // would call a dead object
        }
        for (Subject& subject : theirs) {
            EXPECT_EQ(callsOf(subject, source), 1);
        }
    });
}

class Tone : public AudioProviderInterface {
public:
    SharedPtr<AudioFormatInterface> getAudioFormat() const override { return nullptr; }
    Status doFillAudioBuffer(char* data, unsigned long size, unsigned long) override {
        for (unsigned long i = 0; i < size; ++i) {
            data[i] = 'x';
        }
        return Status::kSuccess;
    }
};

TEST(AudioProviderFailingMemory, AFilledBufferStaysFilledWhenNobodyCanBeTold) {
    failEachAllocation([](FailingMemory& memory) {
        Counter observer;
        SharedPtr<Tone> provider;
        char data[4] = {};
        if (!memory.run([&] { provider.reset(new Tone); })) {
            EXPECT_FALSE(provider);
            return;
        }
        provider->addObserver(&observer);
        bool const done = memory.run([&] { EXPECT_TRUE(provider->fillAudioBuffer(data, sizeof data, 0)); });
        EXPECT_EQ(data[3], 'x');
        EXPECT_EQ(observer.m_calls, done ? 1 : 0);
        EXPECT_EQ(callsOf(*provider, observer), 1);
    });
}

} // namespace
