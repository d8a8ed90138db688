// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "orlMediaDocument.h"

#include "internal/orlExactNumber.h"
#include "internal/orlValidUtf8.h"

#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

#include <cmath>

namespace ORL_0_81::media {

namespace {

// A writer with the forms that a document is made of. All keys are literals.
class DocumentWriter {
public:
    std::string text() const { return std::string(m_buffer.GetString(), m_buffer.GetSize()); }

    void beginObject() { m_writer.StartObject(); }
    void endObject() { m_writer.EndObject(); }
    void beginArray() { m_writer.StartArray(); }
    void endArray() { m_writer.EndArray(); }

    void key(char const* name) { m_writer.Key(name); }

    void add(char const* name, std::string const& value) {
        key(name);
        string(value);
    }

    void add(char const* name, char const* value) {
        key(name);
        m_writer.String(value);
    }

    void add(char const* name, bool value) {
        key(name);
        m_writer.Bool(value);
    }

    void add(char const* name, std::int64_t value) {
        key(name);
        m_writer.Int64(value);
    }

    void add(char const* name, int value) { add(name, std::int64_t{value}); }

    void add(char const* name, double value) {
        key(name);
        number(value);
    }

    void addPair(char const* name, double first, double second) {
        key(name);
        beginArray();
        number(first);
        number(second);
        endArray();
    }

    void addPair(char const* name, int first, int second) {
        key(name);
        beginArray();
        m_writer.Int(first);
        m_writer.Int(second);
        endArray();
    }

    void addTime(char const* name, std::int64_t value, double rate) {
        beginTime(name);
        add("value", static_cast<double>(value));
        add("rate", rate);
        endObject();
    }

    void addOpenTime(char const* name, double rate) {
        beginTime(name);
        add("rate", rate);
        endObject();
    }

    void string(std::string const& value) {
        m_writer.String(value.data(), static_cast<rapidjson::SizeType>(value.size()));
    }

private:
    void beginTime(char const* name) {
        key(name);
        beginObject();
        add("OTIO_SCHEMA", "RationalTime.1");
    }

    void number(double value) {
        std::string const digits = toExactText(std::isfinite(value) ? value : 0.0);
        m_writer.RawValue(digits.data(), digits.size(), rapidjson::kNumberType);
    }

    rapidjson::StringBuffer m_buffer;
    rapidjson::Writer<rapidjson::StringBuffer> m_writer{m_buffer};
};

void writeRange(DocumentWriter& writer, char const* name, MediaDescription const& description) {
    writer.key(name);
    writer.beginObject();
    writer.addTime("start_time", description.start, description.rate);
    if (description.frameCount >= 0) {
        writer.addTime("duration", description.frameCount, description.rate);
    } else {
        writer.addOpenTime("duration", description.rate);
    }
    writer.add("OTIO_SCHEMA", "TimeRange.1");
    writer.endObject();
}

void writeFormat(DocumentWriter& writer, MediaDescription const& description, Bounds const& bounds) {
    writer.key("orl");
    writer.beginObject();
    writer.add("ORL_SCHEMA", "ClipNodeMediaReferenceMetadata.1");
    writer.key("bounds");
    writer.beginObject();
    writer.addPair("center", bounds.getCenterX(), bounds.getCenterY());
    writer.addPair("size", bounds.getSizeX(), bounds.getSizeY());
    writer.endObject();
    writer.addPair("pixel_resolution", description.width, description.height);
    writer.add("data_type", description.dataType);
    writer.add("num_video_channels", description.channels);
    writer.add("pixel_aspect", description.pixelAspect);
    writer.add("frame_rate", description.frameRate);
    writer.add("has_audio", description.hasAudio);
    writer.add("audio_sample_rate", description.audioSampleRate);
    writer.add("num_audio_channels", description.audioChannels);
    writer.add("video_codec", description.videoCodec);
    writer.add("audio_codec", description.audioCodec);
    writer.add("file_size_in_bytes", description.fileSize);
    writer.key("extra_data");
    writer.beginObject();
    for (auto const& [name, value] : description.extraData) {
        std::string const validName = toValidUtf8(name);
        writer.key(validName.c_str());
        writer.string(toValidUtf8(value));
    }
    writer.endObject();
    writer.endObject();
}

// Nothing is known of the clip's part in any production; the members are there all the same.
void writeClipMetadata(DocumentWriter& writer) {
    writer.key("metadata");
    writer.beginObject();
    writer.key("orl");
    writer.beginObject();
    writer.add("ORL_SCHEMA", "ClipMetadata.1");
    writer.key("entity");
    writer.beginObject();
    writer.add("id", 0);
    writer.add("type", "");
    writer.endObject();
    writer.key("paths");
    writer.beginObject();
    writer.add("mp4", "");
    writer.add("file", "");
    writer.add("movie", "");
    writer.endObject();
    writer.add("id", "");
    writer.endObject();
    writer.endObject();
}

void writeClip(DocumentWriter& writer, std::string const& url, std::string const& name,
               MediaDescription const& description, Bounds const& bounds) {
    writer.beginObject();
    writer.add("name", name);
    writer.add("OTIO_SCHEMA", "Clip.1");
    writer.key("effects");
    writer.beginArray();
    writer.endArray();
    writeRange(writer, "source_range", description);
    writer.key("media_reference");
    writer.beginObject();
    writer.add("OTIO_SCHEMA", "ExternalReference.1");
    writeRange(writer, "available_range", description);
    writer.key("metadata");
    writer.beginObject();
    writeFormat(writer, description, bounds);
    writer.endObject();
    writer.add("target_url", url);
    writer.endObject();
    writeClipMetadata(writer);
    writer.endObject();
}

void writeStack(DocumentWriter& writer, std::string const& url, std::string const& name,
                MediaDescription const& description, Bounds const& bounds) {
    writer.beginObject();
    writer.add("OTIO_SCHEMA", "Stack.1");
    writer.key("children");
    writer.beginArray();
    writer.beginObject();
    writer.add("name", "");
    writer.add("OTIO_SCHEMA", "Track.1");
    writer.key("children");
    writer.beginArray();
    writeClip(writer, url, name, description, bounds);
    writer.endArray();
    writer.add("kind", description.hasPicture ? "Video" : "Audio");
    writer.endObject();
    writer.endArray();
    writer.endObject();
}

} // namespace

std::string writeDocument(std::string const& url, MediaDescription const& description, Bounds const& bounds) {
    std::string const name = toValidUtf8(description.name);
    DocumentWriter writer;
    writer.beginObject();
    writer.key("tracks");
    writeStack(writer, url, name, description, bounds);
    writer.add("name", name);
    writer.add("OTIO_SCHEMA", "Timeline.1");
    writer.key("metadata");
    writer.beginObject();
    writer.key("orl");
    writer.beginObject();
    writer.add("ORL_SCHEMA", "TimelineMetadata.1");
    writer.add("version", "0.81");
    writer.endObject();
    writer.endObject();
    writer.addTime("global_start_time", description.start, description.rate);
    writer.endObject();
    return writer.text();
}

} // namespace ORL_0_81::media
