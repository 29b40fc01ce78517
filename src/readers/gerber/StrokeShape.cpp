// The area that a convex aperture sweeps on a straight line.
#include "readers/gerber/StrokeShape.h"

#include "host/Geometry/Polygon2D.h"

#include <algorithm>
#include <cmath>
#include <utility>
#include <vector>

namespace EDA {

namespace {

// A place in the frame of a stroke: along it and across it, anticlockwise from it.
struct Place {
    double along;
    double across;
    std::size_t point; // of the aperture; `none` for a place on an edge
};

constexpr std::size_t none = static_cast<std::size_t>(-1);

using Places = std::vector<Place>;

double turn(const Place &a, const Place &b, const Place &c) {
    return (b.along - a.along) * (c.across - b.across) - (b.across - a.across) * (c.along - b.along);
}

// Convex, anticlockwise and once around.
bool isConvex(const Places &places) {
    const std::size_t count = places.size();
    int reversals = 0;
    for (std::size_t i = 0; i < count; ++i) {
        const Place &a = places[i], &b = places[(i + 1) % count], &c = places[(i + 2) % count];
        if (!(turn(a, b, c) > 0.0)) return false;
        if ((b.across - a.across > 0.0) != (c.across - b.across > 0.0)) ++reversals;
    }
    return reversals == 2;
}

class ConvexStroke {
public:
    ConvexStroke(const EDAOutline::PointList &points, double dx, double dy) : points_(points) {
        length_ = std::sqrt(dx * dx + dy * dy);
        directionX_ = dx / length_;
        directionY_ = dy / length_;
    }

    // False where the contour is not the plain one.
    bool make(double startX, double startY, double endX, double endY, EDAOutline &stroke) {
        if (!place() || !cut() || !endsAreShort()) return false;
        Geometry::Polygon2D polygon;
        polygon.reserve(places_.size() + 8);
        // Anticlockwise: the lower corner at the end, the front of the aperture, the upper corners, the back.
        addChain(polygon, front_, endX, endY, low_, high_);
        addChain(polygon, back_, startX, startY, high_, low_);
        stroke = EDAOutline(polygon, false);
        return true;
    }

private:
    bool place() {
        for (Places *places : {&places_, &front_, &back_})
            places->reserve(points_.size() + 2);
        for (std::size_t i = 0; i < points_.size(); ++i) {
            const auto &[x, y] = points_[i];
            places_.push_back({x * directionX_ + y * directionY_, y * directionX_ - x * directionY_, i});
        }
        if (places_.size() < 3) return false;
        double area = 0.0;
        for (std::size_t i = 1; i + 1 < places_.size(); ++i)
            area += turn(places_[0], places_[i], places_[i + 1]);
        if (area < 0.0) std::reverse(places_.begin(), places_.end());
        return isConvex(places_);
    }

    // Divides the aperture where it crosses the line across the stroke through its origin.
    bool cut() {
        const std::size_t count = places_.size();
        low_ = high_ = places_[0].across;
        int crossings = 0;
        std::size_t firstFront = none;
        for (std::size_t i = 0; i < count; ++i) {
            const Place &from = places_[i], &to = places_[(i + 1) % count];
            low_ = std::min(low_, from.across);
            high_ = std::max(high_, from.across);
            if ((from.along > 0.0) == (to.along > 0.0)) continue;
            ++crossings;
            const double share = from.along / (from.along - to.along);
            const double across = from.across + share * (to.across - from.across);
            if (to.along > 0.0) {
                firstFront = (i + 1) % count;
                lowCut_ = across;
            } else {
                highCut_ = across;
            }
        }
        if (crossings != 2 || !(lowCut_ < 0.0 && highCut_ > 0.0)) return false;
        front_.push_back({0.0, lowCut_, none});
        std::size_t i = firstFront;
        for (; places_[i].along > 0.0; i = (i + 1) % count)
            front_.push_back(places_[i]);
        front_.push_back({0.0, highCut_, none});
        back_.push_back({0.0, highCut_, none});
        for (; !(places_[i].along > 0.0); i = (i + 1) % count)
            back_.push_back(places_[i]);
        back_.push_back({0.0, lowCut_, none});
        return true;
    }

    // What lies beyond the cut, above or below, is not covered by the aperture's own slide along the stroke,
    // and must not reach over the other end. Neighbours of such points bound where the edges leave the cut.
    bool endsAreShort() const {
        const std::size_t count = places_.size();
        for (std::size_t i = 0; i < count; ++i) {
            const Place &each = places_[i];
            if (each.across >= lowCut_ && each.across <= highCut_) continue;
            for (const std::size_t k : {i, (i + 1) % count, (i + count - 1) % count}) {
                if (std::abs(places_[k].along) >= length_) return false;
            }
        }
        return true;
    }

    // The corner of the band, half of the aperture, the other corner.
    void addChain(Geometry::Polygon2D &polygon, const Places &chain, double x, double y, double first,
                  double last) const {
        addPlace(polygon, {0.0, first, none}, x, y);
        for (const Place &each : chain)
            addPlace(polygon, each, x, y);
        addPlace(polygon, {0.0, last, none}, x, y);
    }

    // The aperture's own points keep their numbers, moved as the aperture would be.
    void addPlace(Geometry::Polygon2D &polygon, const Place &each, double x, double y) const {
        double px = 0.0, py = 0.0;
        if (each.point != none) {
            px = points_[each.point].first;
            py = points_[each.point].second;
        } else {
            px = each.along * directionX_ - each.across * directionY_;
            py = each.along * directionY_ + each.across * directionX_;
        }
        px += x;
        py += y;
        if (polygon.numPoints() > 0) {
            const auto &before = polygon.points().back();
            if (std::abs(before.x - px) < EDAOutline::ptTol && std::abs(before.y - py) < EDAOutline::ptTol)
                return;
        }
        polygon.addPoint(px, py, false);
    }

    const EDAOutline::PointList &points_;
    double length_ = 0.0;
    double directionX_ = 0.0;
    double directionY_ = 0.0;
    double low_ = 0.0; // of the band
    double high_ = 0.0;
    double lowCut_ = 0.0; // of the aperture on the line across its origin
    double highCut_ = 0.0;
    Places places_;
    Places front_; // from the low cut to the high one
    Places back_;  // and from there back
};

} // namespace

bool makeConvexStroke(const EDAOutline &aperture, double startX, double startY, double endX, double endY,
                      EDAOutline &stroke) {
    const double dx = endX - startX, dy = endY - startY;
    if (aperture.numInternalOutlines() > 0 || !(dx * dx + dy * dy > 0.0)) return false;
    return ConvexStroke(aperture.getPoints(true), dx, dy).make(startX, startY, endX, endY, stroke);
}

} // namespace EDA
