// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#ifndef ORL_CLIP_GRID_H
#define ORL_CLIP_GRID_H

#include "orlBounds.h"
#include "orlSharedPtr.h"

#include <vector>

namespace ORL_0_81 {

namespace rapidotio {
class ClipNode;
}

/// Gives each clip its place on a canvas, in rows of equal height with the first at the smallest y.
///
/// There are as many columns as rows, or one more. Each row shares the full width among its own clips, so
/// that a last row with fewer of them has wider cells. A clip keeps the aspect of its bounds, or is a square
/// if they have no height, and is centred in its cell.
///
/// Nothing guards a canvas without a size: the divisions fall as they fall.
void placeInGrid(std::vector<SharedPtr<rapidotio::ClipNode>> const& clips, Bounds const& canvas);

} // namespace ORL_0_81

#endif // ORL_CLIP_GRID_H
