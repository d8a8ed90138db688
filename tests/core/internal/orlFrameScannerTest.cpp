// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "internal/orlFrameScanner.h"

#include "support/Seed.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <iterator>
#include <map>
#include <random>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace {

using namespace ORL_0_81;
using testing::ElementsAreArray;

using Places = std::vector<FrameScanner::Place>;
using Texts = std::vector<std::string>;

Texts textsOf(std::string const& name, Places const& places) {
    Texts texts;
    for (FrameScanner::Place const& place : places) {
        texts.push_back(name.substr(0, place.span.position) + "<" +
                        name.substr(place.span.position, place.span.length) + ">" +
                        name.substr(place.span.end()));
    }
    return texts;
}

Places plainPlaces(std::string const& name) {
    Places places;
    FrameScanner scanner;
    EXPECT_TRUE(scanner.findPlainPlaces(name, places));
    return places;
}

Places hiddenPlaces(std::string const& name) {
    Places places;
    FrameScanner().findHiddenPlaces(name, places);
    return places;
}

TEST(FrameScanner, FindsHiddenPlacesBesideTheDigitFields) {
    struct Example {
        std::string name;
        Texts plain;
        Texts hidden;
    };
    for (Example const& example : std::vector<Example>{
             {"", {}, {}},
             {"a1", {"a<1>"}, {}},
             {"a-1", {"a<-1>"}, {"a-<1>"}},
             {"a12", {"a<12>"}, {"a<1>2"}},
             {"1-2", {"<1>-2", "1-<2>"}, {}},
             {"123456789-2",
              {"<123456789>-2", "123456789-<2>"},
              {"<1>23456789-2", "<12>3456789-2", "<123>456789-2", "<1234>56789-2", "<12345>6789-2",
               "<123456>789-2", "<1234567>89-2", "<12345678>9-2", "123456789<-2>"}},
             {"12345678912",
              {"<123456789>12", "123456789<12>"},
              {"<1>2345678912", "<12>345678912", "<123>45678912", "<1234>5678912", "<12345>678912",
               "<123456>78912", "<1234567>8912", "<12345678>912", "123456789<1>2"}}}) {
        EXPECT_THAT(textsOf(example.name, plainPlaces(example.name)), ElementsAreArray(example.plain));
        EXPECT_THAT(textsOf(example.name, hiddenPlaces(example.name)), ElementsAreArray(example.hidden));
    }
}

TEST(FrameScanner, KnowsTheFieldsThatOthersFitInHiddenPlaces) {
    struct Example {
        std::string name;
        std::vector<bool> isPeculiar;
    };
    for (Example const& example : std::vector<Example>{{"a1b-2.3", {false, false, false}},
                                                       {"1-2", {false, false}},
                                                       {"a--1", {true}},
                                                       {"--1", {true}},
                                                       {"1--2", {false, true}},
                                                       {"123456789", {false}},
                                                       {"1234567890.1", {true, true, false}}}) {
        std::vector<bool> isPeculiar;
        for (FrameScanner::Place const& place : plainPlaces(example.name)) {
            isPeculiar.push_back(place.isPeculiar);
        }
        EXPECT_EQ(isPeculiar, example.isPeculiar) << example.name;
    }
}

TEST(FrameScanner, RefusesNamesWithABackslash) {
    Places places;
    FrameScanner scanner;
    EXPECT_FALSE(scanner.findPlainPlaces("a\\1", places));
    EXPECT_FALSE(scanner.findPlainPlaces("1\\", places));
    EXPECT_TRUE(scanner.findPlainPlaces("a/1", places));
}

TEST(FrameScanner, HasOneKeyForTheSameSurroundingsAndAnotherForOthers) {
    static constexpr std::string_view PIECES[] = {
        "1", "2", "-", "a", "bc", "123456789", "1111111111", ".", "longer than eight"};
    std::mt19937 random(printedSeed());
    std::map<std::pair<std::string, std::string>, FrameScanner::Key> keys;
    std::map<FrameScanner::Key, std::pair<std::string, std::string>> surroundings;
    FrameScanner scanner;
    Places places;
    for (int round = 0; round < 20000; ++round) {
        std::string name;
        for (unsigned long count = random() % 7; count > 0; --count) {
            name += PIECES[random() % std::size(PIECES)];
        }
        Places all;
        scanner.findPlainPlaces(name, all);
        scanner.findHiddenPlaces(name, places);
        all.insert(all.end(), places.begin(), places.end());
        for (FrameScanner::Place const& place : all) {
            std::pair const around(name.substr(0, place.span.position), name.substr(place.span.end()));
            std::string const frame = name.substr(place.span.position, place.span.length);
            ASSERT_TRUE(FrameNotation::isFrame(frame)) << name;
            ASSERT_EQ(place.frame, FrameNotation::frameOf(frame)) << name;
            ASSERT_EQ(keys.try_emplace(around, place.key).first->second, place.key) << name;
            ASSERT_EQ(surroundings.try_emplace(place.key, around).first->second, around) << name;
        }
    }
}

} // namespace
