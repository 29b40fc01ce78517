// Packages and components of IPC-2581 documents.
#include "IpcDocumentSupport.h"

namespace {

using namespace IpcSupport;

std::string polygon(double x) {
    const std::string high = std::to_string(x);
    return "<Polygon><PolyBegin x=\"0\" y=\"0\"/><PolyStepSegment x=\"" + high +
           "\" y=\"0\"/><PolyStepSegment x=\"" + high + "\" y=\"2\"/></Polygon>";
}

std::string package(const std::string &name, const std::string &content, const std::string &height = "1.5") {
    return "<Package name=\"" + name + "\" height=\"" + height + "\">" + content + "</Package>";
}

const std::string plain = package("P", "<Outline>" + polygon(4) + "<LineDescRef id=\"L\"/></Outline>");

std::string component(const std::string &attributes, const std::string &content) {
    return "<Component refDes=\"U1\" packageRef=\"P\" " + attributes + '>' + content + "</Component>";
}

const std::string onTop = R"(layerRef="TOP")";
const std::string onBottom = R"(layerRef="BOTTOM")";
const std::string place = R"(<Location x="10" y="20"/>)";

TEST(IpcParts, APackageIsAModelAndAComponentPlacesIt) {
    const Read read = readStep(plain + component(onTop, R"(<Xform rotation="30"/>)" + place));
    ASSERT_EQ(read.layout.componentModels.size(), 1u);
    const componentModelData &model = read.layout.componentModels[0];
    EXPECT_EQ(model.name, "P");
    EXPECT_NEAR(model.height, 1.5e-3, 1e-12);
    EXPECT_FALSE(model.isMoldEnabled);
    expectRing(model.shape.points, {{0, 0}, {4, 0}, {4, 2}});
    ASSERT_EQ(read.layout.components.size(), 1u);
    const componentData &data = read.layout.components[0];
    EXPECT_EQ(data.compName, "U1");
    EXPECT_EQ(data.modelName, "P");
    EXPECT_EQ(data.startLayerName, "TOP");
    EXPECT_NEAR(data.coord.x, 10e-3, 1e-12);
    EXPECT_NEAR(data.coord.y, 20e-3, 1e-12);
    EXPECT_NEAR(data.rotation, 30, 1e-9);
    EXPECT_TRUE(data.bumps.empty());
    EXPECT_EQ(read.log.text(), "");
}

TEST(IpcParts, APackageMayComeAfterItsComponents) {
    const Read read = readStep(component(onTop, place) + plain);
    EXPECT_EQ(read.model(read.layout.components.at(0)).shape.points.size(), 3u);
}

TEST(IpcParts, AMirroredComponentOnTheBottomTurnsTheOtherWay) {
    const Read read =
        readStep(plain + component(onBottom, R"(<Xform rotation="30" mirror="true"/>)" + place));
    EXPECT_EQ(read.layout.components.at(0).startLayerName, "BOTTOM");
    EXPECT_NEAR(read.layout.components.at(0).rotation, 330, 1e-9);
    EXPECT_EQ(read.log.text(), "");
}

TEST(IpcParts, AComponentOnTheBottomIsFlippedWhetherItSaysSoOrNot) {
    const Read read = readStep(plain + component(onBottom, R"(<Xform rotation="30"/>)" + place));
    EXPECT_NEAR(read.layout.components.at(0).rotation, 330, 1e-9);
    EXPECT_EQ(read.log.text(), "Warning: a component on the bottom is not mirrored: it is taken as such\n");
}

TEST(IpcParts, AMirrorOnTheTopIsLeftOutAndTold) {
    const Read read = readStep(plain + component(onTop, R"(<Xform rotation="30" mirror="true"/>)" + place));
    EXPECT_EQ(read.layout.components.at(0).startLayerName, "TOP");
    EXPECT_NEAR(read.layout.components.at(0).rotation, 30, 1e-9);
    EXPECT_EQ(read.log.text(), "Warning: a component on the top is mirrored: that is left out\n");
}

TEST(IpcParts, OffsetsOfTheXformAreFlippedToo) {
    const Read read =
        readStep(plain + component(onBottom, R"(<Xform xOffset="1" rotation="90" mirror="true"/>)" + place) +
                 component(onBottom, R"(<Xform xOffset="1" mirror="true"/>)" + place));
    EXPECT_NEAR(read.layout.components.at(0).coord.x, 10e-3, 1e-12);
    EXPECT_NEAR(read.layout.components.at(0).coord.y, 21e-3, 1e-12);
    EXPECT_NEAR(read.layout.components.at(1).coord.x, 9e-3, 1e-12);
}

TEST(IpcParts, ALayerOfTheBottomSideIsTheBottom) {
    Text text;
    text.layers += R"(<Layer name="PARTS" layerFunction="COMPONENT_BOTTOM" side="BOTTOM"/>)";
    text.step = plain + component(R"(layerRef="PARTS")", R"(<Xform mirror="true"/>)" + place);
    const Read read = IpcSupport::read(text);
    EXPECT_EQ(read.layout.components.at(0).startLayerName, "BOTTOM");
}

TEST(IpcParts, OnALayerInsideTheMirrorTellsTheSide) {
    for (const bool isMirrored : {false, true}) {
        const Read read = readStep(
            plain + component(R"(layerRef="CORE")", (isMirrored ? R"(<Xform mirror="true"/>)" : "") + place));
        EXPECT_EQ(read.layout.components.at(0).startLayerName, isMirrored ? "BOTTOM" : "TOP");
    }
}

// A component counts as on the bottom where the index of its layer is above half the number of layers.
TEST(IpcParts, TheStartLayerTellsTheSideOnAnyStackUp) {
    Text text;
    text.layers =
        R"(<Layer name="TOP" layerFunction="SIGNAL" side="TOP"/><Layer name="M" layerFunction="DIELCORE"/>
        <Layer name="N" layerFunction="DIELCORE"/>)";
    text.stackup =
        R"(<Stackup name="S"><StackupGroup name="G"><StackupLayer layerOrGroupRef="TOP" thickness="1"/>
        <StackupLayer layerOrGroupRef="M" thickness="1"/><StackupLayer layerOrGroupRef="N" thickness="1"/>
        </StackupGroup></Stackup>)";
    text.step = plain + component(R"(layerRef="X")", R"(<Xform mirror="true"/>)" + place) +
                component(R"(layerRef="X")", place);
    const Read read = IpcSupport::read(text);
    EXPECT_EQ(read.layout.components.at(0).startLayerName, "N");
    EXPECT_EQ(read.layout.components.at(1).startLayerName, "TOP");
    EXPECT_EQ(read.log.count("layer X of a component is missing"), 2u);
}

TEST(IpcParts, EachPartOfAPackageIsAModel) {
    const Read read =
        readStep(plain + component(onTop + R"( part="1K")", place) +
                 component(onTop + R"( part="2K")", place) + component(onTop + R"( part="1K")", place));
    ASSERT_EQ(read.layout.componentModels.size(), 2u);
    EXPECT_EQ(read.layout.componentModels[0].name, "P 1K");
    EXPECT_EQ(read.layout.componentModels[0].partNumber, "1K");
    EXPECT_EQ(read.layout.components.at(1).modelName, "P 2K");
    EXPECT_EQ(read.layout.components.at(2).modelName, "P 1K");
}

TEST(IpcParts, TheOnlyPartOfAPackageBearsItsName) {
    const Read read = readStep(plain + component(onTop + R"( part="1K")", place));
    EXPECT_EQ(read.layout.componentModels.at(0).name, "P");
    EXPECT_EQ(read.layout.componentModels.at(0).partNumber, "1K");
}

TEST(IpcParts, TheHeightOfAComponentCountsBeforeThatOfThePackage) {
    const Read read = readStep(plain + component(onTop + R"( height="3")", place) + component(onTop, place));
    ASSERT_EQ(read.layout.componentModels.size(), 2u);
    EXPECT_NEAR(read.model(read.layout.components.at(0)).height, 3e-3, 1e-12);
    EXPECT_NEAR(read.model(read.layout.components.at(1)).height, 1.5e-3, 1e-12);
    EXPECT_NE(read.layout.componentModels[0].name, read.layout.componentModels[1].name);
}

TEST(IpcParts, NamesOfModelsStayUnique) {
    const Read read =
        readStep(plain + package("P 1K", "<Outline>" + polygon(1) + "</Outline>") +
                 component(onTop + R"( part="1K")", place) + component(onTop + R"( part="2K")", place));
    ASSERT_EQ(read.layout.componentModels.size(), 3u);
    EXPECT_EQ(read.layout.componentModels[2].name, "P 1K (2)");
}

TEST(IpcParts, APackageThatNothingUsesIsAModelToo) {
    const Read read = readStep(plain);
    ASSERT_EQ(read.layout.componentModels.size(), 1u);
    EXPECT_EQ(read.layout.componentModels[0].name, "P");
}

TEST(IpcParts, AMissingPackageIsToldAndItsComponentStays) {
    const Read read = readStep(component(onTop, place));
    EXPECT_EQ(read.log.text(), "Warning: package P of a component is missing\n");
    EXPECT_EQ(read.layout.components.size(), 1u);
    EXPECT_TRUE(read.model(read.layout.components[0]).shape.points.empty());
}

TEST(IpcParts, OfTwoPackagesWithOneNameTheFirstCounts) {
    const Read read =
        readStep(plain + package("P", "<Outline>" + polygon(9) + "</Outline>") + component(onTop, place));
    EXPECT_EQ(read.layout.componentModels.size(), 1u);
    expectRing(read.layout.componentModels[0].shape.points, {{0, 0}, {4, 0}, {4, 2}});
    EXPECT_EQ(read.log.text(), "Warning: package P is there more than once\n");
}

TEST(IpcParts, WithoutAnOutlineTheAssemblyDrawingIsTheBody) {
    const Read polygonal =
        readStep(package("P", "<AssemblyDrawing><Outline>" + polygon(5) + "</Outline></AssemblyDrawing>"));
    expectRing(polygonal.layout.componentModels.at(0).shape.points, {{0, 0}, {5, 0}, {5, 2}});
    const Read drawn = readStep(package("P", R"(<AssemblyDrawing><Marking><Location x="1" y="0"/>
        <RectCenter width="4" height="2"/></Marking></AssemblyDrawing>)"));
    expectRing(drawn.layout.componentModels.at(0).shape.points, {{-1, -1}, {3, -1}, {3, 1}, {-1, 1}});
}

TEST(IpcParts, TheCourtyardTakesThePlaceOfTheBodyWhereItIsAskedFor) {
    Text text;
    text.step =
        package("P", "<Outline>" + polygon(4) + "</Outline><Courtyard>" + polygon(6) + "</Courtyard>") +
        package("Q", "<Outline>" + polygon(3) + "</Outline>");
    IpcSettings settings;
    EXPECT_NEAR(read(text, settings).layout.componentModels.at(0).shape.points.at(1).x, 4e-3, 1e-12);
    settings.useCourtyards = true;
    EXPECT_NEAR(read(text, settings).layout.componentModels.at(0).shape.points.at(1).x, 6e-3, 1e-12);
    EXPECT_NEAR(read(text, settings).layout.componentModels.at(1).shape.points.at(1).x, 3e-3, 1e-12);
}

TEST(IpcParts, APackageWithoutABodyIsTold) {
    const Read read = readStep(package("P", "") + component(onTop, place));
    EXPECT_EQ(read.log.text(), "Warning: package P has no outline\n");
}

TEST(IpcParts, AComponentWithoutALocationIsTold) {
    const Read read = readStep(plain + component(onTop, ""));
    EXPECT_EQ(read.layout.components.at(0).coord.x, 0);
    EXPECT_EQ(read.log.text(), "Warning: a component has no location: it is put at 0, 0\n");
}

TEST(IpcParts, APlaceMayBePartOfTheXform) {
    const Read read = readStep(plain + component(onTop, R"(<Xform x="10" y="20" rotation="90"/>)"));
    EXPECT_NEAR(read.layout.components.at(0).coord.x, 10e-3, 1e-12);
    EXPECT_NEAR(read.layout.components.at(0).rotation, 90, 1e-9);
    EXPECT_EQ(read.log.text(), "");
}

TEST(IpcParts, RotationsAreBroughtToOneTurn) {
    const Read read = readStep(plain + component(onTop, R"(<Xform rotation="-90"/>)" + place) +
                               component(onTop, R"(<Xform rotation="1e300"/>)" + place));
    EXPECT_NEAR(read.layout.components.at(0).rotation, 270, 1e-9);
    EXPECT_GE(read.layout.components.at(1).rotation, 0);
    EXPECT_LT(read.layout.components.at(1).rotation, 360);
}

TEST(IpcParts, AComponentOutOfAllBoundsIsLeftOut) {
    const Read read = readStep(plain + component(onTop, R"(<Location x="1e200" y="0"/>)"));
    EXPECT_TRUE(read.layout.components.empty());
    EXPECT_EQ(read.log.text(), "Warning: a component is out of all bounds\n");
}

// A component counts as on the bottom where the index of its layer is above half the number of layers.
bool isOnBottom(const Read &read, std::size_t component) {
    const std::vector<layerData> &layers = read.layout.layers;
    for (std::size_t i = 0; i < layers.size(); ++i)
        if (layers[i].name == read.layout.components.at(component).startLayerName)
            return i > layers.size() / 2;
    throw std::logic_error("no start layer");
}

TEST(IpcParts, BothSidesOfBoardsOfOneAndTwoLayersHaveComponents) {
    const std::string top = R"(<StackupLayer layerOrGroupRef="TOP" thickness="0.035"/>)";
    const std::string core = R"(<StackupLayer layerOrGroupRef="CORE" thickness="1"/>)";
    const std::string bottom = R"(<StackupLayer layerOrGroupRef="BOTTOM" thickness="0.035"/>)";
    for (const std::string &layers :
         {core + bottom, top + core, top + bottom, top, bottom, top + core + bottom}) {
        Text text;
        text.stackup = R"(<Stackup name="S"><StackupGroup name="G">)" + layers + "</StackupGroup></Stackup>";
        text.step =
            plain + component(onTop, place) + component(onBottom, R"(<Xform mirror="true"/>)" + place);
        const Read read = IpcSupport::read(text);
        EXPECT_FALSE(isOnBottom(read, 0)) << layers;
        EXPECT_TRUE(isOnBottom(read, 1)) << layers;
    }
}

TEST(IpcParts, ManyModelsOfOneNameAreNumberedOn) {
    const Read read =
        readStep(plain + package("P (3)", "<Outline>" + polygon(1) + "</Outline>") +
                 "<Component refDes=\"Q\" packageRef=\"P (3)\" layerRef=\"TOP\">" + place + "</Component>" +
                 component(onTop, place) + component(onTop + R"( height="3")", place) +
                 component(onTop + R"( height="4")", place));
    ASSERT_EQ(read.layout.componentModels.size(), 4u);
    EXPECT_EQ(read.layout.componentModels[0].name, "P (3)");
    EXPECT_EQ(read.layout.componentModels[1].name, "P");
    EXPECT_EQ(read.layout.componentModels[2].name, "P (2)");
    EXPECT_EQ(read.layout.componentModels[3].name, "P (4)");
}

} // namespace
