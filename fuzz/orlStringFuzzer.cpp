// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project

// Each byte decides something that is done with a handful of strings. They must do what the standard string does,
// with the differences that the model of the tests knows.
#include "orlChoices.h"
#include "support/orlStringPlay.h"

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
    orlFuzz::Choices choices(data, size);
    orlTest::StringPlay play([&](std::size_t count) { return choices(count); });
    try {
        while (choices.areLeft()) {
            play.step();
        }
    } catch (orlTest::Disagreement const& disagreement) {
        std::fprintf(stderr, "%s\n", disagreement.what());
        std::abort();
    }
    return 0;
}
