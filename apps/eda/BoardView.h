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

enum class PartKind {
    Component,
    Mechanical,
    Socket,
    Container, // a component that stands as the solids in it: only its box is shown
    Solid      // of a package, or of a component made of solids
};

// Where a part's designator stands. What is in a part would cover one inside.
enum class LabelPlace { Inside, Above, Nowhere };

struct PartView {
    Path body; // empty where the part has no shape
    Point at;  // its location
    std::string designator;
    LabelPlace labelPlace = LabelPlace::Inside;
    PartKind kind = PartKind::Component;
    bool isFiltered = false; // in the model, but not in the calculation
    double power = 0.0;      // what it dissipates itself, without what is in it, in watts
    double density = 0.0;    // of that power over the body, in W/cm^2; 0 where the body has no area
};

struct WireView {
    Path path;
    double diameter = 0.0;
};

// Of all parts that are not filtered. The greatest are those of both sides, so that the pictures of both can
// have one scale.
struct PowerTotals {
    double shownSide = 0.0; // watts
    double board = 0.0;
    double greatest = 0.0;
    double greatestDensity = 0.0; // W/cm^2
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
    std::string layer;           // whose conductor is shown; nothing else lies on the board then
    std::size_t layerNumber = 0; // from 1; 0: no layer is shown
    std::vector<Path> copper;    // of that layer
    std::vector<HoleView> holes;
    std::vector<KeepoutView> keepouts;
    std::vector<PartView> parts;
    std::vector<Path> bumps;
    std::vector<WireView> wires;
    std::size_t numUnplaced = 0; // parts on this side without a place on the board yet; not among `parts`
    PowerTotals power;
};

BoardView viewOfDesign(const Design &design, Side side);

// With the number of a layer, from 1, no parts and keepouts, and of the holes those that reach it; its
// conductor is for viewOfLayer to add.
BoardView viewOfBoard(const EDA::EDABoard &board, Side side, std::size_t layerNumber = 0);

// The board of a model with all that is on it. Where parts stand is asked of the code that builds their solid
// geometry. Of a substrate it shows the solids and wirebonds of its package too, which are its siblings. A
// board that is plugged into a socket of this one is not shown: it is a board of its own.
// With the number of a layer, from 1, it shows the conductors of that one with the holes that reach it, and
// no parts and keepouts.
BoardView viewOfModel(const EntityModel::Entity &board, Side side, std::size_t layerNumber = 0);

// Sums up the power of a part, and shows the part if it is on the side shown. The view's unit must be set.
void addPart(BoardView &view, PartView part, Side side);

// The box of all that is shown.
Box boundOf(const BoardView &view);

} // namespace EDATool
