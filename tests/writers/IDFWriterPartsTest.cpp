// Drilled holes, placements and component shapes as rows.
#include "IDFWriterSupport.h"

namespace {

using namespace IDFTest;
using EDA::EDAComponent;
using EDA::EDAComponentPlacement;
using EDA::EDAVia;
using EDA::test::addPoints;
using testing::HasSubstr;

class IDFWriterParts : public IDFWriterTest {
protected:
    EDAComponentPlacement placed() {
        EDAComponentPlacement placement;
        placement.setBoardSide("TOP");
        placement.setStatus("PLACED");
        return placement;
    }
    // The second line of the only placement.
    std::string location(EDAComponentPlacement placement) {
        board = EDA::EDABoard();
        board.addComponentPlacement(placement);
        const std::string rows = placementRows();
        return rows.substr(rows.find('\n') + 1);
    }
    // The library's rows behind its header.
    std::string components() const {
        const std::string text = libraryText();
        return text.substr(text.find(".END_HEADER\n") + 12);
    }
    // The row of the only property.
    std::string property(const std::string &key, const std::string &value) {
        board = EDA::EDABoard();
        addComponent("R").addProperty(key, value);
        return section(libraryText(), "\"R\" ", ".END_ELECTRICAL");
    }
};

// Drilled holes.

TEST_F(IDFWriterParts, AHoleIsARowOfSevenFields) {
    EDAVia via;
    via.setDiameter(0.8);
    via.setCentre(12.5, -3.0);
    via.setPlatingStyle("PTH");
    via.setAssociatedPart("U1");
    via.setHoleType("PIN");
    board.addVia(via, false);
    EXPECT_EQ(holeRows(), "0.8 12.5 -3 \"PTH\" \"U1\" \"PIN\" UNOWNED\n");
}

TEST_F(IDFWriterParts, AHoleOfDefaultsHasItsDefaults) {
    board.addVia(EDAVia(), false);
    EXPECT_EQ(holeRows(), "0 0 0 \"\" \"BOARD\" \"Other\" UNOWNED\n");
}

TEST_F(IDFWriterParts, AViaWithThreeInstancesIsOneRow) {
    EDAVia via;
    via.setCentre(1.0, 2.0);
    for (int i = 0; i < 3; ++i)
        via.addInstance("", 5.0 + i, 6.0);
    board.addVia(via, false);
    EXPECT_EQ(holeRows(), "0 1 2 \"\" \"BOARD\" \"Other\" UNOWNED\n");
}

TEST_F(IDFWriterParts, HolesStandInTheirOrder) {
    for (const double diameter : {3.0, 1.0, 2.0}) {
        EDAVia via;
        via.setDiameter(diameter);
        board.addVia(via, false);
    }
    EXPECT_THAT(holeRows(), testing::MatchesRegex("3 .*\n1 .*\n2 .*\n"));
}

// Placements.

TEST_F(IDFWriterParts, APlacementIsTwoRows) {
    EDAComponentPlacement placement = placed();
    placement.setName("QFP 64");
    placement.setPartNumber("10 K");
    placement.setReferenceDesignator("R 1");
    placement.setLocation(1.5, -2.25);
    placement.setOffset(0.1);
    placement.setAngle(-90.0);
    board.addComponentPlacement(placement);
    EXPECT_EQ(placementRows(), "\"QFP 64\" \"10 K\" \"R 1\"\n1.5 -2.25 0.1 270 TOP PLACED\n");
}

TEST_F(IDFWriterParts, SidesAreMappedExactly) {
    for (const auto &[side, word] :
         {std::pair{"Top", "TOP"}, {"Bottom", "BOTTOM"}, {"top", "top"}, {"BOTTOM", "BOTTOM"}}) {
        EDAComponentPlacement placement = placed();
        placement.setBoardSide(side);
        EXPECT_EQ(location(placement), std::string("0 0 0 0 ") + word + " PLACED\n");
    }
}

TEST_F(IDFWriterParts, TheAngleIsNotMirroredOnTheBottom) {
    EDAComponentPlacement placement = placed();
    placement.setBoardSide("Bottom");
    placement.setAngle(30.0);
    EXPECT_EQ(location(placement), "0 0 0 30 BOTTOM PLACED\n");
}

TEST_F(IDFWriterParts, AnOrientationGivesTheAngle) {
    EDAComponentPlacement placement = placed();
    placement.setAngle(30.0);
    placement.setOrientation(0.0, -1.0, 1.0, 0.0);
    EXPECT_EQ(location(placement), "0 0 0 90 TOP PLACED\n");
}

TEST_F(IDFWriterParts, EmptySideAndStatusLeaveTheirPlacesEmpty) {
    EXPECT_EQ(location(EDAComponentPlacement()), "0 0 0 0  \n");
}

TEST_F(IDFWriterParts, AStatusOfItsOwnStays) {
    EDAComponentPlacement placement = placed();
    placement.setStatus("UNPLACED");
    EXPECT_EQ(location(placement), "0 0 0 0 TOP UNPLACED\n");
}

// Components.

TEST_F(IDFWriterParts, AComponentHasItsRecordAndItsOutline) {
    EDAComponent &part = addComponent("QFP 64", "MECHANICAL");
    part.setHeight(1.25);
    addPoints(part.getOutline(), 0, "0,0 4,0 4,2 0,2");
    EXPECT_EQ(components(), ".MECHANICAL\n\"QFP 64\" \"P1\" MM 1.25\n"
                            "0 0 0 0\n0 4 0 0\n0 4 2 0\n0 0 2 0\n0 0 0 0\n.END_MECHANICAL\n");
}

TEST_F(IDFWriterParts, ComponentsStandInTheirOrderAndRepeat) {
    for (const char *name : {"B", "A", "B"})
        addComponent(name);
    EXPECT_EQ(components(), ".ELECTRICAL\n\"B\" \"P1\" MM 0\n.END_ELECTRICAL\n"
                            ".ELECTRICAL\n\"A\" \"P1\" MM 0\n.END_ELECTRICAL\n"
                            ".ELECTRICAL\n\"B\" \"P1\" MM 0\n.END_ELECTRICAL\n");
}

TEST_F(IDFWriterParts, OtherTypesAndEmptyUnitsStandAsTheyAre) {
    addComponent("A", "Thermal").setUnits("");
    EXPECT_EQ(components(), ".Thermal\n\"A\" \"P1\"  0\n.END_Thermal\n");
}

TEST_F(IDFWriterParts, AComponentsCutOutsAreLoops) {
    EDAComponent &part = addComponent("A");
    addPoints(part.getOutline(), 0, "0,0 4,0@360");
    part.getOutline().addInternalOutline(EDA::test::hole("0,0 1,0@360"));
    EXPECT_THAT(components(), HasSubstr("0 4 0 360\n1 0 0 0\n1 1 0 360\n.END_ELECTRICAL\n"));
}

TEST_F(IDFWriterParts, APropertyWithABlankStandsInQuotes) {
    EXPECT_EQ(property("TOLERANCE", "a b"), "PROP TOLERANCE \"a b\"\n");
}
TEST_F(IDFWriterParts, APropertyWithoutABlankStandsBare) {
    EXPECT_EQ(property("TOLERANCE", "ab"), "PROP TOLERANCE ab\n");
    EXPECT_EQ(property("SIZE", "12\""), "PROP SIZE 12\"\n");
    EXPECT_EQ(property("NOTHING", ""), "PROP NOTHING \n");
}
TEST_F(IDFWriterParts, TheKeyIsNeverQuoted) { EXPECT_EQ(property("a b", "c"), "PROP a b c\n"); }
TEST_F(IDFWriterParts, APropertyCannotBreakItsRow) {
    EXPECT_EQ(property("A", "x\ty"), "PROP A \"x y\"\n");
    EXPECT_EQ(property("A", "x\n0"), "PROP A \"x 0\"\n");
    EXPECT_EQ(property("A", "say \"no\""), "PROP A \"say 'no'\"\n");
    EXPECT_EQ(property("A\nB", "x"), "PROP A B x\n");
}
TEST_F(IDFWriterParts, PropertiesStandInTheirOrderAndRepeat) {
    EDAComponent &part = addComponent("R");
    for (const char *value : {"2", "1", "2"})
        part.addProperty("POWER_OPR", value);
    EXPECT_THAT(libraryText(), HasSubstr("PROP POWER_OPR 2\nPROP POWER_OPR 1\nPROP POWER_OPR 2\n.END"));
}

} // namespace
