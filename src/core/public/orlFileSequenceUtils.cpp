// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "orlFileSequenceUtils.h"

#include "internal/orlFrameNotation.h"
#include "internal/orlSequenceDetection.h"
#include "internal/orlUtf8.h"

#include <algorithm>
#include <filesystem>
#include <regex>
#include <string>
#include <string_view>
#include <system_error>
#include <utility>
#include <vector>

namespace ORL_0_81 {

namespace {

namespace fs = std::filesystem;

std::string_view view(String const& text) { return {text.data(), text.size()}; }

String toString(std::string_view text) { return {text.data(), text.size()}; }

// The system would read a path only up to its first NUL.
bool isPath(std::string_view path) { return path.find('\0') == std::string_view::npos; }

// Names come in the order of the list, so one walk through it meets them all.
class ListResults : public SequenceDetector::Results {
public:
    ListResults(List<String> const& names, Vector<String>& sequences)
        : m_name(names.begin()), m_sequences(sequences) {}

    void addName(std::size_t index, std::string_view) override {
        for (; m_index < index; ++m_index) {
            ++m_name;
        }
        m_sequences.push_back(*m_name);
    }
    void addText(std::string const& text) override { m_sequences.push_back(toString(text)); }

private:
    List<String>::Iterator m_name;
    std::size_t m_index = 0; // of that name
    Vector<String>& m_sequences;
};

class DirectoryResults : public SequenceDetector::Results {
public:
    explicit DirectoryResults(Vector<String>& sequences) : m_sequences(sequences) {}

    void addName(std::size_t, std::string_view name) override { m_sequences.push_back(toString(name)); }
    void addText(std::string const& text) override { m_sequences.push_back(toString(text)); }

private:
    Vector<String>& m_sequences;
};

Status detect(CandidateIndex::Names names, String const& filter, SequenceDetector::Results& results) {
    if (names.isEmpty()) {
        return Status::kNoFilenamesFound;
    }
    try {
        detectSequences(std::move(names), view(filter), results);
    } catch (std::regex_error const&) {
        return Status::kRegexException;
    }
    return Status::kSuccess;
}

// What the work leaves in the output when it throws is not all of it.
template <class Work>
Status allOrNothing(Vector<String>& sequences, Work const& work) {
    sequences.clear();
    try {
        return work();
    } catch (...) {
        sequences.clear();
        throw;
    }
}

} // namespace

Status FileSequenceUtils::isSequenceName(String const& name, bool& result) {
    result = FrameNotation::findFrameSymbol(view(name)).length > 0;
    return Status::kSuccess;
}

Status FileSequenceUtils::removeFrameSymbols(String const& name, String& result) {
    std::string_view const text = view(name);
    std::string rest;
    std::size_t position = 0;
    while (position < text.size()) {
        FrameNotation::Span const symbol = FrameNotation::findFrameSymbol(text, position);
        rest += text.substr(position, symbol.position - position);
        position = symbol.end();
    }
    rest.erase(std::remove(rest.begin(), rest.end(), '\\'), rest.end());

    std::string tidied;
    for (std::size_t i = 0; i < rest.size(); ++i) {
        tidied += rest[i];
        if (rest[i] == '.' && i + 1 < rest.size() && rest[i + 1] == '.') {
            ++i;
        }
    }
    std::string_view stripped = tidied;
    if (!stripped.empty() && stripped.front() == '.') {
        stripped.remove_prefix(1);
    }
    if (!stripped.empty() && stripped.back() == '.') {
        stripped.remove_suffix(1);
    }
    result = toString(stripped);
    return Status::kSuccess;
}

Status FileSequenceUtils::getSequenceName(String const& path, String& name) {
    String const given(path); // NOLINT(performance-unnecessary-copy-initialization): may be `name` itself
    name.clear();
    std::string const normalized = normalizeToNfd(std::string(view(given)));
    std::error_code error;
    if (!isPath(normalized) || !fs::is_regular_file(fs::path(normalized), error)) {
        return Status::kFileNotFound;
    }
    std::string const fileName = fs::path(normalized).filename().string();
    Vector<String> sequences;
    Status const status =
        getSequencesInDirectory(toString(fs::path(normalized).parent_path().string()), sequences, ".*");
    if (!status) {
        return status;
    }
    for (unsigned long i = 0; i < sequences.size(); ++i) {
        std::string_view const entry = view(sequences[i]);
        if (entry == fileName || FrameNotation::matchesSequenceName(fileName, entry)) {
            name = sequences[i];
            return Status::kSuccess;
        }
    }
    return Status::kNoSuitableSequenceNameFound;
}

Status FileSequenceUtils::getSequencesInFileList(List<String> const& names, Vector<String>& sequences,
                                                 String const& filter) {
    return allOrNothing(sequences, [&] {
        CandidateIndex::Names views;
        views.reserve(names.size());
        List<String>::Iterator const end = names.end();
        for (List<String>::Iterator name = names.begin(); name != end; ++name) {
            views.append(view(*name));
        }
        ListResults results(names, sequences);
        return detect(std::move(views), filter, results);
    });
}

Status FileSequenceUtils::getSequencesInDirectory(String const& path, Vector<String>& sequences,
                                                  String const& filter) {
    return allOrNothing(sequences, [&]() -> Status {
        std::error_code error;
        if (!isPath(view(path)) || !fs::is_directory(fs::path(view(path)), error)) {
            return Status::kDirectoryNotFound;
        }
        DirectoryNames const names(std::string(view(path)));
        DirectoryResults results(sequences);
        return detect(names.names(), filter, results);
    });
}

} // namespace ORL_0_81
