// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include <orlAnnotation.h>
#include <orlRational.h>

#include <gtest/gtest.h>

#include <climits>
#include <cstring>
#include <limits>
#include <string>
#include <type_traits>
#include <utility>

namespace {

using namespace ORL_0_81;

using Layer = Annotation::Layer;
using Paint = Annotation::Paint;
using Text = Annotation::Text;

Layer::FrameRange const RANGE{Time(10, Rational(24, 1)), Time(20, Rational(25, 1))};
Layer::Color const COLOR{0.1F, 0.2F, 0.3F, 0.4F};

// Every field of the base level with a value that it has not by default.
void change(Layer& layer) {
    layer.setRange(RANGE);
    layer.setColor(COLOR);
    layer.setGhost(true);
    layer.setGhostAfter(UINT_MAX);
    layer.setGhostBefore(0);
    layer.setHold(true);
    layer.setVisible(false);
}

void expectChanged(Layer const& layer) {
    EXPECT_EQ(layer.getRange().start, RANGE.start);
    EXPECT_EQ(layer.getRange().end, RANGE.end);
    EXPECT_EQ(layer.getColor().r, 0.1F);
    EXPECT_EQ(layer.getColor().g, 0.2F);
    EXPECT_EQ(layer.getColor().b, 0.3F);
    EXPECT_EQ(layer.getColor().a, 0.4F);
    EXPECT_TRUE(layer.isGhost());
    EXPECT_EQ(layer.getGhostAfter(), UINT_MAX);
    EXPECT_EQ(layer.getGhostBefore(), 0U);
    EXPECT_TRUE(layer.isHold());
    EXPECT_FALSE(layer.isVisible());
}

void expectDefault(Layer const& layer) {
    EXPECT_EQ(layer.getRange().start, Time());
    EXPECT_EQ(layer.getRange().end, Time());
    EXPECT_EQ(layer.getColor().r, 0.0F);
    EXPECT_EQ(layer.getColor().g, 0.0F);
    EXPECT_EQ(layer.getColor().b, 0.0F);
    EXPECT_EQ(layer.getColor().a, 1.0F);
    EXPECT_FALSE(layer.isGhost());
    EXPECT_EQ(layer.getGhostAfter(), 3U);
    EXPECT_EQ(layer.getGhostBefore(), 3U);
    EXPECT_FALSE(layer.isHold());
    EXPECT_TRUE(layer.isVisible());
}

// The fields of the own level

Vector<Paint::Point> somePoints() {
    Vector<Paint::Point> points;
    points.push_back({1.0, 2.0, 3.0});
    points.push_back(
        {-0.0, std::numeric_limits<double>::infinity(), std::numeric_limits<double>::quiet_NaN()});
    return points;
}

void change(Paint& paint) {
    change(static_cast<Layer&>(paint));
    paint.getPoints() = somePoints();
    paint.setType(static_cast<Paint::Type>(-7));
    paint.setBrush(static_cast<Paint::Brush>(INT_MAX));
}

void expectOwnFields(Paint const& paint) {
    ASSERT_EQ(paint.getPoints().size(), 2U);
    Vector<Paint::Point> const points = somePoints();
    for (unsigned long i = 0; i < 2; ++i) {
        EXPECT_EQ(std::memcmp(&paint.getPoints()[i], &points[i], sizeof(Paint::Point)), 0) << "bit by bit";
    }
    EXPECT_EQ(static_cast<int>(paint.getType()), -7);
    EXPECT_EQ(static_cast<int>(paint.getBrush()), INT_MAX);
}

void expectOwnDefaults(Paint const& paint) {
    EXPECT_TRUE(paint.getPoints().empty());
    EXPECT_EQ(static_cast<int>(paint.getType()), 0);
    EXPECT_EQ(static_cast<int>(paint.getBrush()), 0);
}

void change(Text& text) {
    change(static_cast<Layer&>(text));
    text.setText("a note");
    text.setPosition({1.5, -2.5});
    text.setJustification(static_cast<Text::Justification>(INT_MIN));
    text.setFont({"a font", 12.5});
    text.setWidth(-3.5);
    text.setOrientation(720.0);
}

void expectOwnFields(Text const& text) {
    EXPECT_STREQ(text.getText().c_str(), "a note");
    EXPECT_EQ(text.getPosition().x, 1.5);
    EXPECT_EQ(text.getPosition().y, -2.5);
    EXPECT_EQ(static_cast<int>(text.getJustification()), INT_MIN);
    EXPECT_STREQ(text.getFont().name.c_str(), "a font");
    EXPECT_EQ(text.getFont().size, 12.5);
    EXPECT_EQ(text.getWidth(), -3.5);
    EXPECT_EQ(text.getOrientation(), 720.0);
}

void expectOwnDefaults(Text const& text) {
    EXPECT_STREQ(text.getText().c_str(), "");
    EXPECT_EQ(text.getPosition().x, 0.0);
    EXPECT_EQ(text.getPosition().y, 0.0);
    EXPECT_EQ(static_cast<int>(text.getJustification()), 0);
    EXPECT_STREQ(text.getFont().name.c_str(), "");
    EXPECT_EQ(text.getFont().size, 0.0);
    EXPECT_EQ(text.getWidth(), 0.0);
    EXPECT_EQ(text.getOrientation(), 0.0);
}

template <class T>
class AnnotationLayerContract : public testing::Test {};

struct LayerNames {
    template <class T>
    static char const* GetName(int) {
        return std::is_same_v<T, Paint> ? "Paint" : "Text";
    }
};

using Layers = testing::Types<Paint, Text>;
TYPED_TEST_SUITE(AnnotationLayerContract, Layers, LayerNames);

TYPED_TEST(AnnotationLayerContract, EveryKindOfCopyCarriesItsOwnLevelOnly) {
    SharedPtr<TypeParam> const source = TypeParam::create();
    change(*source);
    SharedPtr<TypeParam> const clone = static_cast<TypeParam const&>(*source).clone();
    EXPECT_NE(clone, source);
    EXPECT_EQ(clone->refcount(), 1);
    EXPECT_EQ(source->refcount(), 1);
    TypeParam const copy(*source);
    EXPECT_EQ(copy.refcount(), 0);
    TypeParam moved(std::move(*source)); // there is no move: the source keeps all
    for (TypeParam const* one : {static_cast<TypeParam const*>(clone.get()), &copy, &std::as_const(moved)}) {
        expectDefault(*one);
        expectOwnFields(*one);
    }
    expectChanged(*source);
    expectOwnFields(*source);
}

TYPED_TEST(AnnotationLayerContract, AnAssignmentTakesTheOwnLevelAndKeepsTheBaseOfTheTarget) {
    TypeParam const plain;
    TypeParam changed;
    change(changed);
    TypeParam target;
    target.incref();
    EXPECT_EQ(&(target = changed), &target);
    expectDefault(target);
    expectOwnFields(target);
    EXPECT_EQ(target.refcount(), 1);
    TypeParam const& same = changed;
    EXPECT_EQ(&(changed = same), &changed);
    expectChanged(changed);
    expectOwnFields(changed);
    changed = plain;
    expectChanged(changed);
    expectOwnDefaults(changed);
    EXPECT_TRUE(target.decref());
}

TYPED_TEST(AnnotationLayerContract, ACopyOfTheBaseAloneCarriesTheBase) {
    TypeParam source;
    change(source);
    source.incref();
    Layer const base(static_cast<Layer const&>(source));
    expectChanged(base);
    EXPECT_EQ(base.refcount(), 0);
    EXPECT_TRUE(source.decref());
}

TEST(AnnotationLayerFields, EachSetterWritesItsFieldAndNoOther) {
    struct Setter {
        char const* name;
        void (*set)(Layer&);
    };
    Setter const setters[] = {
        {"range", [](Layer& layer) { layer.setRange(RANGE); }},
        {"color", [](Layer& layer) { layer.setColor(COLOR); }},
        {"ghost", [](Layer& layer) { layer.setGhost(true); }},
        {"ghost after", [](Layer& layer) { layer.setGhostAfter(UINT_MAX); }},
        {"ghost before", [](Layer& layer) { layer.setGhostBefore(0); }},
        {"hold", [](Layer& layer) { layer.setHold(true); }},
        {"visible", [](Layer& layer) { layer.setVisible(false); }},
    };
    Layer const plain;
    for (Setter const& setter : setters) {
        SCOPED_TRACE(setter.name);
        std::string const name = setter.name;
        Layer layer;
        Layer::FrameRange const& range = layer.getRange();
        Layer::Color const& color = layer.getColor();
        setter.set(layer);
        EXPECT_EQ(range.end == RANGE.end, name == "range") << "the reference is to the field itself";
        EXPECT_EQ(color.a == 0.4F, name == "color") << "the reference is to the field itself";
        EXPECT_EQ(layer.isGhost(), name == "ghost");
        EXPECT_EQ(layer.getGhostAfter(), name == "ghost after" ? UINT_MAX : 3U);
        EXPECT_EQ(layer.getGhostBefore(), name == "ghost before" ? 0U : 3U);
        EXPECT_EQ(layer.isHold(), name == "hold");
        EXPECT_EQ(layer.isVisible(), name != "visible");
    }
    expectDefault(plain);
}

TEST(AnnotationTextFields, EachSetterWritesItsFieldAndNoOther) {
    struct Setter {
        char const* name;
        void (*set)(Text&);
    };
    Setter const setters[] = {
        {"text", [](Text& text) { text.setText("a note"); }},
        {"position",
         [](Text& text) {
             text.setPosition({1.5, -2.5});
         }},
        {"justification", [](Text& text) { text.setJustification(static_cast<Text::Justification>(7)); }},
        {"font",
         [](Text& text) {
             text.setFont({"a font", 12.5});
         }},
        {"width", [](Text& text) { text.setWidth(-3.5); }},
        {"orientation", [](Text& text) { text.setOrientation(720.0); }},
    };
    for (Setter const& setter : setters) {
        SCOPED_TRACE(setter.name);
        std::string const name = setter.name;
        Text text;
        setter.set(text);
        EXPECT_EQ(text.getText(), name == "text" ? "a note" : "");
        EXPECT_EQ(text.getPosition().x, name == "position" ? 1.5 : 0.0);
        EXPECT_EQ(text.getPosition().y, name == "position" ? -2.5 : 0.0);
        EXPECT_EQ(static_cast<int>(text.getJustification()), name == "justification" ? 7 : 0);
        EXPECT_EQ(text.getFont().name, name == "font" ? "a font" : "");
        EXPECT_EQ(text.getFont().size, name == "font" ? 12.5 : 0.0);
        EXPECT_EQ(text.getWidth(), name == "width" ? -3.5 : 0.0);
        EXPECT_EQ(text.getOrientation(), name == "orientation" ? 720.0 : 0.0);
        expectDefault(text);
    }
}

TEST(AnnotationPaintFields, TypeAndBrushAreFieldsOfTheirOwn) {
    Paint paint;
    paint.setType(static_cast<Paint::Type>(1));
    EXPECT_EQ(static_cast<int>(paint.getBrush()), 0);
    paint.setBrush(static_cast<Paint::Brush>(2));
    EXPECT_EQ(static_cast<int>(paint.getType()), 1);
    EXPECT_EQ(static_cast<int>(paint.getBrush()), 2);
    expectDefault(paint);
}

TEST(AnnotationContract, OperationsGiveWhatTheirCallersWereCompiledWith) {
    EXPECT_TRUE((std::is_same_v<decltype(&Layer::getColor), Layer::Color const& (Layer::*)() const>));
    EXPECT_TRUE((std::is_same_v<decltype(&Layer::getRange), Layer::FrameRange const& (Layer::*)() const>));
    EXPECT_TRUE((std::is_same_v<decltype(&Layer::setGhostAfter), void (Layer::*)(unsigned int)>));
    EXPECT_TRUE((std::is_same_v<decltype(&Layer::setGhostBefore), void (Layer::*)(unsigned int)>));
    EXPECT_TRUE((std::is_same_v<decltype(&Layer::getGhostAfter), unsigned int (Layer::*)() const>));
    EXPECT_TRUE((std::is_same_v<decltype(&Layer::getGhostBefore), unsigned int (Layer::*)() const>));
    using Points = Vector<Paint::Point>;
    EXPECT_TRUE((std::is_same_v<decltype(std::declval<Paint&>().getPoints()), Points&>));
    EXPECT_TRUE((std::is_same_v<decltype(std::declval<Paint const&>().getPoints()), Points const&>));
    EXPECT_TRUE((std::is_same_v<decltype(&Paint::clone), SharedPtr<Paint> (Paint::*)() const>));
    EXPECT_TRUE((std::is_same_v<decltype(&Text::clone), SharedPtr<Text> (Text::*)() const>));
    EXPECT_FALSE(std::is_polymorphic_v<Annotation>);
    EXPECT_TRUE(std::is_default_constructible_v<Layer>) << "a layer is no abstract class";
    EXPECT_EQ(sizeof(Layer::FrameRange), 2 * sizeof(Time));
    EXPECT_EQ(sizeof(Layer::Color), 16U);
}

} // namespace
