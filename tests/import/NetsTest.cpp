// Nets of detailed layers, and which conductors are left out.
#include "ConductorSupport.h"
#include "support/CancelAfter.h"

#include <gmock/gmock.h>

using namespace TestSupport;
using EDA::test::hole;
using EDA::test::outline;

namespace {

const ConductorFamily *const families[] = {&onPcb, &onSubstrate};
const char *const plate = "20,40 30,40 30,60 20,50";

EDA::EDANet net(const std::string &name, int traces) {
    EDA::EDANet made;
    made.setName(name);
    for (int i = 0; i < traces; ++i)
        made.addTrace(ConductorBench::shape(outline(plate)));
    return made;
}

} // namespace

TEST(Nets, ANetHasItsNameTwiceAndALockedPlace) {
    ConductorBench bench;
    bench.layer.addNet(net("GND", 0));
    bench.importLayer();
    ASSERT_EQ(bench.nets().size(), 1u);
    Entity *entity = bench.nets()[0];
    EXPECT_EQ(text(entity, Name_t), "GND");
    EXPECT_EQ(text(entity, Reference_Designator_t), "GND");
    EXPECT_TRUE(entity->findAttribute(Placement_t)->isLocked());
    EXPECT_TRUE(entity->isProtected());
}

TEST(Nets, EachKindOfBoardHasItsOwnTypesThroughout) {
    for (const ConductorFamily *family : families) {
        ConductorBench bench(*family);
        EDA::EDANet made = net("GND", 1);
        made.addTrace(bench.route(0.5, "10,70 12,70"));
        made.addTrace(bench.shape(outline("20,40 30,40 30,60 20,50", "22,42 24,42 24,45")));
        bench.layer.addNet(made);
        bench.importLayer();
        ASSERT_EQ(bench.nets().size(), 1u);
        Entity *entity = bench.nets()[0];
        const auto conductors = bench.children(entity, family->conductor);
        EXPECT_EQ(conductors.size(), 2u);
        EXPECT_EQ(bench.children(entity, family->route).size(), 1u);
        std::vector<Entity *> all;
        entity->getChildEntities(all);
        EXPECT_EQ(all.size(), 3u);
        ASSERT_EQ(conductors.size(), 2u);
        EXPECT_EQ(bench.holes(conductors[1]).size(), family == &onSubstrate ? 1u : 0u);
        EXPECT_EQ(numOutlineHoles(conductors[1]), family == &onSubstrate ? -1 : 1);
    }
}

TEST(Nets, ATraceWithoutPointsOrWithItsFirstHoleApartIsLeftOut) {
    EDA::EDAOutline apart = outline(plate, "80,40 81,40 81,41");
    EDA::EDAOutline laterApart = outline(plate, "22,42 24,42 24,45");
    laterApart.addInternalOutline(hole("80,40 81,40 81,41"));
    EDA::EDAOutline onlyHole;
    onlyHole.addInternalOutline(hole("80,40 81,40 81,41"));
    for (const bool inNet : {true, false}) {
        ConductorBench bench;
        EDA::EDANet made = net("N", 0);
        for (const EDA::EDAOutline &shape : {apart, laterApart, onlyHole, EDA::EDAOutline()}) {
            inNet ? (void)made.addTrace(bench.shape(shape)) : bench.add(bench.shape(shape));
        }
        bench.layer.addNet(made);
        bench.importLayer();
        const auto found = inNet ? bench.children(bench.nets()[0], PCB_Conductor_t) : bench.conductors();
        ASSERT_EQ(found.size(), 1u) << inNet;
        EXPECT_EQ(numOutlineHoles(found[0]), 2);
    }
}

TEST(Nets, AHoleThatMeetsTheOutlineWithinTheToleranceDoesNotLeaveTheTraceOut) {
    for (const auto &[gap, count] : {std::pair{0.0, 1u}, {5e-10, 1u}, {2e-9, 0u}}) {
        ConductorBench bench;
        EDA::EDAOutline shape = outline("0,0 1,0 1,1 0,0.5");
        EDA::EDAOutline beside(true);
        for (const auto &[x, y] : {std::pair{1.0, 0.0}, {2.0, 0.0}, {2.0, 1.0}})
            beside.addPoint(0, x + gap, y, 0.0);
        shape.addInternalOutline(beside);
        bench.layer.addNet(net("N", 0));
        bench.layer.getNthNet(0).addTrace(bench.shape(shape));
        bench.importLayer();
        EXPECT_EQ(bench.children(bench.nets()[0], PCB_Conductor_t).size(), count) << gap;
    }
}

TEST(Nets, EachTraceCountsWhetherItIsImportedOrNot) {
    ConductorBench bench;
    bench.layer.addNet(net("A", 2));
    EDA::EDANet empty = net("B", 0);
    empty.addTrace(bench.shape(EDA::EDAOutline()));
    bench.layer.addNet(empty);
    bench.add(bench.shape(outline(plate)));
    RecordingProgress progress;
    bench.importLayer(&progress);
    EXPECT_THAT(progress.maxima, testing::ElementsAre(5));
    EXPECT_THAT(progress.values, testing::ElementsAre(0, 1, 2, 3, 4)); // The layer comes last.
}

TEST(Nets, ACancelEndsTheNetAndTheImportAndKeepsWhatWasDone) {
    ConductorBench bench;
    bench.layer.addNet(net("A", 3));
    bench.layer.addNet(net("B", 3));
    EDA::EDAKeepout keepout("Via");
    bench.board().addKeepout(keepout);
    CancelAfter progress(1);
    bench.importLayer(&progress);
    const auto nets = bench.nets();
    ASSERT_EQ(nets.size(), 2u);
    EXPECT_EQ(bench.children(nets[0], PCB_Conductor_t).size(), 2u);
    EXPECT_EQ(bench.children(nets[1], PCB_Conductor_t).size(), 1u); // Each net asks after its first trace.
    EXPECT_TRUE(bench.children(bench.boardEntity, Board_Keepout_t).empty());
    EXPECT_EQ(bench.importer.getErrorString(), "");
}

TEST(Nets, WhereNoLayerCanBeMadeNoneOfItsTracesIsNorDoesItCount) {
    ConductorBench bench;
    Entity *component = EntityEditor::createEntity(Component_t, bench.chassis, AttributePath(Components_t));
    ASSERT_TRUE(component);
    bench.layer.addNet(net("A", 2));
    bench.add(bench.shape(outline(plate)));
    bench.board().addLayer(bench.layer);
    EXPECT_EQ(bench.importOver(component), component);
    std::vector<Entity *> all;
    component->getChildEntities(all);
    EXPECT_TRUE(all.empty());
    EXPECT_EQ(bench.importer.getErrorString(), "");
}

TEST(Nets, WithoutDetailedLayersNoneIsImported) {
    ConductorBench bench;
    bench.set(Import_Detailed_Layers_t, "No");
    bench.layer.addNet(net("A", 2));
    bench.importLayer();
    EXPECT_TRUE(bench.nets().empty());
}

TEST(Nets, ACancelAmongTheLooseTracesOfALayerLeavesItsNetsOut) {
    ConductorBench bench;
    for (int i = 0; i < 3; ++i)
        bench.add(bench.shape(outline(plate)));
    bench.layer.addNet(net("A", 2));
    CancelAfter progress(1);
    bench.importLayer(&progress);
    EXPECT_EQ(bench.conductors().size(), 2u);
    EXPECT_TRUE(bench.nets().empty());
}
