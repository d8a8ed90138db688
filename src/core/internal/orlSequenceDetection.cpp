// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "internal/orlSequenceDetection.h"

#include "internal/orlNameFilter.h"
#include "internal/orlRoomyStack.h"
#include "internal/orlUtf8.h"

#include <utility>

namespace ORL_0_81 {

void detectSequences(CandidateIndex::Names names, std::string_view filter,
                     SequenceDetector::Results& results) {
    NameFilter nameFilter(filter);
    SequenceDetector detector(std::move(names), nameFilter, results);
    auto const work = [&detector] { detector.run(); };
    if (!nameFilter.needsRoom() || !RoomyStack::run(work)) {
        work();
    }
}

void DirectoryNames::addName(char const* name) {
    if (std::string_view const text = name; isAscii(text)) {
        m_text += text;
    } else {
        m_text += normalizeToNfd(name);
    }
    m_ends.push_back(m_text.size());
}

template <class Add>
void DirectoryNames::forEach(Add const& add) const {
    std::size_t begin = 0;
    for (std::size_t const end : m_ends) {
        add(std::string_view(m_text).substr(begin, end - begin));
        begin = end;
    }
}

std::vector<std::string_view> DirectoryNames::views() const {
    std::vector<std::string_view> result;
    result.reserve(m_ends.size());
    forEach([&result](std::string_view name) { result.push_back(name); });
    return result;
}

CandidateIndex::Names DirectoryNames::names() const {
    CandidateIndex::Names result;
    result.reserve(m_ends.size());
    forEach([&result](std::string_view name) { result.append(name); });
    return result;
}

} // namespace ORL_0_81
