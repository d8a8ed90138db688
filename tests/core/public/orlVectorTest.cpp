// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "core/public/orlContainerTesting.h"

#include <orlVector.h>

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <type_traits>
#include <utility>

namespace {

using namespace ContainerTesting;

// Every operation on every instantiation.

template <class T>
class VectorOf : public testing::Test {
protected:
    static Vector<T> ofNumbers(Numbers const& numbers) {
        Vector<T> vector;
        for (int const number : numbers) {
            vector.push_back(made<T>(number));
        }
        return vector;
    }

    static typename Vector<T>::Iterator at(Vector<T> const& vector, long index) {
        typename Vector<T>::Iterator position = vector.begin();
        position += index;
        return position;
    }
};

TYPED_TEST_SUITE(VectorOf, VectorElements, ElementNames);

TYPED_TEST(VectorOf, HasTheSizeOfAPointer) {
    EXPECT_EQ(sizeof(Vector<TypeParam>), sizeof(void*));
    EXPECT_EQ(sizeof(typename Vector<TypeParam>::Iterator), sizeof(void*));
    EXPECT_FALSE(std::is_polymorphic_v<Vector<TypeParam>>);
    EXPECT_FALSE(std::is_polymorphic_v<typename Vector<TypeParam>::Iterator>);
}

TYPED_TEST(VectorOf, IsEmptyByDefaultAndHasNoRoom) {
    Vector<TypeParam> const vector;
    EXPECT_EQ(vector.size(), 0U);
    EXPECT_TRUE(vector.empty());
    EXPECT_EQ(vector.capacity(), 0U);
    EXPECT_TRUE(vector.begin() == vector.end());
    EXPECT_FALSE(vector.begin() != vector.end());
}

TYPED_TEST(VectorOf, HoldsAsManyCopiesAsAskedFor) {
    Vector<TypeParam> const vector(3, made<TypeParam>(7));
    EXPECT_EQ(vector.size(), 3U);
    EXPECT_EQ(numbersOf(vector), (Numbers{7, 7, 7}));
    EXPECT_TRUE(Vector<TypeParam>(0, made<TypeParam>(7)).empty());
}

TYPED_TEST(VectorOf, AddsAtTheEnd) {
    Vector<TypeParam> vector;
    for (int number = 0; number < 100; ++number) {
        vector.push_back(made<TypeParam>(number));
        ASSERT_EQ(vector.size(), static_cast<unsigned long>(number) + 1);
        ASSERT_EQ(numberOf(vector.back()), number);
        ASSERT_GE(vector.capacity(), vector.size());
    }
    EXPECT_FALSE(vector.empty());
    for (int number = 0; number < 100; ++number) {
        ASSERT_EQ(numberOf(vector[static_cast<unsigned long>(number)]), number);
    }
}

TYPED_TEST(VectorOf, AddsOneOfItsOwnElements) {
    Vector<TypeParam> vector = this->ofNumbers({1, 2});
    for (int i = 0; i < 10; ++i) {
        vector.push_back(vector[0]); // moves the elements to a larger place now and then
    }
    EXPECT_EQ(numbersOf(vector), (Numbers{1, 2, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1}));
}

TYPED_TEST(VectorOf, GivesItsElementsForReadingAndWriting) {
    Vector<TypeParam> vector = this->ofNumbers({1, 2, 3});
    Vector<TypeParam> const& constant = vector;
    make(vector[0], 4);
    make(vector.back(), 5);
    EXPECT_EQ(numberOf(constant[0]), 4);
    EXPECT_EQ(numberOf(constant[1]), 2);
    EXPECT_EQ(numberOf(constant.back()), 5);
    EXPECT_EQ(&constant[2], &constant.back());
    EXPECT_EQ(&vector[2], &vector.back());
}

TYPED_TEST(VectorOf, CopiesAllElementsIntoJustEnoughRoom) {
    Vector<TypeParam> source = this->ofNumbers({1, 2, 3});
    source.reserve(50);
    Vector<TypeParam> copy(source);
    EXPECT_EQ(numbersOf(copy), (Numbers{1, 2, 3}));
    EXPECT_EQ(copy.capacity(), 3U);
    make(copy[1], 9);
    copy.push_back(made<TypeParam>(4));
    EXPECT_EQ(numbersOf(source), (Numbers{1, 2, 3}));
    EXPECT_EQ(Vector<TypeParam>(Vector<TypeParam>()).capacity(), 0U);
}

TYPED_TEST(VectorOf, AnRvalueIsCopiedToo) {
    Vector<TypeParam> source = this->ofNumbers({1, 2});
    Vector<TypeParam> copy(std::move(source));
    EXPECT_EQ(numbersOf(source), (Numbers{1, 2})); // NOLINT(bugprone-use-after-move): that is the point
    Vector<TypeParam> assigned;
    assigned = std::move(copy);
    EXPECT_EQ(numbersOf(copy), (Numbers{1, 2})); // NOLINT(bugprone-use-after-move): that is the point
    EXPECT_EQ(numbersOf(assigned), (Numbers{1, 2}));
}

TYPED_TEST(VectorOf, AssignmentTakesTheSourcesElements) {
    Vector<TypeParam> const three = this->ofNumbers({1, 2, 3});
    Vector<TypeParam> const five = this->ofNumbers({4, 5, 6, 7, 8});
    Vector<TypeParam> vector = this->ofNumbers({9});
    EXPECT_EQ(&(vector = five), &vector);
    EXPECT_EQ(numbersOf(vector), (Numbers{4, 5, 6, 7, 8}));
    unsigned long const capacity = vector.capacity();
    vector = three;
    EXPECT_EQ(numbersOf(vector), (Numbers{1, 2, 3}));
    EXPECT_EQ(vector.capacity(), capacity);
    make(vector[0], 10);
    EXPECT_EQ(numberOf(three[0]), 1);
    vector = Vector<TypeParam>();
    EXPECT_TRUE(vector.empty());
}

TYPED_TEST(VectorOf, AssignmentToItselfChangesNothing) {
    Vector<TypeParam> vector = this->ofNumbers({1, 2, 3});
    Vector<TypeParam> const& self = vector;
    vector = self;
    EXPECT_EQ(numbersOf(vector), (Numbers{1, 2, 3}));
}

TYPED_TEST(VectorOf, ReservesButNeverShrinks) {
    Vector<TypeParam> vector;
    vector.reserve(10);
    EXPECT_EQ(vector.capacity(), 10U);
    EXPECT_TRUE(vector.empty());
    vector.reserve(5);
    EXPECT_EQ(vector.capacity(), 10U);
    vector.push_back(made<TypeParam>(1));
    TypeParam const* const place = &vector[0];
    for (int number = 2; number <= 10; ++number) {
        vector.push_back(made<TypeParam>(number));
    }
    EXPECT_EQ(&vector[0], place) << "there was room";
}

TYPED_TEST(VectorOf, ResizesWithCopiesAndKeepsItsRoom) {
    Vector<TypeParam> vector = this->ofNumbers({1});
    vector.resize(3, made<TypeParam>(2));
    EXPECT_EQ(numbersOf(vector), (Numbers{1, 2, 2}));
    unsigned long const capacity = vector.capacity();
    vector.resize(1, made<TypeParam>(3));
    EXPECT_EQ(numbersOf(vector), Numbers{1});
    EXPECT_EQ(vector.capacity(), capacity);
    vector.resize(0, made<TypeParam>(3));
    EXPECT_TRUE(vector.empty());
    EXPECT_EQ(vector.capacity(), capacity);
}

TYPED_TEST(VectorOf, ResizesWithACopyOfItsOwnElement) {
    Vector<TypeParam> vector = this->ofNumbers({1, 2});
    vector.resize(100, vector[1]);
    EXPECT_EQ(numberOf(vector.back()), 2);
}

TYPED_TEST(VectorOf, KeepsItsCapacityWhenCleared) {
    Vector<TypeParam> vector = this->ofNumbers({1, 2, 3});
    unsigned long const capacity = vector.capacity();
    vector.clear();
    EXPECT_TRUE(vector.empty());
    EXPECT_EQ(vector.size(), 0U);
    EXPECT_EQ(vector.capacity(), capacity);
    vector.clear();
    EXPECT_EQ(vector.capacity(), capacity);
}

TYPED_TEST(VectorOf, RemovesTheLastElement) {
    Vector<TypeParam> vector = this->ofNumbers({1, 2});
    vector.pop_back();
    EXPECT_EQ(numbersOf(vector), Numbers{1});
    vector.pop_back();
    EXPECT_TRUE(vector.empty());
}

TYPED_TEST(VectorOf, EraseGivesTheFollowingElement) {
    Vector<TypeParam> vector = this->ofNumbers({1, 2, 3, 4});
    typename Vector<TypeParam>::Iterator position = this->at(vector, 1);
    position = vector.erase(position);
    EXPECT_EQ(numberOf(*position), 3);
    EXPECT_TRUE(position == this->at(vector, 1));
    EXPECT_EQ(numbersOf(vector), (Numbers{1, 3, 4}));
    EXPECT_EQ(numberOf(*vector.erase(vector.begin())), 3);
    position = vector.erase(this->at(vector, 1));
    EXPECT_TRUE(position == vector.end());
    EXPECT_EQ(numbersOf(vector), Numbers{3});
}

TYPED_TEST(VectorOf, EraseOfTheOnlyElementGivesTheEnd) {
    Vector<TypeParam> vector = this->ofNumbers({1});
    typename Vector<TypeParam>::Iterator const position = vector.erase(vector.begin());
    EXPECT_TRUE(position == vector.end());
    EXPECT_TRUE(vector.empty());
    EXPECT_EQ(vector.capacity(), 1U);
}

TYPED_TEST(VectorOf, EraseLeavesTheCallersIteratorAlone) {
    Vector<TypeParam> vector = this->ofNumbers({1, 2});
    typename Vector<TypeParam>::Iterator const begin = vector.begin();
    typename Vector<TypeParam>::Iterator const following = vector.erase(begin);
    EXPECT_TRUE(following == vector.begin());
    EXPECT_TRUE(begin == vector.begin());
}

TYPED_TEST(VectorOf, AnIteratorStepsForwardAndBack) {
    Vector<TypeParam> const vector = this->ofNumbers({1, 2, 3, 4});
    typename Vector<TypeParam>::Iterator position = vector.begin();
    EXPECT_EQ(numberOf(*position), 1);
    EXPECT_EQ(&++position, &position);
    EXPECT_EQ(numberOf(*position), 2);
    EXPECT_EQ(&(position += 2), &position);
    EXPECT_EQ(numberOf(*position), 4);
    EXPECT_EQ(&--position, &position);
    EXPECT_EQ(numberOf(*position), 3);
    position += -2;
    EXPECT_TRUE(position == vector.begin());
    position += 0;
    EXPECT_FALSE(position != vector.begin());
    position += 4;
    EXPECT_TRUE(position == vector.end());
}

TYPED_TEST(VectorOf, APostfixStepForwardGivesThePositionAfterTheStep) {
    Vector<TypeParam> const vector = this->ofNumbers({1, 2, 3});
    typename Vector<TypeParam>::Iterator position = vector.begin();
    typename Vector<TypeParam>::Iterator const result = position++;
    EXPECT_EQ(numberOf(*result), 2);
    EXPECT_TRUE(result == position);
}

TYPED_TEST(VectorOf, APostfixStepBackGivesThePositionAfterTheStep) {
    Vector<TypeParam> const vector = this->ofNumbers({1, 2, 3});
    typename Vector<TypeParam>::Iterator position = vector.end();
    typename Vector<TypeParam>::Iterator const result = position--;
    EXPECT_EQ(numberOf(*result), 3);
    EXPECT_TRUE(result == position);
}

TYPED_TEST(VectorOf, ACopiedIteratorStepsAlone) {
    Vector<TypeParam> const vector = this->ofNumbers({1, 2, 3});
    typename Vector<TypeParam>::Iterator first = vector.begin();
    typename Vector<TypeParam>::Iterator second(first);
    EXPECT_TRUE(first == second);
    ++second;
    EXPECT_EQ(numberOf(*first), 1);
    EXPECT_EQ(numberOf(*second), 2);
    EXPECT_EQ(&(first = second), &first);
    EXPECT_EQ(numberOf(*first), 2);
    ++second;
    EXPECT_EQ(numberOf(*first), 2);
    typename Vector<TypeParam>::Iterator const& self = first;
    first = self;
    EXPECT_EQ(numberOf(*first), 2);
}

TYPED_TEST(VectorOf, IteratorsOfAConstVectorWrite) {
    Vector<TypeParam> const vector = this->ofNumbers({1, 2});
    make(*vector.begin(), 5);
    for (auto& value : vector) {
        make(value, numberOf(value) + 10);
    }
    EXPECT_EQ(numbersOf(vector), (Numbers{15, 12}));
    EXPECT_TRUE((std::is_same_v<decltype(*vector.begin()), TypeParam&>));
}

TYPED_TEST(VectorOf, AnIteratorPointsToTheElement) {
    Vector<TypeParam> const vector = this->ofNumbers({1, 2});
    typename Vector<TypeParam>::Iterator const position = vector.begin();
    EXPECT_EQ(position.operator->(), &vector[0]);
    EXPECT_TRUE((std::is_same_v<decltype(position.operator->()), TypeParam*>));
}

TYPED_TEST(VectorOf, AnIteratorMayHoldNull) { typename Vector<TypeParam>::Iterator const position(nullptr); }

TYPED_TEST(VectorOf, ASizeBeyondAllBoundsThrows) {
    EXPECT_THROW(Vector<TypeParam>(~0UL, made<TypeParam>(1)), std::length_error);
    Vector<TypeParam> vector = this->ofNumbers({1, 2});
    EXPECT_THROW(vector.reserve(~0UL), std::length_error);
    EXPECT_THROW(vector.resize(~0UL, made<TypeParam>(1)), std::length_error);
    EXPECT_EQ(numbersOf(vector), (Numbers{1, 2}));
}

// What single element types show.

template <class Container, class = void>
struct HasFront : std::false_type {};
template <class Container>
struct HasFront<Container, std::void_t<decltype(std::declval<Container&>().front())>> : std::true_type {};

template <class Container, class = void>
struct HasAt : std::false_type {};
template <class Container>
struct HasAt<Container, std::void_t<decltype(std::declval<Container&>().at(0))>> : std::true_type {};

TEST(VectorTest, HasNeitherFrontNorAt) {
    EXPECT_TRUE(HasFront<List<double>>::value);
    EXPECT_FALSE(HasFront<Vector<double>>::value);
    EXPECT_TRUE(HasAt<String>::value);
    EXPECT_FALSE(HasAt<Vector<double>>::value);
}

TEST(VectorTest, ASizeNeedsAValue) {
    EXPECT_TRUE((std::is_constructible_v<Vector<double>, unsigned long, double>));
    EXPECT_FALSE((std::is_constructible_v<Vector<double>, unsigned long>));
}

TEST(VectorTest, CopiesOfStringsShareTheirTextUntilOneIsChanged) {
    Vector<String> source;
    source.push_back("a text that is too long to stand inside of a string object");
    source.push_back("another one");
    Vector<String> copy(source);
    Vector<String> const& constSource = source;
    Vector<String> const& constCopy = copy;
    EXPECT_EQ(constCopy[0].c_str(), constSource[0].c_str());
    EXPECT_EQ(constCopy[1].c_str(), constSource[1].c_str());
    copy[0].append("!");
    EXPECT_NE(constCopy[0].c_str(), constSource[0].c_str());
    EXPECT_EQ(constCopy[1].c_str(), constSource[1].c_str());
    EXPECT_STREQ(constSource[0].c_str(), "a text that is too long to stand inside of a string object");
    EXPECT_STREQ(constCopy[0].c_str(), "a text that is too long to stand inside of a string object!");
}

TEST(VectorTest, LayersAreSharedByCopiesAndReleasedOnce) {
    SharedPtr<Annotation::Layer> const layer(new Annotation::Layer);
    {
        Vector<SharedPtr<Annotation::Layer>> vector(3, layer);
        EXPECT_EQ(layer->refcount(), 4);
        Vector<SharedPtr<Annotation::Layer>> const copy(vector);
        EXPECT_EQ(layer->refcount(), 7);
        vector.pop_back();
        EXPECT_EQ(layer->refcount(), 6);
        vector.erase(vector.begin());
        EXPECT_EQ(layer->refcount(), 5);
        vector.clear();
        EXPECT_EQ(layer->refcount(), 4);
    }
    EXPECT_EQ(layer->refcount(), 1);
}

TEST(VectorTest, AnArrowReachesIntoTheElement) {
    Vector<NameValueStruct> vector;
    vector.push_back({"name", "value"});
    vector.begin()->value = "other";
    EXPECT_STREQ(vector[0].value.c_str(), "other");
    EXPECT_STREQ(vector.begin()->name.c_str(), "name");
}

TEST(VectorTest, HoldsTheWholeRangeOfItsNumbers) {
    Vector<long long> numbers;
    numbers.push_back(-9223372036854775807LL - 1);
    numbers.push_back(9223372036854775807LL);
    EXPECT_EQ(numbers[0], -9223372036854775807LL - 1);
    EXPECT_EQ(numbers[1], 9223372036854775807LL);
    Vector<double> const doubles(2, 5e-324);
    EXPECT_EQ(doubles[1], 5e-324);
}

} // namespace
