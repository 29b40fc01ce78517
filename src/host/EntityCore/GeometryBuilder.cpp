// Building parts down a tree of entities.
#include "host/EntityCore/GeometryBuilder.h"

#include "host/EntityCore/PartPlacement.h"
#include "host/EntityCore/PartTree.h"
#include "host/EntityCore/RoundGeometry.h"
#include "host/EntityModel/Entity.h"
#include "host/EntityModel/Types.h"
#include "host/Geometry/PolygonPrismGeometryMaker.h"

#include <unordered_map>
#include <utility>
#include <vector>

namespace EntityGUI {

namespace {

using EntityModel::Entity;
using Geometry::Polygon2D;

// An entity to be built, and what it and its siblings, which may be millions, are measured in.
struct Task {
    Entity *entity;
    std::shared_ptr<PartFrame const> frame;
};

void moveInPlane(Polygon2D &polygon, Geometry::Transform const &transform) {
    std::vector<Polygon2D::Point> points = polygon.points();
    for (Polygon2D::Point &point : points) {
        double y = 0.0;
        transform.transform(point.x, y, point.y);
    }
    polygon = Polygon2D(std::move(points));
}

// The holes of an entity, in the own frame of its shape.
std::vector<Polygon2D> makeHoles(Entity const &entity, PartFrame const &inside) {
    std::vector<Entity *> holes;
    getLinkedEntities(&entity, EntityModel::Holes_t, holes);
    std::vector<Polygon2D> result;
    for (Entity const *hole : holes) {
        PartRule const *const rule = findPartRule(hole->getType());
        if (!rule) continue;
        PartPlace const place = placePart(*hole, *rule, inside);
        if (!place.isSolid()) continue;
        result.push_back(makePolygon(*hole, place.footprint));
        moveInPlane(result.back(), place.toOwner);
    }
    return result;
}

std::unique_ptr<Geometry::Geometry> makeGeometry(Entity const &entity, PartPlace const &place,
                                                 PartFrame const &inside) {
    std::vector<Polygon2D> holes = makeHoles(entity, inside);
    if (holes.empty() && place.footprint.form == PartFootprint::Form::Circle)
        return std::make_unique<RoundGeometry>(place.footprint.radius(), place.height, place.toRoot);
    return Geometry::PolygonPrismGeometryMaker::makePrism(makePolygon(entity, place.footprint),
                                                          std::move(holes), 0.0, place.height, place.toRoot);
}

// Builds one part, or removes that of an entity without solid; gives the frame of the entity's children.
PartFrame putPart(Entity &entity, PartRule const &rule, PartFrame const &frame, PartTree &parts) {
    PartPlace const place = placePart(entity, rule, frame);
    PartFrame inside = childFrame(entity, rule, place, frame);
    if (place.isSolid())
        parts.put(&entity, makeGeometry(entity, place, inside));
    else
        parts.erase(&entity);
    return inside;
}

} // namespace

GeometryBuilder::GeometryBuilder() : parts_(std::make_unique<PartTree>()) {}

GeometryBuilder::~GeometryBuilder() = default;

Geometry::Part *GeometryBuilder::buildPart(Entity *entity, bool withChildren) {
    if (!entity) return nullptr;
    std::vector<Task> tasks{{entity, std::make_shared<PartFrame const>(ownerFrame(*entity))}};
    std::vector<Entity *> children;
    while (!tasks.empty()) {
        Task const task = std::move(tasks.back());
        tasks.pop_back();
        PartRule const *const rule = findPartRule(task.entity->getType());
        if (!rule) continue;
        auto const inside =
            std::make_shared<PartFrame const>(putPart(*task.entity, *rule, *task.frame, *parts_));
        if (!withChildren) break;
        children.clear();
        task.entity->getChildEntities(children);
        for (Entity *child : children)
            tasks.push_back({child, inside});
    }
    return parts_->find(entity);
}

void GeometryBuilder::buildParts(std::vector<Entity *> const &entities) {
    std::unordered_map<Entity const *, PartFrame> frames; // by owner
    for (Entity *entity : entities) {
        PartRule const *const rule = entity ? findPartRule(entity->getType()) : nullptr;
        if (!rule) continue;
        auto const [frame, isNew] = frames.try_emplace(entity->getOwnerEntity());
        if (isNew) frame->second = ownerFrame(*entity);
        putPart(*entity, *rule, frame->second, *parts_);
    }
}

Geometry::Part *GeometryBuilder::getPart(Entity *entity) const {
    return entity ? parts_->find(entity) : nullptr;
}

void GeometryBuilder::deletePart(Entity *entity, bool withChildren, bool) {
    if (!entity) return;
    std::vector<Entity *> entities{entity};
    while (!entities.empty()) {
        Entity *const next = entities.back();
        entities.pop_back();
        parts_->erase(next);
        if (withChildren) next->getChildEntities(entities);
    }
}

void GeometryBuilder::clear() { parts_->clear(); }

} // namespace EntityGUI
