// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#ifndef ORL_PREFS_H
#define ORL_PREFS_H

#include "orlExport.h"
#include "orlStatus.h"
#include "orlString.h"
#include "orlVector.h"

namespace ORL_0_81 {

/// The names of the toolkit's preferences, and the shape of the operations that read and write them.
///
/// This library stores no preference and reads none, and knows no default. A preference works only through a
/// derived class that overrides both setPref() and getPref(). All preferences are integers, switches (0 or 1)
/// among them.
///
/// How an implementation is found, and what its threads may do, is its own affair.
class ORL_CORE_EXPORT Prefs {
public:
    /// \name Names
    /// Each text is the constant's own name. They exist while the library is loaded; a static initialiser of
    /// another library may run before them.
    /// @{

    /// Limit of the reader cache, in megabytes.
    static String const READER_CACHE_MAX_SIZE_IN_MB;
    /// Share of the reader cache for the frames behind the play position, in percent.
    static String const READER_CACHE_TAIL_PERCENTAGE;
    /// Number of the reader cache's threads.
    static String const READER_CACHE_THREADS;
    /// Frames that the producer cache holds ahead.
    static String const PRODUCER_CACHE_NB_HEAD_FRAMES;
    /// Frames that the producer cache holds behind.
    static String const PRODUCER_CACHE_NB_TAIL_FRAMES;
    /// Limit of the audio cache, in seconds.
    static String const AUDIO_CACHE_MAX_SIZE_IN_SECONDS;
    /// Number of threads that decode EXR files, for the whole process.
    static String const GLOBAL_EXR_DECODER_THREADS;
    /// Whether the playback engine uses pixel buffer objects, for the whole process.
    static String const GLOBAL_QD_USE_PBOS;
    /// Whether the playback engine fetches images in advance.
    static String const QD_PREFETCH_IMAGES;
    /// Whether the playback engine is in its interactive mode.
    static String const QD_INTERACTIVE_MODE;
    /// Limit of the size of downloads, in megabytes.
    static String const URL_DOWNLOAD_THRESHOLD_IN_MB;
    /// The recorder's frame rate.
    static String const RECORDER_FRAME_RATE;
    /// Upper limit of the pixels of a recorded frame.
    static String const RECORDER_MAX_PIXEL_COUNT;

    /// @}

    Prefs();
    Prefs(Prefs const& other) = delete;
    Prefs& operator=(Prefs const& other) = delete;

    /// Aborts the process: preferences are made once and never destroyed. So a derived constructor must not
    /// throw.
    virtual ~Prefs();

    /// Sets a preference. Here: does nothing.
    ///
    /// \returns here kNotImplementedFailure, for any name.
    virtual Status setPref(String const& name, int value);

    /// Reads a preference into `value`. Here: leaves `value` as it is.
    ///
    /// \returns here kNotImplementedFailure, for any name.
    virtual Status getPref(String const& name, int& value) const;

    /// Appends the names of the preferences that the implementation knows to `names`.
    virtual Status getPrefNames(Vector<String>& names) const = 0;
};

} // namespace ORL_0_81

#endif // ORL_PREFS_H
