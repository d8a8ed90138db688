// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "orlStreamDescription.h"

#include "internal/orlExrHeader.h"
#include "internal/orlFrameRate.h"
#include "internal/orlTimecode.h"

extern "C" {
#include <libavcodec/avcodec.h>
#include <libavutil/dict.h>
#include <libavutil/display.h>
#include <libavutil/pixdesc.h>
}

#include <cmath>
#include <cstring>

namespace ORL_0_81::media {

namespace {

constexpr char const TIMECODE_TAG[] = "timecode";
constexpr char const TIMECODE_NAME[] = "Timecode/Start";

AVStream* chooseStream(AVFormatContext const& format, AVMediaType type) {
    constexpr int NO_PICTURE = AV_DISPOSITION_ATTACHED_PIC | AV_DISPOSITION_TIMED_THUMBNAILS;
    AVStream* first = nullptr;
    for (unsigned i = 0; i < format.nb_streams; ++i) {
        AVStream* const stream = format.streams[i];
        if (stream->codecpar->codec_type != type || (stream->disposition & NO_PICTURE) != 0) {
            continue;
        }
        if ((stream->disposition & AV_DISPOSITION_DEFAULT) != 0) {
            return stream;
        }
        first = first ? first : stream;
    }
    return first;
}

bool hasDecoder(AVStream const& stream) { return avcodec_find_decoder(stream.codecpar->codec_id) != nullptr; }

std::string dataTypeOf(AVPixFmtDescriptor const& format) {
    int depth = 0;
    for (int i = 0; i < format.nb_components; ++i) {
        depth = format.comp[i].depth > depth ? format.comp[i].depth : depth;
    }
    if ((format.flags & AV_PIX_FMT_FLAG_FLOAT) != 0) {
        return depth <= 16 ? "half" : "float";
    }
    if (depth <= 8) {
        return "uint8";
    }
    return depth <= 16 ? "uint16" : "uint32";
}

// A palette's entries are colours with alpha.
int channelCountOf(AVPixFmtDescriptor const& format) {
    return (format.flags & AV_PIX_FMT_FLAG_PAL) != 0 ? 4 : format.nb_components;
}

// True for a picture that is shown on its side.
bool isTurned(AVStream const& stream) {
    constexpr std::size_t MATRIX_BYTES = 9 * sizeof(std::int32_t);
    std::size_t size = 0;
    unsigned char const* const data = av_stream_get_side_data(&stream, AV_PKT_DATA_DISPLAYMATRIX, &size);
    if (!data || size < MATRIX_BYTES) {
        return false;
    }
    std::int32_t matrix[9];
    std::memcpy(matrix, data, MATRIX_BYTES);
    double const degrees = av_display_rotation_get(matrix);
    return std::isfinite(degrees) && std::lround(std::fabs(degrees) / 90.0) % 2 == 1;
}

char const* tagOf(AVDictionary const* tags, char const* name) {
    AVDictionaryEntry const* const entry = av_dict_get(tags, name, nullptr, 0);
    return entry ? entry->value : nullptr;
}

struct EmbeddedTimecode {
    char const* text = nullptr;
    AVRational rate = {0, 1}; // what the timecode counts; the picture may have twice as many
};

// The format gives the picture a copy of the timecode track's tag, and the track its rate.
EmbeddedTimecode findTimecode(AVFormatContext const& format, AVStream const* picture, AVRational rate) {
    EmbeddedTimecode timecode;
    timecode.rate = rate;
    timecode.text = picture ? tagOf(picture->metadata, TIMECODE_TAG) : nullptr;
    for (unsigned i = 0; i < format.nb_streams; ++i) {
        AVStream const& stream = *format.streams[i];
        char const* const text = tagOf(stream.metadata, TIMECODE_TAG);
        if (stream.codecpar->codec_type != AVMEDIA_TYPE_DATA || !text ||
            (timecode.text && std::strcmp(timecode.text, text) != 0)) {
            continue;
        }
        timecode.text = text;
        if (isUsableRate(stream.avg_frame_rate)) {
            timecode.rate = stream.avg_frame_rate;
        }
        break;
    }
    if (!timecode.text) {
        timecode.text = tagOf(format.metadata, TIMECODE_TAG);
    }
    return timecode;
}

} // namespace

MediaStreams chooseStreams(AVFormatContext const& format) {
    MediaStreams streams;
    streams.picture = chooseStream(format, AVMEDIA_TYPE_VIDEO);
    streams.sound = chooseStream(format, AVMEDIA_TYPE_AUDIO);
    return streams;
}

Status describePicture(OpenMedium const& medium, AVStream& stream, MediaDescription& description) {
    AVCodecParameters const& parameters = *stream.codecpar;
    if (!hasDecoder(stream)) {
        return Status::kUnsupportedCodec;
    }
    AVPixFmtDescriptor const* const format =
        av_pix_fmt_desc_get(static_cast<AVPixelFormat>(parameters.format));
    if (!format || parameters.width <= 0 || parameters.height <= 0) {
        return medium.statusOfNonsense();
    }
    description.hasPicture = true;
    description.width = parameters.width;
    description.height = parameters.height;
    description.dataType = dataTypeOf(*format);
    description.channels = channelCountOf(*format);
    ExrChannels channels;
    if (readExrChannels(medium.exrBytes(), channels)) {
        description.dataType = channels.dataType;
        description.channels = channels.count;
    }
    AVRational const aspect = av_guess_sample_aspect_ratio(&medium.format(), &stream, nullptr);
    description.pixelAspect = aspect.num > 0 && aspect.den > 0 ? av_q2d(aspect) : 1.0;
    description.displayAspect = description.pixelAspect * parameters.width / parameters.height;
    if (isTurned(stream)) {
        description.displayAspect = 1.0 / description.displayAspect;
    }
    description.videoCodec = avcodec_get_name(parameters.codec_id);
    return Status::kSuccess;
}

Status describeSound(OpenMedium const& medium, AVStream const& stream, MediaDescription& description) {
    AVCodecParameters const& parameters = *stream.codecpar;
    if (!hasDecoder(stream)) {
        return Status::kUnsupportedCodec;
    }
    if (parameters.sample_rate <= 0 || parameters.ch_layout.nb_channels <= 0) {
        return medium.statusOfNonsense();
    }
    description.hasAudio = true;
    description.audioSampleRate = parameters.sample_rate;
    description.audioChannels = parameters.ch_layout.nb_channels;
    description.audioCodec = avcodec_get_name(parameters.codec_id);
    return Status::kSuccess;
}

void describeTags(AVFormatContext const& format, AVStream const* picture, AVRational rate,
                  MediaDescription& description) {
    EmbeddedTimecode const timecode = findTimecode(format, picture, rate);
    auto const count = static_cast<int>(std::lround(av_q2d(timecode.rate)));
    std::int64_t frame = 0;
    if (timecode.text && count > 0 && frameOfTimecode(timecode.text, count, frame)) {
        description.start = frame * std::lround(av_q2d(rate)) / count;
        description.extraData.emplace_back(TIMECODE_NAME, timecode.text);
    }
    AVDictionaryEntry const* tag = nullptr;
    while ((tag = av_dict_get(format.metadata, "", tag, AV_DICT_IGNORE_SUFFIX))) {
        // Nobody but us may say that there is a timecode to be trusted.
        if (std::strcmp(tag->key, TIMECODE_NAME) != 0) {
            description.extraData.emplace_back(tag->key, tag->value);
        }
    }
}

} // namespace ORL_0_81::media
