// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#ifndef ORL_FPS_UTILS_H
#define ORL_FPS_UTILS_H

#include "orlExport.h"
#include "orlRational.h"
#include "orlStatus.h"
#include "orlString.h"
#include "orlTime.h"

namespace ORL_0_81 {

/// What links a rate with a frame rate as people write it, and a time at one rate with a time at another.
///
/// Eight rates have names:
///
/// | Name            | Rate                                            |
/// |-----------------|-------------------------------------------------|
/// | "23.976 fps"    | 24000/1001                                      |
/// | "24 fps"        | 24/1 and whatever has its value but over 1001   |
/// | "25 fps"        | 25/1, likewise                                  |
/// | "29.97 fps NDF" | 30000/1001                                      |
/// | "30 fps"        | 30/1, likewise                                  |
/// | "50 fps"        | 50/1, likewise                                  |
/// | "59.94 fps NDF" | 60000/1001                                      |
/// | "60 fps"        | 60/1, likewise                                  |
///
/// No state; may be called from any thread on objects that no other thread changes. Arguments must not be
/// moved-from. Where there is no memory for a result `std::bad_alloc` is thrown.
class ORL_CORE_EXPORT FPSUtils {
public:
    /// How convertToRate() makes a whole number of what it computes. Any other value acts like kRoundDown.
    enum RoundDir : int {
        kRoundUp = 0,      ///< Upward: -10.6 becomes -10.
        kRoundNearest = 1, ///< To the nearest, halves away from zero: -10.5 becomes -11.
        kRoundDown = 2,    ///< Toward zero: -10.6 becomes -10.
    };

    FPSUtils() = delete;

    /// The same time at another rate: its value in seconds times the rate's value, rounded.
    ///
    /// Where the two rates are equal as Rational compares them, the result is a copy of `time`, with the rate
    /// as `time` has it; so 0/0 on either side changes nothing. To another rate whose value is 0.0 it has 0
    /// ticks.
    ///
    /// An undefined time has no special case: at an equal rate it stays undefined, else its ticks count. What
    /// goes beyond 64 bits stops at their limits, of which the upper one means undefined.
    static Time convertToRate(Time const& time, Rational const& rate, RoundDir dir);

    /// The name of a rate. Over 1001 only the three numerators above have one (24024/1001 has none); any
    /// other rate is named by its value, within DBL_EPSILON.
    ///
    /// \param rate The rate, reduced or not.
    /// \param out Receives the name; left alone after a failure.
    /// \returns kSuccess or kUnsupportedRational.
    static Status getFPSString(Rational const& rate, String& out);

    /// The exact rate for a decimal frame rate.
    ///
    /// A value strictly between 23 and 60 that is within about 0.001 of a whole multiple of 1000/1001 becomes
    /// that multiple: 29.97 gives 30000/1001. Any other becomes thousandths, rounded and not reduced: 25.0
    /// gives 25000/1000. A numerator beyond 2147483647 stops there; that of a value that is not a number is
    /// 0.
    ///
    /// \param value Frames per second.
    /// \param out Receives the rate; left alone after a failure.
    /// \returns kSuccess, or kUnsupportedFPSValue for a value of at most DBL_EPSILON.
    static Status getFPSFromValue(double value, Rational& out);

    /// getFPSFromValue() of the number that the text begins with, as `atof` reads it: in the locale of the
    /// process, whatever follows. The names above give their rates back.
    ///
    /// \param text Frames per second, in decimal.
    /// \param out Receives the rate; left alone after a failure.
    /// \returns kSuccess, or kUnsupportedFPSValue for a text without a leading number above DBL_EPSILON.
    static Status getFPSFromString(String const& text, Rational& out);
};

} // namespace ORL_0_81

#endif // ORL_FPS_UTILS_H
