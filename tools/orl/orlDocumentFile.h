// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#ifndef ORL_DOCUMENT_FILE_H
#define ORL_DOCUMENT_FILE_H

#include <iosfwd>
#include <string>

namespace ORL_0_81::tool {

/// The name that stands for standard input, and for standard output.
inline constexpr char const kStandardStream[] = "-";

/// Reads a file to its end; "-" is standard input.
///
/// \throws InputError that tells what the system says.
std::string readDocument(std::string const& file, std::istream& standardInput);

/// Writes a file so that it holds either what it held or all of `text`, whenever this is interrupted.
///
/// The text goes to a temporary file in the same folder, which takes the file's place once it is safe on the
/// disk. A file that is there keeps its permissions, and a symbolic link its target; one that may not be
/// written is not replaced. What is no regular file, such as a device or a pipe, is written as it stands.
///
/// \throws InputError that tells what the system says; no temporary file is left then.
void writeDocument(std::string const& file, std::string const& text);

/// Writes to the standard output and makes sure that it got there.
///
/// \throws InputError for a full disk or a reader that has gone.
void writeToStream(std::ostream& out, std::string const& text);

/// Writes to `out` for "-", by writeToStream, and to the file of that name for any other, by writeDocument.
void writeOutput(std::string const& file, std::string const& text, std::ostream& out);

} // namespace ORL_0_81::tool

#endif // ORL_DOCUMENT_FILE_H
