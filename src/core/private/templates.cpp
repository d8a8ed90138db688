// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "orlAnnotation.h"
#include "orlCacheStats.h"
#include "orlList.h"
#include "orlRefCounted.h"
#include "orlSharedPtr.h"
#include "orlString.h"
#include "orlStructs.h"
#include "orlToken.h"
#include "orlVector.h"

#include <list>
#include <vector>

// The containers' member functions, and one line for each element type that they exist for.

namespace ORL_0_81 {

namespace {

template <class T>
using Array = std::vector<T>;

template <class T>
Array<T>& arrayOf(void* hidden) {
    return *static_cast<Array<T>*>(hidden);
}

template <class T>
typename Array<T>::iterator& arrayPositionOf(void* hidden) {
    return *static_cast<typename Array<T>::iterator*>(hidden);
}

template <class T>
using Chain = std::list<T>;

template <class T>
Chain<T>& chainOf(void* hidden) {
    return *static_cast<Chain<T>*>(hidden);
}

template <class T>
typename Chain<T>::iterator& chainPositionOf(void* hidden) {
    return *static_cast<typename Chain<T>::iterator*>(hidden);
}

} // namespace

// Vector::Iterator

template <class T>
Vector<T>::Iterator::Iterator(void* hidden) : m_hidden(hidden) {}

template <class T>
Vector<T>::Iterator::Iterator(Iterator const& other)
    : m_hidden(new typename Array<T>::iterator(arrayPositionOf<T>(other.m_hidden))) {}

template <class T>
Vector<T>::Iterator::~Iterator() {
    delete static_cast<typename Array<T>::iterator*>(m_hidden);
}

template <class T>
typename Vector<T>::Iterator& Vector<T>::Iterator::operator=(Iterator const& other) {
    if (this != &other) {
        arrayPositionOf<T>(m_hidden) = arrayPositionOf<T>(other.m_hidden);
    }
    return *this;
}

template <class T>
typename Vector<T>::Iterator& Vector<T>::Iterator::operator++() {
    ++arrayPositionOf<T>(m_hidden);
    return *this;
}

template <class T>
typename Vector<T>::Iterator Vector<T>::Iterator::operator++(int) {
    ++arrayPositionOf<T>(m_hidden);
    return *this;
}

template <class T>
typename Vector<T>::Iterator& Vector<T>::Iterator::operator--() {
    --arrayPositionOf<T>(m_hidden);
    return *this;
}

template <class T>
typename Vector<T>::Iterator Vector<T>::Iterator::operator--(int) {
    --arrayPositionOf<T>(m_hidden);
    return *this;
}

template <class T>
typename Vector<T>::Iterator& Vector<T>::Iterator::operator+=(long count) {
    arrayPositionOf<T>(m_hidden) += count;
    return *this;
}

template <class T>
bool Vector<T>::Iterator::operator==(Iterator const& other) const {
    return arrayPositionOf<T>(m_hidden) == arrayPositionOf<T>(other.m_hidden);
}

template <class T>
bool Vector<T>::Iterator::operator!=(Iterator const& other) const {
    return arrayPositionOf<T>(m_hidden) != arrayPositionOf<T>(other.m_hidden);
}

template <class T>
T& Vector<T>::Iterator::operator*() const {
    return *arrayPositionOf<T>(m_hidden);
}

template <class T>
T* Vector<T>::Iterator::operator->() const {
    return &*arrayPositionOf<T>(m_hidden);
}

// Vector

template <class T>
Vector<T>::Vector() : m_hidden(new Array<T>) {}

template <class T>
Vector<T>::Vector(unsigned long n, T value) : m_hidden(new Array<T>(n, value)) {}

template <class T>
Vector<T>::Vector(Vector const& other) : m_hidden(new Array<T>(arrayOf<T>(other.m_hidden))) {}

template <class T>
Vector<T>::~Vector() {
    delete static_cast<Array<T>*>(m_hidden);
}

template <class T>
Vector<T>& Vector<T>::operator=(Vector const& other) {
    if (this != &other) {
        arrayOf<T>(m_hidden) = arrayOf<T>(other.m_hidden);
    }
    return *this;
}

template <class T>
void Vector<T>::reserve(unsigned long n) {
    arrayOf<T>(m_hidden).reserve(n);
}

template <class T>
unsigned long Vector<T>::capacity() const {
    return arrayOf<T>(m_hidden).capacity();
}

template <class T>
void Vector<T>::resize(unsigned long n, T value) {
    arrayOf<T>(m_hidden).resize(n, value);
}

template <class T>
void Vector<T>::push_back(T const& value) {
    arrayOf<T>(m_hidden).push_back(value);
}

template <class T>
typename Vector<T>::Iterator Vector<T>::erase(Iterator position) {
    // Allocated before the element goes, so that a lack of memory leaves everything as it was.
    Iterator following(position);
    arrayPositionOf<T>(following.m_hidden) =
        arrayOf<T>(m_hidden).erase(arrayPositionOf<T>(position.m_hidden));
    return following;
}

template <class T>
void Vector<T>::pop_back() {
    arrayOf<T>(m_hidden).pop_back();
}

template <class T>
void Vector<T>::clear() {
    arrayOf<T>(m_hidden).clear();
}

template <class T>
unsigned long Vector<T>::size() const {
    return arrayOf<T>(m_hidden).size();
}

template <class T>
bool Vector<T>::empty() const {
    return arrayOf<T>(m_hidden).empty();
}

template <class T>
typename Vector<T>::Iterator Vector<T>::begin() const {
    return Iterator(new typename Array<T>::iterator(arrayOf<T>(m_hidden).begin()));
}

template <class T>
typename Vector<T>::Iterator Vector<T>::end() const {
    return Iterator(new typename Array<T>::iterator(arrayOf<T>(m_hidden).end()));
}

template <class T>
T& Vector<T>::back() {
    return arrayOf<T>(m_hidden).back();
}

template <class T>
T const& Vector<T>::back() const {
    return arrayOf<T>(m_hidden).back();
}

template <class T>
T& Vector<T>::operator[](unsigned long index) {
    return arrayOf<T>(m_hidden)[index];
}

template <class T>
T const& Vector<T>::operator[](unsigned long index) const {
    return arrayOf<T>(m_hidden)[index];
}

// List::Iterator

template <class T>
List<T>::Iterator::Iterator(void* hidden) : m_hidden(hidden) {}

template <class T>
List<T>::Iterator::Iterator(Iterator const& other)
    : m_hidden(new typename Chain<T>::iterator(chainPositionOf<T>(other.m_hidden))) {}

template <class T>
List<T>::Iterator::~Iterator() {
    delete static_cast<typename Chain<T>::iterator*>(m_hidden);
}

template <class T>
typename List<T>::Iterator& List<T>::Iterator::operator=(Iterator const& other) {
    if (this != &other) {
        chainPositionOf<T>(m_hidden) = chainPositionOf<T>(other.m_hidden);
    }
    return *this;
}

template <class T>
typename List<T>::Iterator& List<T>::Iterator::operator++() {
    ++chainPositionOf<T>(m_hidden);
    return *this;
}

template <class T>
bool List<T>::Iterator::operator!=(Iterator const& other) const {
    return chainPositionOf<T>(m_hidden) != chainPositionOf<T>(other.m_hidden);
}

template <class T>
T& List<T>::Iterator::operator*() const {
    return *chainPositionOf<T>(m_hidden);
}

// List

template <class T>
List<T>::List() : m_hidden(new Chain<T>) {}

template <class T>
List<T>::List(List const& other) : m_hidden(new Chain<T>(chainOf<T>(other.m_hidden))) {}

template <class T>
List<T>::~List() {
    delete static_cast<Chain<T>*>(m_hidden);
}

template <class T>
List<T>& List<T>::operator=(List const& other) {
    if (this != &other) {
        chainOf<T>(m_hidden) = chainOf<T>(other.m_hidden);
    }
    return *this;
}

template <class T>
void List<T>::append(T const& value) {
    chainOf<T>(m_hidden).push_back(value);
}

template <class T>
typename List<T>::Iterator List<T>::erase(Iterator position) {
    // Allocated before the element goes, so that a lack of memory leaves everything as it was.
    Iterator following(position);
    chainPositionOf<T>(following.m_hidden) =
        chainOf<T>(m_hidden).erase(chainPositionOf<T>(position.m_hidden));
    return following;
}

template <class T>
void List<T>::pop_front() {
    chainOf<T>(m_hidden).pop_front();
}

template <class T>
void List<T>::pop_back() {
    chainOf<T>(m_hidden).pop_back();
}

template <class T>
void List<T>::clear() {
    chainOf<T>(m_hidden).clear();
}

template <class T>
unsigned long List<T>::size() const {
    return chainOf<T>(m_hidden).size();
}

template <class T>
bool List<T>::empty() const {
    return chainOf<T>(m_hidden).empty();
}

template <class T>
typename List<T>::Iterator List<T>::begin() const {
    return Iterator(new typename Chain<T>::iterator(chainOf<T>(m_hidden).begin()));
}

template <class T>
typename List<T>::Iterator List<T>::end() const {
    return Iterator(new typename Chain<T>::iterator(chainOf<T>(m_hidden).end()));
}

template <class T>
T& List<T>::front() {
    return chainOf<T>(m_hidden).front();
}

template <class T>
T const& List<T>::front() const {
    return chainOf<T>(m_hidden).front();
}

template <class T>
T& List<T>::back() {
    return chainOf<T>(m_hidden).back();
}

template <class T>
T const& List<T>::back() const {
    return chainOf<T>(m_hidden).back();
}

// What the sibling library's class looks like from here. It is never constructed here, only counted and
// deleted through its virtual operations.
class ORL_CORE_EXPORT ExternalSegment : public RefCountedBase {};

// The element types. Each class among them must carry ORL_CORE_EXPORT: an instantiation over a hidden type is
// hidden too, without a word from the compiler. And each must be known in full above.

template class List<int>;
template class List<double>;
template class List<String>;
template class List<NameDescriptionStruct>;
template class List<SharedPtr<Token>>;
template class List<SharedPtr<ExternalSegment>>;

template class Vector<double>;
template class Vector<long long>;
template class Vector<String>;
template class Vector<NameValueStruct>;
template class Vector<SharedPtr<Annotation::Layer>>;
template class Vector<Annotation::Paint::Point>;
template class Vector<CacheStats::FrameRange>;

static_assert(sizeof(List<String>) == sizeof(void*) && sizeof(List<String>::Iterator) == sizeof(void*),
              "the layout is part of the binary interface");
static_assert(sizeof(Vector<String>) == sizeof(void*) && sizeof(Vector<String>::Iterator) == sizeof(void*),
              "the layout is part of the binary interface");
static_assert(sizeof(Annotation::Paint::Point) == 3 * sizeof(double) &&
                  sizeof(CacheStats::FrameRange) == 2 * sizeof(long long),
              "the layout is part of the binary interface");

} // namespace ORL_0_81
