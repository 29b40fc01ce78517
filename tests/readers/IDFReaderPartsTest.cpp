// Component shapes, placements, drilled holes.
#include "readers/IDFTestSupport.h"

#include <cmath>

namespace {

using namespace IDFTest;

using IDFComponent = IDFReaderTest;
using IDFPlacement = IDFReaderTest;
using IDFDrilledHoles = IDFReaderTest;

const std::string square = "0 0 0 0\n0 4 0 0\n0 4 4 0\n0 0 4 0\n0 0 0 0\n";
const std::vector<StoredPoint> openSquare = {{0, 0, 0}, {4, 0, 0}, {4, 4, 0}, {0, 4, 0}};

std::string electrical(const std::string &rows) { return ".ELECTRICAL\n" + rows + ".END_ELECTRICAL\n"; }
std::string placements(const std::string &rows) { return ".PLACEMENT\n" + rows + ".END_PLACEMENT\n"; }
std::string holes(const std::string &rows) { return ".DRILLED_HOLES\n" + rows + ".END_DRILLED_HOLES\n"; }

std::vector<std::pair<std::string, std::string>> properties(const EDA::EDAComponent &component) {
    return {component.beginProperties(), component.endProperties()};
}

TEST_F(IDFComponent, HasNamePartNumberUnitsAndHeight) {
    readWell(libraryHeader + electrical("QFP PN1 MM 1.5\n" + square));
    ASSERT_EQ(board().numComponents(), 1u);
    const EDA::EDAComponent &component = *board().beginComponents();
    EXPECT_EQ(component.getType(), "ELECTRICAL");
    EXPECT_EQ(component.getName(), "QFP");
    EXPECT_EQ(component.getPartNumber(), "PN1");
    EXPECT_EQ(component.getUnits(), "MM");
    EXPECT_EQ(component.getHeight(), 1.5);
    EXPECT_EQ(stored(component.getOutline()), openSquare);
}

TEST_F(IDFComponent, MechanicalSectionGivesTheType) {
    readWell(libraryHeader + ".mechanical\nHS PN MM 9\n" + square + ".end_mechanical\n" +
             electrical("A B MM 1\n"));
    ASSERT_EQ(board().numComponents(), 2u);
    EXPECT_EQ(board().beginComponents()->getType(), "MECHANICAL");
}

TEST_F(IDFComponent, PartNumberWithBlanksIsJoinedByOneBlank) {
    readWell(libraryHeader + electrical("R1   10  K\tTHOU 50\n") + electrical("R1 a b c d MM 2\n"));
    ASSERT_EQ(board().numComponents(), 2u);
    EXPECT_EQ(board().beginComponents()->getPartNumber(), "10 K");
    EXPECT_EQ(board().beginComponents()->getUnits(), "THOU");
    EXPECT_EQ(board().beginComponents()->getHeight(), 50.0);
    EXPECT_EQ((board().beginComponents() + 1)->getPartNumber(), "a b c d");
    EXPECT_EQ((board().beginComponents() + 1)->getUnits(), "MM");
}

TEST_F(IDFComponent, ThreeEntriesHaveNoPartNumber) {
    readWell(libraryHeader + electrical("R1 THOU 50\n"));
    EXPECT_EQ(board().beginComponents()->getName(), "R1");
    EXPECT_EQ(board().beginComponents()->getPartNumber(), "");
    EXPECT_EQ(board().beginComponents()->getUnits(), "THOU");
    EXPECT_EQ(board().beginComponents()->getHeight(), 50.0);
}

TEST_F(IDFComponent, FewerEntriesFailTheRead) {
    readBadly(libraryHeader + electrical("R1 50\n"),
              "IDF Component Outline record 2 has incorrect number of entries: <R1 50>");
    readBadly(libraryHeader + electrical(""),
              "IDF Component Outline record 2 has incorrect number of entries: <.END_ELECTRICAL>");
    EXPECT_EQ(board().numComponents(), 0u);
}

TEST_F(IDFComponent, NothingBehindTheSectionNameAddsNone) {
    readWell(libraryHeader + ".ELECTRICAL\n");
    EXPECT_EQ(board().numComponents(), 0u);
}

TEST_F(IDFComponent, WithoutPointsHasAnEmptyOutline) {
    readWell(libraryHeader + electrical("QFP PN1 MM 1.5\n"));
    ASSERT_EQ(board().numComponents(), 1u);
    EXPECT_TRUE(board().beginComponents()->getOutline().empty());
}

TEST_F(IDFComponent, LoopLabelSaysNothing) {
    readWell(libraryHeader + electrical("QFP PN1 MM 1.5\n1 0 0 0\n1 4 0 0\n0 4 4 0\n-3 0 4 0\nx 0 0 0\n"));
    EXPECT_EQ(stored(board().beginComponents()->getOutline()), openSquare);
    EXPECT_EQ(board().beginComponents()->getOutline().numInternalOutlines(), 0);
}

TEST_F(IDFComponent, PropertiesAreKeptInOrder) {
    readWell(libraryHeader + electrical("QFP PN1 MM 1.5\nPROP POWER_OPR 100\n" + square +
                                        "prop TOLERANCE \"5 %\"\nPROP POWER_OPR 7\n"));
    EXPECT_EQ(properties(*board().beginComponents()),
              (std::vector<std::pair<std::string, std::string>>{
                  {"POWER_OPR", "100"}, {"TOLERANCE", "5 %"}, {"POWER_OPR", "7"}}));
}

TEST_F(IDFComponent, PropertyOfFourEntriesIsAPoint) {
    readWell(libraryHeader + electrical("QFP PN1 MM 1.5\nPROP 1 2 0\nPROP A\nOTHER A B\n"));
    EXPECT_TRUE(properties(*board().beginComponents()).empty());
    readWell(libraryHeader + electrical("QFP PN1 MM 1.5\nPROP 1 2 0\n0 4 0 0\n0 4 4 0\n"));
    EXPECT_EQ(stored((board().beginComponents() + 1)->getOutline()),
              (std::vector<StoredPoint>{{1, 2, 0}, {4, 0, 0}, {4, 4, 0}}));
}

TEST_F(IDFComponent, EqualDefinitionsAreAllKeptUnderTheirName) {
    readWell(libraryHeader + electrical("QFP PN1 MM 1\n" + square) + electrical("QFP PN1 MM 2\n" + square));
    ASSERT_EQ(board().numComponents(), 2u);
    EXPECT_EQ((board().beginComponents() + 1)->getName(), "QFP");
}

TEST_F(IDFComponent, EndOfTheOtherKindDoesNotEndIt) {
    readWell(libraryHeader + ".ELECTRICAL\nQFP PN1 MM 1\n.END_MECHANICAL\n" + square + ".END_ELECTRICAL\n");
    EXPECT_EQ(stored(board().beginComponents()->getOutline()), openSquare);
}

TEST_F(IDFPlacement, SixEntriesOfVersion3) {
    readWell(boardHeader + placements("QFP PN1 U1\n1.5 -2.5 0.25 30 BOTTOM ECAD\n"));
    ASSERT_EQ(board().numComponentPlacements(), 1u);
    const EDA::EDAComponentPlacement &placement = *board().beginPlacements();
    EXPECT_EQ(placement.getName(), "QFP");
    EXPECT_EQ(placement.getPartNumber(), "PN1");
    EXPECT_EQ(placement.getReferenceDesignator(), "U1");
    EXPECT_EQ(placement.getXLocation(), 1.5);
    EXPECT_EQ(placement.getYLocation(), -2.5);
    EXPECT_EQ(placement.getOffset(), 0.25);
    EXPECT_EQ(placement.getAngle(false), 30.0);
    EXPECT_EQ(placement.getBoardSide(), "BOTTOM");
    EXPECT_EQ(placement.getStatus(), "ECAD");
}

TEST_F(IDFPlacement, FiveEntriesHaveNoOffsetInAnyVersion) {
    for (const std::string &header : {boardHeader, boardHeader2}) {
        EDA::IDFReader fresh;
        EXPECT_TRUE(
            fresh.readFile(folder.write("b.emn", header + placements("QFP PN1 U1\n1 2 30 TOP PLACED\n"))));
        const EDA::EDAComponentPlacement &placement = *fresh.getBoard().beginPlacements();
        EXPECT_EQ(placement.getYLocation(), 2.0);
        EXPECT_EQ(placement.getOffset(), 0.0);
        EXPECT_EQ(placement.getAngle(false), 30.0);
        EXPECT_EQ(placement.getBoardSide(), "TOP");
        EXPECT_EQ(placement.getStatus(), "PLACED");
    }
}

TEST_F(IDFPlacement, SixEntriesOfVersion2) {
    readWell(boardHeader2 + placements("QFP PN1 U1\n1 2 3 30 TOP PLACED\n"));
    EXPECT_EQ(board().beginPlacements()->getOffset(), 3.0);
    EXPECT_EQ(board().beginPlacements()->getAngle(false), 30.0);
}

TEST_F(IDFPlacement, RowOfAnotherSizeFailsTheRead) {
    for (const std::string &header : {boardHeader, boardHeader2})
        readBadly(header + placements("QFP PN1 U1\n1 2 30 TOP\n"),
                  "IDF Component Placement record part 2 has incorrect number of entries: <1 2 30 TOP>");
    readBadly(boardHeader + placements("QFP PN1 U1\n1 2 3 4 5 6 7\n"),
              "IDF Component Placement record part 2 has incorrect number of entries: <1 2 3 4 5 6 7>");
    EXPECT_EQ(board().numComponentPlacements(), 0u);
}

TEST_F(IDFPlacement, OtherVersionsSkipTheSecondRow) {
    readWell(headerOfVersion("4") + placements("QFP PN1 U1\n1 2 30 BOTTOM PLACED\nQFP PN1 U2\nx\n"));
    ASSERT_EQ(board().numComponentPlacements(), 2u);
    const EDA::EDAComponentPlacement &placement = *board().beginPlacements();
    EXPECT_EQ(placement.getReferenceDesignator(), "U1");
    EXPECT_EQ(placement.getXLocation(), 0.0);
    EXPECT_EQ(placement.getBoardSide(), "");
}

TEST_F(IDFPlacement, FirstRowNeedsTwoEntries) {
    readBadly(boardHeader + placements("QFP\n1 2 30 TOP PLACED\n"),
              "IDF Component Placement record part 1 has incorrect number of entries: <QFP>");
}

TEST_F(IDFPlacement, OnlyThreeEntriesHaveAPartNumber) {
    readWell(boardHeader + placements("QFP U1\n1 2 0 TOP PLACED\nQFP 10 K U2\n1 2 0 TOP PLACED\n"));
    ASSERT_EQ(board().numComponentPlacements(), 2u);
    EXPECT_EQ(board().beginPlacements()->getReferenceDesignator(), "U1");
    EXPECT_EQ(board().beginPlacements()->getPartNumber(), "");
    EXPECT_EQ((board().beginPlacements() + 1)->getReferenceDesignator(), "U2");
    EXPECT_EQ((board().beginPlacements() + 1)->getPartNumber(), "");
}

TEST_F(IDFPlacement, NegativeAngleIsRaised) {
    readWell(boardHeader + placements("A B U1\n0 0 0 -90 TOP PLACED\nA B U2\n0 0 0 -450 TOP PLACED\n"
                                      "A B U3\n0 0 0 450 TOP PLACED\nA B U4\n0 0 0 360 TOP PLACED\n"));
    std::vector<double> angles;
    for (auto placement = board().beginPlacements(); placement != board().endPlacements(); ++placement)
        angles.push_back(placement->getAngle(false));
    EXPECT_EQ(angles, (std::vector<double>{270, 270, 450, 360}));
}

TEST_F(IDFPlacement, HugeAnglesAndNumbersEnd) {
    readWell(
        boardHeader +
        placements("A B U1\n1e400 -inf nan -1e300 TOP PLACED\nA B U2\n1e300 -1e300 1 -1e15 TOP PLACED\n"));
    for (auto placement = board().beginPlacements(); placement != board().endPlacements(); ++placement) {
        EXPECT_TRUE(std::isfinite(placement->getXLocation()) && std::isfinite(placement->getYLocation()));
        EXPECT_TRUE(std::isfinite(placement->getOffset()));
        EXPECT_GE(placement->getAngle(false), 0.0);
        EXPECT_LE(placement->getAngle(false), 360.0);
    }
    EXPECT_EQ(board().beginPlacements()->getXLocation(), 0.0);
    EXPECT_EQ((board().beginPlacements() + 1)->getXLocation(), 1e300);
}

TEST_F(IDFPlacement, OffsetWithTrailingTextIsNone) {
    readWell(boardHeader + placements("A B U1\n1mm 2mm 3mm 4deg TOP PLACED\n"));
    EXPECT_EQ(board().beginPlacements()->getXLocation(), 1.0);
    EXPECT_EQ(board().beginPlacements()->getOffset(), 0.0);
    EXPECT_EQ(board().beginPlacements()->getAngle(false), 4.0);
}

TEST_F(IDFPlacement, RowsThatEndBehindTheFirstRowDropThePlacement) {
    readWell(boardHeader + ".PLACEMENT\nA B U1\n0 0 0 0 TOP PLACED\nA B U2\n");
    EXPECT_EQ(board().numComponentPlacements(), 1u);
}

TEST_F(IDFPlacement, BareSectionNameAtTheEndAddsNone) {
    readWell(boardHeader + ".PLACEMENT\n");
    readWell(boardHeader + placements(""));
    EXPECT_EQ(board().numComponentPlacements(), 0u);
}

TEST_F(IDFPlacement, BlankAndCommentRowsStandBetween) {
    readWell(boardHeader + ".PLACEMENT\n\nA B U1\n# where\n   \n0 0 0 0 TOP PLACED\n\n.end_placement\n");
    EXPECT_EQ(board().numComponentPlacements(), 1u);
}

TEST_F(IDFDrilledHoles, SevenEntriesOfVersion3) {
    readWell(boardHeader + holes("0.8 1.5 -2 PTH U7 PIN ECAD\n"));
    ASSERT_EQ(board().numVias(0), 1u);
    const EDA::EDAVia &via = *board().beginVias();
    EXPECT_EQ(via.getDiameter(), 0.8);
    EXPECT_EQ(via.getXCentre(), 1.5);
    EXPECT_EQ(via.getYCentre(), -2.0);
    EXPECT_EQ(via.getPlatingStyle(), "PTH");
    EXPECT_EQ(via.getAssociatedPart(), "U7");
    EXPECT_EQ(via.getHoleType(), "PIN");
    EXPECT_EQ(via.getName(), "");
}

TEST_F(IDFDrilledHoles, FiveEntriesHaveNoHoleType) {
    readWell(boardHeader + holes("0.8 1 2 NPTH BOARD\n"));
    readWell(boardHeader2 + holes("0.9 1 2 NPTH BOARD\n"));
    ASSERT_EQ(board().numVias(0), 2u);
    EXPECT_EQ(board().beginVias()->getHoleType(), "Other");
    EXPECT_EQ((board().beginVias() + 1)->getHoleType(), "Other");
}

TEST_F(IDFDrilledHoles, OtherSizesFailTheRead) {
    readBadly(boardHeader + holes("0.8 1 2 PTH BOARD VIA\n"),
              "IDF Drilled Holes record part 1 has incorrect number of entries: <0.8 1 2 PTH BOARD VIA>");
    readBadly(
        boardHeader2 + holes("0.8 1 2 PTH BOARD VIA ECAD\n"),
        "IDF Drilled Holes record part 1 has incorrect number of entries: <0.8 1 2 PTH BOARD VIA ECAD>");
    EXPECT_EQ(board().numVias(0), 0u);
}

TEST_F(IDFDrilledHoles, OtherVersionsAreNotChecked) {
    readWell(headerOfVersion("4") + holes("0.8\n0.9 1 2 PTH BOARD VIA ECAD x y\n"));
    ASSERT_EQ(board().numVias(0), 2u);
    EXPECT_EQ(board().beginVias()->getXCentre(), 0.0);
    EXPECT_EQ(board().beginVias()->getAssociatedPart(), "");
    EXPECT_EQ((board().beginVias() + 1)->getHoleType(), "Other");
}

TEST_F(IDFDrilledHoles, EqualHolesAreInstancesOfTheFirst) {
    readWell(boardHeader +
             holes("0.3 1 1 PTH BOARD VIA ECAD\n0.4 9 9 PTH BOARD VIA ECAD\n0.3 2 2 PTH BOARD VIA ECAD\n"
                   "0.3 3 3 PTH BOARD VIA MCAD\n"));
    ASSERT_EQ(board().numVias(0), 2u);
    EXPECT_EQ(board().numVias(1), 4u);
    const EDA::EDAVia &via = *board().beginVias();
    ASSERT_EQ(via.numInstances(), 2u);
    EXPECT_EQ(via.getInstanceName(0), "");
    EXPECT_EQ(via.getInstanceXCentre(0), 2.0);
    EXPECT_EQ(via.getInstanceYCentre(1), 3.0);
}

TEST_F(IDFDrilledHoles, HolesOfAPartAreNeverInstances) {
    readWell(boardHeader +
             holes("0.3 1 1 PTH U1 PIN ECAD\n0.3 2 2 PTH U1 PIN ECAD\n0.3 2 2 PTH board PIN ECAD\n"
                   "0.3 2 2 PTH board PIN ECAD\n"));
    EXPECT_EQ(board().numVias(0), 4u);
}

TEST_F(IDFDrilledHoles, InstancesAreFoundAcrossFiles) {
    readWell(boardHeader + holes("0.3 1 1 PTH BOARD VIA ECAD\n"));
    readWell(boardHeader + holes("0.3 2 2 PTH BOARD VIA ECAD\n"));
    EXPECT_EQ(board().numVias(0), 1u);
    EXPECT_EQ(board().numVias(1), 2u);
}

TEST_F(IDFDrilledHoles, SectionMayBeEmptyOrUnended) {
    readWell(boardHeader + holes("") + ".DRILLED_HOLES\n0.3 1 1 PTH BOARD VIA ECAD\n");
    EXPECT_EQ(board().numVias(1), 1u);
    readWell(boardHeader + ".DRILLED_HOLES\n");
}

} // namespace
