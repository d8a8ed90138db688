// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#ifndef ORL_OTIO_EFFECT_WRITING_H
#define ORL_OTIO_EFFECT_WRITING_H

#include "rapidotio/internal/orlOtioWriting.h"
#include "rapidotio/orlOtioNode.h"

namespace ORL_0_81::rapidotio {

/// Appends an effect's object to the array that it was given: the described members, then those of its base.
///
/// \param base Whose toJson adds the members that the effect shares with its kin: EffectNode or LayerNode.
template <class Base, class Describe>
void appendEffect(Base const& effect, rapidjson::Value& array, Writing::Allocator& allocator,
                  Describe describe) {
    if (!array.IsArray()) {
        return;
    }
    rapidjson::Value object = Writing::buildObject(allocator, describe);
    effect.Base::toJson(object, allocator);
    array.PushBack(object, allocator);
}

} // namespace ORL_0_81::rapidotio

#endif // ORL_OTIO_EFFECT_WRITING_H
