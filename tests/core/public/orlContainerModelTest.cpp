// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "core/public/orlContainerTesting.h"
#include "support/Seed.h"

#include <orlList.h>
#include <orlVector.h>

#include <gtest/gtest.h>

#include <array>
#include <iterator>
#include <list>
#include <random>
#include <vector>

// Long random sequences of operations on a handful of containers, each beside the standard container that it
// is made of. Assignments spread elements over all of them, so that texts and objects are shared.

namespace {

using namespace ContainerTesting;

constexpr int STEPS = 3000;
constexpr std::size_t COUNT = 4;

class Play {
public:
    explicit Play(unsigned int seed) : m_random(seed) {}

protected:
    std::size_t pick(std::size_t count) {
        return std::uniform_int_distribution<std::size_t>(0, count - 1)(m_random);
    }

    int number() { return static_cast<int>(pick(1000)); }

private:
    std::mt19937 m_random;
};

template <class T>
class VectorPlay : public Play {
public:
    using Play::Play;

    void step() {
        std::size_t const i = pick(COUNT);
        std::size_t const j = pick(COUNT); // may be the same
        Vector<T>& vector = m_vectors[i];
        std::vector<T>& model = m_models[i];
        T const value = made<T>(number());
        std::size_t const size = model.size();
        std::size_t const n = pick(12);
        switch (pick(16)) {
        case 0:
            vector = m_vectors[j];
            model = m_models[j];
            break;
        case 1: {
            Vector<T> const copy(m_vectors[j]);
            ASSERT_EQ(copy.capacity(), copy.size());
            vector = copy;
            model = m_models[j];
            break;
        }
        case 2: {
            vector = Vector<T>(n, value); // no move: copied like any other
            std::vector<T> const values(n, value);
            model = values;
            break;
        }
        case 3:
            vector.resize(n, value);
            model.resize(n, value);
            break;
        case 4:
            vector.reserve(n);
            model.reserve(n);
            break;
        case 5:
            if (pick(4) == 0) {
                vector.clear();
                model.clear();
            }
            break;
        case 6:
        case 7:
        case 8:
            vector.push_back(value);
            model.push_back(value);
            break;
        default:
            if (size != 0) {
                change(vector, model, pick(size), value);
            }
        }
    }

    void check() const {
        for (std::size_t i = 0; i < COUNT; ++i) {
            ASSERT_EQ(m_vectors[i].size(), m_models[i].size());
            ASSERT_EQ(m_vectors[i].empty(), m_models[i].empty());
            ASSERT_EQ(m_vectors[i].capacity(), m_models[i].capacity());
            ASSERT_EQ(numbersOf(m_vectors[i]), numbersOf(m_models[i]));
        }
    }

private:
    // What needs an element, of which there is one at `index`.
    void change(Vector<T>& vector, std::vector<T>& model, std::size_t index, T const& value) {
        typename Vector<T>::Iterator position = vector.begin();
        position += static_cast<long>(index);
        auto const modelPosition = model.begin() + static_cast<std::ptrdiff_t>(index);
        switch (pick(7)) {
        case 0:
            vector.pop_back();
            model.pop_back();
            break;
        case 1: {
            position = vector.erase(position);
            auto const following = model.erase(modelPosition);
            ASSERT_EQ(position == vector.end(), following == model.end());
            if (position != vector.end()) {
                ASSERT_EQ(position.operator->(), &vector[index]);
            }
            break;
        }
        case 2:
            vector[index] = value;
            *modelPosition = value;
            break;
        case 3:
            *position = value;
            *modelPosition = value;
            break;
        case 4:
            vector.back() = value;
            model.back() = value;
            break;
        case 5:
            vector.push_back(vector[index]);
            model.push_back(*modelPosition);
            break;
        default: {
            // To the end and back again.
            typename Vector<T>::Iterator walker(position);
            std::size_t steps = 0;
            while (walker != vector.end()) {
                pick(2) == 0 ? ++walker : walker++;
                ++steps;
            }
            ASSERT_EQ(index + steps, model.size());
            for (; steps != 0; --steps) {
                pick(2) == 0 ? --walker : walker--;
            }
            ASSERT_TRUE(walker == position);
        }
        }
    }

    std::array<Vector<T>, COUNT> m_vectors;
    std::array<std::vector<T>, COUNT> m_models;
};

template <class T>
class ListPlay : public Play {
public:
    using Play::Play;

    void step() {
        std::size_t const i = pick(COUNT);
        std::size_t const j = pick(COUNT); // may be the same
        List<T>& list = m_lists[i];
        std::list<T>& model = m_models[i];
        T const value = made<T>(number());
        switch (pick(14)) {
        case 0:
            list = m_lists[j];
            model = m_models[j];
            break;
        case 1:
            list = List<T>(m_lists[j]);
            model = std::list<T>(m_models[j]);
            break;
        case 2:
            if (pick(4) == 0) {
                list.clear();
                model.clear();
            }
            break;
        case 3:
        case 4:
        case 5:
        case 6:
            list.append(value);
            model.push_back(value);
            break;
        default:
            if (!model.empty()) {
                change(list, model, pick(model.size()), value);
            }
        }
    }

    void check() const {
        for (std::size_t i = 0; i < COUNT; ++i) {
            ASSERT_EQ(m_lists[i].size(), m_models[i].size());
            ASSERT_EQ(m_lists[i].empty(), m_models[i].empty());
            ASSERT_EQ(numbersOf(m_lists[i]), numbersOf(m_models[i]));
        }
    }

private:
    // What needs an element, of which there is one at `index`.
    void change(List<T>& list, std::list<T>& model, std::size_t index, T const& value) {
        typename List<T>::Iterator position = list.begin();
        for (std::size_t i = 0; i < index; ++i) {
            ++position;
        }
        auto const modelPosition = std::next(model.begin(), static_cast<std::ptrdiff_t>(index));
        switch (pick(7)) {
        case 0:
            list.pop_back();
            model.pop_back();
            break;
        case 1:
            list.pop_front();
            model.pop_front();
            break;
        case 2: {
            position = list.erase(position);
            auto const following = model.erase(modelPosition);
            ASSERT_EQ(position != list.end(), following != model.end());
            if (following != model.end()) {
                ASSERT_EQ(numberOf(*position), numberOf(*following));
            }
            break;
        }
        case 3:
            *position = value;
            *modelPosition = value;
            break;
        case 4:
            list.front() = value;
            model.front() = value;
            break;
        case 5:
            list.back() = value;
            model.back() = value;
            break;
        default:
            list.append(*position);
            model.push_back(*modelPosition);
        }
    }

    std::array<List<T>, COUNT> m_lists;
    std::array<std::list<T>, COUNT> m_models;
};

template <class AnyPlay>
void run() {
    AnyPlay play(printedSeed());
    for (int step = 0; step < STEPS; ++step) {
        play.step();
        if (testing::Test::HasFatalFailure()) {
            return;
        }
        play.check();
        if (testing::Test::HasFatalFailure()) {
            return;
        }
    }
}

template <class T>
class VectorModel : public testing::Test {};
TYPED_TEST_SUITE(VectorModel, VectorElements, ElementNames);

TYPED_TEST(VectorModel, AgreesWithTheStandardVector) { run<VectorPlay<TypeParam>>(); }

template <class T>
class ListModel : public testing::Test {};
TYPED_TEST_SUITE(ListModel, ListElements, ElementNames);

TYPED_TEST(ListModel, AgreesWithTheStandardList) { run<ListPlay<TypeParam>>(); }

} // namespace
