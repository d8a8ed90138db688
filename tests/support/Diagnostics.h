// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#ifndef ORL_TEST_SUPPORT_DIAGNOSTICS_H
#define ORL_TEST_SUPPORT_DIAGNOSTICS_H

#include <gtest/gtest.h>

#include <initializer_list>
#include <string>

namespace orlTest {

/// What an action prints on the standard error stream.
template <class Action>
std::string diagnosticsOf(Action action) {
    testing::internal::CaptureStderr();
    action();
    return testing::internal::GetCapturedStderr();
}

/// Lines, each with its newline.
inline std::string lines(std::initializer_list<char const*> texts) {
    std::string result;
    for (char const* const text : texts) {
        result += std::string(text) + "\n";
    }
    return result;
}

/// The line of a member that is not there, for each name.
inline std::string notFound(std::initializer_list<char const*> names) {
    std::string result;
    for (char const* const name : names) {
        result += "Cannot find '" + std::string(name) + "'\n";
    }
    return result;
}

} // namespace orlTest

#endif // ORL_TEST_SUPPORT_DIAGNOSTICS_H
