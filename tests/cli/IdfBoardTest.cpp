// Boards of other formats made ready for IDF files: what becomes of each thing, and what is told.
#include "IdfBoard.h"
#include "Failure.h"
#include "IdfOutput.h"
#include "IdfUnits.h"
#include "readers/IDFReader.h"
#include "support/Outlines.h"
#include "support/TempFolder.h"

#include <gmock/gmock.h>

#include <limits>

namespace {

using namespace EDA;
using EDA::test::addPoints;
using EDATool::IdfBoard;
using EDATool::makeIdfBoard;
using testing::ElementsAre;
using testing::IsEmpty;

class IdfBoardTest : public testing::Test {
protected:
    IdfBoardTest() { design.setUnits("mm"); }
    IdfBoard made() const { return makeIdfBoard(design, std::string()); }
    void addKeepout(const std::string &type, const std::string &side) {
        EDAKeepout keepout(type);
        keepout.setBoardSide(side);
        design.addKeepout(keepout);
    }
    EDABoard design;
};

TEST_F(IdfBoardTest, AnEmptyBoardLosesNothing) {
    const IdfBoard result = made();
    EXPECT_THAT(result.notices, IsEmpty());
    EXPECT_EQ(result.board.getUnits(), "MM");
}

TEST_F(IdfBoardTest, EachLocationIsAViaOfItsOwn) {
    EDAVia via;
    via.setDiameter(0.5);
    via.setCentre(1.0, 2.0);
    via.setHoleType("VIA");
    via.setPlated(true);
    via.addInstance("", 3.0, 4.0);
    via.addInstance("", 5.0, 6.0);
    design.addVia(via, false);
    const IdfBoard result = made();
    EXPECT_EQ(result.board.numVias(0), 3u);
    EXPECT_EQ(result.board.numVias(1), 3u);
    const auto last = result.board.endVias() - 1;
    EXPECT_EQ(last->getXCentre(), 5.0);
    EXPECT_EQ(last->getYCentre(), 6.0);
    EXPECT_EQ(last->getDiameter(), 0.5);
    EXPECT_EQ(last->getPlatingStyle(), "PTH");
    EXPECT_THAT(result.notices, IsEmpty());
}

TEST_F(IdfBoardTest, WordsForHolesBecomeThoseOfIdf) {
    for (const char *type :
         {"ViaTerminal", "ComponentTerminal", "PartMountingFeature", "", "tool", "Other"}) {
        EDAVia via;
        via.setHoleType(type);
        via.setAssociatedPart("");
        design.addVia(via, false);
    }
    std::vector<std::string> types;
    const IdfBoard result = made();
    for (auto via = result.board.beginVias(); via != result.board.endVias(); ++via) {
        types.push_back(via->getHoleType());
        EXPECT_EQ(via->getPlatingStyle(), "NPTH");
        EXPECT_EQ(via->getAssociatedPart(), "BOARD");
    }
    EXPECT_THAT(types, ElementsAre("VIA", "PIN", "MTG", "MTG", "TOOL", "Other"));
}

TEST_F(IdfBoardTest, DetailsOfHolesAreTold) {
    EDAVia via;
    via.setName("V1");
    via.setLayers("L1", "L2");
    addPoints(via.getOutline(), 0, "0,0 1,0 1,1");
    via.addInstance("V2", 1.0, 1.0);
    design.addVia(via, false);
    EXPECT_THAT(made().notices, ElementsAre("2 holes that are not round become round ones",
                                            "2 holes lose their layers, plating thickness, fill or heights",
                                            "2 names of holes and keepouts are left out"));
}

TEST_F(IdfBoardTest, WordsForKeepoutsBecomeThoseOfIdf) {
    for (const char *side : {"Top", "bottom", "ALL", "BOTH"})
        addKeepout("ComponentPlacement", side);
    addKeepout("Via", "");
    const IdfBoard result = made();
    std::vector<std::string> words;
    for (auto keepout = result.board.beginKeepouts(); keepout != result.board.endKeepouts(); ++keepout)
        words.push_back(keepout->getType() + " " + keepout->getBoardSide());
    EXPECT_THAT(words, ElementsAre("PLACE_KEEPOUT TOP", "PLACE_KEEPOUT BOTTOM", "PLACE_KEEPOUT BOTH",
                                   "PLACE_KEEPOUT BOTH", "VIA_KEEPOUT "));
    EXPECT_THAT(result.notices, IsEmpty());
}

TEST_F(IdfBoardTest, KeepoutsThatChangeAreTold) {
    addKeepout("Route", "TOP");
    addKeepout("Route", "BOTTOM");
    addKeepout("Test", "");
    addKeepout("PLACE_KEEPOUT", "");
    addKeepout("VIA_KEEPOUT", "TOP");
    const IdfBoard result = made();
    EXPECT_EQ(result.board.numKeepouts(), 2u);
    EXPECT_THAT(result.notices,
                ElementsAre("2 routing keepouts are left out", "1 keepout of an unknown type is left out",
                            "1 keepout of no known side holds for both now",
                            "1 via keepout of one side holds for both now"));
}

TEST_F(IdfBoardTest, OutlinesKeepTheirArcsAndTellWhatTheyLose) {
    addPoints(design.getOutline(), 0, "0,0 9,0 9,9@90 5,5<9,5");
    EDAOutline inner = EDA::test::outline("1,1 2,1@360");
    inner.addInternalOutline(EDA::test::hole("1,1 1.5,1@360"));
    design.getOutline().addInternalOutline(inner);
    const IdfBoard result = made();
    const EDAOutline &outline = result.board.getOutline();
    EXPECT_EQ((outline.beginPoints() + 2)->angle, 90.0);
    EXPECT_FALSE((outline.beginPoints() + 3)->isArc());
    EXPECT_EQ(outline.numInternalOutlines(), 1);
    EXPECT_EQ(outline.beginInternalOutlines()->numInternalOutlines(), 0);
    EXPECT_THAT(result.notices, ElementsAre("1 arc about a centre becomes a straight edge",
                                            "1 cut-out within a cut-out is left out",
                                            "1 outline inside another that is no cut-out becomes one"));
}

TEST_F(IdfBoardTest, WhatIdfHasNoSectionForIsTold) {
    EDABoardLayer layer;
    design.addLayer(layer);
    design.addWirebond(EDAWirebond());
    design.addBump(EDABump(), false);
    design.setConductorMaterial("Copper");
    EDAComponentPlacement placement;
    placement.setStatus("PLACED");
    placement.setHeatsink(EDAHeatsink());
    placement.addBump(EDABump(), false);
    design.addComponentPlacement(placement);
    EXPECT_THAT(made().notices,
                ElementsAre("1 layer is left out", "2 bumps are left out", "1 wirebond is left out",
                            "1 heatsink is left out", "1 material of the board is left out"));
}

TEST_F(IdfBoardTest, ComponentsOfOtherFormatsAreMended) {
    EDAComponent component("Chip");
    component.setName("A");
    component.setManufacturer("M");
    component.setMoldEnabled(true);
    addPoints(component.getOutline(), 0, "0,0 4,0@360");
    component.getOutline().addInternalOutline(EDA::test::hole("0,0 1,0@360"));
    design.addComponent(component, false);
    const IdfBoard result = made();
    EXPECT_EQ(result.board.beginComponents()->getType(), "ELECTRICAL");
    EXPECT_EQ(result.board.beginComponents()->getUnits(), "MM");
    EXPECT_EQ(result.board.beginComponents()->getOutline().numInternalOutlines(), 0);
    EXPECT_THAT(result.notices, ElementsAre("1 cut-out of a component is left out", "1 mold is left out",
                                            "1 component loses its manufacturer",
                                            "1 component of another type becomes ELECTRICAL"));
}

TEST_F(IdfBoardTest, APlacementStaysWhereItsOrientationPutIt) {
    EDAComponentPlacement placement;
    placement.setBoardSide("Bottom");
    placement.setStatus("PLACED");
    placement.setOrientation(0.0, -1.0, 1.0, 0.0);
    design.addComponentPlacement(placement);
    const IdfBoard result = made();
    EXPECT_DOUBLE_EQ(result.board.beginPlacements()->getAngle(false), 270.0);
    EXPECT_DOUBLE_EQ(result.board.beginPlacements()->getAngle(true), placement.getAngle(true));
    EXPECT_EQ(result.board.beginPlacements()->getBoardSide(), "BOTTOM");
}

TEST_F(IdfBoardTest, NumbersThatAreNotFiniteBecomeZero) {
    design.setThickness(std::numeric_limits<double>::infinity());
    design.addPoint(0, std::numeric_limits<double>::quiet_NaN(), 1.0, 0.0);
    const IdfBoard result = made();
    EXPECT_EQ(result.board.getThickness(), 0.0);
    EXPECT_EQ(result.board.getOutline().beginPoints()->x, 0.0);
    EXPECT_THAT(result.notices, ElementsAre("2 numbers that are not finite become 0"));
}

TEST_F(IdfBoardTest, LengthsThatOverflowStayFinite) {
    design.setUnits("THOU");
    design.setThickness(1e308);
    EXPECT_GT(makeIdfBoard(design, "MM").board.getThickness(), 1e306);
    design.setUnits("mm");
    EXPECT_EQ(makeIdfBoard(design, "THOU").board.getThickness(), std::numeric_limits<double>::max());
}

TEST_F(IdfBoardTest, TheDesignStaysAsItWas) {
    design.setThickness(1.6);
    makeIdfBoard(design, "THOU");
    EXPECT_EQ(design.getThickness(), 1.6);
    EXPECT_EQ(design.getUnits(), "mm");
}

// A board that has everything wrong that the writer does not mend is read back without a message.
TEST_F(IdfBoardTest, WhatIsMadeCanBeRead) {
    const char *const hostile[] = {
        "", " ", "#", "\"", "a b", "\t", "x\ny", ".END_PLACEMENT x", "\xE2\x84\xA6", "\xFF"};
    for (const char *text : hostile) {
        EDAComponent component(text);
        component.setName(text);
        component.setPartNumber(text);
        component.addProperty(text, text);
        addPoints(component.getOutline(), 0, "0,0 4,0@360");
        design.addComponent(component, false);
        EDAComponentPlacement placement;
        placement.setName(text);
        placement.setPartNumber(text);
        placement.setReferenceDesignator(text);
        placement.setBoardSide(text);
        placement.setStatus(text);
        design.addComponentPlacement(placement);
        EDAVia via;
        via.setPlatingStyle(text);
        via.setHoleType(text);
        via.setAssociatedPart(text);
        design.addVia(via, false);
        addKeepout("PLACE_KEEPOUT", text);
    }
    const TestSupport::TempFolder folder;
    const EDATool::IdfNames names{folder.path("a.emn"), folder.path("a.emp")};
    EDATool::writeIdfPair(made().board, names);
    IDFReader reader;
    EXPECT_TRUE(reader.readFile(names.board));
    EXPECT_TRUE(reader.readFile(names.library));
    EXPECT_EQ(reader.getError(), "");
    EXPECT_EQ(reader.getBoard().numComponents(), std::size(hostile));
    EXPECT_EQ(reader.getBoard().numComponentPlacements(), std::size(hostile));
    EXPECT_EQ(reader.getBoard().numVias(1), std::size(hostile));
    EXPECT_EQ(reader.getBoard().numKeepouts(), std::size(hostile));
    for (auto part = reader.getBoard().beginComponents(); part != reader.getBoard().endComponents(); ++part)
        EXPECT_EQ(part->getOutline().numPoints(), 2u) << part->getName();
}

TEST(IdfUnits, WordsOfIdf) {
    for (const char *spelling : {"MM", "mm", "millimetre", "UNIT_MM"})
        EXPECT_EQ(EDATool::idfUnits(spelling), "MM") << spelling;
    for (const char *spelling : {"THOU", "mil", "UNIT_THOU"})
        EXPECT_EQ(EDATool::idfUnits(spelling), "THOU") << spelling;
    for (const char *spelling : {"", "in", "cm", "TNM", "furlong"})
        EXPECT_EQ(EDATool::idfUnits(spelling), "") << spelling;
}

TEST(IdfUnits, UnknownOnesAreRefusedByName) {
    EDABoard board;
    board.setUnits("ell");
    try {
        makeIdfBoard(board, std::string());
        FAIL() << "not refused";
    } catch (const EDATool::DesignFailure &failure) {
        EXPECT_THAT(failure.what(), testing::HasSubstr("'ell'"));
    }
}

} // namespace
