// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project

// What a SecureBuffer does with its memory, as the system sees it: this program stands in for the system's
// mlock, munlock and free, which the shared library then calls.
#include <orlBuffer.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <cstring>
#include <string>
#include <utility>
#include <vector>

#include <dlfcn.h>

namespace {

using ORL_0_81::SecureBuffer;

// One block is watched at a time. Nothing is allocated while it is, for free() is called from everywhere.
struct Watch {
    unsigned char const* block = nullptr;
    std::size_t size = 0;
    char calls[256] = {};

    void note(char const* what) {
        if (std::strlen(calls) + std::strlen(what) < sizeof calls) {
            std::strcat(calls, what);
        }
    }

    char const* content() const {
        return std::all_of(block, block + size, [](unsigned char byte) { return byte == 0; }) ? "wiped"
                                                                                              : "full";
    }
};

Watch watch;
bool isWatching = false;

using Lock = int (*)(void const*, std::size_t);
using Free = void (*)(void*);

template <class Function>
Function next(char const* name) {
    return reinterpret_cast<Function>(dlsym(RTLD_NEXT, name));
}

} // namespace

// Found before the system's own, by the shared library as well.
#define ORL_TEST_EXPORT __attribute__((visibility("default")))

extern "C" {

ORL_TEST_EXPORT int mlock(void const* address, std::size_t size) noexcept {
    if (isWatching) {
        watch.note(address == watch.block && size == watch.size ? "lock " : "lock-other ");
    }
    return 0;
}

ORL_TEST_EXPORT int munlock(void const* address, std::size_t size) noexcept {
    if (isWatching) {
        watch.note("unlock-");
        watch.note(address == watch.block && size == watch.size ? watch.content() : "other");
        watch.note(" ");
    }
    return 0;
}

ORL_TEST_EXPORT void free(void* block) noexcept {
    static Free const systemFree = next<Free>("free");
    if (isWatching && block == watch.block && block) {
        watch.note("free-");
        watch.note(watch.content());
        watch.note(" ");
    }
    systemFree(block);
}
}

namespace {

// Watches a block from here to the end of the operation.
template <class Operation>
std::string callsDuring(unsigned char const* block, std::size_t size, Operation operation) {
    watch = Watch{block, size, {}};
    isWatching = true;
    operation();
    isWatching = false;
    return watch.calls;
}

template <class Operation>
std::string callsDuring(SecureBuffer const& buffer, Operation operation) {
    return callsDuring(buffer.getBytes(), buffer.getSize(), operation);
}

void fill(SecureBuffer& buffer) { std::memset(buffer.get(), 'S', buffer.getSize()); }

bool isFull(SecureBuffer const& buffer) {
    unsigned char const* const bytes = buffer.getBytes();
    return std::all_of(bytes, bytes + buffer.getSize(), [](unsigned char byte) { return byte == 'S'; });
}

TEST(SecureBuffer, LocksWhatItAllocates) {
    EXPECT_EQ(callsDuring(nullptr, 0, [] { SecureBuffer const buffer(64); }), "lock-other unlock-other ");
}

TEST(SecureBuffer, TheDestructorWipesThenUnlocksThenFrees) {
    auto* const buffer = new SecureBuffer(64);
    fill(*buffer);
    EXPECT_EQ(callsDuring(*buffer, [&] { delete buffer; }), "unlock-wiped free-wiped ");
}

TEST(SecureBuffer, ACopyIsDeepAndLocked) {
    SecureBuffer source(64);
    fill(source);
    std::string calls = callsDuring(source, [&] {
        SecureBuffer const copy(source);
        watch.note(isFull(copy) && copy.get() != source.get() ? "copied " : "wrong ");
    });
    EXPECT_EQ(calls, "lock-other copied unlock-other ");
}

TEST(SecureBuffer, AMoveIsADeepCopyThatLocksNothingAndKeepsItsSource) {
    SecureBuffer source(64);
    fill(source);
    SecureBuffer* moved = nullptr;
    EXPECT_EQ(callsDuring(source, [&] { moved = new SecureBuffer(std::move(source)); }), "");
    EXPECT_NE(moved->get(), source.get()); // NOLINT(bugprone-use-after-move,clang-analyzer-cplusplus.Move)
    EXPECT_TRUE(moved->ownsMemory());
    EXPECT_TRUE(isFull(*moved));
    EXPECT_EQ(source.getSize(), 64U);
    EXPECT_TRUE(isFull(source));
    delete moved;
}

TEST(SecureBuffer, CopyAssignmentWipesUnlocksFreesAndLocksTheCopy) {
    SecureBuffer source(32);
    fill(source);
    SecureBuffer target(64);
    fill(target);
    EXPECT_EQ(callsDuring(target, [&] { target = source; }), "unlock-wiped free-wiped lock-other ");
    EXPECT_EQ(target.getSize(), 32U);
    EXPECT_TRUE(isFull(target));
}

TEST(SecureBuffer, CopyAssignmentUnlocksABlockThatItDoesNotOwnAndLeavesItsBytes) {
    SecureBuffer source(32);
    fill(source);
    SecureBuffer target(1);
    unsigned char foreign[64];
    std::memset(foreign, 'F', sizeof foreign);
    target.setBuffer(foreign, sizeof foreign);
    EXPECT_EQ(callsDuring(target, [&] { target = source; }), "unlock-full lock-other ");
    EXPECT_EQ(foreign[0], 'F');
    EXPECT_TRUE(target.ownsMemory());
}

TEST(SecureBuffer, CopyAssignmentUnlocksEvenANullBlock) {
    SecureBuffer const source(32);
    SecureBuffer target(1);
    target.setBuffer(nullptr, 0);
    EXPECT_EQ(callsDuring(nullptr, 0, [&] { target = source; }), "unlock-wiped lock-other ");
}

TEST(SecureBuffer, MoveAssignmentWipesAndFreesWithoutUnlockingOrLocking) {
    SecureBuffer source(32);
    fill(source);
    SecureBuffer target(64);
    fill(target);
    EXPECT_EQ(callsDuring(target, [&] { target = std::move(source); }), "free-wiped ");
    EXPECT_EQ(target.getSize(), 32U);
    EXPECT_TRUE(isFull(target));
    EXPECT_TRUE(isFull(source)); // NOLINT(bugprone-use-after-move,clang-analyzer-cplusplus.Move)
    EXPECT_NE(source.get(), target.get());
}

TEST(SecureBuffer, SelfAssignmentDoesNothing) {
    SecureBuffer buffer(64);
    fill(buffer);
    SecureBuffer& self = buffer;
    EXPECT_EQ(callsDuring(buffer, [&] { buffer = self; }), "");
    EXPECT_EQ(callsDuring(buffer, [&] { buffer = std::move(self); }), "");
    EXPECT_TRUE(isFull(buffer));
}

TEST(SecureBuffer, AllocatingWipesAndFreesWithoutUnlockingAndLocksTheNewBlock) {
    SecureBuffer buffer(64);
    fill(buffer);
    EXPECT_EQ(callsDuring(buffer, [&] { buffer.allocate(4096); }), "free-wiped lock-other ");
    EXPECT_EQ(buffer.getSize(), 4096U);
}

TEST(SecureBuffer, TakingAForeignBlockWipesAndFreesItsOwnAndLocksTheForeign) {
    SecureBuffer buffer(64);
    fill(buffer);
    unsigned char foreign[64];
    EXPECT_EQ(callsDuring(buffer, [&] { buffer.setBuffer(foreign, sizeof foreign); }),
              "free-wiped lock-other ");
    EXPECT_FALSE(buffer.ownsMemory());
}

TEST(SecureBuffer, AForeignBlockStaysLockedAndUnchangedAfterTheEnd) {
    unsigned char foreign[64];
    std::memset(foreign, 'F', sizeof foreign);
    std::string const calls = callsDuring(foreign, sizeof foreign, [&] {
        SecureBuffer buffer(1);
        watch.note("set ");
        buffer.setBuffer(foreign, sizeof foreign);
    });
    EXPECT_EQ(calls, "lock-other set lock ");
    EXPECT_TRUE(
        std::all_of(foreign, foreign + sizeof foreign, [](unsigned char byte) { return byte == 'F'; }));
}

TEST(SecureBuffer, WhatReplacesAForeignBlockNeitherWipesNorUnlocksNorFreesIt) {
    unsigned char foreign[64];
    std::memset(foreign, 'F', sizeof foreign);
    unsigned char other[32];
    SecureBuffer source(32);
    auto const callsOver = [&](auto operation) {
        SecureBuffer buffer(1);
        buffer.setBuffer(foreign, sizeof foreign);
        return callsDuring(buffer, [&] { operation(buffer); });
    };
    EXPECT_EQ(callsOver([](SecureBuffer& buffer) { buffer.allocate(32); }), "lock-other ");
    EXPECT_EQ(callsOver([&](SecureBuffer& buffer) { buffer.setBuffer(other, sizeof other); }), "lock-other ");
    EXPECT_EQ(callsOver([&](SecureBuffer& buffer) { buffer = std::move(source); }), "");
    EXPECT_TRUE(
        std::all_of(foreign, foreign + sizeof foreign, [](unsigned char byte) { return byte == 'F'; }));
}

TEST(SecureBuffer, ABlockThatCannotBeAllocatedIsNullWithItsSizeAndIsNeverWiped) {
    constexpr unsigned long kTooMuch = ULONG_MAX;
    SecureBuffer buffer(kTooMuch);
    EXPECT_EQ(buffer.get(), nullptr);
    EXPECT_EQ(buffer.getSize(), kTooMuch);
    EXPECT_TRUE(buffer.ownsMemory());
    EXPECT_EQ(callsDuring(nullptr, kTooMuch, [&] { buffer.allocate(kTooMuch); }), "lock ");
    unsigned char foreign[64];
    EXPECT_EQ(callsDuring(foreign, sizeof foreign, [&] { buffer.setBuffer(foreign, sizeof foreign); }),
              "lock ");
    buffer.allocate(kTooMuch);
    SecureBuffer source(32);
    fill(source);
    buffer = std::move(source);
    EXPECT_TRUE(isFull(buffer));
    EXPECT_EQ(callsDuring(nullptr, kTooMuch, [] { SecureBuffer const none(kTooMuch); }), "lock ");
}

TEST(SecureBuffer, CopiesThroughTheBaseAreNotSecure) {
    SecureBuffer source(64);
    fill(source);
    ORL_0_81::Buffer const copy(source);
    EXPECT_EQ(copy.getSize(), 64U);
    EXPECT_NE(copy.get(), source.get());
}

} // namespace
