// The conductor layers and holes of one design on the board of another.
#pragma once

#include "model/EDABoard.h"

#include <cstddef>
#include <string>
#include <vector>

namespace EDATool {

// From lengths of the copper to those of the board: scaled, then moved.
struct CopperPlace {
    double scale = 1.0;
    double x = 0.0; // in units of the board
    double y = 0.0;
};

struct CopperResult {
    std::size_t boardHoles = 0;  // that the board has itself, all locations counted
    std::size_t copperHoles = 0; // that came with the copper
    std::size_t sameHoles = 0;   // of these left out, since the board has the same
    std::size_t otherSizes = 0;  // of these put beside a hole of the board with another size
};

// Puts all layers with their conductors, and all holes, onto the board. A hole of the same size at the same
// place as one of the board is left out: the board's own says which part it is of. `tolerance` is how far
// apart, in units of the board, the places and the sizes of such two may be. The layers of the board stay
// before those of the copper, which are left empty, so that only one is there twice at a time.
CopperResult putCopperOnBoard(EDA::EDABoard &copper, const CopperPlace &place, double tolerance,
                              EDA::EDABoard &board);

// What of the two is not where it should be; empty when the copper lies on the board. `place` is that of the
// copper; the numbers in the lines are in units of the board, which are `perMillimetre` to one millimetre.
std::vector<std::string> compareExtents(const EDA::EDABoard &copper, const CopperPlace &place,
                                        const EDA::EDABoard &board, double perMillimetre);

} // namespace EDATool
