// IPC-2581 documents of the older revisions, and the example of the newest.
#include "IpcDocumentSupport.h"

#include <algorithm>
#include <fstream>
#include <iterator>

namespace {

using namespace IpcSupport;
using testing::HasSubstr;

// Revision A has a stack at each place where it is used, with what it drills and draws, and other names of
// functions.
const std::string revisionA = R"(<?xml version="1.0" encoding="UTF-8"?>
<IPC-2581 revision="A" xmlns="http://webstds.ipc.org/2581">
 <Content roleRef="Owner"><FunctionMode mode="FABRICATION" level="1"/><StepRef name="main"/>
  <DictionaryStandard units="INCH"><EntryStandard id="C"><Circle diameter="0.1"/></EntryStandard></DictionaryStandard>
 </Content>
 <Ecad name="e"><CadHeader units="INCH"/><CadData>
  <Layer name="COMP" layerFunction="SIGNAL" side="TOP" polarity="POSITIVE"/>
  <Layer name="D" layerFunction="DIELCORE" side="INTERNAL" polarity="POSITIVE"/>
  <Layer name="SOLD" layerFunction="POWER_GROUND" side="BOTTOM" polarity="POSITIVE"/>
  <Layer name="MASK" layerFunction="SOLDER_MASK" side="TOP" polarity="POSITIVE"/>
  <Stackup overallThickness="0.062" tolPlus="0" tolMinus="0" whereMeasured="METAL"><StackupGroup name="g" thickness="0.062">
   <StackupLayer layerOrGroupRef="COMP" thickness="0.001" sequence="1"/>
   <StackupLayer layerOrGroupRef="D" thickness="0.06" sequence="2"/>
   <StackupLayer layerOrGroupRef="SOLD" thickness="0.001" sequence="3"/></StackupGroup></Stackup>
  <Step name="main">
   <PadStack net="GND">
    <LayerHole name="h1" diameter="0.04" platingStatus="PLATED" plusTol="0" minusTol="0" x="1" y="2">
     <Span fromLayer="COMP" toLayer="SOLD"/></LayerHole>
    <LayerPad layerRef="COMP"><Location x="1" y="2"/><StandardPrimitiveRef id="C"/></LayerPad>
    <LayerPad layerRef="SOLD"><Location x="1" y="2"/><StandardPrimitiveRef id="C"/></LayerPad>
    <LayerPad layerRef="MASK"><Location x="1" y="2"/><StandardPrimitiveRef id="C"/></LayerPad>
   </PadStack>
   <Profile><Polygon><PolyBegin x="0" y="0"/><PolyStepSegment x="3" y="0"/><PolyStepSegment x="3" y="3"/>
    <PolyStepSegment x="0" y="3"/></Polygon></Profile>
   <Package name="BOX" type="CHIP" pinOne="1" pinOneOrientation="LOWER_LEFT" height="0.05"><Outline><Polygon>
    <PolyBegin x="0" y="0"/><PolyStepSegment x="0.1" y="0"/><PolyStepSegment x="0.1" y="0.1"/></Polygon></Outline></Package>
   <Component refDes="C1" packageRef="BOX" layerRef="COMP" mountType="SMT" part="0.1u"><Location x="1" y="1"/></Component>
   <LayerFeature layerRef="COMP"><Set net="GND" polarity="POSITIVE">
    <Pad><Location x="2" y="2"/><StandardPrimitiveRef id="C"/></Pad></Set></LayerFeature>
  </Step></CadData></Ecad></IPC-2581>)";

TEST(IpcRevisionA, StacksStandWhereTheyAreDrilledAndDrawn) {
    const Read read = IpcSupport::read(revisionA);
    ASSERT_EQ(read.layout.vias.size(), 1u);
    EXPECT_NEAR(read.layout.vias[0].x, 25.4e-3, 1e-12);
    EXPECT_EQ(read.layout.vias[0].fromLayer, "COMP");
    EXPECT_EQ(read.layout.vias[0].toLayer, "SOLD");
    EXPECT_NEAR(read.model(read.layout.vias[0]).shape.radius, 0.508e-3, 1e-12);
    EXPECT_EQ(read.elements("COMP").size(), 2u);
    ASSERT_EQ(read.elements("SOLD").size(), 1u);
    EXPECT_EQ(read.elements("SOLD")[0].netName, "GND");
}

TEST(IpcRevisionA, LayersAndPartsAreRead) {
    const Read read = IpcSupport::read(revisionA);
    EXPECT_EQ(read.layout.layers.size(), 3u);
    EXPECT_NEAR(read.layout.layers[0].zHigh, 0.062 * 0.0254, 1e-12);
    EXPECT_EQ(read.layer("SOLD").layerType, layerData::Conductor);
    ASSERT_EQ(read.layout.components.size(), 1u);
    EXPECT_EQ(read.model(read.layout.components[0]).partNumber, "0.1u");
    EXPECT_EQ(read.log.text(), "Warning: features on layers of function SOLDER_MASK are not read\n");
}

// Revision B has stacks by name.
TEST(IpcRevisionB, StacksAreReferredTo) {
    Text text;
    text.revision = "B1";
    text.layers +=
        R"(<Layer name="DRILL" layerFunction="DRILL" side="ALL"><Span fromLayer="TOP" toLayer="BOTTOM"/></Layer>)";
    text.step =
        R"(<PadStackDef name="V"><PadstackHoleDef name="h" diameter="0.3" platingStatus="VIA" plusTol="0"
        minusTol="0" x="0" y="0"/><PadstackPadDef layerRef="TOP" padUse="REGULAR"><Location x="0" y="0"/>
        <Circle diameter="0.6"/></PadstackPadDef></PadStackDef>
        <LayerFeature layerRef="TOP"><Set net="N"><Pad padstackDefRef="V"><Location x="1" y="1"/></Pad></Set></LayerFeature>
        <LayerFeature layerRef="DRILL"><Set net="N" geometry="V"><Hole name="h1" diameter="0.3" platingStatus="VIA"
        plusTol="0" minusTol="0" x="1" y="1"/></Set></LayerFeature>)";
    const Read read = IpcSupport::read(text);
    EXPECT_EQ(read.layout.vias.size(), 1u);
    EXPECT_EQ(read.elements("TOP").size(), 1u);
    EXPECT_EQ(read.log.text(), "");
}

class IpcExample : public testing::Test {
protected:
    static Read readExample() {
        std::ifstream stream(std::string(EDA_EXAMPLES) + "/ipc2581/dimmer.xml", std::ios::binary);
        return read(std::string(std::istreambuf_iterator<char>(stream), {}));
    }
};

TEST_F(IpcExample, HasOneThingThatIsPassedOver) {
    EXPECT_EQ(readExample().log.text(), "Warning: features on layers of function SILKSCREEN are not read\n");
}

TEST_F(IpcExample, HasItsStackUp) {
    const Read read = readExample();
    ASSERT_EQ(read.layout.layers.size(), 9u);
    EXPECT_NEAR(read.layout.layers[0].zHigh, 1.6e-3, 1e-12);
    EXPECT_EQ(read.layout.layers[1].name, "TOP");
    EXPECT_EQ(read.layer("TOP").conductorMaterial, "Copper");
    EXPECT_EQ(read.layer("CORE").dielectricMaterial, "FR4");
}

TEST_F(IpcExample, HasItsEdgeAndCutOuts) {
    const Read read = readExample();
    const auto &rings = read.layout.outlines.at(0).elements;
    ASSERT_EQ(rings.size(), 3u);
    // The corner and the cut-out are cut into chords with their ends on the arc.
    const double chordal = 9.0 * 4 * std::sin(10 * 3.14159265358979 / 180) / 2; // a circle of radius 1
    EXPECT_NEAR(areaOf(rings[0].points) * 1e6, 60 * 40 - 25 + 25 * chordal / 4, 1e-6);
    EXPECT_NEAR(areaOf(rings[1].points) * 1e6, 4 * chordal, 1e-6);
    EXPECT_NEAR(areaOf(rings[2].points) * 1e6, 16, 1e-9);
}

TEST_F(IpcExample, HasItsHoles) {
    const Read read = readExample();
    ASSERT_EQ(read.layout.vias.size(), 5u);
    EXPECT_EQ(read.layout.viaModels.size(), 5u);
    const auto via = [&](const std::string &name) {
        for (const viaData &one : read.layout.vias)
            if (one.name == name) return one;
        return viaData();
    };
    EXPECT_NEAR(read.model(via("H1")).platingThickness, 30e-6, 1e-12);
    EXPECT_NEAR(read.model(via("H2")).shape.radius, 0.15e-3, 1e-12);
    EXPECT_EQ(read.model(via("H2")).fillMaterial, "Epoxy");
    EXPECT_EQ(read.model(via("H3")).platingThickness, 0);
    EXPECT_EQ(via("H4").toLayer, "GROUND");
    EXPECT_EQ(read.model(via("S1")).shape.kind, geomElem::Polygon);
}

TEST_F(IpcExample, HasItsPlanes) {
    const Read read = readExample();
    EXPECT_NEAR(areaOf(read.elements("POWER")),
                areaOf(read.layout.outlines[0].elements[0].points) * 1e6 -
                    areaOf(read.layout.outlines[0].elements[1].points) * 1e6 - 16 -
                    2 * 36 * 0.64 * std::sin(10 * 3.14159265358979 / 180) / 2,
                1e-3);
    EXPECT_EQ(read.elements("GROUND").size(), 3u); // the plane, its opening, and a pad
}

TEST_F(IpcExample, HasItsParts) {
    const Read read = readExample();
    ASSERT_EQ(read.layout.components.size(), 4u);
    EXPECT_EQ(read.layout.componentModels.size(), 3u);
    EXPECT_EQ(read.layout.components[1].startLayerName, "BOTTOM");
    EXPECT_NEAR(read.layout.components[1].rotation, 270, 1e-9);
    EXPECT_EQ(read.model(read.layout.components[3]).partNumber, "22K");
}

TEST_F(IpcExample, HasShapesOfEveryKindOnItsTop) {
    const Read read = readExample();
    for (const char *net : {"LAMP", "GND", ""})
        EXPECT_TRUE(std::any_of(read.elements("TOP").begin(), read.elements("TOP").end(),
                                [&](const geomElem &element) { return element.netName == net; }))
            << net;
    EXPECT_GT(read.elements("TOP").size(), 30u);
}

} // namespace
