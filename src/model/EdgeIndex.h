// Tells which points lie inside an outline of many edges.
#pragma once

#include "model/EDAOutline.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace EDA {

// The edges of a list of points by height. Gives exactly the answers of a walk over all edges, but looks only
// at those that reach the height of the point and at a few of their neighbours. Each edge is kept at most
// twice log n times.
class EdgeIndex {
public:
    // Keeps a copy of the list, whose points must be finite.
    explicit EdgeIndex(EDAOutline::PointList const &points);

    // Inside by the number of edges that a ray toward positive X crosses.
    bool contains(double x, double y) const;

private:
    std::size_t slotOf(double y) const;
    void addEdge(std::uint32_t edge);

    EDAOutline::PointList points_;
    double low_ = 0.0;
    double slotsPerHeight_ = 0.0;
    std::size_t numSlots_ = 1;                      // a power of two
    std::vector<std::vector<std::uint32_t>> nodes_; // a binary tree over the slots; children of i: 2i, 2i + 1
};

} // namespace EDA
