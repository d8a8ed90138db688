// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#ifndef ORL_FLOAT_UTILS_H
#define ORL_FLOAT_UTILS_H

#include <cfloat>
#include <cmath>
#include <limits>

/// \file
/// The one tolerance of the library, and its one way from doubles to integers. Every comparison of doubles is
/// absolute and strict against DBL_EPSILON; nothing scales it with the values.

namespace ORL_0_81 {

/// True when |value| < DBL_EPSILON. False for a value that is not a number.
inline bool isNearZero(double value) { return std::fabs(value) < DBL_EPSILON; }

/// True when |left - right| < DBL_EPSILON. False when either is not a number, and for two equal infinities.
inline bool isNear(double left, double right) { return isNearZero(left - right); }

/// Truncates toward zero. A value beyond the range of the signed type stops at the limit; one that is not a
/// number gives 0. The language leaves both open.
template <class Integer>
Integer truncateTo(double value) {
    using Limits = std::numeric_limits<Integer>;
    // The power of two right above the largest value, which itself may be no double.
    constexpr double kBeyond = -static_cast<double>(Limits::min());
    if (value >= kBeyond) {
        return Limits::max();
    }
    if (value <= -kBeyond) {
        return Limits::min();
    }
    return std::isnan(value) ? Integer{0} : static_cast<Integer>(value);
}

} // namespace ORL_0_81

#endif // ORL_FLOAT_UTILS_H
