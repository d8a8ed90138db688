// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "support/orlFailingMemory.h"
#include "support/orlTemporaryFolder.h"

#include <orlFileSequenceUtils.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

// What the five operations leave in their outputs when there is no memory.

namespace {

using namespace ORL_0_81;
using orlTest::failEachAllocation;
using orlTest::FailingMemory;

namespace fs = std::filesystem;

using Names = std::vector<std::string>;

orlTest::MemoryPlan const SYSTEM_TOO{false, true, true};

std::string bytes(String const& text) { return std::string(text.data(), text.size()); }

Names contentOf(Vector<String> const& vector) {
    Names names;
    for (unsigned long i = 0; i < vector.size(); ++i) {
        names.push_back(bytes(vector[i]));
    }
    return names;
}

// Names of several fields, of runs that must be looked at, with a composed letter, and with backslashes.
List<String> const& someNames() {
    static List<String> const names = [] {
        List<String> result;
        for (int shot = 1; shot <= 3; ++shot) {
            for (int frame = 8; frame <= 12; ++frame) {
                std::string const name =
                    "a_shot_of_some_length_" + std::to_string(shot) + "." + std::to_string(1000 + frame);
                result.append((name + ".exr").c_str());
                result.append(("caf\xC3\xA9_" + std::to_string(frame) + ".tif").c_str());
            }
        }
        for (char const* const name : {"b\\.1", "b\\.2", "back\\slash.1.exr", "a\\1"}) {
            result.append(name);
        }
        result.append("2019-03-21 at 10.22.33.png");
        result.append("notes on the shots that are not in any sequence.txt");
        return result;
    }();
    return names;
}

std::string wildFilter() {
    std::string filter = "(";
    for (int i = 0; i < 300; ++i) {
        filter += "x" + std::to_string(i) + "|";
    }
    return filter + "shot.*[0-9]+)";
}

TEST(FileSequenceUtilsFailingMemory, ANameIsTidiedOrStaysAsItWas) {
    String const name = "a_name_that_takes_an_allocation.%04d.exr";
    failEachAllocation([&name](FailingMemory& memory) {
        bool isSequence = false;
        String result("before");
        bool const done = memory.run([&] {
            EXPECT_TRUE(FileSequenceUtils::isSequenceName(name, isSequence));
            EXPECT_TRUE(FileSequenceUtils::removeFrameSymbols(name, result));
        });
        EXPECT_TRUE(isSequence);
        EXPECT_EQ(bytes(result), done ? "a_name_that_takes_an_allocation.exr" : "before");
    });
}

TEST(FileSequenceUtilsFailingMemory, AListIsGroupedOrTheResultIsEmpty) {
    for (std::string const& filter :
         {std::string(), std::string("shot"), std::string("^(a|b).*[0-9]+"), wildFilter()}) {
        SCOPED_TRACE(filter.substr(0, 20));
        String const expression(filter.c_str());
        Vector<String> expected;
        ASSERT_TRUE(FileSequenceUtils::getSequencesInFileList(someNames(), expected, expression));
        ASSERT_FALSE(expected.empty());
        failEachAllocation([&](FailingMemory& memory) {
            Vector<String> sequences(1, "before");
            bool const done = memory.run([&] {
                EXPECT_TRUE(FileSequenceUtils::getSequencesInFileList(someNames(), sequences, expression));
            });
            EXPECT_EQ(contentOf(sequences), done ? contentOf(expected) : Names());
        });
    }
}

TEST(FileSequenceUtilsFailingMemory, AMalformedFilterIsRefusedOrNotLookedAt) {
    String const filter = "(a filter without an end, which is long enough to take an allocation";
    failEachAllocation([&filter](FailingMemory& memory) {
        Vector<String> sequences(1, "before");
        Status status;
        bool const done = memory.run(
            [&] { status = FileSequenceUtils::getSequencesInFileList(someNames(), sequences, filter); });
        EXPECT_EQ(status, done ? Status::kRegexException : Status::kSuccess);
        EXPECT_TRUE(sequences.empty());
    });
}

class Folder : public orlTest::TemporaryFolder {
public:
    Folder() : TemporaryFolder("orlFileSequenceUtilsFailingMemory") {
        fs::create_directories(m_path / "a folder is no file");
        for (unsigned long i = 0; i < 3; ++i) {
            std::ofstream(m_path / ("a_shot_of_some_length.100" + std::to_string(i) + ".exr"));
            std::ofstream(m_path / ("caf\xC3\xA9_" + std::to_string(i) + ".tif"));
        }
        fs::create_symlink(m_path / "a_shot_of_some_length.1000.exr", m_path / "link.1.exr");
        std::ofstream(m_path / "notes");
    }
};

TEST(FileSequenceUtilsFailingMemory, ADirectoryIsGroupedOrTheResultIsEmpty) {
    Folder const folder;
    String const path(folder.path().c_str());
    for (char const* const filter : {"", "^(a|b).*[0-9]+"}) {
        String const expression(filter);
        Vector<String> expected;
        ASSERT_TRUE(FileSequenceUtils::getSequencesInDirectory(path, expected, expression));
        failEachAllocation(
            [&](FailingMemory& memory) {
                Vector<String> sequences(1, "before");
                bool const done = memory.run<fs::filesystem_error>([&] {
                    EXPECT_TRUE(FileSequenceUtils::getSequencesInDirectory(path, sequences, expression));
                });
                EXPECT_EQ(contentOf(sequences), done ? contentOf(expected) : Names());
            },
            SYSTEM_TOO);
    }
}

TEST(FileSequenceUtilsFailingMemory, ASequenceIsNamedOrTheNameIsEmpty) {
    Folder const folder;
    String const path((folder.path() + "/a_shot_of_some_length.1001.exr").c_str());
    failEachAllocation(
        [&](FailingMemory& memory) {
            String name("before");
            bool const done = memory.run<fs::filesystem_error>(
                [&] { EXPECT_TRUE(FileSequenceUtils::getSequenceName(path, name)); });
            EXPECT_EQ(bytes(name), done ? "a_shot_of_some_length.%04d.exr" : "");
        },
        SYSTEM_TOO);
}

} // namespace
