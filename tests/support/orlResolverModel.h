// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#ifndef ORL_TEST_SUPPORT_ORL_RESOLVER_MODEL_H
#define ORL_TEST_SUPPORT_ORL_RESOLVER_MODEL_H

#include "core/public/orlTokenTesting.h"

#include <orlProgressHint.h>
#include <orlTokenResolver.h>

#include <algorithm>
#include <cstddef>
#include <functional>
#include <map>
#include <string>
#include <utility>
#include <vector>

/// \file
/// What a resolver of tokens does, told in the plainest way.

namespace orlTest {

using ResolverPtr = ORL_0_81::SharedPtr<ORL_0_81::TokenResolver>;
using Values = std::map<std::string, std::string>;

/// Changes the text in place and searches it anew.
inline std::string plainlyResolved(std::string text, char open, char close, Values const& values) {
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

inline std::string libraryResolved(ORL_0_81::TokenResolver const& resolver, std::string const& text) {
    ORL_0_81::String output;
    resolver.resolve(ORL_0_81::String(text.data(), text.size()), output);
    return std::string(output.data(), output.size());
}

/// One resolver, its copies and its producers under changes, beside what each must know.
class ResolverPlay {
public:
    /// \param choose Decides what is done: gives a number below that which it is handed.
    explicit ResolverPlay(std::function<std::size_t(std::size_t)> choose)
        : m_choose(std::move(choose)), m_all(1) {
        for (std::size_t i = 0; i < PRODUCERS; ++i) {
            m_producers.push_back(fixedProducer({}));
        }
        m_all[0].resolver = ORL_0_81::TokenResolver::create('{', '}');
    }

    /// Changes something, and lets one of the resolvers resolve a text or list its tokens.
    void step() {
        std::size_t const which = m_choose(m_all.size());
        std::size_t const index = m_choose(PRODUCERS);
        switch (m_choose(8)) {
        case 0:
            m_all[which].resolver->add(m_producers[index]);
            m_all[which].producers.push_back(index);
            m_all[which].isFilled = false;
            break;
        case 1:
            remove(m_all[which], index);
            break;
        case 2: // a change that nobody tells of
            changeTokens(index);
            break;
        case 3:
            changeTokens(index);
            m_producers[index]->notify(ORL_0_81::TokenProducer::ChangeHint());
            hear(index);
            break;
        case 4:
            if (m_all.size() < 5) {
                Modelled copy = m_all[which];
                copy.resolver = m_all[which].resolver->clone();
                copy.isHeard = false;
                m_all.push_back(copy);
            }
            break;
        case 5: {
            std::size_t const source = m_choose(m_all.size());
            if (source != which) {
                ResolverPtr const target = m_all[which].resolver;
                *target = *m_all[source].resolver;
                m_all[which] = m_all[source];
                m_all[which].resolver = target;
                m_all[which].isHeard = false;
            }
            break;
        }
        case 6:
            if (m_all.size() > 1) {
                m_all.erase(m_all.begin() + static_cast<std::ptrdiff_t>(which));
            }
            break;
        default: // what is no change
            m_producers[index]->notify(ORL_0_81::ProgressHint(0.5));
            break;
        }
        Modelled& asked = m_all[m_choose(m_all.size())];
        if (m_choose(4) == 0) {
            list(asked);
        } else {
            resolve(asked);
        }
    }

    /// What the last step's question gave: the status, and the text or the tokens.
    std::string const& textOfTheLibrary() const { return m_textOfTheLibrary; }
    std::string const& textOfTheModel() const { return m_textOfTheModel; }

private:
    struct ModelledToken {
        std::string value;
        ORL_0_81::Status status;
    };

    struct Modelled {
        ResolverPtr resolver;
        std::vector<std::size_t> producers;
        bool isFilled = false;
        bool isHeard = false; // by each of its producers, while the table is filled
        std::map<std::string, ModelledToken> table;
    };

    static constexpr std::size_t PRODUCERS = 4;

    ORL_0_81::Status chooseStatus() {
        using ORL_0_81::Status;
        Status::Type const failures[] = {Status::kFileNotFound, Status::kIOAccess};
        std::size_t const choice = m_choose(12);
        return choice < 2 ? failures[choice] : Status::kSuccess;
    }

    void changeTokens(std::size_t index) {
        m_producers[index]->m_status = chooseStatus();
        m_producers[index]->m_tokens.clear();
        for (std::size_t count = m_choose(3); count > 0; --count) {
            m_producers[index]->m_tokens.push_back(
                fixedToken("{" + std::string(1, static_cast<char>('a' + m_choose(3))) + "}",
                           std::to_string(++m_values), chooseStatus()));
        }
        if (m_choose(8) == 0) {
            m_producers[index]->m_tokens.push_back(TokenPtr());
        }
    }

    void hear(std::size_t index) {
        for (Modelled& one : m_all) {
            for (std::size_t const own : one.producers) {
                one.isFilled = one.isFilled && !(own == index && one.isHeard);
            }
        }
    }

    void remove(Modelled& one, std::size_t index) {
        one.resolver->remove(m_producers[index]);
        auto place = one.producers.begin();
        while (place != one.producers.end() && *place != index) {
            ++place;
        }
        if (place != one.producers.end()) {
            one.producers.erase(place);
            one.isFilled = false;
        }
    }

    static void keepFirst(ORL_0_81::Status& running, ORL_0_81::Status status) {
        running = running.success() ? status : running;
    }

    // Makes the table where that is due, and gives the tokens that went into it.
    std::vector<FixedToken const*> makeTable(Modelled& asked, ORL_0_81::Status& status) {
        std::vector<FixedToken const*> tokens;
        if (asked.isFilled) {
            return tokens;
        }
        asked.table.clear();
        for (std::size_t const own : asked.producers) {
            keepFirst(status, m_producers[own]->m_status);
            for (TokenPtr const& token : m_producers[own]->m_tokens) {
                if (token) {
                    tokens.push_back(static_cast<FixedToken const*>(token.get()));
                    if (asked.table.count(token->getName()) != 0) {
                        keepFirst(status, ORL_0_81::Status::kDuplicateTokenAdded);
                    }
                    asked.table[token->getName()] = {tokens.back()->m_value, tokens.back()->m_status};
                }
            }
        }
        asked.isFilled = !asked.table.empty();
        asked.isHeard = true;
        return tokens;
    }

    void resolve(Modelled& asked) {
        std::string const text = "{a}{b}{c}";
        ORL_0_81::String output;
        ORL_0_81::Status const resolved = asked.resolver->resolve(text.c_str(), output);
        m_textOfTheLibrary = resolved.getStr() + (" " + std::string(output.asChar()));

        ORL_0_81::Status status;
        makeTable(asked, status);
        Values values;
        for (auto const& [name, token] : asked.table) { // in the order of the text
            values[name] = token.value;
            keepFirst(status, token.status);
        }
        m_textOfTheModel = status.getStr() + (" " + plainlyResolved(text, '{', '}', values));
    }

    void list(Modelled& asked) {
        ORL_0_81::List<TokenPtr> tokens;
        ORL_0_81::Status const listed = asked.resolver->getTokens(tokens);
        std::vector<std::string> names;
        for (TokenPtr const& token : tokens) {
            names.push_back(static_cast<FixedToken const&>(*token).m_value);
        }

        bool const wasFilled = asked.isFilled;
        ORL_0_81::Status status;
        std::vector<std::string> expected;
        for (FixedToken const* const token : makeTable(asked, status)) {
            expected.push_back(token->m_value);
        }
        if (wasFilled) { // in no particular order
            for (auto const& [name, token] : asked.table) {
                expected.push_back(token.value);
            }
            std::sort(names.begin(), names.end());
            std::sort(expected.begin(), expected.end());
        }
        m_textOfTheLibrary = listed.getStr();
        m_textOfTheModel = status.getStr();
        for (std::string const& name : names) {
            m_textOfTheLibrary += " " + name;
        }
        for (std::string const& name : expected) {
            m_textOfTheModel += " " + name;
        }
    }

    std::function<std::size_t(std::size_t)> m_choose;
    std::vector<ProducerPtr> m_producers;
    std::vector<Modelled> m_all;
    int m_values = 0;
    std::string m_textOfTheLibrary;
    std::string m_textOfTheModel;
};

} // namespace orlTest

#endif // ORL_TEST_SUPPORT_ORL_RESOLVER_MODEL_H
