// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "core/public/orlTokenTesting.h"
#include "support/TimeLimit.h"

#include <orlInvalidationHint.h>
#include <orlProgressHint.h>
#include <orlTokenResolver.h>

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace {

using namespace ORL_0_81;

using ResolverPtr = SharedPtr<TokenResolver>;
using Texts = std::vector<std::string>;

TokenProducer::ChangeHint const CHANGE;

std::string bytes(String const& text) { return std::string(text.data(), text.size()); }

String toString(std::string const& text) { return String(text.data(), text.size()); }

std::string resolved(TokenResolver const& resolver, std::string const& input,
                     Status expected = Status::kSuccess) {
    String output("what stood there before");
    Status const status = resolver.resolve(toString(input), output);
    EXPECT_EQ(expected.get(), status.get()) << input;
    return bytes(output);
}

Texts namesOf(List<TokenPtr> const& tokens) {
    Texts names;
    auto const end = tokens.end();
    for (auto at = tokens.begin(); at != end; ++at) {
        names.push_back((*at)->getName());
    }
    return names;
}

ProducerPtr producerOf(std::vector<std::pair<std::string, std::string>> const& values) {
    std::vector<TokenPtr> tokens;
    for (auto const& value : values) {
        tokens.push_back(fixedToken(value.first, value.second));
    }
    return fixedProducer(std::move(tokens));
}

ResolverPtr resolverOf(std::vector<ProducerPtr> const& producers) {
    ResolverPtr resolver = TokenResolver::create('{', '}');
    for (ProducerPtr const& producer : producers) {
        EXPECT_EQ(Status::kSuccess, resolver->add(producer).get());
    }
    return resolver;
}

// How a text is cut into token texts

struct Scan {
    char const* name;
    char open;
    char close;
    std::vector<std::pair<std::string, std::string>> values;
    std::string input;
    std::string output;
};

std::string const NUL(1, '\0');

Scan const SCANS[] = {
    {"a token text ends at the first close character",
     '{',
     '}',
     {{"{a}}", "no"}, {"{a}", "V"}},
     "{a}}",
     "V}"},
    {"the longer text wins, for it begins first", '{', '}', {{"{a{b}", "L"}, {"{b}", "no"}}, "{a{b}", "L"},
    {"an unknown text is searched from its second character on", '{', '}', {{"{a}", "V"}}, "{{{a}", "{{V"},
    {"an unknown text hides nothing behind it", '{', '}', {{"{a}", "V"}}, "{x}{a}{y}{a}", "{x}V{y}V"},
    {"close characters before the first open one are text", '{', '}', {{"{a}", "V"}}, "}}{a}", "}}V"},
    {"an open character without a close one ends the work", '{', '}', {{"{a}", "V"}}, "{a}{a{", "V{a{"},
    {"a close character that only stands in a value closes nothing",
     '{',
     '}',
     {{"{a}", "}"}},
     "{b{a}",
     "{b}"},
    {"a value that closes what stands before it makes no token",
     '{',
     '}',
     {{"{b}", "b}"}, {"{ab}", "no"}},
     "{a{b}",
     "{ab}"},
    {"a value that opens makes no token with what follows",
     '{',
     '}',
     {{"{a}", "{"}, {"{b}", "no"}},
     "{a}b}",
     "{b}"},
    {"an open character right behind a value counts",
     '{',
     '}',
     {{"{a}", "{{"}, {"{b}", "V"}},
     "{a}{b}",
     "{{V"},
    {"an empty value leaves nothing", '{', '}', {{"{a}", ""}}, "x{a}{a}y", "xy"},
    {"an empty value makes no token of its neighbours",
     '{',
     '}',
     {{"{a}", ""}, {"{b}", "no"}},
     "{{a}b}",
     "{b}"},
    {"a text of nothing but delimiters may be a token", '{', '}', {{"{}", "V"}}, "{}{}", "VV"},
    {"a value far longer than its text",
     '{',
     '}',
     {{"{a}", std::string(5000, 'v')}, {"{b}", "V"}},
     "{a}{b}",
     std::string(5000, 'v') + "V"},
    {"a name that goes on behind the close character", '{', '}', {{"{a}b", "no"}}, "{a}b", "{a}b"},
    {"a name without delimiters", '{', '}', {{"a", "no"}}, "a {a}", "a {a}"},
    {"a name with other delimiters", '{', '}', {{"<a>", "no"}}, "<a>{<a>}", "<a>{<a>}"},
    {"an empty name", '{', '}', {{"", "no"}}, "{}", "{}"},
    {"names differ by case", '{', '}', {{"{a}", "V"}}, "{A}{a}", "{A}V"},
    {"blanks are not ignored", '{', '}', {{"{a}", "V"}}, "{ a}{a }{a}", "{ a}{a }V"},
    {"equal delimiters cut out one character", '%', '%', {{"%a%", "no"}}, "%a%", "%a%"},
    {"equal delimiters and a token of one character", '%', '%', {{"%", "P"}, {"%a%", "no"}}, "%a%", "PaP"},
    {"equal delimiters and a value of them", '%', '%', {{"%", "%%"}}, "%%", "%%%%"},
    {"delimiters of the upper half",
     '\xAB',
     '\xBB',
     {{"\xAB"
       "a\xBB",
       "V"}},
     "x\xAB"
     "a\xBB",
     "xV"},
    {"letters as delimiters", 'a', 'b', {{"ab", "V"}}, "aabb", "aVb"},
    {"a NUL in a token text is a character like others",
     '{',
     '}',
     {{"{a", "no"}, {"{a}", "no"}},
     "{a" + NUL + "}",
     "{a" + NUL + "}"},
    {"a NUL before a token does not end the text",
     '{',
     '}',
     {{"{a}", "V"}},
     "x" + NUL + "{a}" + NUL,
     "x" + NUL + "V" + NUL},
    {"a NUL in a value is kept",
     '{',
     '}',
     {{"{a}", "v" + NUL + "w"}, {"{b}", "V"}},
     "{a}{b}",
     "v" + NUL + "wV"},
    {"a NUL that closes", '{', '\0', {{"{a", "no"}}, "{a" + NUL, "{a" + NUL},
    {"a NUL that opens", '\0', '}', {{"a}", "no"}, {"", "no"}}, NUL + "a}", NUL + "a}"},
    {"nothing", '{', '}', {{"{a}", "V"}}, "", ""},
    {"no token known", '{', '}', {}, "{a}", "{a}"},
};

TEST(TokenResolverScanContract, ATextIsReadOnceFromLeftToRight) {
    for (Scan const& scan : SCANS) {
        SCOPED_TRACE(scan.name);
        ResolverPtr const resolver = TokenResolver::create(scan.open, scan.close);
        EXPECT_TRUE(resolver->add(producerOf(scan.values)));
        EXPECT_EQ(scan.output, resolved(*resolver, scan.input));
        EXPECT_EQ(scan.output, resolved(*resolver, scan.input)) << "with a table that stands";
    }
}

TEST(TokenResolverScanContract, InputAndOutputMayBeOneString) {
    ResolverPtr const resolver = resolverOf({producerOf({{"{a}", "1"}})});
    String text("x{a}y{a}");
    EXPECT_TRUE(resolver->resolve(text, text));
    EXPECT_EQ("x1y1", bytes(text));
}

TEST(TokenResolverScanContract, TheInputIsUnchangedThoughTheOutputSharedItsText) {
    ResolverPtr const resolver = resolverOf({producerOf({{"{a}", "1"}})});
    String const input("x{a}");
    String output(input);
    String const third(input);
    EXPECT_TRUE(resolver->resolve(input, output));
    EXPECT_EQ("x1", bytes(output));
    EXPECT_EQ("x{a}", bytes(input));
    EXPECT_EQ("x{a}", bytes(third));
}

TEST(TokenResolverScanContract, EachOccurrenceAsksForTheValueOnceAndWithAnEmptyString) {
    TokenPtr const token = fixedToken("{a}", "1");
    ResolverPtr const resolver = resolverOf({fixedProducer({token})});
    auto& fixed = static_cast<FixedToken&>(*token);
    EXPECT_EQ("1-1-1", resolved(*resolver, "{a}-{a}-{a}"));
    EXPECT_EQ(3, fixed.m_calls);
    EXPECT_TRUE(fixed.m_wasEmpty);
    EXPECT_EQ("{b}", resolved(*resolver, "{b}"));
    EXPECT_EQ(3, fixed.m_calls);
}

TEST(TokenResolverScanContract, AHundredThousandUnclosedOrUnknownTextsTakeNoQuadraticTime) {
    TimeLimit const limit("long texts of delimiters");
    ResolverPtr const resolver = resolverOf({producerOf({{"{a}", "1"}, {"{bbbbbbbbbbbbbbb}", "2"}})});
    std::string const opens(400000, '{');
    EXPECT_EQ(opens, resolved(*resolver, opens));
    EXPECT_EQ(opens + "}", resolved(*resolver, opens + "}"));
    EXPECT_EQ(opens + "1", resolved(*resolver, opens + "{a}"));
}

// Which failure is told

TokenPtr const NO_TOKEN;

struct Offer {
    Status status;
    std::vector<std::pair<char const*, Status>> tokens; // each with its value's status; null is a null entry
};

struct Failing {
    char const* name;
    std::vector<Offer> offers;
    Status first;  // of the call that makes the table
    Status second; // of the next
    std::string output;
};

Status const OK;
Status const MINUS(static_cast<Status::Type>(-7));
Status const TIMEOUT(Status::kTimeOut);
Status const FAILURE(Status::kFailure);
Status const DUPLICATE(Status::kDuplicateTokenAdded);

// The input is "{a}{b}{c}"; a token's value is the number of the offer that it stands in.
Failing const FAILING[] = {
    {"nothing fails", {{OK, {{"{a}", OK}, {"{b}", OK}}}}, OK, OK, "00{c}"},
    {"a producer fails, its tokens count", {{FAILURE, {{"{a}", OK}}}}, FAILURE, OK, "0{b}{c}"},
    {"a failing producer doesn't stop the next",
     {{FAILURE, {}}, {OK, {{"{b}", OK}}}},
     FAILURE,
     OK,
     "{a}1{c}"},
    {"the first of two failing producers is told",
     {{TIMEOUT, {{"{a}", OK}}}, {FAILURE, {}}},
     TIMEOUT,
     OK,
     "0{b}{c}"},
    {"a negative status is a success", {{MINUS, {{"{a}", MINUS}}}}, OK, OK, "0{b}{c}"},
    {"a negative status does not hide a later failure",
     {{MINUS, {{"{a}", MINUS}, {"{b}", TIMEOUT}}}},
     TIMEOUT,
     TIMEOUT,
     "00{c}"},
    {"one name twice in one list", {{OK, {{"{a}", TIMEOUT}, {"{a}", OK}}}}, DUPLICATE, OK, "0{b}{c}"},
    {"one name from two producers", {{OK, {{"{a}", OK}}}, {OK, {{"{a}", OK}}}}, DUPLICATE, OK, "1{b}{c}"},
    {"a collision before a failing producer",
     {{OK, {{"{a}", OK}, {"{a}", OK}}}, {TIMEOUT, {}}},
     DUPLICATE,
     OK,
     "0{b}{c}"},
    {"a failing producer before its own collision",
     {{TIMEOUT, {{"{a}", OK}, {"{a}", OK}}}},
     TIMEOUT,
     OK,
     "0{b}{c}"},
    {"a collision of two empty names", {{OK, {{"", OK}, {"", OK}}}}, DUPLICATE, OK, "{a}{b}{c}"},
    {"a collision hides failing values once",
     {{OK, {{"{a}", TIMEOUT}, {"{b}", OK}, {"{b}", OK}}}},
     DUPLICATE,
     TIMEOUT,
     "00{c}"},
    {"the first failing value is told, the others stand",
     {{OK, {{"{b}", TIMEOUT}, {"{c}", FAILURE}}}},
     TIMEOUT,
     TIMEOUT,
     "{a}00"},
    {"the first in the text, not in the table",
     {{OK, {{"{c}", FAILURE}, {"{a}", TIMEOUT}}}},
     TIMEOUT,
     TIMEOUT,
     "0{b}0"},
    {"null entries are passed over", {{OK, {{nullptr, OK}, {"{a}", OK}, {nullptr, OK}}}}, OK, OK, "0{b}{c}"},
    {"producers without tokens fail each time",
     {{OK, {}}, {FAILURE, {{nullptr, OK}}}},
     FAILURE,
     FAILURE,
     "{a}{b}{c}"},
};

ResolverPtr resolverOf(Failing const& failing) {
    ResolverPtr resolver = TokenResolver::create('{', '}');
    for (std::size_t i = 0; i < failing.offers.size(); ++i) {
        ProducerPtr const producer(new FixedProducer);
        producer->m_status = failing.offers[i].status;
        for (auto const& token : failing.offers[i].tokens) {
            producer->m_tokens.push_back(
                token.first ? fixedToken(token.first, std::to_string(i), token.second) : NO_TOKEN);
        }
        EXPECT_TRUE(resolver->add(producer));
    }
    return resolver;
}

TEST(TokenResolverFailureContract, TheFirstFailureIsToldAndTheOutputIsComplete) {
    for (Failing const& failing : FAILING) {
        SCOPED_TRACE(failing.name);
        ResolverPtr const resolver = resolverOf(failing);
        EXPECT_EQ(failing.output, resolved(*resolver, "{a}{b}{c}", failing.first));
        EXPECT_EQ(failing.output, resolved(*resolver, "{a}{b}{c}", failing.second));
    }
}

TEST(TokenResolverFailureContract, AFailingValueIsUsedAsItStands) {
    ResolverPtr const resolver =
        resolverOf({fixedProducer({fixedToken("{a}", "half", TIMEOUT), fixedToken("{b}", "", FAILURE)})});
    EXPECT_EQ("<half><>", resolved(*resolver, "<{a}><{b}>", TIMEOUT));
    EXPECT_EQ("<>", resolved(*resolver, "<{b}>", FAILURE));
    EXPECT_EQ("<{c}>", resolved(*resolver, "<{c}>")) << "a token that is not in the text fails nobody";
}

TEST(TokenResolverFailureContract, TheTableIsMadeAlsoForATextWithoutTokens) {
    for (std::string const text : {"", "plain", "}", "{"}) {
        ProducerPtr const producer = producerOf({{"{a}", "1"}});
        producer->m_status = TIMEOUT;
        ResolverPtr const resolver = resolverOf({producer});
        EXPECT_EQ(text, resolved(*resolver, text, TIMEOUT));
        EXPECT_EQ(1, producer->m_calls);
        EXPECT_EQ("1", resolved(*resolver, "{a}"));
        EXPECT_EQ(1, producer->m_calls);
    }
}

// When the table is made anew

struct Scene {
    ProducerPtr first = producerOf({{"{a}", "1"}});
    ProducerPtr second = producerOf({{"{b}", "2"}});
    ResolverPtr resolver = resolverOf({first, second});
};

// A hint of its own, which is a change all the same.
class NewShotHint : public TokenProducer::ChangeHint {};

struct Event {
    char const* name;
    std::function<void(Scene&)> happens;
    int calls; // of the first producer by the next two resolve()
};

Event const EVENTS[] = {
    {"nothing", [](Scene&) {}, 0},
    {"a change", [](Scene& s) { s.first->notify(CHANGE); }, 1},
    {"a change of the other", [](Scene& s) { s.second->notify(CHANGE); }, 1},
    {"two changes", [](Scene& s) { s.first->notify(CHANGE), s.second->notify(CHANGE); }, 1},
    {"a derived change", [](Scene& s) { s.first->notify(NewShotHint()); }, 1},
    {"the plain hint", [](Scene& s) { s.first->notify(NotificationHint()); }, 0},
    {"progress", [](Scene& s) { s.first->notify(ProgressHint(0.5)); }, 0},
    {"an invalidation", [](Scene& s) { s.first->notify(InvalidationHint(1, 2)); }, 0},
    {"a null producer added", [](Scene& s) { EXPECT_TRUE(s.resolver->add(nullptr)); }, 1},
    {"a null producer removed", [](Scene& s) { EXPECT_TRUE(s.resolver->remove(nullptr)); }, 0},
    {"a strange producer removed", [](Scene& s) { EXPECT_TRUE(s.resolver->remove(producerOf({}))); }, 0},
    {"an empty producer added", [](Scene& s) { EXPECT_TRUE(s.resolver->add(producerOf({}))); }, 1},
    {"the other removed", [](Scene& s) { EXPECT_TRUE(s.resolver->remove(s.second)); }, 1},
    {"the other removed, then it changes",
     [](Scene& s) {
         EXPECT_TRUE(s.resolver->remove(s.second));
         resolved(*s.resolver, "");
         s.first->m_calls = 0;
         s.second->notify(CHANGE);
     },
     0},
    {"itself removed", [](Scene& s) { EXPECT_TRUE(s.resolver->remove(s.first)); }, 0},
    {"assigned to itself", [](Scene& s) { *s.resolver = static_cast<TokenResolver const&>(*s.resolver); }, 0},
    {"assigned to itself, then a change",
     [](Scene& s) {
         *s.resolver = static_cast<TokenResolver const&>(*s.resolver);
         s.first->notify(CHANGE);
     },
     1},
    {"a copy made and changed",
     [](Scene& s) {
         ResolverPtr const copy = s.resolver->clone();
         EXPECT_TRUE(copy->remove(s.second));
         EXPECT_TRUE(copy->add(nullptr));
     },
     0},
    {"a copy destroyed, then a change",
     [](Scene& s) {
         s.resolver->clone();
         s.first->notify(CHANGE);
     },
     1},
    {"a notifying subject that is no producer",
     [](Scene& s) {
         Subject twin(static_cast<Subject const&>(*s.first)); // notifies whom the producer notifies
         twin.notify(CHANGE);
     },
     1},
};

TEST(TokenResolverTableContract, TheTableIsMadeAnewWhenItWasEmptiedAndNeverElse) {
    for (Event const& event : EVENTS) {
        SCOPED_TRACE(event.name);
        Scene scene;
        EXPECT_EQ("12", resolved(*scene.resolver, "{a}{b}"));
        EXPECT_EQ("12", resolved(*scene.resolver, "{a}{b}"));
        EXPECT_EQ(1, scene.first->m_calls);
        scene.first->m_calls = 0;
        event.happens(scene);
        EXPECT_EQ(0, scene.first->m_calls) << "before anybody asked";
        resolved(*scene.resolver, "");
        resolved(*scene.resolver, "");
        EXPECT_EQ(event.calls, scene.first->m_calls);
    }
}

TEST(TokenResolverTableContract, ProducersAreAskedInTheOrderOfAddingEachWithAnEmptyList) {
    Scene scene;
    std::string order;
    scene.first->m_onGetTokens = [&order] { order += '1'; };
    scene.second->m_onGetTokens = [&order] { order += '2'; };
    List<TokenPtr> tokens;
    tokens.append(fixedToken("mine", ""));
    EXPECT_TRUE(scene.resolver->getTokens(tokens));
    EXPECT_EQ("12", order);
    EXPECT_TRUE(scene.first->m_wasEmpty);
    EXPECT_TRUE(scene.second->m_wasEmpty);
    EXPECT_EQ((Texts{"mine", "{a}", "{b}"}), namesOf(tokens));
}

TEST(TokenResolverTableContract, AddingDoesNotAttach) {
    Scene scene;
    Subject before(static_cast<Subject const&>(*scene.first));
    EXPECT_EQ("12", resolved(*scene.resolver, "{a}{b}"));
    before.notify(CHANGE);
    EXPECT_EQ("12", resolved(*scene.resolver, "{a}{b}"));
    EXPECT_EQ(1, scene.first->m_calls);
}

// A producer that notifies while it is asked, is heard only if it was attached before: from its second time
// on. What those before it offered is then forgotten.
TEST(TokenResolverTableContract, AChangeWhileTheTableIsMadeForgetsWhatWasOfferedBefore) {
    Scene scene;
    scene.second->m_onGetTokens = [&scene] { scene.second->notify(CHANGE); };
    EXPECT_EQ("12", resolved(*scene.resolver, "{a}{b}"));
    scene.first->notify(CHANGE);
    EXPECT_EQ("{a}2", resolved(*scene.resolver, "{a}{b}"));
    EXPECT_EQ("{a}2", resolved(*scene.resolver, "{a}{b}"));
    EXPECT_EQ(2, scene.first->m_calls);
}

TEST(TokenResolverTableContract, ATokenForgottenWhileTheTableIsMadeCollidesWithNobody) {
    Scene scene;
    scene.second->m_tokens = {fixedToken("{a}", "2")};
    scene.second->m_onGetTokens = [&scene] { scene.second->notify(CHANGE); };
    EXPECT_EQ("2", resolved(*scene.resolver, "{a}", DUPLICATE));
    scene.first->notify(CHANGE);
    List<TokenPtr> tokens;
    EXPECT_TRUE(scene.resolver->getTokens(tokens));
    EXPECT_EQ((Texts{"{a}", "{a}"}), namesOf(tokens)) << "listed are all that were offered";
    EXPECT_EQ("2", resolved(*scene.resolver, "{a}"));
}

TEST(TokenResolverTableContract, AChangeFromAValueLeavesTheRestOfTheTextUnresolved) {
    TokenPtr token = fixedToken("{a}", "1");
    auto& fixed = static_cast<FixedToken&>(*token);
    ProducerPtr const producer = fixedProducer({token, fixedToken("{b}", "2")});
    ResolverPtr const resolver = resolverOf({producer});
    token.reset();
    fixed.m_onGetValue = [&producer] {
        producer->m_tokens = {fixedToken("{b}", "3")};
        producer->notify(CHANGE); // by now nobody but the resolver at work knows the token
    };
    EXPECT_EQ("21{a}{b}", resolved(*resolver, "{b}{a}{a}{b}"));
    EXPECT_EQ("{a}3", resolved(*resolver, "{a}{b}"));
}

TEST(TokenResolverTableContract, AValueMayAskTheSameResolver) {
    TokenPtr const token = fixedToken("{a}", "1");
    ResolverPtr const resolver = resolverOf({fixedProducer({token, fixedToken("{b}", "2")})});
    Texts inner;
    static_cast<FixedToken&>(*token).m_onGetValue = [&] { inner.push_back(resolved(*resolver, "<{b}>")); };
    EXPECT_EQ("2 1 2", resolved(*resolver, "{b} {a} {b}"));
    EXPECT_EQ((Texts{"<2>"}), inner);
}

TEST(TokenResolverTableContract, WithoutAnyTokenEveryCallAsksAgain) {
    ProducerPtr const producer(new FixedProducer);
    ResolverPtr const resolver = resolverOf({producer});
    List<TokenPtr> tokens;
    resolved(*resolver, "");
    EXPECT_TRUE(resolver->getTokens(tokens));
    resolved(*resolver, "{a}");
    EXPECT_EQ(3, producer->m_calls);
    producer->m_tokens = {fixedToken("{a}", "1")};
    EXPECT_EQ("1", resolved(*resolver, "{a}")) << "no hint is needed";
    EXPECT_EQ(4, producer->m_calls);
}

TEST(TokenResolverTableContract, AProducerThatFailedAndOfferedNothingIsHeardAllTheSame) {
    Scene scene;
    scene.second->m_tokens.clear();
    scene.second->m_status = TIMEOUT;
    EXPECT_EQ("1{b}", resolved(*scene.resolver, "{a}{b}", TIMEOUT));
    scene.second->m_tokens = {fixedToken("{b}", "2")};
    scene.second->m_status = OK;
    EXPECT_EQ("1{b}", resolved(*scene.resolver, "{a}{b}"));
    scene.second->notify(CHANGE);
    EXPECT_EQ("12", resolved(*scene.resolver, "{a}{b}"));
}

TEST(TokenResolverTableContract, TheLastAddedWinsAlsoAfterAReAdding) {
    ProducerPtr const one = producerOf({{"{a}", "1"}});
    ProducerPtr const two = producerOf({{"{a}", "2"}});
    ResolverPtr const resolver = resolverOf({one, two});
    EXPECT_EQ("2", resolved(*resolver, "{a}", DUPLICATE));
    EXPECT_TRUE(resolver->remove(one));
    EXPECT_TRUE(resolver->add(one));
    EXPECT_EQ("1", resolved(*resolver, "{a}", DUPLICATE));
    EXPECT_TRUE(resolver->remove(one));
    EXPECT_EQ("2", resolved(*resolver, "{a}"));
    EXPECT_TRUE(resolver->remove(two));
    EXPECT_EQ("{a}", resolved(*resolver, "{a}"));
}

TEST(TokenResolverTableContract, RemovingTakesTheFirstOfTwoEntries) {
    ProducerPtr const twice = producerOf({{"{a}", "1"}});
    ProducerPtr const between = producerOf({{"{a}", "2"}});
    ResolverPtr const resolver = resolverOf({twice, between, twice});
    EXPECT_EQ("1", resolved(*resolver, "{a}", DUPLICATE));
    EXPECT_EQ(2, twice->m_calls);
    EXPECT_TRUE(resolver->remove(twice));
    EXPECT_EQ("1", resolved(*resolver, "{a}", DUPLICATE)) << "the entry behind the other stays";
    EXPECT_EQ(3, twice->m_calls);
    twice->notify(CHANGE);
    EXPECT_EQ("1", resolved(*resolver, "{a}", DUPLICATE)) << "making the table attached it again";
    EXPECT_EQ(4, twice->m_calls);
}

// Listing

TEST(TokenResolverListContract, TheCallThatMakesTheTableListsDuplicatesAndLaterOnesDoNot) {
    TokenPtr const loser = fixedToken("{a}", "1");
    TokenPtr const winner = fixedToken("{a}", "2");
    ProducerPtr const producer = fixedProducer({loser, NO_TOKEN, winner, fixedToken("{b}", "3")});
    ResolverPtr const resolver = resolverOf({producer, producer});
    List<TokenPtr> tokens;
    EXPECT_EQ(Status::kDuplicateTokenAdded, resolver->getTokens(tokens).get());
    EXPECT_EQ((Texts{"{a}", "{a}", "{b}", "{a}", "{a}", "{b}"}), namesOf(tokens));
    EXPECT_EQ(loser.get(), tokens.front().get());

    tokens.clear();
    EXPECT_EQ(Status::kSuccess, resolver->getTokens(tokens).get());
    ASSERT_EQ(2u, tokens.size());
    EXPECT_TRUE(tokens.front() == winner || tokens.back() == winner);
    EXPECT_EQ(2, producer->m_calls);

    EXPECT_EQ(Status::kSuccess, resolver->getTokens(tokens).get());
    EXPECT_EQ(4u, tokens.size()) << "the list is appended to, not cleared";
}

TEST(TokenResolverListContract, AListAfterAResolveHasNoDuplicatesAndSucceeds) {
    ProducerPtr const producer = producerOf({{"{a}", "1"}, {"{a}", "2"}});
    ResolverPtr const resolver = resolverOf({producer});
    resolved(*resolver, "", DUPLICATE);
    List<TokenPtr> tokens;
    EXPECT_EQ(Status::kSuccess, resolver->getTokens(tokens).get());
    EXPECT_EQ((Texts{"{a}"}), namesOf(tokens));
}

// Clears the list before it fills it, as it may: the list is its own.
class ClearingProducer : public FixedProducer {
public:
    using FixedProducer::FixedProducer;

    Status getTokens(List<TokenPtr>& tokens) override {
        tokens.clear();
        return FixedProducer::getTokens(tokens);
    }
};

TEST(TokenResolverListContract, AProducerHasNoHandOnTheCallersList) {
    ResolverPtr const resolver =
        resolverOf({producerOf({{"{a}", "1"}}), ProducerPtr(new ClearingProducer({fixedToken("{b}", "2")}))});
    List<TokenPtr> tokens;
    tokens.append(nullptr);
    EXPECT_TRUE(resolver->getTokens(tokens));
    ASSERT_EQ(3u, tokens.size());
    EXPECT_EQ(nullptr, tokens.front());
    EXPECT_EQ("12", resolved(*resolver, "{a}{b}"));
}

TEST(TokenResolverListContract, AFailingProducersTokensAreListed) {
    ProducerPtr const producer = producerOf({{"{a}", "1"}});
    producer->m_status = TIMEOUT;
    ResolverPtr const resolver = resolverOf({producer});
    List<TokenPtr> tokens;
    EXPECT_EQ(Status::kTimeOut, resolver->getTokens(tokens).get());
    EXPECT_EQ((Texts{"{a}"}), namesOf(tokens));
    EXPECT_EQ(Status::kSuccess, resolver->getTokens(tokens).get());
    EXPECT_EQ(2u, tokens.size());
}

// Copies

using Copying = std::function<ResolverPtr(TokenResolver const&)>;

struct Copier {
    char const* name;
    Copying copy;
};

Copier const COPIERS[] = {
    {"constructed", [](TokenResolver const& from) { return ResolverPtr(new TokenResolver(from)); }},
    {"cloned", [](TokenResolver const& from) { return from.clone(); }},
    {"assigned to a fresh one",
     [](TokenResolver const& from) {
         ResolverPtr to = TokenResolver::create('<', '>');
         EXPECT_EQ(to.get(), &(*to = from));
         return to;
     }},
    {"assigned to one that is attached elsewhere",
     [](TokenResolver const& from) {
         ResolverPtr to = resolverOf({producerOf({{"{a}", "old"}, {"{old}", "old"}})});
         EXPECT_EQ("old", resolved(*to, "{old}"));
         *to = from;
         EXPECT_EQ("{old}", resolved(*to->clone(), "{old}"));
         return to;
     }},
};

TEST(TokenResolverCopyContract, ACopyWithAFilledTableIsDeafUntilItsOwnAddOrRemove) {
    for (Copier const& copier : COPIERS) {
        for (bool const adds : {false, true}) {
            SCOPED_TRACE(copier.name);
            Scene scene;
            EXPECT_EQ("12", resolved(*scene.resolver, "{a}{b}"));
            ResolverPtr const copy = copier.copy(*scene.resolver);
            scene.first->m_tokens = {fixedToken("{a}", "new")};
            scene.first->notify(CHANGE);
            EXPECT_EQ("12", resolved(*copy, "{a}{b}"));
            EXPECT_EQ(1, scene.first->m_calls) << "the table came with the copy";
            EXPECT_EQ("new2", resolved(*scene.resolver, "{a}{b}")) << "the source hears";
            EXPECT_EQ("12", resolved(*copy->clone(), "{a}{b}"));

            if (adds) {
                EXPECT_TRUE(copy->add(nullptr));
            } else {
                EXPECT_TRUE(copy->remove(scene.second));
            }
            EXPECT_EQ(adds ? "new2" : "new{b}", resolved(*copy, "{a}{b}"));
            scene.first->m_tokens = {fixedToken("{a}", "newer")};
            scene.first->notify(CHANGE);
            EXPECT_EQ(adds ? "newer2" : "newer{b}", resolved(*copy, "{a}{b}")) << "from now on it hears";
            EXPECT_EQ("newer2", resolved(*scene.resolver, "{a}{b}"));
        }
    }
}

TEST(TokenResolverCopyContract, ACopyWithAnEmptyTableAttachesItselfWhenItMakesIt) {
    for (Copier const& copier : COPIERS) {
        SCOPED_TRACE(copier.name);
        Scene scene;
        // An assigned one asked for a clone's table, which is not its own.
        ResolverPtr const copy = copier.copy(*scene.resolver);
        EXPECT_EQ("12", resolved(*copy, "{a}{b}"));
        int const calls = scene.first->m_calls;
        scene.first->m_tokens = {fixedToken("{a}", "new")};
        EXPECT_EQ("12", resolved(*copy, "{a}{b}"));
        scene.first->notify(CHANGE);
        EXPECT_EQ("new2", resolved(*copy, "{a}{b}"));
        EXPECT_EQ(calls + 1, scene.first->m_calls);
        scene.resolver.reset();
        EXPECT_EQ("new2", resolved(*copy, "{a}{b}"));
    }
}

TEST(TokenResolverCopyContract, ADeafCopyMayOutliveItsSourceAndItsProducers) {
    for (Copier const& copier : COPIERS) {
        SCOPED_TRACE(copier.name);
        auto scene = std::make_unique<Scene>();
        EXPECT_EQ("12", resolved(*scene->resolver, "{a}{b}"));
        ResolverPtr copy = copier.copy(*scene->resolver);
        scene.reset();
        EXPECT_EQ("12", resolved(*copy, "{a}{b}"));
        copy.reset(); // releases the producers, to which it has links that they don't know
    }
}

TEST(TokenResolverCopyContract, ADeafCopyMayLetGoOfAProducerThatThenDies) {
    Scene scene;
    EXPECT_EQ("12", resolved(*scene.resolver, "{a}{b}"));
    ResolverPtr copy = scene.resolver->clone();
    EXPECT_TRUE(copy->remove(scene.first));
    EXPECT_TRUE(scene.resolver->remove(scene.first));
    scene.first.reset();
    EXPECT_EQ("{a}2", resolved(*copy, "{a}{b}"));
    copy.reset();
    EXPECT_EQ("{a}2", resolved(*scene.resolver, "{a}{b}"));
}

TEST(TokenResolverCopyContract, AnAssignmentMakesDeafWhoWasAttachedToTheSameProducers) {
    Scene scene;
    EXPECT_EQ("12", resolved(*scene.resolver, "{a}{b}"));
    ResolverPtr const target = resolverOf({scene.first});
    EXPECT_EQ("1{b}", resolved(*target, "{a}{b}"));
    *target = *scene.resolver;
    scene.first->m_tokens.clear();
    scene.first->notify(CHANGE);
    EXPECT_EQ("12", resolved(*target, "{a}{b}"));
    EXPECT_EQ("{a}2", resolved(*scene.resolver, "{a}{b}"));
}

TEST(TokenResolverCopyContract, AnAssignmentReleasesTheOldProducersAndTakesTheDelimiters) {
    ProducerPtr const old = producerOf({{"{a}", "1"}});
    ResolverPtr const target = resolverOf({old});
    EXPECT_EQ("1", resolved(*target, "{a}"));
    EXPECT_EQ(2, old->refcount());
    TokenResolver source('<', '>');
    EXPECT_TRUE(source.add(producerOf({{"<a>", "2"}})));
    *target = source;
    EXPECT_EQ(1, old->refcount());
    EXPECT_EQ("{a}2", resolved(*target, "{a}<a>"));
    EXPECT_EQ(1, target->refcount());
    EXPECT_EQ(0, source.refcount());
}

TEST(TokenResolverCopyContract, CopiesCountFromTheirOwnZero) {
    ResolverPtr const source = TokenResolver::create('{', '}');
    ResolverPtr const second = source;
    EXPECT_EQ(2, source->refcount());
    TokenResolver const copy(*source);
    EXPECT_EQ(0, copy.refcount());
    EXPECT_EQ(1, source->clone()->refcount());
    EXPECT_EQ(2, source->refcount());
}

TEST(TokenResolverCopyContract, TheProducersOfACopyAreItsOwn) {
    Scene scene;
    ResolverPtr const copy = scene.resolver->clone();
    EXPECT_EQ(3, scene.first->refcount());
    EXPECT_TRUE(copy->remove(scene.first));
    EXPECT_TRUE(copy->add(producerOf({{"{c}", "3"}})));
    EXPECT_EQ("{a}23", resolved(*copy, "{a}{b}{c}"));
    EXPECT_EQ("12{c}", resolved(*scene.resolver, "{a}{b}{c}"));
    EXPECT_EQ(2, scene.first->refcount());
}

// Who holds what

struct Holding {
    char const* name;
    std::function<void(Scene&)> happens;
    int token;    // owners of the first producer's token
    int producer; // and of the producer
};

Holding const HOLDINGS[] = {
    {"the producer is added", [](Scene&) {}, 1, 2},
    {"the table is made", [](Scene& s) { resolved(*s.resolver, ""); }, 2, 2},
    {"a change empties it", [](Scene& s) { resolved(*s.resolver, ""), s.first->notify(CHANGE); }, 1, 2},
    {"an add empties it", [](Scene& s) { resolved(*s.resolver, ""), s.resolver->add(nullptr); }, 1, 2},
    {"a removal empties it", [](Scene& s) { resolved(*s.resolver, ""), s.resolver->remove(s.second); }, 1, 2},
    {"its own removal", [](Scene& s) { resolved(*s.resolver, ""), s.resolver->remove(s.first); }, 1, 1},
    {"it is added twice", [](Scene& s) { s.resolver->add(s.first), resolved(*s.resolver, "", DUPLICATE); }, 2,
     3},
    {"it is added twice and removed once",
     [](Scene& s) { s.resolver->add(s.first), s.resolver->remove(s.first); }, 1, 2},
    {"the resolver ends", [](Scene& s) { resolved(*s.resolver, ""), s.resolver.reset(); }, 1, 1},
    {"the producer forgets its token", [](Scene& s) { resolved(*s.resolver, ""), s.first->m_tokens.clear(); },
     1, 2},
};

TEST(TokenResolverHoldingContract, TokensAreHeldByTheTableAndProducersByTheResolver) {
    for (Holding const& holding : HOLDINGS) {
        SCOPED_TRACE(holding.name);
        Scene scene;
        TokenPtr const token = scene.first->m_tokens[0];
        holding.happens(scene);
        EXPECT_EQ(holding.token, token->refcount() - 1) << "but for the test's own";
        EXPECT_EQ(holding.producer, scene.first->refcount());
    }
}

TEST(TokenResolverHoldingContract, AProducerMayNotifyAfterTheResolverEnded) {
    Scene scene;
    resolved(*scene.resolver, "");
    scene.resolver.reset();
    scene.first->notify(CHANGE);
    EXPECT_EQ(1, scene.first->m_calls);
}

} // namespace
