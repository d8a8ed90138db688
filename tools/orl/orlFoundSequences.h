// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#ifndef ORL_FOUND_SEQUENCES_H
#define ORL_FOUND_SEQUENCES_H

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace ORL_0_81::tool {

/// A sequence with the numbers of its frames, or a single name.
struct FoundSequence {
    std::string name;
    std::vector<std::int32_t> frames; ///< ascending, one for each of its names; none for a single name

    bool isSequence() const { return !frames.empty(); }

    /// The numbers that are absent between the first frame and the last, as ranges.
    std::vector<std::pair<std::int32_t, std::int32_t>> missing() const;
};

/// What FileSequenceUtils::getSequencesInFileList finds, with the frames.
///
/// Throws `std::regex_error` for a filter that is no regular expression.
std::vector<FoundSequence> findSequences(std::vector<std::string_view> const& names,
                                         std::string const& filter);

} // namespace ORL_0_81::tool

#endif // ORL_FOUND_SEQUENCES_H
