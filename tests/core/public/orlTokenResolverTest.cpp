// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include <orlTokenResolver.h>

#include "orlTokenTesting.h"
#include "support/TimeLimit.h"

#include <orlProgressHint.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <new>
#include <string>
#include <type_traits>
#include <vector>

namespace {

using namespace ORL_0_81;

using Texts = std::vector<std::string>;
using ResolverPtr = SharedPtr<TokenResolver>;

ResolverPtr resolverOf(std::vector<ProducerPtr> const& producers, char open = '{', char close = '}') {
    ResolverPtr resolver = TokenResolver::create(open, close);
    for (ProducerPtr const& producer : producers) {
        EXPECT_EQ(resolver->add(producer), Status::kSuccess);
    }
    return resolver;
}

String toString(std::string const& text) { return String(text.data(), text.size()); }
std::string toText(String const& string) { return std::string(string.data(), string.size()); }

// The output; the status has to be that one.
std::string resolved(TokenResolver const& resolver, std::string const& input,
                     Status::Type status = Status::kSuccess) {
    String output("what was there");
    EXPECT_STREQ(resolver.resolve(toString(input), output).getStr(), Status(status).getStr()) << input;
    return toText(output);
}

// The names, in the order of the list; the status has to be that one.
Texts tokensOf(TokenResolver const& resolver, Status::Type status = Status::kSuccess) {
    List<TokenPtr> tokens;
    EXPECT_STREQ(resolver.getTokens(tokens).getStr(), Status(status).getStr());
    Texts names;
    for (TokenPtr const& token : tokens) {
        names.emplace_back(token->getName());
    }
    return names;
}

Texts sorted(Texts texts) {
    std::sort(texts.begin(), texts.end());
    return texts;
}

void notifyOfChange(ProducerPtr const& producer) { producer->notify(TokenProducer::ChangeHint()); }

// What resolve() makes of a text

struct Replacement {
    std::string name;
    std::string value;
};

struct ResolveCase {
    char const* what;
    std::vector<Replacement> tokens;
    std::string input;
    std::string output;
};

std::vector<ResolveCase> const& resolveCases() {
    static std::vector<ResolveCase> const all = {
        {"a token twice", {{"{a}", "1"}}, "x{a}y{a}", "x1y1"},
        {"nothing but a token", {{"{a}", "1"}}, "{a}", "1"},
        {"tokens side by side", {{"{a}", "1"}, {"{b}", "2"}}, "{a}{b}{a}", "121"},
        {"an empty text", {{"{a}", "1"}}, "", ""},
        {"no open character", {{"{a}", "1"}}, "a plain text}", "a plain text}"},
        {"an open character that is not closed", {{"{a}", "1"}}, "{a}x{a and {b", "1x{a and {b"},
        {"a close character before the open one", {{"{a}", "1"}}, "}{a}{", "}1{"},
        {"an unknown text", {{"{a}", "1"}}, "{b}{a}{c}", "{b}1{c}"},
        {"a known text that begins within an unknown one", {{"{b}", "V"}}, "{a{b}", "{aV"},
        {"what a replacement makes is no text", {{"{b}", "V"}, {"{aV}", "no"}}, "{a{b}}", "{aV}"},
        {"the longer text, which begins first",
         {{"{a{b}", "long"}, {"{b}", "short"}},
         "{a{b}{b}",
         "longshort"},
        {"a value with a token", {{"{a}", "{b}"}, {"{b}", "no"}}, "{a}{b}", "{b}no"},
        {"a value that is the token", {{"{a}", "{a}"}}, "{a}{a}", "{a}{a}"},
        {"a value with an open character", {{"{a}", "{"}, {"{b}", "2"}, {"{}", "no"}}, "{a}b}{a}}", "{b}{}"},
        {"an empty value", {{"{a}", ""}}, "x{a}y{a}", "xy"},
        {"a text that becomes empty", {{"{a}", ""}}, "{a}{a}", ""},
        {"an empty pair", {{"{}", "none"}}, "{}{", "none{"},
        {"names without delimiters",
         {{"a", "no"}, {"{a", "no"}, {"a}", "no"}, {"", "no"}},
         "{a}a{}",
         "{a}a{}"},
        {"a name with a close character inside", {{"{a}b}", "no"}}, "{a}b}", "{a}b}"},
        {"a name that begins before its open character", {{"x{a}", "no"}}, "x{a}", "x{a}"},
        {"a name of another case", {{"{A}", "no"}}, "{a}", "{a}"},
        {"a name that is a part of the text", {{"{ab}", "no"}}, "{a}{abc}{ab }", "{a}{abc}{ab }"},
        {"open characters in a row", {{"{a}", "1"}}, "{{{a}}}", "{{1}}"},
        {"a name of open characters", {{"{{{}", "1"}}, "{{{{{}", "{{1"},
        {"bytes that are no UTF-8", {{"{\xff\x80}", "\xfe"}}, "\x80{\xff\x80}\xff", "\x80\xfe\xff"},
        {"a NUL in the input",
         {{"{a}", "1"}},
         std::string("x\0{a}\0{a\0}", 10),
         std::string("x\0"
                     "1\0{a\0}",
                     8)},
        {"a NUL in a value", {{"{a}", std::string("\0", 1)}}, "x{a}y", std::string("x\0y", 3)},
        {"a name longer than any text", {{"{" + std::string(300, 'n') + "}", "no"}}, "{n}", "{n}"},
        {"a long name", {{"{" + std::string(300, 'n') + "}", "1"}}, "{{" + std::string(300, 'n') + "}", "{1"},
    };
    return all;
}

TEST(TokenResolverTest, ReplacesWhatIsDelimitedAndKnownInOnePass) {
    for (ResolveCase const& one : resolveCases()) {
        SCOPED_TRACE(one.what);
        ProducerPtr const producer = fixedProducer({});
        for (Replacement const& token : one.tokens) {
            producer->m_tokens.push_back(fixedToken(token.name, token.value));
        }
        ResolverPtr const resolver = resolverOf({producer});
        EXPECT_EQ(resolved(*resolver, one.input), one.output);
        EXPECT_EQ(resolved(*resolver, one.input), one.output) << "with the table that was made";
    }
}

TEST(TokenResolverTest, AnyTwoCharactersCanBeDelimiters) {
    ProducerPtr const producer =
        fixedProducer({fixedToken("<a>", "1"), fixedToken("\xffz\n", "2"), fixedToken("ab", "3")});
    EXPECT_EQ(resolved(*resolverOf({producer}, '<', '>'), "<a>{a}"), "1{a}");
    EXPECT_EQ(resolved(*resolverOf({producer}, '\xff', '\n'), "x\xffz\n"), "x2");
    EXPECT_EQ(resolved(*resolverOf({producer}, 'a', 'b'), "<aab>"), "<a3>");
    EXPECT_EQ(resolved(*resolverOf({producer}, '\0', '\n'), "\xffz\n"), "\xffz\n");
    EXPECT_EQ(resolved(*resolverOf({producer}, 'a', '\0'), std::string("ab\0", 3)), std::string("ab\0", 3))
        << "no name can hold a NUL";
}

TEST(TokenResolverTest, WithEqualDelimitersEachTextIsThatOneCharacter) {
    ProducerPtr const producer = fixedProducer({fixedToken("%a%", "no")});
    EXPECT_EQ(resolved(*resolverOf({producer}, '%', '%'), "%a%%a%"), "%a%%a%");
    producer->m_tokens.push_back(fixedToken("%", "percent"));
    EXPECT_EQ(resolved(*resolverOf({producer}, '%', '%'), "%a%"), "percentapercent");
}

TEST(TokenResolverTest, AMegabyteOfOpenCharactersIsNoTrouble) {
    TimeLimit const limit("a megabyte of open characters");
    std::string const open(1000000, '{');
    ProducerPtr const producer =
        fixedProducer({fixedToken("{{}", "1"), fixedToken("{" + std::string(50, 'x') + "}", "2")});
    ResolverPtr const resolver = resolverOf({producer});
    EXPECT_EQ(resolved(*resolver, open), open);
    EXPECT_EQ(resolved(*resolver, open + "}"), open.substr(2) + "1");
    EXPECT_EQ(resolved(*resolver, open + "}" + open + "}}"), open.substr(2) + "1" + open.substr(2) + "1}");
    EXPECT_EQ(resolved(*resolver, open + std::string(1000000, '}')),
              open.substr(2) + "1" + std::string(999999, '}'));
}

TEST(TokenResolverTest, TheOutputMayBeTheInput) {
    ResolverPtr const resolver = resolverOf({fixedProducer({fixedToken("{a}", "1")})});
    String text("x{a}");
    EXPECT_TRUE(resolver->resolve(text, text).success());
    EXPECT_STREQ(text.asChar(), "x1");
    EXPECT_TRUE(resolver->resolve(text, text).success());
    EXPECT_STREQ(text.asChar(), "x1");
}

TEST(TokenResolverTest, TheInputStaysAsItIs) {
    ResolverPtr const resolver = resolverOf({fixedProducer({fixedToken("{a}", "1")})});
    String const input("x{a}");
    String output;
    resolver->resolve(input, output);
    EXPECT_STREQ(input.asChar(), "x{a}");
}

TEST(TokenResolverTest, WithoutProducersEveryTextStays) {
    ResolverPtr const resolver = TokenResolver::create('{', '}');
    EXPECT_EQ(resolved(*resolver, "x{a}"), "x{a}");
    EXPECT_EQ(tokensOf(*resolver), Texts());
}

// getValue

TEST(TokenResolverTest, ATokensValueIsAskedForEachTimeIntoAnEmptyString) {
    SharedPtr<FixedToken> const token(new FixedToken("{a}", "1"));
    ResolverPtr const resolver = resolverOf({fixedProducer({token})});
    EXPECT_EQ(resolved(*resolver, "{a}{b}{a}"), "1{b}1");
    EXPECT_EQ(token->m_calls, 2);
    EXPECT_TRUE(token->m_wasEmpty);
    token->m_value = "2";
    EXPECT_EQ(resolved(*resolver, "{a}"), "2");
    EXPECT_EQ(resolved(*resolver, "{b}"), "{b}");
    EXPECT_EQ(token->m_calls, 3);
}

TEST(TokenResolverTest, TheValueOfAFailingTokenIsUsedAndTheFirstFailureReturned) {
    ResolverPtr const resolver = resolverOf({fixedProducer({
        fixedToken("{good}", "1"),
        fixedToken("{bad}", "2", Status::kTimeOut),
        fixedToken("{worse}", "", Status::kFileFailure),
        fixedToken("{negative}", "4", Status(static_cast<Status::Type>(-5))),
    })});
    EXPECT_EQ(resolved(*resolver, "{good}{bad}{worse}{good}{bad}", Status::kTimeOut), "1212");
    EXPECT_EQ(resolved(*resolver, "{worse}{bad}", Status::kFileFailure), "2");
    EXPECT_EQ(resolved(*resolver, "{negative}{bad}", Status::kTimeOut), "42") << "below zero is no failure";
    EXPECT_EQ(resolved(*resolver, "{good}{negative}"), "14");
}

// The table

TEST(TokenResolverTest, ProducersAreNotAskedBeforeTheFirstCall) {
    ProducerPtr const producer = fixedProducer({fixedToken("{a}", "1")});
    ResolverPtr const resolver = resolverOf({producer});
    EXPECT_EQ(producer->m_calls, 0);
    resolved(*resolver, "");
    EXPECT_EQ(producer->m_calls, 1) << "though the text holds nothing";
    EXPECT_TRUE(producer->m_wasEmpty);
    resolved(*resolver, "{a}");
    tokensOf(*resolver);
    EXPECT_EQ(producer->m_calls, 1);
}

TEST(TokenResolverTest, ATableWithoutTokensIsMadeAnewByEachCall) {
    ProducerPtr const producer = fixedProducer({nullptr});
    ResolverPtr const resolver = resolverOf({producer});
    resolved(*resolver, "{a}");
    resolved(*resolver, "{a}");
    tokensOf(*resolver);
    EXPECT_EQ(producer->m_calls, 3);
    producer->m_tokens.push_back(fixedToken("{a}", "1"));
    EXPECT_EQ(resolved(*resolver, "{a}"), "1") << "without any hint";
    EXPECT_EQ(producer->m_calls, 4);
}

TEST(TokenResolverTest, NullTokensArePassedOver) {
    ProducerPtr const producer = fixedProducer({nullptr, fixedToken("{a}", "1"), nullptr});
    EXPECT_EQ(resolved(*resolverOf({producer}), "{a}"), "1");
    EXPECT_EQ(tokensOf(*resolverOf({producer})), (Texts{"{a}"}));
}

TEST(TokenResolverTest, OfTwoTokensWithOneNameTheLaterWinsAndTheCollisionIsTold) {
    ProducerPtr const first = fixedProducer({fixedToken("{a}", "1"), fixedToken("{b}", "2")});
    ProducerPtr const second = fixedProducer({fixedToken("{a}", "3")});
    ResolverPtr const resolver = resolverOf({first, second});
    EXPECT_EQ(resolved(*resolver, "{a}{b}", Status::kDuplicateTokenAdded), "32");
    EXPECT_EQ(resolved(*resolver, "{a}{b}"), "32") << "told when the table is made";
    EXPECT_EQ(resolved(*resolverOf({second, first}), "{a}{b}", Status::kDuplicateTokenAdded), "12");
}

TEST(TokenResolverTest, OneProducerMayCollideWithItself) {
    ProducerPtr const producer = fixedProducer({fixedToken("{a}", "1"), fixedToken("{a}", "2")});
    EXPECT_EQ(resolved(*resolverOf({producer}), "{a}", Status::kDuplicateTokenAdded), "2");
    ProducerPtr const twice = fixedProducer({fixedToken("{a}", "1")});
    ResolverPtr const resolver = resolverOf({twice, twice});
    EXPECT_EQ(resolved(*resolver, "{a}", Status::kDuplicateTokenAdded), "1");
    EXPECT_EQ(twice->m_calls, 2);
}

TEST(TokenResolverTest, AFailingProducersTokensAreUsedAndTheFirstFailureReturned) {
    ProducerPtr const good = fixedProducer({fixedToken("{a}", "1")});
    ProducerPtr const bad = fixedProducer({fixedToken("{b}", "2"), fixedToken("{b}", "3")});
    ProducerPtr const worse = fixedProducer({fixedToken("{c}", "4", Status::kIOAccess)});
    bad->m_status = Status::kTimeOut;
    worse->m_status = Status::kFileFailure;
    EXPECT_EQ(resolved(*resolverOf({good, bad, worse}), "{a}{b}{c}", Status::kTimeOut), "134")
        << "before the collision of its own tokens";
    EXPECT_EQ(resolved(*resolverOf({worse, bad}), "{c}", Status::kFileFailure), "4");
    EXPECT_EQ(resolved(*resolverOf({good, good, worse}), "{a}", Status::kDuplicateTokenAdded), "1");
    ResolverPtr const resolver = resolverOf({good, worse});
    EXPECT_EQ(tokensOf(*resolver, Status::kFileFailure), (Texts{"{a}", "{c}"}));
    EXPECT_EQ(resolved(*resolver, "{c}", Status::kIOAccess), "4")
        << "the table is made, its failure forgotten";
}

TEST(TokenResolverTest, AProducersStatusBelowZeroIsNoFailure) {
    ProducerPtr const producer = fixedProducer({fixedToken("{a}", "1"), fixedToken("{a}", "2")});
    producer->m_status = Status(static_cast<Status::Type>(-1));
    EXPECT_EQ(resolved(*resolverOf({producer}), "{a}", Status::kDuplicateTokenAdded), "2");
}

TEST(TokenResolverTest, AChangeHintHasTheProducersAskedAgainOnce) {
    ProducerPtr const producer = fixedProducer({fixedToken("{a}", "1")});
    ProducerPtr const other = fixedProducer({fixedToken("{b}", "2")});
    ResolverPtr const resolver = resolverOf({producer, other});
    resolved(*resolver, "{a}");
    producer->m_tokens = {fixedToken("{c}", "3")};
    EXPECT_EQ(resolved(*resolver, "{a}{c}"), "1{c}") << "nobody told it yet";
    notifyOfChange(producer);
    notifyOfChange(producer);
    EXPECT_EQ(producer->m_calls, 1) << "nothing is made in the notification itself";
    EXPECT_EQ(resolved(*resolver, "{a}{b}{c}"), "{a}23");
    EXPECT_EQ(resolved(*resolver, "{a}{b}{c}"), "{a}23");
    EXPECT_EQ(producer->m_calls, 2);
    EXPECT_EQ(other->m_calls, 2);
}

TEST(TokenResolverTest, OtherHintsCauseNothing) {
    ProducerPtr const producer = fixedProducer({fixedToken("{a}", "1")});
    ResolverPtr const resolver = resolverOf({producer});
    resolved(*resolver, "");
    producer->notify(ProgressHint(0.5));
    producer->notify(NotificationHint());
    resolved(*resolver, "");
    EXPECT_EQ(producer->m_calls, 1);
}

TEST(TokenResolverTest, AHintOfADerivedTypeCounts) {
    class SpecialHint : public TokenProducer::ChangeHint {};
    ProducerPtr const producer = fixedProducer({fixedToken("{a}", "1")});
    ResolverPtr const resolver = resolverOf({producer});
    resolved(*resolver, "");
    producer->notify(SpecialHint());
    resolved(*resolver, "");
    EXPECT_EQ(producer->m_calls, 2);
}

TEST(TokenResolverTest, AProducerWhoseTokensWereAllTakenAwayIsHeardWhenItHasSomeAgain) {
    ProducerPtr const producer = fixedProducer({fixedToken("{a}", "1")});
    ResolverPtr const resolver = resolverOf({producer});
    resolved(*resolver, "");
    notifyOfChange(producer);
    notifyOfChange(producer);
    resolved(*resolver, "");
    notifyOfChange(producer);
    resolved(*resolver, "");
    EXPECT_EQ(producer->m_calls, 3) << "attached only once";
}

// getTokens

TEST(TokenResolverTest, TheFirstListIsInTheOrderOfProducersWithDuplicatesALaterOneHasEachNameOnce) {
    ProducerPtr const first = fixedProducer({fixedToken("{b}", "1"), nullptr, fixedToken("{a}", "2")});
    ProducerPtr const second = fixedProducer({fixedToken("{b}", "3"), fixedToken("{c}", "4")});
    ResolverPtr const resolver = resolverOf({first, second});
    EXPECT_EQ(tokensOf(*resolver, Status::kDuplicateTokenAdded), (Texts{"{b}", "{a}", "{b}", "{c}"}));
    EXPECT_EQ(sorted(tokensOf(*resolver)), (Texts{"{a}", "{b}", "{c}"}));
    List<TokenPtr> tokens;
    resolver->getTokens(tokens);
    for (TokenPtr const& token : tokens) {
        if (std::string(token->getName()) == "{b}") {
            EXPECT_EQ(token, second->m_tokens[0]) << "the later one";
        }
    }
}

TEST(TokenResolverTest, TheCallersListIsAppendedTo) {
    ResolverPtr const resolver = resolverOf({fixedProducer({fixedToken("{a}", "1")})});
    List<TokenPtr> tokens;
    TokenPtr const own = fixedToken("own", "");
    tokens.append(own);
    resolver->getTokens(tokens);
    resolver->getTokens(tokens);
    EXPECT_EQ(tokens.size(), 3U);
    EXPECT_EQ(tokens.front(), own);
}

// add and remove

TEST(TokenResolverTest, AddingAProducerHasAllOfThemAskedAgain) {
    ProducerPtr const old = fixedProducer({fixedToken("{a}", "1")});
    ProducerPtr const added = fixedProducer({fixedToken("{b}", "2")});
    ResolverPtr const resolver = resolverOf({old});
    resolved(*resolver, "");
    EXPECT_EQ(resolver->add(added), Status::kSuccess);
    EXPECT_EQ(old->m_calls, 1);
    EXPECT_EQ(resolved(*resolver, "{a}{b}"), "12");
    EXPECT_EQ(old->m_calls, 2);
    EXPECT_EQ(added->m_calls, 1);
}

TEST(TokenResolverTest, AProducerIsAttachedWhenTheTableIsMadeAndNotWhenItIsAdded) {
    ProducerPtr const producer = fixedProducer({fixedToken("{a}", "1")});
    ResolverPtr const resolver = resolverOf({producer});
    // A copy of a producer notifies whoever was attached to the producer.
    FixedProducer before(*producer);
    resolved(*resolver, "");
    FixedProducer after(*producer);
    before.notify(TokenProducer::ChangeHint());
    resolved(*resolver, "");
    EXPECT_EQ(producer->m_calls, 1);
    after.notify(TokenProducer::ChangeHint());
    resolved(*resolver, "");
    EXPECT_EQ(producer->m_calls, 2);
}

TEST(TokenResolverTest, AProducerThatOffersNothingIsHeardToo) {
    ProducerPtr const silent = fixedProducer({});
    ResolverPtr const resolver = resolverOf({silent, fixedProducer({fixedToken("{a}", "1")})});
    resolved(*resolver, "");
    silent->m_tokens.push_back(fixedToken("{b}", "2"));
    notifyOfChange(silent);
    EXPECT_EQ(resolved(*resolver, "{b}"), "2");
}

TEST(TokenResolverTest, AddingNullSucceedsAndEmptiesTheTable) {
    ProducerPtr const producer = fixedProducer({fixedToken("{a}", "1")});
    ResolverPtr const resolver = resolverOf({producer});
    resolved(*resolver, "");
    EXPECT_EQ(resolver->add(nullptr), Status::kSuccess);
    EXPECT_EQ(resolved(*resolver, "{a}"), "1");
    EXPECT_EQ(producer->m_calls, 2);
}

TEST(TokenResolverTest, TokensOfAProducerThatWasRemovedNoLongerResolve) {
    ProducerPtr const first = fixedProducer({fixedToken("{a}", "1")});
    ProducerPtr const second = fixedProducer({fixedToken("{b}", "2")});
    ResolverPtr const resolver = resolverOf({first, second});
    EXPECT_EQ(resolved(*resolver, "{a}{b}"), "12");
    EXPECT_EQ(resolver->remove(first), Status::kSuccess);
    EXPECT_EQ(first->refcount(), 1);
    EXPECT_EQ(resolved(*resolver, "{a}{b}"), "{a}2");
    EXPECT_EQ(first->m_calls, 1);
    EXPECT_EQ(second->m_calls, 2);
    notifyOfChange(first);
    resolved(*resolver, "");
    EXPECT_EQ(second->m_calls, 2) << "its hints are not heard";
}

TEST(TokenResolverTest, RemovingNullOrAStrangerSucceedsAndChangesNothing) {
    ProducerPtr const producer = fixedProducer({fixedToken("{a}", "1")});
    ResolverPtr const resolver = resolverOf({producer});
    resolved(*resolver, "");
    EXPECT_EQ(resolver->remove(nullptr), Status::kSuccess);
    EXPECT_EQ(resolver->remove(fixedProducer({})), Status::kSuccess);
    EXPECT_EQ(resolved(*resolver, "{a}"), "1");
    EXPECT_EQ(producer->m_calls, 1) << "the table is still there";
}

TEST(TokenResolverTest, OfAProducerThatWasAddedTwiceOneEntryIsRemovedAndTheOtherIsDeafUntilTheTableIsMade) {
    ProducerPtr const twice = fixedProducer({fixedToken("{a}", "1")});
    ResolverPtr const resolver = resolverOf({twice, twice});
    resolved(*resolver, "", Status::kDuplicateTokenAdded);
    resolver->remove(twice);
    EXPECT_EQ(twice->refcount(), 2);
    EXPECT_EQ(resolved(*resolver, "{a}"), "1") << "and no collision";
    EXPECT_EQ(twice->m_calls, 3);
    notifyOfChange(twice);
    resolved(*resolver, "");
    EXPECT_EQ(twice->m_calls, 4) << "heard again";
}

TEST(TokenResolverTest, TheFirstEntryOfAProducerIsTheOneRemoved) {
    ProducerPtr const a = fixedProducer({fixedToken("{x}", "a")});
    ProducerPtr const b = fixedProducer({fixedToken("{x}", "b")});
    ResolverPtr const resolver = resolverOf({a, b, a});
    resolver->remove(a);
    EXPECT_EQ(resolved(*resolver, "{x}", Status::kDuplicateTokenAdded), "a") << "the last of b, a";
}

TEST(TokenResolverTest, TokensInTheTableStayAliveUntilItIsEmptied) {
    ProducerPtr const producer = fixedProducer({fixedToken("{a}", "1")});
    ResolverPtr const resolver = resolverOf({producer});
    resolved(*resolver, "");
    TokenPtr const token = producer->m_tokens[0];
    producer->m_tokens.clear();
    EXPECT_EQ(token->refcount(), 2);
    EXPECT_EQ(resolved(*resolver, "{a}"), "1");
    notifyOfChange(producer);
    EXPECT_EQ(token->refcount(), 1);
}

// Copies

TEST(TokenResolverTest, ACopyOfAFilledResolverIsDeafUntilItsOwnTableIsEmptied) {
    ProducerPtr const producer = fixedProducer({fixedToken("{a}", "1")});
    ResolverPtr const original = resolverOf({producer});
    resolved(*original, "");
    TokenResolver copy(*original);
    ResolverPtr const cloned = original->clone();
    producer->m_tokens = {fixedToken("{a}", "2")};
    notifyOfChange(producer);
    EXPECT_EQ(resolved(*original, "{a}"), "2");
    EXPECT_EQ(resolved(copy, "{a}"), "1");
    EXPECT_EQ(resolved(*cloned, "{a}"), "1");
    EXPECT_EQ(producer->m_calls, 2);

    copy.add(nullptr);
    EXPECT_EQ(resolved(copy, "{a}"), "2");
    producer->m_tokens = {fixedToken("{a}", "3")};
    notifyOfChange(producer);
    EXPECT_EQ(resolved(copy, "{a}"), "3") << "attached now";
    EXPECT_EQ(resolved(*cloned, "{a}"), "1");
    cloned->remove(producer);
    EXPECT_EQ(resolved(*cloned, "{a}"), "{a}");
}

TEST(TokenResolverTest, ACopyOfAnEmptyResolverAttachesItself) {
    ProducerPtr const producer = fixedProducer({fixedToken("{a}", "1")});
    ResolverPtr const original = resolverOf({producer});
    ResolverPtr const copy = original->clone();
    EXPECT_EQ(resolved(*copy, "{a}"), "1");
    EXPECT_EQ(producer->m_calls, 1);
    producer->m_tokens = {fixedToken("{a}", "2")};
    notifyOfChange(producer);
    EXPECT_EQ(resolved(*copy, "{a}"), "2");
    EXPECT_EQ(resolved(*original, "{a}"), "2");
    EXPECT_EQ(producer->m_calls, 3);
}

TEST(TokenResolverTest, CopiesKeepTheirOwnDelimitersProducersAndCounts) {
    ProducerPtr const producer = fixedProducer({fixedToken("<a>", "1"), fixedToken("<b>", "2")});
    ResolverPtr const original = resolverOf({producer}, '<', '>');
    ResolverPtr const copy = original->clone();
    EXPECT_EQ(copy->refcount(), 1);
    EXPECT_EQ(original->refcount(), 1);
    EXPECT_EQ(producer->refcount(), 3);
    copy->remove(producer);
    EXPECT_EQ(resolved(*copy, "<a>"), "<a>");
    EXPECT_EQ(resolved(*original, "<a>"), "1");
    TokenResolver onStack(*original);
    EXPECT_EQ(onStack.refcount(), 0);
}

TEST(TokenResolverTest, AnAssignmentTakesEverythingButTheCount) {
    ProducerPtr const producer = fixedProducer({fixedToken("<a>", "1")});
    ResolverPtr const source = resolverOf({producer}, '<', '>');
    resolved(*source, "");
    ResolverPtr const target = resolverOf({fixedProducer({fixedToken("{a}", "2")})});
    ResolverPtr const share = target;
    EXPECT_EQ(&(*target = *source), target.get());
    EXPECT_EQ(target->refcount(), 2);
    EXPECT_EQ(resolved(*target, "<a>{a}"), "1{a}");
    EXPECT_EQ(producer->m_calls, 1) << "with the table";
    producer->m_tokens = {fixedToken("<a>", "3")};
    notifyOfChange(producer);
    EXPECT_EQ(resolved(*target, "<a>"), "1") << "deaf like any copy";
    EXPECT_EQ(resolved(*source, "<a>"), "3");
}

TEST(TokenResolverTest, AnAssignmentOfAnEmptyResolverForgetsTheTable) {
    ProducerPtr const producer = fixedProducer({fixedToken("{a}", "1")});
    ResolverPtr const target = resolverOf({producer});
    resolved(*target, "");
    *target = *TokenResolver::create('{', '}');
    EXPECT_EQ(resolved(*target, "{a}"), "{a}");
    EXPECT_EQ(producer->refcount(), 1);
}

TEST(TokenResolverTest, SelfAssignmentDoesNothing) {
    ProducerPtr const producer = fixedProducer({fixedToken("{a}", "1")});
    ResolverPtr const resolver = resolverOf({producer});
    resolved(*resolver, "");
    TokenResolver& same = *resolver;
    *resolver = same;
    EXPECT_EQ(resolved(*resolver, "{a}"), "1");
    EXPECT_EQ(producer->m_calls, 1);
    notifyOfChange(producer);
    resolved(*resolver, "");
    EXPECT_EQ(producer->m_calls, 2) << "still attached";
}

// Links. What goes wrong here shows under the address sanitizer.

TEST(TokenResolverTest, AResolverThatHasEndedIsNotNotified) {
    ProducerPtr const producer = fixedProducer({fixedToken("{a}", "1")});
    {
        ResolverPtr const resolver = resolverOf({producer, producer});
        resolved(*resolver, "", Status::kDuplicateTokenAdded);
        ResolverPtr const copy = resolver->clone();
        ResolverPtr const attachedCopy = resolver->clone();
        attachedCopy->add(nullptr);
        resolved(*attachedCopy, "", Status::kDuplicateTokenAdded);
    }
    EXPECT_EQ(producer->refcount(), 1);
    notifyOfChange(producer);
}

TEST(TokenResolverTest, ProducersThatOnlyTheResolverHoldsEndWithIt) {
    ResolverPtr resolver =
        resolverOf({fixedProducer({fixedToken("{a}", "1")}), fixedProducer({fixedToken("{b}", "2")})});
    EXPECT_EQ(resolved(*resolver, "{a}{b}"), "12");
    ResolverPtr copy = resolver->clone();
    resolver.reset();
    EXPECT_EQ(resolved(*copy, "{a}{b}"), "12");
    copy->add(nullptr);
    EXPECT_EQ(resolved(*copy, "{a}{b}"), "12");
    copy.reset();
}

TEST(TokenResolverTest, AnAssignmentOverAnAttachedResolverDetachesItFromItsOldProducers) {
    ProducerPtr const old = fixedProducer({fixedToken("{a}", "1")});
    ProducerPtr const producer = fixedProducer({fixedToken("{b}", "2")});
    {
        ResolverPtr const source = resolverOf({producer});
        ResolverPtr const target = resolverOf({old});
        resolved(*source, "");
        resolved(*target, "");
        *target = *source;
        notifyOfChange(old);
        EXPECT_EQ(resolved(*target, "{b}"), "2");
        EXPECT_EQ(producer->m_calls, 1) << "its table was left alone";
    }
    notifyOfChange(old);
    notifyOfChange(producer);
}

TEST(TokenResolverTest, AnAssignmentMayEndTheOldProducers) {
    ResolverPtr const source = resolverOf({fixedProducer({fixedToken("{b}", "2")})});
    ResolverPtr const target = resolverOf({fixedProducer({fixedToken("{a}", "1")})});
    resolved(*target, "");
    resolved(*source, "");
    *target = *source;
    EXPECT_EQ(resolved(*target, "{a}{b}"), "{a}2");
}

TEST(TokenResolverTest, AnAssignmentBetweenResolversOfOneProducerLeavesTheTargetDeaf) {
    ProducerPtr const producer = fixedProducer({fixedToken("{a}", "1")});
    {
        ResolverPtr const source = resolverOf({producer});
        ResolverPtr const target = resolverOf({producer});
        resolved(*source, "");
        resolved(*target, "");
        *target = *source;
        producer->m_tokens = {fixedToken("{a}", "2")};
        notifyOfChange(producer);
        EXPECT_EQ(resolved(*target, "{a}"), "1");
    }
    notifyOfChange(producer);
}

// Calls from within

TEST(TokenResolverTest, AProducerMayNotifyWhileItIsAsked) {
    ProducerPtr const producer = fixedProducer({fixedToken("{a}", "1")});
    ResolverPtr const resolver = resolverOf({producer});
    producer->m_onGetTokens = [&] { notifyOfChange(producer); };
    EXPECT_EQ(resolved(*resolver, "{a}"), "1");
    EXPECT_EQ(resolved(*resolver, "{a}"), "1");
    EXPECT_EQ(producer->m_calls, 1);
}

TEST(TokenResolverTest, AProducerMayRemoveItselfWhileItIsAsked) {
    ProducerPtr producer = fixedProducer({fixedToken("{a}", "1")});
    ProducerPtr const other = fixedProducer({fixedToken("{b}", "2")});
    {
        ResolverPtr const resolver = resolverOf({producer, other});
        producer->m_onGetTokens = [&] { resolver->remove(producer); };
        String output;
        EXPECT_TRUE(resolver->resolve(String("{a}"), output).success());
        EXPECT_EQ(producer->refcount(), 1);
        resolver->add(nullptr);
        EXPECT_EQ(resolved(*resolver, "{a}{b}"), "{a}2");
        resolver->add(nullptr);
        notifyOfChange(producer);
    }
    producer->m_onGetTokens = nullptr;
    notifyOfChange(producer); // it must not know of the resolver
}

TEST(TokenResolverTest, TheLastProducerMayRemoveItselfWhileItIsAsked) {
    ProducerPtr const first = fixedProducer({fixedToken("{a}", "1")});
    ProducerPtr const last = fixedProducer({fixedToken("{b}", "2")});
    {
        ResolverPtr const resolver = resolverOf({first, last});
        last->m_onGetTokens = [&] { resolver->remove(last); };
        String output;
        EXPECT_TRUE(resolver->resolve(String("{a}"), output).success());
        EXPECT_EQ(last->refcount(), 1);
        resolver->add(nullptr);
        EXPECT_EQ(resolved(*resolver, "{a}{b}"), "1{b}");
    }
    last->m_onGetTokens = nullptr;
    notifyOfChange(last); // it must not know of the resolver
}

TEST(TokenResolverTest, AProducerMayAddAnotherWhileItIsAsked) {
    ProducerPtr const producer = fixedProducer({fixedToken("{a}", "1")});
    ResolverPtr const resolver = resolverOf({producer});
    producer->m_onGetTokens = [&] {
        if (producer->m_calls == 1) {
            for (int i = 0; i < 100; ++i) { // the vector moves
                resolver->add(fixedProducer({fixedToken("{b" + std::to_string(i) + "}", "2")}));
            }
        }
    };
    EXPECT_EQ(resolved(*resolver, "{a}{b0}{b99}"), "122");
}

TEST(TokenResolverTest, ATokenMayHaveTheTableEmptiedWhileItIsAsked) {
    SharedPtr<FixedToken> const token(new FixedToken("{a}", "1"));
    ProducerPtr const producer = fixedProducer({token, fixedToken("{b}", "2")});
    ResolverPtr const resolver = resolverOf({producer});
    token->m_onGetValue = [&] { notifyOfChange(producer); };
    EXPECT_EQ(resolved(*resolver, "{b}{a}{b}"), "21{b}") << "an empty table knows nothing";
    token->m_onGetValue = nullptr;
    EXPECT_EQ(resolved(*resolver, "{a}{b}"), "12");
}

TEST(TokenResolverTest, ATokenMayTakeItselfAwayWhileItIsAsked) {
    ProducerPtr const producer = fixedProducer({});
    ResolverPtr const resolver = resolverOf({producer});
    auto* const token = new FixedToken("{a}", "1");
    producer->m_tokens.emplace_back(token);
    token->m_onGetValue = [&] {
        producer->m_tokens.clear();
        notifyOfChange(producer);
    };
    EXPECT_EQ(resolved(*resolver, "x{a}y{a}"), "x1y{a}");
}

TEST(TokenResolverTest, ATokenMayResolveOtherTextsWithTheSameResolver) {
    SharedPtr<FixedToken> const token(new FixedToken("{a}", "1"));
    ResolverPtr const resolver = resolverOf({fixedProducer({token, fixedToken("{b}", "2")})});
    std::string inner;
    token->m_onGetValue = [&] { inner = resolved(*resolver, "<{b}>"); };
    EXPECT_EQ(resolved(*resolver, "{a}{b}"), "12");
    EXPECT_EQ(inner, "<2>");
}

TEST(TokenResolverTest, AnExceptionOfAProducerPassesThroughAndLeavesNoHalfTable) {
    ProducerPtr const first = fixedProducer({fixedToken("{a}", "1")});
    ProducerPtr const second = fixedProducer({fixedToken("{b}", "2")});
    ResolverPtr const resolver = resolverOf({first, second});
    second->m_onGetTokens = [] { throw std::bad_alloc(); };
    String output("untouched");
    EXPECT_THROW(resolver->resolve(String("{a}{b}"), output), std::bad_alloc);
    EXPECT_STREQ(output.asChar(), "untouched");
    second->m_onGetTokens = nullptr;
    EXPECT_EQ(resolved(*resolver, "{a}{b}"), "12");
}

TEST(TokenResolverTest, HasTheLayoutThatProgramsRelyOn) {
    EXPECT_TRUE((std::is_base_of_v<RefCountedST, TokenResolver>));
    EXPECT_TRUE(std::has_virtual_destructor_v<TokenResolver>);
    EXPECT_EQ(sizeof(TokenResolver), sizeof(RefCountedST) + sizeof(void*));
}

TEST(TokenResolverTest, CreateGivesANewResolverWithOneOwner) {
    ResolverPtr const resolver = TokenResolver::create('[', ']');
    EXPECT_EQ(resolver->refcount(), 1);
    TokenResolver const plain('[', ']');
    EXPECT_EQ(plain.refcount(), 0);
}

} // namespace
