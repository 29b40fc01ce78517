// A package of an XFL file as a component of its own in a model.
#pragma once

#include "host/EntityModel/Entity.h"
#include "model/EDABoard.h"

namespace EDATool {

// Before the import: a package without an edge gets one, so that the import has a corner to count from.
void completeEdge(EDA::EDABoard &package);

// After the import: takes the component out of the board that the import made for it and puts it into
// `target`, a chassis or another board, at its corner; the board goes. The component becomes a box of the
// size of its bodies, which stand in it from corner to corner, so that it can be placed by any board and
// library. Gives null when there is no component.
EntityModel::Entity *takeOutPackage(EntityModel::Entity *board, EntityModel::Entity *target,
                                    const EDA::EDABoard &package);

} // namespace EDATool
