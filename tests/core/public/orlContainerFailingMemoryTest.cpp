// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "core/public/orlContainerTesting.h"
#include "support/orlFailingMemory.h"

#include <gtest/gtest.h>

// What the containers hold when there is no memory for a change, with every type of element.

namespace {

using namespace ContainerTesting;
using orlTest::failEachAllocation;
using orlTest::FailingMemory;

template <class Container>
void fill(Container& container, Numbers const& numbers);

template <class T>
void fill(Vector<T>& vector, Numbers const& numbers) {
    for (int const number : numbers) {
        vector.push_back(made<T>(number));
    }
}

template <class T>
void fill(List<T>& list, Numbers const& numbers) {
    for (int const number : numbers) {
        list.append(made<T>(number));
    }
}

// The operation changes the container as it is told, or not at all.
template <class Container, class Operation>
void failChange(Numbers const& before, Numbers const& after, Operation const& operation) {
    failEachAllocation([&](FailingMemory& memory) {
        Container container;
        fill(container, before);
        bool const done = memory.run([&] { operation(container); });
        EXPECT_EQ(numbersOf(container), done ? after : before);
    });
}

template <class T>
class VectorFailingMemory : public testing::Test {};
TYPED_TEST_SUITE(VectorFailingMemory, VectorElements, ElementNames);

TYPED_TEST(VectorFailingMemory, AChangeIsMadeWholeOrNotAtAll) {
    using V = Vector<TypeParam>;
    TypeParam const element = made<TypeParam>(9);
    failChange<V>({}, {9}, [&](V& v) { v.push_back(element); });
    failChange<V>({1}, {1, 9}, [&](V& v) { v.push_back(element); });
    failChange<V>({1, 2}, {1, 2}, [](V& v) { v.reserve(100); });
    failChange<V>({1}, {1, 9, 9}, [&](V& v) { v.resize(3, element); });
    failChange<V>({1, 2, 3}, {1, 3}, [](V& v) { v.erase(v.begin() += 1); });
    failChange<V>({1, 2, 3}, {1, 2, 3}, [](V& v) {
        typename V::Iterator position = v.begin();
        position++;
        position--;
        typename V::Iterator const copy(position);
        static_cast<void>(copy == v.end());
    });
}

TYPED_TEST(VectorFailingMemory, ACopyIsMadeWholeOrNotAtAll) {
    using V = Vector<TypeParam>;
    V source;
    fill(source, {4, 5, 6, 7});
    failChange<V>({1}, {4, 5, 6, 7}, [&](V& v) { v = source; });
    failChange<V>({1, 2}, {1, 2}, [&](V&) {
        V const copy(source);
        V const same(3, made<TypeParam>(5));
        V const empty;
    });
}

// But for the class of another library: this program holds the library's own idea of it.
using OwnListElements = testing::Types<int, double, String, NameDescriptionStruct, SharedPtr<Token>>;

template <class T>
class ListFailingMemory : public testing::Test {};
TYPED_TEST_SUITE(ListFailingMemory, OwnListElements, ElementNames);

TYPED_TEST(ListFailingMemory, AChangeIsMadeWholeOrNotAtAll) {
    using L = List<TypeParam>;
    TypeParam const element = made<TypeParam>(9);
    failChange<L>({}, {9}, [&](L& l) { l.append(element); });
    failChange<L>({1}, {1, 9}, [&](L& l) { l.append(element); });
    failChange<L>({1, 2}, {2}, [](L& l) { l.erase(l.begin()); });
    failChange<L>({1, 2}, {1, 2}, [](L& l) {
        typename L::Iterator const position = l.begin();
        typename L::Iterator const copy(position);
        static_cast<void>(copy != l.end());
    });
}

TYPED_TEST(ListFailingMemory, ACopyIsMadeWholeOrNotAtAll) {
    using L = List<TypeParam>;
    L source;
    fill(source, {4, 5, 6, 7});
    failChange<L>({1, 2}, {1, 2}, [&](L&) {
        L const copy(source);
        L const empty;
    });
    failChange<L>({}, {4, 5, 6, 7}, [&](L& l) { l = source; });
}

TYPED_TEST(ListFailingMemory, AnAssignmentThatFailsHasAssignedToTheElementsThatWereThere) {
    using L = List<TypeParam>;
    L source;
    fill(source, {4, 5, 6, 7});
    failEachAllocation([&](FailingMemory& memory) {
        L list;
        fill(list, {1, 2});
        bool const done = memory.run([&] { list = source; });
        EXPECT_EQ(numbersOf(list), done ? Numbers({4, 5, 6, 7}) : Numbers({4, 5}));
    });
}

TEST(CacheStatsFailingMemory, AnObjectIsMadeWholeOrNotAtAll) {
    failEachAllocation([](FailingMemory& memory) {
        SharedPtr<CacheStats> stats;
        bool const done = memory.run([&] {
            stats = CacheStats::create();
            stats->frameRanges.push_back({1, 2});
        });
        if (stats) {
            EXPECT_EQ(stats->frameRanges.size(), done ? 1U : 0U);
            EXPECT_EQ(stats->refcount(), 1);
        }
    });
}

TEST(RefCountedFailingMemory, ACountedObjectIsMadeWholeOrNotAtAll) {
    class Counted : public RefCountedMT {
    public:
        String m_text{"a member whose text takes an allocation of its own"};
    };
    failEachAllocation([](FailingMemory& memory) {
        SharedPtr<Counted> object;
        bool const done = memory.run([&] {
            SharedPtr<Counted> const made(new Counted);
            object = SharedPtr<Counted>(new Counted(*made));
        });
        EXPECT_EQ(object != nullptr, done);
        if (object) {
            EXPECT_EQ(object->refcount(), 1);
        }
    });
}

} // namespace
