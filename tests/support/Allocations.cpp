// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "support/Allocations.h"

#include <cstddef>
#include <cstdlib>

namespace {

long allocationCount = 0;
long liveCount = 0;
long allocationsUntilFailure = -1; // negative: never

void* allocate(std::size_t size) {
    if (allocationsUntilFailure == 0) {
        throw std::bad_alloc();
    }
    if (allocationsUntilFailure > 0) {
        --allocationsUntilFailure;
    }
    void* const memory = std::malloc(size == 0 ? 1 : size);
    if (!memory) {
        throw std::bad_alloc();
    }
    ++allocationCount;
    ++liveCount;
    return memory;
}

void deallocate(void* memory) {
    if (memory) {
        --liveCount;
        std::free(memory);
    }
}

} // namespace

void* operator new(std::size_t size) { return allocate(size); }
void* operator new[](std::size_t size) { return allocate(size); }
void operator delete(void* memory) noexcept { deallocate(memory); }
void operator delete[](void* memory) noexcept { deallocate(memory); }
void operator delete(void* memory, std::size_t) noexcept { deallocate(memory); }
void operator delete[](void* memory, std::size_t) noexcept { deallocate(memory); }

long liveAllocations() { return liveCount; }

long allAllocations() { return allocationCount; }

void failAllocationsAfter(long count) { allocationsUntilFailure = count; }
