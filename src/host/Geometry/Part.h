// A built shape of one entity.
#pragma once

#include "host/Geometry/Bound.h"
#include "host/Geometry/Geometry.h"
#include "host/Geometry/Transform.h"

#include <memory>

namespace EntityModel {
class Entity;
}

namespace Geometry {

// What a geometry builder made of an entity. Knows its entity and its parent part, owns
// its geometry. Neither the entity nor the parent is looked into.
class Part {
public:
    // `geometry` must not be null; `entity` and `parent` may be, and must outlive the part.
    Part(EntityModel::Entity *entity, std::unique_ptr<Geometry> geometry, Part const *parent = nullptr);
    ~Part();
    Part(Part const &) = delete;
    Part &operator=(Part const &) = delete;

    EntityModel::Entity *getEntity() const { return entity_; }
    Part const *getParent() const { return parent_; }
    // For who keeps the parts: when the parent is replaced, or goes before this one.
    void setParent(Part const *parent) { parent_ = parent; }

    Geometry const *getGeometry() const { return geometry_.get(); }

    // Box in the root frame: of the eight turned corners of the own box, so it may be
    // larger than the shape needs when the part is turned by other than quarter turns.
    Bound getBound() const;

    // Box in the part's own frame, replacing what `bound` held.
    void getRealUntransformedBound(Bound &bound) const;

    // Takes points of `other`'s frame to this part's frame: inverse(this world) * (other
    // world). Null stands for the root frame.
    Transform transformToThisCoordinateSystem(Part const *other) const;

private:
    EntityModel::Entity *entity_;
    std::unique_ptr<Geometry> geometry_;
    Part const *parent_;
};

} // namespace Geometry
