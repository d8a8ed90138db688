// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "orlProgram.h"

#include <csignal>
#include <iostream>
#include <string>
#include <vector>

#include <fcntl.h>
#include <unistd.h>

namespace {

// A standard stream that was closed would have its number given to the next file that is opened, and what
// was meant for the stream would go there. What holds its place takes neither reading nor writing.
void holdStandardStreams() {
    for (int stream = 0; stream <= 2; ++stream) {
        if (::fcntl(stream, F_GETFD) == -1) {
            ::open("/dev/null", stream == 0 ? O_WRONLY : O_RDONLY);
        }
    }
}

} // namespace

int main(int argc, char** argv) {
    holdStandardStreams();
    // A reader that has gone is told like a full disk.
    std::signal(SIGPIPE, SIG_IGN);
    std::ios::sync_with_stdio(false);
    using namespace ORL_0_81::tool;
    return runOrl(std::vector<std::string>(argv + (argc > 0 ? 1 : 0), argv + argc),
                  {std::cin, std::cout, std::cerr, isTerminal(STDERR_FILENO),
                   TerminalStyle::of(STDOUT_FILENO), TerminalStyle::of(STDERR_FILENO)});
}
