// Lines with a width as areas.
#pragma once

#include "host/QvDbWrap/IpcCurves.h"

namespace QvDbWrap {

struct LineStyle {
    enum End { Round, Square, None };

    double width = 0; // metres; 0 draws nothing
    End end = Round;
};

// An area for each segment of the path. Its first and last point have the style's ends, all points between
// and those of a closed path round ones, so that no corner is left open. A path of one point is a dot with
// ends.
Areas strokePath(const Path &path, const LineStyle &style);

// The line along a closed ring.
Areas strokeRing(const Ring &ring, const LineStyle &style);

} // namespace QvDbWrap
