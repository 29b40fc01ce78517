// Outlines as paths that keep their arcs.
#pragma once

#include "model/EDAOutline.h"
#include "Path2D.h"

namespace EDATool {

// The closed path of an outline, without its internal outlines, in its own coordinates. Arcs stay arcs; where
// the numbers make no arc, its segments are drawn, and points that are not finite are left out.
Path pathOf(const EDA::EDAOutline &outline);

// The same with all internal outlines, so that a fill by the even-odd rule leaves them open.
Path pathWithHoles(const EDA::EDAOutline &outline);

} // namespace EDATool
