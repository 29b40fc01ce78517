// Packing of boxes by tiles: slices along x, each cut along y.
#include "model/BoundTree.h"

#include <cmath>

namespace EDA {

namespace {

double middleX(Geometry::Bound2D const &bound) { return 0.5 * bound.getXLow() + 0.5 * bound.getXHigh(); }
double middleY(Geometry::Bound2D const &bound) { return 0.5 * bound.getYLow() + 0.5 * bound.getYHigh(); }

} // namespace

BoundTree::BoundTree(std::vector<Geometry::Bound2D> const &bounds) {
    if (bounds.empty()) return;
    Level leaves;
    leaves.reserve(bounds.size());
    for (std::size_t i = 0; i < bounds.size(); ++i)
        leaves.push_back({bounds[i], static_cast<std::uint32_t>(i)});
    auto const lessX = [](Node const &a, Node const &b) { return middleX(a.bound) < middleX(b.bound); };
    auto const lessY = [](Node const &a, Node const &b) { return middleY(a.bound) < middleY(b.bound); };
    std::sort(leaves.begin(), leaves.end(), lessX);
    auto const perSlice = static_cast<std::ptrdiff_t>(
        std::ceil(std::sqrt(static_cast<double>(bounds.size()) * static_cast<double>(fanOut))));
    for (auto slice = leaves.begin(); slice != leaves.end();) {
        auto const end = slice + std::min(perSlice, leaves.end() - slice);
        std::sort(slice, end, lessY);
        slice = end;
    }
    levels_.push_back(std::move(leaves));
    while (levels_.back().size() > fanOut) {
        Level const &below = levels_.back();
        Level level;
        for (std::size_t first = 0; first < below.size(); first += fanOut) {
            Node node{Geometry::Bound2D(), static_cast<std::uint32_t>(first)};
            for (std::size_t i = first; i < std::min(first + fanOut, below.size()); ++i) {
                node.bound.unite(below[i].bound);
            }
            level.push_back(node);
        }
        levels_.push_back(std::move(level));
    }
}

} // namespace EDA
