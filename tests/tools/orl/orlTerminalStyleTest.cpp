// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "orlTerminalStyle.h"
#include "tools/orl/orlToolSupport.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <cstdlib>
#include <optional>

#include <fcntl.h>
#include <poll.h>
#include <termios.h>
#include <unistd.h>

namespace ORL_0_81::tool {

using testing::HasSubstr;
using testing::Not;

namespace {

// A terminal that nobody sees.
class PseudoTerminal {
public:
    PseudoTerminal() : m_master(::posix_openpt(O_RDWR | O_NOCTTY)) {
        if (m_master >= 0 && ::grantpt(m_master) == 0 && ::unlockpt(m_master) == 0) {
            m_name = ::ptsname(m_master);
            // Held, so that what is written stays readable when the writer has gone.
            m_slave = ::open(m_name.c_str(), O_RDWR | O_NOCTTY);
        }
    }
    ~PseudoTerminal() {
        ::close(m_slave);
        ::close(m_master);
    }
    PseudoTerminal(PseudoTerminal const&) = delete;
    PseudoTerminal& operator=(PseudoTerminal const&) = delete;

    bool isOpen() const { return m_slave >= 0; }
    int descriptor() const { return m_slave; }
    std::string const& name() const { return m_name; }

    // All that was written until now.
    std::string read() const {
        std::string text;
        std::array<char, 4096> block{};
        pollfd ready{m_master, POLLIN, 0};
        while (::poll(&ready, 1, 0) == 1 && (ready.revents & POLLIN) != 0) {
            ssize_t const count = ::read(m_master, block.data(), block.size());
            if (count <= 0) {
                break;
            }
            text.append(block.data(), static_cast<std::size_t>(count));
        }
        return text;
    }

private:
    int m_master;
    int m_slave = -1;
    std::string m_name;
};

// Sets or, without a value, removes a variable for as long as it lives.
class Variable {
public:
    Variable(char const* name, char const* value) : m_name(name) {
        if (char const* const before = std::getenv(name)) {
            m_before = before;
        }
        set(value);
    }
    ~Variable() { set(m_before ? m_before->c_str() : nullptr); }
    Variable(Variable const&) = delete;
    Variable& operator=(Variable const&) = delete;

private:
    void set(char const* value) const { value ? ::setenv(m_name, value, 1) : ::unsetenv(m_name); }

    char const* m_name;
    std::optional<std::string> m_before;
};

class Terminal : public testing::Test {
protected:
    void SetUp() override {
        if (!m_terminal.isOpen()) {
            GTEST_SKIP() << "no pseudo terminal to be had";
        }
    }

    // What a line of the shell writes to the terminal, with these variables.
    std::string see(std::string const& variables, std::string const& line) const {
        std::string const command = "cd '" + m_folder.path().string() + "' && env -u NO_COLOR -u TERM " +
                                    variables + " '" ORL_TEST_PROGRAM "' " + line;
        EXPECT_NE(std::system(command.c_str()), -1);
        return m_terminal.read();
    }

    PseudoTerminal const m_terminal;
    ScratchFolder const m_folder;
};

} // namespace

TEST(TerminalStyle, SetsNothingOffUnlessItIsColoured) {
    TerminalStyle const plain;
    EXPECT_FALSE(plain.isColoured());
    EXPECT_EQ(plain.error("a") + plain.warning("b") + plain.title("c"), "abc");
    TerminalStyle const coloured(true);
    EXPECT_EQ(coloured.error("a"), "\033[1;31ma\033[0m");
    EXPECT_EQ(coloured.warning("b"), "\033[33mb\033[0m");
    EXPECT_EQ(coloured.title("c"), "\033[1mc\033[0m");
}

TEST_F(Terminal, HasColoursUnlessItIsDumbOrTheUserWantsNone) {
    struct Case {
        char const* terminal;
        char const* refusal;
        bool isTerminal;
        bool isColoured;
    };
    for (auto const& row : {
             Case{"xterm", nullptr, true, true},
             Case{"xterm", "", true, true},
             Case{"xterm", "1", true, false},
             Case{"xterm", "0", true, false},
             Case{"dumb", nullptr, false, false},
             Case{"dumber", nullptr, true, true},
             Case{nullptr, nullptr, true, true},
         }) {
        Variable const terminal("TERM", row.terminal);
        Variable const refusal("NO_COLOR", row.refusal);
        SCOPED_TRACE(std::string(row.terminal ? row.terminal : "-") + ' ' +
                     (row.refusal ? row.refusal : "-"));
        EXPECT_EQ(isTerminal(m_terminal.descriptor()), row.isTerminal);
        EXPECT_EQ(TerminalStyle::of(m_terminal.descriptor()).isColoured(), row.isColoured);
    }
}

TEST(TerminalStyle, HasNoColoursWhereNobodyWatches) {
    Variable const terminal("TERM", "xterm");
    Variable const refusal("NO_COLOR", nullptr);
    int const descriptor = ::open("/dev/null", O_RDWR);
    EXPECT_FALSE(isTerminal(descriptor));
    EXPECT_FALSE(TerminalStyle::of(descriptor).isColoured());
    ::close(descriptor);
    EXPECT_FALSE(TerminalStyle::of(-1).isColoured());
}

TEST_F(Terminal, ShowsErrorsInRed) {
    std::string const line = "normalize absent.otio 2>" + m_terminal.name();
    std::string const rest = " \"absent.otio\" : No such file or directory\r\n";
    EXPECT_EQ(see("TERM=xterm", line), "\033[1;31morl ERROR:\033[0m" + rest);
    EXPECT_EQ(see("TERM=xterm NO_COLOR=1", line), "orl ERROR:" + rest);
    EXPECT_EQ(see("TERM=dumb", line), "orl ERROR:" + rest);
    EXPECT_THAT(see("TERM=xterm", "--loud 2>" + m_terminal.name()),
                HasSubstr("\033[1;31morl ERROR:\033[0m "));
}

TEST_F(Terminal, ColoursEachStreamByItself) {
    writeFile(m_folder / "cut.otio",
              R"({"OTIO_SCHEMA":"Timeline.1","name":"cut","note":1,"tracks":{"OTIO_SCHEMA":)"
              R"("Stack.1","children":[{"OTIO_SCHEMA":"Clip.2"},{"OTIO_SCHEMA":"Track.1"}]}})");
    // The text of a document goes out as it is, whoever watches.
    EXPECT_THAT(see("TERM=xterm", "normalize cut.otio 2>/dev/null >" + m_terminal.name()),
                Not(HasSubstr("\033")));
    EXPECT_THAT(see("TERM=xterm", "normalize cut.otio >/dev/null 2>" + m_terminal.name()),
                HasSubstr("\033[33morl:\033[0m \"cut.otio\": not in the normal form:"));
    EXPECT_THAT(see("TERM=xterm", "convert cut.otio >/dev/null 2>" + m_terminal.name()), "");

    std::string const info = see("TERM=xterm", "info cut.otio >" + m_terminal.name());
    EXPECT_THAT(info, HasSubstr("\033[1mcut.otio\033[0m\r\n"));
    EXPECT_THAT(info, HasSubstr("  \033[1mTRACK  NAME  KIND  CLIPS  GAPS  EFFECTS\033[0m\r\n"));
    EXPECT_THAT(info, HasSubstr("  \033[33mnot read:\033[0m 1 x schema"));
    EXPECT_THAT(see("TERM=xterm", "info --json cut.otio >" + m_terminal.name()), Not(HasSubstr("\033")));
    EXPECT_THAT(see("TERM=xterm NO_COLOR=yes", "info cut.otio >" + m_terminal.name()),
                Not(HasSubstr("\033")));
    EXPECT_THAT(see("TERM=xterm", "--help >" + m_terminal.name()), Not(HasSubstr("\033")));
}

TEST_F(Terminal, ShowsWhichFramesAreMissing) {
    for (char const* name : {"a.1.exr", "a.2.exr", "a.4.exr"}) {
        writeFile(m_folder / name, "");
    }
    EXPECT_EQ(see("TERM=xterm", "sequences . >" + m_terminal.name()),
              "a.%01d.exr  1-4 (3, \033[33mmissing 3\033[0m)\r\n");
    EXPECT_EQ(see("TERM=xterm", "sequences --plain . >" + m_terminal.name()), "a.%01d.exr\r\n");
}

} // namespace ORL_0_81::tool
