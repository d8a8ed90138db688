// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "support/orlHeapPeak.h"

#include <malloc.h>

#include <algorithm>
#include <cstdlib>
#include <new>

namespace {

std::ptrdiff_t held = 0;
std::ptrdiff_t base = 0;
std::ptrdiff_t peak = 0;

void* gained(void* block) {
    held += static_cast<std::ptrdiff_t>(malloc_usable_size(block));
    peak = std::max(peak, held);
    return block;
}

void lost(void* block) { held -= static_cast<std::ptrdiff_t>(malloc_usable_size(block)); }

} // namespace

extern "C" {

// The linker's names for the wrapped functions.
// NOLINTBEGIN(bugprone-reserved-identifier,cert-dcl37-c,cert-dcl51-cpp)
void* __real_malloc(std::size_t size);
void* __real_calloc(std::size_t count, std::size_t size);
void* __real_realloc(void* block, std::size_t size);
void __real_free(void* block);

void* __wrap_malloc(std::size_t size) { return gained(__real_malloc(size)); }

void* __wrap_calloc(std::size_t count, std::size_t size) { return gained(__real_calloc(count, size)); }

void* __wrap_realloc(void* block, std::size_t size) {
    lost(block);
    return gained(__real_realloc(block, size));
}

void __wrap_free(void* block) {
    lost(block);
    __real_free(block);
}
// NOLINTEND(bugprone-reserved-identifier,cert-dcl37-c,cert-dcl51-cpp)
}

void* operator new(std::size_t size) {
    if (void* const block = std::malloc(size ? size : 1)) {
        return block;
    }
    throw std::bad_alloc();
}

void operator delete(void* block) noexcept { std::free(block); }

void operator delete(void* block, std::size_t) noexcept { std::free(block); }

namespace HeapPeak {

void reset() { base = peak = held; }

std::size_t bytes() { return static_cast<std::size_t>(peak - base); }

} // namespace HeapPeak
