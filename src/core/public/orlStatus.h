// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#ifndef ORL_STATUS_H
#define ORL_STATUS_H

#include "orlExport.h"

/// \file
/// The one error vocabulary of the toolkit: what almost every operation of this library and of its siblings
/// returns. One numbering serves them all, so that a code travels through any layer unchanged.

namespace ORL_0_81 {

/// A code of Status::Type, passed and returned by value like an integer.
///
///     Status const status = rate.fromJson(text);
///     if (!status) {
///         report(status.getStr());
///     }
///
/// Success is a matter of sign: a code of 0 or below means that all went well. Negative codes are unassigned,
/// yet they are no failures, so testing get() against kSuccess is another question than success().
///
/// Nothing here throws or allocates. A Status has no shared state: different objects may be used on
/// different threads, one object under the usual rule of one writer or many readers.
class ORL_CORE_EXPORT Status {
public:
    /// Every code of the toolkit. This library produces only a few of them itself.
    ///
    /// The codes fall into families. Each family owns 256 values, from a multiple of 0x100 on, and its codes
    /// run upward from there without a hole; all other values, the negative ones included, are unassigned.
    /// The names are a vocabulary that other libraries share, so they stay as they are spelled.
    enum Type : int {
        // General: success, and failures that say no more than what kind of thing went wrong.
        kSuccess = 0x000,
        kFailure,
        kFileFailure,
        kInvalidParamFailure,
        kNotImplementedFailure,
        kTimeOut,
        kIndexOutOfRange,

        // Player: its set-up, its production state, its sources and the rendering of frames.
        kPlayerNotInitialized = 0x100,
        kPlayerAlreadyProducing,
        kPlayerInvalidFrameNumber,
        kPlayerInvalidPlayParams,
        kPlayerNoAvailableResources,
        kPlayerExternalSegmentNotFound,
        kPlayerInvalidFormat,
        kPlayerRenderingFailure,
        kPlayerGraphEngineGetVideoBufferFailure,
        kPlayerInvalidComposition,
        kPlayerSetCompositionFailure,
        kPlayerUpdateCompositionFailure,
        kPlayerUpdateCompositionMismatch,
        kPlayerInvalidSource,
        kPlayerSetVideoFrameRateFailure,
        kPlayerNotProducing,
        kPlayerAlreadyInitialized,
        kPlayerNoCompositionToUpdate,
        kPlayerDownloadFailure,
        kInvalidOperationWhileProducing,
        kPlayerSetVideoFrameStepFailure,

        // Composition and timeline: documents, segments, tracks, effects, compare settings, and the texts and
        // values of rates, times and bounds. The value classes and the document readers of this library use
        // it.
        kInvalidComposition = 0x200,
        kCompositionNotFound,
        kCompositionAlreadyExists,
        kDmTreeJsonReadError,
        kDmTreeJsonWriteError,
        kOTIOJsonReadError,
        kOTIOJsonWriteError,
        kNoInsertionPointFound,
        kSegmentNotFound,
        kEffectNotFound,
        kSegmentHasNoSource,
        kInvalidBlendMode,
        kOpacityOutOfRange,
        kExistingSegmentError,
        kSegmentAlreadyExists,
        kMissingReelNode,
        kMissingSourceNodeInput,
        kMissingSourceNodeInputRes,
        kInvalidReferenceBounds,
        kInvalidBoundsStr,
        kInvalidJsonType,
        kMissingEntityInfo,
        kMissingSlopeComponent,
        kMissingOffsetComponent,
        kMissingPowerComponent,
        kCompositionPtrIsNotNull,
        kInvalidCompareSettings,
        kCompareSettingsPtrIsNotNull,
        kCompositionNotSingleSource,
        kInvalidCompareComposition,
        kInvalidCompositionFrameRate,
        kUnsupportedRational,
        kUnsupportedFPSValue,
        kDurationTooShort,
        kInvalidRationalStr,
        kInvalidTimeStr,
        kExistingGapWithEffects,
        kNegativeTimeNotSupported,
        kTrackIndexOutOfRange,
        kTrackNotEmpty,
        kTrackInsertionFailure,
        kTrackRemovalFailure,
        kUndefinedTime,

        // Services, JSON, network, jobs and nodes: connections to servers, what they answer, the jobs they
        // run.
        kSpigotConnectionFailure = 0x300,
        kSpigotDisconnectionFailure,
        kSpigotClientInitFailure,
        kSpigotTimeout,
        kMediaLibConnectionFailure,
        kMediaLibDisconnectionFailure,
        kMediaLibraryNotConnected,
        kJsonParsingError,
        kJsonMergeFailure,
        kJsonFieldNotFound,
        kJsonTypeMismatch,
        kJsonNonObjectKey,
        kJsonUnhandled,
        kCurlError,
        kTrestleSSLError,
        kCurlTransferCanceled,
        kTrestleHttpError,
        kUnhandledRequestType,
        kInvalidTimelineId,
        kNoMetaDataAvailable,
        kInvalidMetaDataStream,
        kUnknownNodeType,
        kNodeNotFound,
        kSpigotError,
        kUnimplementedSpigotMethod,
        kTrestleAuthenticationFailed,
        kBadJsonRequest,
        kBadJsonLayout,
        kUhandledEntity,
        kInvalidChild,
        kInvalidMetadata,
        kOpNotSupported,
        kTrestleServerException,
        kUnimplementedTrestleMethod,
        kInvalidFilePath,
        kInvalidProperty,
        kReadOnlyNode,
        kMixedTypeRequest,
        kInvalidOTIOType,
        kTrestleAPINotSupported,
        kSettingsUnparseable,
        kTrestlePerms,
        kTrestleAgreement,
        kHttpUnreachable,
        kHttpForbidden,
        kUnknownJob,
        kUnknownJobTask,
        kUnknownJobType,
        kJobOutputInvalid,
        kCreateJobInvalid,
        kSetMetaDataJobInvalid,
        kGetMetaDataJobInvalid,
        kRunJobMetadataInvalid,
        kUnhandledJobException,
        kBadTrestleUploadResponse,
        kNoFileFound,
        kInvalidAnnotationFilename,
        kInvalidComp,
        kURLCacheHttpError,

        // Tokens, media reader and URLs.
        kDuplicateTokenAdded = 0x400,
        kMediaReaderUnavailable,
        kExpiredUrl,

        // Entity identifiers and tracking metadata: which project, sequence, shot or version is meant.
        kProjectIdUndefined = 0x500,
        kSequenceIdUndefined,
        kShotIdUndefined,
        kVersionIdUndefined,
        kTimelineGroupIdUndefined,
        kTimelineIdUndefined,
        kNoEntityIdsDefined,
        kInvalidProjectMetadata,
        kInvalidSequenceMetadata,
        kInvalidShotMetadata,
        kInvalidVersionMetadata,
        kInvalidNodeId,
        kNoShotsFound,
        kDmTreeFieldMissing,
        kNoSuitableSource,

        // Cache.
        kNotInCache = 0x600,
        kCacheEvictionAdvisorNotSet,
        kExpiredCacheEntry,
        kCacheFull,
        kCacheEntryDeserialize,

        // Audio renderer and serialisation.
        kAudioRendererOpenError = 0x700,
        kAudioRendererIOError,
        kAudioRendererUnderrunError,
        kAudioRendererInvalidFormat,
        kAudioRendererInvalidDevice,
        kAudioRendererFatalError,
        kUnserializeable,
        kWriteException,
        kReadException,
        kUnhandledVersion,
        kMissingInstantiator,

        // Media reader and file opening.
        kUninitialized = 0x800,
        kInvalidInterfacePtr,
        kAlreadyInitialized,
        kErrorOpeningMediaFile,
        kInvalidLayoutType,
        kMultipleSourcesFound,
        kSourceNotFound,
        kUnsupportedFormat,
        kUnsupportedCodec,
        kIOAccess,
        kVariableFps,

        // Media writer.
        kMediaWriterUnavailable = 0x900,
        kMissingFrameProvider,
        kInvalidFilename,
        kUnsupportedExtension,
        kMissingMediaWriterRequest,
        kMissingFilmStripRequest,
        kWriteFailure,

        // Logging.
        kAsyncLoggerAlreadyStarted = 0xA00,
        kAsyncLoggerNotStarted,
        kLogAccessError,
        kNoLogFileExists,
        kFamilyNameTooLarge,

        // Cryptography: hashes, ciphers and their initial vectors.
        kHashFailure = 0xB00,
        kCipherFailure,
        kInitVectorFailure,
        kEncryptFailure,
        kDecryptFailure,

        // Playback.
        kIllegalOperationWhilePlaying = 0xC00,
        kNoAudioPlayback,
        kUnimplementedPlaybackStrategy,
        kUnimplementedPlayMode,

        // Files and sequences: directories, files, the detection of numbered file names.
        kDirectoryNotFound = 0xD00,
        kFileNotFound,
        kNoFilenamesFound,
        kNoSuitableSequenceNameFound,
        kRegexException,

        // Recording: pictures and sound, and the permissions that this needs.
        kIllegalOperationWhileRecordering = 0xE00,
        kNoFffmpegExecutableDefined,
        kCannotStopRecording,
        kCannotGenerateRecordingFilename,
        kRecordingFileTooShort,
        kNoAudioRecordingAuthorization,
        kNoVideoRecordingAuthorization,
        kPendingRecordingAuthorization,
    };

    /// kSuccess.
    constexpr Status() noexcept : m_code(kSuccess) {}

    /// Any value of an int is accepted, assigned or not.
    constexpr Status(Type code) noexcept : m_code(code) {}

    /// Stores the code, whatever the object held before.
    constexpr Status& operator=(Type code) noexcept {
        m_code = code;
        return *this;
    }

    /// Stores the code, whatever the object held before.
    constexpr void set(Type code) noexcept { m_code = code; }

    /// The code as it was stored.
    constexpr Type get() const noexcept { return m_code; }

    /// The name of the code, such as "kTimeOut", in constant time.
    ///
    /// Two names carry a character too many, and readers of logs rely on it: kPlayerDownloadFailure ends with
    /// a comma, kProjectIdUndefined with a blank.
    ///
    /// \returns static text that the caller does not free, and never null; "" for an unassigned code.
    char const* getStr() const noexcept;

    /// True for a code of 0 or below.
    constexpr bool success() const noexcept { return m_code <= 0; }

    /// True for a code above 0; always the opposite of success().
    constexpr bool failure() const noexcept { return m_code > 0; }

    /// The same as success(). Implicit, so that an operation's result can stand where a condition is
    /// expected.
    constexpr operator bool() const noexcept { return success(); }

    /// @{
    /// Compare the codes themselves: two successes of different codes are not equal.
    constexpr bool operator==(Status const& other) const noexcept { return m_code == other.m_code; }
    constexpr bool operator!=(Status const& other) const noexcept { return m_code != other.m_code; }
    constexpr bool operator==(Type code) const noexcept { return m_code == code; }
    constexpr bool operator!=(Type code) const noexcept { return m_code != code; }
    /// @}

private:
    Type m_code;
};

/// The same comparison with the bare code on the left.
ORL_CORE_EXPORT constexpr bool operator==(Status::Type const& code, Status const& status) noexcept {
    return status.get() == code;
}

/// The same comparison with the bare code on the left.
ORL_CORE_EXPORT constexpr bool operator!=(Status::Type const& code, Status const& status) noexcept {
    return status.get() != code;
}

} // namespace ORL_0_81

#endif // ORL_STATUS_H
