// A board with chip sockets and components, and a builder of parts, so that components can move.
#pragma once

#include "ComponentSupport.h"
#include "host/EntityCore/EntityManager.h"
#include "host/EntityCore/GeometryBuilder.h"
#include "host/Geometry/Part.h"

#include <set>

namespace TestSupport {

using Geometry::Bound;

// Counts what is built and deleted.
class CountingBuilder : public EntityGUI::GeometryBuilder {
public:
    Geometry::Part *buildPart(Entity *entity, bool withChildren) override {
        built.push_back(entity);
        return GeometryBuilder::buildPart(entity, withChildren);
    }
    void buildParts(const std::vector<Entity *> &entities) override {
        built.insert(built.end(), entities.begin(), entities.end());
        GeometryBuilder::buildParts(entities);
    }
    void deletePart(Entity *entity, bool withChildren, bool flag) override {
        EXPECT_FALSE(withChildren || flag);
        deleted.insert(entity);
        GeometryBuilder::deletePart(entity, withChildren, flag);
    }

    std::vector<Entity *> built;
    std::multiset<Entity *> deleted;
};

struct SocketService {
    SocketService() { EntityGUI::EntityManager::setGeometryBuilder(&builder); }
    ~SocketService() { EntityGUI::EntityManager::setGeometryBuilder(nullptr); }
    SocketService(const SocketService &) = delete;
    SocketService &operator=(const SocketService &) = delete;

    CountingBuilder builder;
};

// An existing board of 100 by 50 by 1.6 mm, imported over with a reader that adds nothing but the moves.
struct SocketBench : SocketService, ImportBench {
    SocketBench() {
        rectangle(0, 0, 0, 100, 50);
        board().setImportType("INCREMENTAL"); // What is on the board stays.
        pcb = EntityEditor::createEntity(PCB_t, chassis, AttributePath(PCBs_t));
        UndoStack::instance().clear();
    }

    Entity *add(const char *type, const char *list, double x, double z, double width, double depth) {
        Entity *const entity = EntityEditor::createEntity(TypeRef(type), pcb, AttributePath(list));
        setMm(entity, X_Location_t, x);
        setMm(entity, Z_Location_t, z);
        setMm(entity, Width_t, width);
        setMm(entity, Depth_t, depth);
        setMm(entity, Height_t, 1.0);
        return entity;
    }
    Entity *socket(double x, double z, double width = 10, double depth = 10) {
        sockets.push_back(add("Chip Socket", "Chip Sockets", x, z, width, depth));
        return sockets.back();
    }
    Entity *component(double x, double z, double width = 4, double depth = 4) {
        components.push_back(add("Component", "Components", x, z, width, depth));
        return components.back();
    }
    static void setMm(Entity *entity, const AttributePath &path, double value) {
        EXPECT_TRUE(EntityEditor::setValueWithUnits(entity, path, value, "mm"));
    }
    static void turn(Entity *entity, const AttributePath &path, double degrees) {
        EXPECT_TRUE(EntityEditor::setValueWithUnits(entity, path, degrees, "degrees"));
    }
    static void setBottom(Entity *entity) { EntityEditor::setValue(entity, Board_Side_t, "Bottom"); }
    void move() { importOver(pcb); }

    // Where a plain loop over all sockets puts each component: the first that contains it, if it is free.
    std::vector<Entity *> owners() {
        std::vector<Entity *> result;
        std::set<Entity *> taken;
        for (Entity *each : sockets) {
            if (getLinkedEntity(each, ComponentLink_t)) taken.insert(each);
        }
        for (Entity *each : components) {
            Entity *const found = firstSocket(each);
            const bool moves = found && taken.insert(found).second;
            result.push_back(moves ? found : pcb);
        }
        return result;
    }
    Entity *firstSocket(Entity *of) {
        EntityGUI::GeometryBuilder own;
        const Geometry::Part *const part = own.buildPart(of);
        if (!part) return nullptr;
        const Bound bound = part->getBound();
        for (Entity *each : sockets) {
            if (text(each, Board_Side_t) != text(of, Board_Side_t)) continue;
            const Geometry::Part *const place = own.buildPart(each);
            if (!place) continue;
            const Bound around = place->getBound();
            bool onSurface = false;
            const bool contains = place->getGeometry()->contains(
                (bound.getXLow() + bound.getXHigh()) / 2, (around.getYLow() + around.getYHigh()) / 2,
                (bound.getZLow() + bound.getZHigh()) / 2, onSurface, 1e-6);
            if (contains) return each;
        }
        return nullptr;
    }

    Entity *pcb = nullptr;
    std::vector<Entity *> sockets;
    std::vector<Entity *> components;
};

inline void expectSameBound(const Bound &a, const Bound &b) {
    EXPECT_NEAR(a.getXLow(), b.getXLow(), 1e-12);
    EXPECT_NEAR(a.getYLow(), b.getYLow(), 1e-12);
    EXPECT_NEAR(a.getZLow(), b.getZLow(), 1e-12);
    EXPECT_NEAR(a.getXHigh(), b.getXHigh(), 1e-12);
    EXPECT_NEAR(a.getYHigh(), b.getYHigh(), 1e-12);
    EXPECT_NEAR(a.getZHigh(), b.getZHigh(), 1e-12);
}

inline double degrees(Entity *entity, const AttributePath &path) {
    return getDoubleValue(entity, path, "degrees", -12345.0);
}

} // namespace TestSupport
