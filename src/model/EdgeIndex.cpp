// A tree of slices by height.
#include "model/EdgeIndex.h"

#include "model/RayCrossing.h"

#include <algorithm>
#include <cmath>

namespace EDA {

EdgeIndex::EdgeIndex(EDAOutline::PointList const &points) : points_(points) {
    while (numSlots_ < points.size())
        numSlots_ *= 2;
    nodes_.resize(2 * numSlots_);
    if (points.empty()) return;
    auto const [lowest, highest] = std::minmax_element(
        points.begin(), points.end(), [](auto const &a, auto const &b) { return a.second < b.second; });
    low_ = lowest->second;
    double const height = highest->second - low_;
    double const scale = static_cast<double>(numSlots_) / height;
    if (height > 0.0 && std::isfinite(scale)) slotsPerHeight_ = scale;
    for (std::size_t i = 0; i < points.size(); ++i)
        addEdge(static_cast<std::uint32_t>(i));
}

// Never falls as y rises, so the slots of an edge's ends enclose those of all heights between.
std::size_t EdgeIndex::slotOf(double y) const {
    double const slot = (y - low_) * slotsPerHeight_;
    if (!(slot > 0.0)) return 0;
    return std::min(static_cast<std::size_t>(std::min(slot, static_cast<double>(numSlots_))), numSlots_ - 1);
}

void EdgeIndex::addEdge(std::uint32_t edge) {
    double const from = points_[edge].second;
    double const to = points_[edge + 1 < points_.size() ? edge + 1 : 0].second;
    std::size_t low = slotOf(std::min(from, to)) + numSlots_;
    std::size_t high = slotOf(std::max(from, to)) + numSlots_ + 1;
    for (; low < high; low /= 2, high /= 2) {
        if (low % 2 == 1) nodes_[low++].push_back(edge);
        if (high % 2 == 1) nodes_[--high].push_back(edge);
    }
}

bool EdgeIndex::contains(double x, double y) const {
    bool inside = false;
    for (std::size_t node = slotOf(y) + numSlots_; node > 0; node /= 2) {
        for (std::uint32_t const edge : nodes_[node]) {
            auto const &to = points_[edge + 1 < points_.size() ? edge + 1 : 0];
            if (rayCrosses(points_[edge], to, x, y)) inside = !inside;
        }
    }
    return inside;
}

} // namespace EDA
