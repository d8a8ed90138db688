// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "support/orlStringPlay.h"

#include "core/public/orlStringTesting.h"

#include <sstream>
#include <utility>

using namespace ORL_0_81;
using namespace StringTesting;

namespace orlTest {

namespace {

// How an operation ended.
struct Outcome {
    enum Kind { kDone, kOutOfRange, kLengthError } kind = kDone;
    std::string text;

    bool isOurs() const { return text.rfind("In String::", 0) == 0; }
};

Outcome outcomeOf(std::function<void()> const& operation) {
    try {
        operation();
    } catch (std::out_of_range const& failure) {
        return {Outcome::kOutOfRange, failure.what()};
    } catch (std::length_error const& failure) {
        return {Outcome::kLengthError, failure.what()};
    }
    return {};
}

int signOf(int comparison) { return comparison < 0 ? -1 : comparison > 0 ? 1 : 0; }

} // namespace

StringModel StringModel::ofText(char const* s) { return s && *s ? StringModel{true, s} : empty(); }

StringModel StringModel::ofBytes(char const* s, unsigned long n) {
    return s && n != 0 ? StringModel{true, std::string(s, n)} : empty();
}

StringModel StringModel::ofRepeated(unsigned long n, char c) {
    return n != 0 ? StringModel{true, std::string(n, c)} : empty();
}

StringModel StringModel::ofPart(StringModel const& model, unsigned long pos, unsigned long len) {
    if (!model.hidden) {
        if (pos != 0) {
            throw std::out_of_range("In String::String(str,pos,len)");
        }
        return empty();
    }
    return {true, model.value.substr(pos, len)};
}

void StringModel::change(std::function<StringModel()> const& onEmpty,
                         std::function<void(std::string&)> const& operation) {
    if (!hidden) {
        *this = onEmpty();
        return;
    }
    std::string taken = value;
    *this = empty();
    operation(taken);
    *this = {true, taken};
}

void StringModel::requirePosition(unsigned long pos, char const* failure) const {
    if (!hidden && pos != 0) {
        throw std::out_of_range(failure);
    }
}

StringPlay::StringPlay(std::function<std::size_t(std::size_t)> choose)
    : m_choose(std::move(choose)), m_strings(COUNT), m_models(COUNT) {}

void StringPlay::step() {
    operate();
    check();
    checkPair();
}

void StringPlay::operate() {
    std::size_t const i = pick(COUNT);
    std::size_t const j = pick(COUNT); // may be the same
    String& s = m_strings[i];
    String& t = m_strings[j];
    StringModel& m = m_models[i];
    StringModel& o = m_models[j];
    unsigned long const pos = position(m);
    unsigned long const subpos = position(o);
    unsigned long const len = length();
    unsigned long const sublen = length();
    unsigned long const n = pick(6);
    char const c = "abc\0\xff"[pick(5)];
    std::string const bytesOf = randomBytes();
    // A null text is only allowed where the constructors see it.
    char const* const text = !m.hidden && pick(8) == 0 ? nullptr : bytesOf.c_str();
    unsigned long const count = text ? pick(bytesOf.size() + 1) : n;

    auto const value = [&o]() -> std::string const& { return o.value; };
    auto const both = [this](char const* name, std::function<void()> const& real,
                             std::function<void()> const& model) { perform(name, real, model); };

    switch (pick(48)) {
    case 0:
        return both(
            "s = t", [&] { s = t; }, [&] { m = StringModel(o); });
    case 1:
        return both(
            "s = move(t)", [&] { s = std::move(t); },
            [&] {
                if (i != j) {
                    m = std::exchange(o, StringModel());
                }
            });
    case 2: {
        char const* const assigned = text ? text : "";
        // A sole owner keeps its hidden string for an empty text, a sharer makes a new value.
        bool const isShared = sharers(i) > 1;
        return both(
            "s = text", [&] { s = assigned; },
            [&] {
                m = m.hidden && !isShared ? StringModel{true, assigned} : StringModel::ofText(assigned);
            });
    }
    case 3:
        return both(
            "s = c", [&] { s = c; },
            [&] {
                m = StringModel{true, std::string(1, c)};
            });
    case 4:
        return both(
            "swap", [&] { s.swap(t); }, [&] { std::swap(m, o); });
    case 5:
        return both(
            "clear", [&] { s.clear(); }, [&] { m = StringModel(); });
    case 6:
        return both(
            "s = String(t)", [&] { s = String(t); }, [&] { m = StringModel(o); });
    case 7:
        return both(
            "s = String(text)", [&] { s = String(text); }, [&] { m = StringModel::ofText(text); });
    case 8:
        return both(
            "s = String(text,n)", [&] { s = String(text, count); },
            [&] { m = StringModel::ofBytes(text, count); });
    case 9:
        return both(
            "s = String(n,c)", [&] { s = String(n, c); }, [&] { m = StringModel::ofRepeated(n, c); });
    case 10:
        return both(
            "s = String(t,pos,len)", [&] { s = String(t, subpos, sublen); },
            [&] { m = StringModel::ofPart(o, subpos, sublen); });
    case 11:
        return both(
            "append(t)", [&] { s.append(t); },
            [&] { m.change([&] { return o; }, [&](std::string& x) { x.append(value()); }); });
    case 12:
        return both(
            "s += t", [&] { s += t; },
            [&] { m.change([&] { return o; }, [&](std::string& x) { x.append(value()); }); });
    case 13:
        return both(
            "append(t,pos,len)", [&] { s.append(t, subpos, sublen); },
            [&] {
                m.change([&] { return StringModel::ofPart(o, sublen, sublen); },
                         [&](std::string& x) { x.append(value(), subpos, sublen); });
            });
    case 14:
        return both(
            "append(text)", [&] { s.append(text); },
            [&] {
                m.change([&] { return StringModel::ofText(text); }, [&](std::string& x) { x.append(text); });
            });
    case 15:
        return both(
            "s += text", [&] { s += text; },
            [&] {
                m.change([&] { return StringModel::ofText(text); }, [&](std::string& x) { x.append(text); });
            });
    case 16:
        return both(
            "append(text,n)", [&] { s.append(text, count); },
            [&] {
                m.change([&] { return StringModel::ofBytes(text, count); },
                         [&](std::string& x) { x.append(text, count); });
            });
    case 17:
        return both(
            "append(n,c)", [&] { s.append(n, c); },
            [&] {
                m.change([&] { return StringModel::ofRepeated(n, c); },
                         [&](std::string& x) { x.append(n, c); });
            });
    case 18:
        return both(
            "push_back", [&] { s.push_back(c); },
            [&] {
                m.change([&] { return StringModel::ofRepeated(1, c); },
                         [&](std::string& x) { x.push_back(c); });
            });
    case 19:
        return both(
            "s += c", [&] { s += c; },
            [&] {
                m.change([&] { return StringModel::ofRepeated(1, c); },
                         [&](std::string& x) { x.push_back(c); });
            });
    case 20:
        return both(
            "assign(t)", [&] { s.assign(t); },
            [&] { m.change([&] { return o; }, [&](std::string& x) { x = value(); }); });
    case 21:
        return both(
            "assign(t,pos,len)", [&] { s.assign(t, subpos, sublen); },
            [&] {
                m.change([&] { return StringModel::ofPart(o, subpos, sublen); },
                         [&](std::string& x) { x.assign(value(), subpos, sublen); });
            });
    case 22:
        return both(
            "assign(text)", [&] { s.assign(text); },
            [&] {
                m.change([&] { return StringModel::ofText(text); }, [&](std::string& x) { x.assign(text); });
            });
    case 23:
        return both(
            "assign(text,n)", [&] { s.assign(text, count); },
            [&] {
                m.change([&] { return StringModel::ofBytes(text, count); },
                         [&](std::string& x) { x.assign(text, count); });
            });
    case 24:
        return both(
            "assign(n,c)", [&] { s.assign(n, c); },
            [&] {
                m.change([&] { return StringModel::ofRepeated(n, c); },
                         [&](std::string& x) { x.assign(n, c); });
            });
    case 25:
        return both(
            "insert(pos,t)", [&] { s.insert(pos, t); },
            [&] {
                m.requirePosition(pos, "In String::String(pos,str)");
                m.change([&] { return o; }, [&](std::string& x) { x.insert(pos, value()); });
            });
    case 26:
        return both(
            "insert(pos,t,subpos,sublen)", [&] { s.insert(pos, t, subpos, sublen); },
            [&] {
                m.requirePosition(pos, "In String::insert(pos,str,subpos,sublen)");
                m.change([&] { return StringModel::ofPart(o, subpos, sublen); },
                         [&](std::string& x) { x.insert(pos, value(), subpos, sublen); });
            });
    case 27:
        return both(
            "insert(pos,text)", [&] { s.insert(pos, text); },
            [&] {
                m.requirePosition(pos, "In String::insert(pos,s)");
                m.change([&] { return StringModel::ofText(text); },
                         [&](std::string& x) { x.insert(pos, text); });
            });
    case 28:
        return both(
            "insert(pos,text,n)", [&] { s.insert(pos, text, count); },
            [&] {
                m.requirePosition(pos, "In String::insert(pos,s,n)");
                m.change([&] { return StringModel::ofBytes(text, count); },
                         [&](std::string& x) { x.insert(pos, text, count); });
            });
    case 29:
        return both(
            "insert(pos,n,c)", [&] { s.insert(pos, n, c); },
            [&] {
                m.requirePosition(pos, "In String::insert(pos,n,c)");
                m.change([&] { return StringModel::ofRepeated(n, c); },
                         [&](std::string& x) { x.insert(pos, n, c); });
            });
    case 30:
        return both(
            "replace(pos,len,t)", [&] { s.replace(pos, len, t); },
            [&] {
                m.requirePosition(pos, "In String::replace(pos,len,str)");
                m.change([&] { return o; }, [&](std::string& x) { x.replace(pos, len, value()); });
            });
    case 31:
        return both(
            "replace(pos,len,t,subpos,sublen)", [&] { s.replace(pos, len, t, subpos, sublen); },
            [&] {
                m.requirePosition(pos, "In String::replace(pos,len,str,subpos,sublen)");
                m.change([&] { return StringModel::ofPart(o, subpos, sublen); },
                         [&](std::string& x) { x.replace(pos, len, value(), subpos, sublen); });
            });
    case 32:
        return both(
            "replace(pos,len,text)", [&] { s.replace(pos, len, text); },
            [&] {
                m.requirePosition(pos, "In String::replace(pos,len,s)");
                m.change([&] { return StringModel::ofText(text); },
                         [&](std::string& x) { x.replace(pos, len, text); });
            });
    case 33:
        return both(
            "replace(pos,len,text,n)", [&] { s.replace(pos, len, text, count); },
            [&] {
                m.requirePosition(pos, "In String::replace(pos,len,s,n)");
                m.change([&] { return StringModel::ofBytes(text, count); },
                         [&](std::string& x) { x.replace(pos, len, text, count); });
            });
    case 34:
        return both(
            "replace(pos,len,n,c)", [&] { s.replace(pos, len, n, c); },
            [&] {
                m.requirePosition(pos, "In String::replace(pos,len,n,c)");
                m.change([&] { return StringModel::ofRepeated(n, c); },
                         [&](std::string& x) { x.replace(pos, len, n, c); });
            });
    case 35:
        return both(
            "erase", [&] { s.erase(pos, len); },
            [&] {
                m.requirePosition(pos, "In String::erase(pos,len)");
                m.change([] { return StringModel(); }, [&](std::string& x) { x.erase(pos, len); });
            });
    case 36:
        return both(
            "reserve", [&] { s.reserve(n); },
            [&] {
                m.change([&] { return StringModel{n != 0, ""}; }, [](std::string&) {});
            });
    case 37:
        return both(
            "resize(n)", [&] { s.resize(n); },
            [&] {
                m.change([&] { return StringModel::ofRepeated(n, '\0'); },
                         [&](std::string& x) { x.resize(n); });
            });
    case 38:
        return both(
            "resize(n,c)", [&] { s.resize(n, c); },
            [&] {
                m.change([&] { return StringModel::ofRepeated(n, c); },
                         [&](std::string& x) { x.resize(n, c); });
            });
    case 39:
        return both(
            "shrink_to_fit", [&] { s.shrink_to_fit(); }, [] {});
    case 40:
        return both(
            "at", [&] { s.at(pos) = c; },
            [&] {
                m.change([]() -> StringModel { throw std::out_of_range("In String::at(pos)"); },
                         [&](std::string& x) { x.at(pos) = c; });
            });
    case 41:
        if (!m.value.empty()) {
            unsigned long const place = pick(m.value.size());
            both(
                "operator[]", [&] { s[place] = c; }, [&] { m.value[place] = c; });
        }
        return;
    case 42:
        if (!m.value.empty()) {
            both(
                "front, back", [&] { s.front() = s.back(); }, [&] { m.value.front() = m.value.back(); });
        }
        return;
    case 43:
        if (!m.value.empty()) {
            both(
                "pop_back", [&] { s.pop_back(); }, [&] { m.value.pop_back(); });
        }
        return;
    case 44:
        return both(
            "begin, end",
            [&] {
                for (char& x : s) {
                    x = c;
                }
            },
            [&] { m.value.assign(m.value.size(), c); });
    case 45:
        return both(
            "s = s + t", [&] { s = s + t; },
            [&] {
                m = StringModel{m.hidden || o.hidden, m.value + o.value};
            });
    case 46:
        return both(
            "s = t.substr", [&] { s = t.substr(subpos, sublen); },
            [&] { m = StringModel::ofText(o.value.substr(subpos, sublen).c_str()); });
    default:
        return both(
            "resize beyond the maximum", [&] { s.resize(String::npos, c); },
            [&] {
                m.change([&]() -> StringModel { throw std::length_error(""); },
                         [&](std::string& x) { x.resize(String::npos, c); });
            });
    }
}

template <class T>
void StringPlay::require(char const* what, T const& actual, T const& expected) const {
    if (actual != expected) {
        std::ostringstream text;
        text << "after " << m_operation << ": " << what << " is " << actual << ", must be " << expected;
        throw Disagreement(text.str());
    }
}

void StringPlay::check() const {
    for (std::size_t i = 0; i < COUNT; ++i) {
        String const& string = m_strings[i];
        StringModel const& model = m_models[i];
        require("the text", bytes(string), model.value);
        require("the byte behind it", string.c_str()[string.size()], '\0');
        require("begin", string.begin() != nullptr, model.hidden);
        require("capacity", string.capacity() != 0, model.hidden);
        require("empty", string.empty(), model.value.empty());
    }
}

// The relations of two strings, and what searches find.
void StringPlay::checkPair() {
    std::size_t const i = pick(COUNT);
    std::size_t const j = pick(COUNT);
    String const& s = m_strings[i];
    String const& t = m_strings[j];
    std::string const& m = m_models[i].value;
    std::string const& o = m_models[j].value;
    unsigned long const pos = position(m_models[i]);
    char const* const text = t.c_str();
    unsigned long const count = pick(t.size() + 1);
    char const c = "abc\0\xff"[pick(5)];
    require("==", s == t, m == o);
    require("!=", s != t, m != o);
    require("<", s < t, m < o);
    require(">", s > t, m > o);
    require("<=", s <= t, m <= o);
    require(">=", s >= t, m >= o);
    require("compare", signOf(s.compare(t)), signOf(m.compare(o)));
    require("length", s.length(), m.size());
    checkTexts(s, m, text);
    checkSearches(s, m, t, pos, count, c);
    if (++m_pairs % 8 == 0) { // what fails takes its time
        checkParts(s, m, t, pos, count);
    }
}

// With a text of no object, on either side.
void StringPlay::checkTexts(String const& s, std::string const& m, char const* text) const {
    require("== text", s == text, m == text);
    require("!= text", s != text, m != text);
    require("< text", s < text, m < text);
    require("> text", s > text, m > text);
    require("<= text", s <= text, m <= text);
    require(">= text", s >= text, m >= text);
    require("text ==", text == s, text == m);
    require("text !=", text != s, text != m);
    require("text <", text < s, text < m);
    require("text >", text > s, text > m);
    require("text <=", text <= s, text <= m);
    require("text >=", text >= s, text >= m);
    require("compare(text)", signOf(s.compare(text)), signOf(m.compare(text)));
    require("+ text", bytes(s + text), m + text);
    require("text +", bytes(text + s), text + m);
    require("+ c", bytes(s + *text), m + *text);
    require("c +", bytes(*text + s), *text + m);
}

void StringPlay::checkSearches(String const& s, std::string const& m, String const& t, unsigned long pos,
                               unsigned long count, char c) const {
    std::string const o = bytes(t);
    char const* const text = t.c_str();
    require("find", s.find(t, pos), m.find(o, pos));
    require("find(text)", s.find(text, pos), m.find(text, pos));
    require("find(text,n)", s.find(text, pos, count), m.find(text, pos, count));
    require("find(c)", s.find(c, pos), m.find(c, pos));
    require("rfind", s.rfind(t, pos), m.rfind(o, pos));
    require("rfind(text)", s.rfind(text, pos), m.rfind(text, pos));
    require("rfind(text,n)", s.rfind(text, pos, count), m.rfind(text, pos, count));
    require("rfind(c)", s.rfind(c, pos), m.rfind(c, pos));
    require("find_first_of", s.find_first_of(t, pos), m.find_first_of(o, pos));
    require("find_first_of(text)", s.find_first_of(text, pos), m.find_first_of(text, pos));
    require("find_first_of(text,n)", s.find_first_of(text, pos, count), m.find_first_of(text, pos, count));
    require("find_first_of(c)", s.find_first_of(c, pos), m.find_first_of(c, pos));
    require("find_last_of", s.find_last_of(t, pos), m.find_last_of(o, pos));
    require("find_last_of(text)", s.find_last_of(text, pos), m.find_last_of(text, pos));
    require("find_last_of(text,n)", s.find_last_of(text, pos, count), m.find_last_of(text, pos, count));
    require("find_last_of(c)", s.find_last_of(c, pos), m.find_last_of(c, pos));
    require("find_first_not_of", s.find_first_not_of(t, pos), m.find_first_not_of(o, pos));
    require("find_first_not_of(text)", s.find_first_not_of(text, pos), m.find_first_not_of(text, pos));
    require("find_first_not_of(text,n)", s.find_first_not_of(text, pos, count),
            m.find_first_not_of(text, pos, count));
    require("find_first_not_of(c)", s.find_first_not_of(c, pos), m.find_first_not_of(c, pos));
    require("find_last_not_of", s.find_last_not_of(t, pos), m.find_last_not_of(o, pos));
    require("find_last_not_of(text)", s.find_last_not_of(text, pos), m.find_last_not_of(text, pos));
    require("find_last_not_of(text,n)", s.find_last_not_of(text, pos, count),
            m.find_last_not_of(text, pos, count));
    require("find_last_not_of(c)", s.find_last_not_of(c, pos), m.find_last_not_of(c, pos));
}

// What reads from a position on, and so may fail.
void StringPlay::checkParts(String const& s, std::string const& m, String const& t, unsigned long pos,
                            unsigned long count) const {
    std::string const o = bytes(t);
    char const* const text = t.c_str();
    int compared[4] = {};
    int expected[4] = {};
    std::string copied(m.size() + 1, '.');
    std::string expectedCopy = copied;
    char element = '.';
    char expectedElement = '.';
    std::function<void()> const reads[][2] = {
        {[&] { compared[0] = s.compare(pos, count, t); }, [&] { expected[0] = m.compare(pos, count, o); }},
        {[&] { compared[1] = s.compare(pos, count, t, count / 2, count); },
         [&] { expected[1] = m.compare(pos, count, o, count / 2, count); }},
        {[&] { compared[2] = s.compare(pos, count, text); },
         [&] { expected[2] = m.compare(pos, count, text); }},
        {[&] { compared[3] = s.compare(pos, count, text, count); },
         [&] { expected[3] = m.compare(pos, count, text, count); }},
        {[&] { s.copy(copied.data(), count, pos); }, [&] { m.copy(expectedCopy.data(), count, pos); }},
        {[&] { element = s.at(pos); }, [&] { expectedElement = m.at(pos); }},
    };
    for (auto const& [real, model] : reads) {
        require<int>("the failure of a reading", outcomeOf(real).kind, outcomeOf(model).kind);
    }
    for (int i = 0; i < 4; ++i) {
        require("compare(pos,...)", signOf(compared[i]), signOf(expected[i]));
    }
    require("copy", copied, expectedCopy);
    require("at", element, expectedElement);
    require("begin to end", std::string(s.begin(), s.end()), m);
    if (!m.empty()) {
        require("front, back", std::string{s.front(), s.back(), s[0]},
                std::string{m.front(), m.back(), m[0]});
    }
}

// A little beyond the end now and then.
unsigned long StringPlay::position(StringModel const& model) {
    std::size_t const choice = pick(12);
    if (choice == 0) {
        return String::npos;
    }
    return choice < 5 ? 0 : pick(model.value.size() + 2);
}

unsigned long StringPlay::length() { return pick(6) == 0 ? String::npos : pick(8); }

std::string StringPlay::randomBytes() {
    std::string result(pick(4) == 0 ? pick(40) : pick(5), 'a');
    for (char& c : result) {
        c = "abcd\0\xe9"[pick(6)];
    }
    return result;
}

std::size_t StringPlay::sharers(std::size_t i) const {
    std::size_t count = 0;
    for (String const& string : m_strings) {
        count += share(string, m_strings[i]) ? 1U : 0U;
    }
    return count;
}

void StringPlay::perform(char const* name, std::function<void()> const& real,
                         std::function<void()> const& model) {
    m_operation = name;
    Outcome const expected = outcomeOf(model);
    Outcome const actual = outcomeOf(real);
    require<int>("the kind of failure", actual.kind, expected.kind);
    require("the author of the failure", actual.isOurs(), expected.isOurs());
    if (expected.isOurs()) {
        require("the failure", actual.text, expected.text);
    }
    m_failures += expected.kind == Outcome::kDone ? 0U : 1U;
    for (std::size_t i = 0; i < COUNT; ++i) {
        if (m_models[i].value.size() > LONG) { // keep the texts short, so that the cases repeat
            m_strings[i].clear();
            m_models[i] = StringModel();
        }
    }
}

} // namespace orlTest
