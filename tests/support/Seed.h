// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#ifndef SEED_H
#define SEED_H

#include <cstdlib>
#include <iostream>
#include <random>

/// A fresh seed for a test with random values, printed; that of ORL_TEST_SEED if it is set, to repeat a run.
inline unsigned int printedSeed() {
    char const* const given = std::getenv("ORL_TEST_SEED");
    unsigned int const seed =
        given ? static_cast<unsigned int>(std::strtoul(given, nullptr, 10)) : std::random_device()();
    std::cout << "seed " << seed << "; ORL_TEST_SEED repeats it\n";
    return seed;
}

#endif // SEED_H
