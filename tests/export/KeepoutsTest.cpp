// Keepouts.
#include "ExportScene.h"

using namespace TestSupport;

namespace {

class ExportedKeepout : public ExportScene {
protected:
    Entity *addKeepout(const Values &values = {}, const char *name = "") {
        return add(pcb, "Board Keepout", "Keepouts", values, name);
    }
    EDA::EDAKeepout keepout(const std::string &units = "mm") const {
        const EDA::EDABoard board = exported(units);
        EXPECT_EQ(board.numKeepouts(), 1u);
        return *board.beginKeepouts();
    }
};

TEST_F(ExportedKeepout, HasTheTypeOfItsKind) {
    Entity *const entity = addKeepout();
    for (const auto &[kind, type] :
         {std::pair{"Components", "PLACE_KEEPOUT"}, {"Vias", "VIA_KEEPOUT"}, {"Routing", "Route"}}) {
        set(entity, {{"Keepout Type", kind}});
        EXPECT_EQ(keepout().getType(), type) << kind;
    }
}

TEST_F(ExportedKeepout, HasTheSideAsTheModelSpellsIt) {
    Entity *const entity = addKeepout();
    for (const char *side : {"Both", "Top", "Bottom"}) {
        set(entity, {{"Board Side", side}});
        EXPECT_EQ(keepout().getBoardSide(), side);
    }
}

TEST_F(ExportedKeepout, HasNameAndHeight) {
    addKeepout({{"Height", "1 in"}}, "under the lid");
    EXPECT_EQ(keepout("THOU").getName(), "under the lid");
    EXPECT_NEAR(keepout("THOU").getHeight(), 1000, 1e-9);
}

TEST_F(ExportedKeepout, RectangleHangsFromItsLocation) {
    addKeepout({{"Width", "4 mm"}, {"Depth", "6 mm"}, {"X Location", "20 mm"}, {"Z Location", "10 mm"}});
    expectRows(keepout().getOutline(), {{30, 60, 0}, {30, 54, 0}, {34, 54, 0}, {34, 60, 0}, {30, 60, 0}});
}

TEST_F(ExportedKeepout, CircleIsAroundItsLocation) {
    addKeepout(
        {{"Shape", "Cylinder"}, {"Diameter", "3 mm"}, {"X Location", "20 mm"}, {"Z Location", "10 mm"}});
    expectRows(keepout().getOutline(), {{30, 60, 0}, {31.5, 60, 360}});
}

TEST_F(ExportedKeepout, PolygonIsAroundItsLocation) {
    addKeepout({{"Shape", "Polygon"}, {"Outline", "1,1,2,1,2,3 <mm>"}});
    expectRows(keepout().getOutline(), {{11, 69, 0}, {12, 69, 0}, {12, 67, 0}, {11, 69, 0}});
}

TEST_F(ExportedKeepout, KeepTheOrderOfTheList) {
    addKeepout({}, "first");
    addKeepout({}, "second");
    const EDA::EDABoard board = exported();
    EXPECT_EQ(board.beginKeepouts()[0].getName(), "first");
    EXPECT_EQ(board.beginKeepouts()[1].getName(), "second");
}

} // namespace
