// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "tools/orl/orlToolSupport.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <rapidjson/document.h>

#include <array>
#include <cstdio>

#include <sys/wait.h>

// The program as a process of its own: what only a shell can show.

namespace ORL_0_81::tool {

using testing::HasSubstr;
using testing::StartsWith;

namespace {

struct Shell {
    int code;
    std::string out;
};

// Runs a line of the shell in which $orl is the program.
Shell shell(std::string const& line) {
    std::FILE* const pipe = ::popen(("orl='" ORL_TEST_PROGRAM "'; " + line).c_str(), "r");
    std::string out;
    std::array<char, 4096> block{};
    while (std::size_t const count = std::fread(block.data(), 1, block.size(), pipe)) {
        out.append(block.data(), count);
    }
    int const status = ::pclose(pipe);
    return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, out};
}

constexpr char emptyTimeline[] =
    R"({"name":"cut","OTIO_SCHEMA":"Timeline.1","metadata":{"orl":{"ORL_SCHEMA":"TimelineMetadata.1",)"
    R"("version":"0.81"}},"global_start_time":{"OTIO_SCHEMA":"RationalTime.1"}})"
    "\n";

} // namespace

TEST(Process, NormalizesFromAPipeToAPipe) {
    Shell const run = shell(
        R"(printf '{"OTIO_SCHEMA":"Timeline.1","name":"cut"}' | "$orl" normalize - | "$orl" normalize -)");
    EXPECT_EQ(run.code, 0);
    EXPECT_EQ(run.out, emptyTimeline);
}

#ifdef ORL_TOOL_HAS_FFMPEG_READER
TEST(Process, LaysOutADocumentOfANewerWriterThroughAPipe) {
    ScratchFolder const folder;
    std::filesystem::create_directory(folder / "media");
    for (char const* frame : {"1001", "1002", "1003", "1004"}) {
        writeFile(folder / "media" / ("hb_010." + std::string(frame) + ".ppm"),
                  "P6\n4 2\n255\n" + std::string(24, '\x40'));
    }
    Shell const run = shell("cd '" + folder.path().string() + R"(' &&
        "$orl" convert ')" ORL_TEST_DATA R"(/orl/newerClips.otio' 2>convert |
        "$orl" complete - 2>complete | "$orl" layout - 2>layout)");
    EXPECT_EQ(run.code, 0);
    EXPECT_THAT(readFile(folder / "convert"), StartsWith("orl: \""));
    EXPECT_EQ(readFile(folder / "complete"),
              "orl: \"-\": not read:\n  \"media/absent.mov\": kFileNotFound: no such file\n");
    EXPECT_EQ(readFile(folder / "layout"), "");

    rapidjson::Document layout;
    ASSERT_FALSE(layout.Parse(run.out.c_str()).HasParseError());
    auto const& track = layout["tracks"]["children"][0];
    auto const& clip = track["children"][0];
    EXPECT_STREQ(clip["name"].GetString(), "hb_010");
    EXPECT_STREQ(clip["media_reference"]["target_url"].GetString(), "media/hb_010.%04d.ppm");
    EXPECT_EQ(clip["source_range"]["start_time"]["value"].GetDouble(), 1002.0);
    EXPECT_EQ(clip["media_reference"]["metadata"]["orl"]["pixel_resolution"][0].GetInt(), 4)
        << "the frames that the reference names by their parts are found";
    EXPECT_STREQ(layout["tracks"]["children"][1]["children"][0]["media_reference"]["target_url"].GetString(),
                 "media/absent.mov");
}
#endif

TEST(Process, PrintsForItsVersionWhatTheLibraryPrintsWhenItIsLoaded) {
    std::string const line = shell(R"(env -u MARLINE_DUMP_VERSION_INFO "$orl" --version 2>&1)").out;
    EXPECT_EQ(shell(R"(MARLINE_DUMP_VERSION_INFO=1 "$orl" --help 2>&1 >/dev/null)").out, line);
    EXPECT_THAT(line, StartsWith("         orlCore: orl version "));
}

TEST(Process, TellsItsExitCodeToTheShell) {
    EXPECT_EQ(shell(R"("$orl" --version)").code, 0);
    EXPECT_EQ(shell(R"("$orl" normalize absent.otio 2>&1)").code, 1);
    EXPECT_EQ(shell(R"("$orl" 2>&1)").code, 2);
}

TEST(Process, KeepsTheReportOutOfTheOutput) {
    std::string const command =
        R"(printf '{"OTIO_SCHEMA":"Timeline.1","name":"cut","note":1}' | "$orl" normalize -)";
    EXPECT_EQ(shell(command + " 2>/dev/null").out, emptyTimeline);
    EXPECT_EQ(
        shell(command + " 2>&1 >/dev/null").out,
        "orl: \"-\": not in the normal form:\n  1 x Timeline.1 \"note\" is not modelled, first at /note\n");
}

TEST(Process, TellsOfAFullStandardOutput) {
    if (!std::filesystem::exists("/dev/full")) {
        GTEST_SKIP() << "no /dev/full here";
    }
    Shell const normalize = shell(R"(echo '{}' | "$orl" normalize --quiet - 2>&1 >/dev/full)");
    EXPECT_EQ(normalize.code, 1);
    EXPECT_EQ(normalize.out, "orl ERROR: \"standard output\" : No space left on device\n");
    EXPECT_EQ(shell(R"("$orl" --help 2>&1 >/dev/full)").code, 1);
    EXPECT_EQ(shell(R"(echo '{}' | "$orl" normalize --quiet - -o /dev/full 2>&1)").out,
              "orl ERROR: \"/dev/full\" : No space left on device\n");
}

TEST(Process, TellsOfAReaderThatHasGone) {
    ScratchFolder const folder;
    // The reader of the fifo closes it before anything is written.
    Shell const run = shell("cd '" + folder.path().string() + R"(' && mkfifo pipe && { : <pipe & } &&
        { sleep 0.3; echo '{}' | "$orl" normalize --quiet - 2>error; echo $? >code; } >pipe
        cat code error)");
    EXPECT_EQ(run.out, "1\norl ERROR: \"standard output\" : Broken pipe\n");
}

TEST(Process, DoesNotWriteIntoAFileInPlaceOfAClosedStream) {
    ScratchFolder const folder;
    writeFile(folder / "cut.otio", R"({"OTIO_SCHEMA":"Timeline.1","name":"cut","note":1})");
    std::string const change = "cd '" + folder.path().string() + "' && ";

    // The report has nowhere to go; it must not end up in the output, which is the next file to be opened.
    EXPECT_EQ(shell(change + R"("$orl" normalize cut.otio -o out.otio 2>&- </dev/null)").code, 0);
    EXPECT_EQ(readFile(folder / "out.otio"), emptyTimeline);

    Shell const closed = shell(change + R"("$orl" normalize --quiet cut.otio 2>&1 >&-)");
    EXPECT_EQ(closed.code, 1);
    EXPECT_THAT(closed.out, StartsWith("orl ERROR: \"standard output\" : "));
}

TEST(Process, ReadsAFifoLikeAFile) {
    ScratchFolder const folder;
    Shell const run = shell("cd '" + folder.path().string() + R"(' && mkfifo in &&
        { printf '{"OTIO_SCHEMA":"Timeline.1","name":"cut"}' >in & } && "$orl" info in)");
    EXPECT_EQ(run.code, 0);
    EXPECT_THAT(run.out, HasSubstr("name   cut"));
}

} // namespace ORL_0_81::tool
