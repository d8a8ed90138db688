// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "support/VirtualSlot.h"

#include <orlVideoBuffer.h>

#include <gtest/gtest.h>

#include <cstring>
#include <type_traits>

namespace {

using namespace ORL_0_81;

class Pixels : public VideoBuffer {
public:
    VideoBufferResolution getResolution() const override {
        VideoBufferResolution resolution;
        resolution.setWidth(4);
        return resolution;
    }
    void* getData() override { return m_pixels; }
    void const* getData() const override { return m_pixels; }
    unsigned long getSize() const override { return sizeof m_pixels; }
    SharedPtr<VideoBuffer> clone() const override { return SharedPtr<VideoBuffer>(new Pixels(*this)); }

private:
    char m_pixels[16] = {};
};

TEST(VideoBufferTest, IsUsedThroughTheBase) {
    SharedPtr<VideoBuffer> const buffer(new Pixels);
    EXPECT_EQ(buffer->refcount(), 1);
    EXPECT_EQ(buffer->getResolution().getWidth(), 4);
    ASSERT_EQ(buffer->getSize(), 16U);
    std::memset(buffer->getData(), 9, buffer->getSize());
    SharedPtr<VideoBuffer const> const clone(buffer->clone());
    std::memset(buffer->getData(), 0, buffer->getSize());
    EXPECT_EQ(static_cast<char const*>(clone->getData())[15], 9);
}

TEST(VideoBufferTest, HasTheLayoutThatProgramsRelyOn) {
    EXPECT_TRUE(std::is_abstract_v<VideoBuffer>);
    EXPECT_EQ(sizeof(VideoBuffer), sizeof(RefCountedMT)) << "no data";
    EXPECT_EQ(virtualSlot(&VideoBuffer::getResolution), 5U);
    EXPECT_EQ(virtualSlot(static_cast<void* (VideoBuffer::*)()>(&VideoBuffer::getData)), 6U);
    EXPECT_EQ(virtualSlot(static_cast<void const* (VideoBuffer::*)() const>(&VideoBuffer::getData)), 7U);
    EXPECT_EQ(virtualSlot(&VideoBuffer::getSize), 8U);
    EXPECT_EQ(virtualSlot(&VideoBuffer::clone), 9U);
}

} // namespace
