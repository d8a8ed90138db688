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
constexpr std::size_t BUCKET_SIZE = 8192;
constexpr unsigned int MAX_BUCKET_BITS = 12; // more, and the dealing out suffers

// How far ahead of its use memory is asked for, step by step.
constexpr CandidateIndex::Index AHEAD = 8;

// How many entries of a bucket come into a core's cache at once, nearly everywhere.
constexpr std::size_t ENTRIES_OF_LINE = 8;

void prefetch(void const* address) {
    __builtin_prefetch(address);
    // Without it g++ 12 takes a function that does nothing else for one without effects, and leaves out calls of it.
    __asm__ volatile("");
}

void askForNothing(CandidateIndex::Index /*member*/) {}

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

void CandidateIndex::Names::append(std::string_view name) {
    if (name.size() >= NONE) {
        throw std::length_error(TOO_MUCH);
    }
    m_names.push_back({name.data(), static_cast<Index>(name.size()), 0});
}

CandidateIndex::CandidateIndex(Names names, Key keyMask) : m_names(std::move(names.m_names)) {
    if (m_names.size() >= NONE) {
        throw std::length_error(TOO_MUCH);
    }
    m_names.push_back({nullptr, 0, 0});
    m_isClaimed.resize(size());
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
    skeletons.reserve(size());
    for (Index name = 0; name < size(); ++name) {
        if (name + AHEAD < size()) {
            prefetchText(name + AHEAD);
        }
        m_names[name].firstPlain = placeCount();
        skeletons.push_back(0);
        if (!scanner.findPlainPlaces(this->name(name), places)) {
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
    m_names[size()].firstPlain = placeCount();
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
    m_firstHidden.reserve(m_names.size());
    for (Index name = 0; name < size(); ++name) {
        m_firstHidden.push_back(placeCount());
        if (!wantedSkeletons.contains(skeletons[name])) {
            continue;
        }
        scanner.findHiddenPlaces(this->name(name), places);
        for (FrameScanner::Place const& place : places) {
            if (Key const key = place.key & mask; wantedKeys.contains(key)) {
                addPlace(name, place, key);
                m_hiddenLengths.push_back(static_cast<unsigned char>(place.span.length));
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
    m_places.append() = {name, static_cast<Index>(place.span.position), place.frame, NONE};
}

void CandidateIndex::groupPlaces() {
    m_members.reset(new Index[m_places.size()]); // uncleared, as make_unique would not leave it
    KeyNumbers numbers;
    for (Bucket const& bucket : m_buckets) {
        groupBucket(bucket, numbers);
    }
    std::vector<Bucket>().swap(m_buckets);
    m_chunks = {};
    // With no more than a place for a name most are compared with others sooner or later: then it is better done in
    // the order in which their texts stand in memory.
    if (m_firstHidden.empty() && placeCount() <= size()) {
        checkInOrder();
    }
}

// Asks for each entry's memory some entries ahead; for a chunk's own as soon as the one before it is begun.
template <class Ask, class Visit>
void CandidateIndex::forEachEntry(Bucket const& bucket, Ask const& ask, Visit const& visit) {
    Index left = bucket.size;
    for (Index chunk = bucket.first; chunk != NONE; chunk = m_chunks[chunk].next) {
        Entry* const entries = m_chunks[chunk].entries;
        Index const count = std::min<Index>(Chunk::SIZE, left);
        left -= count;
        Entry const* const next = left > 0 ? m_chunks[m_chunks[chunk].next].entries : nullptr;
        for (std::size_t i = 0; next && i < Chunk::SIZE; i += ENTRIES_OF_LINE) {
            prefetch(next + i);
        }
        for (Index i = 0; i < count; ++i) {
            Index const ahead = i + AHEAD;
            if (ahead < count) {
                ask(entries[ahead]);
            } else if (ahead - count < left) {
                ask(next[ahead - count]);
            }
            visit(entries[i]);
        }
    }
}

// Within a bucket, and so within a group, places stay in their order.
void CandidateIndex::groupBucket(Bucket const& bucket, KeyNumbers& numbers) {
    numbers.clear();
    auto const count = [&numbers](Entry& entry) {
        Index const number = numbers.numberOf(entry.key);
        ++numbers.values[number];
        entry.key = number; // so that it need not be looked up again
    };
    forEachEntry(
        bucket, [](Entry const&) {}, count);
    // From now on a key's value is its group.
    for (Index& value : numbers.values) {
        Index const size = value;
        if (size == 1) {
            value = NONE;
            continue;
        }
        value = addGroup(m_memberCount, 0, size);
        m_memberCount += size;
    }
    auto const ask = [this](Entry const& entry) { prefetch(&m_places[entry.place]); };
    forEachEntry(bucket, ask, [this, &numbers](Entry const& entry) {
        if (Index const number = numbers.values[entry.key]; number != NONE) {
            m_places[entry.place].group = number;
            Group& group = m_groups[number];
            m_members[group.first + group.size++] = entry.place;
        }
    });
}

// Compares the places of each group with its first. What there is to know of the first ones is brought together
// before, for otherwise each place would lead to four others.
void CandidateIndex::checkInOrder() {
    struct First {
        char const* text;
        char const* textBehind; // the place
        Index before;           // as many characters
        Index behind;
    };
    std::vector<First> firsts;
    firsts.reserve(m_groups.size());
    for (Index group = 0; group < m_groups.size(); ++group) {
        m_groups[group].isChecked = 1;
        Index const index = m_members[m_groups[group].first];
        Place const& place = m_places[index];
        Name const& name = m_names[place.name];
        auto const end = static_cast<Index>(place.position + lengthOf(index));
        firsts.push_back({name.text, name.text + end, place.position, name.size - end});
        m_narrowest[group] = static_cast<unsigned char>(end - place.position);
    }
    for (Index index = 0; index < placeCount(); ++index) {
        if (Index const ahead = index + AHEAD; ahead < placeCount()) {
            Place const& place = m_places[ahead];
            prefetchText(place.name);
            if (place.group != NONE) {
                prefetch(firsts[place.group].text);
            }
        }
        Place const& place = m_places[index];
        if (place.group == NONE) {
            continue;
        }
        First const& first = firsts[place.group];
        Name const& name = m_names[place.name];
        std::size_t const length = lengthOf(index);
        std::size_t const end = place.position + length;
        m_narrowest[place.group] = std::min(m_narrowest[place.group], static_cast<unsigned char>(length));
        if (place.position != first.before || name.size - end != first.behind ||
            std::memcmp(name.text, first.text, first.before) != 0 ||
            std::memcmp(name.text + end, first.textBehind, first.behind) != 0) {
            m_groups[place.group].isChecked = 0;
        }
    }
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
    if (isClaimed(index)) {
        return;
    }
    m_isClaimed[index] = true;
    Index const end = m_names[index + 1].firstPlain;
    for (Index place = m_names[index].firstPlain; place < end; ++place) {
        leaveGroup(place);
    }
    if (!m_firstHidden.empty()) {
        for (Index place = m_firstHidden[index]; place < m_firstHidden[index + 1]; ++place) {
            leaveGroup(place);
        }
    }
}

void CandidateIndex::leaveGroup(Index index) {
    Place const& place = m_places[index];
    if (place.group == NONE) {
        return;
    }
    Group& group = m_groups[place.group];
    --group.unclaimed;
    if (group.runs != NO_RUNS && m_runs[group.runs].frames) {
        m_runs[group.runs].frames->remove({place.frame, index});
    }
}

void CandidateIndex::prefetchText(Index index) const {
    Name const& name = m_names[index];
    prefetch(name.text);
    prefetch(name.text + name.size);
}

void CandidateIndex::prefetchGroup(Index place) const {
    if (Index const group = m_places[place].group; group != NONE) {
        prefetch(&m_groups[group]);
    }
}

void CandidateIndex::lookAhead(Index index) const {
    if (index + 2 * AHEAD >= size()) {
        return;
    }
    Index const far = index + 2 * AHEAD;
    for (Index place = m_names[far].firstPlain; place < m_names[far + 1].firstPlain; ++place) {
        prefetchGroup(place);
    }
    Index const near = index + AHEAD;
    for (Index place = m_names[near].firstPlain; place < m_names[near + 1].firstPlain; ++place) {
        if (Index const group = m_places[place].group; group != NONE) {
            prefetch(&m_members[m_groups[group].first]);
        }
    }
}

bool CandidateIndex::mayHavePartners(Index index) const {
    Index const end = m_names[index + 1].firstPlain;
    for (Index place = m_names[index].firstPlain; place < end; ++place) {
        if (Index const group = m_places[place].group; group != NONE && m_groups[group].unclaimed > 1) {
            return true;
        }
    }
    return false;
}

CandidateIndex::Index CandidateIndex::addGroup(Index first, Index size, Index unclaimed) {
    auto const group = static_cast<Index>(m_groups.size());
    m_groups.append() = {first, size, unclaimed, NO_RUNS, 0};
    m_narrowest.push_back(0);
    return group;
}

CandidateIndex::Group* CandidateIndex::groupOf(Index index, std::size_t field) {
    Index const group = m_places[m_names[index].firstPlain + field].group;
    return group == NONE ? nullptr : &m_groups[group];
}

CandidateIndex::Index CandidateIndex::count(Index index, std::size_t field, Span const& span) {
    Group const* group = groupOf(index, field);
    if (!group || group->unclaimed == 1) {
        return 1;
    }
    if (!group->isChecked || group->unclaimed < group->size / 2) {
        check(m_places[m_names[index].firstPlain + field].group, index, span);
        group = groupOf(index, field);
    }
    return group->unclaimed;
}

// The places of a group can stand anywhere, and so can their names: what is wanted of a member is asked for in
// up to three steps, each some members ahead of the next.
template <class Ask1, class Ask2, class Ask3, class Visit>
void CandidateIndex::forEachMember(Group const& group, Ask1 const& ask1, Ask2 const& ask2, Ask3 const& ask3,
                                   Visit const& visit) const {
    Index const* const members = m_members.get() + group.first;
    Index const size = group.size;
    if (size <= AHEAD) {
        for (Index i = 0; i < size; ++i) {
            visit(members[i]);
        }
        return;
    }
    for (Index ahead = 0; ahead < size + 3 * AHEAD; ++ahead) {
        if (ahead < size) {
            ask1(members[ahead]);
        }
        if (ahead >= AHEAD && ahead - AHEAD < size) {
            ask2(members[ahead - AHEAD]);
        }
        if (ahead >= 2 * AHEAD && ahead - 2 * AHEAD < size) {
            ask3(members[ahead - 2 * AHEAD]);
        }
        if (ahead >= 3 * AHEAD) {
            visit(members[ahead - 3 * AHEAD]);
        }
    }
}

// Drops the places of claimed names from a group, and those that only look like the name's.
void CandidateIndex::check(Index group, Index index, Span const& span) {
    Group& checked = m_groups[group];
    Index* const members = m_members.get() + checked.first;
    bool const isChecked = checked.isChecked != 0;
    std::size_t const around = m_names[index].size - span.length;
    std::size_t narrowest = span.length;
    std::vector<Index> strangers;
    Index kept = 0;
    auto const askForPlace = [this](Index member) { prefetch(&m_places[member]); };
    auto const askForName = [this](Index member) { prefetch(&m_names[m_places[member].name]); };
    auto const askForText = [this, isChecked](Index member) {
        if (!isChecked) {
            prefetchText(m_places[member].name);
        }
    };
    forEachMember(checked, askForPlace, askForName, askForText, [&](Index member) {
        Index const name = m_places[member].name;
        if (isClaimed(name)) {
            return;
        }
        if (isChecked || fits(member, index, span)) {
            members[kept++] = member;
            narrowest = std::min(narrowest, m_names[name].size - around);
        } else {
            strangers.push_back(member);
        }
    });
    checked.size = checked.unclaimed = kept;
    checked.isChecked = 1;
    m_narrowest[group] = static_cast<unsigned char>(narrowest);
    if (!strangers.empty()) {
        splitOff(strangers, checked.first + kept);
    }
}

std::size_t CandidateIndex::lengthOf(Index index) const {
    if (!m_firstHidden.empty() && index >= m_firstHidden.front()) {
        return m_hiddenLengths[index - m_firstHidden.front()];
    }
    Place const& place = m_places[index];
    return FrameNotation::frameLengthAt(name(place.name), place.position);
}

bool CandidateIndex::fits(Index member, Index index, Span const& span) {
    Place const& place = m_places[member];
    std::string_view const name = this->name(index);
    std::string_view const other = this->name(place.name);
    std::size_t const after = name.size() - span.end();
    if (place.position != span.position || other.size() - place.position - lengthOf(member) != after) {
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

// Into the room that they leave behind.
void CandidateIndex::splitOff(std::vector<Index> const& places, Index first) {
    auto const count = static_cast<Index>(places.size());
    Index const group = addGroup(first, count, count);
    for (Index const place : places) {
        m_places[place].group = group;
    }
    std::copy(places.begin(), places.end(), m_members.get() + first);
}

int CandidateIndex::run(Index index, std::size_t field) {
    Group* const group = groupOf(index, field);
    if (!group || group->unclaimed == 1) {
        return 0;
    }
    bool isAskedAgain = true;
    if (group->runs == NO_RUNS) {
        isAskedAgain = false;
        group->runs = static_cast<Index>(m_runs.size()) & NO_RUNS;
        m_runs.push_back({std::numeric_limits<std::int32_t>::max(), nullptr});
    }
    Runs& runs = m_runs[group->runs];
    if (runs.frames) {
        return runs.frames->longest();
    }
    // Kept for a third time when it is asked for a second.
    bool const keeps = isAskedAgain && group->unclaimed > FEW_FRAMES;
    m_someFrames.clear();
    std::vector<FrameRuns::Member> members;
    Index const* const places = m_members.get() + group->first;
    bool const isWhole = group->unclaimed == group->size;
    for (Index i = 0; i < group->size; ++i) {
        if (i + AHEAD < group->size) {
            prefetch(&m_places[places[i + AHEAD]]);
        }
        Place const& place = m_places[places[i]];
        if (!isWhole && isClaimed(place.name)) {
            continue;
        }
        if (keeps) {
            members.push_back({place.frame, places[i]});
        } else {
            m_someFrames.push_back(place.frame);
        }
    }
    if (!keeps) {
        bool areDistinct = false;
        int const longest = FrameRuns::longest(m_someFrames, areDistinct);
        if (areDistinct) {
            runs.limit = longest;
        }
        return longest;
    }
    runs.frames = std::make_unique<FrameRuns>(std::move(members));
    return runs.frames->longest();
}

bool CandidateIndex::hasRun(Index index, std::size_t field, int atLeast) {
    Group const* const group = groupOf(index, field);
    if (group && group->runs != NO_RUNS && m_runs[group->runs].limit < atLeast) {
        return false;
    }
    return run(index, field) >= atLeast;
}

// Of the frames of the unclaimed names of a checked group that fit a field of the name.
std::size_t CandidateIndex::narrowestOf(Index number, Index index, Span const& span) const {
    Group const& group = m_groups[number];
    if (group.unclaimed == group.size) {
        return m_narrowest[number];
    }
    std::size_t const around = m_names[index].size - span.length;
    std::size_t narrowest = span.length;
    for (Index i = 0; i < group.size; ++i) {
        if (Index const name = m_places[m_members[group.first + i]].name; !isClaimed(name)) {
            narrowest = std::min(narrowest, m_names[name].size - around);
        }
    }
    return narrowest;
}

std::size_t CandidateIndex::claimAll(Index index, std::size_t field, Span const& span,
                                     std::vector<Index>* claimed) {
    Index const number = m_places[m_names[index].firstPlain + field].group;
    if (number == NONE || m_groups[number].unclaimed == 1) {
        claim(index);
        if (claimed) {
            claimed->push_back(index);
        }
        return span.length;
    }
    Group& group = m_groups[number];
    if (group.runs != NO_RUNS) {
        m_runs[group.runs].frames.reset(); // nobody asks for it any more
    }
    std::size_t const narrowest = narrowestOf(number, index, span);
    // Where there are no hidden places, all members have as many fields as this name and the same of them in
    // this group, for they differ in nothing else. So their places are known without a look at their names.
    bool const hasHidden = !m_firstHidden.empty();
    auto const before = static_cast<Index>(field);
    Index const count = m_names[index + 1].firstPlain - m_names[index].firstPlain;
    auto const askForPlaces = [&](Index member) {
        prefetch(&m_places[member]);
        if (!hasHidden) {
            prefetch(&m_places[member - before]);
            prefetch(&m_places[member - before + count - 1]);
        }
    };
    auto const askForGroups = [&](Index member) {
        for (Index i = 0; !hasHidden && i < count; ++i) {
            prefetchGroup(member - before + i);
        }
    };
    forEachMember(group, askForPlaces, askForGroups, askForNothing, [&](Index member) {
        Index const name = m_places[member].name;
        if (isClaimed(name)) {
            return;
        }
        if (claimed) {
            claimed->push_back(name);
        }
        if (hasHidden) {
            claim(name);
            return;
        }
        m_isClaimed[name] = true;
        for (Index i = 0; i < count; ++i) {
            leaveGroup(member - before + i);
        }
    });
    return narrowest;
}

} // namespace ORL_0_81
