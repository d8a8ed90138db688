// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "internal/orlCandidateIndex.h"
#include "support/Seed.h"
#include "support/orlLongestRun.h"

#include <gtest/gtest.h>

#include <sys/mman.h>

#include <algorithm>
#include <iterator>
#include <random>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace {

using namespace ORL_0_81;
using FrameNotation::Span;

// What the index is to answer, by looking at every name.
struct Plain {
    std::vector<std::string> names;
    std::vector<bool> isClaimed;

    std::vector<std::size_t> matches(std::size_t index, Span const& field) const {
        std::string const before = names[index].substr(0, field.position);
        std::string const after = names[index].substr(field.end());
        std::vector<std::size_t> result;
        for (std::size_t i = 0; i < names.size(); ++i) {
            std::string const& name = names[i];
            if (!isClaimed[i] && name.find('\\') == std::string::npos &&
                name.size() > before.size() + after.size() && name.compare(0, before.size(), before) == 0 &&
                name.compare(name.size() - after.size(), after.size(), after) == 0 &&
                FrameNotation::isFrame(frame(i, index, field))) {
                result.push_back(i);
            }
        }
        return result;
    }

    std::string frame(std::size_t i, std::size_t index, Span const& field) const {
        std::size_t const around = names[index].size() - field.length;
        return names[i].substr(field.position, names[i].size() - around);
    }
};

std::string randomName(std::mt19937& random) {
    static constexpr std::string_view PIECES[] = {"1", "2",         "12",        "-",          "--", "a",
                                                  ".", "123456789", "111111111", "1234567891", "0"};
    std::string name;
    for (unsigned long count = random() % 6; count > 0; --count) {
        name += PIECES[random() % std::size(PIECES)];
    }
    if (random() % 20 == 0) {
        name += '\\';
    }
    return name;
}

// With one number at most, as in most lists.
std::string randomSimpleName(std::mt19937& random) {
    std::string const before(1, static_cast<char>('a' + random() % 2));
    std::string const number = random() % 8 == 0 ? "" : std::to_string(random() % 12);
    return before + number + (random() % 2 == 0 ? "z" : "");
}

// With fewer bits of the keys the most different places fall into one group.
class CandidateIndexWithBits : public testing::TestWithParam<unsigned int> {};

TEST_P(CandidateIndexWithBits, AnswersAsIfItLookedAtEveryName) {
    std::mt19937 random(printedSeed());
    FrameScanner::Key const mask =
        GetParam() == 64 ? ~FrameScanner::Key{0} : (FrameScanner::Key{1} << GetParam()) - 1;
    std::vector<Span> fields;
    for (int round = 0; round < 3000; ++round) {
        Plain plain;
        auto const newName = round % 3 == 0 ? randomSimpleName : randomName;
        for (unsigned long count = random() % 30 + 1; count > 0; --count) {
            bool const isNew = plain.names.empty() || random() % 5 != 0;
            plain.names.push_back(isNew ? newName(random) : plain.names[random() % plain.names.size()]);
        }
        plain.isClaimed.resize(plain.names.size());
        std::vector<std::string_view> const views(plain.names.begin(), plain.names.end());
        CandidateIndex index(views, mask);
        for (CandidateIndex::Index name = 0; name < index.size(); ++name) {
            FrameNotation::findDigitFields(plain.names[name], fields);
            if (index.isClaimed(name) || fields.empty() ||
                plain.names[name].find('\\') != std::string::npos) {
                continue;
            }
            bool hasPartners = false;
            for (std::size_t field = fields.size(); field-- > 0;) {
                std::vector<std::size_t> const matches = plain.matches(name, fields[field]);
                hasPartners = hasPartners || matches.size() > 1;
                ASSERT_EQ(index.count(name, field, fields[field]), matches.size())
                    << testing::PrintToString(plain.names) << " " << name << " " << field;
                std::vector<std::int32_t> frames;
                for (std::size_t const match : matches) {
                    frames.push_back(FrameNotation::frameOf(plain.frame(match, name, fields[field])));
                }
                int const run = orlTest::longestRun(frames);
                for (int const atLeast : {run + 1, run, run - 1}) {
                    ASSERT_EQ(index.hasRun(name, field, atLeast), run >= atLeast)
                        << testing::PrintToString(plain.names) << " " << name << " " << field;
                }
                ASSERT_EQ(index.run(name, field), run)
                    << testing::PrintToString(plain.names) << " " << name << " " << field;
            }
            if (hasPartners) {
                ASSERT_TRUE(index.mayHavePartners(name));
            }
            if (random() % 2 == 0) {
                continue;
            }
            std::size_t const field = random() % fields.size();
            std::size_t narrowest = fields[field].length;
            for (std::size_t const match : plain.matches(name, fields[field])) {
                narrowest = std::min(narrowest, plain.frame(match, name, fields[field]).size());
                plain.isClaimed[match] = true;
            }
            ASSERT_EQ(index.claimAll(name, field, fields[field]), narrowest);
            for (CandidateIndex::Index other = 0; other < index.size(); ++other) {
                ASSERT_EQ(index.isClaimed(other), plain.isClaimed[other])
                    << testing::PrintToString(plain.names) << " " << name << " " << field << " " << other;
            }
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Keys, CandidateIndexWithBits, testing::Values(0U, 1U, 3U, 6U, 64U));

TEST(CandidateIndex, KeepsTheRunsOfALargeGroupUpToDate) {
    std::mt19937 random(printedSeed());
    Plain plain;
    for (int i = 0; i < 2000; ++i) {
        plain.names.push_back("a" + std::to_string(random() % 3000) + "_" + std::to_string(random() % 2));
    }
    plain.isClaimed.resize(plain.names.size());
    std::vector<std::string_view> const views(plain.names.begin(), plain.names.end());
    CandidateIndex index(views);
    std::vector<Span> fields;
    for (CandidateIndex::Index name = 0; name < index.size(); ++name) {
        FrameNotation::findDigitFields(plain.names[name], fields);
        std::vector<std::size_t> const matches = plain.matches(name, fields[0]);
        ASSERT_EQ(index.count(name, 0, fields[0]), matches.size());
        std::vector<std::int32_t> frames;
        for (std::size_t const match : matches) {
            frames.push_back(FrameNotation::frameOf(plain.frame(match, name, fields[0])));
        }
        int const run = orlTest::longestRun(frames);
        ASSERT_FALSE(index.hasRun(name, 0, run + 1));
        if (random() % 3 == 0) {
            ASSERT_TRUE(index.hasRun(name, 0, run));
            ASSERT_EQ(index.run(name, 0), run);
        }
        index.claim(name);
        plain.isClaimed[name] = true;
    }
}

TEST(CandidateIndex, ComparesLongNamesOnceForAllTheirFields) {
    // Two hundred thousand fields, each with a partner; comparing the names anew for each would take hours.
    std::string name;
    for (int i = 0; i < 200000; ++i) {
        name += "1-";
    }
    std::string const other = name;
    std::vector<std::string_view> const views = {name, other};
    CandidateIndex index(views);
    std::vector<Span> fields;
    FrameNotation::findDigitFields(name, fields);
    for (std::size_t field = 0; field < fields.size(); ++field) {
        ASSERT_EQ(index.count(0, field, fields[field]), 2U);
    }
}

TEST(CandidateIndex, TellsLongNamesApartThatOnlyLookAlike) {
    std::string const before(600, 'b');
    std::string const after(600, 'a');
    std::string const otherBefore = "c" + before.substr(1);
    std::string const otherAfter = after.substr(1) + "c";
    std::vector<std::string> const names = {before + "1" + after, otherBefore + "2" + after,
                                            before + "3" + otherAfter, before + "4" + after};
    // Without a bit of the keys all are in one group at first.
    CandidateIndex index({names.begin(), names.end()}, 0);
    Span const field{600, 1};
    EXPECT_EQ(index.count(0, 0, field), 2U);
    EXPECT_EQ(index.count(1, 0, field), 1U);
    EXPECT_EQ(index.count(2, 0, field), 1U);
    EXPECT_EQ(index.count(3, 0, field), 2U);
}

TEST(CandidateIndex, TellsNamesOfOneNumberApartThatOnlyLookAlike) {
    // As above; that no name has more than one place must not make it take them for checked.
    CandidateIndex index({"a1", "a2", "b1", "a3", "b22", "c"}, 0);
    EXPECT_EQ(index.count(0, 0, {1, 1}), 3U);
    EXPECT_EQ(index.count(2, 0, {1, 1}), 2U);
    EXPECT_EQ(index.count(4, 0, {1, 2}), 2U);
    EXPECT_EQ(index.run(0, 0), 2);
}

TEST(CandidateIndex, ClaimsTheLastOfAGroupOfStrangersAlone) {
    // All places have one key, and the front is the only name left when its group would first be compared.
    std::vector<std::string> names = {"a1"};
    for (int i = 0; i < 100; ++i) {
        names.push_back(std::string(static_cast<std::size_t>(i % 5), 'b') + std::to_string(i) + "c" +
                        std::to_string(i));
    }
    CandidateIndex index({names.begin(), names.end()}, 0);
    for (CandidateIndex::Index other = 1; other < index.size(); ++other) {
        index.claim(other);
    }
    EXPECT_EQ(index.count(0, 0, {1, 1}), 1U);
    std::vector<CandidateIndex::Index> claimed;
    EXPECT_EQ(index.claimAll(0, 0, {1, 1}, &claimed), 1U);
    EXPECT_EQ(claimed, std::vector<CandidateIndex::Index>{0});
    EXPECT_TRUE(index.isClaimed(0));
}

TEST(CandidateIndex, TellsTheNarrowestOfThoseThatAreLeft) {
    CandidateIndex index({"a1_1", "a22_1", "a333_1", "a1_2", "b"});
    EXPECT_EQ(index.count(2, 0, {1, 3}), 3U);
    index.claim(0);
    EXPECT_EQ(index.count(2, 0, {1, 3}), 2U);
    EXPECT_EQ(index.claimAll(2, 0, {1, 3}), 2U);
    CandidateIndex whole({"a333_1", "a22_1", "a1_1", "a1_2"});
    EXPECT_EQ(whole.count(0, 0, {1, 3}), 3U);
    EXPECT_EQ(whole.claimAll(0, 0, {1, 3}), 1U);
    EXPECT_EQ(whole.count(3, 1, {3, 1}), 1U);
}

TEST(CandidateIndex, TakesNamesOneByOne) {
    CandidateIndex::Names names;
    EXPECT_TRUE(names.isEmpty());
    std::vector<std::string> const texts = {"a1", "", "a2"};
    for (std::string const& text : texts) {
        names.append(text);
    }
    EXPECT_FALSE(names.isEmpty());
    CandidateIndex index(names);
    EXPECT_EQ(index.size(), 3U);
    EXPECT_EQ(index.name(1), "");
    EXPECT_EQ(index.name(2).data(), texts[2].data());
    EXPECT_EQ(index.count(0, 0, {1, 1}), 2U);
    EXPECT_EQ(CandidateIndex(CandidateIndex::Names()).size(), 0U);
}

TEST(CandidateIndex, ClaimsANameOnceHoweverOftenItIsClaimed) {
    std::vector<std::string_view> const names = {"a1", "a2", "a3"};
    CandidateIndex index(names);
    Span const field{1, 1};
    EXPECT_EQ(index.count(0, 0, field), 3U);
    index.claim(2);
    index.claim(2);
    EXPECT_TRUE(index.isClaimed(2));
    EXPECT_EQ(index.count(0, 0, field), 2U);
}

TEST(CandidateIndex, TellsWhoIsClaimedIfAsked) {
    std::vector<std::string_view> const names = {"a1", "b", "a3", "c1", "a2"};
    CandidateIndex index(names);
    std::vector<CandidateIndex::Index> claimed = {7};
    EXPECT_EQ(index.count(0, 0, {1, 1}), 3U);
    index.claim(2);
    EXPECT_EQ(index.claimAll(0, 0, {1, 1}, &claimed), 1U);
    EXPECT_EQ(claimed, (std::vector<CandidateIndex::Index>{7, 0, 4}));
    EXPECT_EQ(index.claimAll(3, 0, {1, 1}, &claimed), 1U);
    EXPECT_EQ(claimed, (std::vector<CandidateIndex::Index>{7, 0, 4, 3}));
}

TEST(CandidateIndex, RefusesANameOfFourGigabytes) {
    std::size_t const size = std::size_t{1} << 32;
    // Room that nobody has to provide, for nobody looks at it.
    void* const room = mmap(nullptr, size, PROT_READ, MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0);
    if (room == MAP_FAILED) {
        GTEST_SKIP() << "no room for so long a name";
    }
    std::vector<std::string_view> const names = {"a", std::string_view(static_cast<char const*>(room), size)};
    EXPECT_THROW(CandidateIndex index(names), std::length_error);
    munmap(room, size);
}

TEST(CandidateIndex, FindsTheFewPlacesAmongMillionsOfNames) {
    std::vector<std::string_view> names(4300000, "x");
    names[1] = "a1";
    names[4200000] = "a2";
    names.back() = "b1";
    CandidateIndex index(names);
    EXPECT_EQ(index.count(1, 0, {1, 1}), 2U);
    EXPECT_EQ(index.count(static_cast<CandidateIndex::Index>(names.size() - 1), 0, {1, 1}), 1U);
    EXPECT_FALSE(index.mayHavePartners(0));
}

TEST(CandidateIndex, TellsThousandsOfFamiliesApart) {
    std::vector<std::string> names;
    for (int i = 0; i < 3000; ++i) {
        std::string family = "n";
        for (int rest = i; rest > 0; rest /= 26) {
            family += static_cast<char>('a' + rest % 26);
        }
        names.push_back(family + "_1b2c3d4");
        names.push_back(family + "_1b2c3d5");
    }
    CandidateIndex index({names.begin(), names.end()});
    std::vector<Span> fields;
    for (CandidateIndex::Index name = 0; name < index.size(); ++name) {
        FrameNotation::findDigitFields(names[name], fields);
        ASSERT_EQ(fields.size(), 4U);
        for (std::size_t field = 0; field < 4; ++field) {
            ASSERT_EQ(index.count(name, field, fields[field]), field == 3 ? 2U : 1U)
                << names[name] << " " << field;
        }
    }
}

} // namespace
