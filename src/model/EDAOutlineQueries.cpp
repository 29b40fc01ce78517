// Outline queries: area, rectangle, circle, containment, holes.
#include "model/EDAOutline.h"
#include "model/RayCrossing.h"

#include <algorithm>
#include <cmath>

namespace EDA {

namespace {

using Point = std::pair<double, double>;

constexpr double rectangleTolerance = 1e-5; // share of the area
constexpr double roundness = 0.15;          // share of the width that height may differ by

double squaredDistance(Point const &a, Point const &b) {
    double const dx = a.first - b.first;
    double const dy = a.second - b.second;
    return dx * dx + dy * dy;
}

double squaredNorm(Point const &p) { return p.first * p.first + p.second * p.second; }

// Centre of the circle through three points; not finite when they lie on a line.
Point circleCentre(Point const &p1, Point const &p2, Point const &p3) {
    auto const [x1, y1] = p1;
    auto const [x2, y2] = p2;
    auto const [x3, y3] = p3;
    double const s1 = squaredNorm(p1);
    double const s2 = squaredNorm(p2);
    double const s3 = squaredNorm(p3);
    double const determinant = (y2 - y3) * x1 - (x2 - x3) * y1 + y3 * x2 - x3 * y2;
    return {-((y3 - y2) * s1 + (y1 - y3) * s2 + (y2 - y1) * s3) / (2.0 * determinant),
            -((x3 - x1) * s2 + (x2 - x3) * s1 + (x1 - x2) * s3) / (2.0 * determinant)};
}

} // namespace

double EDAOutline::getArea() const {
    PointList const &points = getPoints(true);
    if (points.size() < 3) return 0.0;
    double twice = 0.0;
    for (std::size_t i = 0; i < points.size(); ++i) {
        Point const &next = points[i + 1 < points.size() ? i + 1 : 0];
        twice += points[i].first * next.second - points[i].second * next.first;
    }
    return std::abs(twice) * 0.5;
}

bool EDAOutline::isRectangle(double &xLow, double &yLow, double &xHigh, double &yHigh) const {
    Geometry::Bound2D const &bound = getBound();
    if (!bound.isValid(boundTolerance)) return false;
    xLow = bound.getXLow();
    yLow = bound.getYLow();
    xHigh = bound.getXHigh();
    yHigh = bound.getYHigh();
    if (points_.size() < 4) return false;
    double const area = getArea();
    return area * rectangleTolerance > std::abs(area - (yHigh - yLow) * (xHigh - xLow));
}

bool EDAOutline::isCylinder(double &centreX, double &centreY, double &diameter, int minPoints,
                            double tolerance) const {
    if (!internalOutlines_.empty()) return false;
    Geometry::Bound2D const &bound = getBound();
    if (!bound.isValid(boundTolerance)) return false;
    double const xSize = bound.getXSize();
    if (!(xSize * roundness > std::abs(xSize - bound.getYSize()))) return false;

    PointList const &points = getPoints(true);
    if (points.size() < static_cast<std::size_t>(std::max(minPoints, 3))) return false;
    std::size_t const third = points.size() / 3;
    Point const centre = circleCentre(points[0], points[third], points[2 * third]);
    centreX = centre.first;
    centreY = centre.second;
    double const radius = std::sqrt(squaredDistance(points[0], centre));
    // Sample points on a line make the differences NaN, and those exceed nothing.
    auto const leavesCircle = [&](Point const &point) {
        return std::abs(squaredDistance(point, centre) - radius * radius) > radius * tolerance;
    };
    if (std::any_of(points.begin(), points.end(), leavesCircle)) return false;
    diameter = 2.0 * radius;
    return true;
}

bool EDAOutline::isBadOutline() const {
    if (points_.empty()) return true;
    auto const hole = std::find_if(internalOutlines_.begin(), internalOutlines_.end(),
                                   [](EDAOutline const &internal) { return internal.hole_; });
    return hole != internalOutlines_.end() && !hole->getBound().overlaps(getBound(), boundTolerance);
}

bool EDAOutline::contains(PointList const &points, double x, double y) {
    bool inside = false;
    for (std::size_t i = 0; i < points.size(); ++i)
        if (rayCrosses(points[i], points[i + 1 < points.size() ? i + 1 : 0], x, y)) inside = !inside;
    return inside;
}

bool EDAOutline::contains(double x, double y) const {
    return getBound().contains(x, y, boundTolerance) && contains(getPoints(true), x, y);
}

bool EDAOutline::enclosesOutline(EDAOutline const &other) const {
    if (!getBound().contains(other.getBound(), boundTolerance)) return false;
    PointList const &points = other.getPoints(true);
    return points.size() >= 3 && std::all_of(points.begin(), points.end(), [this](Point const &point) {
               return contains(point.first, point.second);
           });
}

bool EDAOutline::intersectsHole(EDAOutline const &other) const {
    if (!getBound().overlaps(other.getBound(), boundTolerance)) return false;
    PointList const &points = other.getPoints(true);
    if (points.size() < 3) return false;
    bool const anyInside = std::any_of(points.begin(), points.end(), [this](Point const &point) {
        return contains(point.first, point.second);
    });
    // A hole around all of `other` takes out each of its points.
    return anyInside && std::none_of(internalOutlines_.begin(), internalOutlines_.end(),
                                     [&other](EDAOutline const &internal) {
                                         return internal.hole_ && internal.enclosesOutline(other);
                                     });
}

bool EDAOutline::overlaps(EDAOutline const &other) const {
    return intersectsHole(other) || other.intersectsHole(*this);
}

bool EDAOutline::overlapsHoles(EDAOutline const &other) const {
    return std::any_of(
        internalOutlines_.begin(), internalOutlines_.end(),
        [&other](EDAOutline const &internal) { return internal.hole_ && internal.intersectsHole(other); });
}

bool EDAOutline::hasHoles() const {
    return std::any_of(internalOutlines_.begin(), internalOutlines_.end(),
                       [](EDAOutline const &internal) { return internal.hole_; });
}

bool EDAOutline::needsHolesCutting() const {
    std::vector<EDAOutline const *> holes;
    for (EDAOutline const &internal : internalOutlines_) {
        if (!internal.hole_) continue;
        if (!enclosesOutline(internal)) return true;
        holes.push_back(&internal);
    }
    // Only holes that share a stretch of X can meet. All of them stand in one vector, so of two the
    // one with the higher address is the later.
    std::sort(holes.begin(), holes.end(), [](EDAOutline const *a, EDAOutline const *b) {
        return a->getBound().getXLow() < b->getBound().getXLow();
    });
    for (std::size_t i = 0; i < holes.size(); ++i) {
        double const reach = holes[i]->getBound().getXHigh() + 2.0 * boundTolerance;
        for (std::size_t j = i + 1; j < holes.size() && holes[j]->getBound().getXLow() <= reach; ++j)
            if (std::max(holes[i], holes[j])->intersectsHole(*std::min(holes[i], holes[j]))) return true;
    }
    return false;
}

} // namespace EDA
