// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "support/VirtualSlot.h"

#include <orlTokenProducer.h>

#include <gtest/gtest.h>

#include <type_traits>

namespace {

using namespace ORL_0_81;

class Word : public Token {
public:
    explicit Word(char const* name) : Token(name, name) {}

    Status getValue(String& value) override {
        value = getName();
        return Status::kSuccess;
    }
};

class Words : public TokenProducer {
public:
    Words() = default;
    explicit Words(bool& ended) : m_ended(&ended) {}
    Words(Words const&) = default;
    Words& operator=(Words const&) = default;
    ~Words() override {
        if (m_ended) {
            *m_ended = true;
        }
    }

    Status getTokens(List<SharedPtr<Token>>& tokens) override {
        tokens.append(SharedPtr<Token>(new Word("{A}")));
        tokens.append(nullptr);
        return m_status;
    }

    Status m_status;
    bool* m_ended = nullptr;
};

class Listener : public Observer {
public:
    void onNotify(Subject* subject, NotificationHint const& hint) override {
        m_subject = subject;
        m_isChange = dynamic_cast<TokenProducer::ChangeHint const*>(&hint) != nullptr;
    }

    Subject* m_subject = nullptr;
    bool m_isChange = false;
};

TEST(TokenProducerTest, TellsItsObserversOfAChangeByTheHintsType) {
    Words producer;
    Listener listener;
    producer.addObserver(&listener);
    producer.notify(NotificationHint());
    EXPECT_EQ(listener.m_subject, &producer);
    EXPECT_FALSE(listener.m_isChange);
    producer.notify(TokenProducer::ChangeHint());
    EXPECT_TRUE(listener.m_isChange);
}

TEST(TokenProducerTest, TellsNobodyByItself) {
    Words producer;
    Listener listener;
    producer.addObserver(&listener);
    List<SharedPtr<Token>> tokens;
    producer.getTokens(tokens);
    EXPECT_EQ(listener.m_subject, nullptr);
}

TEST(TokenProducerTest, OffersItsTokensThroughTheBase) {
    SharedPtr<TokenProducer> const producer(new Words);
    List<SharedPtr<Token>> tokens;
    tokens.append(SharedPtr<Token>(new Word("{B}")));
    EXPECT_TRUE(producer->getTokens(tokens).success());
    ASSERT_EQ(tokens.size(), 3U);
    EXPECT_STREQ(tokens.front()->getName(), "{B}") << "appended behind what was there";
    EXPECT_FALSE(tokens.back());
}

TEST(TokenProducerTest, IsCountedAndEndsWithItsLastOwner) {
    bool ended = false;
    {
        SharedPtr<TokenProducer> first(new Words(ended));
        SharedPtr<TokenProducer> const second(first);
        EXPECT_EQ(second->refcount(), 2);
        first.reset();
        EXPECT_FALSE(ended);
    }
    EXPECT_TRUE(ended);
}

TEST(TokenProducerTest, IsDeletedThroughTheCountedBaseToo) {
    bool ended = false;
    Listener listener;
    auto* const words = new Words(ended);
    words->addObserver(&listener);
    {
        SharedPtr<RefCountedBase> const base(words);
        EXPECT_NE(static_cast<void*>(base.get()), static_cast<void*>(words)) << "the second base";
    }
    EXPECT_TRUE(ended);
    // The listener ends now, and would reach for the producer if it still knew of it.
}

TEST(TokenProducerTest, ACopyHasTheSameObserversAndNoOwner) {
    Listener listener;
    SharedPtr<Words> const source(new Words);
    source->addObserver(&listener);
    Words copy(*source);
    EXPECT_EQ(copy.refcount(), 0);
    copy.notify(TokenProducer::ChangeHint());
    EXPECT_EQ(listener.m_subject, &copy);
}

TEST(TokenProducerTest, HasTheLayoutThatProgramsRelyOn) {
    EXPECT_TRUE(std::is_abstract_v<TokenProducer>);
    EXPECT_EQ(virtualSlot(&TokenProducer::getTokens), 2U);
    EXPECT_EQ(sizeof(TokenProducer::ChangeHint), sizeof(NotificationHint));
    Words words;
    EXPECT_EQ(static_cast<void*>(static_cast<Subject*>(&words)), static_cast<void*>(&words))
        << "the first base";
    EXPECT_EQ(static_cast<void*>(static_cast<RefCountedST*>(&words)),
              static_cast<void*>(reinterpret_cast<char*>(&words) + sizeof(Subject)));
}

} // namespace
