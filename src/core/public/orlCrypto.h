// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#ifndef ORL_CRYPTO_H
#define ORL_CRYPTO_H

#include "orlBuffer.h"
#include "orlExport.h"
#include "orlRefCounted.h"
#include "orlStatus.h"

/// \file
/// The two halves of a cipher. Other libraries implement them; this one has no cipher and calls none.
/// Failures are told with the codes from Status::kHashFailure on.
///
/// Both are held through SharedPtr; the counts are thread-safe, the rest is as the implementation tells.

namespace ORL_0_81 {

/// Turns plain bytes into a cipher's.
class ORL_CORE_EXPORT Encrypter : public RefCountedMT {
public:
    Encrypter();
    ~Encrypter() override;

    /// Encrypts `plain`, and puts the result in the place of what `cipher` holds.
    virtual Status encrypt(Buffer const& plain, Buffer& cipher) = 0;

    /// The salt that the decrypter needs.
    ///
    /// \returns here an empty buffer, the same for every object of the process and safe to ask for on any
    /// thread.
    virtual Buffer const& getSalt() const;
};

/// Turns a cipher's bytes into plain ones.
class ORL_CORE_EXPORT Decrypter : public RefCountedMT {
public:
    Decrypter();
    ~Decrypter() override;

    /// Decrypts `cipher`, and puts the result in the place of what `plain` holds.
    virtual Status decrypt(Buffer const& cipher, Buffer& plain) = 0;

    /// Takes the encrypter's salt. Here: does nothing.
    virtual void setSalt(Buffer const& salt);

    /// In bytes; here 0.
    virtual unsigned long getBlockSize() const;

    /// In bytes; here 0.
    virtual unsigned long getKeySize() const;
};

} // namespace ORL_0_81

#endif // ORL_CRYPTO_H
