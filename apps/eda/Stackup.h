// A stack-up: the layers of a board from the top, from a file of its own.
#pragma once

#include "Design.h"
#include "host/EntityModel/Units.h"

#include <string>
#include <vector>

namespace EDATool {

namespace StackupLimits {
constexpr std::size_t fileSize = std::size_t{1} << 20; // bytes
constexpr std::size_t layers = 1000;
} // namespace StackupLimits

struct StackupLayer {
    std::string name; // may be empty
    bool isConductor = true;
    double thickness = 0.0; // above 0, in the units of the file
    std::string material;   // empty: the board's
    std::string filling;    // of a conductor: what is between its conductors; empty: the board's
    double coverage = -1.0; // of a conductor: its share of the area in percent; below 0: not given
};

// From the top of the board to its bottom.
struct Stackup {
    std::string file;
    const EntityModel::Unit *unit = nullptr; // of all thicknesses
    std::vector<StackupLayer> layers;
    std::string conductorMaterial; // of the board
    std::string dielectricMaterial;

    std::size_t numConductors() const;
};

// Reads a stack-up file; docs/formats.md has its form. Throws DesignFailure with file, place and reason for
// whatever is wrong in it: nothing is guessed, and no member is passed over.
Stackup readStackup(const std::string &file);

// Gives the layers of the design their places: thickness, offset and materials, with the dielectrics between
// them and in the order of the stack-up. Its conductors are the design's by their names or files, in any
// case, or by their order where none has a name; a design without layers takes all from the stack-up. A board
// without a thickness takes the sum. The notices tell the sum, and the warnings where the board is of another
// thickness. Throws DesignFailure when the two do not have the same conductors, and leaves the design as it
// was.
void applyStackup(const Stackup &stackup, Design &design);

} // namespace EDATool
