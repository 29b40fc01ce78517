// Components, placements, keepouts and cut-outs of an IDX document.
#include "readers/IDXTestSupport.h"

namespace {

using namespace IDXTest;
using testing::ElementsAre;

const std::string ell = polygon("ELL", "0,0 4,0 4,1 1,1 1,3 0,3"); // the same from no other side

// Components.

TEST_F(IDXReaderTest, AComponentIsElectricalAndAMechanicalItemMechanical) {
    readWell(
        ell + part("A", "AssemblyComponent", {"ELL"}) +
        part("B", "FunctionalItemShape", {"ELL"}, "", element("FunctionalItemShapeType", "MechanicalItem")));
    ASSERT_EQ(board().numComponents(), 2u);
    EXPECT_EQ(component(0).getType(), "ELECTRICAL");
    EXPECT_EQ(component(1).getType(), "MECHANICAL");
    EXPECT_EQ(component(0).getOutline().numPoints(), 6u);
}

TEST_F(IDXReaderTest, TheNameIsThatOfThePackage) {
    readWell(ell + shape("AssemblyComponent", "S", {"ELL"}) + item("I", "S", package("QFP")) +
             instance("I", "U1"));
    EXPECT_EQ(component().getName(), "QFP");
    EXPECT_EQ(placement().getName(), "QFP");
    EXPECT_EQ(placement().getReferenceDesignator(), "U1");
}

TEST_F(IDXReaderTest, WithoutAPackageTheNameIsThatOfTheInstance) {
    readWell(ell + shape("AssemblyComponent", "S", {"ELL"}) + item("I", "S") +
             withId("Item", "A",
                    withId("ItemInstance", "X",
                           element("Name", "U1") + element("Item", "I") +
                               element("InstanceName", element("ObjectName", "inst")))));
    EXPECT_EQ(component().getName(), "inst");
    EXPECT_EQ(placement().getReferenceDesignator(), "U1");
}

TEST_F(IDXReaderTest, APackagePropertyOfTheInstanceBeatsBoth) {
    readWell(ell + shape("AssemblyComponent", "S", {"ELL"}) +
             item("I", "S", package("QFP") + property("PKGNAME", "no")) +
             instance("I", "U1", property("PKGNAME", "BGA")));
    EXPECT_EQ(component().getName(), "BGA");
    EXPECT_EQ(placement().getName(), "BGA");
}

TEST_F(IDXReaderTest, ThePartNumberOfTheInstanceBeatsThatOfTheItem) {
    readWell(ell + shape("AssemblyComponent", "S", {"ELL"}) +
             item("I", "S", package("Q") + property("PARTNUM", "item")) + instance("I", "U1") +
             instance("I", "U2", property("PARTNUM", "mine")));
    EXPECT_EQ(placement(0).getPartNumber(), "item");
    EXPECT_EQ(placement(1).getPartNumber(), "mine");
    EXPECT_EQ(board().numComponents(), 2u);
}

TEST_F(IDXReaderTest, TheDesignatorPropertyStandsInForTheName) {
    readWell(ell + shape("AssemblyComponent", "S", {"ELL"}) + item("I", "S", package("Q")) +
             instance("I", "", property("REFDDES", "U7")) + instance("I", "U8", property("REFDDES", "no")));
    EXPECT_EQ(placement(0).getReferenceDesignator(), "U7");
    EXPECT_EQ(placement(1).getReferenceDesignator(), "U8");
}

TEST_F(IDXReaderTest, TheHeightIsTheRangeInZ) {
    readWell(polygon("E", "0,0 4,0 4,1", 0.5, 2.25) + part("A", "AssemblyComponent", {"E"}));
    EXPECT_EQ(component().getHeight(), 1.75);
}

TEST_F(IDXReaderTest, TheHeightIsThatOfTheFirstElementThatHasOne) {
    readWell(polygon("E", "0,0 4,0 4,1", 3, 3) + polygon("F", "0,0 4,0 4,1", 1, 2) +
             polygon("G", "0,0 4,0 4,1", 1, 5) + part("A", "AssemblyComponent", {"E", "F", "G"}));
    EXPECT_EQ(component().getHeight(), 1.0);
}

TEST_F(IDXReaderTest, ARangeOfNothingIsNoHeight) {
    readWell(polygon("E", "0,0 4,0 4,1", 1, 1 + 1e-10) + polygon("F", "0,0 4,0 4,1", 2, 1) +
             part("A", "AssemblyComponent", {"E", "F"}) + part("B", "AssemblyComponent", {}));
    EXPECT_EQ(component(0).getHeight(), 0.0);
    EXPECT_EQ(component(1).getHeight(), 0.0);
}

TEST_F(IDXReaderTest, OnePartPlacedTwiceIsOneComponent) {
    readWell(ell + shape("AssemblyComponent", "S", {"ELL"}) + item("I", "S", package("Q")) +
             instance("I", "U1") + instance("I", "U2"));
    EXPECT_EQ(board().numComponents(), 1u);
    EXPECT_EQ(board().numComponentPlacements(), 2u);
}

TEST_F(IDXReaderTest, AnotherShapeOfTheSameNameIsRenamedWithItsPlacement) {
    readWell(ell + polygon("E", "0,0 4,0 4,1") + shape("AssemblyComponent", "S", {"ELL"}) +
             shape("AssemblyComponent", "T", {"E"}) + item("I", "S", package("Q")) +
             item("J", "T", package("Q")) + instance("I", "U1") + instance("J", "U2") + instance("J", "U3"));
    ASSERT_EQ(board().numComponents(), 3u);
    EXPECT_EQ(component(1).getName(), "Q-1");
    EXPECT_EQ(placement(1).getName(), "Q-1");
    EXPECT_EQ(placement(2).getName(), "Q-2"); // compared with the first of the name alone
    EXPECT_EQ(board().findComponent(placement(1))->getOutline().numPoints(), 3u);
}

TEST_F(IDXReaderTest, TheStatusIsSetByItsPropertyAlone) {
    readWell(ell + shape("AssemblyComponent", "S", {"ELL"}) + item("I", "S", package("Q")) +
             instance("I", "U1") + instance("I", "U2", property("PLACED", "true")) +
             instance("I", "U3", property("PLACED", "TRUE")) + instance("I", "U4", property("PLACED", "")));
    EXPECT_EQ(placement(0).getStatus(), "");
    EXPECT_EQ(placement(1).getStatus(), "PLACED");
    EXPECT_EQ(placement(2).getStatus(), "UNPLACED");
    EXPECT_EQ(placement(3).getStatus(), "UNPLACED");
}

// Placements with a transform.

TEST_F(IDXReaderTest, ATransformPlacesOnTheTopAndLeavesTheSideEmpty) {
    readWell(polygon("E", "0,0 4,0 4,1", 0.5, 2) +
             part("A", "AssemblyComponent", {"E"}, placed(0, -1, 1, 0, 20, 8)));
    EXPECT_EQ(placement().getXLocation(), 20.0);
    EXPECT_EQ(placement().getYLocation(), 8.0);
    EXPECT_EQ(placement().getBoardSide(), "");
    EXPECT_TRUE(placement().isOnBoardTop());
    EXPECT_NEAR(placement().getAngle(false), 90.0, 1e-12);
    EXPECT_EQ(placement().getOffset(), 0.5);
    double xx = 0, xy = 0, yx = 0, yy = 0;
    EXPECT_TRUE(placement().getOrientation(xx, xy, yx, yy));
    EXPECT_THAT((std::vector<double>{xx, xy, yx, yy}), ElementsAre(0, -1, 1, 0));
}

TEST_F(IDXReaderTest, AMirroringTransformPlacesOnTheBottom) {
    readWell(ell + part("A", "AssemblyComponent", {"ELL"}, placed(-0.8660254, 0.5, 0.5, 0.8660254, 20, 8)));
    EXPECT_EQ(placement().getBoardSide(), "BOTTOM");
    EXPECT_NEAR(placement().getAngle(true), 330.0, 1e-6);
    EXPECT_NEAR(placement().getAngle(false), 330.0, 1e-6);
}

TEST_F(IDXReaderTest, AFlatTransformIsNoMirror) {
    readWell(ell + part("A", "AssemblyComponent", {"ELL"}, placed(0, 0, 0, 0, 1, 2)));
    EXPECT_EQ(placement().getBoardSide(), "");
}

TEST_F(IDXReaderTest, WithATransformThePropertiesAboutThePlaceDoNotCount) {
    readWell(ell + part("A", "AssemblyComponent", {"ELL"},
                        property("SIDE", "BOTTOM") + property("ROTATION", "45") + property("XLOC", "1") +
                            property("YLOC", "2") + property("MNTOFFSET", "3") + placed(1, 0, 0, 1, 20, 8)));
    EXPECT_EQ(placement().getBoardSide(), "");
    EXPECT_EQ(placement().getXLocation(), 20.0);
    EXPECT_EQ(placement().getYLocation(), 8.0);
    EXPECT_EQ(placement().getOffset(), 0.0);
    EXPECT_EQ(placement().getAngle(false), 0.0);
}

TEST_F(IDXReaderTest, WhatATransformLeavesOutIsTheIdentity) {
    readWell(ell + part("A", "AssemblyComponent", {"ELL"}, element("Transformation", value("tx", "5"))));
    EXPECT_EQ(placement().getXLocation(), 5.0);
    EXPECT_EQ(placement().getYLocation(), 0.0);
    double xx = 0, xy = 9, yx = 9, yy = 0;
    EXPECT_TRUE(placement().getOrientation(xx, xy, yx, yy));
    EXPECT_THAT((std::vector<double>{xx, xy, yx, yy}), ElementsAre(1, 0, 0, 1));
}

TEST_F(IDXReaderTest, ABadNumberOfATransformIsZero) {
    readWell(ell + part("A", "AssemblyComponent", {"ELL"},
                        element("Transformation",
                                element("xx", "one") + element("yy", "1") + value("tx", "1e400"))));
    EXPECT_EQ(placement().getXLocation(), 0.0);
    double xx = 9, xy = 9, yx = 9, yy = 9;
    placement().getOrientation(xx, xy, yx, yy);
    EXPECT_EQ(xx, 0.0);
}

// Placements without one.

TEST_F(IDXReaderTest, WithoutATransformThePropertiesTellThePlace) {
    readWell(ell + part("A", "AssemblyComponent", {"ELL"},
                        property("SIDE", "BOTTOM") + property("ROTATION", "45") + property("XLOC", "1.5") +
                            property("YLOC", "-2") + property("MNTOFFSET", "0.25")));
    EXPECT_EQ(placement().getBoardSide(), "BOTTOM");
    EXPECT_EQ(placement().getAngle(false), 45.0);
    EXPECT_EQ(placement().getXLocation(), 1.5);
    EXPECT_EQ(placement().getYLocation(), -2.0);
    EXPECT_EQ(placement().getOffset(), 0.25);
    double a = 0, b = 0, c = 0, d = 0;
    EXPECT_FALSE(placement().getOrientation(a, b, c, d));
}

TEST_F(IDXReaderTest, PropertiesThatAreAbsentAreZero) {
    readWell(ell + part("A", "AssemblyComponent", {"ELL"}));
    EXPECT_EQ(placement().getBoardSide(), "");
    EXPECT_EQ(placement().getXLocation(), 0.0);
    EXPECT_EQ(placement().getAngle(false), 0.0);
}

TEST_F(IDXReaderTest, ANegativeRotationIsWrapped) {
    const struct {
        const char *text;
        double angle;
    } rotations[] = {{"-90", 270},  {"-720", 0}, {"450", 450}, {"-1e15", 80},
                     {"-1e400", 0}, {"-inf", 0}, {"x", 0}};
    for (const auto &rotation : rotations) {
        readWell(ell + part("A", "AssemblyComponent", {"ELL"}, property("ROTATION", rotation.text)));
        EXPECT_EQ((board().endPlacements() - 1)->getAngle(false), rotation.angle) << rotation.text;
    }
}

TEST_F(IDXReaderTest, AnInfinitePlaceIsZero) {
    readWell(ell +
             part("A", "AssemblyComponent", {"ELL"}, property("XLOC", "inf") + property("YLOC", "-1e999")));
    EXPECT_EQ(placement().getXLocation(), 0.0);
    EXPECT_EQ(placement().getYLocation(), 0.0);
}

// Keepouts.

TEST_F(IDXReaderTest, AKeepoutHasTheTypeOfItsPurpose) {
    readWell(polygon("E", "1,1 4,1 4,3", 0.5, 2) +
             part("K", "KeepOut", {"E"}, "", element("Purpose", "ComponentPlacement")));
    ASSERT_EQ(board().numKeepouts(), 1u);
    const EDA::EDAKeepout &keepout = *board().beginKeepouts();
    EXPECT_TRUE(keepout.isComponentKeepout());
    EXPECT_EQ(keepout.getName(), "K_1");
    EXPECT_EQ(keepout.getHeight(), 1.5);
    EXPECT_EQ(keepout.getBoardSide(), "TOP");
}

TEST_F(IDXReaderTest, AKeepoutIsNotMovedByTheTransformOfItsInstance) {
    readWell(polygon("E", "1,1 4,1 4,3") + part("K", "KeepOut", {"E"}, placed(0, -1, 1, 0, 20, 8)));
    EXPECT_THAT(stored(board().beginKeepouts()->getOutline()), ElementsAre(At(1, 1), At(4, 1), At(4, 3)));
}

TEST_F(IDXReaderTest, TheSideOfAKeepoutIsItsPropertyOrThatOfTheTransform) {
    readWell(ell + part("A", "KeepOut", {"ELL"}, placed(-1, 0, 0, 1, 0, 0)) +
             part("B", "KeepOut", {"ELL"}, property("SIDE", "ALL") + placed(-1, 0, 0, 1, 0, 0)) +
             part("C", "KeepOut", {"ELL"}, placed(-1, 0, 0, -1, 0, 0)) +
             part("D", "KeepOut", {"ELL"}, property("SIDE", "")));
    EXPECT_EQ(board().beginKeepouts()[0].getBoardSide(), "BOTTOM");
    EXPECT_EQ(board().beginKeepouts()[1].getBoardSide(), "ALL");
    EXPECT_EQ(board().beginKeepouts()[2].getBoardSide(), "TOP");
    EXPECT_EQ(board().beginKeepouts()[3].getBoardSide(), "");
}

TEST_F(IDXReaderTest, AKeepInLeavesNothing) {
    readWell(ell + part("K", "KeepIn", {"ELL"}, "", element("Purpose", "Route")));
    EXPECT_EQ(board().numKeepouts(), 0u);
    EXPECT_EQ(board().numComponents(), 0u);
    EXPECT_EQ(reader.getError(), "");
    EXPECT_EQ(reader.passedOver().keepIns, 1u);
    readWell(ell);
    EXPECT_EQ(reader.passedOver().keepIns, 0u);
}

// Cut-outs.

std::string cutout(const std::string &name, const std::string &kind, const std::vector<std::string> &elements,
                   const std::string &more = "") {
    return part(name, "InterStratumFeature", elements, more, element("InterStratumFeatureType", kind));
}

const std::string pin = element("ShapeElementType", "ComponentTerminal");

TEST_F(IDXReaderTest, ARoundCutoutIsAVia) {
    readWell(disc("D", 1, 2, 0.8, 0, 1.6, pin) + cutout("H", "Cutout", {"D"}));
    ASSERT_EQ(board().numVias(0), 1u);
    const EDA::EDAVia &via = *board().beginVias();
    EXPECT_EQ(via.getName(), "H_1");
    EXPECT_EQ(via.getHoleType(), "ComponentTerminal");
    EXPECT_EQ(via.getDiameter(), 0.8);
    EXPECT_FALSE(via.isPlated());
    EXPECT_EQ(via.getXCentre(), 1.0);
    EXPECT_EQ(via.getYCentre(), 2.0);
    EXPECT_EQ(via.getAssociatedPart(), "BOARD");
}

TEST_F(IDXReaderTest, APlatedCutoutIsPlated) {
    readWell(disc("D", 0, 0, 0.8) + cutout("H", "PlatedCutout", {"D"}, property("MHNAME", "M1")));
    EXPECT_TRUE(board().beginVias()->isPlated());
    EXPECT_EQ(board().beginVias()->getName(), "M1");
}

TEST_F(IDXReaderTest, OnlyTheShiftOfATransformMovesACutout) {
    readWell(disc("D", 1, 2, 0.8) +
             cutout("H", "Cutout", {"D"}, property("XLOC", "50") + placed(-1, 0, 0, 1, 20, 8)));
    EXPECT_EQ(board().beginVias()->getXCentre(), 21.0);
    EXPECT_EQ(board().beginVias()->getYCentre(), 10.0);
}

TEST_F(IDXReaderTest, ACutoutWithoutATransformIsMovedByItsProperties) {
    readWell(disc("D", 1, 2, 0.8) + cutout("H", "Cutout", {"D"}, property("XLOC", "50")));
    EXPECT_EQ(board().beginVias()->getXCentre(), 51.0);
    EXPECT_EQ(board().beginVias()->getYCentre(), 2.0);
}

TEST_F(IDXReaderTest, EqualCutoutsAreInstancesOfTheFirst) {
    readWell(disc("D", 0, 0, 0.8) + disc("F", 0, 0, 0.9) +
             cutout("A", "Cutout", {"D"}, placed(1, 0, 0, 1, 1, 1)) + cutout("B", "Cutout", {"F"}) +
             cutout("C", "Cutout", {"D"}, placed(1, 0, 0, 1, 2, 3)));
    ASSERT_EQ(board().numVias(0), 2u);
    const EDA::EDAVia &via = *board().beginVias();
    ASSERT_EQ(via.numInstances(), 1u);
    EXPECT_EQ(via.getInstanceName(0), "C_1");
    EXPECT_EQ(via.getInstanceXCentre(0), 2.0);
    EXPECT_EQ(via.getInstanceYCentre(0), 3.0);
}

TEST_F(IDXReaderTest, ACutoutOfAPartIsNobodysInstance) {
    const std::string ofU1 = property("ICMIDX_ATTRIBUTE_HOLE_ASSOCIATED_PART", "U1");
    readWell(disc("D", 0, 0, 0.8) + cutout("A", "Cutout", {"D"}, ofU1) + cutout("B", "Cutout", {"D"}, ofU1) +
             cutout("C", "Cutout", {"D"}));
    EXPECT_EQ(board().numVias(0), 3u);
    EXPECT_EQ(board().beginVias()->getAssociatedPart(), "U1");
}

TEST_F(IDXReaderTest, ACutoutThatIsNotRoundIsReported) {
    EXPECT_TRUE(read(ell + cutout("H", "Cutout", {"ELL"}) + cutout("G", "PlatedCutout", {"ELL"})));
    EXPECT_EQ(reader.getError(), "Unhandled Object Type Cutout\nUnhandled Object Type PlatedCutout\n");
    EXPECT_EQ(board().numVias(0), 0u);
}

TEST_F(IDXReaderTest, TheFirstCircleOfACutoutCounts) {
    readWell(ell + circle("C1", 1, 1, 2) + circle("C2", 2, 2, 3) + curveSet("S", {"ELL_L", "C1", "C2"}) +
             shapeElement("E", "S", pin) + cutout("H", "Cutout", {"ELL", "E"}));
    EXPECT_EQ(board().beginVias()->getDiameter(), 2.0);
    EXPECT_EQ(board().beginVias()->getHoleType(), "ComponentTerminal");
}

// What is not known.

TEST_F(IDXReaderTest, OtherKindsAreReportedAndReadingGoesOn) {
    EXPECT_TRUE(read(ell + part("F", "FunctionalItemShape", {"ELL"}) +
                     part("H", "InterStratumFeature", {"ELL"}) + instance("NONE", "X") +
                     item("BARE", "NOSHAPE") + instance("BARE", "Y") +
                     part("A", "AssemblyComponent", {"ELL"})));
    EXPECT_EQ(reader.getError(), "Unhandled Object Type FunctionalItem\nUnhandled Object Type Hole\n"
                                 "Unhandled Object Type \nUnhandled Object Type \n");
    EXPECT_EQ(board().numComponents(), 1u);
}

TEST_F(IDXReaderTest, AnItemIsNothingWithoutAnInstance) {
    readWell(ell + shape("AssemblyComponent", "S", {"ELL"}) + item("I", "S", package("Q")));
    EXPECT_EQ(board().numComponents(), 0u);
}

TEST_F(IDXReaderTest, AnInstanceDoesNotTakeTheItemAroundIt) {
    EXPECT_TRUE(read(ell + shape("AssemblyComponent", "S", {"ELL"}) +
                     item("I", "S", package("Q") + withId("ItemInstance", "I", element("Name", "U1")))));
    EXPECT_EQ(reader.getError(), "Unhandled Object Type \n");
}

TEST_F(IDXReaderTest, OneItemMayHaveManyInstances) {
    readWell(ell + shape("AssemblyComponent", "S", {"ELL"}) + item("I", "S", package("Q")) +
             withId("Item", "A",
                    withId("ItemInstance", "X", element("Name", "U1") + element("Item", "I")) +
                        withId("ItemInstance", "X", element("Name", "U2") + element("Item", "I"))));
    ASSERT_EQ(board().numComponentPlacements(), 2u);
    EXPECT_EQ(placement(1).getReferenceDesignator(), "U2");
}

} // namespace
