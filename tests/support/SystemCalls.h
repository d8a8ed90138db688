// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#ifndef ORL_TEST_SUPPORT_SYSTEM_CALLS_H
#define ORL_TEST_SUPPORT_SYSTEM_CALLS_H

#include <dlfcn.h>

/// Before the definition of a function with which a test program stands in for the system's of the same name.
#define ORL_STANDS_IN __attribute__((visibility("default")))

namespace orlTest {

/// The system's own function, for a stand-in of the same name and type.
template <class Function>
Function* nextOf(Function* /*standIn*/, char const* name) {
    return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
}

} // namespace orlTest

#endif // ORL_TEST_SUPPORT_SYSTEM_CALLS_H
