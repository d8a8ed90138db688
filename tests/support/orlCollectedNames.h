// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#ifndef ORL_TEST_SUPPORT_COLLECTED_NAMES_H
#define ORL_TEST_SUPPORT_COLLECTED_NAMES_H

#include "internal/orlDirectoryListing.h"

#include <string>
#include <vector>

namespace orlTest {

/// Keeps the names that a listing gives, in its order.
class CollectedNames : public ORL_0_81::NameReceiver {
public:
    void addName(char const* name) override { names.emplace_back(name); }

    std::vector<std::string> names;
};

} // namespace orlTest

#endif // ORL_TEST_SUPPORT_COLLECTED_NAMES_H
