// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#ifndef VALUE_TEXTS_H
#define VALUE_TEXTS_H

#include <orlStatus.h>
#include <orlString.h>

#include <gtest/gtest.h>

#include <cstddef>
#include <initializer_list>
#include <string>
#include <utility>
#include <vector>

/// \file
/// JSON texts, good and bad, for the classes that have a text form, and what must become of the object.

namespace ValueTexts {

struct NamedText {
    std::string name;
    std::string text;
};

/// A bit for each thing that a JSON value can be to RapidJSON.
enum Kind : unsigned {
    kNull = 1,
    kBool = 2,
    kString = 4,
    kArray = 8,
    kObject = 16,
    kInt32 = 32,      // an integer in the signed 32-bit range
    kWideInt = 64,    // an integer beyond that, within 64 bits
    kFraction = 128,  // a finite number with a fraction or an exponent, or an integer beyond 64 bits
    kInfinite = 256,  // a number that the parser rounds to infinity
    kNotParsed = 512, // no JSON at all
};

struct Sample {
    Kind kind;
    std::string text;
};

/// Each JSON type, and numbers at and beyond each limit.
inline std::vector<Sample> const& samples() {
    static std::vector<Sample> const all = {
        {kNull, "null"},
        {kBool, "true"},
        {kBool, "false"},
        {kString, R"("")"},
        {kString, R"("1")"},
        {kString, R"("1.0")"},
        {kString, R"("a\u0000b")"},
        {kArray, "[]"},
        {kArray, "[1]"},
        {kArray, "[null,null]"},
        {kObject, "{}"},
        {kObject, R"({"numerator":1})"},
        {kInt32, "0"},
        {kInt32, "-0"},
        {kInt32, "-1"},
        {kInt32, "2147483647"},
        {kInt32, "-2147483648"},
        {kWideInt, "2147483648"},
        {kWideInt, "-2147483649"},
        {kWideInt, "4294967295"},
        {kWideInt, "4294967296"},
        {kWideInt, "9223372036854775807"},
        {kWideInt, "-9223372036854775808"},
        {kWideInt, "9223372036854775808"},
        {kWideInt, "18446744073709551615"},
        {kFraction, "18446744073709551616"},
        {kFraction, "-9223372036854775809"},
        {kFraction, "1" + std::string(300, '0')},
        {kFraction, "1.0"},
        {kFraction, "-0.0"},
        {kFraction, "1e0"},
        {kFraction, "24E+0"},
        {kFraction, "2147483647.0"},
        {kFraction, "1.5e308"},
        {kFraction, "1e-400"},
        {kFraction, "0." + std::string(400, '9')},
        {kFraction, "1." + std::string(400, '0') + "1"},
        {kFraction, "1.00000000001e-2147483639"},
        {kFraction, "1.00000000001E-99999999999999999999"},
        {kInfinite, "1.9e308"},
        {kInfinite, "-1.9e308"},
        {kInfinite, "999999999999999999999999e300"},
        {kNotParsed, ""},
        {kNotParsed, "1e400"},
        {kNotParsed, "-1e400"},
        {kNotParsed, "1" + std::string(400, '0')},
        {kNotParsed, "1" + std::string(400, '0') + ".5"},
        {kNotParsed, "NaN"},
        {kNotParsed, "Infinity"},
        {kNotParsed, "+1"},
        {kNotParsed, "01"},
        {kNotParsed, "1."},
        {kNotParsed, ".5"},
        {kNotParsed, "1e"},
        {kNotParsed, "0x10"},
        {kNotParsed, "1,5"},
        {kNotParsed, "'1'"},
        {kNotParsed, "TRUE"},
        {kNotParsed, "\"\n\""},
        {kNotParsed, R"("\ud800")"},
        {kNotParsed, R"("\x")"},
    };
    return all;
}

/// The members of an object, in their order: each a name, and the JSON text of its value.
using Members = std::vector<std::pair<std::string, std::string>>;

inline std::string toText(Members const& members) {
    std::string text = "{";
    for (auto const& [name, value] : members) {
        text += text.size() > 1 ? ",\"" : "\"";
        text.append(name).append("\":").append(value);
    }
    return text + "}";
}

inline Members with(Members members, std::size_t index, std::string const& value) {
    members[index].second = value;
    return members;
}

/// What is wrong with any object, whichever members it wants.
inline std::vector<NamedText> brokenTexts(Members const& good) {
    std::string const text = toText(good);
    std::vector<NamedText> broken = {
        {"empty", ""},
        {"blanks only", " \t\r\n"},
        {"a NUL first", std::string(1, '\0') + text},
        {"a NUL in the middle", text.substr(0, text.size() - 1) + '\0' + "}"},
        {"a byte order mark first", "\xEF\xBB\xBF" + text},
        {"a word behind", text + " x"},
        {"a second root", text + text},
        {"a comma behind", text + ","},
        {"a bracket behind", text + "}"},
        {"a comment behind", text + "// note"},
        {"a comma behind the last member", text.substr(0, text.size() - 1) + ",}"},
        {"a byte that is no JSON", "\xFF"},
        {"a colon for a comma", "{\"x\":1:\"y\":2}"},
        {"an unquoted name", "{x:1}"},
        {"a bracket of the other kind", text.substr(0, text.size() - 1) + "]"},
        {"one array too deep", std::string(1001, '[') + std::string(1001, ']')},
        {"100000 open arrays", std::string(100000, '[')},
        {"100000 arrays", std::string(100000, '[') + std::string(100000, ']')},
        {"100000 open objects",
         [] {
             std::string nested;
             for (int i = 0; i < 100000; ++i) {
                 nested += "{\"x\":";
             }
             return nested;
         }()},
        {"an extra member one array too deep", toText(good).substr(0, text.size() - 1) + ",\"x\":" +
                                                   std::string(1000, '[') + std::string(1000, ']') + "}"},
        {"no members", "{}"},
        {"the object in an array", "[" + text + "]"},
        {"the object in a string", "\"{}\""},
        {"the object in an object", "{\"x\":" + text + "}"},
    };
    for (std::size_t length = 0; length < text.size(); ++length) {
        broken.push_back({"cut to " + std::to_string(length) + " bytes", text.substr(0, length)});
    }
    for (Sample const& sample : samples()) {
        broken.push_back({"the root is " + sample.text.substr(0, 40), sample.text});
    }
    for (std::size_t i = 0; i < good.size(); ++i) {
        std::string const& name = good[i].first;
        Members members = good;
        members.erase(members.begin() + static_cast<std::ptrdiff_t>(i));
        broken.push_back({"without " + name, toText(members)});
        for (std::string const& other : {name + " ", " " + name, name + "\\u0000", name.substr(1),
                                         static_cast<char>(name[0] - 'a' + 'A') + name.substr(1)}) {
            members = good;
            members[i].first = other;
            broken.push_back({"named " + other, toText(members)});
        }
    }
    return broken;
}

/// The same object otherwise written.
inline std::vector<NamedText> equivalentTexts(Members const& good) {
    std::string const text = toText(good);
    std::string const open = text.substr(0, text.size() - 1);
    std::string spaced = " \r\n\t{ ";
    for (auto const& [name, value] : good) {
        spaced += spaced.size() > 6 ? " ,\n\"" : "\"";
        spaced.append(name).append("\"\t: ").append(value);
    }
    spaced += "\n}\n ";
    Members doubled = good;
    doubled.insert(doubled.end(), good.begin(), good.end());
    for (std::size_t i = good.size(); i < doubled.size(); ++i) {
        doubled[i].second = "null";
    }
    Members withOthers = good;
    withOthers.insert(withOthers.begin(), {"other", "[1,{\"numerator\":null}]"});
    withOthers.push_back({"", "\"\""});
    return {
        {"as it stands", text},
        {"backwards", toText(Members(good.rbegin(), good.rend()))},
        {"white space all over", spaced},
        {"a NUL and rubbish behind", text + '\0' + "}]x"},
        {"other members", toText(withOthers)},
        {"the members once more, as null", toText(doubled)},
        {"another member that is as deep as can be",
         open + ",\"x\":" + std::string(999, '[') + std::string(999, ']') + "}"},
        {"brackets in a string", open + ",\"x\":\"" + std::string(5000, '[') + "\"}"},
        {"brackets behind quotes and backslashes in a string",
         open + R"(,"x":"\"[[{{\\\")" + std::string(5000, '[') + "\"}"},
        {"brackets in a name", "{\"" + std::string(5000, '{') + "\":\"]\"," + text.substr(1)},
        {"many arrays beside one another, each as deep as can be",
         open + ",\"x\":[" + std::string(998, '[') + std::string(998, ']') + "," + std::string(998, '[') +
             std::string(998, ']') + "]}"},
        {"another member beyond the range of numbers", open + ",\"x\":[1.9e308]}"},
        {"bytes that are no UTF-8 in a string", open + ",\"x\":\"\xFF\xC0\"}"},
        {"a name with escapes",
         [&] {
             Members members = good;
             char const first = members[0].first[0];
             std::string const digits = "0123456789abcdef";
             members[0].first = std::string("\\u00") + digits[static_cast<std::size_t>(first) / 16] +
                                digits[static_cast<std::size_t>(first) % 16] + members[0].first.substr(1);
             return toText(members);
         }()},
    };
}

inline ORL_0_81::String toString(std::string const& text) {
    return ORL_0_81::String(text.data(), text.size());
}

/// Refused with that code, by an object that keeps its value.
template <class Value>
void expectRefused(Value const& original, std::string const& text, ORL_0_81::Status::Type code) {
    Value value(original);
    EXPECT_STREQ(value.fromJson(toString(text)).getStr(), ORL_0_81::Status(code).getStr())
        << text.substr(0, 200);
    EXPECT_STREQ(value.toJson().asChar(), original.toJson().asChar()) << text.substr(0, 200);
}

/// Accepted, and the object's own text is then that one.
template <class Value>
void expectRead(Value const& original, std::string const& text, std::string const& expected) {
    Value value(original);
    EXPECT_STREQ(value.fromJson(toString(text)).getStr(), "kSuccess") << text.substr(0, 200);
    EXPECT_STREQ(value.toJson().asChar(), expected.c_str()) << text.substr(0, 200);
}

template <class Value>
void expectAllRefused(Value const& original, std::vector<NamedText> const& texts,
                      ORL_0_81::Status::Type code) {
    for (NamedText const& text : texts) {
        SCOPED_TRACE(text.name);
        expectRefused(original, text.text, code);
    }
}

/// Every sample in the place of that member, but for the kinds that fit there.
template <class Value>
void expectMisfitsRefused(Value const& original, Members const& good, std::size_t index, unsigned fitting,
                          ORL_0_81::Status::Type code) {
    for (Sample const& sample : samples()) {
        if (!(sample.kind & fitting)) {
            SCOPED_TRACE(good[index].first);
            expectRefused(original, toText(with(good, index, sample.text)), code);
        }
    }
}

} // namespace ValueTexts

#endif // VALUE_TEXTS_H
