// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#ifndef ORL_TEST_SUPPORT_RANDOM_NAMES_H
#define ORL_TEST_SUPPORT_RANDOM_NAMES_H

#include <ostream>
#include <random>
#include <string>
#include <vector>

namespace orlTest {

using Random = std::mt19937;

/// What getSequencesInFileList() is asked.
struct NameList {
    std::vector<std::string> names;
    std::string filter;
};

/// A way to make lists that hit each other: names that share nothing find nothing.
struct NameGenerator {
    char const* name;
    NameList (*make)(Random&);
};

/// For the report of a failure.
inline void PrintTo(NameGenerator const& generator, std::ostream* stream) { *stream << generator.name; }

/// All ways there are.
std::vector<NameGenerator> const& nameGenerators();

/// A name for the operations on frame symbols: percent signs, digits, dots, backslashes.
std::string randomSymbolName(Random& random);

/// A filter that is cheap for names of any kind. Some are malformed.
std::string const& randomFilter(Random& random);

/// A text as the source of a C++ string literal, with `s` behind it if it holds a NUL.
std::string asLiteral(std::string const& text);

/// Texts as the source of a list of literals.
std::string asLiterals(std::vector<std::string> const& texts);

} // namespace orlTest

#endif // ORL_TEST_SUPPORT_RANDOM_NAMES_H
