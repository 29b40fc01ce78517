// Compares what the pictures of a design and of its model show.
#pragma once

#include "BoardView.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <map>
#include <string>
#include <vector>

namespace TestSupport {

using namespace EDATool;

inline double distanceToStep(const Point &point, const Point &from, const PathStep &step) {
    const auto distance = [](const Point &a, const Point &b) { return std::hypot(a.x - b.x, a.y - b.y); };
    if (step.kind == PathStep::Kind::Arc) {
        const double degrees = 45.0 / std::atan(1.0);
        const double start = std::atan2(from.y - step.centre.y, from.x - step.centre.x) * degrees;
        double turn = std::atan2(point.y - step.centre.y, point.x - step.centre.x) * degrees - start;
        if (step.sweep < 0) turn = -turn;
        turn = std::fmod(turn + 720.0, 360.0);
        if (turn <= std::fabs(step.sweep))
            return std::fabs(distance(point, step.centre) - distance(step.to, step.centre));
        return std::min(distance(point, from), distance(point, step.to));
    }
    const double length = distance(from, step.to);
    double share = 0.0;
    if (length > 0)
        share = ((point.x - from.x) * (step.to.x - from.x) + (point.y - from.y) * (step.to.y - from.y)) /
                (length * length);
    share = std::clamp(share, 0.0, 1.0);
    return distance(point, {from.x + share * (step.to.x - from.x), from.y + share * (step.to.y - from.y)});
}

// From the point to the nearest point of the path's line.
inline double distanceToPath(const Point &point, const Path &path) {
    double nearest = HUGE_VAL;
    Point from;
    for (const PathStep &step : path) {
        if (step.kind != PathStep::Kind::Move) nearest = std::min(nearest, distanceToStep(point, from, step));
        from = step.to;
    }
    return nearest;
}

inline bool isFullCircle(const Path &path) {
    return path.size() == 3 && std::fabs(std::fabs(path[1].sweep) - 360.0) < 1e-9;
}

inline bool hasArcs(const Path &path) {
    return std::any_of(path.begin(), path.end(),
                       [](const PathStep &step) { return step.kind == PathStep::Kind::Arc; });
}

// Of the corners of one path to the line of the other.
inline double distanceOfCorners(const Path &from, const Path &to) {
    double worst = 0.0;
    for (const PathStep &step : from)
        worst = std::max(worst, distanceToPath(step.to, to));
    return worst;
}

// How far apart the paths are: circles by centre and radius, all else by the corners of each against the line
// of the other. Where the design has an arc the model has chords of it, so only their corners count.
inline double deviation(const Path &design, const Path &model) {
    if (design.empty() || model.empty()) return design.empty() && model.empty() ? 0.0 : HUGE_VAL;
    if (isFullCircle(design) && isFullCircle(model)) {
        const auto radius = [](const Path &path) {
            return std::hypot(path[0].to.x - path[1].centre.x, path[0].to.y - path[1].centre.y);
        };
        return std::max({std::fabs(design[1].centre.x - model[1].centre.x),
                         std::fabs(design[1].centre.y - model[1].centre.y),
                         std::fabs(radius(design) - radius(model))});
    }
    double worst = std::max(distanceOfCorners(model, design), distanceOfCorners(design, model));
    if (!hasArcs(design) && !hasArcs(model))
        worst = std::max(worst, std::sqrt(std::fabs(areaOf(design) - areaOf(model))) * 1e-3);
    return worst;
}

using PartPaths = std::map<std::string, Path>;

// Millimetres from the low-x, high-y corner of the board.
inline PartPaths pathsOfDesign(const BoardView &view, double mmPerUnit) {
    const Box &edge = view.edgeBound;
    PartPaths paths;
    for (const PartView &part : view.parts)
        paths[part.designator] =
            then(Similarity::move(-edge.low.x, -edge.high.y), Similarity::scaling(mmPerUnit))
                .apply(part.body);
    return paths;
}

inline PartPaths pathsOfModel(const BoardView &view) {
    PartPaths paths;
    for (const PartView &part : view.parts)
        paths[part.designator] = part.body;
    return paths;
}

// Expects the same parts in the same places. `tolerance` in mm.
inline void expectSameParts(const PartPaths &design, const PartPaths &model, double tolerance) {
    EXPECT_EQ(design.size(), model.size());
    for (const auto &[designator, path] : design) {
        const auto found = model.find(designator);
        ASSERT_NE(found, model.end()) << designator;
        EXPECT_LE(deviation(path, found->second), tolerance) << designator;
    }
}

} // namespace TestSupport
