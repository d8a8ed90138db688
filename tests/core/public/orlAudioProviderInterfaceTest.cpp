// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "support/VirtualSlot.h"

#include <orlAudioProviderInterface.h>

#include <gtest/gtest.h>

#include <cstring>
#include <stdexcept>
#include <type_traits>
#include <vector>

namespace {

using namespace ORL_0_81;

using FillAudioBufferHint = AudioProviderInterface::FillAudioBufferHint;

class Provider : public AudioProviderInterface {
public:
    explicit Provider(Status status) : m_status(status) {}

    SharedPtr<AudioFormatInterface> getAudioFormat() const override { return nullptr; }

    Status doFillAudioBuffer(char* data, unsigned long size, unsigned long startSample) override {
        std::memset(data, static_cast<int>(startSample), size);
        return m_status;
    }

private:
    Status m_status;
};

class Listener : public Observer {
public:
    void onNotify(Subject* subject, NotificationHint const& hint) override {
        auto const* const fill = dynamic_cast<FillAudioBufferHint const*>(&hint);
        ASSERT_NE(fill, nullptr);
        m_subjects.push_back(subject);
        m_data = fill->getData();
        m_size = fill->getSize();
        m_startSample = fill->getStartSample();
        m_samples.assign(m_data, m_data + m_size);
    }

    std::vector<Subject*> m_subjects;
    char* m_data = nullptr;
    unsigned long m_size = 0;
    unsigned long m_startSample = 0;
    std::vector<char> m_samples;
};

TEST(AudioProviderInterfaceTest, ASuccessfulFillGivesEachObserverTheCallersValues) {
    Provider provider(Status::kSuccess);
    Listener listeners[2];
    provider.addObserver(&listeners[0]);
    provider.addObserver(&listeners[1]);
    char buffer[8] = {};
    EXPECT_EQ(provider.fillAudioBuffer(buffer, 3, 7), Status::kSuccess);
    for (Listener const& listener : listeners) {
        EXPECT_EQ(listener.m_subjects, std::vector<Subject*>{&provider});
        EXPECT_EQ(listener.m_data, buffer);
        EXPECT_EQ(listener.m_size, 3U);
        EXPECT_EQ(listener.m_startSample, 7U);
        EXPECT_EQ(listener.m_samples, (std::vector<char>{7, 7, 7})) << "filled before the notification";
    }
    EXPECT_EQ(buffer[3], 0);
}

TEST(AudioProviderInterfaceTest, AFailedFillNotifiesNobody) {
    Provider provider(Status::kAudioRendererIOError);
    Listener listener;
    provider.addObserver(&listener);
    char buffer[1];
    EXPECT_EQ(provider.fillAudioBuffer(buffer, 1, 0), Status::kAudioRendererIOError);
    EXPECT_TRUE(listener.m_subjects.empty());
}

TEST(AudioProviderInterfaceTest, AnUnassignedNegativeStatusIsASuccess) {
    Provider provider(static_cast<Status::Type>(-5));
    Listener listener;
    provider.addObserver(&listener);
    char buffer[1];
    EXPECT_EQ(static_cast<int>(provider.fillAudioBuffer(buffer, 1, 0).get()), -5) << "returned as it is";
    EXPECT_EQ(listener.m_subjects.size(), 1U);
}

TEST(AudioProviderInterfaceTest, TheFillItselfNotifiesNobody) {
    Provider provider(Status::kSuccess);
    Listener listener;
    provider.addObserver(&listener);
    char buffer[1];
    EXPECT_TRUE(provider.doFillAudioBuffer(buffer, 1, 0).success());
    EXPECT_TRUE(listener.m_subjects.empty());
}

TEST(AudioProviderInterfaceTest, AnExceptionOfAnObserverPassesThrough) {
    struct Thrower : Observer {
        void onNotify(Subject*, NotificationHint const&) override {
            throw std::runtime_error("of the observer");
        }
    };
    Provider provider(Status::kSuccess);
    Thrower thrower;
    provider.addObserver(&thrower);
    char buffer[1];
    EXPECT_THROW(provider.fillAudioBuffer(buffer, 1, 0), std::runtime_error);
}

TEST(AudioProviderInterfaceTest, AHintKeepsWhatItIsGiven) {
    FillAudioBufferHint const hint(nullptr, ~0UL, 5);
    EXPECT_EQ(hint.getData(), nullptr);
    EXPECT_EQ(hint.getSize(), ~0UL);
    EXPECT_EQ(hint.getStartSample(), 5U);
}

TEST(AudioProviderInterfaceTest, ItsEndTakesTheObserversLinksWithIt) {
    Listener listener;
    SharedPtr<AudioProviderInterface> provider(new Provider(Status::kSuccess));
    provider->addObserver(&listener);
    EXPECT_EQ(provider->refcount(), 1);
    provider.reset();
    // The listener ends now, and would reach for the provider if it still knew of it.
}

TEST(AudioProviderInterfaceTest, HasTheLayoutThatProgramsRelyOn) {
    EXPECT_TRUE(std::is_abstract_v<AudioProviderInterface>);
    EXPECT_EQ(virtualSlot(&AudioProviderInterface::getAudioFormat), 5U);
    EXPECT_EQ(virtualSlot(&AudioProviderInterface::doFillAudioBuffer), 6U);
    Provider provider(Status::kSuccess);
    EXPECT_EQ(static_cast<void*>(static_cast<RefCountedMT*>(&provider)), static_cast<void*>(&provider))
        << "the first base";
    EXPECT_EQ(static_cast<void*>(static_cast<Subject*>(&provider)),
              static_cast<void*>(reinterpret_cast<char*>(&provider) + sizeof(RefCountedMT)));
}

} // namespace
