// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#ifndef VIRTUAL_SLOT_H
#define VIRTUAL_SLOT_H

#include <cstddef>
#include <cstring>

/// The number of a virtual operation in its class's table, from 0 on, as programs that were compiled earlier
/// rely on it. A virtual destructor takes two numbers.
///
/// Reads a pointer to member as the Itanium C++ ABI lays it out.
template <class Member>
std::size_t virtualSlot(Member member) {
    std::size_t words[2] = {0, 0};
    static_assert(sizeof member == sizeof words);
    std::memcpy(words, &member, sizeof words);
#if defined(__arm__) || defined(__aarch64__)
    std::size_t const offset = words[0];
#else
    std::size_t const offset = words[0] - 1;
#endif
    return offset / sizeof(void*);
}

#endif // VIRTUAL_SLOT_H
