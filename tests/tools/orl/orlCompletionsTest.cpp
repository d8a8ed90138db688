// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "tools/orl/orlHelpText.h"
#include "tools/orl/orlToolSupport.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <cstdio>

namespace ORL_0_81::tool {

using testing::ContainerEq;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::IsSupersetOf;
using testing::UnorderedElementsAre;

namespace {

constexpr char const kBash[] = ORL_TEST_TOOL_SOURCES "/completions/orl.bash";
constexpr char const kZsh[] = ORL_TEST_TOOL_SOURCES "/completions/_orl";

bool has(std::string const& program) {
    return std::system(("command -v " + program + " >/dev/null 2>&1").c_str()) == 0;
}

class Bash : public testing::Test {
protected:
    void SetUp() override {
        if (!has("bash")) {
            GTEST_SKIP() << "no bash here";
        }
        for (char const* name : {"cut.otio", "old.json", "plate one.mov", "-odd.otio"}) {
            writeFile(m_folder / name, "");
        }
        std::filesystem::create_directory(m_folder / "shots");
        std::filesystem::create_directory(m_folder / "more shots");
        std::filesystem::create_directory(m_folder / "folder.otio");
    }

    // What a bash without any settings offers for the last of the words, as it would split them.
    std::multiset<std::string> offered(std::vector<std::string> const& words) const {
        std::string line = "orl";
        for (std::string const& word : words) {
            line += " '" + word + "'";
        }
        writeFile(m_folder / ".ask", std::string("source '") + kBash + "'; COMP_WORDS=(" + line +
                                         "); COMP_CWORD=" + std::to_string(words.size()) +
                                         "; _orl; for word in \"${COMPREPLY[@]}\"; do echo \"$word\"; done");
        std::FILE* const pipe = ::popen(
            ("cd '" + m_folder.path().string() + "' && bash --norc --noprofile .ask 2>&1").c_str(), "r");
        std::string text;
        std::array<char, 4096> block{};
        while (std::size_t const count = std::fread(block.data(), 1, block.size(), pipe)) {
            text.append(block.data(), count);
        }
        EXPECT_EQ(::pclose(pipe), 0);
        std::istringstream in(text);
        std::multiset<std::string> replies;
        for (std::string reply; std::getline(in, reply);) {
            replies.insert(reply);
        }
        return replies;
    }

    ScratchFolder const m_folder;
};

std::multiset<std::string> several(std::set<std::string> const& texts) {
    return {texts.begin(), texts.end()};
}

// What the zsh completion holds for one command; what it holds for the program for an empty name.
std::string zshPartOf(std::string const& command) {
    std::string const text = readFile(kZsh);
    std::size_t const begin = command.empty() ? 0 : text.find("\n        " + command + ")\n");
    return begin == std::string::npos ? "" : text.substr(begin, text.find(";;", begin) - begin);
}

std::set<std::string> zshOptionsOf(std::string const& command) {
    std::string const part = zshPartOf(command);
    std::set<std::string> options;
    // One line an option: in braces if it has a short form, else in quotes, perhaps behind what it excludes.
    std::regex const spelling("\\{(-[^}]*)\\}'\\[|(--?[a-z0-9]+)=?\\[");
    std::regex const option("--?[A-Za-z0-9]+");
    for (std::sregex_iterator found(part.begin(), part.end(), spelling), end; found != end; ++found) {
        std::string const names = (*found)[1].matched ? (*found)[1] : (*found)[2];
        for (std::sregex_iterator name(names.begin(), names.end(), option); name != end; ++name) {
            options.insert(name->str());
        }
    }
    return options;
}

} // namespace

TEST_F(Bash, OffersTheCommandsAndTheOptionsOfTheProgram) {
    std::set<std::string> expected = optionsOfHelp("");
    for (std::string const& command : commandsOfHelp()) {
        expected.insert(command);
    }
    EXPECT_THAT(offered({""}), ContainerEq(several(expected)));
    EXPECT_THAT(offered({"co"}), UnorderedElementsAre("convert", "complete"));
    EXPECT_THAT(offered({"--v"}), UnorderedElementsAre("--version"));
    EXPECT_THAT(offered({"x"}), IsEmpty());
}

TEST_F(Bash, OffersTheOptionsOfEachCommandAndNoOthers) {
    ASSERT_FALSE(commandsOfHelp().empty());
    for (std::string const& command : commandsOfHelp()) {
        SCOPED_TRACE(command);
        EXPECT_THAT(offered({command, "-"}), ContainerEq(several(optionsOfHelp(command))));
    }
}

TEST_F(Bash, OffersDocumentsAndFoldersWhereADocumentIsWanted) {
    for (char const* command : {"normalize", "convert", "info", "complete"}) {
        EXPECT_THAT(offered({command, ""}), UnorderedElementsAre("cut.otio", "old.json", "-odd.otio", "shots",
                                                                 "more shots", "folder.otio"));
        EXPECT_THAT(offered({command, "--json", "c"}), UnorderedElementsAre("cut.otio"));
    }
}

TEST_F(Bash, OffersAllFilesWhereMediaAreWanted) {
    for (char const* command : {"probe", "layout"}) {
        EXPECT_THAT(offered({command, "cut.otio", "p"}), UnorderedElementsAre("plate one.mov"));
    }
}

TEST_F(Bash, OffersFoldersWhereADirectoryIsWanted) {
    EXPECT_THAT(offered({"sequences", ""}), UnorderedElementsAre("shots", "more shots", "folder.otio"));
    EXPECT_THAT(offered({"sequences", "-r", "m"}), UnorderedElementsAre("more shots"));
}

TEST_F(Bash, OffersWhatAnOptionTakes) {
    EXPECT_THAT(offered({"layout", "--svg", "p"}), UnorderedElementsAre("plate one.mov"));
    EXPECT_THAT(offered({"layout", "--output", "=", "p"}), UnorderedElementsAre("plate one.mov"));
    EXPECT_THAT(offered({"layout", "--canvas", "="}), IsSupersetOf({"1920x1080", "3840x2160"}));
    EXPECT_THAT(offered({"complete", "--rate", "29"}), UnorderedElementsAre("29.97"));
    EXPECT_THAT(offered({"layout", "--name", ""}), IsEmpty());
    EXPECT_THAT(offered({"sequences", "--filter", ""}), IsEmpty());
}

TEST_F(Bash, OffersNoOptionsBehindTheMarkThatEndsThem) {
    EXPECT_THAT(offered({"normalize", "--", "-"}), UnorderedElementsAre("-odd.otio"));
}

TEST(Zsh, KnowsTheCommandsAndTheOptionsOfTheProgram) {
    EXPECT_THAT(zshOptionsOf(""), ContainerEq(optionsOfHelp("")));
    for (std::string const& command : commandsOfHelp()) {
        EXPECT_THAT(readFile(kZsh), HasSubstr("\n        '" + command + ":"));
    }
}

TEST(Zsh, KnowsTheOptionsOfEachCommandAndNoOthers) {
    ASSERT_FALSE(commandsOfHelp().empty());
    for (std::string const& command : commandsOfHelp()) {
        SCOPED_TRACE(command);
        EXPECT_THAT(zshOptionsOf(command), ContainerEq(optionsOfHelp(command)));
    }
}

TEST(Zsh, ReadsItsCompletionWithoutComplaint) {
    if (!has("zsh")) {
        GTEST_SKIP() << "no zsh here";
    }
    EXPECT_EQ(std::system((std::string("zsh -n '") + kZsh + "'").c_str()), 0);
}

} // namespace ORL_0_81::tool
