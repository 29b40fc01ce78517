// Vertices with and without arcs.
#include "model/OutlinePoints.h"

#include "model/EDAOutline.h"

#include <cmath>

namespace EDA {

namespace {

bool near(double a, double b, double tolerance) { return std::abs(a - b) < tolerance; }

} // namespace

bool OutlinePoint::isArc() const { return std::abs(angle) > EDAOutline::ptTol || centered; }

bool OutlinePoint::operator==(OutlinePoint const &other) const {
    return near(x, other.x, EDAOutline::ptTol) && near(y, other.y, EDAOutline::ptTol);
}

bool OutlinePoint::isEqual(OutlinePoint const &other, double tolerance) const {
    return near(x, other.x, tolerance) && near(y, other.y, tolerance) &&
           near(angle, other.angle, tolerance) && near(centreX, other.centreX, tolerance) &&
           near(centreY, other.centreY, tolerance) && clockwise == other.clockwise;
}

void OutlinePoints::storeArcs() {
    if (arcs_.empty()) arcs_.assign(places_.size(), {0.0, straight_.centreX, straight_.centreY, false, true});
}

void OutlinePoints::pop_back() { truncate(size() - 1); }

void OutlinePoints::clear() { truncate(0); }

void OutlinePoints::truncate(std::size_t count) {
    places_.resize(count);
    if (!arcs_.empty()) arcs_.resize(count);
}

void OutlinePoints::assign(std::vector<OutlinePoint> const &points) {
    clear();
    reserve(points.size());
    for (OutlinePoint const &point : points)
        push_back(point);
}

void OutlinePoints::copy(std::size_t from, std::size_t to) {
    places_[to] = places_[from];
    if (!arcs_.empty()) arcs_[to] = arcs_[from];
}

void OutlinePoints::moveBy(double dx, double dy) {
    for (Place &place : places_) {
        place.first += dx;
        place.second += dy;
    }
    for (Arc &arc : arcs_) {
        arc.centreX += dx;
        arc.centreY += dy;
    }
    straight_.centreX += dx;
    straight_.centreY += dy;
}

} // namespace EDA
