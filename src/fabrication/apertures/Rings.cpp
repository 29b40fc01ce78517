// Rings, arcs and hulls: edges for curves, and painting.
#include "fabrication/apertures/Rings.h"

#include <algorithm>
#include <cmath>
#include <stdexcept>

namespace EDA::Fabrication {

namespace {

using Contours = std::vector<Geometry::PolygonPainter::Contour>;

constexpr std::size_t fewestEdges = 32;
constexpr std::size_t mostEdges = 2000;

double cross(Point const &o, Point const &a, Point const &b) {
    return (a.x - o.x) * (b.y - o.y) - (a.y - o.y) * (b.x - o.x);
}

void appendContour(Contours &contours, Ring const &ring) {
    contours.emplace_back();
    contours.back().points.reserve(ring.size());
    for (Point const &p : ring)
        contours.back().points.emplace_back(p.x, p.y);
}

Contours contoursOf(Piece const &piece) {
    Contours contours;
    appendContour(contours, piece.outer);
    for (Ring const &hole : piece.holes)
        appendContour(contours, hole);
    return contours;
}

// Outers are each followed by their holes.
std::vector<Piece> piecesFrom(Contours const &contours) {
    std::vector<Piece> pieces;
    for (auto const &contour : contours) {
        Ring ring;
        ring.reserve(contour.points.size());
        for (auto const &p : contour.points)
            ring.push_back({p.x, p.y});
        if (!contour.hole || pieces.empty()) {
            pieces.push_back({std::move(ring), {}});
        } else {
            pieces.back().holes.push_back(std::move(ring));
        }
    }
    return pieces;
}

template <typename Action> bool isDone(Action const &action) {
    try {
        action();
        return true;
    } catch (std::invalid_argument const &) {
    } catch (std::length_error const &) {
    }
    return false;
}

// One side of the hull of sorted points, without its last point.
void appendChain(Ring &hull, std::vector<Point> const &points, bool isLower) {
    std::size_t const base = hull.size();
    for (std::size_t i = 0; i < points.size(); ++i) {
        Point const &p = points[isLower ? i : points.size() - 1 - i];
        while (hull.size() >= base + 2 && !(cross(hull[hull.size() - 2], hull.back(), p) > 0.0))
            hull.pop_back();
        hull.push_back(p);
    }
    hull.pop_back();
}

} // namespace

Turn turnOf(double degrees) {
    double const turned = std::fmod(degrees, 360.0);
    double const quarters = turned / 90.0;
    if (quarters == std::floor(quarters)) {
        static constexpr double cosines[] = {1.0, 0.0, -1.0, 0.0};
        auto const index = static_cast<int>(quarters + 4.0) % 4;
        return {cosines[index], cosines[(index + 3) % 4]};
    }
    double const radians = turned * fullTurn / 360.0;
    return {std::cos(radians), std::sin(radians)};
}

std::size_t edgesOfTurn(double radius, double tolerance) {
    if (!(radius > tolerance)) return fewestEdges;
    double const edges = 0.5 * fullTurn / std::acos(1.0 - tolerance / radius);
    if (!(edges < static_cast<double>(mostEdges))) return mostEdges;
    // A multiple of four keeps circles as wide as high.
    return std::max(fewestEdges, (static_cast<std::size_t>(std::ceil(edges)) + 3) / 4 * 4);
}

Point Arc::at(double share) const {
    double const angle = startAngle + share * sweep;
    double const radius = startRadius + share * (endRadius - startRadius);
    return {centre.x + radius * std::cos(angle), centre.y + radius * std::sin(angle)};
}

Arc arcOf(Point const &from, Segment const &segment) {
    Arc arc;
    arc.centre = segment.centre;
    Point const a{from.x - arc.centre.x, from.y - arc.centre.y};
    Point const b{segment.end.x - arc.centre.x, segment.end.y - arc.centre.y};
    arc.startRadius = std::hypot(a.x, a.y);
    arc.endRadius = std::hypot(b.x, b.y);
    arc.startAngle = std::atan2(a.y, a.x);
    double const direction = segment.motion == Motion::Clockwise ? -1.0 : 1.0;
    arc.sweep = direction * fullTurn;
    if (from != segment.end) {
        double turned = direction * (std::atan2(b.y, b.x) - arc.startAngle);
        if (turned <= 0.0) turned += fullTurn;
        arc.sweep = direction * turned;
    }
    return arc;
}

void appendSegment(Ring &ring, Point const &from, Segment const &segment, double tolerance,
                   std::size_t maxSteps) {
    if (segment.motion != Motion::Line) {
        Arc const arc = arcOf(from, segment);
        double const radius = std::max(arc.startRadius, arc.endRadius);
        double const edges = static_cast<double>(edgesOfTurn(radius, tolerance));
        auto const wanted =
            static_cast<std::size_t>(std::ceil(std::abs(arc.sweep) / fullTurn * edges - 1e-9));
        std::size_t const steps = std::max<std::size_t>(1, std::min(wanted, maxSteps));
        for (std::size_t i = 1; i < steps; ++i)
            ring.push_back(arc.at(static_cast<double>(i) / static_cast<double>(steps)));
    }
    ring.push_back(segment.end);
}

Ring ellipseRing(Point const &centre, double radiusX, double radiusY) {
    std::size_t const edges = edgesOfTurn(std::max(radiusX, radiusY));
    Ring ring;
    ring.reserve(edges);
    for (std::size_t i = 0; i < edges; ++i) {
        Turn const turn = turnOf(360.0 * static_cast<double>(i) / static_cast<double>(edges));
        ring.push_back({centre.x + radiusX * turn.cosine, centre.y + radiusY * turn.sine});
    }
    return ring;
}

Ring rectangleRing(double left, double bottom, double right, double top) {
    return {{left, bottom}, {right, bottom}, {right, top}, {left, top}};
}

Ring obroundRing(double width, double height) {
    double const radius = 0.5 * std::min(width, height);
    Point const centre{0.5 * width - radius, 0.5 * height - radius};
    std::size_t const edges = edgesOfTurn(radius);
    double const step = 360.0 / static_cast<double>(edges);
    Ring ring;
    // Quarter by quarter, each about its own centre.
    for (std::size_t quarter = 0; quarter < 4; ++quarter) {
        Point const about{quarter == 0 || quarter == 3 ? centre.x : -centre.x,
                          quarter < 2 ? centre.y : -centre.y};
        for (std::size_t i = 0; i <= edges / 4; ++i) {
            Turn const turn = turnOf(90.0 * static_cast<double>(quarter) + step * static_cast<double>(i));
            Point const p{about.x + radius * turn.cosine, about.y + radius * turn.sine};
            if (ring.empty() || ring.back() != p) ring.push_back(p);
        }
    }
    if (ring.size() > 1 && ring.back() == ring.front()) ring.pop_back();
    return ring;
}

double signedArea(Ring const &ring) {
    double area = 0.0;
    for (std::size_t i = 2; i < ring.size(); ++i)
        area += cross(ring[0], ring[i - 1], ring[i]);
    return 0.5 * area;
}

Ring hullOf(std::vector<Point> points) {
    std::sort(points.begin(), points.end(),
              [](Point const &a, Point const &b) { return a.x < b.x || (a.x == b.x && a.y < b.y); });
    points.erase(std::unique(points.begin(), points.end()), points.end());
    if (points.size() < 3) return points;
    Ring hull;
    hull.reserve(points.size() + 2);
    appendChain(hull, points, true);
    appendChain(hull, points, false);
    return hull;
}

bool isConvex(Ring const &ring) {
    double const area = signedArea(hullOf(ring));
    return area - std::abs(signedArea(ring)) <= 1e-9 * area;
}

void moveBy(Piece &piece, Point const &by) {
    auto const move = [&by](Ring &ring) {
        for (Point &p : ring)
            p = {p.x + by.x, p.y + by.y};
    };
    move(piece.outer);
    for (Ring &hole : piece.holes)
        move(hole);
}

bool isFinite(Ring const &ring) {
    return std::all_of(ring.begin(), ring.end(),
                       [](Point const &p) { return std::isfinite(p.x) && std::isfinite(p.y); });
}

bool Canvas::paint(Ring const &ring) {
    Contours contours;
    appendContour(contours, ring);
    return isDone([&] { painter_.paint(contours); });
}

bool Canvas::paint(Piece const &piece) {
    return isDone([&] { painter_.paint(contoursOf(piece)); });
}

bool Canvas::erase(Ring const &ring) {
    Contours contours;
    appendContour(contours, ring);
    return isDone([&] { painter_.erase(contours); });
}

bool Canvas::erase(Piece const &piece) {
    return isDone([&] { painter_.erase(contoursOf(piece)); });
}

bool Canvas::finish(std::vector<Piece> &pieces) {
    pieces.clear();
    return isDone([&] { pieces = piecesFrom(painter_.finish()); });
}

} // namespace EDA::Fabrication
