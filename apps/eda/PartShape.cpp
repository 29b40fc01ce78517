// Shapes of entities as paths on their board.
#include "PartShape.h"

#include <algorithm>
#include <cmath>
#include <vector>

namespace EDATool {

namespace {

using EntityGUI::PartPlace;
using Geometry::Transform;
using Vec3 = Geometry::Vec3T<double>;

bool isFinite(const Point &point) { return std::isfinite(point.x) && std::isfinite(point.y); }

bool isUpright(const Transform &toBoard) {
    constexpr double lean = 1e-9;
    return std::fabs(toBoard.orientation(0, Transform::YAxis)) < lean &&
           std::fabs(toBoard.orientation(2, Transform::YAxis)) < lean;
}

double crossProduct(const Point &origin, const Point &a, const Point &b) {
    return (a.x - origin.x) * (b.y - origin.y) - (a.y - origin.y) * (b.x - origin.x);
}

// One chain of the hull of sorted points, without its last point.
template <class Iterator> void addChain(std::vector<Point> &hull, Iterator first, Iterator last) {
    const std::size_t start = hull.size();
    for (; first != last; ++first) {
        while (hull.size() >= start + 2 && crossProduct(hull[hull.size() - 2], hull.back(), *first) <= 0.0)
            hull.pop_back();
        hull.push_back(*first);
    }
    hull.pop_back();
}

std::vector<Point> convexHull(std::vector<Point> points) {
    std::sort(points.begin(), points.end(),
              [](const Point &a, const Point &b) { return a.x != b.x ? a.x < b.x : a.y < b.y; });
    std::vector<Point> hull;
    addChain(hull, points.begin(), points.end());
    addChain(hull, points.rbegin(), points.rend());
    return hull;
}

Path closedPath(const std::vector<Point> &points) {
    Path path;
    for (const Point &point : points) {
        if (!isFinite(point)) return Path();
        path.push_back({path.empty() ? PathStep::Kind::Move : PathStep::Kind::Line, point, {}, 0.0});
    }
    if (!path.empty()) path.push_back({PathStep::Kind::Close, path.front().to, {}, 0.0});
    return path;
}

} // namespace

Path BoardPlane::circleAt(const PartPlace &place, double x, double z, double diameter) const {
    Vec3 centre(x, 0.0, z);
    place.toRoot.transform(centre);
    const Path circle = circlePath(toPicture(centre), diameter * 500.0);
    const bool isThere = diameter > 0.0 && isFinite(circle.front().to) && isFinite(toPicture(centre));
    return isThere ? circle : Path();
}

Path BoardPlane::pathOf(const EntityModel::Entity &entity, const PartPlace &place) const {
    const EntityGUI::PartFootprint &print = place.footprint;
    const bool leans = !isUpright(place.toRoot);
    if (print.form == EntityGUI::PartFootprint::Form::None) return Path();
    if (print.form == EntityGUI::PartFootprint::Form::Circle && !leans)
        return circleAt(place, print.xMiddle(), print.zMiddle(), 2.0 * print.radius());
    std::vector<Point> points;
    const auto addPoint = [&](double x, double y, double z) {
        Vec3 point(x, y, z);
        place.toRoot.transform(point);
        points.push_back(toPicture(point));
    };
    const Geometry::Polygon2D polygon = EntityGUI::makePolygon(entity, print);
    for (const Geometry::Polygon2D::Point &corner : polygon.points()) {
        addPoint(corner.x, 0.0, corner.y);
        if (leans) addPoint(corner.x, std::isfinite(place.height) ? place.height : 0.0, corner.y);
    }
    if (!std::all_of(points.begin(), points.end(), isFinite)) return Path();
    return closedPath(leans ? convexHull(std::move(points)) : points);
}

} // namespace EDATool
