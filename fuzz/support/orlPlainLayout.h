// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#ifndef ORL_FUZZ_SUPPORT_ORL_PLAIN_LAYOUT_H
#define ORL_FUZZ_SUPPORT_ORL_PLAIN_LAYOUT_H

#include "orlBounds.h"
#include "orlStatus.h"

#include <string>
#include <vector>

namespace orlFuzz {

/// Lays documents out by plain rules: one timeline by hand, and each clip's cell from its number.
ORL_0_81::Status plainLayout(std::vector<std::string> const& documents, std::string const& name,
                             ORL_0_81::Bounds const& canvas, std::string& layout);

} // namespace orlFuzz

#endif // ORL_FUZZ_SUPPORT_ORL_PLAIN_LAYOUT_H
