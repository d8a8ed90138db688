// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#ifndef ORL_FRAME_RUNS_H
#define ORL_FRAME_RUNS_H

#include <cstddef>
#include <cstdint>
#include <vector>

namespace ORL_0_81 {

/// The longest run of consecutive frames in a set from which frames are only taken away.
///
/// A run is counted in steps: 1, 2, 3 is a run of 2, a single frame one of 0. Frames are looked at in
/// ascending order and equal ones break a run: 1, 1, 2 is a run of 1, and so is 1, 2, 2, 3, so that taking a
/// frame away can also make the run longer.
///
/// The frames stand sorted in blocks; a block's summary tells how it can join its neighbours, and summaries
/// are summed up in turn. Construction sorts; remove() takes logarithmic, longest() constant time.
class FrameRuns {
public:
    /// A frame of the set. The id tells equal frames apart; no two members have the same frame and id.
    struct Member {
        std::int32_t frame;
        std::uint32_t id;
    };

    explicit FrameRuns(std::vector<Member> members);

    /// Takes away a member that is in the set.
    void remove(Member const& member);

    /// The longest run; 0 for an empty set.
    int longest() const;

    /// The longest run of some frames, which are left in an arbitrary order, and whether no two of them are equal.
    /// Linear time where they are distinct and lie close together; else sorts them.
    static int longest(std::vector<std::int32_t>& frames, bool& areDistinct);

private:
    // What a stretch of the sorted frames, without those taken away, has to tell. Lengths count frames.
    struct Summary {
        std::uint32_t count = 0;
        std::uint32_t prefix = 0; // of the run that it begins with
        std::uint32_t suffix = 0; // of the run that it ends with
        std::uint32_t best = 0;
        std::int32_t first = 0;
        std::int32_t last = 0;

        void append(Summary const& next);
    };

    static constexpr std::size_t BLOCK = 16;
    static constexpr std::size_t FAN_OUT = 4;

    std::size_t find(Member const& member) const;
    Summary summarizeBlock(std::size_t block) const;
    static Summary summarize(std::vector<Summary> const& parts, std::size_t index);
    static int longestOfDense(std::vector<std::int32_t> const& frames, std::int32_t smallest,
                              std::size_t range, bool& areDistinct);

    std::vector<Member> m_members; // by frame and id
    std::size_t m_next = 0; // behind the member that was taken away last: mostly they go one after the other
    std::vector<std::uint16_t> m_present; // a bit for each member, a block in each element
    std::vector<std::vector<Summary>>
        m_summaries; // of the blocks, then of each level above; the last has one
};

} // namespace ORL_0_81

#endif // ORL_FRAME_RUNS_H
