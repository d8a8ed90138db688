// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#ifndef ORL_CANDIDATE_INDEX_H
#define ORL_CANDIDATE_INDEX_H

#include "internal/orlFrameNotation.h"
#include "internal/orlFrameRuns.h"
#include "internal/orlFrameScanner.h"
#include "internal/orlPagedArray.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace ORL_0_81 {

/// Answers, for any digit field of a name, which unclaimed names differ from it in nothing but the number in
/// that place, without looking at the others.
///
/// The places where a frame can stand (see FrameScanner) are grouped by what stands around them, once for all
/// names. A group is only looked at when a name asks for it: then the names in it are compared with that
/// name, and what merely has the same key becomes a group of its own. Each group counts its unclaimed names;
/// its frames are sorted when their run is first asked for, and kept up to date from then on.
///
/// Names with a backslash are in no group: what they look like to a pattern is not told by their text alone,
/// and no pattern of a name without one can match them.
class CandidateIndex {
public:
    using Index = std::uint32_t;
    using Span = FrameNotation::Span;

    /// \param names Each must be shorter than 4 GB. The texts must stay as they are during the life of the
    ///     index.
    /// \param keyMask Which bits of a key are looked at. With fewer than all, more names are mistaken for
    ///     each other at first; for tests.
    explicit CandidateIndex(std::vector<std::string_view> names,
                            FrameScanner::Key keyMask = ~FrameScanner::Key{0});

    /// How many names were given.
    Index size() const { return static_cast<Index>(m_claimed.size()); }

    std::string_view name(Index index) const { return m_names[index]; }

    bool isClaimed(Index index) const { return m_claimed[index] != 0; }

    /// Takes a name out, if it is still in.
    void claim(Index index);

    /// Asks for the memory of the names that come next, if names are asked for in their order.
    void lookAhead(Index index) const;

    /// Whether some unclaimed name may differ from this one in the number of one of its fields only. If not,
    /// there is none.
    bool mayHavePartners(Index index) const;

    /// How many unclaimed names fit a field of an unclaimed name, itself included.
    ///
    /// \param field the field's number among those of the name, from the left.
    Index count(Index index, std::size_t field, Span const& span);

    /// The longest run of the frames of those names. To be asked after count().
    int run(Index index, std::size_t field);

    /// Whether that run is at least so long. Needs less than to know how long it is: where no two frames are
    /// equal the run never becomes longer again.
    bool hasRun(Index index, std::size_t field, int atLeast);

    /// Takes those names out, itself included. To be asked after count().
    ///
    /// \param claimed If not null, their numbers are appended.
    /// \returns the width of the narrowest of their frames.
    std::size_t claimAll(Index index, std::size_t field, Span const& span,
                         std::vector<Index>* claimed = nullptr);

private:
    static constexpr Index NONE = ~Index{0};

    // A place in a name where a frame can stand.
    struct Place {
        Index name;
        Index position;
        Index length;
    };

    // Which group it is in, NONE where no other place has the same key, and with which frame.
    struct Membership {
        Index group;
        std::int32_t frame;
    };

    // A place by its key, as much of it as the bucket doesn't tell.
    struct Entry {
        std::uint32_t key;
        Index place;
    };

    // A bucket's entries are in chunks, which stand one behind the other for all buckets, so that none is ever moved to
    // make room.
    struct Chunk {
        static constexpr std::size_t SIZE = 63;
        Index next;
        Entry entries[SIZE];
    };
    struct Bucket {
        Index first;
        Index last;
        Index size;
    };

    // Gives the keys of a bucket numbers, in the order of their first entries.
    class KeyNumbers {
    public:
        // Forgets all keys.
        void clear();

        Index numberOf(std::uint32_t key);

        // What is told about each key by number; 0 at first.
        std::vector<Index> values;

    private:
        static constexpr std::size_t SMALLEST_TABLE = 4096;

        std::size_t find(std::uint32_t key) const;

        std::vector<std::uint32_t> m_keys; // by number
        std::vector<Index> m_table;        // of numbers, NONE where there is none; twice as large as the keys
    };

    // Places with the same key. Those of claimed names go when the group is next looked at.
    struct Group {
        Index first; // its places stand together in m_members
        Index size;
        Index unclaimed;
        Index runs;          // of its frames, once they were asked for twice
        std::int32_t maxRun; // what their longest run can't exceed from now on
        bool isChecked;
        bool isAsked; // for its run
    };

    // Half of what the scanner tells is enough to pass over most names.
    using Skeleton = std::uint32_t;

    // The fields that names can fit in hidden places.
    struct Peculiar {
        std::vector<FrameScanner::Key> keys;
        std::vector<FrameScanner::Key> skeletons;
    };

    void findPlaces(FrameScanner::Key mask);
    void findHiddenPlaces(Peculiar const& peculiar, std::vector<Skeleton> const& skeletons,
                          FrameScanner::Key mask);
    void addPlace(Index name, FrameScanner::Place const& place, FrameScanner::Key key);
    Index placeCount() const { return static_cast<Index>(m_places.size()); }
    void groupPlaces();
    template <class Visit>
    void forEachEntry(Bucket const& bucket, Visit const& visit) const;
    void groupBucket(Bucket const& bucket, KeyNumbers& numbers);

    static Group makeGroup(Index first, Index size, Index unclaimed);
    Group* groupOf(Index index, std::size_t field);
    void leaveGroup(Index place);
    template <class AskFor, class Visit>
    void forEachMember(Group const& group, AskFor const& askFor, Visit const& visit);
    void check(Index group, Index index, Span const& span);
    bool fits(Place const& place, Index index, Span const& span);
    void splitOff(std::vector<Index> const& places);

    std::vector<std::string_view> m_names;
    std::vector<unsigned char> m_claimed;

    // The places of a name stand together: the plain ones, then, elsewhere, the hidden ones if there are any.
    std::vector<Index> m_firstPlain; // by name, and behind the last
    PagedArray<Place> m_places;
    PagedArray<Membership> m_memberships;
    std::vector<Index> m_firstHidden; // by name, and behind the last; empty if no name has any

    std::vector<Bucket> m_buckets; // only until they are grouped
    PagedArray<Chunk> m_chunks;
    unsigned int m_bucketBits = 0;
    std::vector<Group> m_groups;
    std::vector<Index> m_members;
    std::vector<std::unique_ptr<FrameRuns>> m_runs;

    // How much long names have in common with the one last asked for, at the beginning and at the end.
    struct Common {
        std::size_t prefix;
        std::size_t suffix;
    };
    Index m_commonWith = NONE;
    std::unordered_map<Index, Common> m_common;

    std::vector<std::int32_t> m_someFrames;
};

} // namespace ORL_0_81

#endif // ORL_CANDIDATE_INDEX_H
