// The conductors of a model's layers.
#pragma once

#include "BoardView.h"
#include "PartShape.h"

#include <string>
#include <vector>

namespace EDATool {

// The conductor layers of a board in a model, in their order, and their names.
std::vector<EntityModel::Entity *> conductorLayers(const EntityModel::Entity &board);
std::vector<std::string> namesOf(const std::vector<EntityModel::Entity *> &layers);

// Adds all conductors of a layer, those of its nets included, to the copper of the view: outlines with their
// holes open, and routes segment by segment with round ends. `place` is that of the board, and its root frame
// the board's own.
void addModelCopper(const EntityModel::Entity &board, const EntityModel::Entity &layer,
                    const EntityGUI::PartRule &rule, const EntityGUI::PartPlace &place,
                    const BoardPlane &plane, BoardView &view);

} // namespace EDATool
