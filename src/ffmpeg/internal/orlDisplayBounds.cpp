// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "orlDisplayBounds.h"

#include <cmath>

namespace ORL_0_81::media {

namespace {

double finiteOrZero(double value) { return std::isfinite(value) ? value : 0.0; }

} // namespace

Bounds fitBounds(double aspect, Bounds const& reference) {
    if (!(aspect > 0.0)) {
        return reference;
    }
    double const centerX = finiteOrZero(reference.getCenterX());
    double const centerY = finiteOrZero(reference.getCenterY());
    double const width = reference.getSizeX();
    double const height = reference.getSizeY();
    if (!reference.isValid() || !std::isfinite(width) || !std::isfinite(height)) {
        return Bounds(centerX, centerY, aspect, 1.0);
    }
    if (width / height > aspect) {
        return Bounds(centerX, centerY, height * aspect, height);
    }
    return Bounds(centerX, centerY, width, width / aspect);
}

} // namespace ORL_0_81::media
