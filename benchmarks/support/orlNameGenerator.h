// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#ifndef ORL_NAME_GENERATOR_H
#define ORL_NAME_GENERATOR_H

#include <cstddef>
#include <string>
#include <vector>

/// Lists of file names in the shapes that directories have.
enum class NameShape {
    kOneFamily,        ///< one sequence, in order
    kShuffledFamilies, ///< sequences of a hundred frames, told apart by words, all in disorder
    kShuffledGrid,     ///< the same, told apart by numbers, so that each frame is a sequence of them, too
    kPartnerless,      ///< four digit fields each, and no two names that differ in one of them only
    kVersionsOfShots,  ///< three versions of each shot, fifty frames each
    kShotsByTens,      ///< two versions of each shot, shots numbered by tens, no frames
    kMixture,          ///< sequences, movies, dated captures and texts, as a project's folders hold them
};

constexpr NameShape NAME_SHAPES[] = {NameShape::kOneFamily,       NameShape::kShuffledFamilies,
                                     NameShape::kShuffledGrid,    NameShape::kPartnerless,
                                     NameShape::kVersionsOfShots, NameShape::kShotsByTens,
                                     NameShape::kMixture};

char const* nameOf(NameShape shape);

/// \returns that many names. The same for the same arguments.
std::vector<std::string> generateNames(NameShape shape, std::size_t count);

#endif // ORL_NAME_GENERATOR_H
