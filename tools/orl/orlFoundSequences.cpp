// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "orlFoundSequences.h"

#include "internal/orlFrameNotation.h"
#include "internal/orlSequenceDetection.h"

#include <algorithm>

namespace ORL_0_81::tool {

namespace {

class Collector : public SequenceDetector::Results {
public:
    explicit Collector(std::vector<std::string_view> const& names) : m_names(names) {}

    bool wantsMembers() const override { return true; }

    void addMember(std::size_t index, FrameNotation::Span const& frame) override {
        m_frames.push_back(FrameNotation::frameOf(m_names[index].substr(frame.position, frame.length)));
    }

    void addName(std::size_t /*index*/, std::string_view name) override { add(std::string(name)); }
    void addText(std::string const& text) override { add(text); }

    std::vector<FoundSequence> found;

private:
    void add(std::string name) {
        // A family of one is a single name.
        if (m_frames.size() < 2) {
            m_frames.clear();
        }
        std::sort(m_frames.begin(), m_frames.end());
        found.push_back({std::move(name), std::move(m_frames)});
        m_frames.clear();
    }

    std::vector<std::string_view> const& m_names;
    std::vector<std::int32_t> m_frames; // of what is added next
};

} // namespace

std::vector<std::pair<std::int32_t, std::int32_t>> FoundSequence::missing() const {
    std::vector<std::pair<std::int32_t, std::int32_t>> ranges;
    for (std::size_t i = 1; i < frames.size(); ++i) {
        if (frames[i] - frames[i - 1] > 1) {
            ranges.emplace_back(frames[i - 1] + 1, frames[i] - 1);
        }
    }
    return ranges;
}

std::vector<FoundSequence> findSequences(std::vector<std::string_view> const& names,
                                         std::string const& filter) {
    Collector collector(names);
    detectSequences(names, filter, collector);
    return std::move(collector.found);
}

} // namespace ORL_0_81::tool
