// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#ifndef ORL_STRING_TESTING_H
#define ORL_STRING_TESTING_H

#include <orlString.h>

#include <functional>
#include <stdexcept>
#include <string>

/// \file
/// What the tests of the string ask again and again.

namespace StringTesting {

/// All bytes, NULs included.
inline std::string bytes(ORL_0_81::String const& string) { return std::string(string.data(), string.size()); }

/// An empty value that sits in a hidden string.
inline ORL_0_81::String hiddenEmpty() {
    ORL_0_81::String string("x");
    string.erase(0, 1);
    return string;
}

inline bool isEmptyRepresentation(ORL_0_81::String const& string) {
    return string.empty() && string.capacity() == 0 && string.begin() == nullptr;
}

/// Sharing shows through the address of the text only.
inline bool share(ORL_0_81::String const& left, ORL_0_81::String const& right) {
    return left.c_str() == right.c_str();
}

/// The text of the out-of-range exception that the operation throws.
inline std::string outOfRangeText(std::function<void()> const& operation) {
    try {
        operation();
    } catch (std::out_of_range const& failure) {
        return failure.what();
    }
    return "no failure";
}

} // namespace StringTesting

#endif // ORL_STRING_TESTING_H
