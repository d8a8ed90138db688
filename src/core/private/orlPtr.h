// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#ifndef ORL_PTR_H
#define ORL_PTR_H

#include "private/orlPtrRep.h"

namespace ORL_0_81 {

/// A counted pointer to a T that is never changed while it is shared: whoever wants to write asks
/// isSoleOwner() first and works on a clone() when the answer is no.
///
/// Two pointers in size, null by default. A class that must not show this type keeps the pair of fields
/// itself and comes by a Ptr with share() or adopt(); detach() gives the pair back.
///
/// Thread safety: Ptr objects that share a T may live on different threads, each used by one thread at a
/// time.
template <class T>
class Ptr {
public:
    /// Null, without any allocation.
    Ptr() noexcept = default;

    /// Takes the ownership of `object`, which may be null.
    ///
    /// Ends the process when there is no memory for the control block.
    explicit Ptr(T* object) noexcept
        : m_pointee(object), m_cntrlBlk(object ? new PtrInternal::PtrCntrlBlkPtr<T>(object) : nullptr) {}

    Ptr(Ptr const& other) noexcept : m_pointee(other.m_pointee), m_cntrlBlk(other.m_cntrlBlk) {
        if (m_cntrlBlk) {
            PtrInternal::acquire(m_cntrlBlk);
        }
    }

    /// Takes the other's share; the other becomes null and no count changes.
    Ptr(Ptr&& other) noexcept { swap(other); }

    /// Takes its share of the new object before it releases the old one. Self-assignment is safe.
    Ptr& operator=(Ptr const& other) noexcept {
        Ptr(other).swap(*this);
        return *this;
    }

    Ptr& operator=(Ptr&& other) noexcept {
        Ptr(static_cast<Ptr&&>(other)).swap(*this);
        return *this;
    }

    ~Ptr() {
        if (m_cntrlBlk) {
            PtrInternal::release(m_cntrlBlk);
        }
    }

    /// Takes over the share that a pair of fields stands for. No count changes.
    static Ptr adopt(PtrInternal::PtrRepUntyped const& rep) noexcept {
        Ptr result;
        result.m_pointee = static_cast<T*>(rep.m_pointee);
        result.m_cntrlBlk = rep.m_cntrlBlk;
        return result;
    }

    /// Makes a further share of the object that a pair of fields leads to.
    static Ptr share(PtrInternal::PtrRepUntyped const& rep) noexcept {
        if (rep.m_cntrlBlk) {
            PtrInternal::acquire(rep.m_cntrlBlk);
        }
        return adopt(rep);
    }

    /// Copies the object that a pair of fields, not null, leads to.
    ///
    /// \returns the sole owner of the copy. What T's copy throws passes through.
    static Ptr clone(PtrInternal::PtrRepUntyped const& rep) {
        PtrInternal::PtrRepUntyped copy;
        rep.m_cntrlBlk->m_vtbl->clonePointee(rep.m_cntrlBlk, rep.m_pointee, &copy);
        return adopt(copy);
    }

    /// Hands the share over to the caller as a pair of fields, and becomes null. No count changes.
    PtrInternal::PtrRepUntyped detach() noexcept {
        PtrInternal::PtrRepUntyped rep;
        rep.m_pointee = m_pointee;
        rep.m_cntrlBlk = m_cntrlBlk;
        m_pointee = nullptr;
        m_cntrlBlk = nullptr;
        return rep;
    }

    /// The object, or null.
    T* get() const noexcept { return m_pointee; }

    T& operator*() const noexcept { return *m_pointee; }
    T* operator->() const noexcept { return m_pointee; }

    /// True when no other Ptr shares the object, so that it may be changed. Must not be null.
    bool isSoleOwner() const noexcept { return PtrInternal::isSoleOwner(m_cntrlBlk); }

    /// Exchanges the fields; no count changes.
    void swap(Ptr& other) noexcept {
        T* const pointee = m_pointee;
        PtrInternal::PtrCntrlBlk* const block = m_cntrlBlk;
        m_pointee = other.m_pointee;
        m_cntrlBlk = other.m_cntrlBlk;
        other.m_pointee = pointee;
        other.m_cntrlBlk = block;
    }

private:
    T* m_pointee = nullptr;
    PtrInternal::PtrCntrlBlk* m_cntrlBlk = nullptr;
};

} // namespace ORL_0_81

#endif // ORL_PTR_H
