// One undo takes back an import with all its components, one redo brings it back, to the byte.
#include "ComponentSupport.h"
#include "support/CancelAfter.h"
#include "support/ScriptedLibrary.h"

using namespace TestSupport;

namespace {

UndoStack &undoStack() { return UndoStack::instance(); }

// Does, undoes and redoes, twice, and compares the text each time.
template <typename Import> void expectOneStep(ImportBench &bench, Import import) {
    const std::string before = ModelFile::toText(bench.model);
    import();
    const std::string after = ModelFile::toText(bench.model);
    EXPECT_NE(after, before);
    EXPECT_EQ(undoStack().undoName(), "Import Board");
    for (int round = 0; round < 2; ++round) {
        ASSERT_TRUE(undoStack().undo());
        EXPECT_EQ(ModelFile::toText(bench.model), before);
        ASSERT_TRUE(undoStack().redo());
        EXPECT_EQ(ModelFile::toText(bench.model), after);
    }
    ASSERT_TRUE(undoStack().undo());
    EXPECT_EQ(ModelFile::toText(bench.model), before);
}

// A definition of each type and outline, each placed on both sides.
void fillBoard(ComponentBench &bench) {
    int number = 0;
    for (const char *type : {"Component", "Resistor", "Capacitor", "Inductor", "Chip Socket", "Cable Socket",
                             "Daughter Board Socket"}) {
        for (const char *outline : {boxOutline, lOutline, centredCircle}) {
            EDA::EDAComponent part("ELECTRICAL");
            part.setName("P" + std::to_string(++number));
            part.setImportToType(type);
            part.setHeight(number);
            part.addProperty("POWER_OPR", "250");
            part.getOutline().setMaterial("Ceramic");
            EDA::test::addPoints(part.getOutline(), 0, outline);
            bench.board().addComponent(part, false);
            for (const char *side : {"TOP", "BOTTOM"}) {
                bench.placement.setName(part.getName());
                bench.placement.setBoardSide(side);
                bench.placement.setAngle(10.0 * number);
                bench.addAs(part.getName().c_str(), 20 + number, 30);
            }
        }
    }
}

} // namespace

TEST(ComponentUndo, AnImportOfComponentsIsOneStep) {
    ComponentBench bench;
    fillBoard(bench);
    expectOneStep(bench, [&bench] { bench.import(); });
}

TEST(ComponentUndo, SoIsOneOverAnExistingBoard) {
    ComponentBench bench;
    fillBoard(bench);
    Entity *const existing = EntityEditor::createEntity(PCB_t, bench.chassis, PCBs_t);
    expectOneStep(bench, [&] { bench.importOver(existing); });
}

TEST(ComponentUndo, SoIsOneThatReplacesAnEarlierImport) {
    ComponentBench bench;
    fillBoard(bench);
    Entity *const existing = bench.import();
    bench.addAs("more", 70, 40);
    expectOneStep(bench, [&] { bench.importOver(existing); });
}

TEST(ComponentUndo, SoIsOneOnASubstrateWithFilteredSolids) {
    ComponentBench bench;
    fillBoard(bench);
    bench.set(Filter_On_Height_t, "Yes");
    bench.set(Min_Height_t, "10 mm");
    Entity *const group = bench.makeGroup();
    bench.importer.setImportOptions(bench.options(), bench.board());
    Entity *const existing = EntityEditor::createEntity(Substrate_t, group, Obstructions_t);
    expectOneStep(bench, [&] { bench.importer.importBoard(&bench.reader, existing, nullptr, nullptr); });
    expectOneStep(bench, [&] { bench.importer.importBoard(&bench.reader, nullptr, group, nullptr); });
}

TEST(ComponentUndo, SoIsOneWithEntitiesOfALibrary) {
    for (const bool isNew : {true, false}) {
        ScriptedLibrary library;
        for (const char *name : {"P1", "P2", "P4", "P9"}) {
            library.items[name] = {
                LibraryInterface::Mapped, [] {
                    return ScriptedLibrary::makeEntity(Component_t, {{"Width", "3 mm"}, {"Model", "m"}});
                }};
        }
        library.items["P5"] = {LibraryInterface::Mapped, [] { return ScriptedLibrary::makeEntity(Via_t); }};
        library.items["P6"] = {LibraryInterface::DoNotImport, nullptr};
        library.mappings["P2"] = {"m", LibraryInterface::Approximated};
        ComponentBench bench(boxOutline, "ELECTRICAL", &library);
        fillBoard(bench);
        Entity *const existing = isNew ? nullptr : EntityEditor::createEntity(PCB_t, bench.chassis, PCBs_t);
        expectOneStep(bench, [&] { isNew ? bench.import() : bench.importOver(existing); });
    }
}

TEST(ComponentUndo, StepsBeforeTheImportCanStillBeUndone) {
    ComponentBench bench;
    fillBoard(bench);
    bench.set(Filter_On_Height_t, "Yes");
    bench.set(Min_Height_t, "10 mm");
    Entity *const group = bench.makeGroup();
    const std::string before = ModelFile::toText(bench.model);
    EntityEditor::setValue(group, Name_t, "renamed");
    bench.importer.setImportOptions(bench.options(), bench.board());
    bench.importer.importBoard(&bench.reader, nullptr, group, nullptr);
    ASSERT_TRUE(undoStack().undo());
    ASSERT_TRUE(undoStack().undo());
    EXPECT_EQ(ModelFile::toText(bench.model), before);
}

TEST(ComponentUndo, ACancelAfterEachPlacementKeepsWhatWasMadeAsOneStep) {
    constexpr int count = 5;
    for (int allowed = 0; allowed <= count; ++allowed) {
        ComponentBench bench;
        bench.define();
        for (int i = 0; i < count; ++i)
            bench.addAs(("U" + std::to_string(i)).c_str(), 20 + 5 * i, 40);
        CancelAfter progress(allowed);
        expectOneStep(bench, [&] {
            Entity *const boardEntity = bench.import(&progress);
            EXPECT_EQ(bench.placedOn(boardEntity).size(), static_cast<size_t>(std::min(allowed + 1, count)));
        });
        EXPECT_EQ(progress.finishes, 1);
        EXPECT_EQ(bench.importer.getErrorString(), "");
    }
}

TEST(ComponentUndo, TheNextImportOfTheImporterStartsAnew) {
    ComponentBench bench;
    fillBoard(bench);
    bench.import();
    const size_t first = bench.placedOn(bench.children(bench.chassis, PCB_t)[0]).size();
    EXPECT_EQ(bench.placedOn(bench.import()).size(), first);
}
