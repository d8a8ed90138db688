// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include <gtest/gtest.h>

#include <cstdlib>

// The variable is read once in a process, so a program of its own tests what is printed. An empty value is
// enough to switch the diagnostics on.
int main(int argc, char** argv) {
    setenv("ZK_DEBUG_OTIO", "", 1);
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
