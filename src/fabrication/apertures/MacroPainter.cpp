// The primitives of macros: circles, lines, outlines, polygons, moires and thermals.
#include "fabrication/apertures/MacroPainter.h"

#include "fabrication/Limits.h"

#include <algorithm>
#include <cmath>

namespace EDA::Fabrication {

namespace {

Ring discRing(Point const &centre, double diameter) {
    return ellipseRing(centre, 0.5 * diameter, 0.5 * diameter);
}

Ring reversed(Ring ring) {
    std::reverse(ring.begin(), ring.end());
    return ring;
}

Ring boxRing(Point const &centre, double width, double height) {
    return rectangleRing(centre.x - 0.5 * width, centre.y - 0.5 * height, centre.x + 0.5 * width,
                         centre.y + 0.5 * height);
}

bool isLength(double value) { return value >= 0.0 && value <= farthestPoint; }

} // namespace

MacroPainter::Primitive const MacroPainter::primitives[] = {
    {1, &MacroPainter::circle, true},         {2, &MacroPainter::vectorLine, true},
    {20, &MacroPainter::vectorLine, true},    {21, &MacroPainter::centreLine, true},
    {22, &MacroPainter::lowerLeftLine, true}, {4, &MacroPainter::outline, true},
    {5, &MacroPainter::polygon, true},        {6, &MacroPainter::moire, false},
    {7, &MacroPainter::thermal, false},
};

MacroPainter::Result MacroPainter::paint(std::vector<double> const &values) {
    values_ = values;
    auto const found = std::find_if(std::begin(primitives), std::end(primitives),
                                    [this](Primitive const &each) { return each.code == value(0); });
    if (found == std::end(primitives)) return Result::Unknown;
    bool const former = isDark_;
    if (found->hasExposure) {
        readExposure();
    } else {
        isDark_ = true;
    }
    bool const isDone = (this->*found->paint)();
    if (!found->hasExposure) isDark_ = former;
    return isDone ? Result::Painted : Result::Impossible;
}

// 2 is the other one than that of the primitive before, in files of the first revisions.
void MacroPainter::readExposure() {
    double const exposure = value(1);
    isDark_ = exposure == 2.0 ? !isDark_ : exposure != 0.0;
}

bool MacroPainter::circle() {
    if (!isLength(length(2))) return false;
    return length(2) == 0.0 || place(discRing(point(3), length(2)), 5);
}

bool MacroPainter::vectorLine() {
    Point const from = point(3), to = point(5);
    double const distance = std::hypot(to.x - from.x, to.y - from.y);
    if (!isLength(length(2))) return false;
    if (distance == 0.0 || length(2) == 0.0) return true;
    double const half = 0.5 * length(2) / distance;
    Point const n{-(to.y - from.y) * half, (to.x - from.x) * half};
    return place({{from.x - n.x, from.y - n.y},
                  {to.x - n.x, to.y - n.y},
                  {to.x + n.x, to.y + n.y},
                  {from.x + n.x, from.y + n.y}},
                 7);
}

bool MacroPainter::centreLine() {
    if (!isLength(length(2)) || !isLength(length(3))) return false;
    return place(boxRing(point(4), length(2), length(3)), 6);
}

bool MacroPainter::lowerLeftLine() {
    if (!isLength(length(2)) || !isLength(length(3))) return false;
    Point const corner = point(4);
    return place(rectangleRing(corner.x, corner.y, corner.x + length(2), corner.y + length(3)), 6);
}

// The first point comes again as the last one. Where files leave that out, the points that are there count.
bool MacroPainter::outline() {
    double const count = std::floor(value(2) + 0.5);
    if (!(count >= 1.0 && count <= static_cast<double>(Limits::macroVertices))) return false;
    std::size_t const there = values_.size() > 3 ? (values_.size() - 3) / 2 : 0;
    std::size_t const numPoints = std::min(static_cast<std::size_t>(count) + 1, there);
    Ring ring;
    ring.reserve(numPoints);
    for (std::size_t i = 0; i < numPoints; ++i)
        ring.push_back(point(3 + 2 * i));
    if (ring.size() > 1 && ring.back() == ring.front()) ring.pop_back();
    return ring.size() < 3 || place(std::move(ring), 3 + 2 * numPoints);
}

bool MacroPainter::polygon() {
    double const count = std::floor(value(2) + 0.5);
    if (!(count >= 3.0 && count <= static_cast<double>(Limits::macroVertices)) || !isLength(length(5)))
        return false;
    Point const centre = point(3);
    Ring ring;
    for (double i = 0.0; i < count; ++i) {
        Turn const turn = turnOf(360.0 * i / count);
        ring.push_back({centre.x + 0.5 * length(5) * turn.cosine, centre.y + 0.5 * length(5) * turn.sine});
    }
    return place(std::move(ring), 6);
}

bool MacroPainter::moire() {
    for (std::size_t i = 3; i <= 8; ++i) {
        if (!isLength(i == 6 ? 0.0 : length(i))) return false;
    }
    double const thickness = length(7), span = length(8);
    return moireRings() && place(boxRing(point(1), span, thickness), 9) &&
           place(boxRing(point(1), thickness, span), 9);
}

// From the outermost inwards; the last one is a disc where its hole would have no size.
bool MacroPainter::moireRings() {
    double const thickness = length(4), gap = length(5);
    if (!(value(6) >= 0.0)) return false;
    if (thickness == 0.0) return true;
    double const count = std::min(std::floor(value(6) + 0.5), static_cast<double>(Limits::moireRings));
    for (double i = 0.0; i < count; ++i) {
        double const outer = length(3) - 2.0 * i * (thickness + gap);
        double const inner = outer - 2.0 * thickness;
        if (!(outer > 0.0)) break;
        Piece ring{discRing(point(1), outer), {}};
        if (inner > 0.0) ring.holes.push_back(reversed(discRing(point(1), inner)));
        if (!placePiece(std::move(ring), 9)) return false;
        if (!(inner > 0.0)) break;
    }
    return value(6) <= static_cast<double>(Limits::moireRings);
}

// A ring without the two bars of a cross, each as wide as the gap.
bool MacroPainter::thermal() {
    Point const centre = point(1);
    double const outer = length(3), inner = length(4), gap = length(5);
    if (!isLength(outer) || !isLength(inner) || !isLength(gap) || !(outer > inner)) return false;
    Piece ring{discRing(centre, outer), {}};
    if (inner > 0.0) ring.holes.push_back(reversed(discRing(centre, inner)));
    Canvas canvas;
    canvas.paint(ring);
    if (gap > 0.0) {
        // Longer than the ring is wide, so that no sliver stays at the ends.
        canvas.erase(boxRing(centre, 1.5 * outer, gap));
        canvas.erase(boxRing(centre, gap, 1.5 * outer));
    }
    std::vector<Piece> pieces;
    if (!canvas.finish(pieces)) return false;
    return std::all_of(pieces.begin(), pieces.end(),
                       [this](Piece const &each) { return placePiece(each, 6); });
}

bool MacroPainter::place(Ring ring, std::size_t rotationAt) {
    Turn const turn = turnOf(value(rotationAt));
    for (Point &p : ring)
        p = turn(p);
    if (!isPaintable(ring)) return false;
    return isDark_ ? canvas_.paint(ring) : canvas_.erase(ring);
}

bool MacroPainter::placePiece(Piece piece, std::size_t rotationAt) {
    Turn const turn = turnOf(value(rotationAt));
    for (Point &p : piece.outer)
        p = turn(p);
    bool isGood = isPaintable(piece.outer);
    for (Ring &hole : piece.holes) {
        for (Point &p : hole)
            p = turn(p);
        isGood = isGood && isPaintable(hole);
    }
    return isGood && canvas_.paint(piece);
}

bool MacroPainter::isPaintable(Ring const &ring) {
    if (ring.size() > verticesLeft_) return false;
    verticesLeft_ -= ring.size();
    return std::all_of(ring.begin(), ring.end(), [](Point const &p) {
        return std::abs(p.x) <= farthestPoint && std::abs(p.y) <= farthestPoint;
    });
}

} // namespace EDA::Fabrication
