// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "orlAnnotation.h"

#include "internal/orlHidden.h"

namespace ORL_0_81 {

// Annotation

class ORL_HIDDEN Annotation::Imp {
public:
    Vector<SharedPtr<Layer>> m_layers;
    bool m_visible = true;
};

Annotation::Annotation() : m_imp(new Imp) {}

Annotation::Annotation(Annotation const& other) : m_imp(new Imp(*other.m_imp)) {}

Annotation::~Annotation() { delete m_imp; }

Annotation& Annotation::operator=(Annotation const& other) {
    if (this != &other) {
        *m_imp = *other.m_imp;
    }
    return *this;
}

Vector<SharedPtr<Annotation::Layer>>& Annotation::getLayers() { return m_imp->m_layers; }

Vector<SharedPtr<Annotation::Layer>> const& Annotation::getLayers() const { return m_imp->m_layers; }

bool Annotation::isVisible() const { return m_imp->m_visible; }

void Annotation::setVisible(bool visible) { m_imp->m_visible = visible; }

// Layer

class ORL_HIDDEN Annotation::Layer::Imp {
public:
    FrameRange m_range;
    Color m_color;
    bool m_ghost = false;
    unsigned int m_ghostAfter = 3;
    unsigned int m_ghostBefore = 3;
    bool m_hold = false;
    bool m_visible = true;
};

Annotation::Layer::Layer() : m_imp(new Imp) {}

Annotation::Layer::Layer(FrameRange const& range, Color const& color, bool visible)
    : m_imp(new Imp{range, color, false, 3, 3, false, visible}) {}

Annotation::Layer::Layer(Layer const& other) : RefCountedMT(), m_imp(new Imp(*other.m_imp)) {}

Annotation::Layer::~Layer() { delete m_imp; }

Annotation::Layer::FrameRange const& Annotation::Layer::getRange() const { return m_imp->m_range; }

void Annotation::Layer::setRange(FrameRange const& range) { m_imp->m_range = range; }

Annotation::Layer::Color const& Annotation::Layer::getColor() const { return m_imp->m_color; }

void Annotation::Layer::setColor(Color const& color) { m_imp->m_color = color; }

bool Annotation::Layer::isGhost() const { return m_imp->m_ghost; }

void Annotation::Layer::setGhost(bool ghost) { m_imp->m_ghost = ghost; }

unsigned int Annotation::Layer::getGhostAfter() const { return m_imp->m_ghostAfter; }

void Annotation::Layer::setGhostAfter(unsigned int ghostAfter) { m_imp->m_ghostAfter = ghostAfter; }

unsigned int Annotation::Layer::getGhostBefore() const { return m_imp->m_ghostBefore; }

void Annotation::Layer::setGhostBefore(unsigned int ghostBefore) { m_imp->m_ghostBefore = ghostBefore; }

bool Annotation::Layer::isHold() const { return m_imp->m_hold; }

void Annotation::Layer::setHold(bool hold) { m_imp->m_hold = hold; }

bool Annotation::Layer::isVisible() const { return m_imp->m_visible; }

void Annotation::Layer::setVisible(bool visible) { m_imp->m_visible = visible; }

// Paint

class ORL_HIDDEN Annotation::Paint::Imp {
public:
    Vector<Point> m_points;
    Type m_type = Type();
    Brush m_brush = Brush();
};

SharedPtr<Annotation::Paint> Annotation::Paint::create() { return SharedPtr<Paint>(new Paint); }

SharedPtr<Annotation::Paint> Annotation::Paint::create(FrameRange const& range, Color const& color,
                                                       bool visible, Vector<Point> const& points, Type type,
                                                       Brush brush) {
    return SharedPtr<Paint>(new Paint(range, color, visible, points, type, brush));
}

SharedPtr<Annotation::Paint> Annotation::Paint::clone() const { return SharedPtr<Paint>(new Paint(*this)); }

Annotation::Paint::Paint() : m_imp(new Imp) {}

Annotation::Paint::Paint(FrameRange const& range, Color const& color, bool visible,
                         Vector<Point> const& points, Type type, Brush brush)
    : Layer(range, color, visible), m_imp(new Imp{points, type, brush}) {}

// A default Layer, as the header tells.
Annotation::Paint::Paint(Paint const& other) : Layer(), m_imp(new Imp(*other.m_imp)) {}

Annotation::Paint::~Paint() { delete m_imp; }

Annotation::Paint& Annotation::Paint::operator=(Paint const& other) {
    if (this != &other) {
        *m_imp = *other.m_imp;
    }
    return *this;
}

Vector<Annotation::Paint::Point>& Annotation::Paint::getPoints() { return m_imp->m_points; }

Vector<Annotation::Paint::Point> const& Annotation::Paint::getPoints() const { return m_imp->m_points; }

Annotation::Paint::Type Annotation::Paint::getType() const { return m_imp->m_type; }

void Annotation::Paint::setType(Type type) { m_imp->m_type = type; }

Annotation::Paint::Brush Annotation::Paint::getBrush() const { return m_imp->m_brush; }

void Annotation::Paint::setBrush(Brush brush) { m_imp->m_brush = brush; }

// Text

class ORL_HIDDEN Annotation::Text::Imp {
public:
    String m_text;
    Position m_position;
    Justification m_justification = Justification();
    Font m_font;
    double m_width = 0.0;
    double m_orientation = 0.0;
};

SharedPtr<Annotation::Text> Annotation::Text::create() { return SharedPtr<Text>(new Text); }

SharedPtr<Annotation::Text> Annotation::Text::create(FrameRange const& range, Color const& color,
                                                     bool visible, String const& text,
                                                     Position const& position, Justification justification,
                                                     Font const& font, double width, double orientation) {
    return SharedPtr<Text>(
        new Text(range, color, visible, text, position, justification, font, width, orientation));
}

SharedPtr<Annotation::Text> Annotation::Text::clone() const { return SharedPtr<Text>(new Text(*this)); }

Annotation::Text::Text() : m_imp(new Imp) {}

Annotation::Text::Text(FrameRange const& range, Color const& color, bool visible, String const& text,
                       Position const& position, Justification justification, Font const& font, double width,
                       double orientation)
    : Layer(range, color, visible), m_imp(new Imp{text, position, justification, font, width, orientation}) {}

// A default Layer, as the header tells.
Annotation::Text::Text(Text const& other) : Layer(), m_imp(new Imp(*other.m_imp)) {}

Annotation::Text::~Text() { delete m_imp; }

Annotation::Text& Annotation::Text::operator=(Text const& other) {
    if (this != &other) {
        *m_imp = *other.m_imp;
    }
    return *this;
}

String const& Annotation::Text::getText() const { return m_imp->m_text; }

void Annotation::Text::setText(String const& text) { m_imp->m_text = text; }

Annotation::Text::Position const& Annotation::Text::getPosition() const { return m_imp->m_position; }

void Annotation::Text::setPosition(Position const& position) { m_imp->m_position = position; }

Annotation::Text::Justification Annotation::Text::getJustification() const { return m_imp->m_justification; }

void Annotation::Text::setJustification(Justification justification) {
    m_imp->m_justification = justification;
}

Annotation::Text::Font const& Annotation::Text::getFont() const { return m_imp->m_font; }

void Annotation::Text::setFont(Font const& font) { m_imp->m_font = font; }

double Annotation::Text::getWidth() const { return m_imp->m_width; }

void Annotation::Text::setWidth(double width) { m_imp->m_width = width; }

double Annotation::Text::getOrientation() const { return m_imp->m_orientation; }

void Annotation::Text::setOrientation(double orientation) { m_imp->m_orientation = orientation; }

} // namespace ORL_0_81
