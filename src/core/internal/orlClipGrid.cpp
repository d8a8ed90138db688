// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "internal/orlClipGrid.h"

#include "rapidotio/orlOtioNode.h"

#include <algorithm>
#include <cfloat>
#include <cmath>
#include <cstddef>
#include <cstdint>

namespace ORL_0_81 {

namespace {

using rapidotio::ClipNode;

// Fits a clip into a cell, by the aspect of the bounds that it has.
void placeInCell(ClipNode& clip, double x, double y, double cellWidth, double cellHeight) {
    double const cellAspect = cellWidth / cellHeight;
    double const aspect = clip.m_boundsSizeY > DBL_EPSILON ? clip.m_boundsSizeX / clip.m_boundsSizeY : 1.0;
    clip.m_boundsCenterX = x;
    clip.m_boundsCenterY = y;
    clip.m_boundsSizeX = cellWidth;
    clip.m_boundsSizeY = cellHeight;
    if (!(cellAspect > DBL_EPSILON) || !(aspect > DBL_EPSILON)) {
        return;
    }
    if (cellAspect > aspect) {
        clip.m_boundsSizeX = aspect * cellHeight;
    } else {
        clip.m_boundsSizeY = cellWidth / aspect;
    }
}

} // namespace

void placeInGrid(std::vector<SharedPtr<ClipNode>> const& clips, Bounds const& canvas) {
    if (clips.empty()) {
        return;
    }
    auto const count = static_cast<double>(clips.size());
    auto const columns = static_cast<std::uint32_t>(std::ceil(std::sqrt(count)));
    double const rows = std::ceil(count / columns);
    double const cellHeight = canvas.getSizeY() / rows;
    double const y0 = canvas.getCenterY() + (rows - 1) * -0.5 * cellHeight;

    for (std::size_t first = 0; first < clips.size(); first += columns) {
        std::size_t const cells = std::min<std::size_t>(columns, clips.size() - first);
        double const cellWidth = canvas.getSizeX() / static_cast<double>(cells);
        double const x0 = canvas.getCenterX() + static_cast<double>(cells - 1) * -0.5 * cellWidth;
        std::size_t const row = first / columns;
        double const y = static_cast<double>(row) * cellHeight + y0;
        for (std::size_t cell = 0; cell < cells; ++cell) {
            placeInCell(*clips[first + cell], static_cast<double>(cell) * cellWidth + x0, y, cellWidth,
                        cellHeight);
        }
    }
}

} // namespace ORL_0_81
