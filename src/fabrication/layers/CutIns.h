// Solids with holes as single contours.
#pragma once

#include "fabrication/LayerGraphics.h"

namespace EDA::Fabrication {

// The solid as one ring: a cut from each hole runs level to the left, to the outer ring or another hole, and
// back. Both of its ends are visited twice with the very same coordinates, by which readers know cut-ins.
Ring withCutIns(Piece const &piece);

} // namespace EDA::Fabrication
