// Importing components: placements of many definitions, their classification, and parts that go into sockets.
#include "host/EntityCore/EntityManager.h"
#include "host/EntityCore/GeometryBuilder.h"
#include "host/EntityModel/EntityEditor.h"
#include "host/EntityModel/Model.h"
#include "IdfGenerator.h"
#include "import/EDAImporter.h"
#include "readers/IDFReader.h"

#include <benchmark/benchmark.h>
#include <filesystem>
#include <memory>
#include <string>

namespace {

using namespace EntityModel;

constexpr int definitions = 2000;

void readGenerated(EDA::IDFReader &reader, int placements) {
    const std::string prefix = (std::filesystem::temp_directory_path() / "eda-component-bench").string();
    EDABench::writeIdf(EDABench::generateIdf(placements, definitions), prefix);
    for (const char *extension : {".emn", ".emp"}) {
        reader.readFile(prefix + extension);
        std::filesystem::remove(prefix + extension);
    }
}

// Half the placements are sockets in a grid, half are parts in the middle of them.
class SocketReader : public EDA::EDAReader {
public:
    explicit SocketReader(int placements) {
        board_.setUnits("MM");
        for (const auto &[x, y] : {std::pair{-10.0, -10.0}, {1e4, -10.0}, {1e4, 1e4}}) {
            board_.addPoint(0, x, y, 0.0);
        }
        addDefinition("SOCKET", "Chip Socket", 4.0);
        addDefinition("CHIP", "Component", 2.0);
        for (int i = 0; i < placements / 2; ++i) {
            place("SOCKET", "XU", i);
            place("CHIP", "U", i);
        }
    }
    bool readFile(const std::string &) override { return true; }
    Entity *getOptions() override { return nullptr; }

private:
    void addDefinition(const char *name, const char *type, double size) {
        EDA::EDAComponent component("ELECTRICAL");
        component.setName(name);
        component.setHeight(1.0);
        component.setImportToType(type);
        const double half = size / 2;
        for (const auto &[x, y] : {std::pair{-half, -half}, {half, -half}, {half, half}, {-half, half}}) {
            component.addPoint(0, x, y, 0.0);
        }
        board_.addComponent(component, true);
    }
    void place(const char *name, const char *prefix, int number) {
        EDA::EDAComponentPlacement placement;
        placement.setName(name);
        placement.setReferenceDesignator(prefix + std::to_string(number));
        placement.setLocation((number % 1000) * 5.0, (number / 1000) * 5.0);
        board_.addComponentPlacement(placement);
    }
};

std::unique_ptr<Model> importInto(EDA::EDAReader &reader) {
    auto model = std::make_unique<Model>();
    EntityEditor::createEntity(Chassis_t, model->root(), AttributePath(Chassis_t));
    EDA::EDAImporter importer(nullptr, "", "");
    importer.importBoard(&reader, nullptr, model->root(), nullptr);
    return model;
}

void importComponents(benchmark::State &state) {
    EDA::IDFReader reader;
    readGenerated(reader, static_cast<int>(state.range(0)));
    importInto(reader); // Fills the caches of the outlines.
    for (auto _ : state)
        benchmark::DoNotOptimize(importInto(reader));
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

void classifyComponents(benchmark::State &state) {
    EDA::IDFReader reader;
    readGenerated(reader, static_cast<int>(state.range(0)));
    EDA::EDAImporter importer(nullptr, "", "");
    importer.setTypeMap({{"R", "Resistor"}, {"C", "Capacitor"}, {"L", "Inductor"}});
    const EDA::EDABoard &board = reader.getBoard();
    for (auto _ : state) {
        for (auto component = board.beginComponents(); component != board.endComponents(); ++component) {
            benchmark::DoNotOptimize(importer.getComponentType(*component, board, nullptr));
        }
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

void importIntoSockets(benchmark::State &state) {
    SocketReader reader(static_cast<int>(state.range(0)));
    EntityGUI::GeometryBuilder builder;
    EntityGUI::EntityManager::setGeometryBuilder(&builder);
    for (auto _ : state) {
        benchmark::DoNotOptimize(importInto(reader));
        builder.clear();
    }
    EntityGUI::EntityManager::setGeometryBuilder(nullptr);
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

BENCHMARK(importComponents)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);
BENCHMARK(classifyComponents)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);
BENCHMARK(importIntoSockets)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);

} // namespace

BENCHMARK_MAIN();
