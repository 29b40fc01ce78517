// How each entity type says what its shape is and where it stands, as data.
#pragma once

#include "host/EntityModel/AttributePath.h"

namespace EntityGUI {

// Where the outline comes from.
enum class PartForm {
    None,   // no shape: a place that children are measured from, as a group
    Shaped, // "Shape" with its sizes; a box of "Width" by "Depth" (or "Length") where there is no "Shape"
    Round   // a circle of `diameter`, or what stands for many of them
};

// Which point of a box or cylinder the location names. A polygon always has the origin of its outline there.
enum class PartOrigin {
    Usual,        // box: low corner; cylinder: centre of the low face
    Chosen,       // as "Origin Point" says: a corner, the middle of the low face, the middle of the body
    ChosenInPlane // the same, but always on the low face: a board lies at its height whatever its origin is
};

// What turns the entity.
enum class PartTurn {
    None,
    AboutVertical, // `angle` about Y
    Ordered // "Angle 1" to "Angle 3" about the axes of "Rotation Order", if "Rotation Mechanism" says so
};

// What a box that is placed by its corner turns about. Anything else turns about the point that the location
// names.
enum class PartPivot { Location, BaseCentre, BodyCentre };

// What the low face stands on.
enum class PartBase {
    YLocation,    // the height in the frame of the owner
    BoardSide,    // "Board Side" of the board: on its top face, or hanging from its bottom face
    ThroughOwner, // all of the height of the owner's shape
    AlongBoard,   // a side of the board as BoardSide, or "Both": from below to above the board
    Drilled       // as "Height From" says: the board, own numbers, or layers
};

// Where children are measured from.
enum class PartHold {
    AtCorner, // the corner of the bound of the shape
    AsBoard,  // the same, and it is the board whose faces parts stand on, however deep they are below it
    Plugged   // they take the place of this entity on its board: see `PartFrame`
};

struct PartRule {
    PartForm form;
    EntityModel::AttributePath height;   // label of the vertical size
    EntityModel::AttributePath angle;    // label of the angle, or of the first of three
    EntityModel::AttributePath diameter; // label of the diameter
    PartOrigin origin;
    PartTurn turn;
    PartPivot pivot;
    PartBase base;
    PartHold hold;
    bool inShapeFrame; // measured in the own frame of the owner's shape, not from its corner
};

// The rule of an entity type, or null: such entities have no part and no place.
PartRule const *findPartRule(EntityModel::Type const &type);

} // namespace EntityGUI
