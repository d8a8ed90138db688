// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#ifndef TESTS_FFMPEG_DAMAGE_H
#define TESTS_FFMPEG_DAMAGE_H

#include <gtest/gtest.h>

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <string>

/// Media that are not as they should be.
namespace Damage {

/// A folder of a test's own, gone at its end.
class Folder {
public:
    Folder() {
        std::random_device random;
        m_path = std::filesystem::temp_directory_path() / ("orlFFmpegTest" + std::to_string(random()));
        std::filesystem::create_directory(m_path);
    }

    Folder(Folder const&) = delete;
    Folder& operator=(Folder const&) = delete;

    ~Folder() { std::filesystem::remove_all(m_path); }

    std::string path(std::string const& name) const { return (m_path / name).string(); }

    /// \returns the path of the file.
    std::string write(std::string const& name, std::string const& bytes) const {
        std::ofstream(path(name), std::ios::binary) << bytes;
        return path(name);
    }

private:
    std::filesystem::path m_path;
};

inline std::string load(std::string const& path) {
    std::ifstream file(path, std::ios::binary);
    EXPECT_TRUE(file) << path;
    return std::string(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
}

/// A big-endian word of 32 bits.
inline void overwriteWord(std::string& bytes, std::size_t at, std::uint32_t value) {
    ASSERT_LE(at + 4, bytes.size());
    for (std::size_t i = 0; i < 4; ++i) {
        bytes[at + i] = static_cast<char>(value >> (8 * (3 - i)));
    }
}

} // namespace Damage

#endif // TESTS_FFMPEG_DAMAGE_H
