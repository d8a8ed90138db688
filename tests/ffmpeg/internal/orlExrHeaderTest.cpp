// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "internal/orlExrHeader.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using namespace ORL_0_81::media;

std::string word(unsigned value) {
    std::string bytes;
    for (unsigned i = 0; i < 4; ++i) {
        bytes += static_cast<char>(value >> (8 * i) & 0xffU);
    }
    return bytes;
}

std::string text(std::string const& characters) { return characters + '\0'; }

std::string channel(std::string const& name, unsigned type) {
    return text(name) + word(type) + std::string(4, '\0') + word(1) + word(1);
}

std::string attribute(std::string const& name, std::string const& type, std::string const& value) {
    return text(name) + text(type) + word(static_cast<unsigned>(value.size())) + value;
}

std::string file(std::string const& attributes) { return "\x76\x2f\x31\x01" + word(2) + attributes + '\0'; }

std::string fileWith(std::string const& channels) {
    return file(attribute("comments", "string", "a text") + attribute("channels", "chlist", channels + '\0'));
}

TEST(ExrHeaderTest, TellsTheTypeOfTheFirstChannelAndTheirNumber) {
    char const* const types[] = {"uint32", "half", "float"};
    for (unsigned type = 0; type < 3; ++type) {
        ExrChannels channels;
        ASSERT_TRUE(readExrChannels(fileWith(channel("A", type) + channel("Z", 2)), channels));
        EXPECT_EQ(channels.dataType, types[type]);
        EXPECT_EQ(channels.count, 2);
    }
}

TEST(ExrHeaderTest, RefusesWhatIsNoWholeChannelList) {
    std::string const whole = fileWith(channel("R", 1) + channel("G", 1));
    ExrChannels channels;
    std::size_t const end = whole.size() - 1; // the end of the header is not needed
    for (std::size_t length = 0; length < end; ++length) {
        EXPECT_FALSE(readExrChannels(whole.substr(0, length), channels)) << length;
    }
    EXPECT_TRUE(readExrChannels(whole.substr(0, end), channels));
}

TEST(ExrHeaderTest, RefusesOtherFilesAndOddLists) {
    ExrChannels channels;
    channels.count = 77;
    EXPECT_FALSE(readExrChannels("", channels));
    EXPECT_FALSE(readExrChannels(std::string(200, 'x'), channels));
    EXPECT_FALSE(readExrChannels(file(""), channels));
    EXPECT_FALSE(readExrChannels(file(attribute("channels", "string", "R")), channels));
    EXPECT_FALSE(readExrChannels(fileWith(""), channels));
    EXPECT_FALSE(readExrChannels(fileWith(channel("R", 3)), channels));
    EXPECT_FALSE(readExrChannels(
        "\x76\x2f\x31\x01" + word(2) + text("channels") + text("chlist") + word(0xffffffffU), channels));
    EXPECT_EQ(channels.count, 77);
}

} // namespace
