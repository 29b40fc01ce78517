// The step that imports all layers of a board: order, levels, former layers, progress, cancel, undo.
#include "LayerSupport.h"
#include "support/CancelAfter.h"

#include <algorithm>
#include <gmock/gmock.h>

using namespace TestSupport;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

// Three layers with a dielectric between, with 2 + 1 conductors in all: 2 loose ones in "TOP", one in a net
// of "BOTTOM".
struct StackBench : LayerBench {
    explicit StackBench(const std::string &importType = "PCB") : LayerBench(importType) {
        addLayer("TOP", true, {LayerBench::square(20, "a"), LayerBench::square(30, "b")}, {});
        addLayer("CORE", false, {}, {});
        addLayer("BOTTOM", true, {}, {LayerBench::square(40, "c")});
    }
    void addLayer(const std::string &name, bool isConductor, const std::vector<EDA::EDATrace> &traces,
                  const std::vector<EDA::EDATrace> &netTraces) {
        EDA::EDABoardLayer added(isConductor);
        added.setName(name);
        for (const EDA::EDATrace &trace : traces)
            added.addTrace(EDA::EDATrace(trace));
        EDA::EDANet net;
        net.setName("N");
        for (const EDA::EDATrace &trace : netTraces)
            net.addTrace(EDA::EDATrace(trace));
        if (!netTraces.empty()) added.addNet(net);
        board().addLayer(added);
    }
    void run(Tools::ToolProgress *progress = nullptr) { boardEntity = import(progress); }
};

// A board that stands already, with an old layer of each kind.
struct OldStack : StackBench {
    explicit OldStack(const std::string &level) {
        set(Import_Dielectric_Layers_t, "Yes");
        existing = EntityEditor::createEntity(PCB_t, chassis, PCBs_t);
        EntityEditor::setValue(existing, Modelling_Level_t, level);
        create(Conductor_Layer_t, Conductor_Layers_t, "old");
        create(Dielectric_Layer_t, Dielectric_Layers_t, "old core");
    }
    void create(const TypeRef &type, const AttributePath &list, const std::string &name) {
        EntityEditor::createEntity(type, existing, list, nullptr, true, true, false, name);
    }
    void runOver() { boardEntity = importOver(existing); }

    Entity *existing = nullptr;
};

std::string distribution(double offset, bool isGood, bool isConductor = true) {
    LayerBench bench;
    EDA::EDABoardLayer layer(isConductor);
    layer.setTopOffset(offset);
    bench.board().addLayer(layer);
    bench.board().setGoodEDA(isGood);
    return text(bench.import(), Distribute_Layers_t);
}

class StackOf : public testing::TestWithParam<const char *> {};
INSTANTIATE_TEST_SUITE_P(BothFamilies, StackOf, testing::Values("PCB", "Component"), familyName);

} // namespace

TEST_P(StackOf, LayersComeInTheOrderOfTheBoard) {
    StackBench bench(GetParam());
    bench.set(Import_Dielectric_Layers_t, "Yes");
    bench.run();
    EXPECT_EQ(text(bench.boardEntity, Modelling_Level_t), "Explicit Layers");
    EXPECT_THAT(namesOf(bench.layers()), ElementsAre("TOP", "BOTTOM"));
    EXPECT_THAT(namesOf(bench.dielectrics()), ElementsAre("CORE"));
}

TEST_P(StackOf, OneUndoTakesTheStackBackAndOneRedoBringsIt) {
    StackBench bench(GetParam());
    bench.set(Import_Dielectric_Layers_t, "Yes");
    const std::string before = ModelFile::toText(bench.model);
    bench.run();
    const std::string after = ModelFile::toText(bench.model);
    ASSERT_TRUE(UndoStack::instance().undo());
    EXPECT_EQ(ModelFile::toText(bench.model), before);
    ASSERT_TRUE(UndoStack::instance().redo());
    EXPECT_EQ(ModelFile::toText(bench.model), after);
}

TEST_P(StackOf, CancelAmongTheConductorsKeepsWhatWasDone) {
    StackBench bench(GetParam());
    bench.addLayer("NEVER", true, {}, {});
    CancelAfter progress(0); // At the first conductor.
    bench.run(&progress);
    ASSERT_THAT(namesOf(bench.layers()), ElementsAre("TOP"));
    EXPECT_THAT(namesOf(bench.conductors(bench.layers()[0])), ElementsAre("a"));
    EXPECT_EQ(progress.finishes, 1);
    EXPECT_EQ(bench.importer.getErrorString(), "");
    ASSERT_TRUE(UndoStack::instance().undo());
    EXPECT_THAT(bench.children(bench.chassis, PCB_t), IsEmpty());
}

TEST(StackUp, ABoardWithoutLayersKeepsItsLevel) {
    LayerBench bench;
    RecordingProgress progress;
    EXPECT_EQ(text(bench.import(&progress), Modelling_Level_t), "Simplified Average");
    EXPECT_THAT(progress.texts, testing::Not(testing::Contains("Importing Layers...")));
}

TEST(StackUp, AnyLayerMakesTheBoardExplicitEvenOneLeftOut) {
    LayerBench bench;
    bench.board().addLayer(EDA::EDABoardLayer(false));
    EXPECT_EQ(text(bench.import(), Modelling_Level_t), "Explicit Layers");
}

TEST(StackUp, TheStepShowsItsText) {
    StackBench bench;
    RecordingProgress progress;
    bench.run(&progress);
    EXPECT_THAT(progress.texts, testing::Contains("Importing Layers..."));
}

TEST(StackUp, LayersConductorsAndTracesOfNetsCountUpToTheMaximum) {
    StackBench bench;
    RecordingProgress progress;
    bench.run(&progress);
    EXPECT_THAT(progress.maxima, ElementsAre(6));
    EXPECT_THAT(progress.values, ElementsAre(0, 1, 2, 3, 4, 5));
}

TEST(StackUp, WithoutDetailOnlyLayersCount) {
    StackBench bench;
    bench.set(Import_Detailed_Layers_t, "No");
    RecordingProgress progress;
    bench.run(&progress);
    EXPECT_THAT(progress.maxima, ElementsAre(3));
    EXPECT_THAT(progress.values, ElementsAre(0, 1, 2));
}

TEST(StackUp, SkippedConductorsCountToo) {
    LayerBench bench;
    bench.layer.addTrace(EDA::EDATrace());
    bench.layer.addTrace(LayerBench::square(20));
    bench.board().addLayer(bench.layer);
    RecordingProgress progress;
    bench.import(&progress);
    EXPECT_THAT(progress.values, ElementsAre(0, 1, 2));
}

TEST(StackUp, EveryPollMayCancelAndEndsTheImportAtOnce) {
    // Polls: two conductors, TOP, CORE, the conductor of the net, BOTTOM.
    struct Row {
        int allowed;
        size_t layers, loose, ofNets;
    };
    for (const Row &row : {Row{0, 1, 1, 0}, Row{1, 1, 2, 0}, Row{2, 1, 2, 0}, Row{3, 1, 2, 0},
                           Row{4, 2, 2, 1}, Row{5, 2, 2, 1}, Row{6, 2, 2, 1}}) {
        StackBench bench;
        CancelAfter progress(row.allowed);
        bench.run(&progress);
        ASSERT_EQ(bench.layers().size(), row.layers) << row.allowed;
        size_t loose = 0;
        size_t ofNets = 0;
        for (Entity *layer : bench.layers()) {
            loose += bench.conductors(layer).size();
            for (Entity *net : bench.nets(layer))
                ofNets += bench.conductors(net).size();
        }
        EXPECT_EQ(loose, row.loose) << row.allowed;
        EXPECT_EQ(ofNets, row.ofNets) << row.allowed;
        EXPECT_EQ(progress.finishes, 1) << row.allowed;
        const bool cameToKeepouts =
            std::count(progress.texts.begin(), progress.texts.end(), "Importing Keepouts...") > 0;
        EXPECT_EQ(cameToKeepouts, row.allowed >= 6) << row.allowed;
    }
}

TEST(StackUp, OffsetsOfABoardThatIsToBeTrustedAreTheUsers) {
    EXPECT_EQ(distribution(0.0, true), "User Specified");
    EXPECT_EQ(distribution(-999.9, true), "User Specified");
    EXPECT_EQ(distribution(0.0, false), "Evenly");
    EXPECT_EQ(distribution(-1000.0, true), "Evenly");
    EXPECT_EQ(distribution(-1001.0, true), "Evenly");
}

TEST(StackUp, TheOffsetOfALayerThatIsLeftOutCountsToo) {
    EXPECT_EQ(distribution(0.0, true, false), "User Specified");
}

TEST(StackUp, AnUntrustedOffsetStillGivesTheHeight) {
    LayerBench bench;
    bench.layer.setTopOffset(0.6);
    bench.board().setGoodEDA(false);
    EXPECT_DOUBLE_EQ(mm(bench.importOne(), Y_Location_t), 1.0);
}

TEST(StackUp, FormerConductorLayersGoFromABoardModelledAsAWhole) {
    for (const char *level : {"Specified", "Simplified Average"}) {
        OldStack bench(level);
        bench.runOver();
        EXPECT_THAT(namesOf(bench.layers()), ElementsAre("TOP", "BOTTOM")) << level;
        EXPECT_THAT(namesOf(bench.dielectrics()), ElementsAre("old core", "CORE")) << level;
        EXPECT_EQ(text(bench.existing, Modelling_Level_t), "Explicit Layers") << level;
    }
}

TEST(StackUp, LayersOfABoardModelledLayerByLayerStay) {
    OldStack bench("Explicit Layers");
    bench.runOver();
    EXPECT_THAT(namesOf(bench.layers()), ElementsAre("old", "TOP", "BOTTOM"));
    EXPECT_THAT(namesOf(bench.dielectrics()), ElementsAre("old core", "CORE"));
}

TEST(StackUp, ASecondImportAddsItsLayersToTheFirstOnes) {
    OldStack bench("Specified");
    bench.runOver();
    bench.runOver();
    EXPECT_THAT(namesOf(bench.layers()), ElementsAre("TOP", "BOTTOM", "TOP", "BOTTOM"));
}

TEST(StackUp, UndoBringsFormerLayersBack) {
    OldStack bench("Specified");
    const std::string before = ModelFile::toText(bench.model);
    bench.runOver();
    ASSERT_TRUE(UndoStack::instance().undo());
    EXPECT_EQ(ModelFile::toText(bench.model), before);
}

TEST(StackUp, ABoardWithoutLayersLeavesFormerOnes) {
    OldStack bench("Specified");
    bench.reader.getBoard() = EDA::EDABoard();
    bench.runOver();
    EXPECT_THAT(namesOf(bench.layers()), ElementsAre("old"));
    EXPECT_EQ(text(bench.existing, Modelling_Level_t), "Specified");
}

TEST(StackUp, AnEntityThatKnowsNoModellingLevelTakesNoLayers) {
    LayerBench bench;
    bench.board().addLayer(bench.layer);
    ASSERT_FALSE(bench.chassis->findAttribute(Modelling_Level_t, false));
    EXPECT_EQ(bench.importOver(bench.chassis), bench.chassis);
    EXPECT_FALSE(bench.chassis->findAttribute(Modelling_Level_t, false));
    std::vector<Entity *> layers;
    bench.model.root()->getOwnedChildEntitiesOfType(layers, Conductor_Layer_t, true, true);
    EXPECT_TRUE(layers.empty());
    EXPECT_EQ(bench.importer.getErrorString(), "");
}
