// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#ifndef ORL_MEDIA_READING_H
#define ORL_MEDIA_READING_H

#include "internal/orlMediaDescription.h"
#include "internal/orlMediaLocation.h"

#include <orlRational.h>
#include <orlStatus.h>

#include <string>

namespace ORL_0_81::media {

/// What may be read, and for how long.
struct ReadingOptions {
    ProtocolList allowed;    ///< Beside local files.
    double timeLimit = 10.0; ///< In seconds.
};

/// Describes the medium of that path, URL or sequence name.
///
/// \param rate The rate of media that have none; 24/1 stands in for one that is none.
/// \param description Complete only if the result is kSuccess.
/// \returns what FFmpegMediaMetadataReader tells.
Status describeMedium(std::string const& text, ReadingOptions const& options, Rational const& rate,
                      MediaDescription& description);

} // namespace ORL_0_81::media

#endif // ORL_MEDIA_READING_H
