// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "internal/orlTimecode.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <vector>

namespace {

using namespace ORL_0_81::media;

TEST(TimecodeTest, CountsFramesFromMidnight) {
    struct Row {
        char const* text;
        int count;
        std::int64_t frame;
    };
    for (Row const& row : std::vector<Row>{{"00:00:00:00", 24, 0},
                                           {"00:00:00:23", 24, 23},
                                           {"00:00:01:00", 24, 24},
                                           {"01:00:00:00", 25, 90000},
                                           {"23:59:59:29", 30, 2591999},
                                           {"1:2:3:4", 24, (3600 + 120 + 3) * 24 + 4},
                                           {"00:00:01:100", 120, 220},
                                           {"100:00:00:00", 24, 8640000}}) {
        std::int64_t frame = -1;
        EXPECT_TRUE(frameOfTimecode(row.text, row.count, frame)) << row.text;
        EXPECT_EQ(frame, row.frame) << row.text;
    }
}

// The definition taken at its word: count up, and leave out numbers.
TEST(TimecodeTest, DropFrameLeavesOutNumbersAndNoFrames) {
    for (int const count : {30, 60}) {
        std::int64_t expected = 0;
        for (int minute = 0; minute < 125; ++minute) {
            for (int second = 0; second < 60; ++second) {
                for (int number = 0; number < count; ++number) {
                    if (second == 0 && minute % 10 != 0 && number < count / 15) {
                        continue;
                    }
                    if (second == 0 || second == 59) {
                        for (char const separator : {';', '.'}) {
                            char text[32];
                            std::snprintf(text, sizeof text, "%02d:%02d:%02d%c%02d", minute / 60, minute % 60,
                                          second, separator, number);
                            std::int64_t frame = -1;
                            ASSERT_TRUE(frameOfTimecode(text, count, frame)) << text;
                            ASSERT_EQ(frame, expected) << text;
                        }
                    }
                    ++expected;
                }
            }
        }
    }
}

TEST(TimecodeTest, OtherTextsAreNone) {
    for (char const* const text : {"", "01:00:00", "01:00:00:", "01:00:00:24", "01:60:00:00", "01:00:60:00",
                                   "01:00:00:00 ", " 01:00:00:00", "01;00:00:00", "-1:00:00:00",
                                   "01:00:00:0a", "1000:00:00:00", "01:00:00:00:00", "now", "01:00:00:-1"}) {
        std::int64_t frame = 77;
        EXPECT_FALSE(frameOfTimecode(text, 24, frame)) << text;
        EXPECT_EQ(frame, 77);
    }
}

TEST(TimecodeTest, DropFrameExistsOnlyAtMultiplesOf30) {
    std::int64_t frame = 77;
    EXPECT_FALSE(frameOfTimecode("01:00:00;00", 24, frame));
    EXPECT_FALSE(frameOfTimecode("01:00:00;00", 25, frame));
    EXPECT_TRUE(frameOfTimecode("01:00:00;00", 120, frame));
}

} // namespace
