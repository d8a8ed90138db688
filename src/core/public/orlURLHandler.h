// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#ifndef ORL_URL_HANDLER_H
#define ORL_URL_HANDLER_H

#include "orlExport.h"
#include "orlService.h"
#include "orlSharedPtr.h"
#include "orlStatus.h"
#include "orlString.h"

namespace ORL_0_81 {

/// The service that turns a URL into something that can be opened, here and perhaps only for a while.
///
/// Another library implements it, and registers it by constructing it: see Service.
class ORL_CORE_EXPORT URLHandler : public Service {
public:
    /// What a URL came to. One pointer in size, to fields of its own: a copy is independent.
    ///
    /// **Failure.** Constructors may throw `std::bad_alloc`.
    ///
    /// **Thread safety.** No lock: one writer or many readers at a time.
    class ORL_CORE_EXPORT ResolvedUrl {
    public:
        /// Two empty texts, and an expiration time of 0.
        ResolvedUrl();

        /// Copies all three values.
        ResolvedUrl(ResolvedUrl const& other);
        ~ResolvedUrl();
        /// Copies all three values.
        ResolvedUrl& operator=(ResolvedUrl const& other);

        /// @{
        /// What to open instead of the URL.
        String const& getResolvedPath() const;
        void setResolvedPath(String const& resolvedPath);
        /// @}

        /// @{
        /// How the file was called where it came from.
        String const& getOriginalFilename() const;
        void setOriginalFilename(String const& originalFilename);
        /// @}

        /// @{
        /// Until when the path can be opened. This library never compares it with any clock; its unit and its
        /// zero are those of the handler.
        long long getExpirationTime() const;
        void setExpirationTime(long long expirationTime);
        /// @}

    private:
        class Imp;

        Imp* m_imp; // owned
    };

    ~URLHandler() override;

    /// The registered handler.
    ///
    /// The registered type is trusted: whatever service was constructed as a kUrlHandlerService is taken for
    /// a URLHandler.
    ///
    /// \returns a share of it, or null if there is none. Threads as Service::getService().
    static SharedPtr<URLHandler> getURLHandler();

    /// Resolves `url`, and fills `resolved` when that succeeds.
    virtual Status resolveUrl(String const& url, ResolvedUrl& resolved) = 0;

protected:
    /// Registers this object as the process's URL handler.
    URLHandler();
};

} // namespace ORL_0_81

#endif // ORL_URL_HANDLER_H
