// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#ifndef ORL_SHARED_PTR_H
#define ORL_SHARED_PTR_H

#include "orlExport.h"

#include <type_traits>

namespace ORL_0_81 {

/// A pointer that shares ownership of an object which counts its own owners (orlRefCounted.h).
///
/// One pointer in size; null is allowed everywhere. T is any class with incref() and decref() as
/// RefCountedBase has them and a virtual destructor, through which the last owner deletes the object.
///
///     SharedPtr<Token> token(new MyToken);   // count 1
///     SharedPtr<Token> other = token;        // count 2
///     token.reset();                         // count 1; other deletes
///
/// A fresh object has a count of 0, so that the first SharedPtr brings it to 1. Taking the same raw pointer
/// twice is fine, since the count is the object's own.
///
/// Thread safety: one SharedPtr object belongs to one thread at a time. Different SharedPtr to one object may
/// live on different threads if T counts atomically (RefCountedMT).
///
/// Nothing here throws but what T's destructor throws. Dereferencing null is a caller's fault.
template <class T>
class ORL_CORE_EXPORT SharedPtr {
public:
    /// Null.
    SharedPtr() noexcept : m_object(nullptr) {}

    /// Null.
    SharedPtr(decltype(nullptr)) noexcept : m_object(nullptr) {}

    /// Takes a share of `object`, which may be null.
    SharedPtr(T* object) : m_object(object) { acquire(); }

    /// Takes a share of the other's object.
    SharedPtr(SharedPtr const& other) : m_object(other.m_object) { acquire(); }

    /// Takes the other's share; the other becomes null and no count changes.
    SharedPtr(SharedPtr&& other) noexcept : m_object(other.m_object) { other.m_object = nullptr; }

    /// Takes a share through a pointer type that converts, from derived to base or to const.
    template <class U, class = std::enable_if_t<std::is_convertible_v<U*, T*>>>
    SharedPtr(SharedPtr<U> const& other) : m_object(other.get()) {
        acquire();
    }

    ~SharedPtr() { release(m_object); }

    /// Takes a share of the other's object, then releases its own. Self-assignment is safe.
    SharedPtr& operator=(SharedPtr const& other) {
        if (this != &other) {
            SharedPtr(other).swap(*this);
        }
        return *this;
    }

    /// Takes the other's share, then releases its own; the other becomes null. Self-assignment is safe.
    SharedPtr& operator=(SharedPtr&& other) noexcept {
        SharedPtr(static_cast<SharedPtr&&>(other)).swap(*this);
        return *this;
    }

    /// The object, or null. Still owned by this pointer.
    T* get() const noexcept { return m_object; }

    /// @{
    /// The object, of which there must be one.
    T& operator*() const { return *m_object; }
    T* operator->() const { return m_object; }
    /// @}

    /// True when not null.
    explicit operator bool() const noexcept { return m_object != nullptr; }

    /// Takes a share of `object`, which may be null, then releases its own.
    void reset(T* object = nullptr) { SharedPtr(object).swap(*this); }

    /// Exchanges the objects; no count changes.
    void swap(SharedPtr& other) noexcept {
        T* const object = m_object;
        m_object = other.m_object;
        other.m_object = object;
    }

private:
    void acquire() const {
        if (m_object) {
            m_object->incref();
        }
    }

    static void release(T* object) {
        if (object && object->decref()) {
            delete object;
        }
    }

    T* m_object;
};

/// Exchanges the objects; no count changes.
template <class T>
void swap(SharedPtr<T>& left, SharedPtr<T>& right) noexcept {
    left.swap(right);
}

/// Compare the addresses, not the objects.
template <class T, class U>
bool operator==(SharedPtr<T> const& left, SharedPtr<U> const& right) {
    return left.get() == right.get();
}

template <class T, class U>
bool operator!=(SharedPtr<T> const& left, SharedPtr<U> const& right) {
    return left.get() != right.get();
}

template <class T>
bool operator==(SharedPtr<T> const& left, decltype(nullptr)) {
    return left.get() == nullptr;
}

template <class T>
bool operator!=(SharedPtr<T> const& left, decltype(nullptr)) {
    return left.get() != nullptr;
}

template <class T>
bool operator==(decltype(nullptr), SharedPtr<T> const& right) {
    return right.get() == nullptr;
}

template <class T>
bool operator!=(decltype(nullptr), SharedPtr<T> const& right) {
    return right.get() != nullptr;
}

template <class T, class U>
bool operator<(SharedPtr<T> const& left, SharedPtr<U> const& right) {
    return left.get() < right.get();
}

/// A share of the same object under another type; the caller knows that the object is one.
template <class T, class U>
SharedPtr<T> staticPointerCast(SharedPtr<U> const& pointer) {
    return SharedPtr<T>(static_cast<T*>(pointer.get()));
}

/// A share of the same object under another type, or null if the object is not one.
template <class T, class U>
SharedPtr<T> dynamicPointerCast(SharedPtr<U> const& pointer) {
    return SharedPtr<T>(dynamic_cast<T*>(pointer.get()));
}

} // namespace ORL_0_81

#endif // ORL_SHARED_PTR_H
