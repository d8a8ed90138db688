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
#include <initializer_list>
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
/// name, and what merely has the same key becomes a group of its own. But where names have no more than a
/// place each, nearly all groups would be asked for, and all are compared beforehand, name by name. Each group
/// counts its unclaimed names; its frames are sorted when their run is first asked for, and kept up to date
/// from then on.
///
/// With a million names it is the memory that takes the time. So what is kept of a name or a place is small and
/// stands together, and whoever goes through many of them asks for their memory some steps ahead.
///
/// Names with a backslash are in no group: what they look like to a pattern is not told by their text alone,
/// and no pattern of a name without one can match them.
class CandidateIndex {
public:
    using Index = std::uint32_t;
    using Span = FrameNotation::Span;

private:
    // A name, and where its places begin.
    struct Name {
        char const* text;
        Index size;
        Index firstPlain;
    };

public:
    /// The names that an index is made for, in their order.
    class Names {
    public:
        Names() = default;
        Names(std::initializer_list<std::string_view> names) : Names(names.begin(), names.end()) {}
        Names(std::vector<std::string_view> const& names) : Names(names.begin(), names.end()) {}

        template <class Iterator>
        Names(Iterator begin, Iterator end) {
            reserve(static_cast<std::size_t>(end - begin));
            for (; begin != end; ++begin) {
                append(*begin);
            }
        }

        /// Makes room for so many in all.
        void reserve(std::size_t count) { m_names.reserve(count + 1); } // and for one behind the last

        /// Throws `std::length_error` for a name of 4 GB or more.
        ///
        /// \param name The text must stay as it is during the life of the index.
        void append(std::string_view name);

        bool isEmpty() const { return m_names.empty(); }

    private:
        friend class CandidateIndex;

        std::vector<Name> m_names;
    };

    /// Throws `std::length_error` for more names or places than 32 bits can number.
    ///
    /// \param keyMask Which bits of a key are looked at. With fewer than all, more names are mistaken for
    ///     each other at first; for tests.
    explicit CandidateIndex(Names names, FrameScanner::Key keyMask = ~FrameScanner::Key{0});

    /// How many names were given.
    Index size() const { return static_cast<Index>(m_names.size() - 1); }

    std::string_view name(Index index) const { return {m_names[index].text, m_names[index].size}; }

    bool isClaimed(Index index) const { return m_isClaimed[index]; }

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

    /// Takes those names out, itself included. To be asked after count() of the same field.
    ///
    /// \param claimed If not null, their numbers are appended.
    /// \returns the width of the narrowest of their frames.
    std::size_t claimAll(Index index, std::size_t field, Span const& span,
                         std::vector<Index>* claimed = nullptr);

private:
    static constexpr Index NONE = ~Index{0};

    // A place in a name where a frame can stand, with its frame and the group it is in: NONE where no other place
    // has the same key.
    struct Place {
        Index name;
        Index position;
        std::int32_t frame;
        Index group;
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
        Index runs : 31; // in m_runs, NO_RUNS until they are first asked for
        Index isChecked : 1;
    };
    static constexpr Index NO_RUNS = NONE >> 1U;

    // What is known of the runs of a group's frames.
    struct Runs {
        std::int32_t limit;                // what the longest can't exceed from now on
        std::unique_ptr<FrameRuns> frames; // once they were asked for twice
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
    template <class Ask, class Visit>
    void forEachEntry(Bucket const& bucket, Ask const& ask, Visit const& visit);
    void groupBucket(Bucket const& bucket, KeyNumbers& numbers);
    void checkInOrder();

    Index addGroup(Index first, Index size, Index unclaimed);
    Group* groupOf(Index index, std::size_t field);
    void leaveGroup(Index place);
    template <class Ask1, class Ask2, class Ask3, class Visit>
    void forEachMember(Group const& group, Ask1 const& ask1, Ask2 const& ask2, Ask3 const& ask3,
                       Visit const& visit) const;
    void check(Index group, Index index, Span const& span);
    std::size_t narrowestOf(Index group, Index index, Span const& span) const;
    bool fits(Index place, Index index, Span const& span);
    std::size_t lengthOf(Index place) const;
    void splitOff(std::vector<Index> const& places, Index first);

    void prefetchText(Index index) const;
    void prefetchGroup(Index place) const;

    // The places of a name stand together: the plain ones, then, behind those of all names, the hidden ones if there
    // are any.
    std::vector<Name> m_names; // and one behind the last, which tells where the plain places end
    std::vector<bool> m_isClaimed;
    PagedArray<Place> m_places;
    std::vector<Index> m_firstHidden; // by name, and behind the last; empty if no name has any
    std::vector<unsigned char> m_hiddenLengths;

    std::vector<Bucket> m_buckets; // only until they are grouped
    PagedArray<Chunk> m_chunks;
    unsigned int m_bucketBits = 0;
    PagedArray<Group> m_groups;
    std::vector<unsigned char> m_narrowest; // of the frames that a group had when it was last checked
    std::unique_ptr<Index[]> m_members;     // room for all places
    Index m_memberCount = 0;
    std::vector<Runs> m_runs;

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
