// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#ifndef ORL_FLOAT_UTILS_H
#define ORL_FLOAT_UTILS_H

#include <cfloat>
#include <cmath>

/// \file
/// The one tolerance of the library. Every comparison of doubles is absolute and strict against DBL_EPSILON;
/// nothing scales it with the values.

namespace ORL_0_81 {

/// True when |value| < DBL_EPSILON. False for a value that is not a number.
inline bool isNearZero(double value) { return std::fabs(value) < DBL_EPSILON; }

/// True when |left - right| < DBL_EPSILON. False when either is not a number, and for two equal infinities.
inline bool isNear(double left, double right) { return isNearZero(left - right); }

} // namespace ORL_0_81

#endif // ORL_FLOAT_UTILS_H
