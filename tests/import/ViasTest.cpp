// What a drilled hole becomes, and what a single via tells.
#include "support/CancelAfter.h"
#include "ViaSupport.h"

#include <limits>

using namespace TestSupport;

namespace {

constexpr double noNumber = std::numeric_limits<double>::quiet_NaN();

// What one hole of a type becomes: so many vias and holes of the board.
struct Outcome {
    std::size_t vias;
    std::size_t holes;
};

Outcome outcomeOf(const std::string &type, const char *importVias, const char *importNonPlated,
                  bool isPlated) {
    ViaBench bench;
    bench.via.setHoleType(type);
    bench.via.setPlated(isPlated);
    bench.set(Import_Vias_t, importVias);
    bench.set(Import_Non_Plated_Vias_t, importNonPlated);
    bench.importVia();
    return {bench.vias().size(), bench.holes().size()};
}

class ViaFamilies : public testing::TestWithParam<const char *> {
protected:
    ViaFamilies() { bench.set(Import_Type_t, GetParam()); }
    ViaBench bench;
};

INSTANTIATE_TEST_SUITE_P(All, ViaFamilies, testing::Values("PCB", "Component"),
                         [](const auto &test) { return std::string(test.param); });

} // namespace

TEST(Vias, TheKindAndTheOptionsDecideWhatAHoleBecomes) {
    struct Row {
        const char *type;
        const char *importVias;
        const char *importNonPlated;
        bool isPlated;
        Outcome outcome;
    };
    const Row rows[] = {
        {"VIA", "Yes", "Yes", true, {1, 0}},
        {"VIA", "Yes", "Yes", false, {1, 0}},
        {"VIA", "Yes", "No", true, {1, 0}},
        {"VIA", "Yes", "No", false, {0, 0}},
        {"ViaTerminal", "Yes", "Yes", true, {1, 0}},
        {"via", "No", "Yes", true, {0, 0}},
        {"PIN", "Yes", "Yes", false, {1, 0}},
        {"PIN", "Yes", "No", false, {0, 0}},
        {"PIN", "No", "Yes", true, {0, 0}},
        {"ComponentTerminal", "Yes", "No", true, {1, 0}},
        {"MTG", "Yes", "No", false, {0, 1}},
        {"MTG", "No", "No", true, {0, 1}},
        {"", "No", "No", false, {0, 1}},
        {"PartMountingFeature", "Yes", "Yes", true, {0, 1}},
        {"TOOL", "Yes", "No", false, {0, 1}},
        {"tool", "No", "Yes", true, {0, 1}},
        {"Other", "Yes", "Yes", true, {0, 0}},
        {"Other", "No", "Yes", true, {0, 0}},
    };
    for (const Row &row : rows) {
        const Outcome outcome = outcomeOf(row.type, row.importVias, row.importNonPlated, row.isPlated);
        EXPECT_TRUE(outcome.vias == row.outcome.vias && outcome.holes == row.outcome.holes)
            << row.type << ' ' << row.importVias << ' ' << row.importNonPlated << ' ' << row.isPlated << ": "
            << outcome.vias << " vias, " << outcome.holes << " holes";
    }
}

TEST(Vias, ADroppedHoleIsToldNowhere) {
    ViaBench bench;
    bench.via.setHoleType("Other");
    bench.importVia();
    EXPECT_EQ(bench.importer.getErrorString(), "");
}

TEST_P(ViaFamilies, AViaHasItsSizeItsPlaceAndItsName) {
    Entity *const via = bench.importOne();
    ASSERT_TRUE(via);
    EXPECT_EQ(text(via, Name_t), "A");
    EXPECT_EQ(mm(via, Diameter_t), 0.5);
    expectAt(via, 5, 10);
    EXPECT_EQ(text(via, Modelling_Type_t), "Single Via");
    EXPECT_EQ(text(via, Height_From_t), "Board");
    EXPECT_EQ(text(via, Number_Of_Vias_t), "1");
    EXPECT_EQ(text(via, Filled_t), "No");
}

TEST_P(ViaFamilies, SizePlaceAndNumberAreLocked) {
    Entity *const via = bench.importOne();
    ASSERT_TRUE(via);
    for (const TypeRef &attribute : {Geometry_t, Placement_t, Number_Of_Vias_t})
        EXPECT_TRUE(isLocked(via, attribute)) << attribute.getLabel();
    EXPECT_TRUE(via->isProtected());
}

TEST_P(ViaFamilies, AMountingHoleIsARoundHoleOfTheBoardWithEachInstance) {
    bench.via.setHoleType("MTG");
    bench.via.setDiameter(3.2);
    bench.via.addInstance("B", 25, 50);
    bench.importVia();
    const auto holes = bench.holes();
    ASSERT_EQ(holes.size(), 2u);
    const bool onPcb = std::string(GetParam()) == "PCB";
    for (Entity *hole : holes) {
        EXPECT_EQ(hole->getType().getLabel(), onPcb ? "PCB Hole" : "Substrate Hole");
        EXPECT_EQ(text(hole, Shape_t), "Cylinder");
        EXPECT_NEAR(mm(hole, Diameter_t), 3.2, 1e-12);
        EXPECT_TRUE(isLocked(hole, Geometry_t));
        EXPECT_TRUE(isLocked(hole, Placement_t));
    }
    expectAt(holes[0], 5, 10);
    expectAt(holes[1], 15, 20);
}

TEST_P(ViaFamilies, ALongHoleIsASlotOfTheBoardTurnedByItsAngleWithEachInstance) {
    EDA::test::addPoints(bench.via.getOutline(), 0, "-2,-1 2,-1 2,1 -2,1 -2,-1");
    bench.via.setAngle(30);
    bench.via.addInstance("B", 25, 50);
    EXPECT_TRUE(bench.importVia().empty());
    const auto holes = bench.holes();
    ASSERT_EQ(holes.size(), 2u);
    for (Entity *hole : holes) {
        EXPECT_EQ(text(hole, Shape_t), "Rectangle");
        EXPECT_NEAR(mm(hole, Width_t), 4, 1e-12);
        EXPECT_NEAR(mm(hole, Depth_t), 2, 1e-12);
        EXPECT_EQ(getDoubleValue(hole, Orientation_t, "degrees", -1), 30);
    }
    // A rectangle stands where its corner at (-2, 1) is. The origin of the board counts once.
    expectAt(holes[0], 5 - 2, 10 - 1);
    expectAt(holes[1], 15 - 2, 20 - 1);
}

TEST_P(ViaFamilies, AMountingHoleIsRoundWhateverOutlineItHas) {
    EDA::test::addPoints(bench.via.getOutline(), 0, "-2,-1 2,-1 2,1 -2,1 -2,-1");
    bench.via.setHoleType("TOOL");
    bench.importVia();
    ASSERT_EQ(bench.holes().size(), 1u);
    EXPECT_EQ(text(bench.holes()[0], Shape_t), "Cylinder");
}

TEST_P(ViaFamilies, AFillMaterialIsLinkedWhenItIsAskedFor) {
    bench.set(Ignore_Fill_Material_t, "No");
    bench.via.setFillMaterial("Copper Paste");
    Entity *const via = bench.importOne();
    EXPECT_EQ(text(via, Filled_t), "Yes");
    Entity *const material = getLinkedEntity(via, Fill_Material_t);
    ASSERT_TRUE(material);
    EXPECT_EQ(text(material, Name_t), "Copper Paste");
}

TEST(Vias, AFillMaterialIsIgnoredUnlessItIsAskedFor) {
    ViaBench bench;
    bench.via.setFillMaterial("Copper Paste");
    Entity *const via = bench.importOne();
    EXPECT_EQ(text(via, Filled_t), "No");
    EXPECT_FALSE(getLinkedEntity(via, Fill_Material_t));
}

TEST(Vias, AnUnfilledViaStaysUnfilledWithTheOptionOff) {
    ViaBench bench;
    bench.set(Ignore_Fill_Material_t, "No");
    EXPECT_EQ(text(bench.importOne(), Filled_t), "No");
}

TEST(Vias, AViaWithoutOutlineIsRoundWhateverItsDiameter) {
    for (const double diameter : {0.0, 1e-6, 1000.0}) {
        ViaBench bench;
        bench.via.setDiameter(diameter);
        EXPECT_EQ(bench.importVia().size(), 1u) << diameter;
        EXPECT_TRUE(bench.holes().empty()) << diameter;
    }
}

TEST(Vias, AHoleIsASlotFromAThousandthOfItsDiameterOn) {
    const std::pair<const char *, bool> rows[] = {
        {"0,0 1,0 1,1.001 0,1.001 0,0", true},
        {"0,0 1,0 1,1.0009 0,1.0009 0,0", false},
        {"0,0 1.001,0 1.001,1 0,1 0,0", true},
        {"-0.5,-0.5005 0.5,-0.5005 0.5,0.5005 -0.5,0.5005 -0.5,-0.5005", true},
        {"0,0 1,0 1,1 0,1 0,0", false}};
    for (const auto &[points, isSlot] : rows) {
        ViaBench bench;
        bench.via.setDiameter(1.0);
        EDA::test::addPoints(bench.via.getOutline(), 0, points);
        EXPECT_EQ(bench.importVia().size(), isSlot ? 0u : 1u) << points;
        EXPECT_EQ(bench.holes().size(), isSlot ? 1u : 0u) << points;
    }
}

TEST(Vias, ASlotIsAPolygonAroundItsMiddleIfShapesStayAsTheyAre) {
    ViaBench bench;
    bench.set(Simplify_Shapes_t, "No");
    bench.set(Reset_Board_Origin_t, "Yes");
    EDA::test::addPoints(bench.via.getOutline(), 0, "0,0 4,0 4,2 0,2 0,0");
    bench.importVia();
    ASSERT_EQ(bench.holes().size(), 1u);
    EXPECT_EQ(text(bench.holes()[0], Shape_t), "Polygon");
    expectAt(bench.holes()[0], 5 + 2, 10 - 1);
}

TEST(Vias, ASlotWithoutAreaLeavesNothingAndSaysNothing) {
    ViaBench bench;
    EDA::test::addPoints(bench.via.getOutline(), 0, "0,0 4,0 0,0");
    EXPECT_TRUE(bench.importVia().empty());
    EXPECT_TRUE(bench.holes().empty());
    EXPECT_EQ(bench.importer.getErrorString(), "");
}

TEST(Vias, AnUnplatedSlotIsLeftOutWithUnplatedVias) {
    ViaBench bench;
    bench.set(Import_Non_Plated_Vias_t, "No");
    EDA::test::addPoints(bench.via.getOutline(), 0, "0,0 4,0 4,2 0,2 0,0");
    bench.importVia();
    EXPECT_TRUE(bench.holes().empty());
}

TEST(Vias, UnnamedViasAreNumberedAsTheListGrows) {
    ViaBench bench;
    bench.via.setName("");
    bench.add();
    bench.add();
    EXPECT_EQ(names(bench.importVia()), (Names{"Via 1", "Via 2", "Via 3"}));
}

TEST(Vias, ANamedViaCountsForTheNumberOfTheNext) {
    ViaBench bench;
    bench.add();
    bench.via.setName("");
    EXPECT_EQ(names(bench.importVia()), (Names{"A", "Via 2"}));
}

TEST(Vias, PlatingHasTheThicknessItIsGiven) {
    ViaBench bench;
    bench.via.setPlatingStyle("pth");
    bench.via.setPlatingThickness(0.025);
    Entity *const via = bench.importOne();
    EXPECT_EQ(text(via, Plated_t), "Yes");
    EXPECT_EQ(text(via, "Plating Thickness"), "0.025 mm");
}

TEST(Vias, PlatingWithoutThicknessIs35MicronWhateverTheUnitsOfTheBoard) {
    for (const double thickness : {0.0, 1e-9, -1.0}) {
        for (const char *units : {"MM", "THOU", "IN"}) {
            ViaBench bench;
            bench.board().setUnits(units);
            bench.via.setPlated(true);
            bench.via.setPlatingThickness(thickness);
            EXPECT_NEAR(mm(bench.importOne(), "Plating Thickness"), 0.035, 1e-12) << units << thickness;
        }
    }
}

TEST(Vias, AnUnplatedViaGetsNoPlatingThickness) {
    ViaBench bench;
    bench.via.setPlatingThickness(0.025);
    Entity *const via = bench.importOne();
    EXPECT_EQ(text(via, Plated_t), "No");
    EXPECT_NE(mm(via, "Plating Thickness"), 0.025);
}

TEST(Vias, AHeightOfItsOwnIsUserSpecified) {
    ViaBench bench;
    bench.via.setZDimensions(0.2, 0.9);
    Entity *const via = bench.importOne();
    EXPECT_EQ(text(via, Height_From_t), "User Specified");
    EXPECT_NEAR(mm(via, Height_t), 0.7, 1e-12);
    EXPECT_NEAR(mm(via, Y_Location_t), 0.2, 1e-12);
}

TEST(Vias, LayersWinOverAHeightThatStaysBesideThem) {
    ViaBench bench;
    bench.via.setZDimensions(0.2, 0.9);
    bench.via.setLayers("top", "no such layer");
    Entity *const via = bench.importOne();
    EXPECT_EQ(text(via, Height_From_t), "Layers");
    EXPECT_EQ(text(via, From_Layer_t), "top");
    EXPECT_EQ(text(via, To_Layer_t), "no such layer");
    EXPECT_NEAR(mm(via, Height_t), 0.7, 1e-12);
}

TEST(Vias, AViaBetweenLayersNeedsNoHeight) {
    ViaBench bench;
    bench.via.setZDimensions(0.4, 0.4);
    bench.via.setLayers("top", "bottom");
    Entity *const via = bench.importOne();
    EXPECT_EQ(text(via, Height_From_t), "Layers");
    EXPECT_EQ(mm(via, Height_t), 0.0);
    EXPECT_EQ(mm(via, Y_Location_t), 0.0);
}

TEST(Vias, OneLayerIsNone) {
    for (const auto &[from, to] : {std::pair{"top", ""}, {"", "bottom"}}) {
        ViaBench bench;
        bench.via.setLayers(from, to);
        Entity *const via = bench.importOne();
        EXPECT_EQ(text(via, Height_From_t), "Board");
        EXPECT_EQ(text(via, From_Layer_t), "");
        EXPECT_EQ(text(via, To_Layer_t), "");
    }
}

TEST(Vias, AViaThatEndsBelowItsBeginningHasNoHeight) {
    ViaBench bench;
    bench.via.setZDimensions(0.9, 0.2);
    Entity *const via = bench.importOne();
    EXPECT_EQ(text(via, Height_From_t), "User Specified");
    EXPECT_EQ(mm(via, Height_t), 0.0);
    EXPECT_NEAR(mm(via, Y_Location_t), 0.9, 1e-12);
}

TEST(Vias, NumbersThatAreNoneStayUnset) {
    ViaBench bench;
    bench.via.setDiameter(noNumber);
    bench.via.setCentre(noNumber, 60);
    bench.via.setZDimensions(noNumber, 1.0);
    Entity *const via = bench.importOne();
    EXPECT_NEAR(mm(via, Diameter_t), 0.3, 1e-12);
    expectAt(via, 0, 10);
    EXPECT_EQ(text(via, Height_From_t), "Board");
}

TEST(Vias, WithoutABoardNothingIsMade) {
    for (const char *type : {"VIA", "MTG"}) {
        ViaBench bench;
        bench.via.setHoleType(type);
        bench.add();
        bench.importer.setImportOptions(bench.options(), bench.board());
        EXPECT_FALSE(bench.importer.importBoard(&bench.reader, nullptr, nullptr, nullptr));
    }
}

TEST(Vias, ACancelKeepsTheViasMadeBefore) {
    ViaBench bench;
    for (int i = 0; i < 5; ++i)
        bench.add();
    CancelAfter progress(2);
    bench.boardEntity = bench.import(&progress);
    EXPECT_EQ(bench.vias().size(), 3u);
    EXPECT_EQ(progress.finishes, 1);
    EXPECT_TRUE(isLocked(bench.vias()[2], Geometry_t));
}

TEST(Vias, EachDefinitionIsOneStepOfProgress) {
    ViaBench bench;
    bench.via.addInstance("B", 25, 50);
    bench.add();
    bench.add(makeVia("Other", "", 1, 1));
    RecordingProgress progress;
    bench.boardEntity = bench.import(&progress);
    EXPECT_EQ(progress.polls, 2);
    EXPECT_EQ(progress.texts.back(), "Importing Drilled Holes...");
}

TEST(Vias, AnUndoTakesBackAllAndARedoBringsItAgain) {
    ViaBench bench;
    bench.via.addInstance("B", 25, 50);
    bench.add(makeVia("MTG", "", 30, 30));
    const std::string before = ModelFile::toText(bench.model);
    bench.importVia();
    const std::string after = ModelFile::toText(bench.model);
    ASSERT_TRUE(UndoStack::instance().undo());
    EXPECT_EQ(ModelFile::toText(bench.model), before);
    ASSERT_TRUE(UndoStack::instance().redo());
    EXPECT_EQ(ModelFile::toText(bench.model), after);
}

TEST(Vias, AReimportReplacesVias) {
    ViaBench bench;
    bench.via.setName("");
    bench.via.addInstance("B", 25, 50);
    bench.importVia();
    bench.importOver(bench.boardEntity);
    EXPECT_EQ(names(bench.vias()), (Names{"B", "Via 1"}));
}

TEST(Vias, AnIncrementalReimportNumbersBehindTheOldOnes) {
    ViaBench bench;
    bench.via.setName("");
    bench.importVia();
    bench.board().setImportType("INCREMENTAL");
    bench.importOver(bench.boardEntity);
    EXPECT_EQ(names(bench.vias()), (Names{"Via 1", "Via 2"}));
}
