// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "orlLayoutCommand.h"

#include "orlDocumentFile.h"
#include "orlLayoutPicture.h"
#include "orlLossReport.h"
#include "orlStatusWords.h"
#include "orlTimelineDocument.h"

#include <algorithm>
#include <cctype>
#include <iterator>

namespace ORL_0_81::tool {

namespace {

bool endsWithInAnyCase(std::string const& text, std::string const& lowerCaseEnd) {
    return text.size() >= lowerCaseEnd.size() &&
           std::equal(lowerCaseEnd.rbegin(), lowerCaseEnd.rend(), text.rbegin(), [](char wanted, char c) {
               return wanted == std::tolower(static_cast<unsigned char>(c));
           });
}

// The text of a document that the library will take.
std::string readTimeline(std::string const& file, Streams const& streams) {
    std::string const text = readDocument(file, streams.in);
    TimelineDocument const document(file, text);
    if (!document.timeline()) {
        throw InputError(file, "holds no timeline");
    }
    tellUnconvertedClips(file, document, streams);
    return withoutByteOrderMark(text);
}

// The documents of all paths, in their order.
class Gathering {
public:
    Gathering(LayoutCommand const& command, Streams const& streams,
              std::function<void(InputError const&)> const& tell)
        : m_streams(streams), m_tell(tell) {
        std::vector<std::string> media;
        std::remove_copy_if(command.paths.begin(), command.paths.end(), std::back_inserter(media),
                            isDocumentName);
        std::vector<MediaReading> const readings = readMedia(media, command.request, streams);

        auto reading = readings.begin();
        for (std::string const& path : command.paths) {
            if (isDocumentName(path)) {
                addDocument(path);
            } else {
                addMedium(path, *reading++);
            }
        }
    }

    Vector<String> documents;
    bool isComplete = true; ///< nothing was at fault
    bool isUsable = true;   ///< nothing was at fault but media that cannot be opened

private:
    void addDocument(std::string const& path) {
        try {
            documents.push_back(String(readTimeline(path, m_streams).c_str()));
        } catch (InputError const& error) {
            m_tell(error);
            isComplete = isUsable = false;
        }
    }

    void addMedium(std::string const& path, MediaReading const& reading) {
        if (reading.status) {
            documents.push_back(String(reading.metadata.c_str()));
            return;
        }
        bool const isLeftOut = reading.status == Status::kErrorOpeningMediaFile;
        m_tell(InputError(path, reasonOf(reading.status) + (isLeftOut ? "; left out" : "")));
        isComplete = false;
        isUsable = isUsable && isLeftOut;
    }

    Streams const& m_streams;
    std::function<void(InputError const&)> const& m_tell;
};

} // namespace

bool isDocumentName(std::string const& path) {
    return path == kStandardStream || endsWithInAnyCase(path, ".otio") || endsWithInAnyCase(path, ".json");
}

bool LayoutCommand::run(Streams const& streams, std::function<void(InputError const&)> const& tell) const {
    Gathering const gathering(*this, streams, tell);
    if (!gathering.isUsable || gathering.documents.empty()) {
        return false;
    }
    String layout;
    Status const status = MediaMetadata::getLayoutFromOTIOs(gathering.documents, MediaMetadata::kGrid,
                                                            String(name.c_str()), request.canvas(), layout);
    if (!status) {
        throw InputError(paths.front(), reasonOf(status));
    }
    if (!picture.empty()) {
        writeDocument(picture, drawLayout(layout.c_str(), request.canvas()));
    }
    writeOutput(output, std::string(layout.c_str()) + '\n', streams.out);
    return gathering.isComplete;
}

} // namespace ORL_0_81::tool
