// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#ifndef ORL_OTIO_POINT_H
#define ORL_OTIO_POINT_H

#include <rapidjson/document.h>

namespace ORL_0_81::rapidotio {

/// A point of a painted stroke, in the image space of the picture that it was drawn on.
struct Point {
    double x = 0.0;
    double y = 0.0;
    double width = 0.0; ///< of the stroke at this point

    /// Adds "OTIO_SCHEMA", "x", "y" and "width" to an object, zeros too.
    void toJson(rapidjson::Value& object, rapidjson::Document::AllocatorType& allocator) const;
};

} // namespace ORL_0_81::rapidotio

#endif // ORL_OTIO_POINT_H
