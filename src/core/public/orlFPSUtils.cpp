// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "orlFPSUtils.h"

#include "internal/orlFloatUtils.h"

#include <cfloat>
#include <cmath>
#include <cstdint>
#include <cstdlib>

namespace ORL_0_81 {

namespace {

constexpr unsigned int NTSC_DENOMINATOR = 1001;
constexpr unsigned int DECIMAL_DENOMINATOR = 1000;

// How far a value may be from the rate of the 1001 family that it stands for.
constexpr double SNAP_TOLERANCE = 0.001;

struct NtscRate {
    int numerator;
    char const* name;
};

struct WholeRate {
    double value;
    char const* name;
};

constexpr NtscRate NTSC_RATES[] = {{60000, "59.94 fps NDF"}, {30000, "29.97 fps NDF"}, {24000, "23.976 fps"}};

constexpr WholeRate WHOLE_RATES[] = {
    {24.0, "24 fps"}, {25.0, "25 fps"}, {30.0, "30 fps"}, {50.0, "50 fps"}, {60.0, "60 fps"}};

// Null for a rate without a name.
char const* findName(Rational const& rate) {
    if (rate.getDenominator() == NTSC_DENOMINATOR) {
        for (NtscRate const& candidate : NTSC_RATES) {
            if (rate.getNumerator() == candidate.numerator) {
                return candidate.name;
            }
        }
        return nullptr;
    }
    for (WholeRate const& candidate : WHOLE_RATES) {
        if (isNear(rate.getValue(), candidate.value)) {
            return candidate.name;
        }
    }
    return nullptr;
}

double round(double value, FPSUtils::RoundDir dir) {
    switch (dir) {
    case FPSUtils::kRoundUp:
        return std::ceil(value);
    case FPSUtils::kRoundNearest:
        return std::round(value);
    default:
        return value; // the conversion to an integer goes toward zero
    }
}

void set(Rational& rate, double numerator, unsigned int denominator) {
    rate.setNumerator(truncateTo<std::int32_t>(numerator));
    rate.setDenominator(denominator);
}

} // namespace

Time FPSUtils::convertToRate(Time const& time, Rational const& rate, RoundDir dir) {
    if (time.getRate() == rate) {
        return time;
    }
    double const ticks = time.getValue() * rate.getValue();
    return Time(truncateTo<std::int64_t>(round(ticks, dir)), rate);
}

Status FPSUtils::getFPSString(Rational const& rate, String& out) {
    char const* const name = findName(rate);
    if (!name) {
        return Status::kUnsupportedRational;
    }
    out = name;
    return Status::kSuccess;
}

Status FPSUtils::getFPSFromValue(double value, Rational& out) {
    if (value <= DBL_EPSILON) {
        return Status::kUnsupportedFPSValue;
    }
    if (value > 23.0 && value < 60.0) {
        double const thousands = 1001.0 * value / 1000.0;
        double const nearest = std::trunc(thousands + 0.5);
        if (std::fabs(thousands - nearest) < SNAP_TOLERANCE) {
            set(out, nearest * 1000.0 + 0.5, NTSC_DENOMINATOR);
            return Status::kSuccess;
        }
    }
    set(out, value * 1000.0 + 0.5, DECIMAL_DENOMINATOR);
    return Status::kSuccess;
}

Status FPSUtils::getFPSFromString(String const& text, Rational& out) {
    return getFPSFromValue(std::atof(text.asChar()), out);
}

} // namespace ORL_0_81
