// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#ifndef ORL_MEDIA_DOCUMENT_H
#define ORL_MEDIA_DOCUMENT_H

#include "internal/orlMediaDescription.h"

#include <orlBounds.h>

#include <string>

namespace ORL_0_81::media {

/// The timeline document of one medium, in the normal form of the library: one stack, one track, one clip,
/// with their members in the order in which the library writes them.
///
/// \param url What the clip's target URL becomes, byte for byte.
/// \param description A name and tags that are not valid UTF-8 lose their bad bytes to replacement
/// characters. \param bounds The clip's bounds. What is not finite becomes 0.0.
std::string writeDocument(std::string const& url, MediaDescription const& description, Bounds const& bounds);

} // namespace ORL_0_81::media

#endif // ORL_MEDIA_DOCUMENT_H
