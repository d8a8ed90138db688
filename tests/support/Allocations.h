// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#ifndef ALLOCATIONS_H
#define ALLOCATIONS_H

#include <new>

/// \file
/// Counts what a program allocates with `new`, and lets it fail on demand. Only for tests on one thread; a
/// program that uses this links Allocations.cpp, which replaces the allocation functions.

/// How many allocations have not been freed.
long liveAllocations();

/// How many allocations there were in all.
long allAllocations();

/// Lets the allocation after the next `count` ones fail, and all that follow; never, if `count` is negative.
void failAllocationsAfter(long count);

/// How many allocations the operation makes.
template <class Operation>
long allocationsOf(Operation const& operation) {
    long const before = allAllocations();
    operation();
    return allAllocations() - before;
}

/// Lets allocations fail until it goes out of scope.
class AllocationFailure {
public:
    explicit AllocationFailure(long count) { failAllocationsAfter(count); }
    AllocationFailure(AllocationFailure const&) = delete;
    AllocationFailure& operator=(AllocationFailure const&) = delete;
    ~AllocationFailure() { failAllocationsAfter(-1); }
};

/// Performs the operation while allocations fail after the first few; true when the failure came through.
template <class Operation>
bool runsOutOfMemory(long allocationsBefore, Operation const& operation) {
    AllocationFailure const failure(allocationsBefore);
    try {
        operation();
    } catch (std::bad_alloc const&) {
        return true;
    }
    return false;
}

#endif // ALLOCATIONS_H
