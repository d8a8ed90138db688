// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "orlInfoCommand.h"
#include "orlLossReport.h"
#include "orlTimelineSummary.h"

#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

namespace ORL_0_81::tool {

namespace {

class JsonLine {
public:
    std::string write(std::string const& file, TimelineSummary const& summary, LossReport const& losses);

private:
    using Writer = rapidjson::Writer<rapidjson::StringBuffer>;

    void key(char const* name) { m_writer.Key(name); }

    void text(char const* name, std::string const& value) {
        key(name);
        m_writer.String(value.data(), static_cast<rapidjson::SizeType>(value.size()));
    }

    void textOrNull(char const* name, std::string const& value) {
        value.empty() ? null(name) : text(name, value);
    }

    void null(char const* name) {
        key(name);
        m_writer.Null();
    }

    void number(char const* name, double value) {
        key(name);
        m_writer.Double(value);
    }

    void count(char const* name, std::size_t value) {
        key(name);
        m_writer.Uint64(value);
    }

    // The value of `name` is what `write` makes of `value`, or null without one.
    template <class Value, class Write>
    void optional(char const* name, std::optional<Value> const& value, Write write) {
        if (!value) {
            null(name);
            return;
        }
        key(name);
        m_writer.StartObject();
        write(*value);
        m_writer.EndObject();
    }

    void moment(Moment const& value) {
        number("seconds", value.seconds);
        number("frames", value.frames);
    }

    void counts(Counts const& counts) {
        count("clips", counts.clips);
        count("gaps", counts.gaps);
        count("effects", counts.effects);
    }

    void start(TimelineSummary const& summary);
    void contents(TrackSummary const& track);
    void track(TrackSummary const& track);
    void clip(ClipSummary const& clip);
    void notRead(LossReport const& losses);

    rapidjson::StringBuffer m_buffer;
    Writer m_writer{m_buffer};
};

std::string JsonLine::write(std::string const& file, TimelineSummary const& summary,
                            LossReport const& losses) {
    m_writer.StartObject();
    text("file", file);
    text("name", summary.name);
    start(summary);
    key("counts");
    m_writer.StartObject();
    count("tracks", summary.tracks.size());
    counts(summary.total());
    m_writer.EndObject();
    key("tracks");
    m_writer.StartArray();
    for (TrackSummary const& each : summary.tracks) {
        track(each);
    }
    m_writer.EndArray();
    key("outside_tracks");
    m_writer.StartObject();
    contents(summary.outside);
    m_writer.EndObject();
    notRead(losses);
    m_writer.EndObject();
    return std::string(m_buffer.GetString(), m_buffer.GetSize()) + '\n';
}

void JsonLine::start(TimelineSummary const& summary) {
    optional("start", summary.start, [&](Moment const& value) {
        moment(value);
        number("rate", *summary.startRate);
    });
}

void JsonLine::contents(TrackSummary const& track) {
    key("counts");
    m_writer.StartObject();
    counts(track.counts);
    m_writer.EndObject();
    key("clips");
    m_writer.StartArray();
    for (ClipSummary const& each : track.clips) {
        clip(each);
    }
    m_writer.EndArray();
}

void JsonLine::track(TrackSummary const& track) {
    m_writer.StartObject();
    text("name", track.name);
    switch (track.kind) {
    case rapidotio::kTrackVideo:
        text("kind", "video");
        break;
    case rapidotio::kTrackAudio:
        text("kind", "audio");
        break;
    default:
        null("kind");
        break;
    }
    count("depth", track.depth);
    contents(track);
    m_writer.EndObject();
}

void JsonLine::clip(ClipSummary const& clip) {
    auto const writeMoment = [this](Moment const& value) { moment(value); };
    m_writer.StartObject();
    text("name", clip.name);
    optional("source_start", clip.start, writeMoment);
    optional("source_length", clip.length, writeMoment);
    clip.rate ? number("rate", *clip.rate) : null("rate");
    optional("resolution", clip.resolution, [this](Resolution const& value) {
        key("width");
        m_writer.Int(value.width);
        key("height");
        m_writer.Int(value.height);
    });
    textOrNull("url", clip.url);
    textOrNull("frames_path", clip.framesPath);
    textOrNull("movie_path", clip.moviePath);
    textOrNull("uploaded_movie", clip.uploadedMovie);
    m_writer.EndObject();
}

void JsonLine::notRead(LossReport const& losses) {
    key("not_read");
    m_writer.StartArray();
    for (LossGroup const& group : losses.groups()) {
        if (group.kind == LossKind::kSchemaNotHandled) {
            m_writer.StartObject();
            count("count", group.count);
            text("reason", group.what);
            text("first", group.first);
            m_writer.EndObject();
        }
    }
    m_writer.EndArray();
}

} // namespace

std::string toJsonLine(std::string const& file, TimelineSummary const& summary, LossReport const& losses) {
    return JsonLine().write(file, summary, losses);
}

} // namespace ORL_0_81::tool
