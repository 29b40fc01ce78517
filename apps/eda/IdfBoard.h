// A board made ready for IDF files, with word of what they cannot hold.
#pragma once

#include "model/EDABoard.h"

#include <string>
#include <vector>

namespace EDATool {

struct IdfBoard {
    EDA::EDABoard board;
    // What is lost or was changed, a line a kind with its number. Printable.
    std::vector<std::string> notices;
};

// The part of a design that IDF files hold, in a form that every reader of them takes:
// - Each location of a via is a via of its own.
// - All lengths are in `units`, which is "MM", "THOU" or empty. Empty keeps the units of the board and of
// each
//   component where IDF knows them; others become millimetres, and inches thousandths of one.
// - Words of other formats for kinds of holes, keepouts and sides become those of IDF.
// - What a row of the files needs is there, and texts that would divide their row are changed.
// A board or a component of unknown units takes `units` as its own; without `units`, this throws
// DesignFailure, unless the board names none, which is taken as millimetres. A component without units takes
// the board's.
IdfBoard makeIdfBoard(const EDA::EDABoard &design, const std::string &units);

} // namespace EDATool
