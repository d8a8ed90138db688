// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#ifndef ORL_TOOL_SUPPORT_H
#define ORL_TOOL_SUPPORT_H

#include "orlLossReport.h"
#include "orlProgram.h"
#include "orlTimelineDocument.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <sstream>
#include <string>
#include <vector>

/// \file
/// What the tests of the program share.

namespace ORL_0_81::tool {

struct Outcome {
    int code;
    std::string out;
    std::string error;
};

/// Runs the program within the test.
inline Outcome orl(std::vector<std::string> const& arguments, std::string const& input = "") {
    std::istringstream in(input);
    std::ostringstream out;
    std::ostringstream error;
    int const code = runOrl(arguments, {in, out, error});
    return {code, out.str(), error.str()};
}

/// The lines of the loss report for a text, without the blanks in front.
inline std::vector<std::string> lossesOf(std::string const& text) {
    TimelineDocument const document("text", text);
    LossReport const report(document);
    std::vector<std::string> lines;
    for (LossGroup const& group : report.groups()) {
        lines.push_back(LossReport::line(group));
    }
    return lines;
}

inline std::string readFile(std::filesystem::path const& path) {
    std::ifstream file(path, std::ios::binary);
    EXPECT_TRUE(file) << path;
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

inline void writeFile(std::filesystem::path const& path, std::string const& text) {
    std::ofstream(path, std::ios::binary) << text;
}

/// A folder of its own for one test, removed with all that is in it.
class ScratchFolder {
public:
    ScratchFolder() {
        std::string pattern = testing::TempDir() + "/orlXXXXXX";
        m_path = ::mkdtemp(pattern.data());
    }
    ~ScratchFolder() {
        std::error_code ignored;
        std::filesystem::permissions(m_path, std::filesystem::perms::owner_all, ignored);
        std::filesystem::remove_all(m_path, ignored);
    }
    ScratchFolder(ScratchFolder const&) = delete;
    ScratchFolder& operator=(ScratchFolder const&) = delete;

    std::filesystem::path operator/(std::string const& name) const { return m_path / name; }
    std::filesystem::path const& path() const { return m_path; }

    std::vector<std::string> names() const {
        std::vector<std::string> names;
        for (auto const& entry : std::filesystem::directory_iterator(m_path)) {
            names.push_back(entry.path().filename().string());
        }
        return names;
    }

private:
    std::filesystem::path m_path;
};

} // namespace ORL_0_81::tool

#endif // ORL_TOOL_SUPPORT_H
