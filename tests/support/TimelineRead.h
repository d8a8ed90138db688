// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#ifndef ORL_TEST_SUPPORT_TIMELINE_READ_H
#define ORL_TEST_SUPPORT_TIMELINE_READ_H

#include "support/Json.h"

#include <array>
#include <optional>
#include <ostream>
#include <stdexcept>
#include <string>
#include <vector>

/// \file
/// Timelines in normal form, read back without the library and with every number exact.

namespace orlTest {

inline rapidjson::Value const& member(rapidjson::Value const& object, char const* name) {
    if (!object.IsObject() || !object.HasMember(name)) {
        throw std::invalid_argument("no member " + std::string(name) + " in " + textOf(object));
    }
    return object[name];
}

/// A time as it stands in a document, where either half may be missing.
struct TimeRead {
    std::optional<double> value;
    std::optional<double> rate;

    bool operator==(TimeRead const& other) const { return value == other.value && rate == other.rate; }
};

inline TimeRead const kNoTime{};

inline std::ostream& operator<<(std::ostream& out, TimeRead const& time) {
    out.precision(17);
    out << (time.value ? "" : "no value");
    if (time.value) {
        out << *time.value;
    }
    out << " at ";
    if (time.rate) {
        return out << *time.rate;
    }
    return out << "no rate";
}

inline TimeRead readTime(rapidjson::Value const& object) {
    TimeRead time;
    if (object.HasMember("value")) {
        time.value = object["value"].GetDouble();
    }
    if (object.HasMember("rate")) {
        time.rate = object["rate"].GetDouble();
    }
    return time;
}

struct ClipRead {
    std::string name;
    TimeRead availableStart;
    TimeRead availableDuration;
    TimeRead sourceStart;
    TimeRead sourceDuration;
    std::array<double, 4> bounds; ///< centre x and y, size x and y
    int pixelWidth;
    std::string text; ///< the whole clip
};

inline ClipRead readClip(rapidjson::Value const& clip) {
    rapidjson::Value const& reference = member(clip, "media_reference");
    rapidjson::Value const& available = member(reference, "available_range");
    rapidjson::Value const& source = member(clip, "source_range");
    rapidjson::Value const& format = member(member(reference, "metadata"), "orl");
    rapidjson::Value const& center = member(member(format, "bounds"), "center");
    rapidjson::Value const& size = member(member(format, "bounds"), "size");
    if (center.Size() != 2 || size.Size() != 2) {
        throw std::invalid_argument("no bounds in " + textOf(clip));
    }
    return {member(clip, "name").GetString(),
            readTime(member(available, "start_time")),
            readTime(member(available, "duration")),
            readTime(member(source, "start_time")),
            readTime(member(source, "duration")),
            {center[0].GetDouble(), center[1].GetDouble(), size[0].GetDouble(), size[1].GetDouble()},
            member(format, "pixel_resolution")[0].GetInt(),
            textOf(clip)};
}

struct TimelineRead {
    std::string name;
    TimeRead start;
    std::vector<std::string> trackNames; ///< of the stack's own tracks
    std::vector<std::string> trackTexts;
    std::vector<ClipRead> clips; ///< at any depth, in walking order

    std::string clipNames() const {
        std::string result;
        for (ClipRead const& clip : clips) {
            result += (result.empty() ? "" : " ") + clip.name;
        }
        return result;
    }
};

inline void collectClips(rapidjson::Value const& node, std::vector<ClipRead>& clips) {
    if (std::string(member(node, "OTIO_SCHEMA").GetString()) == "Clip.1") {
        clips.push_back(readClip(node));
    } else if (node.HasMember("children")) {
        for (rapidjson::Value const& child : node["children"].GetArray()) {
            collectClips(child, clips);
        }
    }
}

inline rapidjson::Document parsedExactly(std::string const& text) {
    rapidjson::Document document;
    document.Parse<rapidjson::kParseFullPrecisionFlag>(text.c_str(), text.size());
    if (document.HasParseError()) {
        throw std::invalid_argument("no JSON: " + text);
    }
    return document;
}

inline TimelineRead readTimeline(std::string const& text) {
    rapidjson::Document const document = parsedExactly(text);
    TimelineRead result;
    result.name = member(document, "name").GetString();
    result.start = readTime(member(document, "global_start_time"));
    rapidjson::Value const& stack = member(document, "tracks");
    for (rapidjson::Value const& track : member(stack, "children").GetArray()) {
        result.trackNames.push_back(member(track, "name").GetString());
        result.trackTexts.push_back(textOf(track));
    }
    collectClips(stack, result.clips);
    return result;
}

} // namespace orlTest

#endif // ORL_TEST_SUPPORT_TIMELINE_READ_H
