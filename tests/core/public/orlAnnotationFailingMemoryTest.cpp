// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "support/orlFailingMemory.h"

#include <orlAnnotation.h>

#include <gtest/gtest.h>

// What an annotation and its layers are when there is no memory for them.

namespace {

using namespace ORL_0_81;
using orlTest::failEachAllocation;
using orlTest::FailingMemory;

using Layer = Annotation::Layer;
using Paint = Annotation::Paint;
using Text = Annotation::Text;

constexpr auto TYPE = static_cast<Paint::Type>(2);
constexpr auto BRUSH = static_cast<Paint::Brush>(3);
constexpr auto JUSTIFICATION = static_cast<Text::Justification>(4);

Layer::FrameRange range() { return {Time(1, Rational(24, 1)), Time(9, Rational(24, 1))}; }

Vector<Paint::Point> points(unsigned long count) { return {count, Paint::Point{1.0, 2.0, 3.0}}; }

SharedPtr<Paint> paint(unsigned long count) {
    return Paint::create(range(), {0.1F, 0.2F, 0.3F, 0.4F}, true, points(count), TYPE, BRUSH);
}

SharedPtr<Text> text(char const* words) {
    return Text::create(range(), {}, false, words, {5.0, 6.0}, JUSTIFICATION, {"a font", 12.0}, 7.0, 8.0);
}

TEST(AnnotationFailingMemory, APaintIsMadeWholeOrNotAtAll) {
    failEachAllocation([](FailingMemory& memory) {
        Layer::FrameRange const frames = range();
        Vector<Paint::Point> const painted = points(5);
        SharedPtr<Paint> made[3];
        bool const done = memory.run([&] {
            made[0] = Paint::create();
            made[1] = Paint::create(frames, {}, true, painted, TYPE, BRUSH);
            made[2] = made[1]->clone();
        });
        EXPECT_EQ(made[2] != nullptr, done);
        for (SharedPtr<Paint> const& one : made) {
            if (one) {
                EXPECT_EQ(one->refcount(), 1);
                EXPECT_EQ(one->getPoints().size(), one == made[0] ? 0U : 5U);
            }
        }
    });
}

TEST(AnnotationFailingMemory, ATextIsMadeWholeOrNotAtAll) {
    failEachAllocation([](FailingMemory& memory) {
        Layer::FrameRange const frames = range();
        String const words = "words";
        Text::Font const font{"a font", 12.0};
        SharedPtr<Text> made[3];
        bool const done = memory.run([&] {
            made[0] = Text::create();
            made[1] = Text::create(frames, {}, true, words, {}, JUSTIFICATION, font, 7.0, 8.0);
            made[2] = made[1]->clone();
        });
        EXPECT_EQ(made[2] != nullptr, done);
        for (SharedPtr<Text> const& one : made) {
            if (one) {
                EXPECT_EQ(one->refcount(), 1);
                EXPECT_STREQ(one->getText().c_str(), one == made[0] ? "" : "words");
            }
        }
    });
}

TEST(AnnotationFailingMemory, AnAssignedPaintTakesAllOrNothing) {
    failEachAllocation([](FailingMemory& memory) {
        SharedPtr<Paint> const source = paint(5);
        Paint target;
        target.getPoints() = points(1);
        bool const done = memory.run([&] { target = *source; });
        EXPECT_EQ(target.getPoints().size(), done ? 5U : 1U);
        EXPECT_EQ(target.getType(), done ? TYPE : 0);
        EXPECT_EQ(target.getBrush(), done ? BRUSH : 0);
    });
}

TEST(AnnotationFailingMemory, ALayerKeepsItsValuesWhereACopyOfThemCannotBeMade) {
    failEachAllocation([](FailingMemory& memory) {
        SharedPtr<Text> const layer = text("words");
        memory.run([&] {
            Layer::FrameRange const copy = layer->getRange();
            layer->setRange(copy);
            Text const same(*layer);
            layer->setFont({"another font", 9.0});
        });
        EXPECT_TRUE(layer->getRange().end == range().end);
        EXPECT_STREQ(layer->getText().c_str(), "words");
        EXPECT_TRUE(layer->getFont().size == 12.0 || layer->getFont().size == 9.0);
        EXPECT_STREQ(layer->getFont().name.c_str(),
                     layer->getFont().size == 12.0 ? "a font" : "another font");
    });
}

TEST(AnnotationFailingMemory, AnAnnotationSharesAllLayersOrNone) {
    failEachAllocation([](FailingMemory& memory) {
        Annotation source;
        source.getLayers().push_back(paint(1));
        source.getLayers().push_back(text("words"));
        source.setVisible(false);
        Annotation target;
        target.getLayers().push_back(paint(2));
        bool const done = memory.run([&] {
            Annotation copy(source);
            Annotation const empty;
            copy.getLayers().push_back(source.getLayers()[0]);
            target = source;
        });
        EXPECT_EQ(target.getLayers().size(), done ? 2U : 1U);
        EXPECT_EQ(target.isVisible(), !done);
        EXPECT_EQ(source.getLayers()[0]->refcount(), done ? 2 : 1);
        EXPECT_EQ(source.getLayers()[1]->refcount(), done ? 2 : 1);
    });
}

} // namespace
