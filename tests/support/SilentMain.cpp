// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include <gtest/gtest.h>

#include <cstdlib>

// A program without diagnostics, whatever the environment that it is started in.
int main(int argc, char** argv) {
    unsetenv("ZK_DEBUG_OTIO");
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
