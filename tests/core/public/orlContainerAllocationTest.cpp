// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "support/Allocations.h"

#include <orlList.h>
#include <orlSharedPtr.h>
#include <orlStructs.h>
#include <orlToken.h>
#include <orlVector.h>

#include <gtest/gtest.h>

#include <stdexcept>

// What the containers allocate, and what is left when that fails.

namespace {

using namespace ORL_0_81;

TEST(ContainerAllocation, ADefaultVectorAllocatesTheHiddenArrayAndNoRoom) {
    EXPECT_EQ(allocationsOf([] { Vector<double> const vector; }), 1);
    EXPECT_EQ(allocationsOf([] { Vector<double> const vector(3, 1.5); }), 2);
    Vector<double> const source(3, 1.5);
    EXPECT_EQ(allocationsOf([&] { Vector<double> const copy(source); }), 2);
}

TEST(ContainerAllocation, AListAllocatesTheHiddenListAndEachElement) {
    EXPECT_EQ(allocationsOf([] { List<int> const list; }), 1);
    List<int> list;
    EXPECT_EQ(allocationsOf([&] {
                  list.append(1);
                  list.append(2);
              }),
              2);
    EXPECT_EQ(allocationsOf([&] { List<int> const copy(list); }), 3);
}

TEST(ContainerAllocation, EachIteratorIsOneAllocation) {
    Vector<double> const vector(3, 1.5);
    List<int> list;
    list.append(1);
    EXPECT_EQ(allocationsOf([&] { vector.begin(); }), 1);
    EXPECT_EQ(allocationsOf([&] { vector.end(); }), 1);
    EXPECT_EQ(allocationsOf([&] { list.begin(); }), 1);
    EXPECT_EQ(allocationsOf([&] { list.end(); }), 1);
    Vector<double>::Iterator position = vector.begin();
    List<int>::Iterator node = list.begin();
    EXPECT_EQ(allocationsOf([&] { Vector<double>::Iterator const copy(position); }), 1);
    EXPECT_EQ(allocationsOf([&] { List<int>::Iterator const copy(node); }), 1);
    EXPECT_EQ(allocationsOf([&] { position++; }), 1);
    EXPECT_EQ(allocationsOf([&] { position--; }), 1);
}

TEST(ContainerAllocation, SteppingComparingReadingAndAssigningIteratorsAllocateNothing) {
    Vector<double> const vector(3, 1.5);
    List<int> list;
    list.append(1);
    Vector<double>::Iterator first = vector.begin();
    Vector<double>::Iterator const second = vector.end();
    List<int>::Iterator node = list.begin();
    List<int>::Iterator const end = list.end();
    EXPECT_EQ(allocationsOf([&] {
                  *first = 2.5;
                  ++first;
                  --first;
                  first += 2;
                  static_cast<void>(first == second || first != second);
                  *first.operator->() = 3.5;
                  first = second;
                  *node = 2;
                  static_cast<void>(node != end);
                  ++node;
                  node = end;
              }),
              0);
}

TEST(ContainerAllocation, IndicesAndSizesAllocateNothing) {
    Vector<String> vector(3, String("text"));
    vector.reserve(10);
    List<String> list;
    list.append("text");
    EXPECT_EQ(allocationsOf([&] {
                  for (unsigned long i = 0; i < vector.size(); ++i) {
                      static_cast<void>(vector[i].size());
                  }
                  vector.push_back(vector.back()); // there is room, and texts are shared
                  vector.pop_back();
                  vector.resize(2, String());
                  vector.clear();
                  static_cast<void>(vector.empty() || vector.capacity() == 0);
                  static_cast<void>(list.size() + list.front().size() + list.back().size());
                  list.pop_front();
                  list.clear();
              }),
              0);
}

TEST(ContainerAllocation, NothingIsLeftBehind) {
    long const before = liveAllocations();
    {
        Vector<NameValueStruct> vector;
        List<NameDescriptionStruct> list;
        for (int i = 0; i < 20; ++i) {
            vector.push_back({"a name", "a value"});
            list.append({"a name", "a description"});
        }
        Vector<NameValueStruct> const vectorCopy(vector);
        List<NameDescriptionStruct> const listCopy(list);
        vector.erase(vector.begin());
        list.erase(list.begin());
        vector = vectorCopy;
        list = listCopy;
        for (NameValueStruct& element : vector) {
            element.name.append("!");
        }
    }
    EXPECT_EQ(liveAllocations(), before);
}

TEST(ContainerMemoryFailure, AConstructorFreesTheHiddenContainer) {
    Vector<String> source(3, String("text"));
    List<String> list;
    list.append("text");
    long const before = liveAllocations();
    for (long const allocations : {0L, 1L}) { // the hidden array, its room
        EXPECT_TRUE(runsOutOfMemory(allocations, [] { Vector<double> const vector(3, 1.5); }));
        EXPECT_TRUE(runsOutOfMemory(allocations, [&] { Vector<String> const copy(source); }));
        EXPECT_TRUE(runsOutOfMemory(allocations, [&] { List<String> const copy(list); }));
    }
    EXPECT_TRUE(runsOutOfMemory(0, [] { Vector<double> const vector; }));
    EXPECT_TRUE(runsOutOfMemory(0, [] { List<int> const empty; }));
    EXPECT_THROW(Vector<double>(~0UL, 1.5), std::length_error);
    EXPECT_EQ(liveAllocations(), before);
}

TEST(ContainerMemoryFailure, AFailedAdditionLeavesTheContainerAsItWas) {
    Vector<double> vector(1, 1.5);
    List<double> list;
    list.append(1.5);
    EXPECT_TRUE(runsOutOfMemory(0, [&] { vector.push_back(2.5); }));
    EXPECT_TRUE(runsOutOfMemory(0, [&] { vector.reserve(100); }));
    EXPECT_TRUE(runsOutOfMemory(0, [&] { vector.resize(100, 2.5); }));
    EXPECT_TRUE(runsOutOfMemory(0, [&] { list.append(2.5); }));
    EXPECT_EQ(vector.size(), 1U);
    EXPECT_EQ(vector[0], 1.5);
    EXPECT_EQ(list.size(), 1U);
    EXPECT_EQ(list.back(), 1.5);
}

TEST(ContainerMemoryFailure, AFailedEraseLeavesTheContainerAsItWas) {
    Vector<double> vector(2, 1.5);
    List<int> list;
    list.append(1);
    Vector<double>::Iterator const position = vector.begin();
    List<int>::Iterator const node = list.begin();
    for (long const allocations : {0L, 1L}) { // the argument, the result
        EXPECT_TRUE(runsOutOfMemory(allocations, [&] { vector.erase(position); }));
        EXPECT_TRUE(runsOutOfMemory(allocations, [&] { list.erase(node); }));
    }
    EXPECT_EQ(vector.size(), 2U);
    EXPECT_EQ(list.size(), 1U);
}

class Word : public Token {
public:
    using Token::Token;
    Status getValue(String&) override { return Status::kSuccess; }
};

TEST(TokenMemoryFailure, AFailedAssignmentLeavesBothTexts) {
    Word target("a name that is too long to stand inside", "a display name that is too long, too");
    Word const source("another name that is too long to stand inside",
                      "another display name that is too long, too");
    for (long const allocations : {0L, 1L}) { // either text
        EXPECT_TRUE(runsOutOfMemory(allocations, [&] { target = source; }));
        EXPECT_STREQ(target.getName(), "a name that is too long to stand inside");
        EXPECT_STREQ(target.getDisplayName(), "a display name that is too long, too");
    }
}

TEST(TokenMemoryFailure, AConstructorFreesWhatItHas) {
    long const before = liveAllocations();
    for (long allocations = 0; allocations < 3; ++allocations) { // the state, either text
        EXPECT_TRUE(runsOutOfMemory(allocations, [] {
            Word const token("a name that is too long to stand inside",
                             "a display name that is too long, too");
        }));
    }
    EXPECT_EQ(liveAllocations(), before);
}

} // namespace
