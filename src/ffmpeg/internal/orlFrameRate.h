// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#ifndef ORL_FRAME_RATE_H
#define ORL_FRAME_RATE_H

extern "C" {
#include <libavutil/rational.h>
}

#include <cstdint>
#include <vector>

namespace ORL_0_81::media {

/// True for a rate above 0 that frames can have.
bool isUsableRate(AVRational rate);

/// The rate of the 1001 family that a rate is an abbreviation of: 24000/1001 for 2997/125, which is 23.976.
/// Any other rate as it is.
AVRational withoutAbbreviation(AVRational rate);

/// True if the n-th frame comes at n periods of the rate, give or take less than half of one, so that a frame
/// number names a frame.
///
/// \param times The frames' times in ascending order, in units of `unit` seconds.
bool isConstant(std::vector<std::int64_t> const& times, AVRational unit, AVRational rate);

/// The rate that the frames come at.
///
/// \param times, unit As for isConstant().
/// \param base The rate that all frames fit on, as FFmpeg guesses; perhaps twice the true one.
/// \param average The average rate, which the duration of the last frame may have spoilt.
/// \param rate Receives the rate; left alone after a failure.
/// \returns false if the frames come at neither, so at no rate.
bool findConstantRate(std::vector<std::int64_t> const& times, AVRational unit, AVRational base,
                      AVRational average, AVRational& rate);

} // namespace ORL_0_81::media

#endif // ORL_FRAME_RATE_H
