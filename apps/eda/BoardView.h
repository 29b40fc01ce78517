// What a picture of a board shows, whether it comes from a design or from a model.
#pragma once

#include "Design.h"
#include "host/EntityModel/Model.h"
#include "Path2D.h"

#include <cstddef>
#include <string>
#include <vector>

namespace EDATool {

enum class Side { Top, Bottom };

struct HoleView {
    Path path;
    bool isPlated = false;
};

enum class KeepoutKind { Components, Vias, Routing, Other };

struct KeepoutView {
    Path path;
    KeepoutKind kind = KeepoutKind::Other;
};

struct PartView {
    Path body; // empty where the part has no shape
    Point at;  // its location
    std::string designator;
    bool isMechanical = false;
};

// Lengths in `unit`, x to the right and y up, as seen from the top. Only what is on the side shown.
struct BoardView {
    std::string name;
    std::string unit; // "mm"; empty where the design names none that is known
    Side side = Side::Top;
    double thickness = 0.0;
    Path edge; // with the cut-outs
    std::vector<Path> cutOuts;
    Box edgeBound;
    std::vector<HoleView> holes;
    std::vector<KeepoutView> keepouts;
    std::vector<PartView> parts;
    std::size_t numUnplaced = 0; // parts on this side without a place on the board yet; not among `parts`
};

BoardView viewOfDesign(const Design &design, Side side);

// The board of a model with its holes, vias and keepouts.
BoardView viewOfModel(const EntityModel::Entity &board, Side side);

// The box of all that is shown.
Box boundOf(const BoardView &view);

} // namespace EDATool
