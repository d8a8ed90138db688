// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "support/VirtualSlot.h"

#include <orlToken.h>

#include <orlSharedPtr.h>

#include <gtest/gtest.h>

#include <string>
#include <type_traits>

namespace {

using namespace ORL_0_81;

class Shot : public Token {
public:
    using Token::Token;

    Status getValue(String& value) override {
        value = "sh010";
        return m_status;
    }

    Status m_status;
};

TEST(TokenTest, KeepsItsNameAndDisplayName) {
    Shot const token("{SHOT}", "Shot");
    EXPECT_STREQ(token.getName(), "{SHOT}");
    EXPECT_STREQ(token.getDisplayName(), "Shot");
}

TEST(TokenTest, CopiesTheTextsThatItIsGiven) {
    char name[] = "name";
    char displayName[] = "display name";
    Shot const token(name, displayName);
    name[0] = displayName[0] = 'X';
    EXPECT_STREQ(token.getName(), "name");
    EXPECT_STREQ(token.getDisplayName(), "display name");
}

TEST(TokenTest, BothTextsMayBeEmptyOrAnyBytes) {
    Shot const empty("", "");
    EXPECT_STREQ(empty.getName(), "");
    EXPECT_STREQ(empty.getDisplayName(), "");
    Shot const bytes("\xff\x01{}\n", "\x80");
    EXPECT_STREQ(bytes.getName(), "\xff\x01{}\n");
    EXPECT_STREQ(bytes.getDisplayName(), "\x80");
}

TEST(TokenTest, StartsWithoutOwners) {
    auto* const token = new Shot("a", "b");
    EXPECT_EQ(token->refcount(), 0);
    SharedPtr<Token> const first(token);
    SharedPtr<Token> const second(first);
    EXPECT_EQ(token->refcount(), 2);
}

TEST(TokenTest, ACopyHasTheTextsAndNoOwner) {
    SharedPtr<Shot> const source(new Shot("{A}", "first"));
    Shot const copy(*source);
    EXPECT_STREQ(copy.getName(), "{A}");
    EXPECT_STREQ(copy.getDisplayName(), "first");
    EXPECT_EQ(copy.refcount(), 0);
    EXPECT_EQ(source->refcount(), 1);
    EXPECT_NE(copy.getName(), source->getName()) << "texts of its own";
}

TEST(TokenTest, AssignmentCopiesTheTextsAndLeavesTheCountAlone) {
    SharedPtr<Shot> const target(new Shot("{A}", "first"));
    SharedPtr<Shot> const other(target);
    Shot const source("{B}", "a second one that is too long to stand inside of a string object");
    Token& assigned = *target;
    EXPECT_EQ(&(assigned = source), &assigned);
    EXPECT_STREQ(target->getName(), "{B}");
    EXPECT_STREQ(target->getDisplayName(),
                 "a second one that is too long to stand inside of a string object");
    EXPECT_EQ(target->refcount(), 2);
    EXPECT_STREQ(source.getName(), "{B}");
}

TEST(TokenTest, AssignmentToItselfChangesNothing) {
    Shot token("a name that is too long to stand inside of a string object", "b");
    char const* const name = token.getName();
    Token const& self = token;
    static_cast<Token&>(token) = self;
    EXPECT_EQ(token.getName(), name) << "not even the address";
    EXPECT_STREQ(name, "a name that is too long to stand inside of a string object");
}

TEST(TokenTest, TokensWithTheSameNameAreDifferentObjects) {
    SharedPtr<Token> const first(new Shot("{A}", "first"));
    SharedPtr<Token> const second(new Shot("{A}", "second"));
    EXPECT_TRUE(first != second);
    EXPECT_STREQ(first->getDisplayName(), "first");
    EXPECT_STREQ(second->getDisplayName(), "second");
}

TEST(TokenTest, ItsValueIsUpToTheDerivedClass) {
    Shot token("a", "b");
    token.m_status = Status::kTimeOut;
    String value("before");
    Token& base = token;
    EXPECT_EQ(base.getValue(value), Status::kTimeOut);
    EXPECT_STREQ(value.c_str(), "sh010");
}

TEST(TokenTest, HasTheLayoutThatProgramsRelyOn) {
    EXPECT_TRUE(std::is_abstract_v<Token>);
    EXPECT_TRUE((std::is_base_of_v<RefCountedST, Token>));
    EXPECT_EQ(virtualSlot(&Token::incref), 2U);
    EXPECT_EQ(virtualSlot(&Token::decref), 3U);
    EXPECT_EQ(virtualSlot(&Token::refcount), 4U);
    EXPECT_EQ(virtualSlot(&Token::getValue), 5U);
}

} // namespace
