// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "orlString.h"

#include "internal/orlHidden.h"
#include "private/orlPtr.h"

#include <algorithm>
#include <cstring>
#include <new>
#include <stdexcept>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>

namespace ORL_0_81 {

static_assert(sizeof(String) == 2 * sizeof(void*), "the layout is part of the binary interface");
static_assert(std::is_nothrow_move_constructible_v<String> && std::is_nothrow_move_assignable_v<String>,
              "containers move their elements only when that cannot fail");

namespace {

using Hidden = std::string;

// What is read where there is no hidden string. Never destroyed, so that it lives until the library is
// unloaded: an empty String may still be read by another static object's destructor.
Hidden const& getEmptyString() noexcept {
    alignas(Hidden) static unsigned char storage[sizeof(Hidden)];
    static Hidden const* const the_empty_string = new (storage) Hidden;
    return *the_empty_string;
}

Hidden const dummy; // stands for all hidden strings where their bound is asked for

int compareBytes(std::string_view left, std::string_view right) noexcept {
    int const result = std::memcmp(left.data(), right.data(), std::min(left.size(), right.size()));
    if (result != 0) {
        return result;
    }
    return left.size() == right.size() ? 0 : (left.size() < right.size() ? -1 : 1);
}

// Operations on a hidden string, for every form of their arguments.

struct Append {
    template <class... Arguments>
    void operator()(Hidden& text, Arguments const&... arguments) const {
        text.append(arguments...);
    }
};

struct Assign {
    template <class... Arguments>
    void operator()(Hidden& text, Arguments const&... arguments) const {
        text.assign(arguments...);
    }
};

struct Insert {
    unsigned long pos;

    template <class... Arguments>
    void operator()(Hidden& text, Arguments const&... arguments) const {
        text.insert(pos, arguments...);
    }
};

struct Replace {
    unsigned long pos;
    unsigned long len;

    template <class... Arguments>
    void operator()(Hidden& text, Arguments const&... arguments) const {
        text.replace(pos, len, arguments...);
    }
};

} // namespace

class ORL_HIDDEN String::Imp {
public:
    static Hidden* hidden(String const& string) noexcept { return static_cast<Hidden*>(string.m_pointee); }

    // Read access: the hidden string or, if there is none, an empty one.
    static Hidden const& getImpl(String const& string) noexcept {
        return string.m_pointee ? *hidden(string) : getEmptyString();
    }

    template <class... Arguments>
    static Ptr<Hidden> make(Arguments const&... arguments) {
        return Ptr<Hidden>(new Hidden(arguments...));
    }

    // A further share of the value.
    static Ptr<Hidden> share(String const& string) noexcept { return Ptr<Hidden>::share(rep(string)); }

    // Takes the value out of the object, which becomes the empty representation.
    static Ptr<Hidden> take(String& string) noexcept {
        Ptr<Hidden> taken = Ptr<Hidden>::adopt(rep(string));
        string.m_pointee = nullptr;
        string.m_cntrlBlk = nullptr;
        return taken;
    }

    // Stores the value in the object and releases what it held.
    static void put(String& string, Ptr<Hidden> value) noexcept {
        Ptr<Hidden> const old = take(string);
        PtrInternal::PtrRepUntyped const pair = value.detach();
        string.m_pointee = pair.m_pointee;
        string.m_cntrlBlk = pair.m_cntrlBlk;
    }

    static bool isSoleOwner(String const& string) noexcept {
        return string.m_cntrlBlk && PtrInternal::isSoleOwner(string.m_cntrlBlk);
    }

    // Performs the operation on a hidden string that nobody shares. The object, which must have a hidden
    // string, is empty during the operation: an argument that is the object itself reads as empty, and when
    // the operation throws the object stays empty. The operation reads its arguments itself, for that reason.
    template <class Operation>
    static auto write(String& string, Operation const& operation) {
        Ptr<Hidden> own = takePrivate(string);
        if constexpr (std::is_void_v<decltype(operation(*own))>) {
            operation(*own);
            put(string, std::move(own));
        } else {
            auto const result = operation(*own);
            put(string, std::move(own));
            return result;
        }
    }

    // What most changing operations do: without a hidden string the object takes the value of the constructor
    // with these arguments, which shares where the only argument is a String; any other is written to.
    template <class Operation, class... Arguments>
    static String& change(String& string, Operation const& operation, Arguments const&... arguments) {
        if (hidden(string)) {
            write(string, [&](Hidden& text) { operation(text, read(arguments)...); });
        } else {
            string = String(arguments...);
        }
        return string;
    }

    // What the operations on the size do: without a hidden string the object gets one, if there is a need.
    template <class Operation>
    static void changeSize(String& string, unsigned long n, Operation const& operation) {
        if (hidden(string)) {
            write(string, operation);
        } else if (n != 0) {
            Ptr<Hidden> made = make();
            operation(*made);
            put(string, std::move(made));
        }
    }

    // A hidden string checks its positions itself; where there is none, only the first position exists.
    static void requirePosition(String const& string, unsigned long pos, char const* failure) {
        if (!hidden(string) && pos != 0) {
            throw std::out_of_range(failure);
        }
    }

    static void requireElement(String const& string, char const* failure) {
        if (!hidden(string)) {
            throw std::out_of_range(failure);
        }
    }

private:
    static PtrInternal::PtrRepUntyped rep(String const& string) noexcept {
        PtrInternal::PtrRepUntyped pair;
        pair.m_pointee = string.m_pointee;
        pair.m_cntrlBlk = string.m_cntrlBlk;
        return pair;
    }

    // Takes the hidden string out of the object, or a copy where others share it. The copy comes first, so
    // that the object is as it was when there is no memory for it.
    static Ptr<Hidden> takePrivate(String& string) {
        if (PtrInternal::isSoleOwner(string.m_cntrlBlk)) {
            return take(string);
        }
        Ptr<Hidden> copy = Ptr<Hidden>::clone(rep(string));
        take(string); // and releases it
        return copy;
    }

    static Hidden const& read(String const& argument) noexcept { return getImpl(argument); }

    template <class Argument>
    static Argument const& read(Argument const& argument) noexcept {
        return argument;
    }
};

unsigned long const String::max_size_value = dummy.max_size();

String::String() noexcept : m_pointee(nullptr), m_cntrlBlk(nullptr) {}

String::String(String const& other) noexcept : String() { Imp::put(*this, Imp::share(other)); }

String::String(String&& other) noexcept : String() { Imp::put(*this, Imp::take(other)); }

String::String(char const* s) : String() {
    if (s && *s != '\0') {
        Imp::put(*this, Imp::make(s));
    }
}

String::String(char const* s, unsigned long n) : String() {
    if (s && n != 0) {
        Imp::put(*this, Imp::make(s, n));
    }
}

String::String(unsigned long n, char c) : String() {
    if (n != 0) {
        Imp::put(*this, Imp::make(n, c));
    }
}

String::String(String const& str, unsigned long pos, unsigned long len) : String() {
    Imp::requirePosition(str, pos, "In String::String(str,pos,len)");
    if (Imp::hidden(str)) {
        Imp::put(*this, Imp::make(*Imp::hidden(str), pos, len));
    }
}

String::~String() { Imp::take(*this); }

String& String::operator=(String const& other) noexcept {
    if (m_pointee != other.m_pointee) {
        Imp::put(*this, Imp::share(other));
    }
    return *this;
}

String& String::operator=(String&& other) noexcept {
    if (this != &other) {
        Imp::put(*this, Imp::take(other));
    }
    return *this;
}

String& String::operator=(char const* s) {
    if (Imp::isSoleOwner(*this)) {
        Imp::write(*this, [s](Hidden& text) { text.assign(s); });
        return *this;
    }
    return *this = String(s);
}

String& String::operator=(char c) {
    if (Imp::isSoleOwner(*this)) {
        Imp::write(*this, [c](Hidden& text) { text.assign(1, c); });
        return *this;
    }
    return *this = String(1, c);
}

void String::swap(String& other) noexcept {
    std::swap(m_pointee, other.m_pointee);
    std::swap(m_cntrlBlk, other.m_cntrlBlk);
}

unsigned long String::size() const noexcept { return Imp::getImpl(*this).size(); }

unsigned long String::length() const noexcept { return size(); }

bool String::empty() const noexcept { return size() == 0; }

unsigned long String::capacity() const noexcept { return m_pointee ? Imp::hidden(*this)->capacity() : 0; }

unsigned long String::max_size() const noexcept { return max_size_value; }

char const* String::c_str() const noexcept { return Imp::getImpl(*this).c_str(); }

char const* String::data() const noexcept { return c_str(); }

char const* String::asChar() const noexcept { return c_str(); }

int String::compare(String const& str) const noexcept {
    return compareBytes(Imp::getImpl(*this), Imp::getImpl(str));
}

int String::compare(unsigned long pos, unsigned long len, String const& str) const {
    return Imp::getImpl(*this).compare(pos, len, Imp::getImpl(str));
}

int String::compare(unsigned long pos, unsigned long len, String const& str, unsigned long subpos,
                    unsigned long sublen) const {
    return Imp::getImpl(*this).compare(pos, len, Imp::getImpl(str), subpos, sublen);
}

int String::compare(char const* s) const { return Imp::getImpl(*this).compare(s); }

int String::compare(unsigned long pos, unsigned long len, char const* s) const {
    return Imp::getImpl(*this).compare(pos, len, s);
}

int String::compare(unsigned long pos, unsigned long len, char const* s, unsigned long n) const {
    return Imp::getImpl(*this).compare(pos, len, s, n);
}

bool String::operator==(String const& other) const noexcept { return compare(other) == 0; }
bool String::operator!=(String const& other) const noexcept { return compare(other) != 0; }
bool String::operator<(String const& other) const noexcept { return compare(other) < 0; }
bool String::operator>(String const& other) const noexcept { return compare(other) > 0; }
bool String::operator<=(String const& other) const noexcept { return compare(other) <= 0; }
bool String::operator>=(String const& other) const noexcept { return compare(other) >= 0; }

unsigned long String::find(String const& str, unsigned long pos) const noexcept {
    return Imp::getImpl(*this).find(Imp::getImpl(str), pos);
}

unsigned long String::find(char const* s, unsigned long pos) const {
    return Imp::getImpl(*this).find(s, pos);
}

unsigned long String::find(char const* s, unsigned long pos, unsigned long n) const {
    return Imp::getImpl(*this).find(s, pos, n);
}

unsigned long String::find(char c, unsigned long pos) const noexcept {
    return Imp::getImpl(*this).find(c, pos);
}

unsigned long String::rfind(String const& str, unsigned long pos) const noexcept {
    return Imp::getImpl(*this).rfind(Imp::getImpl(str), pos);
}

unsigned long String::rfind(char const* s, unsigned long pos) const {
    return Imp::getImpl(*this).rfind(s, pos);
}

unsigned long String::rfind(char const* s, unsigned long pos, unsigned long n) const {
    return Imp::getImpl(*this).rfind(s, pos, n);
}

unsigned long String::rfind(char c, unsigned long pos) const noexcept {
    return Imp::getImpl(*this).rfind(c, pos);
}

unsigned long String::find_first_of(String const& str, unsigned long pos) const noexcept {
    return Imp::getImpl(*this).find_first_of(Imp::getImpl(str), pos);
}

unsigned long String::find_first_of(char const* s, unsigned long pos) const {
    return Imp::getImpl(*this).find_first_of(s, pos);
}

unsigned long String::find_first_of(char const* s, unsigned long pos, unsigned long n) const {
    return Imp::getImpl(*this).find_first_of(s, pos, n);
}

unsigned long String::find_first_of(char c, unsigned long pos) const noexcept {
    return Imp::getImpl(*this).find_first_of(c, pos);
}

unsigned long String::find_last_of(String const& str, unsigned long pos) const noexcept {
    return Imp::getImpl(*this).find_last_of(Imp::getImpl(str), pos);
}

unsigned long String::find_last_of(char const* s, unsigned long pos) const {
    return Imp::getImpl(*this).find_last_of(s, pos);
}

unsigned long String::find_last_of(char const* s, unsigned long pos, unsigned long n) const {
    return Imp::getImpl(*this).find_last_of(s, pos, n);
}

unsigned long String::find_last_of(char c, unsigned long pos) const noexcept {
    return Imp::getImpl(*this).find_last_of(c, pos);
}

unsigned long String::find_first_not_of(String const& str, unsigned long pos) const noexcept {
    return Imp::getImpl(*this).find_first_not_of(Imp::getImpl(str), pos);
}

unsigned long String::find_first_not_of(char const* s, unsigned long pos) const {
    return Imp::getImpl(*this).find_first_not_of(s, pos);
}

unsigned long String::find_first_not_of(char const* s, unsigned long pos, unsigned long n) const {
    return Imp::getImpl(*this).find_first_not_of(s, pos, n);
}

unsigned long String::find_first_not_of(char c, unsigned long pos) const noexcept {
    return Imp::getImpl(*this).find_first_not_of(c, pos);
}

unsigned long String::find_last_not_of(String const& str, unsigned long pos) const noexcept {
    return Imp::getImpl(*this).find_last_not_of(Imp::getImpl(str), pos);
}

unsigned long String::find_last_not_of(char const* s, unsigned long pos) const {
    return Imp::getImpl(*this).find_last_not_of(s, pos);
}

unsigned long String::find_last_not_of(char const* s, unsigned long pos, unsigned long n) const {
    return Imp::getImpl(*this).find_last_not_of(s, pos, n);
}

unsigned long String::find_last_not_of(char c, unsigned long pos) const noexcept {
    return Imp::getImpl(*this).find_last_not_of(c, pos);
}

unsigned long String::copy(char* s, unsigned long len, unsigned long pos) const {
    return Imp::getImpl(*this).copy(s, len, pos);
}

String String::substr(unsigned long pos, unsigned long len) const {
    return String(Imp::getImpl(*this).substr(pos, len).c_str());
}

char const& String::at(unsigned long pos) const {
    Imp::requireElement(*this, "In String::at(pos)");
    return Imp::hidden(*this)->at(pos);
}

char const& String::operator[](unsigned long pos) const { return std::as_const(*Imp::hidden(*this))[pos]; }

char const& String::front() const { return std::as_const(*Imp::hidden(*this)).front(); }

char const& String::back() const { return std::as_const(*Imp::hidden(*this)).back(); }

char const* String::begin() const noexcept { return m_pointee ? Imp::hidden(*this)->data() : nullptr; }

char const* String::end() const noexcept {
    return m_pointee ? Imp::hidden(*this)->data() + Imp::hidden(*this)->size() : nullptr;
}

char const* String::cbegin() const { return Imp::hidden(*this)->data(); }

char const* String::cend() const noexcept { return end(); }

char& String::at(unsigned long pos) {
    Imp::requireElement(*this, "In String::at(pos)");
    return *Imp::write(*this, [pos](Hidden& text) { return &text.at(pos); });
}

char& String::operator[](unsigned long pos) {
    return *Imp::write(*this, [pos](Hidden& text) { return &text[pos]; });
}

char& String::front() {
    return *Imp::write(*this, [](Hidden& text) { return &text.front(); });
}

char& String::back() {
    return *Imp::write(*this, [](Hidden& text) { return &text.back(); });
}

char* String::begin() {
    return m_pointee ? Imp::write(*this, [](Hidden& text) { return text.data(); }) : nullptr;
}

char* String::end() {
    return m_pointee ? Imp::write(*this, [](Hidden& text) { return text.data() + text.size(); }) : nullptr;
}

String& String::append(String const& str) { return Imp::change(*this, Append(), str); }

String& String::append(String const& str, unsigned long pos, unsigned long len) {
    if (!m_pointee) {
        return *this = String(str, len, len); // the length as the position too: see the header
    }
    return Imp::change(*this, Append(), str, pos, len);
}

String& String::append(char const* s) { return Imp::change(*this, Append(), s); }

String& String::append(char const* s, unsigned long n) { return Imp::change(*this, Append(), s, n); }

String& String::append(unsigned long n, char c) { return Imp::change(*this, Append(), n, c); }

void String::push_back(char c) { append(1, c); }

String& String::operator+=(String const& str) { return str.m_pointee ? append(str) : *this; }

String& String::operator+=(char const* s) { return append(s); }

String& String::operator+=(char c) { return append(1, c); }

String& String::assign(String const& str) { return Imp::change(*this, Assign(), str); }

String& String::assign(String const& str, unsigned long pos, unsigned long len) {
    return Imp::change(*this, Assign(), str, pos, len);
}

String& String::assign(char const* s) { return Imp::change(*this, Assign(), s); }

String& String::assign(char const* s, unsigned long n) { return Imp::change(*this, Assign(), s, n); }

String& String::assign(unsigned long n, char c) { return Imp::change(*this, Assign(), n, c); }

String& String::insert(unsigned long pos, String const& str) {
    Imp::requirePosition(*this, pos, "In String::String(pos,str)"); // sic; callers match this text
    return Imp::change(*this, Insert{pos}, str);
}

String& String::insert(unsigned long pos, String const& str, unsigned long subpos, unsigned long sublen) {
    Imp::requirePosition(*this, pos, "In String::insert(pos,str,subpos,sublen)");
    return Imp::change(*this, Insert{pos}, str, subpos, sublen);
}

String& String::insert(unsigned long pos, char const* s) {
    Imp::requirePosition(*this, pos, "In String::insert(pos,s)");
    return Imp::change(*this, Insert{pos}, s);
}

String& String::insert(unsigned long pos, char const* s, unsigned long n) {
    Imp::requirePosition(*this, pos, "In String::insert(pos,s,n)");
    return Imp::change(*this, Insert{pos}, s, n);
}

String& String::insert(unsigned long pos, unsigned long n, char c) {
    Imp::requirePosition(*this, pos, "In String::insert(pos,n,c)");
    return Imp::change(*this, Insert{pos}, n, c);
}

String& String::replace(unsigned long pos, unsigned long len, String const& str) {
    Imp::requirePosition(*this, pos, "In String::replace(pos,len,str)");
    return Imp::change(*this, Replace{pos, len}, str);
}

String& String::replace(unsigned long pos, unsigned long len, String const& str, unsigned long subpos,
                        unsigned long sublen) {
    Imp::requirePosition(*this, pos, "In String::replace(pos,len,str,subpos,sublen)");
    return Imp::change(*this, Replace{pos, len}, str, subpos, sublen);
}

String& String::replace(unsigned long pos, unsigned long len, char const* s) {
    Imp::requirePosition(*this, pos, "In String::replace(pos,len,s)");
    return Imp::change(*this, Replace{pos, len}, s);
}

String& String::replace(unsigned long pos, unsigned long len, char const* s, unsigned long n) {
    Imp::requirePosition(*this, pos, "In String::replace(pos,len,s,n)");
    return Imp::change(*this, Replace{pos, len}, s, n);
}

String& String::replace(unsigned long pos, unsigned long len, unsigned long n, char c) {
    Imp::requirePosition(*this, pos, "In String::replace(pos,len,n,c)");
    return Imp::change(*this, Replace{pos, len}, n, c);
}

String& String::erase(unsigned long pos, unsigned long len) {
    Imp::requirePosition(*this, pos, "In String::erase(pos,len)");
    if (m_pointee) {
        Imp::write(*this, [pos, len](Hidden& text) { text.erase(pos, len); });
    }
    return *this;
}

void String::pop_back() {
    Imp::write(*this, [](Hidden& text) { text.pop_back(); });
}

void String::reserve(unsigned long n) {
    Imp::changeSize(*this, n, [n](Hidden& text) { text.reserve(n); });
}

void String::resize(unsigned long n) {
    Imp::changeSize(*this, n, [n](Hidden& text) { text.resize(n); });
}

void String::resize(unsigned long n, char c) {
    Imp::changeSize(*this, n, [n, c](Hidden& text) { text.resize(n, c); });
}

void String::shrink_to_fit() {
    Imp::changeSize(*this, 0, [](Hidden& text) { text.reserve(0); });
}

void String::clear() noexcept { Imp::take(*this); }

void swap(String& left, String& right) noexcept { left.swap(right); }

bool operator==(char const* left, String const& right) { return right.compare(left) == 0; }
bool operator!=(char const* left, String const& right) { return right.compare(left) != 0; }
bool operator<(char const* left, String const& right) { return right.compare(left) > 0; }
bool operator>(char const* left, String const& right) { return right.compare(left) < 0; }
bool operator<=(char const* left, String const& right) { return right.compare(left) >= 0; }
bool operator>=(char const* left, String const& right) { return right.compare(left) <= 0; }

bool operator==(String const& left, char const* right) { return left.compare(right) == 0; }
bool operator!=(String const& left, char const* right) { return left.compare(right) != 0; }
bool operator<(String const& left, char const* right) { return left.compare(right) < 0; }
bool operator>(String const& left, char const* right) { return left.compare(right) > 0; }
bool operator<=(String const& left, char const* right) { return left.compare(right) <= 0; }
bool operator>=(String const& left, char const* right) { return left.compare(right) >= 0; }

String operator+(String const& left, String const& right) {
    String result(left);
    result += right;
    return result;
}

String operator+(String const& left, char const* right) {
    String result(left);
    result += right;
    return result;
}

String operator+(String const& left, char right) {
    String result(left);
    result += right;
    return result;
}

String operator+(char const* left, String const& right) {
    String result(left);
    result += right;
    return result;
}

String operator+(char left, String const& right) {
    String result(1, left);
    result += right;
    return result;
}

} // namespace ORL_0_81
