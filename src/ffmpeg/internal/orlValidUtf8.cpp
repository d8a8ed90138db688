// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "orlValidUtf8.h"

#include <cstdint>

namespace ORL_0_81::media {

namespace {

constexpr char const REPLACEMENT[] = "\xef\xbf\xbd";

unsigned byteAt(std::string const& text, std::size_t position) {
    return static_cast<unsigned char>(text[position]);
}

// The bytes of the character that begins there; 0 if none does.
std::size_t lengthAt(std::string const& text, std::size_t position) {
    unsigned const lead = byteAt(text, position);
    if (lead < 0x80U) {
        return 1;
    }
    std::size_t const length = lead >= 0xf0U ? 4 : lead >= 0xe0U ? 3 : 2;
    if (lead < 0xc2U || lead > 0xf4U || text.size() - position < length) {
        return 0;
    }
    std::uint32_t code = lead & (0xffU >> (length + 1));
    for (std::size_t i = 1; i < length; ++i) {
        unsigned const next = byteAt(text, position + i);
        if ((next & 0xc0U) != 0x80U) {
            return 0;
        }
        code = code << 6U | (next & 0x3fU);
    }
    // Longer than need be, half of a pair, beyond the last one.
    constexpr std::uint32_t SMALLEST[] = {0, 0, 0x80, 0x800, 0x10000};
    bool const valid = code >= SMALLEST[length] && (code < 0xd800 || code > 0xdfff) && code <= 0x10ffff;
    return valid ? length : 0;
}

} // namespace

std::string toValidUtf8(std::string const& text) {
    std::string valid;
    valid.reserve(text.size());
    for (std::size_t i = 0; i < text.size();) {
        std::size_t const length = lengthAt(text, i);
        if (length == 0) {
            valid += REPLACEMENT;
            ++i;
        } else {
            valid.append(text, i, length);
            i += length;
        }
    }
    return valid;
}

} // namespace ORL_0_81::media
