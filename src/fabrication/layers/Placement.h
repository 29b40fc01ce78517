// Where objects come to lie: transforms of images, objects and blocks.
#pragma once

#include "fabrication/apertures/ApertureMaker.h"
#include "fabrication/LayerGraphics.h"

namespace EDA::Fabrication {

// The transform of an aperture that is first transformed as `inner` and then as `outer`. Both scale in both
// directions alike. A rotation is from 0 to less than 360, and mirroring is never in both directions.
ApertureTransform composed(ApertureTransform const &outer, ApertureTransform const &inner);

// What becomes of coordinates, and of the apertures that stand there.
struct Placement {
    double xx = 1.0; // x' = xx * x + xy * y + x0
    double xy = 0.0;
    double yx = 0.0;
    double yy = 1.0;
    double x0 = 0.0;
    double y0 = 0.0;
    ApertureTransform turn;

    // Neither moves nor turns nor sizes anything.
    bool isPlain() const;
    bool isMirrored() const { return xx * yy - xy * yx < 0.0; }
    // Whether circles stay circles.
    bool keepsArcs() const;
    Point at(Point const &point) const {
        return {xx * point.x + xy * point.y + x0, yx * point.x + yy * point.y + y0};
    }
    Segment at(Segment const &segment) const;
};

Placement composed(Placement const &outer, Placement const &inner);

// What is drawn around the origin comes to stand at the point.
Placement placedAt(Point const &point, ApertureTransform const &transform = {});

// The transforms of the whole image that old files may ask for.
struct ImageTransform {
    bool swapsAxes = false; // the axis A of the image is Y of the file, B is X
    bool mirrorsA = false;
    bool mirrorsB = false;
    double offsetA = 0.0; // millimetres
    double offsetB = 0.0;
    double scaleA = 1.0;
    double scaleB = 1.0;
    double rotation = 0.0; // degrees

    Placement placement() const;
};

} // namespace EDA::Fabrication
