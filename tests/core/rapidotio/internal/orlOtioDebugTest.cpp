// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "rapidotio/internal/orlOtioDebug.h"

#include "support/Diagnostics.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdlib>
#include <string>
#include <thread>
#include <vector>

namespace {

using namespace ORL_0_81;
using namespace orlTest;

TEST(OtioDebug, AnEmptyVariableSwitchesDiagnosticsOn) {
    ASSERT_STREQ(getenv("ZK_DEBUG_OTIO"), "");
    EXPECT_EQ(diagnosticsOf([] { printDebug("text\n"); }), "text\n");
}

TEST(OtioDebug, NothingIsAddedToTheText) {
    EXPECT_EQ(diagnosticsOf([] {
                  printDebug("a");
                  printDebug("%s", "");
                  printDebug("b\n");
              }),
              "ab\n");
}

TEST(OtioDebug, TakesAFormatWithItsArguments) {
    EXPECT_EQ(diagnosticsOf([] { printDebug("'%s' has %d of %5.2f%%\n", "n", -3, 1.5); }),
              "'n' has -3 of  1.50%\n");
}

TEST(OtioDebug, AnArgumentIsNoFormat) {
    EXPECT_EQ(diagnosticsOf([] { printDebug("%s\n", "%s%n%d"); }), "%s%n%d\n");
}

TEST(OtioDebug, TakesLongTexts) {
    std::string const text(100000, 'x');
    EXPECT_EQ(diagnosticsOf([&] { printDebug("%s", text.c_str()); }), text);
}

TEST(OtioDebug, ALaterChangeOfTheEnvironmentHasNoEffect) {
    printDebug("%s", "");
    unsetenv("ZK_DEBUG_OTIO");
    EXPECT_EQ(diagnosticsOf([] { printDebug("still\n"); }), "still\n");
    setenv("ZK_DEBUG_OTIO", "", 1);
}

TEST(OtioDebug, SeveralThreadsMayMakeTheFirstCallAtOnce) {
    std::string const printed = diagnosticsOf([] {
        std::vector<std::thread> threads;
        for (int i = 0; i < 8; ++i) {
            threads.emplace_back([] { printDebug("%s", "x"); });
        }
        for (std::thread& thread : threads) {
            thread.join();
        }
    });
    EXPECT_EQ(printed, "xxxxxxxx");
}

} // namespace
