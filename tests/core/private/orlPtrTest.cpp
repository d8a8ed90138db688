// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "private/orlPtr.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <stdexcept>
#include <type_traits>
#include <utility>

namespace {

using namespace ORL_0_81;
using PtrInternal::PtrCntrlBlk;
using PtrInternal::PtrCntrlBlkPtr;
using PtrInternal::PtrRepUntyped;

// Counts its objects; its copy fails on demand.
struct Thing {
    explicit Thing(int number) : first(number), second(number + 1) { ++alive; }
    Thing(Thing const& other) : first(other.first), second(other.second) {
        if (copyFails) {
            throw std::runtime_error("no copy");
        }
        ++alive;
    }
    Thing& operator=(Thing const&) = delete;
    ~Thing() { --alive; }

    int first;
    int second;

    static int alive;
    static bool copyFails;
};

int Thing::alive = 0;
bool Thing::copyFails = false;

class PtrTest : public testing::Test {
protected:
    void SetUp() override {
        Thing::alive = 0;
        Thing::copyFails = false;
    }
    void TearDown() override {
        EXPECT_EQ(Thing::alive, 0);
        Thing::copyFails = false;
    }

    // A look at the two fields of a pointer, which keeps its share.
    static PtrRepUntyped rep(Ptr<Thing> const& ptr) {
        Ptr<Thing> share(ptr);
        PtrRepUntyped const fields = share.detach();
        Ptr<Thing>::adopt(fields);
        return fields;
    }
};

TEST_F(PtrTest, IsTwoPointersInSize) {
    EXPECT_EQ(sizeof(Ptr<Thing>), 2 * sizeof(void*));
    EXPECT_EQ(sizeof(PtrRepUntyped), 2 * sizeof(void*));
}

TEST_F(PtrTest, TheControlBlockIsATableACountAndTheOwnedObject) {
    EXPECT_EQ(sizeof(PtrCntrlBlk), sizeof(void*) + 8);
    EXPECT_EQ(sizeof(PtrCntrlBlkPtr<Thing>), 2 * sizeof(void*) + 8);
    EXPECT_FALSE(std::is_polymorphic_v<PtrCntrlBlk>);
    EXPECT_EQ(offsetof(PtrCntrlBlk::Vtbl, clonePointee), 0U);
    EXPECT_EQ(offsetof(PtrCntrlBlk::Vtbl, dispose), sizeof(void*));
}

TEST_F(PtrTest, IsNullByDefaultAndForANullObject) {
    Ptr<Thing> const byDefault;
    Ptr<Thing> const ofNull(nullptr);
    for (Ptr<Thing> const& ptr : {byDefault, ofNull}) {
        EXPECT_EQ(ptr.get(), nullptr);
        EXPECT_EQ(rep(ptr).m_pointee, nullptr);
        EXPECT_EQ(rep(ptr).m_cntrlBlk, nullptr);
    }
}

TEST_F(PtrTest, ANewBlockHasACountOfOneAndTheTableOfItsKind) {
    auto* const object = new Thing(1);
    Ptr<Thing> ptr(object);
    EXPECT_EQ(ptr.get(), object);
    EXPECT_TRUE(ptr.isSoleOwner());
    PtrRepUntyped const fields = ptr.detach();
    EXPECT_EQ(ptr.get(), nullptr);
    EXPECT_EQ(fields.m_pointee, object);
    EXPECT_EQ(fields.m_cntrlBlk->m_count.load(), 1U);
    EXPECT_EQ(fields.m_cntrlBlk->m_vtbl, &PtrCntrlBlkPtr<Thing>::m_the_vtbl);
    Ptr<Thing>::adopt(fields);
}

TEST_F(PtrTest, EveryPointerCounts) {
    Ptr<Thing> first(new Thing(1));
    PtrCntrlBlk* const block = rep(first).m_cntrlBlk;
    {
        Ptr<Thing> const second(first);
        EXPECT_EQ(second.get(), first.get());
        EXPECT_EQ(block->m_count.load(), 2U);
        EXPECT_FALSE(first.isSoleOwner());
        Ptr<Thing> third;
        third = second;
        EXPECT_EQ(block->m_count.load(), 3U);
        Ptr<Thing> const fourth = Ptr<Thing>::share(rep(first));
        EXPECT_EQ(block->m_count.load(), 4U);
    }
    EXPECT_EQ(block->m_count.load(), 1U);
    EXPECT_TRUE(first.isSoleOwner());
    EXPECT_EQ(Thing::alive, 1);
}

TEST_F(PtrTest, TheLastPointerDisposesOfTheObject) {
    Ptr<Thing> first(new Thing(1));
    Ptr<Thing> second(first);
    first = Ptr<Thing>();
    EXPECT_EQ(Thing::alive, 1);
    second = Ptr<Thing>();
    EXPECT_EQ(Thing::alive, 0);
}

TEST_F(PtrTest, MovingAndSwappingChangeNoCount) {
    Ptr<Thing> first(new Thing(1));
    Thing* const object = first.get();
    Ptr<Thing> second(std::move(first));
    EXPECT_EQ(first.get(), nullptr); // NOLINT(bugprone-use-after-move): that is the point
    EXPECT_EQ(second.get(), object);
    EXPECT_TRUE(second.isSoleOwner());
    first = std::move(second);
    EXPECT_EQ(first.get(), object);
    EXPECT_TRUE(first.isSoleOwner());
    first.swap(second);
    EXPECT_EQ(second.get(), object);
    EXPECT_TRUE(second.isSoleOwner());
}

TEST_F(PtrTest, AssignmentToItselfKeepsTheObject) {
    Ptr<Thing> ptr(new Thing(1));
    Ptr<Thing>& self = ptr;
    ptr = self;
    EXPECT_EQ(ptr->first, 1);
    ptr = std::move(self);
    EXPECT_EQ(ptr->first, 1);
    EXPECT_TRUE(ptr.isSoleOwner());
}

TEST_F(PtrTest, AssignmentReleasesTheOldObject) {
    Ptr<Thing> first(new Thing(1));
    Ptr<Thing> const second(new Thing(5));
    first = second;
    EXPECT_EQ(Thing::alive, 1);
    EXPECT_EQ(first->first, 5);
}

TEST_F(PtrTest, ACloneIsAnObjectOfItsOwnWithABlockOfItsOwn) {
    Ptr<Thing> const original(new Thing(1));
    Ptr<Thing> const sharer(original);
    {
        Ptr<Thing> const copy = Ptr<Thing>::clone(rep(original));
        EXPECT_EQ(Thing::alive, 2);
        EXPECT_NE(copy.get(), original.get());
        EXPECT_EQ((*copy).first, 1);
        EXPECT_TRUE(copy.isSoleOwner());
        EXPECT_EQ(rep(original).m_cntrlBlk->m_count.load(), 2U);
    }
    EXPECT_EQ(Thing::alive, 1);
}

TEST_F(PtrTest, AClonedPointeeLiesAsFarFromItsObjectAsTheOldOneDid) {
    Ptr<Thing> const original(new Thing(1));
    PtrCntrlBlk* const block = rep(original).m_cntrlBlk;
    PtrRepUntyped result;
    block->m_vtbl->clonePointee(block, &original->second, &result);
    auto* const copy = static_cast<PtrCntrlBlkPtr<Thing>*>(result.m_cntrlBlk)->m_object;
    EXPECT_NE(copy, original.get());
    EXPECT_EQ(result.m_pointee, &copy->second);
    EXPECT_EQ(*static_cast<int*>(result.m_pointee), 2);
    result.m_cntrlBlk->m_vtbl->dispose(result.m_cntrlBlk);
    EXPECT_EQ(Thing::alive, 1);
}

TEST_F(PtrTest, ACloneThatFailsLeavesTheOriginalAndTheResultAlone) {
    Ptr<Thing> const original(new Thing(1));
    PtrCntrlBlk* const block = rep(original).m_cntrlBlk;
    Thing::copyFails = true;
    PtrRepUntyped result;
    EXPECT_THROW(block->m_vtbl->clonePointee(block, original.get(), &result), std::runtime_error);
    EXPECT_EQ(result.m_pointee, nullptr);
    EXPECT_EQ(result.m_cntrlBlk, nullptr);
    EXPECT_EQ(block->m_count.load(), 1U);
    EXPECT_EQ(original->first, 1);
}

TEST_F(PtrTest, ABlockWithoutAnObjectCanBeDisposedOf) {
    auto* const block = new PtrCntrlBlkPtr<Thing>(nullptr);
    EXPECT_EQ(block->m_count.load(), 1U);
    block->m_vtbl->dispose(block);
    EXPECT_EQ(Thing::alive, 0);
}

TEST_F(PtrTest, EachKindOfBlockHasATableOfItsOwn) {
    EXPECT_NE(static_cast<void const*>(&PtrCntrlBlkPtr<Thing>::m_the_vtbl),
              static_cast<void const*>(&PtrCntrlBlkPtr<int>::m_the_vtbl));
}

} // namespace
