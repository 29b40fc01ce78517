// The angle of placements that have an orientation.
#include "PlacementAngle.h"

namespace EDATool {

double angleWithoutOrientation(const EDA::EDAComponentPlacement &placement) {
    double xx = 1.0, xy = 0.0, yx = 0.0, yy = 1.0;
    const double angle = placement.getAngle(false);
    if (!placement.getOrientation(xx, xy, yx, yy) || placement.isOnBoardTop()) return angle;
    constexpr double negligible = 1e-6; // as the model has it
    return angle > negligible ? 360.0 - angle : 0.0;
}

} // namespace EDATool
