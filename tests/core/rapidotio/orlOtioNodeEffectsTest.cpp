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

double const kInfinity = std::numeric_limits<double>::infinity();

std::string effectOf(std::string const& schema, std::string const& members) {
    return R"({"OTIO_SCHEMA":")" + schema + "\"" + (members.empty() ? "" : "," + members) + "}";
}

/// An effect's text, from its schema to its own last member; the common members follow.
std::string written(std::string const& head, std::string const& common = kPlainEffect) {
    return R"([{"OTIO_SCHEMA":)" + head + "," + common + "}]";
}

template <class N>
std::string normal(std::string const& schema, std::string const& members) {
    return writtenToArray(*Built<N>(effectOf(schema, members)));
}

std::string const kRange = R"({"start_time":{"OTIO_SCHEMA":"RationalTime.1","value":1,"rate":24},)"
                           R"("duration":{"OTIO_SCHEMA":"RationalTime.1","value":2.0,"rate":"24"}})";
std::string const kWrittenRange = rangeText(timeText("1.0", "24.0"), timeText("2.0", "24.0"));

// EffectNode

TEST(OtioEffectNode, IsTheBaseOfAllEffects) {
    EXPECT_TRUE((std::is_base_of_v<Node, EffectNode>));
    EXPECT_TRUE((std::is_base_of_v<EffectNode, CompNode>));
    EXPECT_TRUE((std::is_base_of_v<EffectNode, AngularMaskNode>));
    EXPECT_TRUE((std::is_base_of_v<EffectNode, CDLNode>));
}

TEST(OtioEffectNode, IsVisibleByDefault) {
    rapidjson::Document const document = parsed("{}");
    EffectNode const effect(document, nullptr);
    EXPECT_TRUE(effect.m_visible);
    EXPECT_EQ(effect.m_effectName, "");
    EXPECT_FALSE(effect.m_layerRange.start_time.hasValue() || effect.m_layerRange.duration.hasRate());
    EXPECT_STREQ(effect.getChildrenArrayName(), "layers");
    EXPECT_EQ(writtenToObject(effect), R"({"visible":true,"name":"","effect_name":""})");
}

TEST(OtioEffectNode, ReadsAndWritesItsMembers) {
    rapidjson::Document const document =
        parsed(R"({"effect_name":"e","name":"n","visible":false,"layer_range":)" + kRange + "}");
    Node const parent;
    EffectNode const effect(document, &parent);
    EXPECT_FALSE(effect.m_visible);
    EXPECT_EQ(effect.m_name, "n");
    EXPECT_EQ(effect.m_effectName, "e");
    EXPECT_EQ(effect.m_parent, &parent);
    EXPECT_EQ(effect.m_layerRange.start_time.value, 1.0);
    EXPECT_EQ(effect.m_layerRange.duration.rate, 24.0);
    EXPECT_EQ(writtenToObject(effect), R"({"visible":false,"name":"n","effect_name":"e"})");
}

TEST(OtioEffectNode, AddsItsMembersBehindThoseOfTheObject) {
    rapidjson::Document target = parsed(R"({"a":1})");
    rapidjson::Document const document = parsed("{}");
    EffectNode(document, nullptr).toJson(target, target.GetAllocator());
    EXPECT_EQ(textOf(target), R"({"a":1,"visible":true,"name":"","effect_name":""})");
}

TEST(OtioEffectNode, MembersOfTheWrongTypeKeepTheirDefaults) {
    for (char const* const members :
         {R"("visible":0)", R"("visible":null)", R"("visible":"false")", R"("effect_name":1)",
          R"("effect_name":["e"])", R"("layer_range":[])"}) {
        EXPECT_EQ(normal<AnnotationNode>("Annotation.1", members), written(R"("Annotation.1")")) << members;
    }
}

TEST(OtioEffectNode, ABareEffectGivenAnArrayIsLeftOut) {
    Tree tree(R"({"OTIO_SCHEMA":"Clip.1"})");
    rapidjson::Document const document = parsed("{}");
    tree.at({0}).m_children.emplace_back(new EffectNode(document, &tree.at({0})));
    EXPECT_EQ(writtenToArray(tree.at<ClipNode>({0})), "[" + ClipText().text() + "]");
}

TEST(OtioEffectNode, ARangeIsLostDirectlyOnAClipAndKeptInTheLayersOfAnEffect) {
    std::string const effect = effectOf("Comp.1", R"("layer_range":)" + kRange);
    Tree tree(R"({"OTIO_SCHEMA":"Clip.1","effects":[)" + effect +
              R"(,{"OTIO_SCHEMA":"Annotation.1","layers":[)" + effect + "]}]}");
    EXPECT_EQ(writtenToArray(tree.at<CompNode>({0, 0})),
              written(R"("Comp.1","blend_mode":"","opacity":0.0)"));
    EXPECT_EQ(writtenToArray(tree.at<CompNode>({0, 1, 0})),
              written(R"("Comp.1","blend_mode":"","opacity":0.0)",
                      kPlainEffect + R"(,"layer_range":)" + kWrittenRange));
}

TEST(OtioEffectNode, ARangeIsWrittenByTheClassOfTheParentAsItIsThen) {
    Tree tree(R"({"OTIO_SCHEMA":"Annotation.1","layers":[{"OTIO_SCHEMA":"Annotation.1","layer_range":)" +
              kRange + "}]}");
    Node& layer = tree.at({0, 0});
    std::string const with =
        written(R"("Annotation.1")", kPlainEffect + R"(,"layer_range":)" + kWrittenRange);
    EXPECT_EQ(writtenToArray(layer), with);
    layer.m_parent = nullptr;
    EXPECT_EQ(writtenToArray(layer), written(R"("Annotation.1")"));
    layer.m_parent = &tree.root();
    EXPECT_EQ(writtenToArray(layer), written(R"("Annotation.1")"));
    layer.m_parent = &tree.at({0});
    EXPECT_EQ(writtenToArray(layer), with);
}

TEST(OtioEffectNode, ARangeWithOneUndefinedPartIsNotWritten) {
    std::string const whole = R"({"OTIO_SCHEMA":"RationalTime.1","value":0,"rate":24})";
    std::string const parts[] = {R"({"OTIO_SCHEMA":"RationalTime.1","rate":24})",
                                 R"({"OTIO_SCHEMA":"RationalTime.1","value":0})",
                                 R"({"OTIO_SCHEMA":"RationalTime.1","value":0,"rate":0})",
                                 R"({"OTIO_SCHEMA":"RationalTime.1"})",
                                 "{}",
                                 "null"};
    for (std::string const& part : parts) {
        for (bool const first : {true, false}) {
            std::string const range = R"({"start_time":)" + (first ? part : whole) + R"(,"duration":)" +
                                      (first ? whole : part) + "}";
            Tree tree(
                R"({"OTIO_SCHEMA":"Annotation.1","layers":[{"OTIO_SCHEMA":"Annotation.1","layer_range":)" +
                range + "}]}");
            EXPECT_EQ(writtenToArray(tree.at({0, 0})), written(R"("Annotation.1")")) << range;
        }
    }
}

TEST(OtioEffectNode, LayersStandBetweenTheNameOfTheEffectAndTheRange) {
    Tree tree(R"({"OTIO_SCHEMA":"CDL.1","layers":[{"OTIO_SCHEMA":"Annotation.1","effect_name":"e","layers":[
        {"OTIO_SCHEMA":"Annotation.1","name":"a"},{"OTIO_SCHEMA":"Nothing.1"},{"OTIO_SCHEMA":"Annotation.1","name":"b"}],
        "layer_range":)" +
              kRange + "}]}");
    EXPECT_EQ(writtenToArray(tree.at({0, 0})),
              R"([{"OTIO_SCHEMA":"Annotation.1","visible":true,"name":"","effect_name":"e","layers":[)"
              R"({"OTIO_SCHEMA":"Annotation.1","visible":true,"name":"a","effect_name":""},)"
              R"({"OTIO_SCHEMA":"Annotation.1","visible":true,"name":"b","effect_name":""}],"layer_range":)" +
                  kWrittenRange + "}]");
}

TEST(OtioEffectNode, WithoutLayersThereIsNoSuchKey) {
    for (char const* const layers :
         {"[]", "{}", "null", R"([1,{"OTIO_SCHEMA":"Nothing.1"}])", R"([{"OTIO_SCHEMA":"Stack.1"}])"}) {
        Tree tree(std::string(R"({"OTIO_SCHEMA":"Annotation.1","layers":)") + layers + "}");
        EXPECT_EQ(writtenToArray(tree.at({0})), written(R"("Annotation.1")")) << layers;
    }
}

TEST(OtioEffectNode, TheEffectsOfAnEffectAreItsLayersOnly) {
    Tree tree(
        R"({"OTIO_SCHEMA":"Annotation.1","effects":[{"OTIO_SCHEMA":"CDL.1"}],"children":[{"OTIO_SCHEMA":"CDL.1"}]})");
    EXPECT_TRUE(tree.at({0}).m_children.empty());
}

// CompNode

TEST(OtioCompNode, OfASchemaAloneIsVisibleAndEmpty) {
    Built<CompNode> comp(effectOf("Comp.1", ""));
    EXPECT_TRUE(comp->m_visible);
    EXPECT_EQ(comp->m_blendMode, "");
    EXPECT_EQ(comp->m_opacity, 0.0F);
    EXPECT_EQ(writtenToArray(*comp), R"([{"OTIO_SCHEMA":"Comp.1","blend_mode":"","opacity":0.0,)"
                                     R"("visible":true,"name":"","effect_name":""}])");
}

TEST(OtioCompNode, AnOpacityOf08IsWrittenInItsFloatExpansion) {
    EXPECT_EQ(normal<CompNode>("Comp.1", R"("blend_mode":"over","opacity":0.8,"visible":false)"),
              R"([{"OTIO_SCHEMA":"Comp.1","blend_mode":"over","opacity":0.800000011920929,)"
              R"("visible":false,"name":"","effect_name":""}])");
}

TEST(OtioCompNode, AnOpacityMustHaveAFractionAndFitAFloat) {
    for (char const* const opacity :
         {"1", "0", "1e39", "-1e39", "\"0.5\"", "null", "true", "[0.5]", "10.0e308"}) {
        EXPECT_EQ(normal<CompNode>("Comp.1", std::string(R"("opacity":)") + opacity),
                  written(R"("Comp.1","blend_mode":"","opacity":0.0)"))
            << opacity;
    }
    EXPECT_EQ(normal<CompNode>("Comp.1", R"("opacity":1e0)"),
              written(R"("Comp.1","blend_mode":"","opacity":1.0)"));
}

TEST(OtioCompNode, HasNoSchemaTestOfItsOwn) {
    rapidjson::Document const document =
        parsed(R"({"OTIO_SCHEMA":"Other.1","blend_mode":"over","opacity":0.5})");
    CompNode const comp(document, nullptr);
    EXPECT_EQ(comp.m_blendMode, "over");
    EXPECT_EQ(comp.m_opacity, 0.5F);
}

// AngularMaskNode

TEST(OtioAngularMaskNode, OfASchemaAloneHasZeros) {
    EXPECT_EQ(normal<AngularMaskNode>("AngularMask.1", ""),
              R"([{"OTIO_SCHEMA":"AngularMask.1","pivot":[0.0,0.0],"angle_in_radians":0.0,)"
              R"("visible":true,"name":"","effect_name":""}])");
}

struct EffectRow {
    char const* members;
    char const* expected;
};

TEST(OtioAngularMaskNode, ReadsAPivotOfAnyNumbersAndAnAngleWithAFraction) {
    EffectRow const rows[] = {
        {R"("pivot":[1.5,-2.5])", R"("pivot":[1.5,-2.5],"angle_in_radians":0.0)"},
        {R"("pivot":[1,2.5])", R"("pivot":[1.0,2.5],"angle_in_radians":0.0)"},
        {R"("pivot":[4294967296,-4294967296])",
         R"("pivot":[4294967296.0,-4294967296.0],"angle_in_radians":0.0)"},
        {R"("pivot":[1,2,3])", R"("pivot":[1.0,2.0],"angle_in_radians":0.0)"},
        {R"("pivot":[1])", R"("pivot":[0.0,0.0],"angle_in_radians":0.0)"},
        {R"("pivot":[])", R"("pivot":[0.0,0.0],"angle_in_radians":0.0)"},
        {R"("pivot":{"0":1,"1":2})", R"("pivot":[0.0,0.0],"angle_in_radians":0.0)"},
        {R"("angle_in_radians":0.1)", R"("pivot":[0.0,0.0],"angle_in_radians":0.10000000149011612)"},
        {R"("angle_in_radians":1)", R"("pivot":[0.0,0.0],"angle_in_radians":0.0)"},
        {R"("angle_in_radians":1e39)", R"("pivot":[0.0,0.0],"angle_in_radians":0.0)"},
        {R"("pivot":["1",2],"angle_in_radians":0.5)", R"("pivot":[0.0,0.0],"angle_in_radians":0.5)"},
    };
    for (EffectRow const& row : rows) {
        EXPECT_EQ(normal<AngularMaskNode>("AngularMask.1", row.members),
                  written(std::string(R"("AngularMask.1",)") + row.expected))
            << row.members;
    }
}

TEST(OtioAngularMaskNode, APivotThatHoldsAnythingButFiniteNumbersIsPassedOverAsAWhole) {
    for (char const* const pivot :
         {"[1.5,null]", "[\"1\",2]", "[1,[2]]", "[true,2]", "[1,2,null]", "[10.0e308,1]", "[1.0,2.0,{}]"}) {
        EXPECT_EQ(normal<AngularMaskNode>("AngularMask.1", std::string(R"("pivot":)") + pivot),
                  written(R"("AngularMask.1","pivot":[0.0,0.0],"angle_in_radians":0.0)"))
            << pivot;
    }
}

TEST(OtioAngularMaskNode, OfAnotherSchemaReadsOnlyWhatAllEffectsHave) {
    for (char const* const schema :
         {R"("OTIO_SCHEMA":"AngularMask.2",)", R"("OTIO_SCHEMA":"AngularMark.1",)", ""}) {
        rapidjson::Document const document = parsed(
            std::string("{") + schema + R"("effect_name":"e","pivot":[1.0,2.0],"angle_in_radians":0.5})");
        AngularMaskNode const mask(document, nullptr);
        EXPECT_EQ(mask.m_effectName, "e");
        EXPECT_EQ(mask.m_pivotX, 0.0);
        EXPECT_EQ(mask.m_pivotY, 0.0);
        EXPECT_EQ(mask.m_angleInRadians, 0.0F);
    }
}

// CDLNode

std::string cdlText(std::string const& slope, std::string const& offset, std::string const& power,
                    std::string const& saturation) {
    return written(R"("CDL.1","slope":)" + slope + R"(,"offset":)" + offset + R"(,"power":)" + power +
                   R"(,"saturation":)" + saturation);
}

std::string const kNeutralCdl = cdlText("[1.0,1.0,1.0]", "[0.0,0.0,0.0]", "[1.0,1.0,1.0]", "1.0");

TEST(OtioCDLNode, OfASchemaAloneIsNeutral) {
    Built<CDLNode> cdl(effectOf("CDL.1", ""));
    EXPECT_EQ(cdl->m_slope, std::vector<double>(3, 1.0));
    EXPECT_EQ(cdl->m_offset, std::vector<double>(3, 0.0));
    EXPECT_EQ(cdl->m_power, std::vector<double>(3, 1.0));
    EXPECT_EQ(cdl->m_saturation, 1.0);
    EXPECT_EQ(writtenToArray(*cdl), kNeutralCdl);
}

TEST(OtioCDLNode, ReadsEachListForItself) {
    EXPECT_EQ(normal<CDLNode>(
                  "CDL.1", R"("power":[1.1,1.2,1.3],"slope":[0.5,2,3.5],"offset":[-1,0,1],"saturation":1.5)"),
              cdlText("[0.5,2.0,3.5]", "[-1.0,0.0,1.0]", "[1.1,1.2,1.3]", "1.5"));
    EXPECT_EQ(normal<CDLNode>("CDL.1", R"("slope":null,"offset":[4,5,6],"power":"x")"),
              cdlText("[1.0,1.0,1.0]", "[4.0,5.0,6.0]", "[1.0,1.0,1.0]", "1.0"));
}

TEST(OtioCDLNode, OfALongerListTheFirstThreeAreUsed) {
    Built<CDLNode> cdl(effectOf("CDL.1", R"("slope":[1.5,2.5,3.5,4.5])"));
    EXPECT_EQ(cdl->m_slope, (std::vector<double>{1.5, 2.5, 3.5}));
    EXPECT_EQ(writtenToArray(*cdl), cdlText("[1.5,2.5,3.5]", "[0.0,0.0,0.0]", "[1.0,1.0,1.0]", "1.0"));
}

TEST(OtioCDLNode, AListThatIsShortOrHoldsAnythingButFiniteNumbersStaysNeutral) {
    for (char const* const list : {"[2,2]", "[]", "{}", "[2,2,null]", "[\"2\",2,2]", "[2,2,2,\"2\"]",
                                   "[2,2,10.0e308]", "[[2,2,2]]", "[true,2,2]", "7", "null"}) {
        for (char const* const key : {"slope", "offset", "power"}) {
            EXPECT_EQ(normal<CDLNode>("CDL.1", "\"" + std::string(key) + "\":" + list), kNeutralCdl)
                << key << list;
        }
    }
}

TEST(OtioCDLNode, ASaturationMustHaveAFraction) {
    for (char const* const saturation : {"2", "1", "0", "\"2.0\"", "null", "true", "[2.0]", "10.0e308"}) {
        EXPECT_EQ(normal<CDLNode>("CDL.1", std::string(R"("saturation":)") + saturation), kNeutralCdl)
            << saturation;
    }
}

TEST(OtioCDLNode, OfAnotherSchemaIsNeutral) {
    for (char const* const schema : {R"("OTIO_SCHEMA":"CDL.2",)", R"("OTIO_SCHEMA":"cdl.1",)", ""}) {
        rapidjson::Document const document =
            parsed(std::string("{") + schema + R"("visible":false,"slope":[2,2,2],"saturation":2.0})");
        CDLNode const cdl(document, nullptr);
        EXPECT_FALSE(cdl.m_visible);
        EXPECT_EQ(cdl.m_slope, std::vector<double>(3, 1.0));
        EXPECT_EQ(cdl.m_saturation, 1.0);
    }
}

TEST(OtioCDLNode, InitCutsExtendsAndKeepsWhatIsThere) {
    Built<CDLNode> cdl(effectOf("CDL.1", ""));
    cdl->m_slope = {5.0, 6.0, 7.0, 8.0};
    cdl->m_offset = {5.0};
    cdl->m_power.clear();
    cdl->m_saturation = 9.0;
    cdl->init();
    EXPECT_EQ(cdl->m_slope, (std::vector<double>{5.0, 6.0, 7.0}));
    EXPECT_EQ(cdl->m_offset, (std::vector<double>{5.0, 0.0, 0.0}));
    EXPECT_EQ(cdl->m_power, (std::vector<double>{1.0, 1.0, 1.0}));
    EXPECT_EQ(cdl->m_saturation, 1.0);
}

TEST(OtioCDLNode, WritesTheFirstThreeOfAListThatWasMadeLongerByHand) {
    Built<CDLNode> cdl(effectOf("CDL.1", ""));
    cdl->m_slope = {5.0, 6.0, 7.0, 8.0};
    EXPECT_EQ(writtenToArray(*cdl), cdlText("[5.0,6.0,7.0]", "[0.0,0.0,0.0]", "[1.0,1.0,1.0]", "1.0"));
}

TEST(OtioCDLNode, AListThatWasMadeShorterByHandIsWrittenWithoutReadingBehindItsEnd) {
    Built<CDLNode> cdl(effectOf("CDL.1", ""));
    cdl->m_offset = {5.0};
    cdl->m_power.clear();
    cdl->m_power.shrink_to_fit();
    rapidjson::Document const result = parsed(writtenToArray(*cdl));
    EXPECT_EQ(textOf(result[0]["slope"]), "[1.0,1.0,1.0]");
    EXPECT_EQ(result[0]["offset"][0].GetDouble(), 5.0);
    EXPECT_LE(result[0]["offset"].Size(), 3U);
    EXPECT_LE(result[0]["power"].Size(), 3U);
    EXPECT_EQ(result[0]["saturation"].GetDouble(), 1.0);
}

TEST(OtioEffects, NumbersThatAreNotFiniteAreWrittenAs0) {
    Built<CDLNode> cdl(effectOf("CDL.1", ""));
    cdl->m_slope[1] = kInfinity;
    cdl->m_saturation = -kInfinity;
    EXPECT_EQ(writtenToArray(*cdl), cdlText("[1.0,0.0,1.0]", "[0.0,0.0,0.0]", "[1.0,1.0,1.0]", "0.0"));
    Built<AngularMaskNode> mask(effectOf("AngularMask.1", ""));
    mask->m_pivotX = kInfinity;
    mask->m_angleInRadians = std::numeric_limits<float>::quiet_NaN();
    EXPECT_EQ(writtenToArray(*mask), written(R"("AngularMask.1","pivot":[0.0,0.0],"angle_in_radians":0.0)"));
    Built<CompNode> comp(effectOf("Comp.1", ""));
    comp->m_opacity = std::numeric_limits<float>::infinity();
    EXPECT_EQ(writtenToArray(*comp), written(R"("Comp.1","blend_mode":"","opacity":0.0)"));
}

TEST(OtioEffects, TextsEndAtTheirFirstZeroByte) {
    Built<CompNode> comp(
        effectOf("Comp.1", R"("name":"n\u0000x","effect_name":"e\u0000x","blend_mode":"b\u0000x")"));
    std::string const expected = written(R"("Comp.1","blend_mode":"b","opacity":0.0)",
                                         R"("visible":true,"name":"n","effect_name":"e")");
    EXPECT_EQ(writtenToArray(*comp), expected);
    comp->m_name.assign("n\0x", 3);
    comp->m_effectName.assign("e\0x", 3);
    comp->m_blendMode.assign("b\0x", 3);
    EXPECT_EQ(writtenToArray(*comp), expected);
}

} // namespace
