// Boards that go out as IDX documents and come back: what stays, what is lost, and that generations agree.
#include "readers/IDFReader.h"
#include "readers/IDXReader.h"
#include "support/Outlines.h"
#include "support/TempFolder.h"
#include "writers/IDXWriter.h"

#include <gmock/gmock.h>

namespace {

using namespace EDA;
using test::hole;
using test::outline;

class IdxRoundTrip : public testing::Test {
protected:
    // Writes a board and reads it back.
    EDABoard comesBack(const EDABoard &written) {
        const std::string path = folder.path("generation-" + std::to_string(++generation) + ".idx");
        IDXReader reader;
        EXPECT_TRUE(IDXWriter().writeFile(path, written));
        EXPECT_TRUE(reader.readFile(path));
        error = reader.getError();
        return reader.getBoard();
    }
    std::string bytes(int number) const {
        return folder.read("generation-" + std::to_string(number) + ".idx");
    }

    void addPart(const std::string &name, const EDAOutline &shape, double height) {
        EDAComponent part("ELECTRICAL");
        part.setName(name);
        part.setPartNumber(name + "-number");
        part.setHeight(height);
        part.getOutline() = shape;
        board.addComponent(part, false);
    }
    void place(const std::string &name, const std::string &designator, double x, double y, double angle,
               const std::string &side) {
        EDAComponentPlacement placement;
        placement.setName(name);
        placement.setPartNumber(name + "-number");
        placement.setReferenceDesignator(designator);
        placement.setLocation(x, y);
        placement.setAngle(angle);
        placement.setBoardSide(side);
        placement.setStatus("PLACED");
        board.addComponentPlacement(placement);
    }
    void addVia(const std::string &name, double diameter, double x, double y, bool plated) {
        EDAVia via;
        via.setName(name);
        via.setDiameter(diameter);
        via.setCentre(x, y);
        via.setPlated(plated);
        via.setHoleType("PIN");
        board.addVia(via, false);
    }
    void addKeepout(const std::string &type, const std::string &side, const EDAOutline &shape) {
        EDAKeepout keepout(type);
        keepout.setName("keepout of " + type);
        keepout.setBoardSide(side);
        keepout.setHeight(1.25);
        keepout.getOutline() = shape;
        board.addKeepout(keepout);
    }
    void fillBoard() {
        board.setName("demo board");
        board.setUnits("mm");
        board.setThickness(1.6);
        board.getOutline() = outline("0,0 40,0 40,30@45 0,30 0,0", "5,5 8,5 8,7");
        board.getOutline().addInternalOutline(hole("20,20 24,20@180 20,20@180"));
        addPart("ELL", outline("0,0 4,0 4,1 1,1 1,3 0,3 0,0"), 2);
        addPart("CAN", outline("-2,0 2,0@180 -2,0@180"), 5);
        place("ELL", "U1", 10, 12, 0, "TOP");
        place("ELL", "U2", 20, 12, 90, "TOP");
        place("CAN", "C1", 30, 12, 30, "TOP");
        place("ELL", "U3", 30.5, 4.25, 180, "BOTTOM");
        addKeepout("ComponentPlacement", "TOP", outline("1,1 4,1 4,3"));
        addKeepout("Route", "ALL", outline("1,1 4,1 4,3 1,1"));
        addVia("V1", 0.8, 3, 4, true);
        addVia("V2", 0.3, 5, 6, false);
    }

    TestSupport::TempFolder folder;
    EDABoard board;
    std::string error;
    int generation = 0;
};

void expectSamePlaces(const EDAOutline &a, const EDAOutline &b) {
    const EDAOutline::PointList &first = a.getPoints(true), &second = b.getPoints(true);
    ASSERT_EQ(first.size(), second.size());
    for (std::size_t i = 0; i < first.size(); ++i) {
        EXPECT_NEAR(first[i].first, second[i].first, 1e-9);
        EXPECT_NEAR(first[i].second, second[i].second, 1e-9);
    }
}

// What stays.

TEST_F(IdxRoundTrip, TheBoardStays) {
    fillBoard();
    const EDABoard back = comesBack(board);
    EXPECT_EQ(error, "");
    EXPECT_EQ(back.getName(), "demo board");
    EXPECT_EQ(back.getUnits(), "mm");
    EXPECT_EQ(back.getThickness(), 1.6);
    EXPECT_TRUE(back.isBaselineImport());
    expectSamePlaces(board.getOutline(), back.getOutline());
    EXPECT_TRUE(back.getOutline().isClosed());
    ASSERT_EQ(back.getOutline().numInternalOutlines(), 2);
    for (int i = 0; i < 2; ++i) {
        expectSamePlaces(board.getOutline().beginInternalOutlines()[i],
                         back.getOutline().beginInternalOutlines()[i]);
        EXPECT_TRUE(back.getOutline().beginInternalOutlines()[i].isHole());
    }
}

TEST_F(IdxRoundTrip, AnInternalOutlineThatIsNoHoleStaysNone) {
    board.getOutline() = outline("0,0 40,0 40,30");
    board.getOutline().addInternalOutline(outline("5,5 8,5 8,7"));
    EXPECT_FALSE(comesBack(board).getOutline().beginInternalOutlines()->isHole());
}

TEST_F(IdxRoundTrip, PartsAndPlacesStay) {
    fillBoard();
    const EDABoard back = comesBack(board);
    ASSERT_EQ(back.numComponents(), 2u);
    for (int i = 0; i < 2; ++i) {
        EXPECT_EQ(back.beginComponents()[i].getName(), board.beginComponents()[i].getName());
        EXPECT_EQ(back.beginComponents()[i].getPartNumber(), board.beginComponents()[i].getPartNumber());
        EXPECT_EQ(back.beginComponents()[i].getHeight(), board.beginComponents()[i].getHeight());
        expectSamePlaces(back.beginComponents()[i].getOutline(), board.beginComponents()[i].getOutline());
    }
    ASSERT_EQ(back.numComponentPlacements(), 4u);
    for (int i = 0; i < 4; ++i) {
        const EDAComponentPlacement &was = board.beginPlacements()[i], &is = back.beginPlacements()[i];
        EXPECT_EQ(is.getName(), was.getName());
        EXPECT_EQ(is.getReferenceDesignator(), was.getReferenceDesignator());
        EXPECT_EQ(is.getXLocation(), was.getXLocation());
        EXPECT_EQ(is.getYLocation(), was.getYLocation());
        EXPECT_EQ(is.isOnBoardTop(), was.isOnBoardTop());
        EXPECT_NEAR(is.getAngle(true), was.getAngle(true), 1e-4);
    }
}

TEST_F(IdxRoundTrip, AnAngleOnTheBottomComesBackAsItIsSeenThere) {
    addPart("ELL", outline("0,0 4,0 4,1"), 2);
    for (const double angle : {0.0, 30.0, 90.0, 200.0, 359.0})
        place("ELL", "U", 0, 0, angle, "BOTTOM");
    const EDABoard back = comesBack(board);
    for (int i = 0; i < 5; ++i) {
        EXPECT_EQ(back.beginPlacements()[i].getBoardSide(), "BOTTOM");
        EXPECT_NEAR(back.beginPlacements()[i].getAngle(true), board.beginPlacements()[i].getAngle(true),
                    1e-3);
    }
}

TEST_F(IdxRoundTrip, KeepoutsStay) {
    fillBoard();
    const EDABoard back = comesBack(board);
    ASSERT_EQ(back.numKeepouts(), 2u);
    for (int i = 0; i < 2; ++i) {
        const EDAKeepout &was = board.beginKeepouts()[i], &is = back.beginKeepouts()[i];
        EXPECT_EQ(is.getType(), was.getType());
        EXPECT_EQ(is.getName(), was.getName());
        EXPECT_EQ(is.getBoardSide(), was.getBoardSide());
        EXPECT_EQ(is.getHeight(), was.getHeight());
        EXPECT_EQ(is.getOutline(), was.getOutline());
    }
}

TEST_F(IdxRoundTrip, ViasStay) {
    fillBoard();
    const EDABoard back = comesBack(board);
    ASSERT_EQ(back.numVias(0), 2u);
    for (int i = 0; i < 2; ++i) {
        const EDAVia &was = board.beginVias()[i], &is = back.beginVias()[i];
        EXPECT_EQ(is.getName(), was.getName());
        EXPECT_EQ(is.getDiameter(), was.getDiameter());
        EXPECT_EQ(is.getXCentre(), was.getXCentre());
        EXPECT_EQ(is.getYCentre(), was.getYCentre());
        EXPECT_EQ(is.isPlated(), was.isPlated());
        EXPECT_EQ(is.getAssociatedPart(), was.getAssociatedPart());
    }
}

// What is lost.

TEST_F(IdxRoundTrip, LostArcsAreSegments) {
    fillBoard();
    const EDABoard back = comesBack(board);
    EXPECT_EQ(back.getOutline().numPoints(), board.getOutline().getPoints(true).size() + 1);
    for (auto point = back.getOutline().beginPoints(); point != back.getOutline().endPoints(); ++point)
        EXPECT_FALSE(point->isArc());
}

TEST_F(IdxRoundTrip, LostPartsWithoutAPlacementAndPlacementsWithoutAPart) {
    addPart("ALONE", outline("0,0 4,0 4,1"), 1);
    place("NONE", "U1", 0, 0, 0, "TOP");
    const EDABoard back = comesBack(board);
    EXPECT_EQ(back.numComponents(), 0u);
    EXPECT_EQ(back.numComponentPlacements(), 0u);
}

TEST_F(IdxRoundTrip, LostStatusOffsetTypeAndPropertiesOfParts) {
    addPart("ELL", outline("0,0 4,0 4,1"), 1);
    EDAComponent &part = *board.beginComponents();
    part.addProperty("POWER_OPR", "250");
    part.setUnits("mm");
    EDAComponent mechanical("MECHANICAL");
    mechanical.setName("M");
    mechanical.setPartNumber("M-number");
    mechanical.getOutline() = outline("0,0 1,0 1,1");
    board.addComponent(mechanical, false);
    place("ELL", "U1", 0, 0, 0, "TOP");
    place("M", "M1", 0, 0, 0, "TOP");
    board.beginPlacements()->setOffset(0.5);
    const EDABoard back = comesBack(board);
    EXPECT_EQ(back.beginPlacements()->getStatus(), "");
    EXPECT_EQ(back.beginPlacements()->getOffset(), 0.0);
    EXPECT_EQ(back.beginPlacements()->getBoardSide(), "");
    EXPECT_EQ(back.beginComponents()[1].getType(), "ELECTRICAL");
    EXPECT_EQ(back.beginComponents()->getPower(), 0.0);
    EXPECT_EQ(back.beginComponents()->getUnits(), "");
}

TEST_F(IdxRoundTrip, LostDigitsOfPlacesBeyondTheSixth) {
    addPart("ELL", outline("0,0 4,0 4,1"), 1);
    place("ELL", "U1", 1234.5678, 0, 0, "TOP");
    addVia("V", 1, 0, 1234.5678, false);
    const EDABoard back = comesBack(board);
    EXPECT_EQ(back.beginPlacements()->getXLocation(), 1234.57);
    EXPECT_EQ(back.beginVias()->getYCentre(), 1234.57);
}

TEST_F(IdxRoundTrip, LostInstancesTypesAndAnglesOfVias) {
    addVia("V", 1, 2, 3, false);
    EDAVia many;
    many.setDiameter(2);
    many.setAngle(30);
    many.addInstance("W", 5, 6);
    board.addVia(many, false);
    const EDABoard back = comesBack(board);
    EXPECT_EQ(back.numVias(1), 2u);
    EXPECT_EQ(back.beginVias()->getHoleType(), "ViaTerminal");
    EXPECT_EQ(back.beginVias()[1].getAngle(), 0.0);
}

TEST_F(IdxRoundTrip, EqualViasComeBackAsInstances) {
    addVia("V1", 1, 2, 3, false);
    addVia("V2", 1, 4, 5, false);
    const EDABoard back = comesBack(board);
    ASSERT_EQ(back.numVias(0), 1u);
    EXPECT_EQ(back.numVias(1), 2u);
}

TEST_F(IdxRoundTrip, LostShapedVias) {
    EDAVia via;
    via.getOutline() = outline("0,0 4,0 4,2");
    board.addVia(via, false);
    EXPECT_EQ(comesBack(board).numVias(0), 0u);
    EXPECT_EQ(error, "Unhandled Object Type Cutout\n");
}

TEST_F(IdxRoundTrip, LostTypesAndSidesOfKeepoutsInOtherWords) {
    addKeepout("PLACE_KEEPOUT", "BOTH", outline("1,1 4,1 4,3"));
    addKeepout("VIA_KEEPOUT", "", outline("1,1 4,1 4,3"));
    const EDABoard back = comesBack(board);
    EXPECT_EQ(back.beginKeepouts()[0].getType(), "ComponentPlacement");
    EXPECT_EQ(back.beginKeepouts()[1].getType(), "Via");
    EXPECT_EQ(back.beginKeepouts()[0].getBoardSide(), "ALL");
    EXPECT_EQ(back.beginKeepouts()[1].getBoardSide(), "ALL");
}

TEST_F(IdxRoundTrip, LostLayersAndInnerOutlinesOfParts) {
    EDABoardLayer layer;
    layer.setName("TOP");
    board.addLayer(layer);
    addPart("ELL", outline("0,0 4,0 4,4", "1,1 2,1 2,2"), 1);
    place("ELL", "U1", 0, 0, 0, "TOP");
    const EDABoard back = comesBack(board);
    EXPECT_EQ(back.numLayers(), 0u);
    EXPECT_EQ(back.beginComponents()->getOutline().numInternalOutlines(), 0);
}

TEST_F(IdxRoundTrip, LostTextsOfBlanksAreEmpty) {
    board.setName("  ");
    EXPECT_EQ(comesBack(board).getName(), "");
    board.setName(" a ");
    EXPECT_EQ(comesBack(board).getName(), " a ");
}

// Generations.

TEST_F(IdxRoundTrip, TheSecondAndTheThirdGenerationAreEqual) {
    fillBoard();
    comesBack(comesBack(comesBack(board)));
    EXPECT_NE(bytes(2), "<missing>");
    EXPECT_EQ(bytes(2), bytes(3));
}

// An orientation on the bottom is written by the angle that it is seen with: the part turns the other way in
// each generation, and back in the next.
TEST_F(IdxRoundTrip, CirclesDoNotDriftFromGenerationToGeneration) {
    fillBoard();
    board.getOutline().addInternalOutline(hole("23,15 27,15@180 23,15@180"));
    addKeepout("ComponentPlacement", "ALL", outline("24.5,3 29.5,3@180 24.5,3@180"));
    comesBack(comesBack(comesBack(comesBack(board))));
    const std::string text = bytes(4);
    EXPECT_NE(text.find("<property:Value>4</property:Value>"), std::string::npos);
    EXPECT_NE(text.find("<property:Value>5</property:Value>"), std::string::npos);
    EXPECT_EQ(text.find("99999"), std::string::npos);
    EXPECT_EQ(text.find("00001"), std::string::npos);
}

TEST_F(IdxRoundTrip, APartOnTheBottomTurnsTheOtherWayInEachGeneration) {
    addPart("ELL", outline("0,0 4,0 4,1"), 2);
    place("ELL", "U1", 1, 2, 30, "BOTTOM");
    const EDABoard second = comesBack(board), third = comesBack(second);
    comesBack(comesBack(third));
    EXPECT_NEAR(second.beginPlacements()->getAngle(true), 330.0, 1e-3);
    EXPECT_NEAR(third.beginPlacements()->getAngle(true), 30.0, 1e-3);
    EXPECT_EQ(bytes(1), bytes(3));
    EXPECT_EQ(bytes(2), bytes(4));
}

TEST_F(IdxRoundTrip, ExamplesOfAnotherFormatComeThrough) {
    IDFReader reader;
    const std::string example = std::string(EDA_EXAMPLES) + "/controller/controller";
    ASSERT_TRUE(reader.readFile(example + ".emn") && reader.readFile(example + ".emp"));
    const EDABoard &source = reader.getBoard();
    const EDABoard back = comesBack(source);
    EXPECT_EQ(error, "");
    EXPECT_EQ(back.getName(), source.getName());
    EXPECT_EQ(back.getUnits(), source.getUnits());
    EXPECT_EQ(back.numKeepouts(), source.numKeepouts());
    EXPECT_EQ(back.getOutline().numInternalOutlines(), source.getOutline().numInternalOutlines());
    std::size_t placed = 0;
    for (auto at = source.beginPlacements(); at != source.endPlacements(); ++at)
        placed += source.findComponent(*at) != nullptr;
    EXPECT_GT(placed, 0u);
    EXPECT_EQ(back.numComponentPlacements(), placed);
    EXPECT_EQ(back.numVias(1), source.numVias(0)); // instances are left out
}

} // namespace
