// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "support/orlThreads.h"

#include <orlBounds.h>
#include <orlFPSUtils.h>
#include <orlPrefs.h>
#include <orlRational.h>
#include <orlStatus.h>
#include <orlTime.h>
#include <orlURLHandler.h>
#include <orlVideoBufferResolution.h>

#include <gtest/gtest.h>

#include <cstddef>
#include <string>

// Values that many threads read at a time, and that each thread changes for itself while they share what they were
// made of. What a thread finds is for the checks, how it finds it for the thread sanitizer.

namespace {

using namespace ORL_0_81;
using orlTest::onThreads;

constexpr std::size_t THREADS = 4;
constexpr int ROUNDS = 100;

// Reads one object in every way on all threads; `read` gives a text of what it has found.
template <class Value, class Read>
void readOnThreads(Value const& value, Read const& read) {
    std::string const expected = read(value);
    onThreads(THREADS, [&](std::size_t) {
        for (int round = 0; round < ROUNDS; ++round) {
            EXPECT_EQ(read(value), expected);
        }
    });
}

TEST(ValuesThreads, OneRateHasManyReaders) {
    Rational const equal(48000, 2002);
    readOnThreads(Rational(24000, 1001), [&equal](Rational const& rate) {
        Rational const copy(rate);
        EXPECT_TRUE(copy == rate && rate == equal && !(rate != copy) && rate <= copy && !(rate < copy));
        EXPECT_TRUE(rate == rate.getValue() && rate <= rate.getValue() && !(rate < rate.getValue()));
        return std::string(rate.toJson().c_str()) + std::to_string(rate.getNumerator()) +
               std::to_string(rate.getDenominator());
    });
}

TEST(ValuesThreads, OneTimeHasManyReaders) {
    readOnThreads(Time(48, Rational(24, 1)), [](Time const& time) {
        Time const copy(time);
        EXPECT_TRUE(copy == time && !(time != copy) && !time.isUndefined());
        return std::string(time.toJson().c_str()) + std::to_string(time.getNbTicks()) +
               std::to_string(time.getRate().getNumerator()) + std::to_string(time.getValue());
    });
}

TEST(ValuesThreads, OneRectangleHasManyReaders) {
    readOnThreads(Bounds(1.0, 2.0, 3.0, 4.0), [](Bounds const& bounds) {
        Bounds copy(bounds);
        copy.grow(bounds);
        EXPECT_TRUE(copy == bounds && !(bounds != copy) && bounds.isValid());
        return std::string(bounds.toJson().c_str()) +
               std::to_string(bounds.getCenterX() + bounds.getCenterY() + bounds.getSizeX() +
                              bounds.getSizeY() + bounds.getFrameRatio());
    });
}

TEST(ValuesThreads, OneDescriptionHasManyReaders) {
    VideoBufferResolution const resolution(1920, 1080, Bounds(1.0, 2.0, 3.0, 4.0), "a scan format", 10, 3,
                                           true, false, "a colour space");
    readOnThreads(resolution, [](VideoBufferResolution const& value) {
        VideoBufferResolution const copy(value);
        EXPECT_TRUE(copy == value && !(value != copy) && value.isValid() && value.isFloat() &&
                    !value.isBigEndian() && value.getBounds() == copy.getBounds());
        return std::string(value.toJson().c_str()) + value.getScanFormat().c_str() +
               value.getColorSpace().c_str() +
               std::to_string(value.getWidth() + value.getHeight() + value.getBitsPerChannel() +
                              value.getNumChannels() + value.getPixelSize() + value.getBufferStride() +
                              value.getBufferSize()) +
               std::to_string(value.getCenterX() + value.getCenterY() + value.getSizeX() + value.getSizeY() +
                              value.getFrameRatio());
    });
}

TEST(ValuesThreads, OneResolvedUrlHasManyReaders) {
    URLHandler::ResolvedUrl url;
    url.setResolvedPath("/a/path");
    url.setOriginalFilename("a name");
    url.setExpirationTime(7);
    readOnThreads(url, [](URLHandler::ResolvedUrl const& value) {
        URLHandler::ResolvedUrl copy(value);
        copy = value;
        return std::string(copy.getResolvedPath().c_str()) + value.getOriginalFilename().c_str() +
               std::to_string(value.getExpirationTime());
    });
}

TEST(ValuesThreads, EachThreadChangesACopyOfItsOwnWhoseTextsAreShared) {
    VideoBufferResolution const original(1920, 1080, Bounds(1.0, 2.0, 3.0, 4.0), "a scan format", 10, 3, true,
                                         false, "a colour space");
    Time const time(48, Rational(24, 1));
    onThreads(THREADS, [&](std::size_t t) {
        int const own = static_cast<int>(t);
        for (int round = 0; round < ROUNDS; ++round) {
            VideoBufferResolution copy(original);
            copy.setScanFormat(copy.getColorSpace() + "!");
            copy.setColorSpace(original.getScanFormat());
            copy.setWidth(own);
            copy.setCenterX(own);
            EXPECT_EQ(copy.getScanFormat(), "a colour space!");
            EXPECT_EQ(copy.getWidth(), own);
            EXPECT_TRUE(copy.fromJson(original.toJson()));
            EXPECT_TRUE(copy == original);
            Time ownTime(time);
            ownTime.setNbTicks(own);
            ownTime.setRate(Rational(own, 1));
            EXPECT_TRUE(ownTime.fromJson(time.toJson()));
            EXPECT_TRUE(ownTime == time);
        }
    });
    EXPECT_EQ(original.getScanFormat(), "a scan format");
    EXPECT_EQ(original.getColorSpace(), "a colour space");
}

TEST(ValuesThreads, RatesAreConvertedOnAnyThread) {
    Time const time(48, Rational(24, 1));
    Rational const rate(30000, 1001);
    String const text("29.97 fps NDF");
    onThreads(THREADS, [&](std::size_t) {
        for (int round = 0; round < ROUNDS; ++round) {
            Time const converted = FPSUtils::convertToRate(time, rate, FPSUtils::kRoundNearest);
            EXPECT_EQ(converted.getNbTicks(), 60);
            String name;
            EXPECT_TRUE(FPSUtils::getFPSString(rate, name));
            EXPECT_EQ(name, text);
            Rational read;
            EXPECT_TRUE(FPSUtils::getFPSFromString(text, read));
            EXPECT_TRUE(read == rate);
            EXPECT_TRUE(FPSUtils::getFPSFromValue(29.97, read));
            EXPECT_EQ(read.getNumerator(), 30000);
        }
    });
}

TEST(ValuesThreads, WordsAndNamesAreThereForAllThreads) {
    Status const status = Status::kFileNotFound;
    onThreads(THREADS, [&](std::size_t) {
        for (int round = 0; round < ROUNDS; ++round) {
            EXPECT_STREQ(status.getStr(), "kFileNotFound");
            EXPECT_TRUE(status.failure() && status == Status::kFileNotFound);
            String name = Prefs::READER_CACHE_THREADS;
            name.append("!");
            EXPECT_EQ(name, "READER_CACHE_THREADS!");
        }
    });
}

} // namespace
