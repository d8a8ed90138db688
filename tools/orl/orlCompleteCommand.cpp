// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "orlCompleteCommand.h"

#include "internal/orlServiceRegistry.h"
#include "orlDocumentFile.h"
#include "orlLossReport.h"
#include "orlPrintable.h"
#include "orlProgress.h"
#include "orlStatusWords.h"
#include "orlTimelineDocument.h"

#include <map>
#include <mutex>
#include <ostream>
#include <utility>

namespace ORL_0_81::tool {

namespace {

// Stands before a reader for as long as it lives, and takes note of what cannot be read.
class WatchingReader : public MediaMetadataReader {
public:
    WatchingReader(SharedPtr<MediaMetadataReader> reader, Progress& progress)
        : m_reader(std::move(reader)), m_progress(progress) {}

    Status readMediaMetadata(String const& path, Bounds const& bounds, Time const& time,
                             String& metadata) override {
        Status const status = m_reader->readMediaMetadata(path, bounds, time, metadata);
        if (!status) {
            std::lock_guard<std::mutex> const lock(m_mutex);
            ++m_failures[{path.c_str(), reasonOf(status)}];
        }
        m_progress.advance();
        return status;
    }

    // By path and reason. To be asked when no read is under way.
    std::map<std::pair<std::string, std::string>, std::size_t> const& failures() const { return m_failures; }

private:
    SharedPtr<MediaMetadataReader> m_reader;
    Progress& m_progress;
    std::mutex m_mutex;
    std::map<std::pair<std::string, std::string>, std::size_t> m_failures;
};

// Lets the reader that was registered before, if any, be so again in the end.
class RegisteredReader {
public:
    RegisteredReader() = default;
    ~RegisteredReader() {
        if (m_reader) {
            registerAgain(*m_reader, Service::kMediaMetadataReaderService);
        }
    }
    RegisteredReader(RegisteredReader const&) = delete;
    RegisteredReader& operator=(RegisteredReader const&) = delete;

private:
    SharedPtr<MediaMetadataReader> const m_reader = MediaMetadata::getMediaMetadataReader();
};

void print(WatchingReader const& reader, std::string const& file, Streams const& streams) {
    if (reader.failures().empty()) {
        return;
    }
    streams.error << streams.errorStyle.warning("orl:") << ' ' << inQuotes(file) << ": not read:\n";
    for (auto const& [failure, times] : reader.failures()) {
        streams.error << "  " << inQuotes(failure.first) << ": " << failure.second
                      << (times > 1 ? " (" + std::to_string(times) + " times)" : "") << '\n';
    }
}

} // namespace

void CompleteCommand::run(Streams const& streams) const {
    std::string const text = readDocument(file, streams.in);
    {
        TimelineDocument const document(file, text);
        if (!document.timeline()) {
            throw InputError(file, "holds no timeline");
        }
        if (!isQuiet) {
            tellUnconvertedClips(file, document, streams);
        }
    }

    RegisteredReader const before;
    SharedPtr<MediaMetadataReader> const reader = openReader(file);
    SharedPtr<WatchingReader> watching;
    String completed;
    {
        // How many reads it takes shows only when a source fails.
        Progress progress(streams, "media read", 0);
        watching.reset(new WatchingReader(reader, progress));
        Status const status = MediaMetadata::sanitizeOTIOMetadata(
            String(withoutByteOrderMark(text).c_str()), completed, request.canvas(), request.time());
        if (!status) {
            throw InputError(file, reasonOf(status));
        }
    }

    if (!isQuiet) {
        print(*watching, file, streams);
    }
    if (isStrict && !watching->failures().empty()) {
        throw InputError(file, std::to_string(watching->failures().size()) +
                                   (watching->failures().size() == 1 ? " medium" : " media") +
                                   " could not be read");
    }
    writeOutput(output, std::string(completed.c_str()) + '\n', streams.out);
}

} // namespace ORL_0_81::tool
