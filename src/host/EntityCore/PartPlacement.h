// Where the shapes of entities stand.
#pragma once

#include "host/EntityCore/PartFootprint.h"
#include "host/Geometry/Transform.h"

#include <optional>

namespace EntityGUI {

// What children are measured in.
//
// A component that is plugged into a socket does not turn with the frame of the socket. It stands on the
// board as if it were beside the socket: the locations add up, the angles add up, and the component turns
// about itself. A box is measured from the low corner of the socket before it is turned, a polygon or a
// cylinder from its middle. The importer moves components into sockets, and the exporter takes them out, by
// these sums.
struct PartFrame {
    struct Plug {
        bool onBottom = false;
        double turn = 0.0; // degrees
        double lift = 0.0; // Y Location
        double middleX = 0.0;
        double middleZ = 0.0;
    };

    Geometry::Transform toRoot; // of the own frame of the owner's shape
    double cornerX = 0.0;       // what locations count from, in that frame
    double cornerZ = 0.0;
    double height = 0.0;                        // of the owner's shape
    EntityModel::Entity const *board = nullptr; // the nearest board
    Geometry::Transform boardToRoot;
    double boardHeight = 0.0;
    std::optional<Plug> plug;
};

// Where one entity stands, with what its shape is.
struct PartPlace {
    PartFootprint footprint;
    double height = 0.0;         // not a number if it is missing
    Geometry::Transform toOwner; // from the own frame to the own frame of the owner's shape
    Geometry::Transform toRoot;

    // Is there a shape, and are all of its corners finite numbers in the root frame?
    bool isSolid() const;
};

PartPlace placePart(EntityModel::Entity const &entity, PartRule const &rule, PartFrame const &frame);

// The frame of the children of an entity that stands at `place` in `frame`. An entity without shape has one
// too.
PartFrame childFrame(EntityModel::Entity const &entity, PartRule const &rule, PartPlace const &place,
                     PartFrame const &frame);

// The frame that the entity itself is measured in, from its owners as they are now.
PartFrame ownerFrame(EntityModel::Entity const &entity);

} // namespace EntityGUI
