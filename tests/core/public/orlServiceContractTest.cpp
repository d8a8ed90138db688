// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "support/Place.h"
#include "support/VirtualSlot.h"

#include <orlService.h>

#include <gtest/gtest.h>

#include <stdexcept>
#include <type_traits>
#include <utility>

namespace {

using namespace ORL_0_81;

class Worker : public Service {
public:
    explicit Worker(int type) : Service(static_cast<Type>(type)) {}
};

Service* holderOf(int type) { return Service::getService(static_cast<Service::Type>(type)).get(); }

// The registry is the process's, so each test leaves it empty.
class ServiceContract : public testing::Test {
protected:
    void SetUp() override { expectHolders(nullptr, nullptr, nullptr); }
    void TearDown() override { expectHolders(nullptr, nullptr, nullptr); }

    static void expectHolders(Service const* first, Service const* second, Service const* third) {
        EXPECT_EQ(holderOf(0), first);
        EXPECT_EQ(holderOf(1), second);
        EXPECT_EQ(holderOf(2), third);
    }
};

// Leaves a service without its destructor, and its slot with it.
void abandon(Worker& worker) {
    RefCountedMT const count(std::move(static_cast<RefCountedMT&>(worker))); // frees the count
}

TEST_F(ServiceContract, TheEndOfAServiceEmptiesEverySlotThatHoldsItsAddress) {
    Place<Worker> place;
    for (int const type : {0, 1, 2}) {
        abandon(place.begin(type)); // the slot still holds the address, where the next one begins
    }
    Worker& worker = place.begin(-1);
    worker.incref(); // the place ends it, no lookup
    expectHolders(&worker, &worker, &worker);
    place.end();
}

TEST_F(ServiceContract, AnyEndEmptiesOnlyTheSlotsThatHoldTheObject) {
    // Constructs two of each pair of types, and ends the one or the other first.
    for (int first = 0; first < 4; ++first) {
        for (int second = 0; second < 4; ++second) {
            for (bool const firstEndsFirst : {true, false}) {
                SharedPtr<Service> one(new Worker(first));
                SharedPtr<Service> other(new Worker(second));
                Service const* const left = firstEndsFirst ? other.get() : one.get();
                int const leftType = firstEndsFirst ? second : first;
                (firstEndsFirst ? one : other).reset();
                for (int type = 0; type < 4; ++type) {
                    bool const overwritten = !firstEndsFirst && first == second;
                    bool const found = type == leftType && type < 3 && !overwritten;
                    EXPECT_EQ(holderOf(type), found ? left : nullptr) << first << second << type;
                }
            }
        }
    }
}

TEST_F(ServiceContract, AServiceWithoutAShareIsFoundAndTheLookupsEndDeletesIt) {
    new Worker(2); // never held: its count is 0
    SharedPtr<Service> found = Service::getService(Service::kMediaWriterService);
    ASSERT_NE(found, nullptr);
    EXPECT_EQ(found->refcount(), 1);
    found.reset();
    EXPECT_EQ(holderOf(2), nullptr);
}

class Holding : public Service {
public:
    explicit Holding(Type type) : Service(type) {
        incref(); // so that a lookup during the construction deletes nothing
        EXPECT_EQ(Service::getService(type).get(), this);
        throw std::runtime_error("no connection");
    }
};

TEST_F(ServiceContract, AConstructorThatThrowsLeavesTheSlotEmpty) {
    SharedPtr<Service> const earlier(new Worker(1));
    EXPECT_THROW(Holding{Service::kMediaMetadataReaderService}, std::runtime_error);
    EXPECT_EQ(holderOf(1), nullptr) << "the earlier holder does not come back";
}

TEST_F(ServiceContract, ItsVirtualOperationsStandInTheCountedBasesOrder) {
    EXPECT_EQ(virtualSlot(&Service::incref), 2U);
    EXPECT_EQ(virtualSlot(&Service::decref), 3U);
    EXPECT_EQ(virtualSlot(&Service::refcount), 4U);
    EXPECT_EQ(sizeof(Service), sizeof(RefCountedMT)) << "no type is kept";
    EXPECT_TRUE((std::is_same_v<decltype(&Service::getService), SharedPtr<Service> (*)(Service::Type)>));
}

} // namespace
