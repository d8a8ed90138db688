// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "rapidotio/orlOtioVisitorHelper.h"

#include "support/Files.h"
#include "support/Json.h"
#include "support/Tree.h"

#include <gtest/gtest.h>

#include <string>

// The documents of tests/data/timeline. Each NAME.otio stands beside NAME.normal.json, its normal form laid
// out in lines. In the folders bad and good the first word of a file's name is the verdict.

namespace {

using namespace orlTest;

std::string const kFolder = "timeline/";

bool startsWith(std::string const& text, std::string const& head) {
    return text.compare(0, head.size(), head) == 0;
}

class OtioDocument : public testing::TestWithParam<std::string> {
public:
    static std::string testName(testing::TestParamInfo<std::string> const& info) {
        return info.param.substr(0, info.param.find('.'));
    }

protected:
    std::string normalForm() const {
        std::string const stem = GetParam().substr(0, GetParam().find('.'));
        return compact(dataFile(kFolder + stem + ".normal.json"));
    }
};

TEST_P(OtioDocument, ComesOutInItsNormalFormByteForByte) {
    EXPECT_EQ(normalized(dataFile(kFolder + GetParam())), normalForm());
}

TEST_P(OtioDocument, ATreeThatIsWalkedAndWrittenByHandHasTheSameText) {
    EXPECT_EQ(Tree(dataFile(kFolder + GetParam())).text(), normalForm());
}

TEST_P(OtioDocument, ItsNormalFormIsItsOwnNormalForm) { EXPECT_EQ(normalized(normalForm()), normalForm()); }

TEST_P(OtioDocument, ReadingWritingReadingAndWritingIsReadingAndWriting) {
    std::string const once = normalized(dataFile(kFolder + GetParam()));
    std::string const twice = normalized(once);
    EXPECT_EQ(twice, once);
    EXPECT_EQ(normalized(R"({"timeline":)" + twice + "}"), once);
}

INSTANTIATE_TEST_SUITE_P(Data, OtioDocument, testing::ValuesIn(dataNames("timeline", ".otio")),
                         OtioDocument::testName);

class OtioBadDocument : public OtioDocument {};

TEST_P(OtioBadDocument, IsRefused) {
    ASSERT_TRUE(startsWith(GetParam(), "refused"));
    EXPECT_FALSE(accepted(dataFile(kFolder + "bad/" + GetParam())));
}

INSTANTIATE_TEST_SUITE_P(Data, OtioBadDocument, testing::ValuesIn(dataNames("timeline/bad", ".json")),
                         OtioDocument::testName);

class OtioGoodDocument : public OtioDocument {};

TEST_P(OtioGoodDocument, IsATimelineOrEmptyAsItsNameSays) {
    std::string const once = normalized(dataFile(kFolder + "good/" + GetParam()));
    if (startsWith(GetParam(), "empty")) {
        EXPECT_EQ(once, "{}");
    } else {
        ASSERT_TRUE(startsWith(GetParam(), "timeline"));
        EXPECT_TRUE(startsWith(once, R"({"name":")")) << once;
        EXPECT_NE(once.find(R"(,"OTIO_SCHEMA":"Timeline.1","metadata":{"orl":{)"), std::string::npos) << once;
    }
    EXPECT_EQ(normalized(once), once);
}

INSTANTIATE_TEST_SUITE_P(Data, OtioGoodDocument, testing::ValuesIn(dataNames("timeline/good", ".json")),
                         OtioDocument::testName);

} // namespace
