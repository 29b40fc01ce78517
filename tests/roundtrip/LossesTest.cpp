// What is known not to come back, so that no other loss hides among it.
#include "RoundTrip.h"

#include <algorithm>

using namespace TestSupport;

namespace {

class KnownLoss : public RoundTrip {
protected:
    void addRectangularEdge() { addEdge({{10, 20}, {110, 20}, {110, 70}, {10, 70}}); }

    static std::pair<double, double> placeOf(const EDA::EDABoard &board, std::size_t index = 0) {
        const auto placement = board.beginPlacements() + static_cast<std::ptrdiff_t>(index);
        return {placement->getXLocation(), placement->getYLocation()};
    }
    static std::vector<std::string> propertiesOf(const EDA::EDABoard &board) {
        std::vector<std::string> names;
        const EDA::EDAComponent &part = *board.beginComponents();
        for (auto property = part.beginProperties(); property != part.endProperties(); ++property)
            names.push_back(property->first);
        return names;
    }
};

TEST_F(KnownLoss, APolygonalBoardLosesNothing) {
    addEdge({{10, 20}, {60, 25}, {110, 20}, {110, 70}, {10, 70}});
    const EDA::EDABoard back = exported(imported(design));
    const auto &bound = back.getOutline().getBound();
    EXPECT_NEAR(bound.getXLow(), 10, 1e-9);
    EXPECT_NEAR(bound.getYHigh(), 70, 1e-9);
    EXPECT_EQ(back.getOutline().numPoints(), 6u);
}

TEST_F(KnownLoss, TheOriginOfARectangularBoardBecomesItsUpperLeftCorner) {
    addRectangularEdge();
    const auto bound = exported(imported(design)).getOutline().getBound();
    EXPECT_NEAR(bound.getXLow(), 0, 1e-9);
    EXPECT_NEAR(bound.getYLow(), -50, 1e-9);
    EXPECT_NEAR(bound.getXHigh(), 100, 1e-9);
    EXPECT_NEAR(bound.getYHigh(), 0, 1e-9);
}

TEST_F(KnownLoss, TheOriginOfARoundBoardBecomesItsCentre) {
    design.addPoint(0, 40, 30, 0.0);
    design.addPoint(0, 60, 30, 360.0);
    const EDA::EDABoard back = exported(imported(design));
    ASSERT_EQ(back.getOutline().numPoints(), 2u);
    EXPECT_EQ(back.getOutline().beginPoints()[0].x, 0.0);
    EXPECT_NEAR(back.getOutline().beginPoints()[1].x, 20.0, 1e-9);
}

TEST_F(KnownLoss, ArcsBecomeStraightSegments) {
    addEdge({{0, 0}, {50, 0}});
    design.addPoint(0, 50, 40, 180.0);
    design.addPoint(0, 0, 40, 0.0);
    const EDA::EDABoard back = exported(imported(design));
    EXPECT_GT(back.getOutline().numPoints(), 10u);
    EXPECT_TRUE(std::none_of(back.getOutline().beginPoints(), back.getOutline().endPoints(),
                             [](const auto &point) { return point.isArc(); }));
}

TEST_F(KnownLoss, TheOriginOfARectangularPartBecomesItsMiddle) {
    addRectangularEdge();
    EDA::EDAComponent brick = component("BRICK", {{0, 0}, {12, 0}, {12, 6}, {0, 6}});
    design.addComponent(brick, true);
    place("BRICK", "U1", 40, 50, 90, "TOP");
    const EDA::EDABoard back = exported(imported(design));
    const auto [x, y] = placeOf(back);
    EXPECT_NEAR(x, 40 - 3 - 10, 1e-9);
    EXPECT_NEAR(y, 50 + 6 - 70, 1e-9);
    EXPECT_NEAR(back.beginPlacements()->getAngle(false), 90, 1e-9);
    EXPECT_NEAR(back.beginComponents()->getOutline().getBound().getXLow(), -6, 1e-9);
}

TEST_F(KnownLoss, ACircleBesideTheOriginOfItsPartMovesThere) {
    addRectangularEdge();
    EDA::EDAComponent post = component("POST", {});
    post.addPoint(0, 5, 1, 0.0);
    post.addPoint(0, 7, 1, 360.0);
    design.addComponent(post, true);
    place("POST", "H1", 40, 50, 0, "TOP");
    const EDA::EDABoard back = exported(imported(design));
    EXPECT_EQ(back.beginComponents()->getOutline().beginPoints()->x, 0.0);
    const auto [x, y] = placeOf(back);
    EXPECT_NEAR(x, 40 - 10, 1e-9);
    EXPECT_NEAR(y, 50 - 70, 1e-9);
}

TEST_F(KnownLoss, AnAngleOf0OnTheBottomBecomes360) {
    addRectangularEdge();
    EDA::EDAComponent brick = component("BRICK", {{-6, -3}, {6, -3}, {6, 3}, {-6, 3}});
    design.addComponent(brick, true);
    place("BRICK", "U1", 40, 50, 0, "BOTTOM");
    EXPECT_EQ(exported(imported(design)).beginPlacements()->getAngle(false), 360.0);
}

TEST_F(KnownLoss, UnplacedPartsStayBehind) {
    addRectangularEdge();
    EDA::EDAComponent brick = component("BRICK", {{-6, -3}, {6, -3}, {6, 3}, {-6, 3}});
    design.addComponent(brick, true);
    place("BRICK", "U1", 40, 50, 0, "TOP");
    design.beginPlacements()->setStatus("UNPLACED");
    EXPECT_EQ(exported(imported(design)).numComponentPlacements(), 0u);
}

TEST_F(KnownLoss, AManufacturerBecomesPartOfTheNameOnce) {
    addRectangularEdge();
    EDA::EDAComponent brick = component("BRICK", {{-6, -3}, {6, -3}, {6, 3}, {-6, 3}});
    brick.setManufacturer("Acme");
    design.addComponent(brick, true);
    place("BRICK", "U1", 40, 50, 0, "TOP");
    const Generation second = throughFiles(imported(design));
    EXPECT_EQ(exported(second).beginComponents()->getName(), "Acme BRICK");
    EXPECT_EQ(exported(throughFiles(second)).beginComponents()->getName(), "Acme BRICK");
}

// A part of no known material has got the importer's default one, which says a conductivity.
TEST_F(KnownLoss, PropertiesThatTheModelHasNoAttributeForStayBehind) {
    addRectangularEdge();
    EDA::EDAComponent brick = component("BRICK", {{-6, -3}, {6, -3}, {6, 3}, {-6, 3}});
    brick.addProperty("TOLERANCE", "10");
    brick.addProperty("POWER_MAX", "250");
    design.addComponent(brick, true);
    place("BRICK", "U1", 40, 50, 0, "TOP");
    EXPECT_THAT(propertiesOf(exported(imported(design))),
                testing::ElementsAre("POWER_MAX", "THERM_COND", "4ZETA_TYPE"));
}

TEST_F(KnownLoss, RoutingKeepoutsAndNamesOfKeepoutsAreNotInIdfFiles) {
    addRectangularEdge();
    for (const char *type : {"Route", "VIA_KEEPOUT", "PLACE_KEEPOUT"}) {
        EDA::EDAKeepout keepout(type);
        keepout.setName("named");
        keepout.setBoardSide("TOP");
        for (const auto &[x, y] : {std::pair{20.0, 30.0}, {30.0, 30.0}, {25.0, 40.0}})
            keepout.addPoint(0, x, y, 0.0);
        design.addKeepout(keepout);
    }
    const Generation first = imported(design);
    EXPECT_EQ(exported(first).numKeepouts(), 3u);
    EXPECT_EQ(exported(first).beginKeepouts()->getName(), "named");
    const EDA::EDABoard back = exported(throughFiles(first));
    ASSERT_EQ(back.numKeepouts(), 2u);
    EXPECT_EQ(back.beginKeepouts()[0].getType(), "VIA_KEEPOUT");
    EXPECT_EQ(back.beginKeepouts()[1].getType(), "PLACE_KEEPOUT");
    EXPECT_EQ(back.beginKeepouts()[0].getName(), "");
}

TEST_F(KnownLoss, TheSideOfAViaKeepoutIsNotInIdfFiles) {
    addRectangularEdge();
    EDA::EDAKeepout keepout("VIA_KEEPOUT");
    keepout.setBoardSide("TOP");
    for (const auto &[x, y] : {std::pair{20.0, 30.0}, {30.0, 30.0}, {25.0, 40.0}})
        keepout.addPoint(0, x, y, 0.0);
    design.addKeepout(keepout);
    const Generation first = imported(design);
    EXPECT_EQ(exported(first).beginKeepouts()->getBoardSide(), "Top");
    EXPECT_NE(exported(throughFiles(first)).beginKeepouts()->getBoardSide(), "Top");
}

TEST_F(KnownLoss, OfAViaOnlyItsPlaceItsDiameterItsPlatingAndItsPartAreInIdfFiles) {
    addRectangularEdge();
    const Generation first = imported(design);
    Entity *const via = EntityEditor::createEntity(Via_t, first.pcb, Vias_t, nullptr, true, true, false, "V");
    for (const auto &[label, value] : {std::pair{"Filled", "Yes"},
                                       {"Height From", "Layers"},
                                       {"From Layer", "top"},
                                       {"To Layer", "inner"},
                                       {"Plating Thickness", "0.05 mm"}})
        ASSERT_TRUE(EntityEditor::setValue(via, label, value)) << label;
    const Generation second = throughFiles(first);
    ASSERT_EQ(second.members(Vias_t).size(), 1u);
    const Entity *const back = second.members(Vias_t)[0];
    for (const auto &[label, value] : {std::pair{"Name", "Via 1"},
                                       {"Filled", "No"},
                                       {"Height From", "Board"},
                                       {"From Layer", ""},
                                       {"To Layer", ""}})
        EXPECT_EQ(getPreciceStringValue(back, label, "none"), value) << label;
    EXPECT_NEAR(getDoubleValue(back, "Plating Thickness", "mm", 0.0), 0.035, 1e-9);
}

TEST_F(KnownLoss, APinComesBackAsAVia) {
    addRectangularEdge();
    EDA::EDAVia pin;
    pin.setHoleType("PIN");
    pin.setDiameter(1.0);
    pin.setCentre(40, 50);
    design.addVia(pin, false);
    const EDA::EDABoard back = exported(imported(design));
    ASSERT_EQ(back.numVias(0), 1u);
    EXPECT_EQ(back.beginVias()->getHoleType(), "VIA");
}

TEST_F(KnownLoss, HolesOfUnknownKindsStayBehind) {
    addRectangularEdge();
    EDA::EDAVia hole;
    hole.setDiameter(1.0);
    design.addVia(hole, false);
    const EDA::EDABoard back = exported(imported(design));
    EXPECT_EQ(back.numVias(0), 0u);
    EXPECT_EQ(back.getOutline().numInternalOutlines(), 0u);
}

} // namespace
