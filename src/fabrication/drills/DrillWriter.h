// Writing holes in the one dialect that the reader of drill files takes, and slots as vias.
#pragma once

#include "fabrication/drills/DrillFile.h"
#include "fabrication/TextSink.h"
#include "model/EDAVia.h"

namespace EDA::Fabrication {

// Writes millimetres, integer coordinates of format 4.6 with trailing zeros kept, every coordinate
// statement whole, each tool once with its size and, by the comment of hole sizes, its plating; no holes of
// unknown size. Slots are not written.
void writeDrillFile(DrillData const &data, TextSink &sink);

// A via for each slot, with its outline (the stadium of a straight one, else the swept region) about its
// centre as vias have it, its width as diameter, hole type "VIA", the plating of its tool and the layers.
// Names are "Slot" with a number counted from `first`. Lengths times `scale`. What a closed path cuts out is
// of the hole, unless that is more than a quarter of `copper`, the bound of the copper in millimetres (may be
// in the reset state): such a path cuts the board itself out, so it is left out and noted.
std::vector<EDAVia> slotVias(DrillData const &data, std::string const &startLayer,
                             std::string const &endLayer, std::size_t first, double scale,
                             Geometry::Bound2D const &copper, Notes &notes);

} // namespace EDA::Fabrication
