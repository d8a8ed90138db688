// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#ifndef ORL_STORED_NAME_H
#define ORL_STORED_NAME_H

#include <string>

namespace ORL_0_81::media {

/// An accented letter can be one character or a letter and its mark. The two look alike, and some file systems
/// take them for one name, but most tell them apart: there a name that was written on another system, or that
/// was normalised, does not open the file that it means.

/// Whether the path leads to anything that the process may see.
bool exists(std::string const& path);

/// The text with all characters taken apart, so that texts that look alike are equal. A text that is no valid
/// UTF-8 stays as it is.
///
/// Quadratic time in the length of the longest row of marks.
std::string comparableName(std::string const& name);

/// Looks for what a path that leads nowhere may mean: whatever has a name that looks like it.
///
/// Reads each directory of which a part of the path is not found as it is written and not plain ASCII.
///
/// \returns the path as the file system has it, or an empty text if there is none. Where several look alike,
///     the first in the order of their bytes.
std::string findStoredPath(std::string const& path);

} // namespace ORL_0_81::media

#endif // ORL_STORED_NAME_H
