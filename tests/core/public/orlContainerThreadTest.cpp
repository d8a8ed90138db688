// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "core/public/orlContainerTesting.h"
#include "support/orlThreads.h"

#include <gtest/gtest.h>

#include <cstddef>

// Containers and annotations that many threads read at a time, and copies of them whose elements are shared.

namespace {

using namespace ContainerTesting;
using orlTest::onThreads;

constexpr std::size_t THREADS = 4;
constexpr int ROUNDS = 50;

template <class T>
class VectorThreads : public testing::Test {};
TYPED_TEST_SUITE(VectorThreads, VectorElements, ElementNames);

TYPED_TEST(VectorThreads, OneVectorHasManyReadersThatChangeTheirCopies) {
    Vector<TypeParam> original;
    for (int i = 0; i < 5; ++i) {
        original.push_back(made<TypeParam>(i));
    }
    Vector<TypeParam> const& vector = original;
    onThreads(THREADS, [&](std::size_t) {
        for (int round = 0; round < ROUNDS; ++round) {
            EXPECT_EQ(numbersOf(vector), Numbers({0, 1, 2, 3, 4}));
            EXPECT_EQ(vector.size(), 5U);
            EXPECT_FALSE(vector.empty());
            EXPECT_EQ(numberOf(vector[2]), 2);
            EXPECT_EQ(numberOf(vector.back()), 4);
            Vector<TypeParam> copy(vector);
            copy.erase(copy.begin());
            copy.push_back(vector[0]);
            EXPECT_EQ(numbersOf(copy), Numbers({1, 2, 3, 4, 0}));
            copy = vector;
            copy.clear();
        }
    });
}

// But for tokens, whose count is not atomic.
template <class T>
class ListThreads : public testing::Test {};
using SharedListElements =
    testing::Types<int, double, String, NameDescriptionStruct, SharedPtr<ExternalSegment>>;
TYPED_TEST_SUITE(ListThreads, SharedListElements, ElementNames);

TYPED_TEST(ListThreads, OneListHasManyReadersThatChangeTheirCopies) {
    List<TypeParam> original;
    for (int i = 0; i < 5; ++i) {
        original.append(made<TypeParam>(i));
    }
    List<TypeParam> const& list = original;
    onThreads(THREADS, [&](std::size_t) {
        for (int round = 0; round < ROUNDS; ++round) {
            EXPECT_EQ(numbersOf(list), Numbers({0, 1, 2, 3, 4}));
            EXPECT_EQ(list.size(), 5U);
            EXPECT_FALSE(list.empty());
            EXPECT_EQ(numberOf(list.front()), 0);
            EXPECT_EQ(numberOf(list.back()), 4);
            List<TypeParam> copy(list);
            copy.pop_front();
            copy.append(list.front());
            EXPECT_EQ(numbersOf(copy), Numbers({1, 2, 3, 4, 0}));
            copy = list;
            copy.clear();
        }
    });
}

TEST(AnnotationThreads, OneAnnotationHasManyReadersThatChangeTheirCopies) {
    Annotation original;
    original.getLayers().push_back(Annotation::Paint::create());
    original.getLayers().push_back(Annotation::Text::create(
        {}, {}, true, "words", {}, Annotation::Text::Justification(), {"a font", 12.0}, 1.0, 0.0));
    Annotation const& annotation = original;
    onThreads(THREADS, [&](std::size_t) {
        for (int round = 0; round < ROUNDS; ++round) {
            EXPECT_TRUE(annotation.isVisible());
            Annotation copy(annotation);
            auto const text = staticPointerCast<Annotation::Text>(copy.getLayers()[1]);
            EXPECT_TRUE(text->isVisible());
            EXPECT_EQ(text->getGhostAfter() + text->getGhostBefore(), 6U);
            EXPECT_STREQ(text->getText().c_str(), "words");
            SharedPtr<Annotation::Text> const clone = text->clone();
            clone->setText(text->getFont().name + "!");
            EXPECT_STREQ(clone->getText().c_str(), "a font!");
            copy.getLayers().erase(copy.getLayers().begin());
            copy.getLayers().push_back(clone);
            copy.setVisible(false);
            copy = annotation;
            EXPECT_EQ(copy.getLayers().size(), 2U);
        }
    });
    EXPECT_EQ(original.getLayers()[0]->refcount(), 1);
    EXPECT_EQ(original.getLayers()[1]->refcount(), 1);
}

} // namespace
