// How far parts reach up and down.
#pragma once

#include "host/EntityCore/PartPlacement.h"

namespace EntityGUI {

// The low face and the height of a part, in the own frame of its owner's shape. A part on the bottom side
// hangs from `low`.
struct PartSpan {
    double low = 0.0;
    double height = 0.0; // not a number if it is missing
    bool hangs = false;
};

PartSpan readSpan(EntityModel::Entity const &entity, PartRule const &rule, PartFrame const &frame);

} // namespace EntityGUI
