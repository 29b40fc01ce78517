// The outline of a polyline with a width.
#include "host/Geometry/PolygonPrismGeometryMaker.h"

#include "host/Geometry/ClippingEngine.h"

#include <cmath>
#include <stdexcept>
#include <utility>

namespace Geometry {

namespace {

using Point = Vec2T<double>;
using Points = std::vector<Point>;

// A drawn line crosses itself a few times at most; a layer of copper, which the engine's own limits are for,
// may do so a million times. A file may have a great many lines.
constexpr Clip::NodingLimits lineLimits{2e4, 16.0, 2e6, 1e3};

Point shifted(Point const &point, Point const &direction, double distance) {
    return {point.x + direction.x * distance, point.y + direction.y * distance};
}

double dot(Point const &a, Point const &b) { return a.x * b.x + a.y * b.y; }
double cross(Point const &a, Point const &b) { return a.x * b.y - a.y * b.x; }

bool allFinite(Points const &points) {
    for (Point const &point : points)
        if (!std::isfinite(point.x) || !std::isfinite(point.y)) return false;
    return true;
}

// The line without repeated points, with the unit normal to the left of each segment.
class ThickLine {
public:
    ThickLine(std::vector<double> const &xs, std::vector<double> const &ys, double halfWidth);

    bool isEmpty() const { return points_.size() < 2 || !allFinite(normals_); }
    Points outline() const;

private:
    bool walk(Points &outline) const;
    void addCorner(std::size_t corner, double side, Points &outline) const;
    bool isOuterSide(std::size_t corner, double side) const;
    bool mitre(std::size_t corner, double side, Point &tip) const;
    void addPieces(Clip::Engine &engine) const;

    Points points_;
    Points normals_;
    double halfWidth_;
};

ThickLine::ThickLine(std::vector<double> const &xs, std::vector<double> const &ys, double halfWidth)
    : halfWidth_(halfWidth) {
    for (std::size_t i = 0; i < xs.size(); ++i) {
        Point const point(xs[i], ys[i]);
        if (points_.empty()) points_.push_back(point);
        Point const step(point.x - points_.back().x, point.y - points_.back().y);
        double const length = step.length();
        if (length == 0.0) continue;
        normals_.emplace_back(-step.y / length, step.x / length);
        points_.push_back(point);
    }
}

// The tip where the two sides meet. Gives false where the line turns back and they don't.
bool ThickLine::mitre(std::size_t corner, double side, Point &tip) const {
    Point const &before = normals_[corner - 1], &after = normals_[corner];
    double const twiceSquaredCosine = 1.0 + dot(before, after); // of half the turn
    if (twiceSquaredCosine < 1e-9) return false;
    Point const sum(before.x + after.x, before.y + after.y);
    tip = shifted(points_[corner], sum, side * halfWidth_ / twiceSquaredCosine);
    return true;
}

bool ThickLine::isOuterSide(std::size_t corner, double side) const {
    return cross(normals_[corner - 1], normals_[corner]) * side < 0.0;
}

void ThickLine::addCorner(std::size_t corner, double side, Points &outline) const {
    Point tip;
    constexpr double limit = PolygonPrismGeometryMaker::mitreLimit;
    bool const hasTip = mitre(corner, side, tip);
    double const reach = Point(tip.x - points_[corner].x, tip.y - points_[corner].y).length();
    if (hasTip && (!isOuterSide(corner, side) || reach <= limit * halfWidth_)) {
        outline.push_back(tip);
        return;
    }
    std::size_t const first = side < 0.0 ? corner - 1 : corner; // the left side is walked backwards
    std::size_t const second = side < 0.0 ? corner : corner - 1;
    outline.push_back(shifted(points_[corner], normals_[first], side * halfWidth_));
    outline.push_back(shifted(points_[corner], normals_[second], side * halfWidth_));
}

// Along the right side and back along the left one. Gives false when the way crosses itself.
bool ThickLine::walk(Points &outline) const {
    std::size_t const last = points_.size() - 1;
    outline.push_back(shifted(points_[0], normals_[0], -halfWidth_));
    for (std::size_t i = 1; i < last; ++i)
        addCorner(i, -1.0, outline);
    outline.push_back(shifted(points_[last], normals_[last - 1], -halfWidth_));
    outline.push_back(shifted(points_[last], normals_[last - 1], halfWidth_));
    for (std::size_t i = last - 1; i > 0; --i)
        addCorner(i, 1.0, outline);
    outline.push_back(shifted(points_[0], normals_[0], halfWidth_));

    bool const isAnticlockwise = Polygon2D(outline).getSignedArea() > 0.0;
    // A rectangle cannot cross itself. Most lines of some designs are one.
    if (last == 1 && isAnticlockwise) return true;

    Clip::Engine engine(lineLimits);
    engine.addContour(Clip::Engine::Subject, outline.data(), outline.size());
    std::vector<Clip::Contour> const clean = engine.run(
        {Clip::Inside::Operation::Union, Clip::Inside::Fill::NonZero, Clip::Inside::Fill::NonZero});
    return isAnticlockwise && clean.size() == 1 && clean[0].points.size() == outline.size();
}

// A rectangle for each segment and a piece for the outer side of each corner, all anticlockwise.
void ThickLine::addPieces(Clip::Engine &engine) const {
    for (std::size_t i = 0; i < normals_.size(); ++i) {
        Points const box{
            shifted(points_[i], normals_[i], -halfWidth_), shifted(points_[i + 1], normals_[i], -halfWidth_),
            shifted(points_[i + 1], normals_[i], halfWidth_), shifted(points_[i], normals_[i], halfWidth_)};
        engine.addContour(Clip::Engine::Subject, box.data(), box.size());
        if (i == 0) continue;
        double const side = isOuterSide(i, 1.0) ? 1.0 : -1.0;
        Points wedge{points_[i]};
        wedge.push_back(shifted(points_[i], normals_[side < 0.0 ? i - 1 : i], side * halfWidth_));
        addCorner(i, side, wedge);
        wedge.push_back(shifted(points_[i], normals_[side < 0.0 ? i : i - 1], side * halfWidth_));
        engine.addContour(Clip::Engine::Subject, wedge.data(), wedge.size());
    }
}

Points ThickLine::outline() const {
    Points result;
    if (walk(result)) return result;
    Clip::Engine engine(lineLimits);
    addPieces(engine);
    std::vector<Clip::Contour> pieces = engine.run(
        {Clip::Inside::Operation::Union, Clip::Inside::Fill::NonZero, Clip::Inside::Fill::NonZero});
    return pieces.empty() ? Points() : std::move(pieces.front().points); // all hang together
}

} // namespace

void PolygonPrismGeometryMaker::getThickPolylineOutline(std::vector<double> const &xs,
                                                        std::vector<double> const &ys, double width,
                                                        std::vector<double> &outXs,
                                                        std::vector<double> &outYs) {
    outXs.clear();
    outYs.clear();
    if (xs.size() != ys.size() || !(width > 0.0)) return;
    ThickLine const line(xs, ys, 0.5 * width);
    if (line.isEmpty()) return;
    Points outline;
    try {
        outline = line.outline();
    } catch (std::logic_error const &) { // refused by the engine: told by an empty result
        return;
    }
    for (Point const &point : outline) {
        outXs.push_back(point.x);
        outYs.push_back(point.y);
    }
}

} // namespace Geometry
