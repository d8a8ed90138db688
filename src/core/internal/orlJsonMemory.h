// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#ifndef ORL_JSON_MEMORY_H
#define ORL_JSON_MEMORY_H

#include <rapidjson/allocators.h>
#include <rapidjson/internal/stack.h>

#include <cstddef>
#include <new>

/// \file
/// What RapidJSON does when there is no memory: it throws `std::bad_alloc`.
///
/// By itself it takes what `malloc` gives for memory and writes there, null or not. All its memory comes through two
/// functions of its own, the one that gives a pool of values its next chunk and the one that gives a stack its size,
/// and those are specialised here. Its containers are left as they were, or are only fit to be destroyed, which is all
/// that anybody does with them when an exception passes.
///
/// An allocator of our own would be the usual way. But the type of a value names its allocator, and
/// `rapidjson::Value` stands in the interface of the nodes.
///
/// Included by the compiler's command line before all else (see orl_use_json), for the functions must be the same in
/// every unit.

RAPIDJSON_NAMESPACE_BEGIN

template <>
inline bool MemoryPoolAllocator<CrtAllocator>::AddChunk(std::size_t capacity) {
    if (!baseAllocator_) {
        ownBaseAllocator_ = baseAllocator_ = RAPIDJSON_NEW(CrtAllocator());
    }
    void* const memory = baseAllocator_->Malloc(RAPIDJSON_ALIGN(sizeof(ChunkHeader)) + capacity);
    if (!memory) {
        throw std::bad_alloc();
    }
    auto* const chunk = static_cast<ChunkHeader*>(memory);
    chunk->capacity = capacity;
    chunk->size = 0;
    chunk->next = chunkHead_;
    chunkHead_ = chunk;
    return true;
}

namespace internal {

template <>
inline void Stack<CrtAllocator>::Resize(std::size_t newCapacity) {
    void* const memory = allocator_->Realloc(stack_, GetCapacity(), newCapacity);
    if (!memory) {
        throw std::bad_alloc();
    }
    std::size_t const size = GetSize();
    stack_ = static_cast<char*>(memory);
    stackTop_ = stack_ + size;
    stackEnd_ = stack_ + newCapacity;
}

} // namespace internal

RAPIDJSON_NAMESPACE_END

#endif // ORL_JSON_MEMORY_H
