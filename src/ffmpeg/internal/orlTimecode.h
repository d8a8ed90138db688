// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#ifndef ORL_TIMECODE_H
#define ORL_TIMECODE_H

#include <cstdint>
#include <string>

namespace ORL_0_81::media {

/// The number of the frame that has a timecode, counted from midnight.
///
/// \param text Hours, minutes, seconds and frames: `01:00:00:00`. A semicolon or a point before the frames
///     marks drop-frame timecode, which leaves out frame numbers (not frames) to keep up with the clock: the
///     first two of each minute but every tenth, or four at 60 frames per second.
/// \param framesPerSecond The count of frames in a second of timecode: 24 for 23.976.
/// \param frame Receives the number; left alone after a failure.
/// \returns false for a text that is no timecode at this count, and for drop-frame timecode at a count that is
///     no multiple of 30, for there is none.
bool frameOfTimecode(std::string const& text, int framesPerSecond, std::int64_t& frame);

} // namespace ORL_0_81::media

#endif // ORL_TIMECODE_H
