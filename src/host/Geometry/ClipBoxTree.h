// Finds the pairs of edges that are near each other.
#pragma once

#include "host/Geometry/ClipNoder.h"

#include <vector>

namespace Geometry {
namespace Clip {

/// The extent of edges along x, y and both diagonals. The diagonals keep a hatch of slanted
/// lines, whose plain boxes all overlap, from being a quadratic case.
struct Extent {
    double low[4];
    double high[4];

    static Extent of(Vec2T<double> const &a, Vec2T<double> const &b);
    void unite(Extent const &other);
    bool near(Extent const &other, double distance) const;
};

/// A tree of extents. Its leaves are runs of joined edges, which are near each other in
/// space already; the runs are put in the order of a space-filling curve.
class BoxTree {
public:
    BoxTree(Grid const &grid, std::vector<Edge> const &edges);

    /// Calls `visit(i, j)` for each pair of edges whose extents come within `distance` and
    /// of which at least one is fresh. Throws std::length_error beyond `maxTests` tests.
    template <typename Visit> void forNearPairs(double distance, double maxTests, Visit const &visit);

private:
    static constexpr Index fanOut = 8;

    struct Node {
        Extent extent;
        Index begin; ///< children in the next lower level; for an edge its own index
        Index end;
        bool fresh;
    };
    struct Pair {
        std::size_t level;
        Index first;
        Index second;
    };

    void addEdges(Grid const &grid, std::vector<Edge> const &edges);
    void addRuns(std::vector<Edge> const &edges);
    void sortRuns();
    void addLevel();
    Node parentOf(std::size_t level, Index begin, Index end) const;
    void pushChildren(Pair const &pair, double distance);

    std::vector<std::vector<Node>> levels_; ///< level 0 holds the edges, level 1 the runs
    std::vector<Pair> stack_;
    double tests_ = 0.0;
};

void throwTooManyCrossings();

template <typename Visit> void BoxTree::forNearPairs(double distance, double maxTests, Visit const &visit) {
    tests_ = 0.0;
    stack_.assign(1, Pair{levels_.size() - 1, 0, 0});
    while (!stack_.empty()) {
        Pair const pair = stack_.back();
        stack_.pop_back();
        if (pair.level == 0) {
            visit(pair.first, pair.second);
            continue;
        }
        pushChildren(pair, distance);
        if (tests_ > maxTests) throwTooManyCrossings();
    }
}

} // namespace Clip
} // namespace Geometry
