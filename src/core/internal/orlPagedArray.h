// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#ifndef ORL_PAGED_ARRAY_H
#define ORL_PAGED_ARRAY_H

#include <cstddef>
#include <memory>
#include <utility>
#include <vector>

namespace ORL_0_81 {

/// An array that grows a page at a time and never moves what it holds: for millions of elements whose number
/// is not known before, where a vector would copy them again and again and hold twice as many for a while.
template <class T>
class PagedArray {
public:
    std::size_t size() const { return m_size; }

    T& operator[](std::size_t index) { return m_pages[index / PAGE_SIZE][index % PAGE_SIZE]; }
    T const& operator[](std::size_t index) const { return m_pages[index / PAGE_SIZE][index % PAGE_SIZE]; }

    /// Appends an element, which is not initialised.
    T& append() {
        std::size_t const position = m_size % PAGE_SIZE;
        if (position == 0) {
            std::unique_ptr<T[]> page(new T[PAGE_SIZE]); // uncleared, as make_unique would not leave it
            m_last = page.get();
            m_pages.push_back(std::move(page));
        }
        ++m_size;
        return m_last[position];
    }

private:
    // A power of two, so that finding a page is a shift.
    static constexpr std::size_t pageSize() {
        std::size_t size = 1;
        while (size * 2 * sizeof(T) <= PAGE_BYTES) {
            size *= 2;
        }
        return size;
    }

    static constexpr std::size_t PAGE_BYTES = std::size_t{64} << 10;
    static constexpr std::size_t PAGE_SIZE = pageSize();

    std::vector<std::unique_ptr<T[]>> m_pages;
    T* m_last = nullptr; // page
    std::size_t m_size = 0;
};

} // namespace ORL_0_81

#endif // ORL_PAGED_ARRAY_H
