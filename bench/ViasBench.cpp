// Importing vias: definitions with instances, single or grouped, and vias that go into parts.
#include "host/EntityCore/EntityManager.h"
#include "host/EntityCore/GeometryBuilder.h"
#include "host/EntityModel/EntityEditor.h"
#include "host/EntityModel/Model.h"
#include "import/EDAImporter.h"

#include <benchmark/benchmark.h>
#include <cmath>
#include <memory>
#include <string>

namespace {

using namespace EntityModel;

constexpr int instancesEach = 9; // Besides the place of the definition.
constexpr int partsEach = 10;    // Vias of one part.

class ViaReader : public EDA::EDAReader {
public:
    // An edge of many points shows what is read of the board for each via.
    ViaReader() {
        board_.setUnits("MM");
        constexpr int points = 2000;
        for (int i = 0; i < points; ++i) {
            const double angle = 6.283185307179586 * i / points;
            board_.addPoint(0, 6000 * std::cos(angle), 6000 * std::sin(angle), 0.0);
        }
    }
    bool readFile(const std::string &) override { return true; }
    Entity *getOptions() override { return nullptr; }

    void addDefinitions(int places) {
        for (int i = 0; i < places; i += instancesEach + 1) {
            EDA::EDAVia via = makeVia(i);
            for (int k = 1; k <= instancesEach; ++k)
                via.addInstance("", x(i + k), y(i + k));
            board_.addVia(via, false);
        }
    }
    void addVias(int places, bool ofParts) {
        for (int i = 0; i < places; ++i) {
            EDA::EDAVia via = makeVia(i);
            if (ofParts) via.setAssociatedPart(designator(i / partsEach));
            board_.addVia(via, false);
        }
    }
    void addParts(int count) {
        EDA::EDAComponent component("ELECTRICAL");
        component.setName("PART");
        component.setHeight(1.0);
        for (const auto &[px, py] : {std::pair{-2.0, -1.0}, {2.0, -1.0}, {2.0, 1.0}, {-2.0, 1.0}})
            component.addPoint(0, px, py, 0.0);
        board_.addComponent(component, true);
        for (int i = 0; i < count; ++i) {
            EDA::EDAComponentPlacement placement;
            placement.setName("PART");
            placement.setReferenceDesignator(designator(i));
            placement.setLocation(x(i * partsEach), y(i * partsEach));
            board_.addComponentPlacement(placement);
        }
    }

private:
    static std::string designator(int number) { return "U" + std::to_string(number); }
    static double x(int place) { return place % 1000 * 5.0 - 2500.0; }
    static double y(int place) { return place / 1000 * 5.0 - 2500.0; }
    static EDA::EDAVia makeVia(int place) {
        EDA::EDAVia via;
        via.setHoleType("VIA");
        via.setPlated(true);
        via.setDiameter(0.3);
        via.setCentre(x(place), y(place));
        return via;
    }
};

void importInto(benchmark::State &state, EDA::EDAReader &reader, bool grouped = false) {
    const Model options(EDA_Import_Options_t);
    EntityEditor::setValue(options.root(), Group_Identical_Vias_t, grouped ? "Yes" : "No");
    EntityGUI::GeometryBuilder builder;
    EntityGUI::EntityManager::setGeometryBuilder(&builder);
    for (auto _ : state) {
        Model model;
        EntityEditor::createEntity(Chassis_t, model.root(), AttributePath(Chassis_t));
        EDA::EDAImporter importer(nullptr, "", "");
        importer.setImportOptions(options.root(), reader.getBoard());
        if (!importer.importBoard(&reader, nullptr, model.root(), nullptr)) state.SkipWithError("no board");
    }
    EntityGUI::EntityManager::setGeometryBuilder(nullptr);
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

void importInstances(benchmark::State &state, bool grouped) {
    ViaReader reader;
    reader.addDefinitions(static_cast<int>(state.range(0)));
    importInto(state, reader, grouped);
}

void importSingles(benchmark::State &state, bool ofParts) {
    const int count = static_cast<int>(state.range(0));
    ViaReader reader;
    if (ofParts) reader.addParts(count / partsEach);
    reader.addVias(count, ofParts);
    importInto(state, reader);
}

// The number is that of all places.
BENCHMARK_CAPTURE(importInstances, single, false)
    ->Arg(10000)
    ->Arg(100000)
    ->Arg(1000000)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(importInstances, grouped, true)
    ->Arg(10000)
    ->Arg(100000)
    ->Arg(1000000)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(importSingles, ofBoard, false)
    ->Arg(10000)
    ->Arg(100000)
    ->Arg(1000000)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(importSingles, ofParts, true)
    ->Arg(10000)
    ->Arg(100000)
    ->Arg(1000000)
    ->Unit(benchmark::kMillisecond);

} // namespace

BENCHMARK_MAIN();
