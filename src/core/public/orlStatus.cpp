// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "orlStatus.h"

#include <array>
#include <cstddef>
#include <type_traits>

namespace ORL_0_81 {

static_assert(sizeof(Status) == 4, "a status is passed around like an integer");
static_assert(std::is_trivially_copyable_v<Status>, "a status is passed around like an integer");
static_assert(std::is_trivially_destructible_v<Status>, "a status is passed around like an integer");

namespace {

struct Row {
    Status::Type code;
    char const* text;
};

#define ORL_STATUS_ROW(code)                                                                                 \
    { Status::code, #code }

// Every code with its text, in the order of the codes: what is not here has no text. Two rows do not spell
// their enumerator; other programs match these texts, so they stay.
constexpr Row TABLE[] = {
    // 0x000
    ORL_STATUS_ROW(kSuccess),
    ORL_STATUS_ROW(kFailure),
    ORL_STATUS_ROW(kFileFailure),
    ORL_STATUS_ROW(kInvalidParamFailure),
    ORL_STATUS_ROW(kNotImplementedFailure),
    ORL_STATUS_ROW(kTimeOut),
    ORL_STATUS_ROW(kIndexOutOfRange),
    // 0x100
    ORL_STATUS_ROW(kPlayerNotInitialized),
    ORL_STATUS_ROW(kPlayerAlreadyProducing),
    ORL_STATUS_ROW(kPlayerInvalidFrameNumber),
    ORL_STATUS_ROW(kPlayerInvalidPlayParams),
    ORL_STATUS_ROW(kPlayerNoAvailableResources),
    ORL_STATUS_ROW(kPlayerExternalSegmentNotFound),
    ORL_STATUS_ROW(kPlayerInvalidFormat),
    ORL_STATUS_ROW(kPlayerRenderingFailure),
    ORL_STATUS_ROW(kPlayerGraphEngineGetVideoBufferFailure),
    ORL_STATUS_ROW(kPlayerInvalidComposition),
    ORL_STATUS_ROW(kPlayerSetCompositionFailure),
    ORL_STATUS_ROW(kPlayerUpdateCompositionFailure),
    ORL_STATUS_ROW(kPlayerUpdateCompositionMismatch),
    ORL_STATUS_ROW(kPlayerInvalidSource),
    ORL_STATUS_ROW(kPlayerSetVideoFrameRateFailure),
    ORL_STATUS_ROW(kPlayerNotProducing),
    ORL_STATUS_ROW(kPlayerAlreadyInitialized),
    ORL_STATUS_ROW(kPlayerNoCompositionToUpdate),
    {Status::kPlayerDownloadFailure, "kPlayerDownloadFailure,"},
    ORL_STATUS_ROW(kInvalidOperationWhileProducing),
    ORL_STATUS_ROW(kPlayerSetVideoFrameStepFailure),
    // 0x200
    ORL_STATUS_ROW(kInvalidComposition),
    ORL_STATUS_ROW(kCompositionNotFound),
    ORL_STATUS_ROW(kCompositionAlreadyExists),
    ORL_STATUS_ROW(kDmTreeJsonReadError),
    ORL_STATUS_ROW(kDmTreeJsonWriteError),
    ORL_STATUS_ROW(kOTIOJsonReadError),
    ORL_STATUS_ROW(kOTIOJsonWriteError),
    ORL_STATUS_ROW(kNoInsertionPointFound),
    ORL_STATUS_ROW(kSegmentNotFound),
    ORL_STATUS_ROW(kEffectNotFound),
    ORL_STATUS_ROW(kSegmentHasNoSource),
    ORL_STATUS_ROW(kInvalidBlendMode),
    ORL_STATUS_ROW(kOpacityOutOfRange),
    ORL_STATUS_ROW(kExistingSegmentError),
    ORL_STATUS_ROW(kSegmentAlreadyExists),
    ORL_STATUS_ROW(kMissingReelNode),
    ORL_STATUS_ROW(kMissingSourceNodeInput),
    ORL_STATUS_ROW(kMissingSourceNodeInputRes),
    ORL_STATUS_ROW(kInvalidReferenceBounds),
    ORL_STATUS_ROW(kInvalidBoundsStr),
    ORL_STATUS_ROW(kInvalidJsonType),
    ORL_STATUS_ROW(kMissingEntityInfo),
    ORL_STATUS_ROW(kMissingSlopeComponent),
    ORL_STATUS_ROW(kMissingOffsetComponent),
    ORL_STATUS_ROW(kMissingPowerComponent),
    ORL_STATUS_ROW(kCompositionPtrIsNotNull),
    ORL_STATUS_ROW(kInvalidCompareSettings),
    ORL_STATUS_ROW(kCompareSettingsPtrIsNotNull),
    ORL_STATUS_ROW(kCompositionNotSingleSource),
    ORL_STATUS_ROW(kInvalidCompareComposition),
    ORL_STATUS_ROW(kInvalidCompositionFrameRate),
    ORL_STATUS_ROW(kUnsupportedRational),
    ORL_STATUS_ROW(kUnsupportedFPSValue),
    ORL_STATUS_ROW(kDurationTooShort),
    ORL_STATUS_ROW(kInvalidRationalStr),
    ORL_STATUS_ROW(kInvalidTimeStr),
    ORL_STATUS_ROW(kExistingGapWithEffects),
    ORL_STATUS_ROW(kNegativeTimeNotSupported),
    ORL_STATUS_ROW(kTrackIndexOutOfRange),
    ORL_STATUS_ROW(kTrackNotEmpty),
    ORL_STATUS_ROW(kTrackInsertionFailure),
    ORL_STATUS_ROW(kTrackRemovalFailure),
    ORL_STATUS_ROW(kUndefinedTime),
    // 0x300
    ORL_STATUS_ROW(kSpigotConnectionFailure),
    ORL_STATUS_ROW(kSpigotDisconnectionFailure),
    ORL_STATUS_ROW(kSpigotClientInitFailure),
    ORL_STATUS_ROW(kSpigotTimeout),
    ORL_STATUS_ROW(kMediaLibConnectionFailure),
    ORL_STATUS_ROW(kMediaLibDisconnectionFailure),
    ORL_STATUS_ROW(kMediaLibraryNotConnected),
    ORL_STATUS_ROW(kJsonParsingError),
    ORL_STATUS_ROW(kJsonMergeFailure),
    ORL_STATUS_ROW(kJsonFieldNotFound),
    ORL_STATUS_ROW(kJsonTypeMismatch),
    ORL_STATUS_ROW(kJsonNonObjectKey),
    ORL_STATUS_ROW(kJsonUnhandled),
    ORL_STATUS_ROW(kCurlError),
    ORL_STATUS_ROW(kTrestleSSLError),
    ORL_STATUS_ROW(kCurlTransferCanceled),
    ORL_STATUS_ROW(kTrestleHttpError),
    ORL_STATUS_ROW(kUnhandledRequestType),
    ORL_STATUS_ROW(kInvalidTimelineId),
    ORL_STATUS_ROW(kNoMetaDataAvailable),
    ORL_STATUS_ROW(kInvalidMetaDataStream),
    ORL_STATUS_ROW(kUnknownNodeType),
    ORL_STATUS_ROW(kNodeNotFound),
    ORL_STATUS_ROW(kSpigotError),
    ORL_STATUS_ROW(kUnimplementedSpigotMethod),
    ORL_STATUS_ROW(kTrestleAuthenticationFailed),
    ORL_STATUS_ROW(kBadJsonRequest),
    ORL_STATUS_ROW(kBadJsonLayout),
    ORL_STATUS_ROW(kUhandledEntity),
    ORL_STATUS_ROW(kInvalidChild),
    ORL_STATUS_ROW(kInvalidMetadata),
    ORL_STATUS_ROW(kOpNotSupported),
    ORL_STATUS_ROW(kTrestleServerException),
    ORL_STATUS_ROW(kUnimplementedTrestleMethod),
    ORL_STATUS_ROW(kInvalidFilePath),
    ORL_STATUS_ROW(kInvalidProperty),
    ORL_STATUS_ROW(kReadOnlyNode),
    ORL_STATUS_ROW(kMixedTypeRequest),
    ORL_STATUS_ROW(kInvalidOTIOType),
    ORL_STATUS_ROW(kTrestleAPINotSupported),
    ORL_STATUS_ROW(kSettingsUnparseable),
    ORL_STATUS_ROW(kTrestlePerms),
    ORL_STATUS_ROW(kTrestleAgreement),
    ORL_STATUS_ROW(kHttpUnreachable),
    ORL_STATUS_ROW(kHttpForbidden),
    ORL_STATUS_ROW(kUnknownJob),
    ORL_STATUS_ROW(kUnknownJobTask),
    ORL_STATUS_ROW(kUnknownJobType),
    ORL_STATUS_ROW(kJobOutputInvalid),
    ORL_STATUS_ROW(kCreateJobInvalid),
    ORL_STATUS_ROW(kSetMetaDataJobInvalid),
    ORL_STATUS_ROW(kGetMetaDataJobInvalid),
    ORL_STATUS_ROW(kRunJobMetadataInvalid),
    ORL_STATUS_ROW(kUnhandledJobException),
    ORL_STATUS_ROW(kBadTrestleUploadResponse),
    ORL_STATUS_ROW(kNoFileFound),
    ORL_STATUS_ROW(kInvalidAnnotationFilename),
    ORL_STATUS_ROW(kInvalidComp),
    ORL_STATUS_ROW(kURLCacheHttpError),
    // 0x400
    ORL_STATUS_ROW(kDuplicateTokenAdded),
    ORL_STATUS_ROW(kMediaReaderUnavailable),
    ORL_STATUS_ROW(kExpiredUrl),
    // 0x500
    {Status::kProjectIdUndefined, "kProjectIdUndefined "},
    ORL_STATUS_ROW(kSequenceIdUndefined),
    ORL_STATUS_ROW(kShotIdUndefined),
    ORL_STATUS_ROW(kVersionIdUndefined),
    ORL_STATUS_ROW(kTimelineGroupIdUndefined),
    ORL_STATUS_ROW(kTimelineIdUndefined),
    ORL_STATUS_ROW(kNoEntityIdsDefined),
    ORL_STATUS_ROW(kInvalidProjectMetadata),
    ORL_STATUS_ROW(kInvalidSequenceMetadata),
    ORL_STATUS_ROW(kInvalidShotMetadata),
    ORL_STATUS_ROW(kInvalidVersionMetadata),
    ORL_STATUS_ROW(kInvalidNodeId),
    ORL_STATUS_ROW(kNoShotsFound),
    ORL_STATUS_ROW(kDmTreeFieldMissing),
    ORL_STATUS_ROW(kNoSuitableSource),
    // 0x600
    ORL_STATUS_ROW(kNotInCache),
    ORL_STATUS_ROW(kCacheEvictionAdvisorNotSet),
    ORL_STATUS_ROW(kExpiredCacheEntry),
    ORL_STATUS_ROW(kCacheFull),
    ORL_STATUS_ROW(kCacheEntryDeserialize),
    // 0x700
    ORL_STATUS_ROW(kAudioRendererOpenError),
    ORL_STATUS_ROW(kAudioRendererIOError),
    ORL_STATUS_ROW(kAudioRendererUnderrunError),
    ORL_STATUS_ROW(kAudioRendererInvalidFormat),
    ORL_STATUS_ROW(kAudioRendererInvalidDevice),
    ORL_STATUS_ROW(kAudioRendererFatalError),
    ORL_STATUS_ROW(kUnserializeable),
    ORL_STATUS_ROW(kWriteException),
    ORL_STATUS_ROW(kReadException),
    ORL_STATUS_ROW(kUnhandledVersion),
    ORL_STATUS_ROW(kMissingInstantiator),
    // 0x800
    ORL_STATUS_ROW(kUninitialized),
    ORL_STATUS_ROW(kInvalidInterfacePtr),
    ORL_STATUS_ROW(kAlreadyInitialized),
    ORL_STATUS_ROW(kErrorOpeningMediaFile),
    ORL_STATUS_ROW(kInvalidLayoutType),
    ORL_STATUS_ROW(kMultipleSourcesFound),
    ORL_STATUS_ROW(kSourceNotFound),
    ORL_STATUS_ROW(kUnsupportedFormat),
    ORL_STATUS_ROW(kUnsupportedCodec),
    ORL_STATUS_ROW(kIOAccess),
    ORL_STATUS_ROW(kVariableFps),
    // 0x900
    ORL_STATUS_ROW(kMediaWriterUnavailable),
    ORL_STATUS_ROW(kMissingFrameProvider),
    ORL_STATUS_ROW(kInvalidFilename),
    ORL_STATUS_ROW(kUnsupportedExtension),
    ORL_STATUS_ROW(kMissingMediaWriterRequest),
    ORL_STATUS_ROW(kMissingFilmStripRequest),
    ORL_STATUS_ROW(kWriteFailure),
    // 0xA00
    ORL_STATUS_ROW(kAsyncLoggerAlreadyStarted),
    ORL_STATUS_ROW(kAsyncLoggerNotStarted),
    ORL_STATUS_ROW(kLogAccessError),
    ORL_STATUS_ROW(kNoLogFileExists),
    ORL_STATUS_ROW(kFamilyNameTooLarge),
    // 0xB00
    ORL_STATUS_ROW(kHashFailure),
    ORL_STATUS_ROW(kCipherFailure),
    ORL_STATUS_ROW(kInitVectorFailure),
    ORL_STATUS_ROW(kEncryptFailure),
    ORL_STATUS_ROW(kDecryptFailure),
    // 0xC00
    ORL_STATUS_ROW(kIllegalOperationWhilePlaying),
    ORL_STATUS_ROW(kNoAudioPlayback),
    ORL_STATUS_ROW(kUnimplementedPlaybackStrategy),
    ORL_STATUS_ROW(kUnimplementedPlayMode),
    // 0xD00
    ORL_STATUS_ROW(kDirectoryNotFound),
    ORL_STATUS_ROW(kFileNotFound),
    ORL_STATUS_ROW(kNoFilenamesFound),
    ORL_STATUS_ROW(kNoSuitableSequenceNameFound),
    ORL_STATUS_ROW(kRegexException),
    // 0xE00
    ORL_STATUS_ROW(kIllegalOperationWhileRecordering),
    ORL_STATUS_ROW(kNoFffmpegExecutableDefined),
    ORL_STATUS_ROW(kCannotStopRecording),
    ORL_STATUS_ROW(kCannotGenerateRecordingFilename),
    ORL_STATUS_ROW(kRecordingFileTooShort),
    ORL_STATUS_ROW(kNoAudioRecordingAuthorization),
    ORL_STATUS_ROW(kNoVideoRecordingAuthorization),
    ORL_STATUS_ROW(kPendingRecordingAuthorization),
};

#undef ORL_STATUS_ROW

constexpr std::size_t ROW_COUNT = sizeof(TABLE) / sizeof(TABLE[0]);

// A family owns the codes that differ in their lowest byte only.
constexpr unsigned int familyOf(Status::Type code) { return static_cast<unsigned int>(code) >> 8U; }
constexpr unsigned int placeOf(Status::Type code) { return static_cast<unsigned int>(code) & 0xFFU; }

constexpr std::size_t FAMILY_COUNT = familyOf(TABLE[ROW_COUNT - 1].code) + 1;

// The rows of a family: where they begin in the table, and how many there are.
struct Family {
    std::size_t first = 0;
    std::size_t count = 0;
};

constexpr std::array<Family, FAMILY_COUNT> findFamilies() {
    std::array<Family, FAMILY_COUNT> families{};
    for (std::size_t row = 0; row < ROW_COUNT; ++row) {
        Family& family = families[familyOf(TABLE[row].code)];
        if (family.count == 0) {
            family.first = row;
        }
        ++family.count;
    }
    return families;
}

constexpr std::array<Family, FAMILY_COUNT> FAMILIES = findFamilies();

// The lookup computes a row from a code, so every row must stand where its code says.
constexpr bool isInPlace() {
    for (std::size_t row = 0; row < ROW_COUNT; ++row) {
        Status::Type const code = TABLE[row].code;
        if (FAMILIES[familyOf(code)].first + placeOf(code) != row) {
            return false;
        }
    }
    return true;
}

static_assert(ROW_COUNT == 209, "the vocabulary has 209 codes");
static_assert(isInPlace(), "a family's codes run upward from its base without a hole");

} // namespace

char const* Status::getStr() const noexcept {
    unsigned int const family = familyOf(m_code); // beyond the last one for a negative code
    unsigned int const place = placeOf(m_code);
    if (family >= FAMILY_COUNT || place >= FAMILIES[family].count) {
        return "";
    }
    return TABLE[FAMILIES[family].first + place].text;
}

} // namespace ORL_0_81
