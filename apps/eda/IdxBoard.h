// A board made ready for an IDX document, with word of what that cannot hold.
#pragma once

#include "model/EDABoard.h"

#include <string>
#include <vector>

namespace EDATool {

struct IdxBoard {
    EDA::EDABoard board;
    // What is lost or was changed, a line a kind with its number. Printable.
    std::vector<std::string> notices;
};

// The part of a design that an IDX document holds:
// - Each location of a via is a via of its own.
// - Placements have angles and no orientations, in which they would turn the other way on the bottom.
// - All lengths are in one unit: `units`, which is "MM", "THOU" or empty, or else that of the board, whatever
//   it is. Those of components are converted to it.
// A board without units is taken as `units`, or else as millimetres. Unknown units of a board or component
// are taken as `units`, and without `units` stay as they are.
IdxBoard makeIdxBoard(const EDA::EDABoard &design, const std::string &units);

} // namespace EDATool
