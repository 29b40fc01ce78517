// A solid over a polygon with holes.
#include "host/Geometry/PolygonPrismGeometryMaker.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

namespace Geometry {

namespace {

using Point = Polygon2D::Point;

double distanceToSegment(Point const &p, Point const &a, Point const &b) {
    double const dx = b.x - a.x, dy = b.y - a.y;
    double const length2 = dx * dx + dy * dy;
    double const along = length2 > 0.0 ? ((p.x - a.x) * dx + (p.y - a.y) * dy) / length2 : 0.0;
    double const part = std::min(std::max(along, 0.0), 1.0);
    return std::hypot(p.x - (a.x + part * dx), p.y - (a.y + part * dy));
}

// Even-odd containment of a point in one closed polygon, and its distance to the border.
bool isInside(Polygon2D const &polygon, Point const &p, double &distance) {
    std::vector<Point> const &points = polygon.points();
    bool inside = false;
    for (std::size_t i = 0; i < points.size(); ++i) {
        Point const &a = points[i == 0 ? points.size() - 1 : i - 1];
        Point const &b = points[i];
        distance = std::min(distance, distanceToSegment(p, a, b));
        if ((a.y > p.y) == (b.y > p.y)) continue;
        if (p.x < a.x + (p.y - a.y) * (b.x - a.x) / (b.y - a.y)) inside = !inside;
    }
    return inside;
}

class PrismGeometry : public Geometry {
public:
    PrismGeometry(Polygon2D base, std::vector<Polygon2D> holes, double yLow, double yHigh,
                  Transform const &localToWorld);

private:
    bool containsLocal(Vec3T<double> const &point, bool &onSurface, double tolerance) const override;
    bool isInBase(Point const &point, double &distance) const;

    Polygon2D base_;
    std::vector<Polygon2D> holes_;
    double yLow_;
    double yHigh_;
};

PrismGeometry::PrismGeometry(Polygon2D base, std::vector<Polygon2D> holes, double yLow, double yHigh,
                             Transform const &localToWorld)
    : Geometry(localToWorld), base_(std::move(base)), holes_(std::move(holes)), yLow_(std::min(yLow, yHigh)),
      yHigh_(std::max(yLow, yHigh)) {
    Bound bound;
    for (Point const &point : base_.points()) {
        bound.unite(point.x, yLow_, point.y);
        bound.unite(point.x, yHigh_, point.y);
    }
    setBound(bound);
}

bool PrismGeometry::isInBase(Point const &point, double &distance) const {
    bool inside = isInside(base_, point, distance);
    for (Polygon2D const &hole : holes_)
        if (isInside(hole, point, distance)) inside = false;
    return inside;
}

bool PrismGeometry::containsLocal(Vec3T<double> const &point, bool &onSurface, double tolerance) const {
    auto const near = [tolerance](double distance) { return distance <= 0.0 || distance < tolerance; };
    onSurface = false;
    if (!getBound().contains(point.x, point.y, point.z, tolerance)) return false;
    double aside = std::numeric_limits<double>::infinity();
    bool const inBase = isInBase({point.x, point.z}, aside);
    double const below = point.y - yLow_, above = yHigh_ - point.y;
    double const outsideY = std::max(0.0, -std::min(below, above));
    if (inBase && outsideY == 0.0) {
        onSurface = near(std::min(aside, std::min(below, above)));
        return true;
    }
    onSurface = near(std::hypot(inBase ? 0.0 : aside, outsideY));
    return onSurface;
}

} // namespace

std::unique_ptr<Geometry> PolygonPrismGeometryMaker::makePrism(Polygon2D base, std::vector<Polygon2D> holes,
                                                               double yLow, double yHigh,
                                                               Transform const &localToWorld) {
    return std::make_unique<PrismGeometry>(std::move(base), std::move(holes), yLow, yHigh, localToWorld);
}

} // namespace Geometry
