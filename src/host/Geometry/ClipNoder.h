// Splits edges so that they meet in common vertices only.
#pragma once

#include "host/Geometry/ClipGrid.h"

#include <vector>

namespace Geometry {
namespace Clip {

// An edge between two vertices and what crossing it does to the winding numbers.
struct Edge {
    Index from = none;
    Index to = none;
    int windings[2] = {0, 0}; // left of from -> to minus right of it, for subject and clip
    Index sourceFrom = none;  // ends of the input edge that this one is a part of
    Index sourceTo = none;
    bool fresh = true; // not yet tested against the others
};

// What an input may cost before it is refused, so that memory and time stay bounded.
struct NodingLimits {
    double freeSplits = 4e6;     // splits of edges in one round that any input may have
    double splitsPerEdge = 16.0; // further ones for each edge
    double freeTests = 1e9;      // tests of pairs in one round that any input may have
    double testsPerEdge = 1e3;   // further ones for each edge
};

// Makes a plane graph of the edges: splits them where they cross and where a vertex comes
// closer than two cells, adds up the windings of edges that fall together, and drops those
// that cancel. The order of the edges is kept, since neighbours in it are near in space.
//
// Throws std::length_error when the input crosses itself so often that the limits are not kept.
void makePlaneGraph(Grid &grid, std::vector<Edge> &edges, NodingLimits const &limits);

} // namespace Clip
} // namespace Geometry
