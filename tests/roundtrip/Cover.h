// Which places of a board a part covers.
#pragma once

#include "host/Geometry/Part.h"
#include "RoundTrip.h"

#include <string>
#include <utility>
#include <vector>

namespace TestSupport {

// The points of a grid over the board, counted from its corner, that the part covers.
inline std::vector<std::pair<int, int>> coverOf(const Generation &generation, const std::string &designator) {
    constexpr double step = 0.37e-3;
    std::vector<std::pair<int, int>> cover;
    const Geometry::Part *const board = generation.parts->getPart(generation.pcb);
    const Geometry::Part *const part = generation.parts->getPart(generation.part(designator));
    if (!board || !part) return cover;
    const Geometry::Bound &frame = board->getGeometry()->getBound();
    const double y = 0.5 * (part->getBound().getYLow() + part->getBound().getYHigh());
    for (int i = 0; i * step < frame.getXSize(); ++i) {
        for (int j = 0; j * step < frame.getZSize(); ++j) {
            Geometry::Vec3T<double> point(frame.getXLow() + i * step, 0.0, frame.getZLow() + j * step);
            board->getGeometry()->getTransform().transform(point);
            bool onSurface = false;
            if (part->getGeometry()->contains(point.x, y, point.z, onSurface, 1e-9)) cover.emplace_back(i, j);
        }
    }
    return cover;
}

} // namespace TestSupport
