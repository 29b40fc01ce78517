// The parts on a board of a model.
#pragma once

#include "BoardView.h"
#include "PartShape.h"

namespace EDATool {

// Adds all that stands on the board to the view: parts with what is in them, vias, bumps and wirebonds.
// `place` is that of the board, and its root frame the board's own. `layers` are the board's conductor
// layers: where the view shows one of them, only vias that reach it are added.
void addModelParts(const EntityModel::Entity &board, const EntityGUI::PartRule &rule,
                   const EntityGUI::PartPlace &place, const BoardPlane &plane,
                   const std::vector<EntityModel::Entity *> &layers, BoardView &view);

} // namespace EDATool
