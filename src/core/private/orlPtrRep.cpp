// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "orlPtrRep.h"

namespace ORL_0_81 {
namespace PtrInternal {

void acquire(PtrCntrlBlk* block) noexcept { block->m_count.fetch_add(1); }

void release(PtrCntrlBlk* block) noexcept {
    if (block->m_count.fetch_sub(1) == 1) {
        block->m_vtbl->dispose(block);
    }
}

bool isSoleOwner(PtrCntrlBlk const* block) noexcept {
    // A plain load, no read-modify-write: whoever sees 1 holds the only pointer, and nobody else can make a
    // second one. It must be an acquire load, though, for the caller goes on to write the object: everything
    // that former owners read of it has to happen before, and their release of the count is what it pairs
    // with. On x86 that is an ordinary move.
    return block->m_count.load(std::memory_order_acquire) == 1;
}

} // namespace PtrInternal
} // namespace ORL_0_81
