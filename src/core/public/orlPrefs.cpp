// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "orlPrefs.h"

#include <cstdlib>

namespace ORL_0_81 {

#define ORL_DEFINE_PREF(name) String const Prefs::name(#name)

ORL_DEFINE_PREF(READER_CACHE_MAX_SIZE_IN_MB);
ORL_DEFINE_PREF(READER_CACHE_TAIL_PERCENTAGE);
ORL_DEFINE_PREF(READER_CACHE_THREADS);
ORL_DEFINE_PREF(PRODUCER_CACHE_NB_HEAD_FRAMES);
ORL_DEFINE_PREF(PRODUCER_CACHE_NB_TAIL_FRAMES);
ORL_DEFINE_PREF(AUDIO_CACHE_MAX_SIZE_IN_SECONDS);
ORL_DEFINE_PREF(GLOBAL_EXR_DECODER_THREADS);
ORL_DEFINE_PREF(GLOBAL_QD_USE_PBOS);
ORL_DEFINE_PREF(QD_PREFETCH_IMAGES);
ORL_DEFINE_PREF(QD_INTERACTIVE_MODE);
ORL_DEFINE_PREF(URL_DOWNLOAD_THRESHOLD_IN_MB);
ORL_DEFINE_PREF(RECORDER_FRAME_RATE);
ORL_DEFINE_PREF(RECORDER_MAX_PIXEL_COUNT);

#undef ORL_DEFINE_PREF

Prefs::Prefs() = default;

Prefs::~Prefs() { std::abort(); }

Status Prefs::setPref(String const&, int) { return Status::kNotImplementedFailure; }

Status Prefs::getPref(String const&, int&) const { return Status::kNotImplementedFailure; }

} // namespace ORL_0_81
