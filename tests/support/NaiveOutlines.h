// The clean-up rules of outlines in their plainest form, erasing from a vector in loops inside
// loops: what the fast ones have to agree with, number by number.
#pragma once

#include "support/Outlines.h"

#include <algorithm>

namespace EDA::test {

using StoredPoints = std::vector<EDAOutline::EDAPoint>;

inline Points placesOf(StoredPoints const &points) {
    Points places;
    for (EDAOutline::EDAPoint const &point : points)
        places.emplace_back(point.x, point.y);
    return places;
}

inline bool samePlace(std::pair<double, double> const &a, std::pair<double, double> const &b) {
    return std::abs(a.first - b.first) < 1e-12 && std::abs(a.second - b.second) < 1e-12;
}

inline void appendNew(Points &points, std::pair<double, double> const &point) {
    if (points.empty() || !samePlace(points.back(), point)) points.push_back(point);
}

inline bool naiveOnLine(std::pair<double, double> p, std::pair<double, double> a, std::pair<double, double> b,
                        double scale) {
    double const eps = scale * 1e-12;
    if (p.first < std::min(a.first, b.first) - eps || p.first > std::max(a.first, b.first) + eps)
        return false;
    if (p.second < std::min(a.second, b.second) - eps || p.second > std::max(a.second, b.second) + eps)
        return false;
    double const dx = b.first - a.first;
    double const dy = b.second - a.second;
    double const cross = (p.second - a.second) * dx - (p.first - a.first) * dy;
    return (dx * dx + dy * dy) * 1e-5 * 1e-5 * scale >= cross * cross;
}

// Erases from the vector at once; the walk goes back one place after an erasure.
template <typename Point, typename Drop> void naiveWalk(std::vector<Point> &points, Drop drop) {
    std::size_t i = 1;
    while (i < points.size()) {
        Point const previous = i == 0 ? points.back() : points[i - 1];
        Point const next = i + 1 == points.size() ? points.front() : points[i + 1];
        if (!drop(previous, points[i], next)) {
            ++i;
            continue;
        }
        points.erase(points.begin() + static_cast<std::ptrdiff_t>(i));
        if (i > 0) --i;
    }
}

inline double naiveScale(Points const &points) {
    Geometry::Bound2D bound;
    for (auto const &point : points)
        bound.unite(point.first, point.second);
    return bound.getDiagonal().length();
}

inline void naiveCleanup(Points &points, bool hadArcs) {
    if (points.size() > 1 && samePlace(points.front(), points.back())) points.pop_back();
    if (!hadArcs) return;
    double const scale = naiveScale(points);
    naiveWalk(points, [scale](auto const &previous, auto const &current, auto const &next) {
        return samePlace(current, next) || naiveOnLine(current, previous, next, scale);
    });
}

// For outlines whose discretised points are the stored ones, or all of which are finite.
inline void naiveRemoveDegenerate(StoredPoints &points, double scale) {
    if (!points.empty() && points.front().isEqual(points.back(), 1e-12)) points.pop_back();
    auto const pair = [](EDAOutline::EDAPoint const &p) { return std::make_pair(p.x, p.y); };
    naiveWalk(points, [&](auto const &p, auto const &c, auto const &n) {
        bool const straight = !c.isArc() && !n.isArc();
        if (n.isEqual(c, 1e-12) && straight) return true;
        if (straight &&
            (naiveOnLine(pair(p), pair(c), pair(n), scale) || naiveOnLine(pair(n), pair(p), pair(c), scale)))
            return true;
        return naiveOnLine(pair(c), pair(p), pair(n), scale) && straight;
    });
}

// The first pair of equal places from the second point on; (0, 0) when there is none.
inline std::pair<std::size_t, std::size_t> naiveFirstPair(StoredPoints const &points) {
    for (std::size_t i = 1; i < points.size(); ++i)
        for (std::size_t j = i + 1; j < points.size(); ++j)
            if (points[i] == points[j]) return {i, j};
    return {0, 0};
}

inline bool naiveRemoveCutIns(StoredPoints &points, std::vector<EDAOutline> &cutIns) {
    if (points.size() <= 3) return false;
    for (std::size_t i = 1; i < points.size(); ++i)
        for (std::size_t j = i + 1; j < points.size(); ++j) {
            if (!(points[i] == points[j])) continue;
            EDAOutline cutIn(true);
            for (std::size_t k = i + 1; k < j; ++k) {
                auto const &p = points[k];
                if (p.centered)
                    cutIn.addPoint(0, p.x, p.y, p.centreX, p.centreY, p.clockwise);
                else
                    cutIn.addPoint(0, p.x, p.y, p.angle);
            }
            cutIn.removeDegeneratePoints();
            cutIns.push_back(cutIn);
            points.erase(points.begin() + static_cast<std::ptrdiff_t>(i),
                         points.begin() + static_cast<std::ptrdiff_t>(j));
            j = i;
        }
    return !cutIns.empty();
}

inline StoredPoints stored(EDAOutline const &outline) {
    return StoredPoints(outline.beginPoints(), outline.endPoints());
}

} // namespace EDA::test
