// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "orlLossTables.h"

namespace ORL_0_81::tool {

using rapidotio::ClipNode;

namespace {

constexpr Member plain(char const* name, Form form) { return Member{name, form}; }

constexpr Member constant(char const* name, char const* text) {
    return Member{name, Form::kConstant, 0, nullptr, text};
}

constexpr Member text(char const* name, std::string ClipNode::*clipText = nullptr) {
    Member member{name, Form::kText};
    member.clipText = clipText;
    return member;
}

// A number of the given form that is `neutral` when the reader refuses what stands there.
constexpr Member number(char const* name, Form form, double neutral) {
    Member member{name, form};
    member.neutral = neutral;
    return member;
}

constexpr Member object(char const* name, Table const& table, Form form = Form::kObject) {
    return Member{name, form, 0, &table};
}

constexpr Member numbers(char const* name, unsigned count) { return Member{name, Form::kNumbers, count}; }

constexpr Member components(char const* name, double ClipNode::*first, double ClipNode::*second) {
    Member member{name, Form::kComponents};
    member.neutral = 0.0;
    member.clipNumbers[0] = first;
    member.clipNumbers[1] = second;
    return member;
}

constexpr Member unused(char const* name, char const* why) {
    return Member{name, Form::kUnused, 0, nullptr, why};
}

// Times

constexpr Member timeMembers[] = {
    constant("OTIO_SCHEMA", "RationalTime.1"),
    plain("value", Form::kTimeValue),
    number("rate", Form::kTimeRate, 0.0),
};

} // namespace

Table const timeTable(timeMembers);

namespace {

constexpr Member timeRangeMembers[] = {
    object("start_time", timeTable, Form::kTime),
    object("duration", timeTable, Form::kTime),
    constant("OTIO_SCHEMA", "TimeRange.1"),
};

} // namespace

Table const timeRangeTable(timeRangeMembers);

namespace {

// Structure

constexpr Member wrapperMembers[] = {
    unused("timeline", nullptr),
};

constexpr Member timelineOrlMembers[] = {
    constant("ORL_SCHEMA", "TimelineMetadata.1"),
    constant("version", "0.81"),
};
constexpr Table timelineOrl(timelineOrlMembers);

constexpr Member timelineMetadataMembers[] = {object("orl", timelineOrl)};
constexpr Table timelineMetadata(timelineMetadataMembers);

constexpr Member timelineMembers[] = {
    constant("OTIO_SCHEMA", "Timeline.1"),
    text("name"),
    plain("tracks", Form::kTracks),
    object("metadata", timelineMetadata),
    object("global_start_time", timeTable, Form::kTime),
};
constexpr Table timeline(timelineMembers);

constexpr Member stackMembers[] = {
    constant("OTIO_SCHEMA", "Stack.1"),
    unused("name", "is not written"),
    plain("children", Form::kChildren),
};
constexpr Table stack(stackMembers);

constexpr Member trackMembers[] = {
    constant("OTIO_SCHEMA", "Track.1"),
    text("name"),
    plain("children", Form::kChildren),
    plain("kind", Form::kTrackKind),
};
constexpr Table track(trackMembers);

constexpr Member gapMembers[] = {
    constant("OTIO_SCHEMA", "Gap.1"),
    text("name"),
    plain("effects", Form::kChildren),
    object("source_range", timeRangeTable),
};
constexpr Table gap(gapMembers);

// Clips

constexpr Member boundsMembers[] = {
    components("center", &ClipNode::m_boundsCenterX, &ClipNode::m_boundsCenterY),
    components("size", &ClipNode::m_boundsSizeX, &ClipNode::m_boundsSizeY),
};
constexpr Table bounds(boundsMembers);

constexpr Member formatMembers[] = {
    constant("ORL_SCHEMA", "ClipNodeMediaReferenceMetadata.1"),
    object("bounds", bounds),
    number("pixel_resolution", Form::kIntegers, -1.0),
    text("data_type"),
    number("num_video_channels", Form::kInteger, -1.0),
    number("pixel_aspect", Form::kFraction, 0.0),
    number("frame_rate", Form::kFraction, 0.0),
    plain("has_audio", Form::kFlag),
    number("audio_sample_rate", Form::kFraction, 0.0),
    number("num_audio_channels", Form::kInteger, -1.0),
    text("video_codec"),
    text("audio_codec"),
    number("file_size_in_bytes", Form::kInteger, -1.0),
    plain("extra_data", Form::kTexts),
};
constexpr Table format(formatMembers);

constexpr Member uploadedMovieMembers[] = {text("url", &ClipNode::m_uploadedMovie)};
constexpr Table uploadedMovie(uploadedMovieMembers);

constexpr Member serviceEntityMembers[] = {
    object("tr_uploaded_movie_mp4", uploadedMovie),
    text("tr_path_to_frames", &ClipNode::m_pathToFrames),
    text("tr_path_to_movie", &ClipNode::m_pathToMovie),
};
constexpr Table serviceEntity(serviceEntityMembers);

constexpr Member serviceMembers[] = {
    plain("entity", Form::kEntity),
    object("entity_metadata", serviceEntity),
    object("bounds", bounds),
};
constexpr Table service(serviceMembers);

constexpr Member referenceMetadataMembers[] = {
    object("orl", format),
    object("tr", service),
};
constexpr Table referenceMetadata(referenceMetadataMembers);

constexpr Member referenceMembers[] = {
    constant("OTIO_SCHEMA", "ExternalReference.1"),
    object("available_range", timeRangeTable),
    text("target_url"),
    object("metadata", referenceMetadata),
};
constexpr Table reference(referenceMembers);

constexpr Member clipMembers[] = {
    constant("OTIO_SCHEMA", "Clip.1"),    text("name"),
    plain("effects", Form::kChildren),    object("source_range", timeRangeTable),
    object("media_reference", reference), plain("metadata", Form::kClipMetadata),
};
constexpr Table clip(clipMembers);

// The identity of a clip

constexpr Member entityMembers[] = {
    number("id", Form::kInteger, 0.0),
    text("type"),
};
constexpr Table entity(entityMembers);

constexpr Member pathsMembers[] = {text("mp4"), text("file"), text("movie")};
constexpr Table paths(pathsMembers);

constexpr Member identityMembers[] = {
    constant("ORL_SCHEMA", "ClipMetadata.1"),
    text("id"),
    object("paths", paths),
    object("entity", entity),
};
constexpr Table identity(identityMembers);

constexpr Member trackedMembers[] = {text("clip_uid")};
constexpr Table tracked(trackedMembers);

constexpr char besideTr[] = "is not read beside \"tr\"";
constexpr char besideOrl[] = "is not read beside \"orl\"";

constexpr Member trackedMetadataMembers[] = {
    object("tr", tracked),     unused("orl", besideTr),    unused("id", besideTr),
    unused("paths", besideTr), unused("entity", besideTr),
};
constexpr Table trackedMetadata(trackedMetadataMembers);

constexpr Member ownMetadataMembers[] = {
    object("tr", tracked),      object("orl", identity),     unused("id", besideOrl),
    unused("paths", besideOrl), unused("entity", besideOrl),
};
constexpr Table ownMetadata(ownMetadataMembers);

constexpr Member oldMetadataMembers[] = {object("tr", tracked), object("orl", identity)};
constexpr Table oldMetadata(oldMetadataMembers, &identity);

// Effects

constexpr Member effectMembers[] = {
    plain("visible", Form::kFlag),
    text("name"),
    text("effect_name"),
    plain("layers", Form::kChildren),
    object("layer_range", timeRangeTable, Form::kLayerRange),
};
constexpr Table effect(effectMembers);

constexpr Member compMembers[] = {
    constant("OTIO_SCHEMA", "Comp.1"),
    text("blend_mode"),
    number("opacity", Form::kFloat, 0.0),
};
constexpr Table comp(compMembers, &effect);

constexpr Member maskMembers[] = {
    constant("OTIO_SCHEMA", "AngularMask.1"),
    numbers("pivot", 2),
    number("angle_in_radians", Form::kFloat, 0.0),
};
constexpr Table mask(maskMembers, &effect);

constexpr Member cdlMembers[] = {
    constant("OTIO_SCHEMA", "CDL.1"),
    numbers("slope", 3),
    numbers("offset", 3),
    numbers("power", 3),
    number("saturation", Form::kFraction, 1.0),
};
constexpr Table cdl(cdlMembers, &effect);

constexpr Member annotationMembers[] = {constant("OTIO_SCHEMA", "Annotation.1")};
constexpr Table annotation(annotationMembers, &effect);

constexpr Member layerMembers[] = {
    plain("hold", Form::kFlag),
    plain("ghost", Form::kFlag),
    number("ghost_before", Form::kUnsigned, 3.0),
    number("ghost_after", Form::kUnsigned, 3.0),
};
constexpr Table layer(layerMembers, &effect);

constexpr Member paintMembers[] = {
    constant("OTIO_SCHEMA", "Paint.1"),
    plain("points", Form::kPoints),
    plain("rgba", Form::kColour),
    text("type"),
    text("brush"),
};
constexpr Table paint(paintMembers, &layer);

constexpr Member textMembers[] = {
    constant("OTIO_SCHEMA", "Text.1"),
    text("text"),
    text("justification"),
    text("fontName"),
    number("fontSize", Form::kFraction, 0.0),
    number("width", Form::kFraction, 0.0),
    number("orientation", Form::kFraction, 0.0),
    numbers("position", 2),
    plain("rgba", Form::kColour),
};
constexpr Table textLayer(textMembers, &layer);

constexpr Member pointMembers[] = {
    constant("OTIO_SCHEMA", "Point.1"),
    number("x", Form::kFraction, 0.0),
    number("y", Form::kFraction, 0.0),
    number("width", Form::kFraction, 0.0),
};

constexpr NodeSchema nodeSchemas[] = {
    {"Timeline.1", &timeline, false, false},
    {"Stack.1", &stack, false, true},
    {"Track.1", &track, true, true},
    {"Clip.1", &clip, true, true},
    {"Comp.1", &comp, true, true},
    {"AngularMask.1", &mask, true, true},
    {"CDL.1", &cdl, true, true},
    {"Paint.1", &paint, true, true},
    {"Text.1", &textLayer, true, true},
    {"Annotation.1", &annotation, true, true},
    {"Gap.1", &gap, true, true},
};

bool holdsObject(rapidjson::Value const& object, char const* name) {
    auto const member = object.FindMember(name);
    return member != object.MemberEnd() && member->value.IsObject();
}

} // namespace

Table const wrapperTable(wrapperMembers);
Table const pointTable(pointMembers);

NodeSchema const* findNodeSchema(std::string_view schema) {
    for (NodeSchema const& known : nodeSchemas) {
        if (schema == known.name) {
            return &known;
        }
    }
    return nullptr;
}

Table const& clipMetadataTable(rapidjson::Value const& metadata) {
    if (holdsObject(metadata, "tr")) {
        return trackedMetadata;
    }
    return holdsObject(metadata, "orl") ? ownMetadata : oldMetadata;
}

} // namespace ORL_0_81::tool
