// Trees of doubling size.
#include "model/GrowingBoundTree.h"

namespace EDA {

void GrowingBoundTree::add(Geometry::Bound2D const &bound) {
    bounds_.push_back(bound);
    std::size_t begin = numPacked();
    std::size_t const end = bounds_.size();
    if (end - begin < batch) return;
    // Takes in the parts before that are no larger than what is new.
    while (!parts_.empty() && parts_.back().end - parts_.back().begin <= end - begin) {
        begin = parts_.back().begin;
        parts_.pop_back();
    }
    std::vector<Geometry::Bound2D> const bounds(bounds_.begin() + static_cast<std::ptrdiff_t>(begin),
                                                bounds_.end());
    parts_.push_back({begin, end, BoundTree(bounds)});
}

} // namespace EDA
