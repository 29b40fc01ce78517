// Parts of vias, on the board and moved into parts.
#include "PartScene.h"

namespace {

using Entity = EntityModel::Entity;
using Point = Geometry::Vec3T<double>;

class GeometryBuilderVia : public testing::Test, protected PartScene {
protected:
    static Entity *addVia(Entity *parent, double x, double z) {
        Entity *const via = add("Via", parent, "Vias");
        setLengths(via, {{"Diameter", 0.4}});
        place(via, x, z);
        return via;
    }

    Entity *addManyVias(double x, double z) {
        Entity *const via = addVia(board, x, z);
        set(via, "Modelling Type", "Multiple Vias");
        set(via, "Instance Placements", "0.2,0.2,2.8,0.8 <mm>");
        setLengths(via, {{"Width", 3}, {"Depth", 1}});
        return via;
    }

    Entity *addLayer(char const *name, double y) {
        Entity *const layer = add("Conductor Layer", board, "Conductor Layers");
        set(layer, "Name", name);
        setLengths(layer, {{"Conductor Thickness", 0.1}, {"Y Location", y}});
        return layer;
    }

    // Moves a via into a part by the parts that are built, as an importer does.
    void moveInto(Entity *via, Entity *owner) {
        Geometry::Part const *const viaPart = builder.buildPart(via);
        Geometry::Part const *const ownerPart = builder.buildPart(owner);
        bool const isMany =
            EntityModel::getTypeValue(via, "Modelling Type", {}) == EntityModel::Multiple_Vias_t;
        double const halfX = isMany ? 0.0015 : 0.0, halfZ = isMany ? 0.0005 : 0.0;
        Point point(halfX, 0, halfZ);
        viaPart->getGeometry()->getTransform().transform(point);
        ownerPart->getGeometry()->getTransform().inverse().transform(point);
        Geometry::Bound const &bound = ownerPart->getGeometry()->getBound();
        point.x -= halfX + bound.getXLow();
        point.z -= halfZ + bound.getZLow();
        ASSERT_TRUE(Editor::setSIValue(via, "X Location", point.x));
        ASSERT_TRUE(Editor::setSIValue(via, "Z Location", point.z));
        ASSERT_TRUE(Editor::moveEntity(via, owner));
    }
};

TEST_F(GeometryBuilderVia, GoesThroughTheBoard) {
    expectBox(builder.buildPart(addVia(board, 22, 31)), {21.8, 0, 30.8, 22.2, 2, 31.2});
}

TEST_F(GeometryBuilderVia, UserSpecifiedHeightCountsFromItsYLocation) {
    Entity *const via = addVia(board, 22, 31);
    set(via, "Height From", "User Specified");
    setLengths(via, {{"Height", 0.75}, {"Y Location", 0.5}});
    expectBox(builder.buildPart(via), {21.8, 0.5, 30.8, 22.2, 1.25, 31.2});
}

TEST_F(GeometryBuilderVia, ReachesFromLayerToLayer) {
    addLayer("bottom", 0);
    addLayer("inner", 0.8);
    addLayer("top", 1.9);
    Entity *const via = addVia(board, 22, 31);
    set(via, "Height From", "Layers");
    set(via, "From Layer", "top");
    set(via, "To Layer", "inner");
    expectBox(builder.buildPart(via), {21.8, 0.8, 30.8, 22.2, 2, 31.2});
    set(via, "From Layer", "inner");
    expectBox(builder.buildPart(via), {21.8, 0.8, 30.8, 22.2, 0.9, 31.2});
}

TEST_F(GeometryBuilderVia, ToAnUnknownLayerGoesThroughTheBoard) {
    addLayer("top", 1.9);
    Entity *const via = addVia(board, 22, 31);
    set(via, "Height From", "Layers");
    set(via, "From Layer", "top");
    set(via, "To Layer", "nowhere");
    expectBox(builder.buildPart(via), {21.8, 0, 30.8, 22.2, 2, 31.2});
}

TEST_F(GeometryBuilderVia, ManyViasAreABoxFromTheirCorner) {
    Geometry::Part const *const part = builder.buildPart(addManyVias(22, 31));
    expectBox(part, {22, 0, 31, 25, 2, 32});
    expectPoint(toRoot(part, 0, 0, 0), 22, 0, 31);
}

TEST_F(GeometryBuilderVia, OriginOfASingleViaIsItsCentre) {
    expectPoint(toRoot(builder.buildPart(addVia(board, 22, 31)), 0, 0, 0), 22, 0, 31);
}

struct Owner {
    char const *shape;
    char const *side;
    double angle;
};

class GeometryBuilderViaMove : public GeometryBuilderVia, public testing::WithParamInterface<Owner> {
protected:
    Entity *addOwner() {
        place(board, 11, 12);
        Entity *const owner = addComponent();
        setLengths(owner, {{"Diameter", 8}, {"Y Location", 0.25}});
        if (std::string(GetParam().shape) == "Polygon")
            setPolygon(owner, "-3,-4,7,-4,7,2,-3,1");
        else
            set(owner, "Shape", GetParam().shape);
        set(owner, "Board Side", GetParam().side);
        setAngle(owner, "Angle", GetParam().angle);
        return owner;
    }
};

TEST_P(GeometryBuilderViaMove, SingleViaStaysInItsPlace) {
    Entity *const owner = addOwner();
    Entity *const via = addVia(board, 23, 31);
    moveInto(via, owner);
    Geometry::Part const *const part = builder.buildPart(via);
    Point const centre = toRoot(part, 0, 0, 0);
    EXPECT_NEAR(centre.x, 34, 1e-9);
    EXPECT_NEAR(centre.z, 43, 1e-9);
    EXPECT_NEAR(part->getBound().getYLow() * 1e3, 0, 1e-9);
    EXPECT_NEAR(part->getBound().getYHigh() * 1e3, 2, 1e-9);
}

TEST_P(GeometryBuilderViaMove, ManyViasKeepTheirCentre) {
    Entity *const owner = addOwner();
    Entity *const via = addManyVias(23, 31);
    moveInto(via, owner);
    Point const centre = toRoot(builder.buildPart(via), 1.5, 0, 0.5);
    EXPECT_NEAR(centre.x, 11 + 24.5, 1e-9);
    EXPECT_NEAR(centre.z, 12 + 31.5, 1e-9);
}

TEST_P(GeometryBuilderViaMove, IsFoundAgainInTheFrameOfTheBoard) {
    Entity *const owner = addOwner();
    Entity *const via = addVia(board, 23, 31);
    moveInto(via, owner);
    builder.buildPart(board, true);
    Geometry::Transform const toBoard =
        builder.getPart(board)->transformToThisCoordinateSystem(builder.getPart(via));
    Point point;
    toBoard.transform(point);
    EXPECT_NEAR(point.x * 1e3, 23, 1e-9);
    EXPECT_NEAR(point.z * 1e3, 31, 1e-9);
}

INSTANTIATE_TEST_SUITE_P(Owners, GeometryBuilderViaMove,
                         testing::Values(Owner{"Rectangle", "Top", 0}, Owner{"Rectangle", "Top", 30},
                                         Owner{"Rectangle", "Bottom", 90}, Owner{"Cylinder", "Top", 30},
                                         Owner{"Cylinder", "Bottom", 330}, Owner{"Polygon", "Top", 90},
                                         Owner{"Polygon", "Bottom", 30}));

TEST_F(GeometryBuilderVia, BoardFrameOfARoundBoardIsThatOfItsOutline) {
    set(board, "Shape", "Cylinder");
    set(board, "Origin Point", "Centre");
    setLengths(board, {{"Diameter", 50}});
    place(board, 25, 25);
    Entity *const via = addVia(board, 10, 12);
    builder.buildPart(board, true);
    Point point;
    builder.getPart(board)->transformToThisCoordinateSystem(builder.getPart(via)).transform(point);
    EXPECT_NEAR(point.x * 1e3, 10 - 25, 1e-9);
    EXPECT_NEAR(point.z * 1e3, 12 - 25, 1e-9);
}

TEST_F(GeometryBuilderVia, WithoutDiameterHasNoPart) {
    Entity *const via = addVia(board, 1, 1);
    setLengths(via, {{"Diameter", 0}});
    EXPECT_EQ(builder.buildPart(via), nullptr);
}

TEST_F(GeometryBuilderVia, OfAComponentWithoutBoardIsFlat) {
    EntityModel::Model const alone{EntityModel::Component_t};
    Entity *const via = addVia(alone.root(), 1, 1);
    expectBox(builder.buildPart(via), {0.8, 0, 0.8, 1.2, 0, 1.2});
}

} // namespace
