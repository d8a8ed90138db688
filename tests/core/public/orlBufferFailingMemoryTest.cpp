// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "support/orlFailingMemory.h"

#include <orlBuffer.h>
#include <orlCrypto.h>
#include <orlSharedPtr.h>

#include <gtest/gtest.h>

#include <cstring>
#include <utility>

// What a block of bytes is when malloc gives none: null, with the size that was asked for, and nobody hears of it.

namespace {

using namespace ORL_0_81;
using orlTest::canFailMalloc;
using orlTest::failEachAllocation;
using orlTest::FailingMemory;

constexpr unsigned long SIZE = 100;

template <class SomeBuffer>
void expectBlock(SomeBuffer const& buffer, unsigned long size, FailingMemory const& memory) {
    EXPECT_EQ(buffer.getSize(), size);
    EXPECT_TRUE(buffer.ownsMemory());
    EXPECT_TRUE(buffer.get() || memory.hasFailed());
}

template <class SomeBuffer>
void failBuffers() {
    if (!canFailMalloc()) {
        GTEST_SKIP() << "malloc is the sanitizer's here";
    }
    failEachAllocation([](FailingMemory& memory) {
        EXPECT_TRUE(memory.run([&memory] {
            SomeBuffer buffer(SIZE);
            expectBlock(buffer, SIZE, memory);
            if (buffer.get()) {
                std::memset(buffer.get(), 'x', SIZE);
            }
            SomeBuffer copy(buffer);
            expectBlock(copy, SIZE, memory);
            if (buffer.get() && copy.get()) {
                EXPECT_EQ(std::memcmp(copy.get(), buffer.get(), SIZE), 0);
            }
            copy.allocate(2 * SIZE);
            expectBlock(copy, 2 * SIZE, memory);
            copy = buffer;
            expectBlock(copy, SIZE, memory);
            if (buffer.get() && copy.get()) {
                EXPECT_EQ(std::memcmp(copy.get(), buffer.get(), SIZE), 0);
            }
            SomeBuffer moved(std::move(copy));
            expectBlock(moved, SIZE, memory);
            copy = std::move(moved); // NOLINT(bugprone-use-after-move): what a move leaves is told
            expectBlock(copy, SIZE, memory);

            unsigned char foreign[4] = {1, 2, 3, 4};
            copy.setBuffer(foreign, sizeof foreign);
            SomeBuffer const own(copy);
            expectBlock(own, sizeof foreign, memory);
        }));
    });
}

TEST(BufferFailingMemory, AMissingBlockIsNullAndHasTheSizeThatWasAskedFor) { failBuffers<Buffer>(); }

TEST(BufferFailingMemory, AMissingSecureBlockIsNullAndHasTheSizeThatWasAskedFor) {
    failBuffers<SecureBuffer>();
}

class PlainEncrypter : public Encrypter {
public:
    Status encrypt(Buffer const& plain, Buffer& cipher) override {
        cipher = plain;
        return cipher.get() ? Status::kSuccess : Status::kFailure;
    }
};

class PlainDecrypter : public Decrypter {
public:
    Status decrypt(Buffer const& cipher, Buffer& plain) override {
        plain = cipher;
        return plain.get() ? Status::kSuccess : Status::kFailure;
    }
};

TEST(CryptoFailingMemory, TheHalvesOfACipherAreMadeWholeOrNotAtAll) {
    failEachAllocation([](FailingMemory& memory) {
        SharedPtr<Encrypter> encrypter;
        SharedPtr<Decrypter> decrypter;
        bool const done = memory.run([&] {
            encrypter.reset(new PlainEncrypter);
            static_cast<void>(encrypter->getSalt());
            decrypter.reset(new PlainDecrypter);
            decrypter->setSalt(encrypter->getSalt());
        });
        EXPECT_EQ(encrypter && decrypter, done);
        if (encrypter) {
            EXPECT_EQ(encrypter->getSalt().getSize(), 0U);
            EXPECT_EQ(encrypter->refcount(), 1);
        }
    });
}

} // namespace
