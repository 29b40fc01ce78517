// Where a name fits into a shape.
#pragma once

#include "Path2D.h"

namespace EDATool {

// A box inside the shape, or nearly so, with room for a line of text: the box of the whole shape where its
// middle is inside, otherwise the roomiest found on a few levels across and along. Pixels.
Box roomForLabel(const Path &shape);

} // namespace EDATool
