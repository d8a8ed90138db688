// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#ifndef ORL_OPEN_MEDIUM_H
#define ORL_OPEN_MEDIUM_H

#include "internal/orlFFmpegHandles.h"
#include "internal/orlMediaInputs.h"
#include "internal/orlMediaLocation.h"
#include "internal/orlReadLimits.h"

#include <orlStatus.h>

#include <cstdint>
#include <string>

namespace ORL_0_81::media {

/// One medium that FFmpeg has open and knows the streams of.
class OpenMedium {
public:
    /// Both must outlive the object.
    OpenMedium(ProtocolList const& allowed, ReadLimits& limits);

    OpenMedium(OpenMedium const&) = delete;
    OpenMedium& operator=(OpenMedium const&) = delete;
    ~OpenMedium();

    /// Opens the medium and learns about its streams, as far as its format tells. Called once.
    Status open(MediaLocation const& location, std::string const& text);

    /// Decodes what it takes to know the streams, where their format does not tell. Called after open().
    Status findStreamParameters();

    AVFormatContext& format() const { return *m_format; }
    ReadLimits& limits() const { return m_limits; }

    /// In bytes; -1 where nobody knows it.
    std::int64_t fileSize() const { return m_fileSize; }

    /// The bytes that the medium begins with, for what FFmpeg does not tell of an OpenEXR file. Empty for any
    /// other format.
    std::string const& exrBytes() const { return m_exrBytes; }

    /// One image, not a movie of one frame.
    bool isStillImage() const;

    /// True once there was no memory to open something, so that what is known of the medium may be wrong.
    bool hasLackedMemory() const { return m_inputs.hasLackedMemory(); }

    /// The status for a medium that was opened and makes no sense: where the format was hardly recognised it
    /// is of another one.
    Status statusOfNonsense() const;

    /// The status of a failure that FFmpeg gives a code for.
    Status statusOf(int error) const;

private:
    Status recognise(AVIOContext& context, std::string const& url);
    Status recogniseByName(std::string const& url);
    void readExrBytes(AVIOContext& context);

    ReadLimits& m_limits;
    MediaInputs m_inputs;
    FormatHandle m_format; // closed before the inputs are
    AVInputFormat const* m_inputFormat = nullptr;
    int m_score = 0;
    std::int64_t m_fileSize = -1;
    std::string m_exrBytes;
};

} // namespace ORL_0_81::media

#endif // ORL_OPEN_MEDIUM_H
