// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "core/public/orlContainerTesting.h"

#include <functional>
#include <memory>
#include <type_traits>
#include <utility>

namespace {

using namespace ContainerTesting;

template <class T>
class VectorContract : public testing::Test {};
TYPED_TEST_SUITE(VectorContract, VectorElements, ElementNames);

template <class T>
class ListContract : public testing::Test {};
TYPED_TEST_SUITE(ListContract, ListElements, ElementNames);

// What an operation takes and gives

template <class Container>
auto erasesARange(int) -> decltype(std::declval<Container&>().erase(std::declval<Container&>().begin(),
                                                                    std::declval<Container&>().end()),
                                   std::true_type());
template <class Container>
std::false_type erasesARange(...);

TYPED_TEST(VectorContract, OperationsTakeAndGiveWhatTheirCallersWereCompiledWith) {
    using T = TypeParam;
    using V = Vector<T>;
    using I = typename V::Iterator;
    EXPECT_TRUE((std::is_same_v<decltype(&V::reserve), void (V::*)(unsigned long)>));
    EXPECT_TRUE((std::is_same_v<decltype(&V::capacity), unsigned long (V::*)() const>));
    EXPECT_TRUE((std::is_same_v<decltype(&V::resize), void (V::*)(unsigned long, T)>));
    EXPECT_TRUE((std::is_same_v<decltype(&V::push_back), void (V::*)(T const&)>));
    EXPECT_TRUE((std::is_same_v<decltype(&V::erase), I (V::*)(I)>)) << "one element, by value";
    EXPECT_TRUE((std::is_same_v<decltype(&V::pop_back), void (V::*)()>));
    EXPECT_TRUE((std::is_same_v<decltype(&V::clear), void (V::*)()>));
    EXPECT_TRUE((std::is_same_v<decltype(&V::size), unsigned long (V::*)() const>));
    EXPECT_TRUE((std::is_same_v<decltype(&V::empty), bool (V::*)() const>));
    EXPECT_TRUE((std::is_same_v<decltype(&V::begin), I (V::*)() const>));
    EXPECT_TRUE((std::is_same_v<decltype(&V::end), I (V::*)() const>));
    EXPECT_TRUE((std::is_same_v<decltype(std::declval<V&>().back()), T&>));
    EXPECT_TRUE((std::is_same_v<decltype(std::declval<V const&>().back()), T const&>));
    EXPECT_TRUE((std::is_same_v<decltype(std::declval<V&>()[0UL]), T&>));
    EXPECT_TRUE((std::is_same_v<decltype(std::declval<V const&>()[0UL]), T const&>));
    EXPECT_TRUE((std::is_same_v<decltype(std::declval<I const&>().operator->()), T*>));
    EXPECT_TRUE((std::is_same_v<decltype(std::declval<I&>() += 1L), I&>));
    EXPECT_TRUE((std::is_same_v<decltype(std::declval<I&>()++), I>));
    EXPECT_TRUE((std::is_same_v<decltype(std::declval<I&>()--), I>));
    EXPECT_FALSE(decltype(erasesARange<V>(0))::value);
    EXPECT_FALSE((std::is_constructible_v<V, unsigned long>)) << "elements need a value to be copies of";
    EXPECT_FALSE(std::is_polymorphic_v<V> || std::is_polymorphic_v<I>);
}

TYPED_TEST(ListContract, OperationsTakeAndGiveWhatTheirCallersWereCompiledWith) {
    using T = TypeParam;
    using L = List<T>;
    using I = typename L::Iterator;
    EXPECT_TRUE((std::is_same_v<decltype(&L::append), void (L::*)(T const&)>));
    EXPECT_TRUE((std::is_same_v<decltype(&L::erase), I (L::*)(I)>)) << "one element, by value";
    EXPECT_TRUE((std::is_same_v<decltype(&L::pop_front), void (L::*)()>));
    EXPECT_TRUE((std::is_same_v<decltype(&L::pop_back), void (L::*)()>));
    EXPECT_TRUE((std::is_same_v<decltype(&L::clear), void (L::*)()>));
    EXPECT_TRUE((std::is_same_v<decltype(&L::size), unsigned long (L::*)() const>));
    EXPECT_TRUE((std::is_same_v<decltype(&L::empty), bool (L::*)() const>));
    EXPECT_TRUE((std::is_same_v<decltype(&L::begin), I (L::*)() const>));
    EXPECT_TRUE((std::is_same_v<decltype(&L::end), I (L::*)() const>));
    EXPECT_TRUE((std::is_same_v<decltype(std::declval<L&>().front()), T&>));
    EXPECT_TRUE((std::is_same_v<decltype(std::declval<L const&>().front()), T const&>));
    EXPECT_TRUE((std::is_same_v<decltype(std::declval<L&>().back()), T&>));
    EXPECT_TRUE((std::is_same_v<decltype(std::declval<L const&>().back()), T const&>));
    EXPECT_TRUE((std::is_same_v<decltype(++std::declval<I&>()), I&>));
    EXPECT_FALSE(decltype(erasesARange<L>(0))::value);
    EXPECT_FALSE(std::is_polymorphic_v<L> || std::is_polymorphic_v<I>);
}

// Iterators

template <class Container>
Container filled(int count) {
    using T = std::decay_t<decltype(*std::declval<Container>().begin())>;
    Container container;
    for (int i = 0; i < count; ++i) {
        if constexpr (std::is_same_v<Container, Vector<T>>) {
            container.push_back(made<T>(i));
        } else {
            container.append(made<T>(i));
        }
    }
    return container;
}

TYPED_TEST(VectorContract, APostfixStepGivesAnIteratorThatGoesItsOwnWay) {
    Vector<TypeParam> const vector = filled<Vector<TypeParam>>(4);
    auto it = vector.begin();
    auto next = it++;
    ++next;
    EXPECT_EQ(numberOf(*it), 1);
    EXPECT_EQ(numberOf(*next), 2);
    auto previous = next--;
    --previous;
    EXPECT_EQ(numberOf(*next), 1);
    EXPECT_EQ(numberOf(*previous), 0);
    EXPECT_TRUE(previous == vector.begin());
}

TYPED_TEST(VectorContract, AnIteratorMovesByAnyNumberOfElementsEitherWay) {
    int const count = 5;
    Vector<TypeParam> const vector = filled<Vector<TypeParam>>(count);
    for (int from = 0; from <= count; ++from) {
        for (int to = 0; to <= count; ++to) {
            auto it = vector.begin();
            it += from;
            it += to - from;
            auto expected = vector.begin();
            for (int i = 0; i < to; ++i) {
                ++expected;
            }
            EXPECT_TRUE(it == expected) << from << " to " << to;
            EXPECT_FALSE(it != expected) << from << " to " << to;
            EXPECT_EQ(it == vector.end(), to == count) << from << " to " << to;
        }
    }
}

TYPED_TEST(VectorContract, AnIteratorTakesAPositionInAnotherVector) {
    Vector<TypeParam> const first = filled<Vector<TypeParam>>(1);
    Vector<TypeParam> const second = filled<Vector<TypeParam>>(3);
    auto it = first.begin();
    it = second.begin();
    it += 2;
    EXPECT_EQ(numberOf(*it), 2);
    EXPECT_EQ(it.operator->(), &second[2]);
}

// The walk that removes as it goes, from a set of numbers to those that stay.
template <class Container, class Predicate>
void eraseWhere(Container& container, Predicate const& predicate) {
    for (auto it = container.begin(); it != container.end();) {
        if (predicate(numberOf(*it))) {
            it = container.erase(it);
        } else {
            ++it;
        }
    }
}

struct Removal {
    char const* name;
    std::function<bool(int)> predicate;
    Numbers left;
};

Removal const REMOVALS[] = {
    {"none", [](int) { return false; }, {0, 1, 2, 3, 4, 5}},
    {"all", [](int) { return true; }, {}},
    {"odd", [](int number) { return number % 2 == 1; }, {0, 2, 4}},
    {"even", [](int number) { return number % 2 == 0; }, {1, 3, 5}},
    {"first", [](int number) { return number == 0; }, {1, 2, 3, 4, 5}},
    {"last", [](int number) { return number == 5; }, {0, 1, 2, 3, 4}},
    {"middle", [](int number) { return number == 2 || number == 3; }, {0, 1, 4, 5}},
};

TYPED_TEST(VectorContract, AWalkMayEraseWhatItMeets) {
    for (Removal const& removal : REMOVALS) {
        auto vector = filled<Vector<TypeParam>>(6);
        unsigned long const capacity = vector.capacity();
        eraseWhere(vector, removal.predicate);
        EXPECT_EQ(numbersOf(vector), removal.left) << removal.name;
        EXPECT_EQ(vector.size(), removal.left.size()) << removal.name;
        EXPECT_EQ(vector.empty(), removal.left.empty()) << removal.name;
        EXPECT_EQ(vector.capacity(), capacity) << removal.name;
    }
}

TYPED_TEST(ListContract, AWalkMayEraseWhatItMeets) {
    for (Removal const& removal : REMOVALS) {
        auto list = filled<List<TypeParam>>(6);
        eraseWhere(list, removal.predicate);
        EXPECT_EQ(numbersOf(list), removal.left) << removal.name;
        EXPECT_EQ(list.size(), removal.left.size()) << removal.name;
        EXPECT_EQ(list.empty(), removal.left.empty()) << removal.name;
    }
}

// Nothing, and none of something

TYPED_TEST(VectorContract, NoElementsAreAVectorToo) {
    Vector<TypeParam> none(0, made<TypeParam>(1));
    EXPECT_TRUE(none.empty());
    EXPECT_EQ(none.capacity(), 0U);
    EXPECT_TRUE(none.begin() == none.end());
    none.reserve(0);
    none.resize(0, made<TypeParam>(2));
    EXPECT_EQ(none.capacity(), 0U);
    Vector<TypeParam> const copy(none);
    EXPECT_EQ(copy.capacity(), 0U);
    none.push_back(made<TypeParam>(3));
    none = copy;
    EXPECT_TRUE(none.empty());
    EXPECT_GE(none.capacity(), 1U) << "room is never given back";
    none.resize(2, made<TypeParam>(4));
    EXPECT_EQ(numbersOf(none), (Numbers{4, 4}));
}

// Takes zeroed room for a container: its end has nothing to free.
template <class Container>
void expectThatNullEnds() {
    alignas(Container) unsigned char room[sizeof(Container)] = {};
    std::destroy_at(reinterpret_cast<Container*>(room));
}

TYPED_TEST(VectorContract, TheEndAcceptsANullPointer) { expectThatNullEnds<Vector<TypeParam>>(); }

TYPED_TEST(ListContract, TheEndAcceptsANullPointer) { expectThatNullEnds<List<TypeParam>>(); }

// Shares

TEST(VectorContractShares, EachOperationTakesAndReleasesExactlyItsShares) {
    using Layers = Vector<SharedPtr<Annotation::Layer>>;
    SharedPtr<Annotation::Layer> const layer(new Annotation::Layer);
    {
        Layers layers(3, layer);
        EXPECT_EQ(layer->refcount(), 4) << "the value that was taken is gone";
        layers.resize(5, layer);
        EXPECT_EQ(layer->refcount(), 6);
        layers.resize(1, layer);
        EXPECT_EQ(layer->refcount(), 2);
        layers.push_back(layer);
        EXPECT_EQ(layer->refcount(), 3);
        layers.reserve(100);
        EXPECT_EQ(layer->refcount(), 3) << "elements that move keep their number";
        layers.erase(layers.begin());
        EXPECT_EQ(layer->refcount(), 2);
        layers.push_back(nullptr);
        layers.erase(layers.begin());
        EXPECT_EQ(layer->refcount(), 1);
        EXPECT_EQ(layers[0], nullptr);
        layers[0] = layer;
        layers.push_back(layer);
        layers.pop_back();
        EXPECT_EQ(layer->refcount(), 2);
        Layers copy(layers);
        EXPECT_EQ(layer->refcount(), 3);
        copy = layers;
        EXPECT_EQ(layer->refcount(), 3);
        copy = Layers();
        EXPECT_EQ(layer->refcount(), 2);
        copy = layers;
        copy.clear();
        EXPECT_EQ(layer->refcount(), 2);
    }
    EXPECT_EQ(layer->refcount(), 1);
}

TEST(ListContractShares, EachOperationTakesAndReleasesExactlyItsShares) {
    using Tokens = List<SharedPtr<Token>>;
    SharedPtr<Token> const token(new NumberedToken(1));
    {
        Tokens tokens;
        for (int i = 0; i < 4; ++i) {
            tokens.append(token);
        }
        EXPECT_EQ(token->refcount(), 5);
        tokens.erase(tokens.begin());
        EXPECT_EQ(token->refcount(), 4);
        tokens.pop_front();
        EXPECT_EQ(token->refcount(), 3);
        tokens.pop_back();
        EXPECT_EQ(token->refcount(), 2);
        Tokens copy(tokens);
        EXPECT_EQ(token->refcount(), 3);
        copy.append(token);
        copy = tokens;
        EXPECT_EQ(token->refcount(), 3);
        copy = Tokens();
        EXPECT_EQ(token->refcount(), 2);
        copy = tokens;
        copy.clear();
        EXPECT_EQ(token->refcount(), 2);
        tokens.front() = nullptr;
        EXPECT_EQ(token->refcount(), 1);
        EXPECT_EQ(tokens.size(), 1U) << "a null pointer is an element";
        tokens.back() = token;
    }
    EXPECT_EQ(token->refcount(), 1);
}

TEST(ElementStructures, HaveTheirFieldsInOrderAndNoOperationsOfTheirOwn) {
    NameValueStruct const pair{"a name", "a value"};
    EXPECT_STREQ(pair.name.c_str(), "a name");
    EXPECT_STREQ(pair.value.c_str(), "a value");
    EXPECT_LT(static_cast<void const*>(&pair.name), static_cast<void const*>(&pair.value));
    EXPECT_TRUE(std::is_aggregate_v<NameValueStruct>);
    EXPECT_EQ(sizeof(NameValueStruct), 2 * sizeof(String));
    NameDescriptionStruct const told{"a name", "what it is"};
    EXPECT_STREQ(told.name.c_str(), "a name");
    EXPECT_STREQ(told.description.c_str(), "what it is");
    EXPECT_LT(static_cast<void const*>(&told.name), static_cast<void const*>(&told.description));
    EXPECT_TRUE(std::is_aggregate_v<NameDescriptionStruct>);
    EXPECT_EQ(sizeof(NameDescriptionStruct), 2 * sizeof(String));
}

} // namespace
