// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "support/Allocations.h"

#include <orlBounds.h>
#include <orlFPSUtils.h>
#include <orlRational.h>
#include <orlTime.h>
#include <orlVideoBufferResolution.h>

#include <gtest/gtest.h>

#include <utility>

// What the media values allocate, and what is left when that fails.

namespace {

using namespace ORL_0_81;

TEST(ValuesAllocation, ARateAndBoundsAreOneAllocationATimeIsTwo) {
    Rational const rate(24, 1);
    Bounds const bounds(1.0, 2.0, 3.0, 4.0);
    Time const time(48, rate);
    EXPECT_EQ(allocationsOf([] { Rational const value; }), 1);
    EXPECT_EQ(allocationsOf([] { Rational const value(24, 1); }), 1);
    EXPECT_EQ(allocationsOf([&] { Rational const copy(rate); }), 1);
    EXPECT_EQ(allocationsOf([] { Bounds const value; }), 1);
    EXPECT_EQ(allocationsOf([] { Bounds const value(1.0, 2.0, 3.0, 4.0); }), 1);
    EXPECT_EQ(allocationsOf([&] { Bounds const copy(bounds); }), 1);
    EXPECT_EQ(allocationsOf([] { Time const value; }), 2);
    EXPECT_EQ(allocationsOf([&] { Time const value(48, rate); }), 2);
    EXPECT_EQ(allocationsOf([&] { Time const copy(time); }), 2);
}

TEST(ValuesAllocation, ADescriptionIsTwoWhileItsTextsAreShared) {
    Bounds const bounds(1.0, 2.0, 3.0, 4.0);
    String const text("a text of some length");
    EXPECT_EQ(allocationsOf([] { VideoBufferResolution const value; }), 2);
    VideoBufferResolution resolution(1, 2, bounds, text, 3, 4, true, false, text);
    EXPECT_EQ(allocationsOf([&] { VideoBufferResolution const copy(resolution); }), 2);
    EXPECT_EQ(allocationsOf([&] { resolution.getBounds(); }), 1);
}

TEST(ValuesAllocation, MovingAssigningComparingAndReadingAllocateNothing) {
    Rational rate(24, 1);
    Rational otherRate(25, 1);
    Time time(48, rate);
    Time otherTime(49, otherRate);
    Bounds bounds(1.0, 2.0, 3.0, 4.0);
    Bounds otherBounds(bounds);
    VideoBufferResolution resolution(1, 2, bounds, "scan", 3, 4, true, false, "color");
    VideoBufferResolution otherResolution(resolution);
    double sum = 0.0;
    EXPECT_EQ(allocationsOf([&] {
                  rate = otherRate;
                  time = otherTime;
                  bounds = otherBounds;
                  resolution = otherResolution;
                  time.setRate(rate);
                  resolution.setBounds(bounds);
                  resolution.setScanFormat(resolution.getColorSpace());
                  bounds.grow(otherBounds);
                  sum += (rate == otherRate) + (rate < otherRate) + (rate <= 24.0) + (time == otherTime) +
                         (time != otherTime) + (bounds == otherBounds) + (resolution == otherResolution) +
                         resolution.isValid();
                  sum += time.getValue() + time.getRate().getValue() + bounds.getFrameRatio() +
                         resolution.getFrameRatio() + static_cast<double>(resolution.getPixelSize()) +
                         static_cast<double>(resolution.getBufferStride() + resolution.getBufferSize());
                  std::swap(rate, otherRate);
                  std::swap(time, otherTime);
                  std::swap(bounds, otherBounds);
                  std::swap(resolution, otherResolution);
              }),
              0);
    EXPECT_GT(sum, 0.0);
}

TEST(ValuesAllocation, NothingIsLeftBehind) {
    long const before = liveAllocations();
    {
        VideoBufferResolution resolution(1, 2, Bounds(1.0, 2.0, 3.0, 4.0), "scan", 3, 4, true, false,
                                         "color");
        VideoBufferResolution moved(std::move(resolution));
        resolution = moved; // moved from, so nothing is copied
        resolution = std::move(moved);
        EXPECT_TRUE(resolution.fromJson(resolution.toJson()));
        EXPECT_FALSE(resolution.fromJson("{\"width\":[[1]],"));
        Time time(48, Rational(24, 1));
        time = FPSUtils::convertToRate(time, Rational(25, 1), FPSUtils::kRoundUp);
        EXPECT_TRUE(time.fromJson(time.toJson()));
        Time taken(std::move(time));
        time = std::move(taken);
        taken = Time();
    }
    EXPECT_EQ(liveAllocations(), before);
}

TEST(ValuesMemoryFailure, AConstructorFreesWhatItHas) {
    Time const time(48, Rational(24, 1));
    VideoBufferResolution const resolution(1, 2, Bounds(), "scan", 3, 4, true, false, "color");
    long const before = liveAllocations();
    for (long count = 0; count < 2; ++count) {
        EXPECT_TRUE(runsOutOfMemory(count, [] { Time const value; }));
        EXPECT_TRUE(runsOutOfMemory(count, [&] { Time const copy(time); }));
        EXPECT_TRUE(runsOutOfMemory(count, [] { VideoBufferResolution const value; }));
        EXPECT_TRUE(runsOutOfMemory(count, [&] { VideoBufferResolution const copy(resolution); }));
    }
    EXPECT_EQ(liveAllocations(), before);
}

TEST(ValuesMemoryFailure, AFailedReadingKeepsTheValueOfATime) {
    Time time(48, Rational(24, 1));
    String const text = Time(7, Rational(5, 3)).toJson();
    String const before = time.toJson();
    long count = 0;
    while (runsOutOfMemory(count, [&] { time.fromJson(text); })) {
        EXPECT_EQ(time.toJson(), before) << count;
        ++count;
    }
    EXPECT_GT(count, 0);
    EXPECT_EQ(time.toJson(), text);
}

} // namespace
