// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "rapidotio/internal/orlOtioDebug.h"
#include "rapidotio/internal/orlOtioParsing.h"
#include "rapidotio/internal/orlOtioWriting.h"
#include "rapidotio/orlOtioNode.h"
#include "rapidotio/orlOtioNodeVisitor.h"

#include <algorithm>
#include <cerrno>
#include <cmath>
#include <cstdlib>
#include <limits>

namespace ORL_0_81::rapidotio {

namespace {

// atoi, but digits beyond the range of an int stop at its limits.
int toInt(char const* text) {
    constexpr long kMin = std::numeric_limits<int>::min();
    constexpr long kMax = std::numeric_limits<int>::max();
    return static_cast<int>(std::clamp(std::strtol(text, nullptr, 10), kMin, kMax));
}

// One component of a rectangle: a fraction or a 32-bit integer; anything else leaves it as it is.
void readComponent(rapidjson::Value const& element, double& component) {
    if (element.IsDouble() && std::isfinite(element.GetDouble())) {
        component = element.GetDouble();
    } else if (element.IsInt()) {
        component = element.GetInt();
    }
}

} // namespace

ClipNode::ClipNode(Json const& json, Node const* parent) : Node(json, parent) {
    Parsing::getTimeRange(json, "source_range", m_sourceRange);
    if (Json const* const reference = Parsing::findObject(json, "media_reference")) {
        parseMediaReference(*reference);
    }

    Json const* const metadata = Parsing::findObject(json, "metadata");
    if (!metadata) {
        return;
    }
    if (Json const* const tr = Parsing::findObject(*metadata, "tr")) {
        Parsing::getString(*tr, "clip_uid", m_clipUid);
        return;
    }
    Json const* const orl = Parsing::findObject(*metadata, "orl");
    parseLegacyMetadata(orl ? *orl : *metadata);
}

ClipNode::~ClipNode() = default;

void ClipNode::accept(NodeVisitor& visitor) { visitor.visitClipNode(*this); }

void ClipNode::postAccept(NodeVisitor& visitor) { visitor.postVisitClipNode(*this); }

char const* ClipNode::getChildrenArrayName() const { return "effects"; }

void ClipNode::parseMediaReference(Json const& reference) {
    Parsing::getTimeRange(reference, "available_range", m_availableRange);
    Parsing::getString(reference, "target_url", m_targetUrl);

    Json const* const metadata = Parsing::findObject(reference, "metadata");
    if (!metadata) {
        return;
    }
    if (Json const* const orl = Parsing::findObject(*metadata, "orl")) {
        parseFormat(*orl);
    }
    // Comes second, so that the tracking service's bounds win.
    if (Json const* const tr = Parsing::findObject(*metadata, "tr")) {
        parseMediaRefMetadata(*tr);
    }
}

void ClipNode::parseFormat(Json const& object) {
    if (Json const* const bounds = Parsing::findObject(object, "bounds")) {
        parseBounds(*bounds);
    }
    if (Json const* const resolution = Parsing::findArray(object, "pixel_resolution")) {
        if (resolution->Size() == 2) {
            Json const& width = (*resolution)[0];
            Json const& height = (*resolution)[1];
            m_pixelWidth = width.IsInt() ? width.GetInt() : m_pixelWidth;
            m_pixelHeight = height.IsInt() ? height.GetInt() : m_pixelHeight;
        } else {
            printDebug("Clip node '%s' has a pixel_resolution with %d values, expected 2\n", m_name.c_str(),
                       static_cast<int>(resolution->Size()));
        }
    }
    Parsing::getString(object, "data_type", m_dataType);
    Parsing::getInt(object, "num_video_channels", m_numVideoChannels);
    Parsing::getDouble(object, "pixel_aspect", m_pixelAspect);
    Parsing::getDouble(object, "frame_rate", m_frameRate);
    Parsing::getBool(object, "has_audio", m_hasAudio);
    Parsing::getDouble(object, "audio_sample_rate", m_audioSampleRate);
    Parsing::getInt(object, "num_audio_channels", m_numAudioChannels);
    Parsing::getString(object, "video_codec", m_videoCodec);
    Parsing::getString(object, "audio_codec", m_audioCodec);
    Parsing::getInt(object, "file_size_in_bytes", m_fileSizeInBytes);
    if (Json const* const extra = Parsing::findObject(object, "extra_data")) {
        m_extraData.reserve(m_extraData.size() + extra->MemberCount());
        for (auto const& member : extra->GetObject()) {
            if (member.value.IsString()) {
                m_extraData.emplace_back(member.name.GetString(), member.value.GetString());
            }
        }
    }
}

void ClipNode::parseBounds(Json const& object) {
    parsePair(object, "center", "bounds-center", m_boundsCenterX, m_boundsCenterY);
    parsePair(object, "size", "bounds-size", m_boundsSizeX, m_boundsSizeY);
}

void ClipNode::parsePair(Json const& object, char const* name, char const* word, double& first,
                         double& second) {
    Json const* const pair = Parsing::findArray(object, name);
    if (!pair) {
        return;
    }
    if (pair->Size() != 2) {
        printDebug("Clip node '%s' has a %s with %d values, expected 2\n", m_name.c_str(), word,
                   static_cast<int>(pair->Size()));
        return;
    }
    readComponent((*pair)[0], first);
    readComponent((*pair)[1], second);
}

void ClipNode::parseMediaRefMetadata(Json const& object) {
    std::string entity;
    Parsing::getString(object, "entity", entity);
    if (!entity.empty()) {
        // A slash, the type, a slash, the number. Whatever stands first counts as the slash.
        std::size_t const slash = entity.find('/', 1);
        if (slash != std::string::npos) {
            m_entityType = entity.substr(1, slash - 1);
            m_entityId = toInt(entity.c_str() + slash + 1);
        }
    }
    if (Json const* const metadata = Parsing::findObject(object, "entity_metadata")) {
        if (Json const* const movie = Parsing::findObject(*metadata, "tr_uploaded_movie_mp4")) {
            Parsing::getString(*movie, "url", m_uploadedMovie);
        }
        Parsing::getString(*metadata, "tr_path_to_frames", m_pathToFrames);
        Parsing::getString(*metadata, "tr_path_to_movie", m_pathToMovie);
    }
    if (Json const* const bounds = Parsing::findObject(object, "bounds")) {
        parseBounds(*bounds);
    }
}

void ClipNode::parseLegacyMetadata(Json const& object) {
    Parsing::getString(object, "id", m_clipUid);
    if (Json const* const paths = Parsing::findObject(object, "paths")) {
        Parsing::getString(*paths, "mp4", m_uploadedMovie);
        Parsing::getString(*paths, "file", m_pathToFrames);
        Parsing::getString(*paths, "movie", m_pathToMovie);
    }
    if (Json const* const entity = Parsing::findObject(object, "entity")) {
        Parsing::getInt(*entity, "id", m_entityId);
        Parsing::getString(*entity, "type", m_entityType);
    }
}

void ClipNode::toJson(Json& array, Allocator& allocator) const {
    if (array.IsArray()) {
        Json clip = Writing::buildNode(*this, allocator);
        array.PushBack(clip, allocator);
    }
}

namespace {

template <class Builder>
void describeFormat(Builder& orl, ClipNode const& clip) {
    orl.addConstant("ORL_SCHEMA", "ClipNodeMediaReferenceMetadata.1");
    orl.addObject("bounds", [&](auto& bounds) {
        bounds.addDoubles("center", {clip.m_boundsCenterX, clip.m_boundsCenterY});
        bounds.addDoubles("size", {clip.m_boundsSizeX, clip.m_boundsSizeY});
    });
    orl.addInts("pixel_resolution", {clip.m_pixelWidth, clip.m_pixelHeight});
    orl.addText("data_type", clip.m_dataType);
    orl.addInt("num_video_channels", clip.m_numVideoChannels);
    orl.addDouble("pixel_aspect", clip.m_pixelAspect);
    orl.addDouble("frame_rate", clip.m_frameRate);
    orl.addBool("has_audio", clip.m_hasAudio);
    orl.addDouble("audio_sample_rate", clip.m_audioSampleRate);
    orl.addInt("num_audio_channels", clip.m_numAudioChannels);
    orl.addText("video_codec", clip.m_videoCodec);
    orl.addText("audio_codec", clip.m_audioCodec);
    orl.addInt("file_size_in_bytes", clip.m_fileSizeInBytes);
    orl.addObject("extra_data", [&](auto& extra) {
        for (auto const& [name, value] : clip.m_extraData) {
            extra.addText(name, value);
        }
    });
}

template <class Builder>
void describeIdentity(Builder& orl, ClipNode const& clip) {
    orl.addConstant("ORL_SCHEMA", "ClipMetadata.1");
    orl.addObject("entity", [&](auto& entity) {
        entity.addInt("id", clip.m_entityId);
        entity.addText("type", clip.m_entityType);
    });
    orl.addObject("paths", [&](auto& paths) {
        paths.addText("mp4", clip.m_uploadedMovie);
        paths.addText("file", clip.m_pathToFrames);
        paths.addText("movie", clip.m_pathToMovie);
    });
    orl.addText("id", clip.m_clipUid);
}

} // namespace

template <class Handler>
void Writing::describe(ObjectBuilder<Handler>& members, ClipNode const& clip) {
    members.addText("name", clip.m_name);
    members.addConstant("OTIO_SCHEMA", "Clip.1");
    addChildren(members, clip);
    members.addTimeRange("source_range", clip.m_sourceRange);
    members.addObject("media_reference", [&](auto& reference) {
        reference.addConstant("OTIO_SCHEMA", "ExternalReference.1");
        reference.addTimeRange("available_range", clip.m_availableRange);
        reference.addObject("metadata", [&](auto& metadata) {
            metadata.addObject("orl", [&](auto& orl) { describeFormat(orl, clip); });
        });
        reference.addText("target_url", clip.m_targetUrl);
    });
    members.addObject("metadata", [&](auto& metadata) {
        metadata.addObject("orl", [&](auto& orl) { describeIdentity(orl, clip); });
    });
}

template void Writing::describe(ObjectBuilder<Collector>&, ClipNode const&);
template void Writing::describe(ObjectBuilder<TextHandler>&, ClipNode const&);

} // namespace ORL_0_81::rapidotio
