// Whether holes are plated, from the copper around them.
#pragma once

#include "fabrication/drills/DrillFile.h"
#include "model/EDABoardLayer.h"

namespace EDA::Fabrication {

// Settles the plating of each tool of which nothing says it: most of its holes have copper around them on
// both layers where they start and end, or they have not. Older files say no word of plating, and a via that
// is taken for a bare hole conducts nothing. Two notes tell the guesses, with the numbers of holes. Lengths
// of the data times `scale`. Of a tool, a thousand holes at most are looked at.
void guessPlating(DrillData &data, EDABoardLayer const &from, EDABoardLayer const &to, double scale,
                  Notes &notes);

} // namespace EDA::Fabrication
