// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#ifndef ORL_SEQUENCES_COMMAND_H
#define ORL_SEQUENCES_COMMAND_H

#include "orlFoundSequences.h"
#include "orlInputError.h"
#include "orlStreams.h"

#include <functional>
#include <string>

namespace ORL_0_81::tool {

/// `orl sequences`: tells the file sequences of a directory, or of a list of names.
struct SequencesCommand {
    enum class Form { kTable, kPlain, kJson };

    std::string directory; ///< "-" for names from the standard input
    std::string filter;
    bool isRecursive = false;
    bool isNulSeparated = false; ///< names end with a zero byte, where they come in and where they go out
    Form form = Form::kTable;

    /// Writes a line for each sequence and each single name, in the order in which they are found; below a
    /// directory with the way to it in front, directory after directory.
    ///
    /// Names are written as they are, byte for byte.
    ///
    /// \param tell Receives what is at fault with a directory below.
    /// \returns false if anything was.
    /// \throws InputError when the directory itself is none or cannot be read, the filter is no regular
    ///     expression, or the output cannot be written.
    bool run(Streams const& streams, std::function<void(InputError const&)> const& tell) const;
};

/// "name", for a sequence with two blanks and its frames behind it: "shot.%04d.exr  1001-1100 (98, missing
/// 1007, 1042)". Of many missing ranges the first are told.
std::string toSequenceText(std::string const& folder, FoundSequence const& found,
                           TerminalStyle const& style = TerminalStyle());

/// One JSON object: "directory" if it is one below, "name", and of a sequence "first", "last", "count" (of
/// names), "missing": ranges [first, last].
std::string toSequenceJson(std::string const& folder, FoundSequence const& found);

} // namespace ORL_0_81::tool

#endif // ORL_SEQUENCES_COMMAND_H
