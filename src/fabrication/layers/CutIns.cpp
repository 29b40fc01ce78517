// Holes joined to their outer ring by level cuts.
#include "fabrication/layers/CutIns.h"

#include <algorithm>
#include <cmath>
#include <iterator>

namespace EDA::Fabrication {

namespace {

std::size_t leftmost(Ring const &ring) {
    auto const found = std::min_element(ring.begin(), ring.end(), [](Point const &a, Point const &b) {
        return a.x < b.x || (a.x == b.x && a.y < b.y);
    });
    return static_cast<std::size_t>(found - ring.begin());
}

// The edge that is met first on the way to the left, by its first vertex; its size where there is none.
std::size_t edgeToTheLeft(Ring const &ring, Point const &from, Point &met) {
    std::size_t found = ring.size();
    for (std::size_t i = 0; i < ring.size(); ++i) {
        Point const &a = ring[i], &b = ring[i + 1 < ring.size() ? i + 1 : 0];
        if ((a.y <= from.y) == (b.y <= from.y)) continue;
        double const x = a.x + (from.y - a.y) / (b.y - a.y) * (b.x - a.x);
        if (x > from.x || (found != ring.size() && x <= met.x)) continue;
        found = i;
        met = {x, from.y};
    }
    return found;
}

void joinHole(Ring &ring, Ring const &hole) {
    std::size_t const first = leftmost(hole);
    Point met;
    std::size_t const edge = edgeToTheLeft(ring, hole[first], met);
    if (edge == ring.size()) return;
    Ring inserted;
    inserted.reserve(hole.size() + 3);
    if (ring[edge] != met) inserted.push_back(met);
    for (std::size_t i = 0; i <= hole.size(); ++i)
        inserted.push_back(hole[(first + i) % hole.size()]);
    inserted.push_back(met);
    ring.insert(ring.begin() + static_cast<std::ptrdiff_t>(edge) + 1, inserted.begin(), inserted.end());
}

} // namespace

Ring withCutIns(Piece const &piece) {
    std::vector<Ring> holes;
    std::copy_if(piece.holes.begin(), piece.holes.end(), std::back_inserter(holes),
                 [](Ring const &hole) { return hole.size() >= 3; });
    // What lies to the left of a hole is part of the ring by then. Holes times vertices is quadratic, but
    // shapes have few holes, and each shape is done once.
    std::sort(holes.begin(), holes.end(),
              [](Ring const &a, Ring const &b) { return a[leftmost(a)].x < b[leftmost(b)].x; });
    Ring ring = piece.outer;
    for (Ring const &hole : holes)
        joinHole(ring, hole);
    return ring;
}

} // namespace EDA::Fabrication
