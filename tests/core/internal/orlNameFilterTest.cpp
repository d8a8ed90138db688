// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "internal/orlNameFilter.h"

#include <gtest/gtest.h>

#include <regex>
#include <string>
#include <vector>

namespace {

using namespace ORL_0_81;
using namespace std::string_literals;

TEST(NameFilter, NeedsNoEngineForTexts) {
    for (std::string const expression :
         {"",          ".*",    ".*.*",    "^",         "$",      "^$",          "^.*",
          ".*$",       "exr",   "exr$",    "^shot",     "^shot$", "\\.exr$",     ".*\\.exr",
          ".*\\.exr$", "exr.*", "^shot.*", "a b-c_d,e", "a\\\\b", "\\^\\$\\(\\)"}) {
        EXPECT_TRUE(NameFilter(expression).isPlain()) << expression;
    }
    for (std::string const expression : {".", "a.b", "a*", ".*?", ".**", "^*", "^.*x", "a|b", "[a]", "a{1}",
                                         "(a)", "\\d", "\\w", "a\\b", ".*a$|b", "x.*y", "$a"}) {
        try {
            EXPECT_FALSE(NameFilter(expression).isPlain()) << expression;
        } catch (std::regex_error const&) {
            continue; // the engine was asked, and refused it
        }
    }
}

TEST(NameFilter, PassesWhatTheEngineFinds) {
    std::vector<std::string> const names = {"",       "a",    "ab",  "ba",    "aba",      "a\nb", "\n",
                                            "a.exr",  "aexr", "exr", "exr.a", "shot.exr", "^a$",  "a\0b"s,
                                            "(a)\\b", "a.*b", ".*",  "$",     "^",        "\\"};
    for (std::string const expression : {"",          ".*",      ".*.*",     "^",      "$",
                                         "^$",        "^.*",     ".*$",      "a",      "b$",
                                         "^a",        "^a$",     "^ab$",     "a.*",    ".*b",
                                         ".*b$",      ".*a.*",   "^a.*",     "\\.exr", "\\.exr$",
                                         ".*\\.exr$", "\\^a\\$", "\\$",      "\\^",    "\\(a\\)\\\\b",
                                         "a\\.\\*b",  "\\.\\*",  "^\\.\\*$", "a\nb",   "^.*b",
                                         "a.b",       "(a|b)$",  "^b",       "a$"}) {
        NameFilter filter(expression);
        std::regex const regex(expression);
        for (std::string const& name : names) {
            EXPECT_EQ(filter.passes(name), std::regex_search(name, regex)) << expression << " in " << name;
        }
    }
}

TEST(NameFilter, RefusesMalformedExpressions) {
    for (std::string const expression : {"(", "[", "*a", "a\\", "\\", "a{2", "a)"}) {
        EXPECT_THROW(NameFilter{expression}, std::regex_error) << expression;
    }
}

} // namespace
