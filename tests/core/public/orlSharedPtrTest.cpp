// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include <orlSharedPtr.h>

#include <orlRefCounted.h>

#include <gtest/gtest.h>

#include <type_traits>
#include <utility>

namespace {

using namespace ORL_0_81;

// Counts the calls of a pointer beside the owners.
class Object : public RefCountedST {
public:
    Object() { ++alive; }
    Object(Object const&) = delete;
    Object& operator=(Object const&) = delete;
    ~Object() override { --alive; }

    void incref() const override {
        ++calls;
        RefCountedST::incref();
    }
    bool decref() const override {
        ++calls;
        return RefCountedST::decref();
    }

    int number = 7;

    static int alive;
    static int calls;
};

int Object::alive = 0;
int Object::calls = 0;

class Derived : public Object {};

class Other : public Object {};

// A second base, with its own place in the object.
struct Side {
    virtual ~Side() = default;
    int side = 3;
};

class Both : public Side, public Object {};

class SharedPtrTest : public testing::Test {
protected:
    void SetUp() override { Object::alive = Object::calls = 0; }
    void TearDown() override { EXPECT_EQ(Object::alive, 0); }
};

TEST_F(SharedPtrTest, HasTheSizeOfAPointer) {
    EXPECT_EQ(sizeof(SharedPtr<Object>), sizeof(void*));
    EXPECT_FALSE(std::is_polymorphic_v<SharedPtr<Object>>);
}

TEST_F(SharedPtrTest, IsNullByDefault) {
    SharedPtr<Object> const byDefault;
    SharedPtr<Object> const ofNullptr(nullptr);
    SharedPtr<Object> const ofNullPointer(static_cast<Object*>(nullptr));
    SharedPtr<Object> const assigned = nullptr;
    EXPECT_EQ(byDefault.get(), nullptr);
    EXPECT_EQ(ofNullptr.get(), nullptr);
    EXPECT_EQ(ofNullPointer.get(), nullptr);
    EXPECT_EQ(assigned.get(), nullptr);
    EXPECT_FALSE(byDefault);
}

TEST_F(SharedPtrTest, ANullPointerIsCopiedMovedAndReleasedWithoutACall) {
    SharedPtr<Object> a;
    SharedPtr<Object> b(a);
    SharedPtr<Object> c(std::move(b));
    a = c;
    a = std::move(c);
    a.reset();
    a = nullptr;
    a.swap(b);
    SharedPtr<Object const> const d(a);
    EXPECT_EQ(Object::calls, 0);
    EXPECT_FALSE(d);
}

TEST_F(SharedPtrTest, TheFirstPointerBringsTheCountToOne) {
    auto* const object = new Object;
    SharedPtr<Object> const pointer(object);
    EXPECT_EQ(pointer.get(), object);
    EXPECT_EQ(object->refcount(), 1);
    EXPECT_TRUE(pointer);
    EXPECT_EQ(&*pointer, object);
    EXPECT_EQ(pointer->number, 7);
}

TEST_F(SharedPtrTest, ARawPointerConvertsImplicitly) {
    SharedPtr<Object> const pointer = new Object;
    EXPECT_EQ(pointer->refcount(), 1);
    EXPECT_TRUE((std::is_convertible_v<Object*, SharedPtr<Object>>));
}

TEST_F(SharedPtrTest, TakingTheSameRawPointerTwiceIsTwoShares) {
    auto* const object = new Object;
    SharedPtr<Object> const first(object);
    SharedPtr<Object> const second(object);
    EXPECT_EQ(object->refcount(), 2);
}

TEST_F(SharedPtrTest, ACopyAddsAnOwnerAndTheLastReleaseDestroysOnce) {
    SharedPtr<Object> first(new Object);
    {
        SharedPtr<Object> const second(first);
        SharedPtr<Object> third;
        third = second;
        EXPECT_EQ(first->refcount(), 3);
        EXPECT_EQ(third.get(), first.get());
    }
    EXPECT_EQ(first->refcount(), 1);
    EXPECT_EQ(Object::alive, 1);
    first.reset();
    EXPECT_EQ(Object::alive, 0);
    EXPECT_FALSE(first);
}

TEST_F(SharedPtrTest, AMoveChangesNoCountAndLeavesNull) {
    SharedPtr<Object> first(new Object);
    Object::calls = 0;
    SharedPtr<Object> second(std::move(first));
    EXPECT_EQ(first.get(), nullptr); // NOLINT(bugprone-use-after-move): that is the point
    SharedPtr<Object> third;
    third = std::move(second);
    EXPECT_EQ(second.get(), nullptr); // NOLINT(bugprone-use-after-move): that is the point
    EXPECT_EQ(third->refcount(), 1);
    EXPECT_EQ(Object::calls, 0);
    EXPECT_TRUE(std::is_nothrow_move_constructible_v<SharedPtr<Object>>);
    EXPECT_TRUE(std::is_nothrow_move_assignable_v<SharedPtr<Object>>);
}

TEST_F(SharedPtrTest, AssignmentReleasesTheOldObject) {
    SharedPtr<Object> first(new Object);
    SharedPtr<Object> second(new Object);
    EXPECT_EQ(Object::alive, 2);
    first = second;
    EXPECT_EQ(Object::alive, 1);
    EXPECT_EQ(second->refcount(), 2);
    first = new Object;
    EXPECT_EQ(second->refcount(), 1);
    second = std::move(first);
    EXPECT_EQ(Object::alive, 1);
    second = nullptr;
    EXPECT_EQ(Object::alive, 0);
}

TEST_F(SharedPtrTest, AssignmentToItselfKeepsTheObject) {
    SharedPtr<Object> pointer(new Object);
    SharedPtr<Object>& self = pointer;
    pointer = self;
    EXPECT_EQ(pointer->refcount(), 1);
    pointer = std::move(self);
    ASSERT_TRUE(pointer);
    EXPECT_EQ(pointer->refcount(), 1);
    pointer.reset(pointer.get());
    EXPECT_EQ(pointer->refcount(), 1);
    EXPECT_EQ(Object::alive, 1);
}

TEST_F(SharedPtrTest, ResetTakesAnotherObject) {
    SharedPtr<Object> pointer(new Object);
    auto* const object = new Object;
    pointer.reset(object);
    EXPECT_EQ(pointer.get(), object);
    EXPECT_EQ(object->refcount(), 1);
    EXPECT_EQ(Object::alive, 1);
}

TEST_F(SharedPtrTest, SwapExchangesWithoutACall) {
    SharedPtr<Object> first(new Object);
    SharedPtr<Object> second;
    Object* const object = first.get();
    Object::calls = 0;
    first.swap(second);
    EXPECT_EQ(second.get(), object);
    EXPECT_FALSE(first);
    swap(first, second);
    EXPECT_EQ(first.get(), object);
    EXPECT_FALSE(second);
    EXPECT_EQ(Object::calls, 0);
}

TEST_F(SharedPtrTest, ConvertsToABaseAndToConst) {
    SharedPtr<Derived> const derived(new Derived);
    SharedPtr<Object> const base(derived);
    SharedPtr<Object const> const constant = base;
    SharedPtr<RefCountedBase> const root = constant ? derived : nullptr;
    EXPECT_EQ(derived->refcount(), 4);
    EXPECT_EQ(constant.get(), derived.get());
    EXPECT_TRUE((std::is_convertible_v<SharedPtr<Derived>, SharedPtr<Object>>));
    EXPECT_FALSE((std::is_convertible_v<SharedPtr<Object>, SharedPtr<Derived>>));
    EXPECT_FALSE((std::is_convertible_v<SharedPtr<Object const>, SharedPtr<Object>>));
}

TEST_F(SharedPtrTest, AnObjectIsDeletedThroughWhicheverBaseHoldsItLast) {
    SharedPtr<RefCountedBase> root;
    {
        SharedPtr<Both> const both(new Both);
        root = both;
        EXPECT_NE(static_cast<void*>(root.get()), static_cast<void*>(both.get())) << "a second base";
        EXPECT_EQ(root, both);
    }
    EXPECT_EQ(Object::alive, 1);
    EXPECT_EQ(root->refcount(), 1);
    root.reset();
    EXPECT_EQ(Object::alive, 0);
}

TEST_F(SharedPtrTest, ANullConvertsToANullOfASecondBase) {
    SharedPtr<Both> const none;
    SharedPtr<RefCountedBase> const root(none);
    EXPECT_EQ(root.get(), nullptr);
    EXPECT_EQ(root, none);
}

TEST_F(SharedPtrTest, AConstObjectIsCountedAndDestroyed) {
    Object const* const object = new Object;
    SharedPtr<Object const> pointer(object);
    EXPECT_EQ(object->refcount(), 1);
    pointer.reset();
    EXPECT_EQ(Object::alive, 0);
}

TEST_F(SharedPtrTest, ComparesAddresses) {
    SharedPtr<Object> const first(new Object);
    SharedPtr<Object> const second(first);
    SharedPtr<Object> const third(new Object);
    SharedPtr<Object const> const constant(first);
    SharedPtr<Object> const null;
    EXPECT_TRUE(first == second);
    EXPECT_FALSE(first != second);
    EXPECT_TRUE(first != third);
    EXPECT_TRUE(first == constant);
    EXPECT_TRUE(null == nullptr);
    EXPECT_TRUE(nullptr == null);
    EXPECT_FALSE(null != nullptr);
    EXPECT_TRUE(first != nullptr);
    EXPECT_TRUE(nullptr != first);
    EXPECT_FALSE(first < second);
    EXPECT_NE(first < third, third < first);
}

TEST_F(SharedPtrTest, AStaticCastSharesTheObject) {
    SharedPtr<Object> const base(new Derived);
    SharedPtr<Derived> const derived = staticPointerCast<Derived>(base);
    EXPECT_EQ(derived.get(), base.get());
    EXPECT_EQ(base->refcount(), 2);
    EXPECT_FALSE(staticPointerCast<Derived>(SharedPtr<Object>()));
}

TEST_F(SharedPtrTest, ADynamicCastSharesTheObjectOrGivesNull) {
    SharedPtr<Object> const base(new Derived);
    EXPECT_EQ(dynamicPointerCast<Derived>(base).get(), base.get());
    EXPECT_FALSE(dynamicPointerCast<Other>(base));
    EXPECT_EQ(base->refcount(), 1);
    EXPECT_FALSE(dynamicPointerCast<Derived>(SharedPtr<Object>()));
}

// An object that reaches back to its holder while it goes must find the holder already empty.
TEST_F(SharedPtrTest, AHolderIsNullBeforeItsObjectIsDestroyed) {
    struct Curious : Object {
        explicit Curious(SharedPtr<Object>& holder) : m_holder(&holder) {}
        Curious(Curious const&) = delete;
        Curious& operator=(Curious const&) = delete;
        ~Curious() override { EXPECT_FALSE(*m_holder); }
        SharedPtr<Object>* m_holder;
    };
    SharedPtr<Object> holder;
    holder = new Curious(holder);
    holder.reset();
    EXPECT_FALSE(holder);
}

} // namespace
