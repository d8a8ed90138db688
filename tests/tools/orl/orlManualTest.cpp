// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "tools/orl/orlHelpText.h"
#include "tools/orl/orlToolSupport.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <cstdio>

// The page is written by hand. What the program says of itself tells when it is out of date.

namespace ORL_0_81::tool {

using testing::ContainerEq;
using testing::HasSubstr;

namespace {

constexpr char const kManual[] = ORL_TEST_TOOL_SOURCES "/man/orl.1";

// What stands between a heading and the next; all in front of the first command for an empty name.
std::string sectionOf(std::string const& command) {
    std::string const page = readFile(kManual);
    std::size_t const begin =
        command.empty() ? page.find(".Sh DESCRIPTION") : page.find(".Ss orl " + command + '\n');
    if (begin == std::string::npos) {
        return "";
    }
    return page.substr(begin, std::min(page.find("\n.Ss", begin), page.find("\n.Sh", begin)) - begin);
}

// The options that have an entry in a list, with their dashes.
std::set<std::string> optionsOfManual(std::string const& command) {
    std::string const section = sectionOf(command);
    std::set<std::string> options;
    std::regex const entry("\n\\.It (Fl [^\n]*)");
    std::regex const option("Fl (-?[A-Za-z0-9][-A-Za-z0-9]*)");
    for (std::sregex_iterator found(section.begin(), section.end(), entry), end; found != end; ++found) {
        std::string const line = (*found)[1];
        for (std::sregex_iterator name(line.begin(), line.end(), option); name != end; ++name) {
            options.insert('-' + (*name)[1].str());
        }
    }
    return options;
}

} // namespace

TEST(Manual, TellsTheOptionsOfTheProgramAndNoOthers) {
    EXPECT_THAT(optionsOfManual(""), ContainerEq(optionsOfHelp("")));
}

TEST(Manual, TellsTheOptionsOfEachCommandAndNoOthers) {
    ASSERT_FALSE(commandsOfHelp().empty());
    for (std::string const& command : commandsOfHelp()) {
        SCOPED_TRACE(command);
        EXPECT_NE(sectionOf(command), "");
        std::set<std::string> options = optionsOfHelp(command);
        // Told once for all of them.
        EXPECT_EQ(options.erase("-h") + options.erase("--help"), 2U);
        EXPECT_THAT(optionsOfManual(command), ContainerEq(options));
    }
}

TEST(Manual, ShowsHowToCallEachCommandAndAnExampleOfIt) {
    std::string const page = readFile(kManual);
    std::string const synopsis = page.substr(0, page.find(".Sh DESCRIPTION"));
    std::string const examples = page.substr(page.find(".Sh EXAMPLES"));
    for (std::string const& command : commandsOfHelp()) {
        EXPECT_THAT(synopsis, HasSubstr("\n.Nm orl\n.Cm " + command + '\n'));
        EXPECT_THAT(examples, HasSubstr("orl " + command + ' '));
    }
}

TEST(Manual, TellsTheExitCodesAndTheVariables) {
    std::string const page = readFile(kManual);
    for (char const* entry :
         {"It 0", "It 1", "It 2", "It Ev NO_COLOR", "It Ev TERM", "It Ev MARLINE_DUMP_VERSION_INFO",
          "It Ev ORL_DEBUG_MEDIAMETADATA", "It Ev ZK_DEBUG_OTIO"}) {
        EXPECT_THAT(page, HasSubstr(std::string("\n.") + entry + '\n'));
    }
}

TEST(Manual, IsCleanToTheFormatter) {
    if (std::system("command -v mandoc >/dev/null 2>&1") != 0) {
        GTEST_SKIP() << "no mandoc here";
    }
    std::FILE* const pipe =
        ::popen((std::string("mandoc -Tlint -W warning '") + kManual + "' 2>&1").c_str(), "r");
    std::string said;
    std::array<char, 4096> block{};
    while (std::size_t const count = std::fread(block.data(), 1, block.size(), pipe)) {
        said.append(block.data(), count);
    }
    EXPECT_EQ(::pclose(pipe), 0);
    EXPECT_EQ(said, "");
}

} // namespace ORL_0_81::tool
