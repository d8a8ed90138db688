// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#ifndef ORL_SVG_TEXT_H
#define ORL_SVG_TEXT_H

#include <cstddef>
#include <string>
#include <string_view>

/// \file
/// Texts of documents in a picture. They come from outside and may hold anything.

namespace ORL_0_81::tool {

/// The text as character data of an XML document: marks are escaped, and what is no UTF-8 or may not stand in
/// XML is replaced by U+FFFD.
std::string svgText(std::string_view text);

/// How many code points the text has; a byte that is no UTF-8 counts as one.
std::size_t countLetters(std::string_view text);

/// The text, or its beginning and its end with a U+2026 between them where it has more code points than
/// `maxLetters`, which must be 3 or more.
std::string shortened(std::string_view text, std::size_t maxLetters);

} // namespace ORL_0_81::tool

#endif // ORL_SVG_TEXT_H
