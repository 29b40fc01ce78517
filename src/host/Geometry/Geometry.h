// A shape in space with its place in the root frame.
#pragma once

#include "host/Geometry/Bound.h"
#include "host/Geometry/Transform.h"

namespace Geometry {

// A solid with a frame of its own. Lengths are in metres.
class Geometry {
public:
    explicit Geometry(Transform const &localToWorld);
    virtual ~Geometry() = default;
    Geometry(Geometry const &) = delete;
    Geometry &operator=(Geometry const &) = delete;

    // From the shape's own frame to the root frame.
    Transform const &getTransform() const { return localToWorld_; }

    // Box of the shape in its own frame.
    Bound const &getBound() const { return bound_; }

    // Is the point, given in the root frame, in the shape, on its surface, or less than
    // `tolerance` outside? `onSurface` tells whether it lies less than `tolerance` from
    // the surface, or exactly on it, from either side.
    bool contains(double x, double y, double z, bool &onSurface, double tolerance) const;

protected:
    // For the constructor of the shape.
    void setBound(Bound const &bound) { bound_ = bound; }

private:
    // `contains` in the shape's own frame.
    virtual bool containsLocal(Vec3T<double> const &point, bool &onSurface, double tolerance) const = 0;

    Transform localToWorld_;
    Transform worldToLocal_;
    Bound bound_;
};

} // namespace Geometry
