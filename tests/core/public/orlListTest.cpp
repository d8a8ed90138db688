// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "core/public/orlContainerTesting.h"

#include <orlList.h>

#include <gtest/gtest.h>

#include <type_traits>
#include <utility>

namespace {

using namespace ContainerTesting;

// Every operation on every instantiation.

template <class T>
class ListOf : public testing::Test {
protected:
    static List<T> ofNumbers(Numbers const& numbers) {
        List<T> list;
        for (int const number : numbers) {
            list.append(made<T>(number));
        }
        return list;
    }

    static typename List<T>::Iterator at(List<T> const& list, int index) {
        typename List<T>::Iterator position = list.begin();
        for (int i = 0; i < index; ++i) {
            ++position;
        }
        return position;
    }
};

TYPED_TEST_SUITE(ListOf, ListElements, ElementNames);

TYPED_TEST(ListOf, HasTheSizeOfAPointer) {
    EXPECT_EQ(sizeof(List<TypeParam>), sizeof(void*));
    EXPECT_EQ(sizeof(typename List<TypeParam>::Iterator), sizeof(void*));
    EXPECT_FALSE(std::is_polymorphic_v<List<TypeParam>>);
    EXPECT_FALSE(std::is_polymorphic_v<typename List<TypeParam>::Iterator>);
}

TYPED_TEST(ListOf, IsEmptyByDefault) {
    List<TypeParam> const list;
    EXPECT_EQ(list.size(), 0U);
    EXPECT_TRUE(list.empty());
    EXPECT_FALSE(list.begin() != list.end());
}

TYPED_TEST(ListOf, AppendsInOrder) {
    List<TypeParam> list;
    for (int number = 0; number < 100; ++number) {
        list.append(made<TypeParam>(number));
        ASSERT_EQ(list.size(), static_cast<unsigned long>(number) + 1);
        ASSERT_EQ(numberOf(list.front()), 0);
        ASSERT_EQ(numberOf(list.back()), number);
    }
    EXPECT_FALSE(list.empty());
    EXPECT_TRUE(list.begin() != list.end());
    Numbers expected;
    for (int number = 0; number < 100; ++number) {
        expected.push_back(number);
    }
    EXPECT_EQ(numbersOf(list), expected);
}

TYPED_TEST(ListOf, AppendsOneOfItsOwnElements) {
    List<TypeParam> list = this->ofNumbers({1, 2});
    list.append(list.front());
    EXPECT_EQ(numbersOf(list), (Numbers{1, 2, 1}));
}

TYPED_TEST(ListOf, GivesItsEndsForReadingAndWriting) {
    List<TypeParam> list = this->ofNumbers({1, 2, 3});
    List<TypeParam> const& constant = list;
    make(list.front(), 4);
    make(list.back(), 5);
    EXPECT_EQ(numberOf(constant.front()), 4);
    EXPECT_EQ(numberOf(constant.back()), 5);
    EXPECT_EQ(&constant.front(), &*list.begin());
    EXPECT_EQ(numbersOf(list), (Numbers{4, 2, 5}));
}

TYPED_TEST(ListOf, CopiesAllElementsInOrder) {
    List<TypeParam> const source = this->ofNumbers({1, 2, 3});
    List<TypeParam> copy(source);
    EXPECT_EQ(numbersOf(copy), (Numbers{1, 2, 3}));
    make(copy.front(), 9);
    copy.append(made<TypeParam>(4));
    EXPECT_EQ(numbersOf(source), (Numbers{1, 2, 3}));
    EXPECT_EQ(numbersOf(copy), (Numbers{9, 2, 3, 4}));
}

TYPED_TEST(ListOf, AnRvalueIsCopiedToo) {
    List<TypeParam> source = this->ofNumbers({1, 2});
    List<TypeParam> copy(std::move(source));
    EXPECT_EQ(numbersOf(source), (Numbers{1, 2})); // NOLINT(bugprone-use-after-move): that is the point
    List<TypeParam> assigned;
    assigned = std::move(copy);
    EXPECT_EQ(numbersOf(copy), (Numbers{1, 2})); // NOLINT(bugprone-use-after-move): that is the point
    EXPECT_EQ(numbersOf(assigned), (Numbers{1, 2}));
}

TYPED_TEST(ListOf, AssigningThreeElementsToFiveLeavesThree) {
    List<TypeParam> const three = this->ofNumbers({1, 2, 3});
    List<TypeParam> list = this->ofNumbers({4, 5, 6, 7, 8});
    EXPECT_EQ(&(list = three), &list);
    EXPECT_EQ(numbersOf(list), (Numbers{1, 2, 3}));
    EXPECT_EQ(list.size(), 3U);
}

TYPED_TEST(ListOf, AssigningFiveElementsToThreeLeavesFive) {
    List<TypeParam> const five = this->ofNumbers({4, 5, 6, 7, 8});
    List<TypeParam> list = this->ofNumbers({1, 2, 3});
    list = five;
    EXPECT_EQ(numbersOf(list), (Numbers{4, 5, 6, 7, 8}));
    EXPECT_EQ(list.size(), 5U);
    make(list.back(), 9);
    EXPECT_EQ(numberOf(five.back()), 8);
}

TYPED_TEST(ListOf, AssignmentKeepsTheElementsPlaces) {
    List<TypeParam> const source = this->ofNumbers({4, 5, 6});
    List<TypeParam> list = this->ofNumbers({1, 2});
    TypeParam const* const first = &list.front();
    TypeParam const* const second = &list.back();
    list = source;
    EXPECT_EQ(&list.front(), first);
    EXPECT_EQ(&*this->at(list, 1), second);
    EXPECT_EQ(numberOf(*second), 5);
}

TYPED_TEST(ListOf, AssignmentToItselfChangesNothing) {
    List<TypeParam> list = this->ofNumbers({1, 2, 3});
    List<TypeParam> const& self = list;
    list = self;
    EXPECT_EQ(numbersOf(list), (Numbers{1, 2, 3}));
}

TYPED_TEST(ListOf, RemovesAtBothEnds) {
    List<TypeParam> list = this->ofNumbers({1, 2, 3, 4});
    list.pop_front();
    EXPECT_EQ(numbersOf(list), (Numbers{2, 3, 4}));
    list.pop_back();
    EXPECT_EQ(numbersOf(list), (Numbers{2, 3}));
    list.pop_back();
    list.pop_front();
    EXPECT_TRUE(list.empty());
    EXPECT_EQ(list.size(), 0U);
}

TYPED_TEST(ListOf, IsEmptyWhenCleared) {
    List<TypeParam> list = this->ofNumbers({1, 2, 3});
    list.clear();
    EXPECT_TRUE(list.empty());
    EXPECT_EQ(list.size(), 0U);
    EXPECT_FALSE(list.begin() != list.end());
    list.clear();
    list.append(made<TypeParam>(4));
    EXPECT_EQ(numbersOf(list), Numbers{4});
}

TYPED_TEST(ListOf, EraseGivesTheFollowingElement) {
    List<TypeParam> list = this->ofNumbers({1, 2, 3, 4});
    typename List<TypeParam>::Iterator position = list.erase(this->at(list, 1));
    EXPECT_EQ(numberOf(*position), 3);
    EXPECT_EQ(numbersOf(list), (Numbers{1, 3, 4}));
    EXPECT_EQ(list.size(), 3U);
    EXPECT_EQ(numberOf(*list.erase(list.begin())), 3);
    position = list.erase(this->at(list, 1));
    EXPECT_FALSE(position != list.end());
    EXPECT_EQ(numbersOf(list), Numbers{3});
}

TYPED_TEST(ListOf, EraseOfTheOnlyElementGivesTheEnd) {
    List<TypeParam> list = this->ofNumbers({1});
    typename List<TypeParam>::Iterator const position = list.erase(list.begin());
    EXPECT_FALSE(position != list.end());
    EXPECT_TRUE(list.empty());
}

TYPED_TEST(ListOf, EraseKeepsIteratorsAtOtherElements) {
    List<TypeParam> list = this->ofNumbers({1, 2, 3});
    typename List<TypeParam>::Iterator first = list.begin();
    typename List<TypeParam>::Iterator const last = this->at(list, 2);
    list.erase(this->at(list, 1));
    EXPECT_EQ(numberOf(*first), 1);
    EXPECT_EQ(numberOf(*last), 3);
    ++first;
    EXPECT_FALSE(first != last);
}

TYPED_TEST(ListOf, ACopiedIteratorStepsAlone) {
    List<TypeParam> const list = this->ofNumbers({1, 2, 3});
    typename List<TypeParam>::Iterator first = list.begin();
    typename List<TypeParam>::Iterator second(first);
    EXPECT_FALSE(first != second);
    EXPECT_EQ(&++second, &second);
    EXPECT_TRUE(first != second);
    EXPECT_EQ(numberOf(*first), 1);
    EXPECT_EQ(numberOf(*second), 2);
    EXPECT_EQ(&(first = second), &first);
    ++second;
    EXPECT_EQ(numberOf(*first), 2);
    typename List<TypeParam>::Iterator const& self = first;
    first = self;
    EXPECT_EQ(numberOf(*first), 2);
}

TYPED_TEST(ListOf, IteratorsOfAConstListWrite) {
    List<TypeParam> const list = this->ofNumbers({1, 2});
    make(*list.begin(), 5);
    for (auto& value : list) {
        make(value, numberOf(value) + 10);
    }
    EXPECT_EQ(numbersOf(list), (Numbers{15, 12}));
    EXPECT_TRUE((std::is_same_v<decltype(*list.begin()), TypeParam&>));
}

TYPED_TEST(ListOf, AnIteratorMayHoldNull) { typename List<TypeParam>::Iterator const position(nullptr); }

// What an Iterator of a List cannot do, though one of a Vector can.

template <class Iterator, class = void>
struct StepsBack : std::false_type {};
template <class Iterator>
struct StepsBack<Iterator, std::void_t<decltype(--std::declval<Iterator&>())>> : std::true_type {};

template <class Iterator, class = void>
struct HasPostfix : std::false_type {};
template <class Iterator>
struct HasPostfix<Iterator, std::void_t<decltype(std::declval<Iterator&>()++)>> : std::true_type {};

template <class Iterator, class = void>
struct ComparesEqual : std::false_type {};
template <class Iterator>
struct ComparesEqual<Iterator, std::void_t<decltype(std::declval<Iterator&>() == std::declval<Iterator&>())>>
    : std::true_type {};

TEST(ListTest, AnIteratorHasTheForwardProtocolOnly) {
    EXPECT_TRUE(StepsBack<Vector<double>::Iterator>::value);
    EXPECT_FALSE(StepsBack<List<double>::Iterator>::value);
    EXPECT_TRUE(HasPostfix<Vector<double>::Iterator>::value);
    EXPECT_FALSE(HasPostfix<List<double>::Iterator>::value);
    EXPECT_TRUE(ComparesEqual<Vector<double>::Iterator>::value);
    EXPECT_FALSE(ComparesEqual<List<double>::Iterator>::value);
}

TEST(ListTest, AClearedListReleasesEachTokenOnceAndATokenHeldElsewhereSurvives) {
    ASSERT_EQ(NumberedToken::alive, 0);
    {
        SharedPtr<Token> const held(new NumberedToken(1));
        List<SharedPtr<Token>> list;
        list.append(held);
        list.append(SharedPtr<Token>(new NumberedToken(2)));
        list.append(SharedPtr<Token>(new NumberedToken(3)));
        EXPECT_EQ(NumberedToken::alive, 3);
        EXPECT_EQ(held->refcount(), 2);
        list.clear();
        EXPECT_EQ(NumberedToken::alive, 1);
        EXPECT_EQ(held->refcount(), 1);
        EXPECT_STREQ(held->getName(), "1");
    }
    EXPECT_EQ(NumberedToken::alive, 0);
}

TEST(ListTest, CopiesShareTheirTokens) {
    SharedPtr<Token> const token(new NumberedToken(1));
    List<SharedPtr<Token>> list;
    list.append(token);
    {
        List<SharedPtr<Token>> const copy(list);
        EXPECT_EQ(token->refcount(), 3);
        EXPECT_EQ(copy.front().get(), token.get());
    }
    EXPECT_EQ(token->refcount(), 2);
    list.erase(list.begin());
    EXPECT_EQ(token->refcount(), 1);
}

TEST(ListTest, NullPointersAreElementsLikeOthers) {
    List<SharedPtr<Token>> list;
    list.append(nullptr);
    list.append(SharedPtr<Token>());
    List<SharedPtr<Token>> const copy(list);
    EXPECT_EQ(copy.size(), 2U);
    EXPECT_FALSE(copy.front());
}

TEST(ListTest, TheLastReleaseDestroysAnExternalSegment) {
    struct Segment : ExternalSegment {
        explicit Segment(bool& destroyed) : ExternalSegment(1), m_destroyed(&destroyed) {}
        Segment(Segment const&) = delete;
        Segment& operator=(Segment const&) = delete;
        ~Segment() override { *m_destroyed = true; }
        bool* m_destroyed;
    };
    bool destroyed = false;
    List<SharedPtr<ExternalSegment>> list;
    list.append(SharedPtr<ExternalSegment>(new Segment(destroyed)));
    List<SharedPtr<ExternalSegment>> copy(list);
    EXPECT_EQ(list.front()->refcount(), 2);
    list.clear();
    EXPECT_FALSE(destroyed);
    copy.pop_front();
    EXPECT_TRUE(destroyed);
}

TEST(ListTest, CopiesOfStringsShareTheirTextUntilOneIsChanged) {
    List<String> source;
    source.append("a text that is too long to stand inside of a string object");
    List<String> copy(source);
    List<String> const& constSource = source;
    List<String> const& constCopy = copy;
    EXPECT_EQ(constCopy.front().c_str(), constSource.front().c_str());
    copy.front().append("!");
    EXPECT_STREQ(constSource.front().c_str(), "a text that is too long to stand inside of a string object");
    EXPECT_STREQ(constCopy.front().c_str(), "a text that is too long to stand inside of a string object!");
}

} // namespace
