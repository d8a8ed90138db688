// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#ifndef ORL_SERVICE_REGISTRY_H
#define ORL_SERVICE_REGISTRY_H

#include "orlService.h"

namespace ORL_0_81 {

/// Registers a service anew, in the place of any other: one that has stood back for another, which it would
/// not come back from by itself.
///
/// \param service Was constructed for that type. The registry does not keep it alive.
///
/// Threads as for the construction of a service.
void registerAgain(Service& service, Service::Type type);

} // namespace ORL_0_81

#endif // ORL_SERVICE_REGISTRY_H
