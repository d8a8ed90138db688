// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#ifndef ORL_VECTOR_H
#define ORL_VECTOR_H

#include "orlExport.h"

namespace ORL_0_81 {

/// The growable array of the public interfaces: the standard vector behind one pointer.
///
/// The library instantiates the template for a fixed list of element types, and only these link:
/// - `double` and `long long`,
/// - `String` and NameValueStruct,
/// - `SharedPtr<Annotation::Layer>`, Annotation::Paint::Point and CacheStats::FrameRange.
///
/// Every operation has the meaning of the standard vector's operation of the same name, its rules for when
/// iterators and references become invalid among them. What differs:
/// - There is no const iterator: begin() and end() of a const Vector give write access to its elements.
/// - The postfix operators of an Iterator give the position after the step.
///
/// **Ownership.** A Vector owns its elements; a copy has copies of them. There is no move: an rvalue is
/// copied.
///
/// **Failure.** Nothing is checked. An index that is not below size(), back() and pop_back() on an empty
/// Vector, going beyond either end, and an Iterator of another Vector are the caller's fault. A size or a
/// capacity that no array can have throws `std::length_error`, a lack of memory `std::bad_alloc`.
///
/// **Thread safety.** No lock: one writer or many readers at a time. What elements may share with other
/// threads is told by their own classes.
///
/// **Cost.** One indirection more than the standard vector for each access, and one small allocation for each
/// Iterator, those that begin() and end() give included. Loops that matter use operator[] and size(), which
/// allocate nothing.
///
/// Sizes and indices count elements.
template <class T>
class ORL_CORE_EXPORT Vector {
public:
    /// A position in a Vector: at an element, or past the last. One pointer in size.
    class ORL_CORE_EXPORT Iterator {
    public:
        /// Takes over a hidden iterator's allocation, or null. For Vector itself, not for applications.
        explicit Iterator(void* hidden);

        /// The same position, with an allocation of its own.
        Iterator(Iterator const& other);
        ~Iterator();

        /// Takes the other's position without an allocation.
        Iterator& operator=(Iterator const& other);

        /// Steps forward.
        Iterator& operator++();

        /// Steps forward. Unlike the usual postfix operator it gives the position *after* the step.
        Iterator operator++(int);

        /// Steps back.
        Iterator& operator--();

        /// Steps back. Unlike the usual postfix operator it gives the position *after* the step.
        Iterator operator--(int);

        /// Moves by that many elements, back if `count` is negative.
        Iterator& operator+=(long count);

        /// @{
        /// Whether both are the same position of the same Vector.
        bool operator==(Iterator const& other) const;
        bool operator!=(Iterator const& other) const;
        /// @}

        /// @{
        /// The element, for reading and writing.
        T& operator*() const;
        T* operator->() const;
        /// @}

    private:
        friend class Vector;

        void* m_hidden; // the standard vector's iterator, owned
    };

    /// Empty, without room for any element.
    Vector();

    /// `n` copies of `value`.
    Vector(unsigned long n, T value);

    /// Copies all elements. The capacity is that of the elements, whatever the source's.
    Vector(Vector const& other);

    ~Vector();

    /// Copies all elements; the capacity never shrinks. Self-assignment does nothing.
    Vector& operator=(Vector const& other);

    /// Makes room for `n` elements in all. Never gives room back.
    void reserve(unsigned long n);

    /// How many elements there is room for without a new allocation.
    unsigned long capacity() const;

    /// Grows to `n` elements with copies of `value`, or drops those beyond. The capacity never shrinks.
    void resize(unsigned long n, T value);

    /// Adds a copy of `value`, which may be an element of this Vector.
    void push_back(T const& value);

    /// Removes the element at the position, and moves the later ones down.
    ///
    /// \returns the same position, which now holds the element that followed, or end().
    Iterator erase(Iterator position);

    /// Removes the last element, of which there must be one.
    void pop_back();

    /// Removes all elements and keeps the capacity.
    void clear();

    /// @{
    /// How many elements there are, and whether there are none.
    unsigned long size() const;
    bool empty() const;
    /// @}

    /// @{
    /// The position of the first element, and that past the last; the same where there are none.
    Iterator begin() const;
    Iterator end() const;
    /// @}

    /// @{
    /// The last element, of which there must be one.
    T& back();
    T const& back() const;
    /// @}

    /// @{
    /// The element with this index, which must be below size().
    T& operator[](unsigned long index);
    T const& operator[](unsigned long index) const;
    /// @}

private:
    void* m_hidden; // the standard vector, owned
};

} // namespace ORL_0_81

#endif // ORL_VECTOR_H
