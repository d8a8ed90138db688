// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#ifndef ORL_LAYOUT_PICTURE_H
#define ORL_LAYOUT_PICTURE_H

#include "orlBounds.h"

#include <string>

namespace ORL_0_81::tool {

/// Draws a layout as an SVG picture: the canvas, its cells, and each clip in its place with its name and its
/// format. Sizes and letters are relative to the cells, so that it may be shown at any size.
///
/// \param layout A timeline document whose clips have been laid out.
/// \param canvas What they were laid out on.
std::string drawLayout(std::string const& layout, Bounds const& canvas);

} // namespace ORL_0_81::tool

#endif // ORL_LAYOUT_PICTURE_H
