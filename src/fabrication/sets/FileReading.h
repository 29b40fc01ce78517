// Reading files of a set in full where looking at their heads is not enough.
#pragma once

#include "fabrication/sets/FabricationSet.h"

#include <set>
#include <string>
#include <vector>

namespace EDA::Fabrication {

// Takes objects and drops them.
class NullSink : public LayerSink {
public:
    void flash(Shape const &, Point const &, bool) override {}
    void stroke(Shape const &, Point const &, Segment const &, bool) override {}
    void region(Path const &, bool) override {}
};

// The bound of what a file of a layer's form draws; read once and kept in its facts. In the reset state for a
// file that draws nothing or cannot be read.
Geometry::Bound2D const &extentsOf(SetFile &file);

// What surrounds a drill file.
struct DrillSurroundings {
    DrillNumbers byCaller;           // hold against all that the file says
    DrillNumbers bySet;              // what another drill file of the set says of itself
    Geometry::Bound2D layers;        // of the copper
    std::vector<SetFile> toolTables; // files that may say the sizes of tools
    std::set<std::string> stems;     // of the drill files, in lower case
};

// What the drill files and the helpers of a set say; without the copper's bound.
DrillSurroundings surroundingsOf(FabricationSet const &set, SetSettings const &settings);

// False, with the reason, where the file cannot be read.
bool readDrills(SetFile const &file, DrillSurroundings const &around, DrillData &data, Notes &notes,
                std::string &error, Tools::ToolProgress *progress = nullptr);

} // namespace EDA::Fabrication
