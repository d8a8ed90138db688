// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "rapidotio/internal/orlOtioDebug.h"

#include "support/Diagnostics.h"
#include "support/Tree.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <string>

namespace {

using namespace ORL_0_81;
using namespace orlTest;

TEST(OtioDebugOff, PrintsNothingWithoutTheVariable) {
    EXPECT_EQ(diagnosticsOf([] { printDebug("%s\n", "text"); }), "");
}

TEST(OtioDebugOff, AVariableThatIsSetLaterHasNoEffect) {
    printDebug("%s", "first call");
    setenv("ZK_DEBUG_OTIO", "1", 1);
    EXPECT_EQ(diagnosticsOf([] { printDebug("%s\n", "text"); }), "");
    unsetenv("ZK_DEBUG_OTIO");
}

TEST(OtioDebugOff, AWalkIsSilent) {
    EXPECT_EQ(diagnosticsOf([] {
                  normalized(
                      R"({"OTIO_SCHEMA":"Timeline.1","tracks":{"OTIO_SCHEMA":"Stack.1","children":[1,{},
                      {"OTIO_SCHEMA":"Track.2"},{"OTIO_SCHEMA":"Clip.1","media_reference":{"metadata":{"orl":{
                       "pixel_resolution":[1]}}}}]}})");
                  normalized("{}");
                  accepted("{");
              }),
              "");
}

} // namespace
