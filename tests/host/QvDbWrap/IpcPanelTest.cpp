// Steps of IPC-2581 documents that repeat others.
#include "IpcDocumentSupport.h"

namespace {

using namespace IpcSupport;

const std::string board =
    R"(<Step name="b"><Profile><Polygon><PolyBegin x="0" y="0"/><PolyStepSegment x="4" y="0"/>
    <PolyStepSegment x="4" y="2"/><PolyStepSegment x="0" y="2"/></Polygon><Cutout><PolyBegin x="1" y="1"/>
    <PolyStepSegment x="2" y="1"/><PolyStepSegment x="2" y="1.5"/></Cutout></Profile>
    <Package name="P" height="1"><Outline><Polygon><PolyBegin x="0" y="0"/><PolyStepSegment x="1" y="0"/>
    <PolyStepSegment x="1" y="1"/></Polygon></Outline></Package>
    <Component refDes="U1" packageRef="P" layerRef="TOP"><Xform rotation="10"/><Location x="1" y="0"/></Component>
    <LayerFeature layerRef="TOP"><Set net="N"><Features><Location x="1" y="1"/><RectCenter width="1" height="1"/>
    </Features></Set></LayerFeature>
    <LayerFeature layerRef="DRILL"><Set><Hole diameter="0.5" x="2" y="1" platingStatus="VIA"/></Set></LayerFeature>
    </Step>)";

Read readPanel(const std::string &repeats, const std::string &steps = board,
               const std::string &profile = "") {
    Text text;
    text.layers += R"(<Layer name="DRILL" layerFunction="DRILL"/>)";
    text.profile = profile;
    text.step = repeats;
    text.otherSteps = steps;
    return read(text);
}

const std::string twoByOne = R"(<StepRepeat stepRef="b" x="10" y="20" nx="2" ny="1" dx="5" dy="3" angle="0"
    mirror="false"/>)";

TEST(IpcPanel, AStepWithoutAProfileIsMadeOfThoseThatItRepeats) {
    const Read read = readPanel(twoByOne);
    ASSERT_EQ(read.layout.components.size(), 2u);
    EXPECT_NEAR(read.layout.components[0].coord.x, 11e-3, 1e-12);
    EXPECT_NEAR(read.layout.components[1].coord.x, 16e-3, 1e-12);
    EXPECT_EQ(read.layout.components[0].compName, "U1");
    EXPECT_EQ(read.layout.components[1].compName, "U1_2");
    EXPECT_EQ(read.layout.componentModels.size(), 1u);
    EXPECT_EQ(read.layout.vias.size(), 2u);
    EXPECT_EQ(read.layout.viaModels.size(), 1u);
    ASSERT_EQ(read.elements("TOP").size(), 2u);
    expectRing(read.elements("TOP")[1].points, {{15.5, 20.5}, {16.5, 20.5}, {16.5, 21.5}, {15.5, 21.5}});
    EXPECT_EQ(read.elements("TOP")[1].netName, "N");
}

TEST(IpcPanel, TheEdgeIsTheRectangleAroundAllAndCutOutsStay) {
    const Read read = readPanel(twoByOne);
    const auto &rings = read.layout.outlines.at(0).elements;
    ASSERT_EQ(rings.size(), 3u);
    expectRing(rings[0].points, {{10, 20}, {19, 20}, {19, 22}, {10, 22}});
    EXPECT_NEAR(rings[2].points[0].x, 16e-3, 1e-12);
    EXPECT_EQ(read.log.text(),
              "Warning: the panel has no profile: its edge is the rectangle around its steps\n");
}

TEST(IpcPanel, ASingleStepKeepsItsEdge) {
    const Read read = readPanel(R"(<StepRepeat stepRef="b" x="0" y="0" nx="1" ny="1" dx="0" dy="0"/>)");
    EXPECT_EQ(read.layout.outlines.at(0).elements.size(), 2u);
    EXPECT_EQ(read.log.text(), "");
}

TEST(IpcPanel, ATurnedStepTurnsAllThatItHas) {
    const Read read = readPanel(R"(<StepRepeat stepRef="b" x="10" y="0" angle="90"/>)");
    EXPECT_NEAR(read.layout.components.at(0).rotation, 100, 1e-9);
    EXPECT_NEAR(read.layout.components[0].coord.x, 10e-3, 1e-12);
    EXPECT_NEAR(read.layout.components[0].coord.y, 1e-3, 1e-12);
    EXPECT_NEAR(read.layout.vias.at(0).x, 9e-3, 1e-12);
    EXPECT_NEAR(read.layout.vias[0].y, 2e-3, 1e-12);
}

TEST(IpcPanel, StepsMayStandBeforeTheirPanel) {
    const Text text;
    std::string document = text.text();
    document.insert(document.find("<Step name=\"board\""), board);
    document.erase(document.find("<Profile>", document.find("<Step name=\"board\"")), text.profile.size());
    document.insert(document.find(">", document.find("<Step name=\"board\"")) + 1, twoByOne);
    IpcSettings settings;
    settings.step = "board";
    EXPECT_EQ(read(document, settings).layout.components.size(), 2u);
}

TEST(IpcPanel, AStepWithAProfileRepeatsNothing) {
    const Read read = readPanel(twoByOne, board, Text().profile);
    EXPECT_TRUE(read.layout.components.empty());
    EXPECT_EQ(read.log.text(),
              "Warning: step board has a profile and repeats others, which are left out (to be "
              "read with --step): b\n");
}

TEST(IpcPanel, AMissingAndAMirroredStepAreTold) {
    const Read read = readPanel(R"(<StepRepeat stepRef="gone"/><StepRepeat stepRef="b" mirror="true"/>)");
    EXPECT_TRUE(read.layout.components.empty());
    EXPECT_EQ(read.log.count("step gone of a panel is missing"), 1u);
    EXPECT_EQ(read.log.count("a step that is mirrored on a panel is left out"), 1u);
}

TEST(IpcPanel, PanelsInPanelsEndAtADepth) {
    const Read read = readPanel(R"(<StepRepeat stepRef="board"/>)");
    EXPECT_EQ(read.log.count("panels in panels are too deep: those further in are left out"), 1u);
}

TEST(IpcPanel, AnEndlessPanelIsStopped) {
    const Read read = readPanel(R"(<StepRepeat stepRef="e" nx="2000000000" ny="2000000000" dx="1" dy="1"/>)",
                                R"(<Step name="e"/>)");
    EXPECT_EQ(read.log.count("more than 1000000 steps on a panel: the rest is left out"), 1u);
}

TEST(IpcPanel, PanelsThatDoubleAtEachDepthAreStopped) {
    const Read read = readPanel(R"(<StepRepeat stepRef="board" nx="1000" ny="1000"/>)");
    EXPECT_EQ(read.log.count("more than 1000000 steps on a panel: the rest is left out"), 1u);
}

TEST(IpcPanel, StepsThatAreLeftOutAreNamedOnceAndUpToFive) {
    std::string repeats;
    for (const char *name : {"a", "b", "b", "c", "d", "e", "f", "g"})
        repeats += std::string("<StepRepeat stepRef=\"") + name + "\"/>";
    EXPECT_THAT(readPanel(repeats, board, Text().profile).log.text(),
                testing::EndsWith("(to be read with --step): a, b, c, d, e, ...\n"));
}

TEST(IpcPanel, WhatAStepLacksIsToldOnceWhereverItStands) {
    std::string lacking = board;
    lacking.replace(lacking.find("diameter=\"0.5\""), 14, "");
    const Read read = readPanel(twoByOne, lacking);
    EXPECT_TRUE(read.layout.vias.empty());
    EXPECT_EQ(read.log.count("a hole has no diameter and is left out"), 1u);
}

} // namespace
