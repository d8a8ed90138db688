// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include <orlService.h>

#include <gtest/gtest.h>

#include <limits>
#include <type_traits>
#include <vector>

namespace {

using namespace ORL_0_81;

class Worker : public Service {
public:
    explicit Worker(Type type) : Service(type) {}
    explicit Worker(int type) : Service(static_cast<Type>(type)) {}
};

Service* find(int type) { return Service::getService(static_cast<Service::Type>(type)).get(); }

int const TYPES[] = {Service::kUrlHandlerService, Service::kMediaMetadataReaderService,
                     Service::kMediaWriterService};
int const NO_TYPES[] = {-1, 3, 4, 100, std::numeric_limits<int>::min(), std::numeric_limits<int>::max()};

// The registry is the process's, so each test leaves it empty.
class ServiceTest : public testing::Test {
protected:
    void SetUp() override { expectNothing(); }
    void TearDown() override { expectNothing(); }

    static void expectNothing() {
        for (int const type : TYPES) {
            EXPECT_EQ(find(type), nullptr) << type;
        }
    }
};

TEST_F(ServiceTest, TheTypesAreNumbered) {
    EXPECT_EQ(Service::kUrlHandlerService, 0);
    EXPECT_EQ(Service::kMediaMetadataReaderService, 1);
    EXPECT_EQ(Service::kMediaWriterService, 2);
    EXPECT_TRUE((std::is_same_v<std::underlying_type_t<Service::Type>, int>));
}

TEST_F(ServiceTest, NothingIsRegisteredBeforeAnyServiceExists) {
    for (int const type : TYPES) {
        EXPECT_EQ(find(type), nullptr);
    }
}

TEST_F(ServiceTest, AServiceIsFoundUnderItsTypeAsLongAsItLives) {
    for (int const type : TYPES) {
        SharedPtr<Service> service(new Worker(type));
        for (int const other : TYPES) {
            EXPECT_EQ(find(other), other == type ? service.get() : nullptr);
        }
        service.reset();
        EXPECT_EQ(find(type), nullptr);
    }
}

TEST_F(ServiceTest, AllTypesAreHeldSideBySide) {
    Worker const handler(Service::kUrlHandlerService);
    Worker const reader(Service::kMediaMetadataReaderService);
    Worker const writer(Service::kMediaWriterService);
    // Each lookup gives a share, so the objects need an owner that outlives it.
    handler.incref();
    reader.incref();
    writer.incref();
    EXPECT_EQ(find(0), &handler);
    EXPECT_EQ(find(1), &reader);
    EXPECT_EQ(find(2), &writer);
}

TEST_F(ServiceTest, TheRegistryHoldsNoShare) {
    auto* const service = new Worker(Service::kMediaWriterService);
    EXPECT_EQ(service->refcount(), 0);
    SharedPtr<Service> const owner(service);
    EXPECT_EQ(service->refcount(), 1);
}

TEST_F(ServiceTest, ALookupTakesAShareForAsLongAsItsResultLives) {
    SharedPtr<Service> const owner(new Worker(Service::kMediaMetadataReaderService));
    {
        SharedPtr<Service> const found = Service::getService(Service::kMediaMetadataReaderService);
        EXPECT_EQ(owner->refcount(), 2);
    }
    EXPECT_EQ(owner->refcount(), 1);
}

TEST_F(ServiceTest, WhoFoundAServiceKeepsItAliveAndRegistered) {
    SharedPtr<Service> owner(new Worker(Service::kMediaWriterService));
    SharedPtr<Service> found = Service::getService(Service::kMediaWriterService);
    Service* const service = owner.get();
    owner.reset();
    EXPECT_EQ(find(Service::kMediaWriterService), service);
    found.reset();
    EXPECT_EQ(find(Service::kMediaWriterService), nullptr);
}

TEST_F(ServiceTest, ASecondServiceTakesTheSlotAndTheEndOfTheFirstLeavesIt) {
    SharedPtr<Service> first(new Worker(Service::kUrlHandlerService));
    SharedPtr<Service> const second(new Worker(Service::kUrlHandlerService));
    EXPECT_EQ(find(Service::kUrlHandlerService), second.get());
    first.reset();
    EXPECT_EQ(find(Service::kUrlHandlerService), second.get());
}

TEST_F(ServiceTest, TheEndOfTheSecondEmptiesTheSlotThoughTheFirstLives) {
    SharedPtr<Service> const first(new Worker(Service::kUrlHandlerService));
    SharedPtr<Service> second(new Worker(Service::kUrlHandlerService));
    second.reset();
    EXPECT_EQ(find(Service::kUrlHandlerService), nullptr);
}

TEST_F(ServiceTest, AServiceOfNoTypeIsValidButNotFound) {
    SharedPtr<Service> const registered(new Worker(Service::kMediaWriterService));
    for (int const type : NO_TYPES) {
        SharedPtr<Service> service(new Worker(type));
        EXPECT_EQ(service->refcount(), 1);
        for (int const other : TYPES) {
            EXPECT_EQ(find(other), other == Service::kMediaWriterService ? registered.get() : nullptr);
        }
        EXPECT_EQ(find(type), nullptr);
        service.reset();
        EXPECT_EQ(find(Service::kMediaWriterService), registered.get()) << "its end changes nothing";
    }
}

TEST_F(ServiceTest, ALookupOfNoTypeGivesNullAndTouchesNothing) {
    std::vector<SharedPtr<Service>> services;
    for (int const type : TYPES) {
        services.emplace_back(new Worker(type));
    }
    for (int const type : NO_TYPES) {
        EXPECT_EQ(find(type), nullptr) << type;
    }
    for (int const type : TYPES) {
        EXPECT_EQ(find(type), services[static_cast<std::size_t>(type)].get());
        EXPECT_EQ(services[static_cast<std::size_t>(type)]->refcount(), 1);
    }
}

TEST_F(ServiceTest, ACopyRegistersNothing) {
    SharedPtr<Service> const original(new Worker(Service::kUrlHandlerService));
    SharedPtr<Service> copy(new Worker(static_cast<Worker const&>(*original)));
    EXPECT_EQ(find(Service::kUrlHandlerService), original.get());
    EXPECT_EQ(copy->refcount(), 1);
    copy.reset();
    EXPECT_EQ(find(Service::kUrlHandlerService), original.get());
}

TEST_F(ServiceTest, TheSlotIsFilledDuringConstructionAndEmptiedAfterDestruction) {
    struct Curious : Service {
        Curious() : Service(kMediaWriterService) {
            incref(); // a lookup takes and releases a share, which must not be the last
            m_wasRegistered = getService(kMediaWriterService).get() == this;
        }
        Curious(Curious const&) = delete;
        Curious& operator=(Curious const&) = delete;
        ~Curious() override { EXPECT_EQ(getService(kMediaWriterService).get(), this); }
        bool m_wasRegistered = false;
    };
    {
        Curious const service;
        EXPECT_TRUE(service.m_wasRegistered);
    }
    EXPECT_EQ(find(Service::kMediaWriterService), nullptr);
}

TEST_F(ServiceTest, OnlyDerivedClassesAreConstructed) {
    EXPECT_FALSE((std::is_constructible_v<Service, Service::Type>));
    EXPECT_TRUE((std::is_base_of_v<RefCountedMT, Service>));
    EXPECT_EQ(sizeof(Service), sizeof(RefCountedMT));
}

} // namespace
