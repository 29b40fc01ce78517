// Exporting models with many components and vias.
#include "export/EDAExporter.h"
#include "host/EntityCore/EntityManager.h"
#include "host/EntityCore/GeometryBuilder.h"
#include "host/EntityModel/EntityEditor.h"
#include "host/EntityModel/Model.h"
#include "host/EntityModel/Types.h"
#include "host/EntityModel/Undo.h"

#include <benchmark/benchmark.h>
#include <memory>
#include <string>
#include <vector>

namespace {

using namespace EntityModel;

constexpr int kinds = 200; // of components, each with a shape of its own

void setLength(Entity *entity, const TypeRef &label, double millimetres) {
    EntityEditor::setValueWithUnits(entity, label, millimetres, "mm");
}

void place(Entity *entity, int index) {
    setLength(entity, X_Location_t, index % 1000 * 12.5);
    setLength(entity, Z_Location_t, index / 1000 * 12.5);
}

void shapePart(Entity *part, int kind) {
    const char *const shapes[] = {"Rectangle", "Cylinder", "Polygon", "Rectangle"};
    EntityEditor::setValue(part, Shape_t, shapes[kind % 4]);
    setLength(part, Width_t, 1.0 + kind * 0.01);
    setLength(part, Depth_t, 2.0);
    setLength(part, Diameter_t, 1.0 + kind * 0.01);
    EntityEditor::setValue(part, Outline_t, std::to_string(kind + 1) + ",0,9,0,9,-7,3,-8 <mm>");
}

// Components, each with two vias. With `isBuilt` each has built parts, as in a host with a view.
class CrowdedBoard {
public:
    explicit CrowdedBoard(int components, bool isBuilt) {
        const UndoStackDisabler noUndo;
        Entity *const chassis = EntityEditor::createEntity(Chassis_t, model_.root(), Chassis_t);
        board_ = EntityEditor::createEntity(PCB_t, chassis, PCBs_t);
        for (int i = 0; i < components; ++i)
            addPart(i);
        if (!isBuilt) return;
        builder_.buildPart(board_, true);
        EntityGUI::EntityManager::setGeometryBuilder(&builder_);
    }
    ~CrowdedBoard() { EntityGUI::EntityManager::setGeometryBuilder(nullptr); }
    CrowdedBoard(const CrowdedBoard &) = delete;
    CrowdedBoard &operator=(const CrowdedBoard &) = delete;

    Entity *entity() const { return board_; }

private:
    void addPart(int index) {
        const int kind = index % kinds;
        Entity *const part = EntityEditor::createEntity(Component_t, board_, Components_t);
        EntityEditor::setValue(part, Model_t, "part " + std::to_string(kind));
        EntityEditor::setValue(part, Part_Number_t, "P" + std::to_string(kind));
        EntityEditor::setValue(part, Reference_Designator_t, "U" + std::to_string(index));
        EntityEditor::setValue(part, Thermal_Design_Power_t, "150 mW");
        shapePart(part, kind);
        place(part, index);
        for (int i = 0; i < 2; ++i) {
            Entity *const via = EntityEditor::createEntity(Via_t, part, Vias_t);
            setLength(via, X_Location_t, i * 0.5);
            setLength(via, Z_Location_t, 0.25);
        }
    }

    Model model_;
    EntityGUI::GeometryBuilder builder_;
    Entity *board_ = nullptr;
};

void exportBoard(benchmark::State &state, bool isBuilt) {
    const auto components = static_cast<std::size_t>(state.range(0));
    const CrowdedBoard crowded(static_cast<int>(components), isBuilt);
    for (auto _ : state) {
        EDA::EDABoard board;
        EDA::EDAExporter().exportBoard(crowded.entity(), board, "MM");
        if (board.numComponentPlacements() != components || board.numVias(0) != 2 * components)
            state.SkipWithError("items are missing");
    }
    state.SetItemsProcessed(state.iterations() * 3 * state.range(0));
}

// 100,000 components have 200,000 vias.
BENCHMARK_CAPTURE(exportBoard, plain, false)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(exportBoard, builtParts, true)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);

} // namespace

BENCHMARK_MAIN();
