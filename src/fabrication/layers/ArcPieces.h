// Segments in canonical files.
#pragma once

#include "fabrication/layers/CanonicalText.h"

namespace EDA::Fabrication {

// Who reads the arc, and how coarsely: a chord may stand for almost this many degrees of one arc.
constexpr double strokeChord = 20.0;
constexpr double regionChord = 45.0;

// Draws a segment from the current point on. Arcs are cut so short that chords stay within chordTolerance of
// the arc and of one that is `margin` farther out; those that have such chords anyway stay whole. Pieces that
// round to nothing are dropped. Gives whether anything is left.
bool drawSegment(CanonicalText &text, Point const &from, Segment const &segment, double margin, double chord);

} // namespace EDA::Fabrication
