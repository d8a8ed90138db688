// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include <orlAudioFormatInterface.h>
#include <orlAudioProviderInterface.h>

#include <gtest/gtest.h>

#include <climits>
#include <string>
#include <thread>
#include <type_traits>
#include <vector>

namespace {

using namespace ORL_0_81;

// Sizes of samples

// Notes which of its operations are asked, in order.
class Format : public AudioFormatInterface {
public:
    int getSampleRate() const override { return note("rate", 0); }
    int getChannelCount() const override { return note("channels", 2); }
    int getChannelLayout() const override { return note("layout", 0); }
    int getBitsPerSample() const override { return note("bits", 16); }
    bool isFloat() const override { return note("float", 0) != 0; }
    bool isBigEndian() const override { return note("big endian", 0) != 0; }
    bool isSigned() const override { return note("signed", 0) != 0; }
    bool isInterleaved() const override { return note("interleaved", 0) != 0; }
    bool isValid() const override { return note("valid", 0) != 0; }
    bool isEqual(AudioFormatInterface const&) const override { return note("equal", 0) != 0; }
    SharedPtr<AudioFormatInterface> clone() const override {
        note("clone", 0);
        return nullptr;
    }

    mutable std::vector<std::string> m_asked;

private:
    int note(char const* operation, int result) const {
        m_asked.emplace_back(operation);
        return result;
    }
};

TEST(AudioFormatContract, ASizeAsksForTheChannelsThenForTheBitsAndForNothingElse) {
    for (unsigned long const samples : {0UL, 1UL, 1000UL}) {
        Format const format;
        EXPECT_EQ(format.getSizeInBytes(samples), 4 * samples);
        EXPECT_EQ(format.m_asked, (std::vector<std::string>{"channels", "bits"})) << samples;
    }
}

// Filling

class Provider : public AudioProviderInterface {
public:
    SharedPtr<AudioFormatInterface> getAudioFormat() const override { return nullptr; }

    Status doFillAudioBuffer(char* data, unsigned long size, unsigned long startSample) override {
        m_log.push_back("fill " + std::to_string(size) + " from " + std::to_string(startSample));
        if (data) {
            data[0] = 'a';
        }
        return Status::kSuccess;
    }

    std::vector<std::string> m_log;
};

class Listener : public Observer {
public:
    explicit Listener(Provider& provider) : m_provider(&provider) {}

    void onNotify(Subject* subject, NotificationHint const& hint) override {
        auto const& filled = dynamic_cast<AudioProviderInterface::FillAudioBufferHint const&>(hint);
        EXPECT_EQ(subject, m_provider) << "the subject is the provider's base";
        EXPECT_EQ(std::this_thread::get_id(), m_thread);
        m_provider->m_log.push_back("hear " + std::to_string(filled.getSize()) + " from " +
                                    std::to_string(filled.getStartSample()));
        m_data = filled.getData();
        m_heard = m_data ? m_data[0] : '-';
    }

    Provider* m_provider;
    std::thread::id m_thread = std::this_thread::get_id();
    char* m_data = nullptr;
    char m_heard = '?';
};

TEST(AudioProviderContract, ObserversHearTheSamplesAfterTheFillAndBeforeItReturns) {
    Provider provider;
    Listener listener(provider);
    provider.addObserver(&listener);
    char data[4] = {};
    EXPECT_EQ(provider.fillAudioBuffer(data, sizeof data, ULONG_MAX), Status::kSuccess);
    EXPECT_EQ(listener.m_data, data);
    EXPECT_EQ(listener.m_heard, 'a') << "through the hint, samples that are there already";
    EXPECT_EQ(provider.m_log, (std::vector<std::string>{"fill 4 from 18446744073709551615",
                                                        "hear 4 from 18446744073709551615"}));
}

TEST(AudioProviderContract, NoValueIsCheckedOnTheWay) {
    Provider provider;
    Listener listener(provider);
    provider.addObserver(&listener);
    provider.fillAudioBuffer(nullptr, ULONG_MAX, 0);
    EXPECT_EQ(listener.m_heard, '-');
    EXPECT_EQ(provider.m_log, (std::vector<std::string>{"fill 18446744073709551615 from 0",
                                                        "hear 18446744073709551615 from 0"}));
}

TEST(AudioProviderContract, ItsNonVirtualOperationsAreThoseOfTheInterface) {
    using Hint = AudioProviderInterface::FillAudioBufferHint;
    using Fill = Status (AudioProviderInterface::*)(char*, unsigned long, unsigned long);
    EXPECT_TRUE((std::is_same_v<decltype(&AudioProviderInterface::fillAudioBuffer), Fill>));
    EXPECT_TRUE((std::is_same_v<decltype(&Hint::getData), char* (Hint::*)() const>));
    EXPECT_TRUE((std::is_same_v<decltype(&Hint::getSize), unsigned long (Hint::*)() const>));
    EXPECT_TRUE((std::is_same_v<decltype(&Hint::getStartSample), unsigned long (Hint::*)() const>));
    using Size = unsigned long (AudioFormatInterface::*)(unsigned long) const;
    EXPECT_TRUE((std::is_same_v<decltype(&AudioFormatInterface::getSizeInBytes), Size>));
    EXPECT_TRUE((std::is_base_of_v<RefCountedMT, AudioProviderInterface>));
    EXPECT_TRUE((std::is_base_of_v<Subject, AudioProviderInterface>));
}

} // namespace
