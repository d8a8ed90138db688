// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include <orlAudioProviderInterface.h>
#include <orlSubjectObserver.h>
#include <orlTokenProducer.h>

#include <gtest/gtest.h>

#include <atomic>
#include <functional>
#include <thread>
#include <vector>

// Several threads on one subject. The counts are checked here; the thread sanitizer checks the rest.

namespace {

using namespace ORL_0_81;

constexpr int THREADS = 4;
constexpr int ROUNDS = 1000;

class Counter : public Observer {
public:
    void onNotify(Subject*, NotificationHint const&) override { ++m_calls; }

    std::atomic<int> m_calls{0};
};

// Performs the work on every thread, with the thread's number.
void onThreads(std::function<void(std::size_t)> const& work) {
    std::vector<std::thread> threads;
    for (std::size_t t = 0; t < THREADS; ++t) {
        threads.emplace_back(work, t);
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
}

TEST(SubjectThreads, EachNotificationReachesWhoIsAttachedThroughout) {
    Subject subject;
    Counter steady;
    std::vector<Counter> coming(THREADS);
    subject.addObserver(&steady);
    onThreads([&](std::size_t t) {
        for (int round = 0; round < ROUNDS; ++round) {
            subject.addObserver(&coming[t]);
            subject.notify(NotificationHint());
            subject.removeObserver(&coming[t]);
        }
    });
    EXPECT_EQ(steady.m_calls, THREADS * ROUNDS);
    for (Counter const& counter : coming) {
        EXPECT_GE(counter.m_calls, ROUNDS) << "its own thread's notifications at least";
        EXPECT_LE(counter.m_calls, THREADS * ROUNDS);
    }
}

TEST(SubjectThreads, OneObserverMayBeAttachedAndDetachedByAllThreadsThroughOneSubject) {
    Subject subject;
    Counter observer;
    onThreads([&](std::size_t) {
        for (int round = 0; round < ROUNDS; ++round) {
            subject.addObserver(&observer);
            subject.notify(NotificationHint());
            subject.removeObserver(&observer);
        }
    });
    subject.addObserver(&observer);
    observer.m_calls = 0;
    subject.notify(NotificationHint());
    EXPECT_EQ(observer.m_calls, 1);
}

TEST(SubjectThreads, AnAssignmentMayHappenWhileOthersNotifyAndAttach) {
    std::vector<Counter> observers(THREADS);
    Subject source;
    Subject target;
    onThreads([&](std::size_t t) {
        for (int round = 0; round < ROUNDS; ++round) {
            if (t == 0) {
                target = source;
            } else {
                source.addObserver(&observers[t]);
                target.notify(NotificationHint());
                source.removeObserver(&observers[t]);
            }
        }
    });
    target = source;
    for (Counter& counter : observers) {
        counter.m_calls = 0;
    }
    target.notify(NotificationHint());
    for (Counter const& counter : observers) {
        EXPECT_EQ(counter.m_calls, 0);
    }
}

TEST(SubjectThreads, ACallbackMayChangeTheSubjectWhileOthersNotify) {
    class Fickle : public Observer {
    public:
        void onNotify(Subject* subject, NotificationHint const&) override {
            ++m_calls;
            subject->removeObserver(this);
            subject->addObserver(this);
        }

        std::atomic<int> m_calls{0};
    };
    Subject subject;
    std::vector<Fickle> observers(THREADS);
    for (Fickle& observer : observers) {
        subject.addObserver(&observer);
    }
    onThreads([&](std::size_t) {
        for (int round = 0; round < ROUNDS; ++round) {
            subject.notify(NotificationHint());
        }
    });
    for (Fickle& observer : observers) {
        EXPECT_LE(observer.m_calls, THREADS * ROUNDS);
        observer.m_calls = 0;
    }
    subject.notify(NotificationHint());
    for (Fickle const& observer : observers) {
        EXPECT_EQ(observer.m_calls, 1) << "attached again by its last call";
    }
}

// Both guard their observers as any subject does, though all else is for one thread.

class Tone : public AudioProviderInterface {
public:
    SharedPtr<AudioFormatInterface> getAudioFormat() const override { return nullptr; }
    Status doFillAudioBuffer(char*, unsigned long, unsigned long) override { return Status::kSuccess; }
};

TEST(SubjectThreads, AProviderOfSoundIsHeardWhileObserversComeAndGo) {
    Tone provider;
    Counter steady;
    std::vector<Counter> coming(THREADS);
    provider.addObserver(&steady);
    onThreads([&](std::size_t t) {
        char data[1] = {};
        for (int round = 0; round < ROUNDS; ++round) {
            provider.addObserver(&coming[t]);
            EXPECT_TRUE(provider.fillAudioBuffer(data, sizeof data, 0));
            provider.removeObserver(&coming[t]);
        }
    });
    EXPECT_EQ(steady.m_calls, THREADS * ROUNDS);
}

class Silence : public TokenProducer {
public:
    Status getTokens(List<SharedPtr<Token>>&) override { return Status::kSuccess; }
};

TEST(SubjectThreads, AProducerOfTokensIsHeardWhileObserversComeAndGo) {
    Silence producer;
    Counter steady;
    std::vector<Counter> coming(THREADS);
    producer.addObserver(&steady);
    onThreads([&](std::size_t t) {
        for (int round = 0; round < ROUNDS; ++round) {
            producer.addObserver(&coming[t]);
            producer.notify(TokenProducer::ChangeHint());
            producer.removeObserver(&coming[t]);
        }
    });
    EXPECT_EQ(steady.m_calls, THREADS * ROUNDS);
}

} // namespace
