// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#ifndef ORL_HELP_TEXT_H
#define ORL_HELP_TEXT_H

#include "tools/orl/orlToolSupport.h"

#include <algorithm>
#include <regex>
#include <set>
#include <string>
#include <vector>

/// \file
/// What the program's own help says that there is.

namespace ORL_0_81::tool {

/// The names of the commands, in the order of `orl --help`.
inline std::vector<std::string> commandsOfHelp() {
    std::string const help = orl({"--help"}).out;
    std::string const list = help.substr(std::min(help.find("\nSubcommands:\n"), help.size()));
    std::vector<std::string> commands;
    std::regex const name("\n  ([a-z]+) ");
    for (std::sregex_iterator found(list.begin(), list.end(), name), end; found != end; ++found) {
        if ((*found)[1] != "orl") { // an example
            commands.push_back((*found)[1]);
        }
    }
    return commands;
}

/// The options in the help of a command, short ones and long ones, with their dashes; of the program itself
/// for an empty name.
inline std::set<std::string> optionsOfHelp(std::string const& command) {
    std::string const help = command.empty() ? orl({"--help"}).out : orl({command, "--help"}).out;
    std::set<std::string> options;
    std::regex const line("\n  (-[-A-Za-z0-9,]+)");
    std::regex const option("--?[A-Za-z0-9][-A-Za-z0-9]*");
    for (std::sregex_iterator found(help.begin(), help.end(), line), end; found != end; ++found) {
        std::string const names = (*found)[1];
        for (std::sregex_iterator name(names.begin(), names.end(), option); name != end; ++name) {
            options.insert(name->str());
        }
    }
    return options;
}

} // namespace ORL_0_81::tool

#endif // ORL_HELP_TEXT_H
