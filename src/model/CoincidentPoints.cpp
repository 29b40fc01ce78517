// Finding repeated places of an outline through a grid of cells little wider than the tolerance.
#include "model/CoincidentPoints.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <tuple>

namespace EDA {

namespace {

using Place = OutlinePoints::Place;
using Points = EDAOutline::PointList;

bool isSame(Place const &a, Place const &b) {
    return std::abs(a.first - b.first) < EDAOutline::ptTol &&
           std::abs(a.second - b.second) < EDAOutline::ptTol;
}

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
        if (std::isfinite(points[i].first) && std::isfinite(points[i].second))
            entries.push_back({gridLine(points[i].first), gridLine(points[i].second), i});
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
            if (isSame(points[later->index], points[entry->index])) next[entry->index] = later->index;
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

constexpr std::size_t mostOfQuickLook = 128;
constexpr std::size_t mostInLine = 8; // points of one X; more may be too many to compare each with each

// The points from left to right, of a list without its first point that goes to the right and back once.
class LeftToRight {
public:
    explicit LeftToRight(Points const &points) : points_(points), count_(points.size() - 1) {}

    // False for any other list.
    bool sort() {
        std::size_t low = 0;
        for (std::size_t i = 1; i < count_; ++i)
            if (at(i).first < at(low).first) low = i;
        order_[0] = low;
        std::size_t ahead = after(low), behind = before(low);
        double lastAhead = at(low).first, lastBehind = at(low).first;
        for (std::size_t i = 1; i < count_; ++i) {
            bool const isAhead = at(ahead).first <= at(behind).first;
            std::size_t &next = isAhead ? ahead : behind;
            double &last = isAhead ? lastAhead : lastBehind;
            if (!(at(next).first >= last)) return false;
            last = at(next).first;
            order_[i] = next;
            next = isAhead ? after(next) : before(next);
        }
        return true;
    }

    bool areAllApart() const {
        for (std::size_t i = 0; i < count_; ++i) {
            Place const &point = sorted(i);
            for (std::size_t j = i + 1; j < count_ && sorted(j).first - point.first < EDAOutline::ptTol;
                 ++j) {
                if (j - i > mostInLine || isSame(sorted(j), point)) return false;
            }
        }
        return true;
    }

private:
    std::size_t after(std::size_t i) const { return i + 1 < count_ ? i + 1 : 0; }
    std::size_t before(std::size_t i) const { return i > 0 ? i - 1 : count_ - 1; }
    Place const &at(std::size_t i) const { return points_[i + 1]; }
    Place const &sorted(std::size_t i) const { return at(order_[i]); }

    Points const &points_;
    std::size_t count_;
    std::array<std::size_t, mostOfQuickLook> order_;
};

} // namespace

bool surelyHasNoCoincidentPoints(Points const &points) {
    if (points.size() < 2 || points.size() > mostOfQuickLook) return false;
    LeftToRight order(points);
    return order.sort() && order.areAllApart();
}

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
