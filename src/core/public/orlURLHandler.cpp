// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "orlURLHandler.h"

#include "internal/orlHidden.h"

namespace ORL_0_81 {

class ORL_HIDDEN URLHandler::ResolvedUrl::Imp {
public:
    String m_resolvedPath;
    String m_originalFilename;
    long long m_expirationTime = 0;
};

URLHandler::ResolvedUrl::ResolvedUrl() : m_imp(new Imp) {}

URLHandler::ResolvedUrl::ResolvedUrl(ResolvedUrl const& other) : m_imp(new Imp(*other.m_imp)) {}

URLHandler::ResolvedUrl::~ResolvedUrl() {
    delete m_imp;
    m_imp = nullptr;
}

// NOLINTNEXTLINE(bugprone-unhandled-self-assignment,cert-oop54-cpp): the fields assign to themselves safely
URLHandler::ResolvedUrl& URLHandler::ResolvedUrl::operator=(ResolvedUrl const& other) {
    if (m_imp && other.m_imp) {
        *m_imp = *other.m_imp;
    }
    return *this;
}

String const& URLHandler::ResolvedUrl::getResolvedPath() const { return m_imp->m_resolvedPath; }

void URLHandler::ResolvedUrl::setResolvedPath(String const& resolvedPath) {
    m_imp->m_resolvedPath = resolvedPath;
}

String const& URLHandler::ResolvedUrl::getOriginalFilename() const { return m_imp->m_originalFilename; }

void URLHandler::ResolvedUrl::setOriginalFilename(String const& originalFilename) {
    m_imp->m_originalFilename = originalFilename;
}

long long URLHandler::ResolvedUrl::getExpirationTime() const { return m_imp->m_expirationTime; }

void URLHandler::ResolvedUrl::setExpirationTime(long long expirationTime) {
    m_imp->m_expirationTime = expirationTime;
}

URLHandler::URLHandler() : Service(kUrlHandlerService) {}

URLHandler::~URLHandler() = default;

SharedPtr<URLHandler> URLHandler::getURLHandler() {
    return staticPointerCast<URLHandler>(Service::getService(kUrlHandlerService));
}

} // namespace ORL_0_81
