// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#ifndef ORL_DIALECT_CONVERSION_H
#define ORL_DIALECT_CONVERSION_H

#include <string>

namespace ORL_0_81::tool {

class LossReport;

/// Turns a document of newer writers into the dialect that the library reads.
///
/// Clips of the schema "Clip.2", wherever a timeline, a stack, a track or a collection has them, become
/// "Clip.1": of their "media_references" the one that "active_media_reference_key" names (without a key, the
/// one with the default name) becomes the "media_reference", as it was written. The active reference of a
/// clip of either version that names an image sequence by its parts gets a "target_url" as well, unless it
/// has one. All else stays byte for byte; so a document that is in the dialect comes out as it went in.
///
/// What only looks like a clip, within metadata, is none of the timeline's and stays.
///
/// \param text Must have been parsed, see parseDocument().
/// \param losses Receives what the result no longer holds, and objects of a version of which nothing is known
///     here: they stay as they are, and the library will pass over them.
std::string toDialect(std::string const& text, LossReport& losses);

} // namespace ORL_0_81::tool

#endif // ORL_DIALECT_CONVERSION_H
