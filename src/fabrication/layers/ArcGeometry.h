// Arcs of layer files: their centres, and what they span.
#pragma once

#include "fabrication/LayerGraphics.h"

#include <vector>

namespace EDA::Fabrication {

// How the offsets I and J say where the centre is. With single quadrants they have no sign.
enum class Quadrants { Unknown, Single, Multi };

// How surely the centre was found.
enum class ArcFit {
    Sure,
    Guessed, // no quadrants are stated, or no centre is as far from the end as from the start
};

// The arc that goes from the start to the end; the offsets are those from the start to its centre. An arc
// without radius is a line, as is one of a single quadrant that ends where it starts: that one has no length.
// With multiple quadrants the latter is a full turn.
Segment arcTo(Point const &start, Point const &end, Point const &offset, Motion motion, Quadrants quadrants,
              ArcFit &fit);

// The angle that an arc passes through, in radians, above 0 up to a full turn.
double sweepOf(Point const &from, Segment const &arc);

// An axis-parallel box that starts empty.
struct Box {
    double xLow = 0.0;
    double yLow = 0.0;
    double xHigh = 0.0;
    double yHigh = 0.0;
    bool isEmpty = true;

    void unite(double x, double y) {
        if (isEmpty) {
            *this = {x, y, x, y, false};
            return;
        }
        if (x < xLow) xLow = x;
        if (x > xHigh) xHigh = x;
        if (y < yLow) yLow = y;
        if (y > yHigh) yHigh = y;
    }
};

// Grows the box by what the end of the segment and, of an arc, its outermost points add.
void unite(Box &box, Point const &from, Segment const &segment);

// Lines that stay within chordTolerance of the arc; the last ends exactly where the arc does.
void addLinesAlong(Point const &from, Segment const &arc, std::vector<Segment> &lines);

} // namespace EDA::Fabrication
