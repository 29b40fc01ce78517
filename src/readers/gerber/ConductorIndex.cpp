// Trees of doubling size.
#include "readers/gerber/ConductorIndex.h"

namespace EDA {

void ConductorIndex::add(const Geometry::Bound2D &bound) {
    bounds_.push_back(bound);
    std::size_t begin = parts_.empty() ? 0 : parts_.back().end;
    const std::size_t end = bounds_.size();
    if (end - begin < batch) return;
    // Takes in the parts before that are no larger than what is new.
    while (!parts_.empty() && parts_.back().end - parts_.back().begin <= end - begin) {
        begin = parts_.back().begin;
        parts_.pop_back();
    }
    const std::vector<Geometry::Bound2D> bounds(bounds_.begin() + static_cast<std::ptrdiff_t>(begin),
                                                bounds_.end());
    parts_.push_back({begin, end, BoundTree(bounds)});
}

} // namespace EDA
