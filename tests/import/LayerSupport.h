// What tests of layers need: a board with layers, of either family.
#pragma once

#include "support/ImportBench.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace TestSupport {

// A board of 100 by 50 mm with its low-x, high-y corner at (10, 70). Import type "Component" makes it a
// package with a substrate, any other a PCB.
struct LayerBench : ImportBench {
    explicit LayerBench(const std::string &importType = "PCB") {
        rectangle(0, 10, 20, 110, 70);
        if (importType != "PCB") set(Import_Type_t, importType);
        layer.setName("TOP");
    }

    // A square of conductor with sides of 2, its low corner at (x, x).
    static EDA::EDATrace square(double x, const std::string &name = "t") {
        EDA::EDATrace trace;
        trace.setName(name);
        for (const auto &[dx, dy] : {std::pair(0, 0), std::pair(2, 0), std::pair(2, 2), std::pair(0, 2)})
            trace.addPoint(0, x + dx, x + dy, 0.0);
        return trace;
    }
    // Cuts a hole of sides of 1 at (x, x) out of a trace.
    static void cut(EDA::EDATrace &trace, double x) {
        EDA::EDAOutline hole;
        hole.setHole(true);
        for (const auto &[dx, dy] : {std::pair(0, 0), std::pair(1, 0), std::pair(1, 1), std::pair(0, 1)})
            hole.addPoint(0, x + dx, x + dy, 0.0);
        trace.getOutline().addInternalOutline(hole);
    }

    // Imports a board with `layer` alone and gives its entity, or null.
    Entity *importOne() {
        board().addLayer(layer);
        boardEntity = import();
        const auto found = layers();
        return found.size() == 1 ? found[0] : nullptr;
    }

    std::vector<Entity *> layers() { return children(boardEntity, Conductor_Layer_t); }
    std::vector<Entity *> dielectrics() { return children(boardEntity, Dielectric_Layer_t); }

    // Conductors of a layer or net, whatever their family.
    std::vector<Entity *> conductors(Entity *parent) const {
        std::vector<Entity *> found = children(parent, PCB_Conductor_t);
        parent->getOwnedChildEntitiesOfType(found, Substrate_Conductor_t, false, true);
        return found;
    }
    std::vector<Entity *> nets(Entity *parent) const {
        std::vector<Entity *> found = children(parent, Net_t);
        parent->getOwnedChildEntitiesOfType(found, Substrate_Net_t, false, true);
        return found;
    }

    EDA::EDABoardLayer layer{true};
    Entity *boardEntity = nullptr;
};

inline std::vector<std::string> namesOf(const std::vector<Entity *> &entities) {
    std::vector<std::string> names;
    for (Entity *entity : entities)
        names.push_back(text(entity, Name_t));
    return names;
}

// The import type as a part of a test's name.
inline std::string familyName(const testing::TestParamInfo<const char *> &family) { return family.param; }

// The name of what a link leads to, or "(none)".
inline std::string linked(Entity *entity, const AttributePath &link) {
    Entity *const target = getLinkedEntity(entity, link);
    return target ? text(target, Name_t) : "(none)";
}

} // namespace TestSupport
