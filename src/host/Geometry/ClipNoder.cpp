// Splitting edges at crossings and near vertices, in rounds until nothing is left to split.
#include "host/Geometry/ClipNoder.h"

#include "host/Geometry/ClipBoxTree.h"

#include <algorithm>
#include <cstdlib>

namespace Geometry {
namespace Clip {

namespace {

constexpr double snapDistance = 2.0; // cells; covers the rounding of both ends and of the vertex
constexpr int maxRounds = 50;        // bends of a cell or two settle within a few

struct Split {
    Index edge;
    Index vertex;
};

class Noder {
public:
    Noder(Grid &grid, std::vector<Edge> &edges, NodingLimits const &limits);
    void run();

private:
    bool splitRound();
    void visitPair(Index first, Index second);
    bool splitNear(Index edge, Index vertex);
    bool crosses(Edge const &a, Edge const &b) const;
    Index crossingOf(Edge const &a, Edge const &b);
    bool isNearBoth(WidePoint const &point, Edge const &a, Edge const &b) const;
    void addSplit(Index edge, Index vertex);
    double along(Edge const &edge, Index vertex) const;
    void applySplits();
    void cut(Edge const &edge, Split const *begin, Split const *end, std::vector<Edge> &result) const;
    double squaredLength(Index a, Index b) const;
    void joinEqualEdges();

    Grid &grid_;
    std::vector<Edge> &edges_;
    double maxSplits_;
    double maxTests_;
    BoxTree tree_;
    std::vector<Split> splits_;
    std::vector<Edge> parts_;
    std::vector<Index> table_; // of `joinEqualEdges`
};

bool hasEnd(Edge const &edge, Index vertex) { return vertex == edge.from || vertex == edge.to; }

WidePoint wideCell(Vec2T<double> const &cell) { return {{cell.x, 0.0}, {cell.y, 0.0}}; }

Noder::Noder(Grid &grid, std::vector<Edge> &edges, NodingLimits const &limits)
    : grid_(grid), edges_(edges),
      maxSplits_(limits.freeSplits + limits.splitsPerEdge * static_cast<double>(edges.size())),
      maxTests_(limits.freeTests + limits.testsPerEdge * static_cast<double>(edges.size())) {}

void Noder::run() {
    joinEqualEdges();
    for (int round = 0; round < maxRounds && splitRound(); ++round)
        joinEqualEdges();
}

bool Noder::splitRound() {
    if (edges_.empty()) return false;
    splits_.clear();
    tree_.build(grid_, edges_);
    tree_.forNearPairs(snapDistance, maxTests_, [this](Index i, Index j) { visitPair(i, j); });
    for (Edge &edge : edges_)
        edge.fresh = false;
    if (splits_.empty()) return false;
    applySplits();
    return true;
}

void Noder::visitPair(Index first, Index second) {
    Edge const &a = edges_[first];
    Edge const &b = edges_[second];
    bool split = splitNear(first, b.from);
    split = splitNear(first, b.to) || split;
    split = splitNear(second, a.from) || split;
    split = splitNear(second, a.to) || split;
    if (split || hasEnd(a, b.from) || hasEnd(a, b.to) || !crosses(a, b)) return;
    Index const vertex = crossingOf(a, b);
    addSplit(first, vertex);
    addSplit(second, vertex);
}

// Splits the edge at a vertex close to it. Only where both parts become shorter than the
// whole: that is what makes the rounds end.
bool Noder::splitNear(Index edge, Index vertex) {
    Edge const &e = edges_[edge];
    if (hasEnd(e, vertex)) return false;
    Vec2T<double> const &a = grid_.cell(e.from);
    Vec2T<double> const &b = grid_.cell(e.to);
    Vec2T<double> const &v = grid_.cell(vertex);
    double const dx = b.x - a.x, dy = b.y - a.y, vx = v.x - a.x, vy = v.y - a.y;
    double const length2 = dx * dx + dy * dy;
    double const dot = vx * dx + vy * dy;
    if (dot <= 0.0 || dot >= length2) return false;
    double const cross = dx * vy - dy * vx;
    if (cross * cross > snapDistance * snapDistance * length2) return false;
    double const wx = v.x - b.x, wy = v.y - b.y;
    if (vx * vx + vy * vy >= length2 || wx * wx + wy * wy >= length2) return false;
    addSplit(edge, vertex);
    return true;
}

void Noder::addSplit(Index edge, Index vertex) {
    Edge const &e = edges_[edge];
    if (hasEnd(e, vertex)) return;
    if (static_cast<double>(splits_.size()) >= maxSplits_) throwTooManyCrossings();
    splits_.push_back({edge, vertex});
}

bool Noder::crosses(Edge const &a, Edge const &b) const {
    Vec2T<double> const &a0 = grid_.cell(a.from), &a1 = grid_.cell(a.to);
    Vec2T<double> const &b0 = grid_.cell(b.from), &b1 = grid_.cell(b.to);
    double const ax = a1.x - a0.x, ay = a1.y - a0.y;
    if (crossSign(ax, ay, b0.x - a0.x, b0.y - a0.y) * crossSign(ax, ay, b1.x - a0.x, b1.y - a0.y) >= 0)
        return false;
    double const bx = b1.x - b0.x, by = b1.y - b0.y;
    return crossSign(bx, by, a0.x - b0.x, a0.y - b0.y) * crossSign(bx, by, a1.x - b0.x, a1.y - b0.y) < 0;
}

// The vertex at the crossing of the two input edges, which is more exact than that of the
// parts, unless the parts were bent so much that they cross elsewhere.
Index Noder::crossingOf(Edge const &a, Edge const &b) {
    WidePoint point;
    bool const found = lineCrossing(grid_.widePoint(a.sourceFrom), grid_.widePoint(a.sourceTo),
                                    grid_.widePoint(b.sourceFrom), grid_.widePoint(b.sourceTo), point);
    if (found && isNearBoth(point, a, b)) {
        Index const vertex = grid_.addCrossing(point);
        if (!hasEnd(a, vertex) && !hasEnd(b, vertex)) return vertex;
    }
    lineCrossing(wideCell(grid_.cell(a.from)), wideCell(grid_.cell(a.to)), wideCell(grid_.cell(b.from)),
                 wideCell(grid_.cell(b.to)), point);
    return grid_.addCrossing(point);
}

bool Noder::isNearBoth(WidePoint const &point, Edge const &a, Edge const &b) const {
    Vec2T<double> const p(point.x.high, point.y.high);
    Extent const extent = Extent::of(p, p);
    return extent.near(Extent::of(grid_.cell(a.from), grid_.cell(a.to)), snapDistance) &&
           extent.near(Extent::of(grid_.cell(b.from), grid_.cell(b.to)), snapDistance);
}

double Noder::along(Edge const &edge, Index vertex) const {
    Vec2T<double> const &a = grid_.cell(edge.from), &b = grid_.cell(edge.to), &v = grid_.cell(vertex);
    return (v.x - a.x) * (b.x - a.x) + (v.y - a.y) * (b.y - a.y);
}

void Noder::applySplits() {
    std::sort(splits_.begin(), splits_.end(), [this](Split const &s, Split const &t) {
        if (s.edge != t.edge) return s.edge < t.edge;
        double const sAlong = along(edges_[s.edge], s.vertex), tAlong = along(edges_[t.edge], t.vertex);
        if (sAlong != tAlong) return sAlong < tAlong;
        return s.vertex < t.vertex;
    });
    parts_.clear();
    parts_.reserve(edges_.size() + splits_.size());
    Split const *split = splits_.data();
    Split const *const end = split + splits_.size();
    for (std::size_t i = 0; i < edges_.size(); ++i) {
        Split const *const begin = split;
        while (split != end && split->edge == i)
            ++split;
        cut(edges_[i], begin, split, parts_);
    }
    edges_.swap(parts_);
}

// Replaces an edge by its parts. Each must be shorter than the whole, or the rounds would
// not end; a vertex that breaks this waits for the next round.
void Noder::cut(Edge const &edge, Split const *begin, Split const *end, std::vector<Edge> &result) const {
    result.push_back(edge);
    if (begin == end) return;
    result.back().fresh = true;
    double const whole = squaredLength(edge.from, edge.to);
    for (; begin != end; ++begin) {
        Index const from = result.back().from;
        if (begin->vertex == from || squaredLength(from, begin->vertex) >= whole) continue;
        result.back().to = begin->vertex;
        result.push_back(edge);
        result.back().from = begin->vertex;
        result.back().fresh = true;
    }
}

double Noder::squaredLength(Index a, Index b) const {
    double const dx = grid_.cell(b).x - grid_.cell(a).x, dy = grid_.cell(b).y - grid_.cell(a).y;
    return dx * dx + dy * dy;
}

// Adds up the windings of edges between the same vertices, then drops those that changed
// nothing. All in one pass with a hash table from the two ends to the first such edge.
void Noder::joinEqualEdges() {
    std::size_t slots = 16;
    while (slots < 2 * edges_.size())
        slots *= 2;
    table_.assign(slots, none);
    std::size_t kept = 0;
    for (std::size_t i = 0; i < edges_.size(); ++i) {
        Edge const &edge = edges_[i];
        std::uint64_t const low = std::min(edge.from, edge.to), high = std::max(edge.from, edge.to);
        std::uint64_t hash = (low * 0x9e3779b97f4a7c15u) ^ (high * 0xbf58476d1ce4e5b9u);
        hash ^= hash >> 31;
        std::size_t slot = static_cast<std::size_t>(hash) & (slots - 1);
        for (; table_[slot] != none; slot = (slot + 1) & (slots - 1)) {
            Edge const &other = edges_[table_[slot]];
            if (std::min(other.from, other.to) == low && std::max(other.from, other.to) == high) break;
        }
        if (table_[slot] == none) {
            table_[slot] = static_cast<Index>(kept);
            if (kept != i) edges_[kept] = edge;
            ++kept;
            continue;
        }
        Edge &other = edges_[table_[slot]];
        int const sign = other.from == edge.from ? 1 : -1;
        other.windings[0] += sign * edge.windings[0];
        other.windings[1] += sign * edge.windings[1];
    }
    edges_.resize(kept);
    auto const cancelled = [](Edge const &edge) { return edge.windings[0] == 0 && edge.windings[1] == 0; };
    edges_.erase(std::remove_if(edges_.begin(), edges_.end(), cancelled), edges_.end());
}

} // namespace

void makePlaneGraph(Grid &grid, std::vector<Edge> &edges, NodingLimits const &limits) {
    Noder(grid, edges, limits).run();
}

} // namespace Clip
} // namespace Geometry
