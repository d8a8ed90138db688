// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include <orlBuffer.h>

#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <type_traits>
#include <utility>

namespace {

using ORL_0_81::Buffer;
using ORL_0_81::SecureBuffer;

// What both classes have in common, and where they differ in their moves.
template <class Kind>
class BufferOf : public testing::Test {};

struct KindNames {
    template <class Kind>
    static std::string GetName(int) {
        return std::is_same_v<Kind, Buffer> ? "Buffer" : "SecureBuffer";
    }
};

using Kinds = testing::Types<Buffer, SecureBuffer>;
TYPED_TEST_SUITE(BufferOf, Kinds, KindNames);

void fill(Buffer& buffer, char const* text) { std::memcpy(buffer.get(), text, buffer.getSize()); }

void expectOwned(Buffer const& buffer, char const* text) {
    EXPECT_TRUE(buffer.ownsMemory());
    ASSERT_EQ(buffer.getSize(), std::strlen(text));
    EXPECT_EQ(std::memcmp(buffer.get(), text, buffer.getSize()), 0);
}

void expectView(Buffer const& buffer, void const* block, unsigned long size) {
    EXPECT_FALSE(buffer.ownsMemory());
    EXPECT_EQ(buffer.get(), block);
    EXPECT_EQ(buffer.getSize(), size);
}

TYPED_TEST(BufferOf, GivesUntypedAndByteBlocksAsItsConstnessAllows) {
    using Kind = TypeParam;
    EXPECT_TRUE((std::is_same_v<decltype(std::declval<Kind&>().get()), void*>));
    EXPECT_TRUE((std::is_same_v<decltype(std::declval<Kind const&>().get()), void const*>));
    EXPECT_TRUE((std::is_same_v<decltype(std::declval<Kind&>().getBytes()), unsigned char*>));
    EXPECT_TRUE((std::is_same_v<decltype(std::declval<Kind const&>().getBytes()), unsigned char const*>));
    EXPECT_TRUE(std::has_virtual_destructor_v<Kind>);
    EXPECT_EQ(sizeof(Kind), sizeof(Buffer));
}

TYPED_TEST(BufferOf, AssignmentTakesASmallerALargerAndAnEmptyBlock) {
    TypeParam target(4);
    fill(target, "abcd");
    for (char const* const text : {"xy", "0123456789", ""}) {
        TypeParam source(std::strlen(text));
        fill(source, text);
        EXPECT_EQ(&(target = source), &target);
        expectOwned(target, text);
        EXPECT_NE(target.get(), source.get());
        expectOwned(source, text);
    }
}

TYPED_TEST(BufferOf, AssignmentOverAViewLeavesTheForeignBlockAlone) {
    char foreign[] = "abcd";
    TypeParam source(2);
    fill(source, "xy");
    TypeParam copied(1);
    copied.setBuffer(foreign, 4);
    copied = source;
    expectOwned(copied, "xy");
    TypeParam moved(1);
    moved.setBuffer(foreign, 4);
    EXPECT_EQ(&(moved = std::move(source)), &moved);
    expectOwned(moved, "xy");
    EXPECT_STREQ(foreign, "abcd");
}

TYPED_TEST(BufferOf, AViewIsReplacedByAnotherOfTheSameBlockAndByNone) {
    char foreign[] = "abcd";
    TypeParam buffer(3);
    buffer.setBuffer(foreign, 4);
    expectView(buffer, foreign, 4);
    buffer.setBuffer(foreign + 1, 2);
    expectView(buffer, foreign + 1, 2);
    buffer.setBuffer(nullptr, 7);
    expectView(buffer, nullptr, 7);
    buffer.allocate(0);
    EXPECT_TRUE(buffer.ownsMemory());
    EXPECT_EQ(buffer.getSize(), 0U);
    EXPECT_STREQ(foreign, "abcd");
}

TYPED_TEST(BufferOf, WhatWasMovedFromCanBeCopiedAssignedAndAllocated) {
    TypeParam source(4);
    fill(source, "abcd");
    Buffer const taken(std::move(static_cast<Buffer&>(source))); // the base's move leaves no block behind
    ASSERT_EQ(source.get(), nullptr);
    ASSERT_EQ(source.getSize(), 0U);
    ASSERT_TRUE(source.ownsMemory());
    expectOwned(taken, "abcd");

    TypeParam copy(source);
    expectOwned(copy, "");
    TypeParam assigned(3);
    assigned = source;
    expectOwned(assigned, "");
    source.allocate(2);
    fill(source, "xy");
    expectOwned(source, "xy");
}

TEST(BufferContract, MoveAssignmentTakesTheViewWithItsFlag) {
    char foreign[] = "abcd";
    Buffer source(1);
    source.setBuffer(foreign, 4);
    Buffer target(9);
    target = std::move(source);
    expectView(target, foreign, 4);
    expectView(source, nullptr, 0); // NOLINT(bugprone-use-after-move,clang-analyzer-cplusplus.Move)
    source = Buffer(2);
    EXPECT_TRUE(source.ownsMemory());
    EXPECT_EQ(source.getSize(), 2U);
}

TEST(SecureBufferContract, MovesOfAViewOwnAPrivateCopyAndLeaveTheView) {
    char foreign[] = "abcd";
    SecureBuffer source(1);
    source.setBuffer(foreign, 4);
    SecureBuffer const constructed(std::move(source));
    expectOwned(constructed, "abcd");
    expectView(source, foreign, 4); // NOLINT(bugprone-use-after-move,clang-analyzer-cplusplus.Move)
    SecureBuffer assigned(1);
    assigned = std::move(source);
    expectOwned(assigned, "abcd");
    expectView(source, foreign, 4); // NOLINT(bugprone-use-after-move,clang-analyzer-cplusplus.Move)
    EXPECT_NE(constructed.get(), assigned.get());
}

} // namespace
