// The order of the copper layers.
#pragma once

#include "fabrication/sets/FabricationSet.h"

#include <vector>

namespace EDA::Fabrication {

// Sorts the copper from top to bottom by places. Layers without one stand between top and bottom, in the
// order given. What is not certain goes to the guesses of the set, what cannot be right to its warnings.
void orderLayers(std::vector<SetFile> &copper, FabricationSet &set);

} // namespace EDA::Fabrication
