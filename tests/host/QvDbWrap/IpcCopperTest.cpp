// What IPC-2581 documents draw on copper: nets, places, pads, stacks and polarity.
#include "IpcDocumentSupport.h"

namespace {

using namespace IpcSupport;

const std::string stack = R"(<PadStackDef name="P"><PadstackPadDef layerRef="TOP" padUse="REGULAR">
    <Location x="0" y="0"/><RectCenter width="2" height="1"/></PadstackPadDef>
    <PadstackPadDef layerRef="TOP" padUse="ANTIPAD"><Location x="0" y="0"/><Circle diameter="9"/></PadstackPadDef>
    </PadStackDef>)";

std::string top(const std::string &sets) {
    return "<LayerFeature layerRef=\"TOP\">" + sets + "</LayerFeature>";
}

TEST(IpcCopper, ASetNamesTheNetOfWhatItDraws) {
    const Read read =
        readTop("<Set net=\"GND\">" + square(1, 1, 1) + "</Set><Set>" + square(5, 1, 1) + "</Set>");
    const auto &elements = read.elements("TOP");
    ASSERT_EQ(elements.size(), 2u);
    EXPECT_EQ(elements[0].netName, "GND");
    EXPECT_EQ(elements[1].netName, "");
    EXPECT_EQ(elements[0].kind, geomElem::Polygon);
    EXPECT_EQ(read.log.text(), "");
}

TEST(IpcCopper, AShapeStandsAtEachOfItsLocations) {
    const Read read = readTop(R"(<Set><Features><Location x="1" y="2"/><Location x="11" y="2"/>
        <RectCenter width="2" height="2"/></Features></Set>)");
    ASSERT_EQ(read.elements("TOP").size(), 2u);
    expectRing(read.elements("TOP")[1].points, {{10, 1}, {12, 1}, {12, 3}, {10, 3}});
}

TEST(IpcCopper, AnXformCountsBeforeAndAfterTheShape) {
    for (
        const char *features :
        {R"(<Features><Xform rotation="90"/><Location x="5" y="5"/><RectCenter width="4" height="2"/></Features>)",
         R"(<Features><Location x="5" y="5"/><RectCenter width="4" height="2"/><Xform rotation="90"/></Features>)"}) {
        const Read read = readTop(std::string("<Set>") + features + "</Set>");
        ASSERT_EQ(read.elements("TOP").size(), 1u);
        expectRing(read.elements("TOP")[0].points, {{6, 3}, {6, 7}, {4, 7}, {4, 3}});
    }
}

TEST(IpcCopper, ShapesStraightInASetAreDrawn) {
    const Read read = readTop(R"(<Set net="A"><Polygon><PolyBegin x="0" y="0"/><PolyStepSegment x="3" y="0"/>
        <PolyStepSegment x="3" y="3"/></Polygon></Set>)");
    ASSERT_EQ(read.elements("TOP").size(), 1u);
    EXPECT_NEAR(areaOf(read.elements("TOP")), 4.5, 1e-9);
}

TEST(IpcCopper, HolesFollowTheirSolidAndBearItsNet) {
    const Read read = readTop(R"(<Set net="A"><Features><Location x="0" y="0"/><Contour><Polygon>
        <PolyBegin x="0" y="0"/><PolyStepSegment x="9" y="0"/><PolyStepSegment x="9" y="9"/>
        <PolyStepSegment x="0" y="9"/></Polygon><Cutout><PolyBegin x="2" y="2"/><PolyStepSegment x="4" y="2"/>
        <PolyStepSegment x="4" y="4"/><PolyStepSegment x="2" y="4"/></Cutout></Contour></Features></Set>)");
    const auto &elements = read.elements("TOP");
    ASSERT_EQ(elements.size(), 2u);
    EXPECT_EQ(elements[0].role, geomElem::Solid);
    EXPECT_EQ(elements[1].role, geomElem::Hole);
    EXPECT_EQ(elements[1].netName, "A");
    EXPECT_NEAR(areaOf(elements), 81 - 4, 1e-9);
}

TEST(IpcCopper, TheOwnShapeOfAPadComesBeforeThatOfItsStack) {
    const Read read = readStep(stack + top(R"(<Set><Pad padstackDefRef="P"><Location x="5" y="5"/>
        <RectCenter width="3" height="3"/></Pad></Set>)"));
    EXPECT_NEAR(areaOf(read.elements("TOP")), 9, 1e-9);
}

TEST(IpcCopper, APadWithoutAShapeHasThatOfItsStackOnTheLayer) {
    const Read read = readStep(
        stack + top(R"(<Set net="N"><Pad padstackDefRef="P"><Xform rotation="90"/><Location x="5" y="5"/>
        </Pad></Set>)"));
    ASSERT_EQ(read.elements("TOP").size(), 1u);
    expectRing(read.elements("TOP")[0].points, {{5.5, 4}, {5.5, 6}, {4.5, 6}, {4.5, 4}});
    EXPECT_EQ(read.elements("TOP")[0].netName, "N");
}

TEST(IpcCopper, AStackMayComeAfterItsPads) {
    const Read read = readStep(top("<Set><Pad padstackDefRef=\"P\"><Location x=\"5\" y=\"5\"/></Pad>" +
                                   square(20, 20, 1) + "</Set>") +
                               stack);
    ASSERT_EQ(read.elements("TOP").size(), 2u);
    EXPECT_NEAR(areaOf(read.elements("TOP")[0].points) * 1e6, 2, 1e-9); // in the order drawn
    EXPECT_EQ(read.log.text(), "");
}

TEST(IpcCopper, PadsThatHaveNoShapeAreTold) {
    const Read read = readStep(stack + R"(<LayerFeature layerRef="BOTTOM"><Set>
        <Pad padstackDefRef="P"><Location x="5" y="5"/></Pad><Pad padstackDefRef="GONE"><Location x="5" y="5"/></Pad>
        <Pad><Location x="5" y="5"/></Pad></Set></LayerFeature>)");
    EXPECT_TRUE(read.elements("BOTTOM").empty());
    EXPECT_EQ(read.log.count("a pad has no shape of its own, and its stack none on its layer"), 1u);
    EXPECT_EQ(read.log.count("padstack GONE is missing"), 1u);
    EXPECT_EQ(read.log.count("a pad has neither a shape nor a stack"), 1u);
}

TEST(IpcCopper, AShapeOfADictionaryMayStandForAStack) {
    Text text;
    text.content =
        R"(<DictionaryStandard units="MILLIMETER"><EntryStandard id="A"><RectCenter width="3" height="1"/>
        </EntryStandard></DictionaryStandard>)";
    text.step = top(R"(<Set><Pad padstackDefRef="A" x="10" y="10"/></Set>)");
    const Read read = IpcSupport::read(text);
    ASSERT_EQ(read.elements("TOP").size(), 1u);
    expectRing(read.elements("TOP")[0].points, {{8.5, 9.5}, {11.5, 9.5}, {11.5, 10.5}, {8.5, 10.5}});
    EXPECT_EQ(read.log.text(), "");
}

TEST(IpcCopper, FiducialsAreCopper) {
    const Read read =
        readTop(R"(<Set><GlobalFiducial><Location x="5" y="5"/><RectCenter width="1" height="1"/>
        </GlobalFiducial></Set>)");
    EXPECT_EQ(read.elements("TOP").size(), 1u);
}

TEST(IpcCopper, ANegativeSetTakesFromWhatWasDrawnBeforeIt) {
    const Read read = readTop("<Set net=\"A\">" + square(10, 10, 10) + "</Set><Set polarity=\"NEGATIVE\">" +
                              square(10, 10, 4) + "</Set><Set net=\"B\">" + square(10, 10, 2) + "</Set>");
    EXPECT_NEAR(areaOf(read.elements("TOP")), 100 - 16 + 4, 1e-6);
    EXPECT_EQ(read.elements("TOP").front().netName, "A");
    EXPECT_EQ(read.elements("TOP").back().netName, "B");
}

TEST(IpcCopper, ANegativeSetBeforeAllTakesNothing) {
    const Read read = readTop("<Set polarity=\"NEGATIVE\">" + square(10, 10, 4) + "</Set><Set>" +
                              square(10, 10, 10) + "</Set>");
    ASSERT_EQ(read.elements("TOP").size(), 1u);
    EXPECT_NEAR(areaOf(read.elements("TOP")), 100, 1e-9);
}

TEST(IpcCopper, ANegativeSetMayCutAShapeInPiecesOrAway) {
    const Read read = readTop("<Set net=\"A\">" + square(10, 10, 2) + square(20, 20, 1) + square(40, 40, 3) +
                              R"(</Set><Set polarity="NEGATIVE"><Features><Location x="10" y="10"/>
        <RectCenter width="1" height="9"/></Features>)" +
                              square(20, 20, 5) + "</Set>");
    const auto &elements = read.elements("TOP");
    ASSERT_EQ(elements.size(), 3u);
    EXPECT_NEAR(areaOf(elements), 4 - 2 + 9, 1e-6);
    for (const geomElem &element : elements)
        EXPECT_EQ(element.netName, "A");
}

TEST(IpcCopper, PolarityHoldsForItsLayerAlone) {
    const Read read =
        readStep(R"(<LayerFeature layerRef="BOTTOM"><Set>)" + square(10, 10, 10) + "</Set></LayerFeature>" +
                 top("<Set polarity=\"NEGATIVE\">" + square(10, 10, 4) + "</Set>"));
    EXPECT_NEAR(areaOf(read.elements("BOTTOM")), 100, 1e-9);
    EXPECT_TRUE(read.elements("TOP").empty());
}

TEST(IpcCopper, ANegativeLayerStartsFullAndLosesWhatIsDrawn) {
    Text text;
    text.layers.replace(text.layers.find("side=\"TOP\""), 10, "side=\"TOP\" polarity=\"NEGATIVE\"");
    text.step = top("<Set net=\"X\">" + square(10, 10, 2) + square(30, 10, 2) + "</Set>");
    EXPECT_NEAR(areaOf(read(text).elements("TOP")), 5000 - 8, 1e-6);
}

// Thousands of clearances and pads in turn: each pad loses what comes after it.
TEST(IpcCopper, ManyPolaritiesInTurnAreQuick) {
    std::string sets;
    for (int i = 0; i < 3000; ++i) {
        const double x = 2 + 3 * (i % 60), y = 2 + 3 * (i / 60);
        sets += "<Set>" + square(x, y, 2) + "</Set><Set polarity=\"NEGATIVE\">" + square(x, y, 1) + "</Set>";
    }
    const Read read = readTop(sets);
    EXPECT_NEAR(areaOf(read.elements("TOP")), 3000 * 3, 1e-3);
}

TEST(IpcCopper, FeaturesOfOtherLayersAreToldByFunction) {
    Text text;
    text.layers += R"(<Layer name="SILK" layerFunction="SILKSCREEN" side="TOP"/>)";
    text.step = "<LayerFeature layerRef=\"SILK\"><Set>" + square(1, 1, 1) + "</Set></LayerFeature>";
    EXPECT_EQ(read(text).log.text(), "Warning: features on layers of function SILKSCREEN are not read\n");
}

TEST(IpcCopper, FeaturesOfAnUndeclaredLayerAreTold) {
    const Read read =
        readStep("<LayerFeature layerRef=\"GONE\"><Set>" + square(1, 1, 1) + "</Set></LayerFeature>");
    EXPECT_EQ(read.log.text(), "Warning: features on layer GONE are left out: it is not declared\n");
}

TEST(IpcCopper, ShapesWithoutEndsAreLeftOut) {
    const Read read =
        readTop("<Set>" + square(1e300, 0, 1) + square(1, 1, 1) +
                R"(<Features><Location x="nan" y="1"/><RectCenter width="1" height="1"/></Features>
        <Features><Location x="1" y="1"/><RectCenter width="inf" height="1"/></Features></Set>)");
    for (const geomElem &element : read.elements("TOP"))
        for (const _mFPOINT &point : element.points)
            EXPECT_TRUE(std::abs(point.x) <= 1e3 && std::abs(point.y) <= 1e3);
    EXPECT_FALSE(read.log.isEmpty());
}

TEST(IpcCopper, StrokesHaveAnElementASegment) {
    const Read read =
        readTop(R"(<Set net="T"><Features><Location x="0" y="0"/><Polyline><PolyBegin x="1" y="1"/>
        <PolyStepSegment x="9" y="1"/><PolyStepSegment x="9" y="9"/><LineDesc lineEnd="ROUND" lineWidth="0.5"/>
        </Polyline></Features></Set>)");
    ASSERT_EQ(read.elements("TOP").size(), 2u);
    EXPECT_EQ(read.elements("TOP")[1].netName, "T");
}

TEST(IpcCopper, EachDictionaryHasUnitsOfItsOwn) {
    Text text;
    text.content =
        R"(<DictionaryStandard units="INCH"><EntryStandard id="A"><RectCenter width="1" height="1"/>
        </EntryStandard></DictionaryStandard>)";
    text.step =
        top(R"(<Set><Features><Location x="30" y="30"/><StandardPrimitiveRef id="A"/></Features></Set>)");
    EXPECT_NEAR(areaOf(read(text).elements("TOP")), 25.4 * 25.4, 1e-6);
}

} // namespace
