// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "internal/orlCandidateIndex.h"

#include <algorithm>
#include <cstring>
#include <stdexcept>
#include <utility>

namespace ORL_0_81 {

namespace {

using Key = FrameScanner::Key;

// About as many entries as a core's own cache holds while they are grouped.
constexpr std::size_t BUCKET_SIZE = 4096;
constexpr unsigned int MAX_BUCKET_BITS = 11; // more, and the writing of the buckets suffers

// Up to this many frames are sorted each time they are asked for.
constexpr std::size_t FEW_FRAMES = 32;

// From this length on names are compared once, not once for each field.
constexpr std::size_t LONG_NAME = 512;

// Spreads keys of which only some bits are looked at, too.
std::size_t slotOf(Key key) { return static_cast<std::size_t>((key * 0x9E3779B97F4A7C15U) >> 32); }

std::size_t commonPrefix(std::string_view left, std::string_view right) {
    std::size_t const length = std::min(left.size(), right.size());
    return static_cast<std::size_t>(
        std::mismatch(left.begin(), left.begin() + static_cast<std::ptrdiff_t>(length), right.begin()).first -
        left.begin());
}

std::size_t commonSuffix(std::string_view left, std::string_view right) {
    std::size_t const length = std::min(left.size(), right.size());
    return static_cast<std::size_t>(
        std::mismatch(left.rbegin(), left.rbegin() + static_cast<std::ptrdiff_t>(length), right.rbegin())
            .first -
        left.rbegin());
}

std::size_t sizeOfTable(std::size_t count) {
    std::size_t size = 16;
    while (size < count * 2) {
        size *= 2;
    }
    return size;
}

// Keys, for asking whether one is among them.
class KeySet {
public:
    explicit KeySet(std::vector<Key> const& keys) : m_slots(sizeOfTable(keys.size())) {
        for (Key const key : keys) {
            if (key == 0) {
                m_hasZero = true;
                continue;
            }
            std::size_t slot = find(key);
            m_slots[slot] = key;
        }
    }

    bool contains(Key key) const { return key == 0 ? m_hasZero : m_slots[find(key)] == key; }

private:
    std::size_t find(Key key) const {
        std::size_t slot = slotOf(key) & (m_slots.size() - 1);
        while (m_slots[slot] != 0 && m_slots[slot] != key) {
            slot = (slot + 1) & (m_slots.size() - 1);
        }
        return slot;
    }

    std::vector<Key> m_slots; // 0 where there is none
    bool m_hasZero = false;
};

} // namespace

CandidateIndex::CandidateIndex(std::vector<std::string_view> const& names, Key keyMask)
    : m_names(names), m_claimed(names.size(), 0) {
    findPlaces(keyMask);
    groupEntries();
}

void CandidateIndex::addPlace(Index name, FrameScanner::Place const& place, Key key) {
    if (m_entries.size() >= NONE || place.span.position > NONE) {
        throw std::length_error("FileSequenceUtils: too many or too long names");
    }
    m_entries.push_back({key, static_cast<Index>(m_entries.size())});
    m_nameOf.push_back(name);
    m_position.push_back(static_cast<Index>(place.span.position));
}

void CandidateIndex::findPlaces(Key mask) {
    if (m_names.size() >= NONE) {
        throw std::length_error("FileSequenceUtils: too many or too long names");
    }
    FrameScanner scanner;
    std::vector<FrameScanner::Place> places;
    std::vector<Key> peculiar;
    m_firstPlain.reserve(m_names.size() + 1);
    for (Index name = 0; name < size(); ++name) {
        m_firstPlain.push_back(static_cast<Index>(m_entries.size()));
        if (!scanner.findPlainPlaces(m_names[name], places)) {
            continue;
        }
        for (FrameScanner::Place const& place : places) {
            Key const key = place.key & mask;
            addPlace(name, place, key);
            if (place.isPeculiar) {
                peculiar.push_back(key);
            }
        }
    }
    m_firstPlain.push_back(static_cast<Index>(m_entries.size()));
    if (!peculiar.empty()) {
        findHiddenPlaces(std::move(peculiar), mask);
    }
}

void CandidateIndex::findHiddenPlaces(std::vector<Key> peculiar, Key mask) {
    KeySet const wanted(peculiar);
    FrameScanner scanner;
    std::vector<FrameScanner::Place> places;
    m_firstHidden.reserve(m_names.size() + 1);
    for (Index name = 0; name < size(); ++name) {
        m_firstHidden.push_back(static_cast<Index>(m_entries.size()));
        if (m_firstPlain[name] == m_firstPlain[name + 1]) {
            continue;
        }
        scanner.findHiddenPlaces(m_names[name], places);
        for (FrameScanner::Place const& place : places) {
            if (Key const key = place.key & mask; wanted.contains(key)) {
                addPlace(name, place, key);
            }
        }
    }
    m_firstHidden.push_back(static_cast<Index>(m_entries.size()));
}

// Entries are first dealt out to buckets by their keys, so that each bucket can be grouped within the cache
// however many names there are. Within a bucket, and so within a group, they stay in their order.
void CandidateIndex::groupEntries() {
    m_group.assign(m_entries.size(), NONE);
    unsigned int bits = 0;
    while (bits < MAX_BUCKET_BITS && m_entries.size() >> bits > BUCKET_SIZE) {
        ++bits;
    }
    std::vector<Index> table;
    std::vector<Index> leaders;
    std::vector<Index> sizes;
    if (bits == 0) {
        groupBucket(m_entries.data(), m_entries.size(), table, leaders, sizes);
    } else {
        std::size_t const bucketCount = std::size_t{1} << bits;
        auto const bucketOf = [bits](Key key) { return (key * 0xD6E8FEB86659FD93U) >> (64 - bits); };
        std::vector<std::size_t> ends(bucketCount + 1);
        for (Entry const& entry : m_entries) {
            ++ends[bucketOf(entry.key) + 1];
        }
        for (std::size_t bucket = 1; bucket <= bucketCount; ++bucket) {
            ends[bucket] += ends[bucket - 1];
        }
        std::vector<Entry> dealt(m_entries.size());
        for (Entry const& entry : m_entries) {
            dealt[ends[bucketOf(entry.key)]++] = entry;
        }
        std::vector<Entry>().swap(m_entries);
        std::size_t begin = 0;
        for (std::size_t bucket = 0; bucket < bucketCount; ++bucket) {
            groupBucket(dealt.data() + begin, ends[bucket] - begin, table, leaders, sizes);
            begin = ends[bucket];
        }
    }
    std::vector<Entry>().swap(m_entries);
}

void CandidateIndex::groupBucket(Entry const* entries, std::size_t count, std::vector<Index>& table,
                                 std::vector<Index>& leaders, std::vector<Index>& sizes) {
    // Each entry's leader is the first with the same key; the table holds the leaders.
    std::size_t const mask = sizeOfTable(count) - 1;
    table.assign(mask + 1, NONE);
    leaders.resize(count);
    sizes.assign(count, 0);
    for (std::size_t i = 0; i < count; ++i) {
        std::size_t slot = slotOf(entries[i].key) & mask;
        while (table[slot] != NONE && entries[table[slot]].key != entries[i].key) {
            slot = (slot + 1) & mask;
        }
        if (table[slot] == NONE) {
            table[slot] = static_cast<Index>(i);
        }
        leaders[i] = table[slot];
        ++sizes[table[slot]];
    }
    for (std::size_t i = 0; i < count; ++i) {
        Index const leader = leaders[i];
        if (leader == i && sizes[i] > 1) {
            auto const first = static_cast<Index>(m_members.size());
            m_members.resize(m_members.size() + sizes[i]);
            m_group[entries[i].place] = static_cast<Index>(m_groups.size());
            m_groups.push_back({first, 0, sizes[i], NONE, false});
        }
        Index const group = m_group[entries[leader].place];
        if (group != NONE) {
            m_group[entries[i].place] = group;
            m_members[m_groups[group].first + m_groups[group].size++] = entries[i].place;
        }
    }
}

void CandidateIndex::claim(Index index) {
    if (m_claimed[index]) {
        return;
    }
    m_claimed[index] = 1;
    for (Index place = m_firstPlain[index]; place < m_firstPlain[index + 1]; ++place) {
        leaveGroup(index, place);
    }
    if (!m_firstHidden.empty()) {
        for (Index place = m_firstHidden[index]; place < m_firstHidden[index + 1]; ++place) {
            leaveGroup(index, place);
        }
    }
}

void CandidateIndex::leaveGroup(Index index, Index place) {
    if (m_group[place] == NONE) {
        return;
    }
    Group& group = m_groups[m_group[place]];
    --group.unclaimed;
    if (group.runs != NONE) {
        Frames& frames = *m_frames[group.runs];
        frames.runs.remove({FrameNotation::frameOf(frameIn(index, frames.before, frames.after)), index});
    }
}

std::string_view CandidateIndex::frameIn(Index index, std::size_t before, std::size_t after) const {
    return m_names[index].substr(before, m_names[index].size() - before - after);
}

bool CandidateIndex::mayHavePartners(Index index) const {
    for (Index place = m_firstPlain[index]; place < m_firstPlain[index + 1]; ++place) {
        if (m_group[place] != NONE && m_groups[m_group[place]].unclaimed > 1) {
            return true;
        }
    }
    return false;
}

CandidateIndex::Group* CandidateIndex::groupOf(Index index, std::size_t field) {
    Index const group = m_group[m_firstPlain[index] + field];
    return group == NONE ? nullptr : &m_groups[group];
}

CandidateIndex::Index CandidateIndex::count(Index index, std::size_t field, Span const& span) {
    Group* group = groupOf(index, field);
    if (!group || group->unclaimed == 1) {
        return 1;
    }
    if (!group->isChecked || group->unclaimed < group->size / 2) {
        check(m_group[m_firstPlain[index] + field], index, span);
        group = groupOf(index, field);
    }
    return group->unclaimed;
}

// Drops the places of claimed names from a group, and those that only look like the name's.
void CandidateIndex::check(Index group, Index index, Span const& span) {
    Group& checked = m_groups[group];
    std::vector<Index> strangers;
    Index kept = 0;
    for (Index i = 0; i < checked.size; ++i) {
        Index const place = m_members[checked.first + i];
        if (isClaimed(m_nameOf[place])) {
            continue;
        }
        if (checked.isChecked || fits(place, index, span)) {
            m_members[checked.first + kept++] = place;
        } else {
            strangers.push_back(place);
        }
    }
    checked.size = checked.unclaimed = kept;
    checked.isChecked = true;
    if (!strangers.empty()) {
        splitOff(strangers);
    }
}

bool CandidateIndex::fits(Index place, Index index, Span const& span) {
    Index const otherIndex = m_nameOf[place];
    if (otherIndex == index) {
        return m_position[place] == span.position;
    }
    std::string_view const name = m_names[index];
    std::string_view const other = m_names[otherIndex];
    std::size_t const after = name.size() - span.end();
    if (m_position[place] != span.position || other.size() <= span.position + after) {
        return false;
    }
    if (name.size() < LONG_NAME) {
        if (std::memcmp(name.data(), other.data(), span.position) != 0 ||
            std::memcmp(name.data() + span.end(), other.data() + other.size() - after, after) != 0) {
            return false;
        }
    } else {
        if (m_commonWith != index) {
            m_commonWith = index;
            m_common.clear();
        }
        auto [found, isNew] = m_common.try_emplace(otherIndex);
        if (isNew) {
            found->second = {commonPrefix(name, other), commonSuffix(name, other)};
        }
        if (found->second.prefix < span.position || found->second.suffix < after) {
            return false;
        }
    }
    return FrameNotation::isFrame(frameIn(otherIndex, span.position, after));
}

void CandidateIndex::splitOff(std::vector<Index> const& places) {
    auto const group = static_cast<Index>(m_groups.size());
    auto const count = static_cast<Index>(places.size());
    m_groups.push_back({static_cast<Index>(m_members.size()), count, count, NONE, false});
    for (Index const place : places) {
        m_group[place] = group;
        m_members.push_back(place);
    }
}

int CandidateIndex::run(Index index, std::size_t field, Span const& span) {
    Group* const group = groupOf(index, field);
    if (!group || group->unclaimed == 1) {
        return 0;
    }
    if (group->runs != NONE) {
        return m_frames[group->runs]->runs.longest();
    }
    std::size_t const after = m_names[index].size() - span.end();
    bool const isSmall = group->unclaimed <= FEW_FRAMES;
    m_fewFrames.clear();
    std::vector<FrameRuns::Member> members;
    members.reserve(isSmall ? 0 : group->unclaimed);
    for (Index i = 0; i < group->size; ++i) {
        Index const other = m_nameOf[m_members[group->first + i]];
        if (isClaimed(other)) {
            continue;
        }
        int const frame = FrameNotation::frameOf(frameIn(other, span.position, after));
        if (isSmall) {
            m_fewFrames.push_back(frame);
        } else {
            members.push_back({frame, other});
        }
    }
    if (isSmall) {
        return FrameRuns::longest(m_fewFrames);
    }
    m_frames.push_back(std::make_unique<Frames>(Frames{span.position, after, FrameRuns(std::move(members))}));
    group->runs = static_cast<Index>(m_frames.size() - 1);
    return m_frames.back()->runs.longest();
}

std::size_t CandidateIndex::claimAll(Index index, std::size_t field, Span const& span) {
    Group* const group = groupOf(index, field);
    if (!group) {
        claim(index);
        return span.length;
    }
    if (group->runs != NONE) {
        // Nobody asks for it any more.
        m_frames[group->runs].reset();
        group->runs = NONE;
    }
    std::size_t const around = m_names[index].size() - span.length;
    std::size_t narrowest = span.length;
    for (Index i = 0; i < group->size; ++i) {
        Index const other = m_nameOf[m_members[group->first + i]];
        if (!isClaimed(other)) {
            narrowest = std::min(narrowest, m_names[other].size() - around);
            claim(other);
        }
    }
    return narrowest;
}

} // namespace ORL_0_81
