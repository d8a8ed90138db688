// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "rapidotio/orlOtioNode.h"

#include "support/Json.h"
#include "support/TimelineText.h"
#include "support/Tree.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>

namespace {

using namespace ORL_0_81::rapidotio;
using namespace orlTest;

std::string clipOf(std::string const& members) { return R"({"OTIO_SCHEMA":"Clip.1",)" + members + "}"; }

std::string mediaOf(std::string const& members) { return clipOf(R"("media_reference":{)" + members + "}"); }

/// A clip with a format block of the written form.
std::string formatOf(std::string const& members) {
    return mediaOf(R"("metadata":{"orl":{)" + members + "}}");
}

/// A clip with the tracking service's block.
std::string serviceOf(std::string const& members) {
    return mediaOf(R"("metadata":{"tr":{)" + members + "}}");
}

std::string normalClip(std::string const& text) { return writtenToArray(*Built<ClipNode>(text)); }

std::string arrayOf(ClipText const& clip) { return "[" + clip.text() + "]"; }

TEST(OtioClipNode, TheUnknownCodecIsCalledUnknown) { EXPECT_EQ(UNDEF_CODEC, "Unknown"); }

TEST(OtioClipNode, OfASchemaAloneHasTheDefaults) {
    Built<ClipNode> clip(R"({"OTIO_SCHEMA":"Clip.1"})");
    EXPECT_EQ(clip->m_name, "");
    for (TimeRange const* const range : {&clip->m_availableRange, &clip->m_sourceRange}) {
        EXPECT_FALSE(range->start_time.hasValue() || range->start_time.hasRate());
        EXPECT_FALSE(range->duration.hasValue() || range->duration.hasRate());
    }
    for (std::string const* const text :
         {&clip->m_targetUrl, &clip->m_clipUid, &clip->m_entityType, &clip->m_pathToFrames,
          &clip->m_uploadedMovie, &clip->m_pathToMovie, &clip->m_dataType}) {
        EXPECT_EQ(*text, "");
    }
    for (double const number :
         {clip->m_boundsCenterX, clip->m_boundsCenterY, clip->m_boundsSizeX, clip->m_boundsSizeY,
          clip->m_pixelAspect, clip->m_frameRate, clip->m_audioSampleRate}) {
        EXPECT_EQ(number, 0.0);
    }
    for (int const number : {clip->m_pixelWidth, clip->m_pixelHeight, clip->m_numVideoChannels,
                             clip->m_numAudioChannels, clip->m_fileSizeInBytes}) {
        EXPECT_EQ(number, -1);
    }
    EXPECT_EQ(clip->m_entityId, 0);
    EXPECT_FALSE(clip->m_hasAudio);
    EXPECT_EQ(clip->m_videoCodec, "Unknown");
    EXPECT_EQ(clip->m_audioCodec, "Unknown");
    EXPECT_TRUE(clip->m_extraData.empty());
    EXPECT_STREQ(clip->getChildrenArrayName(), "effects");
}

TEST(OtioClipNode, OfASchemaAloneWritesEveryKey) {
    EXPECT_EQ(normalClip(R"({"OTIO_SCHEMA":"Clip.1"})"), compact(R"([
{"name":"","OTIO_SCHEMA":"Clip.1","effects":[],
 "source_range":{"start_time":{"OTIO_SCHEMA":"RationalTime.1"},
                 "duration":{"OTIO_SCHEMA":"RationalTime.1"},
                 "OTIO_SCHEMA":"TimeRange.1"},
 "media_reference":{"OTIO_SCHEMA":"ExternalReference.1",
   "available_range":{"start_time":{"OTIO_SCHEMA":"RationalTime.1"},
                      "duration":{"OTIO_SCHEMA":"RationalTime.1"},
                      "OTIO_SCHEMA":"TimeRange.1"},
   "metadata":{"orl":{"ORL_SCHEMA":"ClipNodeMediaReferenceMetadata.1",
     "bounds":{"center":[0.0,0.0],"size":[0.0,0.0]},
     "pixel_resolution":[-1,-1],"data_type":"","num_video_channels":-1,
     "pixel_aspect":0.0,"frame_rate":0.0,"has_audio":false,
     "audio_sample_rate":0.0,"num_audio_channels":-1,
     "video_codec":"Unknown","audio_codec":"Unknown",
     "file_size_in_bytes":-1,"extra_data":{}}},
   "target_url":""},
 "metadata":{"orl":{"ORL_SCHEMA":"ClipMetadata.1",
   "entity":{"id":0,"type":""},
   "paths":{"mp4":"","file":"","movie":""},
   "id":""}}}])"));
}

TEST(OtioClipNode, WritesEachFieldAtItsPlace) {
    Built<ClipNode> clip(R"({"OTIO_SCHEMA":"Clip.1","name":"a","effects":[{"OTIO_SCHEMA":"Annotation.1"}]})");
    clip->generateChildren();
    clip->m_sourceRange.start_time.value = 1.0;
    clip->m_availableRange.duration.rate = 2.0;
    clip->m_targetUrl = "url";
    clip->m_boundsCenterX = 3.0;
    clip->m_boundsCenterY = 4.0;
    clip->m_boundsSizeX = 5.0;
    clip->m_boundsSizeY = 6.0;
    clip->m_clipUid = "uid";
    clip->m_entityId = -7;
    clip->m_entityType = "type";
    clip->m_pathToFrames = "frames";
    clip->m_uploadedMovie = "uploaded";
    clip->m_pathToMovie = "movie";
    clip->m_pixelWidth = 8;
    clip->m_pixelHeight = 9;
    clip->m_dataType = "half";
    clip->m_numVideoChannels = 10;
    clip->m_pixelAspect = 11.0;
    clip->m_frameRate = 12.0;
    clip->m_hasAudio = true;
    clip->m_audioSampleRate = 13.0;
    clip->m_numAudioChannels = 14;
    clip->m_videoCodec = "vc";
    clip->m_audioCodec = "ac";
    clip->m_fileSizeInBytes = 15;
    clip->m_extraData = {{"k2", "v2"}, {"k1", ""}, {"k2", "v3"}};

    ClipText expected;
    expected.name = R"("a")";
    expected.effects = R"([{"OTIO_SCHEMA":"Annotation.1","visible":true,"name":"","effect_name":""}])";
    expected.sourceRange = rangeText(R"({"OTIO_SCHEMA":"RationalTime.1","value":1.0})", kUndefinedTime);
    expected.availableRange = rangeText(kUndefinedTime, R"({"OTIO_SCHEMA":"RationalTime.1","rate":2.0})");
    expected.targetUrl = R"("url")";
    expected.center = "[3.0,4.0]";
    expected.size = "[5.0,6.0]";
    expected.id = R"("uid")";
    expected.entityId = "-7";
    expected.entityType = R"("type")";
    expected.file = R"("frames")";
    expected.mp4 = R"("uploaded")";
    expected.movie = R"("movie")";
    expected.pixelResolution = "[8,9]";
    expected.dataType = R"("half")";
    expected.numVideoChannels = "10";
    expected.pixelAspect = "11.0";
    expected.frameRate = "12.0";
    expected.hasAudio = "true";
    expected.audioSampleRate = "13.0";
    expected.numAudioChannels = "14";
    expected.videoCodec = R"("vc")";
    expected.audioCodec = R"("ac")";
    expected.fileSize = "15";
    expected.extraData = R"({"k2":"v2","k1":"","k2":"v3"})";
    EXPECT_EQ(writtenToArray(*clip), arrayOf(expected));
    EXPECT_EQ(normalClip(expected.text()), arrayOf([&] {
                  ClipText unexpanded = expected;
                  unexpanded.effects = "[]";
                  return unexpanded;
              }()));
}

TEST(OtioClipNode, ReadsItsRanges) {
    std::string const range = R"({"start_time":{"OTIO_SCHEMA":"RationalTime.1","value":1,"rate":24},
        "duration":{"OTIO_SCHEMA":"RationalTime.1","value":2,"rate":24}})";
    ClipText expected;
    expected.sourceRange = rangeText(timeText("1.0", "24.0"), timeText("2.0", "24.0"));
    EXPECT_EQ(normalClip(clipOf(R"("source_range":)" + range)), arrayOf(expected));
    expected.availableRange = expected.sourceRange;
    expected.sourceRange = kUndefinedRange;
    EXPECT_EQ(normalClip(mediaOf(R"("available_range":)" + range)), arrayOf(expected));
}

TEST(OtioClipNode, TheSchemaOfAMediaReferenceIsNotRead) {
    ClipText expected;
    expected.targetUrl = R"("u")";
    EXPECT_EQ(normalClip(mediaOf(R"("OTIO_SCHEMA":"MissingReference.2","target_url":"u")")),
              arrayOf(expected));
}

struct TextRow {
    char const* members;
    std::string ClipText::*field;
    char const* expected;
};

/// Expects that each row changes the one field of the written clip, and no other.
template <std::size_t N>
void expectWritten(std::string (*around)(std::string const&), TextRow const (&rows)[N]) {
    for (TextRow const& row : rows) {
        ClipText expected;
        expected.*row.field = row.expected;
        EXPECT_EQ(normalClip(around(row.members)), arrayOf(expected)) << row.members;
    }
}

TEST(OtioClipNode, ReadsTheFormatBlock) {
    TextRow const rows[] = {
        {R"("bounds":{"center":[1.5,-2.0],"size":[0.0,0.0]})", &ClipText::center, "[1.5,-2.0]"},
        {R"("bounds":{"size":[3.0,4]})", &ClipText::size, "[3.0,4.0]"},
        {R"("pixel_resolution":[1920,1080])", &ClipText::pixelResolution, "[1920,1080]"},
        {R"("data_type":"half")", &ClipText::dataType, R"("half")"},
        {R"("num_video_channels":4)", &ClipText::numVideoChannels, "4"},
        {R"("pixel_aspect":2.0)", &ClipText::pixelAspect, "2.0"},
        {R"("frame_rate":24.0)", &ClipText::frameRate, "24.0"},
        {R"("has_audio":true)", &ClipText::hasAudio, "true"},
        {R"("audio_sample_rate":48000.0)", &ClipText::audioSampleRate, "48000.0"},
        {R"("num_audio_channels":2)", &ClipText::numAudioChannels, "2"},
        {R"("video_codec":"")", &ClipText::videoCodec, R"("")"},
        {R"("audio_codec":"aac")", &ClipText::audioCodec, R"("aac")"},
        {R"("file_size_in_bytes":2147483647)", &ClipText::fileSize, "2147483647"},
        {R"("extra_data":{"b":"1","a":"2"})", &ClipText::extraData, R"({"b":"1","a":"2"})"},
    };
    expectWritten(formatOf, rows);
}

TEST(OtioClipNode, TheFormatBlockIsReadUnderOrlOnly) {
    EXPECT_EQ(normalClip(mediaOf(R"("metadata":{"frame_rate":24.0})")), arrayOf(ClipText()));
    EXPECT_EQ(normalClip(mediaOf(R"("orl":{"frame_rate":24.0})")), arrayOf(ClipText()));
    EXPECT_EQ(normalClip(mediaOf(R"("metadata":{"tr":{"frame_rate":24.0}})")), arrayOf(ClipText()));
    EXPECT_EQ(normalClip(clipOf(R"("metadata":{"orl":{"frame_rate":24.0}})")), arrayOf(ClipText()));
}

TEST(OtioClipNode, WhatHasTheWrongTypeKeepsItsDefault) {
    for (char const* const members :
         {R"("frame_rate":24)", R"("pixel_aspect":1)", R"("audio_sample_rate":48000)",
          R"("frame_rate":"24.0")", R"("frame_rate":10.0e308)", R"("has_audio":1)",
          R"("num_video_channels":4.0)", R"("num_audio_channels":"2")", R"("file_size_in_bytes":2147483648)",
          R"("file_size_in_bytes":5e3)", R"("video_codec":null)", R"("data_type":8)",
          R"("bounds":[[1.0,2.0],[3.0,4.0]])", R"("extra_data":[{"a":"b"}])", R"("extra_data":"a")",
          R"("pixel_resolution":{"0":1,"1":2})", R"("frame_rate":null,"frame_rate":24.0)"}) {
        EXPECT_EQ(normalClip(formatOf(members)), arrayOf(ClipText())) << members;
    }
}

TEST(OtioClipNode, APixelResolutionHasExactlyTwoValuesAndEachStandsAlone) {
    TextRow const rows[] = {
        {R"("pixel_resolution":[1920,1080,1])", &ClipText::pixelResolution, "[-1,-1]"},
        {R"("pixel_resolution":[1920])", &ClipText::pixelResolution, "[-1,-1]"},
        {R"("pixel_resolution":[])", &ClipText::pixelResolution, "[-1,-1]"},
        {R"("pixel_resolution":[1920.5,1080])", &ClipText::pixelResolution, "[-1,1080]"},
        {R"("pixel_resolution":[1920,1080.0])", &ClipText::pixelResolution, "[1920,-1]"},
        {R"("pixel_resolution":["1920",null])", &ClipText::pixelResolution, "[-1,-1]"},
        {R"("pixel_resolution":[2147483648,-5])", &ClipText::pixelResolution, "[-1,-5]"},
    };
    expectWritten(formatOf, rows);
}

TEST(OtioClipNode, BoundsTakeFractionsAndIntegersForEachComponent) {
    TextRow const rows[] = {
        {R"("bounds":{"center":[1,2.5]})", &ClipText::center, "[1.0,2.5]"},
        {R"("bounds":{"center":[1.5,2]})", &ClipText::center, "[1.5,2.0]"},
        {R"("bounds":{"center":["1",2]})", &ClipText::center, "[0.0,2.0]"},
        {R"("bounds":{"center":[1.5,null]})", &ClipText::center, "[1.5,0.0]"},
        {R"("bounds":{"center":[2147483648,-2147483648]})", &ClipText::center, "[0.0,-2147483648.0]"},
        {R"("bounds":{"center":[10.0e308,1.0]})", &ClipText::center, "[0.0,1.0]"},
        {R"("bounds":{"center":[1.0]})", &ClipText::center, "[0.0,0.0]"},
        {R"("bounds":{"center":[1.0,2.0,3.0]})", &ClipText::center, "[0.0,0.0]"},
        {R"("bounds":{"center":7,"size":[1.0,2.0]})", &ClipText::size, "[1.0,2.0]"},
        {R"("bounds":{"center":[1.0],"size":[1.0,2.0]})", &ClipText::size, "[1.0,2.0]"},
        {R"("bounds":{"size":[1.0,2.0,3.0]})", &ClipText::size, "[0.0,0.0]"},
    };
    expectWritten(formatOf, rows);
    expectWritten(serviceOf, rows);
}

TEST(OtioClipNode, ABoundThatIsNotFiniteLeavesTheOneThatIsThere) {
    Built<ClipNode> clip(R"({"OTIO_SCHEMA":"Clip.1"})");
    clip->parseBounds(parsed(R"({"center":[1.5,2.5],"size":[3.5,4.5]})"));
    clip->parseBounds(parsed(R"({"center":[10.0e308,7],"size":[8.0,-10.0e308]})"));
    EXPECT_EQ(clip->m_boundsCenterX, 1.5);
    EXPECT_EQ(clip->m_boundsCenterY, 7.0);
    EXPECT_EQ(clip->m_boundsSizeX, 8.0);
    EXPECT_EQ(clip->m_boundsSizeY, 4.5);
}

TEST(OtioClipNode, ExtraDataKeepsStringsInTheirOrder) {
    TextRow const rows[] = {
        {R"("extra_data":{"z":"1","a":"2","":"3","z":"4"})", &ClipText::extraData,
         R"({"z":"1","a":"2","":"3","z":"4"})"},
        {R"("extra_data":{"a":1,"b":"x","c":null,"d":{"e":"f"},"g":["h"],"i":true,"j":1.5,"k":"y"})",
         &ClipText::extraData, R"({"b":"x","k":"y"})"},
        {R"("extra_data":{"a\u0000b":"c\u0000d","\u0000":"\u0000"})", &ClipText::extraData,
         R"({"a":"c","":""})"},
        {R"("extra_data":{"\"\\\n":"\u00e4/"})", &ClipText::extraData, "{\"\\\"\\\\\\n\":\"\xC3\xA4/\"}"},
    };
    expectWritten(formatOf, rows);
}

TEST(OtioClipNode, ReadsTheTrackingServicesBlock) {
    TextRow const rows[] = {
        {R"("entity_metadata":{"tr_uploaded_movie_mp4":{"url":"u"}})", &ClipText::mp4, R"("u")"},
        {R"("entity_metadata":{"tr_path_to_frames":"f"})", &ClipText::file, R"("f")"},
        {R"("entity_metadata":{"tr_path_to_movie":"m"})", &ClipText::movie, R"("m")"},
        {R"("entity_metadata":{"tr_uploaded_movie_mp4":"u","tr_path_to_movie":"m"})", &ClipText::movie,
         R"("m")"},
        {R"("entity_metadata":{"tr_uploaded_movie_mp4":{"url":1},"tr_path_to_frames":"f"})", &ClipText::file,
         R"("f")"},
        {R"("entity_metadata":[],"bounds":{"center":[1.0,2.0]})", &ClipText::center, "[1.0,2.0]"},
    };
    expectWritten(serviceOf, rows);
}

struct EntityRow {
    char const* entity;
    char const* type;
    int id;
};

TEST(OtioClipNode, AnEntityIsATypeBetweenTwoSlashesAndANumberBehind) {
    EntityRow const rows[] = {
        {"/Version/1234", "Version", 1234},
        {"/Version/1234/", "Version", 1234},
        {"/Version/1234/more/5", "Version", 1234},
        {"Version/1234", "ersion", 1234},
        {"xVersion/1234", "Version", 1234},
        {"//12", "", 12},
        {"/V/", "V", 0},
        {"/V/abc", "V", 0},
        {"/V/12abc", "V", 12},
        {"/V/-5", "V", -5},
        {"/V/+5", "V", 5},
        {"/V/ 5", "V", 5},
        {"/V//5", "V", 0},
        {"/V/007", "V", 7},
        {"/V/0x10", "V", 0},
        {"/V/1.9", "V", 1},
        {"/V/- 5", "V", 0},
        {"/V/2147483647", "V", 2147483647},
        {"/V/-2147483648", "V", -2147483647 - 1},
        {"/V/2147483648", "V", 2147483647},
        {"/V/-2147483649", "V", -2147483647 - 1},
        {"/V/99999999999999999999999999", "V", 2147483647},
        {"/V/-99999999999999999999999999", "V", -2147483647 - 1},
        {"/Asset Type/3", "Asset Type", 3},
    };
    for (EntityRow const& row : rows) {
        Built<ClipNode> clip(serviceOf(std::string(R"("entity":")") + row.entity + "\""));
        EXPECT_EQ(clip->m_entityType, row.type) << row.entity;
        EXPECT_EQ(clip->m_entityId, row.id) << row.entity;
    }
}

TEST(OtioClipNode, AnEntityWithoutASecondSlashIsIgnored) {
    for (char const* const entity : {R"("/Version")", R"("Version")", R"("/")", R"("")", R"("1234")",
                                     R"("\u0000/V/1")", R"({"id":1,"type":"V"})", "1234", "null"}) {
        Built<ClipNode> clip(R"({"OTIO_SCHEMA":"Clip.1"})");
        clip->m_entityType = "before";
        clip->m_entityId = 77;
        clip->parseMediaRefMetadata(parsed(std::string(R"({"entity":)") + entity + "}"));
        EXPECT_EQ(clip->m_entityType, "before") << entity;
        EXPECT_EQ(clip->m_entityId, 77) << entity;
    }
}

TEST(OtioClipNode, TheServicesBoundsComeLaterAndWinWhereTheyOverlap) {
    ClipText expected;
    expected.center = "[5.0,6.0]";
    expected.size = "[3.0,4.0]";
    expected.frameRate = "24.0";
    std::string const orl = R"("orl":{"bounds":{"center":[1.0,2.0],"size":[3.0,4.0]},"frame_rate":24.0})";
    std::string const tr = R"("tr":{"bounds":{"center":[5.0,6.0]}})";
    EXPECT_EQ(normalClip(mediaOf(R"("metadata":{)" + orl + "," + tr + "}")), arrayOf(expected));
    EXPECT_EQ(normalClip(mediaOf(R"("metadata":{)" + tr + "," + orl + "}")), arrayOf(expected));
}

std::string const kIdentity = R"({"id":"uid","paths":{"mp4":"m4","file":"fr","movie":"mo"},)"
                              R"("entity":{"id":12,"type":"Version"}})";

ClipText identityText() {
    ClipText expected;
    expected.id = R"("uid")";
    expected.mp4 = R"("m4")";
    expected.file = R"("fr")";
    expected.movie = R"("mo")";
    expected.entityId = "12";
    expected.entityType = R"("Version")";
    return expected;
}

TEST(OtioClipNode, ReadsItsIdentityUnderOrlAndInTheOldForm) {
    EXPECT_EQ(normalClip(clipOf(R"("metadata":{"orl":)" + kIdentity + "}")), arrayOf(identityText()));
    EXPECT_EQ(normalClip(clipOf(R"("metadata":)" + kIdentity)), arrayOf(identityText()));
}

TEST(OtioClipNode, UnderOrlTheOldFormBesideItIsNotRead) {
    std::string const beside = R"("id":"no","paths":{"mp4":"no"},"entity":{"id":1})";
    EXPECT_EQ(normalClip(clipOf(R"("metadata":{"orl":{},)" + beside + "}")), arrayOf(ClipText()));
    EXPECT_EQ(normalClip(clipOf(R"("metadata":{)" + beside + R"(,"orl":)" + kIdentity + "}")),
              arrayOf(identityText()));
}

TEST(OtioClipNode, TheServicesUidExcludesTheOtherForms) {
    ClipText expected;
    EXPECT_EQ(normalClip(clipOf(R"("metadata":{"id":"no","orl":{"id":"no"},"tr":{}})")), arrayOf(expected));
    EXPECT_EQ(normalClip(clipOf(R"("metadata":{"id":"no","tr":{"clip_uid":5}})")), arrayOf(expected));
    expected.id = R"("yes")";
    EXPECT_EQ(normalClip(clipOf(
                  R"("metadata":{"id":"no","orl":{"id":"no","entity":{"id":1}},"tr":{"clip_uid":"yes"}})")),
              arrayOf(expected));
}

TEST(OtioClipNode, MetadataOfAServiceOrOfOrlThatIsNoObjectIsTheOldForm) {
    ClipText expected;
    expected.id = R"("yes")";
    EXPECT_EQ(normalClip(clipOf(R"("metadata":{"id":"yes","tr":"x","orl":["x"]})")), arrayOf(expected));
}

TEST(OtioClipNode, AnEntityOfTheWrongShapeForItsPlaceIsRefused) {
    EXPECT_EQ(normalClip(clipOf(R"("metadata":{"entity":"/Version/1234"})")), arrayOf(ClipText()));
    EXPECT_EQ(normalClip(clipOf(R"("metadata":{"id":12,"entity":{"id":"12","type":5},"paths":["a"]})")),
              arrayOf(ClipText()));
    EXPECT_EQ(normalClip(serviceOf(R"("entity":{"id":12,"type":"Version"})")), arrayOf(ClipText()));
}

TEST(OtioClipNode, WhatItIsBuiltFromMayHaveAnyShape) {
    for (char const* const members :
         {R"("media_reference":[])", R"("media_reference":{"metadata":7})", R"("metadata":"x")",
          R"("media_reference":null,"metadata":null)", R"("source_range":[1,2])", R"("effects":{})",
          R"("media_reference":{"metadata":{"orl":[],"tr":[]}})"}) {
        EXPECT_EQ(normalClip(clipOf(members)), arrayOf(ClipText())) << members;
    }
}

TEST(OtioClipNode, TextsEndAtTheirFirstZeroByte) {
    Built<ClipNode> clip(mediaOf(R"("target_url":"u\u0000v")"));
    EXPECT_EQ(clip->m_targetUrl, "u");
    clip->m_dataType = std::string("d\0e", 3);
    clip->m_extraData = {{std::string("n\0x", 3), std::string("v\0x", 3)}};
    ClipText expected;
    expected.targetUrl = R"("u")";
    expected.dataType = R"("d")";
    expected.extraData = R"({"n":"v"})";
    EXPECT_EQ(writtenToArray(*clip), arrayOf(expected));
}

TEST(OtioClipNode, NumbersThatAreNotFiniteAreWrittenAs0) {
    Built<ClipNode> clip(R"({"OTIO_SCHEMA":"Clip.1"})");
    clip->m_frameRate = std::numeric_limits<double>::infinity();
    clip->m_pixelAspect = std::numeric_limits<double>::quiet_NaN();
    clip->m_boundsSizeY = -std::numeric_limits<double>::infinity();
    clip->m_sourceRange.duration.value = std::numeric_limits<double>::quiet_NaN();
    EXPECT_EQ(writtenToArray(*clip), arrayOf(ClipText()));
}

} // namespace
