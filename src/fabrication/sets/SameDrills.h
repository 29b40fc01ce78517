// Drill files with the same holes, which would be drilled twice.
#pragma once

#include "fabrication/sets/FabricationSet.h"

namespace EDA::Fabrication {

// Leaves out drills whose holes are those of another file of the set, with a warning: of the same layers, at
// the same places within four micrometres, which is what rounding of inches takes, as wide within ten, and
// not plated where the other's are unplated. Drill files are kept before layers of holes; else the first is
// kept. The spans must be set. `copper` is the bound of the copper.
void dropSameDrills(FabricationSet &set, SetSettings const &settings, Geometry::Bound2D const &copper);

} // namespace EDA::Fabrication
