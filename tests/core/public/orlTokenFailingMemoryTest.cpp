// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "core/public/orlTokenTesting.h"
#include "support/orlFailingMemory.h"

#include <orlTokenResolver.h>

#include <gtest/gtest.h>

#include <string>

// Tokens, and the table of a resolver, when there is no memory for them.

namespace {

using namespace ORL_0_81;
using orlTest::failEachAllocation;
using orlTest::FailingMemory;

std::string const LONG_VALUE = "a value that takes an allocation wherever it stands";

std::string bytes(String const& text) { return std::string(text.data(), text.size()); }

ProducerPtr shots() {
    return fixedProducer({fixedToken("{SHOW}", "show"), fixedToken("{SHOT}", LONG_VALUE),
                          fixedToken("{A TOKEN WITH A NAME OF ITS OWN ALLOCATION}", "x")});
}

ProducerPtr others() { return fixedProducer({fixedToken("{OTHER}", "other"), TokenPtr()}); }

String const TEMPLATE = "/{SHOW}/{SHOT}/{OTHER}/{NONE}/{SHOT}";
std::string const RESOLVED = "/show/" + LONG_VALUE + "/other/{NONE}/" + LONG_VALUE;

std::string resolved(TokenResolver const& resolver) {
    String output;
    EXPECT_TRUE(resolver.resolve(TEMPLATE, output));
    return bytes(output);
}

TEST(TokenFailingMemory, ATokenIsCopiedWholeOrNotAtAll) {
    failEachAllocation([](FailingMemory& memory) {
        FixedToken target("{THE NAME OF A TOKEN THAT IS ASSIGNED TO}", "value");
        bool const done = memory.run([&] {
            FixedToken const source("{THE NAME OF A TOKEN THAT IS ASSIGNED}", "value");
            FixedToken const copy(source);
            target.Token::operator=(copy);
        });
        EXPECT_STREQ(target.getName(), done ? "{THE NAME OF A TOKEN THAT IS ASSIGNED}"
                                            : "{THE NAME OF A TOKEN THAT IS ASSIGNED TO}");
        EXPECT_STREQ(target.getDisplayName(), target.getName());
    });
}

TEST(TokenResolverFailingMemory, ResolvingLeavesTheOutputAloneAndCanBeTriedAgain) {
    failEachAllocation([](FailingMemory& memory) {
        SharedPtr<TokenResolver> const resolver = TokenResolver::create('{', '}');
        resolver->add(shots());
        resolver->add(others());
        String output("untouched");
        bool const done = memory.run([&] { EXPECT_TRUE(resolver->resolve(TEMPLATE, output)); });
        EXPECT_EQ(bytes(output), done ? RESOLVED : "untouched");
        EXPECT_EQ(resolved(*resolver), RESOLVED);
    });
}

TEST(TokenResolverFailingMemory, GettingTokensLeavesTheListAlone) {
    for (bool const hasTable : {false, true}) {
        failEachAllocation([hasTable](FailingMemory& memory) {
            SharedPtr<TokenResolver> const resolver = TokenResolver::create('{', '}');
            resolver->add(shots());
            resolver->add(others());
            if (hasTable) {
                resolved(*resolver);
            }
            List<TokenPtr> tokens;
            tokens.append(fixedToken("{MINE}", "mine"));
            bool const done = memory.run([&] { EXPECT_TRUE(resolver->getTokens(tokens)); });
            EXPECT_EQ(tokens.size(), done ? 5U : 1U);
            EXPECT_STREQ(tokens.front()->getName(), "{MINE}");
            EXPECT_EQ(resolved(*resolver), RESOLVED);
        });
    }
}

TEST(TokenResolverFailingMemory, AProducerIsAddedOrNot) {
    failEachAllocation([](FailingMemory& memory) {
        ProducerPtr const known = shots();
        ProducerPtr const added = others();
        SharedPtr<TokenResolver> resolver;
        bool isAdded = false;
        if (!memory.run([&] { resolver = TokenResolver::create('{', '}'); })) {
            EXPECT_FALSE(resolver);
            return;
        }
        resolver->add(known);
        isAdded = memory.run([&] { resolver->add(added); });
        EXPECT_EQ(added->refcount(), isAdded ? 2 : 1);
        EXPECT_EQ(resolved(*resolver).find("{OTHER}") == std::string::npos, isAdded);
        memory.run([&] { resolver->remove(known); });
        EXPECT_EQ(known->refcount(), 1);
    });
}

TEST(TokenResolverFailingMemory, ACopyIsMadeWholeOrNotAtAll) {
    for (bool const hasTable : {false, true}) {
        failEachAllocation([hasTable](FailingMemory& memory) {
            ProducerPtr const producer = shots();
            ProducerPtr const second = others();
            SharedPtr<TokenResolver> copy;
            {
                TokenResolver resolver('{', '}');
                resolver.add(producer);
                resolver.add(second);
                if (hasTable) {
                    resolved(resolver);
                }
                bool const done = memory.run([&] { copy = resolver.clone(); });
                EXPECT_EQ(copy != nullptr, done);
                EXPECT_EQ(resolved(resolver), RESOLVED);
            }
            if (copy) {
                EXPECT_EQ(resolved(*copy), RESOLVED);
            }
            copy.reset();
            producer->notify(TokenProducer::ChangeHint()); // would call what is gone
        });
    }
}

TEST(TokenResolverFailingMemory, AnAssignmentThatFailsLeavesAResolverThatHearsOfChanges) {
    for (bool const hasTable : {false, true}) {
        failEachAllocation([hasTable](FailingMemory& memory) {
            ProducerPtr const producer = shots();
            ProducerPtr const second = others();
            ProducerPtr const old = fixedProducer({fixedToken("{SHOW}", "old")});
            TokenResolver source('{', '}');
            source.add(producer);
            source.add(second);
            TokenResolver target('{', '}');
            target.add(old);
            resolved(target);
            if (hasTable) {
                resolved(source);
            }
            bool const done = memory.run([&] { target = source; });
            if (done) {
                EXPECT_EQ(resolved(target), RESOLVED);
                EXPECT_EQ(old->refcount(), 1);
                return;
            }
            EXPECT_EQ(resolved(target), "/old/{SHOT}/{OTHER}/{NONE}/{SHOT}");
            old->m_tokens = {fixedToken("{SHOW}", "new")};
            old->notify(TokenProducer::ChangeHint());
            EXPECT_EQ(resolved(target), "/new/{SHOT}/{OTHER}/{NONE}/{SHOT}");
        });
    }
}

TEST(TokenResolverFailingMemory, ANotificationEmptiesTheTableWithoutMemory) {
    failEachAllocation([](FailingMemory& memory) {
        ProducerPtr const producer = shots();
        TokenResolver resolver('{', '}');
        resolver.add(producer);
        resolved(resolver);
        producer->m_tokens = {fixedToken("{SHOW}", "new")};
        bool const done = memory.run([&] { producer->notify(TokenProducer::ChangeHint()); });
        EXPECT_EQ(resolved(resolver).substr(0, 6), done ? "/new/{" : "/show/");
    });
}

} // namespace
