// Solid parts of entities.
#pragma once

#include <memory>
#include <vector>

namespace EntityModel {
class Entity;
}

namespace Geometry {
class Part;
}

namespace EntityGUI {

class PartTree;

// Builds the shapes of entities and keeps them until they are deleted.
//
// A part is a prism: the shape of the entity seen from above, by its height, at its place in the root frame
// (the frame of the entity at the top of the tree). Lengths are in metres, X runs to the right, Y up through
// the stack-up, and Z is a board's -y.
//
// Own frames, with Y = 0 on the low face (of a part on the bottom side: the face that touches the board):
// - a rectangle, a cuboid, a socket, an entity that stands for many vias: the low-X, low-Z corner;
// - a cylinder, a via, a bump: the centre;
// - a polygon: the origin of its outline;
// - an entity that stands for many bumps: the origin that its placements count from.
//
// Child entities are measured from the low-X, low-Z corner of the bound of their parent's shape, at Y = 0.
// Where each type keeps its size, what its location names and what it turns about is data: see PartRules.h.
//
// Copper, layers, wirebonds and heatsinks have no part.
//
// Changes of the model are not watched. A part shows its entity and the owners of it as they were when it
// was built; `buildPart` builds it anew. Before an entity goes for good its part must be deleted, or all by
// `clear`. One builder belongs to one thread.
class GeometryBuilder {
public:
    GeometryBuilder();
    virtual ~GeometryBuilder();
    GeometryBuilder(GeometryBuilder const &) = delete;
    GeometryBuilder &operator=(GeometryBuilder const &) = delete;

    // Builds the part of the entity, in place of one built before, which is no longer valid; with
    // `withChildren` also those of all entities below it. Owners need no part for this, and get none.
    //
    // Gives the part of the entity itself; it is valid until it is built anew or deleted. Null, and no part
    // is kept, for a null entity, a type without parts, and a size or a place that is missing or not finite
    // or is too large to compute with. A width, depth or diameter must be above 0; a height may be 0. The
    // parts below an entity without part are built all the same.
    virtual Geometry::Part *buildPart(EntityModel::Entity *entity, bool withChildren = false);

    // Builds the part of each of these, as `buildPart` without children does, but reads what they stand on
    // only once for all children of one owner: the edge of a board may have thousands of points.
    virtual void buildParts(std::vector<EntityModel::Entity *> const &entities);

    // The part that was built, or null.
    virtual Geometry::Part *getPart(EntityModel::Entity *entity) const;

    // Deletes the part of the entity; with `withChildren` also those of all entities that are below it now.
    // Parts left below lose their parent part and stay as they are. The second flag is accepted for the
    // interface and has no meaning here. Nothing to delete is no error.
    virtual void deletePart(EntityModel::Entity *entity, bool withChildren, bool flag);

    // Deletes all parts without looking at their entities, as when a model closes.
    virtual void clear();

private:
    std::unique_ptr<PartTree> parts_;
};

} // namespace EntityGUI
