// The driver: its order, progress, cancel, undo and messages.
#include "support/CancelAfter.h"
#include "support/ImportBench.h"

#include <gmock/gmock.h>

using namespace TestSupport;
using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::HasSubstr;

namespace {

void fillBoard(ImportBench &bench) {
    bench.rectangle(0, 0, 0, 40, 20);
    bench.rectangle(1, 1, 1, 2, 2);
    bench.circle(2, 10, 10, 3);
    EDA::EDAComponent part("ELECTRICAL");
    part.setName("QFP");
    bench.board().addComponent(part, false);
    for (int i = 0; i < 3; ++i) {
        EDA::EDAComponentPlacement placement;
        placement.setName("QFP");
        bench.board().addComponentPlacement(placement);
    }
    EDA::EDAKeepout keepout("Via");
    for (const auto &[x, y] : {std::pair{0.0, 0.0}, {5.0, 0.0}, {5.0, 5.0}})
        keepout.addPoint(0, x, y, 0.0);
    bench.board().addKeepout(keepout);
    EDA::EDAVia via;
    bench.board().addVia(via, false);
    EDA::EDABump bump;
    bench.board().addBump(bump, false);
}

} // namespace

TEST(Driver, ANullReaderGivesNullAndNoMessage) {
    ImportBench bench;
    EXPECT_EQ(bench.importer.importBoard(nullptr, nullptr, bench.model.root(), nullptr), nullptr);
    EXPECT_EQ(bench.importer.getErrorString(), "");
}

TEST(Driver, LayerDetailsThatCannotBeReadEndTheImportWithTheModelUntouched) {
    ImportBench bench;
    bench.rectangle(0, 0, 0, 4, 2);
    bench.reader.layerDetails = false;
    const std::string before = ModelFile::toText(bench.model);
    const size_t steps = UndoStack::instance().numSteps();
    RecordingProgress progress;
    EXPECT_EQ(bench.import(&progress), nullptr);
    EXPECT_EQ(bench.importer.getErrorString(), "Failed to read board layer details: no layers today");
    EXPECT_EQ(ModelFile::toText(bench.model), before);
    EXPECT_EQ(UndoStack::instance().numSteps(), steps);
    EXPECT_EQ(progress.starts, 0);
}

TEST(Driver, ReaderOptionsReachTheCircleTests) {
    ImportBench bench;
    bench.circle(0, 0, 0, 10);
    bench.reader.changeOptions = [](EDA::EDAReader::GeometryConversionOptions &options) {
        options.boardMinPoints = 1000;
    };
    EXPECT_EQ(text(bench.import(), Shape_t), "Polygon");
}

TEST(Driver, OptionsOfOneReaderDoNotAlterTheNextImport) {
    ImportBench bench;
    bench.circle(0, 0, 0, 10);
    bench.reader.changeOptions = [](EDA::EDAReader::GeometryConversionOptions &options) {
        options.boardMinPoints = 1000;
    };
    bench.import();
    bench.reader.changeOptions = nullptr;
    EXPECT_EQ(text(bench.import(), Shape_t), "Cylinder");
}

TEST(Driver, ProgressShowsTheStepsInTheirOrder) {
    ImportBench bench;
    fillBoard(bench);
    RecordingProgress progress;
    bench.import(&progress);
    EXPECT_THAT(progress.texts,
                ElementsAre("Importing Board...", "Importing Board Holes", "Importing Components...",
                            "Importing Keepouts...", "Importing Drilled Holes..."));
    EXPECT_EQ(progress.starts, 1);
    EXPECT_EQ(progress.finishes, 1);
}

TEST(Driver, AsComponentBumpsAndWirebondsAreSteps) {
    ImportBench bench;
    fillBoard(bench);
    bench.set(Import_Type_t, "Component");
    RecordingProgress progress;
    bench.import(&progress);
    EXPECT_THAT(progress.texts,
                ElementsAre("Importing Board...", "Importing Board Holes", "Importing Components...",
                            "Importing Keepouts...", "Importing Drilled Holes...",
                            "Importing Solder Bumps...", "Importing Wirebonds..."));
}

TEST(Driver, WithoutWirebondImportThatStepIsLeftOut) {
    ImportBench bench;
    bench.rectangle(0, 0, 0, 4, 2);
    bench.set(Import_Type_t, "Component");
    bench.set(Import_Wirebonds_t, "No");
    RecordingProgress progress;
    bench.import(&progress);
    EXPECT_EQ(progress.texts.back(), "Importing Solder Bumps...");
}

TEST(Driver, LayersAreAStepOnlyWhereThereAreSome) {
    ImportBench bench;
    bench.rectangle(0, 0, 0, 4, 2);
    EDA::EDABoardLayer layer;
    bench.board().addLayer(layer);
    RecordingProgress progress;
    bench.import(&progress);
    EXPECT_THAT(progress.texts, testing::Contains("Importing Layers..."));
}

TEST(Driver, ProgressCountsWhatIsThereByTheOptions) {
    ImportBench bench;
    fillBoard(bench); // 2 cut-outs, 3 placements, 1 via, 1 bump, 1 keepout
    RecordingProgress all;
    bench.import(&all);
    EXPECT_THAT(all.maxima, ElementsAre(8));

    bench.set(Import_Vias_t, "No");
    bench.set(Import_Bumps_t, "No");
    for (const TypeRef &option :
         {Import_Component_Keepouts_t, Import_Via_Keepouts_t, Import_Routing_Keepouts_t}) {
        bench.set(option, "No");
    }
    RecordingProgress few;
    bench.import(&few);
    EXPECT_THAT(few.maxima, ElementsAre(5));
}

TEST(Driver, OneKeepoutOptionIsEnoughForTheKeepoutsToCount) {
    ImportBench bench;
    fillBoard(bench);
    bench.set(Import_Via_Keepouts_t, "No");
    bench.set(Import_Component_Keepouts_t, "No");
    RecordingProgress progress;
    bench.import(&progress);
    EXPECT_THAT(progress.maxima, ElementsAre(8));
}

TEST(Driver, LayersAndTracesCountWithDetailedLayersAndLayersAloneWithout) {
    ImportBench bench;
    EDA::EDABoardLayer layer;
    EDA::EDATrace trace;
    layer.addTrace(trace);
    layer.addTrace(trace);
    bench.board().addLayer(layer);
    RecordingProgress detailed;
    bench.import(&detailed);
    EXPECT_THAT(detailed.maxima, ElementsAre(3));
    bench.set(Import_Detailed_Layers_t, "No");
    RecordingProgress plain;
    bench.import(&plain);
    EXPECT_THAT(plain.maxima, ElementsAre(1));
}

TEST(Driver, ABumpThatMakesNothingCountsToo) {
    ImportBench bench;
    bench.rectangle(0, 0, 0, 4, 2);
    bench.set(Import_Type_t, "Component");
    EDA::EDABump bump;
    for (const int type : {0, 1}) {
        bump.setBumpType(type);
        bench.board().addBump(bump, false);
    }
    RecordingProgress progress;
    Entity *board = bench.import(&progress);
    EXPECT_THAT(progress.maxima, ElementsAre(2));
    EXPECT_THAT(progress.values, ElementsAre(0, 1));
    EXPECT_EQ(bench.children(board, Bump_t).size(), 1u);
}

TEST(Driver, WirebondsCountOnlyWhereTheyAreImported) {
    for (const auto &[option, maximum] : {std::pair{"Yes", 3}, {"No", 1}}) {
        ImportBench bench;
        bench.rectangle(0, 0, 0, 40, 20);
        bench.rectangle(1, 1, 1, 2, 2);
        bench.set(Import_Type_t, "Component");
        bench.set(Import_Wirebonds_t, option);
        bench.board().addWirebond(EDA::EDAWirebond());
        bench.board().addWirebond(EDA::EDAWirebond());
        RecordingProgress progress;
        bench.import(&progress);
        EXPECT_THAT(progress.maxima, ElementsAre(maximum)) << option;
        EXPECT_EQ(progress.values.size(), static_cast<size_t>(maximum)) << option;
    }
}

TEST(Driver, EachStepShowsTheCountBeforeIt) {
    ImportBench bench;
    fillBoard(bench);
    RecordingProgress progress;
    bench.import(&progress);
    EXPECT_THAT(progress.values, ElementsAre(0, 1, 2, 3, 4, 5, 6));
}

TEST(Driver, TheCountRunsOnThroughItemsThatTheOptionsLeaveOut) {
    ImportBench bench;
    fillBoard(bench);
    bench.set(Import_Vias_t, "No");
    bench.set(Import_Via_Keepouts_t, "No");
    RecordingProgress progress;
    bench.import(&progress);
    EXPECT_EQ(progress.values.size(), 7u);
}

TEST(Driver, ACancelDuringTheHolesGivesTheShapedBoardBack) {
    ImportBench bench;
    bench.loop(0, {{3, 4}, {43, 4}, {43, 24}});
    bench.rectangle(1, 31, 5, 32, 6);
    bench.rectangle(2, 35, 5, 36, 6);
    CancelAfter progress(0);
    Entity *board = bench.import(&progress);
    ASSERT_TRUE(board);
    EXPECT_EQ(text(board, Shape_t), "Polygon");
    EXPECT_EQ(bench.children(board, PCB_Hole_t).size(), 1u);
    EXPECT_EQ(mm(board, X_Location_t), 0.0); // The board is moved to its place at the very end only.
    EXPECT_EQ(progress.finishes, 1);
    EXPECT_EQ(bench.importer.getErrorString(), "");
}

TEST(Driver, ACancelAtAnyPollFinishesOnceAndKeepsWhatWasDone) {
    for (int poll = 0; poll < 7; ++poll) {
        ImportBench bench;
        fillBoard(bench);
        CancelAfter progress(poll);
        Entity *board = bench.import(&progress);
        ASSERT_TRUE(board) << poll;
        EXPECT_EQ(progress.finishes, 1) << poll;
        EXPECT_EQ(progress.polls, poll + 1) << poll;
        EXPECT_EQ(bench.children(board, PCB_Hole_t).size(), poll == 0 ? 1u : 2u) << poll;
        EXPECT_EQ(bench.children(board, Board_Keepout_t).size(), poll < 5 ? 0u : 1u) << poll;
    }
}

TEST(Driver, ACancelledImportIsUndoneAsOneStep) {
    ImportBench bench;
    fillBoard(bench);
    const std::string before = ModelFile::toText(bench.model);
    CancelAfter progress(1);
    bench.import(&progress);
    EXPECT_EQ(UndoStack::instance().undoName(), "Import Board");
    EXPECT_TRUE(UndoStack::instance().undo());
    EXPECT_EQ(ModelFile::toText(bench.model), before);
}

TEST(Driver, UndoOfAnImportRestoresTheModelAndRedoBringsItBack) {
    ImportBench bench;
    fillBoard(bench);
    bench.board().setConductorMaterial("Copper");
    const std::string before = ModelFile::toText(bench.model);
    bench.import();
    const std::string after = ModelFile::toText(bench.model);
    EXPECT_NE(after, before);
    EXPECT_TRUE(UndoStack::instance().undo());
    EXPECT_EQ(ModelFile::toText(bench.model), before);
    EXPECT_TRUE(UndoStack::instance().redo());
    EXPECT_EQ(ModelFile::toText(bench.model), after);
}

TEST(Driver, TheSameBoardGivesTheSameModel) {
    std::string texts[2];
    for (std::string &dump : texts) {
        ImportBench bench;
        fillBoard(bench);
        bench.import();
        dump = ModelFile::toText(bench.model);
    }
    EXPECT_EQ(texts[0], texts[1]);
}

TEST(Driver, MessagesOfSeveralImportsAddUpUntilTheyAreCleared) {
    ImportBench bench;
    bench.import();
    const std::string once = bench.importer.getErrorString();
    EXPECT_THAT(once, HasSubstr("approximate bound"));
    bench.import();
    EXPECT_EQ(bench.importer.getErrorString(), once + once);
    bench.importer.clearErrorMsg();
    EXPECT_EQ(bench.importer.getErrorString(), "");
}

TEST(Driver, AWirebondGroupMetTwiceMakesOneGroup) {
    ImportBench bench;
    bench.rectangle(0, 0, 0, 4, 2);
    for (const char *group : {"ring", "ring", "core", ""}) {
        EDA::EDAWirebond wirebond;
        wirebond.setGroupName(group);
        bench.board().addWirebond(wirebond);
    }
    bench.set(Import_Type_t, "Component");
    Entity *substrate = bench.import();
    std::vector<std::string> names;
    for (Entity *group : bench.children(substrate, Subcomponent_Group_t)) {
        names.push_back(text(group, Name_t));
        std::vector<Entity *> obstructions;
        getLinkedEntities(group, Obstructions_t, obstructions);
        EXPECT_TRUE(obstructions.empty());
    }
    EXPECT_THAT(names, ElementsAre("ring", "core"));
}
