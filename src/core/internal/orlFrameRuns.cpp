// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "internal/orlFrameRuns.h"

#include <algorithm>
#include <utility>

namespace ORL_0_81 {

namespace {

// Fewer are sorted as fast as anything else is done with them.
constexpr std::size_t FEW = 16;

// Frames lie close together if their range has at most so many places for each.
constexpr std::size_t DENSE = 12;

struct IsBefore {
    bool operator()(FrameRuns::Member const& left, FrameRuns::Member const& right) const {
        return left.frame != right.frame ? left.frame < right.frame : left.id < right.id;
    }
};

} // namespace

void FrameRuns::Summary::append(Summary const& next) {
    if (next.count == 0) {
        return;
    }
    if (count == 0) {
        *this = next;
        return;
    }
    // Frames have nine digits at most, so the successor is no overflow.
    bool const joins = next.first == last + 1;
    best = std::max({best, next.best, joins ? suffix + next.prefix : 0});
    if (joins && prefix == count) {
        prefix += next.prefix;
    }
    suffix = joins && next.suffix == next.count ? suffix + next.suffix : next.suffix;
    count += next.count;
    last = next.last;
}

FrameRuns::FrameRuns(std::vector<Member> members) : m_members(std::move(members)) {
    if (!std::is_sorted(m_members.begin(), m_members.end(), IsBefore())) {
        std::sort(m_members.begin(), m_members.end(), IsBefore());
    }
    std::size_t const blockCount = (m_members.size() + BLOCK - 1) / BLOCK;
    m_present.assign(blockCount, 0xFFFF);
    std::vector<Summary> level(blockCount);
    for (std::size_t block = 0; block < blockCount; ++block) {
        level[block] = summarizeBlock(block);
    }
    m_summaries.push_back(std::move(level));
    while (m_summaries.back().size() > 1) {
        std::vector<Summary> above((m_summaries.back().size() + FAN_OUT - 1) / FAN_OUT);
        for (std::size_t index = 0; index < above.size(); ++index) {
            above[index] = summarize(m_summaries.back(), index);
        }
        m_summaries.push_back(std::move(above));
    }
}

void FrameRuns::remove(Member const& member) {
    std::size_t const position = find(member);
    m_next = position + 1;
    std::size_t index = position / BLOCK;
    m_present[index] = static_cast<std::uint16_t>(m_present[index] & ~(1U << position % BLOCK));
    m_summaries[0][index] = summarizeBlock(index);
    for (std::size_t level = 1; level < m_summaries.size(); ++level) {
        index /= FAN_OUT;
        m_summaries[level][index] = summarize(m_summaries[level - 1], index);
    }
}

std::size_t FrameRuns::find(Member const& member) const {
    if (m_next < m_members.size() && m_members[m_next].frame == member.frame &&
        m_members[m_next].id == member.id) {
        return m_next;
    }
    auto const found = std::lower_bound(m_members.begin(), m_members.end(), member, IsBefore());
    return static_cast<std::size_t>(found - m_members.begin());
}

int FrameRuns::longest() const {
    bool const isEmpty = m_members.empty() || m_summaries.back().front().count == 0;
    return isEmpty ? 0 : static_cast<int>(m_summaries.back().front().best - 1);
}

int FrameRuns::longest(std::vector<std::int32_t>& frames, bool& areDistinct) {
    areDistinct = true;
    if (frames.size() > FEW) {
        auto const [smallest, largest] = std::minmax_element(frames.begin(), frames.end());
        auto const range = static_cast<std::size_t>(*largest - *smallest) + 1; // at most 19 hundred millions
        if (range <= frames.size() * DENSE) {
            int const result = longestOfDense(frames, *smallest, range, areDistinct);
            if (areDistinct) {
                return result;
            }
        }
    }
    areDistinct = true;
    std::sort(frames.begin(), frames.end());
    int run = 0;
    int result = 0;
    for (std::size_t i = 1; i < frames.size(); ++i) {
        areDistinct = areDistinct && frames[i] != frames[i - 1];
        run = frames[i] == frames[i - 1] + 1 ? run + 1 : 0;
        result = std::max(result, run);
    }
    return result;
}

// With a bit for each frame of the range. Gives up at two equal ones.
int FrameRuns::longestOfDense(std::vector<std::int32_t> const& frames, std::int32_t smallest,
                              std::size_t range, bool& areDistinct) {
    std::vector<bool> present(range);
    for (std::int32_t const frame : frames) {
        auto const place = static_cast<std::size_t>(frame - smallest);
        if (present[place]) {
            areDistinct = false;
            return 0;
        }
        present[place] = true;
    }
    int run = -1;
    int result = 0;
    for (bool const isPresent : present) {
        run = isPresent ? run + 1 : -1;
        result = std::max(result, run);
    }
    return result;
}

FrameRuns::Summary FrameRuns::summarizeBlock(std::size_t block) const {
    Summary result;
    std::size_t const begin = block * BLOCK;
    std::size_t const end = std::min(begin + BLOCK, m_members.size());
    unsigned int present = m_present[block];
    for (std::size_t i = begin; i < end; ++i, present >>= 1U) {
        if ((present & 1U) != 0) {
            std::int32_t const frame = m_members[i].frame;
            result.append({1, 1, 1, 1, frame, frame});
        }
    }
    return result;
}

FrameRuns::Summary FrameRuns::summarize(std::vector<Summary> const& parts, std::size_t index) {
    Summary result = parts[index * FAN_OUT];
    std::size_t const end = std::min((index + 1) * FAN_OUT, parts.size());
    for (std::size_t i = index * FAN_OUT + 1; i < end; ++i) {
        result.append(parts[i]);
    }
    return result;
}

} // namespace ORL_0_81
