// Outlines inside an outline of many edges.
#include "model/Enclosure.h"

#include "model/BoundTree.h"

#include <algorithm>

namespace EDA {

namespace {

// From so many edges on an index pays.
constexpr std::size_t manyEdges = 128;

} // namespace

bool encloses(EDAOutline const &outer, EDAOutline const &inner, std::optional<EdgeIndex> &edges) {
    EDAOutline::PointList const &edge = outer.getPoints(true);
    if (edge.size() < manyEdges) return outer.enclosesOutline(inner);
    Geometry::Bound2D const &bound = outer.getBound();
    if (!bound.contains(inner.getBound())) return false;
    if (!edges) edges.emplace(edge);
    EDAOutline::PointList const &points = inner.getPoints(true);
    return points.size() >= 3 && std::all_of(points.begin(), points.end(), [&](auto const &point) {
               return bound.contains(point.first, point.second) && edges->contains(point.first, point.second);
           });
}

void giveEnclosedHoles(std::vector<EDAOutline> &outlines, std::vector<EDAOutline> const &holes,
                       std::function<bool(EDAOutline const &)> const &take) {
    if (outlines.empty() || holes.empty()) return;
    std::vector<Geometry::Bound2D> bounds;
    std::vector<Enclosure> enclosures(outlines.begin(), outlines.end());
    for (EDAOutline const &outline : outlines)
        bounds.push_back(outline.getBound());
    BoundTree const tree(bounds);
    for (EDAOutline const &hole : holes) {
        Geometry::Bound2D const &inner = hole.getBound();
        bool const isRefused =
            tree.any([&inner](Geometry::Bound2D const &box) { return box.contains(inner); },
                     [&](std::size_t number) {
                         if (!enclosures[number].encloses(hole)) return false;
                         if (!take(hole)) return true;
                         outlines[number].addInternalOutline(hole);
                         return false;
                     });
        if (isRefused) return;
    }
}

} // namespace EDA
