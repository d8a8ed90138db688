// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "rapidotio/internal/orlOtioEffectWriting.h"
#include "rapidotio/internal/orlOtioParsing.h"
#include "rapidotio/orlOtioNode.h"
#include "rapidotio/orlOtioNodeVisitor.h"

#include <cfloat>

namespace ORL_0_81::rapidotio {

// EffectNode

EffectNode::EffectNode(Json const& json, Node const* parent) : Node(json, parent) {
    Parsing::getBool(json, "visible", m_visible);
    Parsing::getTimeRange(json, "layer_range", m_layerRange);
    Parsing::getString(json, "effect_name", m_effectName);
}

EffectNode::~EffectNode() = default;

void EffectNode::toJson(Json& object, Allocator& allocator) const {
    if (!object.IsObject()) {
        return;
    }
    Json layers = Writing::childrenToValue(*this, allocator);
    bool const hasLayers = !layers.Empty();
    bool const hasLayerRange = dynamic_cast<EffectNode const*>(m_parent) &&
                               m_layerRange.start_time.isDefined() && m_layerRange.duration.isDefined();
    Writing::addMembers(object, allocator, [&](auto& members) {
        members.addBool("visible", m_visible);
        members.addText("name", m_name);
        members.addText("effect_name", m_effectName);
        if (hasLayers) {
            Writing::addChildren(members, *this);
        }
        if (hasLayerRange) {
            members.addTimeRange("layer_range", m_layerRange);
        }
    });
    if (hasLayers) {
        Writing::fillSlot(object, "layers", layers);
    }
}

char const* EffectNode::getChildrenArrayName() const { return "layers"; }

// CompNode

CompNode::CompNode(Json const& json, Node const* parent) : EffectNode(json, parent) {
    Parsing::getString(json, "blend_mode", m_blendMode);
    Parsing::getFloat(json, "opacity", m_opacity);
}

CompNode::~CompNode() = default;

void CompNode::accept(NodeVisitor& visitor) { visitor.visitEffectNode(*this); }

void CompNode::postAccept(NodeVisitor& visitor) { visitor.postVisitEffectNode(*this); }

void CompNode::toJson(Json& array, Allocator& allocator) const {
    appendEffect<EffectNode>(*this, array, allocator, [this](auto& members) {
        members.addConstant("OTIO_SCHEMA", "Comp.1");
        members.addText("blend_mode", m_blendMode);
        members.addDouble("opacity", static_cast<double>(m_opacity));
    });
}

// AngularMaskNode

AngularMaskNode::AngularMaskNode(Json const& json, Node const* parent) : EffectNode(json, parent) {
    if (!Parsing::hasSchema(json, "AngularMask.1")) {
        return;
    }
    std::vector<double> numbers;
    Json const* const pivot = Parsing::findArray(json, "pivot");
    if (pivot && Parsing::toNumbers(*pivot, DBL_MAX, numbers) && numbers.size() >= 2) {
        m_pivotX = numbers[0];
        m_pivotY = numbers[1];
    }
    Parsing::getFloat(json, "angle_in_radians", m_angleInRadians);
}

AngularMaskNode::~AngularMaskNode() = default;

void AngularMaskNode::accept(NodeVisitor& visitor) { visitor.visitEffectNode(*this); }

void AngularMaskNode::postAccept(NodeVisitor& visitor) { visitor.postVisitEffectNode(*this); }

void AngularMaskNode::toJson(Json& array, Allocator& allocator) const {
    appendEffect<EffectNode>(*this, array, allocator, [this](auto& members) {
        members.addConstant("OTIO_SCHEMA", "AngularMask.1");
        members.addDoubles("pivot", {m_pivotX, m_pivotY});
        members.addDouble("angle_in_radians", static_cast<double>(m_angleInRadians));
    });
}

// CDLNode

namespace {

constexpr std::size_t kCdlComponents = 3;

void readComponents(rapidjson::Value const& json, Parsing::Name name, std::vector<double>& components) {
    std::vector<double> numbers;
    rapidjson::Value const* const array = Parsing::findArray(json, name);
    if (array && Parsing::toNumbers(*array, DBL_MAX, numbers) && numbers.size() >= kCdlComponents) {
        numbers.resize(kCdlComponents);
        components.swap(numbers);
    }
}

} // namespace

CDLNode::CDLNode(Json const& json, Node const* parent) : EffectNode(json, parent) {
    init();
    if (!Parsing::hasSchema(json, "CDL.1")) {
        return;
    }
    readComponents(json, "slope", m_slope);
    readComponents(json, "offset", m_offset);
    readComponents(json, "power", m_power);
    Parsing::getDouble(json, "saturation", m_saturation);
}

CDLNode::~CDLNode() = default;

void CDLNode::init() {
    m_slope.resize(kCdlComponents, 1.0);
    m_offset.resize(kCdlComponents, 0.0);
    m_power.resize(kCdlComponents, 1.0);
    m_saturation = 1.0;
}

void CDLNode::accept(NodeVisitor& visitor) { visitor.visitEffectNode(*this); }

void CDLNode::postAccept(NodeVisitor& visitor) { visitor.postVisitEffectNode(*this); }

void CDLNode::toJson(Json& array, Allocator& allocator) const {
    // A list that a visitor left too short is filled up with neutral components.
    auto const three = [](std::vector<double> components, double neutral) {
        components.resize(kCdlComponents, neutral);
        return components;
    };
    appendEffect<EffectNode>(*this, array, allocator, [&](auto& members) {
        members.addConstant("OTIO_SCHEMA", "CDL.1");
        members.addDoubles("slope", three(m_slope, 1.0));
        members.addDoubles("offset", three(m_offset, 0.0));
        members.addDoubles("power", three(m_power, 1.0));
        members.addDouble("saturation", m_saturation);
    });
}

} // namespace ORL_0_81::rapidotio
