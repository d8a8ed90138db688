// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "support/orlSlowSequences.h"

#include "support/orlLongestRun.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <iterator>
#include <list>
#include <regex>

namespace orlTest {

using ORL_0_81::Status;

namespace {

std::regex const DIGIT_REGEX(R"((^|\D)-\d{1,9}|\d{1,9})");
std::regex const TIME_RANGE_REGEX(R"((%[0-9]*d))");
std::regex const SPECIAL_CHARS_REGEX(R"([\.\(\)\[\]\?\*\+\^\|\$\{\}])");
std::regex const ESCAPE_CHARACTER_REGEX(R"(\\)");
std::regex const DOUBLE_DOTS_REGEX(R"(\.\.)");
std::regex const DATE_PATTERN_REGEX(R"(\d{4}\D\d{2}\D\d{2}\D{1,9}\d{2}\D\d{2}\D\d{2})");

std::string const FRAME_GROUP = "(-?[0-9]{1,9})";

using Names = std::list<std::string>;

std::string escapeRegexConflicts(std::string const& name) {
    return std::regex_replace(name, SPECIAL_CHARS_REGEX, R"(\$&)");
}

std::regex wholeName(std::string const& pattern) { return std::regex("^" + pattern + "$"); }

// One digit field of a name.
struct Field {
    std::size_t position;
    std::size_t length;
};

// The field that is taken for the frame, and by what it won.
struct Choice {
    std::string pattern;
    std::size_t count = 0;
    std::int32_t run = 0;
    bool dot = false;
};

Choice tryField(std::string const& name, Field const& field, Names const& working) {
    Choice candidate;
    candidate.dot = field.position > 0 && name[field.position - 1] == '.';
    candidate.pattern = escapeRegexConflicts(name.substr(0, field.position)) + FRAME_GROUP +
                        escapeRegexConflicts(name.substr(field.position + field.length));
    std::regex const expression = wholeName(candidate.pattern);

    std::vector<std::int32_t> frames;
    for (std::string const& other : working) {
        std::smatch match;
        if (std::regex_match(other, match, expression)) {
            frames.push_back(static_cast<std::int32_t>(std::strtol(match[1].str().c_str(), nullptr, 10)));
        }
    }
    candidate.count = frames.size();
    std::sort(frames.begin(), frames.end());
    candidate.run = longestRun(frames);
    return candidate;
}

Choice chooseField(std::string const& name, std::vector<Field> const& fields, Names const& working) {
    Choice best;
    for (auto field = fields.rbegin(); field != fields.rend(); ++field) {
        Choice const candidate = tryField(name, *field, working);
        bool const findsMore = candidate.count > best.count && candidate.run >= best.run;
        bool const hasTheDot = !best.dot && candidate.dot && candidate.count == best.count;
        if (findsMore || hasTheDot) {
            best = candidate;
        }
    }
    return best;
}

// The result of the name at the front, which leaves the list with all that it claims. An expression that
// fails leaves the list as it is then.
void takeTurn(Names& working, std::regex const& filter, std::vector<std::string>& sequences) {
    std::string const name = working.front();
    auto const single = [&] {
        sequences.push_back(name);
        working.pop_front();
    };

    if (name.empty() || !std::regex_search(name, filter)) {
        working.pop_front();
        return;
    }
    if (std::regex_search(name, DATE_PATTERN_REGEX)) {
        return single();
    }

    std::string const escaped = escapeRegexConflicts(name);
    std::string const allFields = std::regex_replace(escaped, DIGIT_REGEX, "$1" + FRAME_GROUP);
    if (allFields == escaped) {
        return single();
    }

    std::regex const ownExpression = wholeName(allFields);
    std::smatch ownMatch;
    if (!std::regex_match(name, ownMatch, ownExpression)) {
        return single();
    }
    std::ptrdiff_t const digitFields = std::distance(
        std::sregex_iterator(escaped.begin(), escaped.end(), DIGIT_REGEX), std::sregex_iterator());
    if (ownMatch.size() != static_cast<std::size_t>(digitFields) + 1) {
        return single();
    }
    std::vector<Field> fields;
    for (std::size_t i = 1; i < ownMatch.size(); ++i) {
        fields.push_back(
            {static_cast<std::size_t>(ownMatch.position(i)), static_cast<std::size_t>(ownMatch.length(i))});
    }

    Choice const best = chooseField(name, fields, working);
    std::regex const family = wholeName(best.pattern);
    if (best.pattern.empty() || !std::regex_match(name, family)) {
        return single();
    }

    std::vector<std::int64_t> widths;
    for (auto other = working.begin(); other != working.end();) {
        std::smatch match;
        if (std::regex_match(*other, match, family)) {
            widths.push_back(match.length(1));
            other = working.erase(other);
        } else {
            ++other;
        }
    }
    if (widths.size() == 1) {
        sequences.push_back(name);
        return;
    }
    std::string result = best.pattern;
    result.replace(result.find(FRAME_GROUP), FRAME_GROUP.size(),
                   "%0" + std::to_string(*std::min_element(widths.begin(), widths.end())) + "d");
    sequences.push_back(result);
}

} // namespace

Status SlowSequences::isSequenceName(std::string const& name, bool& result) {
    try {
        result = std::regex_search(escapeRegexConflicts(name), TIME_RANGE_REGEX);
    } catch (std::regex_error const&) {
        return Status::kRegexException;
    }
    return Status::kSuccess;
}

Status SlowSequences::removeFrameSymbols(std::string const& name, std::string& result) {
    if (name.empty()) {
        result = name;
        return Status::kSuccess;
    }
    try {
        std::string text = escapeRegexConflicts(name);
        text = std::regex_replace(text, TIME_RANGE_REGEX, "");
        text = std::regex_replace(text, ESCAPE_CHARACTER_REGEX, "");
        text = std::regex_replace(text, DOUBLE_DOTS_REGEX, ".");
        result = text;
    } catch (std::regex_error const&) {
        return Status::kRegexException;
    }
    if (!result.empty()) {
        if (result.front() == '.') {
            result.erase(0, 1);
        }
        if (!result.empty() && result.back() == '.') {
            result.pop_back();
        }
    }
    return Status::kSuccess;
}

Status SlowSequences::getSequencesInFileList(std::vector<std::string> const& names,
                                             std::vector<std::string>& sequences, std::string const& filter) {
    sequences.clear();
    if (names.empty()) {
        return Status::kNoFilenamesFound;
    }
    Names working(names.begin(), names.end());

    std::regex filterExpression;
    try {
        filterExpression.assign(filter);
    } catch (std::regex_error const&) {
        return Status::kRegexException;
    }

    while (!working.empty()) {
        try {
            takeTurn(working, filterExpression, sequences);
        } catch (std::regex_error const&) {
            if (!working.empty()) {
                working.pop_front(); // whichever name stands there now
            }
        }
    }

    try {
        for (std::string& sequence : sequences) {
            sequence = std::regex_replace(sequence, ESCAPE_CHARACTER_REGEX, "");
        }
    } catch (std::regex_error const&) {
        return Status::kRegexException;
    }
    return Status::kSuccess;
}

Status SlowSequences::getSequenceName(std::string const& fileName, std::vector<std::string> const& directory,
                                      std::string& name) {
    name.clear();
    std::vector<std::string> sequences;
    Status const listed = getSequencesInFileList(directory, sequences, ".*");
    if (!listed.success()) {
        return listed;
    }
    for (std::string const& entry : sequences) {
        if (entry == fileName) {
            name = entry;
            return Status::kSuccess;
        }
        try {
            std::string const escaped = escapeRegexConflicts(entry);
            if (!std::regex_search(escaped, TIME_RANGE_REGEX)) {
                continue;
            }
            std::string const pattern = std::regex_replace(escaped, TIME_RANGE_REGEX, FRAME_GROUP,
                                                           std::regex_constants::format_first_only);
            if (std::regex_match(fileName, wholeName(pattern))) {
                name = entry;
                return Status::kSuccess;
            }
        } catch (std::regex_error const&) {
            continue;
        }
    }
    return Status::kNoSuitableSequenceNameFound;
}

} // namespace orlTest
