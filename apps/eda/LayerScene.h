// Pictures of one layer of a design.
#pragma once

#include "BoardView.h"
#include "Picture.h"

#include <string>

namespace EDATool {

// The names of all conductor layers, in their order.
std::vector<std::string> layerNamesOf(const EDA::EDABoard &board);

// Each piece of conductor is drawn as it is meant: what its holes take away stays open, and what lies in or
// over a hole is filled again, in the order of its internal outlines.
Path copperPath(const EDA::EDAOutline &outline);

// The conductor of a layer, with the holes that reach it, and on the outer layers with the parts of their
// side. Throws as findLayer does.
BoardView viewOfLayer(const Design &design, const std::string &layer);

// The same of a board in a model.
BoardView viewOfModelLayer(const EntityModel::Entity &board, const std::string &layer);

// What of a layer is drawn pixel by pixel, in the units of the board.
struct BareWindow {
    double dpi = 0.0;
    Box box; // empty: all of the layer
};

// A layer alone, black on white: a pixel is black where its centre lies in conductor. Throws UsageFailure for
// a picture that is too large, DesignFailure for a layer that is empty or in unknown units.
Picture drawBare(const BoardView &view, const BareWindow &window);

} // namespace EDATool
