// Snapping to the integer grid and back by a hash table.
#include "host/Geometry/ClipGrid.h"

#include <stdexcept>

namespace Geometry {
namespace Clip {

namespace {

constexpr int gridBits = 48;
constexpr int doubleBits = 53;
constexpr int maxScaleExponent = 1000; // beyond it the scale itself would overflow

double halfSize(double low, double high, double middle) { return std::max(high - middle, middle - low); }

// As fine as the predicates allow, but no finer than the doubles themselves far from
// (0, 0), where their rounding would show as slivers.
double scaleFor(double size, double farthest) {
    if (!(size > 0.0)) return 1.0;
    int const exponent = std::min(gridBits - 1 - std::ilogb(size), doubleBits - 1 - std::ilogb(farthest));
    return std::ldexp(1.0, std::min(exponent, maxScaleExponent));
}

double farthestOf(Bound2D const &bound) {
    return std::max(std::max(std::abs(bound.getXLow()), std::abs(bound.getXHigh())),
                    std::max(std::abs(bound.getYLow()), std::abs(bound.getYHigh())));
}

} // namespace

Frame::Frame(Bound2D const &bound)
    : origin_(0.5 * bound.getXLow() + 0.5 * bound.getXHigh(), 0.5 * bound.getYLow() + 0.5 * bound.getYHigh()),
      scale_(scaleFor(std::max(halfSize(bound.getXLow(), bound.getXHigh(), origin_.x),
                               halfSize(bound.getYLow(), bound.getYHigh(), origin_.y)),
                      farthestOf(bound))) {}

Grid::Grid(Frame const &frame, std::size_t expected) : frame_(frame) {
    cells_.reserve(expected);
    points_.reserve(expected);
    std::size_t slots = 16;
    while (slots < 2 * expected)
        slots *= 2;
    slots_.assign(slots, none);
}

Index Grid::addPoint(double x, double y) { return findOrAdd(frame_.cellOf(x, y), {x, y}); }

Index Grid::addCrossing(WidePoint const &point) {
    Vec2T<double> const cell(Frame::rounded(point.x.high), Frame::rounded(point.y.high));
    Wide const x = add(scaled(point.x, 1.0 / frame_.scale()), {frame_.origin().x, 0.0});
    Wide const y = add(scaled(point.y, 1.0 / frame_.scale()), {frame_.origin().y, 0.0});
    return findOrAdd(cell, {x.high + 0.0, y.high + 0.0});
}

WidePoint Grid::widePoint(Index vertex) const {
    Vec2T<double> const &point = points_[vertex];
    return {scaled(difference(point.x, frame_.origin().x), frame_.scale()),
            scaled(difference(point.y, frame_.origin().y), frame_.scale())};
}

std::size_t Grid::slotOf(Vec2T<double> const &cell) const {
    auto const x = static_cast<std::uint64_t>(static_cast<std::int64_t>(cell.x));
    auto const y = static_cast<std::uint64_t>(static_cast<std::int64_t>(cell.y));
    std::uint64_t hash = x * 0x9e3779b97f4a7c15u + (y ^ (y >> 29)) * 0xbf58476d1ce4e5b9u;
    hash = (hash ^ (hash >> 32)) * 0x94d049bb133111ebu;
    return static_cast<std::size_t>(hash ^ (hash >> 29)) & (slots_.size() - 1);
}

Index Grid::findOrAdd(Vec2T<double> const &cell, Vec2T<double> const &point) {
    std::size_t slot = slotOf(cell);
    while (slots_[slot] != none) {
        Vec2T<double> const &taken = cells_[slots_[slot]];
        if (taken.x == cell.x && taken.y == cell.y) return slots_[slot];
        slot = (slot + 1) & (slots_.size() - 1);
    }
    if (cells_.size() >= none - 1) throw std::length_error("too many vertices to clip");
    auto const vertex = static_cast<Index>(cells_.size());
    slots_[slot] = vertex;
    cells_.push_back(cell);
    points_.push_back(point);
    if (2 * cells_.size() > slots_.size()) grow();
    return vertex;
}

void Grid::grow() {
    slots_.assign(2 * slots_.size(), none);
    for (std::size_t vertex = 0; vertex < cells_.size(); ++vertex) {
        std::size_t slot = slotOf(cells_[vertex]);
        while (slots_[slot] != none)
            slot = (slot + 1) & (slots_.size() - 1);
        slots_[slot] = static_cast<Index>(vertex);
    }
}

} // namespace Clip
} // namespace Geometry
