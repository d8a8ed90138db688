// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "support/VirtualSlot.h"

#include <orlPrefs.h>

#include <gtest/gtest.h>

#include <new>
#include <type_traits>

namespace {

using namespace ORL_0_81;

// Overrides only what it must.
class Bare : public Prefs {
public:
    Status getPrefNames(Vector<String>&) const override { return Status::kSuccess; }
};

// Prefs are never destroyed, so the tests share one that isn't.
Bare& bare() {
    alignas(Bare) static unsigned char room[sizeof(Bare)];
    static Bare* const prefs = new (room) Bare;
    return *prefs;
}

TEST(PrefsTest, EachNameIsItsOwnText) {
    EXPECT_EQ(Prefs::READER_CACHE_MAX_SIZE_IN_MB, "READER_CACHE_MAX_SIZE_IN_MB");
    EXPECT_EQ(Prefs::READER_CACHE_TAIL_PERCENTAGE, "READER_CACHE_TAIL_PERCENTAGE");
    EXPECT_EQ(Prefs::READER_CACHE_THREADS, "READER_CACHE_THREADS");
    EXPECT_EQ(Prefs::PRODUCER_CACHE_NB_HEAD_FRAMES, "PRODUCER_CACHE_NB_HEAD_FRAMES");
    EXPECT_EQ(Prefs::PRODUCER_CACHE_NB_TAIL_FRAMES, "PRODUCER_CACHE_NB_TAIL_FRAMES");
    EXPECT_EQ(Prefs::AUDIO_CACHE_MAX_SIZE_IN_SECONDS, "AUDIO_CACHE_MAX_SIZE_IN_SECONDS");
    EXPECT_EQ(Prefs::GLOBAL_EXR_DECODER_THREADS, "GLOBAL_EXR_DECODER_THREADS");
    EXPECT_EQ(Prefs::GLOBAL_QD_USE_PBOS, "GLOBAL_QD_USE_PBOS");
    EXPECT_EQ(Prefs::QD_PREFETCH_IMAGES, "QD_PREFETCH_IMAGES");
    EXPECT_EQ(Prefs::QD_INTERACTIVE_MODE, "QD_INTERACTIVE_MODE");
    EXPECT_EQ(Prefs::URL_DOWNLOAD_THRESHOLD_IN_MB, "URL_DOWNLOAD_THRESHOLD_IN_MB");
    EXPECT_EQ(Prefs::RECORDER_FRAME_RATE, "RECORDER_FRAME_RATE");
    EXPECT_EQ(Prefs::RECORDER_MAX_PIXEL_COUNT, "RECORDER_MAX_PIXEL_COUNT");
}

TEST(PrefsTest, SettingIsNotImplemented) {
    Prefs& prefs = bare();
    EXPECT_EQ(static_cast<int>(prefs.setPref(Prefs::READER_CACHE_THREADS, 4).get()), 4);
    EXPECT_EQ(prefs.setPref("unknown", 4), Status::kNotImplementedFailure);
    EXPECT_EQ(prefs.setPref(String(), -1), Status::kNotImplementedFailure);
}

TEST(PrefsTest, GettingIsNotImplementedAndLeavesTheValue) {
    Prefs const& prefs = bare();
    for (String const& name : {Prefs::READER_CACHE_THREADS, String("unknown"), String()}) {
        int value = 17;
        EXPECT_EQ(static_cast<int>(prefs.getPref(name, value).get()), 4);
        EXPECT_EQ(value, 17);
    }
}

TEST(PrefsTest, WhatIsSetIsNotKept) {
    int value = 17;
    bare().setPref(Prefs::QD_INTERACTIVE_MODE, 1);
    EXPECT_TRUE(bare().getPref(Prefs::QD_INTERACTIVE_MODE, value).failure());
    EXPECT_EQ(value, 17);
}

TEST(PrefsTest, HasTheLayoutThatProgramsRelyOn) {
    EXPECT_TRUE(std::is_abstract_v<Prefs>);
    EXPECT_EQ(sizeof(Prefs), sizeof(void*));
    EXPECT_EQ(virtualSlot(&Prefs::setPref), 2U);
    EXPECT_EQ(virtualSlot(&Prefs::getPref), 3U);
    EXPECT_EQ(virtualSlot(&Prefs::getPrefNames), 4U);
}

TEST(PrefsDeathTest, DestructionStopsTheProcess) {
    EXPECT_DEATH({ Bare const prefs; }, "");
    EXPECT_DEATH(
        {
            Prefs* const prefs = new Bare;
            delete prefs;
        },
        "");
}

} // namespace
