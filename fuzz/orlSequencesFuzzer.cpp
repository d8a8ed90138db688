// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project

// The first byte chooses a filter; the rest is names with a slash between them. The library must find what
// the plain rules of the tests find, and say the same of each name.
#include "support/orlLibrarySequences.h"
#include "support/orlRandomNames.h"
#include "support/orlSlowSequences.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

namespace {

using namespace ORL_0_81;
using namespace orlTest;

// The plain rules recurse for each byte, walk the list for each name, and have no patience that ends.
constexpr std::size_t LONGEST_NAME = 150;
constexpr std::size_t MOST_NAMES = 60;
constexpr int MOST_BACKSLASHES = 6;

// Cheap on names of any kind; the last two are malformed.
char const* const FILTERS[] = {"",    ".*",     "1",   "^a",  "exr$", "[^0-9]-",
                               "\\.", "(1)\\1", "a|d", "^.$", "(",    "a{2"};

[[noreturn]] void fail(std::string const& what, std::string const& library, std::string const& rules) {
    std::fprintf(stderr, "%s\nlibrary: %s\nrules:   %s\n", what.c_str(), library.c_str(), rules.c_str());
    std::abort();
}

std::vector<std::string> namesOf(std::string const& text) {
    std::vector<std::string> names;
    for (std::size_t begin = 0; begin <= text.size() && names.size() < MOST_NAMES;) {
        std::size_t const end = std::min(text.find('/', begin), text.size());
        std::string name = text.substr(begin, std::min(end - begin, LONGEST_NAME));
        int backslashes = 0;
        for (char& c : name) {
            if (c == '\\' && ++backslashes > MOST_BACKSLASHES) {
                c = '_';
            }
        }
        names.push_back(name);
        begin = end + 1;
    }
    return names;
}

void compareLists(std::vector<std::string> const& names, std::string const& filter) {
    std::vector<std::string> library;
    std::vector<std::string> rules;
    Status const found = LibrarySequences::getSequencesInFileList(names, library, filter);
    Status const ruled = SlowSequences::getSequencesInFileList(names, rules, filter);
    if (found != ruled || library != rules) {
        fail("names " + asLiterals(names) + ", filter " + asLiteral(filter),
             found.getStr() + (" " + asLiterals(library)), ruled.getStr() + (" " + asLiterals(rules)));
    }
}

void compareNames(std::string const& name) {
    bool seen = false;
    bool ruled = false;
    if (LibrarySequences::isSequenceName(name, seen) != SlowSequences::isSequenceName(name, ruled) ||
        seen != ruled) {
        fail("symbol in " + asLiteral(name), std::to_string(seen), std::to_string(ruled));
    }
    std::string library;
    std::string rules;
    if (LibrarySequences::removeFrameSymbols(name, library) !=
            SlowSequences::removeFrameSymbols(name, rules) ||
        library != rules) {
        fail("without symbols " + asLiteral(name), asLiteral(library), asLiteral(rules));
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
    if (size == 0) {
        return 0;
    }
    std::string const filter = FILTERS[data[0] % (sizeof FILTERS / sizeof *FILTERS)];
    std::vector<std::string> const names = namesOf({reinterpret_cast<char const*>(data) + 1, size - 1});
    compareLists(names, filter);
    for (std::string const& name : names) {
        compareNames(name);
    }
    return 0;
}
