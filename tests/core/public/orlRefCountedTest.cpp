// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include <orlRefCounted.h>

#include <orlSharedPtr.h>

#include <gtest/gtest.h>

#include <string>
#include <thread>
#include <type_traits>
#include <utility>
#include <vector>

namespace {

using namespace ORL_0_81;

// What both implementations have in common.
template <class Base>
class RefCounted : public testing::Test {
protected:
    // Tells of its destruction.
    class Object : public Base {
    public:
        explicit Object(int& destroyed) : m_destroyed(&destroyed) {}
        Object(Object const&) = default;
        Object& operator=(Object const&) = default;
        ~Object() override { ++*m_destroyed; }

    private:
        int* m_destroyed;
    };

    static void increfTimes(RefCountedBase const& object, int times) {
        for (int i = 0; i < times; ++i) {
            object.incref();
        }
    }
};

using Implementations = testing::Types<RefCountedST, RefCountedMT>;

struct NameOf {
    template <class Implementation>
    static std::string GetName(int) {
        return std::is_same_v<Implementation, RefCountedST> ? "ST" : "MT";
    }
};

TYPED_TEST_SUITE(RefCounted, Implementations, NameOf);

TYPED_TEST(RefCounted, ANewObjectHasNoOwner) {
    TypeParam const object;
    EXPECT_EQ(object.refcount(), 0);
}

TYPED_TEST(RefCounted, RefcountIsAnIntAndTheOperationsAreConst) {
    TypeParam const object;
    EXPECT_TRUE((std::is_same_v<decltype(object.refcount()), int>));
    EXPECT_TRUE((std::is_same_v<decltype(object.decref()), bool>));
    EXPECT_TRUE((std::is_same_v<decltype(object.incref()), void>));
    EXPECT_TRUE((std::is_base_of_v<RefCountedBase, TypeParam>));
    EXPECT_TRUE(std::has_virtual_destructor_v<RefCountedBase>);
    EXPECT_TRUE(std::is_abstract_v<RefCountedBase>);
    EXPECT_EQ(sizeof(RefCountedBase), sizeof(void*)) << "no fields";
}

TYPED_TEST(RefCounted, DecrefTellsWhenTheCountReachesZero) {
    TypeParam const object;
    this->increfTimes(object, 3);
    EXPECT_EQ(object.refcount(), 3);
    EXPECT_FALSE(object.decref());
    EXPECT_FALSE(object.decref());
    EXPECT_EQ(object.refcount(), 1);
    EXPECT_TRUE(object.decref());
    EXPECT_EQ(object.refcount(), 0);
}

TYPED_TEST(RefCounted, DecrefNeverDestroys) {
    int destroyed = 0;
    {
        typename TestFixture::Object const object(destroyed);
        object.incref();
        EXPECT_TRUE(object.decref());
        EXPECT_EQ(destroyed, 0);
    }
    EXPECT_EQ(destroyed, 1);
}

TYPED_TEST(RefCounted, DecrefBelowZeroIsFalseAndCountsOn) {
    TypeParam const object;
    EXPECT_FALSE(object.decref());
    EXPECT_EQ(object.refcount(), -1);
    object.incref();
    EXPECT_EQ(object.refcount(), 0);
}

TYPED_TEST(RefCounted, ACopyHasNoOwnerWhateverTheCountOfItsSource) {
    TypeParam const source;
    this->increfTimes(source, 3);
    TypeParam const copy(source);
    EXPECT_EQ(copy.refcount(), 0);
    EXPECT_EQ(source.refcount(), 3);
}

TYPED_TEST(RefCounted, CopyAssignmentLeavesBothCounts) {
    TypeParam source;
    TypeParam target;
    this->increfTimes(source, 3);
    this->increfTimes(target, 2);
    EXPECT_EQ(&(target = source), &target);
    EXPECT_EQ(target.refcount(), 2);
    EXPECT_EQ(source.refcount(), 3);
    TypeParam const& self = target;
    target = self;
    EXPECT_EQ(target.refcount(), 2);
}

TYPED_TEST(RefCounted, OwnersComeAndGoAndTheLastDestroysOnce) {
    int destroyed = 0;
    auto* const object = new typename TestFixture::Object(destroyed);
    EXPECT_EQ(object->refcount(), 0);
    SharedPtr<RefCountedBase> first(object);
    EXPECT_EQ(object->refcount(), 1);
    SharedPtr<RefCountedBase> second(first);
    EXPECT_EQ(object->refcount(), 2);
    first.reset();
    EXPECT_EQ(object->refcount(), 1);
    EXPECT_EQ(destroyed, 0);
    second.reset();
    EXPECT_EQ(destroyed, 1);
}

TYPED_TEST(RefCounted, AnObjectMayLiveOnTheStack) {
    int destroyed = 0;
    {
        typename TestFixture::Object const object(destroyed);
        EXPECT_EQ(object.refcount(), 0);
    }
    EXPECT_EQ(destroyed, 1);
}

TEST(RefCountedST, AMoveIsACopyAndHasNoOwner) {
    RefCountedST source;
    source.incref();
    RefCountedST const moved(std::move(source));
    EXPECT_EQ(moved.refcount(), 0);
    EXPECT_EQ(source.refcount(), 1); // NOLINT(bugprone-use-after-move): nothing was moved
}

TEST(RefCountedMT, IsOneOwnedPointerBehindTheInterface) {
    EXPECT_EQ(sizeof(RefCountedMT), 2 * sizeof(void*));
    EXPECT_TRUE(std::is_nothrow_move_constructible_v<RefCountedMT>);
    EXPECT_TRUE(std::is_nothrow_move_assignable_v<RefCountedMT>);
}

TEST(RefCountedMT, AMoveTakesTheCount) {
    RefCountedMT source;
    source.incref();
    source.incref();
    RefCountedMT const target(std::move(source)); // the source may now only be destroyed
    EXPECT_EQ(target.refcount(), 2);
    EXPECT_FALSE(target.decref());
    EXPECT_TRUE(target.decref());
}

TEST(RefCountedMT, MoveAssignmentTakesTheCount) {
    RefCountedMT source;
    RefCountedMT target;
    source.incref();
    source.incref();
    source.incref();
    target.incref();
    EXPECT_EQ(&(target = std::move(source)), &target); // the source may now only be destroyed
    EXPECT_EQ(target.refcount(), 3);
}

TEST(RefCountedMT, MoveAssignmentToItselfDoesNothing) {
    RefCountedMT object;
    object.incref();
    object.incref();
    RefCountedMT& self = object;
    object = std::move(self);
    EXPECT_EQ(object.refcount(), 2);
}

TEST(RefCountedMT, AMovedFromObjectCanBeDestroyedCopiedFromAndAssignedTo) {
    RefCountedMT first;
    first.incref();
    RefCountedMT second(std::move(first));
    RefCountedMT const copy(first); // NOLINT(bugprone-use-after-move): a copy does not read its source
    EXPECT_EQ(copy.refcount(), 0);
    first = std::move(second); // NOLINT(bugprone-use-after-move): it gets a count again
    EXPECT_EQ(first.refcount(), 1);
}

TEST(RefCountedMT, TheCountIsExactOnManyThreads) {
    constexpr int THREADS = 4;
    constexpr int ROUNDS = 10000;
    RefCountedMT const object;
    object.incref();
    std::vector<int> zeros(THREADS, 0);
    std::vector<std::thread> threads;
    for (int t = 0; t < THREADS; ++t) {
        threads.emplace_back([&object, &zeros, t] {
            for (int round = 0; round < ROUNDS; ++round) {
                object.incref();
                object.incref();
                zeros[static_cast<std::size_t>(t)] += object.decref() ? 1 : 0;
                zeros[static_cast<std::size_t>(t)] += object.decref() ? 1 : 0;
                zeros[static_cast<std::size_t>(t)] += object.refcount() < 1 ? 1 : 0;
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(zeros, std::vector<int>(THREADS, 0)) << "the first owner was still there";
    EXPECT_EQ(object.refcount(), 1);
    EXPECT_TRUE(object.decref());
}

// Every thread writes its own part of the object and the last one, whichever it is, reads all of them when it
// destroys the object: a count that did not order these accesses would be a data race.
TEST(RefCountedMT, TheLastOfManyThreadsDestroysOnceAndSeesWhatTheOthersWrote) {
    constexpr std::size_t THREADS = 4;
    struct Sum : RefCountedMT {
        explicit Sum(int& result) : m_result(&result) {}
        Sum(Sum const&) = delete;
        Sum& operator=(Sum const&) = delete;
        ~Sum() override {
            for (int const part : m_parts) {
                *m_result += part;
            }
        }
        int m_parts[THREADS] = {};
        int* m_result;
    };
    for (int round = 0; round < 200; ++round) {
        int result = 0;
        SharedPtr<Sum> first(new Sum(result));
        std::vector<std::thread> threads;
        for (std::size_t t = 0; t < THREADS; ++t) {
            threads.emplace_back([share = first, t]() mutable {
                SharedPtr<Sum> const other(share);
                share.reset();
                other->m_parts[t] = 1;
            });
        }
        first.reset();
        for (std::thread& thread : threads) {
            thread.join();
        }
        EXPECT_EQ(result, static_cast<int>(THREADS));
    }
}

} // namespace
