// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "support/VirtualSlot.h"

#include <orlCrypto.h>

#include <orlSharedPtr.h>

#include <gtest/gtest.h>

#include <thread>
#include <type_traits>
#include <vector>

namespace {

using namespace ORL_0_81;

// Override only what they must.

class Locker : public Encrypter {
public:
    Status encrypt(Buffer const& plain, Buffer& cipher) override {
        cipher = plain;
        return Status::kSuccess;
    }
};

class Opener : public Decrypter {
public:
    Status decrypt(Buffer const&, Buffer&) override { return Status::kCipherFailure; }
};

TEST(EncrypterTest, HasTheSameEmptySaltOnEveryCall) {
    SharedPtr<Encrypter> const first(new Locker);
    SharedPtr<Encrypter> const second(new Locker);
    Buffer const& salt = first->getSalt();
    EXPECT_EQ(salt.getSize(), 0U);
    EXPECT_EQ(&first->getSalt(), &salt);
    EXPECT_EQ(&second->getSalt(), &salt);
}

TEST(EncrypterTest, TheSaltIsReachedFromSeveralThreads) {
    Locker const encrypter;
    std::vector<Buffer const*> salts(4);
    std::vector<std::thread> threads;
    for (Buffer const*& salt : salts) {
        threads.emplace_back([&encrypter, &salt] { salt = &encrypter.getSalt(); });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(salts, std::vector<Buffer const*>(4, &encrypter.getSalt()));
}

TEST(EncrypterTest, AnEncrypterMayHaveASaltOfItsOwn) {
    struct Salted : Locker {
        Buffer const& getSalt() const override { return m_salt; }
        Buffer m_salt = Buffer(3);
    };
    SharedPtr<Encrypter> const encrypter(new Salted);
    EXPECT_EQ(encrypter->getSalt().getSize(), 3U);
}

TEST(EncrypterTest, EncryptsThroughTheBase) {
    SharedPtr<Encrypter> const encrypter(new Locker);
    Buffer plain(2);
    plain.getBytes()[0] = 1;
    plain.getBytes()[1] = 2;
    Buffer cipher(0);
    EXPECT_TRUE(encrypter->encrypt(plain, cipher).success());
    ASSERT_EQ(cipher.getSize(), 2U);
    EXPECT_EQ(cipher.getBytes()[1], 2);
}

TEST(DecrypterTest, IsNeutralByDefault) {
    SharedPtr<Decrypter> const decrypter(new Opener);
    EXPECT_EQ(decrypter->getBlockSize(), 0U);
    EXPECT_EQ(decrypter->getKeySize(), 0U);
    Buffer salt(1);
    salt.getBytes()[0] = 7;
    decrypter->setSalt(salt);
    EXPECT_EQ(salt.getSize(), 1U);
    EXPECT_EQ(salt.getBytes()[0], 7);
    EXPECT_EQ(decrypter->getBlockSize(), 0U);
    Buffer plain(0);
    EXPECT_EQ(decrypter->decrypt(salt, plain), Status::kCipherFailure);
}

TEST(CryptoTest, BothHaveTheLayoutThatProgramsRelyOn) {
    EXPECT_TRUE(std::is_abstract_v<Encrypter>);
    EXPECT_TRUE(std::is_abstract_v<Decrypter>);
    EXPECT_EQ(sizeof(Encrypter), sizeof(RefCountedMT));
    EXPECT_EQ(sizeof(Decrypter), sizeof(RefCountedMT));
    EXPECT_EQ(virtualSlot(&Encrypter::encrypt), 5U);
    EXPECT_EQ(virtualSlot(&Encrypter::getSalt), 6U);
    EXPECT_EQ(virtualSlot(&Decrypter::decrypt), 5U);
    EXPECT_EQ(virtualSlot(&Decrypter::setSalt), 6U);
    EXPECT_EQ(virtualSlot(&Decrypter::getBlockSize), 7U);
    EXPECT_EQ(virtualSlot(&Decrypter::getKeySize), 8U);
}

} // namespace
