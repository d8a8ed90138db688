// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#ifndef ORL_TEST_SUPPORT_LONGEST_RUN_H
#define ORL_TEST_SUPPORT_LONGEST_RUN_H

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace orlTest {

/// The longest run of frames, each the successor of the one before, in steps. Equal frames break it.
inline std::int32_t longestRun(std::vector<std::int32_t> frames) {
    std::sort(frames.begin(), frames.end());
    std::int32_t run = 0;
    std::int32_t counter = 0;
    for (std::size_t i = 1; i < frames.size(); ++i) {
        counter = frames[i] == frames[i - 1] + 1 ? counter + 1 : 0;
        run = std::max(run, counter);
    }
    return run;
}

} // namespace orlTest

#endif // ORL_TEST_SUPPORT_LONGEST_RUN_H
