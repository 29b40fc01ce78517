// Walking along the border of the result, telling holes from outers, and ordering both.
#include "host/Geometry/ClipTracer.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace Geometry {
namespace Clip {

namespace {

constexpr double sliverWidth = 4.0; // cells

// y before x, the order of contours and the choice of their first vertex.
bool isLowerThan(Vec2T<double> const &a, Vec2T<double> const &b) {
    return a.y != b.y ? a.y < b.y : a.x < b.x;
}
bool isLeftOf(Vec2T<double> const &a, Vec2T<double> const &b) { return a.x != b.x ? a.x < b.x : a.y < b.y; }

struct Ring {
    std::vector<Index> edges; // in order; each leads from its start vertex to that of the next
    bool hole = false;
    bool sliver = false; // not part of the result, but a way for a hole to find its outer
    Index outer = none;  // for a hole the ring around it
};

class Tracer {
public:
    Tracer(Grid const &grid, std::vector<Edge> const &edges, std::vector<Side> const &sides)
        : grid_(grid), edges_(edges), sides_(sides) {}
    std::vector<Contour> run();

private:
    Index startOf(Index edge) const { return sides_[edge].insideAbove ? edges_[edge].from : edges_[edge].to; }
    Index endOf(Index edge) const { return sides_[edge].insideAbove ? edges_[edge].to : edges_[edge].from; }
    Vec2T<double> const &startCell(Index edge) const { return grid_.cell(startOf(edge)); }
    Vec2T<double> const &endCell(Index edge) const { return grid_.cell(endOf(edge)); }

    void groupEdges();
    void traceFrom(Index first);
    Index following(Index edge) const;
    bool turnsSooner(Index edge, Index candidate, Index best) const;
    int turnRank(Index edge, Index candidate) const;
    bool boundsHole(std::vector<Index> const &ring) const;
    void addHoleLoops(std::vector<Index> const &ring);
    void addRing(std::vector<Index> edges, bool hole);
    bool isSliver(std::vector<Index> const &ring) const;
    void startLowest(std::vector<Index> &ring) const;
    void findOuters();
    Index floorOf(Ring const &ring) const;
    bool comesFirst(Index a, Index b) const;
    bool isWanted(Ring const &ring) const;
    std::vector<Contour> inOrder() const;
    Contour contourOf(Ring const &ring) const;

    Grid const &grid_;
    std::vector<Edge> const &edges_;
    std::vector<Side> const &sides_;
    std::vector<Index> begins_;  // for each vertex the first of its edges in `leaving_`
    std::vector<Index> leaving_; // bounding edges by start vertex
    std::vector<Index> walk_;    // the edges of `traceFrom`
    std::vector<Index> ringOf_;  // for each edge its ring
    std::vector<char> visited_;
    std::vector<Index> place_; // for each vertex its place in the path of `addHoleLoops`, else none
    std::vector<Ring> rings_;
};

std::vector<Contour> Tracer::run() {
    groupEdges();
    visited_.assign(edges_.size(), 0);
    ringOf_.assign(edges_.size(), none);
    walk_.reserve(leaving_.size());
    place_.assign(grid_.size(), none);
    for (std::size_t i = 0; i < edges_.size(); ++i)
        if (sides_[i].bounds && !visited_[i]) traceFrom(static_cast<Index>(i));
    findOuters();
    return inOrder();
}

void Tracer::groupEdges() {
    begins_.assign(grid_.size() + 1, 0);
    for (std::size_t i = 0; i < edges_.size(); ++i)
        if (sides_[i].bounds) ++begins_[startOf(static_cast<Index>(i))];
    for (std::size_t i = 1; i < begins_.size(); ++i)
        begins_[i] += begins_[i - 1];
    leaving_.resize(begins_.back());
    for (std::size_t i = edges_.size(); i-- > 0;) // each end sinks to the begin of its vertex
        if (sides_[i].bounds) leaving_[--begins_[startOf(static_cast<Index>(i))]] = static_cast<Index>(i);
}

void Tracer::traceFrom(Index first) {
    walk_.clear();
    for (Index edge = first; edge != none && !visited_[edge]; edge = following(edge)) {
        visited_[edge] = 1;
        walk_.push_back(edge);
    }
    if (boundsHole(walk_))
        addHoleLoops(walk_);
    else
        addRing(std::vector<Index>(walk_), false);
}

// The edge that goes on around the same corner of the result: the first one met when
// turning clockwise from the way back. So regions that only touch at the vertex part there.
Index Tracer::following(Index edge) const {
    Index const vertex = endOf(edge);
    Index best = begins_[vertex] < begins_[vertex + 1] ? leaving_[begins_[vertex]] : none;
    for (Index i = begins_[vertex] + 1; i < begins_[vertex + 1]; ++i)
        if (turnsSooner(edge, leaving_[i], best)) best = leaving_[i];
    return best;
}

// In which part of the clockwise turn from the way back the candidate lies: 0 within the
// first half turn, 1 straight ahead, 2 within the second half turn, 3 on the way back.
int Tracer::turnRank(Index edge, Index candidate) const {
    Vec2T<double> const &v = endCell(edge), &u = startCell(edge), &w = endCell(candidate);
    int const sign = crossSign(u.x - v.x, u.y - v.y, w.x - v.x, w.y - v.y);
    if (sign != 0) return sign < 0 ? 0 : 2;
    return (u.x - v.x) * (w.x - v.x) + (u.y - v.y) * (w.y - v.y) < 0.0 ? 1 : 3;
}

bool Tracer::turnsSooner(Index edge, Index candidate, Index best) const {
    int const rank = turnRank(edge, candidate), bestRank = turnRank(edge, best);
    if (rank != bestRank) return rank < bestRank;
    Vec2T<double> const &v = endCell(edge), &a = endCell(candidate), &b = endCell(best);
    return crossSign(a.x - v.x, a.y - v.y, b.x - v.x, b.y - v.y) < 0;
}

// A ring bounds a hole when the result lies below its lowest vertex: there one of its
// corners turns right. Exact, unlike an area.
bool Tracer::boundsHole(std::vector<Index> const &ring) const {
    auto const lower = [this](Index a, Index b) { return isLowerThan(startCell(a), startCell(b)); };
    Index const lowest = startOf(*std::min_element(ring.begin(), ring.end(), lower));
    for (std::size_t i = 0; i < ring.size(); ++i) {
        if (startOf(ring[i]) != lowest) continue;
        Vec2T<double> const &v = startCell(ring[i]), &w = endCell(ring[i]);
        Vec2T<double> const &u = startCell(ring[(i + ring.size() - 1) % ring.size()]);
        if (crossSign(v.x - u.x, v.y - u.y, w.x - v.x, w.y - v.y) < 0) return true;
    }
    return false;
}

// Holes that touch each other at vertices were walked around in one go; cut them apart.
void Tracer::addHoleLoops(std::vector<Index> const &ring) {
    std::vector<Index> path;
    for (Index edge : ring) {
        place_[startOf(edge)] = static_cast<Index>(path.size());
        path.push_back(edge);
        Index const back = place_[endOf(edge)];
        if (back == none) continue;
        auto const begin = path.begin() + static_cast<std::ptrdiff_t>(back);
        std::vector<Index> loop(begin, path.end());
        path.erase(begin, path.end());
        for (Index part : loop)
            place_[startOf(part)] = none;
        addRing(std::move(loop), true);
    }
    for (Index part : path)
        place_[startOf(part)] = none;
}

void Tracer::addRing(std::vector<Index> edges, bool hole) {
    bool const sliver = isSliver(edges);
    startLowest(edges);
    for (Index edge : edges)
        ringOf_[edge] = static_cast<Index>(rings_.size());
    rings_.push_back({std::move(edges), hole, sliver, none});
}

// Rounding leaves rings of a few cells in width where edges nearly fall together; they
// mean nothing, neither as solid nor as hole.
bool Tracer::isSliver(std::vector<Index> const &ring) const {
    Vec2T<double> const &origin = startCell(ring.front());
    double twice = 0.0, reach = 0.0;
    for (Index edge : ring) {
        Vec2T<double> const &a = startCell(edge), &b = endCell(edge);
        twice += (a.x - origin.x) * (b.y - origin.y) - (b.x - origin.x) * (a.y - origin.y);
        reach = std::max(reach, std::max(std::abs(b.x - origin.x), std::abs(b.y - origin.y)));
    }
    return 0.5 * std::abs(twice) <= sliverWidth * reach;
}

void Tracer::startLowest(std::vector<Index> &ring) const {
    auto const lower = [this](Index a, Index b) {
        if (startOf(a) != startOf(b)) return isLowerThan(startCell(a), startCell(b));
        return isLowerThan(endCell(a), endCell(b));
    };
    std::rotate(ring.begin(), std::min_element(ring.begin(), ring.end(), lower), ring.end());
}

// The bounding edge below the leftmost vertex of a hole.
Index Tracer::floorOf(Ring const &ring) const {
    std::size_t leftmost = 0;
    for (std::size_t i = 1; i < ring.edges.size(); ++i)
        if (isLeftOf(startCell(ring.edges[i]), startCell(ring.edges[leftmost]))) leftmost = i;
    Index const leaving = ring.edges[leftmost];
    Index const arriving = ring.edges[(leftmost + ring.edges.size() - 1) % ring.edges.size()];
    Vec2T<double> const &v = startCell(leaving), &a = endCell(leaving), &b = startCell(arriving);
    bool const leavingIsLower = crossSign(a.x - v.x, a.y - v.y, b.x - v.x, b.y - v.y) > 0;
    return sides_[leavingIsLower ? leaving : arriving].floor;
}

// The floor of a hole belongs to the outer around it or to another hole within that one.
void Tracer::findOuters() {
    std::vector<Index> chain;
    for (std::size_t i = 0; i < rings_.size(); ++i) {
        chain.clear();
        auto ring = static_cast<Index>(i);
        while (ring != none && rings_[ring].hole && rings_[ring].outer == none &&
               chain.size() <= rings_.size()) {
            chain.push_back(ring);
            Index const floor = floorOf(rings_[ring]);
            ring = floor == none ? none : ringOf_[floor];
        }
        Index const outer = ring != none && rings_[ring].hole ? rings_[ring].outer : ring;
        for (Index link : chain)
            rings_[link].outer = outer;
    }
}

bool Tracer::comesFirst(Index a, Index b) const {
    Index const first = rings_[a].edges.front(), second = rings_[b].edges.front();
    if (startOf(first) != startOf(second)) return isLowerThan(startCell(first), startCell(second));
    return isLowerThan(endCell(first), endCell(second));
}

bool Tracer::isWanted(Ring const &ring) const {
    if (ring.sliver) return false;
    return !ring.hole || (ring.outer != none && !rings_[ring.outer].sliver);
}

std::vector<Contour> Tracer::inOrder() const {
    std::vector<Index> order;
    for (std::size_t i = 0; i < rings_.size(); ++i)
        if (isWanted(rings_[i])) order.push_back(static_cast<Index>(i));
    std::sort(order.begin(), order.end(), [this](Index a, Index b) {
        Index const aOuter = rings_[a].hole ? rings_[a].outer : a;
        Index const bOuter = rings_[b].hole ? rings_[b].outer : b;
        if (aOuter != bOuter) return comesFirst(aOuter, bOuter);
        if (rings_[a].hole != rings_[b].hole) return !rings_[a].hole;
        return comesFirst(a, b);
    });
    std::vector<Contour> result;
    result.reserve(order.size());
    for (Index ring : order)
        result.push_back(contourOf(rings_[ring]));
    return result;
}

Contour Tracer::contourOf(Ring const &ring) const {
    Contour contour;
    contour.hole = ring.hole;
    contour.points.reserve(ring.edges.size());
    for (Index edge : ring.edges)
        contour.points.push_back(grid_.point(startOf(edge)));
    return contour;
}

} // namespace

std::vector<Contour> traceContours(Grid const &grid, std::vector<Edge> const &edges,
                                   std::vector<Side> const &sides) {
    return Tracer(grid, edges, sides).run();
}

} // namespace Clip
} // namespace Geometry
