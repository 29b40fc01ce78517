// Holes, slots, spans, plating and fills of IPC-2581 documents.
#include "IpcDocumentSupport.h"

namespace {

using namespace IpcSupport;

const std::string drillLayers = R"(<Layer name="DRILL" layerFunction="DRILL" side="ALL"/>
    <Layer name="BLIND" layerFunction="DRILL" side="TOP"><Span fromLayer="CORE" toLayer="TOP"/></Layer>)";

Read readDrills(const std::string &sets, const std::string &layer = "DRILL", const std::string &step = "") {
    Text text;
    text.layers += drillLayers;
    text.step = step + "<LayerFeature layerRef=\"" + layer + "\">" + sets + "</LayerFeature>";
    return read(text);
}

std::string hole(const std::string &attributes) { return "<Set><Hole " + attributes + "/></Set>"; }

const std::string stack =
    R"(<PadStackDef name="P"><PadstackHoleDef diameter="0.4" platingStatus="NONPLATED" x="1"
    y="0"/><PadstackPadDef layerRef="TOP" padUse="REGULAR"><Circle diameter="1"/></PadstackPadDef></PadStackDef>)";

TEST(IpcHoles, APlatedHoleGoesThroughAllConductors) {
    const Read read = readDrills(hole(R"(name="H7" diameter="0.5" platingStatus="PLATED" x="3" y="4")"));
    ASSERT_EQ(read.layout.vias.size(), 1u);
    const viaData &via = read.layout.vias[0];
    EXPECT_EQ(via.name, "H7");
    EXPECT_EQ(via.fromLayer, "TOP");
    EXPECT_EQ(via.toLayer, "BOTTOM");
    EXPECT_NEAR(via.x, 3e-3, 1e-12);
    EXPECT_NEAR(via.y, 4e-3, 1e-12);
    EXPECT_EQ(read.model(via).shape.kind, geomElem::Circle);
    EXPECT_NEAR(read.model(via).shape.radius, 0.25e-3, 1e-12);
    EXPECT_NEAR(read.model(via).platingThickness, 25e-6, 1e-12);
    EXPECT_EQ(read.model(via).fillMaterial, "");
    EXPECT_EQ(read.log.text(), "");
}

TEST(IpcHoles, OnlyPlatedHolesHaveAPlating) {
    for (const auto &[status, isPlated] :
         {std::pair{"PLATED", true}, {"VIA", true}, {"NONPLATED", false}, {"NON_PLATED", false}}) {
        const Read read =
            readDrills(hole(std::string(R"(diameter="1" x="1" y="1" platingStatus=")") + status + '"'));
        EXPECT_EQ(read.layout.viaModels.at(0).platingThickness > 1e-9, isPlated) << status;
    }
}

TEST(IpcHoles, AHoleThatDoesNotSayItIsPlatedIsAndThatIsTold) {
    const Read read = readDrills(hole(R"(diameter="1" x="1" y="1")"));
    EXPECT_GT(read.layout.viaModels.at(0).platingThickness, 1e-9);
    EXPECT_EQ(read.log.text(), "Warning: a hole does not say whether it is plated: it is taken as plated\n");
}

TEST(IpcHoles, ThePlatingLeavesAThinHoleOpen) {
    const Read read = readDrills(hole(R"(diameter="0.04" x="1" y="1" platingStatus="VIA")"));
    EXPECT_NEAR(read.layout.viaModels.at(0).platingThickness, 10e-6, 1e-12);
}

TEST(IpcHoles, ThePlatingOfTheDocumentCounts) {
    Text text;
    text.specs =
        R"(<Spec name="B"><General type="OTHER" comment="PLATING_THICKNESS"><Property value="1.5" unit="MIL"/>
        </General></Spec>)";
    text.layers += R"(<Layer name="DRILL" layerFunction="DRILL"><SpecRef id="B"/></Layer>)";
    text.step = "<LayerFeature layerRef=\"DRILL\">" +
                hole(R"(diameter="1" x="1" y="1" platingStatus="VIA")") +
                hole(R"(diameter="1" x="5" y="1" platingStatus="NONPLATED")") + "</LayerFeature>";
    const Read read = IpcSupport::read(text);
    EXPECT_NEAR(read.model(read.layout.vias.at(0)).platingThickness, 38.1e-6, 1e-12);
    EXPECT_EQ(read.model(read.layout.vias.at(1)).platingThickness, 0);
}

TEST(IpcHoles, EqualHolesShareAModel) {
    const Read read = readDrills(hole(R"(diameter="1" x="1" y="1" platingStatus="VIA")") +
                                 hole(R"(diameter="1" x="2" y="1" platingStatus="PLATED")") +
                                 hole(R"(diameter="1" x="3" y="1" platingStatus="NONPLATED")") +
                                 hole(R"(diameter="1.1" x="4" y="1" platingStatus="VIA")"));
    EXPECT_EQ(read.layout.vias.size(), 4u);
    EXPECT_EQ(read.layout.viaModels.size(), 3u);
    EXPECT_EQ(read.layout.vias[0].modelName, read.layout.vias[1].modelName);
}

TEST(IpcHoles, TheSpanOfTheLayerCountsFromTheTopDown) {
    const Read read = readDrills(hole(R"(diameter="1" x="1" y="1" platingStatus="VIA")"), "BLIND");
    EXPECT_EQ(read.layout.vias.at(0).fromLayer, "TOP");
    EXPECT_EQ(read.layout.vias.at(0).toLayer, "CORE");
}

TEST(IpcHoles, ASpanToAnUnknownLayerGoesThroughAll) {
    Text text;
    text.layers += R"(<Layer name="D" layerFunction="DRILL"><Span fromLayer="TOP" toLayer="GONE"/></Layer>)";
    text.step = "<LayerFeature layerRef=\"D\">" + hole(R"(diameter="1" x="1" y="1" platingStatus="VIA")") +
                "</LayerFeature>";
    const Read read = IpcSupport::read(text);
    EXPECT_EQ(read.layout.vias.at(0).toLayer, "BOTTOM");
    EXPECT_FALSE(read.log.isEmpty());
}

TEST(IpcHoles, WhatAHoleDoesNotSayIsThatOfItsStack) {
    const Read read = readDrills(R"(<Set geometry="P"><Hole x="3" y="4"/></Set>)", "DRILL", stack);
    ASSERT_EQ(read.layout.vias.size(), 1u);
    EXPECT_NEAR(read.layout.viaModels.at(0).shape.radius, 0.2e-3, 1e-12);
    EXPECT_EQ(read.layout.viaModels.at(0).platingThickness, 0);
}

TEST(IpcHoles, WithoutDrillLayersPadsSayWhereHolesAre) {
    const std::string pad =
        R"(<Set><Pad padstackDefRef="P"><Xform rotation="90"/><Location x="5" y="5"/></Pad></Set>)";
    const Read read = readStep(stack + "<LayerFeature layerRef=\"TOP\">" + pad + "</LayerFeature>" +
                               "<LayerFeature layerRef=\"BOTTOM\">" + pad + "</LayerFeature>");
    ASSERT_EQ(read.layout.vias.size(), 1u); // one hole behind both pads
    EXPECT_NEAR(read.layout.vias[0].x, 5e-3, 1e-12);
    EXPECT_NEAR(read.layout.vias[0].y, 6e-3, 1e-12);
    EXPECT_EQ(read.log.count("the holes are those of the pads' stacks, as no drill layer has any"), 1u);
}

TEST(IpcHoles, WithDrillLayersStacksAddNone) {
    const Read read = readDrills(hole(R"(diameter="1" x="1" y="1" platingStatus="VIA")"), "DRILL",
                                 stack + R"(<LayerFeature layerRef="TOP"><Set><Pad padstackDefRef="P">
        <Location x="5" y="5"/></Pad></Set></LayerFeature>)");
    EXPECT_EQ(read.layout.vias.size(), 1u);
    EXPECT_EQ(read.log.text(), "Warning: a hole of a pad's stack is on no drill layer and is left out\n");
}

TEST(IpcHoles, AHoleThatIsThereTwiceIsTakenOnce) {
    const std::string one = hole(R"(diameter="1" x="1" y="1" platingStatus="VIA")");
    const Read read = readDrills(one + one);
    EXPECT_EQ(read.layout.vias.size(), 1u);
    EXPECT_EQ(read.log.count("a hole that is there twice is taken once"), 1u);
}

TEST(IpcHoles, AHoleWithoutADiameterIsLeftOut) {
    const Read read = readDrills(hole(R"(x="1" y="1" platingStatus="VIA")") +
                                 hole(R"(diameter="-1" x="2" y="1" platingStatus="VIA")"));
    EXPECT_TRUE(read.layout.vias.empty());
    EXPECT_EQ(read.log.count("a hole has no diameter and is left out"), 2u);
}

TEST(IpcHoles, AHoleOutOfAllBoundsIsLeftOut) {
    const Read read = readDrills(hole(R"(diameter="1" x="1e200" y="1" platingStatus="VIA")") +
                                 hole(R"(diameter="1e200" x="1" y="1" platingStatus="VIA")"));
    EXPECT_TRUE(read.layout.vias.empty());
    EXPECT_EQ(read.log.count("a hole is out of all bounds"), 2u);
}

TEST(IpcHoles, ASlotIsAPolygonAboutItsMiddle) {
    const Read read = readDrills(R"(<Set><SlotCavity name="S" platingStatus="PLATED"><Outline><Polygon>
        <PolyBegin x="10" y="20"/><PolyStepSegment x="14" y="20"/><PolyStepSegment x="14" y="22"/>
        <PolyStepSegment x="10" y="22"/><PolyStepSegment x="10" y="20"/></Polygon></Outline></SlotCavity></Set>)");
    ASSERT_EQ(read.layout.vias.size(), 1u);
    EXPECT_NEAR(read.layout.vias[0].x, 12e-3, 1e-12);
    EXPECT_NEAR(read.layout.vias[0].y, 21e-3, 1e-12);
    const viaModelData &model = read.model(read.layout.vias[0]);
    EXPECT_EQ(model.shape.kind, geomElem::Polygon);
    expectRing(model.shape.points, {{-2, -1}, {2, -1}, {2, 1}, {-2, 1}});
    EXPECT_NEAR(model.platingThickness, 25e-6, 1e-12);
    EXPECT_EQ(read.log.text(), "");
}

TEST(IpcHoles, ASlotMayBeAShapeAtAPlace) {
    for (const char *slot :
         {R"(<SlotCavity platingStatus="NONPLATED" x="7" y="8"><Oval width="3" height="1"/></SlotCavity>)",
          R"(<SlotCavity platingStatus="NONPLATED"><Location x="7" y="8"/><Oval width="3" height="1"/>
                                </SlotCavity>)"}) {
        const Read read = readDrills(std::string("<Set>") + slot + "</Set>");
        ASSERT_EQ(read.layout.vias.size(), 1u) << slot;
        EXPECT_NEAR(read.layout.vias[0].x, 7e-3, 1e-12);
        EXPECT_GT(read.layout.viaModels[0].shape.points.size(), 30u);
    }
}

TEST(IpcHoles, ASlotWithoutAShapeIsTold) {
    const Read read = readDrills("<Set><SlotCavity platingStatus=\"PLATED\"/></Set>");
    EXPECT_TRUE(read.layout.vias.empty());
    EXPECT_EQ(read.log.count("a slot has no shape"), 1u);
}

TEST(IpcHoles, ASquareHoleIsAPolygon) {
    const Read read = readDrills(hole(R"(type="SQUARE" diameter="2" x="1" y="1" platingStatus="VIA")"));
    expectRing(read.layout.viaModels.at(0).shape.points, {{-1, -1}, {1, -1}, {1, 1}, {-1, 1}});
}

TEST(IpcHoles, AFillLayerSaysWhichHolesAreFilledAndWithWhat) {
    Text text;
    text.specs = R"(<Spec name="F"><General type="MATERIAL"><Property text="Epoxy"/></General></Spec>)";
    text.layers += drillLayers + R"(<Layer name="FILL" layerFunction="HOLEFILL"><SpecRef id="F"/></Layer>)";
    text.step = R"(<LayerFeature layerRef="FILL"><Set><Pad><Location x="1" y="1"/><Circle diameter="1"/></Pad>
        <Features><Location x="2" y="1"/><Circle diameter="1"/></Features>
        <Hole x="3" y="1" diameter="1" platingStatus="VIA"/></Set></LayerFeature><LayerFeature layerRef="DRILL">)" +
                hole(R"(diameter="1" x="1" y="1" platingStatus="VIA")") +
                hole(R"(diameter="1" x="2" y="1" platingStatus="VIA")") +
                hole(R"(diameter="1" x="3" y="1" platingStatus="VIA")") +
                hole(R"(diameter="1" x="4" y="1" platingStatus="VIA")") + "</LayerFeature>";
    const Read read = IpcSupport::read(text);
    ASSERT_EQ(read.layout.vias.size(), 4u);
    for (int i = 0; i < 4; ++i)
        EXPECT_EQ(read.model(read.layout.vias[i]).fillMaterial, i < 3 ? "Epoxy" : "") << i;
}

TEST(IpcHoles, ShapesOnDrillLayersAreTold) {
    const Read read = readDrills("<Set>" + square(1, 1, 1) + "</Set>");
    EXPECT_EQ(read.log.text(), "Warning: shapes on drill layers are not read\n");
}

TEST(IpcHoles, HolesWithoutANameAreNumbered) {
    const Read read = readDrills(hole(R"(diameter="1" x="1" y="1" platingStatus="VIA")") +
                                 hole(R"(diameter="1" x="2" y="1" platingStatus="VIA")"));
    EXPECT_EQ(read.layout.vias.at(0).name, "H1");
    EXPECT_EQ(read.layout.vias.at(1).name, "H2");
}

TEST(IpcHoles, HolesOfStacksThatDrillLayersHaveAreNotMissing) {
    const std::string pads =
        R"(<LayerFeature layerRef="TOP"><Set><Pad padstackDefRef="P"><Location x="5" y="5"/>
        <Location x="8" y="5"/></Pad></Set></LayerFeature><LayerFeature layerRef="TOP"><Set>
        <Pad padstackDefRef="P"><Location x="8" y="5"/></Pad></Set></LayerFeature>)";
    const std::string drilled = hole(R"(diameter="1" x="6.000001" y="5" platingStatus="VIA")");
    const Read one = readDrills(drilled, "DRILL", stack + pads);
    EXPECT_EQ(one.log.text(), "Warning: a hole of a pad's stack is on no drill layer and is left out\n");
    const Read both =
        readDrills(drilled + hole(R"(diameter="1" x="9" y="5" platingStatus="VIA")"), "DRILL", stack + pads);
    EXPECT_EQ(both.log.text(), "");
}

// Some documents put a hole beside a shape of the dictionary, and pads refer to it as to a stack.
Read readEntryDrills(const std::string &drill, const std::string &drilled = "") {
    Text text;
    text.content =
        "<DictionaryStandard units=\"MILLIMETER\"><EntryStandard id=\"V\"><Circle diameter=\"1\"/>" + drill +
        "</EntryStandard></DictionaryStandard>";
    text.layers += drillLayers;
    text.step =
        "<LayerFeature layerRef=\"TOP\"><Set><Pad x=\"3\" y=\"4\" padstackDefRef=\"V\"/></Set></LayerFeature>"
        "<LayerFeature layerRef=\"DRILL\">" +
        drilled + "</LayerFeature>";
    return read(text);
}

TEST(IpcHoles, ADrillBesideAShapeOfTheDictionaryIsAHoleOfItsPads) {
    const Read read = readEntryDrills("<Drill diameter=\"0.4\" plated=\"true\"/>");
    ASSERT_EQ(read.layout.vias.size(), 1u);
    EXPECT_NEAR(read.layout.vias[0].x, 3e-3, 1e-12);
    EXPECT_NEAR(read.layout.vias[0].y, 4e-3, 1e-12);
    EXPECT_EQ(read.layout.vias[0].toLayer, "BOTTOM");
    EXPECT_NEAR(read.model(read.layout.vias[0]).shape.radius, 0.2e-3, 1e-12);
    EXPECT_GT(read.model(read.layout.vias[0]).platingThickness, 1e-9);
    EXPECT_EQ(read.elements("TOP").size(), 1u);
    EXPECT_EQ(read.log.text(),
              "Warning: the holes are those of the pads' stacks, as no drill layer has any\n");
}

TEST(IpcHoles, ADrillOfTheDictionarySaysWhetherItIsPlated) {
    const Read bare = readEntryDrills("<Drill diameter=\"0.4\" plated=\"false\"/>");
    EXPECT_EQ(bare.layout.viaModels.at(0).platingThickness, 0);
    const Read silent = readEntryDrills("<Drill diameter=\"0.4\"/>");
    EXPECT_GT(silent.layout.viaModels.at(0).platingThickness, 1e-9);
    EXPECT_EQ(silent.log.count("a hole does not say whether it is plated: it is taken as plated"), 1u);
}

TEST(IpcHoles, ADrillOfTheDictionaryCountsForAHoleOfItsName) {
    const Read read = readEntryDrills("<Drill diameter=\"0.4\" plated=\"false\"/>",
                                      "<Set geometry=\"V\"><Hole x=\"3\" y=\"4\"/></Set>");
    ASSERT_EQ(read.layout.vias.size(), 1u);
    EXPECT_NEAR(read.model(read.layout.vias[0]).shape.radius, 0.2e-3, 1e-12);
    EXPECT_EQ(read.log.text(), "");
}

TEST(IpcHoles, ADrillOfTheDictionaryWithoutADiameterIsTold) {
    for (const char *drill : {"<Drill/>", "<Drill diameter=\"-1\"/>", "<Drill diameter=\"1e300\"/>"}) {
        const Read read = readEntryDrills(drill);
        EXPECT_TRUE(read.layout.vias.empty());
        EXPECT_EQ(read.log.text(),
                  "Warning: Drill with a number that is missing or out of range is left out\n");
    }
}

} // namespace
