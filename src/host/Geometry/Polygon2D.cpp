// Points, box and direction of a polygon of the plane.
#include "host/Geometry/Polygon2D.h"

#include <algorithm>

namespace Geometry {

void Polygon2D::addPoint(double x, double y, bool checkDuplicate) {
    if (checkDuplicate && !points_.empty() && points_.back().x == x && points_.back().y == y) return;
    points_.emplace_back(x, y);
}

void Polygon2D::setBoundingBox() {
    bound_.reset();
    for (Point const &point : points_)
        bound_.unite(point.x, point.y);
}

void Polygon2D::setOrientation(bool anticlockwise) {
    double const area = getSignedArea();
    if (anticlockwise ? area < 0.0 : area > 0.0) std::reverse(points_.begin() + 1, points_.end());
}

double Polygon2D::getSignedArea() const {
    if (points_.size() < 3) return 0.0;
    Point const &origin = points_.front(); // keeps the products small far from (0, 0)
    double twice = 0.0;
    for (std::size_t i = 2; i < points_.size(); ++i) {
        Point const &a = points_[i - 1];
        Point const &b = points_[i];
        twice += (a.x - origin.x) * (b.y - origin.y) - (b.x - origin.x) * (a.y - origin.y);
    }
    return 0.5 * twice;
}

} // namespace Geometry
