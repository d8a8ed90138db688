// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#ifndef ORL_FUZZ_SUPPORT_ORL_CHOICES_H
#define ORL_FUZZ_SUPPORT_ORL_CHOICES_H

#include <cstddef>
#include <cstdint>

namespace orlFuzz {

/// An input as a row of decisions, a byte for each.
class Choices {
public:
    Choices(std::uint8_t const* data, std::size_t size) : m_data(data), m_end(data + size) {}

    bool areLeft() const { return m_data != m_end; }

    /// A number below `count`, which is above 0 and at most 256; 0 when nothing is left.
    std::size_t operator()(std::size_t count) { return areLeft() ? *m_data++ % count : 0; }

private:
    std::uint8_t const* m_data;
    std::uint8_t const* m_end;
};

} // namespace orlFuzz

#endif // ORL_FUZZ_SUPPORT_ORL_CHOICES_H
