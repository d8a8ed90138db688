// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#ifndef ORL_BOUNDS_JSON_H
#define ORL_BOUNDS_JSON_H

#include "internal/orlJson.h"

/// \file
/// The text form of Bounds, for Bounds itself and for whoever nests it. Defined beside Bounds.

namespace ORL_0_81 {

struct BoundsValues {
    double centerX = 0.0;
    double centerY = 0.0;
    double sizeX = 0.0;
    double sizeY = 0.0;
};

/// Writes the object as far as the first value that is not finite.
///
/// \returns false if there is one.
bool writeBounds(JsonWriter& writer, BoundsValues const& values);

/// Reads the object with all the tests of Bounds::fromJson.
///
/// \returns false if it is unfit; `values` stays as it was.
bool readBounds(rapidjson::Value const& object, BoundsValues& values);

} // namespace ORL_0_81

#endif // ORL_BOUNDS_JSON_H
