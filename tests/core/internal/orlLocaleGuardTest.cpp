// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project

// The program's own setlocale stands in for the system's.
#include "internal/orlLocaleGuard.h"
#include "support/SystemCalls.h"

#include <gtest/gtest.h>

#include <clocale>
#include <string>
#include <vector>

namespace {

std::vector<std::string>* calls = nullptr; // where they are noted, if they are
bool isRefused = false;

} // namespace

// NOLINTNEXTLINE(readability-identifier-naming)
extern "C" ORL_STANDS_IN char* setlocale(int category, char const* name) noexcept {
    static auto const system = orlTest::nextOf(&setlocale, "setlocale");
    if (calls) {
        calls->push_back(std::to_string(category) + " " + (name ? name : "asked"));
    }
    return isRefused ? nullptr : system(category, name);
}

namespace {

using namespace ORL_0_81;

using Calls = std::vector<std::string>;

class LocaleGuardTest : public testing::Test {
protected:
    void SetUp() override { calls = &m_calls; }
    void TearDown() override {
        calls = nullptr;
        isRefused = false;
    }

    Calls m_calls;
    std::string const m_c = std::to_string(LC_ALL) + " C";
};

TEST_F(LocaleGuardTest, SetsTheLocaleAtBothEndsAndNeverAsksForTheOneBefore) {
    {
        LocaleGuard const guard;
        EXPECT_EQ(m_calls, Calls{m_c});
    }
    EXPECT_EQ(m_calls, (Calls{m_c, m_c}));
}

TEST_F(LocaleGuardTest, PutsNothingBackIfNothingWasSet) {
    isRefused = true;
    { LocaleGuard const guard; }
    EXPECT_EQ(m_calls, Calls{m_c});
}

} // namespace
