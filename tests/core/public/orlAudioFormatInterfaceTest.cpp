// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "support/VirtualSlot.h"

#include <orlAudioFormatInterface.h>

#include <gtest/gtest.h>

#include <climits>
#include <type_traits>

namespace {

using namespace ORL_0_81;

class Format : public AudioFormatInterface {
public:
    Format(int channelCount, int bitsPerSample)
        : m_channelCount(channelCount), m_bitsPerSample(bitsPerSample) {}

    // Numbers that would show if they were used in the place of the others.
    int getSampleRate() const override { return 48000; }
    int getChannelCount() const override { return m_channelCount; }
    int getChannelLayout() const override { return 99; }
    int getBitsPerSample() const override { return m_bitsPerSample; }
    bool isFloat() const override { return true; }
    bool isBigEndian() const override { return true; }
    bool isSigned() const override { return true; }
    bool isInterleaved() const override { return true; }
    bool isValid() const override { return true; }
    bool isEqual(AudioFormatInterface const& other) const override { return this == &other; }
    SharedPtr<AudioFormatInterface> clone() const override {
        return SharedPtr<AudioFormatInterface>(new Format(*this));
    }

private:
    int m_channelCount;
    int m_bitsPerSample;
};

struct SizeCase {
    int channelCount;
    int bitsPerSample;
    unsigned long sampleCount;
    unsigned long size;
};

TEST(AudioFormatInterfaceTest, ComputesTheSizeOfSamples) {
    SizeCase const cases[] = {
        {2, 16, 1000, 4000},
        {2, 16, 0, 0},
        {0, 16, 1000, 0},
        {2, 0, 1000, 0},
        {1, 12, 1, 1}, // rounded down
        {1, 7, 1, 0},
        {3, 5, 1, 1},
        {1, 24, 3, 9},
        {8, 32, 48000, 1536000},
        {INT_MAX, 8, 3, 6442450941}, // beyond 32 bits
        {2, 16, 1UL << 40, 1UL << 42},
    };
    for (SizeCase const& c : cases) {
        EXPECT_EQ(Format(c.channelCount, c.bitsPerSample).getSizeInBytes(c.sampleCount), c.size)
            << c.channelCount << " channels, " << c.bitsPerSample << " bits, " << c.sampleCount << " samples";
    }
}

TEST(AudioFormatInterfaceTest, ExtendsTheSignOfNegativeNumbersAndShiftsLogically) {
    constexpr unsigned long MOST = ~0UL;
    SizeCase const cases[] = {
        {-1, 8, 1, (MOST - 7) >> 3}, // -8 as an unsigned number
        {1, -8, 1, (MOST - 7) >> 3},
        {-1, -8, 1, 1},        // both signs extended: 8
        {-1, 1, 1, MOST >> 3}, // zeros come in from the left
        {INT_MIN, 1, 1, (0xFFFFFFFF80000000UL) >> 3},
        {2, 16, MOST, (MOST - 31) >> 3}, // wraps around
    };
    for (SizeCase const& c : cases) {
        EXPECT_EQ(Format(c.channelCount, c.bitsPerSample).getSizeInBytes(c.sampleCount), c.size)
            << c.channelCount << " channels, " << c.bitsPerSample << " bits, " << c.sampleCount << " samples";
    }
}

TEST(AudioFormatInterfaceTest, IsCountedAndCloned) {
    SharedPtr<AudioFormatInterface> const format(new Format(2, 16));
    SharedPtr<AudioFormatInterface> const clone = format->clone();
    EXPECT_EQ(format->refcount(), 1);
    EXPECT_EQ(clone->refcount(), 1);
    EXPECT_FALSE(clone->isEqual(*format));
    EXPECT_EQ(clone->getSizeInBytes(1), 4U);
}

TEST(AudioFormatInterfaceTest, HasTheLayoutThatProgramsRelyOn) {
    EXPECT_TRUE(std::is_abstract_v<AudioFormatInterface>);
    EXPECT_EQ(sizeof(AudioFormatInterface), sizeof(RefCountedMT)) << "no data";
    EXPECT_EQ(virtualSlot(&AudioFormatInterface::incref), 2U);
    EXPECT_EQ(virtualSlot(&AudioFormatInterface::decref), 3U);
    EXPECT_EQ(virtualSlot(&AudioFormatInterface::refcount), 4U);
    EXPECT_EQ(virtualSlot(&AudioFormatInterface::getSampleRate), 5U);
    EXPECT_EQ(virtualSlot(&AudioFormatInterface::getChannelCount), 6U);
    EXPECT_EQ(virtualSlot(&AudioFormatInterface::getChannelLayout), 7U);
    EXPECT_EQ(virtualSlot(&AudioFormatInterface::getBitsPerSample), 8U);
    EXPECT_EQ(virtualSlot(&AudioFormatInterface::isFloat), 9U);
    EXPECT_EQ(virtualSlot(&AudioFormatInterface::isBigEndian), 10U);
    EXPECT_EQ(virtualSlot(&AudioFormatInterface::isSigned), 11U);
    EXPECT_EQ(virtualSlot(&AudioFormatInterface::isInterleaved), 12U);
    EXPECT_EQ(virtualSlot(&AudioFormatInterface::isValid), 13U);
    EXPECT_EQ(virtualSlot(&AudioFormatInterface::isEqual), 14U);
    EXPECT_EQ(virtualSlot(&AudioFormatInterface::clone), 15U);
}

} // namespace
