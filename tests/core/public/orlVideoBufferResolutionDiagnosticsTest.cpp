// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "support/Diagnostics.h"

#include <orlVideoBufferResolution.h>

#include <gtest/gtest.h>

#include <cstddef>
#include <string>
#include <vector>

namespace {

using namespace ORL_0_81;
using namespace orlTest;

struct Member {
    std::string name;
    std::string value;
    std::string word; // for the type, as the diagnostics call it
};

// In the order in which they are read, which is not that in which they are written.
std::vector<Member> const kMembers = {
    {"width", "1", "Int"},
    {"height", "2", "Int"},
    {"bits_per_channel", "3", "Int"},
    {"num_channels", "4", "Int"},
    {"scan_format", "\"s\"", "String"},
    {"color_space", "\"c\"", "String"},
    {"is_float", "false", "bool"},
    {"is_big_endian", "true", "bool"},
    {"bounds", R"({"center":[0.0,0.0],"size":[1.0,1.0]})", "Object"},
};

std::string toText(std::vector<Member> const& members) {
    std::string text;
    for (Member const& member : members) {
        text += (text.empty() ? "{\"" : ",\"") + member.name + "\":" + member.value;
    }
    return text.empty() ? "{}" : text + "}";
}

std::string saidOf(std::string const& text, Status::Type expected) {
    return diagnosticsOf([&] {
        VideoBufferResolution resolution;
        EXPECT_EQ(resolution.fromJson(text.c_str()).get(), expected);
    });
}

// What is said of the members before one.
std::string foundUpTo(std::size_t index) {
    std::string said;
    for (std::size_t i = 0; i < index; ++i) {
        said += "Found " + kMembers[i].name + "\n";
    }
    return said;
}

TEST(VideoBufferResolutionDiagnostics, EachMemberIsFoundInTheOrderOfReading) {
    EXPECT_EQ(saidOf(toText(kMembers), Status::kSuccess), foundUpTo(kMembers.size()));
    EXPECT_EQ(saidOf(VideoBufferResolution().toJson().asChar(), Status::kSuccess),
              foundUpTo(kMembers.size()));
}

TEST(VideoBufferResolutionDiagnostics, AMissingMemberEndsTheReading) {
    for (std::size_t i = 0; i < kMembers.size(); ++i) {
        std::vector<Member> members = kMembers;
        members.erase(members.begin() + static_cast<std::ptrdiff_t>(i));
        EXPECT_EQ(saidOf(toText(members), Status::kInvalidJsonType),
                  foundUpTo(i) + "Cannot find '" + kMembers[i].name + "'\n");
    }
}

TEST(VideoBufferResolutionDiagnostics, AMemberOfAnotherTypeEndsTheReading) {
    for (std::size_t i = 0; i < kMembers.size(); ++i) {
        std::vector<Member> members = kMembers;
        members[i].value = "null";
        EXPECT_EQ(saidOf(toText(members), Status::kInvalidJsonType), foundUpTo(i) + "Expected '" +
                                                                         kMembers[i].name + "' to be " +
                                                                         kMembers[i].word + ", found Null\n");
    }
}

TEST(VideoBufferResolutionDiagnostics, NestedBoundsAreReadInSilence) {
    std::vector<Member> members = kMembers;
    members.back().value = "{}";
    EXPECT_EQ(saidOf(toText(members), Status::kInvalidBoundsStr), foundUpTo(members.size()));
}

TEST(VideoBufferResolutionDiagnostics, ARootThatIsNoObjectHasNoWidth) {
    EXPECT_EQ(saidOf("[]", Status::kInvalidJsonType), notFound({"width"}));
    EXPECT_EQ(saidOf("null", Status::kInvalidJsonType), notFound({"width"}));
}

TEST(VideoBufferResolutionDiagnostics, ATextThatIsNoJsonIsPassedOverInSilence) {
    EXPECT_EQ(saidOf("{\"width\":1", Status::kInvalidJsonType), "");
    EXPECT_EQ(saidOf("", Status::kInvalidJsonType), "");
}

} // namespace
