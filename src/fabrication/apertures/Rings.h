// Rings, arcs and hulls that shapes are made of.
#pragma once

#include "fabrication/LayerGraphics.h"
#include "host/Geometry/PolygonPainter.h"

#include <cstddef>
#include <vector>

namespace EDA::Fabrication {

constexpr double fullTurn = 6.283185307179586; // radians

// Apertures whose points lie farther out are not believed.
constexpr double farthestPoint = 1e6;

// A turn about the origin, exact for multiples of a quarter.
struct Turn {
    double cosine = 1.0;
    double sine = 0.0;

    Point operator()(Point const &p) const { return {p.x * cosine - p.y * sine, p.x * sine + p.y * cosine}; }
};

Turn turnOf(double degrees);

// Edges of a full circle: within the tolerance, at least 32 so that small ones look round, at most 2000.
std::size_t edgesOfTurn(double radius, double tolerance = chordTolerance);

// What an arc says, resolved. Where its ends lie at two radii, the radius goes evenly from one to the other.
struct Arc {
    Point centre;
    double startRadius = 0.0;
    double endRadius = 0.0;
    double startAngle = 0.0; // radians
    double sweep = 0.0;      // radians, positive counter-clockwise, never 0

    Point at(double share) const;
};

Arc arcOf(Point const &from, Segment const &segment);

// Appends the points of a segment after its start; its end comes exactly.
void appendSegment(Ring &ring, Point const &from, Segment const &segment, double tolerance,
                   std::size_t maxSteps);

Ring ellipseRing(Point const &centre, double radiusX, double radiusY);
Ring rectangleRing(double left, double bottom, double right, double top);
// Along the axes, centred.
Ring obroundRing(double width, double height);

double signedArea(Ring const &ring);
// Counter-clockwise; fewer than three points where there is no area.
Ring hullOf(std::vector<Point> points);
bool isConvex(Ring const &ring);
void moveBy(Piece &piece, Point const &by);
bool isFinite(Ring const &ring);

// Paints rings one over the other and tells what is covered. Nothing is thrown: what is not finite or crosses
// itself beyond reason is refused.
class Canvas {
public:
    // False where a ring was refused.
    bool paint(Ring const &ring);
    bool paint(Piece const &piece);
    bool erase(Ring const &ring);
    bool erase(Piece const &piece);
    // Empty, with false, where the whole is beyond reason. The canvas is empty afterwards.
    bool finish(std::vector<Piece> &pieces);

private:
    Geometry::PolygonPainter painter_;
};

} // namespace EDA::Fabrication
