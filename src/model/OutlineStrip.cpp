// Strips along the longest edge.
#include "model/OutlineStrip.h"

#include <algorithm>
#include <cmath>

namespace EDA {

namespace {

// A strip is narrow that is less than this share of the shorter side of the box: bars that run aslant.
constexpr double narrowness = 0.25;

// More than the rounding of any coordinate, as a share of its size.
constexpr double rounding = 1e-9;

} // namespace

OutlineStrip::OutlineStrip(EDAOutline const &outline) {
    EDAOutline::PointList const &points = outline.getPoints(true);
    double longest = 0.0; // squared
    for (std::size_t i = 0; i < points.size(); ++i) {
        auto const &from = points[i], &to = points[i + 1 < points.size() ? i + 1 : 0];
        double const dx = to.first - from.first, dy = to.second - from.second;
        double const squared = dx * dx + dy * dy;
        if (!(squared > longest) || !std::isfinite(squared)) continue;
        longest = squared;
        normalX_ = -dy;
        normalY_ = dx;
    }
    if (!(longest > 0.0)) return;
    isKnown_ = true;
    normalX_ /= std::sqrt(longest);
    normalY_ /= std::sqrt(longest);
    low_ = high_ = across(points.front());
    for (auto const &point : points) {
        low_ = std::min(low_, across(point));
        high_ = std::max(high_, across(point));
    }
    Geometry::Bound2D const &bound = outline.getBound();
    isNarrow_ = high_ - low_ < narrowness * std::min(bound.getXSize(), bound.getYSize());
}

bool OutlineStrip::isBeside(EDAOutline const &other) const {
    Geometry::Bound2D const &bound = other.getBound();
    double const size = std::abs(bound.getXLow()) + std::abs(bound.getXHigh()) + std::abs(bound.getYLow()) +
                        std::abs(bound.getYHigh()) + std::abs(low_) + std::abs(high_);
    double const low = low_ - rounding * size, high = high_ + rounding * size;
    EDAOutline::PointList const &points = other.getPoints(true);
    return std::all_of(points.begin(), points.end(),
                       [&](auto const &point) { return across(point) < low; }) ||
           std::all_of(points.begin(), points.end(), [&](auto const &point) { return across(point) > high; });
}

} // namespace EDA
