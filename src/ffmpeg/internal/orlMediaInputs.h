// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#ifndef ORL_MEDIA_INPUTS_H
#define ORL_MEDIA_INPUTS_H

#include "internal/orlLocalInput.h"
#include "internal/orlMediaLocation.h"
#include "internal/orlReadLimits.h"

extern "C" {
#include <libavformat/avformat.h>
}

#include <memory>
#include <string>
#include <vector>

namespace ORL_0_81::media {

/// Every file and connection that one medium needs: itself, and what it refers to.
///
/// FFmpeg's formats are made to open through this object, which decides what they may. Those few that open by
/// themselves are given a whitelist of protocols without local files.
class MediaInputs {
public:
    /// \param allowed The protocols beside local files.
    MediaInputs(ProtocolList const& allowed, ReadLimits& limits);

    MediaInputs(MediaInputs const&) = delete;
    MediaInputs& operator=(MediaInputs const&) = delete;

    /// Closes what is still open. The format must have been closed before.
    ~MediaInputs();

    /// Makes a fresh format context open through this object. False if there is no memory.
    bool attachTo(AVFormatContext& format);

    /// Opens the medium itself, for the format that this object is attached to.
    ///
    /// \param context Receives what is to be read. Owned by this object.
    /// \param url Receives what the medium is called among FFmpeg's formats.
    /// \returns 0, or FFmpeg's code of a failure.
    int open(MediaLocation const& location, std::string const& text, AVFormatContext& format,
             AVIOContext*& context, std::string& url);

    /// True once something that the medium refers to was not allowed. Formats may hide that.
    bool hasRefused() const { return m_hasRefused; }

    /// True once there was no memory to open something. FFmpeg may have gone on without it.
    bool hasLackedMemory() const { return m_hasLackedMemory; }

private:
    static int openReferenced(AVFormatContext* format, AVIOContext** context, char const* url, int flags,
                              AVDictionary** options);
    static int closeInput(AVFormatContext* format, AVIOContext* context);
    static int isInterrupted(void* opaque);

    int openLocal(std::string const& path, AVIOContext*& context);
    int openRemote(AVFormatContext& format, char const* url, int flags, AVDictionary** options,
                   AVIOContext*& context);
    int openReferenced(AVFormatContext& format, char const* url, int flags, AVDictionary** options,
                       AVIOContext*& context);
    int close(AVIOContext* context);

    using OpenFunction = int (*)(AVFormatContext*, AVIOContext**, char const*, int, AVDictionary**);

    ProtocolList const& m_allowed;
    ReadLimits& m_limits;
    OpenFunction m_openAsFFmpeg = nullptr;
    std::vector<std::unique_ptr<LocalInput>> m_localInputs;
    bool m_hasRefused = false;
    bool m_hasLackedMemory = false;
    AVIOContext* m_remoteMedium = nullptr; // owned; what the medium refers to is closed by its format
};

} // namespace ORL_0_81::media

#endif // ORL_MEDIA_INPUTS_H
