// Building and descending the tree of edge extents.
#include "host/Geometry/ClipBoxTree.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <stdexcept>

namespace Geometry {
namespace Clip {

namespace {

constexpr int curveBits = 31;

// Spreads the low 32 bits so that a zero stands between each two.
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

constexpr double strayStep = 8.0; // cells; well above the distance at which edges are near

// Whether a run of joined edges does anything but go on along one axis, by clear steps. One
// that does not keeps clear of itself.
bool strays(Grid const &grid, Edge const *begin, Edge const *end) {
    double least[4] = {HUGE_VAL, HUGE_VAL, HUGE_VAL, HUGE_VAL};
    for (Edge const *edge = begin; edge != end; ++edge) {
        Vec2T<double> const &a = grid.cell(edge->from), &b = grid.cell(edge->to);
        double const steps[4] = {b.x - a.x, a.x - b.x, b.y - a.y, a.y - b.y};
        for (int i = 0; i < 4; ++i)
            least[i] = std::min(least[i], steps[i]);
    }
    return *std::max_element(least, least + 4) < strayStep;
}

} // namespace

void throwTooManyCrossings() { throw std::length_error("polygon crosses itself too often to clip"); }

void BoxTree::build(Grid const &grid, std::vector<Edge> const &edges) {
    nodes_.clear();
    nodes_.reserve(edges.size() + edges.size() / 2 + 8);
    addEdges(grid, edges);
    addRuns(grid, edges);
    if (nodes_.size() - edgeCount_ > fanOut) sortRuns();
    levels_ = 1;
    for (Index begin = edgeCount_; nodes_.size() - begin > 1; ++levels_) {
        auto const end = static_cast<Index>(nodes_.size());
        for (; begin < end; begin = std::min(begin + fanOut, end))
            addParent(begin, std::min(begin + fanOut, end));
    }
}

void BoxTree::addEdges(Grid const &grid, std::vector<Edge> const &edges) {
    edgeCount_ = static_cast<Index>(edges.size());
    nodes_.resize(edges.size());
    for (std::size_t i = 0; i < edges.size(); ++i) {
        nodes_[i].extent = Extent::of(grid.cell(edges[i].from), grid.cell(edges[i].to));
        nodes_[i].fresh = edges[i].fresh;
    }
}

void BoxTree::addRuns(Grid const &grid, std::vector<Edge> const &edges) {
    for (Index begin = 0; begin < edgeCount_;) {
        Index end = begin + 1;
        while (end < edgeCount_ && end - begin < fanOut && edges[end].from == edges[end - 1].to)
            ++end;
        addParent(begin, end);
        nodes_.back().straying = strays(grid, edges.data() + begin, edges.data() + end);
        begin = end;
    }
}

void BoxTree::sortRuns() {
    Extent all = nodes_[edgeCount_].extent;
    for (std::size_t i = edgeCount_; i < nodes_.size(); ++i)
        all.unite(nodes_[i].extent);
    double const xScale = 0.5 / std::max(all.high[0] - all.low[0], 1.0);
    double const yScale = 0.5 / std::max(all.high[1] - all.low[1], 1.0);
    order_.clear();
    for (std::size_t i = edgeCount_; i < nodes_.size(); ++i) {
        Extent const &e = nodes_[i].extent;
        double const x = (e.low[0] - all.low[0] + e.high[0] - all.low[0]) * xScale;
        double const y = (e.low[1] - all.low[1] + e.high[1] - all.low[1]) * yScale;
        order_.emplace_back(onCurve(x) | (onCurve(y) << 1), static_cast<Index>(i));
    }
    std::sort(order_.begin(), order_.end());
    sorted_.clear();
    for (auto const &entry : order_)
        sorted_.push_back(nodes_[entry.second]);
    std::copy(sorted_.begin(), sorted_.end(), nodes_.begin() + static_cast<std::ptrdiff_t>(edgeCount_));
}

void BoxTree::addParent(Index begin, Index end) {
    nodes_.emplace_back();
    Node &parent = nodes_.back();
    parent.extent = nodes_[begin].extent;
    parent.begin = begin;
    parent.end = end;
    for (Index i = begin; i < end; ++i) {
        parent.extent.unite(nodes_[i].extent);
        parent.fresh = parent.fresh || nodes_[i].fresh;
    }
}

void BoxTree::pushChildren(Pair const &pair, double distance) {
    Node const &first = nodes_[pair.first];
    Node const &second = nodes_[pair.second];
    bool const same = pair.first == pair.second;
    for (Index i = first.begin; i < first.end; ++i) {
        Node const &a = nodes_[i];
        if (!same && !a.extent.near(second.extent, distance)) continue;
        for (Index j = same ? i : second.begin; j < second.end; ++j) {
            Node const &b = nodes_[j];
            tests_ += 1.0;
            if ((a.fresh || b.fresh) && a.extent.near(b.extent, distance))
                stack_.push_back({pair.level - 1, i, j});
        }
    }
}

} // namespace Clip
} // namespace Geometry
