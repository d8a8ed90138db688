// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include <orlToken.h>
#include <orlTokenProducer.h>

#include <gtest/gtest.h>

#include <type_traits>

namespace {

using namespace ORL_0_81;

class Word : public Token {
public:
    Word(char const* name, char const* displayName) : Token(name, displayName) {}

    Status getValue(String& value) override {
        value = getName();
        return Status::kSuccess;
    }
};

TEST(TokenContract, AnAssignmentToItselfLeavesTheTextsWhereTheyAre) {
    // Too long to be kept in place, so that a copy of them stands elsewhere.
    char const* const givenName = "{A NAME THAT TAKES AN ALLOCATION OF ITS OWN, WHEREVER IT IS COPIED}";
    char const* const givenDisplayName = "a text that takes an allocation of its own, wherever it is copied";
    Word token(givenName, givenDisplayName);
    char const* const name = token.getName();
    char const* const displayName = token.getDisplayName();
    Token const& same = token;
    static_cast<Token&>(token) = same;
    EXPECT_EQ(token.getName(), name);
    EXPECT_EQ(token.getDisplayName(), displayName);
    EXPECT_STREQ(name, givenName);
    EXPECT_STREQ(displayName, givenDisplayName);
}

TEST(TokenContract, OperationsGiveWhatTheirCallersWereCompiledWith) {
    EXPECT_TRUE((std::is_same_v<decltype(&Token::getName), char const* (Token::*)() const>));
    EXPECT_TRUE((std::is_same_v<decltype(&Token::getDisplayName), char const* (Token::*)() const>));
    EXPECT_TRUE((std::is_same_v<decltype(&Token::getValue), Status (Token::*)(String&)>));
    using Tokens = List<SharedPtr<Token>>;
    EXPECT_TRUE((std::is_same_v<decltype(&TokenProducer::getTokens), Status (TokenProducer::*)(Tokens&)>));
    EXPECT_TRUE((std::is_constructible_v<Word, char const*, char const*>));
    EXPECT_FALSE(std::is_default_constructible_v<Word>);
    EXPECT_TRUE(std::is_abstract_v<Token> && std::is_abstract_v<TokenProducer>);
    EXPECT_TRUE(std::is_default_constructible_v<TokenProducer::ChangeHint>);
    EXPECT_EQ(sizeof(TokenProducer::ChangeHint), sizeof(NotificationHint)) << "no fields";
    EXPECT_EQ(sizeof(TokenProducer), sizeof(Subject) + sizeof(RefCountedST)) << "no fields";
}

} // namespace
