// What a shape passes over on its way.
#include "fabrication/apertures/ApertureMaker.h"
#include "fabrication/apertures/Rings.h"

#include <algorithm>

namespace EDA::Fabrication {

namespace {

// Edges times stops of one stroke; beyond that, arcs get coarser.
constexpr std::size_t mostSweptEdges = 1 << 16;
// Stops of one stroke: all copies of a large shape on a small arc cross each other.
constexpr std::size_t mostStops = 256;

// The solids of the shape; a rectangle without width is a line here, which covers an area on its way.
std::vector<Piece> sweepable(Shape const &shape) {
    double const x = 0.5 * shape.width, y = 0.5 * shape.height;
    if (shape.kind == Shape::Kind::Rectangle && (x > 0.0 || y > 0.0))
        return {{rectangleRing(-x, -y, x, y), {}}};
    return piecesOf(shape);
}

std::size_t edgesOf(Piece const &piece) {
    std::size_t count = piece.outer.size();
    for (Ring const &hole : piece.holes)
        count += hole.size();
    return count;
}

Point sum(Point const &a, Point const &b) { return {a.x + b.x, a.y + b.y}; }

Ring hullOfBoth(Ring const &ring, Point const &from, Point const &to) {
    std::vector<Point> points;
    points.reserve(2 * ring.size());
    for (Point const &p : ring) {
        points.push_back(sum(p, from));
        points.push_back(sum(p, to));
    }
    return hullOf(std::move(points));
}

void paintEdges(Canvas &canvas, Ring const &ring, Point const &from, Point const &to) {
    for (std::size_t i = 0; i < ring.size(); ++i) {
        Ring const edge{ring[i], ring[i + 1 < ring.size() ? i + 1 : 0]};
        Ring const covered = hullOfBoth(edge, from, to);
        if (covered.size() >= 3) canvas.paint(covered);
    }
}

void paintMoved(Canvas &canvas, Piece piece, Point const &at) {
    moveBy(piece, at);
    canvas.paint(piece);
}

// The stops of the origin, the start among them.
Ring stopsOf(Point const &from, Segment const &segment, std::size_t edges) {
    Ring stops{from};
    std::size_t const most = std::min(mostStops, mostSweptEdges / std::max<std::size_t>(1, edges));
    appendSegment(stops, from, segment, chordTolerance, most);
    return stops;
}

// A solid that is not convex covers itself at both ends, and each of its edges a parallelogram: what lies
// outside of it at both ends was reached across an edge.
void paintSwept(Canvas &canvas, Piece const &piece, Ring const &stops) {
    bool const isSimple = piece.holes.empty() && isConvex(piece.outer);
    for (std::size_t i = 1; i < stops.size(); ++i) {
        Point const &from = stops[i - 1], &to = stops[i];
        if (isSimple) {
            Ring const hull = hullOfBoth(piece.outer, from, to);
            if (hull.size() >= 3) canvas.paint(hull);
            continue;
        }
        paintMoved(canvas, piece, from);
        paintEdges(canvas, piece.outer, from, to);
        for (Ring const &hole : piece.holes)
            paintEdges(canvas, hole, from, to);
    }
    if (!isSimple) paintMoved(canvas, piece, stops.back());
}

std::vector<Piece> movedPieces(Shape const &shape, Point const &at) {
    std::vector<Piece> pieces = piecesOf(shape);
    for (Piece &piece : pieces)
        moveBy(piece, at);
    return pieces;
}

} // namespace

std::vector<Piece> swept(Shape const &shape, Point const &from, Segment const &segment) {
    bool const isStill = from == segment.end && (segment.motion == Motion::Line || from == segment.centre);
    if (isStill) return movedPieces(shape, from);
    std::vector<Piece> const pieces = sweepable(shape);
    std::size_t edges = 0;
    for (Piece const &piece : pieces)
        edges += edgesOf(piece);
    Ring const stops = stopsOf(from, segment, edges);
    // The everyday stroke needs no painting.
    if (pieces.size() == 1 && stops.size() == 2 && pieces[0].holes.empty() && isConvex(pieces[0].outer)) {
        Ring const hull = hullOfBoth(pieces[0].outer, from, segment.end);
        return hull.size() < 3 ? std::vector<Piece>{} : std::vector<Piece>{{hull, {}}};
    }
    Canvas canvas;
    for (Piece const &piece : pieces)
        paintSwept(canvas, piece, stops);
    std::vector<Piece> result;
    canvas.finish(result);
    return result;
}

} // namespace EDA::Fabrication
