// Building and descending the tree of edge extents.
#include "host/Geometry/ClipBoxTree.h"

#include <algorithm>
#include <cstdint>
#include <stdexcept>
#include <utility>

namespace Geometry {
namespace Clip {

namespace {

constexpr int curveBits = 31;

/// Spreads the low 32 bits so that a zero stands between each two.
std::uint64_t spread(std::uint64_t bits) {
    bits = (bits | (bits << 16)) & 0x0000ffff0000ffffu;
    bits = (bits | (bits << 8)) & 0x00ff00ff00ff00ffu;
    bits = (bits | (bits << 4)) & 0x0f0f0f0f0f0f0f0fu;
    bits = (bits | (bits << 2)) & 0x3333333333333333u;
    return (bits | (bits << 1)) & 0x5555555555555555u;
}

std::uint64_t onCurve(double part) {
    constexpr double cells = static_cast<double>(std::uint64_t(1) << curveBits) - 1.0;
    return spread(static_cast<std::uint64_t>(std::min(std::max(part, 0.0), 1.0) * cells));
}

} // namespace

Extent Extent::of(Vec2T<double> const &a, Vec2T<double> const &b) {
    double const first[4] = {a.x, a.y, a.x + a.y, a.x - a.y};
    double const second[4] = {b.x, b.y, b.x + b.y, b.x - b.y};
    Extent extent;
    for (int i = 0; i < 4; ++i) {
        extent.low[i] = std::min(first[i], second[i]);
        extent.high[i] = std::max(first[i], second[i]);
    }
    return extent;
}

void Extent::unite(Extent const &other) {
    for (int i = 0; i < 4; ++i) {
        low[i] = std::min(low[i], other.low[i]);
        high[i] = std::max(high[i], other.high[i]);
    }
}

bool Extent::near(Extent const &other, double distance) const {
    for (int i = 0; i < 4; ++i) {
        double const reach = i < 2 ? distance : 2.0 * distance; // diagonals are longer by sqrt(2)
        if (low[i] - other.high[i] > reach || other.low[i] - high[i] > reach) return false;
    }
    return true;
}

void throwTooManyCrossings() { throw std::length_error("polygon crosses itself too often to clip"); }

BoxTree::BoxTree(Grid const &grid, std::vector<Edge> const &edges) {
    addEdges(grid, edges);
    addRuns(edges);
    if (levels_[1].size() > fanOut) sortRuns();
    while (levels_.back().size() > 1)
        addLevel();
}

void BoxTree::addEdges(Grid const &grid, std::vector<Edge> const &edges) {
    levels_.resize(1);
    levels_[0].reserve(edges.size());
    for (std::size_t i = 0; i < edges.size(); ++i) {
        Edge const &edge = edges[i];
        auto const index = static_cast<Index>(i);
        levels_[0].push_back(
            {Extent::of(grid.cell(edge.from), grid.cell(edge.to)), index, index + 1, edge.fresh});
    }
}

void BoxTree::addRuns(std::vector<Edge> const &edges) {
    std::vector<Node> runs;
    runs.reserve(edges.size() / (fanOut / 2) + 1);
    for (std::size_t begin = 0; begin < edges.size();) {
        std::size_t end = begin + 1;
        while (end < edges.size() && end - begin < fanOut && edges[end].from == edges[end - 1].to)
            ++end;
        runs.push_back(parentOf(0, static_cast<Index>(begin), static_cast<Index>(end)));
        begin = end;
    }
    levels_.push_back(std::move(runs));
}

void BoxTree::sortRuns() {
    std::vector<Node> &runs = levels_[1];
    Extent all = runs.front().extent;
    for (Node const &run : runs)
        all.unite(run.extent);
    double const xScale = 0.5 / std::max(all.high[0] - all.low[0], 1.0);
    double const yScale = 0.5 / std::max(all.high[1] - all.low[1], 1.0);
    std::vector<std::pair<std::uint64_t, Index>> order;
    order.reserve(runs.size());
    for (std::size_t i = 0; i < runs.size(); ++i) {
        Extent const &e = runs[i].extent;
        double const x = (e.low[0] - all.low[0] + e.high[0] - all.low[0]) * xScale;
        double const y = (e.low[1] - all.low[1] + e.high[1] - all.low[1]) * yScale;
        order.emplace_back(onCurve(x) | (onCurve(y) << 1), static_cast<Index>(i));
    }
    std::sort(order.begin(), order.end());
    std::vector<Node> sorted;
    sorted.reserve(runs.size());
    for (auto const &entry : order)
        sorted.push_back(runs[entry.second]);
    runs.swap(sorted);
}

void BoxTree::addLevel() {
    std::vector<Node> next;
    auto const count = static_cast<Index>(levels_.back().size());
    next.reserve(count / fanOut + 1);
    for (Index begin = 0; begin < count; begin += fanOut)
        next.push_back(parentOf(levels_.size() - 1, begin, std::min(begin + fanOut, count)));
    levels_.push_back(std::move(next));
}

BoxTree::Node BoxTree::parentOf(std::size_t level, Index begin, Index end) const {
    std::vector<Node> const &nodes = levels_[level];
    Node parent{nodes[begin].extent, begin, end, nodes[begin].fresh};
    for (Index i = begin + 1; i < end; ++i) {
        parent.extent.unite(nodes[i].extent);
        parent.fresh = parent.fresh || nodes[i].fresh;
    }
    return parent;
}

void BoxTree::pushChildren(Pair const &pair, double distance) {
    Node const &first = levels_[pair.level][pair.first];
    Node const &second = levels_[pair.level][pair.second];
    bool const same = pair.first == pair.second;
    bool const edges = pair.level == 1;
    std::vector<Node> const &children = levels_[pair.level - 1];
    for (Index i = first.begin; i < first.end; ++i) {
        Node const &a = children[i];
        if (!same && !a.extent.near(second.extent, distance)) continue;
        for (Index j = same ? (edges ? i + 1 : i) : second.begin; j < second.end; ++j) {
            Node const &b = children[j];
            tests_ += 1.0;
            if ((a.fresh || b.fresh) && a.extent.near(b.extent, distance))
                stack_.push_back({pair.level - 1, i, j});
        }
    }
}

} // namespace Clip
} // namespace Geometry
