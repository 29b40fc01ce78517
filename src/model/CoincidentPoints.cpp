// Finding repeated places of an outline through a grid of cells little wider than the tolerance.
#include "model/CoincidentPoints.h"

#include <algorithm>
#include <cmath>
#include <tuple>

namespace EDA {

namespace {

using Points = std::vector<EDAOutline::EDAPoint>;

// A coordinate as the number of its grid line. Two coordinates that are equal within the
// tolerance have the same number, or numbers 1 apart: cells are two tolerances wide, so that
// no rounding takes them 2 apart.
double gridLine(double value) {
    double const quotient = value / (2.0 * EDAOutline::ptTol);
    // The most extreme coordinates have no number; there, equal means identical.
    return std::isfinite(quotient) ? std::floor(quotient) : value;
}

struct Entry {
    double column;
    double row;
    std::size_t index;
};

using EntryIterator = std::vector<Entry>::const_iterator;

std::vector<Entry> sortedEntries(Points const &points) {
    std::vector<Entry> entries;
    entries.reserve(points.size());
    for (std::size_t i = 1; i < points.size(); ++i)
        if (std::isfinite(points[i].x) && std::isfinite(points[i].y))
            entries.push_back({gridLine(points[i].x), gridLine(points[i].y), i});
    std::sort(entries.begin(), entries.end(), [](Entry const &a, Entry const &b) {
        return std::tie(a.column, a.row, a.index) < std::tie(b.column, b.row, b.index);
    });
    return entries;
}

struct Cell {
    EntryIterator begin;
    EntryIterator end;
};

std::vector<Cell> cellsOf(std::vector<Entry> const &entries) {
    std::vector<Cell> cells;
    for (auto begin = entries.begin(); begin != entries.end();) {
        auto end = begin;
        while (end != entries.end() && end->column == begin->column && end->row == begin->row)
            ++end;
        cells.push_back({begin, end});
        begin = end;
    }
    return cells;
}

// Looks for earlier answers to the points of `cell` among those of `other`. The points of a cell
// fall into a few groups of equal ones, and a search ends at the next point of its own group:
// so all searches together pass over `other` only a few times.
void searchCell(Points const &points, Cell const &cell, Cell const &other, std::vector<std::size_t> &next) {
    auto start = other.begin;
    for (auto entry = cell.begin; entry != cell.end; ++entry) {
        while (start != other.end && start->index <= entry->index)
            ++start;
        for (auto later = start; later != other.end && later->index < next[entry->index]; ++later)
            if (points[later->index] == points[entry->index]) next[entry->index] = later->index;
    }
}

// Calls `visit(cell, neighbour)` for each occupied cell and each of its occupied neighbours whose
// column lies `step` further on and whose row is at most 1 away.
template <typename Visit> void forNeighbours(std::vector<Cell> const &cells, double step, Visit visit) {
    auto first = cells.begin();
    for (Cell const &cell : cells) {
        double const column = cell.begin->column + step;
        double const row = cell.begin->row;
        auto const before = [&](Cell const &other) {
            return std::tie(other.begin->column, other.begin->row) < std::make_tuple(column, row - 1.0);
        };
        while (first != cells.end() && before(*first))
            ++first;
        for (auto other = first;
             other != cells.end() && other->begin->column == column && other->begin->row <= row + 1.0;
             ++other)
            visit(cell, *other);
    }
}

} // namespace

std::vector<std::size_t> nextCoincidentPoints(Points const &points) {
    std::vector<std::size_t> next(points.size(), noPoint);
    if (!(EDAOutline::ptTol > 0.0)) return next; // then nothing equals anything
    std::vector<Entry> const entries = sortedEntries(points);
    std::vector<Cell> const cells = cellsOf(entries);
    for (Cell const &cell : cells)
        searchCell(points, cell, cell, next); // first, as this cuts off the other searches
    for (double step : {-1.0, 0.0, 1.0})
        forNeighbours(cells, step, [&](Cell const &cell, Cell const &other) {
            if (cell.begin != other.begin) searchCell(points, cell, other, next);
        });
    return next;
}

} // namespace EDA
