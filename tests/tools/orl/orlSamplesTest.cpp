// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "tools/orl/orlToolSupport.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>

// Documents of other programs. They hold much that the dialect does not have.

namespace ORL_0_81::tool {

namespace fs = std::filesystem;
using testing::AnyOf;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;

namespace {

std::vector<std::string> samples() {
    std::vector<std::string> files;
    std::error_code error;
    for (auto const& entry : fs::directory_iterator(ORL_TEST_SAMPLES, error)) {
        if (entry.path().extension() == ".otio") {
            files.push_back(entry.path().string());
        }
    }
    std::sort(files.begin(), files.end());
    return files;
}

class Samples : public testing::Test {
protected:
    void SetUp() override {
        if (m_files.empty()) {
            GTEST_SKIP() << "no documents in " << ORL_TEST_SAMPLES;
        }
    }

    std::vector<std::string> const m_files = samples();
};

} // namespace

TEST_F(Samples, NormalizeWithTheirLossesToldOrFailWithAReason) {
    for (std::string const& file : m_files) {
        SCOPED_TRACE(file);
        Outcome const first = orl({"normalize", file});
        if (first.code != 0) {
            EXPECT_EQ(first.code, 1);
            EXPECT_THAT(first.error, StartsWith("orl ERROR: \"" + file + "\" : "));
            continue;
        }
        EXPECT_THAT(first.error,
                    AnyOf(IsEmpty(), StartsWith("orl: \"" + file + "\": not in the normal form:\n  ")));
        Outcome const strict = orl({"normalize", "--quiet", "--strict", file});
        EXPECT_EQ(strict.code, first.error.empty() ? 0 : 1);

        Outcome const second = orl({"normalize", "-"}, first.out);
        EXPECT_EQ(second.code, 0);
        EXPECT_EQ(second.out, first.out);
        EXPECT_EQ(second.error, "");
    }
}

TEST_F(Samples, ConvertToWhatHasNoClipOfAnotherVersion) {
    for (std::string const& file : m_files) {
        SCOPED_TRACE(file);
        Outcome const converted = orl({"convert", "--strict", file});
        EXPECT_EQ(converted.code, 0);
        EXPECT_EQ(converted.error, "") << "none of them has a second reference";
        bool const isNewer = readFile(file).find("\"Clip.2\"") != std::string::npos;
        EXPECT_EQ(converted.out == readFile(file), !isNewer);
        EXPECT_THAT(orl({"normalize", "-"}, converted.out).error, Not(HasSubstr("\"Clip.2\"")));
    }
}

TEST_F(Samples, AreShownOrFailWithAReason) {
    for (std::string const& file : m_files) {
        SCOPED_TRACE(file);
        for (std::vector<std::string> const& arguments :
             {std::vector<std::string>{"info", file}, std::vector<std::string>{"info", "--json", file}}) {
            Outcome const run = orl(arguments);
            if (run.code == 0) {
                EXPECT_EQ(run.error, "");
                EXPECT_FALSE(run.out.empty());
            } else {
                EXPECT_EQ(run.code, 1);
                EXPECT_THAT(run.error, StartsWith("orl ERROR: \"" + file + "\" : "));
            }
        }
    }
}

} // namespace ORL_0_81::tool
