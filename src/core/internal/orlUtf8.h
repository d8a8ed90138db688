// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#ifndef ORL_UTF8_H
#define ORL_UTF8_H

#include <string>
#include <string_view>

namespace ORL_0_81 {

/// Whether the text is all ASCII, so that normalizing would give it back.
bool isAscii(std::string_view text);

/// The text in Unicode's normalisation form D: composed characters taken apart, their marks in canonical
/// order. File systems store names in one form or another; two names are compared in this one.
///
/// \param text UTF-8. NUL is an ordinary character.
/// \returns the normalised text, or the text as it came in two cases: it is no valid UTF-8, or the result
///     has exactly three bytes for each of its UTF-16 units. The second is how the service of another system,
///     which other programs use for the same names, treats a result that leaves its buffer no room for a
///     terminator; so a text of nothing but Hangul syllables keeps them whole.
///
/// Linear time but for the sorting of marks; a text of ASCII is returned at once. Throws `std::bad_alloc`.
std::string normalizeToNfd(std::string const& text);

} // namespace ORL_0_81

#endif // ORL_UTF8_H
