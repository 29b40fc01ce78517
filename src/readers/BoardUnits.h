// Whether the lengths of a board are in units that the host knows.
#pragma once

#include "model/EDABoard.h"

#include <string>

namespace EDA {

// An import drops every length whose unit the host doesn't know, so that a board with a mistyped unit becomes
// a model without sizes and without a word. A front end asks here before it imports.

// True for a unit of length in any of its spellings. Blanks around it don't count. Empty text is no unit.
bool isKnownLengthUnit(const std::string &units);

// One message for the units of the board and of its components that are no known lengths; empty when all are.
// A component without units takes those of the board. A board that holds nothing but components with units of
// their own, as a library file alone gives it, needs none.
std::string describeUnknownUnits(const EDABoard &board);

} // namespace EDA
