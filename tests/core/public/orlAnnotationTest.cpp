// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include <orlAnnotation.h>

#include <gtest/gtest.h>

#include <climits>
#include <cstring>
#include <type_traits>
#include <utility>

namespace {

using namespace ORL_0_81;

using Layer = Annotation::Layer;
using Paint = Annotation::Paint;
using Text = Annotation::Text;

Layer::FrameRange const RANGE{Time(10, Rational(24, 1)), Time(20, Rational(25, 1))};
Layer::Color const COLOR{0.25F, 0.5F, 0.75F, 0.125F};
auto const PAINT_TYPE = static_cast<Paint::Type>(7);
auto const BRUSH = static_cast<Paint::Brush>(-3);
auto const JUSTIFICATION = static_cast<Text::Justification>(INT_MAX);

Vector<Paint::Point> points() {
    Vector<Paint::Point> result;
    result.push_back({1.0, 2.0, 3.0});
    result.push_back({4.0, 5.0, 6.0});
    return result;
}

Text::Font const FONT{"Sans", 12.5};
Text::Position const POSITION{1.5, -2.5};

SharedPtr<Paint> paint() { return Paint::create(RANGE, COLOR, false, points(), PAINT_TYPE, BRUSH); }

SharedPtr<Text> text() {
    return Text::create(RANGE, COLOR, false, "words", POSITION, JUSTIFICATION, FONT, 100.5, 0.75);
}

void expectRange(Layer::FrameRange const& range, Layer::FrameRange const& expected) {
    EXPECT_EQ(range.start.getNbTicks(), expected.start.getNbTicks());
    EXPECT_EQ(range.start, expected.start);
    EXPECT_EQ(range.end, expected.end);
    EXPECT_EQ(range.end.getRate().getNumerator(), expected.end.getRate().getNumerator());
}

void expectColor(Layer::Color const& color, Layer::Color const& expected) {
    EXPECT_EQ(color.r, expected.r);
    EXPECT_EQ(color.g, expected.g);
    EXPECT_EQ(color.b, expected.b);
    EXPECT_EQ(color.a, expected.a);
}

void expectDefaultLayer(Layer const& layer) {
    expectRange(layer.getRange(), Layer::FrameRange());
    EXPECT_EQ(layer.getRange().start.getRate().getNumerator(), 0);
    expectColor(layer.getColor(), {0.0F, 0.0F, 0.0F, 1.0F});
    EXPECT_FALSE(layer.isGhost());
    EXPECT_EQ(layer.getGhostAfter(), 3U);
    EXPECT_EQ(layer.getGhostBefore(), 3U);
    EXPECT_FALSE(layer.isHold());
    EXPECT_TRUE(layer.isVisible());
}

// A value of its own for each field.
void setAll(Layer& layer) {
    layer.setRange(RANGE);
    layer.setColor(COLOR);
    layer.setGhost(true);
    layer.setGhostAfter(5);
    layer.setGhostBefore(UINT_MAX);
    layer.setHold(true);
    layer.setVisible(false);
}

void expectAllSet(Layer const& layer) {
    expectRange(layer.getRange(), RANGE);
    expectColor(layer.getColor(), COLOR);
    EXPECT_TRUE(layer.isGhost());
    EXPECT_EQ(layer.getGhostAfter(), 5U);
    EXPECT_EQ(layer.getGhostBefore(), UINT_MAX);
    EXPECT_TRUE(layer.isHold());
    EXPECT_FALSE(layer.isVisible());
}

void expectPoints(Paint const& paint) {
    ASSERT_EQ(paint.getPoints().size(), 2U);
    EXPECT_EQ(paint.getPoints()[0].x, 1.0);
    EXPECT_EQ(paint.getPoints()[0].y, 2.0);
    EXPECT_EQ(paint.getPoints()[0].width, 3.0);
    EXPECT_EQ(paint.getPoints()[1].width, 6.0);
}

void expectPaintFields(Paint const& paint) {
    expectPoints(paint);
    EXPECT_EQ(paint.getType(), PAINT_TYPE);
    EXPECT_EQ(paint.getBrush(), BRUSH);
}

void expectTextFields(Text const& text) {
    EXPECT_STREQ(text.getText().c_str(), "words");
    EXPECT_EQ(text.getPosition().x, 1.5);
    EXPECT_EQ(text.getPosition().y, -2.5);
    EXPECT_EQ(text.getJustification(), JUSTIFICATION);
    EXPECT_STREQ(text.getFont().name.c_str(), "Sans");
    EXPECT_EQ(text.getFont().size, 12.5);
    EXPECT_EQ(text.getWidth(), 100.5);
    EXPECT_EQ(text.getOrientation(), 0.75);
}

// Annotation

TEST(AnnotationTest, IsVisibleAndHasNoLayersAtFirst) {
    Annotation const annotation;
    EXPECT_TRUE(annotation.isVisible());
    EXPECT_TRUE(annotation.getLayers().empty());
}

TEST(AnnotationTest, LayersAreAddedAndRemovedThroughTheVector) {
    Annotation annotation;
    annotation.getLayers().push_back(paint());
    annotation.getLayers().push_back(text());
    Annotation const& constant = annotation;
    ASSERT_EQ(constant.getLayers().size(), 2U);
    EXPECT_EQ(&constant.getLayers(), &annotation.getLayers());
    EXPECT_TRUE(dynamicPointerCast<Paint>(constant.getLayers()[0]));
    EXPECT_TRUE(dynamicPointerCast<Text>(constant.getLayers()[1]));
    annotation.getLayers().erase(annotation.getLayers().begin());
    EXPECT_EQ(constant.getLayers().size(), 1U);
}

TEST(AnnotationTest, ACopySharesTheLayers) {
    Annotation source;
    source.getLayers().push_back(paint());
    Annotation copy(source);
    EXPECT_EQ(copy.getLayers()[0], source.getLayers()[0]);
    EXPECT_EQ(source.getLayers()[0]->refcount(), 2);
    copy.getLayers()[0]->setHold(true);
    EXPECT_TRUE(source.getLayers()[0]->isHold());
}

TEST(AnnotationTest, ACopyHasAListAndAFlagOfItsOwn) {
    Annotation source;
    source.getLayers().push_back(paint());
    Annotation copy(source);
    copy.setVisible(false);
    copy.getLayers().push_back(text());
    EXPECT_TRUE(source.isVisible());
    EXPECT_EQ(source.getLayers().size(), 1U);
    EXPECT_FALSE(Annotation(copy).isVisible());
}

TEST(AnnotationTest, AssignmentSharesTheLayersAndReleasesTheOld) {
    Annotation source;
    source.getLayers().push_back(paint());
    source.setVisible(false);
    Annotation target;
    SharedPtr<Layer> const old(new Layer);
    target.getLayers().push_back(old);
    EXPECT_EQ(&(target = source), &target);
    EXPECT_EQ(old->refcount(), 1);
    EXPECT_EQ(target.getLayers()[0], source.getLayers()[0]);
    EXPECT_FALSE(target.isVisible());
    target.setVisible(true);
    target.getLayers().clear();
    EXPECT_FALSE(source.isVisible());
    EXPECT_EQ(source.getLayers().size(), 1U);
}

TEST(AnnotationTest, AssignmentToItselfChangesNothing) {
    Annotation annotation;
    annotation.getLayers().push_back(paint());
    annotation.setVisible(false);
    Annotation const& self = annotation;
    annotation = self;
    EXPECT_EQ(annotation.getLayers().size(), 1U);
    EXPECT_EQ(annotation.getLayers()[0]->refcount(), 1);
    EXPECT_FALSE(annotation.isVisible());
}

TEST(AnnotationTest, AnRvalueIsCopiedToo) {
    Annotation source;
    source.getLayers().push_back(paint());
    Annotation const copy(std::move(source));
    EXPECT_EQ(source.getLayers().size(), 1U); // NOLINT(bugprone-use-after-move): that is the point
    EXPECT_EQ(copy.getLayers()[0], source.getLayers()[0]);
}

// Layer

TEST(AnnotationLayerTest, HasItsDefaults) {
    Layer const layer;
    expectDefaultLayer(layer);
    EXPECT_EQ(layer.refcount(), 0);
}

TEST(AnnotationLayerTest, TakesRangeColourAndVisibilityAndLeavesTheRestAtItsDefaults) {
    Layer const layer(RANGE, COLOR, false);
    expectRange(layer.getRange(), RANGE);
    expectColor(layer.getColor(), COLOR);
    EXPECT_FALSE(layer.isVisible());
    EXPECT_FALSE(layer.isGhost());
    EXPECT_EQ(layer.getGhostAfter(), 3U);
    EXPECT_EQ(layer.getGhostBefore(), 3U);
    EXPECT_FALSE(layer.isHold());
    EXPECT_TRUE(Layer(RANGE, COLOR, true).isVisible());
}

TEST(AnnotationLayerTest, KeepsWhatIsSet) {
    Layer layer;
    setAll(layer);
    expectAllSet(layer);
    layer.setGhost(false);
    layer.setHold(false);
    layer.setVisible(true);
    EXPECT_FALSE(layer.isGhost());
    EXPECT_FALSE(layer.isHold());
    EXPECT_TRUE(layer.isVisible());
}

TEST(AnnotationLayerTest, ItsOwnCopyCopiesAllFields) {
    SharedPtr<Layer> const source(new Layer);
    setAll(*source);
    Layer copy(*source);
    expectAllSet(copy);
    EXPECT_EQ(copy.refcount(), 0);
    copy.setHold(false);
    copy.setRange(Layer::FrameRange());
    expectAllSet(*source);
}

TEST(AnnotationLayerTest, CannotBeAssigned) {
    EXPECT_FALSE(std::is_copy_assignable_v<Layer>);
    EXPECT_TRUE((std::is_base_of_v<RefCountedMT, Layer>));
    EXPECT_EQ(sizeof(Layer), sizeof(RefCountedMT) + sizeof(void*));
}

TEST(AnnotationLayerTest, ADefaultColourIsOpaqueBlack) {
    expectColor(Layer::Color(), {0.0F, 0.0F, 0.0F, 1.0F});
    EXPECT_EQ(sizeof(Layer::Color), 16U);
    EXPECT_TRUE(std::is_trivially_copyable_v<Layer::Color>);
}

// Paint

TEST(AnnotationPaintTest, HasItsDefaults) {
    SharedPtr<Paint> const paint = Paint::create();
    ASSERT_TRUE(paint);
    EXPECT_EQ(paint->refcount(), 1);
    expectDefaultLayer(*paint);
    EXPECT_TRUE(paint->getPoints().empty());
    EXPECT_EQ(static_cast<int>(paint->getType()), 0);
    EXPECT_EQ(static_cast<int>(paint->getBrush()), 0);
    expectDefaultLayer(Paint());
}

TEST(AnnotationPaintTest, IsCreatedWithAllFieldsGiven) {
    SharedPtr<Paint> const created = paint();
    EXPECT_EQ(created->refcount(), 1);
    expectPaintFields(*created);
    expectRange(created->getRange(), RANGE);
    expectColor(created->getColor(), COLOR);
    EXPECT_FALSE(created->isVisible());
    EXPECT_FALSE(created->isHold());
    EXPECT_FALSE(created->isGhost());
    EXPECT_EQ(created->getGhostAfter(), 3U);
    EXPECT_EQ(created->getGhostBefore(), 3U);
    expectPaintFields(Paint(RANGE, COLOR, true, points(), PAINT_TYPE, BRUSH));
}

TEST(AnnotationPaintTest, ItsPointsCanBeChangedInPlace) {
    Vector<Paint::Point> given = points();
    SharedPtr<Paint> const created = Paint::create(RANGE, COLOR, true, given, PAINT_TYPE, BRUSH);
    created->getPoints()[0].x = 9.0;
    created->getPoints().push_back({7.0, 8.0, 9.0});
    Paint const& constant = *created;
    EXPECT_EQ(constant.getPoints()[0].x, 9.0);
    EXPECT_EQ(constant.getPoints().size(), 3U);
    EXPECT_EQ(given[0].x, 1.0) << "a copy of what was given";
    EXPECT_EQ(given.size(), 2U);
}

TEST(AnnotationPaintTest, PassesAnyTypeAndBrushThrough) {
    Paint paint;
    for (int const value : {0, 1, -1, INT_MAX, INT_MIN}) {
        paint.setType(static_cast<Paint::Type>(value));
        paint.setBrush(static_cast<Paint::Brush>(value));
        EXPECT_EQ(static_cast<int>(paint.getType()), value);
        EXPECT_EQ(static_cast<int>(paint.getBrush()), value);
    }
    EXPECT_EQ(sizeof(Paint::Type), 4U);
    EXPECT_EQ(sizeof(Paint::Brush), 4U);
}

TEST(AnnotationPaintTest, ACloneLosesTheFieldsOfTheLayer) {
    SharedPtr<Paint> const source = paint();
    setAll(*source);
    SharedPtr<Paint const> const constSource(source);
    SharedPtr<Paint> const clone = constSource->clone();
    EXPECT_NE(clone, source);
    EXPECT_EQ(clone->refcount(), 1);
    expectPaintFields(*clone);
    expectDefaultLayer(*clone);
    clone->getPoints()[0].x = 50.0;
    expectPaintFields(*source);
    expectAllSet(*source);
}

TEST(AnnotationPaintTest, ACopyLosesTheFieldsOfTheLayer) {
    Paint source(RANGE, COLOR, false, points(), PAINT_TYPE, BRUSH);
    setAll(source);
    Paint const copy(source);
    expectPaintFields(copy);
    expectDefaultLayer(copy);
}

TEST(AnnotationPaintTest, AssignmentLeavesTheFieldsOfTheLayer) {
    SharedPtr<Paint> const source = paint();
    SharedPtr<Paint> const target = Paint::create();
    setAll(*target);
    EXPECT_EQ(&(*target = *source), target.get());
    expectPaintFields(*target);
    expectAllSet(*target);
    EXPECT_EQ(target->refcount(), 1);
    target->getPoints().clear();
    expectPoints(*source);
}

TEST(AnnotationPaintTest, AssignmentToItselfChangesNothing) {
    SharedPtr<Paint> const created = paint();
    setAll(*created);
    Paint const& self = *created;
    *created = self;
    expectPaintFields(*created);
    expectAllSet(*created);
}

TEST(AnnotationPaintTest, APointIsThreeWordsThatAreCopiedAsTheyAre) {
    EXPECT_EQ(sizeof(Paint::Point), 24U);
    EXPECT_TRUE(std::is_trivially_copyable_v<Paint::Point>);
    EXPECT_TRUE(std::is_standard_layout_v<Paint::Point>);
    unsigned char bytes[24];
    for (unsigned char i = 0; i < 24; ++i) {
        bytes[i] = static_cast<unsigned char>(0xF0 + i % 16); // not a number, with a payload
    }
    Paint paint;
    paint.getPoints().push_back(Paint::Point());
    std::memcpy(&paint.getPoints()[0], bytes, sizeof bytes);
    Paint const copy(paint);
    EXPECT_EQ(std::memcmp(&copy.getPoints()[0], bytes, sizeof bytes), 0);
}

// Text

TEST(AnnotationTextTest, HasItsDefaults) {
    SharedPtr<Text> const text = Text::create();
    ASSERT_TRUE(text);
    EXPECT_EQ(text->refcount(), 1);
    expectDefaultLayer(*text);
    EXPECT_TRUE(text->getText().empty());
    EXPECT_EQ(text->getPosition().x, 0.0);
    EXPECT_EQ(text->getPosition().y, 0.0);
    EXPECT_EQ(static_cast<int>(text->getJustification()), 0);
    EXPECT_TRUE(text->getFont().name.empty());
    EXPECT_EQ(text->getFont().size, 0.0);
    EXPECT_EQ(text->getWidth(), 0.0);
    EXPECT_EQ(text->getOrientation(), 0.0);
    expectDefaultLayer(Text());
}

TEST(AnnotationTextTest, IsCreatedWithAllFieldsGiven) {
    SharedPtr<Text> const created = text();
    EXPECT_EQ(created->refcount(), 1);
    expectTextFields(*created);
    expectRange(created->getRange(), RANGE);
    expectColor(created->getColor(), COLOR);
    EXPECT_FALSE(created->isVisible());
    EXPECT_FALSE(created->isHold());
    EXPECT_FALSE(created->isGhost());
    EXPECT_EQ(created->getGhostAfter(), 3U);
    EXPECT_EQ(created->getGhostBefore(), 3U);
    expectTextFields(Text(RANGE, COLOR, true, "words", POSITION, JUSTIFICATION, FONT, 100.5, 0.75));
}

TEST(AnnotationTextTest, KeepsWhatIsSet) {
    Text text;
    text.setText("words");
    text.setPosition(POSITION);
    text.setJustification(JUSTIFICATION);
    text.setFont(FONT);
    text.setWidth(100.5);
    text.setOrientation(0.75);
    expectTextFields(text);
    expectDefaultLayer(text);
}

TEST(AnnotationTextTest, ACloneLosesTheFieldsOfTheLayer) {
    SharedPtr<Text> const source = text();
    setAll(*source);
    SharedPtr<Text const> const constSource(source);
    SharedPtr<Text> const clone = constSource->clone();
    EXPECT_NE(clone, source);
    EXPECT_EQ(clone->refcount(), 1);
    expectTextFields(*clone);
    expectDefaultLayer(*clone);
    clone->setText("other");
    expectTextFields(*source);
    expectAllSet(*source);
}

TEST(AnnotationTextTest, ACopyLosesTheFieldsOfTheLayer) {
    SharedPtr<Text> const source = text();
    setAll(*source);
    Text const copy(*source);
    expectTextFields(copy);
    expectDefaultLayer(copy);
    EXPECT_EQ(copy.refcount(), 0);
}

TEST(AnnotationTextTest, AssignmentLeavesTheFieldsOfTheLayer) {
    SharedPtr<Text> const source = text();
    SharedPtr<Text> const target = Text::create();
    setAll(*target);
    EXPECT_EQ(&(*target = *source), target.get());
    expectTextFields(*target);
    expectAllSet(*target);
    EXPECT_EQ(target->refcount(), 1);
}

TEST(AnnotationTextTest, AssignmentToItselfChangesNothing) {
    SharedPtr<Text> const created = text();
    setAll(*created);
    Text const& self = *created;
    *created = self;
    expectTextFields(*created);
    expectAllSet(*created);
}

TEST(AnnotationTextTest, ItsRecordsHaveTheirSizes) {
    EXPECT_EQ(sizeof(Text::Position), 16U);
    EXPECT_TRUE(std::is_trivially_copyable_v<Text::Position>);
    EXPECT_EQ(sizeof(Text::Font), sizeof(String) + 8);
    EXPECT_EQ(sizeof(Text::Justification), 4U);
}

TEST(AnnotationTest, HasTheSizesThatProgramsRelyOn) {
    EXPECT_EQ(sizeof(Annotation), sizeof(void*));
    EXPECT_FALSE(std::is_polymorphic_v<Annotation>);
    EXPECT_EQ(sizeof(Layer::FrameRange), 2 * sizeof(Time));
    EXPECT_EQ(sizeof(Paint), sizeof(Layer) + sizeof(void*));
    EXPECT_EQ(sizeof(Text), sizeof(Layer) + sizeof(void*));
}

TEST(AnnotationTest, LayersEndThroughTheirBase) {
    struct Ending : Paint {
        explicit Ending(bool& ended) : m_ended(&ended) {}
        Ending(Ending const&) = delete;
        Ending& operator=(Ending const&) = delete;
        ~Ending() override { *m_ended = true; }
        bool* m_ended;
    };
    bool ended = false;
    {
        Annotation annotation;
        annotation.getLayers().push_back(SharedPtr<Layer>(new Ending(ended)));
        Annotation const copy(annotation);
        annotation.getLayers().clear();
        EXPECT_FALSE(ended);
    }
    EXPECT_TRUE(ended);
}

} // namespace
