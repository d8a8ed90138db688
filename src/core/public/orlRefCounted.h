// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#ifndef ORL_REF_COUNTED_H
#define ORL_REF_COUNTED_H

#include "orlExport.h"

/// \file
/// Intrusive reference counting. The count lives in the object; SharedPtr (orlSharedPtr.h) drives it.
///
/// RefCountedST is for objects that stay on one thread at a time, RefCountedMT for those that travel.
/// The count is no part of an object's value: a copy is a new object and starts with no owner.

namespace ORL_0_81 {

/// What SharedPtr needs of an object. Both implementations offer exactly these operations, in this order.
class ORL_CORE_EXPORT RefCountedBase {
public:
    virtual ~RefCountedBase();

    /// Adds one to the count.
    virtual void incref() const = 0;

    /// Subtracts one from the count.
    ///
    /// Never deletes: whoever receives true owns the object at that moment and destroys it.
    ///
    /// \returns true when this call took the count to zero. A call on a count of 0 is a caller's fault: the
    ///     count wraps below zero and the result is false.
    virtual bool decref() const = 0;

    /// \returns the current count. For RefCountedMT a snapshot, which other threads may make out of date.
    virtual int refcount() const = 0;

protected:
    RefCountedBase() = default;
    /// @{
    /// Nothing is copied: a count belongs to its object.
    RefCountedBase(RefCountedBase const&) = default;
    RefCountedBase& operator=(RefCountedBase const&) = default;
    /// @}
};

/// A plain count, for objects that one thread at a time uses, together with all SharedPtr to them.
class ORL_CORE_EXPORT RefCountedST : public RefCountedBase {
public:
    /// Starts with a count of 0.
    RefCountedST() : m_count(0) {}

    /// Starts with a count of 0. The source is neither read nor changed.
    RefCountedST(RefCountedST const& other);

    /// Does nothing: the target keeps its count.
    RefCountedST& operator=(RefCountedST const& other);

    ~RefCountedST() override;

    void incref() const override;
    bool decref() const override;
    int refcount() const override;

private:
    mutable int m_count;
};

/// An atomic count in the strongest memory order, for objects whose SharedPtr live on several threads.
///
/// The count stands behind a private allocation, so that no atomic type stands in this declaration. A
/// constructor that cannot allocate it passes the allocator's exception on.
class ORL_CORE_EXPORT RefCountedMT : public RefCountedBase {
public:
    /// Starts with a count of 0.
    RefCountedMT();

    /// Starts with a count of 0. The source is neither read nor changed.
    RefCountedMT(RefCountedMT const& other);

    /// Takes the source's count with its allocation. The source may then only be destroyed or assigned a
    /// moved value.
    RefCountedMT(RefCountedMT&& other) noexcept;

    /// Does nothing: the target keeps its count.
    RefCountedMT& operator=(RefCountedMT const& other);

    /// Self-assignment does nothing. Otherwise frees the target's count and takes the source's, which may
    /// then only be destroyed or assigned a moved value.
    RefCountedMT& operator=(RefCountedMT&& other) noexcept;

    /// Frees the count without looking at it.
    ~RefCountedMT() override;

    void incref() const override;
    bool decref() const override;
    int refcount() const override;

private:
    class Imp;
    Imp* m_imp; // owned; null only in a moved-from object
};

} // namespace ORL_0_81

#endif // ORL_REF_COUNTED_H
