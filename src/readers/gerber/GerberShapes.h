// The shapes of apertures and macro primitives.
#pragma once

namespace EDA {

class EDAOutline;

// Each appends the points of a shape to an outline, and does nothing else to it. Lengths are in the file's
// units.
struct GerberShapes {
    // A full circle about (x, y), given by its centre; a single point where the diameter is at most 1e-9.
    static void setupCircularOutline(EDAOutline *outline, double diameter, double x, double y);

    // A rectangle about (x, y), and one whose lower left corner is there.
    static void setupRectangularOutline(EDAOutline *outline, double width, double height, double x, double y);
    static void setupLowerLeftRectangularOutline(EDAOutline *outline, double width, double height, double x,
                                                 double y);

    // A rectangle about the origin with half circles at its short ends, in steps of a 32nd of a turn.
    static void setupObroundOutline(EDAOutline *outline, double width, double height);

    // A regular polygon in a circle of the diameter about (x, y), its first corner at the angle of the
    // rotation. No point for fewer than one vertex.
    static void setupPolygonOutline(EDAOutline *outline, double diameter, int vertices,
                                    double rotationDegrees, double x, double y);

    // A rectangle along a line, with square ends that do not go beyond it.
    static void setupVectorLineOutline(EDAOutline *outline, double width, double startX, double startY,
                                       double endX, double endY);

    // A ring cut in four by a cross. The first quarter becomes the outline's points, the others internal
    // outlines that are no holes.
    static void setupThermalOutline(EDAOutline *outline, double x, double y, double outerDiameter,
                                    double innerDiameter, double gap);

    // A cross at the origin, and rings about (x, y) from the outer one inward: what is united becomes the
    // outline and its internal outlines.
    static void setupMoireOutline(EDAOutline *outline, double x, double y, double outerDiameter,
                                  double ringThickness, double ringGap, int maxRings, double crossThickness,
                                  double crossLength);
};

} // namespace EDA
