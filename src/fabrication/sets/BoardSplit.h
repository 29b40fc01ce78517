// Telling the boards in one place apart.
#pragma once

#include "fabrication/sets/FabricationSet.h"

#include <string>
#include <vector>

namespace EDA::Fabrication {

struct BoardGroup {
    std::string name;
    std::vector<std::size_t> files; // indices; of the copper first, then what goes with it
    Geometry::Bound2D bound;        // of its copper, where it was needed
};

// The boards that the files are of, in the order of their first copper files. One group, or none without
// copper, where nothing speaks for more: no layer is there twice, and what is drawn overlaps. Files that go
// with no board in particular are in none. Extents are read where names do not settle it.
std::vector<BoardGroup> splitBoards(std::vector<SetFile> &files);

} // namespace EDA::Fabrication
