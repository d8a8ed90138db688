// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "orlProbeCommand.h"

#include "orlDocumentFile.h"
#include "orlPrintable.h"
#include "orlStatusWords.h"
#include "rapidotio/orlOtioNode.h"
#include "rapidotio/orlOtioNodeVisitor.h"
#include "rapidotio/orlOtioVisitorHelper.h"

#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdio>
#include <utility>

namespace ORL_0_81::tool {

namespace {

using rapidotio::ClipNode;

class FirstClip : public rapidotio::NodeVisitor {
public:
    void visitClipNode(ClipNode& node) override {
        if (!clip) {
            clip.reset(&node);
        }
    }

    SharedPtr<ClipNode> clip;
};

SharedPtr<ClipNode> firstClipOf(std::string const& metadata) {
    FirstClip visitor;
    rapidotio::VisitorHelper::visit(metadata, visitor, nullptr);
    return visitor.clip;
}

bool isKnown(std::string const& codec) { return !codec.empty() && codec != rapidotio::UNDEF_CODEC; }

std::string const* findExtra(ClipNode const& clip, std::string const& name) {
    auto const found = std::find_if(clip.m_extraData.begin(), clip.m_extraData.end(),
                                    [&name](auto const& entry) { return entry.first == name; });
    return found == clip.m_extraData.end() ? nullptr : &found->second;
}

constexpr char const kTimecodeStart[] = "Timecode/Start";

// As few digits as tell the number, six at most.
std::string shortly(double number) {
    std::array<char, 32> text{};
    std::snprintf(text.data(), text.size(), "%.6g", number);
    return text.data();
}

std::string secondsOf(rapidotio::Time const& time) {
    std::array<char, 64> text{};
    std::snprintf(text.data(), text.size(), "%.3f s", time.value / time.rate);
    return text.data();
}

std::string sizeOf(int bytes) {
    constexpr double kStep = 1000.0;
    std::array<char const*, 4> const units = {"B", "kB", "MB", "GB"};
    double size = bytes;
    std::size_t unit = 0;
    for (; size >= kStep && unit + 1 < units.size(); ++unit) {
        size /= kStep;
    }
    std::array<char, 64> text{};
    std::snprintf(text.data(), text.size(), unit == 0 ? "%.0f %s" : "%.1f %s", size, units.at(unit));
    return text.data();
}

std::string channels(int count) { return std::to_string(count) + (count == 1 ? " channel" : " channels"); }

// The known ones of several things that are told of one.
std::string joined(std::vector<std::string> const& parts) {
    std::string text;
    for (std::string const& part : parts) {
        if (!part.empty()) {
            text += (text.empty() ? "" : ", ") + part;
        }
    }
    return text.empty() ? "-" : text;
}

std::string timeText(ClipNode const& clip) {
    rapidotio::Time const& start = clip.m_availableRange.start_time;
    rapidotio::Time const& duration = clip.m_availableRange.duration;
    std::string const* const timecode = findExtra(clip, kTimecodeStart);
    return joined({duration.isDefined() ? shortly(duration.value) + " frames at " + shortly(duration.rate) +
                                              " a second (" + secondsOf(duration) + ")"
                                        : "",
                   start.isDefined() ? "from frame " + shortly(start.value) : "",
                   timecode ? "timecode " + printable(*timecode) : ""});
}

std::string pictureText(ClipNode const& clip) {
    if (clip.m_pixelWidth < 0) {
        return "-";
    }
    return joined({std::to_string(clip.m_pixelWidth) + 'x' + std::to_string(clip.m_pixelHeight),
                   clip.m_pixelAspect > 0 ? "pixel aspect " + shortly(clip.m_pixelAspect) : "",
                   clip.m_frameRate > 0 ? shortly(clip.m_frameRate) + " frames a second" : "",
                   clip.m_numVideoChannels > 0 ? channels(clip.m_numVideoChannels) : "",
                   printable(clip.m_dataType),
                   isKnown(clip.m_videoCodec) ? printable(clip.m_videoCodec) : ""});
}

std::string soundText(ClipNode const& clip) {
    if (!clip.m_hasAudio) {
        return "-";
    }
    return joined({clip.m_audioSampleRate > 0 ? shortly(clip.m_audioSampleRate) + " Hz" : "",
                   clip.m_numAudioChannels > 0 ? channels(clip.m_numAudioChannels) : "",
                   isKnown(clip.m_audioCodec) ? printable(clip.m_audioCodec) : ""});
}

class ProbeLine {
public:
    explicit ProbeLine(std::string const& path, Status status) {
        m_writer.StartObject();
        text("path", path);
        text("status", status.getStr());
    }

    std::string end() {
        m_writer.EndObject();
        return std::string(m_buffer.GetString(), m_buffer.GetSize()) + '\n';
    }

    void text(std::string const& name, std::string const& value) {
        key(name);
        m_writer.String(value.data(), static_cast<rapidjson::SizeType>(value.size()));
    }

    void textIf(bool isThere, std::string const& name, std::string const& value) {
        isThere ? text(name, value) : null(name);
    }

    void intIf(bool isThere, std::string const& name, int value) {
        key(name);
        isThere ? m_writer.Int(value) : m_writer.Null();
    }

    void doubleIf(bool isThere, std::string const& name, double value) {
        key(name);
        isThere ? m_writer.Double(value) : m_writer.Null();
    }

    void flag(std::string const& name, bool value) {
        key(name);
        m_writer.Bool(value);
    }

    void time(std::string const& name, rapidotio::Time const& time) {
        if (!time.isDefined()) {
            null(name);
            return;
        }
        key(name);
        m_writer.StartObject();
        doubleIf(true, "value", time.value);
        doubleIf(true, "rate", time.rate);
        m_writer.EndObject();
    }

    void pair(std::string const& name, double first, double second) {
        key(name);
        m_writer.StartArray();
        m_writer.Double(first);
        m_writer.Double(second);
        m_writer.EndArray();
    }

    // The value of `name` is an object of the members that `write` adds.
    template <class Write>
    void object(std::string const& name, Write write) {
        key(name);
        m_writer.StartObject();
        write();
        m_writer.EndObject();
    }

private:
    void key(std::string const& name) {
        m_writer.Key(name.data(), static_cast<rapidjson::SizeType>(name.size()));
    }

    void null(std::string const& name) {
        key(name);
        m_writer.Null();
    }

    rapidjson::StringBuffer m_buffer;
    rapidjson::Writer<rapidjson::StringBuffer> m_writer{m_buffer};
};

} // namespace

std::string toProbeText(std::string const& path, ClipNode const& clip, TerminalStyle const& style) {
    return style.title(printable(path)) + "\n  time     " + timeText(clip) + "\n  picture  " +
           pictureText(clip) + "\n  sound    " + soundText(clip) + "\n  size     " +
           (clip.m_fileSizeInBytes < 0 ? "-" : sizeOf(clip.m_fileSizeInBytes)) + '\n';
}

std::string toProbeLine(std::string const& path, ClipNode const& clip) {
    ProbeLine line(path, Status::kSuccess);
    line.text("name", clip.m_name);
    line.time("start", clip.m_availableRange.start_time);
    line.time("duration", clip.m_availableRange.duration);
    std::string const* const timecode = findExtra(clip, kTimecodeStart);
    line.textIf(timecode != nullptr, "timecode", timecode ? *timecode : "");
    line.intIf(clip.m_pixelWidth >= 0, "width", clip.m_pixelWidth);
    line.intIf(clip.m_pixelHeight >= 0, "height", clip.m_pixelHeight);
    line.doubleIf(clip.m_pixelAspect > 0, "pixel_aspect", clip.m_pixelAspect);
    line.textIf(!clip.m_dataType.empty(), "data_type", clip.m_dataType);
    line.intIf(clip.m_numVideoChannels >= 0, "video_channels", clip.m_numVideoChannels);
    line.doubleIf(clip.m_frameRate > 0, "frame_rate", clip.m_frameRate);
    line.textIf(isKnown(clip.m_videoCodec), "video_codec", clip.m_videoCodec);
    line.flag("has_audio", clip.m_hasAudio);
    line.doubleIf(clip.m_audioSampleRate > 0, "audio_sample_rate", clip.m_audioSampleRate);
    line.intIf(clip.m_numAudioChannels >= 0, "audio_channels", clip.m_numAudioChannels);
    line.textIf(isKnown(clip.m_audioCodec), "audio_codec", clip.m_audioCodec);
    line.intIf(clip.m_fileSizeInBytes >= 0, "file_size", clip.m_fileSizeInBytes);
    line.object("bounds", [&] {
        line.pair("center", clip.m_boundsCenterX, clip.m_boundsCenterY);
        line.pair("size", clip.m_boundsSizeX, clip.m_boundsSizeY);
    });
    line.object("extra_data", [&] {
        for (auto const& [name, value] : clip.m_extraData) {
            line.text(name, value);
        }
    });
    return line.end();
}

std::string toProbeLine(std::string const& path, Status status) { return ProbeLine(path, status).end(); }

bool ProbeCommand::run(Streams const& streams, std::function<void(InputError const&)> const& tell) const {
    std::vector<MediaReading> const readings = readMedia(paths, request, streams);
    bool isGood = true;
    for (std::size_t i = 0; i < paths.size(); ++i) {
        std::string const& path = paths[i];
        SharedPtr<ClipNode> const clip =
            readings[i].status ? firstClipOf(readings[i].metadata) : SharedPtr<ClipNode>();
        if (clip) {
            writeToStream(streams.out,
                          isJson ? toProbeLine(path, *clip) : toProbeText(path, *clip, streams.outStyle));
            continue;
        }
        isGood = false;
        Status const status = readings[i].status ? Status(Status::kSourceNotFound) : readings[i].status;
        tell(InputError(path, reasonOf(status)));
        if (isJson) {
            writeToStream(streams.out, toProbeLine(path, status));
        }
    }
    return isGood;
}

} // namespace ORL_0_81::tool
