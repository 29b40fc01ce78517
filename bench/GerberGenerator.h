// Seeded Gerber layers and drill files of any size, for benchmarks. The same arguments always give the same
// texts.
#pragma once

#include <string>

namespace EDABench {

struct LayerOptions {
    bool attributes = false; // each net is named
    bool cleared = false;    // pours are cleared around their pads by flashes, not by cut-ins
    bool loneCodes = false;  // G01, G02 and G03 stand alone, after which the reader draws dots and lines
    unsigned seed = 1;
};

// A copper layer of exactly so many strokes, flashes and regions: tiles of bus lines, two-pad parts, ball
// grids, pours with clearances and thermal spokes, and hatches. Nets overlap in themselves alone; a ground
// rail joins pours and hatches to one large net of about 7 % of the objects.
std::string generateLayer(int objects, const LayerOptions &options = LayerOptions());

// Layers that are hard to unite, of at least so many strokes and flashes.
enum class Stress {
    Random,     // strokes in all directions on top of each other
    Duplicates, // equal and collinear strokes, pads that touch
    Near,       // copies a few nanometres apart, fans through one point
    Fill        // areas painted with parallel strokes at odd angles
};
std::string generateStress(int objects, Stress kind, unsigned seed = 1);

// A drill file of ten tools, metric with decimals: 95 % holes, 4 % slots between two points, 1 % routed ones.
// With `plain` holes alone, their coordinates in whole numbers of four decimals.
std::string generateDrill(int operations, bool plain = false, unsigned seed = 1);

} // namespace EDABench
