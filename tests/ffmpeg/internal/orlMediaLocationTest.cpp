// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "internal/orlMediaLocation.h"

#include <gtest/gtest.h>

namespace {

using namespace ORL_0_81::media;

using Paths = std::vector<std::string>;

TEST(MediaLocationTest, TellsFilesFromUrls) {
    struct Row {
        std::string text;
        Paths paths;
        std::string protocol;
    };
    ProtocolList const allowed("data,http");
    for (Row const& row : std::vector<Row>{
             {"/a/b.mov", {"/a/b.mov"}, ""},
             {"b.mov", {"b.mov"}, ""},
             {"a:b.mov", {"a:b.mov"}, ""},
             {"1http://x", {"1http://x"}, ""},
             {"://x", {"://x"}, ""},
             {"a b://x", {"a b://x"}, ""},
             {"file:a.mov", {"a.mov"}, ""},
             {"file:/a%20b.mov", {"/a%20b.mov", "/a b.mov"}, ""},
             {"file:///a.mov", {"/a.mov"}, ""},
             {"FiLe://localhost/a.mov", {"/a.mov"}, ""},
             {"file://a/b.mov", {"a/b.mov"}, ""},
             {"file:///s.%04d.exr",
              {"/s.%04d.exr", "/s.\x04"
                              "d.exr"},
              ""},
             {"file:///a%00b%4", {"/a%00b%4"}, ""},
             {"http://host/x", {}, "http"},
             {"HTTPS://host/x", {}, "https"},
             {"data:x", {}, "data"},
             {"http:x", {}, "http"},
             {"pipe:0", {"pipe:0"}, ""},
         }) {
        MediaLocation const location = findLocation(row.text, allowed);
        EXPECT_EQ(location.localPaths, row.paths) << row.text;
        EXPECT_EQ(location.protocol, row.protocol) << row.text;
    }
}

TEST(MediaLocationTest, AListHoldsItsNamesAndNoParts) {
    ProtocolList const list("http,tcp");
    EXPECT_TRUE(list.contains("http"));
    EXPECT_TRUE(list.contains("tcp"));
    for (std::string const name : {"", "htt", "https", "http,tcp", "HTTP", ","}) {
        EXPECT_FALSE(list.contains(name)) << name;
    }
    EXPECT_FALSE(ProtocolList().contains(""));
}

} // namespace
