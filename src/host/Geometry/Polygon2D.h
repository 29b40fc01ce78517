// A closed polygon of the plane.
#pragma once

#include "host/Geometry/Bound2D.h"
#include "host/Geometry/Vec2T.h"

#include <cstddef>
#include <vector>

namespace Geometry {

// A closed polygon with straight edges: the last point joins the first without being
// repeated. Coordinates are in the caller's unit. Any list of points is accepted, also one
// that crosses or touches itself.
class Polygon2D {
public:
    using Point = Vec2T<double>;
    using const_iterator = std::vector<Point>::const_iterator;

    Polygon2D() = default;

    // Takes the points over as they are.
    explicit Polygon2D(std::vector<Point> points) : points_(std::move(points)) {}

    void reserve(std::size_t count) { points_.reserve(count); }

    // Appends a point. With `checkDuplicate`, a point that equals the last one exactly is
    // dropped. The bounding box is not updated: see `setBoundingBox`.
    void addPoint(double x, double y, bool checkDuplicate);

    std::size_t numPoints() const { return points_.size(); }
    const_iterator beginPoints() const { return points_.begin(); }
    const_iterator endPoints() const { return points_.end(); }
    std::vector<Point> const &points() const { return points_; }

    // Computes the box of the points that are there now.
    void setBoundingBox();

    // The box as of the last `setBoundingBox`; in the reset state before that.
    Bound2D const &getBoundingBox() const { return bound_; }

    // Makes the points run anticlockwise (true: an outer outline) or clockwise (false: a
    // hole). The first point stays the first. A polygon without area stays as it is.
    void setOrientation(bool anticlockwise);

    // Area, positive for an anticlockwise polygon.
    double getSignedArea() const;

private:
    std::vector<Point> points_;
    Bound2D bound_;
};

} // namespace Geometry
