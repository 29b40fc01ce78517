// Keepouts of boards.
#include "support/ImportBench.h"

#include <gtest/gtest.h>

using namespace TestSupport;

namespace {

struct KeepoutBench : ImportBench {
    explicit KeepoutBench(const char *type, const char *side = "TOP") : keepout(type) {
        rectangle(0, 10, 20, 110, 70);
        keepout.setBoardSide(side);
        keepout.setHeight(7.5);
        keepout.setName("K1");
    }
    void points(std::initializer_list<std::pair<double, double>> list) {
        for (const auto &[x, y] : list)
            keepout.addPoint(0, x, y, 0.0);
    }
    Entity *importOne() {
        board().addKeepout(keepout);
        const auto found = children(import(), Board_Keepout_t);
        return found.size() == 1 ? found[0] : nullptr;
    }

    EDA::EDAKeepout keepout;
};

} // namespace

TEST(Keepouts, ARectangleLiesAtItsLowXHighYCorner) {
    KeepoutBench bench("PLACE_KEEPOUT");
    bench.points({{20, 30}, {24, 30}, {24, 40}, {20, 40}});
    Entity *keepout = bench.importOne();
    ASSERT_TRUE(keepout);
    EXPECT_EQ(text(keepout, Shape_t), "Rectangle");
    EXPECT_EQ(mm(keepout, Width_t), 4.0);
    EXPECT_EQ(mm(keepout, Depth_t), 10.0);
    EXPECT_EQ(mm(keepout, X_Location_t), 10.0);
    EXPECT_EQ(mm(keepout, Z_Location_t), 30.0);
    EXPECT_EQ(text(keepout, Name_t), "K1");
    EXPECT_EQ(mm(keepout, Height_t), 7.5);
    EXPECT_TRUE(keepout->findAttribute(Placement_t)->isLocked());
}

TEST(Keepouts, ACircleLiesAtItsCentre) {
    KeepoutBench bench("PLACE_KEEPOUT");
    bench.keepout.addPoint(0, 50, 40, 0.0);
    bench.keepout.addPoint(0, 60, 40, 360.0);
    Entity *keepout = bench.importOne();
    ASSERT_TRUE(keepout);
    EXPECT_EQ(text(keepout, Shape_t), "Cylinder");
    EXPECT_NEAR(mm(keepout, X_Location_t), 40.0, 1e-9);
    EXPECT_NEAR(mm(keepout, Z_Location_t), 30.0, 1e-9);
}

TEST(Keepouts, AnyOtherShapeIsAPolygonOfMappedPointsAtZero) {
    KeepoutBench bench("PLACE_KEEPOUT");
    bench.points({{20, 30}, {24, 30}, {24, 40}});
    Entity *keepout = bench.importOne();
    ASSERT_TRUE(keepout);
    EXPECT_EQ(text(keepout, Outline_t), "10,40,14,40,14,30 <mm>");
    EXPECT_EQ(mm(keepout, X_Location_t), 0.0);
    EXPECT_EQ(mm(keepout, Z_Location_t), 0.0);
}

TEST(Keepouts, AnEmptyOneIsAPolygonWithoutOutline) {
    KeepoutBench bench("Via");
    Entity *keepout = bench.importOne();
    ASSERT_TRUE(keepout);
    EXPECT_EQ(text(keepout, Shape_t), "Polygon");
    EXPECT_EQ(text(keepout, Outline_t), "");
}

TEST(Keepouts, KindsAndSidesAreTranslated) {
    struct Row {
        const char *type, *side, *kind, *boardSide;
    };
    const Row rows[] = {{"PLACE_KEEPOUT", "TOP", "Components", "Top"},
                        {"ComponentPlacement", "bottom", "Components", "Bottom"},
                        {"VIA_KEEPOUT", "BOTH", "Vias", "Both"},
                        {"Via", "ALL", "Vias", "Both"},
                        {"Route", "", "Routing", "Both"},
                        {"nonsense", "INNER", "Components", "Both"}}; // The default of the attribute.
    for (const Row &row : rows) {
        KeepoutBench bench(row.type, row.side);
        Entity *keepout = bench.importOne();
        ASSERT_TRUE(keepout) << row.type;
        EXPECT_EQ(text(keepout, Keepout_Type_t), row.kind) << row.type;
        EXPECT_EQ(text(keepout, Board_Side_t), row.boardSide) << row.side;
    }
}

TEST(Keepouts, EachKindIsLeftOutByItsOption) {
    const std::pair<const char *, TypeRef> rows[] = {{"PLACE_KEEPOUT", Import_Component_Keepouts_t},
                                                     {"Via", Import_Via_Keepouts_t},
                                                     {"Route", Import_Routing_Keepouts_t}};
    for (const auto &[type, option] : rows) {
        KeepoutBench bench(type);
        bench.set(option, "No");
        EXPECT_EQ(bench.importOne(), nullptr) << type;
        EXPECT_EQ(bench.importer.getErrorString(), "");
    }
}

TEST(Keepouts, OptionsOfOtherKindsLeaveThemIn) {
    KeepoutBench bench("Route");
    bench.set(Import_Component_Keepouts_t, "No");
    bench.set(Import_Via_Keepouts_t, "No");
    EXPECT_TRUE(bench.importOne());
}
