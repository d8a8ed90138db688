// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "orlExrHeader.h"

#include <cstdint>

namespace ORL_0_81::media {

namespace {

constexpr std::size_t PREAMBLE_BYTES = 8;             // magic number and version
constexpr std::size_t CHANNEL_BYTES_BEHIND_NAME = 16; // type, linearity, reserve, two sampling rates
constexpr char const* TYPES[] = {"uint32", "half", "float"};

// Takes the bytes front to back, and says no once they are used up.
class ByteReader {
public:
    explicit ByteReader(std::string const& bytes, std::size_t start, std::size_t end)
        : m_bytes(bytes), m_position(start), m_end(end) {}

    bool readText(std::string& text) {
        std::size_t const end = m_bytes.find('\0', m_position);
        if (end == std::string::npos || end >= m_end) {
            return false;
        }
        text.assign(m_bytes, m_position, end - m_position);
        m_position = end + 1;
        return true;
    }

    bool readUInt(std::uint32_t& value) {
        if (m_end - m_position < 4) {
            return false;
        }
        value = 0;
        for (unsigned i = 0; i < 4; ++i) {
            value |= static_cast<std::uint32_t>(static_cast<unsigned char>(m_bytes[m_position + i]))
                     << (8 * i);
        }
        m_position += 4;
        return true;
    }

    bool skip(std::size_t count) {
        if (m_end - m_position < count) {
            return false;
        }
        m_position += count;
        return true;
    }

    std::size_t position() const { return m_position; }

private:
    std::string const& m_bytes;
    std::size_t m_position;
    std::size_t m_end; // not before the position
};

bool readChannelList(ByteReader reader, ExrChannels& channels) {
    ExrChannels found;
    std::string name;
    while (reader.readText(name)) {
        if (name.empty()) {
            if (found.count == 0) {
                return false;
            }
            channels = found;
            return true;
        }
        std::uint32_t type = 0;
        if (!reader.readUInt(type) || type >= sizeof TYPES / sizeof TYPES[0] ||
            !reader.skip(CHANNEL_BYTES_BEHIND_NAME - 4)) {
            return false;
        }
        if (found.count == 0) {
            found.dataType = TYPES[type];
        }
        ++found.count;
    }
    return false;
}

} // namespace

bool readExrChannels(std::string const& bytes, ExrChannels& channels) {
    if (bytes.size() < PREAMBLE_BYTES || bytes.compare(0, 4, "\x76\x2f\x31\x01") != 0) {
        return false;
    }
    ByteReader reader(bytes, PREAMBLE_BYTES, bytes.size());
    std::string name;
    std::string type;
    std::uint32_t size = 0;
    while (reader.readText(name) && !name.empty() && reader.readText(type) && reader.readUInt(size)) {
        std::size_t const start = reader.position();
        if (!reader.skip(size)) {
            return false;
        }
        if (name == "channels" && type == "chlist") {
            return readChannelList(ByteReader(bytes, start, start + size), channels);
        }
    }
    return false;
}

} // namespace ORL_0_81::media
