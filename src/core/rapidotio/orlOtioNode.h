// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#ifndef ORL_OTIO_NODE_H
#define ORL_OTIO_NODE_H

#include "orlRefCounted.h"
#include "orlSharedPtr.h"
#include "rapidotio/orlOtioPoint.h"
#include "rapidotio/orlOtioTimeRange.h"

#include <rapidjson/document.h>

#include <string>
#include <utility>
#include <vector>

/// \file
/// The tree of typed nodes that is laid over the JSON of a timeline document.
///
/// Reading is lazy and tolerant. A node reads its own fields in its constructor, and makes its children only
/// when a walk reaches it (orlOtioNodeIterator.h). Whatever is missing or of a wrong type leaves a field at
/// its default and a line in the diagnostics (orlOtioDebug.h); nothing fails outward.
///
/// Writing is normalising. Every class writes what it models, in a fixed order and in the newest form, and
/// nothing else. So a read and a write together bring a document to its normal form.
///
///     RootNode                  sees no visit
///       TimelineNode            "timeline" of the document, or the document itself
///         StackNode             "tracks"
///           TrackNode           "children"
///             ClipNode, GapNode "children"
///               effects         "effects"
///                 effects       "layers"
///
/// The factory accepts any schema at any level; the writers assume the shape above. Tracks, gaps, clips and
/// effects write themselves to an array, a timeline and a stack to an object. A node that is given the other
/// kind, and a timeline below a timeline, is left out of the text with all below it.
///
/// Ownership: whoever parsed the document owns it, and it must outlive the walk that expands the tree. What a
/// node needs for writing has been copied into its fields, so that a tree may be written after its document
/// is gone. Children are owned by their parent; a parent pointer owns nothing and is stale once the parent is
/// gone.
///
/// Thread safety: a tree belongs to one thread at a time, for the counts of its nodes are plain.

namespace ORL_0_81::rapidotio {

class NodeVisitor;

/// The default of a clip's codec names.
extern std::string const UNDEF_CODEC;

enum TrackKind { kTrackUnknown = 0, kTrackVideo = 1, kTrackAudio = 2 };

/// The base of all nodes.
class Node : public RefCountedST {
public:
    using Json = rapidjson::Value;
    using Allocator = rapidjson::Document::AllocatorType;

    /// A node without JSON, without a parent and with an empty name.
    Node();

    /// Reads the name: the string "name", or empty.
    Node(Json const& json, Node const* parent);

    ~Node() override;

    /// Calls the visit operation of the visitor that fits the class.
    virtual void accept(NodeVisitor& visitor);

    /// Calls the post-visit operation of the visitor that fits the class.
    virtual void postAccept(NodeVisitor& visitor);

    /// Makes the children from the JSON and appends them. Elements that become no node leave no hole.
    virtual void generateChildren();

    /// The kind of the nearest track above the node that has one.
    virtual TrackKind getTrackKind() const;

    /// Writes the node with all below it to `value`: an object or an array, as the class expects.
    virtual void toJson(Json& value, Allocator& allocator) const;

    /// The name of the array that the children come from.
    virtual char const* getChildrenArrayName() const;

    Json const& m_json; ///< what the node was built from; JSON null for a node made by hand
    std::vector<SharedPtr<Node>> m_children;
    Node const* m_parent;
    std::string m_name;
};

/// The one place where a JSON object becomes a node.
class NodeFactory {
public:
    /// \param json Its "OTIO_SCHEMA" decides: a known name, a point and the version 1.
    /// \param parent What the node takes for its parent; may be null.
    /// \returns a new node, or null when the schema is missing, of another version or not known.
    static SharedPtr<Node> buildNode(rapidjson::Value const& json, Node const* parent);
};

/// The top of a tree, above the timeline. Visitors do not see it.
class RootNode : public Node {
public:
    /// For a tree that is assembled by hand.
    RootNode();
    explicit RootNode(Json const& json);
    ~RootNode() override;

    /// Makes one child at most, of the member "timeline" if it is an object, else of the JSON itself.
    void generateChildren() override;
};

class TimelineNode : public Node {
public:
    TimelineNode(Json const& json, Node const* parent);

    /// For a tree that is assembled by hand: the version is "0.81" and the start undefined.
    explicit TimelineNode(std::string const& name);
    ~TimelineNode() override;

    void accept(NodeVisitor& visitor) override;
    void postAccept(NodeVisitor& visitor) override;

    /// Makes one child at most, of the object "tracks".
    void generateChildren() override;

    /// Fills the object in place.
    void toJson(Json& object, Allocator& allocator) const override;

    Time m_globalStartTime;
    std::string m_version; ///< as read; what is written is always the library's own
};

class StackNode : public Node {
public:
    /// For a tree that is assembled by hand.
    StackNode();
    StackNode(Json const& json, Node const* parent);
    ~StackNode() override;

    void accept(NodeVisitor& visitor) override;
    void postAccept(NodeVisitor& visitor) override;

    /// Adds itself to the object as "tracks". The name is not written.
    void toJson(Json& object, Allocator& allocator) const override;
};

class TrackNode : public Node {
public:
    TrackNode(Json const& json, Node const* parent);
    ~TrackNode() override;

    void accept(NodeVisitor& visitor) override;
    void postAccept(NodeVisitor& visitor) override;

    /// The track's own kind.
    TrackKind getTrackKind() const override;

    /// Appends itself to the array.
    void toJson(Json& array, Allocator& allocator) const override;

    TrackKind m_kind = kTrackUnknown;
};

class GapNode : public Node {
public:
    GapNode(Json const& json, Node const* parent);
    ~GapNode() override;

    void accept(NodeVisitor& visitor) override;
    void postAccept(NodeVisitor& visitor) override;

    /// Appends itself to the array.
    void toJson(Json& array, Allocator& allocator) const override;

    /// "effects"
    char const* getChildrenArrayName() const override;

    TimeRange m_sourceRange;
};

/// A piece of media: its ranges, where it is, its format, and which entity of production tracking it belongs
/// to.
///
/// Three generations of metadata are read, and the newest, "orl", is written. All defaults below mean
/// unknown.
class ClipNode : public Node {
public:
    ClipNode(Json const& json, Node const* parent);
    ~ClipNode() override;

    void accept(NodeVisitor& visitor) override;
    void postAccept(NodeVisitor& visitor) override;

    /// Appends itself to the array.
    void toJson(Json& array, Allocator& allocator) const override;

    /// "effects"
    char const* getChildrenArrayName() const override;

    TimeRange m_availableRange; ///< what the media offers
    TimeRange m_sourceRange;    ///< what the clip uses of it
    std::string m_targetUrl;
    double m_boundsCenterX = 0.0;
    double m_boundsCenterY = 0.0;
    double m_boundsSizeX = 0.0;
    double m_boundsSizeY = 0.0;
    std::string m_clipUid;
    int m_entityId = 0;
    std::string m_entityType;
    std::string m_pathToFrames;
    std::string m_uploadedMovie;
    std::string m_pathToMovie;
    int m_pixelWidth = -1;
    int m_pixelHeight = -1;
    std::string m_dataType;
    int m_numVideoChannels = -1;
    double m_pixelAspect = 0.0;
    double m_frameRate = 0.0; ///< frames per second
    bool m_hasAudio = false;
    double m_audioSampleRate = 0.0; ///< samples per second
    int m_numAudioChannels = -1;
    std::string m_videoCodec = UNDEF_CODEC;
    std::string m_audioCodec = UNDEF_CODEC;
    int m_fileSizeInBytes = -1;                                   ///< stays unknown from 2 GiB up
    std::vector<std::pair<std::string, std::string>> m_extraData; ///< name and value, in document order

    /// Reads "center" and "size" into the bounds; each stands alone.
    void parseBounds(Json const& object);

    /// Reads the tracking service's block of a media reference: the entity, the paths, the bounds.
    void parseMediaRefMetadata(Json const& object);

    /// Reads the identity of the clip, in the old form and in the written one.
    void parseLegacyMetadata(Json const& object);

private:
    void parseMediaReference(Json const& reference);
    void parseFormat(Json const& object);
    void parsePair(Json const& object, char const* name, char const* word, double& first, double& second);
};

/// The base of all effects; the factory makes none of this class itself.
class EffectNode : public Node {
public:
    EffectNode(Json const& json, Node const* parent);
    ~EffectNode() override;

    /// Adds the common members to the object of a derived class: "visible", "name", "effect_name", "layers"
    /// if there are any, and "layer_range" if the effect stands in the layers of another and the range is
    /// wholly defined.
    void toJson(Json& object, Allocator& allocator) const override;

    /// "layers"
    char const* getChildrenArrayName() const override;

    bool m_visible = true;
    TimeRange m_layerRange;
    std::string m_effectName;
};

/// How a clip is laid over what is below it.
class CompNode : public EffectNode {
public:
    CompNode(Json const& json, Node const* parent);
    ~CompNode() override;

    void accept(NodeVisitor& visitor) override;
    void postAccept(NodeVisitor& visitor) override;

    /// Appends itself to the array.
    void toJson(Json& array, Allocator& allocator) const override;

    std::string m_blendMode;
    float m_opacity = 0.0F;
};

class AngularMaskNode : public EffectNode {
public:
    AngularMaskNode(Json const& json, Node const* parent);
    ~AngularMaskNode() override;

    void accept(NodeVisitor& visitor) override;
    void postAccept(NodeVisitor& visitor) override;

    /// Appends itself to the array.
    void toJson(Json& array, Allocator& allocator) const override;

    double m_pivotX = 0.0;
    double m_pivotY = 0.0;
    float m_angleInRadians = 0.0F;
};

/// An ASC colour decision, neutral by default.
class CDLNode : public EffectNode {
public:
    CDLNode(Json const& json, Node const* parent);
    ~CDLNode() override;

    /// Brings the lists to three elements, the new ones neutral, and the saturation to 1. Elements that are
    /// there keep their values.
    void init();

    void accept(NodeVisitor& visitor) override;
    void postAccept(NodeVisitor& visitor) override;

    /// Appends itself to the array.
    void toJson(Json& array, Allocator& allocator) const override;

    std::vector<double> m_slope;
    std::vector<double> m_offset;
    std::vector<double> m_power;
    double m_saturation = 0.0;
};

/// The base of what is drawn in an annotation; the factory makes none of this class itself.
class LayerNode : public EffectNode {
public:
    LayerNode(Json const& json, Node const* parent);
    ~LayerNode() override;

    /// Adds the members of an effect, then "hold", "ghost", "ghost_before" and "ghost_after".
    void toJson(Json& object, Allocator& allocator) const override;

    bool m_hold = false;
    bool m_ghost = false;
    unsigned m_ghostBefore = 3; ///< frames
    unsigned m_ghostAfter = 3;  ///< frames
};

/// A painted stroke.
class PaintNode : public LayerNode {
public:
    PaintNode(Json const& json, Node const* parent);
    ~PaintNode() override;

    void accept(NodeVisitor& visitor) override;
    void postAccept(NodeVisitor& visitor) override;

    /// Appends itself to the array.
    void toJson(Json& array, Allocator& allocator) const override;

    std::vector<Point> m_points;
    std::vector<float> m_rgba; ///< as many components as were read
    std::string m_type;
    std::string m_brush;
};

/// A written text.
class TextNode : public LayerNode {
public:
    TextNode(Json const& json, Node const* parent);
    ~TextNode() override;

    void accept(NodeVisitor& visitor) override;
    void postAccept(NodeVisitor& visitor) override;

    /// Appends itself to the array.
    void toJson(Json& array, Allocator& allocator) const override;

    std::string m_text;
    std::string m_justification;
    std::string m_fontName;
    double m_fontSize = 0.0;
    double m_width = 0.0;
    double m_orientation = 0.0;
    double m_positionX = 0.0;
    double m_positionY = 0.0;
    std::vector<float> m_rgba; ///< as many components as were read
};

/// What a reviewer drew on a picture; the strokes and texts are its layers.
class AnnotationNode : public EffectNode {
public:
    AnnotationNode(Json const& json, Node const* parent);
    ~AnnotationNode() override;

    void accept(NodeVisitor& visitor) override;
    void postAccept(NodeVisitor& visitor) override;

    /// Appends itself to the array.
    void toJson(Json& array, Allocator& allocator) const override;
};

} // namespace ORL_0_81::rapidotio

#endif // ORL_OTIO_NODE_H
