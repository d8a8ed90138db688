// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#ifndef MOVED_FROM_H
#define MOVED_FROM_H

#include <cstring>

/// True for a value whose one pointer is null, as a move leaves it. Nothing can be asked of such an object,
/// so this looks at its bytes.
template <class Value>
bool isMovedFrom(Value const& value) {
    static_assert(sizeof(Value) == sizeof(void*));
    void* pointer = nullptr;
    std::memcpy(&pointer, &value, sizeof pointer);
    return pointer == nullptr;
}

#endif // MOVED_FROM_H
