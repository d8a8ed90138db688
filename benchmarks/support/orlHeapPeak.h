// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#ifndef ORL_HEAP_PEAK_H
#define ORL_HEAP_PEAK_H

#include <cstddef>

/// The heap of a program that is linked with its malloc, realloc, calloc and free wrapped: bytes as the
/// allocator rounds them, through new as well. For programs of one thread.
namespace HeapPeak {

/// Forgets the peak so far; what is held now counts as nothing.
void reset();

/// \returns the most bytes held at one time since the reset, above what was held then.
std::size_t bytes();

} // namespace HeapPeak

#endif // ORL_HEAP_PEAK_H
