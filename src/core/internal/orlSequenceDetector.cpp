// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "internal/orlSequenceDetector.h"

#include "internal/orlFrameRuns.h"
#include "internal/orlGuardedRegex.h"
#include "internal/orlRoomyStack.h"

#include <algorithm>
#include <regex>
#include <utility>

namespace ORL_0_81 {

using FrameNotation::escape;
using FrameNotation::FRAME_GROUP;

namespace {

constexpr char ESCAPE = '\\';

class GuardedPattern : public SequenceDetector::Pattern {
public:
    explicit GuardedPattern(std::string const& pattern) : m_regex(pattern) {}

    std::size_t captureCount() const override { return m_regex.captureCount(); }

    bool match(std::string_view text, std::vector<FrameNotation::Span>& captures) override {
        return m_regex.match(text, captures);
    }

private:
    GuardedRegex m_regex;
};

bool isDotted(std::string_view name, FrameNotation::Span const& field) {
    return field.position > 0 && name[field.position - 1] == '.';
}

// A pattern for the whole of a text.
std::string anchored(std::string const& pattern) { return "^" + pattern + "$"; }

// The pattern that has the frame group in the place of each digit field. The fields are those of the escaped
// name; where a digit stands behind a backslash, that backslash then escapes the group's parenthesis.
std::string allFieldsPattern(std::string const& escaped) {
    std::vector<FrameNotation::Span> fields;
    FrameNotation::findDigitFields(escaped, fields);
    std::string pattern;
    std::size_t position = 0;
    for (FrameNotation::Span const& field : fields) {
        pattern.append(escaped, position, field.position - position);
        pattern += FRAME_GROUP;
        position = field.end();
    }
    return pattern.append(escaped, position);
}

} // namespace

SequenceDetector::SequenceDetector(CandidateIndex::Names names, NameFilter& filter, Results& results,
                                   Compiler compiler)
    : m_index(std::move(names)), m_filter(filter), m_results(results), m_compiler(std::move(compiler)) {}

std::unique_ptr<SequenceDetector::Pattern> SequenceDetector::compileGuarded(std::string const& pattern) {
    return std::make_unique<GuardedPattern>(pattern);
}

void SequenceDetector::run() {
    while (m_front < m_index.size()) {
        if (m_index.isClaimed(m_front)) {
            ++m_front;
            continue;
        }
        m_index.lookAhead(m_front);
        try {
            examine(m_front);
        } catch (std::regex_error const&) {
            // Usually the name that failed. But if that is claimed already, it is the next that goes.
            while (m_front < m_index.size() && m_index.isClaimed(m_front)) {
                ++m_front;
            }
            if (m_front < m_index.size()) {
                m_index.claim(m_front);
            }
        }
    }
}

void SequenceDetector::examine(Index front) {
    std::string_view const name = m_index.name(front);
    if (name.empty() || !m_filter.passes(name)) {
        m_index.claim(front);
    } else if (FrameNotation::holdsDateAndTime(name)) {
        addSingle(front);
    } else if (name.find(ESCAPE) == std::string_view::npos) {
        examinePlain(front, name);
    } else {
        examineEscaping(front, name);
    }
}

void SequenceDetector::examinePlain(Index front, std::string_view name) {
    if (!m_index.mayHavePartners(front)) {
        addSingle(front);
        return;
    }
    FrameNotation::findDigitFields(name, m_fields);
    std::size_t const best = chooseField(front, name);
    Span const field = m_fields[best];
    if (m_index.count(front, best, field) == 1) {
        addSingle(front);
        return;
    }
    bool const wantsMembers = m_results.wantsMembers();
    m_members.clear();
    std::size_t const width = m_index.claimAll(front, best, field, wantsMembers ? &m_members : nullptr);
    for (Index const member : m_members) {
        std::size_t const around = name.size() - field.length;
        m_results.addMember(member, {field.position, m_index.name(member).size() - around});
    }
    addSequence(name.substr(0, field.position), width, name.substr(field.end()));
}

// Runs are only looked at where they decide: a field that finds fewer names than the best never wins by its
// run.
std::size_t SequenceDetector::chooseField(Index front, std::string_view name) {
    std::size_t best = m_fields.size() - 1;
    std::size_t bestCount = m_index.count(front, best, m_fields[best]);
    bool bestIsDotted = isDotted(name, m_fields[best]);
    for (std::size_t field = best; field-- > 0;) {
        Span const& span = m_fields[field];
        std::size_t const count = m_index.count(front, field, span);
        bool const fieldIsDotted = isDotted(name, span);
        bool const isMore = count > bestCount && m_index.hasRun(front, field, m_index.run(front, best));
        if (isMore || (count == bestCount && fieldIsDotted && !bestIsDotted)) {
            best = field;
            bestCount = count;
            bestIsDotted = fieldIsDotted;
        }
    }
    return best;
}

// The general case, step by step.
void SequenceDetector::examineEscaping(Index front, std::string_view name) {
    std::string const escaped = escape(name);
    std::string const allFields = allFieldsPattern(escaped);
    if (allFields == escaped) {
        addSingle(front);
        return;
    }
    if (GuardedRegex::isWild(allFields) && !RoomyStack::isHere()) {
        // Once for all names that the patterns are tried on.
        if (!RoomyStack::run([&] { examineEscaping(front, name); })) {
            throw std::regex_error(std::regex_constants::error_stack);
        }
        return;
    }
    FrameNotation::findDigitFields(name, m_fields);
    std::vector<Span> captures;
    {
        std::unique_ptr<Pattern> const pattern = m_compiler(anchored(allFields));
        if (!pattern->match(name, captures) || pattern->captureCount() != m_fields.size()) {
            addSingle(front);
            return;
        }
    }
    m_fields = captures;
    std::string const candidate = chooseCandidate(name);
    std::unique_ptr<Pattern> const pattern = m_compiler(anchored(candidate));
    if (!pattern->match(name, captures)) {
        addSingle(front);
        return;
    }
    std::size_t narrowest = 0;
    if (claim(*pattern, narrowest) == 1) {
        m_results.addText(FrameNotation::withoutBackslashes(name));
        return;
    }
    std::size_t const group = candidate.find(FRAME_GROUP);
    addSequence(std::string_view(candidate).substr(0, group), narrowest,
                std::string_view(candidate).substr(group + FRAME_GROUP.size()));
}

std::string SequenceDetector::chooseCandidate(std::string_view name) {
    std::string best;
    std::size_t bestCount = 0;
    int bestRun = 0;
    bool bestIsDotted = false;
    std::vector<Span> captures;
    std::vector<std::int32_t> frames;
    for (auto field = m_fields.rbegin(); field != m_fields.rend(); ++field) {
        std::string const candidate = escape(name.substr(0, field->position)) + std::string(FRAME_GROUP) +
                                      escape(name.substr(field->end()));
        std::unique_ptr<Pattern> const pattern = m_compiler(anchored(candidate));
        frames.clear();
        for (Index index = m_front; index < m_index.size(); ++index) {
            if (!m_index.isClaimed(index) && pattern->match(m_index.name(index), captures)) {
                Span const frame = captures.empty() ? Span{0, 0} : captures.front();
                frames.push_back(
                    FrameNotation::frameOf(m_index.name(index).substr(frame.position, frame.length)));
            }
        }
        std::size_t const count = frames.size();
        bool areDistinct = false;
        int const run = FrameRuns::longest(frames, areDistinct);
        bool const fieldIsDotted = isDotted(name, *field);
        if ((count > bestCount && run >= bestRun) || (!bestIsDotted && fieldIsDotted && count == bestCount)) {
            best = candidate;
            bestCount = count;
            bestRun = run;
            bestIsDotted = fieldIsDotted;
        }
    }
    return best;
}

// Takes out all names that the pattern matches, and tells how many they are and how narrow their frames.
std::size_t SequenceDetector::claim(Pattern& pattern, std::size_t& narrowest) {
    std::size_t count = 0;
    std::vector<Span> captures;
    for (Index index = m_front; index < m_index.size(); ++index) {
        if (!m_index.isClaimed(index) && pattern.match(m_index.name(index), captures)) {
            std::size_t const width = captures.empty() ? 0 : captures.front().length;
            narrowest = count == 0 ? width : std::min(narrowest, width);
            ++count;
            m_index.claim(index);
            if (m_results.wantsMembers()) {
                m_results.addMember(index, captures.empty() ? Span{0, 0} : captures.front());
            }
        }
    }
    return count;
}

void SequenceDetector::addSingle(Index index) {
    std::string_view const name = m_index.name(index);
    if (name.find(ESCAPE) == std::string_view::npos) {
        m_results.addName(index, name);
    } else {
        m_results.addText(FrameNotation::withoutBackslashes(name));
    }
    m_index.claim(index);
}

void SequenceDetector::addSequence(std::string_view before, std::size_t width, std::string_view after) {
    std::string text;
    text.reserve(before.size() + after.size() + 8);
    text += before;
    text += FrameNotation::frameSymbol(width);
    text += after;
    text.erase(std::remove(text.begin(), text.end(), ESCAPE), text.end());
    m_results.addText(text);
}

} // namespace ORL_0_81
