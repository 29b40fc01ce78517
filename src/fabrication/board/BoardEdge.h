// The edge of a board from what a profile layer draws.
#pragma once

#include "fabrication/LayerGraphics.h"
#include "fabrication/Notes.h"
#include "model/EDAOutline.h"

#include <vector>

namespace EDA::Fabrication {

// Gathers the centre lines and the contours of a profile layer.
class ProfileSink : public LayerSink {
public:
    void flash(Shape const &shape, Point const &at, bool dark) override;
    void stroke(Shape const &shape, Point const &from, Segment const &segment, bool dark) override;
    void region(Path const &contour, bool dark) override;

    struct Stroke {
        Point from;
        Segment segment;
    };
    std::vector<Stroke> const &strokes() const { return strokes_; }
    std::vector<Path> const &contours() const { return contours_; }

private:
    std::vector<Stroke> strokes_;
    std::vector<Path> contours_;
};

// Closed paths out of the strokes, whose ends meet exactly or else within `gap` (millimetres), in any order
// and direction. Strokes drawn twice count once. What closes no path is told. Contours are paths already.
std::vector<Path> closedPaths(ProfileSink const &profile, double gap, Notes &notes);

// The board's outline: the path around the copper is the edge (index 0, counter-clockwise), paths right in it
// are cut-outs (index 1 and up), what lies in these is left out. Arcs stay arcs.
// `copper` is the bound of the copper, in millimetres, and may be in the reset state. Of the paths that hold
// it, the edge is the smallest, or one around that which is hardly larger (an outline drawn twice); larger
// ones are frames, and are told. Where none holds it, the path with the largest area is the edge, and those
// beside it are told. A path within the edge that holds most of the copper is no cut-out, and is told.
// False, with the outline empty, where nothing closes. Gaps of up to 0.01 mm are closed, and of up to 0.1 mm
// where that makes another edge; both are told. Lengths times `scale`.
bool findBoardEdge(ProfileSink const &profile, double scale, Geometry::Bound2D const &copper,
                   EDAOutline &outline, Notes &notes);

} // namespace EDA::Fabrication
