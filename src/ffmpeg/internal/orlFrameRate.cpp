// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "orlFrameRate.h"

#include <cmath>
#include <cstddef>

namespace ORL_0_81::media {

namespace {

constexpr double HIGHEST_RATE = 100000.0; // cameras of laboratories
constexpr int NTSC_COUNTS[] = {24000, 30000, 48000, 60000, 120000};
constexpr int NTSC_DENOMINATOR = 1001;

// 23.976 and its kin are off by a millionth; the nearest rates that mean something else by a thousandth.
constexpr double ABBREVIATION_TOLERANCE = 1e-5;

} // namespace

bool isUsableRate(AVRational rate) { return rate.num > 0 && rate.den > 0 && av_q2d(rate) <= HIGHEST_RATE; }

AVRational withoutAbbreviation(AVRational rate) {
    for (int const count : NTSC_COUNTS) {
        AVRational const exact = {count, NTSC_DENOMINATOR};
        if (std::fabs(av_q2d(rate) / av_q2d(exact) - 1.0) < ABBREVIATION_TOLERANCE) {
            return exact;
        }
    }
    return rate;
}

bool isConstant(std::vector<std::int64_t> const& times, AVRational unit, AVRational rate) {
    double const framesPerUnit = av_q2d(unit) * av_q2d(rate);
    for (std::size_t i = 1; i < times.size(); ++i) {
        double const expected = static_cast<double>(i);
        double const actual = (static_cast<double>(times[i]) - static_cast<double>(times[0])) * framesPerUnit;
        if (!(std::fabs(actual - expected) < 0.5)) {
            return false;
        }
    }
    return true;
}

bool findConstantRate(std::vector<std::int64_t> const& times, AVRational unit, AVRational base,
                      AVRational average, AVRational& rate) {
    // One frame fits on any rate, and FFmpeg's guess at a base is a wild one then.
    bool const few = times.size() < 2;
    for (AVRational const candidate : {few ? average : base, few ? base : average}) {
        if (isUsableRate(candidate)) {
            AVRational const exact = withoutAbbreviation(candidate);
            if (isConstant(times, unit, exact)) {
                rate = exact;
                return true;
            }
        }
    }
    return false;
}

} // namespace ORL_0_81::media
