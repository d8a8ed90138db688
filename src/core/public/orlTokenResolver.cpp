// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "orlTokenResolver.h"

#include "internal/orlHidden.h"
#include "orlSubjectObserver.h"

#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

namespace ORL_0_81 {

namespace {

// The tokens by their names.
class TokenTable {
public:
    using Tokens = std::unordered_map<std::string, SharedPtr<Token>>;

    bool empty() const { return m_tokens.empty(); }
    Tokens const& tokens() const { return m_tokens; }

    void swap(TokenTable& other) noexcept {
        m_tokens.swap(other.m_tokens);
        m_lengths.swap(other.m_lengths);
    }

    // Over a token of the same name; false if there was one.
    bool insert(SharedPtr<Token> const& token) {
        std::string name = token->getName();
        if (m_lengths.size() <= name.size()) {
            m_lengths.resize(name.size() + 1);
        }
        m_lengths[name.size()] = true;
        return m_tokens.insert_or_assign(std::move(name), token).second;
    }

    // Null if there is none. A text of a length that no name has is not even looked at: between many open
    // characters and a close character far behind them lie as many texts, which are long.
    SharedPtr<Token> find(std::string_view text) {
        if (text.size() >= m_lengths.size() || !m_lengths[text.size()]) {
            return nullptr;
        }
        m_key.assign(text);
        auto const found = m_tokens.find(m_key);
        return found == m_tokens.end() ? nullptr : found->second;
    }

private:
    Tokens m_tokens;
    std::vector<bool> m_lengths; // whether there is a name that long
    std::string m_key;           // keeps its memory from one search to the next
};

// Finds the token texts from left to right.
class TokenIterator {
public:
    TokenIterator(std::string_view text, char open, char close)
        : m_text(text), m_open(open), m_close(close), m_position(text.find(open)) {}

    // Goes to the next token text. False if there is none.
    bool next() {
        // One close character may end many texts; it is looked for once.
        if (m_position != NONE && (m_end == NONE || m_end <= m_position)) {
            std::size_t const close = m_text.find(m_close, m_position);
            m_end = close == NONE ? NONE : close + 1;
            if (close == NONE) {
                m_position = NONE; // no later text has an end either
            }
        }
        if (m_position == NONE) {
            return false;
        }
        m_start = m_position;
        m_position = m_text.find(m_open, m_start + 1);
        return true;
    }

    // The text that next() has found. It begins at start().
    std::string_view token() const { return m_text.substr(m_start, m_end - m_start); }
    std::size_t start() const { return m_start; }
    std::size_t end() const { return m_end; }

    // Goes on behind this text instead of within it.
    void skip() { m_position = m_text.find(m_open, m_end); }

private:
    static constexpr std::size_t NONE = std::string_view::npos;

    std::string_view m_text;
    char m_open;
    char m_close;
    std::size_t m_position; // of the next open character
    std::size_t m_start = 0;
    std::size_t m_end = NONE; // behind the last close character that was looked for
};

void keepFirstFailure(Status& status, Status const& next) {
    if (status.success() && next.failure()) {
        status = next;
    }
}

} // namespace

// Producers, tokens and their destructors are the application's, and may call back. So nothing that they
// could take away is used after a call of theirs: what is called is held by a share, and places are looked up
// anew.
class ORL_HIDDEN TokenResolver::Imp : public Observer {
public:
    Imp(char open, char close) : m_open(open), m_close(close) {}
    Imp(Imp const& other) = default;
    Imp& operator=(Imp const& other);
    ~Imp() override { detach(); }

    Status add(SharedPtr<TokenProducer> const& producer);
    Status remove(SharedPtr<TokenProducer> const& producer);
    Status resolve(String const& input, String& output);
    Status getTokens(List<SharedPtr<Token>>& tokens);

    void onNotify(Subject* subject, NotificationHint const& hint) override;

private:
    Status generateTokens(List<SharedPtr<Token>>* all);
    void attach(std::size_t index, SharedPtr<TokenProducer> const& producer);
    void detach();
    void clearTable();

    char m_open;
    char m_close;
    TokenTable m_table;
    std::vector<SharedPtr<TokenProducer>> m_producers;
};

TokenResolver::Imp& TokenResolver::Imp::operator=(Imp const& other) {
    if (this == &other) {
        return *this;
    }
    TokenTable table(other.m_table);
    std::vector<SharedPtr<TokenProducer>> producers(other.m_producers);
    // The base forgets the old producers without a word to them; they would go on to call this object, dead
    // or alive. And a producer must be there for as long as the base knows of it: the old ones go last.
    detach();
    try {
        Observer::operator=(other);
    } catch (...) {
        clearTable(); // it would stay as it is for ever, for no producer knows this object any longer
        throw;
    }
    m_open = other.m_open;
    m_close = other.m_close;
    m_table.swap(table);
    m_producers.swap(producers);
    return *this;
}

Status TokenResolver::Imp::add(SharedPtr<TokenProducer> const& producer) {
    if (producer) {
        m_producers.push_back(producer);
    }
    clearTable();
    return Status::kSuccess;
}

Status TokenResolver::Imp::remove(SharedPtr<TokenProducer> const& producer) {
    auto const found = std::find(m_producers.begin(), m_producers.end(), producer);
    if (!producer || found == m_producers.end()) {
        return Status::kSuccess;
    }
    SharedPtr<TokenProducer> const removed = *found; // ends here, if at all
    removed->removeObserver(this);
    m_producers.erase(found);
    clearTable();
    return Status::kSuccess;
}

Status TokenResolver::Imp::resolve(String const& input, String& output) {
    Status status = generateTokens(nullptr);
    // A share: a token may change the caller's string while the text is read.
    String const source(input); // NOLINT(performance-unnecessary-copy-initialization)
    std::string_view const text(source.data(), source.size());
    std::string result;
    std::size_t copied = 0; // how much of the source stands in the result
    TokenIterator texts(text, m_open, m_close);
    while (texts.next()) {
        SharedPtr<Token> const token = m_table.find(texts.token());
        if (!token) {
            continue;
        }
        String value;
        keepFirstFailure(status, token->getValue(value));
        result.append(text, copied, texts.start() - copied);
        result.append(value.data(), value.size());
        copied = texts.end();
        texts.skip();
    }
    if (copied == 0) {
        output = source;
    } else {
        result.append(text, copied, std::string_view::npos);
        output = String(result.data(), result.size());
    }
    return status;
}

Status TokenResolver::Imp::getTokens(List<SharedPtr<Token>>& tokens) {
    unsigned long const before = tokens.size();
    try {
        if (m_table.empty()) {
            return generateTokens(&tokens);
        }
        for (auto const& [name, token] : m_table.tokens()) {
            tokens.append(token);
        }
    } catch (...) {
        while (tokens.size() > before) {
            tokens.pop_back();
        }
        throw;
    }
    return Status::kSuccess;
}

void TokenResolver::Imp::onNotify(Subject*, NotificationHint const& hint) {
    if (dynamic_cast<TokenProducer::ChangeHint const*>(&hint)) {
        clearTable();
    }
}

Status TokenResolver::Imp::generateTokens(List<SharedPtr<Token>>* all) {
    if (!m_table.empty()) {
        return Status::kSuccess;
    }
    Status status;
    try {
        for (std::size_t i = 0; i < m_producers.size(); ++i) {
            SharedPtr<TokenProducer> const producer = m_producers[i];
            List<SharedPtr<Token>> tokens;
            keepFirstFailure(status, producer->getTokens(tokens));
            for (SharedPtr<Token> const& token : tokens) {
                if (!token) {
                    continue;
                }
                if (!m_table.insert(token)) {
                    keepFirstFailure(status, Status::kDuplicateTokenAdded);
                }
                if (all) {
                    all->append(token);
                }
            }
            attach(i, producer);
        }
    } catch (...) {
        clearTable(); // or half a table would pass for a whole one
        throw;
    }
    return status;
}

// Unless the producer has taken itself out meanwhile: it would not be told when this object ends.
void TokenResolver::Imp::attach(std::size_t index, SharedPtr<TokenProducer> const& producer) {
    bool const isInPlace = index < m_producers.size() && m_producers[index] == producer;
    if (isInPlace || std::find(m_producers.begin(), m_producers.end(), producer) != m_producers.end()) {
        producer->addObserver(this);
    }
}

void TokenResolver::Imp::detach() {
    for (SharedPtr<TokenProducer> const& producer : m_producers) {
        producer->removeObserver(this);
    }
}

// The tokens end when the table is empty already, so that their destructors may call back.
void TokenResolver::Imp::clearTable() {
    TokenTable cleared;
    m_table.swap(cleared);
}

// TokenResolver

SharedPtr<TokenResolver> TokenResolver::create(char open, char close) {
    return SharedPtr<TokenResolver>(new TokenResolver(open, close));
}

TokenResolver::TokenResolver(char open, char close) : m_imp(new Imp(open, close)) {}

TokenResolver::TokenResolver(TokenResolver const& other) : RefCountedST(), m_imp(new Imp(*other.m_imp)) {}

TokenResolver::~TokenResolver() { delete m_imp; }

TokenResolver& TokenResolver::operator=(TokenResolver const& other) {
    *m_imp = *other.m_imp;
    return *this;
}

SharedPtr<TokenResolver> TokenResolver::clone() const {
    return SharedPtr<TokenResolver>(new TokenResolver(*this));
}

Status TokenResolver::add(SharedPtr<TokenProducer> const& producer) { return m_imp->add(producer); }

Status TokenResolver::remove(SharedPtr<TokenProducer> const& producer) { return m_imp->remove(producer); }

Status TokenResolver::resolve(String const& input, String& output) const {
    return m_imp->resolve(input, output);
}

Status TokenResolver::getTokens(List<SharedPtr<Token>>& tokens) const { return m_imp->getTokens(tokens); }

} // namespace ORL_0_81
