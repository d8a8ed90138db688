// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "rapidotio/orlOtioPoint.h"

#include "rapidotio/internal/orlOtioWriting.h"

namespace ORL_0_81::rapidotio {

void Point::toJson(rapidjson::Value& object, rapidjson::Document::AllocatorType& allocator) const {
    Writing::addMembers(object, allocator, [this](auto& members) { members.addMembersOf(*this); });
}

} // namespace ORL_0_81::rapidotio
