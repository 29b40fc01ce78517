// Proving that contours are convex and apart, and passing them through.
#include "host/Geometry/ClipShortcuts.h"

#include <algorithm>
#include <cmath>

namespace Geometry {
namespace Clip {

namespace {

constexpr double clearance = 64.0; // cells; well above snapping, rounding and the width of slivers

using Point = Vec2T<double>;

Bound2D boundOf(Outline const &outline) {
    Bound2D bound;
    for (std::size_t i = 0; i < outline.count; ++i)
        bound.unite(outline.points[i].x, outline.points[i].y);
    return bound;
}

// Written so that a difference too large for a double means not apart.
bool areApart(Bound2D const &a, Bound2D const &b, double distance) {
    return a.getXLow() - b.getXHigh() > distance || b.getXLow() - a.getXHigh() > distance ||
           a.getYLow() - b.getYHigh() > distance || b.getYLow() - a.getYHigh() > distance;
}

// Quadratic: meant for a few outlines.
bool areAllApart(std::vector<Bound2D> const &bounds, double distance) {
    for (std::size_t i = 0; i < bounds.size(); ++i)
        for (std::size_t j = i + 1; j < bounds.size(); ++j)
            if (!areApart(bounds[i], bounds[j], distance)) return false;
    return true;
}

bool isLower(Point const &a, Point const &b) { return a.y != b.y ? a.y < b.y : a.x < b.x; }

// By cells: which of two vertices is the lower one must not hang on their last bits.
bool isLowerCell(Frame const &frame, Point const &a, Point const &b) {
    return isLower(frame.cellOf(a.x, a.y), frame.cellOf(b.x, b.y));
}

double crossAt(Point const &a, Point const &b, Point const &c) {
    return (b.x - a.x) * (c.y - b.y) - (b.y - a.y) * (c.x - b.x);
}

double squaredDistance(Point const &a, Point const &b) {
    double const dx = b.x - a.x, dy = b.y - a.y;
    return dx * dx + dy * dy;
}

// The contour as results have it: anticlockwise from its lowest vertex.
Contour passed(Outline const &outline, Frame const &frame) {
    Point const *const end = outline.points + outline.count;
    Point const *const lowest = std::min_element(
        outline.points, end, [&frame](Point const &a, Point const &b) { return isLowerCell(frame, a, b); });
    Contour contour;
    contour.points.reserve(outline.count);
    contour.points.insert(contour.points.end(), lowest, end);
    contour.points.insert(contour.points.end(), outline.points, lowest);
    if (crossAt(contour.points.back(), contour.points[0], contour.points[1]) < 0.0)
        std::reverse(contour.points.begin() + 1, contour.points.end());
    return contour;
}

// Whether outlines of the operand are part of the result where nothing meets.
bool isKept(Engine::Operand operand, Inside::Operation operation) {
    switch (operation) {
    case Inside::Operation::Difference:
        return operand == Engine::Subject;
    case Inside::Operation::Intersection:
        return false;
    default:
        return true;
    }
}

} // namespace

// In a convex polygon the distance from an edge rises and then falls along the border, so
// the vertices before and after the edge are the nearest ones. All turns to one side and
// one change each from going up to going down and back make it go around only once.
bool isClearlyConvex(Outline const &outline, Frame const &frame) {
    if (outline.count < 3) return false;
    double const apart = clearance / frame.scale(), apart2 = apart * apart;
    Point const *a = outline.points + outline.count - 2, *b = a + 1;
    double const side = crossAt(*a, *b, outline.points[0]) < 0.0 ? -1.0 : 1.0;
    double length2 = squaredDistance(*a, *b);
    bool rises = isLower(*a, *b);
    int changes = 0;
    for (std::size_t i = 0; i < outline.count; ++i) {
        Point const *const c = outline.points + i;
        double const cross = side * crossAt(*a, *b, *c), next2 = squaredDistance(*b, *c);
        if (!(cross > 0.0 && cross * cross > apart2 * std::max(length2, next2))) return false;
        changes += isLower(*b, *c) != rises ? 1 : 0;
        rises = isLower(*b, *c);
        length2 = next2;
        a = b;
        b = c;
    }
    return changes == 2;
}

bool clipApart(std::vector<Outline> const &outlines, Inside::Operation operation, Frame const &frame,
               std::vector<Contour> &result) {
    std::vector<Bound2D> bounds;
    for (Outline const &outline : outlines)
        bounds.push_back(boundOf(outline));
    if (!areAllApart(bounds, clearance / frame.scale())) return false;
    for (Outline const &outline : outlines)
        if (isKept(outline.operand, operation) && !isClearlyConvex(outline, frame)) return false;
    for (Outline const &outline : outlines)
        if (isKept(outline.operand, operation)) result.push_back(passed(outline, frame));
    std::sort(result.begin(), result.end(), [&frame](Contour const &a, Contour const &b) {
        return isLowerCell(frame, a.points[0], b.points[0]);
    });
    return true;
}

} // namespace Clip
} // namespace Geometry
