// Vias and bond wires of the board.
#include "VelkinBench.h"

using namespace VelkinTest;

namespace {

class VelkinVias : public VelkinBench {
protected:
    const EDA::EDAVia &via(int index = 0) { return board().beginVias()[index]; }
};

} // namespace

TEST_F(VelkinVias, HaveAllThatTheirRecordsTell) {
    EXPECT_TRUE(convert(R"(edge 0,0 4,0 4,3 0,3
        viamodel V kind=2 radius=0.15e-3 fill=resin plating=25e-6,0
        via v1 model=V from=TOP to=BOTTOM at=1.5,2.5 angle=30)"));
    ASSERT_EQ(board().numVias(1), 1u);
    EXPECT_EQ(via().getName(), "v1");
    EXPECT_EQ(via().getHoleType(), "VIA");
    EXPECT_EQ(via().getDiameter(), 0.3e-3);
    EXPECT_EQ(via().getXCentre(), 1.5);
    EXPECT_EQ(via().getYCentre(), 2.5);
    EXPECT_EQ(via().getAngle(), 30.0);
    EXPECT_EQ(via().getFillMaterial(), "resin");
    EXPECT_EQ(via().getPlatingThickness(), 25e-6);
    EXPECT_TRUE(via().isPlated());
    EXPECT_TRUE(via().getOutline().empty());
    std::string from, to;
    via().getLayers(from, to);
    EXPECT_EQ(from, "TOP");
    EXPECT_EQ(to, "BOTTOM");
}

TEST_F(VelkinVias, OfOneKindShareADefinition) {
    EXPECT_TRUE(convert(R"(edge 0,0 4,0 4,3 0,3
        viamodel V kind=2 radius=0.1
        viamodel W kind=2 radius=0.2
        via v1 model=V at=1,1
        via v2 model=W at=1,2
        via v3 model=V at=1,3)"));
    EXPECT_EQ(board().numVias(0), 2u);
    EXPECT_EQ(board().numVias(1), 3u);
    EXPECT_EQ(via().getInstanceName(0), "v3");
    EXPECT_EQ(via().getInstanceYCentre(0), 3.0);
}

TEST_F(VelkinVias, TheSecondPlatingCountsWhereTheFirstIsNone) {
    EXPECT_TRUE(convert(R"(edge 0,0 4,0 4,3 0,3
        viamodel A kind=2 radius=1 plating=0.9e-9,20e-6
        viamodel B kind=2 radius=2 plating=1e-9,20e-6
        viamodel C kind=2 radius=3 plating=1.1e-9,20e-6
        viamodel D kind=2 radius=4 plating=0,1e-9
        viamodel E kind=2 radius=5 plating=-1,-2
        via a model=A
        via b model=B
        via c model=C
        via d model=D
        via e model=E)"));
    ASSERT_EQ(board().numVias(0), 5u);
    const double thicknesses[] = {20e-6, 1e-9, 1.1e-9, 1e-9, -2};
    const bool plated[] = {true, false, true, false, false};
    for (int i = 0; i < 5; ++i) {
        EXPECT_EQ(via(i).getPlatingThickness(), thicknesses[i]) << i;
        EXPECT_EQ(via(i).isPlated(), plated[i]) << i;
    }
}

TEST_F(VelkinVias, OfOtherShapesHaveAnOutline) {
    EXPECT_TRUE(convert(R"(edge 0,0 4,0 4,3 0,3
        viamodel S 0,0 1,0 2,0 2,1 0,1
        viamodel B kind=0 -1,-2 3,4
        via s model=S at=1,1
        via b model=B at=2,2)"));
    ASSERT_EQ(board().numVias(0), 2u);
    EXPECT_EQ(via(0).getDiameter(), 0.0);
    EXPECT_EQ(via(0).getOutline().numPoints(), 4u);
    EXPECT_EQ(via(1).getOutline().numPoints(), 4u);
}

TEST_F(VelkinVias, OfAMissingModelAreEmpty) {
    EXPECT_TRUE(convert("edge 0,0 4,0 4,3 0,3\nvia v model=none from=A to=B at=1,2"));
    ASSERT_EQ(board().numVias(0), 1u);
    EXPECT_EQ(via().getDiameter(), 0.0);
    EXPECT_TRUE(via().getOutline().empty());
    EXPECT_FALSE(via().isPlated());
    EXPECT_EQ(via().getHoleType(), "VIA");
}

TEST_F(VelkinVias, TakeTheLastOfSeveralModelsOfOneName) {
    EXPECT_TRUE(convert(R"(edge 0,0 4,0 4,3 0,3
        viamodel V kind=2 radius=1
        viamodel V kind=2 radius=2
        via v model=V)"));
    EXPECT_EQ(via().getDiameter(), 4.0);
}

TEST_F(VelkinVias, WiresAreOneForEachPath) {
    EXPECT_TRUE(convert(R"(edge 0,0 4,0 4,3 0,3
        wire W model=M group=G from=TOP to=BOTTOM material=gold
        path d=0.1 0,0,1 1,1,2 2,2,3
        path d=0.2 5,6,7
        path d=0.3
        wire X)"));
    ASSERT_EQ(board().numWirebonds(), 3u);
    const double diameters[] = {0.1, 0.2, 0.3};
    const std::size_t points[] = {3, 1, 0};
    for (int i = 0; i < 3; ++i) {
        const EDA::EDAWirebond &wire = board().beginWirebonds()[i];
        EXPECT_EQ(wire.getName(), "W");
        EXPECT_EQ(wire.getModelName(), "M");
        EXPECT_EQ(wire.getGroupName(), "G");
        EXPECT_EQ(wire.getMaterial(), "gold");
        EXPECT_EQ(wire.getStartLayer(), "TOP");
        EXPECT_EQ(wire.getEndLayer(), "BOTTOM");
        EXPECT_EQ(wire.getDiameter(), diameters[i]);
        EXPECT_EQ(wire.getPoints().size(), points[i]);
    }
    const Geometry::Vec3T<double> &point = board().beginWirebonds()[1].getPoints()[0];
    EXPECT_EQ(point.x, 5.0);
    EXPECT_EQ(point.y, 6.0);
    EXPECT_EQ(point.z, 7.0);
}
