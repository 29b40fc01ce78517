// Component definitions, their placements and bumps.
#include "VelkinBench.h"

using namespace VelkinTest;

namespace {

// Four layers: the bottom is behind the third.
const std::string stack = R"(
    layer TOP type=0 z=1.5,1.6
    layer CORE type=1 z=0.3,1.5
    layer INNER type=0 z=0.2,0.3
    layer BOTTOM type=0 z=0.1,0.2
    )";

class VelkinComponents : public VelkinBench {
protected:
    bool convertOnStack(const char *layout) { return convert((stack + layout).c_str()); }
    const EDA::EDAComponent &component(int index = 0) { return board().beginComponents()[index]; }
    const EDA::EDAComponentPlacement &placement(int index = 0) { return board().beginPlacements()[index]; }
};

} // namespace

TEST_F(VelkinComponents, HaveAllThatTheirRecordsTell) {
    EXPECT_TRUE(
        convertOnStack("package QFP maker=ACME part=Q-7 height=2 mold=5,4,3 material=resin 0,0 4,0 4,4 0,4"));
    ASSERT_EQ(board().numComponents(), 1u);
    EXPECT_TRUE(component().isElectrical());
    EXPECT_EQ(component().getType(), "ELECTRICAL");
    EXPECT_EQ(component().getName(), "QFP");
    EXPECT_EQ(component().getManufacturer(), "ACME");
    EXPECT_EQ(component().getPartNumber(), "Q-7");
    EXPECT_EQ(component().getHeight(), 2.0);
    EXPECT_EQ(component().getOutline().numPoints(), 4u);
    EXPECT_TRUE(component().isMoldEnabled());
    EXPECT_EQ(component().getMoldMaterialName(), "resin");
    EXPECT_EQ(component().getMoldLength(), 5.0);
    EXPECT_EQ(component().getMoldWidth(), 4.0);
    // The import takes the component's height instead.
    EXPECT_EQ(component().getMoldHeight(), -1.0);
}

TEST_F(VelkinComponents, HaveAMoldOnlyWithLengthAndWidth) {
    for (const char *mold : {"0,4,3", "5,0,3", "-1,4,3", "5,-1,3", "nan,4,3"}) {
        EXPECT_TRUE(convertOnStack((std::string("package P mold=") + mold).c_str()));
        EXPECT_FALSE(component().isMoldEnabled()) << mold;
    }
    EXPECT_TRUE(convertOnStack("package P mold=5,4,0"));
    EXPECT_TRUE(component().isMoldEnabled());
    script().layout.componentModels[0].isMoldEnabled = false;
    EXPECT_TRUE(readDesign("board.brd"));
    EXPECT_FALSE(component().isMoldEnabled());
    EXPECT_EQ(component().getMoldLength(), 5.0);
}

TEST_F(VelkinComponents, OfOneShapeAreStoredOnceAndOfAnotherRenamed) {
    EXPECT_TRUE(convertOnStack(R"(package P part=1 0,0 1,0 1,1
        package P part=1 0,0 1,0 1,1
        package P part=1 0,0 2,0 2,2)"));
    ASSERT_EQ(board().numComponents(), 2u);
    EXPECT_EQ(component(1).getName(), "P-1");
}

TEST_F(VelkinComponents, PlacementsHaveAllThatTheirRecordsTell) {
    EXPECT_TRUE(convertOnStack("component U1 model=QFP layer=TOP at=1,2 turn=30"));
    ASSERT_EQ(board().numComponentPlacements(), 1u);
    EXPECT_EQ(placement().getReferenceDesignator(), "U1");
    EXPECT_EQ(placement().getName(), "QFP");
    EXPECT_EQ(placement().getPartNumber(), "");
    EXPECT_EQ(placement().getBoardSide(), "TOP");
    EXPECT_EQ(placement().getXLocation(), 1.0);
    EXPECT_EQ(placement().getYLocation(), 2.0);
    EXPECT_EQ(placement().getAngle(false), 30.0);
    EXPECT_EQ(placement().getStatus(), "");
}

TEST_F(VelkinComponents, AreFoundByTheNameAloneOfThePlacement) {
    EXPECT_TRUE(convertOnStack("package QFP part=Q-7 0,0 1,0 1,1\ncomponent U1 model=QFP layer=TOP"));
    EXPECT_EQ(board().findComponent(placement()), &component());
}

TEST_F(VelkinComponents, BehindTheMiddleOfTheStackAreOnTheBottom) {
    EXPECT_TRUE(convertOnStack(R"(component A layer=TOP
        component B layer=CORE
        component C layer=INNER
        component D layer=BOTTOM)"));
    EXPECT_EQ(placement(0).getBoardSide(), "TOP");
    EXPECT_EQ(placement(1).getBoardSide(), "TOP");
    EXPECT_EQ(placement(2).getBoardSide(), "TOP");
    EXPECT_EQ(placement(3).getBoardSide(), "BOTTOM");
}

TEST_F(VelkinComponents, TheMiddleIsThatOfAllLayerRecords) {
    EXPECT_TRUE(convert(R"(layer A type=0 z=0.4,0.5
        layer M type=7 z=0.2,0.4
        layer B type=0 z=0.1,0.2
        component U layer=B)"));
    EXPECT_EQ(placement().getBoardSide(), "BOTTOM");
    EXPECT_EQ(board().numLayers(), 2u);
}

TEST_F(VelkinComponents, OnAnUnknownLayerAreOnTheTop) {
    EXPECT_TRUE(convertOnStack("component A layer=none\ncomponent B"));
    EXPECT_EQ(placement(0).getBoardSide(), "TOP");
    EXPECT_EQ(placement(1).getBoardSide(), "TOP");
}

TEST_F(VelkinComponents, OnTheBottomTurnTheOtherWay) {
    EXPECT_TRUE(convertOnStack("component A layer=BOTTOM turn=30\ncomponent B layer=BOTTOM turn=0\n"
                               "component C layer=BOTTOM turn=400\ncomponent D layer=TOP turn=-90"));
    EXPECT_EQ(placement(0).getAngle(false), 330.0);
    EXPECT_EQ(placement(0).getAngle(true), 30.0);
    EXPECT_EQ(placement(1).getAngle(false), 360.0);
    EXPECT_EQ(placement(2).getAngle(false), 320.0);
    EXPECT_EQ(placement(3).getAngle(false), 270.0);
}

TEST_F(VelkinComponents, StandOnTheOuterConductors) {
    EXPECT_TRUE(convert(R"(layer MASK type=1 z=1.6,1.75
        layer TOP type=0 z=1.5,1.6
        layer CORE type=1 z=0.2,1.5
        layer BOTTOM type=0 z=0.125,0.2
        layer MASK2 type=1 z=0,0.125
        component A layer=TOP
        component B layer=BOTTOM)"));
    EXPECT_NEAR(placement(0).getOffset(), -0.15, 1e-15);
    EXPECT_EQ(placement(1).getOffset(), -0.125);
}

TEST_F(VelkinComponents, WithoutConductorsStandOnTheBoardItself) {
    EXPECT_TRUE(convert("edge 0,0 1,0 1,1\nlayer D type=1 z=0,1\ncomponent A layer=D"));
    EXPECT_EQ(placement().getOffset(), 0.0);
    EXPECT_FALSE(std::signbit(placement().getOffset()));
}

TEST_F(VelkinComponents, BumpsHaveAllThatTheirRecordsTell) {
    EXPECT_TRUE(convertOnStack(R"(component U1 model=BGA layer=TOP at=1,2
        bump B1 at=3,4 type=2 height=0.5 max=0.4 top=0.3 bottom=0.2 material=tin layer=INNER)"));
    ASSERT_EQ(placement().numBumps(1), 1u);
    const EDA::EDABump &bump = placement().getBump(0);
    EXPECT_EQ(bump.getName(), "B1");
    EXPECT_EQ(bump.getXCentre(), 3.0);
    EXPECT_EQ(bump.getYCentre(), 4.0);
    EXPECT_EQ(bump.getBumpType(), 2);
    EXPECT_EQ(bump.getGroup(), "U1");
    EXPECT_EQ(bump.getHeight(), 0.5);
    EXPECT_EQ(bump.getMaxDiameter(), 0.4);
    EXPECT_EQ(bump.getTopDiameter(), 0.3);
    EXPECT_EQ(bump.getBottomDiameter(), 0.2);
    EXPECT_EQ(bump.getMaterial(), "tin");
    EXPECT_EQ(bump.getLayer(), "INNER");
    // The layer's low face is 0.2 above that of the board, whose own is 0.1 below the first layer's.
    EXPECT_NEAR(bump.getVerticalOffset(), 0.2 + 0.5, 1e-12);
}

TEST_F(VelkinComponents, BumpsBelongToTheirComponentWhateverTheyAreCalled) {
    EXPECT_TRUE(convertOnStack("component U1 layer=TOP\nbump BGA!!GRP_-A7 layer=TOP"));
    EXPECT_EQ(placement().getBump(0).getGroup(), "U1");
}

TEST_F(VelkinComponents, BumpsKeepTheDefaultOfASizeThatIsNotKnown) {
    EXPECT_TRUE(convertOnStack("component U1 layer=TOP\nbump B height=0 max=-1 top=nan"));
    const EDA::EDABump &bump = placement().getBump(0);
    EXPECT_EQ(bump.getHeight(), 0.001);
    EXPECT_EQ(bump.getMaxDiameter(), 0.001);
    EXPECT_EQ(bump.getTopDiameter(), 0.001);
    EXPECT_EQ(bump.getBottomDiameter(), 0.001);
    EXPECT_EQ(bump.getMaterial(), "Solder");
    EXPECT_EQ(bump.getBumpType(), 0);
}

TEST_F(VelkinComponents, BumpsOnAnUnknownLayerHaveNoHeightAboveTheBoard) {
    EXPECT_TRUE(convertOnStack("component U1 layer=TOP\nbump B height=0.5 layer=none"));
    EXPECT_EQ(placement().getBump(0).getVerticalOffset(), 0.0);
}

TEST_F(VelkinComponents, BumpsOfOneKindShareADefinition) {
    EXPECT_TRUE(convertOnStack("component U1 layer=TOP\nbump A at=1,1\nbump B at=2,2\nbump C at=3,3 max=9"));
    EXPECT_EQ(placement().numBumps(0), 2u);
    EXPECT_EQ(placement().numBumps(1), 3u);
}
