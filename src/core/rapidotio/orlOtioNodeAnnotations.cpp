// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "rapidotio/internal/orlOtioEffectWriting.h"
#include "rapidotio/internal/orlOtioParsing.h"
#include "rapidotio/orlOtioNode.h"
#include "rapidotio/orlOtioNodeVisitor.h"

#include <cfloat>

namespace ORL_0_81::rapidotio {

namespace {

void readColour(rapidjson::Value const& json, std::vector<float>& rgba) {
    std::vector<double> numbers;
    rapidjson::Value const* const array = Parsing::findArray(json, "rgba");
    if (array && Parsing::toNumbers(*array, static_cast<double>(FLT_MAX), numbers)) {
        rgba.reserve(numbers.size());
        for (double const number : numbers) {
            rgba.push_back(static_cast<float>(number));
        }
    }
}

} // namespace

// LayerNode

LayerNode::LayerNode(Json const& json, Node const* parent) : EffectNode(json, parent) {
    Parsing::getBool(json, "hold", m_hold);
    Parsing::getBool(json, "ghost", m_ghost);
    Parsing::getUInt(json, "ghost_before", m_ghostBefore);
    Parsing::getUInt(json, "ghost_after", m_ghostAfter);
}

LayerNode::~LayerNode() = default;

void LayerNode::toJson(Json& object, Allocator& allocator) const {
    if (!object.IsObject()) {
        return;
    }
    EffectNode::toJson(object, allocator);
    Writing::addMembers(object, allocator, [this](auto& members) {
        members.addBool("hold", m_hold);
        members.addBool("ghost", m_ghost);
        members.addUInt("ghost_before", m_ghostBefore);
        members.addUInt("ghost_after", m_ghostAfter);
    });
}

// PaintNode

PaintNode::PaintNode(Json const& json, Node const* parent) : LayerNode(json, parent) {
    if (!Parsing::hasSchema(json, "Paint.1")) {
        return;
    }
    if (Json const* const points = Parsing::findArray(json, "points")) {
        m_points.resize(points->Size());
        for (rapidjson::SizeType i = 0; i < points->Size(); ++i) {
            // An element of another schema leaves a zero point, so that its neighbours keep their places.
            Json const& element = (*points)[i];
            if (Parsing::hasSchema(element, "Point.1")) {
                Parsing::getDouble(element, "x", m_points[i].x);
                Parsing::getDouble(element, "y", m_points[i].y);
                Parsing::getDouble(element, "width", m_points[i].width);
            }
        }
    }
    readColour(json, m_rgba);
    Parsing::getString(json, "type", m_type);
    Parsing::getString(json, "brush", m_brush);
}

PaintNode::~PaintNode() = default;

void PaintNode::accept(NodeVisitor& visitor) { visitor.visitEffectNode(*this); }

void PaintNode::postAccept(NodeVisitor& visitor) { visitor.postVisitEffectNode(*this); }

void PaintNode::toJson(Json& array, Allocator& allocator) const {
    appendEffect<LayerNode>(*this, array, allocator, [this](auto& members) {
        members.addConstant("OTIO_SCHEMA", "Paint.1");
        members.addObjects("points", m_points,
                           [](auto& object, Point const& point) { object.addMembersOf(point); });
        members.addDoubles("rgba", m_rgba);
        members.addText("type", m_type);
        members.addText("brush", m_brush);
    });
}

// TextNode

TextNode::TextNode(Json const& json, Node const* parent) : LayerNode(json, parent) {
    if (!Parsing::hasSchema(json, "Text.1")) {
        return;
    }
    Parsing::getString(json, "text", m_text);
    Parsing::getString(json, "justification", m_justification);
    Parsing::getString(json, "fontName", m_fontName);
    Parsing::getDouble(json, "fontSize", m_fontSize);
    Parsing::getDouble(json, "width", m_width);
    Parsing::getDouble(json, "orientation", m_orientation);
    std::vector<double> numbers;
    Json const* const position = Parsing::findArray(json, "position");
    if (position && Parsing::toNumbers(*position, DBL_MAX, numbers) && numbers.size() >= 2) {
        m_positionX = numbers[0];
        m_positionY = numbers[1];
    }
    readColour(json, m_rgba);
}

TextNode::~TextNode() = default;

void TextNode::accept(NodeVisitor& visitor) { visitor.visitEffectNode(*this); }

void TextNode::postAccept(NodeVisitor& visitor) { visitor.postVisitEffectNode(*this); }

void TextNode::toJson(Json& array, Allocator& allocator) const {
    appendEffect<LayerNode>(*this, array, allocator, [this](auto& members) {
        members.addConstant("OTIO_SCHEMA", "Text.1");
        members.addText("text", m_text);
        members.addText("justification", m_justification);
        members.addText("fontName", m_fontName);
        members.addDouble("fontSize", m_fontSize);
        members.addDouble("width", m_width);
        members.addDouble("orientation", m_orientation);
        members.addDoubles("position", {m_positionX, m_positionY});
        members.addDoubles("rgba", m_rgba);
    });
}

// AnnotationNode

AnnotationNode::AnnotationNode(Json const& json, Node const* parent) : EffectNode(json, parent) {}

AnnotationNode::~AnnotationNode() = default;

void AnnotationNode::accept(NodeVisitor& visitor) { visitor.visitEffectNode(*this); }

void AnnotationNode::postAccept(NodeVisitor& visitor) { visitor.postVisitEffectNode(*this); }

void AnnotationNode::toJson(Json& array, Allocator& allocator) const {
    appendEffect<EffectNode>(*this, array, allocator, [](auto& members) {
        members.addConstant("OTIO_SCHEMA", "Annotation.1"); //
    });
}

} // namespace ORL_0_81::rapidotio
