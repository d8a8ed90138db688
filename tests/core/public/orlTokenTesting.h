// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#ifndef ORL_TOKEN_TESTING_H
#define ORL_TOKEN_TESTING_H

#include <orlTokenProducer.h>

#include <functional>
#include <string>
#include <utility>
#include <vector>

/// A token with a fixed value.
class FixedToken : public ORL_0_81::Token {
public:
    FixedToken(std::string const& name, std::string value, ORL_0_81::Status status = ORL_0_81::Status())
        : Token(name.c_str(), name.c_str()), m_value(std::move(value)), m_status(status) {}

    ORL_0_81::Status getValue(ORL_0_81::String& value) override {
        ++m_calls;
        m_wasEmpty = value.empty();
        if (m_onGetValue) {
            m_onGetValue();
        }
        value = ORL_0_81::String(m_value.data(), m_value.size());
        return m_status;
    }

    std::string m_value;
    ORL_0_81::Status m_status;
    int m_calls = 0;
    bool m_wasEmpty = false; // the string that was last to be filled
    std::function<void()> m_onGetValue;
};

using TokenPtr = ORL_0_81::SharedPtr<ORL_0_81::Token>;

inline TokenPtr fixedToken(std::string const& name, std::string const& value,
                           ORL_0_81::Status status = ORL_0_81::Status()) {
    return TokenPtr(new FixedToken(name, value, status));
}

/// A producer of the tokens that a test puts into it.
class FixedProducer : public ORL_0_81::TokenProducer {
public:
    FixedProducer() = default;
    explicit FixedProducer(std::vector<TokenPtr> tokens) : m_tokens(std::move(tokens)) {}

    ORL_0_81::Status getTokens(ORL_0_81::List<TokenPtr>& tokens) override {
        ++m_calls;
        m_wasEmpty = tokens.empty();
        if (m_onGetTokens) {
            m_onGetTokens();
        }
        for (TokenPtr const& token : m_tokens) {
            tokens.append(token);
        }
        return m_status;
    }

    std::vector<TokenPtr> m_tokens;
    ORL_0_81::Status m_status;
    int m_calls = 0;
    bool m_wasEmpty = false; // the list that was last to be filled
    std::function<void()> m_onGetTokens;
};

using ProducerPtr = ORL_0_81::SharedPtr<FixedProducer>;

inline ProducerPtr fixedProducer(std::vector<TokenPtr> tokens) {
    return ProducerPtr(new FixedProducer(std::move(tokens)));
}

#endif // ORL_TOKEN_TESTING_H
