// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "core/public/orlStringTesting.h"
#include "support/Allocations.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <functional>
#include <new>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

// This program counts its allocations, and lets them fail on demand. Its tests run on one thread.

namespace {

using namespace ORL_0_81;
using namespace StringTesting;

char const* const LONG_TEXT = "a text that is too long to stand inside of a string object";

// The replacement functions are in use where the library allocates.
TEST(StringAllocation, ANewValueAllocatesTheHiddenStringAndItsControlBlock) {
    EXPECT_EQ(allocationsOf([] { String("abc"); }), 2);
    EXPECT_EQ(allocationsOf([] { String s(LONG_TEXT); }), 3) << "and a long text";
}

TEST(StringAllocation, EmptyFormsAllocateNothing) {
    char const* const null = nullptr;
    EXPECT_EQ(allocationsOf([null] {
                  String();
                  String s(null);
                  String t("");
                  String u(null, 5);
                  String v("abc", 0);
                  String w(0, 'x');
                  String x(s, 0, 5);
                  String y(s);
                  String z(std::move(t));
              }),
              0);
}

TEST(StringAllocation, NothingThatKeepsTheEmptyRepresentationAllocates) {
    EXPECT_EQ(allocationsOf([] {
                  String s;
                  String const empty;
                  s.reserve(0);
                  s.resize(0);
                  s.resize(0, 'x');
                  s.shrink_to_fit();
                  s.clear();
                  s.erase(0, 3);
                  s.append(empty);
                  s.append("");
                  s.append(0, 'x');
                  s += empty;
                  s += "";
                  s.assign("");
                  s.insert(0, "");
                  s.replace(0, 5, "");
                  s = "";
                  s = empty;
                  s.begin();
                  s.end();
                  s = empty + empty;
              }),
              0);
}

TEST(StringAllocation, CopyingMovingSwappingAndDestroyingAllocateNothing) {
    String const original(LONG_TEXT);
    String target(LONG_TEXT);
    EXPECT_EQ(allocationsOf([&] {
                  String copy(original);
                  String moved(std::move(copy));
                  target = moved;
                  copy = std::move(moved);
                  copy.swap(target);
                  swap(copy, target);
                  target = original;
              }),
              0);
    EXPECT_TRUE(share(target, original));
}

TEST(StringAllocation, ReadingAllocatesNothing) {
    String const original(LONG_TEXT);
    String const shared(original);
    String const empty;
    EXPECT_EQ(allocationsOf([&] {
                  for (String const* string : {&original, &empty}) {
                      string->c_str();
                      string->data();
                      string->asChar();
                      string->size();
                      string->empty();
                      string->capacity();
                      string->max_size();
                      string->begin();
                      string->end();
                      string->cend();
                      string->compare(shared);
                      string->compare(0, 3, shared, 1, 2);
                      string->compare("abc");
                      string->compare(0, 3, "abc", 2);
                      string->find("text");
                      string->find(shared);
                      string->rfind('t');
                      string->find_first_of("xyz");
                      string->find_last_not_of("xyz");
                      char buffer[4];
                      string->copy(buffer, 4, 0);
                      static_cast<void>(*string == shared && "abc" < *string && *string < "abc");
                  }
                  shared.at(3);
                  shared.front();
                  shared[2];
              }),
              0);
}

TEST(StringAllocation, AnEmptyReceiverTakesAStringArgumentWithoutAllocation) {
    String const argument(LONG_TEXT);
    EXPECT_EQ(allocationsOf([&] {
                  String s;
                  s.append(argument);
                  String t;
                  t += argument;
                  String u;
                  u.assign(argument);
                  String v;
                  v.insert(0, argument);
                  String w;
                  w.replace(0, 1, argument);
                  String x = String() + argument;
                  String y = argument + String();
              }),
              0);
}

TEST(StringAllocation, ClearingASharedStringCopiesNothing) {
    String const original(LONG_TEXT);
    String copy(original);
    EXPECT_EQ(allocationsOf([&] { copy.clear(); }), 0);
}

TEST(StringAllocation, ASoleOwnerChangesInPlace) {
    String s(LONG_TEXT);
    s.reserve(1000);
    EXPECT_EQ(allocationsOf([&] {
                  s.append("abc");
                  s.push_back('d');
                  s.insert(3, "xyz");
                  s.replace(0, 2, "uvw");
                  s.erase(0, 4);
                  s.resize(100, 'z');
                  s[3] = 'y';
                  s.assign("new");
                  s = "text";
                  s = 'c';
                  s.pop_back();
              }),
              0);
}

TEST(StringAllocation, PlusAssignOfTheEmptyRepresentationDoesNotDetach) {
    String const original(LONG_TEXT);
    String copy(original);
    EXPECT_EQ(allocationsOf([&] { copy += String(); }), 0);
    EXPECT_GT(allocationsOf([&] { copy.append(String()); }), 0);
}

TEST(StringAllocation, NothingIsLeftBehind) {
    long const before = liveAllocations();
    {
        String a(LONG_TEXT);
        String b(a);
        b.append("abc");
        a = b;
        b = "text";
        String const c(std::move(a));
        a = c + c;
        a.clear();
        b = c.substr(3);
    }
    EXPECT_EQ(liveAllocations(), before);
}

TEST(StringAllocation, AFailedChangeFreesWhatItWorkedOn) {
    long const before = liveAllocations();
    {
        String sole(LONG_TEXT);
        EXPECT_THROW(sole.at(1000), std::out_of_range);
        String const original(LONG_TEXT);
        String shared(original);
        EXPECT_THROW(shared.erase(1000, 1), std::out_of_range);
        String empty;
        EXPECT_THROW(empty.reserve(String::npos), std::length_error);
        EXPECT_THROW(String(original, 1000, 1), std::out_of_range);
    }
    EXPECT_EQ(liveAllocations(), before);
}

TEST(StringMemoryFailure, AConstructorPassesTheAllocatorsExceptionOn) {
    long const before = liveAllocations();
    EXPECT_TRUE(runsOutOfMemory(0, [] { String s(LONG_TEXT); })) << "no hidden string";
    EXPECT_TRUE(runsOutOfMemory(1, [] { String s(LONG_TEXT); })) << "no room for its text";
    EXPECT_TRUE(runsOutOfMemory(0, [] { String s(100, 'x'); }));
    EXPECT_TRUE(runsOutOfMemory(1, [] { String s(100, 'x'); }));
    EXPECT_EQ(liveAllocations(), before);
}

TEST(StringMemoryFailure, AFailedCopyOfASharedStringLeavesTheObjectUnchanged) {
    for (long allocations : {0L, 1L}) { // the hidden string, its text
        String const original(LONG_TEXT);
        String shared(original);
        EXPECT_TRUE(runsOutOfMemory(allocations, [&] { shared.append("abc"); }));
        EXPECT_TRUE(share(shared, original)) << "the object still shares its value";
        EXPECT_EQ(bytes(shared), LONG_TEXT);
        shared.append("abc");
        EXPECT_EQ(bytes(shared), LONG_TEXT + std::string("abc"));
        EXPECT_EQ(bytes(original), LONG_TEXT);
    }
}

TEST(StringMemoryFailure, AFailureAfterTheCopyEmptiesTheObject) {
    std::string const more(1000, 'x');
    String const original(LONG_TEXT);
    String shared(original);
    EXPECT_TRUE(runsOutOfMemory(3, [&] { shared.append(more.c_str()); }));
    EXPECT_TRUE(isEmptyRepresentation(shared));
    EXPECT_EQ(bytes(original), LONG_TEXT);
    String sole(LONG_TEXT);
    EXPECT_TRUE(runsOutOfMemory(0, [&] { sole.append(more.c_str()); }));
    EXPECT_TRUE(isEmptyRepresentation(sole));
}

TEST(StringMemoryFailure, ANewValueThatCannotBeMadeLeavesASharedOrEmptyReceiverUnchanged) {
    String const original("abc");
    String shared(original);
    EXPECT_TRUE(runsOutOfMemory(0, [&] { shared = LONG_TEXT; }));
    EXPECT_TRUE(share(shared, original));
    EXPECT_TRUE(runsOutOfMemory(0, [&] { shared = 'c'; }));
    EXPECT_TRUE(share(shared, original));
    String empty;
    EXPECT_TRUE(runsOutOfMemory(0, [&] { empty.append(LONG_TEXT); }));
    EXPECT_TRUE(isEmptyRepresentation(empty));
}

TEST(StringMemoryFailureDeathTest, TheProcessEndsWhenANewHiddenStringGetsNoControlBlock) {
    EXPECT_DEATH(runsOutOfMemory(1, [] { String("abc"); }), "");
    EXPECT_DEATH(runsOutOfMemory(1,
                                 [] {
                                     String s;
                                     s.resize(3, 'x');
                                 }),
                 "");
}

TEST(StringMemoryFailureDeathTest, TheProcessEndsWhenACopyForWritingGetsNoControlBlock) {
    String const original("abc");
    String shared(original);
    EXPECT_DEATH(runsOutOfMemory(1, [&] { shared.push_back('d'); }), "");
}

} // namespace
