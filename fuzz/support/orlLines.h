// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#ifndef ORL_FUZZ_SUPPORT_ORL_LINES_H
#define ORL_FUZZ_SUPPORT_ORL_LINES_H

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace orlFuzz {

/// An input as lines, one at least.
inline std::vector<std::string> linesOf(std::uint8_t const* data, std::size_t size) {
    std::vector<std::string> lines(1);
    for (std::size_t i = 0; i < size; ++i) {
        if (data[i] == '\n') {
            lines.emplace_back();
        } else {
            lines.back() += static_cast<char>(data[i]);
        }
    }
    return lines;
}

} // namespace orlFuzz

#endif // ORL_FUZZ_SUPPORT_ORL_LINES_H
