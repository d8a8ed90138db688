// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "core/public/orlStringTesting.h"
#include "support/orlFailingMemory.h"

#include <orlString.h>
#include <orlStructs.h>

#include <gtest/gtest.h>

#include <string>

// What strings are when there is no memory for a change.

namespace {

using namespace ORL_0_81;
using namespace StringTesting;
using orlTest::endAtEachControlBlock;
using orlTest::failEachAllocation;
using orlTest::FailingMemory;

std::string const TEXT = "a text that is too long to stand inside of a string object";
std::string const MORE(200, 'x');

struct Change {
    char const* name;
    void (*perform)(String& string, String const& argument);
};

// Each makes the string longer than its memory.
Change const CHANGES[] = {
    {"append(String)", [](String& s, String const& more) { s.append(more); }},
    {"append(String,pos,len)", [](String& s, String const& more) { s.append(more, 0, 150); }},
    {"append(char*)", [](String& s, String const&) { s.append(MORE.c_str()); }},
    {"append(char*,n)", [](String& s, String const&) { s.append(MORE.c_str(), MORE.size()); }},
    {"append(n,c)", [](String& s, String const&) { s.append(200, 'x'); }},
    {"+=String", [](String& s, String const& more) { s += more; }},
    {"+=char*", [](String& s, String const&) { s += MORE.c_str(); }},
    {"=char*", [](String& s, String const&) { s = MORE.c_str(); }},
    {"assign(String)", [](String& s, String const& more) { s.assign(more); }},
    {"assign(String,pos,len)", [](String& s, String const& more) { s.assign(more, 1, 150); }},
    {"assign(char*)", [](String& s, String const&) { s.assign(MORE.c_str()); }},
    {"assign(char*,n)", [](String& s, String const&) { s.assign(MORE.c_str(), MORE.size()); }},
    {"assign(n,c)", [](String& s, String const&) { s.assign(200, 'x'); }},
    {"insert(String)", [](String& s, String const& more) { s.insert(0, more); }},
    {"insert(String,pos,len)", [](String& s, String const& more) { s.insert(0, more, 1, 150); }},
    {"insert(char*)", [](String& s, String const&) { s.insert(0, MORE.c_str()); }},
    {"insert(char*,n)", [](String& s, String const&) { s.insert(0, MORE.c_str(), MORE.size()); }},
    {"insert(n,c)", [](String& s, String const&) { s.insert(0, 200, 'x'); }},
    {"replace(String)", [](String& s, String const& more) { s.replace(0, 1, more); }},
    {"replace(String,pos,len)", [](String& s, String const& more) { s.replace(0, 1, more, 1, 150); }},
    {"replace(char*)", [](String& s, String const&) { s.replace(0, 1, MORE.c_str()); }},
    {"replace(char*,n)", [](String& s, String const&) { s.replace(0, 1, MORE.c_str(), MORE.size()); }},
    {"replace(n,c)", [](String& s, String const&) { s.replace(0, 1, 200, 'x'); }},
    {"reserve", [](String& s, String const&) { s.reserve(200); }},
    {"resize", [](String& s, String const&) { s.resize(200); }},
    {"resize(n,c)", [](String& s, String const&) { s.resize(200, 'x'); }},
};

TEST(StringFailingMemory, AChangeOfASoleOwnersValueLeavesItEmpty) {
    for (Change const& change : CHANGES) {
        SCOPED_TRACE(change.name);
        failEachAllocation([&change](FailingMemory& memory) {
            String const argument(MORE.c_str());
            String string(TEXT.c_str());
            if (!memory.run([&] { change.perform(string, argument); })) {
                EXPECT_TRUE(isEmptyRepresentation(string));
                string = "as good as new";
                EXPECT_EQ(bytes(string), "as good as new");
            }
            EXPECT_EQ(bytes(argument), MORE);
        });
    }
}

TEST(StringFailingMemory, AChangeOfASharedValueLeavesItAsItWasOrEmptyAndTheOthersAlone) {
    for (Change const& change : CHANGES) {
        SCOPED_TRACE(change.name);
        failEachAllocation([&change](FailingMemory& memory) {
            String const argument(MORE.c_str());
            String const original(TEXT.c_str());
            String string(original);
            if (!memory.run([&] { change.perform(string, argument); })) {
                EXPECT_TRUE(share(string, original) || isEmptyRepresentation(string));
                string = "as good as new";
            }
            EXPECT_EQ(bytes(argument), MORE);
            EXPECT_EQ(bytes(original), TEXT);
        });
    }
}

TEST(StringFailingMemory, AChangeOfTheEmptyRepresentationLeavesItSo) {
    for (Change const& change : CHANGES) {
        SCOPED_TRACE(change.name);
        bool const takesShare =
            std::string(change.name) == "append(String)" || std::string(change.name) == "+=String" ||
            std::string(change.name) == "assign(String)" || std::string(change.name) == "insert(String)" ||
            std::string(change.name) == "replace(String)";
        if (takesShare) {
            continue; // which takes no memory
        }
        failEachAllocation([&change](FailingMemory& memory) {
            String const argument((MORE + MORE).c_str());
            String string;
            if (!memory.run([&] { change.perform(string, argument); })) {
                EXPECT_TRUE(isEmptyRepresentation(string));
            }
        });
    }
}

TEST(StringFailingMemory, AccessForWritingLeavesASharedValueAsItWas) {
    void (*const accesses[])(String&) = {
        [](String& s) { s[3] = 'y'; },        [](String& s) { s.at(3) = 'y'; },
        [](String& s) { s.front() = 'y'; },   [](String& s) { s.back() = 'y'; },
        [](String& s) { *s.begin() = 'y'; },  [](String& s) { *(s.end() - 1) = 'y'; },
        [](String& s) { s.push_back('y'); },  [](String& s) { s.pop_back(); },
        [](String& s) { s.erase(3, 2); },     [](String& s) { s += 'y'; },
        [](String& s) { s.shrink_to_fit(); },
    };
    for (auto const access : accesses) {
        failEachAllocation([access](FailingMemory& memory) {
            String const original(TEXT.c_str());
            String string(original);
            if (!memory.run([&] { access(string); })) {
                EXPECT_TRUE(share(string, original) || isEmptyRepresentation(string));
            }
            EXPECT_EQ(bytes(original), TEXT);
        });
    }
}

TEST(StringFailingMemory, NewStringsAreMadeWholeOrNotAtAll) {
    failEachAllocation([](FailingMemory& memory) {
        String const source(TEXT.c_str());
        String results[8];
        bool const done = memory.run([&] {
            results[0] = String(TEXT.c_str());
            results[1] = String(TEXT.c_str(), TEXT.size());
            results[2] = String(100, 'x');
            results[3] = String(source, 1, 40);
            results[4] = source.substr(2);
            results[5] = source + source;
            results[6] = "a" + source + 'z';
            results[7] = 'c';
        });
        std::string const expected[8] = {
            TEXT,           TEXT,        std::string(100, 'x'), TEXT.substr(1, 40),
            TEXT.substr(2), TEXT + TEXT, "a" + TEXT + "z",      "c"};
        for (int i = 0; i < 8; ++i) {
            EXPECT_TRUE(bytes(results[i]) == expected[i] || (!done && isEmptyRepresentation(results[i])))
                << i;
        }
        EXPECT_EQ(bytes(source), TEXT);
    });
}

TEST(StringFailingMemory, PairsOfTextsKeepTheirOthers) {
    failEachAllocation([](FailingMemory& memory) {
        NameValueStruct const original{TEXT.c_str(), MORE.c_str()};
        NameValueStruct pair(original);
        NameDescriptionStruct described{"name", "description"};
        memory.run([&] {
            pair.name.append(MORE.c_str());
            pair.value = TEXT.c_str();
            described = {TEXT.c_str(), MORE.c_str()};
        });
        EXPECT_EQ(bytes(original.name), TEXT);
        EXPECT_EQ(bytes(original.value), MORE);
        EXPECT_TRUE(bytes(described.description) == "description" || bytes(described.description) == MORE);
    });
}

TEST(StringFailingMemoryDeathTest, TheProcessEndsWhereAHiddenStringGetsNoControlBlock) {
    endAtEachControlBlock([](FailingMemory& memory) {
        memory.run([] {
            String string(TEXT.c_str());
            String shared(string);
            shared.append("changed");
            String filled;
            filled.resize(3, 'x');
            string = "assigned";
            shared = string.substr(1);
            filled = 'c';
            String const all = string + shared + filled;
        });
    });
}

} // namespace
