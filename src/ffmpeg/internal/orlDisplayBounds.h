// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#ifndef ORL_DISPLAY_BOUNDS_H
#define ORL_DISPLAY_BOUNDS_H

#include <orlBounds.h>

namespace ORL_0_81::media {

/// The largest rectangle of an aspect that fits into the reference, at its centre.
///
/// \param aspect Width by height. 0.0, for no picture, gives the reference itself.
/// \returns a rectangle of height 1.0 for a reference that is not valid or not finite, at the centre of that,
///     or at the origin if the centre is not finite either.
Bounds fitBounds(double aspect, Bounds const& reference);

} // namespace ORL_0_81::media

#endif // ORL_DISPLAY_BOUNDS_H
