// A model with a board, short ways to fill it, and its export.
#pragma once

#include "export/EDAExporter.h"
#include "host/EntityCore/EntityManager.h"
#include "host/EntityCore/GeometryBuilder.h"
#include "host/EntityModel/EntityEditor.h"
#include "host/EntityModel/Model.h"
#include "host/EntityModel/ModelFile.h"
#include "host/EntityModel/Types.h"

#include <gmock/gmock.h>

#include <string>
#include <utility>
#include <vector>

namespace TestSupport {

using namespace EntityModel;

// Lengths are in millimetres. The board is a polygon from (10, 20) to (110, 70), so that nothing is right by
// being 0: an item at X, Z is at x = X + 10, y = 70 - Z.
class ExportScene : public testing::Test {
protected:
    using Values = std::vector<std::pair<const char *, std::string>>;

    ExportScene() { set(pcb, {{"Shape", "Polygon"}, {"Outline", "10,-20,110,-20,110,-70,10,-70 <mm>"}}); }
    ~ExportScene() override { EntityGUI::EntityManager::setGeometryBuilder(nullptr); }

    static void set(Entity *entity, const Values &values) {
        for (const auto &[label, text] : values)
            EXPECT_TRUE(EntityEditor::setValue(entity, label, text)) << label << " = " << text;
    }

    static Entity *add(Entity *parent, const char *type, const char *list, const Values &values = {},
                       const char *name = "") {
        Entity *const entity =
            EntityEditor::createEntity(TypeRef(type), parent, list, nullptr, true, true, false, name);
        EXPECT_NE(entity, nullptr) << type;
        if (entity) set(entity, values);
        return entity;
    }

    Entity *addComponent(const Values &values = {}) { return add(pcb, "Component", "Components", values); }
    Entity *addHole(const Values &values) { return add(pcb, "PCB Hole", "Holes", values); }
    Entity *addSocket(const Values &values = {}) { return add(pcb, "Chip Socket", "Chip Sockets", values); }
    static Entity *plug(Entity *socket, const Values &values = {}) {
        return add(socket, "Component", "ComponentLink", values);
    }

    // A rectangular board of 100 by 50 at the origin: an item at X, Z is at X, -Z.
    void makeBoardRectangular() {
        set(pcb, {{"Shape", "Rectangle"}, {"Width", "100 mm"}, {"Depth", "50 mm"}});
    }

    // Builds the parts of these entities as a host with a view would have them.
    void build(const std::vector<Entity *> &entities) {
        EntityGUI::EntityManager::setGeometryBuilder(&builder);
        for (Entity *entity : entities)
            EXPECT_NE(builder.buildPart(entity), nullptr);
    }

    EDA::EDABoard exported(const std::string &units = "mm", Entity *from = nullptr) const {
        EDA::EDABoard board;
        EDA::EDAExporter().exportBoard(from ? from : pcb, board, units);
        return board;
    }

    EntityGUI::GeometryBuilder builder;
    Model model{Velkin_Solver_Project_t};
    Entity *chassis = add(model.root(), "Chassis", "Chassis");
    Entity *pcb = add(chassis, "PCB", "PCBs");
};

using Rows = std::vector<std::vector<double>>;

// Stored points as x, y, angle.
inline Rows rowsOf(const EDA::EDAOutline &outline) {
    Rows rows;
    for (auto point = outline.beginPoints(); point != outline.endPoints(); ++point)
        rows.push_back({point->x, point->y, point->angle});
    return rows;
}

// The same numbers but for what conversions between units round.
inline void expectRows(const EDA::EDAOutline &outline, const Rows &wanted) {
    const Rows rows = rowsOf(outline);
    ASSERT_EQ(rows.size(), wanted.size());
    for (std::size_t i = 0; i < rows.size(); ++i)
        for (std::size_t j = 0; j < 3; ++j)
            EXPECT_NEAR(rows[i][j], wanted[i][j], 1e-9) << "point " << i << ", value " << j;
}

inline const EDA::EDAComponent &component(const EDA::EDABoard &board, std::size_t index = 0) {
    EXPECT_LT(index, board.numComponents());
    return board.beginComponents()[static_cast<std::ptrdiff_t>(index)];
}

inline const EDA::EDAComponentPlacement &placement(const EDA::EDABoard &board, std::size_t index = 0) {
    EXPECT_LT(index, board.numComponentPlacements());
    return board.beginPlacements()[static_cast<std::ptrdiff_t>(index)];
}

inline void expectPlace(const EDA::EDAComponentPlacement &placement, double x, double y) {
    EXPECT_NEAR(placement.getXLocation(), x, 1e-9);
    EXPECT_NEAR(placement.getYLocation(), y, 1e-9);
}

} // namespace TestSupport
