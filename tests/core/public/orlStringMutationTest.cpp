// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "core/public/orlStringTesting.h"

#include <gtest/gtest.h>

#include <functional>
#include <stdexcept>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

namespace {

using namespace ORL_0_81;
using namespace StringTesting;

constexpr unsigned long NPOS = String::npos;

// A changing operation, with a name for messages.
struct Change {
    char const* name;
    std::function<void(String&)> apply;
};

// Every changing operation with arguments that suit a text of three characters, except those that do not
// need to go through the hidden string: assignment, swap, clear.
std::vector<Change> changes() {
    return {
        {"append(str)", [](String& s) { s.append(String("xy")); }},
        {"append(str,pos,len)", [](String& s) { s.append(String("wxyz"), 1, 2); }},
        {"append(s)", [](String& s) { s.append("xy"); }},
        {"append(s,n)", [](String& s) { s.append("xyz", 2); }},
        {"append(n,c)", [](String& s) { s.append(2, 'x'); }},
        {"+= str", [](String& s) { s += String("xy"); }},
        {"+= s", [](String& s) { s += "xy"; }},
        {"+= c", [](String& s) { s += 'x'; }},
        {"push_back", [](String& s) { s.push_back('x'); }},
        {"assign(str)", [](String& s) { s.assign(String("xy")); }},
        {"assign(str,pos,len)", [](String& s) { s.assign(String("wxyz"), 1, 2); }},
        {"assign(s)", [](String& s) { s.assign("xy"); }},
        {"assign(s,n)", [](String& s) { s.assign("xyz", 2); }},
        {"assign(n,c)", [](String& s) { s.assign(2, 'x'); }},
        {"insert(pos,str)", [](String& s) { s.insert(1, String("xy")); }},
        {"insert(pos,str,subpos,sublen)", [](String& s) { s.insert(1, String("wxyz"), 1, 2); }},
        {"insert(pos,s)", [](String& s) { s.insert(1, "xy"); }},
        {"insert(pos,s,n)", [](String& s) { s.insert(1, "xyz", 2); }},
        {"insert(pos,n,c)", [](String& s) { s.insert(1, 2, 'x'); }},
        {"replace(pos,len,str)", [](String& s) { s.replace(1, 1, String("xy")); }},
        {"replace(pos,len,str,subpos,sublen)", [](String& s) { s.replace(1, 1, String("wxyz"), 1, 2); }},
        {"replace(pos,len,s)", [](String& s) { s.replace(1, 1, "xy"); }},
        {"replace(pos,len,s,n)", [](String& s) { s.replace(1, 1, "xyz", 2); }},
        {"replace(pos,len,n,c)", [](String& s) { s.replace(1, 1, 2, 'x'); }},
        {"erase", [](String& s) { s.erase(1, 1); }},
        {"pop_back", [](String& s) { s.pop_back(); }},
        {"reserve", [](String& s) { s.reserve(5); }},
        {"reserve(0)", [](String& s) { s.reserve(0); }},
        {"resize(n)", [](String& s) { s.resize(5); }},
        {"resize(n,c)", [](String& s) { s.resize(5, 'x'); }},
        {"shrink_to_fit", [](String& s) { s.shrink_to_fit(); }},
        {"at", [](String& s) { s.at(1) = 'x'; }},
        {"operator[]", [](String& s) { s[1] = 'x'; }},
        {"front", [](String& s) { s.front() = 'x'; }},
        {"back", [](String& s) { s.back() = 'x'; }},
        {"begin", [](String& s) { *s.begin() = 'x'; }},
        {"end", [](String& s) { s.end()[-1] = 'x'; }},
    };
}

// What the changes above make of "abc", in their order.
std::vector<std::string> changed() {
    return {
        "abcxy",
        "abcxy",
        "abcxy",
        "abcxy",
        "abcxx",
        "abcxy",
        "abcxy",
        "abcx",
        "abcx",
        "xy",
        "xy",
        "xy",
        "xy",
        "xx",
        "axybc",
        "axybc",
        "axybc",
        "axybc",
        "axxbc",
        "axyc",
        "axyc",
        "axyc",
        "axyc",
        "axxc",
        "ac",
        "ab",
        "abc",
        "abc",
        std::string("abc\0\0", 5),
        "abcxx",
        "abc",
        "axc",
        "axc",
        "xbc",
        "abx",
        "xbc",
        "abx",
    };
}

TEST(StringChange, ASoleOwnerHasTheStandardStringsResult) {
    std::vector<Change> const all = changes();
    std::vector<std::string> const expected = changed();
    ASSERT_EQ(all.size(), expected.size());
    for (std::size_t i = 0; i < all.size(); ++i) {
        String string("abc");
        all[i].apply(string);
        EXPECT_EQ(bytes(string), expected[i]) << all[i].name;
    }
}

TEST(StringChange, ASharedStringDetachesAndItsSharersKeepTheirValue) {
    std::vector<Change> const all = changes();
    std::vector<std::string> const expected = changed();
    ASSERT_EQ(all.size(), expected.size());
    for (std::size_t i = 0; i < all.size(); ++i) {
        String const original("abc");
        String string(original);
        all[i].apply(string);
        EXPECT_EQ(bytes(string), expected[i]) << all[i].name;
        EXPECT_EQ(bytes(original), "abc") << all[i].name;
        EXPECT_FALSE(share(string, original)) << all[i].name;
    }
}

TEST(StringChange, ASoleOwnerIsChangedInPlace) {
    String string("abc");
    string.reserve(1000);
    char const* const text = std::as_const(string).c_str();
    string.append("def").push_back('g');
    string.insert(0, "x").replace(0, 1, "y").erase(0, 1);
    string.resize(500, 'z');
    string.assign("new");
    EXPECT_EQ(std::as_const(string).c_str(), text);
}

TEST(StringChange, AfterACopyIsChangedNeitherStringIsShared) {
    String a("abc");
    String b(a);
    b.push_back('d');
    EXPECT_EQ(bytes(a), "abc");
    EXPECT_EQ(bytes(b), "abcd");
    char const* const textOfA = std::as_const(a).c_str();
    char const* const textOfB = std::as_const(b).c_str();
    a[0] = 'x';
    b[0] = 'y';
    EXPECT_EQ(std::as_const(a).c_str(), textOfA) << "changed in place";
    EXPECT_EQ(std::as_const(b).c_str(), textOfB) << "changed in place";
    EXPECT_EQ(bytes(a), "xbc");
    EXPECT_EQ(bytes(b), "ybcd");
}

TEST(StringChange, OperationsReturnTheObjectOrNothing) {
    String s("abc");
    String const t("t");
    EXPECT_EQ(&s.append(t), &s);
    EXPECT_EQ(&s.append(t, 0, 1), &s);
    EXPECT_EQ(&s.append("t"), &s);
    EXPECT_EQ(&s.append("t", 1), &s);
    EXPECT_EQ(&s.append(1, 't'), &s);
    EXPECT_EQ(&(s += t), &s);
    EXPECT_EQ(&(s += String()), &s);
    EXPECT_EQ(&(s += "t"), &s);
    EXPECT_EQ(&(s += 't'), &s);
    EXPECT_EQ(&s.assign(t), &s);
    EXPECT_EQ(&s.assign(t, 0, 1), &s);
    EXPECT_EQ(&s.assign("t"), &s);
    EXPECT_EQ(&s.assign("t", 1), &s);
    EXPECT_EQ(&s.assign(1, 't'), &s);
    EXPECT_EQ(&s.insert(0, t), &s);
    EXPECT_EQ(&s.insert(0, t, 0, 1), &s);
    EXPECT_EQ(&s.insert(0, "t"), &s);
    EXPECT_EQ(&s.insert(0, "t", 1), &s);
    EXPECT_EQ(&s.insert(0, 1, 't'), &s);
    EXPECT_EQ(&s.replace(0, 1, t), &s);
    EXPECT_EQ(&s.replace(0, 1, t, 0, 1), &s);
    EXPECT_EQ(&s.replace(0, 1, "t"), &s);
    EXPECT_EQ(&s.replace(0, 1, "t", 1), &s);
    EXPECT_EQ(&s.replace(0, 1, 1, 't'), &s);
    EXPECT_EQ(&s.erase(0, 1), &s);
    EXPECT_TRUE(std::is_void_v<decltype(s.push_back('t'))>);
    EXPECT_TRUE(std::is_void_v<decltype(s.pop_back())>);
    EXPECT_TRUE(std::is_void_v<decltype(s.reserve(1))>);
    EXPECT_TRUE(std::is_void_v<decltype(s.resize(1))>);
    EXPECT_TRUE((std::is_void_v<decltype(s.resize(1, 't'))>));
    EXPECT_TRUE(std::is_void_v<decltype(s.shrink_to_fit())>);
    EXPECT_TRUE(std::is_void_v<decltype(s.clear())>);
}

TEST(StringChange, LengthsDefaultToTheRest) {
    String const source("abcdef");
    EXPECT_EQ(bytes(String("x").append(source, 2)), "xcdef");
    EXPECT_EQ(bytes(String("x").assign(source, 2)), "cdef");
    EXPECT_EQ(bytes(String("x").insert(0, source, 2)), "cdefx");
    EXPECT_EQ(bytes(String("xy").replace(0, 1, source, 2)), "cdefy");
    EXPECT_EQ(bytes(String("abc").erase(1)), "a");
    String erased("abc");
    erased.erase();
    EXPECT_TRUE(erased.empty());
    EXPECT_NE(std::as_const(erased).begin(), nullptr) << "an erased value still has its hidden string";
}

TEST(StringChange, NulsAreOrdinaryCharacters) {
    String string("ab");
    string.push_back('\0');
    string.append("c\0d", 3);
    string.append(1, '\0');
    EXPECT_EQ(bytes(string), std::string("ab\0c\0d\0", 7));
    string.resize(3);
    EXPECT_EQ(bytes(string), std::string("ab\0", 3));
    string.resize(5);
    EXPECT_EQ(bytes(string), std::string("ab\0\0\0", 5));
}

// The empty receiver: append

TEST(StringOnEmpty, AppendSharesTheArgument) {
    String const argument("abc");
    String s;
    s.append(argument);
    EXPECT_TRUE(share(s, argument));
    String t;
    t += argument;
    EXPECT_TRUE(share(t, argument));
    String u;
    u.append(String());
    u += String();
    EXPECT_TRUE(isEmptyRepresentation(u));
}

TEST(StringOnEmpty, AppendSharesEvenAnEmptyHiddenString) {
    String const argument = hiddenEmpty();
    String s;
    s.append(argument);
    EXPECT_TRUE(share(s, argument));
    String t;
    t += argument;
    EXPECT_TRUE(share(t, argument));
}

TEST(StringOnEmpty, AppendOfAPartTakesTheLengthAsThePositionToo) {
    String s;
    s.append(String("abcdef"), 2, 1);
    EXPECT_EQ(bytes(s), "b");
    String t;
    t.append(String("abcdef"), 100, 2);
    EXPECT_EQ(bytes(t), "cd") << "the position is not looked at";
    String u;
    u.append(String("abcdef"), 0, 0);
    EXPECT_TRUE(u.empty());
    EXPECT_NE(std::as_const(u).begin(), nullptr);
    String v;
    v.append(String("abcdef"), 1, 6);
    EXPECT_TRUE(v.empty());
    String w;
    w.append(String(), 7, 0);
    EXPECT_TRUE(isEmptyRepresentation(w));
}

TEST(StringOnEmpty, AppendOfAPartWithALengthBeyondTheArgumentThrows) {
    String s;
    EXPECT_THROW(s.append(String("abcdef"), 0, 7), std::out_of_range);
    EXPECT_THROW(s.append(String("abcdef"), 0), std::out_of_range);
    EXPECT_NE(outOfRangeText([&] { s.append(String("abcdef"), 0, 7); }), "In String::String(str,pos,len)");
    EXPECT_EQ(outOfRangeText([&] { s.append(String(), 0, 1); }), "In String::String(str,pos,len)");
    EXPECT_TRUE(isEmptyRepresentation(s));
}

TEST(StringOnEmpty, AppendOfATextTakesTheConstructorsValue) {
    char const* const null = nullptr;
    struct Case {
        std::function<void(String&)> apply;
        std::string expected;
    };
    for (Case const& c : std::vector<Case>{
             {[](String& s) { s.append("abc"); }, "abc"},
             {[](String& s) { s += "abc"; }, "abc"},
             {[](String& s) { s.append("a\0b", 3); }, std::string("a\0b", 3)},
             {[](String& s) { s.append(3, 'x'); }, "xxx"},
             {[](String& s) { s.push_back('x'); }, "x"},
             {[](String& s) { s += 'x'; }, "x"},
             {[](String& s) { s.push_back('\0'); }, std::string(1, '\0')},
             {[](String& s) { s += '\0'; }, std::string(1, '\0')},
         }) {
        String s;
        c.apply(s);
        EXPECT_EQ(bytes(s), c.expected);
    }
    for (std::function<void(String&)> const& apply : std::vector<std::function<void(String&)>>{
             [](String& s) { s.append(""); },
             [null](String& s) { s.append(null); },
             [](String& s) { s += ""; },
             [null](String& s) { s += null; },
             [](String& s) { s.append("abc", 0); },
             [null](String& s) { s.append(null, 3); },
             [](String& s) { s.append(0, 'x'); },
         }) {
        String s;
        apply(s);
        EXPECT_TRUE(isEmptyRepresentation(s));
    }
}

// The empty receiver: assign, insert, replace

// The forms in which assign, insert and replace take their value.
struct Value {
    char const* form;
    std::function<void(String&)> assign;
    std::function<void(String&, unsigned long)> insert;
    std::function<void(String&, unsigned long, unsigned long)> replace;
    std::string expected;
    std::string insertFailure;
    std::string replaceFailure;
};

std::vector<Value> values() {
    return {
        {"str", [](String& s) { s.assign(String("abc")); },
         [](String& s, unsigned long pos) { s.insert(pos, String("abc")); },
         [](String& s, unsigned long pos, unsigned long len) { s.replace(pos, len, String("abc")); }, "abc",
         "In String::String(pos,str)", "In String::replace(pos,len,str)"},
        {"str,subpos,sublen", [](String& s) { s.assign(String("xabcx"), 1, 3); },
         [](String& s, unsigned long pos) { s.insert(pos, String("xabcx"), 1, 3); },
         [](String& s, unsigned long pos, unsigned long len) { s.replace(pos, len, String("xabcx"), 1, 3); },
         "abc", "In String::insert(pos,str,subpos,sublen)", "In String::replace(pos,len,str,subpos,sublen)"},
        {"s", [](String& s) { s.assign("abc"); }, [](String& s, unsigned long pos) { s.insert(pos, "abc"); },
         [](String& s, unsigned long pos, unsigned long len) { s.replace(pos, len, "abc"); }, "abc",
         "In String::insert(pos,s)", "In String::replace(pos,len,s)"},
        {"s,n", [](String& s) { s.assign("a\0bx", 3); },
         [](String& s, unsigned long pos) { s.insert(pos, "a\0bx", 3); },
         [](String& s, unsigned long pos, unsigned long len) { s.replace(pos, len, "a\0bx", 3); },
         std::string("a\0b", 3), "In String::insert(pos,s,n)", "In String::replace(pos,len,s,n)"},
        {"n,c", [](String& s) { s.assign(3, 'x'); },
         [](String& s, unsigned long pos) { s.insert(pos, 3, 'x'); },
         [](String& s, unsigned long pos, unsigned long len) { s.replace(pos, len, 3, 'x'); }, "xxx",
         "In String::insert(pos,n,c)", "In String::replace(pos,len,n,c)"},
    };
}

TEST(StringOnEmpty, AssignTakesTheValueInEveryForm) {
    for (Value const& value : values()) {
        String s;
        value.assign(s);
        EXPECT_EQ(bytes(s), value.expected) << value.form;
    }
}

TEST(StringOnEmpty, InsertAtPositionZeroTakesTheValue) {
    for (Value const& value : values()) {
        String s;
        value.insert(s, 0);
        EXPECT_EQ(bytes(s), value.expected) << value.form;
    }
}

TEST(StringOnEmpty, InsertElsewhereThrowsWithTheNameOfTheOperation) {
    for (Value const& value : values()) {
        String s;
        EXPECT_EQ(outOfRangeText([&] { value.insert(s, 1); }), value.insertFailure) << value.form;
        EXPECT_EQ(outOfRangeText([&] { value.insert(s, NPOS); }), value.insertFailure) << value.form;
        EXPECT_TRUE(isEmptyRepresentation(s)) << value.form;
    }
}

TEST(StringOnEmpty, ReplaceAtPositionZeroTakesTheValueWhateverTheLength) {
    for (Value const& value : values()) {
        for (unsigned long len : {0UL, 1UL, 5UL, NPOS}) {
            String s;
            value.replace(s, 0, len);
            EXPECT_EQ(bytes(s), value.expected) << value.form;
        }
    }
}

TEST(StringOnEmpty, ReplaceElsewhereThrowsWithTheNameOfTheOperation) {
    for (Value const& value : values()) {
        String s;
        EXPECT_EQ(outOfRangeText([&] { value.replace(s, 1, 0); }), value.replaceFailure) << value.form;
        EXPECT_EQ(outOfRangeText([&] { value.replace(s, NPOS, NPOS); }), value.replaceFailure) << value.form;
        EXPECT_TRUE(isEmptyRepresentation(s)) << value.form;
    }
}

TEST(StringOnEmpty, AssignInsertAndReplaceShareAStringArgument) {
    String const argument("abc");
    String s;
    s.assign(argument);
    EXPECT_TRUE(share(s, argument));
    String t;
    t.insert(0, argument);
    EXPECT_TRUE(share(t, argument));
    String u;
    u.replace(0, 5, argument);
    EXPECT_TRUE(share(u, argument));
}

TEST(StringOnEmpty, PartsThatDoNotExistThrowAsInTheConstructor) {
    String s;
    String const abc("abc");
    EXPECT_THROW(s.assign(abc, 4, 1), std::out_of_range);
    EXPECT_THROW(s.insert(0, abc, 4, 1), std::out_of_range);
    EXPECT_THROW(s.replace(0, 0, abc, 4, 1), std::out_of_range);
    EXPECT_EQ(outOfRangeText([&] { s.assign(String(), 1, 1); }), "In String::String(str,pos,len)");
    EXPECT_EQ(outOfRangeText([&] { s.insert(0, String(), 1, 1); }), "In String::String(str,pos,len)");
    EXPECT_EQ(outOfRangeText([&] { s.replace(0, 0, String(), 1, 1); }), "In String::String(str,pos,len)");
    EXPECT_EQ(outOfRangeText([&] { s.insert(1, String(), 1, 1); }),
              "In String::insert(pos,str,subpos,sublen)")
        << "the receiver's position comes first";
    EXPECT_TRUE(isEmptyRepresentation(s));
}

TEST(StringOnEmpty, NullAndEmptyTextsLeaveTheEmptyRepresentation) {
    char const* const null = nullptr;
    String s;
    s.assign(null);
    s.assign("");
    s.assign(null, 3);
    s.assign("abc", 0);
    s.assign(0, 'x');
    s.assign(String());
    s.assign(String(), 0, 1);
    s.insert(0, null);
    s.insert(0, "");
    s.insert(0, null, 3);
    s.insert(0, "abc", 0);
    s.insert(0, 0, 'x');
    s.insert(0, String());
    s.insert(0, String(), 0, 1);
    s.replace(0, 1, null);
    s.replace(0, 1, "");
    s.replace(0, 1, null, 3);
    s.replace(0, 1, "abc", 0);
    s.replace(0, 1, 0, 'x');
    s.replace(0, 1, String());
    s.replace(0, 1, String(), 0, 1);
    EXPECT_TRUE(isEmptyRepresentation(s));
}

// The empty receiver: the rest

TEST(StringOnEmpty, EraseAtPositionZeroDoesNothingAndElsewhereThrows) {
    String s;
    EXPECT_EQ(&s.erase(0, 3), &s);
    EXPECT_EQ(&s.erase(), &s);
    EXPECT_TRUE(isEmptyRepresentation(s));
    EXPECT_EQ(outOfRangeText([&] { s.erase(1, 3); }), "In String::erase(pos,len)");
    EXPECT_EQ(outOfRangeText([&] { s.erase(1, 0); }), "In String::erase(pos,len)");
    EXPECT_TRUE(isEmptyRepresentation(s));
}

TEST(StringOnEmpty, ASizeOfZeroDoesNothing) {
    String s;
    s.reserve(0);
    s.reserve();
    s.resize(0);
    s.resize(0, 'x');
    s.shrink_to_fit();
    s.clear();
    EXPECT_TRUE(isEmptyRepresentation(s));
}

TEST(StringOnEmpty, AnyOtherSizeMakesAHiddenString) {
    String reserved;
    reserved.reserve(100);
    EXPECT_TRUE(reserved.empty());
    EXPECT_GE(reserved.capacity(), 100U);
    EXPECT_NE(std::as_const(reserved).begin(), nullptr);
    String resized;
    resized.resize(3);
    EXPECT_EQ(bytes(resized), std::string(3, '\0'));
    String filled;
    filled.resize(3, 'x');
    EXPECT_EQ(bytes(filled), "xxx");
}

TEST(StringOnEmpty, ASizeBeyondTheMaximumThrowsAndNothingChanges) {
    String s;
    EXPECT_THROW(s.reserve(NPOS), std::length_error);
    EXPECT_THROW(s.resize(NPOS), std::length_error);
    EXPECT_THROW(s.resize(NPOS, 'x'), std::length_error);
    EXPECT_THROW(s.append(NPOS, 'x'), std::length_error);
    EXPECT_THROW(s.insert(0, NPOS, 'x'), std::length_error);
    EXPECT_TRUE(isEmptyRepresentation(s));
}

TEST(StringOnEmpty, AtThrowsWithTheNameOfTheOperation) {
    String s;
    EXPECT_EQ(outOfRangeText([&] { s.at(0); }), "In String::at(pos)");
    EXPECT_EQ(outOfRangeText([&] { s.at(7); }), "In String::at(pos)");
    EXPECT_TRUE(isEmptyRepresentation(s));
}

TEST(StringOnEmpty, BeginAndEndAreNull) {
    String s;
    EXPECT_EQ(s.begin(), nullptr);
    EXPECT_EQ(s.end(), nullptr);
    EXPECT_TRUE((std::is_same_v<decltype(s.begin()), char*>));
    for (char& c : s) {
        ADD_FAILURE() << c;
    }
}

// Arguments that are the object itself

TEST(StringSelfArgument, AppendAndInsertLeaveTheObjectAsItWas) {
    String s("abc");
    s.append(s);
    EXPECT_EQ(bytes(s), "abc");
    s += s; // NOLINT(clang-diagnostic-self-assign-overloaded): that is the point
    EXPECT_EQ(bytes(s), "abc");
    for (unsigned long pos = 0; pos <= 3; ++pos) {
        s.insert(pos, s);
        EXPECT_EQ(bytes(s), "abc");
    }
    s.append(s, 0, 2);
    EXPECT_EQ(bytes(s), "abc");
    s.insert(1, s, 0, 2);
    EXPECT_EQ(bytes(s), "abc");
}

TEST(StringSelfArgument, AssignEmptiesTheObjectButKeepsItsHiddenString) {
    String s("abc");
    s.assign(s);
    EXPECT_TRUE(s.empty());
    EXPECT_NE(std::as_const(s).begin(), nullptr);
    String t("abc");
    t.assign(t, 0, 2);
    EXPECT_TRUE(t.empty());
}

TEST(StringSelfArgument, ReplaceRemovesTheRange) {
    String s("abcdef");
    s.replace(1, 2, s);
    EXPECT_EQ(bytes(s), "adef");
    s.replace(0, 1, s, 0, 5);
    EXPECT_EQ(bytes(s), "def");
}

TEST(StringSelfArgument, ASharedObjectReadsAsEmptyToo) {
    String const original("abc");
    String s(original);
    s.append(s);
    EXPECT_EQ(bytes(s), "abc");
    EXPECT_FALSE(share(s, original));
    String t(original);
    t.assign(t);
    EXPECT_TRUE(t.empty());
    String u(original);
    u.replace(0, 1, u);
    EXPECT_EQ(bytes(u), "bc");
    EXPECT_EQ(bytes(original), "abc");
}

TEST(StringSelfArgument, AnySubPositionOfItselfButZeroThrowsAndEmptiesTheObject) {
    for (std::function<void(String&)> const& apply : std::vector<std::function<void(String&)>>{
             [](String& s) { s.append(s, 1, 1); },
             [](String& s) { s.assign(s, 1, 1); },
             [](String& s) { s.insert(0, s, 1, 1); },
             [](String& s) { s.replace(0, 1, s, 1, 1); },
         }) {
        String s("abc");
        EXPECT_THROW(apply(s), std::out_of_range);
        EXPECT_TRUE(isEmptyRepresentation(s));
    }
}

TEST(StringSelfArgument, TheEmptyRepresentationStaysEmpty) {
    String s;
    s.append(s);
    s += s; // NOLINT(clang-diagnostic-self-assign-overloaded): that is the point
    s.assign(s);
    s.insert(0, s);
    s.replace(0, 1, s);
    s.append(s, 5, 0);
    s.assign(s, 0, 3);
    s.insert(0, s, 0, 3);
    s.replace(0, 1, s, 0, 3);
    EXPECT_TRUE(isEmptyRepresentation(s));
}

TEST(StringSelfArgument, ASharerIsNotTheObjectItself) {
    String s("abc");
    String const t(s);
    s.append(t);
    EXPECT_EQ(bytes(s), "abcabc");
    EXPECT_EQ(bytes(t), "abc");
    String u(t);
    u += t;
    EXPECT_EQ(bytes(u), "abcabc");
    String v(t);
    v.assign(t);
    EXPECT_EQ(bytes(v), "abc");
    EXPECT_FALSE(share(v, t)) << "the text is copied";
    String w(t);
    w.insert(1, t);
    EXPECT_EQ(bytes(w), "aabcbc");
    String x(t);
    x.replace(1, 1, t, 1, 2);
    EXPECT_EQ(bytes(x), "abcc");
    EXPECT_EQ(bytes(t), "abc");
}

// Sharing and detaching

TEST(StringSharing, PlusAssignOfTheEmptyRepresentationDoesNotDetachButAppendDoes) {
    String const original("abc");
    String added(original);
    added += String();
    EXPECT_TRUE(share(added, original));
    added += hiddenEmpty();
    EXPECT_FALSE(share(added, original)) << "an empty hidden string is appended like any other";
    String appended(original);
    appended.append(String());
    EXPECT_FALSE(share(appended, original));
    EXPECT_EQ(bytes(added), "abc");
    EXPECT_EQ(bytes(appended), "abc");
}

TEST(StringSharing, ElementAccessForWritingDetaches) {
    String const original("abc");
    String copy(original);
    *copy.begin() = 'x';
    EXPECT_EQ(bytes(copy), "xbc");
    EXPECT_EQ(bytes(original), "abc");
    for (char& c : copy) {
        c = 'y';
    }
    EXPECT_EQ(bytes(copy), "yyy");
    copy = original;
    copy[3]; // the terminating NUL may be asked for
    EXPECT_FALSE(share(copy, original));
}

TEST(StringSharing, ClearReleasesAndLeavesTheSharersAlone) {
    String const original("abc");
    String copy(original);
    copy.clear();
    EXPECT_TRUE(isEmptyRepresentation(copy));
    EXPECT_EQ(bytes(original), "abc");
    String sole("abc");
    sole.clear();
    EXPECT_TRUE(isEmptyRepresentation(sole));
    String hidden = hiddenEmpty();
    hidden.clear();
    EXPECT_TRUE(isEmptyRepresentation(hidden));
}

TEST(StringSharing, TheLastSharerMayWriteInPlace) {
    String a("abc");
    {
        String const b(a);
        EXPECT_TRUE(share(a, b));
    }
    char const* const text = std::as_const(a).c_str();
    a[0] = 'x';
    EXPECT_EQ(std::as_const(a).c_str(), text);
}

TEST(StringSharing, ShrinkToFitReservesNothing) {
    std::string hidden("a text that is too long to stand inside of a string object");
    String s(hidden.c_str());
    hidden.reserve(10000);
    s.reserve(10000);
    ASSERT_EQ(s.capacity(), hidden.capacity());
    hidden.reserve(0);
    s.shrink_to_fit();
    EXPECT_EQ(s.capacity(), hidden.capacity());
    EXPECT_EQ(bytes(s), hidden);
}

// Failures

TEST(StringFailure, AFailedChangeLeavesTheObjectEmptyAndItsSharersAlone) {
    std::vector<Change> const failures = {
        {"append(str,pos,len)", [](String& s) { s.append(String("xy"), 3, 1); }},
        {"append(n,c)", [](String& s) { s.append(NPOS, 'x'); }},
        {"assign(str,pos,len)", [](String& s) { s.assign(String("xy"), 3, 1); }},
        {"assign(n,c)", [](String& s) { s.assign(NPOS, 'x'); }},
        {"insert(pos,str)", [](String& s) { s.insert(4, String("xy")); }},
        {"insert(pos,str,subpos,sublen)", [](String& s) { s.insert(4, String("xy"), 0, 1); }},
        {"insert with a bad subpos", [](String& s) { s.insert(0, String("xy"), 3, 1); }},
        {"insert(pos,s)", [](String& s) { s.insert(4, "xy"); }},
        {"insert(pos,s,n)", [](String& s) { s.insert(4, "xy", 1); }},
        {"insert(pos,n,c)", [](String& s) { s.insert(4, 1, 'x'); }},
        {"replace(pos,len,str)", [](String& s) { s.replace(4, 1, String("xy")); }},
        {"replace(pos,len,str,subpos,sublen)", [](String& s) { s.replace(4, 1, String("xy"), 0, 1); }},
        {"replace with a bad subpos", [](String& s) { s.replace(0, 1, String("xy"), 3, 1); }},
        {"replace(pos,len,s)", [](String& s) { s.replace(4, 1, "xy"); }},
        {"replace(pos,len,s,n)", [](String& s) { s.replace(4, 1, "xy", 1); }},
        {"replace(pos,len,n,c)", [](String& s) { s.replace(4, 1, 1, 'x'); }},
        {"erase", [](String& s) { s.erase(7, 1); }},
        {"at", [](String& s) { s.at(3); }},
        {"reserve", [](String& s) { s.reserve(NPOS); }},
        {"resize(n)", [](String& s) { s.resize(NPOS); }},
        {"resize(n,c)", [](String& s) { s.resize(NPOS, 'x'); }},
    };
    for (Change const& failure : failures) {
        String sole("abc");
        EXPECT_ANY_THROW(failure.apply(sole)) << failure.name;
        EXPECT_TRUE(isEmptyRepresentation(sole)) << failure.name;

        String const original("abc");
        String shared(original);
        EXPECT_ANY_THROW(failure.apply(shared)) << failure.name;
        EXPECT_TRUE(isEmptyRepresentation(shared)) << failure.name;
        EXPECT_EQ(bytes(original), "abc") << failure.name;
    }
}

TEST(StringFailure, EraseBeyondTheEndThrowsTheStandardExceptionAndEmptiesTheObject) {
    String s("abc");
    EXPECT_THROW(s.erase(7, 1), std::out_of_range);
    EXPECT_TRUE(isEmptyRepresentation(s));
    String t("abc");
    EXPECT_NE(outOfRangeText([&] { t.erase(7, 1); }), "In String::erase(pos,len)");
}

TEST(StringFailure, TheNonConstAtThrowsAndEmptiesTheObject) {
    String s("abc");
    EXPECT_THROW(s.at(100), std::out_of_range);
    EXPECT_TRUE(isEmptyRepresentation(s));
    EXPECT_EQ(outOfRangeText([&] { s.at(0); }), "In String::at(pos)");
}

TEST(StringFailure, ALengthBeyondTheMaximumThrowsTheLengthException) {
    String s("abc");
    EXPECT_THROW(s.append(s.max_size(), 'x'), std::length_error);
    String t("abc");
    EXPECT_THROW(t.resize(NPOS), std::length_error);
}

TEST(StringFailure, AnEmptyHiddenStringReportsWithTheStandardTexts) {
    String s = hiddenEmpty();
    EXPECT_NE(outOfRangeText([&] { s.at(0); }), "In String::at(pos)");
    EXPECT_TRUE(isEmptyRepresentation(s)) << "and the object loses its hidden string";
    String t = hiddenEmpty();
    EXPECT_NE(outOfRangeText([&] { t.insert(1, String("x")); }), "In String::String(pos,str)");
}

TEST(StringFailure, InsertOfAStringIntoTheEmptyRepresentationNamesTheConstructor) {
    String s;
    EXPECT_EQ(outOfRangeText([&] { s.insert(1, String("x")); }), "In String::String(pos,str)");
}

TEST(StringFailure, AStringCanBeUsedAgainAfterAFailure) {
    String s("abc");
    EXPECT_THROW(s.at(100), std::out_of_range);
    s.append("new");
    EXPECT_EQ(bytes(s), "new");
}

} // namespace
