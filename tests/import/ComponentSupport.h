// A board with one component on it, ready to be changed by a test before it is imported.
#pragma once

#include "host/Geometry/Transform.h"
#include "support/ImportBench.h"
#include "support/Outlines.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace TestSupport {

// A box of 4 by 8 that lies aside of the origin it is placed by, an L and two circles, in mm.
constexpr const char *boxOutline = "1,2 5,2 5,10 1,10";
constexpr const char *lOutline = "1,2 7,2 7,4 3,4 3,9 1,9";
constexpr const char *centredCircle = "0,0 3,0@360";
constexpr const char *asideCircle = "4,1 7,1@360";

// The board is a rectangle from (10, 20) to (110, 70): an item at (x, y) comes to X = x - 10, Z = 70 - y.
struct ComponentBench : ImportBench {
    explicit ComponentBench(const char *outline = boxOutline, const char *kind = "ELECTRICAL",
                            LibraryInterface *library = nullptr)
        : ImportBench(library), part(kind) {
        rectangle(0, 10, 20, 110, 70);
        part.setName("PART");
        part.setHeight(2.5);
        EDA::test::addPoints(part.getOutline(), 0, outline);
        placement.setName("PART");
        placement.setReferenceDesignator("U1");
        placement.setLocation(30, 40);
        placement.setBoardSide("TOP");
        placement.setStatus("PLACED");
    }

    // Puts the placement on the board, at angles and sides as it has them now.
    void add() { board().addComponentPlacement(placement); }
    void addAs(const char *designator, double x, double y) {
        placement.setReferenceDesignator(designator);
        placement.setLocation(x, y);
        add();
    }
    void define() { board().addComponent(part, false); }

    // All that components become on a board, in the order of its lists.
    std::vector<Entity *> placedOn(Entity *owner) const {
        std::vector<Entity *> found;
        for (const char *type : {"Component", "Resistor", "Capacitor", "Inductor", "Chip Socket",
                                 "Cable Socket", "Daughter Board Socket"}) {
            if (owner) owner->getOwnedChildEntitiesOfType(found, TypeRef(type), false, true);
        }
        return found;
    }
    std::vector<Entity *> importAll() {
        define();
        return placedOn(boardEntity = import());
    }

    // What the one placement becomes; null if that is not one entity.
    Entity *importOne() {
        add();
        const auto found = importAll();
        return found.size() == 1 ? found[0] : nullptr;
    }

    // A group in a component of the chassis, without the solid that a new one has: a parent for a substrate.
    Entity *makeGroup() {
        Entity *const component = EntityEditor::createEntity(Component_t, chassis, Components_t);
        Entity *const group =
            EntityEditor::createEntity(Subcomponent_Group_t, component, "SubcomponentGroups");
        EntityEditor::deleteEntities(children(group, Solid_Obstruction_t));
        return group;
    }
    std::vector<Entity *> importOnSubstrate() {
        Entity *const group = makeGroup();
        define();
        importer.setImportOptions(options(), board());
        boardEntity = importer.importBoard(&reader, nullptr, group, nullptr);
        return children(group, Solid_Obstruction_t);
    }
    Entity *importOneOnSubstrate() {
        add();
        const auto found = importOnSubstrate();
        return found.size() == 1 ? found[0] : nullptr;
    }

    EDA::EDAComponent part;
    EDA::EDAComponentPlacement placement;
    Entity *boardEntity = nullptr;
};

inline void expectPlace(Entity *entity, double x, double z) {
    EXPECT_NEAR(mm(entity, X_Location_t), x, 1e-9);
    EXPECT_NEAR(mm(entity, Z_Location_t), z, 1e-9);
}

} // namespace TestSupport
