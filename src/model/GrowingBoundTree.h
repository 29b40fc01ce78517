// Finds the boxes of a growing list that meet another box.
#pragma once

#include "model/BoundTree.h"

#include <cstddef>
#include <vector>

namespace EDA {

// Boxes that are added one by one, with searches between. Trees of doubling size hold them, so that adding
// and searching cost log n on average.
class GrowingBoundTree {
public:
    void add(Geometry::Bound2D const &bound);
    std::size_t size() const { return bounds_.size(); }

    // Calls `visit(number)` for each box that overlaps `bound` within the tolerance; the first box added has
    // the number 0.
    template <typename Visit>
    void search(Geometry::Bound2D const &bound, double tolerance, Visit const &visit) const;

    // As `BoundTree::any`, with numbers.
    template <typename Admits, typename Test> bool any(Admits const &admits, Test const &test) const;

private:
    static constexpr std::size_t batch = 256; // so many are looked at one by one

    struct Part {
        std::size_t begin;
        std::size_t end;
        BoundTree tree;
    };
    std::size_t numPacked() const { return parts_.empty() ? 0 : parts_.back().end; }

    std::vector<Geometry::Bound2D> bounds_;
    std::vector<Part> parts_;
};

template <typename Visit>
void GrowingBoundTree::search(Geometry::Bound2D const &bound, double tolerance, Visit const &visit) const {
    for (Part const &part : parts_) {
        part.tree.search(bound, tolerance, [&](std::size_t number) { visit(part.begin + number); });
    }
    for (std::size_t i = numPacked(); i < bounds_.size(); ++i) {
        if (bounds_[i].overlaps(bound, tolerance)) visit(i);
    }
}

template <typename Admits, typename Test>
bool GrowingBoundTree::any(Admits const &admits, Test const &test) const {
    for (Part const &part : parts_) {
        if (part.tree.any(admits, [&](std::size_t number) { return test(part.begin + number); })) return true;
    }
    for (std::size_t i = numPacked(); i < bounds_.size(); ++i) {
        if (admits(bounds_[i]) && test(i)) return true;
    }
    return false;
}

} // namespace EDA
