// Finds the pairs of edges that are near each other.
#pragma once

#include "host/Geometry/ClipNoder.h"

#include <algorithm>
#include <cstdint>
#include <utility>
#include <vector>

namespace Geometry {
namespace Clip {

// The extent of edges along x, y and both diagonals. The diagonals keep a hatch of slanted
// lines, whose plain boxes all overlap, from being a quadratic case.
struct Extent {
    double low[4];
    double high[4];

    static Extent of(Vec2T<double> const &a, Vec2T<double> const &b) {
        Extent extent;
        extent.set(0, a.x, b.x);
        extent.set(1, a.y, b.y);
        extent.set(2, a.x + a.y, b.x + b.y);
        extent.set(3, a.x - a.y, b.x - b.y);
        return extent;
    }

    void unite(Extent const &other) {
        for (int i = 0; i < 4; ++i) {
            low[i] = std::min(low[i], other.low[i]);
            high[i] = std::max(high[i], other.high[i]);
        }
    }

    bool near(Extent const &other, double distance) const {
        return reaches(other, 0, distance) && reaches(other, 1, distance) &&
               reaches(other, 2, 2.0 * distance) && // diagonals are longer by sqrt(2)
               reaches(other, 3, 2.0 * distance);
    }

private:
    void set(int axis, double a, double b) {
        low[axis] = std::min(a, b);
        high[axis] = std::max(a, b);
    }
    bool reaches(Extent const &other, int axis, double distance) const {
        return low[axis] - other.high[axis] <= distance && other.low[axis] - high[axis] <= distance;
    }
};

// A tree of extents. Its leaves are runs of joined edges, which are near each other in
// space already; the runs are put in the order of a space-filling curve.
class BoxTree {
public:
    // Replaces what the tree holds.
    void build(Grid const &grid, std::vector<Edge> const &edges);

    // Calls `visit(i, j)` for each pair of edges whose extents come within `distance` and
    // of which at least one is fresh. Leaves out some that cannot touch but in a common end. Throws
    // std::length_error beyond `maxTests` tests.
    template <typename Visit> void forNearPairs(double distance, double maxTests, Visit const &visit);

private:
    static constexpr Index fanOut = 8;

    struct Node {
        Extent extent;
        Index begin = 0; // children in the next lower level
        Index end = 0;
        bool fresh = false;
        bool straying = true; // children may touch each other elsewhere than in a common end
    };
    struct Pair {
        int level; // 0 for edges, 1 for runs
        Index first;
        Index second;
    };

    void addEdges(Grid const &grid, std::vector<Edge> const &edges);
    void addRuns(Grid const &grid, std::vector<Edge> const &edges);
    void sortRuns();
    void addParent(Index begin, Index end);
    void pushChildren(Pair const &pair, double distance);
    template <typename Visit> void visitEdges(Pair const &pair, double distance, Visit const &visit);

    std::vector<Node> nodes_; // the edges, then the runs, then one level after the other up to the root
    Index edgeCount_ = 0;
    int levels_ = 0; // above the edges
    std::vector<Node> sorted_;
    std::vector<std::pair<std::uint64_t, Index>> order_;
    std::vector<Pair> stack_;
    double tests_ = 0.0;
};

void throwTooManyCrossings();

template <typename Visit> void BoxTree::forNearPairs(double distance, double maxTests, Visit const &visit) {
    tests_ = 0.0;
    auto const root = static_cast<Index>(nodes_.size() - 1);
    stack_.assign(1, Pair{levels_, root, root});
    while (!stack_.empty()) {
        Pair const pair = stack_.back();
        stack_.pop_back();
        if (pair.level == 1)
            visitEdges(pair, distance, visit);
        else
            pushChildren(pair, distance);
        if (tests_ > maxTests) throwTooManyCrossings();
    }
}

template <typename Visit> void BoxTree::visitEdges(Pair const &pair, double distance, Visit const &visit) {
    Node const &first = nodes_[pair.first];
    Node const &second = nodes_[pair.second];
    bool const same = pair.first == pair.second;
    if (same && !first.straying) return;
    for (Index i = first.end; i-- > first.begin;) {
        Node const &a = nodes_[i];
        if (!same && !a.extent.near(second.extent, distance)) continue;
        Index const begin = same ? i + 1 : second.begin;
        tests_ += static_cast<double>(second.end - begin);
        for (Index j = second.end; j-- > begin;) {
            Node const &b = nodes_[j];
            if ((a.fresh || b.fresh) && a.extent.near(b.extent, distance)) visit(i, j);
        }
    }
}

} // namespace Clip
} // namespace Geometry
