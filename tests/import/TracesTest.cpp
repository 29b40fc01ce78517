// Routes: polylines of a width that become junctions and segments.
#include "ConductorSupport.h"

#include <cmath>
#include <gmock/gmock.h>

using namespace TestSupport;
using testing::ElementsAre;

namespace {

const ConductorFamily *const families[] = {&onPcb, &onSubstrate};

Entity *onlyRoute(ConductorBench &bench) {
    const auto routes = bench.routes();
    EXPECT_EQ(routes.size(), 1u);
    return routes.size() == 1 ? routes[0] : nullptr;
}

std::vector<double> numbers(Entity *entity, std::initializer_list<const char *> labels) {
    std::vector<double> values;
    for (const char *label : labels)
        values.push_back(mm(entity, label));
    return values;
}

std::vector<std::string> storedLabels(Entity *entity) {
    std::vector<std::string> labels;
    entity->forEachStored([&labels](const Attribute &attribute) {
        if (!attribute.isDefault()) labels.push_back(attribute.getType().getLabel());
    });
    return labels;
}

} // namespace

TEST(Routes, OnePointGivesAWidthAndAStartAndNothingElse) {
    ConductorBench bench;
    bench.add(bench.route(0.25, "15,60", "R"));
    bench.importLayer();
    Entity *route = onlyRoute(bench);
    ASSERT_TRUE(route);
    EXPECT_THAT(storedLabels(route),
                ElementsAre("Name", "Ignore Collision Detection", "Width", "Start X", "Start Z"));
    EXPECT_EQ(text(route, Name_t), "R");
    EXPECT_EQ(text(route, Ignore_Collision_Detection_t), "Yes");
    EXPECT_THAT(numbers(route, {"Width", "Start X", "Start Z"}), ElementsAre(0.25, 5.0, 10.0));
}

TEST(Routes, TwoPointsGiveAJunctionAtTheEndAndASegmentWithoutAStartJunction) {
    ConductorBench bench;
    bench.add(bench.route(0.25, "15,60 20,55"));
    bench.importLayer();
    Entity *route = onlyRoute(bench);
    ASSERT_TRUE(route);
    const auto junctions = bench.children(route, Trace_Junction_t);
    const auto segments = bench.children(route, Trace_Segment_t);
    ASSERT_EQ(junctions.size(), 1u);
    ASSERT_EQ(segments.size(), 1u);
    EXPECT_THAT(numbers(junctions[0], {"X Location", "Z Location"}), ElementsAre(10.0, 15.0));
    EXPECT_THAT(numbers(segments[0], {"Width", "Start X", "Start Z", "End X", "End Z"}),
                ElementsAre(0.25, 5.0, 10.0, 10.0, 15.0));
    EXPECT_EQ(getLinkedEntity(segments[0], Start_Junction_t), nullptr);
    EXPECT_EQ(getLinkedEntity(segments[0], End_Junction_t), junctions[0]);
}

TEST(Routes, EachLaterPointGivesOneJunctionAndOneSegmentLinkedToItsNeighbours) {
    for (const ConductorFamily *family : families) {
        ConductorBench bench(*family);
        bench.add(bench.route(0.5, "10,70 12,70 12,68 14,66 14,60"));
        bench.importLayer();
        Entity *route = onlyRoute(bench);
        ASSERT_TRUE(route);
        const auto junctions = bench.children(route, Trace_Junction_t);
        const auto segments = bench.children(route, Trace_Segment_t);
        ASSERT_EQ(junctions.size(), 4u);
        ASSERT_EQ(segments.size(), 4u);
        for (size_t i = 0; i < segments.size(); ++i) {
            EXPECT_EQ(getLinkedEntity(segments[i], Start_Junction_t), i > 0 ? junctions[i - 1] : nullptr);
            EXPECT_EQ(getLinkedEntity(segments[i], End_Junction_t), junctions[i]);
            EXPECT_EQ(mm(segments[i], "End X"), mm(junctions[i], X_Location_t));
            EXPECT_EQ(mm(segments[i], "End Z"), mm(junctions[i], Z_Location_t));
            if (i == 0) continue;
            EXPECT_EQ(mm(segments[i], "Start X"), mm(segments[i - 1], "End X"));
        }
        EXPECT_THAT(numbers(junctions[3], {"X Location", "Z Location"}), ElementsAre(4.0, 10.0));
    }
}

TEST(Routes, RoutesThatTouchShareNoJunction) {
    ConductorBench bench;
    bench.add(bench.route(0.5, "10,70 12,70"));
    bench.add(bench.route(0.5, "14,70 12,70"));
    bench.importLayer();
    const auto routes = bench.routes();
    ASSERT_EQ(routes.size(), 2u);
    for (Entity *route : routes)
        EXPECT_EQ(bench.children(route, Trace_Junction_t).size(), 1u);
}

TEST(Routes, ARouteIsNotLockedAndHasNoMaterial) {
    ConductorBench bench;
    EDA::EDATrace route = bench.route(0.25, "15,60 20,55");
    route.getOutline().setMaterial("Copper");
    bench.add(route);
    bench.importLayer();
    Entity *entity = onlyRoute(bench);
    ASSERT_TRUE(entity);
    EXPECT_FALSE(entity->isProtected());
    entity->forEachStored([](const Attribute &attribute) { EXPECT_FALSE(attribute.isLocked()); });
    EXPECT_EQ(entity->readAttribute(MaterialLink_t), nullptr);
    EXPECT_TRUE(bench.children(bench.model.root(), Material_t).empty() ||
                text(bench.children(bench.model.root(), Material_t)[0], Name_t) != "Copper");
}

TEST(Routes, AnArcIsCutIntoTheStepsOfTheModelsSize) {
    ConductorBench bench;
    const char *const arc = "20,40 22,40@180";
    EDA::EDAOutline expected = EDA::test::outline(arc);
    const size_t unknownSize = expected.getPoints(true).size();
    expected.setModelDimension(bench.board().getModelDimension());
    const size_t ofModel = expected.getPoints(true).size();
    ASSERT_NE(ofModel, unknownSize);
    bench.add(bench.route(0.5, arc));
    bench.importLayer();
    Entity *route = onlyRoute(bench);
    ASSERT_TRUE(route);
    const auto segments = bench.children(route, Trace_Segment_t);
    ASSERT_EQ(segments.size(), ofModel - 1);
    EXPECT_NEAR(mm(segments.back(), "End X"), 12.0, 1e-9);
}

TEST(Routes, OnAPolygonBoardRoutesAloneAreMeasuredFromTheDesignsOwnOrigin) {
    ConductorBench bench;
    bench.reader.getBoard() = EDA::EDABoard();
    bench.board().setUnits("MM");
    bench.loop(0, {{10, 20}, {110, 20}, {110, 70}});
    bench.add(bench.route(0.5, "15,60 20,55"));
    bench.add(bench.shape(EDA::test::outline("15,60 20,60 20,55")));
    bench.importLayer();
    Entity *route = onlyRoute(bench);
    ASSERT_TRUE(route);
    EXPECT_THAT(numbers(route, {"Start X", "Start Z"}), ElementsAre(15.0, -60.0));
    ASSERT_EQ(bench.conductors().size(), 1u);
    EXPECT_EQ(text(bench.conductors()[0], Outline_t), "5,10,10,10,10,15 <mm>");
}

TEST(Routes, LengthsAreInTheBoardsUnits) {
    ConductorBench bench;
    bench.board().setUnits("THOU");
    bench.add(bench.route(8, "15,60 20,55"));
    bench.importLayer();
    Entity *route = onlyRoute(bench);
    ASSERT_TRUE(route);
    EXPECT_NEAR(mm(route, Width_t), 8 * 0.0254, 1e-12);
    EXPECT_NEAR(mm(bench.children(route, Trace_Junction_t)[0], X_Location_t), 10 * 0.0254, 1e-12);
}

TEST(Routes, AnEmptyRouteGivesNothing) {
    for (const ConductorFamily *family : families) {
        ConductorBench bench(*family);
        bench.add(bench.route(0.5, ""));
        ASSERT_TRUE(bench.importLayer());
        EXPECT_TRUE(bench.routes().empty());
    }
}

TEST(Routes, ANumberThatNoLengthTakesStaysUnsetAndTheRouteGoesOn) {
    ConductorBench bench;
    EDA::EDATrace route = bench.route(-1.0, "15,60");
    route.addPoint(0, std::nan(""), 60, 0.0);
    route.addPoint(0, 20, 55, 0.0);
    bench.add(route);
    bench.importLayer();
    Entity *entity = onlyRoute(bench);
    ASSERT_TRUE(entity);
    EXPECT_EQ(mm(entity, Width_t), 0.0);
    const auto junctions = bench.children(entity, Trace_Junction_t);
    ASSERT_EQ(junctions.size(), 2u);
    EXPECT_EQ(mm(junctions[1], X_Location_t), 10.0);
    EXPECT_EQ(bench.importer.getErrorString(), "");
}

TEST(Routes, EachKindOfBoardHasItsOwnRoutes) {
    for (const ConductorFamily *family : families) {
        ConductorBench bench(*family);
        bench.add(bench.route(0.5, "10,70 12,70"));
        bench.importLayer();
        ASSERT_TRUE(bench.boardEntity);
        EXPECT_EQ(bench.boardEntity->getType(), family->board);
        EXPECT_EQ(bench.routes().size(), 1u);
        std::vector<Entity *> all;
        bench.layerEntity->getChildEntities(all);
        EXPECT_EQ(all.size(), 1u);
    }
}

TEST(Routes, OneUndoTakesThemAllBackAndARedoBringsThemAgain) {
    ConductorBench bench;
    bench.add(bench.route(0.5, "10,70 12,70 12,68"));
    bench.add(bench.shape(EDA::test::outline("15,60 20,60 20,55", "16,59 17,59 17,58")));
    const std::string before = ModelFile::toText(bench.model);
    bench.importLayer();
    const std::string after = ModelFile::toText(bench.model);
    EXPECT_EQ(UndoStack::instance().undoName(), "Import Board");
    ASSERT_TRUE(UndoStack::instance().undo());
    EXPECT_EQ(ModelFile::toText(bench.model), before);
    ASSERT_TRUE(UndoStack::instance().redo());
    EXPECT_EQ(ModelFile::toText(bench.model), after);
}
