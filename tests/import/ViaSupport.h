// A board with one via definition, ready to be changed by a test before it is imported.
#pragma once

#include "support/ImportBench.h"
#include "support/Outlines.h"

#include <gmock/gmock.h>

#include <string>
#include <vector>

namespace TestSupport {

using Names = std::vector<std::string>;

inline Names names(const std::vector<Entity *> &entities) {
    Names list;
    for (Entity *entity : entities)
        list.push_back(text(entity, Name_t));
    return list;
}

inline void expectAt(Entity *entity, double x, double z) {
    EXPECT_NEAR(mm(entity, X_Location_t), x, 1e-9);
    EXPECT_NEAR(mm(entity, Z_Location_t), z, 1e-9);
}

inline bool isLocked(Entity *entity, const TypeRef &attribute) {
    return entity->findAttribute(attribute)->isLocked();
}

inline EDA::EDAVia makeVia(const std::string &type, const std::string &name, double x, double y) {
    EDA::EDAVia via;
    via.setHoleType(type);
    via.setName(name);
    via.setDiameter(0.5);
    via.setCentre(x, y);
    return via;
}

// A rectangle from (10, 20) to (110, 70): a hole at (x, y) comes to X = x - 10, Z = 70 - y.
struct ViaBench : ImportBench {
    ViaBench() : via(makeVia("VIA", "A", 15, 60)) { rectangle(0, 10, 20, 110, 70); }

    // Puts the via on the board as it is now.
    void add() { board().addVia(via, false); }
    void add(EDA::EDAVia other) { board().addVia(other, false); }

    std::vector<Entity *> importVia() {
        add();
        boardEntity = import();
        return vias();
    }
    // The one via that there is then, or null.
    Entity *importOne() {
        const auto found = importVia();
        EXPECT_EQ(found.size(), 1u);
        return found.size() == 1 ? found[0] : nullptr;
    }
    std::vector<Entity *> vias() const { return children(boardEntity, Via_t); }
    std::vector<Entity *> holes() const {
        std::vector<Entity *> found;
        getLinkedEntities(boardEntity, Holes_t, found);
        return found;
    }

    EDA::EDAVia via;
    Entity *boardEntity = nullptr;
};

} // namespace TestSupport
