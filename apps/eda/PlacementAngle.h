// The angle of placements that have an orientation.
#pragma once

#include "model/EDAComponentPlacement.h"

namespace EDATool {

// The angle, as files hold it, of a placement that stands like this one but has no orientation. On the bottom
// the angle of an orientation is the one that is seen there, while the angle that is stored turns the other
// way.
double angleWithoutOrientation(const EDA::EDAComponentPlacement &placement);

} // namespace EDATool
