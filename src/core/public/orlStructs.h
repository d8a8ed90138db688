// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#ifndef ORL_STRUCTS_H
#define ORL_STRUCTS_H

#include "orlExport.h"
#include "orlString.h"

/// \file
/// Pairs of texts that are handed over in containers. Copies share their texts, as String tells.

namespace ORL_0_81 {

/// A name and the value that goes with it.
struct ORL_CORE_EXPORT NameValueStruct {
    String name;  ///< The name.
    String value; ///< Its value.
};

/// A name and a text for people that explains it.
struct ORL_CORE_EXPORT NameDescriptionStruct {
    String name;        ///< The name.
    String description; ///< What it stands for.
};

} // namespace ORL_0_81

#endif // ORL_STRUCTS_H
