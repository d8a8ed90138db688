// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "rapidotio/orlOtioNode.h"

#include "support/Json.h"
#include "support/TimelineText.h"
#include "support/Tree.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>
#include <type_traits>
#include <vector>

namespace {

using namespace ORL_0_81;
using namespace ORL_0_81::rapidotio;
using namespace orlTest;

std::string paintOf(std::string const& members) { return R"({"OTIO_SCHEMA":"Paint.1",)" + members + "}"; }

std::string textNodeOf(std::string const& members) { return R"({"OTIO_SCHEMA":"Text.1",)" + members + "}"; }

std::string const kCommon = kPlainEffect + "," + kPlainLayer + "}]";

/// A stroke without layers or range.
std::string paintText(std::string const& points, std::string const& rgba = "[]",
                      std::string const& type = R"("")", std::string const& brush = R"("")") {
    return R"([{"OTIO_SCHEMA":"Paint.1","points":)" + points + R"(,"rgba":)" + rgba + R"(,"type":)" + type +
           R"(,"brush":)" + brush + "," + kCommon;
}

std::string pointText(std::string const& x, std::string const& y, std::string const& width) {
    return R"({"OTIO_SCHEMA":"Point.1","x":)" + x + R"(,"y":)" + y + R"(,"width":)" + width + "}";
}

std::string const kZeroPoint = pointText("0.0", "0.0", "0.0");

std::string normalPaint(std::string const& members) {
    return writtenToArray(*Built<PaintNode>(paintOf(members)));
}

std::string normalText(std::string const& members) {
    return writtenToArray(*Built<TextNode>(textNodeOf(members)));
}

// LayerNode

TEST(OtioLayerNode, IsAnEffectThatStrokesAndTextsAreAndAnnotationsAreNot) {
    EXPECT_TRUE((std::is_base_of_v<EffectNode, LayerNode>));
    EXPECT_TRUE((std::is_base_of_v<LayerNode, PaintNode>));
    EXPECT_TRUE((std::is_base_of_v<LayerNode, TextNode>));
    EXPECT_TRUE((std::is_base_of_v<EffectNode, AnnotationNode>));
    EXPECT_FALSE((std::is_base_of_v<LayerNode, AnnotationNode>));
}

TEST(OtioLayerNode, HasThreeGhostsOnEitherSideByDefault) {
    rapidjson::Document const document = parsed("{}");
    LayerNode const layer(document, nullptr);
    EXPECT_FALSE(layer.m_hold);
    EXPECT_FALSE(layer.m_ghost);
    EXPECT_EQ(layer.m_ghostBefore, 3U);
    EXPECT_EQ(layer.m_ghostAfter, 3U);
    EXPECT_EQ(writtenToObject(layer),
              R"({"visible":true,"name":"","effect_name":"","hold":false,"ghost":false,)"
              R"("ghost_before":3,"ghost_after":3})");
}

TEST(OtioLayerNode, ReadsAndWritesItsMembersBehindThoseOfAnEffect) {
    rapidjson::Document const document =
        parsed(R"({"ghost_after":4294967295,"ghost_before":0,"ghost":true,"hold":true,"visible":false})");
    LayerNode const layer(document, nullptr);
    EXPECT_TRUE(layer.m_hold);
    EXPECT_TRUE(layer.m_ghost);
    EXPECT_EQ(layer.m_ghostBefore, 0U);
    EXPECT_EQ(layer.m_ghostAfter, 4294967295U);
    EXPECT_EQ(writtenToObject(layer),
              R"({"visible":false,"name":"","effect_name":"","hold":true,"ghost":true,)"
              R"("ghost_before":0,"ghost_after":4294967295})");
}

TEST(OtioLayerNode, MembersOfTheWrongTypeKeepTheirDefaults) {
    for (char const* const members :
         {R"("ghost_before":-1)", R"("ghost_before":5.0)", R"("ghost_after":4294967296)",
          R"("ghost_after":"5")", R"("hold":1)", R"("ghost":"true")", R"("hold":null)"}) {
        EXPECT_EQ(normalPaint(members), paintText("[]")) << members;
    }
}

TEST(OtioLayerNode, ABareLayerGivenAnArrayIsLeftOut) {
    Tree tree(R"({"OTIO_SCHEMA":"Annotation.1"})");
    rapidjson::Document const document = parsed("{}");
    tree.at({0}).m_children.emplace_back(new LayerNode(document, &tree.at({0})));
    EXPECT_EQ(writtenToArray(tree.at({0})), R"([{"OTIO_SCHEMA":"Annotation.1",)" + kPlainEffect + "}]");
}

TEST(OtioLayerNode, ARangeStandsBehindTheLayersAndBeforeHold) {
    std::string const range = rangeText(timeText("1.0", "24.0"), timeText("2.0", "24.0"));
    Tree tree(
        R"({"OTIO_SCHEMA":"Annotation.1","layers":[{"OTIO_SCHEMA":"Paint.1","hold":true,"layer_range":)" +
        range + R"(,"layers":[{"OTIO_SCHEMA":"Text.1","layer_range":)" + range +
        R"(}],"effect_name":"e"}]})");
    EXPECT_EQ(
        writtenToArray(tree.at({0, 0})),
        R"([{"OTIO_SCHEMA":"Paint.1","points":[],"rgba":[],"type":"","brush":"",)"
        R"("visible":true,"name":"","effect_name":"e","layers":[)"
        R"({"OTIO_SCHEMA":"Text.1","text":"","justification":"","fontName":"","fontSize":0.0,"width":0.0,)"
        R"("orientation":0.0,"position":[0.0,0.0],"rgba":[],"visible":true,"name":"","effect_name":"",)"
        R"("layer_range":)" +
            range + R"(,"hold":false,"ghost":false,"ghost_before":3,"ghost_after":3}],"layer_range":)" +
            range + R"(,"hold":true,"ghost":false,"ghost_before":3,"ghost_after":3}])");
}

// PaintNode

TEST(OtioPaintNode, OfASchemaAloneIsEmpty) {
    Built<PaintNode> paint(R"({"OTIO_SCHEMA":"Paint.1"})");
    EXPECT_TRUE(paint->m_points.empty());
    EXPECT_TRUE(paint->m_rgba.empty());
    EXPECT_EQ(paint->m_type, "");
    EXPECT_EQ(paint->m_brush, "");
    EXPECT_STREQ(paint->getChildrenArrayName(), "layers");
    EXPECT_EQ(writtenToArray(*paint),
              R"([{"OTIO_SCHEMA":"Paint.1","points":[],"rgba":[],"type":"","brush":"",)"
              R"("visible":true,"name":"","effect_name":"","hold":false,"ghost":false,)"
              R"("ghost_before":3,"ghost_after":3}])");
}

TEST(OtioPaintNode, ReadsAllItsMembers) {
    EXPECT_EQ(normalPaint(R"("brush":"gauss","type":"COLOR","rgba":[1,0.5,0.25,1.0],"points":[
        {"width":3.5,"y":2.5,"x":1.5,"OTIO_SCHEMA":"Point.1","more":1}])"),
              paintText("[" + pointText("1.5", "2.5", "3.5") + "]", "[1.0,0.5,0.25,1.0]", R"("COLOR")",
                        R"("gauss")"));
}

TEST(OtioPaintNode, APointOfAnotherSchemaIsAZeroPointAtItsPlace) {
    std::string const good = R"({"OTIO_SCHEMA":"Point.1","x":1.5,"y":2.5,"width":3.5})";
    std::string const written = pointText("1.5", "2.5", "3.5");
    for (char const* const bad :
         {R"({"OTIO_SCHEMA":"Point.2","x":1.5,"y":2.5,"width":3.5})", R"({"x":1.5,"y":2.5,"width":3.5})",
          R"({"OTIO_SCHEMA":"point.1","x":1.5})", R"({"OTIO_SCHEMA":1,"x":1.5})", "{}", "null", "7", "1.5",
          "true", "\"Point.1\"", "[]", R"(["Point.1",1.5,2.5,3.5])"}) {
        EXPECT_EQ(normalPaint(R"("points":[)" + good + "," + bad + "," + good + "]"),
                  paintText("[" + written + "," + kZeroPoint + "," + written + "]"))
            << bad;
    }
}

TEST(OtioPaintNode, ACoordinateWithoutAFractionIsRefusedAndTheOthersAreRead) {
    EXPECT_EQ(normalPaint(R"("points":[{"OTIO_SCHEMA":"Point.1","x":1,"y":2.5,"width":3}])"),
              paintText("[" + pointText("0.0", "2.5", "0.0") + "]"));
    EXPECT_EQ(normalPaint(R"("points":[{"OTIO_SCHEMA":"Point.1","x":"1.0","y":null,"width":1e0}])"),
              paintText("[" + pointText("0.0", "0.0", "1.0") + "]"));
    EXPECT_EQ(normalPaint(R"("points":[{"OTIO_SCHEMA":"Point.1","x":10.0e308,"y":2.5}])"),
              paintText("[" + pointText("0.0", "2.5", "0.0") + "]"));
}

TEST(OtioPaintNode, PointsThatAreNoArrayAreNone) {
    for (char const* const points : {"{}", "null", "7", R"({"OTIO_SCHEMA":"Point.1","x":1.5})", "[]"}) {
        EXPECT_EQ(normalPaint(std::string(R"("points":)") + points), paintText("[]")) << points;
    }
}

struct ListRow {
    char const* read;
    char const* written;
};

ListRow const kColours[] = {
    {"[]", "[]"},
    {"[1]", "[1.0]"},
    {"[1,0.5,0,0.25,7,-1]", "[1.0,0.5,0.0,0.25,7.0,-1.0]"},
    {"[0.1]", "[0.10000000149011612]"},
    {"[0.8,16777217]", "[0.800000011920929,16777216.0]"},
    {"[1e39]", "[]"},
    {"[0.5,-1e39,0.5]", "[]"},
    {"[0.5,10.0e308]", "[]"},
    {"[0.5,null]", "[]"},
    {"[\"1\",0.5]", "[]"},
    {"[0.5,[0.5]]", "[]"},
    {"[true]", "[]"},
    {"[{}]", "[]"},
    {"{}", "[]"},
    {"null", "[]"},
    {"0.5", "[]"},
};

TEST(OtioPaintNode, AColourIsAnyCountOfNumbersThatFitAFloat) {
    for (ListRow const& row : kColours) {
        EXPECT_EQ(normalPaint(std::string(R"("type":"t","rgba":)") + row.read),
                  paintText("[]", row.written, R"("t")"))
            << row.read;
    }
}

TEST(OtioPaintNode, OfAnotherSchemaReadsOnlyWhatAllLayersHave) {
    for (char const* const schema : {R"("OTIO_SCHEMA":"Paint.2",)", R"("OTIO_SCHEMA":"Text.1",)", ""}) {
        rapidjson::Document const document = parsed(
            std::string("{") + schema + R"("hold":true,"points":[{}],"rgba":[1],"type":"t","brush":"b"})");
        PaintNode const paint(document, nullptr);
        EXPECT_TRUE(paint.m_hold);
        EXPECT_TRUE(paint.m_points.empty());
        EXPECT_TRUE(paint.m_rgba.empty());
        EXPECT_EQ(paint.m_type, "");
        EXPECT_EQ(paint.m_brush, "");
    }
}

// TextNode

struct TextText {
    std::string text = R"("")";
    std::string justification = R"("")";
    std::string fontName = R"("")";
    std::string fontSize = "0.0";
    std::string width = "0.0";
    std::string orientation = "0.0";
    std::string position = "[0.0,0.0]";
    std::string rgba = "[]";

    std::string array() const {
        return R"([{"OTIO_SCHEMA":"Text.1","text":)" + text + R"(,"justification":)" + justification +
               R"(,"fontName":)" + fontName + R"(,"fontSize":)" + fontSize + R"(,"width":)" + width +
               R"(,"orientation":)" + orientation + R"(,"position":)" + position + R"(,"rgba":)" + rgba +
               "," + kCommon;
    }
};

TEST(OtioTextNode, OfASchemaAloneHoldsNothing) {
    Built<TextNode> text(R"({"OTIO_SCHEMA":"Text.1"})");
    for (double const number :
         {text->m_fontSize, text->m_width, text->m_orientation, text->m_positionX, text->m_positionY}) {
        EXPECT_EQ(number, 0.0);
    }
    EXPECT_EQ(
        writtenToArray(*text),
        R"([{"OTIO_SCHEMA":"Text.1","text":"","justification":"","fontName":"","fontSize":0.0,"width":0.0,)"
        R"("orientation":0.0,"position":[0.0,0.0],"rgba":[],"visible":true,"name":"","effect_name":"",)"
        R"("hold":false,"ghost":false,"ghost_before":3,"ghost_after":3}])");
}

struct TextRow {
    char const* members;
    std::string TextText::*field;
    char const* expected;
};

TEST(OtioTextNode, ReadsEachMember) {
    TextRow const rows[] = {
        {R"("text":"line\nline")", &TextText::text, R"("line\nline")"},
        {R"("justification":"left")", &TextText::justification, R"("left")"},
        {R"("fontName":"Sans")", &TextText::fontName, R"("Sans")"},
        {R"("fontSize":12.5)", &TextText::fontSize, "12.5"},
        {R"("width":640.0)", &TextText::width, "640.0"},
        {R"("orientation":-0.5)", &TextText::orientation, "-0.5"},
        {R"("position":[0.5,-1.5])", &TextText::position, "[0.5,-1.5]"},
        {R"("position":[1,2.5])", &TextText::position, "[1.0,2.5]"},
        {R"("position":[1,2,3])", &TextText::position, "[1.0,2.0]"},
        {R"("rgba":[1,0.5])", &TextText::rgba, "[1.0,0.5]"},
    };
    for (TextRow const& row : rows) {
        TextText expected;
        expected.*row.field = row.expected;
        EXPECT_EQ(normalText(row.members), expected.array()) << row.members;
    }
}

TEST(OtioTextNode, WhatDoesNotFitKeepsItsDefault) {
    for (char const* const members :
         {R"("text":5)", R"("justification":null)", R"("fontName":["Sans"])", R"("font_name":"Sans")",
          R"("font_size":12.5)", R"("fontSize":12)", R"("fontSize":"12.5")", R"("width":640)",
          R"("orientation":1)", R"("orientation":10.0e308)", R"("position":[1.5])", R"("position":[])",
          R"("position":{"x":1.5,"y":2.5})", R"("position":[1.5,null])", R"("position":["1.5",2.5])",
          R"("position":[1.5,2.5,true])", R"("position":[10.0e308,1])"}) {
        EXPECT_EQ(normalText(members), TextText().array()) << members;
    }
}

TEST(OtioTextNode, AColourIsAnyCountOfNumbersThatFitAFloat) {
    for (ListRow const& row : kColours) {
        TextText expected;
        expected.rgba = row.written;
        EXPECT_EQ(normalText(std::string(R"("rgba":)") + row.read), expected.array()) << row.read;
    }
}

TEST(OtioTextNode, OfAnotherSchemaReadsOnlyWhatAllLayersHave) {
    for (char const* const schema : {R"("OTIO_SCHEMA":"Text.2",)", R"("OTIO_SCHEMA":"Paint.1",)", ""}) {
        rapidjson::Document const document =
            parsed(std::string("{") + schema +
                   R"("ghost":true,"text":"t","fontSize":1.5,"position":[1,2],"rgba":[1]})");
        TextNode const text(document, nullptr);
        EXPECT_TRUE(text.m_ghost);
        EXPECT_EQ(text.m_text, "");
        EXPECT_EQ(text.m_fontSize, 0.0);
        EXPECT_EQ(text.m_positionY, 0.0);
        EXPECT_TRUE(text.m_rgba.empty());
    }
}

// AnnotationNode

TEST(OtioAnnotationNode, IsAnEffectWithItsSchemaBeforeIt) {
    Tree tree(
        R"({"OTIO_SCHEMA":"Annotation.1","name":"n","visible":false,"effect_name":"e","hold":true,"layers":[
        {"OTIO_SCHEMA":"Paint.1"}]})");
    EXPECT_EQ(writtenToArray(tree.at({0})),
              R"([{"OTIO_SCHEMA":"Annotation.1","visible":false,"name":"n","effect_name":"e","layers":)" +
                  paintText("[]") + "}]");
}

TEST(OtioAnnotationNode, WithoutLayersWritesNoSuchKey) {
    EXPECT_EQ(writtenToArray(*Built<AnnotationNode>(R"({"OTIO_SCHEMA":"Annotation.1"})")),
              R"([{"OTIO_SCHEMA":"Annotation.1","visible":true,"name":"","effect_name":""}])");
}

TEST(OtioLayers, NumbersThatAreNotFiniteAreWrittenAs0) {
    Built<PaintNode> paint(R"({"OTIO_SCHEMA":"Paint.1"})");
    paint->m_rgba = {0.5F, std::numeric_limits<float>::infinity(), std::numeric_limits<float>::quiet_NaN()};
    paint->m_points.resize(1);
    paint->m_points[0].y = std::numeric_limits<double>::infinity();
    EXPECT_EQ(writtenToArray(*paint), paintText("[" + kZeroPoint + "]", "[0.5,0.0,0.0]"));
    Built<TextNode> text(R"({"OTIO_SCHEMA":"Text.1"})");
    text->m_fontSize = std::numeric_limits<double>::quiet_NaN();
    text->m_positionX = -std::numeric_limits<double>::infinity();
    EXPECT_EQ(writtenToArray(*text), TextText().array());
}

TEST(OtioLayers, TextsEndAtTheirFirstZeroByte) {
    EXPECT_EQ(normalPaint(R"("type":"t\u0000x","brush":"\u0000")"), paintText("[]", "[]", R"("t")"));
    Built<TextNode> text(textNodeOf(R"("text":"a\u0000b")"));
    text->m_fontName.assign("f\0g", 3);
    TextText expected;
    expected.text = R"("a")";
    expected.fontName = R"("f")";
    EXPECT_EQ(writtenToArray(*text), expected.array());
}

} // namespace
