// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#ifndef ORL_SEQUENCE_DETECTOR_H
#define ORL_SEQUENCE_DETECTOR_H

#include "internal/orlCandidateIndex.h"
#include "internal/orlFrameNotation.h"
#include "internal/orlNameFilter.h"

#include <cstddef>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace ORL_0_81 {

/// Turns names into sequence names and single names; see FileSequenceUtils for the rules.
///
/// Names are taken from the front of those that are not claimed yet. A name without a backslash becomes
/// patterns that are a text, a frame and a text, and the index knows what they match. The patterns of a name
/// with a backslash are whatever the standard library makes of them, and are tried on every name.
class SequenceDetector {
public:
    using Index = CandidateIndex::Index;

    /// Receives the results in their order, without backslashes.
    class Results {
    public:
        virtual ~Results() = default;

        /// A name that stays as it is. It has no backslash.
        virtual void addName(std::size_t index, std::string_view name) = 0;

        /// Any other text.
        virtual void addText(std::string const& text) = 0;

        /// Whether addMember() is to be called.
        virtual bool wantsMembers() const { return false; }

        /// A name that belongs to what is added next, and where in it the frame stands.
        virtual void addMember(std::size_t /*index*/, FrameNotation::Span const& /*frame*/) {}

    protected:
        Results() = default;
        Results(Results const&) = default;
        Results& operator=(Results const&) = default;
    };

    /// A compiled pattern of a name with a backslash.
    class Pattern {
    public:
        virtual ~Pattern() = default;

        virtual std::size_t captureCount() const = 0;

        /// See GuardedRegex::match().
        virtual bool match(std::string_view text, std::vector<FrameNotation::Span>& captures) = 0;

    protected:
        Pattern() = default;
        Pattern(Pattern const&) = default;
        Pattern& operator=(Pattern const&) = default;
    };

    /// Compiles patterns. Throws `std::regex_error`, as matching does.
    using Compiler = std::function<std::unique_ptr<Pattern>(std::string const& pattern)>;

    /// \param names Their texts must stay during the life of the detector, as must the filter and the results.
    /// \param compiler for tests, which let it fail; by default the standard library's, within bounds.
    SequenceDetector(CandidateIndex::Names names, NameFilter& filter, Results& results,
                     Compiler compiler = compileGuarded);

    /// Does the whole work, once. A regular-expression error costs the front of the unclaimed names, no more.
    void run();

private:
    using Span = FrameNotation::Span;

    static std::unique_ptr<Pattern> compileGuarded(std::string const& pattern);

    void examine(Index front);
    void examinePlain(Index front, std::string_view name);
    std::size_t chooseField(Index front, std::string_view name);
    void examineEscaping(Index front, std::string_view name);
    std::string chooseCandidate(std::string_view name);
    std::size_t claim(Pattern& pattern, std::size_t& narrowest);

    void addSingle(Index index);
    void addSequence(std::string_view before, std::size_t width, std::string_view after);

    CandidateIndex m_index;
    NameFilter& m_filter;
    Results& m_results;
    Compiler m_compiler;
    Index m_front = 0;          // all names before it are claimed
    std::vector<Span> m_fields; // of the name at the front
    std::vector<Index> m_members;
};

} // namespace ORL_0_81

#endif // ORL_SEQUENCE_DETECTOR_H
