// Counting what XFL files say and boards and packages lack.
#pragma once

#include "host/FileSystem/CSVParserBase.h"
#include "LossLines.h"

#include <array>
#include <cstddef>
#include <string>
#include <vector>

namespace EDATool {

// Each is one line for the user.
enum class XflLoss {
    Scales,
    StrayRows,
    ShortRows,
    OpenBlocks,
    LayerOrder,
    Bodies,
    Pins,
    Bondwires,
    Keywords,
    Layers,
    ViaKinds,
    ViaShapes,
    ShapeIds,
    Pieces,
    Voids,
    LoneVoids,
    Count
};

class XflNotices {
public:
    void add(XflLoss loss) { ++numbers_[static_cast<std::size_t>(loss)]; }

    // One line for each kind that has been counted, such as "3 bond wires are left out".
    std::vector<std::string> lines() const;

private:
    std::array<std::size_t, static_cast<std::size_t>(XflLoss::Count)> numbers_ = {};
};

// What the reader passes over in silence, found by a walk over the rows of a file. Of a package, which is
// read as a component, layers count by their rows, else by the conductors among them.
XflNotices findXflLosses(const FileSystem::CSVParserBase &rows, bool isPackage);

} // namespace EDATool
