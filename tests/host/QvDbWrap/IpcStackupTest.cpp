// Layers, stack-ups and materials of IPC-2581 documents.
#include "IpcDocumentSupport.h"

namespace {

using namespace IpcSupport;
using testing::ElementsAre;

std::vector<std::string> namesOf(const Layout &layout) {
    std::vector<std::string> names;
    for (const layerData &layer : layout.layers)
        names.push_back(layer.name);
    return names;
}

double heightOf(const Layout &layout) {
    double height = 0;
    for (const layerData &layer : layout.layers)
        height += layer.zHigh - layer.zLow;
    return height;
}

std::string stackupOf(const std::string &name, const std::string &layers) {
    return "<Stackup name=\"" + name + "\"><StackupGroup name=\"G\">" + layers + "</StackupGroup></Stackup>";
}

std::string entry(const std::string &layer, const std::string &thickness, int sequence = 0) {
    return "<StackupLayer layerOrGroupRef=\"" + layer + "\" thickness=\"" + thickness + '"' +
           (sequence > 0 ? " sequence=\"" + std::to_string(sequence) + '"' : "") + "/>";
}

TEST(IpcStackup, LayersLieOnEachOtherFromTheBottomFaceUp) {
    const Read read = IpcSupport::read(Text());
    const auto &layers = read.layout.layers;
    ASSERT_THAT(namesOf(read.layout), ElementsAre("TOP", "CORE", "BOTTOM"));
    EXPECT_EQ(layers[2].zLow, 0);
    EXPECT_EQ(layers[2].zHigh, layers[1].zLow);
    EXPECT_EQ(layers[1].zHigh, layers[0].zLow);
    EXPECT_NEAR(layers[0].zHigh, 1.6e-3, 1e-15);
    EXPECT_EQ(layers[0].layerType, layerData::Conductor);
    EXPECT_EQ(layers[1].layerType, layerData::Dielectric);
}

TEST(IpcStackup, TheSequenceCountsBeforeTheOrderOfTheDocument) {
    Text text;
    text.stackup =
        stackupOf("S", entry("BOTTOM", "0.035", 30) + entry("TOP", "0.035", 1) + entry("CORE", "1", 2));
    EXPECT_THAT(namesOf(read(text).layout), ElementsAre("TOP", "CORE", "BOTTOM"));
}

TEST(IpcStackup, WithoutASequenceOfEachTheOrderOfTheDocumentCounts) {
    Text text;
    text.stackup =
        stackupOf("S", entry("TOP", "0.035", 3) + entry("CORE", "1") + entry("BOTTOM", "0.035", 1));
    EXPECT_THAT(namesOf(read(text).layout), ElementsAre("TOP", "CORE", "BOTTOM"));
}

TEST(IpcStackup, OneThatStartsAtTheBottomIsTurnedOver) {
    Text text;
    text.stackup = stackupOf("S", entry("BOTTOM", "0.035") + entry("CORE", "1") + entry("TOP", "0.035"));
    const Read read = IpcSupport::read(text);
    EXPECT_THAT(namesOf(read.layout), ElementsAre("TOP", "CORE", "BOTTOM"));
    EXPECT_EQ(read.log.text(), "Warning: the stack-up goes from the bottom up and is turned over\n");
}

TEST(IpcStackup, AGroupStandsWhereAnotherOneRefersToIt) {
    Text text;
    text.stackup =
        R"(<Stackup name="S"><StackupGroup name="INNER"><StackupLayer layerOrGroupRef="CORE" thickness="1"/>
        </StackupGroup><StackupGroup name="OUTER"><StackupLayer layerOrGroupRef="TOP" thickness="0.035"/>
        <StackupLayer layerOrGroupRef="INNER"/><StackupLayer layerOrGroupRef="BOTTOM" thickness="0.035"/>
        </StackupGroup></Stackup>)";
    EXPECT_THAT(namesOf(read(text).layout), ElementsAre("TOP", "CORE", "BOTTOM"));
}

TEST(IpcStackup, GroupsThatReferToEachOtherEnd) {
    Text text;
    text.stackup =
        R"(<Stackup name="S"><StackupGroup name="A"><StackupLayer layerOrGroupRef="B"/></StackupGroup>
        <StackupGroup name="B"><StackupLayer layerOrGroupRef="A"/></StackupGroup></Stackup>)";
    EXPECT_EQ(read(text).layout.layers.size(), 3u); // none of it can be used: the layers themselves are
}

TEST(IpcStackup, ALayerThatIsNotDeclaredIsADielectric) {
    Text text;
    text.layers = R"(<Layer name="TOP" layerFunction="SIGNAL" side="TOP"/>
        <Layer name="BOTTOM" layerFunction="SIGNAL" side="BOTTOM"/>)";
    const Read read = IpcSupport::read(text);
    EXPECT_EQ(read.layer("CORE").layerType, layerData::Dielectric);
    EXPECT_EQ(read.log.text(),
              "Warning: layer CORE of the stack-up is not declared and taken as a dielectric\n");
}

TEST(IpcStackup, AMaskCountsInTheHeightAloneWhereTheStackUpGivesItOne) {
    Text text;
    text.layers += R"(<Layer name="MASK" layerFunction="SOLDERMASK" side="TOP"/>
        <Layer name="THIN" layerFunction="SOLDERMASK" side="BOTTOM"/>)";
    text.stackup = stackupOf("S", entry("MASK", "0.02") + entry("TOP", "0.035") + entry("CORE", "1") +
                                      entry("BOTTOM", "0.035") + entry("THIN", "0"));
    const Read read = IpcSupport::read(text);
    EXPECT_THAT(namesOf(read.layout), ElementsAre("MASK", "TOP", "CORE", "BOTTOM"));
    EXPECT_GT(read.layer("MASK").layerType, layerData::Dielectric);
    EXPECT_NEAR(heightOf(read.layout), 1.09e-3, 1e-12);
    EXPECT_EQ(read.log.text(), "Warning: layer THIN of the stack-up has no height and is left out\n");
}

TEST(IpcStackup, SolderPasteThatCountsIsTold) {
    Text text;
    text.layers += R"(<Layer name="PASTE" layerFunction="SOLDERPASTE" side="TOP"/>)";
    text.stackup = stackupOf("S", entry("PASTE", "0.1") + entry("TOP", "0.035") + entry("CORE", "1"));
    const Read read = IpcSupport::read(text);
    EXPECT_EQ(read.log.count("solder paste counts in the height of the board, as the stack-up gives it"), 1u);
}

TEST(IpcStackup, FunctionsSayWhatALayerIs) {
    for (const char *function :
         {"CONDUCTOR", "SIGNAL", "PLANE", "MIXED", "CONDFILM", "CONDFOIL", "POWER_GROUND", "signal"}) {
        Text text;
        text.layers = std::string(R"(<Layer name="TOP" side="TOP" layerFunction=")") + function + R"("/>
            <Layer name="CORE" layerFunction="DIELCORE"/><Layer name="BOTTOM" layerFunction="PLANE"/>)";
        EXPECT_EQ(read(text).layer("TOP").layerType, layerData::Conductor) << function;
    }
    for (const char *function :
         {"DIELBASE", "DIELCORE", "DIELPREG", "DIELADHV", "DIELBONDPLY", "DIELCOVERLAY"}) {
        Text text;
        text.layers.replace(text.layers.find("DIELCORE"), 8, function);
        EXPECT_EQ(read(text).layer("CORE").layerType, layerData::Dielectric) << function;
    }
}

TEST(IpcStackup, OfSeveralTheOneWithTheMostConductorsIsTheBoards) {
    Text text;
    text.stackup = stackupOf("FLEX", entry("TOP", "0.02") + entry("CORE", "0.1")) + text.stackup +
                   stackupOf("LAST", entry("TOP", "0.9") + entry("BOTTOM", "0.9"));
    const Read read = IpcSupport::read(text);
    EXPECT_NEAR(heightOf(read.layout), 1.6e-3, 1e-12);
    EXPECT_EQ(read.log.text(), "Warning: stack-up FLEX is not read: the whole board gets S\n"
                               "Warning: stack-up LAST is not read: the whole board gets S\n");
}

TEST(IpcStackup, MaterialsComeFromSpecs) {
    Text text;
    text.specs = R"(<Spec name="FOIL"><General type="MATERIAL"><Property text="Copper"/></General>
        <General type="OTHER" comment="LAYER_TYPE"><Property text="CONDUCTOR"/></General></Spec>
        <Spec name="RESIN"><Dielectric type="DIELECTRIC_CONSTANT"><Property value="4.5"/></Dielectric>
        <General type="MATERIAL"><Property text="FR-4"/></General></Spec>)";
    text.layers = R"(<Layer name="TOP" layerFunction="SIGNAL"><SpecRef id="FOIL"/></Layer>
        <Layer name="CORE" layerFunction="DIELCORE"/><Layer name="BOTTOM" layerFunction="SIGNAL"/>)";
    text.stackup =
        stackupOf("S", entry("TOP", "0.035") +
                           R"(<StackupLayer layerOrGroupRef="CORE" thickness="1"><SpecRef id="RESIN"/>
                                         </StackupLayer>)" +
                           entry("BOTTOM", "0.035"));
    const Read read = IpcSupport::read(text);
    EXPECT_EQ(read.layer("TOP").conductorMaterial, "Copper");
    EXPECT_EQ(read.layer("CORE").dielectricMaterial, "FR-4");
    EXPECT_EQ(read.layer("BOTTOM").conductorMaterial, "");
    EXPECT_EQ(read.log.text(), "");
}

TEST(IpcStackup, AMissingSpecIsTold) {
    Text text;
    text.layers.replace(text.layers.find("side=\"TOP\"/>"), 12, "><SpecRef id=\"GONE\"/></Layer>");
    EXPECT_EQ(read(text).log.count("spec GONE is missing"), 1u);
}

TEST(IpcStackup, WithoutOneHeightsAreTakenForGranted) {
    Text text;
    text.stackup = "";
    text.layers = R"(<Layer name="BOTTOM" layerFunction="SIGNAL" side="BOTTOM"/>
        <Layer name="INNER" layerFunction="PLANE" side="INTERNAL"/>
        <Layer name="TOP" layerFunction="SIGNAL" side="TOP"/>)";
    const Read read = IpcSupport::read(text);
    EXPECT_THAT(namesOf(read.layout), ElementsAre("TOP", "Dielectric 1", "INNER", "Dielectric 2", "BOTTOM"));
    EXPECT_NEAR(heightOf(read.layout), 1.6e-3, 1e-12);
    EXPECT_NEAR(read.layer("INNER").zHigh - read.layer("INNER").zLow, 35e-6, 1e-12);
    EXPECT_NEAR(read.layer("Dielectric 2").zHigh - read.layer("Dielectric 2").zLow, 0.7475e-3, 1e-12);
    EXPECT_EQ(
        read.log.count("no stack-up gives heights: conductors are taken to be 0.035 mm high, and the board "
                       "1.6 mm"),
        1u);
}

TEST(IpcStackup, WithoutHeightsDeclaredDielectricsShareTheRest) {
    Text text;
    text.stackup = stackupOf("S", entry("TOP", "0") + entry("CORE", "0") + entry("BOTTOM", "0"));
    const Read read = IpcSupport::read(text);
    EXPECT_THAT(namesOf(read.layout), ElementsAre("TOP", "CORE", "BOTTOM"));
    EXPECT_NEAR(read.layer("CORE").zHigh - read.layer("CORE").zLow, 1.53e-3, 1e-12);
}

TEST(IpcStackup, ABoardWithoutConductorsHasItsUsualHeight) {
    Text text;
    text.stackup = text.layers = "";
    const Read read = IpcSupport::read(text);
    ASSERT_THAT(namesOf(read.layout), ElementsAre("Spacer 2", "Spacer 1", "Dielectric 1"));
    EXPECT_EQ(read.layout.layers[2].layerType, layerData::Dielectric);
    EXPECT_NEAR(heightOf(read.layout), 1.6e-3, 1e-12);
}

TEST(IpcStackup, ManyConductorsLeaveEachDielectricAHeight) {
    Text text;
    text.stackup = text.layers = "";
    for (int i = 0; i < 60; ++i)
        text.layers += "<Layer name=\"L" + std::to_string(i) + "\" layerFunction=\"SIGNAL\"/>";
    const Read read = IpcSupport::read(text);
    EXPECT_EQ(read.layout.layers.size(), 119u);
    for (const layerData &layer : read.layout.layers)
        EXPECT_GT(layer.zHigh, layer.zLow) << layer.name;
}

TEST(IpcStackup, AConductorWithoutAHeightGetsTheUsualOne) {
    Text text;
    text.stackup = stackupOf("S", entry("TOP", "0") + entry("CORE", "1") + entry("BOTTOM", "0.07"));
    const Read read = IpcSupport::read(text);
    EXPECT_NEAR(heightOf(read.layout), 1.105e-3, 1e-12);
    EXPECT_EQ(read.log.count("conductor TOP has no height in the stack-up: 0.035 mm are taken"), 1u);
}

TEST(IpcStackup, AConductorThatIsNotInItIsLeftOutAndTold) {
    Text text;
    text.layers += R"(<Layer name="EXTRA" layerFunction="SIGNAL"/>)";
    text.step = "<LayerFeature layerRef=\"EXTRA\"><Set>" + square(1, 1, 1) + "</Set></LayerFeature>";
    const Read read = IpcSupport::read(text);
    EXPECT_THAT(namesOf(read.layout), ElementsAre("TOP", "CORE", "BOTTOM"));
    EXPECT_EQ(read.log.text(), "Warning: conductor EXTRA is not in the stack-up and is left out\n");
}

TEST(IpcStackup, NamesOfLayersStayUnique) {
    Text text;
    text.layers += R"(<Layer name="TOP" layerFunction="DIELCORE"/>)";
    text.stackup = stackupOf("S", entry("TOP", "0.035") + entry("CORE", "1") + entry("TOP", "0.035") +
                                      entry("BOTTOM", "0.035"));
    const Read read = IpcSupport::read(text);
    EXPECT_THAT(namesOf(read.layout), ElementsAre("TOP", "CORE", "BOTTOM"));
    EXPECT_EQ(read.log.text(), "Warning: layer TOP is there more than once\n"
                               "Warning: layer TOP is in the stack-up more than once\n");
}

TEST(IpcStackup, HeightsThatNoBoardHasCountAsNone) {
    Text text;
    text.stackup = stackupOf("S", entry("TOP", "1e300") + entry("CORE", "-5") + entry("BOTTOM", "nan"));
    EXPECT_NEAR(heightOf(read(text).layout), 1.6e-3, 1e-12);
}

// The side of a component can't be told on fewer.
TEST(IpcStackup, ThereAreThreeLayersAtLeast) {
    Text text;
    text.layers += R"(<Layer name="Spacer 1" layerFunction="SILKSCREEN"/>)";
    text.stackup = stackupOf("S", entry("TOP", "0.035") + entry("CORE", "1"));
    const Read read = IpcSupport::read(text);
    ASSERT_THAT(namesOf(read.layout), ElementsAre("Spacer 2", "TOP", "CORE"));
    const layerData &spacer = read.layout.layers[0];
    EXPECT_GT(spacer.layerType, layerData::Dielectric);
    EXPECT_EQ(spacer.zLow, spacer.zHigh);
    EXPECT_EQ(spacer.zLow, read.layout.layers[1].zHigh);
    EXPECT_NEAR(heightOf(read.layout), 1.035e-3, 1e-12);
}

TEST(IpcStackup, DielectricsWithoutAHeightShareWhatIsLeftOfTheBoard) {
    Text text;
    text.layers += R"(<Layer name="MORE" layerFunction="DIELPREG"/>)";
    const std::string layers =
        entry("TOP", "0.035") + entry("CORE", "0") + entry("MORE", "") + entry("BOTTOM", "0.035");
    text.stackup = stackupOf("S", layers);
    EXPECT_NEAR(heightOf(read(text).layout), 1.6e-3, 1e-12);
    text.stackup.replace(text.stackup.find("name="), 5, "overallThickness=\"1.07\" name=");
    const Read read = IpcSupport::read(text);
    EXPECT_NEAR(heightOf(read.layout), 1.07e-3, 1e-12);
    EXPECT_NEAR(read.layer("CORE").zHigh - read.layer("CORE").zLow, 0.5e-3, 1e-12);
    EXPECT_EQ(read.log.text(),
              "Warning: layer CORE of the stack-up has no height and gets its share of the board's\n"
              "Warning: layer MORE of the stack-up has no height and gets its share of the board's\n");
}

TEST(IpcStackup, AnotherDielectricWithoutAHeightIsLeftOutWhereNothingIsLeft) {
    Text text;
    text.layers += R"(<Layer name="GLUE" layerFunction="DIELADHV"/>)";
    text.stackup = stackupOf("S", entry("TOP", "0.035") + entry("CORE", "1.53") + entry("GLUE", "0") +
                                      entry("BOTTOM", "0.035"));
    const Read read = IpcSupport::read(text);
    EXPECT_THAT(namesOf(read.layout), ElementsAre("TOP", "CORE", "BOTTOM"));
    EXPECT_EQ(read.log.text(), "Warning: layer GLUE of the stack-up has no height and is left out\n");
}

TEST(IpcStackup, TheOnlyDielectricHasAHeightWhateverTheBoardSays) {
    Text text;
    text.stackup = stackupOf("S", entry("TOP", "0.035") + entry("CORE", "0") + entry("BOTTOM", "0.035"));
    text.stackup.replace(text.stackup.find("name="), 5, "overallThickness=\"0.01\" name=");
    EXPECT_NEAR(heightOf(read(text).layout), 0.12e-3, 1e-12);
}

} // namespace
