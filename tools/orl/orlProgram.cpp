// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "orlProgram.h"

#include "orlCompleteCommand.h"
#include "orlConvertCommand.h"
#include "orlCoreVersionInfo.h"
#include "orlDocumentFile.h"
#include "orlFPSUtils.h"
#include "orlInfoCommand.h"
#include "orlInputError.h"
#include "orlLayoutCommand.h"
#include "orlNormalizeCommand.h"
#include "orlPrintable.h"
#include "orlProbeCommand.h"
#include "orlSequencesCommand.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <exception>
#include <locale>
#include <ostream>
#include <sstream>
#include <utility>

namespace ORL_0_81::tool {

namespace {

constexpr char const kInputHelp[] = "Timeline document; - is standard input";

void describe(CLI::App& app) {
    app.description("Shows, completes and lays out timeline documents and the media that they name.");
    app.set_version_flag("--version", getVersionLine(kVersionInfo),
                         "Print the line that tells which build of the library this is, and exit");
    app.set_help_flag("-h,--help", "Print this help and exit");
    app.require_subcommand(1);
    app.footer("Exit codes: 0 good, 1 the input is at fault or a file cannot be written, 2 wrong usage.\n"
               "`orl COMMAND --help` tells more of a command.\n\n"
               "Examples:\n"
               "  orl info cut.otio\n"
               "  orl normalize cut.otio -o normal.otio\n"
               "  orl convert new.otio -o cut.otio\n"
               "  orl probe plate.mov shot.%04d.exr\n"
               "  orl complete cut.otio -o complete.otio\n"
               "  orl layout *.mov --svg layout.svg -o layout.otio\n"
               "  orl sequences /shows/nf/plates\n");
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

CLI::App& addConvert(CLI::App& app, ConvertCommand& command) {
    CLI::App& convert = *app.add_subcommand(
        "convert", "Turn a document of newer writers into the dialect that all other commands read, and tell "
                   "on standard error what that leaves out");
    convert.add_option("FILE", command.file, kInputHelp)->type_name("");
    convert.add_option("-o,--output", command.output, "File to write; - is standard output")
        ->type_name("OUT");
    convert.add_flag("--quiet", command.isQuiet, "Do not tell what is left out");
    convert.add_flag("--strict", command.isStrict, "Fail, and write nothing, if anything would be left out");
    convert.footer("Of the media references of a clip the active one becomes the clip's only one. What needs "
                   "no\nconversion is written as it stands, byte for byte. Without FILE standard input is "
                   "read.\n\n"
                   "Example:\n"
                   "  orl convert new.otio | orl complete - | orl layout - -o layout.otio\n");
    return convert;
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

// All of a text, in the decimal form of every locale.
bool parseLength(std::string const& text, double& length) {
    std::istringstream in(text);
    in.imbue(std::locale::classic());
    return in >> length && in.peek() == EOF && std::isfinite(length) && length > 0;
}

// What stands before and behind the first x of "1920x1080". They are parted first: a stream may take the x for a part of a
// hexadecimal number.
bool parseCanvas(std::string const& text, MediaRequest& request) {
    std::size_t const x = text.find('x');
    return x != std::string::npos && parseLength(text.substr(0, x), request.canvasWidth) &&
           parseLength(text.substr(x + 1), request.canvasHeight);
}

void addMediaOptions(CLI::App& command, MediaRequest& request) {
    command
        .add_option_function<std::string>(
            "--canvas",
            [&request](std::string const& text) {
                if (!parseCanvas(text, request)) {
                    throw CLI::ValidationError("--canvas", "wants WIDTHxHEIGHT, such as 1920x1080");
                }
            },
            "Canvas that bounds are relative to (default 1920x1080)")
        ->type_name("WxH");
    command
        .add_option_function<std::string>(
            "--rate",
            [&request](std::string const& text) {
                if (!FPSUtils::getFPSFromString(String(text.c_str()), request.rate)) {
                    throw CLI::ValidationError("--rate", "wants frames a second, such as 24 or 29.97");
                }
            },
            "Frame rate for media without one (default 24)")
        ->type_name("FPS");
}

CLI::App& addComplete(CLI::App& app, CompleteCommand& command) {
    CLI::App& complete = *app.add_subcommand(
        "complete", "Fill what a timeline document leaves open from the media that it names");
    complete.add_option("FILE", command.file, kInputHelp)->required()->type_name("");
    complete.add_option("-o,--output", command.output, "File to write; - is standard output")
        ->type_name("OUT");
    addMediaOptions(complete, command.request);
    complete.add_flag("--quiet", command.isQuiet, "Do not tell which media could not be read");
    complete.add_flag("--strict", command.isStrict,
                      "Fail, and write nothing, if any medium could not be read");
    complete.footer(
        "Media that cannot be read leave their clips as they are, but that a clip without bounds gets\n"
        "the canvas. Clips of a newer schema are told and left out; see orl convert.\n\n"
        "Example:\n"
        "  orl complete cut.otio | orl layout - --svg cut.svg -o layout.otio\n");
    return complete;
}

CLI::App& addLayout(CLI::App& app, LayoutCommand& command) {
    CLI::App& layout = *app.add_subcommand(
        "layout", "Put media and the clips of timeline documents side by side on one canvas");
    layout
        .add_option(
            "PATH", command.paths,
            "Media, sequences such as shot.%04d.exr, and documents: *.otio, *.json, - for standard input")
        ->required()
        ->type_name("");
    layout.add_option("-o,--output", command.output, "File to write; - is standard output")->type_name("OUT");
    layout.add_option("--svg", command.picture, "File for a drawing of the canvas with its cells")
        ->type_name("FILE");
    layout.add_option("--name", command.name, "Name of the new timeline (default Layout)")->type_name("NAME");
    addMediaOptions(layout, command.request);
    layout.footer(
        "A medium that cannot be opened is told and left out. Any other fault is told, too, and nothing "
        "is written.\n\n"
        "Example:\n"
        "  orl layout a.mov b.mov --canvas 2048x858 --svg layout.svg -o layout.otio\n");
    return layout;
}

CLI::App& addProbe(CLI::App& app, ProbeCommand& command) {
    CLI::App& probe = *app.add_subcommand("probe", "Show what media are made of");
    probe.add_option("PATH", command.paths, "Media, and sequences such as shot.%04d.exr")
        ->required()
        ->type_name("");
    probe.add_flag("--json", command.isJson, "One JSON object a line and medium, for programs");
    addMediaOptions(probe, command.request);
    probe.footer("Example:\n"
                 "  orl probe --json plate.mov | jq '.duration.value'\n");
    return probe;
}

CLI::App& addSequences(CLI::App& app, SequencesCommand& command) {
    CLI::App& sequences = *app.add_subcommand(
        "sequences", "Tell the numbered file sequences of a directory, or of a list of names");
    sequences
        .add_option("DIR", command.directory, "Directory; - takes names from standard input, one a line")
        ->required()
        ->type_name("");
    sequences.add_option("--filter", command.filter, "Leave out names in which this is not found")
        ->type_name("REGEX");
    sequences.add_flag("-r,--recursive", command.isRecursive, "Go through all directories below as well");
    CLI::Option* const json = sequences.add_flag_callback(
        "--json", [&command] { command.form = SequencesCommand::Form::kJson; },
        "One JSON object a line, for programs");
    sequences
        .add_flag_callback(
            "--plain", [&command] { command.form = SequencesCommand::Form::kPlain; },
            "Names and nothing else")
        ->excludes(json);
    sequences.add_flag("-0,--null", command.isNulSeparated,
                       "Names end with a zero byte, on standard input and with --plain on output");
    sequences.footer("A line tells the frames: the first and the last, how many, and which are missing.\n\n"
                     "Examples:\n"
                     "  orl sequences --filter 'exr$' /shows/nf/plates\n"
                     "  find . -name '*.dpx' -print0 | orl sequences -0 --plain -\n");
    return sequences;
}

void printError(std::string const& text, Streams const& streams) {
    streams.error << streams.errorStyle.error("orl ERROR:") << ' ' << text << '\n';
}

void print(InputError const& error, Streams const& streams) {
    printError(inQuotes(error.file()) + " : " + error.what(), streams);
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

// What the parser says of a first word that is no command is that a command is missing.
std::string describeMistake(CLI::App const& app, CLI::ParseError const& error) {
    std::vector<std::string> rest = app.remaining();
    if (!app.get_subcommands().empty() || rest.empty()) {
        return printable(error.what());
    }
    unmark(rest.front());
    return inQuotes(rest.front()) + " : No such " +
           (rest.front().compare(0, 1, "-") == 0 ? "option" : "command");
}

int run(std::vector<std::string> arguments, Streams const& streams) {
    CLI::App app("", "orl");
    NormalizeCommand normalize;
    InfoCommand info;
    describe(app);
    ConvertCommand convert;
    CompleteCommand complete;
    LayoutCommand layout;
    ProbeCommand probe;
    SequencesCommand sequences;
    CLI::App const& normalizeApp = addNormalize(app, normalize);
    CLI::App const& convertApp = addConvert(app, convert);
    CLI::App const& infoApp = addInfo(app, info);
    CLI::App const& probeApp = addProbe(app, probe);
    CLI::App const& completeApp = addComplete(app, complete);
    CLI::App const& layoutApp = addLayout(app, layout);
    CLI::App const& sequencesApp = addSequences(app, sequences);

    try {
        arguments = marked(std::move(arguments));
        app.parse(std::vector<std::string>(arguments.rbegin(), arguments.rend()));
        for (std::string* const name : {&normalize.file, &normalize.output, &convert.file, &convert.output,
                                        &complete.file, &complete.output, &layout.output, &layout.picture,
                                        &layout.name, &sequences.directory, &sequences.filter}) {
            unmark(*name);
        }
        for (std::vector<std::string>* const names : {&info.files, &layout.paths, &probe.paths}) {
            std::for_each(names->begin(), names->end(), unmark);
        }
    } catch (CLI::Success const& asked) { // for help, or for the version
        std::ostringstream text;
        app.exit(asked, text, text);
        writeToStream(streams.out, text.str());
        return kExitGood;
    } catch (CLI::ParseError const& error) {
        printError(describeMistake(app, error) + "\nTry orl --help.", streams);
        return kExitWrongUsage;
    }

    auto const tell = [&streams](InputError const& error) { print(error, streams); };
    bool isGood = true;
    if (normalizeApp.parsed()) {
        normalize.run(streams);
    } else if (convertApp.parsed()) {
        convert.run(streams);
    } else if (infoApp.parsed()) {
        isGood = info.run(streams, tell);
    } else if (probeApp.parsed()) {
        isGood = probe.run(streams, tell);
    } else if (completeApp.parsed()) {
        complete.run(streams);
    } else if (layoutApp.parsed()) {
        isGood = layout.run(streams, tell);
    } else if (sequencesApp.parsed()) {
        isGood = sequences.run(streams, tell);
    }
    return isGood ? kExitGood : kExitInputAtFault;
}

} // namespace

int runOrl(std::vector<std::string> const& arguments, Streams const& streams) {
    try {
        return run(arguments, streams);
    } catch (InputError const& error) {
        print(error, streams);
    } catch (std::exception const& error) {
        printError(error.what(), streams);
    }
    return kExitInputAtFault;
}

} // namespace ORL_0_81::tool
