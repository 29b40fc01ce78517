// Clipping by Clipper 6, for comparison.
#pragma once

#include "ClipShapes.h"

namespace EDABench {

// How Clipper is called. All ways end in the same area where it is right.
struct ClipperWay {
    const char *name;
    int gridBits; // the coordinates' range in grid units; up to 30 it computes in 64 bits, above in 128
    bool strictlySimple; // `StrictlySimple` in every step
    bool normalised;     // each side first made clean on its own, even-odd; then both filled non-zero
};

// Converts to an integer grid scaled by a power of two, clips, and converts back.
Shape clipByClipper(ClipperWay const &way, Operation operation, Fill fill, Shape const &subject,
                    Shape const &clip);

} // namespace EDABench
