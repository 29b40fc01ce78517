// Finds the outlines of a growing list that meet a box.
#pragma once

#include "model/BoundTree.h"

#include <cstddef>
#include <vector>

namespace EDA {

// Boxes that are added one by one, with searches between. Trees of doubling size hold them, so that adding
// and searching cost log n on average.
class ConductorIndex {
public:
    void add(const Geometry::Bound2D &bound);
    void clear() { *this = ConductorIndex(); }

    // Calls `visit(number)` for each box that overlaps `bound` within the tolerance; the first box added has
    // the number 0.
    template <typename Visit>
    void search(const Geometry::Bound2D &bound, double tolerance, const Visit &visit) const;

private:
    static constexpr std::size_t batch = 256; // so many are looked at one by one

    struct Part {
        std::size_t begin;
        std::size_t end;
        BoundTree tree;
    };
    std::vector<Geometry::Bound2D> bounds_;
    std::vector<Part> parts_;
};

template <typename Visit>
void ConductorIndex::search(const Geometry::Bound2D &bound, double tolerance, const Visit &visit) const {
    for (const Part &part : parts_) {
        part.tree.search(bound, tolerance, [&](std::size_t number) { visit(part.begin + number); });
    }
    for (std::size_t i = parts_.empty() ? 0 : parts_.back().end; i < bounds_.size(); ++i) {
        if (bounds_[i].overlaps(bound, tolerance)) visit(i);
    }
}

} // namespace EDA
