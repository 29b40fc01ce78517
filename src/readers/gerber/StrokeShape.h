// The area that a convex aperture sweeps on a straight line.
#pragma once

#include "model/EDAOutline.h"

namespace EDA {

// The stroke of an aperture from one point to another, when it is clear what its contour is: that of the
// band, as wide as the aperture across the stroke, united with the aperture at both ends. Gives false, and
// leaves `stroke` alone, for an aperture with holes or further pieces, one that is not convex or does not
// lie around its origin, and for a stroke so short that an end reaches beyond the other; then the parts have
// to be united the long way, with the same contour.
bool makeConvexStroke(const EDAOutline &aperture, double startX, double startY, double endX, double endY,
                      EDAOutline &stroke);

} // namespace EDA
