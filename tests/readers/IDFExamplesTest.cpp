// The IDF examples hold what their pages say.
#include "readers/BoardUnits.h"
#include "readers/IDFReader.h"

#include <gtest/gtest.h>

#include <map>
#include <set>

namespace {

using namespace EDA;

void readPair(IDFReader &reader, const std::string &name) {
    const std::string boardFile = std::string(EDA_EXAMPLES) + "/" + name;
    EXPECT_TRUE(reader.readFile(boardFile)) << reader.getError();
    EXPECT_TRUE(reader.readFile(reader.getMatchingLibraryFilename(boardFile))) << reader.getError();
    EXPECT_EQ(describeUnknownUnits(reader.getBoard()), "");
}

// Every placement finds its own part, by name and part number.
void expectAllPartsKnown(const EDABoard &board) {
    std::set<const EDAComponent *> used;
    for (auto placement = board.beginPlacements(); placement != board.endPlacements(); ++placement) {
        const EDAComponent *component = board.findComponent(*placement);
        ASSERT_NE(component, nullptr) << placement->getReferenceDesignator();
        EXPECT_EQ(component->getPartNumber(), placement->getPartNumber())
            << placement->getReferenceDesignator();
        used.insert(component);
    }
    EXPECT_EQ(used.size(), board.numComponents());
}

TEST(IDFExamples, ControllerHasItsBoardAndParts) {
    IDFReader reader;
    readPair(reader, "controller/controller.emn");
    const EDABoard &board = reader.getBoard();
    EXPECT_EQ(board.getName(), "motor_controller");
    EXPECT_EQ(board.getUnits(), "MM");
    EXPECT_EQ(board.getThickness(), 1.6);
    EXPECT_EQ(board.getModelDimension(), 100.0);
    EXPECT_EQ(board.getOutline().numInternalOutlines(), 2);
    EXPECT_EQ(board.numComponents(), 34u);
    EXPECT_EQ(board.numComponentPlacements(), 86u);
    EXPECT_EQ(board.numVias(1), 135u);
    EXPECT_EQ(board.numKeepouts(), 11u);
    EXPECT_EQ(board.numRouteOutlines(), 1u);
    EXPECT_EQ(board.numPlacementOutlines(), 3u);
    expectAllPartsKnown(board);
}

TEST(IDFExamples, ControllerHasEveryKindOfHoleAndKeepout) {
    IDFReader reader;
    readPair(reader, "controller/controller.emn");
    std::map<std::string, int> holeTypes, platings, keepouts;
    for (auto via = reader.getBoard().beginVias(); via != reader.getBoard().endVias(); ++via) {
        ++holeTypes[via->getHoleType()];
        ++platings[via->getPlatingStyle()];
    }
    for (auto keepout = reader.getBoard().beginKeepouts(); keepout != reader.getBoard().endKeepouts();
         ++keepout)
        ++keepouts[keepout->getType() + " " + keepout->getBoardSide()];
    for (const char *type : {"PIN", "VIA", "MTG", "TOOL", "TESTPOINT"})
        EXPECT_GT(holeTypes[type], 0) << type;
    EXPECT_GT(platings["PTH"], 0);
    EXPECT_GT(platings["NPTH"], 0);
    for (const char *kind :
         {"PLACE_KEEPOUT TOP", "PLACE_KEEPOUT BOTTOM", "PLACE_KEEPOUT BOTH", "VIA_KEEPOUT "})
        EXPECT_GT(keepouts[kind], 0) << kind;
}

TEST(IDFExamples, BlinkerHasItsBoardAndParts) {
    IDFReader reader;
    readPair(reader, "thou-board/blinker.emn");
    const EDABoard &board = reader.getBoard();
    EXPECT_EQ(board.getName(), "blinker");
    EXPECT_EQ(board.getUnits(), "THOU");
    EXPECT_EQ(board.getThickness(), 62.0);
    EXPECT_EQ(board.getModelDimension(), 2000.0);
    EXPECT_EQ(board.getOutline().numInternalOutlines(), 1);
    EXPECT_EQ(board.numComponents(), 9u);
    EXPECT_EQ(board.numComponentPlacements(), 14u);
    EXPECT_EQ(board.numVias(1), 38u);
    EXPECT_EQ(board.numVias(0), 30u); // pins are never instances
    EXPECT_EQ(board.numKeepouts(), 2u);
    EXPECT_EQ(board.numRouteOutlines(), 1u);
    EXPECT_EQ(board.numPlacementOutlines(), 1u);
    expectAllPartsKnown(board);
    int notPlaced = 0;
    for (auto placement = board.beginPlacements(); placement != board.endPlacements(); ++placement)
        notPlaced += placement->isPlaced() ? 0 : 1;
    EXPECT_EQ(notPlaced, 1);
}

} // namespace
