// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#ifndef ORL_FUZZ_SUPPORT_ORL_SAME_JSON_H
#define ORL_FUZZ_SUPPORT_ORL_SAME_JSON_H

#include <rapidjson/document.h>

#include <cmath>

namespace orlFuzz {

/// Whether two values are the same, members in order. Read with the parser's default precision, a fraction of 17
/// digits may have moved by a unit or two in the last place.
inline bool isSame(rapidjson::Value const& left, rapidjson::Value const& right) {
    if (left.GetType() != right.GetType()) {
        return false;
    }
    if (left.IsObject()) {
        if (left.MemberCount() != right.MemberCount()) {
            return false;
        }
        auto other = right.MemberBegin();
        for (auto const& member : left.GetObject()) {
            if (member.name != other->name || !isSame(member.value, other->value)) {
                return false;
            }
            ++other;
        }
        return true;
    }
    if (left.IsArray()) {
        if (left.Size() != right.Size()) {
            return false;
        }
        for (rapidjson::SizeType i = 0; i < left.Size(); ++i) {
            if (!isSame(left[i], right[i])) {
                return false;
            }
        }
        return true;
    }
    if (left.IsDouble() && right.IsDouble()) {
        double const a = left.GetDouble();
        double const b = right.GetDouble();
        return a == b || std::nextafter(a, b) == b || std::nextafter(std::nextafter(a, b), b) == b;
    }
    return left == right;
}

} // namespace orlFuzz

#endif // ORL_FUZZ_SUPPORT_ORL_SAME_JSON_H
