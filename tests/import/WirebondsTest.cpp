// Bond wires of a package.
#include "support/CancelAfter.h"
#include "support/ImportBench.h"

#include <gtest/gtest.h>

using namespace TestSupport;

namespace {

// A package of thickness 1 with a layer "L1" of 0.1 that begins 0.3 below its top, its origin at (10, 70).
struct WireBench : ImportBench {
    WireBench() {
        rectangle(0, 10, 20, 110, 70);
        board().setThickness(1.0);
        set(Import_Type_t, "Component");
        EDA::EDABoardLayer layer;
        layer.setName("L1");
        layer.setThickness(0.1);
        layer.setTopOffset(0.3);
        board().addLayer(layer);
        wire.setName("W");
        wire.setDiameter(0.02);
        wire.setStartLayer("L0");
        wire.setEndLayer("L1");
    }

    Entity *importWire() {
        board().addWirebond(wire);
        Entity *const substrate = import();
        group = substrate->getAncestor(Subcomponent_Group_t);
        const auto wires = children(group, Wirebond_t);
        return wires.size() == 1 ? wires[0] : nullptr;
    }
    void point(double x, double y, double z) { wire.addPoint(Geometry::Vec3T<double>(x, y, z)); }

    Entity *group = nullptr;
    EDA::EDAWirebond wire;
};

void expectPlace(Entity *junction, double x, double y, double z) {
    EXPECT_DOUBLE_EQ(mm(junction, X_Location_t), x);
    EXPECT_DOUBLE_EQ(mm(junction, Y_Location_t), y);
    EXPECT_DOUBLE_EQ(mm(junction, Z_Location_t), z);
}

} // namespace

TEST(Wirebonds, AWireHasNameDiameterAndLayers) {
    WireBench bench;
    Entity *const wire = bench.importWire();
    ASSERT_TRUE(wire);
    EXPECT_EQ(text(wire, Name_t), "W");
    EXPECT_EQ(mm(wire, Diameter_t), 0.02);
    EXPECT_EQ(text(wire, From_Layer_t), "L0");
    EXPECT_EQ(text(wire, To_Layer_t), "L1");
}

TEST(Wirebonds, AWireAndItsPiecesAreLocked) {
    WireBench bench;
    bench.point(15, 60, 2);
    Entity *const wire = bench.importWire();
    ASSERT_TRUE(wire);
    EXPECT_TRUE(wire->findAttribute(Geometry_t)->isLocked());
    EXPECT_TRUE(wire->findAttribute(Placement_t)->isLocked());
    for (Entity *junction : bench.children(wire, Wirebond_Junction_t))
        EXPECT_TRUE(junction->findAttribute(Placement_t)->isLocked());
    const auto segments = bench.children(wire, Wirebond_Segment_t);
    EXPECT_FALSE(segments.empty());
    for (Entity *segment : segments) {
        EXPECT_TRUE(segment->findAttribute(Geometry_t)->isLocked());
        EXPECT_TRUE(segment->findAttribute(Placement_t)->isLocked());
    }
}

TEST(Wirebonds, NPointsAndALandingMakeOneMoreJunctionAndNSegments) {
    WireBench bench;
    bench.point(15, 60, 2);
    bench.point(20, 60, 3);
    bench.point(25, 50, 2);
    Entity *const wire = bench.importWire();
    ASSERT_TRUE(wire);
    const auto junctions = bench.children(wire, Wirebond_Junction_t);
    ASSERT_EQ(junctions.size(), 4U);
    EXPECT_EQ(bench.children(wire, Wirebond_Segment_t).size(), 3U);
    expectPlace(junctions[0], 5, 2, 10);
    expectPlace(junctions[1], 10, 3, 10);
    expectPlace(junctions[2], 15, 0.81, 20); // (1 - 0.3) + 0.1, and half of the wire
    expectPlace(junctions[3], 15, 0.8, 20);
}

TEST(Wirebonds, SegmentsJoinTheJunctionsInOrder) {
    WireBench bench;
    bench.point(15, 60, 2);
    bench.point(20, 60, 3);
    Entity *const wire = bench.importWire();
    ASSERT_TRUE(wire);
    const auto junctions = bench.children(wire, Wirebond_Junction_t);
    const auto segments = bench.children(wire, Wirebond_Segment_t);
    ASSERT_EQ(segments.size(), 2U);
    for (size_t i = 0; i < segments.size(); ++i) {
        EXPECT_EQ(getLinkedEntity(segments[i], Start_Junction_t), junctions[i]);
        EXPECT_EQ(getLinkedEntity(segments[i], End_Junction_t), junctions[i + 1]);
        EXPECT_EQ(text(segments[i], Start_Location_From_Junction_t), "Yes");
        EXPECT_EQ(text(segments[i], End_Location_From_Junction_t), "Yes");
    }
}

TEST(Wirebonds, OnePointOnAKnownLayerMakesTwoJunctionsAndASegment) {
    WireBench bench;
    bench.point(15, 60, 2);
    Entity *const wire = bench.importWire();
    ASSERT_TRUE(wire);
    EXPECT_EQ(bench.children(wire, Wirebond_Junction_t).size(), 2U);
    EXPECT_EQ(bench.children(wire, Wirebond_Segment_t).size(), 1U);
}

TEST(Wirebonds, AnUnknownEndLayerLeavesTheLastHeightAndGivesNoLanding) {
    WireBench bench;
    bench.wire.setEndLayer("nowhere");
    bench.point(15, 60, 2);
    bench.point(20, 60, 3);
    Entity *const wire = bench.importWire();
    ASSERT_TRUE(wire);
    const auto junctions = bench.children(wire, Wirebond_Junction_t);
    ASSERT_EQ(junctions.size(), 2U);
    expectPlace(junctions[1], 10, 3, 10);
    EXPECT_EQ(text(wire, To_Layer_t), "nowhere");
}

TEST(Wirebonds, AWireWithoutPointsHasItsEntityAndNoPieces) {
    WireBench bench;
    Entity *const wire = bench.importWire();
    ASSERT_TRUE(wire);
    EXPECT_TRUE(bench.children(wire, Wirebond_Junction_t).empty());
    EXPECT_TRUE(bench.children(wire, Wirebond_Segment_t).empty());
}

TEST(Wirebonds, AMaterialIsLinked) {
    WireBench bench;
    bench.wire.setMaterial("Gold");
    Entity *const wire = bench.importWire();
    ASSERT_TRUE(wire);
    Entity *const material = getLinkedEntity(wire, MaterialLink_t);
    ASSERT_TRUE(material);
    EXPECT_EQ(text(material, Name_t), "Gold");
}

TEST(Wirebonds, WithoutMaterialNoneIsLinked) {
    WireBench bench;
    Entity *const wire = bench.importWire();
    ASSERT_TRUE(wire);
    EXPECT_FALSE(getLinkedEntity(wire, MaterialLink_t));
}

TEST(Wirebonds, WiresOfAGroupStandInAGroupOfTheSubstrate) {
    WireBench bench;
    bench.wire.setGroupName("ring");
    bench.point(15, 60, 2);
    bench.board().addWirebond(bench.wire);
    bench.board().addWirebond(bench.wire);
    Entity *const substrate = bench.import();
    const auto groups = bench.children(substrate, Subcomponent_Group_t);
    ASSERT_EQ(groups.size(), 1U);
    EXPECT_EQ(text(groups[0], Name_t), "ring");
    EXPECT_EQ(bench.children(groups[0], Wirebond_t).size(), 2U);
}

TEST(Wirebonds, WithTheOptionOffThereAreNone) {
    WireBench bench;
    bench.set(Import_Wirebonds_t, "No");
    bench.point(15, 60, 2);
    EXPECT_FALSE(bench.importWire());
}

TEST(Wirebonds, APlaceThatIsNoNumberIsLeftUnsetAndTheLandingFollowsIt) {
    WireBench bench;
    bench.point(std::nan(""), 60, 2);
    Entity *const wire = bench.importWire();
    ASSERT_TRUE(wire);
    const auto junctions = bench.children(wire, Wirebond_Junction_t);
    ASSERT_EQ(junctions.size(), 2U);
    expectPlace(junctions[0], 0, 0.81, 10);
    expectPlace(junctions[1], 0, 0.8, 10);
}

TEST(Wirebonds, OnABoardOfAnyOtherShapePlacesCountFromTheCornerOfItsBound) {
    WireBench bench;
    bench.board().addPoint(0, 12, 45, 0.0); // A dent in the left edge.
    bench.point(15, 60, 2);
    bench.point(25, 50, 2);
    Entity *const wire = bench.importWire();
    ASSERT_TRUE(wire);
    EXPECT_EQ(text(bench.children(bench.group, Substrate_t).at(0), Shape_t), "Polygon");
    const auto junctions = bench.children(wire, Wirebond_Junction_t);
    ASSERT_EQ(junctions.size(), 3U);
    expectPlace(junctions[0], 5, 2, 10);
    expectPlace(junctions[2], 15, 0.8, 20);
}

TEST(Wirebonds, LengthsAndPlacesAreInTheUnitsOfTheBoard) {
    WireBench bench;
    bench.board().setUnits("THOU");
    bench.point(15, 60, 2);
    bench.point(25, 50, 2);
    Entity *const wire = bench.importWire();
    ASSERT_TRUE(wire);
    EXPECT_NEAR(mm(wire, Diameter_t), 0.02 * 0.0254, 1e-12);
    const auto junctions = bench.children(wire, Wirebond_Junction_t);
    ASSERT_EQ(junctions.size(), 3U);
    expectPlace(junctions[0], 5 * 0.0254, 2 * 0.0254, 10 * 0.0254);
    expectPlace(junctions[2], 15 * 0.0254, 0.8 * 0.0254, 20 * 0.0254);
}

TEST(Wirebonds, ACancelBetweenThemKeepsThoseThatWereMade) {
    WireBench bench;
    for (int i = 0; i < 3; ++i)
        bench.board().addWirebond(bench.wire);
    // One poll for each layer, then one for the first wirebond.
    CancelAfter progress(static_cast<int>(bench.board().numLayers()) + 1);
    Entity *const substrate = bench.import(&progress);
    ASSERT_TRUE(substrate);
    EXPECT_EQ(bench.children(substrate->getAncestor(Subcomponent_Group_t), Wirebond_t).size(), 2U);
    EXPECT_EQ(progress.finishes, 1);
}
