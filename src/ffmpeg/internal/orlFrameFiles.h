// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#ifndef ORL_FRAME_FILES_H
#define ORL_FRAME_FILES_H

#include <string>

namespace ORL_0_81::media {

/// The frames of an image sequence, as they are found in its directory.
struct FrameFiles {
    std::string firstPath; ///< The file of the first frame.
    long first = 0;
    long last = 0; ///< Frames between the two may be missing.
};

/// What was found instead of frames.
enum class FrameSearch {
    kFound,
    kNoSequenceName, ///< There is no frame symbol in the file's name.
    kNoFrames,       ///< No frame, or no such directory.
    kNoAccess,       ///< The directory cannot be read.
};

/// Looks for the frames that a sequence name such as `dir/shot.%04d.exr` stands for, in one pass of the
/// directory and without asking for the status of any file.
///
/// The first frame symbol of the name counts: a percent sign, perhaps a width, and the letter d. It stands
/// for an optional minus sign and one to nine digits, which together are at least as many as the width tells.
/// More are welcome, for numbers outgrow their padding. Where two files have the same number, the one whose
/// name is shorter is the frame, and else the one that comes first in the alphabet. Names that look alike are
/// the same, see comparableName().
///
/// \param files Is set if the result is kFound.
FrameSearch findFrameFiles(std::string const& name, FrameFiles& files);

} // namespace ORL_0_81::media

#endif // ORL_FRAME_FILES_H
