// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include <orlMediaMetadataReader.h>

#include "support/TimeLimit.h"
#include "support/VirtualSlot.h"
#include "support/orlFakeReader.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <chrono>
#include <cstddef>
#include <memory>
#include <set>
#include <stdexcept>
#include <string>
#include <system_error>
#include <thread>
#include <type_traits>
#include <vector>

namespace {

using namespace ORL_0_81;
using namespace orlTest;
using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::UnorderedElementsAre;

Bounds const BOUNDS(0.5, -0.25, 4.0, 2.0);
Time const TIME(1001, Rational(24000, 1001));
Time const UNDEFINED(Time::getUndefinedNbTicks(), Rational(24, 1));

std::string textOf(String const& text) {
    return text.empty() ? std::string() : std::string(text.data(), text.size());
}

std::vector<std::string> textsOf(Vector<String> const& texts) {
    std::vector<std::string> result;
    for (unsigned long i = 0; i < texts.size(); ++i) {
        result.push_back(textOf(texts[i]));
    }
    return result;
}

Vector<String> stringsOf(std::vector<std::string> const& texts) {
    Vector<String> result;
    for (std::string const& text : texts) {
        result.push_back(String(text.data(), text.size()));
    }
    return result;
}

/// "p0", "p1" and so on.
std::vector<std::string> numberedPaths(std::size_t count) {
    std::vector<std::string> result;
    for (std::size_t i = 0; i < count; ++i) {
        result.push_back("p" + std::to_string(i));
    }
    return result;
}

class MediaMetadataRead : public WithReader {};
class MediaMetadataReadMany : public WithReader {};

TEST(MediaMetadataReader, AddsItsOneOperationBehindThoseOfAService) {
    EXPECT_EQ(virtualSlot(&MediaMetadataReader::readMediaMetadata), 5U);
    EXPECT_TRUE((std::is_base_of_v<Service, MediaMetadataReader>));
    EXPECT_TRUE((std::is_base_of_v<RefCountedMT, MediaMetadataReader>));
}

TEST(MediaMetadataReader, IsNullWhenNoneIsRegistered) {
    EXPECT_EQ(MediaMetadata::getMediaMetadataReader().get(), nullptr);
}

TEST(MediaMetadataReader, IsRegisteredByBeingConstructedAndGoneWithItsEnd) {
    SharedPtr<FakeReader> reader(new FakeReader);
    EXPECT_EQ(MediaMetadata::getMediaMetadataReader().get(), reader.get());
    EXPECT_EQ(Service::getService(Service::kMediaMetadataReaderService).get(), reader.get());
    {
        SharedPtr<MediaMetadataReader> const found = MediaMetadata::getMediaMetadataReader();
        EXPECT_EQ(reader->refcount(), 2) << "the result is a share";
    }
    EXPECT_EQ(reader->refcount(), 1);
    reader.reset();
    EXPECT_EQ(MediaMetadata::getMediaMetadataReader().get(), nullptr);
}

TEST(MediaMetadataReader, LayoutTypesAreNumbered) {
    EXPECT_EQ(MediaMetadata::kGrid, 0);
    EXPECT_TRUE((std::is_same_v<std::underlying_type_t<MediaMetadata::LayoutType>, int>));
}

// One read.

TEST(MediaMetadataReadWithoutReader, FailsAndLeavesTheMetadata) {
    String metadata("before");
    EXPECT_EQ(MediaMetadata::getMediaMetadata("a", BOUNDS, TIME, metadata).get(), 1025);
    EXPECT_EQ(metadata, "before");
}

TEST(MediaMetadataReadWithoutReader, TestsTheTimeFirst) {
    String metadata("before");
    EXPECT_EQ(MediaMetadata::getMediaMetadata("a", BOUNDS, UNDEFINED, metadata).get(), 554);
    EXPECT_EQ(metadata, "before");
}

TEST(MediaMetadataReadWithoutReader, LeavesTheLocale) {
    LocaleKeeper const keeper;
    if (!LocaleKeeper::goAbroad()) {
        GTEST_SKIP() << "no other locale on this system";
    }
    std::string const abroad = LocaleKeeper::current();
    String metadata;
    MediaMetadata::getMediaMetadata("a", BOUNDS, TIME, metadata);
    MediaMetadata::getMediaMetadata("a", BOUNDS, UNDEFINED, metadata);
    EXPECT_EQ(LocaleKeeper::current(), abroad);
}

TEST_F(MediaMetadataRead, OfAnUndefinedTimeAsksNobody) {
    for (Rational const& rate : {Rational(24, 1), Rational(0, 0), Rational(-1, 1)}) {
        String metadata("before");
        Time const time(Time::getUndefinedNbTicks(), rate);
        EXPECT_EQ(MediaMetadata::getMediaMetadata("a", BOUNDS, time, metadata).get(), 554);
        EXPECT_EQ(metadata, "before");
    }
    EXPECT_TRUE(m_reader->questions().empty());
}

TEST_F(MediaMetadataRead, PassesOnWhatTheCallerGave) {
    std::string const path("sftp://x/ \xC3\xA4%04d\0.mov", 21);
    m_reader->on(path, Answer::document("the document"));
    String metadata("before");
    Time const time(-7, Rational(-30000, 1001));
    Bounds const bounds(-1.5, 2.5, -3.5, 0.0);
    EXPECT_EQ(MediaMetadata::getMediaMetadata(String(path.data(), path.size()), bounds, time, metadata).get(),
              Status::kSuccess);
    EXPECT_EQ(metadata, "the document");
    std::vector<Question> const questions = m_reader->questions();
    ASSERT_EQ(questions.size(), 1U);
    EXPECT_EQ(questions[0].path, path);
    EXPECT_THAT(questions[0].bounds, ElementsAre(-1.5, 2.5, -3.5, 0.0));
    EXPECT_EQ(questions[0].ticks, -7);
    EXPECT_EQ(questions[0].numerator, -30000);
    EXPECT_EQ(questions[0].denominator, 1001U);
    EXPECT_EQ(questions[0].metadata, "before") << "nothing but the reader writes the metadata";
    EXPECT_EQ(questions[0].thread, std::this_thread::get_id());
}

TEST_F(MediaMetadataRead, ADefaultTimeAndAnEmptyPathAreRead) {
    m_reader->on("", Answer::document("of nothing"));
    String metadata;
    EXPECT_EQ(MediaMetadata::getMediaMetadata(String(), Bounds(), Time(), metadata).get(), Status::kSuccess);
    EXPECT_EQ(metadata, "of nothing");
    EXPECT_EQ(m_reader->questions().at(0).denominator, 0U);
}

TEST_F(MediaMetadataRead, GivesTheReadersStatusUnchanged) {
    for (int const code : {0, -1, 1, 517, 554, 1025, 2051, 2054, 2060, 100000}) {
        std::string const path = std::to_string(code);
        m_reader->on(path, Answer::failure(static_cast<Status::Type>(code)));
        String metadata("before");
        EXPECT_EQ(MediaMetadata::getMediaMetadata(String(path.c_str()), BOUNDS, TIME, metadata).get(), code);
        EXPECT_EQ(metadata, "before") << "the reader has written nothing";
    }
}

TEST_F(MediaMetadataRead, KeepsWhatAFailingReaderHasWritten) {
    Answer answer = Answer::document("half");
    answer.status = Status::kIOAccess;
    m_reader->on("a", answer);
    String metadata("before");
    EXPECT_EQ(MediaMetadata::getMediaMetadata("a", BOUNDS, TIME, metadata).get(), Status::kIOAccess);
    EXPECT_EQ(metadata, "half");
}

TEST_F(MediaMetadataRead, ExceptionsPass) {
    m_reader->on("a", Answer::exceptionOf(std::out_of_range("from the reader")));
    String metadata("before");
    try {
        MediaMetadata::getMediaMetadata("a", BOUNDS, TIME, metadata);
        FAIL() << "nothing thrown";
    } catch (std::out_of_range const& e) {
        EXPECT_STREQ(e.what(), "from the reader");
    }
    EXPECT_EQ(metadata, "before");
    EXPECT_EQ(m_reader->refcount(), 1);
}

TEST_F(MediaMetadataRead, LeavesTheProcessInTheCLocale) {
    LocaleKeeper const keeper;
    m_reader->on("throws", Answer::exceptionOf(std::runtime_error("from the reader")));
    m_reader->on("reads", Answer::document("text"));
    for (char const* const path : {"reads", "fails", "throws", "reads"}) {
        if (!LocaleKeeper::goAbroad()) {
            GTEST_SKIP() << "no other locale on this system";
        }
        String metadata;
        try {
            MediaMetadata::getMediaMetadata(path, BOUNDS, TIME, metadata);
        } catch (std::runtime_error const&) {
            EXPECT_STREQ(path, "throws");
        }
        EXPECT_EQ(LocaleKeeper::current(), "C") << path;
        EXPECT_EQ(m_reader->questions().back().locale, "C") << path;
    }
}

TEST_F(MediaMetadataRead, PutsTheCLocaleBackWhereTheReaderLeftIt) {
    LocaleKeeper const keeper;
    if (!LocaleKeeper::goAbroad()) {
        GTEST_SKIP() << "no other locale on this system";
    }
    m_reader->on("a", Answer::document("text").after([] { LocaleKeeper::goAbroad(); }));
    String metadata;
    MediaMetadata::getMediaMetadata("a", BOUNDS, TIME, metadata);
    EXPECT_EQ(LocaleKeeper::current(), "C");
}

TEST_F(MediaMetadataRead, OfAnUndefinedTimeLeavesTheLocale) {
    LocaleKeeper const keeper;
    if (!LocaleKeeper::goAbroad()) {
        GTEST_SKIP() << "no other locale on this system";
    }
    std::string const abroad = LocaleKeeper::current();
    String metadata;
    MediaMetadata::getMediaMetadata("a", BOUNDS, UNDEFINED, metadata);
    EXPECT_EQ(LocaleKeeper::current(), abroad);
}

TEST_F(MediaMetadataRead, KeepsTheReaderAliveUntilItsEnd) {
    bool gone = false;
    m_reader->onDestruction = [&] { gone = true; };
    m_reader->on("a", Answer::document("text").after([&] {
        m_reader.reset();
        EXPECT_FALSE(gone) << "the read still holds it";
    }));
    String metadata;
    EXPECT_EQ(MediaMetadata::getMediaMetadata("a", BOUNDS, TIME, metadata).get(), Status::kSuccess);
    EXPECT_TRUE(gone) << "nothing holds it any longer";
    EXPECT_EQ(metadata, "text");
}

TEST_F(MediaMetadataRead, AReaderMayReadOnItsTurn) {
    String inner;
    m_reader->on("a", Answer::document("outer").after(
                          [&] { MediaMetadata::getMediaMetadata("b", BOUNDS, TIME, inner); }));
    m_reader->on("b", Answer::document("inner"));
    String outer;
    EXPECT_EQ(MediaMetadata::getMediaMetadata("a", BOUNDS, TIME, outer).get(), Status::kSuccess);
    EXPECT_EQ(outer, "outer");
    EXPECT_EQ(inner, "inner");
}

TEST_F(MediaMetadataRead, RunsOnManyThreadsAtOnce) {
    // Each waits inside the reader until all are there, so that no lock may stand around it.
    constexpr std::size_t COUNT = 12;
    m_reader->onAnyOther(Answer::document("text").after([&] { m_reader->waitForQuestions(COUNT); }));
    std::vector<std::thread> threads;
    std::array<String, COUNT> metadata;
    for (String& text : metadata) {
        threads.emplace_back([&text] { MediaMetadata::getMediaMetadata("a", BOUNDS, TIME, text); });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    for (String const& text : metadata) {
        EXPECT_EQ(text, "text");
    }
    EXPECT_EQ(m_reader->maximumInside(), static_cast<int>(COUNT));
}

// Many reads.

struct Outcome {
    char const* name;
    std::vector<int> codes; ///< what the reader says of each path
    int status;
    std::vector<std::size_t> documents; ///< whose documents are there in the end
};

std::vector<Outcome> const OUTCOMES = {
    {"one that is read", {0}, 0, {0}},
    {"all are read", {0, 0, 0}, 0, {0, 1, 2}},
    {"one that cannot be opened", {2051}, 0, {}},
    {"none can be opened", {2051, 2051, 2051}, 0, {}},
    {"the first cannot be opened", {2051, 0}, 0, {1}},
    {"the last cannot be opened", {0, 2051}, 0, {0}},
    {"one fails", {1}, 1, {}},
    {"not opened, then a failure", {2051, 2057}, 2057, {}},
    {"a failure, then not opened", {2057, 2051}, 2057, {}},
    {"two failures", {2057, 2}, 2057, {}},
    {"two failures the other way round", {2, 2057}, 2, {}},
    {"failures among readable ones", {0, 2057, 0, 2, 0}, 2057, {0, 2, 4}},
    {"neighbours of the code that is passed over", {2050, 2052}, 2050, {}},
    {"neighbours the other way round", {2052, 2050}, 2052, {}},
    {"the reader says that there is no reader", {0, 1025}, 1025, {0}},
    {"a code below zero is a success", {-1, 0, -2051}, 0, {0, 1, 2}},
    {"a code below zero before a failure", {-1, 7}, 7, {0}},
};

class MediaMetadataOutcome : public MediaMetadataReadMany {
protected:
    /// Lets the reads end in order, or in the opposite one.
    void expectOutcome(Outcome const& outcome, bool backwards) {
        SCOPED_TRACE(std::string(outcome.name) + (backwards ? ", the last first" : ", the first first"));
        std::size_t const count = outcome.codes.size();
        std::vector<Gate> gates(count + 2);
        gates[0].open();
        gates[count + 1].open();
        for (std::size_t i = 0; i < count; ++i) {
            Answer answer = Answer::document("document " + std::to_string(i));
            answer.status = static_cast<Status::Type>(outcome.codes[i]);
            m_reader->on("p" + std::to_string(i), answer.after([&gates, backwards, i] {
                gates[backwards ? i + 2 : i].pass();
                gates[i + 1].open();
            }));
        }
        Vector<String> metadata = stringsOf({"before"});
        EXPECT_EQ(
            MediaMetadata::getMultipleMediaMetadata(stringsOf(numberedPaths(count)), BOUNDS, TIME, metadata)
                .get(),
            outcome.status);
        std::vector<std::string> expected{"before"};
        for (std::size_t const i : outcome.documents) {
            expected.push_back("document " + std::to_string(i));
        }
        EXPECT_EQ(textsOf(metadata), expected);
    }
};

TEST_F(MediaMetadataOutcome, IsTheFirstFailureInInputOrderThatIsNotOneOfOpening) {
    std::size_t asked = 0;
    for (Outcome const& outcome : OUTCOMES) {
        expectOutcome(outcome, false);
        asked += outcome.codes.size();
        EXPECT_EQ(m_reader->questions().size(), asked) << "no failure keeps others from being read";
    }
}

TEST_F(MediaMetadataOutcome, IsTheSameWhicheverReadEndsFirst) {
    for (Outcome const& outcome : OUTCOMES) {
        expectOutcome(outcome, true);
    }
}

TEST_F(MediaMetadataReadMany, OfNoPathsSucceedsAndChangesNothing) {
    Vector<String> metadata = stringsOf({"before"});
    std::size_t const threads = quietThreadCount();
    for (Time const& time : {TIME, UNDEFINED}) {
        EXPECT_EQ(MediaMetadata::getMultipleMediaMetadata(Vector<String>(), BOUNDS, time, metadata).get(),
                  Status::kSuccess);
    }
    EXPECT_THAT(textsOf(metadata), ElementsAre("before"));
    EXPECT_TRUE(m_reader->questions().empty());
    EXPECT_EQ(threadCount(), threads);
}

TEST(MediaMetadataReadManyWithoutReader, OfNoPathsSucceeds) {
    Vector<String> metadata;
    EXPECT_EQ(MediaMetadata::getMultipleMediaMetadata(Vector<String>(), BOUNDS, TIME, metadata).get(),
              Status::kSuccess);
    EXPECT_TRUE(metadata.empty());
}

TEST(MediaMetadataReadManyWithoutReader, SaysSo) {
    Vector<String> metadata = stringsOf({"before"});
    EXPECT_EQ(MediaMetadata::getMultipleMediaMetadata(stringsOf({"a", "b"}), BOUNDS, TIME, metadata).get(),
              1025);
    EXPECT_EQ(
        MediaMetadata::getMultipleMediaMetadata(stringsOf({"a", "b"}), BOUNDS, UNDEFINED, metadata).get(),
        554);
    EXPECT_THAT(textsOf(metadata), ElementsAre("before"));
}

TEST_F(MediaMetadataReadMany, OfAnUndefinedTimeFailsAndAsksNobody) {
    Vector<String> metadata = stringsOf({"before"});
    EXPECT_EQ(
        MediaMetadata::getMultipleMediaMetadata(stringsOf({"a", "b"}), BOUNDS, UNDEFINED, metadata).get(),
        554);
    EXPECT_THAT(textsOf(metadata), ElementsAre("before"));
    EXPECT_TRUE(m_reader->questions().empty());
}

TEST_F(MediaMetadataReadMany, ReadsTheSamePathTwice) {
    m_reader->on("a", {Answer::document("one"), Answer::document("two")});
    Vector<String> metadata;
    EXPECT_EQ(MediaMetadata::getMultipleMediaMetadata(stringsOf({"a", "a"}), BOUNDS, TIME, metadata).get(),
              Status::kSuccess);
    EXPECT_THAT(textsOf(metadata), UnorderedElementsAre("one", "two"));
    EXPECT_THAT(m_reader->paths(), ElementsAre("a", "a"));
}

TEST_F(MediaMetadataReadMany, AppendsADocumentThatAReaderDidNotWriteAsAnEmptyOne) {
    m_reader->on("a", Answer::failure(Status::kSuccess));
    m_reader->on("b", Answer::document("b"));
    Vector<String> metadata;
    EXPECT_EQ(
        MediaMetadata::getMultipleMediaMetadata(stringsOf({"b", "a", "b"}), BOUNDS, TIME, metadata).get(),
        Status::kSuccess);
    EXPECT_THAT(textsOf(metadata), ElementsAre("b", "", "b"));
}

TEST_F(MediaMetadataReadMany, PassesOnWhatTheCallerGave) {
    std::vector<std::string> const paths{"a", "", std::string("b\0c", 3), "/d \xC3\xA4"};
    m_reader->onAnyOther(Answer::document("text"));
    Vector<String> metadata = stringsOf({"before"});
    EXPECT_EQ(MediaMetadata::getMultipleMediaMetadata(stringsOf(paths), BOUNDS, TIME, metadata).get(),
              Status::kSuccess);
    EXPECT_THAT(m_reader->paths(), testing::UnorderedElementsAreArray(paths));
    for (Question const& question : m_reader->questions()) {
        EXPECT_THAT(question.bounds, ElementsAre(0.5, -0.25, 4.0, 2.0));
        EXPECT_EQ(question.ticks, 1001);
        EXPECT_EQ(question.numerator, 24000);
        EXPECT_EQ(question.denominator, 1001U);
        EXPECT_EQ(question.metadata, "") << "each has a text of its own";
        EXPECT_EQ(question.locale, "C");
    }
}

TEST_F(MediaMetadataReadMany, GivesEachPathAThreadOfItsOwnAtTheSameTime) {
    constexpr std::size_t COUNT = 60;
    m_reader->onAnyOther(Answer::document("text").after([&] { m_reader->waitForQuestions(COUNT); }));
    Vector<String> metadata;
    EXPECT_EQ(MediaMetadata::getMultipleMediaMetadata(stringsOf(numberedPaths(COUNT)), BOUNDS, TIME, metadata)
                  .get(),
              Status::kSuccess);
    EXPECT_EQ(m_reader->maximumInside(), static_cast<int>(COUNT));
    std::set<std::thread::id> threads{std::this_thread::get_id()};
    for (Question const& question : m_reader->questions()) {
        EXPECT_TRUE(threads.insert(question.thread).second);
    }
    EXPECT_EQ(metadata.size(), COUNT);
}

TEST_F(MediaMetadataReadMany, LeavesTheProcessInTheCLocale) {
    LocaleKeeper const keeper;
    if (!LocaleKeeper::goAbroad()) {
        GTEST_SKIP() << "no other locale on this system";
    }
    Vector<String> metadata;
    MediaMetadata::getMultipleMediaMetadata(stringsOf({"a", "b"}), BOUNDS, TIME, metadata);
    EXPECT_EQ(LocaleKeeper::current(), "C");
}

TEST_F(MediaMetadataReadMany, JoinsAllThreadsBeforeAnExceptionLeaves) {
    m_reader->on("p0", Answer::document("text"));
    m_reader->on("p1", Answer::exceptionOf(std::runtime_error("one")));
    m_reader->on("p2", Answer::document("text").after([] { std::this_thread::sleep_for(50ms); }));
    m_reader->on("p3", Answer::failure(Status::kIOAccess).after([] { std::this_thread::sleep_for(20ms); }));
    std::size_t const threads = quietThreadCount();
    Vector<String> metadata;
    try {
        MediaMetadata::getMultipleMediaMetadata(stringsOf(numberedPaths(4)), BOUNDS, TIME, metadata);
        FAIL() << "nothing thrown";
    } catch (std::runtime_error const& e) {
        EXPECT_STREQ(e.what(), "one");
        EXPECT_EQ(m_reader->ended(), 4);
    }
    EXPECT_TRUE(threadCountBecomes(threads));
}

TEST_F(MediaMetadataReadMany, ThrowsTheFirstExceptionInInputOrder) {
    Gate thrown;
    m_reader->on("p0", Answer::failure(Status::kIOAccess));
    m_reader->on("p1", Answer::exceptionOf(std::runtime_error("earlier in the input")).after([&] {
        thrown.pass();
        std::this_thread::sleep_for(10ms);
    }));
    m_reader->on("p2",
                 Answer::exceptionOf(std::logic_error("earlier in time")).after([&] { thrown.open(); }));
    Vector<String> metadata;
    try {
        MediaMetadata::getMultipleMediaMetadata(stringsOf(numberedPaths(3)), BOUNDS, TIME, metadata);
        FAIL() << "nothing thrown";
    } catch (std::runtime_error const& e) {
        EXPECT_STREQ(e.what(), "earlier in the input");
    }
}

TEST_F(MediaMetadataReadMany, ThrowsWhatIsNoStandardException) {
    m_reader->on("a", Answer::exceptionOf(42));
    Vector<String> metadata;
    EXPECT_THROW(MediaMetadata::getMultipleMediaMetadata(stringsOf({"a"}), BOUNDS, TIME, metadata), int);
}

TEST_F(MediaMetadataReadMany, ThrowsWhenNoThreadCanBeStarted) {
    if (!ThreadDoor::works()) {
        GTEST_SKIP() << "no way to keep this system from starting threads";
    }
    Vector<String> metadata = stringsOf({"before"});
    ThreadDoor door;
    door.shut();
    EXPECT_THROW(MediaMetadata::getMultipleMediaMetadata(stringsOf({"a", "b"}), BOUNDS, TIME, metadata),
                 std::system_error);
    door.open();
    EXPECT_TRUE(m_reader->questions().empty());
    EXPECT_THAT(textsOf(metadata), ElementsAre("before"));
}

TEST_F(MediaMetadataReadMany, JoinsTheStartedThreadsWhenAnotherCannotBeStarted) {
    if (!ThreadDoor::works()) {
        GTEST_SKIP() << "no way to keep this system from starting threads";
    }
    std::size_t const threads = quietThreadCount();
    bool thrown = false;
    // The first read shuts the door, which is too late only if all others have been started before it.
    for (int attempt = 0; attempt < 10 && !thrown; ++attempt) {
        ThreadDoor door;
        m_reader->on("p0", Answer::document("text").after([&] { door.shut(); }));
        m_reader->onAnyOther(Answer::document("text").after([] { std::this_thread::sleep_for(1ms); }));
        int const endedBefore = m_reader->ended();
        std::size_t const askedBefore = m_reader->questions().size();
        Vector<String> metadata;
        try {
            MediaMetadata::getMultipleMediaMetadata(stringsOf(numberedPaths(1500)), BOUNDS, TIME, metadata);
        } catch (std::system_error const&) {
            thrown = true;
            std::size_t const asked = m_reader->questions().size() - askedBefore;
            EXPECT_EQ(m_reader->ended() - endedBefore, static_cast<int>(asked));
            EXPECT_GE(asked, 1U);
            EXPECT_LT(asked, 1500U);
        }
    }
    EXPECT_TRUE(thrown);
    EXPECT_TRUE(threadCountBecomes(threads));
}

TEST_F(MediaMetadataReadMany, TakesFiveThousandPathsAtOnceAndLosesNothing) {
#if defined(__SANITIZE_THREAD__) // which takes long to start a thread
    constexpr std::size_t COUNT = 1000;
#else
    constexpr std::size_t COUNT = 5000;
#endif
    std::vector<std::string> const paths = numberedPaths(COUNT);
    std::vector<std::string> expected;
    for (std::size_t i = 0; i < COUNT; ++i) {
        if (i % 10 == 3) {
            m_reader->on(paths[i], Answer::failure(Status::kErrorOpeningMediaFile));
        } else {
            m_reader->on(paths[i], Answer::document("of " + paths[i]));
            expected.push_back("of " + paths[i]);
        }
    }
    std::size_t const threads = quietThreadCount();
    std::size_t const files = fileCount();
    Vector<String> metadata;
    EXPECT_EQ(MediaMetadata::getMultipleMediaMetadata(stringsOf(paths), BOUNDS, TIME, metadata).get(),
              Status::kSuccess);
    EXPECT_EQ(textsOf(metadata), expected);
    EXPECT_EQ(m_reader->questions().size(), COUNT);
    EXPECT_TRUE(threadCountBecomes(threads));
    EXPECT_EQ(fileCount(), files);
}

TEST_F(MediaMetadataReadMany, MayBeCalledFromManyThreadsAtOnce) {
    m_reader->onAnyOther(Answer::document("text"));
    std::vector<std::thread> threads;
    std::array<Vector<String>, 8> metadata;
    for (Vector<String>& texts : metadata) {
        threads.emplace_back([&texts] {
            MediaMetadata::getMultipleMediaMetadata(stringsOf(numberedPaths(20)), BOUNDS, TIME, texts);
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    for (Vector<String> const& texts : metadata) {
        EXPECT_EQ(texts.size(), 20U);
    }
    EXPECT_EQ(m_reader->questions().size(), 160U);
}

} // namespace
