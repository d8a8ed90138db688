// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "rapidotio/internal/orlOtioParsing.h"

#include "rapidotio/orlOtioTimeRange.h"
#include "support/Json.h"
#include "support/orlThreads.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <string>
#include <vector>

namespace {

using namespace ORL_0_81::rapidotio;
using namespace orlTest;
using Iterator = rapidjson::Value::ConstMemberIterator;

/// {"a": value}
rapidjson::Document holding(std::string const& value) { return parsed(R"({"a":)" + value + "}"); }

/// What a lookup of "a" gives: `before` when it is refused.
template <class T>
T lookup(bool (*get)(rapidjson::Value const&, Parsing::Name, T&), std::string const& value, T before) {
    rapidjson::Document const document = holding(value);
    T result = before;
    bool const found = get(document, "a", result);
    EXPECT_EQ(found, !(result == before)) << value;
    return result;
}

TEST(OtioParsing, TheTypesAreNamedByRapidJsonsNumbers) {
    char const* const expected[] = {"Null", "False", "True", "Object", "Array", "String", "Number"};
    char const* const values[] = {"null", "false", "true", "{}", "[]", "\"\"", "1"};
    for (int i = 0; i < 7; ++i) {
        EXPECT_STREQ(Parsing::types[i], expected[i]);
        EXPECT_EQ(parsed(values[i]).GetType(), i);
    }
}

TEST(OtioParsing, AStringIsTakenAndNothingElseIs) {
    EXPECT_EQ(lookup<std::string>(Parsing::getString, R"("text")", "before"), "text");
    EXPECT_EQ(lookup<std::string>(Parsing::getString, R"("")", "before"), "");
    for (char const* const value : {"null", "true", "false", "1", "1.5", "[]", "{}", R"(["x"])"}) {
        EXPECT_EQ(lookup<std::string>(Parsing::getString, value, "before"), "before");
    }
}

TEST(OtioParsing, AStringEndsAtItsFirstZeroByte) {
    EXPECT_EQ(lookup<std::string>(Parsing::getString, R"("ab\u0000cd")", "before"), "ab");
    EXPECT_EQ(lookup<std::string>(Parsing::getString, R"("\u0000cd")", "before"), "");
}

struct IntRow {
    char const* json;
    long long expected; ///< 77 for a refused one
};

TEST(OtioParsing, AnIntIsAnIntegerNumberThatFits) {
    IntRow const rows[] = {
        {"0", 0},
        {"-0", 0},
        {"1", 1},
        {"-1", -1},
        {"2147483647", 2147483647},
        {"-2147483648", -2147483648LL},
        {"2147483648", 77},
        {"-2147483649", 77},
        {"4294967295", 77},
        {"9223372036854775807", 77},
        {"1.0", 77},
        {"1e0", 77},
        {"null", 77},
        {"true", 77},
        {"\"1\"", 77},
        {"[1]", 77},
        {"{}", 77},
    };
    for (IntRow const& row : rows) {
        EXPECT_EQ(lookup<int>(Parsing::getInt, row.json, 77), row.expected) << row.json;
    }
}

TEST(OtioParsing, AUIntIsANonNegativeIntegerNumberThatFits) {
    IntRow const rows[] = {
        {"0", 0},
        {"1", 1},
        {"2147483647", 2147483647},
        {"2147483648", 2147483648LL},
        {"4294967295", 4294967295LL},
        {"4294967296", 77},
        {"-1", 77},
        {"-2147483648", 77},
        {"1.0", 77},
        {"null", 77},
        {"false", 77},
        {"\"1\"", 77},
        {"[]", 77},
        {"{}", 77},
    };
    for (IntRow const& row : rows) {
        EXPECT_EQ(lookup<unsigned>(Parsing::getUInt, row.json, 77), row.expected) << row.json;
    }
}

struct DoubleRow {
    char const* json;
    double expected; ///< 77 for a refused one
};

TEST(OtioParsing, ADoubleIsANumberThatIsHeldAsOne) {
    DoubleRow const rows[] = {
        {"1", 77.0},
        {"0", 77.0},
        {"-1", 77.0},
        {"18446744073709551615", 77.0},
        {"1.0", 1.0},
        {"1e0", 1.0},
        {"1E+2", 100.0},
        {"-2.5", -2.5},
        {"0.0", 0.0},
        {"1e-400", 0.0},
        {"18446744073709551616", 18446744073709551616.0},
        {"null", 77.0},
        {"true", 77.0},
        {"\"1.0\"", 77.0},
        {"[1.0]", 77.0},
        {"{}", 77.0},
    };
    for (DoubleRow const& row : rows) {
        EXPECT_EQ(lookup<double>(Parsing::getDouble, row.json, 77.0), row.expected) << row.json;
    }
}

TEST(OtioParsing, ADoubleThatTheParserLetThroughAsInfinityIsRefused) {
    ASSERT_TRUE(parsed("10.0e308").GetDouble() > 1.7976931348623157e308);
    EXPECT_EQ(lookup<double>(Parsing::getDouble, "10.0e308", 77.0), 77.0);
    EXPECT_EQ(lookup<double>(Parsing::getDouble, "-10.0e308", 77.0), 77.0);
    EXPECT_EQ(lookup<float>(Parsing::getFloat, "10.0e308", 77.0F), 77.0F);
    EXPECT_EQ(lookup<double>(Parsing::getDouble, "0." + repeated("0", 400) + "99e710", 77.0), 77.0);
}

TEST(OtioParsing, AFloatIsADoubleWithinItsLimitsAndIsNarrowed) {
    DoubleRow const rows[] = {
        {"1", 77.0},
        {"0", 77.0},
        {"1.0", 1.0},
        {"0.1", static_cast<double>(0.1F)},
        {"-0.8", static_cast<double>(-0.8F)},
        {"1e39", 77.0},
        {"-1e39", 77.0},
        {"1e-60", 0.0},
        {"3.4028234e38", static_cast<double>(3.4028234e38F)},
        {"-3.4028234e38", static_cast<double>(-3.4028234e38F)},
        {"3.4028235e38", 77.0},
        {"-3.4028235e38", 77.0},
        {"3.40282346e38", 77.0},
        {"null", 77.0},
        {"\"1.0\"", 77.0},
        {"[1.0]", 77.0},
    };
    for (DoubleRow const& row : rows) {
        EXPECT_EQ(static_cast<double>(lookup<float>(Parsing::getFloat, row.json, 77.0F)), row.expected)
            << row.json;
    }
}

TEST(OtioParsing, ABoolIsTrueOrFalse) {
    for (bool const before : {true, false}) {
        for (bool const value : {true, false}) {
            bool result = before;
            EXPECT_TRUE(Parsing::getBool(holding(value ? "true" : "false"), "a", result));
            EXPECT_EQ(result, value);
        }
        for (char const* const value : {"null", "0", "1", "1.0", "\"true\"", "[]", "{}"}) {
            bool result = before;
            EXPECT_FALSE(Parsing::getBool(holding(value), "a", result)) << value;
            EXPECT_EQ(result, before) << value;
        }
    }
}

TEST(OtioParsing, AnObjectIsHandedBackAsItsMember) {
    rapidjson::Document const document = holding(R"({"b":1})");
    Iterator found = Iterator();
    EXPECT_TRUE(Parsing::getObject(document, "a", found));
    EXPECT_STREQ(found->name.GetString(), "a");
    EXPECT_EQ(&found->value, &document["a"]);
    EXPECT_FALSE(Parsing::getArray(document, "a", found));
    EXPECT_EQ(&found->value, &document["a"]);
}

TEST(OtioParsing, AnArrayIsHandedBackAsItsMember) {
    rapidjson::Document const document = holding("[1]");
    Iterator found = Iterator();
    EXPECT_TRUE(Parsing::getArray(document, "a", found));
    EXPECT_EQ(&found->value, &document["a"]);
}

TEST(OtioParsing, WhatIsNoObjectAndNoArrayLeavesTheIteratorEmpty) {
    for (char const* const value : {"null", "true", "false", "1", "1.5", "\"{}\""}) {
        rapidjson::Document const document = holding(value);
        Iterator found = Iterator();
        EXPECT_FALSE(Parsing::getObject(document, "a", found));
        EXPECT_TRUE(found == Iterator());
        EXPECT_FALSE(Parsing::getArray(document, "a", found));
        EXPECT_TRUE(found == Iterator());
        EXPECT_EQ(Parsing::findObject(document, "a"), nullptr);
        EXPECT_EQ(Parsing::findArray(document, "a"), nullptr);
    }
}

TEST(OtioParsing, TheShortFormsGiveTheValueItself) {
    rapidjson::Document const document = parsed(R"({"o":{},"a":[]})");
    EXPECT_EQ(Parsing::findObject(document, "o"), &document["o"]);
    EXPECT_EQ(Parsing::findArray(document, "a"), &document["a"]);
    EXPECT_EQ(Parsing::findObject(document, "a"), nullptr);
    EXPECT_EQ(Parsing::findArray(document, "o"), nullptr);
}

/// Runs all lookups for a member that is not there.
void expectNothingFound(rapidjson::Value const& object, char const* name) {
    std::string text = "before";
    int number = 77;
    unsigned count = 77;
    double fraction = 77.0;
    float narrow = 77.0F;
    bool flag = true;
    Iterator found = Iterator();
    EXPECT_FALSE(Parsing::getString(object, name, text));
    EXPECT_FALSE(Parsing::getInt(object, name, number));
    EXPECT_FALSE(Parsing::getUInt(object, name, count));
    EXPECT_FALSE(Parsing::getDouble(object, name, fraction));
    EXPECT_FALSE(Parsing::getFloat(object, name, narrow));
    EXPECT_FALSE(Parsing::getBool(object, name, flag));
    EXPECT_FALSE(Parsing::getObject(object, name, found));
    EXPECT_FALSE(Parsing::getArray(object, name, found));
    EXPECT_EQ(Parsing::peekString(object, name), nullptr);
    EXPECT_EQ(text, "before");
    EXPECT_EQ(number, 77);
    EXPECT_EQ(count, 77U);
    EXPECT_EQ(fraction, 77.0);
    EXPECT_EQ(narrow, 77.0F);
    EXPECT_TRUE(flag);
    EXPECT_TRUE(found == Iterator());
}

TEST(OtioParsing, AMissingMemberLeavesEveryResultAsItWas) {
    expectNothingFound(parsed("{}"), "a");
    expectNothingFound(parsed(R"({"A":1,"aa":1,"":1," a":1})"), "a");
}

TEST(OtioParsing, AValueThatIsNoObjectHasNoMembers) {
    for (char const* const text : {"null", "true", "false", "1", "1.5", "\"a\"", "[]", R"(["a",1])"}) {
        expectNothingFound(parsed(text), "a");
    }
}

TEST(OtioParsing, NamesAreComparedByLengthAndThenByBytes) {
    rapidjson::Document const document = parsed(R"({"a\u0000":1,"a\u0000b":2,"ab":3,"\u00e4":4,"a":5})");
    int result = 0;
    EXPECT_TRUE(Parsing::getInt(document, "a", result));
    EXPECT_EQ(result, 5);
    EXPECT_TRUE(Parsing::getInt(document, "\xC3\xA4", result));
    EXPECT_EQ(result, 4);
}

TEST(OtioParsing, EveryByteOfANameCounts) {
    std::string const letters = "abcdefghijklmnopqrstuvwxyz";
    for (std::size_t length = 1; length <= letters.size(); ++length) {
        std::string const name = letters.substr(0, length);
        int result = 0;
        EXPECT_TRUE(Parsing::getInt(parsed("{\"" + name + "\":1}"), name.c_str(), result)) << name;
        for (std::size_t place = 0; place < length; ++place) {
            std::string other = name;
            other[place] = 'A';
            EXPECT_FALSE(Parsing::getInt(parsed("{\"" + other + "\":1}"), name.c_str(), result)) << other;
        }
    }
}

TEST(OtioParsing, AnEmptyNameIsANameLikeAnyOther) {
    int result = 0;
    EXPECT_TRUE(Parsing::getInt(parsed(R"({"a":1,"":2})"), "", result));
    EXPECT_EQ(result, 2);
}

TEST(OtioParsing, OfDuplicateNamesOnlyTheFirstIsEverSeen) {
    rapidjson::Document const document = parsed(R"({"a":1,"a":"text","a":2})");
    int result = 0;
    EXPECT_TRUE(Parsing::getInt(document, "a", result));
    EXPECT_EQ(result, 1);
    std::string text = "before";
    EXPECT_FALSE(Parsing::getString(document, "a", text));
    EXPECT_EQ(Parsing::peekString(document, "a"), nullptr);
}

TEST(OtioParsing, PeekingSeesStringsOnly) {
    EXPECT_STREQ(Parsing::peekString(holding(R"("x\u0000y")"), "a"), "x");
    for (char const* const value : {"null", "true", "1", "1.5", "[]", "{}"}) {
        EXPECT_EQ(Parsing::peekString(holding(value), "a"), nullptr) << value;
    }
}

TEST(OtioParsing, ASchemaIsTheWholeText) {
    EXPECT_TRUE(Parsing::hasSchema(parsed(R"({"OTIO_SCHEMA":"CDL.1"})"), "CDL.1"));
    for (char const* const text : {R"({"OTIO_SCHEMA":"CDL.10"})", R"({"OTIO_SCHEMA":"CDL."})", "[]", "null",
                                   R"({"OTIO_SCHEMA":1})", R"({"SCHEMA":"CDL.1"})", "{}"}) {
        EXPECT_FALSE(Parsing::hasSchema(parsed(text), "CDL.1")) << text;
    }
}

TEST(OtioParsing, ARangeIsReadWithoutALookAtItsSchema) {
    TimeRange range;
    Parsing::getTimeRange(holding(R"({"OTIO_SCHEMA":"Whatever.7",
        "start_time":{"OTIO_SCHEMA":"RationalTime.1","value":1,"rate":24},
        "duration":{"OTIO_SCHEMA":"RationalTime.1","value":2.0,"rate":"25"}})"),
                          "a", range);
    EXPECT_EQ(range.start_time.value, 1.0);
    EXPECT_EQ(range.start_time.rate, 24.0);
    EXPECT_EQ(range.duration.value, 2.0);
    EXPECT_EQ(range.duration.rate, 25.0);
}

TEST(OtioParsing, TheHalvesOfARangeFailEachForItself) {
    TimeRange range;
    Parsing::getTimeRange(
        holding(R"({"start_time":7,"duration":{"OTIO_SCHEMA":"RationalTime.1","value":2.0,"rate":25.0}})"),
        "a", range);
    EXPECT_FALSE(range.start_time.hasValue());
    EXPECT_TRUE(range.duration.isDefined());
    Parsing::getTimeRange(holding("[]"), "a", range);
    EXPECT_TRUE(range.duration.isDefined());
}

TEST(OtioParsing, NumbersOfBothFormsMakeAList) {
    std::vector<double> numbers;
    EXPECT_TRUE(Parsing::toNumbers(parsed("[1,-2,2.5,18446744073709551615]"), 1e300, numbers));
    EXPECT_EQ(numbers, (std::vector<double>{1.0, -2.0, 2.5, 18446744073709551615.0}));
}

TEST(OtioParsing, TheLimitOfAListIsWithinIt) {
    std::vector<double> numbers;
    EXPECT_TRUE(Parsing::toNumbers(parsed("[300,-300.0]"), 300.0, numbers));
    EXPECT_EQ(numbers, (std::vector<double>{300.0, -300.0}));
}

TEST(OtioParsing, AListWithAnythingElseIsNone) {
    for (char const* const text : {"[1,null]", "[true]", "[\"1\"]", "[[1]]", "[{}]", "[1,10.0e308]",
                                   "[-10.0e308]", "[1,2,301]", "[-301]"}) {
        std::vector<double> numbers;
        EXPECT_FALSE(Parsing::toNumbers(parsed(text), 300.0, numbers)) << text;
    }
}

TEST(OtioParsing, OneDocumentIsReadOnManyThreadsAtATime) {
    rapidjson::Document const document =
        parsed(R"({"text":"words","int":7,"double":2.5,"bool":true,"object":{"array":[1,2]}})");
    onThreads(4, [&document](std::size_t) {
        for (int round = 0; round < 100; ++round) {
            std::string text;
            EXPECT_TRUE(Parsing::getString(document, "text", text));
            EXPECT_EQ(text, "words");
            int number = 0;
            unsigned positive = 0;
            EXPECT_TRUE(Parsing::getInt(document, "int", number));
            EXPECT_TRUE(Parsing::getUInt(document, "int", positive));
            double fraction = 0.0;
            float narrow = 0.0F;
            EXPECT_TRUE(Parsing::getDouble(document, "double", fraction));
            EXPECT_TRUE(Parsing::getFloat(document, "double", narrow));
            bool flag = false;
            EXPECT_TRUE(Parsing::getBool(document, "bool", flag));
            rapidjson::Value const* const object = Parsing::findObject(document, "object");
            ASSERT_TRUE(object);
            std::vector<double> numbers;
            rapidjson::Value const* const array = Parsing::findArray(*object, "array");
            ASSERT_TRUE(array);
            EXPECT_TRUE(Parsing::toNumbers(*array, 300.0, numbers));
            EXPECT_EQ(numbers.size(), 2U);
            EXPECT_STREQ(Parsing::peekString(document, "text"), "words");
            EXPECT_FALSE(Parsing::hasSchema(document, "Clip.1"));
        }
    });
}

} // namespace
