// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "orlSequencesCommand.h"

#include "internal/orlSequenceDetection.h"
#include "orlDocumentFile.h"
#include "orlStatusWords.h"

#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

#include <algorithm>
#include <filesystem>
#include <regex>
#include <system_error>

namespace ORL_0_81::tool {

namespace {

namespace fs = std::filesystem;

// The way from the top to a directory, with a slash behind it; empty for the top itself.
std::string folderOf(fs::path const& directory, fs::path const& top) {
    std::string const way = directory.lexically_relative(top).string();
    return way.empty() || way == "." ? "" : way + '/';
}

std::string rangeText(std::int32_t first, std::int32_t last) {
    return first == last ? std::to_string(first) : std::to_string(first) + '-' + std::to_string(last);
}

// Whether the system says that there is such a directory; a link to one counts.
bool isDirectory(std::string const& path) {
    std::error_code error;
    return fs::is_directory(fs::path(path), error);
}

class Listing {
public:
    Listing(SequencesCommand const& command, Streams const& streams)
        : m_command(command), m_streams(streams) {}

    void listNames(std::string const& text) const {
        char const separator = m_command.isNulSeparated ? '\0' : '\n';
        std::vector<std::string_view> names;
        std::string_view rest = text;
        while (!rest.empty()) {
            std::size_t const end = std::min(rest.find(separator), rest.size());
            names.push_back(rest.substr(0, end));
            rest.remove_prefix(std::min(end + 1, rest.size()));
        }
        write("", names);
    }

    void listDirectory(DirectoryNames const& names, std::string const& folder) const {
        write(folder, names.views());
    }

private:
    void write(std::string const& folder, std::vector<std::string_view> const& names) const {
        std::vector<FoundSequence> found;
        try {
            found = findSequences(names, m_command.filter);
        } catch (std::regex_error const& error) {
            throw InputError(m_command.filter, reasonOf(Status::kRegexException) + " (" + error.what() + ")");
        }
        std::string text;
        for (FoundSequence const& sequence : found) {
            switch (m_command.form) {
            case SequencesCommand::Form::kPlain:
                text += folder + sequence.name;
                break;
            case SequencesCommand::Form::kJson:
                text += toSequenceJson(folder, sequence);
                break;
            default:
                text += toSequenceText(folder, sequence, m_streams.outStyle);
            }
            bool const isNulEnded =
                m_command.isNulSeparated && m_command.form == SequencesCommand::Form::kPlain;
            text += isNulEnded ? '\0' : '\n';
        }
        writeToStream(m_streams.out, text);
    }

    SequencesCommand const& m_command;
    Streams const& m_streams;
};

// \throws InputError
DirectoryNames readDirectory(std::string const& path) {
    try {
        return DirectoryNames(path);
    } catch (fs::filesystem_error const& error) {
        throw InputError(path, error.code().message());
    }
}

// All directories below, in the order of their names; what a link leads to is not below.
std::vector<fs::path> directoriesBelow(fs::path const& path, std::vector<InputError>& faults) {
    std::vector<fs::path> directories;
    std::error_code error;
    for (fs::directory_iterator entry(path, error); !error && entry != fs::directory_iterator();
         entry.increment(error)) {
        std::error_code ignored;
        if (fs::is_directory(entry->symlink_status(ignored))) {
            directories.push_back(entry->path());
        }
    }
    if (error) {
        faults.emplace_back(path.string(), error.message());
    }
    std::sort(directories.begin(), directories.end());
    return directories;
}

} // namespace

std::string toSequenceText(std::string const& folder, FoundSequence const& found,
                           TerminalStyle const& style) {
    std::string text = folder + found.name;
    if (!found.isSequence()) {
        return text;
    }
    text += "  " + rangeText(found.frames.front(), found.frames.back()) + " (" +
            std::to_string(found.frames.size());
    constexpr std::size_t kMaxRanges = 20;
    auto const missing = found.missing();
    std::string ranges;
    for (std::size_t i = 0; i < std::min(missing.size(), kMaxRanges); ++i) {
        ranges += (i == 0 ? "missing " : ", ") + rangeText(missing[i].first, missing[i].second);
    }
    if (missing.size() > kMaxRanges) {
        ranges += " and " + std::to_string(missing.size() - kMaxRanges) + " more";
    }
    return text + (ranges.empty() ? ")" : ", " + style.warning(ranges) + ')');
}

std::string toSequenceJson(std::string const& folder, FoundSequence const& found) {
    rapidjson::StringBuffer buffer;
    rapidjson::Writer<rapidjson::StringBuffer> writer(buffer);
    auto text = [&writer](std::string const& value) {
        writer.String(value.data(), static_cast<rapidjson::SizeType>(value.size()));
    };
    writer.StartObject();
    if (!folder.empty()) {
        writer.Key("directory");
        text(folder.substr(0, folder.size() - 1));
    }
    writer.Key("name");
    text(found.name);
    if (found.isSequence()) {
        writer.Key("first");
        writer.Int(found.frames.front());
        writer.Key("last");
        writer.Int(found.frames.back());
        writer.Key("count");
        writer.Uint64(found.frames.size());
        writer.Key("missing");
        writer.StartArray();
        for (auto const& [first, last] : found.missing()) {
            writer.StartArray();
            writer.Int(first);
            writer.Int(last);
            writer.EndArray();
        }
        writer.EndArray();
    }
    writer.EndObject();
    return {buffer.GetString(), buffer.GetSize()};
}

bool SequencesCommand::run(Streams const& streams, std::function<void(InputError const&)> const& tell) const {
    Listing const listing(*this, streams);
    if (directory == kStandardStream) {
        listing.listNames(readDocument(directory, streams.in));
        return true;
    }
    if (!isDirectory(directory)) {
        throw InputError(directory, reasonOf(Status::kDirectoryNotFound));
    }
    listing.listDirectory(readDirectory(directory), "");
    if (!isRecursive) {
        return true;
    }

    std::vector<InputError> faults;
    std::vector<fs::path> open = directoriesBelow(directory, faults);
    std::reverse(open.begin(), open.end());
    while (!open.empty()) {
        fs::path const next = open.back();
        open.pop_back();
        std::size_t const known = faults.size();
        std::vector<fs::path> const below = directoriesBelow(next, faults);
        DirectoryNames names;
        // What cannot be listed is told once.
        if (faults.size() == known) {
            try {
                names = readDirectory(next.string());
            } catch (InputError const& error) {
                faults.push_back(error);
            }
        }
        listing.listDirectory(names, folderOf(next, directory));
        open.insert(open.end(), below.rbegin(), below.rend());
    }
    for (InputError const& fault : faults) {
        tell(fault);
    }
    return faults.empty();
}

} // namespace ORL_0_81::tool
