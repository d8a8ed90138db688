// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "rapidotio/orlOtioVisitorHelper.h"

#include "support/Json.h"
#include "support/RecordingVisitor.h"
#include "support/TimelineText.h"
#include "support/Tree.h"

#include <gtest/gtest.h>

#include <atomic>
#include <cstddef>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

namespace {

using namespace ORL_0_81;
using namespace ORL_0_81::rapidotio;
using namespace orlTest;

std::string const kTimeline =
    R"({"OTIO_SCHEMA":"Timeline.1","name":"t","tracks":{"OTIO_SCHEMA":"Stack.1","children":[
    {"OTIO_SCHEMA":"Track.1","name":"v","children":[{"OTIO_SCHEMA":"Clip.1","name":"c"}]}]}})";

char const* const kEvents = "+timeline:t +stack: +track:v +clip:c -clip:c -track:v -stack: -timeline:t";

std::string eventsOf(std::string const& text) {
    RecordingVisitor visitor;
    EXPECT_TRUE(VisitorHelper::visit(text, visitor, nullptr));
    return visitor.line();
}

TEST(OtioVisitorHelper, ATextThatDoesNotParseIsRefusedAndNothingHappens) {
    char const* const texts[] = {
        "",
        " ",
        "\n",
        "timeline",
        "{",
        "}",
        "[1,]",
        "{\"a\":1,}",
        "{'a':1}",
        "{a:1}",
        "{\"a\" 1}",
        "nul",
        "NaN",
        "Infinity",
        "[Infinity]",
        "+1",
        ".5",
        "1.",
        "01",
        "1e",
        "0x10",
        "// no\n{}",
        "/* no */{}",
        "{} {}",
        "{}x",
        "{}]",
        "\"open",
        "\"\\x\"",
        "\"\\u12\"",
        "\"a\nb\"",
        "\"\\ud800\"",
        "\"\\ud800x\"",
        "\"\\ud800\\u0041\"",
        "[1e400]",
        "[-1e400]",
        "\xEF\xBB\xBF{}",
    };
    for (char const* const text : texts) {
        RecordingVisitor visitor;
        std::string output = "kept";
        EXPECT_FALSE(VisitorHelper::visit(text, visitor, &output)) << text;
        EXPECT_EQ(output, "kept") << text;
        EXPECT_FALSE(VisitorHelper::visit(text, visitor, nullptr)) << text;
        EXPECT_EQ(visitor.line(), "") << text;
    }
}

TEST(OtioVisitorHelper, JsonFollowedByAnythingButWhiteSpaceIsRefused) {
    EXPECT_TRUE(accepted(" \t\r\n" + kTimeline + " \t\r\n"));
    for (char const* const tail : {"x", "{}", ",", "}", "null", " 1", "\n\"", "\x01", "\x7F"}) {
        EXPECT_FALSE(accepted(kTimeline + tail)) << tail;
    }
}

TEST(OtioVisitorHelper, TheTextEndsAtItsFirstZeroByte) {
    EXPECT_TRUE(accepted(std::string("{}\0x", 4)));
    EXPECT_FALSE(accepted(std::string("\0{}", 3)));
    EXPECT_FALSE(accepted(std::string("{\"a\0\":1}", 8)));
    EXPECT_FALSE(accepted(std::string("{\0}", 3)));
}

TEST(OtioVisitorHelper, AnEmptyObjectGivesNoVisitAndAnEmptyObject) {
    EXPECT_EQ(eventsOf("{}"), "");
    EXPECT_EQ(normalized("{}"), "{}");
}

TEST(OtioVisitorHelper, ADocumentWithoutAUsableTimelineIsAnEmptyObject) {
    for (char const* const text :
         {R"({"a":1})", R"({"OTIO_SCHEMA":"Timeline.2"})", R"({"OTIO_SCHEMA":"SerializableCollection.1"})",
          R"({"timeline":{}})", R"({"timeline":{"OTIO_SCHEMA":"Timeline"}})",
          R"({"Timeline":{"OTIO_SCHEMA":"Timeline.1"}})",
          R"({"timeline":{"timeline":{"timeline":{"OTIO_SCHEMA":"Timeline.1"}}}})"}) {
        EXPECT_EQ(eventsOf(text), "") << text;
        EXPECT_EQ(normalized(text), "{}") << text;
    }
}

TEST(OtioVisitorHelper, ARootThatIsNoObjectIsADocumentWithoutATimeline) {
    for (char const* const text :
         {"null", "true", "false", "0", "-1", "1.5", "\"timeline\"", "[]", "[1]", "[{}]",
          R"([{"OTIO_SCHEMA":"Timeline.1"}])", R"(["timeline",{"OTIO_SCHEMA":"Timeline.1"}])"}) {
        EXPECT_EQ(eventsOf(text), "") << text;
        EXPECT_EQ(normalized(text), "{}") << text;
    }
}

TEST(OtioVisitorHelper, ATimelineIsFoundBareAndWrappedOnceAndTwice) {
    std::string const wrapped = R"({"a":1,"timeline":)" + kTimeline + "}";
    std::string const twice = R"({"timeline":)" + wrapped + "}";
    for (std::string const& text : {kTimeline, wrapped, twice}) {
        EXPECT_EQ(eventsOf(text), kEvents);
        EXPECT_EQ(normalized(text), normalized(kTimeline));
    }
    EXPECT_EQ(eventsOf(R"({"timeline":)" + twice + "}"), "");
}

TEST(OtioVisitorHelper, AWrapperThatIsNoObjectLeavesTheDocumentForTheTimeline) {
    for (char const* const member : {"null", "1", "\"x\"", "[]", R"([{"OTIO_SCHEMA":"Timeline.1"}])"}) {
        std::string const text = std::string(R"({"timeline":)") + member + "," + kTimeline.substr(1);
        EXPECT_EQ(eventsOf(text), kEvents) << member;
    }
}

TEST(OtioVisitorHelper, OfTwoWrappersTheFirstCounts) {
    EXPECT_EQ(eventsOf(R"({"timeline":null,"timeline":)" + kTimeline + "}"), "");
    EXPECT_EQ(eventsOf(R"({"timeline":)" + kTimeline + R"(,"timeline":{}})"), kEvents);
}

TEST(OtioVisitorHelper, WritesCompactTextWithoutTheWrapperAndWhatIsNotModelled) {
    EXPECT_EQ(normalized(R"({"timeline":{"more":[1],"name":"t","OTIO_SCHEMA":"Timeline.1","metadata":{"a":{}},
        "tracks":{"source_range":null,"OTIO_SCHEMA":"Stack.1","children":[
            {"effects":[],"OTIO_SCHEMA":"Track.1","children":[{"OTIO_SCHEMA":"Clip.1","markers":[],"enabled":true}]}]}}})"),
              R"({"tracks":{"OTIO_SCHEMA":"Stack.1","children":[)" +
                  trackText("[" + ClipText().text() + "]") + "]}," + timelineTail(R"("t")"));
}

TEST(OtioVisitorHelper, WhatTheLibraryWroteComesOutByteForByte) {
    std::string const text = normalized(kTimeline);
    EXPECT_EQ(normalized(text), text);
}

TEST(OtioVisitorHelper, TheOutputIsTheTreeAsTheVisitorLeftIt) {
    RecordingVisitor visitor;
    visitor.onVisit = [](Node& node) {
        if (ClipNode* const clip = dynamic_cast<ClipNode*>(&node)) {
            clip->m_frameRate = 24.0;
        } else if (TrackNode* const track = dynamic_cast<TrackNode*>(&node)) {
            track->m_kind = kTrackAudio;
        }
    };
    visitor.onPostVisit = [](Node& node) { node.m_name.clear(); };
    std::string output = "replaced";
    ASSERT_TRUE(VisitorHelper::visit(kTimeline, visitor, &output));
    ClipText clip;
    clip.frameRate = "24.0";
    EXPECT_EQ(output, timelineText("[" + trackText("[" + clip.text() + "]", R"(,"kind":"Audio")") + "]"));
}

TEST(OtioVisitorHelper, TheOutputMayBeTheInput) {
    std::string text = kTimeline;
    std::string const expected = normalized(text);
    SilentVisitor visitor;
    ASSERT_TRUE(VisitorHelper::visit(text, visitor, &text));
    EXPECT_EQ(text, expected);
}

TEST(OtioVisitorHelper, NodesThatAVisitorSharesOutliveTheTree) {
    std::vector<SharedPtr<Node>> kept;
    RecordingVisitor visitor;
    visitor.onVisit = [&](Node& node) {
        if (node.m_name == "v") {
            kept.emplace_back(&node);
        }
    };
    ASSERT_TRUE(VisitorHelper::visit(kTimeline, visitor, nullptr));
    ASSERT_EQ(kept.size(), 1U);
    EXPECT_EQ(kept[0]->refcount(), 1);
    kept[0]->m_parent = nullptr; // stale by now

    StackNode stack;
    kept[0]->m_parent = &stack;
    stack.m_children.push_back(kept[0]);
    EXPECT_EQ(writtenToObject(stack), compact(R"({"tracks":{"OTIO_SCHEMA":"Stack.1","children":[
        {"name":"v","OTIO_SCHEMA":"Track.1","children":[)" +
                                              [] {
                                                  ClipText clip;
                                                  clip.name = R"("c")";
                                                  return clip.text();
                                              }() +
                                              "]}]}}"));
}

TEST(OtioVisitorHelper, AnExceptionOfTheVisitorLeavesTheOutputAlone) {
    RecordingVisitor visitor;
    visitor.onPostVisit = [](Node&) { throw std::runtime_error("enough"); };
    std::string output = "kept";
    EXPECT_THROW(VisitorHelper::visit(kTimeline, visitor, &output), std::runtime_error);
    EXPECT_EQ(output, "kept");
}

TEST(OtioVisitorHelper, ACallKeepsNothingForTheNextOne) {
    RecordingVisitor visitor;
    ASSERT_TRUE(VisitorHelper::visit(kTimeline, visitor, nullptr));
    EXPECT_FALSE(VisitorHelper::visit("{", visitor, nullptr));
    ASSERT_TRUE(VisitorHelper::visit("{}", visitor, nullptr));
    EXPECT_EQ(visitor.line(), kEvents);
}

TEST(OtioVisitorHelper, TextsAreEscapedOnlyWhereTheyMust) {
    EXPECT_EQ(
        normalized(R"({"OTIO_SCHEMA":"Timeline.1","name":"\/\"\\\b\f\n\r\t\u001f\u00e4\u20AC\ud83d\ude00"})"),
        bareTimelineText("\"/\\\"\\\\\\b\\f\\n\\r\\t\\u001F\xC3\xA4\xE2\x82\xAC\xF0\x9F\x98\x80\""));
}

TEST(OtioVisitorHelper, BytesThatAreNoUtf8PassThrough) {
    std::string const bytes = "a\xFF\xFE\xC0\x80\xED\xA0\x80\xF5z";
    EXPECT_EQ(normalized("{\"OTIO_SCHEMA\":\"Timeline.1\",\"name\":\"" + bytes + "\"}"),
              bareTimelineText("\"" + bytes + "\""));
}

TEST(OtioVisitorHelper, NumbersKeepTheFormOfADouble) {
    auto const start = [](std::string const& value) {
        return normalized(
            R"({"OTIO_SCHEMA":"Timeline.1","global_start_time":{"OTIO_SCHEMA":"RationalTime.1","rate":1,"value":)" +
            value + "}}");
    };
    auto const expected = [](std::string const& value) {
        return bareTimelineText("\"\"", timeText(value, "1.0"));
    };
    EXPECT_EQ(start("0"), expected("0.0"));
    EXPECT_EQ(start("-0.0"), expected("-0.0"));
    EXPECT_EQ(start("1e21"), expected("1e21"));
    EXPECT_EQ(start("100000000000000000000.0"), expected("100000000000000000000.0"));
    EXPECT_EQ(start("1e-7"), expected("1e-7"));
    EXPECT_EQ(start("0.0000001e0"), expected("1e-7"));
    EXPECT_EQ(start("0.000001"), expected("0.000001"));
    EXPECT_EQ(start("1E+2"), expected("100.0"));
    EXPECT_EQ(start("1e-400"), expected("0.0"));
}

TEST(OtioVisitorHelper, RunsOnEightThreadsAtOnce) {
    std::size_t const threadCount = 8;
    std::atomic<std::size_t> good(0);
    std::vector<std::thread> threads;
    for (std::size_t i = 0; i < threadCount; ++i) {
        threads.emplace_back([i, &good] {
            std::string const name = "t" + std::to_string(i);
            std::string const text = R"({"OTIO_SCHEMA":"Timeline.1","name":")" + name + R"(","tracks":{
                "OTIO_SCHEMA":"Stack.1","children":[{"OTIO_SCHEMA":"Track.1","children":[)" +
                                     repeated(R"({"OTIO_SCHEMA":"Clip.1"},)", i) +
                                     R"({"OTIO_SCHEMA":"Clip.1"}]}]}})";
            std::string const expected =
                R"({"tracks":{"OTIO_SCHEMA":"Stack.1","children":[)" +
                trackText("[" + repeated(ClipText().text() + ",", i) + ClipText().text() + "]") + "]}," +
                timelineTail("\"" + name + "\"");
            for (int round = 0; round < 50; ++round) {
                RecordingVisitor visitor;
                std::string output;
                if (VisitorHelper::visit(text, visitor, &output) && output == expected &&
                    visitor.events.size() == 6 + 2 * (i + 1)) {
                    ++good;
                }
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(good, threadCount * 50);
}

} // namespace
