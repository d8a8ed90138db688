// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#ifndef ORL_LIST_H
#define ORL_LIST_H

#include "orlExport.h"

namespace ORL_0_81 {

/// A class of a sibling library, of which this one only counts the owners. It must have a counted class
/// (orlRefCounted.h) as its first base.
class ExternalSegment;

/// The linked list of the public interfaces: the standard list behind one pointer.
///
/// The library instantiates the template for a fixed list of element types, and only these link:
/// - `int` and `double`,
/// - `String` and NameDescriptionStruct,
/// - `SharedPtr<Token>` and `SharedPtr<ExternalSegment>`.
///
/// Every operation has the meaning of the standard list's operation of the same name (append() is its
/// push_back()): an element stays where it is, and an Iterator at it stays valid, until that element is
/// removed. What differs:
/// - There is no const iterator: begin() and end() of a const List give write access to its elements.
/// - An Iterator can only step forward, and be asked whether it is another position than a second one.
///
/// **Ownership.** A List owns its elements; a copy has copies of them. There is no move: an rvalue is copied.
///
/// **Failure.** Nothing is checked. front(), back(), pop_front() and pop_back() on an empty List, reading at
/// end() or going beyond it, and an Iterator of another List are the caller's fault. A lack of memory throws
/// `std::bad_alloc`.
///
/// **Thread safety.** No lock: one writer or many readers at a time. What elements may share with other
/// threads is told by their own classes.
///
/// **Cost.** One allocation for each element, and a small one for each Iterator, those that begin() and end()
/// give included. size() takes constant time.
template <class T>
class ORL_CORE_EXPORT List {
public:
    /// A position in a List: at an element, or past the last. One pointer in size.
    class ORL_CORE_EXPORT Iterator {
    public:
        /// Takes over a hidden iterator's allocation, or null. For List itself, not for applications.
        explicit Iterator(void* hidden);

        /// The same position, with an allocation of its own.
        Iterator(Iterator const& other);
        ~Iterator();

        /// Takes the other's position without an allocation.
        Iterator& operator=(Iterator const& other);

        /// Steps forward.
        Iterator& operator++();

        /// Whether the two are different positions.
        bool operator!=(Iterator const& other) const;

        /// The element, for reading and writing.
        T& operator*() const;

    private:
        friend class List;

        void* m_hidden; // the standard list's iterator, owned
    };

    /// Empty.
    List();

    /// Copies all elements, in order.
    List(List const& other);

    ~List();

    /// Assigns the other's elements to those that are here, in order, then appends what this List lacks or
    /// removes what it has too much. Self-assignment does nothing.
    List& operator=(List const& other);

    /// Adds a copy of `value` at the end.
    void append(T const& value);

    /// Removes the element at the position.
    ///
    /// \returns the position of the element that followed, or end().
    Iterator erase(Iterator position);

    /// @{
    /// Removes the first or the last element, of which there must be one.
    void pop_front();
    void pop_back();
    /// @}

    /// Removes all elements.
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
    /// The first and the last element, of which there must be one.
    T& front();
    T const& front() const;
    T& back();
    T const& back() const;
    /// @}

private:
    void* m_hidden; // the standard list, owned
};

} // namespace ORL_0_81

#endif // ORL_LIST_H
