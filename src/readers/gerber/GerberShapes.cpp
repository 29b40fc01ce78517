// The shapes of apertures and macro primitives.
#include "readers/gerber/GerberShapes.h"

#include "host/Geometry/Transform.h"
#include "model/EDAOutline.h"
#include "readers/gerber/Aperture.h"
#include "readers/gerber/MoireShape.h"

#include <cmath>
#include <initializer_list>
#include <utility>

namespace EDA {

namespace {

constexpr double minDiameter = 1e-9; // of a circle that is more than a point
constexpr int turnSteps = 32;        // of a full turn in round polylines
constexpr int quarterSteps = 8;      // of an edge of a thermal's quarter

using Corners = std::initializer_list<std::pair<double, double>>;

void addCorners(EDAOutline *outline, const Corners &corners) {
    for (const auto &[x, y] : corners)
        outline->addPoint(0, x, y, 0.0);
}

void addPolar(EDAOutline *outline, double radius, double angle, double x, double y) {
    outline->addPoint(0, radius * std::cos(angle) + x, radius * std::sin(angle) + y, 0.0);
}

// Points on a circle from one step of a turn to another, up or down.
void addSteps(EDAOutline *outline, double radius, int from, int to, double x, double y) {
    const double step = 2.0 * Geometry::Transform::pi / turnSteps;
    const int direction = from <= to ? 1 : -1;
    for (int i = from; i != to + direction; i += direction)
        addPolar(outline, radius, i * step, x, y);
}

// The angles at which a gap's edges cut a circle. Intended: the gap counts from the middle to each side.
struct GapAngles {
    double start;
    double step;

    GapAngles(double gap, double diameter) : start(std::atan(gap / diameter)) {
        step = (std::atan(diameter / gap) - start) / quarterSteps;
    }
};

} // namespace

void GerberShapes::setupCircularOutline(EDAOutline *outline, double diameter, double x, double y) {
    outline->addPoint(0, x + diameter / 2, y, 0.0);
    if (diameter > minDiameter) outline->addPoint(0, x + diameter / 2, y, x, y, false);
}

void GerberShapes::setupRectangularOutline(EDAOutline *outline, double width, double height, double x,
                                           double y) {
    const double w = width / 2, h = height / 2;
    addCorners(outline, {{x - w, y + h}, {x + w, y + h}, {x + w, y - h}, {x - w, y - h}});
}

void GerberShapes::setupLowerLeftRectangularOutline(EDAOutline *outline, double width, double height,
                                                    double x, double y) {
    addCorners(outline, {{x, y + height}, {x + width, y + height}, {x + width, y}, {x, y}});
}

void GerberShapes::setupObroundOutline(EDAOutline *outline, double width, double height) {
    if (width <= height) {
        const double middle = (height - width) / 2;
        addSteps(outline, width / 2, 0, turnSteps / 2, 0.0, middle);
        addSteps(outline, width / 2, turnSteps / 2, turnSteps, 0.0, -middle);
    } else {
        const double middle = (width - height) / 2;
        addSteps(outline, height / 2, -turnSteps / 4, turnSteps / 4, middle, 0.0);
        addSteps(outline, height / 2, turnSteps / 4, 3 * turnSteps / 4, -middle, 0.0);
    }
}

void GerberShapes::setupPolygonOutline(EDAOutline *outline, double diameter, int vertices,
                                       double rotationDegrees, double x, double y) {
    constexpr double pi = Geometry::Transform::pi;
    for (int i = 0; i < vertices; ++i) {
        addPolar(outline, diameter / 2, i * 2.0 * pi / vertices + rotationDegrees * pi / 180.0, x, y);
    }
}

void GerberShapes::setupVectorLineOutline(EDAOutline *outline, double width, double startX, double startY,
                                          double endX, double endY) {
    double normalX = -(endY - startY), normalY = endX - startX;
    const double length = std::sqrt(normalX * normalX + normalY * normalY);
    if (length > 0.0) {
        normalX /= length;
        normalY /= length;
    }
    const double dx = width / 2 * normalX, dy = width / 2 * normalY;
    addCorners(outline, {{startX + dx, startY + dy},
                         {startX - dx, startY - dy},
                         {endX - dx, endY - dy},
                         {endX + dx, endY + dy}});
}

void GerberShapes::setupThermalOutline(EDAOutline *outline, double x, double y, double outerDiameter,
                                       double innerDiameter, double gap) {
    const GapAngles inner(gap, innerDiameter), outer(gap, outerDiameter);
    for (int quarter = 0; quarter < 4; ++quarter) {
        const double turn = quarter * Geometry::Transform::pi / 2;
        EDAOutline piece(false);
        EDAOutline *const target = quarter == 0 ? outline : &piece;
        for (int i = 0; i <= quarterSteps; ++i) {
            addPolar(target, innerDiameter / 2, inner.start + i * inner.step + turn, x, y);
        }
        for (int i = quarterSteps; i >= 0; --i) {
            addPolar(target, outerDiameter / 2, outer.start + i * outer.step + turn, x, y);
        }
        if (quarter > 0) outline->addInternalOutline(piece);
    }
}

// Intended: the cross stands at the origin wherever the rings are.
void GerberShapes::setupMoireOutline(EDAOutline *outline, double x, double y, double outerDiameter,
                                     double ringThickness, double ringGap, int maxRings,
                                     double crossThickness, double crossLength) {
    const double t = crossThickness / 2, l = crossLength / 2;
    EDAOutline cross(false);
    addCorners(&cross, {{t, t},
                        {t, l},
                        {-t, l},
                        {-t, t},
                        {-l, t},
                        {-l, -t},
                        {-t, -t},
                        {-t, -l},
                        {t, -l},
                        {t, -t},
                        {l, -t},
                        {l, t}});
    MoireShape moire(std::move(cross));
    for (int i = 0; i < maxRings; ++i) {
        const double diameter = outerDiameter - i * (ringThickness + ringGap);
        EDAOutline ring(false);
        addSteps(&ring, diameter / 2, 0, turnSteps, x, y);
        addSteps(&ring, (diameter - ringThickness) / 2, turnSteps, 0, x, y);
        moire.addRing(std::move(ring), diameter / 2, (diameter - ringThickness) / 2);
    }
    Aperture pieces;
    for (EDAOutline &piece : moire.takePieces())
        pieces.addApart(std::move(piece));
    pieces.combineInto(*outline);
}

} // namespace EDA
