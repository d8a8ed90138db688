// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "support/orlTemporaryFolder.h"
#include "support/orlThreads.h"

#include <orlFileSequenceUtils.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <fstream>
#include <string>
#include <vector>

// All five operations at a time on many threads, with filters that take each of the ways that there are.

namespace {

using namespace ORL_0_81;
using orlTest::onThreads;

constexpr std::size_t THREADS = 4;
constexpr int ROUNDS = 5;

using Names = std::vector<std::string>;

Names sortedContentOf(Vector<String> const& vector) {
    Names names;
    for (unsigned long i = 0; i < vector.size(); ++i) {
        names.push_back(vector[i].c_str());
    }
    std::sort(names.begin(), names.end());
    return names;
}

// Too large for the stack of a caller.
std::string wildFilter() {
    std::string filter = "(";
    for (int i = 0; i < 300; ++i) {
        filter += "x" + std::to_string(i) + "|";
    }
    return filter + "shot.*[0-9]+)";
}

class Folder : public orlTest::TemporaryFolder {
public:
    Folder() : TemporaryFolder("orlFileSequenceUtilsThread") {
        for (char const* const name : {"shot.1.exr", "shot.2.exr", "shot.3.exr", "notes", "b\\.1", "b\\.2"}) {
            std::ofstream(m_path / name).put('x');
        }
    }
};

TEST(FileSequenceUtilsThreads, AllOperationsMayBeCalledFromManyThreadsAtOnce) {
    Folder const folder;
    String const directory(folder.path().c_str());
    String const file((folder.path() + "/shot.2.exr").c_str());
    List<String> names;
    for (char const* const name : {"shot.1.exr", "shot.2.exr", "shot.3.exr", "notes", "b\\.1", "b\\.2"}) {
        names.append(name);
    }
    Names const all = {"b.%01d", "notes", "shot.%01d.exr"};
    Names const shots = {"shot.%01d.exr"};
    std::vector<String> const filters = {"", "shot", "^s.*[0-9]", wildFilter().c_str()};
    onThreads(THREADS, [&](std::size_t t) {
        for (int round = 0; round < ROUNDS; ++round) {
            for (std::size_t i = 0; i < filters.size(); ++i) {
                String const& filter = filters[(i + t) % filters.size()];
                Vector<String> sequences;
                EXPECT_TRUE(FileSequenceUtils::getSequencesInFileList(names, sequences, filter));
                EXPECT_EQ(sortedContentOf(sequences), filter.empty() ? all : shots) << filter.c_str();
                EXPECT_TRUE(FileSequenceUtils::getSequencesInDirectory(directory, sequences, filter));
                EXPECT_EQ(sortedContentOf(sequences), filter.empty() ? all : shots) << filter.c_str();
            }
            String name;
            EXPECT_TRUE(FileSequenceUtils::getSequenceName(file, name));
            EXPECT_EQ(name, "shot.%01d.exr");
            bool isSequence = false;
            EXPECT_TRUE(FileSequenceUtils::isSequenceName(name, isSequence));
            EXPECT_TRUE(isSequence);
            EXPECT_TRUE(FileSequenceUtils::removeFrameSymbols(name, name));
            EXPECT_EQ(name, "shot.exr");
        }
    });
}

} // namespace
