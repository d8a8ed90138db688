// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#ifndef ORL_IMAGE_SEQUENCE_H
#define ORL_IMAGE_SEQUENCE_H

#include <string>

namespace ORL_0_81::tool {

/// Gives a media reference that names an image sequence by its parts ("ImageSequenceReference.1") the URL by
/// which media readers find it: the base, a slash if there is none, the prefix, a frame symbol such as %04d,
/// the suffix.
///
/// \param reference The text of any JSON value.
/// \returns the text with "target_url" added behind the last member, or set where it says nothing; as it was
///     when it is no such reference, already has a URL, or has neither base nor prefix nor suffix.
std::string withSequenceUrl(std::string const& reference);

} // namespace ORL_0_81::tool

#endif // ORL_IMAGE_SEQUENCE_H
