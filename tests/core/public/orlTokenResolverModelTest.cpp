// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include <orlTokenResolver.h>

#include "support/Seed.h"
#include "support/orlResolverModel.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <random>
#include <string>
#include <vector>

// Random texts and tokens over an alphabet of few characters, so that nearly everything touches a delimiter,
// compared with the plainest way to do the same: one that changes the text in place and searches it anew.

namespace {

using namespace ORL_0_81;
using namespace orlTest;

class Random {
public:
    explicit Random(unsigned int seed) : m_engine(seed) {}

    std::size_t upTo(std::size_t most) {
        return std::uniform_int_distribution<std::size_t>(0, most)(m_engine);
    }

    std::string text(std::string const& alphabet, std::size_t most) {
        std::string result;
        for (std::size_t length = upTo(most); length > 0; --length) {
            result += alphabet[upTo(alphabet.size() - 1)];
        }
        return result;
    }

private:
    std::mt19937 m_engine;
};

struct Delimiters {
    char open;
    char close;
};

class TokenResolverModel : public testing::TestWithParam<Delimiters> {};

TEST_P(TokenResolverModel, ResolvesLikeAPlainReplacementInPlace) {
    auto const [open, close] = GetParam();
    Random random(printedSeed());
    std::string const alphabet{open, close, 'a', 'b'};
    for (int round = 0; round < 500 && !HasFailure(); ++round) {
        ProducerPtr const producer = fixedProducer({});
        Values values;
        for (std::size_t count = random.upTo(8); count > 0; --count) {
            // Mostly names that a text can hold.
            std::string name = random.text(alphabet, 4);
            if (random.upTo(3) != 0) {
                name = open + name + close;
            }
            values[name] = random.text(alphabet, 5);
            producer->m_tokens.push_back(fixedToken(name, values[name]));
        }
        ResolverPtr const resolver = TokenResolver::create(open, close);
        resolver->add(producer);
        for (int i = 0; i < 20; ++i) {
            std::string const text = random.text(alphabet, 40);
            EXPECT_EQ(libraryResolved(*resolver, text), plainlyResolved(text, open, close, values)) << text;
        }
    }
}

TEST_P(TokenResolverModel, ResolvesEveryShortText) {
    auto const [open, close] = GetParam();
    Values const values = {{std::string{open, 'a', close}, "1"},
                           {std::string{open, open, close}, std::string{open}},
                           {std::string{open, close}, ""},
                           {std::string{open}, "x"}};
    ProducerPtr const producer = fixedProducer({});
    for (auto const& [name, value] : values) {
        producer->m_tokens.push_back(fixedToken(name, value));
    }
    ResolverPtr const resolver = TokenResolver::create(open, close);
    resolver->add(producer);
    std::string const alphabet{open, close, 'a'};
    std::vector<std::string> texts = {""};
    for (std::size_t i = 0; texts[i].size() < 8; ++i) {
        for (char const c : alphabet) {
            texts.push_back(texts[i] + c);
        }
    }
    for (std::string const& text : texts) {
        ASSERT_EQ(libraryResolved(*resolver, text), plainlyResolved(text, open, close, values)) << text;
    }
}

INSTANTIATE_TEST_SUITE_P(Delimiters, TokenResolverModel,
                         testing::Values(Delimiters{'{', '}'}, Delimiters{'%', '%'},
                                         Delimiters{'<', '\xff'}));

TEST(TokenResolverStateModel, TableAndLinksChangeAsTheModelSays) {
    Random random(printedSeed());
    for (int round = 0; round < 100; ++round) {
        ResolverPlay play([&](std::size_t count) { return random.upTo(count - 1); });
        for (int step = 0; step < 100; ++step) {
            play.step();
            ASSERT_EQ(play.textOfTheLibrary(), play.textOfTheModel()) << "step " << step;
        }
    }
}

} // namespace
