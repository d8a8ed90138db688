// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "rapidotio/internal/orlOtioParsing.h"

#include "rapidotio/orlOtioTime.h"
#include "rapidotio/orlOtioTimeRange.h"
#include "support/Diagnostics.h"
#include "support/Json.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using namespace ORL_0_81::rapidotio;
using namespace orlTest;

template <class T>
std::string said(bool (*get)(rapidjson::Value const&, Parsing::Name, T&), std::string const& text) {
    rapidjson::Document const document = parsed(text);
    T result = T();
    return diagnosticsOf([&] { get(document, "a", result); });
}

template <class T>
std::string saidOfA(bool (*get)(rapidjson::Value const&, Parsing::Name, T&), std::string const& value) {
    return said(get, R"({"a":)" + value + "}");
}

TEST(OtioParsingDiagnostics, AMemberThatIsThereAndFitsIsFound) {
    EXPECT_EQ(saidOfA(Parsing::getString, "\"x\""), "Found a\n");
    EXPECT_EQ(saidOfA(Parsing::getInt, "1"), "Found a\n");
    EXPECT_EQ(saidOfA(Parsing::getUInt, "1"), "Found a\n");
    EXPECT_EQ(saidOfA(Parsing::getDouble, "1.0"), "Found a\n");
    EXPECT_EQ(saidOfA(Parsing::getFloat, "1.0"), "Found a\n");
    EXPECT_EQ(saidOfA(Parsing::getBool, "true"), "Found a\n");
    EXPECT_EQ(saidOfA(Parsing::getObject, "{}"), "Found a\n");
    EXPECT_EQ(saidOfA(Parsing::getArray, "[]"), "Found a\n");
}

TEST(OtioParsingDiagnostics, AMemberThatIsNotThereCannotBeFound) {
    for (char const* const text : {"{}", R"({"b":1})", "[]", "null", "1", "\"a\""}) {
        EXPECT_EQ(said(Parsing::getString, text), "Cannot find 'a'\n") << text;
        EXPECT_EQ(said(Parsing::getInt, text), "Cannot find 'a'\n") << text;
        EXPECT_EQ(said(Parsing::getUInt, text), "Cannot find 'a'\n") << text;
        EXPECT_EQ(said(Parsing::getDouble, text), "Cannot find 'a'\n") << text;
        EXPECT_EQ(said(Parsing::getFloat, text), "Cannot find 'a'\n") << text;
        EXPECT_EQ(said(Parsing::getBool, text), "Cannot find 'a'\n") << text;
        EXPECT_EQ(said(Parsing::getObject, text), "Cannot find 'a'\n") << text;
        EXPECT_EQ(said(Parsing::getArray, text), "Cannot find 'a'\n") << text;
    }
}

struct TypeRow {
    char const* value;
    char const* word;
};

TypeRow const kTypes[] = {{"null", "Null"}, {"false", "False"},  {"true", "True"}, {"{}", "Object"},
                          {"[]", "Array"},  {"\"x\"", "String"}, {"7", "Number"}};

/// Expects the message for each type but those that the lookup takes.
template <class T>
void expectRefusals(bool (*get)(rapidjson::Value const&, Parsing::Name, T&), std::string const& asked,
                    std::string const& taken) {
    for (TypeRow const& row : kTypes) {
        if (taken.find(row.word) == std::string::npos) {
            EXPECT_EQ(saidOfA(get, row.value), "Expected 'a' to be " + asked + ", found " + row.word + "\n");
        }
    }
}

TEST(OtioParsingDiagnostics, AWrongTypeIsCalledByItsWord) {
    expectRefusals(Parsing::getString, "String", "String");
    expectRefusals(Parsing::getInt, "Int", "Number");
    expectRefusals(Parsing::getUInt, "Uint", "Number");
    expectRefusals(Parsing::getDouble, "Double", "");
    expectRefusals(Parsing::getFloat, "Float", "");
    expectRefusals(Parsing::getObject, "Object", "Object");
    expectRefusals(Parsing::getArray, "Array", "Array");
}

TEST(OtioParsingDiagnostics, TheWordForABoolIsInLowerCase) {
    expectRefusals(Parsing::getBool, "bool", "TrueFalse");
    EXPECT_EQ(saidOfA(Parsing::getBool, "1"), "Expected 'a' to be bool, found Number\n");
}

TEST(OtioParsingDiagnostics, ANullIsAWrongTypeAndNotAMissingMember) {
    EXPECT_EQ(saidOfA(Parsing::getString, "null"), "Expected 'a' to be String, found Null\n");
}

TEST(OtioParsingDiagnostics, ANumberThatDoesNotFitIsFoundAsANumber) {
    EXPECT_EQ(saidOfA(Parsing::getInt, "2147483648"), "Expected 'a' to be Int, found Number\n");
    EXPECT_EQ(saidOfA(Parsing::getInt, "1.0"), "Expected 'a' to be Int, found Number\n");
    EXPECT_EQ(saidOfA(Parsing::getUInt, "-1"), "Expected 'a' to be Uint, found Number\n");
    EXPECT_EQ(saidOfA(Parsing::getUInt, "4294967296"), "Expected 'a' to be Uint, found Number\n");
    EXPECT_EQ(saidOfA(Parsing::getDouble, "24"), "Expected 'a' to be Double, found Number\n");
    EXPECT_EQ(saidOfA(Parsing::getFloat, "1e39"), "Expected 'a' to be Float, found Number\n");
    EXPECT_EQ(saidOfA(Parsing::getFloat, "-1e39"), "Expected 'a' to be Float, found Number\n");
}

TEST(OtioParsingDiagnostics, ANumberThatIsNotFiniteIsRefusedLikeAWrongType) {
    EXPECT_EQ(saidOfA(Parsing::getDouble, "10.0e308"), "Expected 'a' to be Double, found Number\n");
    EXPECT_EQ(saidOfA(Parsing::getFloat, "10.0e308"), "Expected 'a' to be Float, found Number\n");
}

TEST(OtioParsingDiagnostics, OfDuplicateNamesTheFirstDecides) {
    EXPECT_EQ(said(Parsing::getInt, R"({"a":"x","a":1})"), "Expected 'a' to be Int, found String\n");
}

TEST(OtioParsingDiagnostics, ANameIsNoFormat) {
    rapidjson::Document const document = parsed("{}");
    int result = 0;
    EXPECT_EQ(diagnosticsOf([&] { Parsing::getInt(document, "%s%n", result); }), "Cannot find '%s%n'\n");
}

// Times

std::string saidByTime(std::string const& text) {
    rapidjson::Document const document = parsed(text);
    Time time;
    return diagnosticsOf([&] { time.setTime(document); });
}

TEST(OtioTimeDiagnostics, TheRateIsReadBeforeTheValue) {
    EXPECT_EQ(saidByTime(R"({"OTIO_SCHEMA":"RationalTime.1","value":1.0,"rate":24.0})"),
              lines({"Found rate", "Found value"}));
}

TEST(OtioTimeDiagnostics, TheFailedAttemptsAtIntegersShow) {
    EXPECT_EQ(saidByTime(R"({"OTIO_SCHEMA":"RationalTime.1","value":1,"rate":24})"),
              lines({"Expected 'rate' to be Double, found Number", "Found rate",
                     "Expected 'value' to be Double, found Number", "Found value"}));
}

TEST(OtioTimeDiagnostics, ARateIsTriedThreeTimesAndAValueTwice) {
    EXPECT_EQ(saidByTime(R"({"OTIO_SCHEMA":"RationalTime.1","value":"1","rate":"24"})"),
              lines({"Expected 'rate' to be Double, found String", "Expected 'rate' to be Int, found String",
                     "Found rate", "Expected 'value' to be Double, found String",
                     "Expected 'value' to be Int, found String"}));
    EXPECT_EQ(saidByTime(R"({"OTIO_SCHEMA":"RationalTime.1","value":null,"rate":null})"),
              lines({"Expected 'rate' to be Double, found Null", "Expected 'rate' to be Int, found Null",
                     "Expected 'rate' to be String, found Null", "Expected 'value' to be Double, found Null",
                     "Expected 'value' to be Int, found Null"}));
    EXPECT_EQ(saidByTime(R"({"OTIO_SCHEMA":"RationalTime.1"})"),
              notFound({"rate", "rate", "rate", "value", "value"}));
}

TEST(OtioTimeDiagnostics, AnIntegerBeyond32BitsIsRefusedTwice) {
    EXPECT_EQ(saidByTime(R"({"OTIO_SCHEMA":"RationalTime.1","rate":24.0,"value":2147483648})"),
              lines({"Found rate", "Expected 'value' to be Double, found Number",
                     "Expected 'value' to be Int, found Number"}));
}

TEST(OtioTimeDiagnostics, AnyOtherSchemaIsPassedOverInSilence) {
    for (char const* const text : {R"({"OTIO_SCHEMA":"RationalTime.2","rate":24})", R"({"rate":24})",
                                   R"({"OTIO_SCHEMA":1,"rate":24})", "{}", "[]", "null"}) {
        EXPECT_EQ(saidByTime(text), "") << text;
    }
}

TEST(OtioTimeDiagnostics, WritingSaysNothing) {
    EXPECT_EQ(diagnosticsOf([] {
                  writtenToObject(Time());
                  writtenToObject(TimeRange());
              }),
              "");
}

TEST(OtioTimeDiagnostics, ARangeIsThreeLookups) {
    rapidjson::Document const document = parsed(R"({"r":{"duration":7,"start_time":{}},"s":[]})");
    TimeRange range;
    EXPECT_EQ(diagnosticsOf([&] { Parsing::getTimeRange(document, "r", range); }),
              lines({"Found r", "Found start_time", "Expected 'duration' to be Object, found Number"}));
    EXPECT_EQ(diagnosticsOf([&] { Parsing::getTimeRange(document, "s", range); }),
              lines({"Expected 's' to be Object, found Array"}));
    EXPECT_EQ(diagnosticsOf([&] { Parsing::getTimeRange(document, "t", range); }), notFound({"t"}));
}

} // namespace
