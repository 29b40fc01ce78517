// The sweep from left to right that counts windings on both sides of every edge.
#include "host/Geometry/ClipSweep.h"

#include "host/Geometry/ClipStatus.h"

#include <algorithm>
#include <utility>

namespace Geometry {
namespace Clip {

namespace {

bool isLeftOf(Vec2T<double> const &a, Vec2T<double> const &b) { return a.x != b.x ? a.x < b.x : a.y < b.y; }

struct Windings {
    int above[2];
};

class Sweep {
public:
    Sweep(Grid const &grid, std::vector<Edge> &edges, Inside const &inside)
        : grid_(grid), edges_(edges), inside_(inside), sides_(edges.size()), windings_(edges.size()) {}
    std::vector<Side> run();

private:
    void turnEdges();
    void sortVertices();
    void groupEdges();
    void visitVertex(Index vertex);
    void removeEnding(Index vertex, Status::Position &position);
    void sortBySlope(Index *begin, Index *end) const;
    void insertEdge(Index edge, Status::Position &position);
    void countWindings(Index edge, Index below);
    bool isBelow(Index edge, Index vertex) const;

    Grid const &grid_;
    std::vector<Edge> &edges_;
    Inside const &inside_;
    std::vector<Side> sides_;
    std::vector<Windings> windings_;
    std::vector<Index> order_;    // vertices from left to right
    std::vector<Index> begins_;   // for each vertex the first of its edges to the right in `leaving_`
    std::vector<Index> leaving_;  // edges by left vertex
    std::vector<Index> arriving_; // for each vertex the number of edges that end in it
    Status status_;
};

std::vector<Side> Sweep::run() {
    turnEdges();
    groupEdges();
    sortVertices();
    for (Index vertex : order_)
        visitVertex(vertex);
    return std::move(sides_);
}

void Sweep::turnEdges() {
    for (Edge &edge : edges_) {
        if (isLeftOf(grid_.cell(edge.from), grid_.cell(edge.to))) continue;
        std::swap(edge.from, edge.to);
        edge.windings[0] = -edge.windings[0];
        edge.windings[1] = -edge.windings[1];
    }
}

void Sweep::groupEdges() {
    begins_.assign(grid_.size() + 1, 0);
    arriving_.assign(grid_.size(), 0);
    for (Edge const &edge : edges_) {
        ++begins_[edge.from];
        ++arriving_[edge.to];
    }
    for (std::size_t i = 1; i < begins_.size(); ++i)
        begins_[i] += begins_[i - 1];
    leaving_.resize(edges_.size());
    for (std::size_t i = edges_.size(); i-- > 0;) // each end sinks to the begin of its vertex
        leaving_[--begins_[edges_[i].from]] = static_cast<Index>(i);
}

void Sweep::sortVertices() {
    struct Place {
        Vec2T<double> cell;
        Index vertex;
    };
    std::vector<Place> places;
    places.reserve(grid_.size());
    for (std::size_t i = 0; i < grid_.size(); ++i) {
        auto const vertex = static_cast<Index>(i);
        if (arriving_[i] > 0 || begins_[i] != begins_[i + 1]) places.push_back({grid_.cell(vertex), vertex});
    }
    std::sort(places.begin(), places.end(),
              [](Place const &a, Place const &b) { return isLeftOf(a.cell, b.cell); });
    order_.reserve(places.size());
    for (Place const &place : places)
        order_.push_back(place.vertex);
}

bool Sweep::isBelow(Index edge, Index vertex) const {
    Edge const &e = edges_[edge];
    if (e.to == vertex) return false;
    Vec2T<double> const &a = grid_.cell(e.from), &b = grid_.cell(e.to), &v = grid_.cell(vertex);
    return crossSign(b.x - a.x, b.y - a.y, v.x - a.x, v.y - a.y) > 0;
}

void Sweep::visitVertex(Index vertex) {
    Status::Position position = status_.find([this, vertex](Index edge) { return isBelow(edge, vertex); });
    Index *const begin = leaving_.data() + begins_[vertex];
    Index *const end = leaving_.data() + begins_[vertex + 1];
    bool const passes = arriving_[vertex] == 1 && end - begin == 1;
    if (passes && !status_.atEnd(position) && edges_[status_.at(position)].to == vertex) {
        countWindings(*begin, status_.before(position));
        status_.replace(position, *begin);
        return;
    }
    if (arriving_[vertex] > 0) removeEnding(vertex, position);
    if (end - begin > 1) sortBySlope(begin, end);
    for (Index *edge = begin; edge != end; ++edge)
        insertEdge(*edge, position);
}

// In a plane graph the ending edges lie together at the position. Where the noding had to
// leave a crossing of a cell or two, the order may be off there; none may stay behind.
void Sweep::removeEnding(Index vertex, Status::Position &position) {
    Index left = arriving_[vertex];
    while (left > 0 && !status_.atEnd(position) && edges_[status_.at(position)].to == vertex) {
        status_.erase(position);
        --left;
    }
    if (left == 0) return;
    for (std::size_t i = 0; i < edges_.size(); ++i)
        if (edges_[i].to == vertex) status_.eraseAnywhere(static_cast<Index>(i));
    position = status_.find([this, vertex](Index edge) { return isBelow(edge, vertex); });
}

void Sweep::sortBySlope(Index *begin, Index *end) const {
    std::sort(begin, end, [this](Index first, Index second) {
        Vec2T<double> const &v = grid_.cell(edges_[first].from);
        Vec2T<double> const &a = grid_.cell(edges_[first].to), &b = grid_.cell(edges_[second].to);
        return crossSign(a.x - v.x, a.y - v.y, b.x - v.x, b.y - v.y) > 0;
    });
}

void Sweep::insertEdge(Index edge, Status::Position &position) {
    countWindings(edge, status_.before(position));
    status_.insert(position, edge);
}

void Sweep::countWindings(Index edge, Index below) {
    int under[2] = {0, 0};
    Side &side = sides_[edge];
    if (below != none) {
        under[0] = windings_[below].above[0];
        under[1] = windings_[below].above[1];
        side.floor = sides_[below].bounds ? below : sides_[below].floor;
    }
    int *const above = windings_[edge].above;
    above[0] = under[0] + edges_[edge].windings[0];
    above[1] = under[1] + edges_[edge].windings[1];
    side.insideAbove = inside_(above);
    side.bounds = side.insideAbove != inside_(under);
}

} // namespace

std::vector<Side> findSides(Grid const &grid, std::vector<Edge> &edges, Inside const &inside) {
    return Sweep(grid, edges, inside).run();
}

} // namespace Clip
} // namespace Geometry
