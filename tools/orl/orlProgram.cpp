// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "orlProgram.h"

#include "orlDocumentFile.h"
#include "orlInfoCommand.h"
#include "orlInputError.h"
#include "orlNormalizeCommand.h"
#include "orlPrintable.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <exception>
#include <ostream>
#include <sstream>
#include <utility>

namespace ORL_0_81::tool {

namespace {

constexpr char const kInputHelp[] = "Timeline document; - is standard input";

void describe(CLI::App& app) {
    app.description("Shows timeline documents and brings them to their normal form.");
    app.set_version_flag("--version", "orl " ORL_VERSION);
    app.set_help_flag("-h,--help", "Print this help and exit");
    app.require_subcommand(1);
    app.footer("Exit codes: 0 good, 1 the input is at fault or a file cannot be written, 2 wrong usage.\n"
               "`orl COMMAND --help` tells more of a command.\n\n"
               "Examples:\n"
               "  orl info cut.otio\n"
               "  orl normalize cut.otio -o normal.otio\n");
}

CLI::App& addNormalize(CLI::App& app, NormalizeCommand& command) {
    CLI::App& normalize =
        *app.add_subcommand("normalize", "Write the normal form of a timeline document, and tell on standard "
                                         "error what that leaves out");
    normalize.add_option("FILE", command.file, kInputHelp)->required()->type_name("");
    normalize.add_option("-o,--output", command.output, "File to write; - is standard output")
        ->type_name("OUT");
    normalize.add_flag("--quiet", command.isQuiet, "Do not tell what is left out");
    normalize.add_flag("--strict", command.isStrict,
                       "Fail, and write nothing, if anything would be left out");
    normalize.footer("Without a timeline the normal form is {}.\n\n"
                     "Example:\n"
                     "  orl normalize --strict cut.otio -o normal.otio\n");
    return normalize;
}

CLI::App& addInfo(CLI::App& app, InfoCommand& command) {
    CLI::App& info = *app.add_subcommand("info", "Show the tracks and clips of timeline documents");
    info.add_option("FILE", command.files, kInputHelp)->required()->type_name("");
    info.add_flag("--json", command.isJson, "One JSON object a line and file, for programs");
    info.footer("Ranges are told in seconds and in frames at the rate of the clip: its frame rate if that is "
                "known,\nelse the rate of its source range. What is not defined is shown as - and is null in "
                "JSON.\n\n"
                "Example:\n"
                "  orl info --json cut.otio | jq '.counts.clips'\n");
    return info;
}

void print(InputError const& error, std::ostream& out) {
    out << "orl ERROR: " << inQuotes(error.file()) << " : " << error.what() << '\n';
}

// The parser takes an argument in brackets for a list. Ours are names of files, so they go through it marked.
constexpr char kNameMark = '\x01';

std::vector<std::string> marked(std::vector<std::string> arguments) {
    for (std::string& argument : arguments) {
        if (!argument.empty() && argument.front() == '[' && argument.back() == ']') {
            argument.insert(argument.begin(), kNameMark);
        }
    }
    return arguments;
}

void unmark(std::string& argument) {
    if (!argument.empty() && argument.front() == kNameMark) {
        argument.erase(argument.begin());
    }
}

int run(std::vector<std::string> arguments, Streams const& streams) {
    CLI::App app("", "orl");
    NormalizeCommand normalize;
    InfoCommand info;
    describe(app);
    CLI::App const& normalizeApp = addNormalize(app, normalize);
    addInfo(app, info);

    try {
        arguments = marked(std::move(arguments));
        app.parse(std::vector<std::string>(arguments.rbegin(), arguments.rend()));
        unmark(normalize.file);
        unmark(normalize.output);
        std::for_each(info.files.begin(), info.files.end(), unmark);
    } catch (CLI::Success const& asked) { // for help, or for the version
        std::ostringstream text;
        app.exit(asked, text, text);
        writeToStream(streams.out, text.str());
        return kExitGood;
    } catch (CLI::ParseError const& error) {
        streams.error << "orl ERROR: " << printable(error.what()) << "\nTry orl --help.\n";
        return kExitWrongUsage;
    }

    if (normalizeApp.parsed()) {
        normalize.run(streams);
        return kExitGood;
    }
    return info.run(streams, [&streams](InputError const& error) { print(error, streams.error); })
               ? kExitGood
               : kExitInputAtFault;
}

} // namespace

int runOrl(std::vector<std::string> const& arguments, Streams const& streams) {
    try {
        return run(arguments, streams);
    } catch (InputError const& error) {
        print(error, streams.error);
    } catch (std::exception const& error) {
        streams.error << "orl ERROR: " << error.what() << '\n';
    }
    return kExitInputAtFault;
}

} // namespace ORL_0_81::tool
