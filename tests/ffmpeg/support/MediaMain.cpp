// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project

// The media are made before the first test; a run by ctest has done so already.
#include <gtest/gtest.h>

#include <cstdlib>

int main(int argc, char** argv) {
    ::testing::InitGoogleTest(&argc, argv);
    if (!GTEST_FLAG_GET(list_tests) && std::system(ORL_TEST_MAKE_MEDIA " " ORL_TEST_MEDIA) != 0) {
        return 1;
    }
    return RUN_ALL_TESTS();
}
