// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "orlService.h"

#include "internal/orlServiceRegistry.h"

namespace ORL_0_81 {

namespace {

// None of them owns.
Service* m_urlHandler = nullptr;
Service* m_mediaMetadataReader = nullptr;
Service* m_mediaWriterService = nullptr;

// In the order of Service::Type.
Service** const SLOTS[] = {&m_urlHandler, &m_mediaMetadataReader, &m_mediaWriterService};
constexpr unsigned int SLOT_COUNT = sizeof SLOTS / sizeof SLOTS[0];

void setSlot(Service::Type type, Service* service) {
    auto const index = static_cast<unsigned int>(type);
    if (index < SLOT_COUNT) {
        *SLOTS[index] = service;
    }
}

void clearSlot(Service*& slot, Service const* service) {
    if (slot == service) {
        slot = nullptr;
    }
}

} // namespace

Service::Service(Type type) { setSlot(type, this); }

Service::~Service() {
    // The object does not know its type.
    clearSlot(m_urlHandler, this);
    clearSlot(m_mediaMetadataReader, this);
    clearSlot(m_mediaWriterService, this);
}

SharedPtr<Service> Service::getService(Type type) {
    switch (type) {
    case kUrlHandlerService:
        return SharedPtr<Service>(m_urlHandler);
    case kMediaMetadataReaderService:
        return SharedPtr<Service>(m_mediaMetadataReader);
    case kMediaWriterService:
        return SharedPtr<Service>(m_mediaWriterService);
    }
    return SharedPtr<Service>();
}

void registerAgain(Service& service, Service::Type type) { setSlot(type, &service); }

} // namespace ORL_0_81
