// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "orlCrypto.h"

namespace ORL_0_81 {

Encrypter::Encrypter() = default;

Encrypter::~Encrypter() = default;

Buffer const& Encrypter::getSalt() const {
    static Buffer const no_salt(0);
    return no_salt;
}

Decrypter::Decrypter() = default;

Decrypter::~Decrypter() = default;

void Decrypter::setSalt(Buffer const&) {}

unsigned long Decrypter::getBlockSize() const { return 0; }

unsigned long Decrypter::getKeySize() const { return 0; }

} // namespace ORL_0_81
