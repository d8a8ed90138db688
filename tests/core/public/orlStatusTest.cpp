// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include <orlStatus.h>

#include <gtest/gtest.h>

#include <climits>
#include <set>
#include <string>
#include <type_traits>

namespace {

using namespace ORL_0_81;

Status statusOf(int code) { return Status(static_cast<Status::Type>(code)); }

struct Row {
    Status::Type code;
    int value;
    char const* text;
};

Row const ROWS[] = {
    {Status::kSuccess, 0, "kSuccess"},
    {Status::kFailure, 1, "kFailure"},
    {Status::kFileFailure, 2, "kFileFailure"},
    {Status::kInvalidParamFailure, 3, "kInvalidParamFailure"},
    {Status::kNotImplementedFailure, 4, "kNotImplementedFailure"},
    {Status::kTimeOut, 5, "kTimeOut"},
    {Status::kIndexOutOfRange, 6, "kIndexOutOfRange"},
    {Status::kPlayerNotInitialized, 256, "kPlayerNotInitialized"},
    {Status::kPlayerAlreadyProducing, 257, "kPlayerAlreadyProducing"},
    {Status::kPlayerInvalidFrameNumber, 258, "kPlayerInvalidFrameNumber"},
    {Status::kPlayerInvalidPlayParams, 259, "kPlayerInvalidPlayParams"},
    {Status::kPlayerNoAvailableResources, 260, "kPlayerNoAvailableResources"},
    {Status::kPlayerExternalSegmentNotFound, 261, "kPlayerExternalSegmentNotFound"},
    {Status::kPlayerInvalidFormat, 262, "kPlayerInvalidFormat"},
    {Status::kPlayerRenderingFailure, 263, "kPlayerRenderingFailure"},
    {Status::kPlayerGraphEngineGetVideoBufferFailure, 264, "kPlayerGraphEngineGetVideoBufferFailure"},
    {Status::kPlayerInvalidComposition, 265, "kPlayerInvalidComposition"},
    {Status::kPlayerSetCompositionFailure, 266, "kPlayerSetCompositionFailure"},
    {Status::kPlayerUpdateCompositionFailure, 267, "kPlayerUpdateCompositionFailure"},
    {Status::kPlayerUpdateCompositionMismatch, 268, "kPlayerUpdateCompositionMismatch"},
    {Status::kPlayerInvalidSource, 269, "kPlayerInvalidSource"},
    {Status::kPlayerSetVideoFrameRateFailure, 270, "kPlayerSetVideoFrameRateFailure"},
    {Status::kPlayerNotProducing, 271, "kPlayerNotProducing"},
    {Status::kPlayerAlreadyInitialized, 272, "kPlayerAlreadyInitialized"},
    {Status::kPlayerNoCompositionToUpdate, 273, "kPlayerNoCompositionToUpdate"},
    {Status::kPlayerDownloadFailure, 274, "kPlayerDownloadFailure,"},
    {Status::kInvalidOperationWhileProducing, 275, "kInvalidOperationWhileProducing"},
    {Status::kPlayerSetVideoFrameStepFailure, 276, "kPlayerSetVideoFrameStepFailure"},
    {Status::kInvalidComposition, 512, "kInvalidComposition"},
    {Status::kCompositionNotFound, 513, "kCompositionNotFound"},
    {Status::kCompositionAlreadyExists, 514, "kCompositionAlreadyExists"},
    {Status::kDmTreeJsonReadError, 515, "kDmTreeJsonReadError"},
    {Status::kDmTreeJsonWriteError, 516, "kDmTreeJsonWriteError"},
    {Status::kOTIOJsonReadError, 517, "kOTIOJsonReadError"},
    {Status::kOTIOJsonWriteError, 518, "kOTIOJsonWriteError"},
    {Status::kNoInsertionPointFound, 519, "kNoInsertionPointFound"},
    {Status::kSegmentNotFound, 520, "kSegmentNotFound"},
    {Status::kEffectNotFound, 521, "kEffectNotFound"},
    {Status::kSegmentHasNoSource, 522, "kSegmentHasNoSource"},
    {Status::kInvalidBlendMode, 523, "kInvalidBlendMode"},
    {Status::kOpacityOutOfRange, 524, "kOpacityOutOfRange"},
    {Status::kExistingSegmentError, 525, "kExistingSegmentError"},
    {Status::kSegmentAlreadyExists, 526, "kSegmentAlreadyExists"},
    {Status::kMissingReelNode, 527, "kMissingReelNode"},
    {Status::kMissingSourceNodeInput, 528, "kMissingSourceNodeInput"},
    {Status::kMissingSourceNodeInputRes, 529, "kMissingSourceNodeInputRes"},
    {Status::kInvalidReferenceBounds, 530, "kInvalidReferenceBounds"},
    {Status::kInvalidBoundsStr, 531, "kInvalidBoundsStr"},
    {Status::kInvalidJsonType, 532, "kInvalidJsonType"},
    {Status::kMissingEntityInfo, 533, "kMissingEntityInfo"},
    {Status::kMissingSlopeComponent, 534, "kMissingSlopeComponent"},
    {Status::kMissingOffsetComponent, 535, "kMissingOffsetComponent"},
    {Status::kMissingPowerComponent, 536, "kMissingPowerComponent"},
    {Status::kCompositionPtrIsNotNull, 537, "kCompositionPtrIsNotNull"},
    {Status::kInvalidCompareSettings, 538, "kInvalidCompareSettings"},
    {Status::kCompareSettingsPtrIsNotNull, 539, "kCompareSettingsPtrIsNotNull"},
    {Status::kCompositionNotSingleSource, 540, "kCompositionNotSingleSource"},
    {Status::kInvalidCompareComposition, 541, "kInvalidCompareComposition"},
    {Status::kInvalidCompositionFrameRate, 542, "kInvalidCompositionFrameRate"},
    {Status::kUnsupportedRational, 543, "kUnsupportedRational"},
    {Status::kUnsupportedFPSValue, 544, "kUnsupportedFPSValue"},
    {Status::kDurationTooShort, 545, "kDurationTooShort"},
    {Status::kInvalidRationalStr, 546, "kInvalidRationalStr"},
    {Status::kInvalidTimeStr, 547, "kInvalidTimeStr"},
    {Status::kExistingGapWithEffects, 548, "kExistingGapWithEffects"},
    {Status::kNegativeTimeNotSupported, 549, "kNegativeTimeNotSupported"},
    {Status::kTrackIndexOutOfRange, 550, "kTrackIndexOutOfRange"},
    {Status::kTrackNotEmpty, 551, "kTrackNotEmpty"},
    {Status::kTrackInsertionFailure, 552, "kTrackInsertionFailure"},
    {Status::kTrackRemovalFailure, 553, "kTrackRemovalFailure"},
    {Status::kUndefinedTime, 554, "kUndefinedTime"},
    {Status::kSpigotConnectionFailure, 768, "kSpigotConnectionFailure"},
    {Status::kSpigotDisconnectionFailure, 769, "kSpigotDisconnectionFailure"},
    {Status::kSpigotClientInitFailure, 770, "kSpigotClientInitFailure"},
    {Status::kSpigotTimeout, 771, "kSpigotTimeout"},
    {Status::kMediaLibConnectionFailure, 772, "kMediaLibConnectionFailure"},
    {Status::kMediaLibDisconnectionFailure, 773, "kMediaLibDisconnectionFailure"},
    {Status::kMediaLibraryNotConnected, 774, "kMediaLibraryNotConnected"},
    {Status::kJsonParsingError, 775, "kJsonParsingError"},
    {Status::kJsonMergeFailure, 776, "kJsonMergeFailure"},
    {Status::kJsonFieldNotFound, 777, "kJsonFieldNotFound"},
    {Status::kJsonTypeMismatch, 778, "kJsonTypeMismatch"},
    {Status::kJsonNonObjectKey, 779, "kJsonNonObjectKey"},
    {Status::kJsonUnhandled, 780, "kJsonUnhandled"},
    {Status::kCurlError, 781, "kCurlError"},
    {Status::kTrestleSSLError, 782, "kTrestleSSLError"},
    {Status::kCurlTransferCanceled, 783, "kCurlTransferCanceled"},
    {Status::kTrestleHttpError, 784, "kTrestleHttpError"},
    {Status::kUnhandledRequestType, 785, "kUnhandledRequestType"},
    {Status::kInvalidTimelineId, 786, "kInvalidTimelineId"},
    {Status::kNoMetaDataAvailable, 787, "kNoMetaDataAvailable"},
    {Status::kInvalidMetaDataStream, 788, "kInvalidMetaDataStream"},
    {Status::kUnknownNodeType, 789, "kUnknownNodeType"},
    {Status::kNodeNotFound, 790, "kNodeNotFound"},
    {Status::kSpigotError, 791, "kSpigotError"},
    {Status::kUnimplementedSpigotMethod, 792, "kUnimplementedSpigotMethod"},
    {Status::kTrestleAuthenticationFailed, 793, "kTrestleAuthenticationFailed"},
    {Status::kBadJsonRequest, 794, "kBadJsonRequest"},
    {Status::kBadJsonLayout, 795, "kBadJsonLayout"},
    {Status::kUhandledEntity, 796, "kUhandledEntity"},
    {Status::kInvalidChild, 797, "kInvalidChild"},
    {Status::kInvalidMetadata, 798, "kInvalidMetadata"},
    {Status::kOpNotSupported, 799, "kOpNotSupported"},
    {Status::kTrestleServerException, 800, "kTrestleServerException"},
    {Status::kUnimplementedTrestleMethod, 801, "kUnimplementedTrestleMethod"},
    {Status::kInvalidFilePath, 802, "kInvalidFilePath"},
    {Status::kInvalidProperty, 803, "kInvalidProperty"},
    {Status::kReadOnlyNode, 804, "kReadOnlyNode"},
    {Status::kMixedTypeRequest, 805, "kMixedTypeRequest"},
    {Status::kInvalidOTIOType, 806, "kInvalidOTIOType"},
    {Status::kTrestleAPINotSupported, 807, "kTrestleAPINotSupported"},
    {Status::kSettingsUnparseable, 808, "kSettingsUnparseable"},
    {Status::kTrestlePerms, 809, "kTrestlePerms"},
    {Status::kTrestleAgreement, 810, "kTrestleAgreement"},
    {Status::kHttpUnreachable, 811, "kHttpUnreachable"},
    {Status::kHttpForbidden, 812, "kHttpForbidden"},
    {Status::kUnknownJob, 813, "kUnknownJob"},
    {Status::kUnknownJobTask, 814, "kUnknownJobTask"},
    {Status::kUnknownJobType, 815, "kUnknownJobType"},
    {Status::kJobOutputInvalid, 816, "kJobOutputInvalid"},
    {Status::kCreateJobInvalid, 817, "kCreateJobInvalid"},
    {Status::kSetMetaDataJobInvalid, 818, "kSetMetaDataJobInvalid"},
    {Status::kGetMetaDataJobInvalid, 819, "kGetMetaDataJobInvalid"},
    {Status::kRunJobMetadataInvalid, 820, "kRunJobMetadataInvalid"},
    {Status::kUnhandledJobException, 821, "kUnhandledJobException"},
    {Status::kBadTrestleUploadResponse, 822, "kBadTrestleUploadResponse"},
    {Status::kNoFileFound, 823, "kNoFileFound"},
    {Status::kInvalidAnnotationFilename, 824, "kInvalidAnnotationFilename"},
    {Status::kInvalidComp, 825, "kInvalidComp"},
    {Status::kURLCacheHttpError, 826, "kURLCacheHttpError"},
    {Status::kDuplicateTokenAdded, 1024, "kDuplicateTokenAdded"},
    {Status::kMediaReaderUnavailable, 1025, "kMediaReaderUnavailable"},
    {Status::kExpiredUrl, 1026, "kExpiredUrl"},
    {Status::kProjectIdUndefined, 1280, "kProjectIdUndefined "},
    {Status::kSequenceIdUndefined, 1281, "kSequenceIdUndefined"},
    {Status::kShotIdUndefined, 1282, "kShotIdUndefined"},
    {Status::kVersionIdUndefined, 1283, "kVersionIdUndefined"},
    {Status::kTimelineGroupIdUndefined, 1284, "kTimelineGroupIdUndefined"},
    {Status::kTimelineIdUndefined, 1285, "kTimelineIdUndefined"},
    {Status::kNoEntityIdsDefined, 1286, "kNoEntityIdsDefined"},
    {Status::kInvalidProjectMetadata, 1287, "kInvalidProjectMetadata"},
    {Status::kInvalidSequenceMetadata, 1288, "kInvalidSequenceMetadata"},
    {Status::kInvalidShotMetadata, 1289, "kInvalidShotMetadata"},
    {Status::kInvalidVersionMetadata, 1290, "kInvalidVersionMetadata"},
    {Status::kInvalidNodeId, 1291, "kInvalidNodeId"},
    {Status::kNoShotsFound, 1292, "kNoShotsFound"},
    {Status::kDmTreeFieldMissing, 1293, "kDmTreeFieldMissing"},
    {Status::kNoSuitableSource, 1294, "kNoSuitableSource"},
    {Status::kNotInCache, 1536, "kNotInCache"},
    {Status::kCacheEvictionAdvisorNotSet, 1537, "kCacheEvictionAdvisorNotSet"},
    {Status::kExpiredCacheEntry, 1538, "kExpiredCacheEntry"},
    {Status::kCacheFull, 1539, "kCacheFull"},
    {Status::kCacheEntryDeserialize, 1540, "kCacheEntryDeserialize"},
    {Status::kAudioRendererOpenError, 1792, "kAudioRendererOpenError"},
    {Status::kAudioRendererIOError, 1793, "kAudioRendererIOError"},
    {Status::kAudioRendererUnderrunError, 1794, "kAudioRendererUnderrunError"},
    {Status::kAudioRendererInvalidFormat, 1795, "kAudioRendererInvalidFormat"},
    {Status::kAudioRendererInvalidDevice, 1796, "kAudioRendererInvalidDevice"},
    {Status::kAudioRendererFatalError, 1797, "kAudioRendererFatalError"},
    {Status::kUnserializeable, 1798, "kUnserializeable"},
    {Status::kWriteException, 1799, "kWriteException"},
    {Status::kReadException, 1800, "kReadException"},
    {Status::kUnhandledVersion, 1801, "kUnhandledVersion"},
    {Status::kMissingInstantiator, 1802, "kMissingInstantiator"},
    {Status::kUninitialized, 2048, "kUninitialized"},
    {Status::kInvalidInterfacePtr, 2049, "kInvalidInterfacePtr"},
    {Status::kAlreadyInitialized, 2050, "kAlreadyInitialized"},
    {Status::kErrorOpeningMediaFile, 2051, "kErrorOpeningMediaFile"},
    {Status::kInvalidLayoutType, 2052, "kInvalidLayoutType"},
    {Status::kMultipleSourcesFound, 2053, "kMultipleSourcesFound"},
    {Status::kSourceNotFound, 2054, "kSourceNotFound"},
    {Status::kUnsupportedFormat, 2055, "kUnsupportedFormat"},
    {Status::kUnsupportedCodec, 2056, "kUnsupportedCodec"},
    {Status::kIOAccess, 2057, "kIOAccess"},
    {Status::kVariableFps, 2058, "kVariableFps"},
    {Status::kMediaWriterUnavailable, 2304, "kMediaWriterUnavailable"},
    {Status::kMissingFrameProvider, 2305, "kMissingFrameProvider"},
    {Status::kInvalidFilename, 2306, "kInvalidFilename"},
    {Status::kUnsupportedExtension, 2307, "kUnsupportedExtension"},
    {Status::kMissingMediaWriterRequest, 2308, "kMissingMediaWriterRequest"},
    {Status::kMissingFilmStripRequest, 2309, "kMissingFilmStripRequest"},
    {Status::kWriteFailure, 2310, "kWriteFailure"},
    {Status::kAsyncLoggerAlreadyStarted, 2560, "kAsyncLoggerAlreadyStarted"},
    {Status::kAsyncLoggerNotStarted, 2561, "kAsyncLoggerNotStarted"},
    {Status::kLogAccessError, 2562, "kLogAccessError"},
    {Status::kNoLogFileExists, 2563, "kNoLogFileExists"},
    {Status::kFamilyNameTooLarge, 2564, "kFamilyNameTooLarge"},
    {Status::kHashFailure, 2816, "kHashFailure"},
    {Status::kCipherFailure, 2817, "kCipherFailure"},
    {Status::kInitVectorFailure, 2818, "kInitVectorFailure"},
    {Status::kEncryptFailure, 2819, "kEncryptFailure"},
    {Status::kDecryptFailure, 2820, "kDecryptFailure"},
    {Status::kIllegalOperationWhilePlaying, 3072, "kIllegalOperationWhilePlaying"},
    {Status::kNoAudioPlayback, 3073, "kNoAudioPlayback"},
    {Status::kUnimplementedPlaybackStrategy, 3074, "kUnimplementedPlaybackStrategy"},
    {Status::kUnimplementedPlayMode, 3075, "kUnimplementedPlayMode"},
    {Status::kDirectoryNotFound, 3328, "kDirectoryNotFound"},
    {Status::kFileNotFound, 3329, "kFileNotFound"},
    {Status::kNoFilenamesFound, 3330, "kNoFilenamesFound"},
    {Status::kNoSuitableSequenceNameFound, 3331, "kNoSuitableSequenceNameFound"},
    {Status::kRegexException, 3332, "kRegexException"},
    {Status::kIllegalOperationWhileRecordering, 3584, "kIllegalOperationWhileRecordering"},
    {Status::kNoFffmpegExecutableDefined, 3585, "kNoFffmpegExecutableDefined"},
    {Status::kCannotStopRecording, 3586, "kCannotStopRecording"},
    {Status::kCannotGenerateRecordingFilename, 3587, "kCannotGenerateRecordingFilename"},
    {Status::kRecordingFileTooShort, 3588, "kRecordingFileTooShort"},
    {Status::kNoAudioRecordingAuthorization, 3589, "kNoAudioRecordingAuthorization"},
    {Status::kNoVideoRecordingAuthorization, 3590, "kNoVideoRecordingAuthorization"},
    {Status::kPendingRecordingAuthorization, 3591, "kPendingRecordingAuthorization"},
};

// First and last of each range of values without a code.
struct Gap {
    int first;
    int last;
};

Gap const GAPS[] = {
    {7, 255},     {277, 511},   {555, 767},   {827, 1023},  {1027, 1279}, {1295, 1535}, {1541, 1791},
    {1803, 2047}, {2059, 2303}, {2311, 2559}, {2565, 2815}, {2821, 3071}, {3076, 3327}, {3333, 3583},
};

std::set<int> assignedValues() {
    std::set<int> values;
    for (Row const& row : ROWS) {
        values.insert(row.value);
    }
    return values;
}

TEST(Status, IsOneTrivialFieldOf32Bits) {
    EXPECT_EQ(sizeof(Status), 4U);
    EXPECT_TRUE(std::is_trivially_copyable_v<Status>);
    EXPECT_TRUE(std::is_trivially_copy_constructible_v<Status>);
    EXPECT_TRUE(std::is_trivially_copy_assignable_v<Status>);
    EXPECT_TRUE(std::is_trivially_destructible_v<Status>);
    EXPECT_FALSE(std::is_polymorphic_v<Status>);
    EXPECT_TRUE((std::is_same_v<std::underlying_type_t<Status::Type>, int>));
}

TEST(Status, The209CodesHaveTheirValuesAndTheirTexts) {
    EXPECT_EQ(assignedValues().size(), 209U);
    for (Row const& row : ROWS) {
        EXPECT_EQ(static_cast<int>(row.code), row.value) << row.text;
        EXPECT_STREQ(Status(row.code).getStr(), row.text);
        EXPECT_EQ(Status(row.code).get(), row.code);
    }
}

TEST(Status, EveryCodeButTheFirstIsAFailure) {
    for (Row const& row : ROWS) {
        EXPECT_EQ(Status(row.code).failure(), row.value != 0) << row.text;
        EXPECT_EQ(Status(row.code).success(), row.value == 0) << row.text;
        EXPECT_EQ(static_cast<bool>(Status(row.code)), row.value == 0) << row.text;
    }
}

TEST(Status, TheTextOfThePlayerDownloadFailureEndsWithAComma) {
    EXPECT_STREQ(Status(Status::kPlayerDownloadFailure).getStr(), "kPlayerDownloadFailure,");
}

TEST(Status, TheTextOfTheUndefinedProjectIdEndsWithABlank) {
    EXPECT_STREQ(Status(Status::kProjectIdUndefined).getStr(), "kProjectIdUndefined ");
}

TEST(Status, MisspeltNamesStay) {
    EXPECT_STREQ(Status(Status::kUhandledEntity).getStr(), "kUhandledEntity");
    EXPECT_STREQ(Status(Status::kNoFffmpegExecutableDefined).getStr(), "kNoFffmpegExecutableDefined");
    EXPECT_STREQ(Status(Status::kIllegalOperationWhileRecordering).getStr(),
                 "kIllegalOperationWhileRecordering");
    EXPECT_STREQ(Status(Status::kUnserializeable).getStr(), "kUnserializeable");
}

TEST(Status, GapsBetweenTheFamiliesHaveTheEmptyText) {
    for (Gap const& gap : GAPS) {
        for (int value = gap.first; value <= gap.last; ++value) {
            EXPECT_STREQ(statusOf(value).getStr(), "") << value;
            EXPECT_TRUE(statusOf(value).failure()) << value;
        }
    }
}

TEST(Status, OnlyAssignedValuesHaveAText) {
    std::set<int> const assigned = assignedValues();
    for (int value = -70000; value <= 70000; ++value) {
        EXPECT_EQ(statusOf(value).getStr()[0] != '\0', assigned.count(value) == 1) << value;
    }
}

TEST(Status, TheLastCodeOfAFamilyHasATextAndTheNextValueHasNone) {
    EXPECT_STREQ(statusOf(276).getStr(), "kPlayerSetVideoFrameStepFailure");
    EXPECT_STREQ(statusOf(277).getStr(), "");
    EXPECT_STREQ(statusOf(3591).getStr(), "kPendingRecordingAuthorization");
    EXPECT_STREQ(statusOf(3592).getStr(), "");
    EXPECT_STREQ(statusOf(0xEFF).getStr(), "");
    EXPECT_STREQ(statusOf(0xF00).getStr(), "");
    for (Gap const& gap : GAPS) {
        EXPECT_STRNE(statusOf(gap.first - 1).getStr(), "") << gap.first;
        EXPECT_STRNE(statusOf(gap.last + 1).getStr(), "") << gap.last;
    }
}

TEST(Status, ValuesWhoseUpperBytesAreSetHaveTheEmptyText) {
    for (int value : {INT_MAX, INT_MIN, INT_MIN + 1, 0x10000, 0x01000001, 0x7F000000, -256, -255, -0x10000}) {
        EXPECT_STREQ(statusOf(value).getStr(), "") << value;
    }
}

TEST(Status, ADefaultConstructedStatusIsSuccess) {
    Status const status;
    EXPECT_TRUE(status == Status::kSuccess);
    EXPECT_EQ(status.get(), Status::kSuccess);
    EXPECT_TRUE(status.success());
    EXPECT_FALSE(status.failure());
    EXPECT_TRUE(status);
    EXPECT_STREQ(status.getStr(), "kSuccess");
}

TEST(Status, ATimeOutIsAFailureThatComparesFromBothSides) {
    Status const status(Status::kTimeOut);
    EXPECT_TRUE(status.failure());
    EXPECT_FALSE(status);
    EXPECT_STREQ(status.getStr(), "kTimeOut");
    EXPECT_TRUE(Status::kTimeOut == status);
    EXPECT_TRUE(status == Status::kTimeOut);
    EXPECT_FALSE(Status::kTimeOut != status);
    EXPECT_FALSE(status != Status::kTimeOut);
    EXPECT_FALSE(Status::kFailure == status);
    EXPECT_FALSE(status == Status::kFailure);
    EXPECT_TRUE(Status::kFailure != status);
    EXPECT_TRUE(status != Status::kFailure);
}

TEST(Status, TwoStatusesCompareByTheirCodes) {
    EXPECT_TRUE(Status(Status::kTimeOut) == Status(Status::kTimeOut));
    EXPECT_FALSE(Status(Status::kTimeOut) != Status(Status::kTimeOut));
    EXPECT_FALSE(Status(Status::kTimeOut) == Status(Status::kFailure));
    EXPECT_TRUE(Status(Status::kTimeOut) != Status(Status::kFailure));
    EXPECT_FALSE(statusOf(-1) == Status()) << "both are successes, but the codes differ";
    EXPECT_TRUE(statusOf(-1) != Status());
}

TEST(Status, AnUnassignedPositiveCodeIsAFailureWithoutText) {
    EXPECT_TRUE(statusOf(7).failure());
    EXPECT_FALSE(statusOf(7).success());
    EXPECT_FALSE(statusOf(7));
    EXPECT_STREQ(statusOf(7).getStr(), "");
    EXPECT_EQ(static_cast<int>(statusOf(7).get()), 7);
}

TEST(Status, ANegativeCodeIsASuccessWithoutTextThatIsNotKSuccess) {
    for (int value : {-1, -7, -256, INT_MIN}) {
        Status const status = statusOf(value);
        EXPECT_TRUE(status.success()) << value;
        EXPECT_FALSE(status.failure()) << value;
        EXPECT_TRUE(static_cast<bool>(status)) << value;
        EXPECT_STREQ(status.getStr(), "") << value;
        EXPECT_FALSE(status == Status::kSuccess) << value;
        EXPECT_EQ(static_cast<int>(status.get()), value);
    }
}

TEST(Status, AssignmentReplacesTheCodeWhateverItWas) {
    Status status(Status::kFailure);
    EXPECT_EQ(&(status = Status::kSuccess), &status);
    EXPECT_EQ(status.get(), Status::kSuccess);
    status = Status::kTimeOut;
    EXPECT_EQ(status.get(), Status::kTimeOut);
    status = Status::kFileFailure;
    EXPECT_EQ(status.get(), Status::kFileFailure);
    status = Status();
    EXPECT_EQ(status.get(), Status::kSuccess);
}

TEST(Status, SetReplacesTheCodeAndReturnsNothing) {
    Status status(Status::kFailure);
    EXPECT_TRUE((std::is_void_v<decltype(status.set(Status::kSuccess))>));
    status.set(Status::kRegexException);
    EXPECT_EQ(status.get(), Status::kRegexException);
    status.set(Status::kSuccess);
    EXPECT_TRUE(status.success());
}

TEST(Status, AnOperationsResultStandsInACondition) {
    auto const good = []() -> Status { return Status::kSuccess; };
    auto const bad = []() -> Status { return Status::kUndefinedTime; };
    EXPECT_TRUE(good() ? true : false);
    EXPECT_FALSE(bad() ? true : false);
    if (Status const status = bad()) {
        ADD_FAILURE() << status.getStr();
    }
}

TEST(Status, TheTextIsStatic) {
    char const* const text = Status(Status::kTimeOut).getStr();
    EXPECT_EQ(text, Status(Status::kTimeOut).getStr());
}

} // namespace
