// The rule by which points are inside outlines.
#pragma once

#include <utility>

namespace EDA {

// True when a ray from (`x`, `y`) toward positive X crosses the edge. Of the edge's ends, only the
// lower one counts as part of it.
inline bool rayCrosses(std::pair<double, double> const &from, std::pair<double, double> const &to, double x,
                       double y) {
    bool const spans = (y >= from.second && to.second > y) || (y >= to.second && from.second > y);
    if (!spans) return false;
    double const crossing =
        (y - from.second) / (to.second - from.second) * (to.first - from.first) + from.first;
    return crossing > x;
}

} // namespace EDA
