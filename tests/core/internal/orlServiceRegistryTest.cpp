// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "internal/orlServiceRegistry.h"

#include <gtest/gtest.h>

namespace {

using namespace ORL_0_81;

class Writer : public Service {
public:
    Writer() : Service(kMediaWriterService) {}
};

Service* registered() { return Service::getService(Service::kMediaWriterService).get(); }

TEST(ServiceRegistry, AServiceThatStoodBackIsFoundAgain) {
    SharedPtr<Writer> const first(new Writer);
    {
        SharedPtr<Writer> const second(new Writer);
        EXPECT_EQ(registered(), second.get());
    }
    EXPECT_EQ(registered(), nullptr);
    registerAgain(*first, Service::kMediaWriterService);
    EXPECT_EQ(registered(), first.get());
    EXPECT_EQ(first->refcount(), 1) << "the registry holds no share";
}

TEST(ServiceRegistry, AServiceThatIsRegisteredAgainLeavesWithItsEnd) {
    {
        SharedPtr<Writer> const writer(new Writer);
        SharedPtr<Writer> const other(new Writer);
        registerAgain(*writer, Service::kMediaWriterService);
        EXPECT_EQ(registered(), writer.get());
    }
    EXPECT_EQ(registered(), nullptr);
}

TEST(ServiceRegistry, AValueThatIsNoTypeRegistersNothing) {
    SharedPtr<Writer> const writer(new Writer);
    registerAgain(*writer, static_cast<Service::Type>(3));
    registerAgain(*writer, static_cast<Service::Type>(-1));
    EXPECT_EQ(registered(), writer.get());
    EXPECT_FALSE(Service::getService(Service::kUrlHandlerService));
    EXPECT_FALSE(Service::getService(Service::kMediaMetadataReaderService));
}

} // namespace
