// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include <orlBuffer.h>

#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <utility>

namespace {

using ORL_0_81::Buffer;

void fill(Buffer& buffer, char const* text) { std::memcpy(buffer.get(), text, buffer.getSize()); }

bool holds(Buffer const& buffer, char const* text) {
    return std::memcmp(buffer.get(), text, buffer.getSize()) == 0;
}

TEST(Buffer, OwnsWhatItAllocates) {
    Buffer const buffer(5);
    EXPECT_EQ(buffer.getSize(), 5U);
    EXPECT_TRUE(buffer.ownsMemory());
    EXPECT_NE(buffer.get(), nullptr);
}

TEST(Buffer, OfNoBytesIsValidAndOwnsThem) {
    Buffer const buffer(0);
    EXPECT_EQ(buffer.getSize(), 0U);
    EXPECT_TRUE(buffer.ownsMemory());
}

TEST(Buffer, GivesTheSameBlockInAllFourWays) {
    Buffer buffer(4);
    Buffer const& constant = buffer;
    EXPECT_EQ(buffer.get(), buffer.getBytes());
    EXPECT_EQ(constant.get(), buffer.get());
    EXPECT_EQ(constant.getBytes(), buffer.getBytes());
}

TEST(Buffer, ACopyIsDeep) {
    Buffer source(4);
    fill(source, "abcd");
    Buffer copy(source);
    EXPECT_TRUE(holds(copy, "abcd"));
    EXPECT_NE(copy.get(), source.get());
    copy.getBytes()[0] = 'x';
    EXPECT_TRUE(holds(source, "abcd"));
}

TEST(Buffer, ACopyOfAViewOwnsAPrivateCopy) {
    char foreign[] = "abcd";
    Buffer view(1);
    view.setBuffer(foreign, 4);
    Buffer copy(view);
    EXPECT_TRUE(copy.ownsMemory());
    EXPECT_NE(copy.get(), static_cast<void*>(foreign));
    EXPECT_TRUE(holds(copy, "abcd"));

    Buffer assigned(1);
    assigned = view;
    EXPECT_TRUE(assigned.ownsMemory());
    EXPECT_NE(assigned.get(), static_cast<void*>(foreign));
    EXPECT_TRUE(holds(assigned, "abcd"));
}

TEST(Buffer, ACopyOfANullBlockHasItsSize) {
    Buffer view(1);
    view.setBuffer(nullptr, 3);
    Buffer const copy(view);
    EXPECT_EQ(copy.getSize(), 3U);
    EXPECT_TRUE(copy.ownsMemory());
}

TEST(Buffer, AMoveTakesTheBlockAndLeavesNoneBehind) {
    Buffer source(4);
    fill(source, "abcd");
    void const* const block = source.get();
    Buffer target(std::move(source));
    EXPECT_EQ(target.get(), block);
    EXPECT_EQ(target.getSize(), 4U);
    EXPECT_TRUE(target.ownsMemory());
    EXPECT_EQ(source.get(), nullptr); // NOLINT(bugprone-use-after-move,clang-analyzer-cplusplus.Move)
    EXPECT_EQ(source.getSize(), 0U);
    EXPECT_TRUE(source.ownsMemory()) << "the flag stays";
}

TEST(Buffer, AMoveOfAViewIsAView) {
    char foreign[] = "abcd";
    Buffer source(1);
    source.setBuffer(foreign, 4);
    Buffer target(9);
    target = std::move(source);
    EXPECT_EQ(target.get(), static_cast<void*>(foreign));
    EXPECT_FALSE(target.ownsMemory());
    EXPECT_EQ(source.get(), nullptr); // NOLINT(bugprone-use-after-move,clang-analyzer-cplusplus.Move)
    EXPECT_FALSE(source.ownsMemory()) << "the flag stays";
}

TEST(Buffer, SelfAssignmentDoesNothing) {
    Buffer buffer(4);
    fill(buffer, "abcd");
    void const* const block = buffer.get();
    Buffer& self = buffer;
    buffer = self;
    EXPECT_EQ(buffer.get(), block);
    buffer = std::move(self);
    EXPECT_EQ(buffer.get(), block);
    EXPECT_TRUE(holds(buffer, "abcd"));
}

TEST(Buffer, AllocatingLeavesForeignMemoryAlone) {
    char foreign[] = "abcd";
    Buffer buffer(1);
    buffer.setBuffer(foreign, 4);
    EXPECT_FALSE(buffer.ownsMemory());
    buffer.allocate(2);
    EXPECT_TRUE(buffer.ownsMemory());
    EXPECT_EQ(buffer.getSize(), 2U);
    EXPECT_STREQ(foreign, "abcd");
}

TEST(Buffer, IsDestroyedAllocatedAndSetThroughItsBase) {
    class Recorder : public Buffer {
    public:
        Recorder(std::string& calls) : Buffer(1), m_calls(calls) {}
        ~Recorder() override { m_calls += "destroy "; }
        void allocate(unsigned long) override { m_calls += "allocate "; }
        void setBuffer(void*, unsigned long) override { m_calls += "set "; }

    private:
        std::string& m_calls;
    };
    std::string calls;
    Buffer* const buffer = new Recorder(calls);
    buffer->allocate(3);
    buffer->setBuffer(nullptr, 0);
    delete buffer;
    EXPECT_EQ(calls, "allocate set destroy ");
}

} // namespace
