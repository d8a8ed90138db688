// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "orlProgress.h"
#include "orlSvgText.h"

#include <gtest/gtest.h>

#include <chrono>
#include <sstream>
#include <thread>

namespace ORL_0_81::tool {

TEST(Progress, TellsHowMuchOfTheWholeIsDone) {
    EXPECT_EQ(Progress::line("media read", 0, 3), "[..............................] 0 of 3 media read");
    EXPECT_EQ(Progress::line("media read", 1, 3), "[##########....................] 1 of 3 media read");
    EXPECT_EQ(Progress::line("media read", 3, 3), "[##############################] 3 of 3 media read");
    EXPECT_EQ(Progress::line("media read", 4, 3), "[##############################] 4 of 3 media read");
    EXPECT_EQ(Progress::line("media read", 7, 0), "7 media read");
}

TEST(Progress, ShowsLongWorkOnATerminalOnlyAndClearsItsLine) {
    std::istringstream in;
    for (bool const isTerminal : {false, true}) {
        std::ostringstream out;
        std::ostringstream error;
        Streams const streams{in, out, error, isTerminal};
        {
            Progress progress(streams, "media read", 2);
            progress.advance();
            EXPECT_EQ(error.str(), "") << "work that is soon done shows nothing";
            std::this_thread::sleep_for(std::chrono::milliseconds(320));
            progress.advance();
        }
        EXPECT_EQ(error.str(),
                  isTerminal ? "\r\033[K[##############################] 2 of 2 media read\r\033[K" : "");
        EXPECT_EQ(out.str(), "");
    }
}

TEST(SvgText, EscapesMarksAndReplacesWhatMayNotStandInADocument) {
    EXPECT_EQ(svgText("a<b>&\"c\"'"), "a&lt;b&gt;&amp;&quot;c&quot;'");
    EXPECT_EQ(svgText("\xc3\xa4\xe2\x82\xac\xf0\x9f\x8e\xac"), "\xc3\xa4\xe2\x82\xac\xf0\x9f\x8e\xac");
    EXPECT_EQ(svgText("a\x01"
                      "b\x7f"),
              "a\xef\xbf\xbd"
              "b\x7f");
    EXPECT_EQ(svgText("\xc3("), "\xef\xbf\xbd(");
    EXPECT_EQ(svgText("\xef\xbf\xbe"), "\xef\xbf\xbd");
    EXPECT_EQ(svgText("tab\tand\nline"), "tab\tand\nline");
}

TEST(SvgText, ShortensByWholeLetters) {
    EXPECT_EQ(shortened("abcdef", 6), "abcdef");
    EXPECT_EQ(shortened("abcdefg", 6), "abc\xe2\x80\xa6"
                                       "fg");
    EXPECT_EQ(shortened("\xc3\xa4\xc3\xb6\xc3\xbc\xc3\x9f", 3), "\xc3\xa4\xe2\x80\xa6\xc3\x9f");
    EXPECT_EQ(countLetters("\xc3\xa4\xff"
                           "b"),
              3U);
    EXPECT_EQ(countLetters(""), 0U);
}

} // namespace ORL_0_81::tool
