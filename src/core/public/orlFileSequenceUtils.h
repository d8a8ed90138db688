// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#ifndef ORL_FILE_SEQUENCE_UTILS_H
#define ORL_FILE_SEQUENCE_UTILS_H

#include "orlExport.h"
#include "orlList.h"
#include "orlStatus.h"
#include "orlString.h"
#include "orlVector.h"

namespace ORL_0_81 {

/// Families of numbered files: which names belong together, and the one name that stands for them all.
///
///     List<String> names; // shot.1001.exr, shot.1002.exr, notes.txt
///     Vector<String> found;
///     FileSequenceUtils::getSequencesInFileList(names, found, "");
///     // found: shot.%04d.exr, notes.txt
///
/// **Notation.** A sequence name is a file name, without a directory, with a frame symbol in it: a percent
/// sign, any number of digits, and the letter d. All of "%d", "%4d" and "%04d" are understood; only the last
/// form, zero-padded to the narrowest frame of the family, is ever written ("%01d" for a width of one). A
/// frame on disk is one to nine digits with an optional minus sign, which counts for the width, so that
/// printing a frame with the symbol gives the file's name back. Only the ASCII digits are digits.
///
/// **Digit fields.** The places in a name that could be its frame: each one to nine digits, with the minus
/// sign before them if that sign stands at the beginning of the name or behind a character that is no digit.
/// So "shot-001" has the frame -1, and "12-34" has two fields with a hyphen between. A longer run of digits
/// is several fields side by side, nine digits at a time from the left.
///
/// **What makes a family.** Names are taken from the front of those that nobody has claimed yet. For each
/// digit field of the name, from right to left, all unclaimed names are found that differ from it in nothing
/// but the number in that place. A field wins over those to its right if it finds more names and its longest
/// stretch of consecutive frames is no shorter than the winner's, or if it finds as many and stands behind a
/// dot where the winner's doesn't. The winner's names are claimed, with whatever gaps their frames have; a
/// name that only finds itself stays as it is. So the result depends on the order of the names.
///
/// **Exceptions to it.** A name that holds a date and a time of day, such as "2019-03-21 at 10.22.33", is
/// never the first of a family. A backslash in a name acts as an escape in the pattern that the name becomes,
/// and is deleted from the results; a name whose pattern is malformed, or takes too long to match, is left
/// out. Any other byte, NUL and newline included, is an ordinary character.
///
/// No state; may be called from any thread on objects that no other thread changes. Where there is no memory
/// for a result `std::bad_alloc` is thrown.
class ORL_CORE_EXPORT FileSequenceUtils {
public:
    FileSequenceUtils() = delete;

    /// Whether the name holds a frame symbol.
    ///
    /// \param name Any text.
    /// \param result Receives the answer.
    /// \returns kSuccess. Linear time.
    static Status isSequenceName(String const& name, bool& result);

    /// The name without its frame symbols, and with the dots tidied that they leave: each two dots in a row
    /// become one, in one pass, then one dot goes from the beginning and one from the end. Backslashes go
    /// too. "shot.%04d.exr" gives "shot.exr", "%04d.exr" gives "exr", and "%04d" nothing.
    ///
    /// \param name Any text.
    /// \param result Receives the name; may be the same object as `name`.
    /// \returns kSuccess. Linear time.
    static Status removeFrameSymbols(String const& name, String& result);

    /// The sequence that a file belongs to among the files of its directory, which is listed anew.
    ///
    /// \param path An existing regular file, or a link to one, with its directory: a bare file name has
    ///     none. The path is normalised to Unicode's form D before it is used.
    /// \param name Receives the sequence name, or the file's own name if it is in no sequence, without the
    ///     directory. Empty after a failure.
    /// \returns
    /// - kSuccess,
    /// - kFileNotFound if the path is no regular file or can't be asked about,
    /// - the failure of getSequencesInDirectory(), kDirectoryNotFound for a bare file name,
    /// - kNoSuitableSequenceNameFound if no name of the directory fits, as for a file whose name has a
    ///   backslash.
    ///
    /// Throws what getSequencesInDirectory() throws.
    static Status getSequenceName(String const& path, String& name);

    /// The families and single names of a list.
    ///
    /// \param names Bare file names. Duplicates count; two equal names with a number are a family of two.
    ///     Taken as they stand, without normalising.
    /// \param sequences Receives sequence names and single names in the order in which the first name of each
    ///     stands in the list. Emptied first. Single names share their text with `names`.
    /// \param filter A regular expression in ECMAScript's grammar. A name in which it isn't found, and that
    ///     no earlier family has claimed, is left out. Empty, it lets everything pass. "^" and "$" are the
    ///     ends of the name. A name on which the expression takes too long is left out.
    /// \returns kSuccess, also if nothing is left; kNoFilenamesFound for an empty list; kRegexException for a
    ///     malformed filter. `sequences` is empty after a failure.
    ///
    /// About linear in the length of all names; a name with a backslash that is not single costs a pass of
    /// its own. Runs on the caller's thread, but for expressions and patterns that need more stack than
    /// callers have: those wait for a thread of their own. A name of 4 GB or more, or as many places for
    /// frames in all, throws `std::length_error`.
    static Status getSequencesInFileList(List<String> const& names, Vector<String>& sequences,
                                         String const& filter);

    /// getSequencesInFileList() of the regular files of a directory, and of the links to such, hidden ones
    /// included, with their names normalised to Unicode's form D. The order is the file system's own.
    ///
    /// \param path A directory or a link to one, used as it stands.
    /// \param sequences, filter As above; a filter sees the normalised names.
    /// \returns
    /// - kDirectoryNotFound if the path is no directory or can't be asked about; `sequences` is empty then,
    /// - kNoFilenamesFound for a directory without a regular file, and for one that may not be read or not
    ///   be searched,
    /// - else as above.
    ///
    /// Throws `std::filesystem::filesystem_error` if the listing itself fails otherwise; an entry that can't
    /// be asked about is passed over.
    static Status getSequencesInDirectory(String const& path, Vector<String>& sequences,
                                          String const& filter);
};

} // namespace ORL_0_81

#endif // ORL_FILE_SEQUENCE_UTILS_H
