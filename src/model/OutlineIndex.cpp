// Material of outlines by place.
#include "model/OutlineIndex.h"

#include "model/Enclosure.h"
#include "model/RayCrossing.h"

#include <algorithm>
#include <functional>
#include <iterator>

namespace EDA {

namespace {

constexpr double boundTolerance = Geometry::Bound2D::defaultTolerance;

std::size_t hashOf(EDAOutline::PointList const &points) {
    std::size_t hash = points.size();
    for (auto const &[x, y] : points) {
        hash = hash * 1000003 + std::hash<double>()(x);
        hash = hash * 1000003 + std::hash<double>()(y);
    }
    return hash;
}

BoundTree boxesOfRuns(EDAOutline::PointList const &points, std::size_t run) {
    std::vector<Geometry::Bound2D> boxes((points.size() + run - 1) / run);
    for (std::size_t i = 0; i < points.size(); ++i)
        boxes[i / run].unite(points[i].first, points[i].second);
    return BoundTree(boxes);
}

} // namespace

bool OutlineIndex::isWorthwhile(EDAOutline const &outline) {
    auto const isLong = [](EDAOutline const &each) { return each.getPoints(true).size() >= manyPoints; };
    return outline.numInternalOutlines() >= manyInternals || isLong(outline) ||
           std::any_of(outline.beginInternalOutlines(), outline.endInternalOutlines(), isLong);
}

bool OutlineIndex::intersectsHole(EDAOutline const &outline, OutlineIndex &index, EDAOutline const &other,
                                  OutlineIndex &otherIndex) {
    Geometry::Bound2D const &bound = outline.getBound();
    if (!bound.overlaps(other.getBound(), boundTolerance)) return false;
    if (other.getPoints(true).size() < 3) return false;
    return otherIndex.anyPointWithin(other, bound, [&](auto const &point) {
        return index.contains(outline, point);
    }) && !index.isInHole(outline, other);
}

bool OutlineIndex::overlap(EDAOutline const &outline, OutlineIndex &index, EDAOutline const &other,
                           OutlineIndex &otherIndex) {
    return intersectsHole(outline, index, other, otherIndex) ||
           intersectsHole(other, otherIndex, outline, index);
}

bool OutlineIndex::contains(EDAOutline const &outline, std::pair<double, double> const &point) {
    PointList const &points = outline.getPoints(true);
    if (points.size() >= manyPoints) {
        if (!edges_) edges_.emplace(points);
        numPointTests_ += indexTests;
        return edges_->contains(point.first, point.second);
    }
    numPointTests_ += points.size();
    bool inside = false;
    for (std::size_t i = 0; i < points.size(); ++i) {
        auto const &to = points[i + 1 < points.size() ? i + 1 : 0];
        if (rayCrosses(points[i], to, point.first, point.second)) inside = !inside;
    }
    return inside;
}

template <typename Test>
bool OutlineIndex::anyPointWithin(EDAOutline const &outline, Geometry::Bound2D const &bound,
                                  Test const &test) {
    PointList const &points = outline.getPoints(true);
    auto const anyOf = [&](std::size_t begin, std::size_t end) {
        numPointTests_ += end - begin;
        return std::any_of(points.begin() + static_cast<std::ptrdiff_t>(begin),
                           points.begin() + static_cast<std::ptrdiff_t>(end), [&](auto const &point) {
                               return bound.contains(point.first, point.second, boundTolerance) &&
                                      test(point);
                           });
    };
    if (points.size() < manyPoints) return anyOf(0, points.size());
    if (!runs_) runs_.emplace(boxesOfRuns(points, run));
    return runs_->any(
        [&bound](Geometry::Bound2D const &box) { return box.overlaps(bound, boundTolerance); },
        [&](std::size_t number) { return anyOf(number * run, std::min(number * run + run, points.size())); });
}

// A hole around all of `other` takes out each of its points.
bool OutlineIndex::isInHole(EDAOutline const &outline, EDAOutline const &other) {
    if (outline.numInternalOutlines() < manyInternals) {
        for (int i = 0; i < outline.numInternalOutlines(); ++i) {
            bool const isHole = std::next(outline.beginInternalOutlines(), i)->isHole();
            if (isHole && encloses(outline, static_cast<std::uint32_t>(i), other)) return true;
        }
        return false;
    }
    takeHoles(outline);
    Geometry::Bound2D const &inner = other.getBound();
    return holeBounds_.any(
        [&inner](Geometry::Bound2D const &box) { return box.contains(inner, boundTolerance); },
        [&](std::size_t box) { return encloses(outline, holes_[box], other); });
}

bool OutlineIndex::encloses(EDAOutline const &outline, std::uint32_t hole, EDAOutline const &other) {
    ++numHoleTests_;
    EDAOutline const &internal = *std::next(outline.beginInternalOutlines(), hole);
    std::size_t const numEdges = internal.getPoints(true).size();
    if (internal.getBound().contains(other.getBound(), boundTolerance)) {
        numPointTests_ += other.getPoints(true).size() * (numEdges < manyPoints ? numEdges : indexTests);
    }
    if (numEdges < manyPoints) return internal.enclosesOutline(other);
    return EDA::encloses(internal, other, holeEdges_[hole]);
}

void OutlineIndex::takeHoles(EDAOutline const &outline) {
    for (; numInternals_ < outline.numInternalOutlines(); ++numInternals_) {
        EDAOutline const &internal = *std::next(outline.beginInternalOutlines(), numInternals_);
        auto const number = static_cast<std::uint32_t>(numInternals_);
        if (!internal.isHole() || isKnownHole(outline, number)) continue;
        holeBounds_.add(internal.getBound());
        holes_.push_back(number);
    }
}

// A hole that repeats another has nothing to add, and a file may flash a clear object in one place for ever.
bool OutlineIndex::isKnownHole(EDAOutline const &outline, std::uint32_t number) {
    PointList const &points = std::next(outline.beginInternalOutlines(), number)->getPoints(true);
    std::size_t const hash = hashOf(points);
    auto const [first, last] = holesByPoints_.equal_range(hash);
    bool const isKnown = std::any_of(first, last, [&](auto const &known) {
        return std::next(outline.beginInternalOutlines(), known.second)->getPoints(true) == points;
    });
    if (!isKnown) holesByPoints_.emplace(hash, number);
    return isKnown;
}

} // namespace EDA
