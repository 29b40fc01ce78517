// Boards of other formats made ready for IDX documents: what becomes of each thing, and what is told.
#include "IdxBoard.h"
#include "IdfBoard.h"
#include "PlacementAngle.h"
#include "support/Outlines.h"

#include <gmock/gmock.h>

#include <limits>

namespace {

using namespace EDA;
using EDATool::angleWithoutOrientation;
using EDATool::IdxBoard;
using EDATool::makeIdxBoard;
using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;

class IdxBoardTest : public testing::Test {
protected:
    IdxBoardTest() { design.setUnits("mm"); }
    IdxBoard made(const std::string &units = "") const { return makeIdxBoard(design, units); }
    void addPart(const std::string &name, const std::string &units = "",
                 const std::string &type = "ELECTRICAL") {
        EDAComponent part(type);
        part.setName(name);
        part.setUnits(units);
        part.setHeight(2.0);
        part.getOutline() = test::outline("0,0 4,0 4,1 0,0");
        design.addComponent(part, false);
    }
    EDAComponentPlacement placement(const std::string &name, const std::string &side = "TOP") const {
        EDAComponentPlacement result;
        result.setName(name);
        result.setReferenceDesignator("U1");
        result.setBoardSide(side);
        return result;
    }
    void place(EDAComponentPlacement placed) { design.addComponentPlacement(placed); }
    EDABoard design;
};

TEST_F(IdxBoardTest, AnEmptyBoardLosesNothing) {
    EXPECT_THAT(made().notices, IsEmpty());
    EXPECT_EQ(made().board.getUnits(), "mm");
}

TEST_F(IdxBoardTest, EachLocationIsAViaOfItsOwnWithItsName) {
    EDAVia via;
    via.setName("A");
    via.setDiameter(0.5);
    via.setCentre(1.0, 2.0);
    via.setHoleType("VIA");
    via.setPlated(true);
    via.addInstance("B", 3.0, 4.0);
    via.addInstance("C", 5.0, 6.0);
    design.addVia(via, false);
    const IdxBoard result = made();
    EXPECT_EQ(result.board.numVias(0), 3u);
    EXPECT_EQ(result.board.numVias(1), 3u);
    const auto last = result.board.endVias() - 1;
    EXPECT_EQ(last->getName(), "C");
    EXPECT_EQ(last->getXCentre(), 5.0);
    EXPECT_EQ(last->getYCentre(), 6.0);
    EXPECT_EQ(last->getDiameter(), 0.5);
    EXPECT_TRUE(last->isPlated());
    EXPECT_THAT(result.notices, IsEmpty());
}

TEST_F(IdxBoardTest, WhatHolesLoseIsTold) {
    EDAVia via;
    via.setHoleType("MTG");
    via.setPlatingStyle("FILLED");
    via.setLayers("1", "2");
    via.getOutline() = test::outline("0,0 1,0 1,1 0,0");
    via.addInstance("", 3.0, 4.0);
    design.addVia(via, false);
    EXPECT_THAT(made().notices,
                ElementsAre("2 holes that are not round are written, but eda does not read them back",
                            "2 holes of other types become vias",
                            "2 holes lose their layers, plating thickness, fill or heights",
                            "2 holes lose their kinds of plating and are not plated now"));
}

// Angles.

TEST_F(IdxBoardTest, AnAngleWithoutOrientationStays) {
    for (const char *side : {"TOP", "BOTTOM"}) {
        EDAComponentPlacement placed = placement("P", side);
        placed.setAngle(30.0);
        EXPECT_EQ(angleWithoutOrientation(placed), 30.0);
    }
}

// The place is the same when the angle that is seen is the same.
TEST_F(IdxBoardTest, AnOrientationBecomesTheAngleOfThePlaceItStandsIn) {
    const double c = 0.8660254037844387, s = 0.5;
    const struct {
        const char *side;
        double xx, xy, yx, yy, angle;
    } cases[] = {{"TOP", c, -s, s, c, 30.0},     {"TOP", 0, 1, -1, 0, 270.0},  {"BOTTOM", -c, s, s, c, 30.0},
                 {"BOTTOM", -1, 0, 0, 1, 0.0},   {"BOTTOM", 0, 1, 1, 0, 90.0}, {"BOTTOM", 1, 0, 0, -1, 180.0},
                 {"BOTTOM", 0, -1, -1, 0, 270.0}};
    for (const auto &one : cases) {
        EDAComponentPlacement placed = placement("P", one.side), plain = placement("P", one.side);
        placed.setOrientation(one.xx, one.xy, one.yx, one.yy);
        plain.setAngle(angleWithoutOrientation(placed));
        EXPECT_NEAR(plain.getAngle(false), one.angle, 1e-9);
        EXPECT_NEAR(plain.getAngle(true), placed.getAngle(true), 1e-9);
    }
}

TEST_F(IdxBoardTest, PlacementsHaveNoOrientationInEitherFormat) {
    addPart("P");
    EDAComponentPlacement placed = placement("P", "BOTTOM");
    placed.setOrientation(0, 1, 1, 0);
    place(placed);
    for (const EDABoard &board : {made().board, EDATool::makeIdfBoard(design, "").board}) {
        double xx = 0, xy = 0, yx = 0, yy = 0;
        EXPECT_FALSE(board.beginPlacements()->getOrientation(xx, xy, yx, yy));
        EXPECT_EQ(board.beginPlacements()->getAngle(true), 270.0);
    }
}

// What placements and components lose.

TEST_F(IdxBoardTest, WhatPlacementsLoseIsTold) {
    addPart("P");
    addPart("NOWHERE");
    EDAComponentPlacement placed = placement("P");
    place(placed);
    placed.setOffset(0.5);
    placed.setStatus("UNPLACED");
    placed.setHeatsink(EDAHeatsink());
    place(placed);
    place(placement("MISSING"));
    placed = placement("P");
    placed.setStatus("placed");
    place(placed);
    const IdxBoard result = made();
    EXPECT_EQ(result.board.numComponentPlacements(), 3u);
    EXPECT_THAT(result.notices,
                ElementsAre("1 placement without a component is left out",
                            "1 component that is placed nowhere is written, but does not come back",
                            "1 placement loses its mounting offset",
                            "1 placement loses its status and counts as placed", "1 heatsink is left out"));
}

TEST_F(IdxBoardTest, WhatComponentsLoseIsTold) {
    EDAComponent part("MECHANICAL");
    part.setName("P");
    part.setManufacturer("Maker");
    part.addProperty("POWER_OPR", "5");
    part.addProperty("COLOUR", "red");
    part.getOutline() = test::outline("0,0 4,0 4,4 0,4 0,0", "1,1 2,1 2,2 1,1");
    design.addComponent(part, false);
    place(placement("P"));
    const IdxBoard result = made();
    EXPECT_EQ(result.board.beginComponents()->getOutline().numInternalOutlines(), 0);
    EXPECT_THAT(result.notices,
                ElementsAre("1 cut-out of a component is left out",
                            "1 component of another type becomes ELECTRICAL",
                            "1 component loses its manufacturer", "2 properties of components are left out"));
}

TEST_F(IdxBoardTest, WhatHasNoPlaceInADocumentIsTold) {
    EDAOutline area = test::outline("0,0 1,0 1,1 0,0");
    design.addRouteOutline(area);
    design.addPlacementOutline(area);
    design.addLayer(EDABoardLayer(true));
    design.addWirebond(EDAWirebond());
    design.setConductorMaterial("Copper");
    EXPECT_THAT(made().notices,
                ElementsAre("1 layer is left out", "1 wirebond is left out", "1 route outline is left out",
                            "1 placement outline is left out", "1 material of the board is left out"));
}

TEST_F(IdxBoardTest, KeepoutsKeepTheirKindAndSide) {
    for (const char *type : {"PLACE_KEEPOUT", "Route", "Other"}) {
        EDAKeepout keepout(type);
        keepout.setBoardSide("BOTTOM");
        keepout.setName(std::string("of ") + type);
        keepout.setHeight(1.5);
        design.addKeepout(keepout);
    }
    const IdxBoard result = made();
    EXPECT_THAT(result.notices, IsEmpty());
    const EDAKeepout &last = *(result.board.endKeepouts() - 1);
    EXPECT_EQ(last.getType(), "Other");
    EXPECT_EQ(last.getName(), "of Other");
    EXPECT_EQ(last.getHeight(), 1.5);
    EXPECT_TRUE(last.isOnBoardBottom());
}

TEST_F(IdxBoardTest, WhatKeepoutsLoseIsTold) {
    EDAKeepout keepout("Route");
    keepout.getOutline() = test::outline("0,0 4,0 4,4 0,4 0,0", "1,1 2,1 2,2 1,1");
    design.addKeepout(keepout);
    EXPECT_THAT(made().notices, ElementsAre("1 cut-out of a keepout is left out",
                                            "1 keepout of no known side holds for both now"));
}

// Outlines and numbers.

TEST_F(IdxBoardTest, ArcsAreToldButNotCircles) {
    design.getOutline() = test::outline("0,0 40,0 40,30@45 0,30@45 0,0");
    design.getOutline().addInternalOutline(test::hole("20,20 24,20@180 20,20@180"));
    design.getOutline().addInternalOutline(test::hole("5,5 6,5@360"));
    EXPECT_THAT(made().notices, ElementsAre("2 arcs become straight edges"));
}

// The writer's tolerance is a length.
TEST_F(IdxBoardTest, WhetherACircleStaysOneGoesByTheUnitsThatAreWritten) {
    design.setUnits("in");
    design.getOutline() = test::outline("20,20 24,20@180 20,20@179.999");
    EXPECT_THAT(made().notices, IsEmpty());
    EXPECT_THAT(made("THOU").notices, ElementsAre("2 arcs become straight edges"));
}

TEST_F(IdxBoardTest, CutOutsWithinCutOutsAreTold) {
    EDAOutline cutOut = test::hole("1,1 9,1 9,9 1,1");
    cutOut.addInternalOutline(test::hole("4,2 5,2 5,3 4,2"));
    design.getOutline() = test::outline("0,0 10,0 10,10 0,0");
    design.getOutline().addInternalOutline(cutOut);
    EXPECT_THAT(made().notices, ElementsAre("1 cut-out within a cut-out is left out"));
}

TEST_F(IdxBoardTest, PlacesOfMoreThanSixDigitsAreTold) {
    addPart("P");
    EDAComponentPlacement placed = placement("P");
    placed.setLocation(123.456, -0.123456);
    place(placed);
    EXPECT_THAT(made().notices, IsEmpty());
    placed.setLocation(123.4567, 0.0);
    place(placed);
    EXPECT_THAT(made().notices, ElementsAre("1 place of a placement or hole is rounded to six digits"));
}

TEST_F(IdxBoardTest, NumbersThatAreNotFiniteBecomeZero) {
    design.setThickness(std::numeric_limits<double>::infinity());
    const IdxBoard result = made();
    EXPECT_EQ(result.board.getThickness(), 0.0);
    EXPECT_THAT(result.notices, ElementsAre("1 number that is not finite becomes 0"));
}

TEST_F(IdxBoardTest, CharactersThatXmlDoesNotAllowAreTold) {
    design.setName("a\x01"
                   "b");
    EXPECT_THAT(made().notices, ElementsAre("1 text loses characters that XML does not allow"));
    for (const char *name : {"a\tb<&>\xC3\xA9", "a\n", "\xF0\x9F\x98\x80"}) {
        design.setName(name);
        EXPECT_THAT(made().notices, IsEmpty());
    }
    for (const char *name : {"a\xEF\xBF\xBE", "a\xEF\xBF\xBF", "a\xFF", "a\xC3"}) {
        design.setName(name);
        EXPECT_THAT(made().notices, ElementsAre("1 text loses characters that XML does not allow"));
    }
}

// Units.

TEST_F(IdxBoardTest, ComponentsTakeTheUnitsOfTheBoard) {
    addPart("P", "in");
    place(placement("P"));
    const IdxBoard result = made();
    EXPECT_THAT(result.notices, IsEmpty());
    EXPECT_NEAR(result.board.beginComponents()->getHeight(), 50.8, 1e-9);
    EXPECT_NEAR(result.board.beginComponents()->getOutline().getBound().getXHigh(), 101.6, 1e-9);
    EXPECT_EQ(result.board.beginComponents()->getUnits(), "mm");
}

TEST_F(IdxBoardTest, LengthsAreConvertedToTheUnitsAskedFor) {
    addPart("P");
    place(placement("P"));
    design.setThickness(25.4);
    design.getOutline() = test::outline("0,0 25.4,0 25.4,25.4 0,0");
    const IdxBoard result = made("THOU");
    EXPECT_THAT(result.notices, IsEmpty());
    EXPECT_EQ(result.board.getUnits(), "THOU");
    EXPECT_NEAR(result.board.getThickness(), 1000.0, 1e-9);
    EXPECT_NEAR(result.board.getOutline().getBound().getXHigh(), 1000.0, 1e-9);
    EXPECT_NEAR(result.board.beginComponents()->getHeight(), 78.740157, 1e-6);
}

TEST_F(IdxBoardTest, ABoardWithoutUnitsIsTakenAsMillimetresOrAsAskedFor) {
    design.setUnits("");
    design.setThickness(2.0);
    EXPECT_THAT(made().notices, ElementsAre("the board names no units; its lengths are taken to be in mm"));
    EXPECT_EQ(made().board.getUnits(), "mm");
    EXPECT_EQ(made("THOU").board.getUnits(), "THOU");
    EXPECT_EQ(made("THOU").board.getThickness(), 2.0);
}

TEST_F(IdxBoardTest, UnknownUnitsAreRepeatedUnlessOthersAreAskedFor) {
    design.setUnits("FURLONG");
    EXPECT_THAT(made().notices, ElementsAre("the units 'FURLONG' are unknown; the document repeats them"));
    EXPECT_EQ(made().board.getUnits(), "FURLONG");
    EXPECT_THAT(made("MM").notices,
                ElementsAre("the units 'FURLONG' are unknown; its lengths are taken to be in MM"));
    EXPECT_EQ(made("MM").board.getUnits(), "MM");
}

TEST_F(IdxBoardTest, UnknownUnitsOfAComponentAreTold) {
    addPart("P", "ELL");
    place(placement("P"));
    const IdxBoard result = made();
    EXPECT_THAT(result.notices, ElementsAre("1 component of unknown units keeps its numbers as they are"));
    EXPECT_EQ(result.board.beginComponents()->getHeight(), 2.0);
}

} // namespace
