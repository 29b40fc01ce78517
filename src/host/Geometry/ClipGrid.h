// The integer grid of the clipping engine and its table of vertices.
#pragma once

#include "host/Geometry/Bound2D.h"
#include "host/Geometry/ClipPredicates.h"
#include "host/Geometry/Vec2T.h"

#include <cstdint>
#include <vector>

namespace Geometry {
namespace Clip {

using Index = std::uint32_t;
constexpr Index none = 0xffffffffu;

// Where the cells of a grid over a bound lie: 2^49 of them in its longer direction, so that
// differences are exact and products fit the predicates.
class Frame {
public:
    // `bound` must be valid.
    explicit Frame(Bound2D const &bound);

    Vec2T<double> const &origin() const { return origin_; }

    // Cells a unit, a power of two.
    double scale() const { return scale_; }

    // The cell of a point: whole numbers.
    Vec2T<double> cellOf(double x, double y) const {
        return {rounded((x - origin_.x) * scale_), rounded((y - origin_.y) * scale_)};
    }

    // Rounds to a whole number; exact for all numbers below 2^51.
    static double rounded(double value) {
        constexpr double shift = 6755399441055744.0; // 1.5 * 2^52
        return (value + shift) - shift;
    }

private:
    Vec2T<double> origin_;
    double scale_;
};

// A grid over the bound of one clipping. Its cells are far below what the input can mean,
// and the table gives each taken cell back its double, so the grid never moves a vertex.
// The first vertex in a cell keeps it.
class Grid {
public:
    // Room is made for `expected` vertices.
    Grid(Frame const &frame, std::size_t expected);

    // The vertex at the cell of this input point, made when it is not there yet.
    Index addPoint(double x, double y);

    // The vertex at the cell of a computed point in grid coordinates.
    Index addCrossing(WidePoint const &point);

    std::size_t size() const { return cells_.size(); }

    // Cell of a vertex: whole numbers.
    Vec2T<double> const &cell(Index vertex) const { return cells_[vertex]; }

    // The double coordinates of a vertex.
    Vec2T<double> const &point(Index vertex) const { return points_[vertex]; }

    // The double coordinates in grid units, without the rounding to a cell.
    WidePoint widePoint(Index vertex) const;

private:
    Index findOrAdd(Vec2T<double> const &cell, Vec2T<double> const &point);
    void grow();
    std::size_t slotOf(Vec2T<double> const &cell) const;

    Frame frame_;
    std::vector<Vec2T<double>> cells_;
    std::vector<Vec2T<double>> points_;
    std::vector<Index> slots_; // open addressing, a power of two in size, at most half full
};

} // namespace Clip
} // namespace Geometry
