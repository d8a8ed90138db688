// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "internal/orlValidUtf8.h"

#include <gtest/gtest.h>

namespace {

using namespace ORL_0_81::media;

TEST(ValidUtf8Test, KeepsWhatIsValid) {
    for (std::string const& text :
         {std::string(), std::string("plain"), std::string("\xc3\x9c \xe2\x82\xac \xf0\x9f\x8e\xac"),
          std::string("a\0b", 3), std::string("\xed\x9f\xbf\xee\x80\x80\xf4\x8f\xbf\xbf")}) {
        EXPECT_EQ(toValidUtf8(text), text);
    }
}

TEST(ValidUtf8Test, ReplacesEachByteThatIsNot) {
    std::string const mark = "\xef\xbf\xbd";
    EXPECT_EQ(toValidUtf8("\xff"), mark);
    EXPECT_EQ(toValidUtf8("caf\xe9!"), "caf" + mark + "!");
    EXPECT_EQ(toValidUtf8("\xc0\xaf"), mark + mark);
    EXPECT_EQ(toValidUtf8("\xed\xa0\x80"), mark + mark + mark);
    EXPECT_EQ(toValidUtf8("\xf4\x90\x80\x80"), mark + mark + mark + mark);
    EXPECT_EQ(toValidUtf8("\xe2\x82"), mark + mark);
    EXPECT_EQ(toValidUtf8("\xe0\x80\x80"), mark + mark + mark);
}

} // namespace
