// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "support/Seed.h"

#include <orlBounds.h>
#include <orlVideoBufferResolution.h>

#include <gtest/gtest.h>

#include <cstring>
#include <random>
#include <string>

namespace {

using namespace ORL_0_81;

// A good text of other values, with the given text as "bounds".
std::string textWithBounds(std::string const& bounds) {
    return R"({"width":1,"height":2,"bounds":)" + bounds +
           R"(,"scan_format":"s","bits_per_channel":3,"num_channels":4,"is_float":false,)"
           R"("is_big_endian":true,"color_space":"c"})";
}

std::string textOf(VideoBufferResolution const& resolution) { return resolution.toJson().asChar(); }

bool haveSameBits(double left, double right) { return std::memcmp(&left, &right, sizeof left) == 0; }

TEST(VideoBufferResolutionContract, NestedNumbersGoThroughATextOfTheBoundsInBothDirections) {
    std::mt19937_64 random(printedSeed());
    std::uniform_real_distribution<double> mantissa(1.0, 10.0);
    std::uniform_int_distribution<int> exponent(-300, 300);
    int changed = 0;
    for (int i = 0; i < 20000; ++i) {
        Bounds bounds;
        std::string const number = std::to_string(mantissa(random)).substr(0, 4) +
                                   std::to_string(random() % 10000000000000000ULL) + "e" +
                                   std::to_string(exponent(random));
        std::string const nested = "{\"center\":[" + number + ",0.0],\"size\":[1.0," + number + "]}";
        ASSERT_TRUE(bounds.fromJson(nested.c_str()).success()) << nested;
        Bounds again;
        ASSERT_TRUE(again.fromJson(bounds.toJson()).success());
        changed += haveSameBits(bounds.getCenterX(), again.getCenterX()) ? 0 : 1;

        VideoBufferResolution read;
        ASSERT_TRUE(read.fromJson(textWithBounds(nested).c_str()).success());
        ASSERT_TRUE(haveSameBits(read.getCenterX(), again.getCenterX())) << nested;
        ASSERT_TRUE(haveSameBits(read.getSizeY(), again.getSizeY())) << nested;

        VideoBufferResolution written;
        written.setBounds(bounds);
        ASSERT_NE(textOf(written).find(std::string("\"bounds\":") + again.toJson().asChar() + ","),
                  std::string::npos)
            << nested;
    }
    EXPECT_GT(changed, 0) << "no number was met that its own text does not give back";
}

TEST(VideoBufferResolutionContract, EqualBoundsOfAnInfiniteRatioMakeItUnequal) {
    VideoBufferResolution left;
    left.setBounds(Bounds(0.0, 0.0, 1e300, 1e-15));
    VideoBufferResolution const right(left);
    ASSERT_TRUE(left.getBounds() == right.getBounds());
    EXPECT_FALSE(left == right);
    EXPECT_TRUE(left != right);
}

} // namespace
