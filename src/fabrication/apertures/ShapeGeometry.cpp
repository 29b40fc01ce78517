// What shapes cover, turned shapes, and points inside.
#include "fabrication/apertures/ApertureMaker.h"
#include "fabrication/apertures/Rings.h"

#include <algorithm>
#include <cmath>

namespace EDA::Fabrication {

namespace {

Shape piecesLike(Shape const &shape) {
    Shape result;
    result.kind = Shape::Kind::Pieces;
    result.function = shape.function;
    result.name = shape.name;
    result.id = shape.id;
    return result;
}

// Scaled and turned, without mirroring, where the kind can stay.
bool keepsKind(Shape &shape, double scaleX, double scaleY, double rotation) {
    using Kind = Shape::Kind;
    bool const isEven = scaleX == scaleY;
    double const quarters = std::fmod(rotation, 360.0) / 90.0;
    bool const isSquare = quarters == std::floor(quarters);
    bool const isKept = shape.kind == Kind::Circle      ? isEven
                        : shape.kind == Kind::Rectangle ? isSquare
                        : shape.kind == Kind::Obround   ? isEven && isSquare
                                                        : false;
    if (!isKept) return false;
    shape.width *= scaleX;
    shape.height *= scaleY;
    if (isSquare && std::fmod(std::abs(quarters), 2.0) == 1.0) std::swap(shape.width, shape.height);
    return true;
}

void transform(Ring &ring, double scaleX, double scaleY, Turn const &turn) {
    for (Point &p : ring)
        p = turn({p.x * scaleX, p.y * scaleY});
    if (scaleX * scaleY < 0.0) std::reverse(ring.begin(), ring.end());
}

bool isSane(Piece const &piece) {
    return isFinite(piece.outer) && std::all_of(piece.holes.begin(), piece.holes.end(), isFinite);
}

// Curves that are to grow are made as large as they get, so that they are as round.
Shape enlarged(Shape const &shape, double factor) {
    Shape large = shape;
    large.width *= factor;
    large.height *= factor;
    return large;
}

std::vector<Piece> transformedPieces(Shape const &shape, double scaleX, double scaleY, double rotation) {
    double const factor = std::max(std::abs(scaleX), std::abs(scaleY));
    bool const isCurve = shape.kind == Shape::Kind::Circle || shape.kind == Shape::Kind::Obround;
    std::vector<Piece> pieces = piecesOf(isCurve ? enlarged(shape, factor) : shape);
    if (isCurve) {
        scaleX /= factor;
        scaleY /= factor;
    }
    Turn const turn = turnOf(rotation);
    for (Piece &piece : pieces) {
        transform(piece.outer, scaleX, scaleY, turn);
        for (Ring &hole : piece.holes)
            transform(hole, scaleX, scaleY, turn);
    }
    return pieces;
}

// Where a level line crosses the rings, from left to right.
void collectCrossings(Ring const &ring, double y, std::vector<double> &crossings) {
    for (std::size_t i = 0; i < ring.size(); ++i) {
        Point const &a = ring[i], &b = ring[i + 1 < ring.size() ? i + 1 : 0];
        if ((a.y <= y) == (b.y <= y)) continue;
        crossings.push_back(a.x + (y - a.y) / (b.y - a.y) * (b.x - a.x));
    }
}

// The middle of the widest place on a few level lines.
bool findInside(Piece const &piece, Point &inside) {
    if (piece.outer.size() < 3) return false;
    auto const ends = std::minmax_element(piece.outer.begin(), piece.outer.end(),
                                          [](Point const &a, Point const &b) { return a.y < b.y; });
    double const low = ends.first->y, high = ends.second->y;
    double widest = 0.0;
    std::vector<double> crossings;
    for (double const share : {0.5, 0.27, 0.74, 0.13, 0.89, 0.02, 0.985}) {
        double const y = low + share * (high - low);
        crossings.clear();
        collectCrossings(piece.outer, y, crossings);
        for (Ring const &hole : piece.holes)
            collectCrossings(hole, y, crossings);
        std::sort(crossings.begin(), crossings.end());
        for (std::size_t i = 0; i + 1 < crossings.size(); i += 2) {
            double const width = crossings[i + 1] - crossings[i];
            if (!(width > widest)) continue;
            widest = width;
            inside = {0.5 * (crossings[i] + crossings[i + 1]), y};
        }
    }
    return widest > 0.0;
}

} // namespace

bool ApertureTransform::isPlain() const {
    return !mirrorX && !mirrorY && scaleX == 1.0 && scaleY == 1.0 && rotation == 0.0;
}

Shape transformed(Shape const &shape, ApertureTransform const &transform) {
    if (shape.isNothing() || transform.isPlain()) return shape;
    double const scaleX = transform.mirrorX ? -transform.scaleX : transform.scaleX;
    double const scaleY = transform.mirrorY ? -transform.scaleY : transform.scaleY;
    Shape nothing;
    nothing.id = shape.id;
    bool const isGood = std::isfinite(scaleX) && std::isfinite(scaleY) && std::isfinite(transform.rotation);
    if (!isGood || scaleX == 0.0 || scaleY == 0.0) return nothing;
    Shape result = shape;
    if (keepsKind(result, std::abs(scaleX), std::abs(scaleY), transform.rotation)) {
        return std::isfinite(result.width) && std::isfinite(result.height) ? result : nothing;
    }
    result = piecesLike(shape);
    result.pieces = transformedPieces(shape, scaleX, scaleY, transform.rotation);
    return std::all_of(result.pieces.begin(), result.pieces.end(), isSane) ? result : nothing;
}

std::vector<Piece> piecesOf(Shape const &shape) {
    double const x = 0.5 * shape.width, y = 0.5 * shape.height;
    switch (shape.kind) {
    case Shape::Kind::Circle:
        if (x > 0.0) return {{ellipseRing({}, x, x), {}}};
        break;
    case Shape::Kind::Rectangle:
        if (x > 0.0 && y > 0.0) return {{rectangleRing(-x, -y, x, y), {}}};
        break;
    case Shape::Kind::Obround:
        if (x > 0.0 && y > 0.0) return {{obroundRing(shape.width, shape.height), {}}};
        break;
    case Shape::Kind::Pieces:
        return shape.pieces;
    case Shape::Kind::Nothing:
        break;
    }
    return {};
}

Point pointInside(Shape const &shape) {
    Point inside;
    double largest = -1.0;
    for (Piece const &piece : shape.pieces) {
        double const area = std::abs(signedArea(piece.outer));
        Point found;
        if (!(area > largest) || !findInside(piece, found)) continue;
        largest = area;
        inside = found;
    }
    return inside;
}

bool findPointInside(Path const &contour, Point &inside) {
    Piece piece;
    piece.outer = toRing(contour);
    return findInside(piece, inside);
}

Ring toRing(Path const &contour, double tolerance) {
    Ring ring{contour.start};
    Point from = contour.start;
    for (Segment const &segment : contour.segments) {
        appendSegment(ring, from, segment, tolerance, static_cast<std::size_t>(-1));
        from = segment.end;
    }
    ring.erase(std::unique(ring.begin(), ring.end()), ring.end());
    if (ring.size() > 1 && ring.back() == ring.front()) ring.pop_back();
    return ring;
}

} // namespace EDA::Fabrication
