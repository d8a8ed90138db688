// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "internal/orlCandidateIndex.h"

#include <algorithm>
#include <cstring>
#include <limits>
#include <stdexcept>
#include <utility>

namespace ORL_0_81 {

namespace {

using Key = FrameScanner::Key;

// Places are dealt out to buckets by their keys while they are found, so that each bucket can be grouped
// within a core's own cache however many names there are. About this many are to be in one.
constexpr std::size_t BUCKET_SIZE = 2048;
constexpr unsigned int MAX_BUCKET_BITS = 12; // more, and the dealing out suffers

// How far ahead of its use memory is asked for, step by step.
constexpr CandidateIndex::Index AHEAD = 8;

void prefetch(void const* address) { __builtin_prefetch(address); }

// Up to this many frames are sorted each time they are asked for.
constexpr std::size_t FEW_FRAMES = 32;

constexpr char const* TOO_MUCH = "FileSequenceUtils: too many or too long names";

// From this length on names are compared once, not once for each field.
constexpr std::size_t LONG_NAME = 512;

// Spreads keys of which only some bits are looked at, too.
Key spread(Key key) { return key * 0x9E3779B97F4A7C15U; }
std::size_t slotOf(Key key) { return static_cast<std::size_t>(spread(key) >> 32); }

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

CandidateIndex::CandidateIndex(std::vector<std::string_view> names, Key keyMask)
    : m_names(std::move(names)), m_claimed(m_names.size(), 0) {
    if (m_names.size() >= NONE) {
        throw std::length_error(TOO_MUCH);
    }
    findPlaces(keyMask);
    groupPlaces();
}

void CandidateIndex::findPlaces(Key mask) {
    // Most names have one field or two.
    while (m_bucketBits < MAX_BUCKET_BITS && m_names.size() * 2 >> m_bucketBits > BUCKET_SIZE) {
        ++m_bucketBits;
    }
    m_buckets.resize(std::size_t{1} << m_bucketBits, {NONE, NONE, 0});
    FrameScanner scanner;
    std::vector<FrameScanner::Place> places;
    std::vector<Skeleton> skeletons;
    Peculiar peculiar;
    m_firstPlain.reserve(m_names.size() + 1);
    skeletons.reserve(m_names.size());
    for (Index name = 0; name < size(); ++name) {
        std::string_view const text = m_names[name];
        if (text.size() >= NONE) {
            throw std::length_error(TOO_MUCH);
        }
        m_firstPlain.push_back(placeCount());
        skeletons.push_back(0);
        if (!scanner.findPlainPlaces(text, places)) {
            continue;
        }
        auto const skeleton = static_cast<Skeleton>(scanner.skeleton());
        skeletons.back() = skeleton;
        for (FrameScanner::Place const& place : places) {
            Key const key = place.key & mask;
            addPlace(name, place, key);
            if (place.isPeculiar) {
                peculiar.keys.push_back(key);
                peculiar.skeletons.push_back(skeleton);
            }
        }
    }
    m_firstPlain.push_back(placeCount());
    if (!peculiar.keys.empty()) {
        findHiddenPlaces(peculiar, skeletons, mask);
    }
}

void CandidateIndex::findHiddenPlaces(Peculiar const& peculiar, std::vector<Skeleton> const& skeletons,
                                      Key mask) {
    KeySet const wantedKeys(peculiar.keys);
    KeySet const wantedSkeletons(peculiar.skeletons);
    FrameScanner scanner;
    std::vector<FrameScanner::Place> places;
    m_firstHidden.reserve(m_names.size() + 1);
    for (Index name = 0; name < size(); ++name) {
        m_firstHidden.push_back(placeCount());
        if (!wantedSkeletons.contains(skeletons[name])) {
            continue;
        }
        scanner.findHiddenPlaces(this->name(name), places);
        for (FrameScanner::Place const& place : places) {
            if (Key const key = place.key & mask; wantedKeys.contains(key)) {
                addPlace(name, place, key);
            }
        }
    }
    m_firstHidden.push_back(placeCount());
}

void CandidateIndex::addPlace(Index name, FrameScanner::Place const& place, Key key) {
    if (m_places.size() >= NONE) {
        throw std::length_error(TOO_MUCH);
    }
    Bucket& bucket = m_buckets[m_bucketBits == 0 ? 0 : spread(key) >> (64 - m_bucketBits)];
    std::size_t const position = bucket.size % Chunk::SIZE;
    if (position == 0) {
        auto const chunk = static_cast<Index>(m_chunks.size());
        m_chunks.append().next = NONE;
        (bucket.size == 0 ? bucket.first : m_chunks[bucket.last].next) = chunk;
        bucket.last = chunk;
    }
    m_chunks[bucket.last].entries[position] = {static_cast<std::uint32_t>(key), placeCount()};
    ++bucket.size;
    m_places.append() = {name, static_cast<Index>(place.span.position),
                         static_cast<Index>(place.span.length)};
    m_memberships.append() = {NONE, place.frame};
}

void CandidateIndex::groupPlaces() {
    m_members.reserve(m_places.size());
    KeyNumbers numbers;
    for (Bucket const& bucket : m_buckets) {
        groupBucket(bucket, numbers);
    }
    std::vector<Bucket>().swap(m_buckets);
    m_chunks = {};
}

template <class Visit>
void CandidateIndex::forEachEntry(Bucket const& bucket, Visit const& visit) const {
    Index left = bucket.size;
    for (Index chunk = bucket.first; chunk != NONE; chunk = m_chunks[chunk].next) {
        Entry const* const entries = m_chunks[chunk].entries;
        Index const count = std::min<Index>(Chunk::SIZE, left);
        left -= count;
        for (Index i = 0; i < count; ++i) {
            visit(entries[i]);
        }
    }
}

// Within a bucket, and so within a group, places stay in their order.
void CandidateIndex::groupBucket(Bucket const& bucket, KeyNumbers& numbers) {
    numbers.clear();
    forEachEntry(bucket, [&numbers](Entry const& entry) { ++numbers.values[numbers.numberOf(entry.key)]; });
    // From now on a key's value is its group.
    for (Index& value : numbers.values) {
        Index const size = value;
        if (size == 1) {
            value = NONE;
            continue;
        }
        value = static_cast<Index>(m_groups.size());
        m_groups.push_back(makeGroup(static_cast<Index>(m_members.size()), 0, size));
        m_members.resize(m_members.size() + size);
    }
    forEachEntry(bucket, [this, &numbers](Entry const& entry) {
        if (Index const group = numbers.values[numbers.numberOf(entry.key)]; group != NONE) {
            m_memberships[entry.place].group = group;
            m_members[m_groups[group].first + m_groups[group].size++] = entry.place;
        }
    });
}

void CandidateIndex::KeyNumbers::clear() {
    values.clear();
    m_keys.clear();
    m_table.assign(SMALLEST_TABLE, NONE);
}

CandidateIndex::Index CandidateIndex::KeyNumbers::numberOf(std::uint32_t key) {
    std::size_t const slot = find(key);
    if (Index const number = m_table[slot]; number != NONE) {
        return number;
    }
    auto const number = static_cast<Index>(m_keys.size());
    m_table[slot] = number;
    m_keys.push_back(key);
    values.push_back(0);
    if (m_keys.size() * 2 > m_table.size()) {
        m_table.assign(m_table.size() * 2, NONE);
        for (Index i = 0; i < m_keys.size(); ++i) {
            m_table[find(m_keys[i])] = i;
        }
    }
    return number;
}

std::size_t CandidateIndex::KeyNumbers::find(std::uint32_t key) const {
    std::size_t const mask = m_table.size() - 1;
    std::size_t slot = slotOf(key) & mask;
    while (m_table[slot] != NONE && m_keys[m_table[slot]] != key) {
        slot = (slot + 1) & mask;
    }
    return slot;
}

void CandidateIndex::claim(Index index) {
    if (m_claimed[index]) {
        return;
    }
    m_claimed[index] = 1;
    for (Index place = m_firstPlain[index]; place < m_firstPlain[index + 1]; ++place) {
        leaveGroup(place);
    }
    if (!m_firstHidden.empty()) {
        for (Index place = m_firstHidden[index]; place < m_firstHidden[index + 1]; ++place) {
            leaveGroup(place);
        }
    }
}

void CandidateIndex::leaveGroup(Index place) {
    Membership const& membership = m_memberships[place];
    if (membership.group == NONE) {
        return;
    }
    Group& group = m_groups[membership.group];
    --group.unclaimed;
    if (group.runs != NONE) {
        m_runs[group.runs]->remove({membership.frame, place});
    }
}

void CandidateIndex::lookAhead(Index index) const {
    if (Index const far = index + 2 * AHEAD; far < size()) {
        for (Index place = m_firstPlain[far]; place < m_firstPlain[far + 1]; ++place) {
            if (Index const group = m_memberships[place].group; group != NONE) {
                prefetch(&m_groups[group]);
            }
        }
        Index const near = index + AHEAD;
        for (Index place = m_firstPlain[near]; place < m_firstPlain[near + 1]; ++place) {
            if (Index const group = m_memberships[place].group; group != NONE) {
                prefetch(&m_members[m_groups[group].first]);
            }
        }
    }
}

bool CandidateIndex::mayHavePartners(Index index) const {
    for (Index place = m_firstPlain[index]; place < m_firstPlain[index + 1]; ++place) {
        if (m_memberships[place].group != NONE && m_groups[m_memberships[place].group].unclaimed > 1) {
            return true;
        }
    }
    return false;
}

CandidateIndex::Group CandidateIndex::makeGroup(Index first, Index size, Index unclaimed) {
    return {first, size, unclaimed, NONE, std::numeric_limits<std::int32_t>::max(), false, false};
}

CandidateIndex::Group* CandidateIndex::groupOf(Index index, std::size_t field) {
    Index const group = m_memberships[m_firstPlain[index] + field].group;
    return group == NONE ? nullptr : &m_groups[group];
}

CandidateIndex::Index CandidateIndex::count(Index index, std::size_t field, Span const& span) {
    Group const* group = groupOf(index, field);
    if (!group || group->unclaimed == 1) {
        return 1;
    }
    if (!group->isChecked || group->unclaimed < group->size / 2) {
        check(m_memberships[m_firstPlain[index] + field].group, index, span);
        group = groupOf(index, field);
    }
    return group->unclaimed;
}

// The names of a group can stand anywhere, so their memory is asked for some members ahead: a member's place,
// then its name, then what the caller wants of the name.
template <class AskFor, class Visit>
void CandidateIndex::forEachMember(Group const& group, AskFor const& askFor, Visit const& visit) {
    Index const* const members = m_members.data() + group.first;
    Index const size = group.size;
    if (size <= AHEAD) {
        for (Index i = 0; i < size; ++i) {
            visit(members[i]);
        }
        return;
    }
    for (Index ahead = 0; ahead < size + 3 * AHEAD; ++ahead) {
        if (ahead < size) {
            prefetch(&m_places[members[ahead]]);
        }
        if (ahead >= AHEAD && ahead - AHEAD < size) {
            Index const name = m_places[members[ahead - AHEAD]].name;
            prefetch(&m_names[name]);
            prefetch(&m_firstPlain[name]);
        }
        if (ahead >= 2 * AHEAD && ahead - 2 * AHEAD < size) {
            askFor(m_places[members[ahead - 2 * AHEAD]].name);
        }
        if (ahead >= 3 * AHEAD) {
            visit(members[ahead - 3 * AHEAD]);
        }
    }
}

// Drops the places of claimed names from a group, and those that only look like the name's.
void CandidateIndex::check(Index group, Index index, Span const& span) {
    Group& checked = m_groups[group];
    Index* const members = m_members.data() + checked.first;
    std::vector<Index> strangers;
    Index kept = 0;
    auto const askForText = [this](Index name) { prefetch(m_names[name].data()); };
    forEachMember(checked, askForText, [&](Index member) {
        Place const& place = m_places[member];
        if (isClaimed(place.name)) {
            return;
        }
        if (checked.isChecked || fits(place, index, span)) {
            members[kept++] = member;
        } else {
            strangers.push_back(member);
        }
    });
    checked.size = checked.unclaimed = kept;
    checked.isChecked = true;
    if (!strangers.empty()) {
        splitOff(strangers);
    }
}

bool CandidateIndex::fits(Place const& place, Index index, Span const& span) {
    std::string_view const name = this->name(index);
    std::string_view const other = this->name(place.name);
    std::size_t const after = name.size() - span.end();
    if (place.position != span.position || other.size() - place.position - place.length != after) {
        return false;
    }
    if (place.name == index) {
        return true;
    }
    if (name.size() < LONG_NAME) {
        return std::memcmp(name.data(), other.data(), span.position) == 0 &&
               std::memcmp(name.data() + span.end(), other.data() + other.size() - after, after) == 0;
    }
    if (m_commonWith != index) {
        m_commonWith = index;
        m_common.clear();
    }
    auto const [found, isNew] = m_common.try_emplace(place.name);
    if (isNew) {
        found->second = {commonPrefix(name, other), commonSuffix(name, other)};
    }
    return found->second.prefix >= span.position && found->second.suffix >= after;
}

void CandidateIndex::splitOff(std::vector<Index> const& places) {
    auto const group = static_cast<Index>(m_groups.size());
    auto const count = static_cast<Index>(places.size());
    m_groups.push_back(makeGroup(static_cast<Index>(m_members.size()), count, count));
    for (Index const place : places) {
        m_memberships[place].group = group;
        m_members.push_back(place);
    }
}

int CandidateIndex::run(Index index, std::size_t field) {
    Group* const group = groupOf(index, field);
    if (!group || group->unclaimed == 1) {
        return 0;
    }
    if (group->runs != NONE) {
        return m_runs[group->runs]->longest();
    }
    // Kept for a third time when it is asked for a second.
    bool const keeps = group->isAsked && group->unclaimed > FEW_FRAMES;
    group->isAsked = true;
    m_someFrames.clear();
    std::vector<FrameRuns::Member> members;
    Index const* const places = m_members.data() + group->first;
    bool const isWhole = group->unclaimed == group->size;
    for (Index i = 0; i < group->size; ++i) {
        if (i + AHEAD < group->size) {
            prefetch(&m_memberships[places[i + AHEAD]]);
        }
        Index const place = places[i];
        if (!isWhole && isClaimed(m_places[place].name)) {
            continue;
        }
        std::int32_t const frame = m_memberships[place].frame;
        if (keeps) {
            members.push_back({frame, place});
        } else {
            m_someFrames.push_back(frame);
        }
    }
    if (!keeps) {
        bool areDistinct = false;
        int const longest = FrameRuns::longest(m_someFrames, areDistinct);
        if (areDistinct) {
            group->maxRun = longest;
        }
        return longest;
    }
    m_runs.push_back(std::make_unique<FrameRuns>(std::move(members)));
    group->runs = static_cast<Index>(m_runs.size() - 1);
    return m_runs.back()->longest();
}

bool CandidateIndex::hasRun(Index index, std::size_t field, int atLeast) {
    Group const* const group = groupOf(index, field);
    return (!group || group->maxRun >= atLeast) && run(index, field) >= atLeast;
}

std::size_t CandidateIndex::claimAll(Index index, std::size_t field, Span const& span,
                                     std::vector<Index>* claimed) {
    Group* const group = groupOf(index, field);
    if (!group) {
        claim(index);
        if (claimed) {
            claimed->push_back(index);
        }
        return span.length;
    }
    if (group->runs != NONE) {
        // Nobody asks for it any more.
        m_runs[group->runs].reset();
        group->runs = NONE;
    }
    std::size_t const around = m_names[index].size() - span.length;
    std::size_t narrowest = span.length;
    auto const askForPlaces = [this](Index name) { prefetch(&m_memberships[m_firstPlain[name]]); };
    forEachMember(*group, askForPlaces, [&](Index member) {
        Index const other = m_places[member].name;
        if (!isClaimed(other)) {
            narrowest = std::min<std::size_t>(narrowest, m_names[other].size() - around);
            claim(other);
            if (claimed) {
                claimed->push_back(other);
            }
        }
    });
    return narrowest;
}

} // namespace ORL_0_81
