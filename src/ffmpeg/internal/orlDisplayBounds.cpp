// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "orlDisplayBounds.h"

#include <cmath>

namespace ORL_0_81::media {

namespace {

double finiteOrZero(double value) { return std::isfinite(value) ? value : 0.0; }

} // namespace

Bounds fitBounds(double shownWidth, double shownHeight, Bounds const& reference) {
    if (!(shownWidth > 0.0) || !(shownHeight > 0.0)) {
        return reference;
    }
    double const centerX = finiteOrZero(reference.getCenterX());
    double const centerY = finiteOrZero(reference.getCenterY());
    double const width = reference.getSizeX();
    double const height = reference.getSizeY();
    if (!reference.isValid() || !std::isfinite(width) || !std::isfinite(height)) {
        return Bounds(centerX, centerY, shownWidth / shownHeight, 1.0);
    }
    // The products come first: whole numbers then give the whole numbers that they should.
    if (width * shownHeight > height * shownWidth) {
        return Bounds(centerX, centerY, height * shownWidth / shownHeight, height);
    }
    return Bounds(centerX, centerY, width, width * shownHeight / shownWidth);
}

} // namespace ORL_0_81::media
