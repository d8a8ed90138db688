// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include <orlTokenResolver.h>

#include "orlTokenTesting.h"
#include "support/Seed.h"

#include <gtest/gtest.h>

#include <map>
#include <random>
#include <string>
#include <vector>

// Random texts and tokens over an alphabet of few characters, so that nearly everything touches a delimiter,
// compared with the plainest way to do the same: one that changes the text in place and searches it anew.

namespace {

using namespace ORL_0_81;

using ResolverPtr = SharedPtr<TokenResolver>;
using Values = std::map<std::string, std::string>;

std::string plainlyResolved(std::string text, char open, char close, Values const& values) {
    std::size_t position = text.find(open);
    while (position != std::string::npos) {
        std::size_t const end = text.find(close, position);
        std::string const token = end == std::string::npos ? "" : text.substr(position, end + 1 - position);
        auto const known = values.find(token);
        if (!token.empty() && known != values.end()) {
            text.replace(position, token.size(), known->second);
            position = text.find(open, position + known->second.size());
        } else {
            position = text.find(open, position + 1);
        }
    }
    return text;
}

std::string libraryResolved(TokenResolver const& resolver, std::string const& text) {
    String output;
    resolver.resolve(String(text.data(), text.size()), output);
    return std::string(output.data(), output.size());
}

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

// One resolver, its copies and its producers under random changes, beside what each must know.
struct Modelled {
    ResolverPtr resolver;
    std::vector<std::size_t> producers;
    bool isFilled = false;
    bool isHeard = false; // by each of its producers, while the table is filled
    Values table;
};

TEST(TokenResolverStateModel, TableAndLinksChangeAsTheModelSays) {
    Random random(printedSeed());
    constexpr std::size_t PRODUCERS = 4;
    for (int round = 0; round < 100 && !HasFailure(); ++round) {
        std::vector<ProducerPtr> producers;
        for (std::size_t i = 0; i < PRODUCERS; ++i) {
            producers.push_back(fixedProducer({}));
        }
        int next = 0;
        auto const changeTokens = [&](std::size_t index) {
            producers[index]->m_tokens.clear();
            for (std::size_t count = random.upTo(2); count > 0; --count) {
                producers[index]->m_tokens.push_back(
                    fixedToken("{" + std::string(1, static_cast<char>('a' + random.upTo(2))) + "}",
                               std::to_string(++next)));
            }
        };
        std::vector<Modelled> all(1);
        all[0].resolver = TokenResolver::create('{', '}');
        for (int step = 0; step < 100 && !HasFailure(); ++step) {
            std::size_t const which = random.upTo(all.size() - 1);
            std::size_t const index = random.upTo(PRODUCERS - 1);
            switch (random.upTo(7)) {
            case 0: {
                all[which].resolver->add(producers[index]);
                all[which].producers.push_back(index);
                all[which].isFilled = false;
                break;
            }
            case 1: {
                Modelled& one = all[which];
                one.resolver->remove(producers[index]);
                auto place = one.producers.begin();
                while (place != one.producers.end() && *place != index) {
                    ++place;
                }
                if (place != one.producers.end()) {
                    one.producers.erase(place);
                    one.isFilled = false;
                }
                break;
            }
            case 2: // a change that nobody tells of
                changeTokens(index);
                break;
            case 3:
                changeTokens(index);
                producers[index]->notify(TokenProducer::ChangeHint());
                for (Modelled& one : all) {
                    for (std::size_t const own : one.producers) {
                        one.isFilled = one.isFilled && !(own == index && one.isHeard);
                    }
                }
                break;
            case 4: {
                if (all.size() < 5) {
                    Modelled copy = all[which];
                    copy.resolver = all[which].resolver->clone();
                    copy.isHeard = false;
                    all.push_back(copy);
                }
                break;
            }
            case 5: {
                std::size_t const source = random.upTo(all.size() - 1);
                if (source != which) {
                    ResolverPtr const target = all[which].resolver;
                    *target = *all[source].resolver;
                    all[which] = all[source];
                    all[which].resolver = target;
                    all[which].isHeard = false;
                }
                break;
            }
            case 6:
                if (all.size() > 1) {
                    all.erase(all.begin() + static_cast<std::ptrdiff_t>(which));
                }
                break;
            default:
                break;
            }
            Modelled& asked = all[random.upTo(all.size() - 1)];
            if (!asked.isFilled) {
                asked.table.clear();
                for (std::size_t const own : asked.producers) {
                    for (TokenPtr const& token : producers[own]->m_tokens) {
                        asked.table[token->getName()] = static_cast<FixedToken const&>(*token).m_value;
                    }
                }
                asked.isFilled = !asked.table.empty();
                asked.isHeard = true;
            }
            std::string const text = "{a}{b}{c}";
            EXPECT_EQ(libraryResolved(*asked.resolver, text), plainlyResolved(text, '{', '}', asked.table))
                << "step " << step;
        }
    }
}

} // namespace
