// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#ifndef ORL_JSON_H
#define ORL_JSON_H

#include <rapidjson/document.h>

#include <string>

/// \file
/// The way in and out of RapidJSON for the whole library.

namespace ORL_0_81 {

/// The deepest nesting that a text may have; the outermost bracket is level 1.
///
/// RapidJSON's parser and its writer recurse once a level. A limit keeps a hostile text from the end of the
/// stack, on the small stacks of threads too.
constexpr unsigned kMaxJsonDepth = 1000;

/// Parses a NUL-terminated text with RapidJSON's default flags.
///
/// \param text What stands behind the one root value must be white space.
/// \param document Receives the root value; null after a failure.
/// \returns what RapidJSON says, with the place of a failure in bytes. A text nested deeper than
///     kMaxJsonDepth fails with kParseErrorTermination just behind the bracket that is one too many.
rapidjson::ParseResult parseJson(char const* text, rapidjson::Document& document);

/// \returns the compact text of a value. A number that is not finite ends the text at that point.
std::string jsonToText(rapidjson::Value const& value);

} // namespace ORL_0_81

#endif // ORL_JSON_H
