// Which loose ends of strokes belong together.
#pragma once

#include "fabrication/LayerGraphics.h"

#include <cstddef>
#include <vector>

namespace EDA::Fabrication {

struct LooseEnd {
    Point at;
    std::size_t stroke; // two ends of one stroke are no pair
    std::size_t id;
};

struct EndPair {
    std::size_t first; // ids
    std::size_t second;
};

// Pairs no farther apart than this, the nearest first; each end is in one at most. Of heaps of ends at one
// place only so many are looked at that the time stays in proportion to the number of ends.
std::vector<EndPair> matchEnds(std::vector<LooseEnd> const &ends, double gap);

} // namespace EDA::Fabrication
