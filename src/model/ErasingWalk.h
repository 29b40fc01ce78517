// The walk round a closed list of points that erases some of them, in linear time.
#pragma once

#include <cstddef>
#include <utility>
#include <vector>

namespace EDA {

// Walks from the second point to the end of the list and erases each point for which
// `drop(previous, current, next)` holds, where the list counts as closed: the last point comes
// before the first. After an erasure the walk steps back one place, or stays where it is at the
// first point; so that one can go as well, although the walk does not begin there.
//
// The points before the current one are kept packed at the front, so an erasure moves at most
// one point: a million points on a line take no longer than a million others.
template <typename Point, typename Drop> void eraseOnWalk(std::vector<Point> &points, Drop drop) {
    std::size_t const end = points.size();
    if (end < 2) return;
    std::size_t kept = 1;    // [0, kept): the points before the current one
    std::size_t current = 1; // [current, end): the current one and those after it
    while (current < end) {
        Point const &first = points[kept > 0 ? 0 : current];
        Point const &previous = points[kept > 0 ? kept - 1 : end - 1];
        Point const &next = current + 1 < end ? points[current + 1] : first;
        if (!drop(previous, points[current], next)) {
            if (kept != current) points[kept] = std::move(points[current]);
            ++kept;
            ++current;
        } else if (kept > 0) {
            --kept;
            if (kept != current) points[current] = std::move(points[kept]);
        } else {
            ++current;
        }
    }
    points.erase(points.begin() + static_cast<std::ptrdiff_t>(kept), points.end());
}

} // namespace EDA
