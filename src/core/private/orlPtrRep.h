// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#ifndef ORL_PTR_REP_H
#define ORL_PTR_REP_H

#include <atomic>
#include <cstdint>

/// \file
/// What a copy-on-write pointer (orlPtr.h) is made of, without its type: an object's control block, which
/// counts the pointers to it, and the pair of fields that each pointer has.

namespace ORL_0_81 {
namespace PtrInternal {

struct PtrCntrlBlk;

/// The two fields of a Ptr, whatever it points to. Owns nothing by itself.
struct PtrRepUntyped {
    void* m_pointee = nullptr;
    PtrCntrlBlk* m_cntrlBlk = nullptr; ///< null exactly when the pointee is
};

/// Counts the pointers that share an object, and knows how to copy and to free it.
///
/// The operations stand in a table made by hand rather than in virtual functions: public headers name this
/// type without defining it, and its layout must not depend on a compiler's idea of a virtual table.
struct PtrCntrlBlk {
    /// The operations of one kind of control block.
    struct Vtbl {
        /// Copies the block's object into a new allocation and gives it a new block with a count of 1.
        ///
        /// \param p a place in or at the block's object.
        /// \param result receives the new block, and a pointee as far from the new object as `p` is from the
        ///     old one. Untouched when the copy of the object throws; then nothing is left behind either.
        void (*clonePointee)(PtrCntrlBlk const* block, void const* p, PtrRepUntyped* result);

        /// Destroys and frees the block's object, if it has one, then frees the block.
        void (*dispose)(PtrCntrlBlk* block) noexcept;
    };

    explicit PtrCntrlBlk(Vtbl const* vtbl) noexcept : m_vtbl(vtbl), m_count(1) {}
    PtrCntrlBlk(PtrCntrlBlk const&) = delete;
    PtrCntrlBlk& operator=(PtrCntrlBlk const&) = delete;

    Vtbl const* const m_vtbl;
    std::atomic<std::uint64_t> m_count; ///< the pointers that share this block

protected:
    ~PtrCntrlBlk() = default; // a block is freed as the kind that it is, through dispose
};

/// Adds a pointer to the block's count.
void acquire(PtrCntrlBlk* block) noexcept;

/// Takes a pointer off the block's count; the last one disposes of the object and the block.
void release(PtrCntrlBlk* block) noexcept;

/// True when the caller's pointer is the only one, so that the object may be changed.
bool isSoleOwner(PtrCntrlBlk const* block) noexcept;

/// The one kind of block in use: it owns a T that stands in an allocation of its own.
template <class T>
struct PtrCntrlBlkPtr : PtrCntrlBlk {
    /// Takes the ownership of `object`, which may be null.
    explicit PtrCntrlBlkPtr(T* object) noexcept : PtrCntrlBlk(&m_the_vtbl), m_object(object) {}

    T* const m_object;

    static Vtbl const m_the_vtbl;

private:
    // Ends the process when there is no memory: the object is already made and in nobody's hands yet.
    static PtrCntrlBlk* makeBlock(T* object) noexcept { return new PtrCntrlBlkPtr(object); }

    static void clonePointee(PtrCntrlBlk const* block, void const* p, PtrRepUntyped* result) {
        T const* const original = static_cast<PtrCntrlBlkPtr const*>(block)->m_object;
        auto const offset = static_cast<char const*>(p) - reinterpret_cast<char const*>(original);
        T* const copy = new T(*original);
        result->m_cntrlBlk = makeBlock(copy);
        result->m_pointee = reinterpret_cast<char*>(copy) + offset;
    }

    static void dispose(PtrCntrlBlk* block) noexcept {
        auto* const self = static_cast<PtrCntrlBlkPtr*>(block);
        delete self->m_object;
        delete self;
    }
};

template <class T>
PtrCntrlBlk::Vtbl const PtrCntrlBlkPtr<T>::m_the_vtbl = {&PtrCntrlBlkPtr::clonePointee,
                                                         &PtrCntrlBlkPtr::dispose};

} // namespace PtrInternal
} // namespace ORL_0_81

#endif // ORL_PTR_REP_H
