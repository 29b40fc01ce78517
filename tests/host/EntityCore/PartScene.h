// A model with a board, and short ways to fill it and to look at its parts.
#pragma once

#include "host/EntityCore/GeometryBuilder.h"
#include "host/EntityModel/EntityEditor.h"
#include "host/EntityModel/Model.h"
#include "host/Geometry/Part.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

// Lengths are in millimetres here. The board is a rectangle of 100 by 80 by 2 with its low corner at (0, 0,
// 0).
struct PartScene {
    using Entity = EntityModel::Entity;
    using Editor = EntityModel::EntityEditor;

    EntityModel::Model model;
    EntityGUI::GeometryBuilder builder;
    Entity *chassis = add("Chassis", model.root(), "Chassis");
    Entity *board = add("PCB", chassis, "PCBs");

    PartScene() { setLengths(board, {{"Width", 100}, {"Depth", 80}, {"Thickness", 2}}); }

    static Entity *add(char const *type, Entity *parent, char const *list) {
        Entity *const entity = Editor::createEntity(EntityModel::TypeRef(type), parent, list);
        EXPECT_NE(entity, nullptr) << type;
        return entity;
    }

    static void set(Entity *entity, char const *label, std::string const &text) {
        EXPECT_TRUE(Editor::setValue(entity, label, text)) << label << " = " << text;
    }

    struct Length {
        char const *label;
        double millimetres;
    };

    static void setLengths(Entity *entity, std::vector<Length> const &lengths) {
        for (Length const &length : lengths)
            EXPECT_TRUE(Editor::setValueWithUnits(entity, length.label, length.millimetres, "mm"))
                << length.label;
    }

    static void setAngle(Entity *entity, char const *label, double degrees) {
        EXPECT_TRUE(Editor::setValueWithUnits(entity, label, degrees, "degrees")) << label;
    }

    static void place(Entity *entity, double x, double z) {
        setLengths(entity, {{"X Location", x}, {"Z Location", z}});
    }

    static void setPolygon(Entity *entity, std::string const &points) {
        set(entity, "Shape", "Polygon");
        set(entity, "Outline", points + " <mm>");
    }

    // A component of 10 by 4 by 3 whose location is (20, 30).
    Entity *addComponent(char const *type = "Component", char const *list = "Components") {
        Entity *const entity = add(type, board, list);
        setLengths(entity, {{"Width", 10}, {"Depth", 4}, {"Height", 3}});
        place(entity, 20, 30);
        return entity;
    }

    Entity *addGroup(Entity *parent) {
        Entity *const group = add("Subcomponent Group", parent, "SubcomponentGroups");
        std::vector<Entity *> contents;
        group->getChildEntities(contents);
        Editor::deleteEntities(contents);
        return group;
    }
};

struct PartBox {
    double xLow, yLow, zLow, xHigh, yHigh, zHigh; // millimetres
};

inline void expectBox(Geometry::Bound const &bound, PartBox const &box) {
    constexpr double tolerance = 1e-9;
    EXPECT_NEAR(bound.getXLow() * 1e3, box.xLow, tolerance);
    EXPECT_NEAR(bound.getYLow() * 1e3, box.yLow, tolerance);
    EXPECT_NEAR(bound.getZLow() * 1e3, box.zLow, tolerance);
    EXPECT_NEAR(bound.getXHigh() * 1e3, box.xHigh, tolerance);
    EXPECT_NEAR(bound.getYHigh() * 1e3, box.yHigh, tolerance);
    EXPECT_NEAR(bound.getZHigh() * 1e3, box.zHigh, tolerance);
}

inline void expectBox(Geometry::Part const *part, PartBox const &box) {
    ASSERT_NE(part, nullptr);
    expectBox(part->getBound(), box);
}

// The image of a point of the own frame, in millimetres.
inline Geometry::Vec3T<double> toRoot(Geometry::Part const *part, double x, double y, double z) {
    Geometry::Vec3T<double> point(x * 1e-3, y * 1e-3, z * 1e-3);
    part->getGeometry()->getTransform().transform(point);
    return {point.x * 1e3, point.y * 1e3, point.z * 1e3};
}

inline void expectPoint(Geometry::Vec3T<double> const &point, double x, double y, double z) {
    constexpr double tolerance = 1e-9;
    EXPECT_NEAR(point.x, x, tolerance);
    EXPECT_NEAR(point.y, y, tolerance);
    EXPECT_NEAR(point.z, z, tolerance);
}

// Is the point of the root frame, in millimetres, in the part?
inline bool isInPart(Geometry::Part const *part, double x, double y, double z, double tolerance = 1e-6) {
    bool onSurface = false;
    return part->getGeometry()->contains(x * 1e-3, y * 1e-3, z * 1e-3, onSurface, tolerance);
}
