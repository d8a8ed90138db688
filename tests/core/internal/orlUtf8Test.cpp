// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "internal/orlUtf8.h"
#include "support/Seed.h"

#include <gtest/gtest.h>
#include <utf8proc.h>

#include <cstdlib>
#include <memory>
#include <random>
#include <string>
#include <vector>

namespace {

using namespace ORL_0_81;
using namespace std::string_literals;

struct Example {
    char const* why;
    std::string text;
    std::string normalized;
};

void expectAll(std::vector<Example> const& examples) {
    for (Example const& example : examples) {
        EXPECT_EQ(normalizeToNfd(example.text), example.normalized) << example.why;
    }
}

TEST(Utf8, TakesComposedCharactersApart) {
    expectAll({{"e with acute", "caf\xC3\xA9.exr", "cafe\xCC\x81.exr"},
               {"already apart", "cafe\xCC\x81.exr", "cafe\xCC\x81.exr"},
               {"two marks", "\xE1\xBB\x87", "e\xCC\xA3\xCC\x82"},
               {"Angstrom, by way of the letter", "\xE2\x84\xAB.", "A\xCC\x8A."},
               {"a syllable beside ASCII", "\xED\x95\x9C.", "\xE1\x84\x92\xE1\x85\xA1\xE1\x86\xAB."},
               {"beyond the first plane", "\xF0\x9D\x85\x9E", "\xF0\x9D\x85\x97\xF0\x9D\x85\xA5"},
               {"no compatibility", "\xEF\xAC\x81\xC2\xB2", "\xEF\xAC\x81\xC2\xB2"}});
}

TEST(Utf8, OrdersMarksByTheirClasses) {
    // Dot above, dot below: the one below comes first. Equal classes stay as they are.
    expectAll({{"swapped", "q\xCC\x87\xCC\xA3", "q\xCC\xA3\xCC\x87"},
               {"of one class", "q\xCC\x87\xCC\x81", "q\xCC\x87\xCC\x81"},
               {"not across a letter", "q\xCC\x87x\xCC\xA3", "q\xCC\x87x\xCC\xA3"}});
}

TEST(Utf8, LeavesAsciiAlone) {
    expectAll(
        {{"nothing", "", ""}, {"a name", "shot.1001.exr", "shot.1001.exr"}, {"a NUL", "a\0b"s, "a\0b"s}});
}

TEST(Utf8, LeavesTextsThatAreNoUtf8AsTheyAre) {
    for (std::string const broken : {"\xFF", "\xC3", "\x80", "\xED\xA0\x80", "\xC0\xAF", "\xF4\x90\x80\x80",
                                     "\xE2\x84", "\xF0\x9D\x85"}) {
        std::string const text = "\xC3\xA9" + broken + "\xC3\xA9";
        EXPECT_EQ(normalizeToNfd(text), text);
        EXPECT_EQ(normalizeToNfd(broken), broken);
    }
}

TEST(Utf8, LeavesATextAloneWhoseResultFillsThreeBytesForEachUnit) {
    expectAll({{"a syllable", "\xED\x95\x9C", "\xED\x95\x9C"},
               {"two", "\xED\x95\x9C\xEA\xB8\x80", "\xED\x95\x9C\xEA\xB8\x80"},
               {"of a pair of units four bytes leave room", "\xF0\xAF\xA0\x80\xED\x95\x9C\xF0\x9D\x85\x9E",
                "\xE4\xB8\xBD\xE1\x84\x92\xE1\x85\xA1\xE1\x86\xAB\xF0\x9D\x85\x97\xF0\x9D\x85\xA5"},
               {"a compatibility ideograph fills", "\xF0\xAF\xA0\x80", "\xF0\xAF\xA0\x80"}});
}

TEST(Utf8, SortsALongRowOfMarksInNoTime) {
    std::string text = "q";
    std::string above;
    std::string below;
    for (int i = 0; i < 200000; ++i) {
        text += "\xCC\x87\xCC\xA3";
        above += "\xCC\x87";
        below += "\xCC\xA3";
    }
    EXPECT_TRUE(normalizeToNfd(text) == "q" + below + above);
}

TEST(Utf8, AgreesWithTheUnicodeLibraryOnAnyText) {
    std::mt19937 random(printedSeed());
    for (int round = 0; round < 20000; ++round) {
        std::string text = "x"; // so that no result fills its estimate
        for (unsigned long length = random() % 8 + 1; length > 0; --length) {
            static constexpr utf8proc_int32_t STARTS[] = {0x20,   0xC0,    0x300,   0x340,  0x1E00, 0xAC00,
                                                          0x3099, 0x2F800, 0x1D15E, 0x0F71, 0x0344};
            utf8proc_int32_t const character =
                STARTS[random() % std::size(STARTS)] + static_cast<utf8proc_int32_t>(random() % 64);
            utf8proc_uint8_t bytes[4];
            auto const count = utf8proc_encode_char(character, bytes);
            text.append(reinterpret_cast<char const*>(bytes), static_cast<std::size_t>(count));
        }
        std::unique_ptr<utf8proc_uint8_t, decltype(&std::free)> const expected(
            utf8proc_NFD(reinterpret_cast<utf8proc_uint8_t const*>(text.c_str())), &std::free);
        ASSERT_TRUE(expected);
        ASSERT_EQ(normalizeToNfd(text), reinterpret_cast<char const*>(expected.get())) << text;
    }
}

} // namespace
