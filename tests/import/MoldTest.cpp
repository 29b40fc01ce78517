// The mold around a die.
#include "ComponentSupport.h"

using namespace TestSupport;

namespace {

struct MoldBench : ComponentBench {
    explicit MoldBench(const char *outline = boxOutline) : ComponentBench(outline) {
        part.setMoldEnabled(true);
        part.setMoldMaterialName("Epoxy");
        part.setMoldLength(12);
        part.setMoldWidth(9);
    }
    // The die and the mold; the mold is null if there are not two solids.
    void importDie() {
        add();
        const auto solids = importOnSubstrate();
        if (!solids.empty()) die = solids[0];
        if (solids.size() == 2) mold = solids[1];
    }

    Entity *die = nullptr;
    Entity *mold = nullptr;
};

} // namespace

TEST(Mold, IsACuboidOfItsOwnMaterialAroundTheDie) {
    MoldBench bench;
    bench.importDie();
    ASSERT_TRUE(bench.mold);
    EXPECT_EQ(text(bench.mold, Name_t), "Mold");
    EXPECT_EQ(text(bench.mold, Shape_t), "Cuboid");
    EXPECT_EQ(text(bench.mold, Type_t), "Encapsulant");
    EXPECT_EQ(mm(bench.mold, Width_t), 9.0);
    EXPECT_EQ(mm(bench.mold, Depth_t), 12.0);
    EXPECT_EQ(text(bench.mold, Origin_Point_t), "Low Centre");
    EXPECT_EQ(text(getLinkedEntity(bench.mold, MaterialLink_t), Name_t), "Epoxy");
    EXPECT_EQ(bench.mold->getOwnerEntity(), bench.die->getOwnerEntity());
}

TEST(Mold, TakesTheHeightOfTheDie) {
    MoldBench bench;
    bench.importDie();
    ASSERT_TRUE(bench.mold);
    EXPECT_EQ(mm(bench.mold, Height_t), 2.5);
}

TEST(Mold, OfADieWithoutHeightIsAsHighAsTheDieIsMade) {
    MoldBench bench;
    bench.part.setHeight(0);
    bench.importDie();
    ASSERT_TRUE(bench.mold);
    EXPECT_EQ(mm(bench.mold, Height_t), 1.5);
}

// The setter of the height is the setter of the width: so a mold never has a height of its own.
TEST(Mold, AHeightOfItsOwnCountsAsItsWidth) {
    MoldBench bench;
    bench.part.setMoldHeight(7);
    bench.importDie();
    ASSERT_TRUE(bench.mold);
    EXPECT_EQ(mm(bench.mold, Width_t), 7.0);
    EXPECT_EQ(mm(bench.mold, Height_t), 2.5);
}

TEST(Mold, StandsAndTurnsAsTheDieDoesOnBothSides) {
    for (const char *side : {"TOP", "BOTTOM"}) {
        MoldBench bench;
        bench.placement.setBoardSide(side);
        bench.placement.setAngle(30);
        bench.placement.setOffset(0.75);
        bench.importDie();
        ASSERT_TRUE(bench.mold) << side;
        for (const TypeRef &attribute : {X_Location_t, Y_Location_t, Z_Location_t, Rotation_Mechanism_t,
                                         Rotation_Order_t, Angle_1_t, Angle_2_t}) {
            EXPECT_EQ(text(bench.mold, attribute), text(bench.die, attribute)) << side;
        }
        EXPECT_EQ(text(bench.mold, Rotation_Mechanism_t), "Ordered");
        EXPECT_NE(mm(bench.mold, X_Location_t), 0.0);
        EXPECT_NE(mm(bench.mold, Y_Location_t), 0.0);
    }
}

TEST(Mold, SizesThatWereNotGivenStayThoseOfANewSolid) {
    MoldBench bench;
    bench.part.setMoldLength(-1);
    bench.part.setMoldWidth(std::nan(""));
    bench.importDie();
    ASSERT_TRUE(bench.mold);
    EXPECT_EQ(mm(bench.mold, Width_t), 10.0);
    EXPECT_EQ(mm(bench.mold, Depth_t), 10.0);
}

TEST(Mold, LengthAndWidthAreInTheBoardsUnitsWhateverTheComponents) {
    MoldBench bench;
    bench.part.setUnits("IN");
    bench.importDie();
    ASSERT_TRUE(bench.mold);
    EXPECT_EQ(mm(bench.mold, Width_t), 9.0);
    EXPECT_NEAR(mm(bench.mold, Height_t), 2.5 * 25.4, 1e-9);
    EXPECT_EQ(text(bench.mold, Height_t), "2.5 in");
}

TEST(Mold, WithoutMaterialIsOfATypicalComponent) {
    MoldBench bench;
    bench.part.setMoldMaterialName("");
    bench.importDie();
    ASSERT_TRUE(bench.mold);
    EXPECT_EQ(text(getLinkedEntity(bench.mold, MaterialLink_t), Name_t), "Typical Component");
}

TEST(Mold, IsOnlyMadeWhereItIsEnabled) {
    MoldBench bench;
    bench.part.setMoldEnabled(false);
    bench.importDie();
    EXPECT_TRUE(bench.die);
    EXPECT_EQ(bench.mold, nullptr);
}

TEST(Mold, IsOnlyMadeAroundASolid) {
    MoldBench bench;
    Entity *const component = bench.importOne();
    ASSERT_TRUE(component);
    EXPECT_TRUE(bench.children(component, Subcomponent_Group_t).empty());
}
