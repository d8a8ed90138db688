// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#ifndef ORL_TEST_TEMPORARY_FOLDER_H
#define ORL_TEST_TEMPORARY_FOLDER_H

#include <orlPlatform.h>

#include <filesystem>
#include <string>

namespace orlTest {

/// A folder of this process among the system's temporary ones, gone at its end with all that is in it.
class TemporaryFolder {
public:
    /// \param name Tells it from other folders of the process.
    explicit TemporaryFolder(std::string const& name)
        : m_path(std::filesystem::temp_directory_path() /
                 (name + std::to_string(ORL_0_81::Platform::getpid()))) {
        std::filesystem::create_directories(m_path);
    }
    TemporaryFolder(TemporaryFolder const&) = delete;
    TemporaryFolder& operator=(TemporaryFolder const&) = delete;
    ~TemporaryFolder() { std::filesystem::remove_all(m_path); }

    std::string path() const { return m_path.string(); }

protected:
    std::filesystem::path const m_path;
};

} // namespace orlTest

#endif // ORL_TEST_TEMPORARY_FOLDER_H
