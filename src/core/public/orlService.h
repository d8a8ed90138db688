// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#ifndef ORL_SERVICE_H
#define ORL_SERVICE_H

#include "orlExport.h"
#include "orlRefCounted.h"
#include "orlSharedPtr.h"

namespace ORL_0_81 {

/// The base of what other libraries and the application do for this one, found through a registry of the
/// process.
///
/// To construct a service is to register it, to destroy it is to take it out again; there is no other way.
/// The registry holds the service that was constructed last for a type, until that one is destroyed, and
/// remembers no earlier ones. It does not keep a service alive: whoever made it does, and whoever asked for
/// it.
///
/// The service stands in the registry before the derived constructor has run, and stays there until the
/// derived destructor has run.
///
/// **Thread safety.** The registry has no lock. getService() may be called from many threads at once, but
/// services are to be constructed and destroyed while no other thread looks one up: it could get an object
/// half made or half gone. The count is thread-safe.
class ORL_CORE_EXPORT Service : public RefCountedMT {
public:
    /// What a service does. Typed accessors rely on a service of a type being of the class that goes with it.
    enum Type : int {
        kUrlHandlerService = 0,          ///< a URLHandler
        kMediaMetadataReaderService = 1, ///< a MediaMetadataReader
        kMediaWriterService = 2,         ///< writes media; this library has no class for it
    };

    /// Takes the service out of the registry, wherever it stands there.
    ~Service() override;

    /// The service of that type.
    ///
    /// \returns a share of it; null if there is none, or for a value that is no Type. What that means is up
    /// to the
    ///     caller.
    static SharedPtr<Service> getService(Type type);

protected:
    /// Registers this object in the place of any other. A value that is no Type registers nothing, and makes
    /// a service that nobody finds.
    ///
    /// A copy of a service is such a service, too.
    explicit Service(Type type);
};

} // namespace ORL_0_81

#endif // ORL_SERVICE_H
