// Overlaps by bounds, then by vertices.
#include "model/OverlapSearch.h"

#include "model/RayCrossing.h"

#include <algorithm>
#include <cmath>

namespace EDA {

namespace {

constexpr double boundTolerance = Geometry::Bound2D::defaultTolerance;

bool isFinite(EDAOutline const &outline) {
    auto const &points = outline.getPoints(true);
    bool const own = std::all_of(points.begin(), points.end(), [](auto const &point) {
        return std::isfinite(point.first) && std::isfinite(point.second);
    });
    return own && std::all_of(outline.beginInternalOutlines(), outline.endInternalOutlines(), isFinite);
}

std::vector<Geometry::Bound2D> boundsOf(std::vector<EDAOutline> const &outlines) {
    std::vector<Geometry::Bound2D> bounds;
    bounds.reserve(outlines.size());
    for (EDAOutline const &outline : outlines) {
        bounds.push_back(isFinite(outline) ? outline.getBound() : Geometry::Bound2D());
    }
    return bounds;
}

} // namespace

void OverlapMap::add(std::size_t a, std::size_t b) {
    pairs_.emplace_back(static_cast<std::uint32_t>(a), static_cast<std::uint32_t>(b));
    pairs_.emplace_back(static_cast<std::uint32_t>(b), static_cast<std::uint32_t>(a));
}

void OverlapMap::sort(std::size_t numOutlines) {
    std::sort(pairs_.begin(), pairs_.end());
    begins_.assign(numOutlines + 1, 0);
    for (auto const &pair : pairs_)
        ++begins_[pair.first + 1];
    for (std::size_t i = 0; i < numOutlines; ++i)
        begins_[i + 1] += begins_[i];
}

std::vector<std::size_t> OverlapMap::keys() const {
    std::vector<std::size_t> keys;
    for (auto const &pair : pairs_) {
        if (keys.empty() || keys.back() != pair.first) keys.push_back(pair.first);
    }
    return keys;
}

OverlapSearch::OverlapSearch(std::vector<EDAOutline> const &outlines)
    : outlines_(outlines), tree_(boundsOf(outlines)) {}

void OverlapSearch::addLater(std::size_t index, OverlapMap &overlaps) {
    tree_.search(outlines_[index].getBound(), boundTolerance, [&](std::size_t other) {
        if (other <= index) return;
        if (meets(index, other) || meets(other, index)) overlaps.add(index, other);
    });
}

// `EDAOutline::intersectsHole` of outlines whose bounds meet.
bool OverlapSearch::meets(std::size_t outer, std::size_t inner) {
    EDAOutline const &outline = outlines_[outer], &other = outlines_[inner];
    EDAOutline::PointList const &points = other.getPoints(true);
    if (points.size() < 3) return false;
    Geometry::Bound2D const &bound = outline.getBound();
    bool const anyInside = std::any_of(points.begin(), points.end(), [&](auto const &point) {
        return bound.contains(point.first, point.second, boundTolerance) && contains(outer, point);
    });
    return anyInside && std::none_of(outline.beginInternalOutlines(), outline.endInternalOutlines(),
                                     [&other](EDAOutline const &internal) {
                                         return internal.isHole() && internal.enclosesOutline(other);
                                     });
}

bool OverlapSearch::contains(std::size_t index, std::pair<double, double> const &point) {
    EDAOutline::PointList const &points = outlines_[index].getPoints(true);
    if (points.size() >= manyEdges) {
        return edges_.try_emplace(index, points).first->second.contains(point.first, point.second);
    }
    bool inside = false;
    for (std::size_t i = 0; i < points.size(); ++i) {
        auto const &to = points[i + 1 < points.size() ? i + 1 : 0];
        if (rayCrosses(points[i], to, point.first, point.second)) inside = !inside;
    }
    return inside;
}

} // namespace EDA
