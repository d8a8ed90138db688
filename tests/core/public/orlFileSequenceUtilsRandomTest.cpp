// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "support/Seed.h"
#include "support/orlLibrarySequences.h"
#include "support/orlRandomNames.h"
#include "support/orlSlowSequences.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <ostream>
#include <set>
#include <string>
#include <vector>

// The library beside the plain rules, on lists at random. ORL_TEST_LISTS says how many lists each generator
// makes, ORL_TEST_SEED repeats a run.

namespace {

using namespace ORL_0_81;
using namespace orlTest;

// The plain rules compile some regular expressions for each name, which a sanitizer makes ten times as slow.
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__) || !defined(NDEBUG)
constexpr int USUAL_LISTS = 300;
#else
constexpr int USUAL_LISTS = 2500;
#endif

int listCount() {
    char const* const given = std::getenv("ORL_TEST_LISTS");
    return given ? std::atoi(given) : USUAL_LISTS;
}

struct Outcome {
    Status status;
    std::vector<std::string> sequences;

    bool operator==(Outcome const& other) const {
        return status == other.status && sequences == other.sequences;
    }
};

std::ostream& operator<<(std::ostream& stream, Outcome const& outcome) {
    return stream << outcome.status.getStr() << " " << asLiterals(outcome.sequences);
}

template <class Sequences>
Outcome outcomeOf(NameList const& list) {
    Outcome outcome;
    outcome.status = Sequences::getSequencesInFileList(list.names, outcome.sequences, list.filter);
    return outcome;
}

bool differs(NameList const& list) {
    return !(outcomeOf<LibrarySequences>(list) == outcomeOf<SlowSequences>(list));
}

// Takes a changed list if the implementations still differ on it.
bool accept(NameList& list, NameList const& changed) {
    if (!differs(changed)) {
        return false;
    }
    list = changed;
    return true;
}

bool dropNames(NameList& list) {
    bool smaller = false;
    for (std::size_t length = list.names.size() / 2 + 1; length > 0; length /= 2) {
        for (std::size_t i = 0; i + length <= list.names.size();) {
            NameList changed = list;
            auto const from = changed.names.begin() + static_cast<std::ptrdiff_t>(i);
            changed.names.erase(from, from + static_cast<std::ptrdiff_t>(length));
            if (accept(list, changed)) {
                smaller = true;
            } else {
                ++i;
            }
        }
    }
    return smaller;
}

// One character that all names have at the same distance from the beginning, or from the end.
bool dropColumns(NameList& list) {
    bool smaller = false;
    for (bool const fromEnd : {false, true}) {
        for (std::size_t column = 0;; ++column) {
            NameList changed = list;
            bool present = false;
            for (std::string& name : changed.names) {
                if (column < name.size()) {
                    name.erase(fromEnd ? name.size() - 1 - column : column, 1);
                    present = true;
                }
            }
            if (!present) {
                break;
            }
            smaller = accept(list, changed) || smaller;
        }
    }
    return smaller;
}

bool dropCharacters(NameList& list) {
    bool smaller = false;
    for (std::size_t n = 0; n < list.names.size(); ++n) {
        for (std::size_t i = 0; i < list.names[n].size();) {
            NameList changed = list;
            changed.names[n].erase(i, 1);
            if (accept(list, changed)) {
                smaller = true;
            } else {
                ++i;
            }
        }
    }
    return smaller;
}

NameList shrunken(NameList list) {
    NameList unfiltered = list;
    unfiltered.filter.clear();
    accept(list, unfiltered);
    while (dropNames(list) || dropColumns(list) || dropCharacters(list)) {
    }
    return list;
}

void expectAgreement(NameList const& list) {
    if (differs(list)) {
        NameList const small = shrunken(list);
        FAIL() << "a list on which library and rules differ, made smaller:\n  names "
               << asLiterals(small.names) << "\n  filter " << asLiteral(small.filter)
               << "\n  library: " << outcomeOf<LibrarySequences>(small)
               << "\n  rules:   " << outcomeOf<SlowSequences>(small);
    }
}

class FileSequenceUtilsRandom : public testing::TestWithParam<NameGenerator> {};

TEST_P(FileSequenceUtilsRandom, FindsWhatThePlainRulesFind) {
    Random random(printedSeed());
    int const lists = listCount();
    int families = 0;
    for (int i = 0; i < lists; ++i) {
        NameList const list = GetParam().make(random);
        ASSERT_NO_FATAL_FAILURE(expectAgreement(list)) << "list " << i;
        std::vector<std::string> const& found = outcomeOf<LibrarySequences>(list).sequences;
        families += !found.empty() && found.size() < list.names.size() ? 1 : 0;
    }
    std::cout << lists << " lists, " << families << " with fewer results than names\n";
    EXPECT_GT(families, lists / 20) << "lists without families compare nothing";
}

TEST(FileSequenceUtilsRandomCrowds, AreFoundAsByThePlainRules) {
    Random random(printedSeed());
    for (int i = 0; i < listCount() / 50; ++i) {
        NameList crowd;
        for (int parts = 10 + i % 20; parts > 0; --parts) {
            NameGenerator const& generator = nameGenerators()[random() % nameGenerators().size()];
            NameList const part = generator.make(random);
            crowd.names.insert(crowd.names.end(), part.names.begin(), part.names.end());
        }
        if (i % 2 == 0) {
            std::shuffle(crowd.names.begin(), crowd.names.end(), random);
        }
        ASSERT_NO_FATAL_FAILURE(expectAgreement(crowd));
    }
}

INSTANTIATE_TEST_SUITE_P(, FileSequenceUtilsRandom, testing::ValuesIn(nameGenerators()),
                         [](testing::TestParamInfo<NameGenerator> const& tested) {
                             return std::string(tested.param.name);
                         });

TEST(FileSequenceUtilsRandomNames, HoldAFrameSymbolWhereThePlainRulesSeeOne) {
    Random random(printedSeed());
    for (int i = 0; i < 10 * listCount(); ++i) {
        std::string const name = randomSymbolName(random);
        bool library = false;
        bool rules = false;
        ASSERT_EQ(LibrarySequences::isSequenceName(name, library).get(), Status::kSuccess);
        ASSERT_EQ(SlowSequences::isSequenceName(name, rules).get(), Status::kSuccess);
        ASSERT_EQ(library, rules) << asLiteral(name);
    }
}

TEST(FileSequenceUtilsRandomNames, LoseTheirFrameSymbolsAsByThePlainRules) {
    Random random(printedSeed());
    for (int i = 0; i < 10 * listCount(); ++i) {
        std::string const name = randomSymbolName(random);
        std::string library = "what was here before";
        std::string rules = library;
        ASSERT_EQ(LibrarySequences::removeFrameSymbols(name, library).get(), Status::kSuccess);
        ASSERT_EQ(SlowSequences::removeFrameSymbols(name, rules).get(), Status::kSuccess);
        ASSERT_EQ(library, rules) << asLiteral(name);
    }
}

// Names that a file can bear, and that no normalisation changes.
bool isFileName(std::string const& name) {
    if (name.empty() || name == "." || name == ".." ||
        name.find_first_of(std::string("/\0", 2)) != name.npos) {
        return false;
    }
    for (char const c : name) {
        if (c < 0) {
            return false;
        }
    }
    return true;
}

class FileSequenceUtilsRandomDirectory : public testing::Test {
protected:
    void SetUp() override {
        std::string pattern = testing::TempDir() + "/orlXXXXXX";
        ASSERT_NE(::mkdtemp(pattern.data()), nullptr);
        m_path = pattern;
    }
    void TearDown() override { std::filesystem::remove_all(m_path); }

    std::vector<std::string> names() const {
        std::vector<std::string> result;
        for (auto const& entry : std::filesystem::directory_iterator(m_path)) {
            result.push_back(entry.path().filename().string());
        }
        return result;
    }

    std::string m_path;
};

TEST_F(FileSequenceUtilsRandomDirectory, GivesTheSequencesOfItsListAndOfEachOfItsFiles) {
    Random random(printedSeed());
    for (int i = 0; i < listCount() / 30; ++i) {
        std::set<std::string> files;
        for (int parts = 1 + i % 3; parts > 0; --parts) {
            NameGenerator const& generator = nameGenerators()[random() % nameGenerators().size()];
            for (std::string const& name : generator.make(random).names) {
                if (isFileName(name)) {
                    files.insert(name);
                }
            }
        }
        std::string const folder = m_path;
        m_path += "/" + std::to_string(i);
        std::filesystem::create_directory(m_path);
        for (std::string const& name : files) {
            std::ofstream(m_path + "/" + name).put('x');
        }

        std::vector<std::string> const listed = names();
        std::string const& filter = randomFilter(random);
        std::vector<std::string> expected;
        std::vector<std::string> found;
        Status const rules = SlowSequences::getSequencesInFileList(listed, expected, filter);
        ASSERT_EQ(LibrarySequences::getSequencesInDirectory(m_path, found, filter).get(), rules.get())
            << asLiterals(listed);
        ASSERT_EQ(found, expected) << asLiterals(listed);

        for (std::string const& name : listed) {
            std::string expectedName;
            std::string foundName;
            Status const ruled = SlowSequences::getSequenceName(name, listed, expectedName);
            ASSERT_EQ(LibrarySequences::getSequenceName(m_path + "/" + name, foundName).get(), ruled.get())
                << asLiteral(name) << " of " << asLiterals(listed);
            ASSERT_EQ(foundName, expectedName) << asLiteral(name) << " of " << asLiterals(listed);
        }
        std::filesystem::remove_all(m_path);
        m_path = folder;
    }
}

} // namespace
