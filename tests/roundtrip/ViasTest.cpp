// Vias and other drilled holes stay where they are, generation after generation.
#include "RoundTrip.h"

#include "host/Geometry/Part.h"

#include <cmath>
#include <ostream>
#include <tuple>

using namespace TestSupport;
using testing::UnorderedElementsAreArray;

namespace {

// A via as it stands in the model, in thousandths of a millimetre.
struct Seen {
    long x, z, diameter;
    bool isPlated;
    std::string owner;

    bool operator==(const Seen &other) const {
        return std::tie(x, z, diameter, isPlated, owner) ==
               std::tie(other.x, other.z, other.diameter, other.isPlated, other.owner);
    }
};

std::ostream &operator<<(std::ostream &stream, const Seen &via) {
    return stream << via.owner << " (" << via.x << ", " << via.z << ") " << via.diameter
                  << (via.isPlated ? " plated" : "");
}

long thousandths(double metres) { return std::lround(metres * 1e6); }

Seen see(const Generation &generation, Entity *via) {
    const Geometry::Bound bound = generation.parts->getPart(via)->getBound();
    return {thousandths((bound.getXLow() + bound.getXHigh()) / 2),
            thousandths((bound.getZLow() + bound.getZHigh()) / 2),
            thousandths(getStandardDoubleValue(via, Diameter_t, 0.0)),
            via->readAttribute(Plated_t)->getBool(),
            getPreciceStringValue(via->getOwnerEntity(), Reference_Designator_t, "")};
}

std::vector<Seen> viasOf(const Generation &generation) {
    std::vector<Entity *> vias = generation.members(Vias_t);
    for (const char *designator : {"U1", "U2"}) {
        if (Entity *const part = generation.part(designator))
            part->getOwnedChildEntitiesOfType(vias, Via_t, false, true);
    }
    std::vector<Seen> seen;
    for (Entity *via : vias)
        seen.push_back(see(generation, via));
    return seen;
}

class ViaRoundTrip : public RoundTrip {
protected:
    void addRectangularEdge() { addEdge({{10, 20}, {110, 20}, {110, 80}, {10, 80}}); }

    EDA::EDAVia hole(const std::string &type, double diameter, bool isPlated, double x, double y) const {
        EDA::EDAVia result;
        result.setHoleType(type);
        result.setDiameter(diameter);
        result.setPlatingStyle(isPlated ? "PTH" : "NPTH");
        result.setCentre(x, y);
        return result;
    }
    void drill(EDA::EDAVia via, const std::string &part = "BOARD") {
        via.setAssociatedPart(part);
        design.addVia(via, false);
    }
};

struct Case {
    bool isPolygonBoard;
    double angle;
    const char *side;
};

class ViaPlaces : public ViaRoundTrip, public testing::WithParamInterface<Case> {
protected:
    void SetUp() override {
        if (GetParam().isPolygonBoard) {
            addEdge({{10, 20}, {50, 25}, {110, 20}, {110, 80}, {10, 80}});
        } else {
            addRectangularEdge();
        }
        EDA::EDAComponent hook = component("HOOK", {{-1, -2}, {9, -2}, {9, 1}, {2, 1}, {2, 14}, {-1, 14}});
        EDA::EDAComponent brick = component("BRICK", {{1, 2}, {13, 2}, {13, 7}, {1, 7}});
        design.addComponent(hook, true);
        design.addComponent(brick, true);
        place("HOOK", "U1", 42.3, 51.9, GetParam().angle, GetParam().side);
        place("BRICK", "U2", 77.7, 48.1, GetParam().angle, GetParam().side);
        EDA::EDAVia several = hole("VIA", 0.4, true, 20, 30);
        several.addInstance("", 21.5, 30.25);
        several.addInstance("", 23, 31);
        drill(several);
        drill(hole("VIA", 0.6, false, 60, 70));
        drill(hole("VIA", 0.5, true, 43, 53), "U1");
        drill(hole("PIN", 0.9, false, 41, 50), "U1");
        drill(hole("VIA", 0.5, true, 79, 51), "U2");
    }

    // On a board in the middle of the root frame; the first import of a polygon puts it aside.
    static std::vector<Seen> onBoard(const Generation &generation) {
        const Geometry::Bound board = generation.parts->getPart(generation.pcb)->getBound();
        std::vector<Seen> vias = viasOf(generation);
        for (Seen &via : vias) {
            via.x -= thousandths(board.getXLow());
            via.z -= thousandths(board.getZLow());
            if (via.owner == "") via.owner = "board";
        }
        return vias;
    }
};

std::vector<Case> cases() {
    std::vector<Case> result;
    for (const bool isPolygonBoard : {false, true})
        for (const double angle : {0.0, 90.0, 212.5})
            for (const char *side : {"TOP", "BOTTOM"})
                result.push_back({isPolygonBoard, angle, side});
    return result;
}

INSTANTIATE_TEST_SUITE_P(All, ViaPlaces, testing::ValuesIn(cases()), [](const auto &test) {
    return std::string(test.param.isPolygonBoard ? "Polygon" : "Rectangle") +
           std::to_string(static_cast<int>(test.param.angle)) + test.param.side;
});

// X = x - 10 and Z = 80 - y, in parts and out of them, whatever side and angle the parts have.
TEST_P(ViaPlaces, AreThoseOfTheDesign) {
    EXPECT_THAT(onBoard(imported(design)),
                UnorderedElementsAreArray(std::vector<Seen>{{10000, 50000, 400, true, "board"},
                                                            {11500, 49750, 400, true, "board"},
                                                            {13000, 49000, 400, true, "board"},
                                                            {50000, 10000, 600, false, "board"},
                                                            {33000, 27000, 500, true, "U1"},
                                                            {31000, 30000, 900, false, "U1"},
                                                            {69000, 29000, 500, true, "U2"}}));
}

TEST_P(ViaPlaces, StayTheSame) {
    const Generation first = imported(design);
    const Generation second = imported(exported(first));
    EXPECT_THAT(onBoard(second), UnorderedElementsAreArray(onBoard(first)));
    EXPECT_THAT(onBoard(imported(exported(second))), UnorderedElementsAreArray(onBoard(first)));
}

TEST_P(ViaPlaces, StayTheSameThroughFiles) {
    const Generation second = throughFiles(imported(design));
    EXPECT_THAT(onBoard(second), UnorderedElementsAreArray(onBoard(imported(design))));
    EXPECT_EQ(throughFiles(second).text(), second.text());
}

std::vector<std::pair<double, double>> placesOf(const EDA::EDABoard &board) {
    std::vector<std::pair<double, double>> places;
    for (auto via = board.beginVias(); via != board.endVias(); ++via) {
        EXPECT_EQ(via->numInstances(), 0u);
        EXPECT_NEAR(via->getDiameter(), 0.4, 1e-9);
        places.emplace_back(via->getXCentre(), via->getYCentre());
    }
    return places;
}

TEST_F(ViaRoundTrip, AGroupGoesOutAsItsSingleVias) {
    addRectangularEdge();
    EDA::EDAVia several = hole("VIA", 0.4, true, 20, 30);
    several.addInstance("", 21.5, 30.25);
    several.addInstance("", 23, 31);
    drill(several);
    const auto singles = placesOf(exported(imported(design)));
    const auto grouped = placesOf(exported(imported(design, {{Group_Identical_Vias_t, "Yes"}})));
    ASSERT_EQ(singles.size(), 3u);
    ASSERT_EQ(grouped.size(), 3u);
    for (std::size_t i = 0; i < 3; ++i) {
        EXPECT_NEAR(grouped[i].first, singles[i].first, 1e-6);
        EXPECT_NEAR(grouped[i].second, singles[i].second, 1e-6);
    }
    EXPECT_NEAR(singles[1].first, 21.5 - 10, 1e-9);
    EXPECT_NEAR(singles[1].second, 30.25 - 80, 1e-9);
}

// Files hold single holes; equal ones are one definition when they are read.
TEST_F(ViaRoundTrip, AGroupComesBackAsAGroup) {
    addRectangularEdge();
    EDA::EDAVia several = hole("VIA", 0.4, true, 20, 30);
    several.addInstance("", 21.5, 30.25);
    drill(several);
    const Settings grouped{{Group_Identical_Vias_t, "Yes"}};
    const Generation second = throughFiles(imported(design, grouped), "MM", grouped);
    ASSERT_EQ(second.members(Vias_t).size(), 1u);
    const Entity *const via = second.members(Vias_t)[0];
    EXPECT_EQ(getPreciceStringValue(via, Number_Of_Vias_t, ""), "2");
    EXPECT_NEAR(getDoubleValue(via, X_Location_t, "mm", 0.0), 20 - 10 - 0.2, 1e-4);
    EXPECT_NEAR(getDoubleValue(via, Z_Location_t, "mm", 0.0), 80 - 30.25 - 0.2, 1e-4);
    EXPECT_EQ(throughFiles(second, "MM", grouped).text(), second.text());
}

// The export counts the place of a group in a part twice, which the tool warns of.
TEST_F(ViaRoundTrip, AGroupInAPartIsDisplacedByItsPlaceInThePart) {
    addRectangularEdge();
    EDA::EDAComponent brick = component("BRICK", {{-6, -3}, {6, -3}, {6, 3}, {-6, 3}});
    design.addComponent(brick, true);
    place("BRICK", "U1", 40, 50, 0, "TOP");
    EDA::EDAVia several = hole("VIA", 0.4, true, 39, 51);
    several.addInstance("", 42, 49);
    drill(several, "U1");
    const Generation first = imported(design, {{Group_Identical_Vias_t, "Yes"}});
    ASSERT_EQ(viasOf(first).size(), 1u);
    const EDA::EDABoard back = exported(first);
    ASSERT_EQ(back.numVias(0), 2u);
    // The corner of the group is (38.8, 51.2), 4.8 right and 1.8 below the upper left corner of the part.
    EXPECT_NEAR(back.beginVias()->getXCentre(), 39 - 10 + 4.8, 1e-6);
    EXPECT_NEAR(back.beginVias()->getYCentre(), 51 - 80 - 1.8, 1e-6);
}

TEST_F(ViaRoundTrip, MountingAndToolHolesComeBackAsRoundCutouts) {
    addRectangularEdge();
    EDA::EDAVia mounting = hole("MTG", 3.2, false, 14, 24);
    mounting.addInstance("", 106, 76);
    drill(mounting);
    drill(hole("TOOL", 2, true, 14, 76));
    const Generation first = imported(design);
    EXPECT_EQ(exported(first).numVias(0), 0u);
    const Generation second = throughFiles(first);
    EXPECT_TRUE(second.members(Vias_t).empty());
    const auto holes = second.members(Holes_t);
    ASSERT_EQ(holes.size(), 3u);
    const double expected[][3] = {{4, 56, 3.2}, {96, 4, 3.2}, {4, 4, 2}};
    for (std::size_t i = 0; i < 3; ++i) {
        EXPECT_EQ(getPreciceStringValue(holes[i], Shape_t, ""), "Cylinder");
        EXPECT_NEAR(getDoubleValue(holes[i], X_Location_t, "mm", 0.0), expected[i][0], 1e-4);
        EXPECT_NEAR(getDoubleValue(holes[i], Z_Location_t, "mm", 0.0), expected[i][1], 1e-4);
        EXPECT_NEAR(getDoubleValue(holes[i], Diameter_t, "mm", 0.0), expected[i][2], 1e-4);
    }
}

TEST_F(ViaRoundTrip, ASlotComesBackAsACutout) {
    addRectangularEdge();
    EDA::EDAVia slot = hole("PIN", 1, true, 40, 50);
    for (const auto &[x, y] : {std::pair{-2.0, -0.5}, {2.0, -0.5}, {2.0, 0.5}, {-2.0, 0.5}, {-2.0, -0.5}})
        slot.getOutline().addPoint(0, x, y, 0.0);
    drill(slot);
    const Generation second = throughFiles(imported(design));
    EXPECT_TRUE(second.members(Vias_t).empty());
    ASSERT_EQ(second.members(Holes_t).size(), 1u);
    const Entity *const hole = second.members(Holes_t)[0];
    EXPECT_NEAR(getDoubleValue(hole, Width_t, "mm", 0.0), 4, 1e-4);
    EXPECT_NEAR(getDoubleValue(hole, Depth_t, "mm", 0.0), 1, 1e-4);
    EXPECT_NEAR(getDoubleValue(hole, X_Location_t, "mm", 0.0), 40 - 2 - 10, 1e-4);
    EXPECT_NEAR(getDoubleValue(hole, Z_Location_t, "mm", 0.0), 80 - 50.5, 1e-4);
}

} // namespace
