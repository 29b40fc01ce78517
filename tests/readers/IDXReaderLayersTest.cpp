// Strata of an IDX document: the board or a layer, and the layers' traces.
#include "readers/IDXTestSupport.h"

namespace {

using namespace IDXTest;
using testing::ElementsAre;

const std::string boardPart = polygon("EDGE", "0,0 9,0 9,9") + part("BoardOutline", "Stratum", {"EDGE"});
const std::string feature = element("ShapeElementType", "FeatureShapeElement");

std::string technologyOf(const std::string &id) { return element("StratumTechnology", id); }

std::string layer(const std::string &id, const std::vector<std::string> &elements,
                  const std::string &name = "", const std::string &technologyId = "T") {
    return shape("Stratum", id, elements,
                 technologyOf(technologyId) + (name.empty() ? "" : element("Name", name)));
}

std::vector<std::string> layerNames(const EDA::EDABoard &board) {
    std::vector<std::string> names;
    for (auto one = board.beginLayers(); one != board.endLayers(); ++one)
        names.push_back(one->getName());
    return names;
}

// The board.

TEST_F(IDXReaderTest, AStratumIsTheBoard) {
    readWell(boardPart);
    EXPECT_THAT(stored(board().getOutline()), ElementsAre(At(0, 0), At(9, 0), At(9, 9)));
    EXPECT_EQ(board().numLayers(), 0u);
}

TEST_F(IDXReaderTest, AStratumNamedBoardOutlineIsTheBoardWhateverItsTechnology) {
    readWell(technology("T") + polygon("E", "0,0 9,0 9,9", 0, 0, feature) +
             part("X", "Stratum", {"E"}, element("Name", "BoardOutline"), technologyOf("T")));
    EXPECT_EQ(board().getOutline().numPoints(), 3u);
    EXPECT_EQ(board().numLayers(), 0u);
}

TEST_F(IDXReaderTest, AStratumNamedBoardOutlineIsALayerOnceABoardWasTaken) {
    readWell(boardPart + technology("T") + polygon("E", "0,0 5,0 5,5", 0, 0, feature) + layer("S", {"E"}) +
             item("I", "S") + instance("I", "BoardOutline"));
    EXPECT_EQ(board().getOutline().numPoints(), 3u);
    EXPECT_THAT(layerNames(board()), ElementsAre("T"));
}

TEST_F(IDXReaderTest, AStratumWithTypeAndTechnologyIsALayer) {
    readWell(technology("T") + polygon("E", "0,0 5,0 5,5", 0, 0, feature) + layer("S", {"E"}) +
             item("I", "S") + instance("I", "copper"));
    EXPECT_TRUE(board().getOutline().empty());
    EXPECT_THAT(layerNames(board()), ElementsAre("T"));
}

TEST_F(IDXReaderTest, AStratumWithoutTypeIsTheBoard) {
    readWell(technology("T") + polygon("E", "0,0 5,0 5,5") + layer("S", {"E"}) + item("I", "S") +
             instance("I", "copper"));
    EXPECT_EQ(board().getOutline().numPoints(), 3u);
    EXPECT_EQ(board().numLayers(), 0u);
}

TEST_F(IDXReaderTest, TheTypeIsThatOfTheFirstElementThatHasOne) {
    readWell(technology("T") + polygon("A", "0,0 5,0 5,5") + polygon("B", "0,0 5,0 5,5", 0, 0, feature) +
             layer("S", {"A", "B"}) + item("I", "S") + instance("I", "copper"));
    EXPECT_EQ(board().numLayers(), 1u);
}

TEST_F(IDXReaderTest, AStratumWithoutTechnologyAfterTheBoardIsNothing) {
    readWell(boardPart + polygon("E", "0,0 5,0 5,5", 0, 0, feature) + part("X", "Stratum", {"E"}));
    EXPECT_EQ(board().getOutline().numPoints(), 3u);
    EXPECT_EQ(board().numLayers(), 0u);
}

TEST_F(IDXReaderTest, TheThicknessIsAPropertyOfTheInstance) {
    readWell(polygon("EDGE", "0,0 9,0 9,9") + part("B", "Stratum", {"EDGE"}, property("THICKNESS", "1.6")));
    EXPECT_EQ(board().getThickness(), 1.6);
}

TEST_F(IDXReaderTest, TheRangeInZBeatsTheThickness) {
    readWell(polygon("EDGE", "0,0 9,0 9,9", -0.5, 2) +
             part("B", "Stratum", {"EDGE"}, property("THICKNESS", "1.6")));
    EXPECT_EQ(board().getThickness(), 2.5);
    double low = 0, high = 0;
    board().getOutline().getZDimensions(low, high);
    EXPECT_EQ(low, -0.5);
    EXPECT_EQ(high, 2.0);
}

TEST_F(IDXReaderTest, FurtherElementsAreOutlinesInTheBoard) {
    const std::string inverted = element("Inverted", "true");
    readWell(polygon("A", "0,0 9,0 9,9", 0, 0, inverted) + polygon("B", "1,0 2,0 2,1", 0, 3, inverted) +
             polygon("C", "5,0 6,0 6,1", 0, 0, element("Inverted", " true")) +
             part("P", "Stratum", {"A", "B", "C"}));
    const EDA::EDAOutline &edge = board().getOutline();
    EXPECT_FALSE(edge.isHole()); // the first element's flag is not used
    ASSERT_EQ(edge.numInternalOutlines(), 2);
    EXPECT_TRUE(edge.beginInternalOutlines()[0].isHole());
    EXPECT_FALSE(edge.beginInternalOutlines()[1].isHole());
    EXPECT_THAT(stored(edge.beginInternalOutlines()[0]), ElementsAre(At(1, 0), At(2, 0), At(2, 1)));
    double low = 0, high = 0;
    edge.beginInternalOutlines()[0].getZDimensions(low, high);
    EXPECT_EQ(high, 3.0);
}

// Layers.

TEST_F(IDXReaderTest, StrataNeedNoInstances) {
    readWell(technology("T") + polygon("E", "0,0 5,0 5,5", 1.0, 1.5) + layer("S", {"E"}, "TOP"));
    ASSERT_THAT(layerNames(board()), ElementsAre("TOP"));
    EXPECT_TRUE(board().getNthLayer(0).isConductor());
    EXPECT_EQ(board().getNthLayer(0).getThickness(), 0.5);
    EXPECT_EQ(board().getNthLayer(0).getTopOffset(), -1001.0);
    EXPECT_EQ(board().getNthLayer(0).numTraces(), 1u);
}

TEST_F(IDXReaderTest, StrataWithoutInstancesComeInTheOrderOfTheirIds) {
    readWell(technology("T") + polygon("E", "0,0 5,0 5,5") + layer("S3", {"E"}, "c") +
             layer("S10", {"E"}, "a") + layer("S2", {"E"}, "b"));
    EXPECT_THAT(layerNames(board()), ElementsAre("a", "b", "c"));
}

TEST_F(IDXReaderTest, AStratumWithAnInstanceIsNotTakenTwice) {
    readWell(boardPart + technology("T") + polygon("E", "0,0 5,0 5,5") + layer("S", {"E"}) + item("I", "S") +
             instance("I", "copper"));
    ASSERT_EQ(board().numLayers(), 1u);
    EXPECT_EQ(board().getNthLayer(0).numTraces(), 1u);
}

TEST_F(IDXReaderTest, TwoStrataOfOneNameAreOneLayer) {
    readWell(technology("T") + polygon("A", "0,0 5,0 5,5", 0, 1) + polygon("B", "0,0 6,0 6,6", 0, 2) +
             layer("S1", {"A"}, "TOP") + layer("S2", {"B"}, "TOP"));
    ASSERT_THAT(layerNames(board()), ElementsAre("TOP"));
    EXPECT_EQ(board().getNthLayer(0).numTraces(), 2u);
    EXPECT_EQ(board().getNthLayer(0).getThickness(), 1.0);
}

TEST_F(IDXReaderTest, StrataWithoutANameAreNamedByTheirTechnology) {
    readWell(technology("T1") + technology("T2") + layer("S1", {}, "", "T1") + layer("S2", {}, "", "T2"));
    EXPECT_THAT(layerNames(board()), ElementsAre("T1", "T2"));
}

TEST_F(IDXReaderTest, AStratumOfAnUnknownTechnologyIsALayer) {
    readWell(layer("S1", {}, "NAME", "NONE"));
    EXPECT_THAT(layerNames(board()), ElementsAre("NAME"));
}

// The two systems.

const std::string generic =
    technology("T", "GenericLayer") + polygon("E", "0,0 5,0 5,5") + layer("S", {"E"}, "G");

TEST_F(IDXReaderTest, GenericLayersAreDropped) {
    for (const std::string &header : {std::string(), creator("Expedition"), creator("design force"),
                                      creator(" Design Force"), creator("Design Force 2019")}) {
        readWell(generic, header);
        EXPECT_EQ(board().numLayers(), 0u) << header;
    }
}

TEST_F(IDXReaderTest, GenericLayersOfOneSystemAreKept) {
    readWell(generic, creator("Design Force"));
    EXPECT_THAT(layerNames(board()), ElementsAre("G"));
}

const std::string sameHeight = technology("T") + polygon("A", "0,0 5,0 5,5", 1.0, 1.5) +
                               polygon("B", "0,0 6,0 6,6", 1.2, 1.5 + 5e-10) +
                               polygon("C", "0,0 6,0 6,6", 1.2, 1.5 + 5e-9) + layer("S1", {"A"}, "one") +
                               layer("S2", {"B"}, "two") + layer("S3", {"C"}, "three");

TEST_F(IDXReaderTest, StrataAtOneHeightAreOneLayerForOneSystem) {
    readWell(sameHeight, creator("Expedition"));
    ASSERT_THAT(layerNames(board()), ElementsAre("one", "three"));
    EXPECT_EQ(board().getNthLayer(0).numTraces(), 2u);
    EXPECT_EQ(board().getNthLayer(0).getTopOffset(), 1.5);
    EXPECT_EQ(board().getNthLayer(1).numTraces(), 1u);
}

TEST_F(IDXReaderTest, StrataAtOneHeightAreLayersOfTheirOwnForOthers) {
    for (const std::string &header : {std::string(), creator("Design Force")}) {
        EDA::IDXReader fresh;
        ASSERT_TRUE(fresh.readFile(folder.write("a.idx", document(sameHeight, header))));
        EXPECT_THAT(layerNames(fresh.getBoard()), ElementsAre("one", "two", "three"));
        EXPECT_EQ(fresh.getBoard().getNthLayer(0).getTopOffset(), -1001.0);
    }
}

TEST_F(IDXReaderTest, WithoutAHeightOnlyTheNameCounts) {
    readWell(technology("T") + polygon("A", "0,0 5,0 5,5", 1.5, 1.5) + layer("S1", {"A"}, "one") +
                 layer("S2", {"A"}, "two"),
             creator("Expedition"));
    EXPECT_THAT(layerNames(board()), ElementsAre("one", "two"));
}

TEST_F(IDXReaderTest, OfALayerOfTheNameAndOneAtTheHeightTheFirstIsTaken) {
    readWell(technology("T") + polygon("A", "0,0 5,0 5,5", 0, 1) + polygon("B", "0,0 5,0 5,5", 0, 2) +
                 layer("S1", {"A"}, "one") + layer("S2", {"B"}, "two") + layer("S3", {"A"}, "two"),
             creator("Expedition"));
    ASSERT_THAT(layerNames(board()), ElementsAre("one", "two"));
    EXPECT_EQ(board().getNthLayer(0).numTraces(), 2u);
}

TEST_F(IDXReaderTest, LayersOfAnEarlierReadAreFoundToo) {
    readWell(technology("T") + polygon("A", "0,0 5,0 5,5", 0, 1) + layer("S1", {"A"}, "one"));
    readWell(technology("T") + polygon("A", "0,0 5,0 5,5", 0, 1) + layer("S1", {"A"}, "one"));
    ASSERT_EQ(board().numLayers(), 1u);
    EXPECT_EQ(board().getNthLayer(0).numTraces(), 2u);
}

// Traces.

TEST_F(IDXReaderTest, AnOpenLineWithAWidthIsARoute) {
    readWell(technology("T") + polyLine("L", "0,0 5,0 5,5", "0.25") + curveSet("C", {"L"}, 1, 1.5) +
             shapeElement("E", "C", element("Description", "net 7")) + layer("S", {"E"}));
    const EDA::EDATrace &trace = *board().getNthLayer(0).beginTraces();
    EXPECT_TRUE(trace.isDefinedAsRoute());
    EXPECT_EQ(trace.getRouteWidth(), 0.25);
    EXPECT_EQ(trace.getName(), "net 7");
    EXPECT_EQ(trace.getThickness(), 0.5);
}

TEST_F(IDXReaderTest, AClosedLineIsAnArea) {
    readWell(technology("T") + polyLine("L", "0,0 5,0 5,5 0,0", "0.25") + curveSet("C", {"L"}) +
             shapeElement("E", "C") + layer("S", {"E"}));
    const EDA::EDATrace &trace = *board().getNthLayer(0).beginTraces();
    EXPECT_FALSE(trace.isDefinedAsRoute());
    EXPECT_EQ(trace.getThickness(), 0.0);
}

TEST_F(IDXReaderTest, AnOpenLineWithoutWidthIsAnArea) {
    readWell(technology("T") + polygon("E", "0,0 5,0 5,5") + layer("S", {"E"}));
    EXPECT_FALSE(board().getNthLayer(0).beginTraces()->isDefinedAsRoute());
}

TEST_F(IDXReaderTest, EachElementIsATraceWhateverItSaysAboutHoles) {
    readWell(technology("T") + polygon("A", "0,0 5,0 5,5") +
             polygon("B", "1,1 2,1 2,2", 0, 0, element("Inverted", "true")) + layer("S", {"A", "B"}));
    ASSERT_EQ(board().getNthLayer(0).numTraces(), 2u);
    const EDA::EDATrace &trace = board().getNthLayer(0).beginTraces()[1];
    EXPECT_FALSE(trace.getOutline().isHole());
    EXPECT_EQ(trace.getOutline().numInternalOutlines(), 0);
}

} // namespace
