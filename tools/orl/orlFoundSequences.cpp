// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "orlFoundSequences.h"

#include "internal/orlDirectoryListing.h"
#include "internal/orlFrameNotation.h"
#include "internal/orlNameFilter.h"
#include "internal/orlRoomyStack.h"
#include "internal/orlSequenceDetector.h"
#include "internal/orlUtf8.h"

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

class DirectoryNames : public NameReceiver {
public:
    void addName(char const* name) override { names.push_back(normalizeToNfd(name)); }

    std::vector<std::string> names;
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
    NameFilter nameFilter(filter);
    Collector collector(names);
    auto const work = [&] { SequenceDetector(names, nameFilter, collector).run(); };
    if (!nameFilter.needsRoom() || !RoomyStack::run(work)) {
        work();
    }
    return std::move(collector.found);
}

std::vector<std::string> namesInDirectory(std::string const& path) {
    DirectoryNames receiver;
    listRegularFiles(path, receiver);
    return std::move(receiver.names);
}

} // namespace ORL_0_81::tool
